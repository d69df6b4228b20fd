#pragma once

#include "workspace/controls/Sheet.h"

class LibraryStore;

/// Asks for a title and a text and makes a document of them.
class PasteSheet final : public Sheet {
    Q_OBJECT

public:
    PasteSheet(LibraryStore &store, QWidget &window);
};
