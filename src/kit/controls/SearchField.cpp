#include "kit/controls/SearchField.h"

#include "kit/theme/Roles.h"
#include "kit/theme/Symbols.h"

#include <QAction>
#include <QKeyEvent>

#include <limits>

using namespace Qt::StringLiterals;

SearchField::SearchField(const QString &placeholder, QWidget *parent) : QLineEdit(parent)
{
    const auto icon = [](const QString &name) {
        return Symbols::icon(name, Symbols::Tint::secondary, Symbols::semiboldStroke);
    };
    setSearchRole(*this);
    setMaxLength(std::numeric_limits<int>::max()); // QLineEdit silently truncates pasted text at 32,767
    setPlaceholderText(placeholder);
    setAccessibleName(placeholder);
    const QAction *glass = addAction(icon(u"magnifyingglass"_s), LeadingPosition);
    connect(glass, &QAction::triggered, this, [this] { setFocus(Qt::MouseFocusReason); });
    // Not setClearButtonEnabled: that one fades in even where the desktop asks for no motion.
    QAction *cross = addAction(icon(u"xmark"_s), TrailingPosition);
    cross->setText(u"Clear search"_s);
    cross->setVisible(false);
    connect(cross, &QAction::triggered, this, &QLineEdit::clear);
    connect(this, &QLineEdit::textChanged, cross, [cross](const QString &text) { cross->setVisible(!text.isEmpty()); });
}

QSize SearchField::sizeHint() const
{
    constexpr int defaultWidth = 163;
    return {defaultWidth, QLineEdit::sizeHint().height()};
}

void SearchField::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !text().isEmpty())
        clear();
    else
        QLineEdit::keyPressEvent(event);
}
