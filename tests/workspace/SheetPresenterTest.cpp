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
    open(library.store.showQuerySheet());
    library.store.showPasteSheet().set(false);
    EXPECT_NE(sheet(), nullptr);
    library.store.showQuerySheet().set(false);
    EXPECT_EQ(sheet(), nullptr);
    open(library.store.showQuerySheet());
    EXPECT_NE(sheet(), nullptr);
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
