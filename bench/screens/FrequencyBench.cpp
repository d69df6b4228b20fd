#include "Frames.h"

#include "kit/lists/RowList.h"
#include "kit/lists/SnippetRowDelegate.h"
#include "support/TestLibrary.h"
#include "workspace/results/WordFreqResultsView.h"
#include "workspace/sheets/PopUpList.h"

#include <QListView>
#include <QScrollBar>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

// The word frequency's screens with 100,000 occurrences of a term, and its pop-up list with 5,000 names of 300
// characters. "plain" rows do the same work in the straightforward way.

namespace {

constexpr int documentCount = 100;
constexpr int occurrencesEach = 1'000;
constexpr int nameCount = 5'000;
constexpr QSize columnSize{285, 750};

/// The store after a count, with its top term chosen.
struct Counted {
    Counted()
    {
        const QString line = u"Some words stand here before a Phone, and others come after it in each line.\n"_s;
        for (int number = 0; number < documentCount; ++number)
            library.store.addPastedDocument(u"Document %1"_s.arg(number), line.repeated(occurrencesEach));
        library.store.runWordFrequency(WordFrequency::AllDocuments{}, 3, true, 50);
        library.store.selectWordFreqTerm(u"phone"_s);
    }
    TestLibrary library;
};

struct ShownResults {
    ShownResults()
    {
        view.resize(columnSize);
        view.show();
        paint();
    }
    [[nodiscard]] RowList &list() const { return *view.findChild<RowList *>(u"occurrenceList"_s); }
    [[nodiscard]] QScrollBar &bar() const { return *list().verticalScrollBar(); }

    Counted counted;
    WordFreqResultsView view{counted.library.store};
};

void openOccurrences(benchmark::State &state)
{
    Counted counted;
    for ([[maybe_unused]] auto turn : state) {
        WordFreqResultsView view(counted.library.store);
        view.resize(columnSize);
        view.show();
        paint();
    }
}

void openPlainOccurrences(benchmark::State &state)
{
    const ShownResults shown;
    for ([[maybe_unused]] auto turn : state) {
        QListView list;
        SnippetRowDelegate delegate;
        list.setItemDelegate(&delegate);
        list.setModel(shown.list().model());
        list.resize(columnSize);
        list.show();
        paint();
    }
}

void scrollOccurrences(benchmark::State &state)
{
    const ShownResults shown;
    QScrollBar &bar = shown.bar();
    for ([[maybe_unused]] auto turn : state) {
        bar.setValue(bar.value() < bar.maximum() ? bar.value() + bar.pageStep() : 0);
        paint();
    }
}

void jumpInOccurrences(benchmark::State &state)
{
    const ShownResults shown;
    int place = 0;
    for ([[maybe_unused]] auto turn : state) {
        place = (place + 7'919) % 10'000;
        shown.bar().setValue(int(qint64(shown.bar().maximum()) * place / 10'000));
        paint();
    }
}

void walkThroughOccurrences(benchmark::State &state)
{
    const ShownResults shown;
    for ([[maybe_unused]] auto turn : state) {
        press(shown.list(), Qt::Key_Down, {});
        paint();
    }
}

QList<PopUpList::Entry> longNames()
{
    QList<PopUpList::Entry> names;
    for (int number = 0; number < nameCount; ++number)
        names.append({QUuid::createUuid(), QString::number(number) + u" words of a long name"_s.repeated(14)});
    return names;
}

void openPopUp(benchmark::State &state, QComboBox &box)
{
    box.resize(300, 32);
    box.show();
    paint();
    for ([[maybe_unused]] auto turn : state) {
        box.showPopup();
        paint();
        state.PauseTiming();
        box.hidePopup();
        paint();
        state.ResumeTiming();
    }
}

void openNames(benchmark::State &state)
{
    PopUpList box;
    box.setEntries(longNames());
    openPopUp(state, box);
}

void openPlainNames(benchmark::State &state)
{
    QComboBox box;
    for (const PopUpList::Entry &entry : longNames())
        box.addItem(entry.second, entry.first);
    openPopUp(state, box);
}

#define JOB(job) BENCHMARK(job)->Unit(benchmark::kMillisecond)

JOB(openOccurrences);
JOB(openPlainOccurrences)->Iterations(1);
JOB(scrollOccurrences);
JOB(jumpInOccurrences);
JOB(walkThroughOccurrences);
JOB(openNames);
JOB(openPlainNames)->Iterations(3);

} // namespace
