#pragma once

#include <QStringList>
#include <QTabBar>

/// A choice of one among few, which the style draws as a track with a raised knob under the chosen label. One tab
/// stop; arrow keys move the choice, Home and End take it to its ends.
class SegmentedControl final : public QTabBar {
    Q_OBJECT

public:
    explicit SegmentedControl(const QStringList &labels, QWidget *parent = nullptr);

    [[nodiscard]] QStringList labels() const;
    /// The choice keeps its index, or moves to the last segment when there are fewer now.
    void setLabels(const QStringList &labels);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
};
