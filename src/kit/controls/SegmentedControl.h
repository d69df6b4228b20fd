#pragma once

#include "kit/controls/Accessible.h"
#include "kit/theme/FocusRing.h"

#include <QStringList>
#include <QWidget>

#include <vector>

/// A choice of one among few: a track with a raised knob under the chosen label. One tab stop; arrow keys move the
/// choice, Home and End take it to its ends.
class SegmentedControl final : public QWidget, public HasFocusOutline, public HasAccessibleRole {
    Q_OBJECT

public:
    explicit SegmentedControl(QStringList labels, QWidget *parent = nullptr);

    [[nodiscard]] int currentIndex() const { return m_current; }
    [[nodiscard]] const QStringList &labels() const { return m_labels; }
    /// Where the segment lies, for hit tests.
    [[nodiscard]] QRect segmentRect(int index) const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] FocusOutline focusOutline() const override;
    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::ComboBox; }
    [[nodiscard]] QString accessibleValue() const override { return m_labels.value(m_current); }

    /// The choice stays at its place, or goes to the last segment when there are fewer now.
    void setLabels(const QStringList &labels);
    /// Ignored unless it is one of the segments.
    void setCurrentIndex(int index);

Q_SIGNALS:
    /// Only when it is another one than before.
    void currentIndexChanged(int index);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] QRect track() const;
    [[nodiscard]] int neededWidth(int index) const;
    [[nodiscard]] std::vector<int> segmentWidths() const;
    [[nodiscard]] int indexAt(const QPoint &position) const;
    void paintSegment(QPainter &painter, int index) const;

    QStringList m_labels;
    int m_current = 0;
};
