#include "library/LibraryStore.h"

#include "exchange/DocumentImporter.h"
#include "platform/FileDialogs.h"
#include "records/TextTrimming.h"
#include "records/database/Request.h"

#include <QDir>
#include <QFileInfo>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

/// The file itself, or what lies directly in the folder, in the file system's order. Nothing for a path that is gone.
QStringList candidates(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isDir())
        return info.exists() ? QStringList{path} : QStringList{};
    const QDir folder(path);
    QStringList paths;
    for (const QString &name :
        folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted))
        paths.append(folder.filePath(name));
    return paths;
}

} // namespace

void LibraryStore::presentImportPanel()
{
    const QStringList paths = m_services.fileDialogs.chooseToOpen(
        {.title = u"Import Documents"_s, .prompt = u"Import"_s, .allowsFolders = true, .allowsSeveral = true});
    if (paths.isEmpty())
        return;
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls.append(QUrl::fromLocalFile(path));
    // The panel closes before the work begins.
    QTimer::singleShot(0, this, [this, urls] { importURLs(urls); });
}

void LibraryStore::importURLs(const QList<QUrl> &urls)
{
    if (!m_project.get())
        return;
    m_isImporting.set(true);
    QStringList paths;
    for (const QUrl &url : urls)
        paths += candidates(url.toLocalFile());
    ImportCount count;
    for (qsizetype index = 0; index < paths.size(); ++index) {
        const QString &path = paths.at(index);
        const ImportStep step{index + 1, paths.size(), QFileInfo(path).fileName()};
        if (!m_services.mayImport(step) || !importCandidate(path, step, count))
            break;
    }
    m_services.importIsOver();
    refresh();
    concludeImport(count);
    m_isImporting.set(false);
}

bool LibraryStore::importCandidate(const QString &path, const ImportStep &step, ImportCount &count)
{
    if (!DocumentImporter::supportedExtensions().contains(DocumentImporter::extension(path))) {
        ++count.skipped;
        return true;
    }
    try {
        const DocumentImporter::Extracted extracted =
            DocumentImporter::extract(path, [&] { return m_services.mayImport(step); });
        if (TextTrimming::trimmed(extracted.text).isEmpty())
            return true;
        const Document document = newDocument(QFileInfo(path).completeBaseName(), extracted.text, extracted.sourceKind);
        m_queue.write([&](Database &database) {
            keepProject(database);
            document.insert(database);
        });
        ++count.imported;
    } catch (const LocalizedError &error) {
        m_lastError.set(step.name + u": "_s + error.description());
    } catch (const ImportStopped &) {
        return false;
    }
    return true;
}

void LibraryStore::concludeImport(const ImportCount &count)
{
    if (count.imported > 0)
        selectFirstDocument();
    else if (count.skipped > 0)
        m_lastError.set(u"No supported files found (supported: txt · md · docx · rtf · pdf)."_s);
}
