#include "../Corpus.h"
#include "../screens/Frames.h"

#include "kit/theme/Appearance.h"
#include "kit/theme/Theme.h"
#include "records/AppDatabase.h"
#include "support/TestLibrary.h"
#include "surface/CodingTextView.h"
#include "workspace/RootView.h"
#include "workspace/picker/CodePickerPopover.h"
#include "workspace/reader/SelectionBar.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextEdit>

#include <benchmark/benchmark.h>

#include <array>
#include <optional>

using namespace Qt::StringLiterals;

// From the click to the changed picture, for the acts of every day in the whole window: on a few documents, where
// nothing may take longer than a frame, and on 1,000 documents with 100 MB of text and 100,000 codings, where nothing
// may take longer than 100 ms. VORN_LIBRARY names a library that vorn_library_bench has built: its copy is the third.

namespace {

enum Size { small, large, given };

/// A desktop without animations, so that a picture is complete when it is painted.
class StillDesktop final : public DesktopSettings {
public:
    [[nodiscard]] QVariant value(const QString &, const QString &key) const override
    {
        return key == u"enable-animations" ? QVariant(false) : QVariant();
    }
};

void click(QWidget &widget, const QPoint &place)
{
    const QPointF global = widget.mapToGlobal(place);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, global, Qt::LeftButton,
            type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }
}

QString copyOfGivenLibrary()
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(u"vorn.sqlite"_s);
    if (!QFile::exists(path) && !QFile::copy(qEnvironmentVariable("VORN_LIBRARY"), path))
        qFatal("The library can't be copied");
    return path;
}

