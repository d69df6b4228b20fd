#include "kit/controls/SearchField.h"

#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int glassSide = 12;
constexpr int glassInset = 9;
constexpr int textInset = 17; // besides what every field has
constexpr int crossRoom = 18;

/// Empties the field. Not reached by Tab: Escape does the same.
class Cross final : public QAbstractButton {
public:
    explicit Cross(QWidget *parent) : QAbstractButton(parent)
    {
        setFocusPolicy(Qt::NoFocus);
        setCursor(Qt::ArrowCursor);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        constexpr int side = 9;
        QPainter painter(this);
        QRect square(0, 0, side, side);
        square.moveCenter(rect().center());
        const ThemeColors &colors = Theme::colors();
        Symbols::paint(
            painter, square, u"xmark"_s, underMouse() ? colors.text : colors.secondary, Symbols::semiboldStroke);
    }
    void enterEvent(QEnterEvent *) override { update(); }
    void leaveEvent(QEvent *) override { update(); }
};

} // namespace

SearchField::SearchField(const QString &placeholder, QWidget *parent) : QLineEdit(parent), m_cross(new Cross(this))
{
    setSearchRole(*this);
    setMaxLength(std::numeric_limits<int>::max()); // by itself it cuts what is pasted, silently
    setPlaceholderText(placeholder);
    setAccessibleName(placeholder);
    m_cross->setAccessibleName(u"Clear search"_s);
    m_cross->hide();
    connect(m_cross, &QAbstractButton::clicked, this, &QLineEdit::clear);
    connect(this, &QLineEdit::textChanged, this, &SearchField::makeRoom);
    makeRoom();
}

QSize SearchField::sizeHint() const
{
    constexpr int defaultWidth = 163;
    return {defaultWidth, QLineEdit::sizeHint().height()};
}

QRect SearchField::glassRect() const
{
    const QRect glass(glassInset, (height() - glassSide) / 2, glassSide, glassSide);
    return QStyle::visualRect(layoutDirection(), rect(), glass);
}

void SearchField::makeRoom()
{
    const bool isFilled = !text().isEmpty();
    m_cross->setVisible(isFilled);
    const int crossMargin = isFilled ? crossRoom : 0;
    if (isRightToLeft())
        setTextMargins(crossMargin, 0, textInset, 0);
    else
        setTextMargins(textInset, 0, crossMargin, 0);
}

void SearchField::placeCross()
{
    const QRect cross(width() - crossRoom - 4, 0, crossRoom, height());
    m_cross->setGeometry(QStyle::visualRect(layoutDirection(), rect(), cross));
}

void SearchField::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    placeCross();
}

void SearchField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !text().isEmpty())
        clear();
    else
        QLineEdit::keyPressEvent(event);
}

void SearchField::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    Symbols::paint(painter, glassRect(), u"magnifyingglass"_s, Theme::colors().secondary, Symbols::semiboldStroke);
}
