#pragma once

#include "workspace/sheets/FormSheet.h"

class LibraryStore;
class PasteEditor;
class QLineEdit;

/// Asks for a title and a text and makes a document of them.
class PasteSheet final : public FormSheet {
    Q_OBJECT

public:
    PasteSheet(LibraryStore &store, QWidget &window);

private:
    void act() override;

    LibraryStore &m_store;
    QLineEdit *m_title;
    PasteEditor *m_text;
};
