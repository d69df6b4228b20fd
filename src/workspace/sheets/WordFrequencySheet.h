#pragma once

#include "analysis/WordFrequency.h"
#include "kit/controls/Sheet.h"

#include <optional>

class ElidedLabel;
class LibraryStore;
class PopUpList;
class QPushButton;
class QVBoxLayout;
class SegmentedControl;
class Stepper;
class ToggleSwitch;

/// Asks which texts, which words and how many terms, and counts them. Begins with the same answers each time.
class WordFrequencySheet final : public Sheet {
    Q_OBJECT

public:
    WordFrequencySheet(LibraryStore &store, QWidget &window);

private:
    void addHeader(QVBoxLayout &column);
    void addScope(QVBoxLayout &column);
    void addConditions(QVBoxLayout &column);
    void addLimit(QVBoxLayout &column);
    void addButtons(QVBoxLayout &column);
    /// A label that starts a row of the form.
    [[nodiscard]] ElidedLabel *makeLabel(const QString &text);

    /// Absent while the document or code isn't chosen yet.
    [[nodiscard]] std::optional<WordFrequency::Scope> scope() const;
    void renderDocuments();
    void renderCodes();
    void renderScope();
    void renderMinLength();
    void runCount();

    LibraryStore &m_store;
    SegmentedControl *m_scopeKind = nullptr;
    QWidget *m_documentRow = nullptr;
    PopUpList *m_document = nullptr;
    QWidget *m_codeRow = nullptr;
    PopUpList *m_code = nullptr;
    ElidedLabel *m_minLengthLabel = nullptr;
    Stepper *m_minLength = nullptr;
    ToggleSwitch *m_ignoreStopwords = nullptr;
    SegmentedControl *m_limit = nullptr;
    QPushButton *m_count = nullptr;
};
