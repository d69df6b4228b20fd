#pragma once

#include "kit/controls/Accessible.h"

#include <QWidget>

/// A short word in a round tint, such as a document's type. Shown in upper case, kept as given.
class Pill final : public QWidget, public HasAccessibleRole {
    Q_OBJECT

public:
    explicit Pill(const QString &text = {}, QWidget *parent = nullptr);

    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }

    void setText(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
};
