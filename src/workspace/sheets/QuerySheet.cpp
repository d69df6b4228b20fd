#include "workspace/sheets/QuerySheet.h"

namespace {

constexpr int sheetWidth = 380;

} // namespace

QuerySheet::QuerySheet(LibraryStore &, QWidget &window) : Sheet(window, sheetWidth)
{
}
