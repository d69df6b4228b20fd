#pragma once

#include "kit/controls/Alert.h"
#include "records/Code.h"
#include "records/Project.h"

#include <QCoreApplication>
#include <QPointer>

class LibraryStore;

/// The questions that the sidebar asks, one at a time. An answer is carried out on what the store holds by then.
class SidebarDialogs {
    Q_DECLARE_TR_FUNCTIONS(SidebarDialogs)

public:
    /// The dialogs hang in the window of `parent`. Both must outlive this.
    SidebarDialogs(LibraryStore &store, QWidget &parent) : m_store(store), m_parent(parent) { }

    void askToDelete(const Code &code);
    void askToMerge(const Code &source, const Code &target);
    void askForName(const Project &project);
    void askForNewProject();

private:
    void show(const Alert::Content &content);

    LibraryStore &m_store;
    QWidget &m_parent;
    QPointer<Alert> m_pending;
};
