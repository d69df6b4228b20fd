#pragma once

#include "workspace/sidebar/SidebarDialogs.h"

#include <QWidget>

#include <optional>

class InlineField;
class LibraryStore;
class SidebarList;
class SidebarModel;

/// The left column: the projects, the tree of codes, and all editing of both. Its selection is the store's and tells
/// the middle column what to show.
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

    /// Shows what the store holds now; keeps the keyboard's place and what is scrolled to.
    void render();
    /// Selects the store's choice, and goes there.
    void followSelection();
    [[nodiscard]] QModelIndex selectedIndex() const;

    void act(const QModelIndex &index);
    void showMenu(const QModelIndex &index, const QPoint &globalPosition);
    void showProjectMenu(const QModelIndex &index, const QPoint &globalPosition);
    void showCodeMenu(const QModelIndex &index, const QPoint &globalPosition);

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
    SidebarDialogs m_dialogs;
};
