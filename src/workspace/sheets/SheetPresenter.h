#pragma once

#include "library/Observable.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

class LibraryStore;
class QWidget;
class Sheet;

/// Shows the sheets that the store's flags ask for, one at a time: a flag set while another sheet is open waits until
/// that one has closed. A sheet that closes takes its flag back, and a flag taken back closes its sheet.
class SheetPresenter final : public QObject {
    Q_OBJECT

public:
    /// `window` owns this, and has the sheets hang in it.
    SheetPresenter(LibraryStore &store, QWidget &window);

private:
    struct Entry {
        Observable<bool> &isWanted;
        std::function<Sheet *()> make;
    };
    /// A `SheetType` is made from the store and the window, once for each time that it is shown.
    template <typename SheetType>
    void present(Observable<bool> &isWanted);
    void render();
    void open(const Entry &entry);

    LibraryStore &m_store;
    QWidget &m_window;
    std::vector<Entry> m_entries;
    QPointer<Sheet> m_sheet; ///< the one that is open
    const Observable<bool> *m_shown = nullptr; ///< what asked for it
};
