#pragma once

#include "analysis/CompoundQuery.h"
#include "workspace/sheets/FormSheet.h"

class CodeChoiceList;
class LibraryStore;
class Paragraph;
class QLineEdit;
class SegmentedControl;

/// Asks for codes, for how they combine, and perhaps for words that the passages must contain, and runs that query.
class QuerySheet final : public FormSheet {
    Q_OBJECT

public:
    QuerySheet(LibraryStore &store, QWidget &window);

private:
    void addConditions();
    void addCodes();

    [[nodiscard]] QuerySpec::Mode mode() const;
    void renderCodes();
    /// How many codes are chosen, or still have to be.
    void renderChoice();
    void act() override;

    LibraryStore &m_store;
    SegmentedControl *m_mode;
    QLineEdit *m_textFilter;
    CodeChoiceList *m_list;
    Paragraph *m_noCodes;
    Paragraph *m_hint;
    QPushButton *m_run;
};
