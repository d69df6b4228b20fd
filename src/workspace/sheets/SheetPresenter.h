#pragma once

#include "library/Observable.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

class LibraryStore;
class QWidget;
class Sheet;

/// Shows the sheets that the store's flags ask for, one at a time: a flag that is set while another sheet is open waits
/// until that one has closed. Closing a sheet clears its flag, and clearing a flag closes its sheet.
class SheetPresenter final : public QObject {
    Q_OBJECT

public:
    /// `window` owns this and is the window of the sheets.
    SheetPresenter(LibraryStore &store, QWidget &window);

private:
    struct Entry {
        Observable<bool> &isWanted;
        std::function<Sheet *()> make;
    };
    /// A new `SheetType` is made, from the store and the window, each time that it is shown.
    template <typename SheetType>
    void present(Observable<bool> &isWanted);
    void render();
    void open(const Entry &entry);

    LibraryStore &m_store;
    QWidget &m_window;
    std::vector<Entry> m_entries;
    QPointer<Sheet> m_sheet; ///< the one that is open
    const Observable<bool> *m_shown = nullptr; ///< the flag of `m_sheet`
};
