#pragma once

#include "kit/controls/Sheet.h"

class LibraryStore;
class PasteEditor;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

/// Asks for a title and a text and makes a document of them.
class PasteSheet final : public Sheet {
    Q_OBJECT

public:
    PasteSheet(LibraryStore &store, QWidget &window);

private:
    void addFields(QVBoxLayout &column);
    void addButtons(QVBoxLayout &column);
    void addDocument();

    LibraryStore &m_store;
    QLineEdit *m_title;
    PasteEditor *m_text;
    QPushButton *m_add = nullptr;
};
