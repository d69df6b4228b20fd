#pragma once

#include "records/Code.h"

#include <QAbstractListModel>
#include <QHash>

#include <optional>

/// What the picker lists for a text in its field: perhaps a row that creates a code of that name, and the codes whose
/// names hold it.
class PickerModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { codeRole = Qt::UserRole, countRole, colorRole, createsRole, returnRole };

    explicit PickerModel(QObject *parent = nullptr) : QAbstractListModel(parent) { }

    /// The trimmed text, where no code bears it as its name in any case; absent otherwise.
    [[nodiscard]] const std::optional<QString> &creatableName() const { return m_creatableName; }
    [[nodiscard]] const QList<Code> &filteredCodes() const { return m_filtered; }
    /// Absent for the row that creates a code.
    [[nodiscard]] std::optional<Code> codeAt(int row) const;

    void show(const QString &query, const QList<Code> &codes, const QHash<QUuid, qint64> &counts);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

private:
    [[nodiscard]] int createRows() const { return m_creatableName ? 1 : 0; }

    std::optional<QString> m_creatableName;
    QList<Code> m_filtered;
    QHash<QUuid, qint64> m_counts;
};
