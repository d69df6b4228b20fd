#pragma once

#include "workspace/controls/Sheet.h"

class LibraryStore;

/// Asks for codes, for how they combine, and perhaps for words, and runs that query.
class QuerySheet final : public Sheet {
    Q_OBJECT

public:
    QuerySheet(LibraryStore &store, QWidget &window);
};
