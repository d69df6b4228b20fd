#include "library/survival/LibraryDigest.h"
#include "library/survival/Researcher.h"
#include "library/survival/Workplace.h"
#include "records/AppDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(SecondProgram, OnTheSameLibraryTakesTurnsWithTheFirst)
{
    constexpr int steps = 120;
    Workplace place;
    place.restoreLibrary();
    TestLibrary first({}, AppDatabase::openQueue(place.libraryFile()));
    TestLibrary second({}, AppDatabase::openQueue(place.libraryFile()));
    Researcher one(first, place.exports(), 5);
    Researcher other(second, place.exports(), 6);
    for (int step = 0; step < steps && !HasFailure(); step += 2) {
        SCOPED_TRACE(step);
        first.store.refresh();
        one.work(step);
        second.store.refresh();
        other.work(step + 1);
        first.store.refresh();
        EXPECT_EQ(first.store.documents().get(), second.store.documents().get());
        EXPECT_EQ(first.store.codes().get(), second.store.codes().get());
        EXPECT_EQ(first.store.codeCounts().get(), second.store.codeCounts().get());
        EXPECT_EQ(faultsOf(*first.queue), QString());
    }
}

TEST(SecondProgram, ThatDeletesTheTargetOfAMergeTakesNoPassageAlong)
{
    Workplace place;
    place.restoreLibrary();
    TestLibrary first({}, AppDatabase::openQueue(place.libraryFile()));
    TestLibrary second({}, AppDatabase::openQueue(place.libraryFile()));
    second.store.deleteCode(second.code(u"Gamma"_s));
    const Code gone = first.code(u"Gamma"_s);
    first.store.nestCode(first.code(u"Beta"_s).id, gone.id);
    EXPECT_EQ(faultsOf(*first.queue), QString());
    first.store.mergeCodes(first.code(u"Alpha"_s), gone);
    EXPECT_EQ(faultsOf(*first.queue), QString());
    EXPECT_EQ(first.store.excerpts(first.code(u"Alpha"_s).id).size(), 1);
}

TEST(SecondProgram, ThatHasFallenBehindWritesOnlyWhatIsChangedThere)
{
    Workplace place;
    place.restoreLibrary();
    TestLibrary first({}, AppDatabase::openQueue(place.libraryFile()));
    TestLibrary second({}, AppDatabase::openQueue(place.libraryFile()));
    const Document document = second.document(u"First"_s);
    const Code code = second.code(u"Gamma"_s);
    first.store.setDocumentMemo(first.document(u"First"_s), u"hours of thinking"_s);
    first.store.setCodeMemo(first.code(u"Gamma"_s), u"more of it"_s);
    first.store.nestCode(code.id, first.code(u"Beta"_s).id);

    second.store.setDocumentMemo(document, document.memo.value_or(QString())); // as a window does when it closes
    second.store.setCodeMemo(code, code.memo.value_or(QString()));
    second.store.renameDocument(document, u"Renamed"_s);
    second.store.renameCode(code, u"Delta"_s);
    second.store.setCodeColor(code, u"#123456"_s);
    first.store.refresh();
    EXPECT_EQ(first.document(u"Renamed"_s).memo, u"hours of thinking"_s);
    EXPECT_EQ(first.code(u"Delta"_s).memo, u"more of it"_s);
    EXPECT_EQ(first.code(u"Delta"_s).parentID, first.code(u"Beta"_s).id);
    EXPECT_EQ(first.code(u"Delta"_s).colorHex, u"#123456"_s);
}
