#pragma once

#include "workspace/sidebar/SidebarDialogs.h"

#include <QWidget>

#include <functional>
#include <optional>

class InlineField;
class LibraryStore;
class SidebarList;
class SidebarModel;
class QMenu;

/// The left column: the projects, the tree of codes, and all editing of both. Shows the store's selection, which
/// decides what the middle column shows.
class SidebarView final : public QWidget {
    Q_OBJECT

public:
    explicit SidebarView(LibraryStore &store, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void buildLayout();
    void watchStore();
    void connectList();
    void connectFields();

    /// Shows what the store holds now; keeps the current row and the scroll position.
    void render();
    /// Selects the store's choice, and makes it the current row.
    void followSelection();
    [[nodiscard]] QModelIndex selectedIndex() const;
    void followNewCode();

    void act(const QModelIndex &index);
    void showMenu(const QModelIndex &index, const QPoint &globalPosition);

    // Menus. What is picked acts on the records as they are by then.
    void fillProjectMenu(QMenu &menu, const QUuid &id);
    void fillCodeMenu(QMenu &menu, const QUuid &id);
    /// A submenu with the codes other than that one, oldest first.
    void addOtherCodes(
        QMenu &menu, const QString &title, const QUuid &codeID, const std::function<void(const Code &)> &act);

    // Inline fields
    void openNewCodeField();
    void closeNewCodeField();
    void commitNewCode();
    void openRenameField(const Code &code);
    void closeRenameField();
    void commitRename();
    void startEditing(InlineField &field, const QModelIndex &index);
    void placeFields();

    LibraryStore &m_store;
    SidebarModel *m_model;
    SidebarList *m_list;
    InlineField *m_newCodeField;
    InlineField *m_renameField;
    std::optional<QUuid> m_renamingCodeID;
    QUuid m_newestCode; ///< null without codes
    SidebarDialogs m_dialogs;
};
