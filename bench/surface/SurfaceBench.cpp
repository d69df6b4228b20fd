#include "surface/CodingTextView.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <benchmark/benchmark.h>

#include <memory>
#include <variant>

using namespace Qt::StringLiterals;

// The reader's text surface beside a plain text edit whose passages are character formats, doing the same work in the
// same run. "Scale" rows have no counterpart: what a reader does must take as long on a long text as on a short one.

namespace {

constexpr QSize windowSize{1000, 800};

QString englishText(qsizetype length)
{
    static const QStringList words = u"the of and to in a is that for it people interview because community office "
                                     u"understanding sometimes together neighbourhood conversation flow"_s.split(u' ');
    QRandomGenerator random(7);
    QString text;
    text.reserve(length + 700);
    while (text.size() < length) {
        const qsizetype end = text.size() + 250 + random.bounded(500);
        while (text.size() < end)
            text += words[random.bounded(int(words.size()))] + u' ';
        text += u'\n';
    }
    text.truncate(length);
    return text;
}

/// One passage for each 500 characters, overlapping here and there.
QList<TextHighlight> passagesIn(qsizetype length)
{
    static const QStringList colors{u"#5E5CE6"_s, u"#34C759"_s, u"#FF9500"_s, u"#FF2D55"_s};
    QRandomGenerator random(11);
    QList<TextHighlight> passages;
    for (qsizetype number = 0; number < length / 500; ++number) {
        const qint64 span = random.bounded(50) == 0 ? random.bounded(1000, 4000) : random.bounded(20, 400);
        passages.append({QUuid::createUuid(), {random.bounded(int(length - span)), span},
            colors[random.bounded(int(colors.size()))], u"Name"_s});
    }
    return passages;
}

QFont readerFont()
{
    QFont font(u"Inter"_s);
    font.setPointSizeF(14.5 * 0.75);
    return font;
}

/// What the surface is measured against: everything is a format, as the straightforward way has it.
class PlainSurface {
public:
    PlainSurface()
    {
        m_edit.setReadOnly(true);
        m_edit.setUndoRedoEnabled(false);
        m_edit.setFont(readerFont());
        m_edit.resize(windowSize);
        m_edit.show();
    }
    QTextEdit &widget() { return m_edit; }
    void setContent(const QString &text, const QList<TextHighlight> &passages)
    {
        m_edit.setPlainText(text);
        QTextCursor cursor(m_edit.document());
        cursor.select(QTextCursor::Document);
        QTextBlockFormat distance;
        distance.setLineHeight(5.5, QTextBlockFormat::LineDistanceHeight);
        cursor.mergeBlockFormat(distance);
        cursor.beginEditBlock();
        for (const TextHighlight &passage : passages)
            format(cursor, passage);
        cursor.endEditBlock();
    }
    void changePassage(const QList<TextHighlight> &passages, qsizetype changed)
    {
        QTextCursor cursor(m_edit.document());
        format(cursor, passages[changed]);
    }
    void setPassages(const QList<TextHighlight> &passages)
    {
        QTextCursor cursor(m_edit.document());
        cursor.beginEditBlock();
        cursor.select(QTextCursor::Document);
        cursor.setCharFormat({});
        for (const TextHighlight &passage : passages)
            format(cursor, passage);
        cursor.endEditBlock();
    }
    void reveal(TextRange range)
    {
        QTextCursor cursor(m_edit.document());
        cursor.setPosition(int(range.location));
        m_edit.setTextCursor(cursor);
        m_edit.ensureCursorVisible();
    }

private:
    static void format(QTextCursor &cursor, const TextHighlight &passage)
    {
        QColor band(passage.colorHex);
        band.setAlphaF(0.16F);
        QTextCharFormat charFormat;
        charFormat.setBackground(band);
        charFormat.setFontUnderline(true);
        charFormat.setUnderlineColor(QColor(passage.colorHex));
        cursor.setPosition(int(passage.range.location));
        cursor.setPosition(int(passage.range.end()), QTextCursor::KeepAnchor);
        cursor.setCharFormat(charFormat);
    }

