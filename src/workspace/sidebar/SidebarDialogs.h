#pragma once

#include "kit/controls/Alert.h"
#include "records/Code.h"
#include "records/Project.h"

#include <QPointer>

class LibraryStore;

/// The sidebar's dialogs, one at a time. An answer acts on the store's records as they are by then.
class SidebarDialogs {
public:
    /// The dialogs open in the window of `parent`. Both must outlive this.
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
