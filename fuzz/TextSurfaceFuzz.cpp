#include "InputReader.h"
#include "Require.h"
#include "surface/CodingTextView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <functional>
#include <memory>
#include <vector>

namespace {

const QStringList &colors()
{
    static const QStringList list{QStringLiteral("#FF3B30"), QStringLiteral("#34C759"), QStringLiteral("no colour")};
    return list;
}

/// A text surface on which an input performs what the library, the window and the user can do.
class Surface {
public:
    explicit Surface(InputReader &input) : m_input(input)
    {
        m_view.setRunLater([this](std::chrono::milliseconds, std::function<void()> job) { m_later.push_back(job); });
        m_view.resize(400, 200);
        keepScrollBar(m_view);
        m_view.show();
        giveText();
    }

    void run()
    {
        while (!m_input.atEnd()) {
            act(m_input.byte());
            check();
        }
        compareWithFreshOne();
    }

private:
    void act(int kind)
    {
        switch (kind % 14) {
        case 0:
            return giveText();
        case 1:
            return addPassage();
        case 2:
            return changePassage();
        case 3:
            return removePassage();
        case 4:
            return m_view.resize(m_input.below(900), m_input.below(400));
        case 5:
            return changeFont(6 + m_input.byte() % 30);
        case 6:
            return m_view.verticalScrollBar()->setValue(m_input.below(0x10000));
        case 7:
            return reveal();
        case 8:
            return m_view.select(m_input.range(size()));
        case 9:
            return m_view.setFindMatches({m_input.range(size()), m_input.range(size())});
        case 10:
            return press();
        case 11:
            return click();
        case 12:
            return endFlashes();
        default:
            return paint();
        }
    }

    void giveText()
    {
        m_content.text = m_input.units(m_input.below(600));
        if (m_input.byte() % 4 == 0)
            m_content.text = m_content.text.repeated(m_input.byte());
        m_content.resetToken += m_input.byte() % 2;
        m_view.apply(m_content);
    }
    void addPassage()
    {
        m_content.highlights.append({QUuid(), m_input.range(size()), anyColor(), QString()});
        m_view.apply(m_content);
    }
    void changePassage()
    {
        if (TextHighlight *passage = anyPassage()) {
            passage->colorHex = anyColor();
            passage->range = m_input.range(size());
        }
        m_view.apply(m_content);
    }
    void removePassage()
    {
        if (const TextHighlight *passage = anyPassage())
            m_content.highlights.removeAt(passage - m_content.highlights.constData());
        m_view.apply(m_content);
    }
    void changeFont(int pixels)
    {
        QFont font = m_view.font();
        font.setPixelSize(pixels);
        m_view.setFont(font);
    }
    void reveal()
    {
        m_content.revealRange = m_input.range(size());
        ++m_content.revealToken;
        m_view.apply(m_content);
    }
    void press()
    {
        static constexpr Qt::Key keys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageDown,
            Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End, Qt::Key_A, Qt::Key_Escape};
        static constexpr Qt::KeyboardModifiers modifiers[] = {
            Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier, Qt::ControlModifier | Qt::ShiftModifier};
        const auto chosen = size_t(m_input.byte());
        QKeyEvent event(QEvent::KeyPress, keys[chosen % std::size(keys)], modifiers[chosen / 16 % 4]);
        QApplication::sendEvent(&m_view, &event);
    }
    void click()
    {
        const QPoint point(m_input.below(900), m_input.below(400));
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease}) {
            const QPoint place = type == QEvent::MouseButtonPress ? point : point + QPoint(m_input.byte(), 9);
            QMouseEvent event(type, place, m_view.viewport()->mapToGlobal(place), Qt::LeftButton,
                type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(m_view.viewport(), &event);
        }
    }
    void endFlashes()
    {
        for (const auto &job : std::exchange(m_later, {}))
            job();
    }
    void paint() { (void)m_view.grab(); }

    /// The surface reports the text that it was given, and ranges only within it.
    void check()
    {
        require(m_view.text() == m_content.text);
        const TextRange selection = m_view.selection();
        require(selection.location >= 0 && selection.length >= 0 && selection.end() <= size());
        const qint64 under = m_view.characterAt({m_input.byte(), m_input.byte()});
        require(under >= 0 && under <= size());
        const TextRange line = m_view.lineAt(under);
        require(line.location >= 0 && line.location <= under && line.end() <= size());
        for (const TextRange &match : m_view.findMatches())
            require(match.location >= 0 && match.end() <= size());
    }

    /// The picture is that of a fresh surface that gets the same text and passages at once.
    void compareWithFreshOne()
    {
        endFlashes();
        prepareForComparison(m_view);
        m_view.setFindMatches({});
        CodingTextView fresh;
        fresh.resize(m_view.size());
        fresh.setFont(m_view.font());
        keepScrollBar(fresh);
        fresh.show();
        CodingTextView::Content content = m_content;
        content.revealRange.reset();
        fresh.apply(content);
        prepareForComparison(fresh);
        require(pictureOf(m_view) == pictureOf(fresh));
    }
    /// A text may fit without a scroll bar but not beside one: then both pictures are right.
    static void keepScrollBar(CodingTextView &view) { view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); }
    static void prepareForComparison(CodingTextView &view)
    {
        view.select({});
        view.clearFocus();
        view.verticalScrollBar()->setValue(0);
    }
    static QImage pictureOf(CodingTextView &view)
    {
        QApplication::processEvents();
        return view.viewport()->grab().toImage();
    }

    [[nodiscard]] qsizetype size() const { return m_content.text.size(); }
    [[nodiscard]] const QString &anyColor() { return colors()[m_input.byte() % colors().size()]; }
    [[nodiscard]] TextHighlight *anyPassage()
    {
        const qsizetype count = m_content.highlights.size();
        return count == 0 ? nullptr : &m_content.highlights[m_input.byte() % count];
    }

    InputReader &m_input;
    CodingTextView m_view;
    CodingTextView::Content m_content;
    std::vector<std::function<void()>> m_later;
};

/// Made once and never destroyed: the statics of Qt's libraries must not outlive it.
void startApplication()
{
    static char name[] = "TextSurfaceFuzz";
    static char *arguments[] = {name, nullptr};
    static int count = 1;
    if (QCoreApplication::instance() != nullptr)
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(count, arguments);
}

} // namespace

/// Fonts that are met on the way are remembered by their library in a way that looks like a leak.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig\n";
}

/// Whatever is done to the surface, positions stay those of the text, and nothing of the way is left in the picture.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    startApplication();
    InputReader input(data, size);
    Surface(input).run();
    QApplication::processEvents();
    return 0;
}
