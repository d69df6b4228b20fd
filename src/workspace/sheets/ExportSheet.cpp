#include "workspace/sheets/ExportSheet.h"

#include "exchange/ExcerptExporter.h"
#include "kit/controls/Paragraph.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "library/LibraryStore.h"
#include "platform/FileDialogs.h"
#include "platform/LocaleText.h"
#include "platform/LocalizedError.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int sheetWidth = 440;
constexpr int captionSpacing = 8;
constexpr int captionHeight = 14;
constexpr int summaryHeight = 16;

QStringList formatLabels()
{
    QStringList labels;
    for (const ExportFormat format : ExportFormats::formats())
        labels.append(ExportFormats::label(format));
    return labels;
}

} // namespace

ExportSheet::ExportSheet(LibraryStore &store, QWidget &window)
    : FormSheet(window, u"Export Coded Excerpts"_s, sheetWidth, Metrics::dialogPadding),
      m_store(store),
      m_scope(new SegmentedControl(scopeLabels(), this)),
      m_format(new SegmentedControl(formatLabels(), this)),
      m_summary(new Paragraph({}, Fonts::callout(), Symbols::Tint::secondary, summaryHeight, this))
{
    m_scope->setObjectName(u"exportScope"_s);
    m_format->setObjectName(u"exportFormat"_s);
    m_summary->setObjectName(u"exportSummary"_s);
    addChoice(u"Scope"_s, m_scope);
    addChoice(u"Format"_s, m_format);
    rows().addWidget(m_summary);
    addButtons(u"export"_s, u"Export"_s);
    m_scope->setCurrentIndex(int(m_scope->labels().size()) - 1);
    m_scope->setFocus();

    connect(&m_store.sidebarSelection(), &Notifier::changed, this, &ExportSheet::renderScopes);
    connect(&m_store.codes(), &Notifier::changed, this, &ExportSheet::renderSummary);
    connect(&m_store.documents(), &Notifier::changed, this, &ExportSheet::renderSummary);
    connect(&m_store.codingRevision(), &Notifier::changed, this, &ExportSheet::renderSummary);
    connect(m_scope, &SegmentedControl::currentChanged, this, &ExportSheet::renderSummary);
    renderSummary();
}

void ExportSheet::addChoice(const QString &caption, SegmentedControl *choice)
{
    choice->setAccessibleName(caption);
    auto *block = new QVBoxLayout;
    block->setSpacing(captionSpacing);
    block->addWidget(new Paragraph(caption, Fonts::caption(), Symbols::Tint::secondary, captionHeight, this));
    block->addWidget(choice);
    rows().addLayout(block);
}

QStringList ExportSheet::scopeLabels() const
{
    QStringList labels{u"All codes"_s};
    if (m_store.selectedCodeID())
        labels.append(u"Selected code"_s);
    return labels;
}

std::optional<QUuid> ExportSheet::scopeCodeID() const
{
    return m_scope->currentIndex() > 0 ? m_store.selectedCodeID() : std::nullopt;
}

void ExportSheet::renderScopes()
{
    m_scope->setLabels(scopeLabels());
    renderSummary();
}

void ExportSheet::renderSummary()
{
    qint64 codeCount = 0;
    qint64 excerptCount = 0;
    for (const ExportCodeGroup &group : m_store.exportGroups(scopeCodeID())) {
        codeCount += group.hits.isEmpty() ? 0 : 1;
        excerptCount += group.hits.size();
    }
    m_summary->setText(
        u"%1 codes · %2 excerpts"_s.arg(LocaleText::number(codeCount), LocaleText::number(excerptCount)));
}

void ExportSheet::act()
{
    const ExportFormat format = ExportFormats::formats().at(size_t(m_format->currentIndex()));
    const QString extension = ExportFormats::fileExtension(format);
    const std::optional<QString> path = m_store.fileDialogs().chooseToSave({.title = windowTitle(),
        .prompt = u"Export"_s,
        .proposedName = u"Vorn-Excerpts."_s + extension,
        .extension = extension});
    if (!path)
        return;
    try {
        m_store.exportReport(scopeCodeID(), format, *path);
    } catch (const LocalizedError &error) {
        m_store.lastError().set(u"Export failed: "_s + error.description());
        return;
    }
    accept();
    m_store.fileViewer().reveal(*path);
}
