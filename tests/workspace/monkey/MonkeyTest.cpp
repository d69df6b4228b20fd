#include "Acts.h"
#include "Soundness.h"

#include <QAbstractAnimation>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int eventsOfOneLife = 2'000; ///< at most, from a fresh library to the end of its window
constexpr int eventsUntilRest = 250;
constexpr qsizetype maxDocuments = 10; // per project, beyond which they are deleted: a library that grows would hide
constexpr qsizetype maxCodes = 30; //     what is never given back
constexpr qsizetype objectsToSpare = 6; ///< of one class, which the toolkit makes when they are first needed
constexpr qint64 bytesToSpare = 3'000'000; ///< for what the toolkit remembers, as pictures of letters
constexpr int eventsUntilAllIsMet = 20'000; ///< letters, and the fonts that have them

int parameter(const char *name, int usual)
{
    const int given = qEnvironmentVariableIntValue(name);
    return given > 0 ? given : usual;
}

QString nastyText()
{
    return u"Dr. Alex 👩‍🔬 said:\r\n“trust 😀 grows”\u2028and e\u0301 \u05E9\u05DC\u05D5\u05DD\n"_s
        .repeated(40);
}

bool isMoving(const QWidget &window)
{
    return std::ranges::any_of(window.findChildren<QAbstractAnimation *>(),
        [](const QAbstractAnimation *each) { return each->state() == QAbstractAnimation::Running; });
}

void throwAwayWhatIsDone()
{
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

/// Clicks, drags and types anywhere in the real window, the same way for the same seed.
class Monkey : public ThemedTest, public testing::WithParamInterface<unsigned> {
protected:
    void begin(std::unique_ptr<DatabaseQueue> file = nullptr)
    {
        m_library = std::make_unique<TestLibrary>(QStringList(), std::move(file));
        m_root = std::make_unique<RootView>(m_library->store);
        m_root->show();
        QApplication::setActiveWindow(m_root.get());
        QApplication::processEvents();
    }
    std::unique_ptr<DatabaseQueue> end()
    {
        std::unique_ptr<DatabaseQueue> file = std::move(m_library->queue);
        m_root.reset();
        m_library.reset();
        throwAwayWhatIsDone();
        return file;
    }
    /// A life of the window, from a fresh library on.
    void live(int events)
    {
        begin();
        fill();
        Acts acts({*m_library, *m_root, m_settings, m_folder.path()}, m_chance, m_tally);
        for (int number = 1; number <= events && !HasFailure(); ++number, ++m_done) {
            SCOPED_TRACE(testing::Message() << "seed " << GetParam() << ", event " << m_done);
            acts.act();
            if (number % 10 == 0)
                QApplication::processEvents();
            if (number % eventsUntilRest != 0 && number != events)
                continue;
            rest(acts);
            check();
        }
        checkAgainstAFreshStart();
        end();
    }
    [[nodiscard]] int eventsDone() const { return m_done; }

    Tally m_tally;

private:
    void fill()
    {
        LibraryStore &store = m_library->store;
        store.loadSampleContent();
        store.exportQdpx(m_folder.filePath(u"in.qdpx"_s)); // what is imported mustn't grow with each round
        QFile file(m_folder.filePath(u"in.txt"_s));
        ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write(nastyText().toUtf8()) > 0);
        m_library->makeCodes({u"One"_s, u"Two & more"_s, u"a name that goes on "_s.repeated(15)});
        const Project first = store.project()->value();
        store.createProject(u"Second"_s);
        store.selectProject(first.id);
    }
    /// Nothing is open or on its way, and there is enough to play with, but not too much.
    void rest(Acts &acts)
    {
        animate(false);
        acts.closeEverything();
        LibraryStore &store = m_library->store;
        store.searchText().set({});
        store.statusMessage().set({});
        keepPlayable(store);
        store.goToDocuments();
        acts.leaveFields();
        m_root->hide(); // closes memos that have been opened for nothing
        m_root->show();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !isMoving(*m_root); }));
        throwAwayWhatIsDone();
    }
    void keepPlayable(LibraryStore &store)
    {
        while (store.documents()->size() > maxDocuments)
            store.deleteDocument(m_chance.oneOf(store.documents().get()));
        while (store.codes()->size() > maxCodes)
            store.deleteCode(m_chance.oneOf(store.codes().get()));
        while (store.codes()->size() < 3)
            m_library->makeCodes({u"Code"_s});
        while (store.documents()->size() < 3)
            store.addPastedDocument(u"Voices"_s, nastyText());
        for (int start = 0; start < 60; start += 20) {
            const Document document = m_chance.oneOf(store.documents().get());
            store.assignCode(m_chance.oneOf(store.codes().get()), document, {start, 15});
        }
        if (!store.selectedDocumentID().get())
            store.selectedDocumentID().set(store.documents()->first().id);
    }
    /// A second window on the same store shows and holds the same.
    void check()
    {
        Soundness::checkFile(*m_library->queue);
        RootView anew(m_library->store);
        anew.resize(m_root->size());
        anew.show();
        throwAwayWhatIsDone();
        EXPECT_EQ(Soundness::difference(Soundness::shownBy(*m_root), Soundness::shownBy(anew)), "");
        const auto fresh = Soundness::objectsOf(anew);
        const auto used = Soundness::objectsOf(*m_root);
        for (auto each = used.cbegin(); each != used.cend(); ++each)
            EXPECT_LE(each.value(), fresh.value(each.key()) + objectsToSpare)
                << each.key().toStdString() << " is left over";
    }
    /// The next start of the program finds everything as it stood, and needs about as much memory.
    void checkAgainstAFreshStart()
    {
        const QUuid project = m_library->store.project()->value().id;
        const std::optional<QUuid> document = m_library->store.selectedDocumentID().get();
        const bool hintIsDismissed = m_library->store.codingHintDismissed().get();
        const QSize size = m_root->size();
        const QStringList before = Soundness::shownBy(*m_root);
        const qint64 held = Soundness::heapInUse();
        begin(end());
        m_root->resize(size);
        m_library->store.selectProject(project);
        m_library->store.selectedDocumentID().set(document);
        m_library->store.codingHintDismissed().set(hintIsDismissed);
        throwAwayWhatIsDone();
        EXPECT_EQ(Soundness::difference(before, Soundness::shownBy(*m_root)), "");
        EXPECT_LT(held - Soundness::heapInUse(), bytesToSpare);
    }

    QTemporaryDir m_folder;
    Chance m_chance{GetParam()};
    std::unique_ptr<TestLibrary> m_library;
    std::unique_ptr<RootView> m_root;
    int m_done = 0;
};

