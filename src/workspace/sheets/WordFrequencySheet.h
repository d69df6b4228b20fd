#pragma once

#include "analysis/WordFrequency.h"
#include "workspace/sheets/FormSheet.h"

#include <optional>

class ElidedLabel;
class LibraryStore;
class PopUpList;
class QCheckBox;
class SegmentedControl;
class Stepper;

/// Asks which texts, which words and how many terms, and counts them. Begins with the same answers each time.
class WordFrequencySheet final : public FormSheet {
    Q_OBJECT

public:
    WordFrequencySheet(LibraryStore &store, QWidget &window);

private:
    void addScope();
    void addConditions();
    void addLimit();

    /// Absent while the document or code isn't chosen yet.
    [[nodiscard]] std::optional<WordFrequency::Scope> scope() const;
    void renderDocuments();
    void renderCodes();
    void renderScope();
    void renderMinLength();
    void act() override;

    LibraryStore &m_store;
    SegmentedControl *m_scopeKind;
    PopUpList *m_document;
    PopUpList *m_code;
    ElidedLabel *m_minLengthLabel;
    Stepper *m_minLength;
    QCheckBox *m_ignoreStopwords;
    SegmentedControl *m_limit;
    QPushButton *m_count;
};
