#include "workspace/reader/ReaderView.h"

#include "kit/theme/Roles.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "surface/CodingTextView.h"
#include "workspace/lists/MemoBar.h"
#include "workspace/picker/CodePickerPopover.h"
#include "workspace/reader/DocumentHeader.h"
#include "workspace/reader/FindBar.h"
#include "workspace/reader/ReadingColumn.h"
#include "workspace/reader/SelectionBar.h"

#include <QApplication>
#include <QHash>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int aboveTitle = 10;
constexpr int aboveMemo = 6; // plus the memo's own margin
constexpr int belowMemo = 8;

CodingTextView *makeText()
{
    installAccessibleCodingText();
    return new CodingTextView;
}

} // namespace

ReaderView::ReaderView(LibraryStore &store, QWidget *parent)
    : QWidget(parent),
      m_store(store),
      m_header(new DocumentHeader),
      m_memo(new MemoBar(u"Document memo…"_s)),
      m_divider(makeHairline()),
      m_text(makeText())
{
    m_findBar = new FindBar(*m_text);
    buildLayout();
    m_selectionBar = new SelectionBar(this);
    m_hint = new CodingHint(this);
    setTabOrder(m_text, &m_selectionBar->addButton());

    connect(m_memo, &MemoBar::committed, this, &ReaderView::saveMemo);
    connect(m_text, &CodingTextView::selectedRangeChanged, this, &ReaderView::noticeSelection);
    connect(m_text, &CodingTextView::addCodeRequested, this, &ReaderView::openPicker);
    connect(m_text, &CodingTextView::removeCodingRequested, this, &ReaderView::removeCoding);
    connect(m_selectionBar, &SelectionBar::addRequested, this, &ReaderView::openPicker);
    connect(m_hint, &CodingHint::dismissed, this, [this] { m_store.codingHintDismissed().set(true); });
    connect(qApp, &QApplication::focusChanged, this, &ReaderView::renderSelectionBar);
    connectStore();
    renderHint();
}

void ReaderView::buildLayout()
{
    constexpr int outdent = MemoBar::labelInset; // the memo's label, not its button, is aligned with the text
    auto *block = new ReadingColumn(*this, outdent);
    m_header->setContentsMargins(outdent, 0, 0, 0);
    m_memo->setEditorInset(outdent);
    auto *blockColumn = new QVBoxLayout(block);
    blockColumn->setContentsMargins(0, aboveTitle, 0, belowMemo);
    blockColumn->setSpacing(aboveMemo);
    blockColumn->addWidget(m_header);
    blockColumn->addWidget(m_memo);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(block);
    column->addWidget(m_divider);
    column->addWidget(m_findBar);
    column->addWidget(m_text, 1);
}

void ReaderView::connectStore()
{
    connect(&m_store.codingRevision(), &Notifier::changed, this, [this] {
        readCodings();
        renderText();
    });
    connect(&m_store.codes(), &Notifier::changed, this, [this] {
        renderCodings();
        renderText();
    });
    connect(&m_store.revealRequest(), &Notifier::changed, this, &ReaderView::renderText);
    for (const Notifier *notifier : {static_cast<const Notifier *>(&m_store.codingHintDismissed()),
             static_cast<const Notifier *>(&m_store.codeCounts()), static_cast<const Notifier *>(&m_store.documents())})
        connect(notifier, &Notifier::changed, this, &ReaderView::renderHint);
}

void ReaderView::showDocument(const Document &document)
{
    const bool isAnother = !m_document || m_document->id != document.id;
    if (!isAnother && *m_document == document)
        return;
    if (isAnother)
        m_memo->finish();
    m_document = document;
    if (isAnother)
        return beginDocument();
    renderMemo();
    m_header->showDocument(*m_document, m_codings.size());
}

void ReaderView::showNothing()
{
    if (!m_document)
        return;
    closePicker();
    setSelection({});
    m_memo->finish();
    m_document.reset();
}

