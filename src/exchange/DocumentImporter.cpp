#include "exchange/DocumentImporter.h"

#include "exchange/ArchivePath.h"
#include "exchange/ImportError.h"
#include "exchange/ImportStep.h"
#include "exchange/PdfText.h"
#include "exchange/RtfText.h"
#include "exchange/WordText.h"
#include "platform/AtomicFile.h"
#include "platform/ChildProcess.h"
#include "platform/FileError.h"
#include "platform/TextDecoder.h"
#include "records/TextTrimming.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Bytes of the text's markup, which packs well; but an archive of a few kilobytes can unfold to any size.
qint64 largestWordPart(const QFileInfo &archive)
{
    return std::clamp(archive.size() * 100, qint64(1) << 26, qint64(1) << 30);
}

ImportError failure(ImportError::Kind kind, const QString &path)
{
    return ImportError(kind, QFileInfo(path).fileName());
}

/// The encodings in the order of how much they refuse.
QString decoded(QByteArrayView bytes)
{
    for (const auto decoder : {TextDecoder::utf8, TextDecoder::utf16, TextDecoder::gb18030})
        if (std::optional<QString> text = decoder(bytes))
            return *std::move(text);
    return TextDecoder::latin1(bytes);
}

QString readRichText(const QString &path)
{
    const std::optional<QString> text = RtfText::plainText(AtomicFile::readFile(path));
    if (!text || text->isEmpty())
        throw failure(ImportError::Kind::unreadable, path);
    return *text;
}

std::optional<QString> mainPartOfDocx(const QString &path, const DocumentImporter::MayGoOn &mayGoOn)
{
    if (!endsLikeArchive(path))
        return {};
    const QFileInfo file(path);
    bool isWanted = true;
    const ChildProcess::Result unzip = ChildProcess::run({.program = u"/usr/bin/unzip"_s,
        .arguments = {u"-p"_s, literalForUnzip(file.absoluteFilePath()), u"word/document.xml"_s},
        .outputLimit = largestWordPart(file),
        .mayGoOn = [&] { return isWanted = mayGoOn(); }});
    if (!isWanted)
        throw ImportStopped();
    return unzip.succeeded() ? TextDecoder::utf8(unzip.output) : std::nullopt;
}

QStringList pagesOfPDF(const QString &path, const DocumentImporter::MayGoOn &mayGoOn)
{
    try {
        if (std::optional<QStringList> pages = PdfText::pages(AtomicFile::readFile(path), mayGoOn))
            return *std::move(pages);
    } catch (const FileError &) {
        // A PDF that can't be read is told like one that can't be understood.
    }
    throw failure(ImportError::Kind::unreadable, path);
}

} // namespace

const QSet<QString> &DocumentImporter::supportedExtensions()
{
    static const QSet<QString> extensions{u"txt"_s, u"md"_s, u"markdown"_s, u"rtf"_s, u"docx"_s, u"pdf"_s};
    return extensions;
}

QString DocumentImporter::extension(const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 ? name.sliced(dot + 1).toLower() : QString();
}

DocumentImporter::Extracted DocumentImporter::extract(const QString &path, const MayGoOn &mayGoOn)
{
    const QString kind = extension(path);
    if (kind == u"rtf" || kind == u"rtfd")
        return {readRichText(path), u"rtf"_s};
    if (kind == u"docx")
        return {readDocx(path, mayGoOn), kind};
    if (kind == u"pdf")
        return {readPDF(path, mayGoOn), kind};
    return {decoded(AtomicFile::readFile(path)), kind.isEmpty() ? u"txt"_s : kind};
}

QString DocumentImporter::readDocx(const QString &path, const MayGoOn &mayGoOn)
{
    const std::optional<QString> part = mainPartOfDocx(path, mayGoOn);
    if (!part)
        throw failure(ImportError::Kind::unreadable, path);
    return WordText::plainText(*part);
}

QString DocumentImporter::readPDF(const QString &path, const MayGoOn &mayGoOn)
{
    QString text;
    for (const QString &page : pagesOfPDF(path, mayGoOn)) {
        const QStringView words = TextTrimming::trimmed(page);
        if (words.isEmpty())
            continue;
        if (!text.isEmpty())
            text += u"\n\n"_s;
        text += words;
    }
    if (text.isEmpty())
        throw failure(ImportError::Kind::noTextLayer, path);
    return text;
}
