#pragma once

#include "kit/controls/Accessible.h"

#include <QWidget>

class SnippetLayout;

/// A query in words, in at most two lines. Its cost doesn't grow with what is cut off.
class QuerySummary final : public QWidget, public HasAccessibleRole {
    Q_OBJECT

public:
    explicit QuerySummary(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }

    /// Also the accessible name, whole.
    void setText(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] SnippetLayout layOut(int width) const;

    QString m_text;
};
