#include "workspace/reader/FindBar.h"

#include "analysis/TextMatches.h"
#include "kit/controls/ElidedLabel.h"
#include "kit/controls/SearchField.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Theme.h"
#include "platform/LocaleText.h"
#include "surface/CodingTextView.h"
#include "workspace/reader/ReadingColumn.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int fieldWidth = 240;
constexpr int stepWidth = 26;

QPushButton *stepButton(const QString &symbol, const QString &name)
{
    auto *button = new QPushButton(Symbols::icon(symbol), {});
    button->setAccessibleName(name);
    button->setToolTip(name);
    setRole(*button, ButtonRole::bordered, ButtonSize::small);
    button->setFixedWidth(stepWidth);
    return button;
}

} // namespace

FindBar::FindBar(CodingTextView &text, QWidget *parent)
    : QWidget(parent),
      m_text(text),
      m_field(new SearchField(u"Find in document"_s)),
      m_count(new ElidedLabel({}, Fonts::callout(), Symbols::Tint::secondary)),
      m_previous(stepButton(u"chevron.left"_s, u"Previous match"_s)),
      m_next(stepButton(u"chevron.right"_s, u"Next match"_s))
{
    setObjectName(u"findBar"_s);
    m_field->setObjectName(u"findField"_s);
    m_field->setAccessibleName(u"Find in document"_s);
    m_field->setFixedWidth(fieldWidth);
    m_field->installEventFilter(this);
    m_count->setObjectName(u"findCount"_s);
    auto *done = new QPushButton(u"Done"_s);
    setRole(*done, ButtonRole::bordered, ButtonSize::small);

    auto *column = new ReadingColumn(*this);
    auto *row = new QHBoxLayout(column);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Metrics::controlSpacing);
    row->addWidget(m_field);
    row->addSpacing(3);
    row->addWidget(m_count, 1);
    row->addWidget(m_previous);
    row->addWidget(m_next);
    row->addWidget(done);
    auto *outer = new QHBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 1);
    outer->addWidget(column);
    setFixedHeight(Metrics::rowHeightFor(Metrics::findBarHeight, m_field->sizeHint().height()) + 1);

    connect(m_field, &QLineEdit::textChanged, this, &FindBar::search);
    connect(m_previous, &QPushButton::clicked, this, [this] { step(-1); });
    connect(m_next, &QPushButton::clicked, this, [this] { step(1); });
    connect(done, &QPushButton::clicked, this, &FindBar::close);
    hide();
}

void FindBar::open()
{
    show();
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
    search();
}

void FindBar::close()
{
    if (isHidden())
        return;
    hide();
    m_text.setFindMatches({});
    m_current.reset();
    m_text.setFocus(Qt::OtherFocusReason);
}

void FindBar::textChanged()
{
    if (isHidden())
        return;
    m_current.reset();
    markMatches();
    showCount();
}

void FindBar::markMatches()
{
    m_text.setFindMatches(TextMatches::allIn(m_text.text(), m_field->text()));
}

/// The index of the first match that begins at or after the caret; the number of matches if none does.
size_t FindBar::matchAtPlace() const
{
    const std::vector<TextRange> &matches = m_text.findMatches();
    const auto next = std::ranges::lower_bound(matches, m_text.selection().location, {}, &TextRange::location);
    return size_t(next - matches.begin());
}

void FindBar::search()
{
    markMatches();
    m_current.reset();
    // Searched from the caret, so that typing on stays at the same match while it fits.
    if (const size_t count = m_text.findMatches().size(); count > 0)
        select(matchAtPlace() % count);
    showCount();
}

void FindBar::step(int direction)
{
    const size_t count = m_text.findMatches().size();
    if (count == 0)
        return;
    const size_t next = m_current ? *m_current + 1 : matchAtPlace();
    const size_t previous = (m_current ? *m_current : matchAtPlace()) + count - 1;
    select((direction > 0 ? next : previous) % count);
    showCount();
}

void FindBar::select(size_t index)
{
    m_current = index;
    m_text.selectFindMatch(index);
}

void FindBar::showCount()
{
    const size_t count = m_text.findMatches().size();
    m_previous->setEnabled(count > 0);
    m_next->setEnabled(count > 0);
    if (m_field->text().isEmpty())
        m_count->setText({});
    else if (count == 0)
        m_count->setText(u"Not found"_s);
    else if (!m_current)
        m_count->setText(LocaleText::number(qint64(count)) + (count == 1 ? u" match"_s : u" matches"_s));
    else
        m_count->setText(
            u"%1 of %2"_s.arg(LocaleText::number(qint64(*m_current) + 1), LocaleText::number(qint64(count))));
}

/// Escape in a search field would clear it; here it closes the bar.
bool FindBar::eventFilter(QObject *watched, QEvent *event)
{
    const bool isEscape = event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape;
    if (watched != m_field || !isEscape)
        return QWidget::eventFilter(watched, event);
    close();
    return true;
}

void FindBar::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        step(event->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void FindBar::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::colors().content);
    painter.fillRect(QRect(0, height() - 1, width(), 1), Theme::colors().hairline);
}
