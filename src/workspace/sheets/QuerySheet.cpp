#include "workspace/sheets/QuerySheet.h"

#include "kit/controls/Hairline.h"
#include "kit/controls/Paragraph.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"
#include "library/LibraryStore.h"
#include "platform/LocaleText.h"
#include "workspace/sheets/CodeChoiceList.h"
#include "workspace/sheets/CodeChoiceModel.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int sheetWidth = 380;
constexpr int side = 16;
constexpr int edge = 1;
constexpr int titleHeight = 17;
constexpr int calloutHeight = 17;
constexpr int captionHeight = 14;

/// Adds a widget with the sheet's padding at its sides and `above` it.
void addPadded(QVBoxLayout &column, QWidget *widget, int above, int below = 0)
{
    auto *padding = new QVBoxLayout;
    padding->setContentsMargins(side, above, side, below);
    padding->addWidget(widget);
    column.addLayout(padding);
}

QStringList modeLabels()
{
    QStringList labels;
    for (const QuerySpec::Mode mode : QuerySpec::modes())
        labels.append(QuerySpec::label(mode));
    return labels;
}

qsizetype minCodeCount(QuerySpec::Mode mode)
{
    return mode == QuerySpec::Mode::all ? 2 : 1;
}

} // namespace

QuerySheet::QuerySheet(LibraryStore &store, QWidget &window)
    : Sheet(window, sheetWidth),
      m_store(store),
      m_codes(new CodeChoiceModel(this))
{
    setWindowTitle(u"Compound Query"_s);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(edge, edge, edge, edge);
    column->setSpacing(0);
    addHeader(*column);
    addConditions(*column);
    addCodes(*column);
    column->addWidget(new Hairline(Hairline::Place::raised, Qt::Horizontal, this));
    addFooter(*column);
    m_mode->setFocus();

    connect(&m_store.codes(), &Notifier::changed, this, &QuerySheet::renderCodes);
    connect(&m_store.codeCounts(), &Notifier::changed, this, &QuerySheet::renderCodes);
    connect(m_codes, &CodeChoiceModel::chosenCountChanged, this, &QuerySheet::renderChoice);
    connect(m_mode, &SegmentedControl::currentIndexChanged, this, &QuerySheet::renderChoice);
    connect(this, &QDialog::accepted, this, &QuerySheet::runQuery);
    renderCodes();
}

void QuerySheet::addHeader(QVBoxLayout &column)
{
    constexpr int spacing = 2;
    constexpr int above = 14;
    auto *title = new Paragraph(u"Compound Query"_s, Fonts::headline(), Symbols::Tint::text, titleHeight, this);
    addPadded(column, title, above);
    auto *purpose = new Paragraph(u"Find passages across your codes — together or one by one."_s, Fonts::callout(),
        Symbols::Tint::secondary, calloutHeight, this);
    addPadded(column, purpose, spacing);
}

void QuerySheet::addConditions(QVBoxLayout &column)
{
    constexpr int aboveMode = 12;
    constexpr int aboveFilter = 10;
    m_mode = new SegmentedControl(modeLabels(), this);
    m_mode->setObjectName(u"queryMode"_s);
    m_mode->setAccessibleName(u"Passages coded with"_s);
    addPadded(column, m_mode, aboveMode);
    m_textFilter = new QLineEdit(this);
    m_textFilter->setObjectName(u"textFilter"_s);
    m_textFilter->setMaxLength(std::numeric_limits<int>::max()); // a field by itself cuts what is pasted, silently
    m_textFilter->setPlaceholderText(u"Only passages containing… (optional)"_s);
    m_textFilter->setAccessibleName(u"Only passages containing"_s);
    addPadded(column, m_textFilter, aboveFilter);
}

void QuerySheet::addCodes(QVBoxLayout &column)
{
    constexpr int above = 12;
    addPadded(
        column, new Paragraph(u"Codes"_s, Fonts::sectionHead(), Symbols::Tint::secondary, captionHeight, this), above);
    m_list = new CodeChoiceList(*m_codes, this);
    m_list->setObjectName(u"codeChoices"_s);
    column.addWidget(m_list);
    m_noCodes = new Paragraph(
        u"No codes yet — code some passages first."_s, Fonts::callout(), Symbols::Tint::secondary, calloutHeight, this);
    m_noCodes->setObjectName(u"noCodes"_s);
    m_noCodes->setContentsMargins(side, side, side, side);
    column.addWidget(m_noCodes);
}

void QuerySheet::addFooter(QVBoxLayout &column)
{
    m_hint = new Paragraph({}, Fonts::caption(), Symbols::Tint::secondary, captionHeight, this);
    m_hint->setObjectName(u"choiceHint"_s);
    auto *cancel = new QPushButton(u"Cancel"_s, this);
    cancel->setObjectName(u"cancel"_s);
    cancel->setAutoDefault(false); // Return always means the other one
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    m_run = new QPushButton(u"Run Query"_s, this);
    m_run->setObjectName(u"runQuery"_s);
    m_run->setDefault(true);
    setRole(*m_run, ButtonRole::prominent);
    connect(m_run, &QPushButton::clicked, this, &QDialog::accept);

    auto *footer = new QHBoxLayout;
    footer->setContentsMargins(side, side, side, side);
    footer->setSpacing(Metrics::controlSpacing);
    footer->addWidget(m_hint, 1, Qt::AlignVCenter);
    footer->addWidget(cancel);
    footer->addWidget(m_run);
    column.addLayout(footer);
}

QuerySpec::Mode QuerySheet::mode() const
{
    return QuerySpec::modes().at(size_t(m_mode->currentIndex()));
}

void QuerySheet::renderCodes()
{
    m_codes->setCodes(m_store.orderedCodes(), m_store.codeCounts().get());
    m_list->setVisible(m_codes->rowCount() > 0);
    m_noCodes->setVisible(m_codes->rowCount() == 0);
}

void QuerySheet::renderChoice()
{
    const qsizetype count = m_codes->chosenCount();
    const bool isEnough = count >= minCodeCount(mode());
    if (isEnough)
        m_hint->setText(u"%1 selected"_s.arg(LocaleText::number(count)));
    else
        m_hint->setText(
            mode() == QuerySpec::Mode::all ? u"Pick at least 2 codes to intersect."_s : u"Pick at least 1 code."_s);
    m_run->setEnabled(isEnough);
}

/// When the sheet has closed and the focus is back in the window, so that it follows what the query shows there.
void QuerySheet::runQuery()
{
    m_store.runQuery({.codeIDs = m_codes->chosenIDs(), .mode = mode(), .textFilter = m_textFilter->text()});
}
