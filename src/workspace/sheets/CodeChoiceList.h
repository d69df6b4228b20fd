#pragma once

#include "kit/lists/ListModel.h"
#include "kit/lists/RowList.h"
#include "records/Code.h"

#include <QHash>
#include <QSet>

/// A code to choose, with the count of its passages.
struct CodeChoice {
    FlatCode line;
    qint64 count = 0;

    bool operator==(const CodeChoice &) const = default;
};

/// Rows to check, one for each code in the order of their tree. A click or Space checks a row; Return is left to the
/// sheet. As high as its rows, up to a limit, beyond which it scrolls.
class CodeChoiceList final : public RowList {
    Q_OBJECT

public:
    explicit CodeChoiceList(QWidget *parent = nullptr);

    [[nodiscard]] qsizetype chosenCount() const { return m_chosen.size(); }
    /// In the order of the tree.
    [[nodiscard]] QList<QUuid> chosenIDs() const;
    /// Codes that were chosen and are still there stay chosen.
    void setCodes(const QList<FlatCode> &codes, const QHash<QUuid, qint64> &counts);

Q_SIGNALS:
    void chosenCountChanged();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    [[nodiscard]] QVariant describe(const CodeChoice &choice, int role) const;
    void fitHeight();
    void toggle(const QModelIndex &index);

    QSet<QUuid> m_chosen;
    ListModel<QList<CodeChoice>> *m_codes;
};
