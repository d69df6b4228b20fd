#include "exchange/RefiQdpxExport.h"

#include "exchange/RefiQdpx.h"
#include "platform/AtomicFile.h"
#include "platform/FileError.h"
#include "platform/StagingFolder.h"
#include "records/UnpairedSurrogates.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// The staging folder is nobody's data: a file there needs none of the care, and cost, of an atomic write.
void writePlainly(const QString &path, QByteArrayView bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw FileError(file);
    AtomicFile::writeAll(file, bytes);
}

QByteArray textFile(const QString &text)
{
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    QByteArray bytes = replaceUnpairedSurrogates(text).toUtf8();
    // Readers take a leading U+FEFF for a mark that isn't text, and would move every passage by one.
    if (text.startsWith(u'\uFEFF'))
        bytes.prepend(byteOrderMark);
    return bytes;
}

void writeSources(const QList<Document> &documents, const StagingFolder &staging)
{
    staging.makeFolder(u"sources"_s);
    for (const Document &document : documents) {
        const QString guid = document.id.toString(QUuid::WithoutBraces).toUpper();
        writePlainly(staging.path(u"sources/"_s + guid + u".txt"_s), textFile(document.text));
    }
}

/// Has the archiver write to exactly `destination`; to a name without a dot it would append ".zip".
template <typename Archive>
void writeExactly(const QString &destination, Archive archive)
{
    if (QFileInfo(destination).fileName().contains(u'.')) {
        archive(destination);
        return;
    }
    const QString dotted = destination + u'-' + QUuid::createUuid().toString(QUuid::WithoutBraces) + u".zip"_s;
    archive(dotted);
    QFile file(dotted);
    if (!file.rename(destination)) {
        const QString reason = file.errorString();
        file.remove();
        throw FileError(destination, reason);
    }
}

} // namespace

void RefiQdpx::exportArchive(const ExportInput &input, const QString &destination)
{
    const StagingFolder staging(u"vorn-qdpx-"_s);
    AtomicFile::write(staging.path(u"project.qde"_s), buildProjectXML(input));
    writeSources(input.documents, staging);
    const QString target = QFileInfo(destination).absoluteFilePath();
    QFile::remove(target); // zip would add to an archive that is there
    writeExactly(target, [&](const QString &path) {
        // With its own unfinished file in the staging folder: on a full disk it would leave that beside the archive.
        runCommand(u"/usr/bin/zip"_s,
            {u"-X"_s, u"-q"_s, u"-r"_s, u"-b"_s, staging.path(), path, u"project.qde"_s, u"sources"_s}, staging.path());
        // It keeps unfinished files private; this one is as open to others as any other export.
        QFile::setPermissions(path, QFile::permissions(staging.path(u"project.qde"_s)));
    });
}
