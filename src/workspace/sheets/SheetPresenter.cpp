#include "workspace/sheets/SheetPresenter.h"

#include "library/LibraryStore.h"
#include "workspace/sheets/ExportSheet.h"
#include "workspace/sheets/PasteSheet.h"
#include "workspace/sheets/QuerySheet.h"
#include "workspace/sheets/WordFrequencySheet.h"

#include <algorithm>

SheetPresenter::SheetPresenter(LibraryStore &store, QWidget &window)
    : QObject(&window),
      m_store(store),
      m_window(window)
{
    present<PasteSheet>(store.showPasteSheet());
    present<ExportSheet>(store.showExportSheet());
    present<QuerySheet>(store.showQuerySheet());
    present<WordFrequencySheet>(store.showWordFreqSheet());
    render();
}

template <typename SheetType>
void SheetPresenter::present(Observable<bool> &isWanted)
{
    m_entries.push_back({isWanted, [this] { return new SheetType(m_store, m_window); }});
    connect(&isWanted, &Notifier::changed, this, &SheetPresenter::render);
}

void SheetPresenter::render()
{
    if (m_sheet != nullptr) {
        if (!m_shown->get())
            m_sheet->reject();
        return;
    }
    const auto wanted = std::ranges::find_if(m_entries, [](const Entry &entry) { return entry.isWanted.get(); });
    if (wanted != m_entries.end())
        open(*wanted);
}

void SheetPresenter::open(const Entry &entry)
{
    m_sheet = entry.make();
    m_shown = &entry.isWanted;
    connect(m_sheet, &QDialog::finished, this, [this, &entry] {
        m_sheet.clear();
        entry.isWanted.set(false);
        render();
    });
    m_sheet->open();
}
