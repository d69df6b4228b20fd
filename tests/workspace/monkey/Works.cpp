#include "Acts.h"

#include "Hand.h"
#include "surface/CodingTextView.h"
#include "workspace/sidebar/CodeDrag.h"
#include "workspace/sidebar/SidebarModel.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QTextEdit>
#include <QUrl>

using namespace Qt::StringLiterals;

// What is done in the window while nothing lies over it, and what happens to the store by itself.

QString Acts::someText()
{
    static const QStringList texts{u"One"_s, u"trust"_s, u"  "_s, u"<b>bold</b> & %1 %2"_s, u"NUL \0 here"_s,
        u"a name that goes on "_s.repeated(60), u"x"_s.repeated(4000), u"line\r\nline\n\u2028\n\t"_s.repeated(30)};
    return m_chance.oneIn(2) ? m_chance.oneOf(texts) : m_texts.next(12);
}

QAbstractItemView *Acts::someList(const QStringList &names)
{
    QList<QAbstractItemView *> lists = m_world.root.findChildren<QAbstractItemView *>();
    lists.removeIf([&](const QAbstractItemView *list) {
        const bool isAsked = names.isEmpty() || names.contains(list->objectName());
        return !list->isVisible() || list->model()->rowCount() == 0 || !isAsked;
    });
    return lists.isEmpty() ? nullptr : m_chance.oneOf(lists);
}

QPoint Acts::placeOfSomeRow(QAbstractItemView &list)
{
    const QModelIndex row = list.model()->index(m_chance.below(list.model()->rowCount()), 0);
    list.scrollTo(row);
    return list.visualRect(row).center();
}

QWidget *Acts::someField()
{
    QList<QWidget *> fields = top().findChildren<QWidget *>();
    fields.removeIf([](const QWidget *each) {
        const bool takesText = qobject_cast<const QLineEdit *>(each) != nullptr || each->objectName() == u"memo";
        return !takesText || !each->isVisible();
    });
    return fields.isEmpty() ? nullptr : m_chance.oneOf(fields);
}

void Acts::clickRow()
{
    QAbstractItemView *list = someList();
    if (list == nullptr)
        return;
    count(u"row of "_s + list->objectName());
    Hand::click(*list->viewport(), placeOfSomeRow(*list));
}

void Acts::askForMenu()
{
    const auto &text = *m_world.root.findChild<CodingTextView *>();
    QAbstractItemView *list = someList();
    if (text.isVisible() && m_chance.oneIn(3)) {
        count(u"menu of the text"_s);
        Hand::click(*text.viewport(), m_chance.placeIn(text.viewport()->rect()), Qt::RightButton);
    } else if (list != nullptr) {
        count(u"menu of "_s + list->objectName());
        Hand::click(*list->viewport(), placeOfSomeRow(*list), Qt::RightButton);
    }
}

void Acts::openMenuBar()
{
    const QMenuBar &bar = *m_world.root.menuBar();
    count(u"menu of the bar"_s);
    Hand::click(bar, bar.actionGeometry(m_chance.oneOf(bar.actions())).center());
}

void Acts::selectPassage()
{
    const auto &text = *m_world.root.findChild<CodingTextView *>();
    if (!text.isVisible())
        return;
    count(u"passage selected"_s);
    const QPoint from = m_chance.placeIn(text.viewport()->rect());
    Hand::drag(*text.viewport(), from, m_chance.placeIn(text.viewport()->rect()));
}

void Acts::addCode()
{
    selectPassage();
    const auto *button = m_world.root.findChild<QWidget *>(u"addCode"_s);
    if (!button->isVisible())
        return;
    count(u"picker opened"_s);
    Hand::click(*button, button->rect().center());
}

/// A passage flashes in the reader, and something else comes before it has faded.
void Acts::revealAndGoOn()
{
    QAbstractItemView *list = someList({u"excerptList"_s, u"resultList"_s, u"occurrenceList"_s});
    if (list == nullptr) {
        if (QAbstractItemView *sidebar = someList({u"sidebarList"_s}))
            Hand::click(*sidebar->viewport(), placeOfSomeRow(*sidebar));
        return;
    }
    m_sinceReveal.invalidate();
    Hand::click(*list->viewport(), placeOfSomeRow(*list));
    if (!isFlashing())
        return;
    count(u"reveal"_s);
    switch (m_chance.below(5)) {
    case 0:
        return switchProject();
    case 1:
        return meddle();
    case 2:
        return changeDesktop();
    case 3:
        return resize();
    default:
        return;
    }
}

void Acts::switchProject()
{
    const QList<Project> &projects = m_store.projects().get();
    auto *sidebar = someList({u"sidebarList"_s});
    if (sidebar == nullptr || projects.isEmpty())
        return;
    const auto *model = static_cast<const SidebarModel *>(sidebar->model());
    const QModelIndex row = model->find(SidebarRow::Kind::project, m_chance.oneOf(projects).id);
    sidebar->scrollTo(row);
    const auto before = m_store.project().get();
    const bool wasFlashing = isFlashing();
    Hand::click(*sidebar->viewport(), sidebar->visualRect(row).center());
    if (m_store.project().get() == before)
        return;
    count(u"project switched"_s);
    if (wasFlashing)
        count(u"project switched during a flash"_s);
}

