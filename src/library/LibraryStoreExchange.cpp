#include "library/LibraryStore.h"

#include "exchange/RefiQdpx.h"
#include "exchange/RefiQdpxExport.h"
#include "exchange/RefiQdpxImport.h"
#include "platform/AtomicFile.h"
#include "platform/FileDialogs.h"
#include "platform/UnpairedSurrogates.h"
#include "records/database/Request.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

bool isUnfitForFileNames(QChar unit)
{
    return unit == u'/' || unit == u'\\' || unit == u':' || unit.category() == QChar::Other_Control
        || unit.category() == QChar::Other_Format || unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator;
}

/// A file name from a name that the user or a foreign file has given: without path separators and control characters.
QString cleanedFileName(const QString &name)
{
    constexpr qsizetype maxLength = 80; // in units, so that the name with its ending fits into 255 bytes of UTF-8
    QString result = name.left(maxLength);
    if (!result.isEmpty() && result.back().isHighSurrogate())
        result.chop(1);
    std::ranges::replace_if(result, isUnfitForFileNames, u'-');
    while (result.startsWith(u'.'))
        result.remove(0, 1);
    return replaceUnpairedSurrogates(result);
}

} // namespace

template <typename Excerpts>
QList<ExportCodeGroup> LibraryStore::groupsOf(const std::optional<QUuid> &scopeCodeID, Excerpts excerptsOf) const
{
    const Code *only = scopeCodeID ? findCode(*scopeCodeID) : nullptr;
    if (only)
        return {{*only, excerptsOf(only->id)}};
    QList<ExportCodeGroup> groups;
    for (const FlatCode &line : orderedCodes())
        groups.append({line.code, excerptsOf(line.code.id)});
    return groups;
}

QList<ExportCodeGroup> LibraryStore::exportGroups(const std::optional<QUuid> &scopeCodeID) const
{
    return groupsOf(scopeCodeID, [this](const QUuid &codeID) { return excerpts(codeID); });
}

void LibraryStore::exportReport(const std::optional<QUuid> &scopeCodeID, ExportFormat format, const QString &path)
{
    expectWholeLists();
    QList<ExportCodeGroup> groups = groupsOf(scopeCodeID, [this](const QUuid &codeID) { return readExcerpts(codeID); });
    for (ExportCodeGroup &group : groups)
        group.code = m_unwrittenMemos.applied(group.code);
    writeExport(groups, format, path);
}

void LibraryStore::writeExport(const QList<ExportCodeGroup> &groups, ExportFormat format, const QString &path) const
{
    const QString projectName = m_project.get() ? m_project->value().name : u"Vorn Project"_s;
    const QDateTime now = m_services.now();
    AtomicFile::writeInPieces(path, [&](const AtomicFile::Append &append) {
        const auto take = [&](QStringView piece) { append(piece.toUtf8()); };
        switch (format) {
        case ExportFormat::markdown:
            return ExcerptExporter::markdown(projectName, groups, now, take);
        case ExportFormat::csv:
            return ExcerptExporter::csv(groups, take);
        case ExportFormat::html:
            return ExcerptExporter::html(projectName, groups, now, take);
        }
        Q_UNREACHABLE();
    });
}

void LibraryStore::exportQdpx(const QString &path)
{
    if (!m_project.get())
        return;
    expectWholeLists();
    const QList<Coding> codings = m_queue.read([](Database &database) { return Coding::all().fetchAll(database); });
    RefiQdpx::exportArchive({m_project->value(), m_unwrittenMemos.applied(m_documents.get()),
                                m_unwrittenMemos.applied(m_codes.get()), codings},
        path);
}

void LibraryStore::importQdpx(const QString &path)
{
    if (!m_project.get())
        return;
    try {
        const RefiQdpx::ImportSummary summary = [&] {
            const QScopeGuard over([this] { m_services.importIsOver(); });
            m_queue.write([this](Database &database) { keepProject(database); });
            return RefiQdpx::importQdpx(path, m_queue, m_project->value().id, m_services.mayImport);
        }();
        raiseCodingRevision();
        refresh();
        m_statusMessage.set(u"Imported %1 codes · %2 documents · %3 excerpts"_s.arg(summary.codes)
                                .arg(summary.documents)
                                .arg(summary.excerpts));
    } catch (const ImportStopped &) {
        m_statusMessage.set(u"Import stopped: nothing was added"_s);
    } catch (const LocalizedError &error) {
        m_lastError.set(u"Import failed: "_s + error.description());
    }
}

struct LibraryStore::ExchangeFile {
    QString title;
    QString nameEnding;
    QString extension;
    QString success;
    std::function<void(const QString &path)> write;
};

void LibraryStore::presentExportQdpxPanel()
{
    presentExchangePanel({u"Export REFI-QDA Project"_s, u"-REFI-QDA.qdpx"_s, u"qdpx"_s,
        u"Exported REFI-QDA project ✓"_s, [this](const QString &path) { exportQdpx(path); }});
}

void LibraryStore::presentExportQdcPanel()
{
    presentExchangePanel({u"Export Codebook (REFI-QDA)"_s, u"-Codebook.qdc"_s, u"qdc"_s, u"Exported codebook ✓"_s,
        [this](const QString &path) {
            expectWholeLists();
            AtomicFile::write(path, RefiQdpx::buildCodebookXML(m_unwrittenMemos.applied(m_codes.get())));
        }});
}

void LibraryStore::presentExchangePanel(const ExchangeFile &file)
{
    const QString name = m_project.get() ? cleanedFileName(m_project->value().name) : u"Vorn"_s;
    const std::optional<QString> path = m_services.fileDialogs.chooseToSave({.title = file.title,
        .prompt = u"Export"_s,
        .proposedName = name + file.nameEnding,
        .extension = file.extension});
    if (!path)
        return;
    try {
        file.write(*path);
        m_statusMessage.set(file.success);
        m_services.fileViewer.reveal(*path);
    } catch (const LocalizedError &error) {
        m_lastError.set(u"Export failed: "_s + error.description());
    }
}

void LibraryStore::presentImportQdpxPanel()
{
    const QStringList paths = m_services.fileDialogs.chooseToOpen(
        {.title = u"Import REFI-QDA Project"_s, .prompt = u"Import"_s, .extension = u"qdpx"_s});
    if (!paths.isEmpty())
        importQdpx(paths.first());
}
