#include "library/survival/Operations.h"
#include "records/AppDatabase.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Two programs on one library.
class SecondProgram : public testing::Test {
protected:
    Workplace place;
    TestLibrary first{{}, place.restored()};
    TestLibrary second{{}, AppDatabase::openQueue(place.libraryFile())};
};

} // namespace

TEST_F(SecondProgram, TakesTurnsWithTheFirst)
{
    TestLibrary *next = &first;
    for (const Operation &operation : operations()) {
        SCOPED_TRACE(operation.name);
        next->store.refresh();
        operation.perform(*next, place);
        next = next == &first ? &second : &first;
        next->store.refresh();
        if (first.store.project().get() != second.store.project().get())
            break; // a new project
        EXPECT_EQ(first.store.documents().get(), second.store.documents().get());
        EXPECT_EQ(first.store.codes().get(), second.store.codes().get());
        EXPECT_EQ(first.store.codeCounts().get(), second.store.codeCounts().get());
        EXPECT_EQ(faultsOf(*first.queue), QString());
    }
}

TEST_F(SecondProgram, ThatDeletesTheTargetOfAMergeTakesNoPassageAlong)
{
    second.store.deleteCode(second.code(u"Gamma"_s));
    const Code gone = first.code(u"Gamma"_s);
    first.store.nestCode(first.code(u"Beta"_s).id, gone.id);
    EXPECT_EQ(faultsOf(*first.queue), QString());
    first.store.mergeCodes(first.code(u"Alpha"_s), gone);
    EXPECT_EQ(faultsOf(*first.queue), QString());
    EXPECT_EQ(first.store.excerpts(first.code(u"Alpha"_s).id).size(), 1);
}

TEST_F(SecondProgram, ThatHasFallenBehindWritesOnlyWhatIsChangedThere)
{
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
