#include "kit/controls/Alert.h"

#include "kit/controls/LongText.h"
#include "kit/controls/Paragraph.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Symbols.h"
#include "records/TextTrimming.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int titleHeight = 18;
constexpr int messageLine = 18;
constexpr int messageGap = 6;
constexpr int fieldGap = 13;
constexpr int fieldGapAfterMessage = 14;
constexpr int buttonsGap = 20;
constexpr qsizetype maxOfMessage = 2'000; // UTF-16 code units: what is wrong with a file may quote all of it

} // namespace

Alert *Alert::show(QWidget &parent, const Content &content)
{
    auto *alert = new Alert(parent, content);
    alert->open();
    return alert;
}

Alert::Alert(QWidget &parent, const Content &content) : Sheet(parent, Metrics::dialogWidth)
{
    setWindowTitle(content.title);
    auto *column = new QVBoxLayout(this);
    constexpr int padding = Metrics::dialogPadding + 1; // and the edge
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(0);
    addTexts(*column, content);
    if (content.field)
        addField(*column, *content.field);
    column->addSpacing(buttonsGap);
    addButtons(*column, content);
    connect(this, &QDialog::accepted, this, [this, answer = content.onAction] {
        if (answer)
            answer(m_field != nullptr ? m_field->text() : QString());
    });
    connect(this, &QDialog::rejected, this, [answer = content.onCancel] {
        if (answer)
            answer();
    });
}

void Alert::addTexts(QVBoxLayout &column, const Content &content)
{
    column.addWidget(new Paragraph(content.title, Fonts::headline(), Symbols::Tint::text, titleHeight, this));
    setAccessibleName(content.title);
    if (content.message.isEmpty())
        return;
    const QString message = LongText::shortened(content.message, maxOfMessage);
    setAccessibleDescription(message);
    column.addSpacing(messageGap);
    column.addWidget(new Paragraph(message, Fonts::body(), Symbols::Tint::secondary, messageLine, this));
}

void Alert::addField(QVBoxLayout &column, const Field &field)
{
    m_field = new QLineEdit(this);
    m_field->setMaxLength(maxNameLength); // by itself it cuts earlier, silently
    m_field->setText(field.text);
    m_field->setPlaceholderText(field.placeholder);
    m_field->setAccessibleName(field.accessibleName.isEmpty() ? field.placeholder : field.accessibleName);
    m_field->selectAll();
    m_field->setFocus();
    column.addSpacing(accessibleDescription().isEmpty() ? fieldGap : fieldGapAfterMessage);
    column.addWidget(m_field);
}

void Alert::addButtons(QVBoxLayout &column, const Content &content)
{
    auto *row = new QHBoxLayout;
    row->setSpacing(Metrics::controlSpacing);
    row->addStretch();
    QPushButton *cancel = nullptr;
    if (!content.cancel.isEmpty()) {
        cancel = new QPushButton(content.cancel, this);
        connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
        row->addWidget(cancel);
    }
    auto *action = new QPushButton(content.action, this);
    setRole(*action, content.actionRole);
    connect(action, &QPushButton::clicked, this, &QDialog::accept);
    row->addWidget(action);
    column.addLayout(row);

    const bool isDangerous = content.actionRole == ButtonRole::destructive && cancel != nullptr;
    QPushButton *first = isDangerous ? cancel : action;
    first->setDefault(true);
    if (m_field == nullptr)
        first->setFocus();
}
