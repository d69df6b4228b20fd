#include "Acts.h"

#include "Hand.h"
#include "kit/controls/Alert.h"
#include "kit/controls/Popover.h"
#include "surface/CodingTextView.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTextEdit>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array modifierChoices{Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
constexpr int flashDuration = 1100; // milliseconds

/// Ends menus that run a loop of their own, as those of scroll bars do.
class Rescue {
public:
    Rescue()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [] {
            if (QWidget *popup = QApplication::activePopupWidget();
                popup != nullptr && QThread::currentThread()->loopLevel() > 0)
                Hand::press(*popup, Qt::Key_Escape);
        });
        m_timer.start(5);
    }

private:
    QTimer m_timer;
};

/// Without what differs from code to code.
QString kindOf(const QAction &entry)
{
    const auto *menu = qobject_cast<const QMenu *>(entry.parent());
    const bool isBelowOther = menu != nullptr && qobject_cast<const QMenu *>(menu->parent()) != nullptr;
    const QString title = isBelowOther && entry.menu() == nullptr ? menu->title() : entry.text();
    return title.section(u" — "_s, 0, 0).section(u'\t', 0, 0).remove(u'&');
}

} // namespace

Acts::Acts(const World &world, Chance &chance, Tally &tally)
    : m_world(world),
      m_store(world.library.store),
      m_chance(chance),
      m_tally(tally),
      m_texts(unsigned(chance.below(1'000'000)))
{
    QObject::connect(&m_store.revealRequest(), &Notifier::changed, &m_context, [this] { m_sinceReveal.start(); });
}

QWidget &Acts::top() const
{
    for (QWidget *candidate : {QApplication::activePopupWidget(), QApplication::activeModalWidget()}) {
        if (candidate != nullptr)
            return *candidate;
    }
    return m_world.root;
}

Popover *Acts::popover() const
{
    for (auto *found : m_world.root.findChildren<Popover *>()) {
        if (found->isVisible())
            return found;
    }
    return nullptr;
}

bool Acts::isFlashing() const
{
    return m_sinceReveal.isValid() && m_sinceReveal.elapsed() < flashDuration;
}

void Acts::count(const QString &what)
{
    ++m_tally[what];
    if (qEnvironmentVariableIsSet("VORN_SHOW"))
        qInfo().noquote() << what;
}

void Acts::countUnder(const QString &what)
{
    count(what);
    if (qobject_cast<QMenu *>(QApplication::activePopupWidget()) != nullptr)
        count(what + u" under a menu"_s);
    else if (qobject_cast<Alert *>(QApplication::activeModalWidget()) != nullptr)
        count(what + u" under an alert"_s);
    else if (QApplication::activeModalWidget() != nullptr)
        count(what + u" under a sheet"_s);
    else if (popover() != nullptr)
        count(what + u" under a popover"_s);
    else if (isFlashing())
        count(what + u" during a flash"_s);
}

void Acts::act()
{
    const Rescue rescue;
    QApplication::setActiveWindow(top().window());
    actAtTop();
    if (!m_world.root.isVisible())
        m_world.root.show();
}

void Acts::actAtTop()
{
    if (m_chance.oneIn(40))
        return meddle();
    if (m_chance.oneIn(4))
        return fumble();
    if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget()))
        return useMenu(*menu);
    if (QApplication::activePopupWidget() != nullptr)
        return fumble();
    if (auto *sheet = qobject_cast<Sheet *>(QApplication::activeModalWidget()))
        return useSheet(*sheet);
    if (Popover *open = popover())
        return usePopover(*open);
    workInWindow();
}

void Acts::closeEverything()
{
    for (int each = 0; each < 50 && (&top() != &m_world.root || popover() != nullptr); ++each) {
        QApplication::setActiveWindow(top().window());
        Hand::press(top(), Qt::Key_Escape);
        QApplication::processEvents();
    }
    EXPECT_EQ(&top(), &m_world.root) << top().metaObject()->className() << " doesn't close";
    EXPECT_EQ(popover(), nullptr);
}

void Acts::leaveFields()
{
    const RootView &root = m_world.root;
    for (QWidget *place : {root.findChild<QWidget *>(u"findField"_s), root.findChild<QWidget *>(u"newCodeField"_s),
             root.findChild<QWidget *>(u"renameField"_s), static_cast<QWidget *>(root.findChild<CodingTextView *>())}) {
        if (!place->isVisible())
            continue;
        place->setFocus();
        Hand::press(root, Qt::Key_Escape);
    }
}

