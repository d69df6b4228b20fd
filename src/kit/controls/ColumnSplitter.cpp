#include "kit/controls/ColumnSplitter.h"

#include <QResizeEvent>

namespace {

constexpr int grabWidth = 7;
constexpr int hairline = 1;

/// QSplitter lays the handle's contents over the line and lets its margins overlap the columns.
class Handle final : public QSplitterHandle {
public:
    Handle(Qt::Orientation orientation, QSplitter *parent) : QSplitterHandle(orientation, parent)
    {
        constexpr int margin = (grabWidth - hairline) / 2;
        setContentsMargins(margin, 0, margin, 0);
        setAttribute(Qt::WA_MouseNoMask);
    }

protected:
    /// QSplitterHandle's own would set margins for a grab of five pixels, and each change of margins is a resize again.
    void resizeEvent(QResizeEvent *event) override
    {
        QWidget::resizeEvent(event); // NOLINT(bugprone-parent-virtual-call)
        setMask(contentsRect());
    }
};

} // namespace

ColumnSplitter::ColumnSplitter(QWidget *parent) : QSplitter(Qt::Horizontal, parent)
{
    setHandleWidth(hairline);
    setChildrenCollapsible(false);
}

QSplitterHandle *ColumnSplitter::createHandle()
{
    return new Handle(orientation(), this);
}
