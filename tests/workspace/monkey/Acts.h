#pragma once

#include "Chance.h"
#include "kit/theme/ThemedTest.h"
#include "support/NastyText.h"
#include "support/TestLibrary.h"
#include "workspace/RootView.h"

#include <QElapsedTimer>
#include <QMap>

class Popover;
class QAbstractItemView;
class QMenu;
class Sheet;

/// How often something has happened.
using Tally = QMap<QString, qint64>;

/// What somebody does to the window who clicks everywhere, and what the store does meanwhile under her hands.
class Acts {
public:
    struct World {
        TestLibrary &library;
        RootView &root;
        FakeDesktopSettings &settings;
        QString folder; ///< for files that are exported; those to import are in it
    };
    Acts(const World &world, Chance &chance, Tally &tally);

    /// One act, at whatever has opened last.
    void act();
    /// Closes all that is open, one after the other.
    void closeEverything();
    /// Closes fields in the window itself, and gives up the passage that is selected.
    void leaveFields();
    /// Whatever would get the user's next event.
    [[nodiscard]] QWidget &top() const;

private:
    void actAtTop();
    void count(const QString &what);
    /// Counts the act by what is open while it takes place.
    void countUnder(const QString &what);
    void countDrop(const QString &what, bool wasTaken);
    [[nodiscard]] Popover *popover() const;
    [[nodiscard]] bool isFlashing() const;

    void fumble();
    void useMenu(QMenu &menu);
    void useSheet(Sheet &sheet);
    void usePopover(Popover &popover);
    void workInWindow();

    void clickRow();
    void askForMenu();
    void openMenuBar();
    void selectPassage();
    void addCode();
    void revealAndGoOn();
    void dragAndDrop();
    void dropSomething();
    void write();
    void switchProject();
    void changeDesktop();
    void changePanels();
    void resize();
    void pressAKey();

    void meddle();
    void deleteDocument();
    void deleteCode();

    [[nodiscard]] QAbstractItemView *someList(const QStringList &names = {});
    /// One that takes text; null without any.
    [[nodiscard]] QWidget *someField();
    /// The middle of some row; null without rows.
    [[nodiscard]] QPoint placeOfSomeRow(QAbstractItemView &list);
    [[nodiscard]] QString someText();

    World m_world;
    LibraryStore &m_store;
    Chance &m_chance;
    Tally &m_tally;
    NastyText m_texts;
    QElapsedTimer m_sinceReveal;
    QObject m_context; ///< ends what is connected here with this
};
