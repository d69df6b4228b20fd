#include "surface/CodingTextView.h"

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

} // namespace

CodingTextView::CodingTextView(QWidget *parent)
    : QTextEdit(parent),
      m_runLater([this](std::chrono::milliseconds delay, std::function<void()> job) {
          QTimer::singleShot(delay, this, std::move(job));
      })
{
    replaceText({}); // first, since everything else needs our layout and a place in it
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
    m_isSettling = true; // the base class's destructor may still change sizes
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
    noticeSelection(); // last, since a listener may call `apply` again
}

void CodingTextView::applyTo(const Content &content)
{
    const bool isSameText = m_text.isSharedWith(content.text) || m_text == content.text;
    if (!isSameText) {
        m_appliedResetToken = content.resetToken;
        m_appliedRevealToken = -1; // the next call carries out a reveal
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
    keepingPlace([&] { makeDocument(text); });
    viewport()->update();
}

/// A document is filled before it is shown, or QTextEdit would ask for positions in a layout that isn't ready.
void CodingTextView::makeDocument(const QString &text)
{
    const QTextDocument *former = m_place ? document() : nullptr; // QTextEdit owns the very first one
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
    constexpr size_t maxStretches = 64; // to repaint everything is quicker than more stretches one by one
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
    m_runLater(flashDuration, [this, number = ++m_flashCount] {
        if (number == m_flashCount) // else a newer flash is still seen
            endFlash();
    });
}

QColor CodingTextView::flashColor(TextRange range) const
{
    constexpr QRgb yellow = 0xFFFFCC00;
    const auto &highlights = m_marks.passages.highlights();
    const auto found = std::ranges::find(highlights, range, &TextHighlight::range);
    return parsedColor(found == highlights.end() ? QString() : found->colorHex).value_or(yellow);
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