/// Rows, selected text, whatever comes along, and let fall somewhere else.
void Acts::dragAndDrop()
{
    QWidget &root = m_world.root;
    const QPoint drop = m_chance.placeIn(root.rect());
    QAbstractItemView *list = someList({u"sidebarList"_s});
    const auto *focus = qobject_cast<QTextEdit *>(QApplication::focusWidget());
    if (focus != nullptr && m_chance.oneIn(2)) {
        Hand::press(root, Qt::Key_A, Qt::ControlModifier);
        const QPoint from = m_chance.placeIn({0, 0, 60, 20});
        const QPoint to = m_chance.placeIn(focus->viewport()->rect());
        return countDrop(u"text dragged"_s, Hand::drag(*focus->viewport(), from, to, root, drop));
    }
    if (list == nullptr)
        return;
    const QPoint from = placeOfSomeRow(*list);
    const QPoint to = placeOfSomeRow(*list);
    const bool staysInList = !m_chance.oneIn(3);
    countDrop(u"row dragged"_s,
        Hand::drag(*list->viewport(), from, to, root, staysInList ? list->viewport()->mapTo(&root, to) : drop));
}

void Acts::countDrop(const QString &what, bool wasTaken)
{
    count(what);
    if (wasTaken)
        count(what + u" and taken"_s);
}

void Acts::dropSomething()
{
    QMimeData data;
    QString what;
    switch (m_chance.below(4)) {
    case 0:
        what = u"file dropped"_s;
        data.setUrls({QUrl::fromLocalFile(m_world.folder + u"/in.qdpx"_s)});
        break;
    case 1:
        what = u"rich text dropped"_s;
        data.setHtml(u"<table><tr><td>"_s + someText());
        break;
    case 2:
        what = u"identifier dropped"_s;
        if (!m_store.codes()->isEmpty())
            data.setText(m_chance.oneOf(m_store.codes().get()).id.toString(QUuid::WithoutBraces));
        break;
    default:
        what = u"text dropped"_s;
        data.setText(someText());
    }
    const QWidget *field = m_chance.oneIn(2) ? someField() : nullptr;
    const QWidget &target = field != nullptr ? *field : top();
    const QPoint place = m_chance.placeIn(target.rect());
    countDrop(what, Hand::dropFromOutside(target, place, data, !m_chance.oneIn(4)));
}

/// Into some field of the window.
void Acts::write()
{
    QWidget *field = someField();
    if (m_chance.oneIn(4)) {
        count(u"find bar"_s);
        Hand::press(m_world.root, Qt::Key_F, Qt::ControlModifier);
    } else if (field != nullptr) {
        count(u"field: "_s + field->objectName());
        Hand::click(*field, field->rect().center());
    }
    Hand::paste(m_world.root, someText());
    if (m_chance.oneIn(2))
        Hand::press(m_world.root, Qt::Key_Return);
}

void Acts::changeDesktop()
{
    count(u"desktop changed"_s);
    m_world.settings.set(u"org.freedesktop.appearance/color-scheme"_s, uint(m_chance.below(3)));
    m_world.settings.set(u"org.freedesktop.appearance/contrast"_s, uint(m_chance.below(2)));
    m_world.settings.set(u"org.gnome.desktop.interface/enable-animations"_s, m_chance.oneIn(2));
}

/// What the user will answer when she is asked for files.
void Acts::changePanels()
{
    const QString &folder = m_world.folder;
    const QStringList places{folder + u"/out"_s, folder + u"/no/such/folder"_s};
    const QStringList files{folder + u"/in.qdpx"_s, folder + u"/in.txt"_s, folder + u"/missing.txt"_s};
    FakeFileDialogs &fileDialogs = m_world.library.fileDialogs;
    fileDialogs.pathToSave = m_chance.oneIn(3) ? std::nullopt : std::optional(m_chance.oneOf(places));
    fileDialogs.pathsToOpen = m_chance.oneIn(4) ? QStringList() : QStringList(m_chance.oneOf(files));
}

void Acts::resize()
{
    count(u"resize"_s);
    const int width = 300 + m_chance.below(1500);
    m_world.root.resize(width, 200 + m_chance.below(900));
}

/// What happens by itself, whatever is open: everything that is shown may go away.
void Acts::meddle()
{
    switch (m_chance.below(8)) {
    case 0:
    case 1:
        return deleteDocument();
    case 2:
    case 3:
        return deleteCode();
    case 4:
        if (const auto &codes = m_store.codes().get(); codes.size() > 1) {
            const Code source = m_chance.oneOf(codes);
            const Code target = m_chance.oneOf(codes);
            m_store.mergeCodes(source, target);
            countUnder(u"codes merged"_s);
        }
        return;
    case 5:
        if (const auto &projects = m_store.projects().get(); !projects.isEmpty()) {
            const QUuid id = m_chance.oneOf(projects).id;
            countUnder(u"project opened"_s);
            m_store.selectProject(id);
        }
        return;
    case 6:
        m_store.lastError().set(someText());
        return countUnder(u"error told"_s);
    default:
        m_store.statusMessage().set(someText());
        return countUnder(u"banner shown"_s);
    }
}

/// The one that is read, if any.
void Acts::deleteDocument()
{
    const QList<Document> &documents = m_store.documents().get();
    if (documents.isEmpty())
        return;
    Document gone = m_chance.oneOf(documents);
    for (const Document &document : documents) {
        if (document.id == m_store.selectedDocumentID().get())
            gone = document;
    }
    countUnder(u"document deleted"_s);
    m_store.deleteDocument(gone);
}

void Acts::deleteCode()
{
    const QList<Code> &codes = m_store.codes().get();
    if (codes.isEmpty())
        return;
    const Code gone = m_chance.oneOf(codes);
    countUnder(u"code deleted"_s);
    m_store.deleteCode(gone);
}
