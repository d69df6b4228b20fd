#include "surface/CodingTextView.h"

#include "surface/AccessibleCodingText.h"
#include "surface/DisplayText.h"
#include "surface/LazyTextLayout.h"
#include "surface/ReaderMetrics.h"

#include <QFontDatabase>
#include <QScopedValueRollback>
#include <QTextDocument>
#include <QTimer>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds flashDuration{1100};

QFont readerFont()
{
    constexpr double pointsPerPixel = 0.75;
    QFont font;
    font.setFamilies({u"Inter"_s, QFontDatabase::systemFont(QFontDatabase::GeneralFont).family(), u"Noto Sans"_s,
        u"Noto Sans CJK SC"_s, u"DejaVu Sans"_s});
    font.setPointSizeF(ReaderMetrics::fontPixels * pointsPerPixel);
    return font;
}

bool isSameText(const QString &one, const QString &other)
{
    return one.size() == other.size() && (one.constData() == other.constData() || one == other);
}

} // namespace

CodingTextView::CodingTextView(QWidget *parent)
    : QTextEdit(parent),
      m_runLater([this](std::chrono::milliseconds delay, std::function<void()> job) {
          QTimer::singleShot(delay, this, std::move(job));
      })
{
    AccessibleCodingText::install();
    replaceText({}); // first: from here on there is a layout of our own and a place in it
    setAccessibleName(u"Document text"_s);
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFont(readerFont());
    connect(this, &QTextEdit::selectionChanged, this, &CodingTextView::noticeSelection);
    connect(this, &QTextEdit::cursorPositionChanged, this, &CodingTextView::noticeSelection);
}

CodingTextView::~CodingTextView()
{
    m_isSettling = true; // the base class still lets go of the document
}

LazyTextLayout &CodingTextView::layout() const
{
    return *static_cast<LazyTextLayout *>(document()->documentLayout());
}

void CodingTextView::apply(const Content &content)
{
    {
        const QScopedValueRollback applying(m_isApplying, true);
        applyTo(content);
    }
    noticeSelection(); // whoever listens may apply again, so everything is in place by now
}

/// In this order the text stays where it is through ordinary work.
void CodingTextView::applyTo(const Content &content)
{
    if (!isSameText(m_text, content.text)) {
        m_appliedResetToken = content.resetToken;
        m_appliedRevealToken = -1; // a reveal is left to the next call, when the text has its place
        replaceText(content.text);
        applyHighlights(content.highlights);
        return;
    }
    applyHighlights(content.highlights);
    if (m_appliedResetToken != content.resetToken) {
        m_appliedResetToken = content.resetToken;
        select({});
    }
    if (m_appliedRevealToken != content.revealToken && content.revealRange) {
        m_appliedRevealToken = content.revealToken;
        flash(*content.revealRange);
    }
}

void CodingTextView::replaceText(const QString &text)
{
    m_text = text;
    m_marks = {};
    m_marks.passages.reset(text.size());
    keepingPlace([&] { showDocumentOf(text); });
    viewport()->update();
}

/// The document is filled before anything listens to it, and never changes.
void CodingTextView::showDocumentOf(const QString &text)
{
    const QTextDocument *former = m_place ? document() : nullptr; // the very first one isn't ours
    auto *next = new QTextDocument(this);
    next->setUndoRedoEnabled(false);
    next->setDocumentMargin(0);
    next->setDefaultFont(font());
    next->setPageSize(QSizeF(viewport()->width(), -1));
    next->setPlainText(DisplayText::of(text));
    auto *nextLayout = new LazyTextLayout(next, m_marks);
    next->setDocumentLayout(nextLayout);
    m_place.emplace(*nextLayout);
    connect(nextLayout, &LazyTextLayout::heightsChanged, this, &CodingTextView::noticeHeights);
    connect(nextLayout, &LazyTextLayout::rewrapped, this, [this] {
        m_place->findAgain();
        m_isUnsettled = true;
    });
    setDocument(next);
    delete former;
}

void CodingTextView::applyHighlights(const QList<TextHighlight> &highlights)
{
    constexpr size_t maxStretches = 64; // beyond, telling them apart costs more than painting
    const TextRange view = visibleStretch();
    const auto visibleSegments = [&] { return m_marks.passages.within(int(view.location), int(view.end())); };
    const auto shown = visibleSegments();
    const std::vector<PassageSegment> before(shown.begin(), shown.end());
    if (!m_marks.passages.assign(highlights))
        return;
    endFlash();
    const std::vector<TextRange> changed = differences(before, visibleSegments());
    if (changed.size() > maxStretches)
        viewport()->update();
    else
        std::ranges::for_each(changed, [this](TextRange range) { repaint(range); });
}

void CodingTextView::flash(TextRange range)
{
    const qsizetype length = m_text.size();
    const bool isInside = range.location >= 0 && range.location <= length && range.length <= length - range.location;
    if (!isInside || range.length < 1)
        return;
    scrollTo(range);
    endFlash();
    m_marks.flash = TextMarks::Flash{int(range.location), int(range.end()), flashColor(range)};
    repaint(range);
    m_runLater(flashDuration, [this, number = ++m_flashCount] { restoreAfterFlash(number); });
}

QColor CodingTextView::flashColor(TextRange range) const
{
    constexpr QRgb yellow = 0xFFFFCC00;
    const auto &highlights = m_marks.passages.highlights();
    const auto found = std::ranges::find(highlights, range, &TextHighlight::range);
    return parsedColor(found == highlights.end() ? u"#FFCC00"_s : found->colorHex).value_or(yellow);
}

void CodingTextView::restoreAfterFlash(qint64 number)
{
    if (number == m_flashCount) // else a newer flash looks after what is seen now
        endFlash();
}

void CodingTextView::endFlash()
{
    if (const auto flash = std::exchange(m_marks.flash, {}))
        repaint({flash->start, flash->end - flash->start});
}

void CodingTextView::setRunLater(RunLater runLater)
{
    m_runLater = std::move(runLater);
}