/// Anything anywhere.
void Acts::fumble()
{
    QWidget &window = top();
    const QPoint place = m_chance.placeIn(window.rect());
    switch (m_chance.below(8)) {
    case 0:
        count(u"fumble: wheel"_s);
        return Hand::turnWheel(window, place, m_chance.below(60) - 30);
    case 1:
        count(u"fumble: double click"_s);
        return Hand::doubleClick(window, place);
    case 2:
        count(u"fumble: right click"_s);
        return Hand::click(window, place, Qt::RightButton);
    case 3:
        count(u"fumble: drag"_s);
        Hand::drag(window, place, m_chance.placeIn(window.rect()));
        return;
    case 4:
    case 5:
        return pressAKey();
    default:
        count(u"fumble: click"_s);
        return Hand::click(window, place, Qt::LeftButton, m_chance.oneOf(modifierChoices));
    }
}

void Acts::pressAKey()
{
    static constexpr std::array keys{Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Up,
        Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Space,
        Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_A, Qt::Key_E, Qt::Key_Z, Qt::Key_X, Qt::Key_C, Qt::Key_V, Qt::Key_F,
        Qt::Key_Menu};
    count(u"key"_s);
    const Qt::Key key = m_chance.oneOf(keys);
    Hand::press(top(), key, m_chance.oneOf(modifierChoices));
}

void Acts::useMenu(QMenu &menu)
{
    QList<QAction *> entries = menu.actions();
    entries.removeIf([](const QAction *entry) {
        return entry->isSeparator() || !entry->isEnabled() || entry->text().endsWith(u"Quit"_s);
    });
    if (entries.isEmpty() || m_chance.oneIn(6)) {
        count(u"menu closed"_s);
        return Hand::press(menu, Qt::Key_Escape);
    }
    QAction *entry = m_chance.oneOf(entries);
    count(u"entry: "_s + kindOf(*entry));
    const QRect place = menu.actionGeometry(entry);
    if (menu.rect().contains(place))
        return Hand::click(menu, place.center());
    menu.setActiveAction(entry); // scrolls there
    Hand::press(menu, Qt::Key_Return);
}

void Acts::useSheet(Sheet &sheet)
{
    const bool isAlert = qobject_cast<Alert *>(&sheet) != nullptr;
    QList<QWidget *> stops = sheet.findChildren<QWidget *>();
    stops.removeIf([](const QWidget *each) {
        return !each->isVisible() || !each->isEnabled() || each->focusPolicy() == Qt::NoFocus;
    });
    if (stops.isEmpty())
        return fumble();
    QWidget *stop = m_chance.oneOf(stops);
    const QString name = isAlert ? u"alert"_s : sheet.windowTitle();
    if (const auto *button = qobject_cast<QAbstractButton *>(stop)) {
        if (m_chance.oneIn(2) && !isAlert)
            return; // or nothing would be filled in before it closes
        count(name + u": "_s + button->text().remove(u'&'));
        return Hand::click(*stop, stop->rect().center());
    }
    count(name + u": a "_s + QString::fromLatin1(stop->metaObject()->className()));
    Hand::click(*stop, m_chance.placeIn(stop->rect()));
    if (qobject_cast<QLineEdit *>(stop) != nullptr || stop->inherits("QPlainTextEdit"))
        Hand::paste(sheet, someText());
}

void Acts::usePopover(Popover &open)
{
    count(u"popover"_s);
    switch (m_chance.below(6)) {
    case 0:
        return Hand::paste(open, someText().left(40));
    case 1:
        count(u"popover: Return"_s);
        return Hand::press(open, Qt::Key_Return);
    case 2:
        count(u"popover: closed"_s);
        return Hand::press(open, Qt::Key_Escape);
    case 3:
        return meddle();
    default:
        if (auto *list = open.findChild<QAbstractItemView *>(); list->isVisible()) {
            count(u"popover: code picked"_s);
            Hand::click(*list->viewport(), placeOfSomeRow(*list));
        }
    }
}

void Acts::workInWindow()
{
    static constexpr std::array<void (Acts::*)(), 24> works{&Acts::clickRow, &Acts::clickRow, &Acts::clickRow,
        &Acts::askForMenu, &Acts::askForMenu, &Acts::askForMenu, &Acts::openMenuBar, &Acts::openMenuBar,
        &Acts::selectPassage, &Acts::addCode, &Acts::addCode, &Acts::addCode, &Acts::revealAndGoOn,
        &Acts::revealAndGoOn, &Acts::revealAndGoOn, &Acts::dragAndDrop, &Acts::dragAndDrop, &Acts::dropSomething,
        &Acts::write, &Acts::write, &Acts::switchProject, &Acts::changeDesktop, &Acts::changePanels, &Acts::resize};
    (this->*m_chance.oneOf(works))();
}