/// A library file of that size, with a second project in it.
QString libraryFile(Size size)
{
    static std::array<std::optional<CorpusLibrary>, 2> files;
    static std::array<QString, 2> paths;
    if (size == given)
        return copyOfGivenLibrary();
    if (!files[size]) {
        if (size == small)
            files[size].emplace(Corpus(4, 1'000), 3, 12);
        else
            files[size].emplace(largeCorpus(), 300, 100'000);
        paths[size] = files[size]->path();
        TestLibrary library({}, AppDatabase::openQueue(paths[size]));
        library.store.createProject(u"Second"_s);
        library.paste(u"Other"_s, u"Some other words."_s);
        library.store.selectProject(library.store.projects()->first().id);
    }
    return paths[size];
}

/// The window over that library, with its first document open.
struct Opened {
    explicit Opened(Size size) : library({}, AppDatabase::openQueue(libraryFile(size))), root(library.store)
    {
        for (const Project &project : library.store.projects().get()) {
            if (project.name == u"Large")
                library.store.selectProject(project.id);
        }
        root.show();
        QApplication::setActiveWindow(&root);
        paint();
    }
    template <typename Widget>
    [[nodiscard]] Widget &find(const QString &name = {}) const
    {
        return *root.findChild<Widget *>(name);
    }
    void clickRow(const QString &list, int row) const
    {
        auto &view = find<QListView>(list);
        click(*view.viewport(), view.visualRect(view.model()->index(row, 0)).center());
    }
    [[nodiscard]] int sidebarRow(const QString &text) const
    {
        const QAbstractItemModel &rows = *find<QListView>(u"sidebarList"_s).model();
        return rows.match(rows.index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly).value(0).row();
    }

    TestLibrary library;
    RootView root;
};

std::array<std::optional<Opened>, 3> kept;

Opened &opened(const benchmark::State &state)
{
    const auto size = Size(state.range(0));
    if (!kept[size])
        kept[size].emplace(size);
    return *kept[size];
}

/// Does `act(window, turn)` over and over, each time until the picture has changed.
template <typename Act>
void measure(benchmark::State &state, Act act)
{
    const Opened &window = opened(state);
    int turn = 0;
    for ([[maybe_unused]] auto each : state) {
        act(window, turn++);
        paint();
    }
}

void startUp(benchmark::State &state)
{
    const auto size = Size(state.range(0));
    (void)libraryFile(size);
    kept[size].reset();
    for ([[maybe_unused]] auto each : state) {
        Opened window(size);
        state.PauseTiming();
        window.root.hide();
        state.ResumeTiming();
    }
}

void selectDocument(benchmark::State &state)
{
    opened(state).clickRow(u"sidebarList"_s, opened(state).sidebarRow(u"Large"_s));
    paint();
    measure(state, [](const Opened &window, int turn) { window.clickRow(u"documentList"_s, turn % 4); });
}

void selectCode(benchmark::State &state)
{
    measure(state, [](const Opened &window, int turn) {
        window.clickRow(u"sidebarList"_s, window.sidebarRow(u"Code %1"_s.arg(turn % 3)));
    });
}

void openPicker(benchmark::State &state)
{
    Opened &window = opened(state);
    auto &text = window.find<CodingTextView>();
    press(text, Qt::Key_Home, {}, Qt::ControlModifier);
    press(text, Qt::Key_Right, {}, Qt::ShiftModifier);
    paint();
    for ([[maybe_unused]] auto each : state) {
        window.find<SelectionBar>().addButton().click();
        paint();
        state.PauseTiming();
        press(window.find<QLineEdit>(u"pickerField"_s), Qt::Key_Escape);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        paint();
        state.ResumeTiming();
    }
}

void filterPicker(benchmark::State &state)
{
    Opened &window = opened(state);
    auto &text = window.find<CodingTextView>();
    press(text, Qt::Key_Home, {}, Qt::ControlModifier);
    press(text, Qt::Key_Right, {}, Qt::ShiftModifier);
    window.find<SelectionBar>().addButton().click();
    paint();
    auto &field = window.find<QLineEdit>(u"pickerField"_s);
    measure(state, [&](const Opened &, int turn) {
        if (turn % 2 == 0)
            press(field, Qt::Key_1, u"1"_s);
        else
            press(field, Qt::Key_Backspace);
    });
    press(field, Qt::Key_Escape);
    paint();
}

void codeAPassage(benchmark::State &state)
{
    Opened &window = opened(state);
    LibraryStore &store = window.library.store;
    for ([[maybe_unused]] auto each : state) {
        store.assignCode(store.codes()->first(), store.documents()->first(), {10, 20});
        paint();
        state.PauseTiming();
        store.removeCoding(store.codings(store.documents()->first()).first());
        paint();
        state.ResumeTiming();
    }
}

void typeMemo(benchmark::State &state)
{
    Opened &window = opened(state);
    for (QPushButton *button : window.root.findChildren<QPushButton *>()) {
        if (button->text() == u"Document memo…" && button->isVisible())
            button->click();
    }
    paint();
    measure(state, [](const Opened &each, int) { press(each.find<QTextEdit>(u"memo"_s), Qt::Key_A, u"a"_s); });
}

void typeSearch(benchmark::State &state)
{
    opened(state).clickRow(u"sidebarList"_s, opened(state).sidebarRow(u"Large"_s));
    paint();
    measure(state, [](const Opened &window, int turn) {
        auto &field = window.find<QLineEdit>(u"documentSearch"_s);
        if (turn % 2 == 0)
            press(field, Qt::Key_E, u"e"_s);
        else
            press(field, Qt::Key_Backspace);
    });
    opened(state).find<QLineEdit>(u"documentSearch"_s).clear();
}

void switchProject(benchmark::State &state)
{
    measure(state, [](const Opened &window, int turn) {
        window.clickRow(u"sidebarList"_s, window.sidebarRow(turn % 2 == 0 ? u"Second"_s : u"Large"_s));
    });
}

void onEverySize(benchmark::internal::Benchmark *act)
{
    act->Arg(small)->Arg(large)->Unit(benchmark::kMillisecond);
    if (qEnvironmentVariableIsSet("VORN_LIBRARY"))
        act->Arg(given);
}

#define ACT(act) BENCHMARK(act)->Apply(onEverySize)

ACT(startUp)->Iterations(3);
ACT(selectDocument);
ACT(selectCode);
ACT(openPicker);
ACT(filterPicker);
ACT(codeAPassage);
ACT(typeMemo);
ACT(typeSearch);
ACT(switchProject);

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    Q_INIT_RESOURCE(vorn);
    const StillDesktop desktop;
    Appearance appearance(desktop, QApplication::palette());
    Theme::follow(appearance);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    for (std::optional<Opened> &window : kept)
        window.reset(); // no widget may outlive the application
    benchmark::Shutdown();
}