void ReaderView::beginDocument()
{
    setSelection({});
    closePicker();
    m_memo->setText(m_store.documentMemo(m_document->id).value_or(QString()));
    readCodings();
    renderText(); // takes the new text
    ++m_resetToken;
    renderText(); // carries out a reveal that was asked for with the text
    m_findBar->textChanged();
}

void ReaderView::saveMemo(const QString &memo)
{
    if (!m_document)
        return;
    const Document document = *m_document; // a copy: saving replaces m_document
    const std::optional<QString> known = m_store.documentMemo(document.id);
    if (known && (*known != memo || !m_store.isMemoWritten(document.id)))
        m_store.setDocumentMemo(document, memo);
}

void ReaderView::renderMemo()
{
    const QString memo = m_store.documentMemo(m_document->id).value_or(QString());
    if (memo != m_memo->text()) // else it was typed here
        m_memo->setText(memo);
}

void ReaderView::readCodings()
{
    if (!m_document)
        return;
    m_codings = m_store.codings(*m_document);
    m_header->showDocument(*m_document, m_codings.size());
    renderCodings();
}

void ReaderView::renderCodings()
{
    QHash<QUuid, const Code *> codes;
    for (const Code &code : m_store.codes().get())
        codes.insert(code.id, &code);
    m_highlights.clear();
    for (const Coding &coding : std::as_const(m_codings)) {
        if (const Code *code = codes.value(coding.codeID))
            m_highlights.append({coding.id, coding.range(), code->colorHex, code->name});
    }
}

void ReaderView::renderText()
{
    if (!m_document)
        return;
    CodingTextView::Content content{m_document->text, m_highlights, m_resetToken, {}, 0};
    if (const auto &request = m_store.revealRequest().get()) {
        content.revealToken = request->token;
        if (request->documentID == m_document->id)
            content.revealRange = request->range;
    }
    m_text->apply(content);
}

void ReaderView::renderHint()
{
    m_hint->setShown(m_store.shouldShowCodingHint());
    placeOverlays();
}

void ReaderView::noticeSelection(TextRange range)
{
    if (range.length >= 1)
        setSelection(range);
    else if (!m_picker) // the passage stays while the picker is open
        setSelection({});
}

void ReaderView::setSelection(const std::optional<TextRange> &selection)
{
    m_selection = selection;
    renderSelectionBar();
}

/// Hidden while the find bar has the focus, or it would appear and vanish with each match.
void ReaderView::renderSelectionBar()
{
    const bool isFinding = m_findBar->isAncestorOf(QApplication::focusWidget());
    m_selectionBar->showLength(m_selection && !isFinding ? m_selection->length : 0);
}

void ReaderView::openPicker()
{
    if (!m_selection || !m_document || m_picker)
        return;
    m_picker = new CodePickerPopover(m_store, *m_document, *m_selection, *window());
    connect(m_picker, &CodePickerPopover::assigned, this, &ReaderView::finishAssignment);
    connect(m_picker, &Popover::closed, this, [this] {
        if (m_picker)
            m_picker->deleteLater();
        m_picker.clear();
    });
    m_picker->onlyCloseAt(*m_text); // such a click must not clear the selection
    m_picker->openAt(*m_selectionBar, m_selectionBar->addButton());
}

void ReaderView::closePicker()
{
    if (m_picker)
        m_picker->close();
}

void ReaderView::finishAssignment()
{
    m_text->setFocus(Qt::OtherFocusReason); // the selection bar, which may have had it, is about to hide
    setSelection({});
    ++m_resetToken;
    renderText();
}

void ReaderView::removeCoding(const QUuid &codingID)
{
    const auto found = std::ranges::find(m_codings, codingID, &Coding::id);
    if (found == m_codings.end())
        return;
    const Coding coding = *found; // a copy: removing reads m_codings again
    m_store.removeCoding(coding);
}

void ReaderView::openFindBar()
{
    if (!m_document)
        return;
    closePicker(); // its selection bar is about to hide
    m_findBar->open();
}

void ReaderView::placeOverlays()
{
    m_selectionBar->place();
    m_hint->place();
}

void ReaderView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeOverlays();
}

void ReaderView::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(rect(), Theme::colors().page);
}
