#include "workspace/sheets/FormSheet.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/Paragraph.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"

#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int edge = 1;
constexpr int spacing = 16;
constexpr int titleHeight = 18;
constexpr int titleHeightOverPurpose = 17;
constexpr int purposeHeight = 16;
constexpr int purposeSpacing = 2;
constexpr double labelWidth = 5.7; // in units of the font's size, so that labels of several rows align

} // namespace

FormSheet::FormSheet(QWidget &window, const QString &title, int width, int padding, const QString &purpose)
    : Sheet(window, width),
      m_padding(padding),
      m_column(new QVBoxLayout(this)),
      m_rows(new QVBoxLayout)
{
    setWindowTitle(title);
    m_column->setContentsMargins(edge, edge, edge, edge);
    m_column->setSpacing(0);
    m_rows->setContentsMargins(padding, padding, padding, 0);
    m_rows->setSpacing(spacing);
    m_column->addLayout(m_rows, 1);

    auto *head = new QVBoxLayout;
    head->setSpacing(purposeSpacing);
    const int height = purpose.isEmpty() ? titleHeight : titleHeightOverPurpose;
    head->addWidget(new Paragraph(title, Fonts::headline(), Symbols::Tint::text, height, this));
    if (!purpose.isEmpty())
        head->addWidget(new Paragraph(purpose, Fonts::callout(), Symbols::Tint::secondary, purposeHeight, this));
    m_rows->addLayout(head);
}

void FormSheet::addRow(const QString &label, QWidget *control)
{
    auto *row = new QWidget(this);
    auto *text = new ElidedLabel(label, Fonts::body(), Symbols::Tint::text, row);
    text->setFixedWidth(std::max(int(labelWidth * text->fontInfo().pixelSize()), text->sizeHint().width()));
    control->setAccessibleName(label);
    auto *parts = new QHBoxLayout(row);
    parts->setContentsMargins({});
    parts->setSpacing(Metrics::controlSpacing);
    parts->addWidget(text);
    parts->addWidget(control, 1);
    m_rows->addWidget(row);
}

QPushButton *FormSheet::addButtons(const QString &objectName, const QString &label, QWidget *beside)
{
    auto *cancel = new QPushButton(u"Cancel"_s, this);
    cancel->setObjectName(u"cancel"_s);
    cancel->setAutoDefault(false); // else Return would cancel while it has the focus
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *button = new QPushButton(label, this);
    button->setObjectName(objectName);
    button->setDefault(true);
    setRole(*button, ButtonRole::prominent);
    connect(button, &QPushButton::clicked, this, &FormSheet::act);

    auto *buttons = new QHBoxLayout;
    buttons->setContentsMargins(m_padding, spacing, m_padding, m_padding);
    buttons->setSpacing(Metrics::controlSpacing);
    if (beside != nullptr)
        buttons->addWidget(beside, 1, Qt::AlignVCenter);
    else
        buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(button);
    m_column->addLayout(buttons);
    return button;
}
