#include "kit/controls/ProgressCapsule.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/FocusHandling.h"
#include "kit/controls/Sheet.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Roles.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr QMargins padding{19, 8, 9, 8};

} // namespace

ProgressCapsule::ProgressCapsule(QWidget &window)
    : Capsule(Shadow::banner(), padding, &window),
      m_count(new ElidedLabel({}, Fonts::callout(), Symbols::Tint::text, this)),
      m_name(new ElidedLabel({}, Fonts::callout(), Symbols::Tint::secondary, this)),
      m_bar(new QProgressBar(this)),
      m_scrim(new Scrim(window, 1))
{
    auto *stop = new QPushButton(u"Stop"_s, this);
    setRole(*stop, ButtonRole::bordered, ButtonSize::capsule);
    stop->setAutoDefault(false);
    connect(stop, &QPushButton::clicked, this, &ProgressCapsule::stopped);
    m_name->setElideMode(Qt::ElideMiddle);
    m_bar->setFixedSize(90, 4);
    m_bar->setTextVisible(false);
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
    m_bar->setRange(0, count);
    m_bar->setValue(number - 1);
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