/// Whoever has clicked for long has been everywhere; otherwise all the rest proves nothing.
void checkReach(const Tally &tally, int events)
{
    if (events < 25'000)
        return;
    for (const QString &act : {u"entry: Delete"_s, u"entry: Delete…"_s, u"entry: Remove Code"_s, u"entry: Add Code…"_s,
             u"entry: Merge Into"_s, u"entry: Nest Under"_s, u"entry: Import REFI-QDA Project…"_s, u"alert: Delete"_s,
             u"alert: Merge"_s, u"alert: Cancel"_s, u"Compound Query: Run Query"_s, u"Word Frequency: Count"_s,
             u"Export Coded Excerpts: Export"_s, u"Paste a Document: Add"_s, u"popover: code picked"_s,
             u"row dragged and taken"_s, u"code deleted under a popover"_s, u"document deleted under a popover"_s,
             u"document deleted under a menu"_s, u"document deleted under a sheet"_s, u"code deleted under an alert"_s,
             u"project switched during a flash"_s})
        EXPECT_TRUE(tally.contains(act)) << act.toStdString();
}

/// VORN_SEED asks for one of its own.
std::vector<unsigned> seeds()
{
    if (const int given = qEnvironmentVariableIntValue("VORN_SEED"); given > 0)
        return {unsigned(given)};
    return {1, 2};
}

} // namespace

/// VORN_MONKEY_EVENTS says how many for each seed.
TEST_P(Monkey, LeavesTheLibrarySoundAndTheWindowTrue)
{
    const int events = parameter("VORN_MONKEY_EVENTS", 1'000);
    std::optional<qint64> heap;
    qsizetype widgets = 0;
    while (eventsDone() < events && !HasFailure()) {
        live(std::min(eventsOfOneLife, events - eventsDone()));
        if (!heap || eventsDone() <= eventsUntilAllIsMet) { // what is made once and for all has been made by now
            heap = Soundness::heapInUse();
            widgets = QApplication::allWidgets().size();
        }
    }
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
    EXPECT_LT(Soundness::heapInUse() - *heap, bytesToSpare);
    checkReach(m_tally, events);
    for (auto each = m_tally.cbegin(); each != m_tally.cend(); ++each)
        std::printf("%7lld %s\n", each.value(), qPrintable(each.key()));
}

INSTANTIATE_TEST_SUITE_P(Seeds, Monkey, testing::ValuesIn(seeds()));
