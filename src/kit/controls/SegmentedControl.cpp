#include "kit/controls/SegmentedControl.h"

#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace {

constexpr int knobInset = 2;
constexpr double knobRadius = 5.5;
constexpr int segmentPadding = 10;

} // namespace

SegmentedControl::SegmentedControl(QStringList labels, QWidget *parent) : QWidget(parent), m_labels(std::move(labels))
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFont(Fonts::bodyMedium());
}

QRect SegmentedControl::track() const
{
    return rect();
}

int SegmentedControl::neededWidth(int index) const
{
    return int(std::lround(QFontMetricsF(Fonts::body()).horizontalAdvance(m_labels[index]))) + 2 * segmentPadding;
}

/// All alike; but a label that needs more than its share takes it from the others.
std::vector<int> SegmentedControl::segmentWidths() const
{
    const int count = int(m_labels.size());
    std::vector<int> widths(size_t(count), 0);
    std::vector<int> byNeed(size_t(count), 0);
    for (int index = 0; index < count; ++index)
        byNeed[size_t(index)] = index;
    std::sort(
        byNeed.begin(), byNeed.end(), [this](int one, int other) { return neededWidth(one) > neededWidth(other); });
    int room = track().width() - 2 * knobInset;
    int left = count;
    const int allNeed = [&] {
        int sum = 0;
        for (int index = 0; index < count; ++index)
            sum += neededWidth(index);
        return sum;
    }();
    for (const int index : byNeed) {
        const int share = room / left;
        widths[size_t(index)] = allNeed <= track().width() ? std::max(share, neededWidth(index)) : share;
        room -= widths[size_t(index)];
        --left;
    }
    return widths;
}

QRect SegmentedControl::segmentRect(int index) const
{
    const std::vector<int> widths = segmentWidths();
    const QRect ground = track();
    int left = ground.left() + knobInset;
    for (int before = 0; before < index; ++before)
        left += widths[size_t(before)];
    const QRect segment(left, ground.top(), widths[size_t(index)], ground.height());
    return QStyle::visualRect(layoutDirection(), ground, segment);
}

QSize SegmentedControl::sizeHint() const
{
    int widest = 0;
    for (int index = 0; index < m_labels.size(); ++index)
        widest = std::max(widest, neededWidth(index));
    return {widest * int(m_labels.size()) + 2 * knobInset,
        Metrics::rowHeightFor(Metrics::controlHeight, fontMetrics().height())};
}

QSize SegmentedControl::minimumSizeHint() const
{
    constexpr int narrowest = 40; // labels are elided below what they need
    return {narrowest * int(m_labels.size()), sizeHint().height()};
}

FocusOutline SegmentedControl::focusOutline() const
{
    return {track(), Metrics::controlRadius};
}

void SegmentedControl::setLabels(const QStringList &labels)
{
    if (labels == m_labels)
        return;
    const int kept = std::min(m_current, int(labels.size()) - 1);
    m_labels = labels;
    updateGeometry();
    update();
    setCurrentIndex(kept);
}

void SegmentedControl::setCurrentIndex(int index)
{
    if (index == m_current || index < 0 || index >= m_labels.size())
        return;
    m_current = index;
    update();
    announceValue(*this, accessibleValue());
    Q_EMIT currentIndexChanged(index);
}

int SegmentedControl::indexAt(const QPoint &position) const
{
    for (int index = 0; index < m_labels.size(); ++index) {
        if (segmentRect(index).contains(position))
            return index;
    }
    return -1;
}

void SegmentedControl::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setCurrentIndex(indexAt(event->position().toPoint()));
}

void SegmentedControl::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        setCurrentIndex(indexAt(event->position().toPoint()));
}

void SegmentedControl::keyPressEvent(QKeyEvent *event)
{
    const int forward = isRightToLeft() ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Left:
        setCurrentIndex(m_current - forward);
        break;
    case Qt::Key_Right:
        setCurrentIndex(m_current + forward);
        break;
    case Qt::Key_Up:
        setCurrentIndex(m_current - 1);
        break;
    case Qt::Key_Down:
        setCurrentIndex(m_current + 1);
        break;
    case Qt::Key_Home:
        setCurrentIndex(0);
        break;
    case Qt::Key_End:
        setCurrentIndex(int(m_labels.size()) - 1);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void SegmentedControl::paintEvent(QPaintEvent *)
{
    const ThemeColors &colors = Theme::colors();
    QPainter painter(this);
    Painting::fill(painter, track(), Metrics::controlRadius, colors.track);
    if (colors.look.hasHighContrast)
        Painting::edge(painter, track(), Metrics::controlRadius, colors.controlEdge);
    for (int index = 0; index < m_labels.size(); ++index)
        paintSegment(painter, index);
}

void SegmentedControl::paintSegment(QPainter &painter, int index) const
{
    const ThemeColors &colors = Theme::colors();
    const QRect segment = segmentRect(index);
    const bool isCurrent = index == m_current;
    if (isCurrent && isEnabled()) {
        const QRect knob = segment.adjusted(0, knobInset, 0, -knobInset);
        constexpr Shadow shadow{QColor(0, 0, 0, 31), 2, 1};
        shadow.paint(painter, knob, knobRadius);
        Painting::fill(painter, knob, knobRadius, colors.knob);
        if (colors.look.hasHighContrast)
            Painting::edge(painter, knob, knobRadius, colors.text);
    }
    if (index > 0 && !isCurrent && index - 1 != m_current) {
        constexpr int lineInset = 8;
        const int x = isRightToLeft() ? segment.right() : segment.left();
        painter.fillRect(x, segment.top() + lineInset, 1, segment.height() - 2 * lineInset, colors.raisedHairline);
    }
    painter.setFont(isCurrent ? Fonts::bodyMedium() : Fonts::body());
    painter.setPen(!isEnabled() ? colors.tertiary : isCurrent ? colors.text : colors.secondary);
    const QString label = painter.fontMetrics().elidedText(m_labels[index], Qt::ElideRight, segment.width() - 6);
    painter.drawText(segment, Qt::AlignCenter | Qt::TextSingleLine, label);
}
