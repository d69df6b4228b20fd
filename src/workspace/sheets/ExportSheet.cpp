#include "workspace/sheets/ExportSheet.h"

#include "kit/controls/Paragraph.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"
#include "library/LibraryStore.h"
#include "platform/FileDialogs.h"
#include "platform/FileViewer.h"
#include "platform/LocaleText.h"
#include "platform/LocalizedError.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int sheetWidth = 440;
constexpr int padding = Metrics::dialogPadding + 1; // and the edge
constexpr int spacing = 16;
constexpr int choiceSpacing = 8;
constexpr int titleHeight = 18;
constexpr int captionHeight = 14;
constexpr int calloutHeight = 16;

template <typename Values, typename Label>
QStringList labelsOf(const Values &values, Label label)
{
    QStringList labels;
    for (const auto &value : values)
        labels.append(label(value));
    return labels;
}

} // namespace

QString ExportSheet::label(Scope scope)
{
    switch (scope) {
    case Scope::all:
        return u"All codes"_s;
    case Scope::selected:
        return u"Selected code"_s;
    }
    Q_UNREACHABLE();
}

ExportSheet::ExportSheet(LibraryStore &store, QWidget &window)
    : Sheet(window, sheetWidth),
      m_store(store),
      m_scope(new SegmentedControl(labelsOf(availableScopes(), label), this)),
      m_format(new SegmentedControl(labelsOf(ExportFormats::formats(), ExportFormats::label), this)),
      m_summary(new Paragraph({}, Fonts::callout(), Symbols::Tint::secondary, calloutHeight, this))
{
    setWindowTitle(u"Export Coded Excerpts"_s);
    m_scope->setObjectName(u"exportScope"_s);
    m_format->setObjectName(u"exportFormat"_s);
    m_summary->setObjectName(u"exportSummary"_s);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(spacing);
    column->addWidget(
        new Paragraph(u"Export Coded Excerpts"_s, Fonts::headline(), Symbols::Tint::text, titleHeight, this));
    addChoice(*column, u"Scope"_s, m_scope);
    addChoice(*column, u"Format"_s, m_format);
    column->addWidget(m_summary);
    addButtons(*column);
    m_scope->setCurrentIndex(int(availableScopes().size()) - 1);
    m_scope->setFocus();

    connect(&m_store.sidebarSelection(), &Notifier::changed, this, &ExportSheet::renderScopes);
    connect(&m_store.codes(), &Notifier::changed, this, &ExportSheet::forgetGroups);
    connect(&m_store.documents(), &Notifier::changed, this, &ExportSheet::forgetGroups);
    connect(&m_store.codingRevision(), &Notifier::changed, this, &ExportSheet::forgetGroups);
    connect(m_scope, &SegmentedControl::currentIndexChanged, this, &ExportSheet::forgetGroups);
    renderSummary();
}

void ExportSheet::addChoice(QVBoxLayout &column, const QString &caption, SegmentedControl *choice)
{
    choice->setAccessibleName(caption);
    auto *block = new QVBoxLayout;
    block->setSpacing(choiceSpacing);
    block->addWidget(new Paragraph(caption, Fonts::caption(), Symbols::Tint::secondary, captionHeight, this));
    block->addWidget(choice);
    column.addLayout(block);
}

void ExportSheet::addButtons(QVBoxLayout &column)
{
    auto *cancel = new QPushButton(u"Cancel"_s, this);
    cancel->setObjectName(u"cancel"_s);
    cancel->setAutoDefault(false); // Return always means the other one
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *run = new QPushButton(u"Export"_s, this);
    run->setObjectName(u"export"_s);
    run->setDefault(true);
    setRole(*run, ButtonRole::prominent);
    connect(run, &QPushButton::clicked, this, &ExportSheet::runExport);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(Metrics::controlSpacing);
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(run);
    column.addLayout(buttons);
}

QList<ExportSheet::Scope> ExportSheet::availableScopes() const
{
    if (m_store.selectedCodeID())
        return {Scope::all, Scope::selected};
    return {Scope::all};
}

ExportSheet::Scope ExportSheet::scope() const
{
    return availableScopes().value(m_scope->currentIndex(), Scope::all);
}

ExportFormat ExportSheet::format() const
{
    return ExportFormats::formats().at(size_t(m_format->currentIndex()));
}

std::optional<QUuid> ExportSheet::scopeCodeID() const
{
    return scope() == Scope::selected ? m_store.selectedCodeID() : std::nullopt;
}

const QList<ExportCodeGroup> &ExportSheet::groups()
{
    if (!m_groups)
        m_groups = m_store.exportGroups(scopeCodeID());
    return *m_groups;
}

/// Codes without passages don't count here.
QString ExportSheet::summary()
{
    qint64 codeCount = 0;
    qint64 excerptCount = 0;
    for (const ExportCodeGroup &group : groups()) {
        codeCount += group.hits.isEmpty() ? 0 : 1;
        excerptCount += group.hits.size();
    }
    return LocaleText::number(codeCount) + u" codes · "_s + LocaleText::number(excerptCount) + u" excerpts"_s;
}

void ExportSheet::renderScopes()
{
    m_scope->setLabels(labelsOf(availableScopes(), label));
    forgetGroups();
}

void ExportSheet::renderSummary()
{
    m_summary->setText(summary());
}

void ExportSheet::forgetGroups()
{
    m_groups.reset();
    renderSummary();
}

void ExportSheet::runExport()
{
    const std::optional<QString> path = m_store.fileDialogs().chooseToSave({.title = u"Export Coded Excerpts"_s,
        .prompt = u"Export"_s,
        .proposedName = u"Vorn-Excerpts."_s + ExportFormats::fileExtension(format()),
        .extension = ExportFormats::fileExtension(format())});
    if (!path)
        return;
    try {
        m_store.exportReport(scopeCodeID(), format(), *path);
    } catch (const LocalizedError &error) {
        m_store.lastError().set(u"Export failed: "_s + error.description());
        return;
    }
    accept();
    m_store.fileViewer().reveal(*path);
}
