#pragma once

#include "workspace/sheets/FormSheet.h"

#include <QUuid>

#include <optional>

class LibraryStore;
class Paragraph;
class SegmentedControl;

/// Asks what to export and how, and writes the report where the user wants it. Stays open until that has worked.
class ExportSheet final : public FormSheet {
    Q_OBJECT

public:
    ExportSheet(LibraryStore &store, QWidget &window);

private:
    void addChoice(const QString &caption, SegmentedControl *choice);
    [[nodiscard]] QStringList scopeLabels() const;
    /// The code to export alone; none for all codes.
    [[nodiscard]] std::optional<QUuid> scopeCodeID() const;
    void renderScopes();
    /// How many codes have passages, and how many passages these are together.
    void renderSummary();
    void act() override;

    LibraryStore &m_store;
    SegmentedControl *m_scope;
    SegmentedControl *m_format;
    Paragraph *m_summary;
};
