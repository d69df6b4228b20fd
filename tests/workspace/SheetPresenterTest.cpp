#include "ShownSheets.h"

#include "workspace/sheets/PasteSheet.h"
#include "workspace/sheets/QuerySheet.h"

using namespace Qt::StringLiterals;

namespace {

/// With nothing but the presenter to show what the store asks for.
class Presenter : public ShownSheets { };

} // namespace

TEST_F(Presenter, AFlagTakenBackClosesItsSheetAndCanOpenItAgain)
{
    for (int time = 0; time < 2; ++time) {
        open(library.store.showQuerySheet());
        library.store.showPasteSheet().set(false);
        EXPECT_NE(sheet(), nullptr);
        library.store.showQuerySheet().set(false);
        EXPECT_EQ(sheet(), nullptr);
    }
}

TEST_F(Presenter, AnotherSheetWaitsUntilTheFirstHasClosed)
{
    open(library.store.showQuerySheet());
    library.store.showPasteSheet().set(true);
    EXPECT_NE(qobject_cast<QuerySheet *>(sheet()), nullptr);
    press(Qt::Key_Escape);
    EXPECT_FALSE(library.store.showQuerySheet().get());
    EXPECT_TRUE(library.store.showPasteSheet().get());
    EXPECT_NE(qobject_cast<PasteSheet *>(sheet()), nullptr);
}

TEST_F(Presenter, AFlagThatWasSetBeforeTheWindowCameOpensItsSheet)
{
    presenter.reset();
    library.store.showPasteSheet().set(true);
    presenter = std::make_unique<SheetPresenter>(library.store, m_window);
    EXPECT_NE(qobject_cast<PasteSheet *>(sheet()), nullptr);
}

TEST_F(Presenter, EscapeAndCancelDoNothingAndGiveTheFocusBack)
{
    library.makeCodes({u"One"_s});
    library.paste(u"A"_s, u"some words"_s);
    LibraryStore &store = library.store;
    for (Observable<bool> *flag :
        {&store.showQuerySheet(), &store.showWordFreqSheet(), &store.showExportSheet(), &store.showPasteSheet()}) {
        for (const bool isByKey : {true, false}) {
            open(*flag);
            if (isByKey)
                press(Qt::Key_Escape);
            else
                click(u"cancel"_s);
            EXPECT_EQ(sheet(), nullptr);
            EXPECT_FALSE(flag->get());
            EXPECT_TRUE(before.hasFocus());
        }
    }
    EXPECT_FALSE(store.activeQuery().get().has_value());
    EXPECT_TRUE(store.wordFreqItems()->isEmpty());
    EXPECT_FALSE(library.fileDialogs.saveRequest.has_value());
    EXPECT_EQ(store.documents()->size(), 1);
}
