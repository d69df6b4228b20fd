#include "workspace/sheets/PasteSheet.h"

namespace {

constexpr int sheetWidth = 560;

} // namespace

PasteSheet::PasteSheet(LibraryStore &, QWidget &window) : Sheet(window, sheetWidth)
{
}
