#include "workspace/reader/CodingHint.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/PlainButton.h"
#include "kit/controls/Transition.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Symbols.h"

#include <QHBoxLayout>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr QMargins padding{12, 7, 8, 7};
constexpr int distanceToTop = 14;
constexpr int bulbSize = 11;

/// Painted rather than a QLabel's pixmap, so that it follows a change between light and dark.
class Bulb final : public QWidget {
public:
    explicit Bulb(QWidget *parent) : QWidget(parent) { setFixedSize(bulbSize, bulbSize); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        Symbols::paint(painter, rect(), u"lightbulb"_s, Symbols::colorOf(Symbols::Tint::accent));
    }
};

} // namespace

CodingHint::CodingHint(QWidget *parent) : Capsule(Shadow::hint(), padding, parent)
{
    setObjectName(u"codingHint"_s);
    auto *close = PlainButton::iconOnly(u"xmark"_s, u"Close tip"_s, this);
    close->setObjectName(u"closeTip"_s);
    row().addWidget(new Bulb(this));
    row().addWidget(
        new ElidedLabel(u"Tip: select any passage to add a code"_s, Fonts::callout(), Symbols::Tint::text, this));
    row().addWidget(close);
    connect(close, &QPushButton::clicked, this, &CodingHint::dismissed);
    hide();
}

void CodingHint::setShown(bool isShown)
{
    if (isShown && isHidden())
        Transition::fade().appear(*this);
    else if (!isShown && !isHidden())
        Transition::fade().disappear(*this);
}

void CodingHint::place()
{
    placeAtTop(distanceToTop);
}
