#include "workspace/sheets/QuerySheet.h"

#include "kit/controls/Paragraph.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Roles.h"
#include "library/LibraryStore.h"
#include "platform/LocaleText.h"
#include "workspace/sheets/CodeChoiceList.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int sheetWidth = 380;
constexpr int padding = 16;
constexpr int paddingAbove = 14;
constexpr int spacing = 10;
constexpr int spacingOfGroups = 2; // besides
constexpr int calloutHeight = 17;
constexpr int captionHeight = 14;

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
    : FormSheet(window, u"Compound Query"_s, sheetWidth, padding,
        u"Find passages across your codes — together or one by one."_s),
      m_store(store),
      m_mode(new SegmentedControl(modeLabels(), this)),
      m_textFilter(new QLineEdit(this))
{
    rows().setContentsMargins(padding, paddingAbove, padding, 0);
    rows().setSpacing(spacing);
    addConditions();
    addCodes();
    m_hint = new Paragraph({}, Fonts::caption(), Symbols::Tint::secondary, captionHeight, this);
    m_hint->setObjectName(u"choiceHint"_s);
    m_run = addButtons(u"runQuery"_s, u"Run Query"_s, m_hint);
    m_mode->setFocus();

    connect(&m_store.codes(), &Notifier::changed, this, &QuerySheet::renderCodes);
    connect(&m_store.codeCounts(), &Notifier::changed, this, &QuerySheet::renderCodes);
    connect(m_list, &CodeChoiceList::chosenCountChanged, this, &QuerySheet::renderChoice);
    connect(m_mode, &SegmentedControl::currentChanged, this, &QuerySheet::renderChoice);
    renderCodes();
}

void QuerySheet::addConditions()
{
    m_mode->setObjectName(u"queryMode"_s);
    m_mode->setAccessibleName(u"Passages coded with"_s);
    m_textFilter->setObjectName(u"textFilter"_s);
    m_textFilter->setMaxLength(std::numeric_limits<int>::max()); // the default limit cuts what is pasted, silently
    m_textFilter->setPlaceholderText(u"Only passages containing… (optional)"_s);
    m_textFilter->setAccessibleName(u"Only passages containing"_s);
    rows().addSpacing(spacingOfGroups);
    rows().addWidget(m_mode);
    rows().addWidget(m_textFilter);
}

void QuerySheet::addCodes()
{
    rows().addSpacing(spacingOfGroups);
    rows().addWidget(new Paragraph(u"Codes"_s, Fonts::sectionHead(), Symbols::Tint::secondary, captionHeight, this));
    m_list = new CodeChoiceList(this);
    m_list->setObjectName(u"codeChoices"_s);
    m_noCodes = new Paragraph(
        u"No codes yet — code some passages first."_s, Fonts::callout(), Symbols::Tint::secondary, calloutHeight, this);
    m_noCodes->setObjectName(u"noCodes"_s);
    m_noCodes->setContentsMargins(padding, padding, padding, padding);
    for (QWidget *part : std::initializer_list<QWidget *>{m_list, m_noCodes, makeHairline(QFrame::Raised)})
        column().addWidget(part);
}

QuerySpec::Mode QuerySheet::mode() const
{
    return QuerySpec::modes().at(size_t(m_mode->currentIndex()));
}

void QuerySheet::renderCodes()
{
    m_list->setCodes(m_store.orderedCodes(), m_store.codeCounts().get());
    m_list->setVisible(!m_store.codes()->isEmpty());
    m_noCodes->setVisible(m_store.codes()->isEmpty());
}

void QuerySheet::renderChoice()
{
    const qsizetype count = m_list->chosenCount();
    const bool isEnough = count >= minCodeCount(mode());
    if (isEnough)
        m_hint->setText(u"%1 selected"_s.arg(LocaleText::number(count)));
    else
        m_hint->setText(
            mode() == QuerySpec::Mode::all ? u"Pick at least 2 codes to intersect."_s : u"Pick at least 1 code."_s);
    m_run->setEnabled(isEnough);
}

/// The focus goes back to the window before the query shows its results there, which may want the focus themselves.
void QuerySheet::act()
{
    accept();
    m_store.runQuery({.codeIDs = m_list->chosenIDs(), .mode = mode(), .textFilter = m_textFilter->text()});
}
