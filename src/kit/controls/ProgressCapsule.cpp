#include "kit/controls/ProgressCapsule.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/FocusLoop.h"
#include "kit/controls/Scrim.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QMargins padding{19, 8, 9, 8};

class Bar final : public QWidget {
public:
    explicit Bar(QWidget *parent) : QWidget(parent) { setFixedSize(90, 4); }

    void setShare(double share)
    {
        m_share = std::clamp(share, 0., 1.);
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        QRectF done(rect());
        done.setWidth(done.width() * m_share);
        Painting::fill(painter, rect(), Metrics::barRadius, Theme::colors().track);
        if (isRightToLeft())
            done.moveRight(rect().width());
        Painting::fill(painter, done, Metrics::barRadius, Theme::accent);
    }

private:
    double m_share = 0;
};

} // namespace

ProgressCapsule::ProgressCapsule(QWidget &window)
    : Capsule(Shadow::banner(), padding, &window),
      m_count(new ElidedLabel({}, Fonts::callout(), Symbols::Tint::text, this)),
      m_name(new ElidedLabel({}, Fonts::callout(), Symbols::Tint::secondary, this)),
      m_bar(new Bar(this)),
      m_scrim(new Scrim(window, 1))
{
    auto *stop = new QPushButton(u"Stop"_s, this);
    setRole(*stop, ButtonRole::bordered, ButtonSize::capsule);
    stop->setAutoDefault(false);
    connect(stop, &QPushButton::clicked, this, &ProgressCapsule::stopped);
    m_name->setElideMode(Qt::ElideMiddle);
    row().addWidget(m_bar);
    row().addWidget(m_count);
    row().addWidget(m_name, 1);
    row().addWidget(stop);
    window.installEventFilter(this);
    raise();
    show();
    m_focusReturn.note();
    stop->setFocus(Qt::OtherFocusReason);
}

ProgressCapsule::~ProgressCapsule()
{
    delete m_scrim;
    m_focusReturn.giveBack();
}

void ProgressCapsule::setProgress(int number, int count, const QString &name)
{
    m_count->setText(u"File %1 of %2"_s.arg(number).arg(count));
    m_name->setText(name);
    static_cast<Bar *>(m_bar)->setShare(count > 0 ? double(number - 1) / count : 0);
    setAccessibleName(m_count->text() + QChar(u' ') + name);
    placeInMiddle();
}

void ProgressCapsule::placeInMiddle()
{
    layout()->activate();
    placeAtTop((parentWidget()->height() - bodySizeHint().height()) / 2);
}

bool ProgressCapsule::focusNextPrevChild(bool next)
{
    return FocusLoop::advance(*this, next);
}

bool ProgressCapsule::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        placeInMiddle();
    return Capsule::eventFilter(watched, event);
}