    QTextEdit m_edit;
};

class OurSurface {
public:
    OurSurface()
    {
        m_view.setRunLater([](auto, auto) {});
        m_view.resize(windowSize);
        m_view.show();
    }
    QTextEdit &widget() { return m_view; }
    void setContent(const QString &text, const QList<TextHighlight> &passages)
    {
        m_content.text = text;
        m_content.highlights = passages;
        m_view.apply(m_content);
    }
    void changePassage(const QList<TextHighlight> &passages, qsizetype) { setPassages(passages); }
    void setPassages(const QList<TextHighlight> &passages)
    {
        m_content.highlights = passages;
        m_view.apply(m_content);
    }
    void reveal(TextRange range)
    {
        m_content.revealRange = range;
        ++m_content.revealToken;
        m_view.apply(m_content);
    }

private:
    CodingTextView m_view;
    CodingTextView::Content m_content;
};

/// Paints what is due.
void paint()
{
    QApplication::processEvents();
    QApplication::sendPostedEvents();
}

template <typename Surface>
struct Filled {
    explicit Filled(qsizetype length) : text(englishText(length)), passages(passagesIn(length))
    {
        surface.setContent(text, passages);
        paint();
    }
    Surface surface;
    QString text;
    QList<TextHighlight> passages;
};

/// Only one is kept between the benchmarks: filling the plain one takes long, and while it lives, it goes on laying out
/// in the background of whatever is measured next.
std::variant<std::monostate, std::unique_ptr<Filled<PlainSurface>>, std::unique_ptr<Filled<OurSurface>>> kept;

template <typename Surface>
Filled<Surface> &filled(qsizetype length)
{
    using Kept = std::unique_ptr<Filled<Surface>>;
    const Kept *current = std::get_if<Kept>(&kept);
    if (!current || (*current)->text.size() != length) {
        kept = std::monostate();
        kept = std::make_unique<Filled<Surface>>(length);
    }
    return *std::get<Kept>(kept);
}

qsizetype middlePassage(const QList<TextHighlight> &passages, qint64 from)
{
    qsizetype best = 0;
    for (qsizetype index = 0; index < passages.size(); ++index) {
        if (std::abs(passages[index].range.location - from) < std::abs(passages[best].range.location - from))
            best = index;
    }
    return best;
}

template <typename Surface>
void openText(benchmark::State &state)
{
    kept = std::monostate();
    const QString text = englishText(state.range(0));
    const QList<TextHighlight> passages = passagesIn(state.range(0));
    Surface surface;
    for ([[maybe_unused]] auto turn : state) {
        surface.setContent(text, passages);
        paint();
        state.PauseTiming();
        surface.setContent(u"Short."_s, {});
        paint();
        state.ResumeTiming();
    }
}

template <typename Surface>
void changePassage(benchmark::State &state)
{
    auto &[surface, text, passages] = filled<Surface>(state.range(0));
    const qsizetype changed = middlePassage(passages, text.size() / 2);
    surface.reveal(passages[changed].range);
    paint();
    QList<TextHighlight> red = passages;
    red[changed].colorHex = u"#FF0000"_s;
    QList<TextHighlight> blue = passages;
    blue[changed].colorHex = u"#0000FF"_s;
    bool isRed = false;
    for ([[maybe_unused]] auto turn : state) {
        isRed = !isRed;
        surface.changePassage(isRed ? red : blue, changed);
        paint();
    }
    surface.setPassages(passages);
}

template <typename Surface>
void recolour(benchmark::State &state)
{
    auto &[surface, text, passages] = filled<Surface>(state.range(0));
    QList<TextHighlight> next = passages;
    bool isRed = false;
    for ([[maybe_unused]] auto turn : state) {
        isRed = !isRed;
        for (TextHighlight &passage : next)
            passage.colorHex = isRed ? u"#FF0000"_s : u"#0000FF"_s;
        surface.setPassages(next);
        paint();
    }
    surface.setPassages(passages);
}

template <typename Surface>
void wrapAnew(benchmark::State &state)
{
    auto &[surface, text, passages] = filled<Surface>(state.range(0));
    surface.reveal({text.size() / 2, 10}); // what is above must not matter
    paint();
    int width = 560;
    for ([[maybe_unused]] auto turn : state) {
        width = width == 560 ? 620 : 560;
        surface.widget().resize(width, windowSize.height());
        paint();
    }
    surface.widget().resize(windowSize);
    paint();
}

template <typename Surface>
void turnPage(benchmark::State &state)
{
    auto &surface = filled<Surface>(state.range(0)).surface;
    QScrollBar *bar = surface.widget().verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
    auto action = QScrollBar::SliderPageStepAdd;
    for ([[maybe_unused]] auto turn : state) {
        bar->triggerAction(action);
        paint();
        if (bar->value() >= bar->maximum() || bar->value() <= 0)
            bar->setValue(bar->maximum() / 2);
    }
}

template <typename Surface>
void openAtTheEnd(benchmark::State &state)
{
    kept = std::monostate();
    const QString text = englishText(state.range(0));
    Surface surface;
    for ([[maybe_unused]] auto turn : state) {
        surface.setContent(text, {});
        surface.reveal({text.size() - 200, 100});
        paint();
        state.PauseTiming();
        surface.setContent(u"Short."_s, {});
        state.ResumeTiming();
    }
}

/// A document that was just opened and of which nothing but the top was ever laid out.
template <typename Surface>
void revealTheEnd(benchmark::State &state)
{
    kept = std::monostate();
    const QString text = englishText(state.range(0));
    Surface surface;
    for ([[maybe_unused]] auto turn : state) {
        state.PauseTiming();
        surface.setContent(u"Short."_s, {});
        surface.setContent(text, {});
        state.ResumeTiming();
        surface.reveal({text.size() - 200, 100});
        paint();
    }
}

void openAMegabyteWithoutSpaces(benchmark::State &state)
{
    QString text(1'000'000, u' ');
    for (qsizetype index = 0; index < text.size(); ++index)
        text[index] =
            state.range(0) == 0 ? QChar(u'a' + int(index * 7919 % 26)) : QChar(0x4E00 + int(index * 7919 % 2000));
    OurSurface surface;
    for ([[maybe_unused]] auto turn : state) {
        surface.setContent(text, {});
        paint();
        state.PauseTiming();
        surface.setContent({}, {});
        state.ResumeTiming();
    }
}

#define BOTH(job, length, turns)                                                                                       \
    BENCHMARK(job<PlainSurface>)->Arg(length)->Iterations(turns)->Unit(benchmark::kMillisecond);                       \
    BENCHMARK(job<OurSurface>)->Arg(length)->Unit(benchmark::kMillisecond)

BOTH(openText, 1'000'000, 2);
BOTH(changePassage, 1'000'000, 20);
BOTH(recolour, 1'000'000, 3);
BOTH(wrapAnew, 1'000'000, 3);
BOTH(turnPage, 1'000'000, 50);
BOTH(openAtTheEnd, 1'000'000, 2);
BOTH(openText, 10'000'000, 1);
BOTH(changePassage, 10'000'000, 10);
BOTH(recolour, 10'000'000, 1);
BOTH(wrapAnew, 10'000'000, 2);
BOTH(turnPage, 10'000'000, 50);
BOTH(openAtTheEnd, 10'000'000, 1);
BENCHMARK(openAMegabyteWithoutSpaces)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// The scale check: each of these at 10,000,000 must take at most twice as long as at 100,000.
#define SCALE(job)                                                                                                     \
    BENCHMARK(job<OurSurface>)->Name("scale/" #job)->Arg(100'000)->Arg(10'000'000)->Unit(benchmark::kMillisecond)

SCALE(changePassage);
SCALE(turnPage);
SCALE(wrapAnew);
SCALE(revealTheEnd);

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setStyle(u"Fusion"_s);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    kept = std::monostate(); // no widget may outlive the application
    benchmark::Shutdown();
}
