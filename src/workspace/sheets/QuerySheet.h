#pragma once

#include "analysis/QuerySpec.h"
#include "kit/controls/Sheet.h"

class CodeChoiceList;
class CodeChoiceModel;
class LibraryStore;
class Paragraph;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class SegmentedControl;

/// Asks for codes, for how they combine, and perhaps for words that the passages must contain, and runs that query.
class QuerySheet final : public Sheet {
    Q_OBJECT

public:
    QuerySheet(LibraryStore &store, QWidget &window);

private:
    void addHeader(QVBoxLayout &column);
    void addConditions(QVBoxLayout &column);
    void addCodes(QVBoxLayout &column);
    void addFooter(QVBoxLayout &column);

    [[nodiscard]] QuerySpec::Mode mode() const;
    void renderCodes();
    /// How many codes are chosen, or still have to be.
    void renderChoice();
    void runQuery();

    LibraryStore &m_store;
    CodeChoiceModel *m_codes;
    SegmentedControl *m_mode = nullptr;
    QLineEdit *m_textFilter = nullptr;
    CodeChoiceList *m_list = nullptr;
    Paragraph *m_noCodes = nullptr;
    Paragraph *m_hint = nullptr;
    QPushButton *m_run = nullptr;
};
