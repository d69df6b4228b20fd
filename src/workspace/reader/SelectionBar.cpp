#include "workspace/reader/SelectionBar.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/PlainButton.h"
#include "kit/controls/Transition.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Symbols.h"
#include "platform/LocaleText.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QMargins barPadding{18, 8, 8, 8};
constexpr int spacing = 14;
constexpr int distanceToBottom = 22;

QString countText(qint64 length)
{
    return LocaleText::number(length) + u" characters selected"_s;
}

/// The widest text with as many digits, so that the bar keeps its width while the count changes.
QString widestText(qint64 length)
{
    QString text = countText(length);
    std::ranges::replace_if(
        text, [](QChar character) { return character.isDigit(); }, QChar(u'0'));
    return text;
}

constexpr QMargins hintPadding{12, 7, 8, 7};
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

SelectionBar::SelectionBar(QWidget *parent) : Capsule(Shadow::selectionBar(), barPadding, parent)
{
    setObjectName(u"selectionBar"_s);
    m_count = new ElidedLabel(countText(0), Fonts::callout(), Symbols::Tint::secondary, this);
    m_count->setAlignment(Qt::AlignRight);
    m_addButton = new QPushButton(Symbols::icon(u"tag"_s, Symbols::Tint::onAccent), u"Add Code"_s, this);
    m_addButton->setObjectName(u"addCode"_s);
    m_addButton->setFocusPolicy(Qt::TabFocus); // a click must not clear the selection in the text
    setRole(*m_addButton, ButtonRole::prominent, ButtonSize::capsule);
    row().setSpacing(spacing);
    row().addWidget(m_count);
    row().addWidget(m_addButton);
    connect(m_addButton, &QPushButton::clicked, this, &SelectionBar::addRequested);
    hide();
}

void SelectionBar::showLength(qint64 length)
{
    if (length <= 0) {
        if (!isHidden())
            Transition::selectionBar(*this).disappear(*this);
        return;
    }
    m_count->setText(countText(length));
    m_count->reserveRoomFor(widestText(length));
    place();
    if (isHidden())
        Transition::selectionBar(*this).appear(*this);
}

void SelectionBar::place()
{
    placeAtBottom(distanceToBottom);
}

CodingHint::CodingHint(QWidget *parent) : Capsule(Shadow::hint(), hintPadding, parent)
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
