#include "workspace/sheets/WordFrequencySheet.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/controls/Stepper.h"
#include "kit/theme/Fonts.h"
#include "library/LibraryStore.h"
#include "platform/LocaleText.h"
#include "workspace/sheets/PopUpList.h"

#include <QCheckBox>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int sheetWidth = 420;
constexpr int padding = 16;
constexpr int besideSmallControls = 9;
constexpr int shadowRoom = 2; // above and below the stepper, as part of its height

enum ScopeKind { allDocuments, oneDocument, oneCode };

constexpr int smallestMinLength = 2;
constexpr int largestMinLength = 8;
constexpr int defaultMinLength = 3;

constexpr std::array limits{25, 50, 100};
constexpr int defaultLimit = 1; // its index

QStringList limitLabels()
{
    QStringList labels;
    for (const int limit : limits)
        labels.append(LocaleText::number(limit));
    return labels;
}

} // namespace

WordFrequencySheet::WordFrequencySheet(LibraryStore &store, QWidget &window)
    : FormSheet(window, u"Word Frequency"_s, sheetWidth, padding,
        u"Count the most frequent terms — a quick map of what the text is about."_s),
      m_store(store),
      m_scopeKind(new SegmentedControl({u"All documents"_s, u"Document"_s, u"Code"_s}, this)),
      m_document(new PopUpList(this)),
      m_code(new PopUpList(this)),
      m_minLengthLabel(new ElidedLabel({}, Fonts::body(), Symbols::Tint::text, this)),
      m_minLength(new Stepper(smallestMinLength, largestMinLength, this)),
      m_ignoreStopwords(new QCheckBox(this)),
      m_limit(new SegmentedControl(limitLabels(), this))
{
    addScope();
    addConditions();
    addLimit();
    m_count = addButtons(u"count"_s, u"Count"_s);
    m_scopeKind->setFocus();

    connect(&m_store.documents(), &Notifier::changed, this, &WordFrequencySheet::renderDocuments);
    connect(&m_store.codes(), &Notifier::changed, this, &WordFrequencySheet::renderCodes);
    connect(m_scopeKind, &SegmentedControl::currentChanged, this, &WordFrequencySheet::renderScope);
    connect(m_document, &QComboBox::currentIndexChanged, this, &WordFrequencySheet::renderScope);
    connect(m_code, &QComboBox::currentIndexChanged, this, &WordFrequencySheet::renderScope);
    connect(m_minLength, &Stepper::valueChanged, this, &WordFrequencySheet::renderMinLength);
    renderDocuments();
    renderCodes();
    renderScope();
    renderMinLength();
}

void WordFrequencySheet::addScope()
{
    m_scopeKind->setObjectName(u"scopeKind"_s);
    m_scopeKind->setAccessibleName(u"Scope"_s);
    m_document->setObjectName(u"scopeDocument"_s);
    m_code->setObjectName(u"scopeCode"_s);
    rows().addWidget(m_scopeKind);
    addRow(u"Document"_s, m_document);
    addRow(u"Code"_s, m_code);
}

void WordFrequencySheet::addConditions()
{
    m_minLengthLabel->setObjectName(u"minLengthLabel"_s);
    m_minLength->setObjectName(u"minLength"_s);
    m_minLength->setAccessibleName(u"Min length"_s);
    m_minLength->setValue(defaultMinLength);
    m_ignoreStopwords->setObjectName(u"ignoreStopwords"_s);
    m_ignoreStopwords->setAccessibleName(u"Ignore common words"_s);
    m_ignoreStopwords->setChecked(true);

    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, -shadowRoom, 0, -shadowRoom);
    row->setSpacing(besideSmallControls);
    row->addWidget(m_minLengthLabel);
    row->addWidget(m_minLength);
    row->addStretch();
    row->addWidget(new ElidedLabel(u"Ignore common words"_s, Fonts::body(), Symbols::Tint::text, this));
    row->addWidget(m_ignoreStopwords);
    rows().addLayout(row);
}

void WordFrequencySheet::addLimit()
{
    m_limit->setObjectName(u"limit"_s);
    m_limit->setCurrentIndex(defaultLimit);
    addRow(u"Show top"_s, m_limit);
}

std::optional<WordFrequency::Scope> WordFrequencySheet::scope() const
{
    switch (ScopeKind(m_scopeKind->currentIndex())) {
    case allDocuments:
        return WordFrequency::AllDocuments{};
    case oneDocument:
        if (const auto id = m_document->chosenID())
            return WordFrequency::InDocument{*id};
        return {};
    case oneCode:
        if (const auto id = m_code->chosenID())
            return WordFrequency::InCode{*id};
        return {};
    }
    Q_UNREACHABLE();
}

void WordFrequencySheet::renderDocuments()
{
    QList<PopUpList::Entry> entries;
    for (const Document &document : m_store.documents().get())
        entries.append({document.id, document.title});
    m_document->setEntries(entries);
}

void WordFrequencySheet::renderCodes()
{
    QList<PopUpList::Entry> entries;
    for (const Code &code : m_store.codes().get())
        entries.append({code.id, code.name});
    m_code->setEntries(entries);
}

void WordFrequencySheet::renderScope()
{
    m_document->parentWidget()->setVisible(m_scopeKind->currentIndex() == oneDocument);
    m_code->parentWidget()->setVisible(m_scopeKind->currentIndex() == oneCode);
    m_count->setEnabled(scope().has_value());
}

void WordFrequencySheet::renderMinLength()
{
    m_minLengthLabel->setText(u"Min length: "_s + LocaleText::number(m_minLength->value()));
}

/// The focus goes back to the window before the count shows its terms there, which may want the focus themselves.
void WordFrequencySheet::act()
{
    accept();
    m_store.runWordFrequency(
        *scope(), m_minLength->value(), m_ignoreStopwords->isChecked(), limits.at(size_t(m_limit->currentIndex())));
}
