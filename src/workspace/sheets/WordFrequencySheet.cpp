#include "workspace/sheets/WordFrequencySheet.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/Paragraph.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/controls/Stepper.h"
#include "kit/controls/ToggleSwitch.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"
#include "library/LibraryStore.h"
#include "platform/LocaleText.h"
#include "workspace/sheets/PopUpList.h"

#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int sheetWidth = 420;
constexpr int padding = 16 + 1; // and the edge
constexpr int spacing = 16;
constexpr int headerSpacing = 2;
constexpr int titleHeight = 17;
constexpr int calloutHeight = 16;
constexpr int minLabelWidth = 74;
constexpr int besideSmallControls = 9;
constexpr int shadowRoom = 2; // of the stepper, above and below, which adds to the spacing there

enum ScopeKind { allDocuments, oneDocument, oneCode };

constexpr int shortestMinLength = 2;
constexpr int longestMinLength = 8;
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

WordFrequencySheet::WordFrequencySheet(LibraryStore &store, QWidget &window) : Sheet(window, sheetWidth), m_store(store)
{
    setWindowTitle(u"Word Frequency"_s);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(spacing);
    addHeader(*column);
    auto *form = new QVBoxLayout;
    form->setSpacing(spacing - shadowRoom);
    addScope(*form);
    addConditions(*form);
    addLimit(*form);
    column->addLayout(form);
    addButtons(*column);
    m_scopeKind->setFocus();

    connect(&m_store.documents(), &Notifier::changed, this, &WordFrequencySheet::renderDocuments);
    connect(&m_store.codes(), &Notifier::changed, this, &WordFrequencySheet::renderCodes);
    connect(m_scopeKind, &SegmentedControl::currentIndexChanged, this, &WordFrequencySheet::renderScope);
    connect(m_document, &QComboBox::currentIndexChanged, this, &WordFrequencySheet::renderScope);
    connect(m_code, &QComboBox::currentIndexChanged, this, &WordFrequencySheet::renderScope);
    connect(m_minLength, &Stepper::valueChanged, this, &WordFrequencySheet::renderMinLength);
    connect(this, &QDialog::accepted, this, &WordFrequencySheet::runCount);
    renderDocuments();
    renderCodes();
    renderScope();
    renderMinLength();
}

ElidedLabel *WordFrequencySheet::makeLabel(const QString &text)
{
    auto *label = new ElidedLabel(text, Fonts::body(), Symbols::Tint::text, this);
    const QFontMetrics metrics(Fonts::body());
    int widest = minLabelWidth;
    for (const QString &each : {u"Document"_s, u"Code"_s, u"Show top"_s})
        widest = std::max(widest, metrics.horizontalAdvance(each) + 1);
    label->setFixedWidth(widest);
    return label;
}

void WordFrequencySheet::addHeader(QVBoxLayout &column)
{
    auto *header = new QVBoxLayout;
    header->setSpacing(headerSpacing);
    header->addWidget(new Paragraph(u"Word Frequency"_s, Fonts::headline(), Symbols::Tint::text, titleHeight, this));
    header->addWidget(new Paragraph(u"Count the most frequent terms — a quick map of what the text is about."_s,
        Fonts::callout(), Symbols::Tint::secondary, calloutHeight, this));
    column.addLayout(header);
}

void WordFrequencySheet::addScope(QVBoxLayout &column)
{
    m_scopeKind = new SegmentedControl({u"All documents"_s, u"Document"_s, u"Code"_s}, this);
    m_scopeKind->setObjectName(u"scopeKind"_s);
    m_scopeKind->setAccessibleName(u"Scope"_s);
    column.addWidget(m_scopeKind);
    const auto addRow = [&](PopUpList *list, const QString &name, const QString &label) {
        list->setObjectName(name);
        list->setAccessibleName(label);
        auto *row = new QWidget(this);
        auto *parts = new QHBoxLayout(row);
        parts->setContentsMargins(0, shadowRoom, 0, 0);
        parts->setSpacing(Metrics::controlSpacing);
        parts->addWidget(makeLabel(label));
        parts->addWidget(list, 1);
        column.addWidget(row);
        return row;
    };
    m_document = new PopUpList(this);
    m_documentRow = addRow(m_document, u"scopeDocument"_s, u"Document"_s);
    m_code = new PopUpList(this);
    m_codeRow = addRow(m_code, u"scopeCode"_s, u"Code"_s);
}

void WordFrequencySheet::addConditions(QVBoxLayout &column)
{
    m_minLengthLabel = new ElidedLabel({}, Fonts::body(), Symbols::Tint::text, this);
    m_minLengthLabel->setObjectName(u"minLengthLabel"_s);
    m_minLength = new Stepper(shortestMinLength, longestMinLength, this);
    m_minLength->setObjectName(u"minLength"_s);
    m_minLength->setAccessibleName(u"Min length"_s);
    m_minLength->setValue(defaultMinLength);
    m_ignoreStopwords = new ToggleSwitch(this);
    m_ignoreStopwords->setObjectName(u"ignoreStopwords"_s);
    m_ignoreStopwords->setAccessibleName(u"Ignore common words"_s);
    m_ignoreStopwords->setChecked(true);

    auto *row = new QHBoxLayout;
    row->setSpacing(besideSmallControls);
    row->addWidget(m_minLengthLabel);
    row->addWidget(m_minLength);
    row->addStretch();
    row->addWidget(new ElidedLabel(u"Ignore common words"_s, Fonts::body(), Symbols::Tint::text, this));
    row->addWidget(m_ignoreStopwords);
    column.addLayout(row);
}

void WordFrequencySheet::addLimit(QVBoxLayout &column)
{
    m_limit = new SegmentedControl(limitLabels(), this);
    m_limit->setObjectName(u"limit"_s);
    m_limit->setAccessibleName(u"Show top"_s);
    m_limit->setCurrentIndex(defaultLimit);
    auto *row = new QHBoxLayout;
    row->setSpacing(Metrics::controlSpacing);
    row->addWidget(makeLabel(u"Show top"_s));
    row->addWidget(m_limit, 1);
    column.addLayout(row);
}

void WordFrequencySheet::addButtons(QVBoxLayout &column)
{
    auto *cancel = new QPushButton(u"Cancel"_s, this);
    cancel->setObjectName(u"cancel"_s);
    cancel->setAutoDefault(false); // Return always means the other one
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    m_count = new QPushButton(u"Count"_s, this);
    m_count->setObjectName(u"count"_s);
    m_count->setDefault(true);
    setRole(*m_count, ButtonRole::prominent);
    connect(m_count, &QPushButton::clicked, this, &QDialog::accept);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(Metrics::controlSpacing);
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(m_count);
    column.addLayout(buttons);
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
    m_documentRow->setVisible(m_scopeKind->currentIndex() == oneDocument);
    m_codeRow->setVisible(m_scopeKind->currentIndex() == oneCode);
    m_count->setEnabled(scope().has_value());
}

void WordFrequencySheet::renderMinLength()
{
    m_minLengthLabel->setText(u"Min length: "_s + LocaleText::number(m_minLength->value()));
}

/// When the sheet has closed and the focus is back in the window, so that it follows what the count shows there.
void WordFrequencySheet::runCount()
{
    if (const auto counted = scope())
        m_store.runWordFrequency(
            *counted, m_minLength->value(), m_ignoreStopwords->isChecked(), limits.at(size_t(m_limit->currentIndex())));
}
