#include "library/survival/Workplace.h"
#include "records/AppDatabase.h"
#include "support/FailingDisk.h"

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

TEST_F(SecondProgram, ThatDeletesWhatIsListedHereLeavesNothingToPutThere)
{
    const Document document = first.document(u"First"_s);
    const Code gone = first.code(u"Gamma"_s);
    second.store.deleteCode(second.code(u"Gamma"_s));
    first.store.nestCode(first.code(u"Beta"_s).id, gone.id);
    first.store.assignCode(gone, document, {0, 4});
    first.store.mergeCodes(first.code(u"Alpha"_s), gone);
    EXPECT_EQ(faultsOf(*first.queue), QString());
    EXPECT_EQ(first.store.excerpts(first.code(u"Alpha"_s).id).size(), 1);
    second.store.deleteDocument(second.document(u"First"_s));
    first.store.assignCode(first.code(u"Alpha"_s), document, {5, 4});
    EXPECT_EQ(faultsOf(*first.queue), QString());
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

TEST_F(SecondProgram, KeepsItsMemoWhenTheFirstHasUnwrittenOnes)
{
    const Document document = first.document(u"First"_s);
    const Code code = first.code(u"Alpha"_s);
    const Code gamma = first.code(u"Gamma"_s);
    {
        const FailingDisk disk(FailingDisk::Kind::locked, place.library());
        first.store.setCodeMemo(code, u"about alpha"_s);
        first.store.setDocumentMemo(document, u"about the first"_s);
        first.store.deleteCode(code);
        first.store.mergeCodes(code, gamma);
        EXPECT_TRUE(first.store.saveUnwrittenMemos());
    }
    second.store.setDocumentMemo(document, u"newer"_s);
    first.store.setDocumentMemo(first.document(u"Second"_s), u"about the second"_s); // and with it the others
    second.store.refresh();
    EXPECT_EQ(second.code(u"Alpha"_s).memo, u"about alpha"_s);
    EXPECT_EQ(second.document(u"First"_s).memo, u"newer"_s);
    EXPECT_TRUE(first.store.saveUnwrittenMemos());
    EXPECT_EQ(first.store.documentMemo(document.id), u"about the first"_s);
    first.store.setDocumentMemo(document, u"both"_s);
    EXPECT_EQ(first.store.saveUnwrittenMemos(), std::nullopt);
    second.store.refresh();
    EXPECT_EQ(second.document(u"First"_s).memo, u"both"_s);
}
