#include "workspace/reader/SelectionBar.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/Transition.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Symbols.h"
#include "platform/LocaleText.h"

#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr QMargins padding{18, 8, 8, 8};
constexpr int spacing = 14;
constexpr int distanceToBottom = 22;

QString countText(qint64 length)
{
    return LocaleText::number(length) + u" characters selected"_s;
}

/// The widest text with as many digits: the bar keeps its width while the count changes.
QString widestText(qint64 length)
{
    QString text = countText(length);
    for (QChar &character : text) {
        if (character.isDigit())
            character = u'0';
    }
    return text;
}

} // namespace

SelectionBar::SelectionBar(QWidget *parent) : Capsule(Shadow::selectionBar(), padding, parent)
{
    setObjectName(u"selectionBar"_s);
    m_count = new ElidedLabel(countText(0), Fonts::callout(), Symbols::Tint::secondary, this);
    m_count->setAlignment(Qt::AlignRight);
    m_addButton = new QPushButton(Symbols::icon(u"tag"_s, Symbols::Tint::onAccent), u"Add Code"_s, this);
    m_addButton->setObjectName(u"addCode"_s);
    m_addButton->setFocusPolicy(Qt::TabFocus); // a click must leave the passage selected in the text
    setRole(*m_addButton, ButtonRole::prominent, ButtonSize::capsule);
    row().setSpacing(spacing);
    row().addWidget(m_count);
    row().addWidget(m_addButton);
    connect(m_addButton, &QPushButton::clicked, this, &SelectionBar::addRequested);
    hide();
}

void SelectionBar::showLength(qint64 length)
{
    if (length > 0) {
        m_count->setText(countText(length));
        m_count->reserveRoomFor(widestText(length));
        place();
    }
    const bool isWanted = length > 0;
    if (isWanted == m_isIn)
        return;
    m_isIn = isWanted;
    const Transition transition = Transition::selectionBar(*this);
    if (isWanted)
        transition.appear(*this);
    else
        transition.disappear(*this);
}

void SelectionBar::place()
{
    placeAtBottom(distanceToBottom);
}
