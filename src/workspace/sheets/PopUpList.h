#pragma once

#include <QComboBox>
#include <QUuid>

#include <optional>
#include <utility>

/// A choice of one among any number of named things, or of none: the first entry, "Choose…". Names that are too long
/// are elided, so the control takes whatever width it is given.
class PopUpList final : public QComboBox {
    Q_OBJECT

public:
    using Entry = std::pair<QUuid, QString>;

    explicit PopUpList(QWidget *parent = nullptr);

    /// The chosen one stays chosen if it is among them.
    void setEntries(const QList<Entry> &entries);
    [[nodiscard]] std::optional<QUuid> chosenID() const;

    void showPopup() override;
};
