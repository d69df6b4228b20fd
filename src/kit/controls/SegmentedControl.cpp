#include "kit/controls/SegmentedControl.h"

#include "kit/theme/Fonts.h"

#include <QKeyEvent>
#include <QWheelEvent>

SegmentedControl::SegmentedControl(const QStringList &labels, QWidget *parent) : QTabBar(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFont(Fonts::bodyMedium());
    setExpanding(true);
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideRight);
    setLabels(labels);
}

QStringList SegmentedControl::labels() const
{
    QStringList labels;
    for (int index = 0; index < count(); ++index)
        labels.append(tabText(index));
    return labels;
}

void SegmentedControl::setLabels(const QStringList &labels)
{
    while (count() > labels.size())
        removeTab(count() - 1);
    for (int index = 0; index < labels.size(); ++index) {
        if (index < count())
            setTabText(index, labels[index]);
        else
            addTab(labels[index]);
    }
}

/// QTabBar handles only Left and Right. It ignores indexes beyond its ends.
void SegmentedControl::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        setCurrentIndex(currentIndex() - 1);
        break;
    case Qt::Key_Down:
        setCurrentIndex(currentIndex() + 1);
        break;
    case Qt::Key_Home:
        setCurrentIndex(0);
        break;
    case Qt::Key_End:
        setCurrentIndex(count() - 1);
        break;
    default:
        QTabBar::keyPressEvent(event);
    }
}

/// Turning the wheel over a sheet must not change what it asks for.
void SegmentedControl::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}
