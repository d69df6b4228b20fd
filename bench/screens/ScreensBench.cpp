#include "../Corpus.h"
#include "Frames.h"

#include "kit/lists/RowList.h"
#include "kit/lists/SnippetRowDelegate.h"
#include "records/AppDatabase.h"
#include "support/TestLibrary.h"
#include "workspace/results/QueryResultsView.h"
#include "workspace/sheets/PasteSheet.h"
#include "workspace/sheets/QuerySheet.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QCheckBox>
#include <QListView>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

#include <optional>

using namespace Qt::StringLiterals;

// The compound query's screens with 2,000 codes and 100,000 results, and a long text in the paste sheet. "plain" rows
// do the same work in the straightforward way: a widget for each code, and a list that asks for every row's height.
// Everything between two frames must take less than 16 ms.

namespace {

constexpr int codeCount = 2'000;
constexpr int resultCount = 100'000;
constexpr QSize columnSize{285, 750};

/// The store after a query for all its codes.
struct Queried {
    Queried()
    {
        QuerySpec spec;
        for (const Code &code : library.store.codes().get())
            spec.codeIDs.append(code.id);
        library.store.runQuery(spec);
    }
    CorpusLibrary file{Corpus(100, 20'000), codeCount, resultCount};
    TestLibrary library{{}, AppDatabase::openQueue(file.path())};
    QWidget window;
};

/// No widget may outlive the application.
std::optional<Queried> kept;

Queried &queried()
{
    if (!kept) {
        kept.emplace();
        kept->window.resize(900, 780);
        kept->window.show();
    }
    return *kept;
}

void openCodes(benchmark::State &state)
{
    Queried &all = queried();
    for ([[maybe_unused]] auto turn : state) {
        auto *sheet = new QuerySheet(all.library.store, all.window);
        sheet->open();
        paint();
        state.PauseTiming();
        delete sheet;
        state.ResumeTiming();
    }
}

void openPlainCodes(benchmark::State &state)
{
    Queried &all = queried();
    for ([[maybe_unused]] auto turn : state) {
        QScrollArea area;
        auto *column = new QWidget;
        auto *rows = new QVBoxLayout(column);
        for (const FlatCode &code : all.library.store.orderedCodes())
            rows->addWidget(new QCheckBox(code.code.name));
        area.setWidget(column);
        area.resize(380, 260);
        area.show();
        paint();
    }
}

void toggleCode(benchmark::State &state)
{
    Queried &all = queried();
    QuerySheet sheet(all.library.store, all.window);
    sheet.setAttribute(Qt::WA_DeleteOnClose, false);
    sheet.open();
    auto &list = *sheet.findChild<RowList *>();
    list.setCurrentIndex(list.model()->index(1'000, 0));
    paint();
    for ([[maybe_unused]] auto turn : state) {
        press(list, Qt::Key_Space, u" "_s);
        paint();
    }
}

void scrollCodes(benchmark::State &state)
{
    Queried &all = queried();
    QuerySheet sheet(all.library.store, all.window);
    sheet.setAttribute(Qt::WA_DeleteOnClose, false);
    sheet.open();
    QScrollBar &bar = *sheet.findChild<RowList *>()->verticalScrollBar();
    for ([[maybe_unused]] auto turn : state) {
        bar.setValue(bar.value() < bar.maximum() ? bar.value() + bar.pageStep() : 0);
        paint();
    }
}

void openResults(benchmark::State &state)
{
    Queried &all = queried();
    for ([[maybe_unused]] auto turn : state) {
        QueryResultsView view(all.library.store);
        view.resize(columnSize);
        view.show();
        paint();
    }
}

void openPlainResults(benchmark::State &state)
{
    Queried &all = queried();
    QueryResultsView view(all.library.store);
    view.show();
    for ([[maybe_unused]] auto turn : state) {
        QListView list;
        SnippetRowDelegate delegate;
        list.setItemDelegate(&delegate);
        list.setModel(view.findChild<RowList *>()->model());
        list.resize(columnSize);
        list.show();
        paint();
    }
}

/// The results in their column, painted once.
struct ShownResults {
    ShownResults()
    {
        view.resize(columnSize);
        view.show();
        paint();
    }
    [[nodiscard]] QScrollBar &bar() const { return *view.findChild<RowList *>()->verticalScrollBar(); }

    QueryResultsView view{queried().library.store};
};

void scrollResults(benchmark::State &state)
{
    const ShownResults shown;
    QScrollBar &bar = shown.bar();
    for ([[maybe_unused]] auto turn : state) {
        bar.setValue(bar.value() < bar.maximum() ? bar.value() + bar.pageStep() : 0);
        paint();
    }
}

void jumpInResults(benchmark::State &state)
{
    const ShownResults shown;
    QScrollBar &bar = shown.bar();
    int place = 0;
    for ([[maybe_unused]] auto turn : state) {
        place = (place + 7'919) % 10'000;
        bar.setValue(int(qint64(bar.maximum()) * place / 10'000));
        paint();
    }
}

void renameACode(benchmark::State &state)
{
    const ShownResults shown;
    LibraryStore &store = queried().library.store;
    int number = 0;
    for ([[maybe_unused]] auto turn : state) {
        store.renameCode(store.codes()->first(), u"Name %1"_s.arg(++number));
        paint();
    }
}

void pasteText(benchmark::State &state)
{
    const QString text =
        u"Some words of a paragraph that goes on for a while, and then still a little more. \n"_s.repeated(
            qsizetype(state.range(0)) / 84);
    for ([[maybe_unused]] auto turn : state) {
        PasteEditor editor;
        editor.resize(518, 232);
        editor.show();
        editor.insertPlainText(text);
        paint();
        benchmark::DoNotOptimize(editor.isBlank());
    }
}

void typeInPastedText(benchmark::State &state)
{
    PasteEditor editor;
    editor.resize(518, 232);
    editor.show();
    editor.insertPlainText(
        u"Some words of a paragraph that goes on for a while, and then still a little more. \n"_s.repeated(
            qsizetype(state.range(0)) / 84));
    paint();
    for ([[maybe_unused]] auto turn : state) {
        press(editor, Qt::Key_A, u"a"_s);
        paint();
    }
}

#define JOB(job) BENCHMARK(job)->Unit(benchmark::kMillisecond)

JOB(openCodes);
JOB(openPlainCodes)->Iterations(3);
JOB(toggleCode);
JOB(scrollCodes);
JOB(openResults);
JOB(openPlainResults)->Iterations(1);
JOB(scrollResults);
JOB(jumpInResults);
JOB(renameACode);
JOB(pasteText)->Arg(1'000'000)->Arg(10'000'000);
JOB(typeInPastedText)->Arg(1'000'000)->Arg(10'000'000);

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setStyle(u"Fusion"_s);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    kept.reset();
    benchmark::Shutdown();
}
