#pragma once

#include "exchange/ExportCodeGroup.h"
#include "exchange/ExportFormat.h"
#include "kit/controls/Sheet.h"

#include <optional>

class LibraryStore;
class Paragraph;
class QVBoxLayout;
class SegmentedControl;

/// Asks what to export and how, and writes the report where the user wants it. Stays open until that has worked.
class ExportSheet final : public Sheet {
    Q_OBJECT

public:
    enum class Scope { all, selected };
    /// What the user reads.
    [[nodiscard]] static QString label(Scope scope);

    ExportSheet(LibraryStore &store, QWidget &window);

private:
    void addChoice(QVBoxLayout &column, const QString &caption, SegmentedControl *choice);
    void addButtons(QVBoxLayout &column);

    /// Only those that there is something for.
    [[nodiscard]] QList<Scope> availableScopes() const;
    [[nodiscard]] Scope scope() const;
    [[nodiscard]] std::optional<QUuid> scopeCodeID() const;
    [[nodiscard]] ExportFormat format() const;
    /// What would be exported. Read from the file once for each change of what decides on it.
    [[nodiscard]] const QList<ExportCodeGroup> &groups();
    [[nodiscard]] QString summary();

    void renderScopes();
    void renderSummary();
    void forgetGroups();
    void runExport();

    LibraryStore &m_store;
    std::optional<QList<ExportCodeGroup>> m_groups;
    SegmentedControl *m_scope = nullptr;
    SegmentedControl *m_format = nullptr;
    Paragraph *m_summary = nullptr;
};
