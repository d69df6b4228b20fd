#pragma once

#include "kit/controls/Accessible.h"

#include <QWidget>

class SnippetLayout;

/// A query in words, in at most two lines, as high as these need in its present width. Its cost doesn't grow with what
/// is cut off.
class QuerySummary final : public QWidget, public HasAccessibleRole {
    Q_OBJECT

public:
    explicit QuerySummary(QWidget *parent = nullptr);

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::StaticText; }

    /// Also the accessible name, whole.
    void setText(const QString &text);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void fitHeight();
    [[nodiscard]] SnippetLayout layOut() const;

    QString m_text;
};
