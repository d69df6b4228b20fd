#include "workspace/controls/ColumnSplitter.h"

#include <QResizeEvent>

namespace {

constexpr int grabWidth = 7;
constexpr int hairline = 1;

/// QSplitter lays the handle's contents over the line and lets its margins overlap the columns. By itself it makes them
/// only as wide as five pixels ask for.
class Handle final : public QSplitterHandle {
public:
    Handle(Qt::Orientation orientation, QSplitter *parent) : QSplitterHandle(orientation, parent)
    {
        widen();
        setAttribute(Qt::WA_MouseNoMask);
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QSplitterHandle::resizeEvent(event);
        widen();
        setAttribute(Qt::WA_MouseNoMask);
        setMask(contentsRect());
    }

private:
    void widen()
    {
        constexpr int margin = (grabWidth - hairline) / 2;
        if (orientation() == Qt::Horizontal)
            setContentsMargins(margin, 0, margin, 0);
        else
            setContentsMargins(0, margin, 0, margin);
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
