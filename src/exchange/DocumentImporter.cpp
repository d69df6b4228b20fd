#include "exchange/DocumentImporter.h"

#include "exchange/ArchivePath.h"
#include "exchange/ImportError.h"
#include "exchange/PdfText.h"
#include "exchange/RtfText.h"
#include "exchange/WordText.h"
#include "platform/AtomicFile.h"
#include "platform/ChildProcess.h"
#include "platform/FileError.h"
#include "platform/TextDecoder.h"
#include "records/TextTrimming.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 largestWordPart = qint64(1) << 30; // bytes; an archive of a few kilobytes can unfold to any size

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
    const std::optional<QString> text = RtfText::plainText(AtomicFile::read(path));
    if (!text || text->isEmpty())
        throw failure(ImportError::Kind::unreadable, path);
    return *text;
}

std::optional<QString> mainPartOfDocx(const QString &path)
{
    if (!endsLikeArchive(path))
        return {};
    const ChildProcess::Result unzip = ChildProcess::run({.program = u"/usr/bin/unzip"_s,
        .arguments = {u"-p"_s, literalForUnzip(QFileInfo(path).absoluteFilePath()), u"word/document.xml"_s},
        .outputLimit = largestWordPart});
    return unzip.succeeded() ? TextDecoder::utf8(unzip.output) : std::nullopt;
}

QStringList pagesOfPDF(const QString &path)
{
    try {
        if (std::optional<QStringList> pages = PdfText::pages(AtomicFile::read(path)))
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

DocumentImporter::Extracted DocumentImporter::extract(const QString &path)
{
    const QString kind = extension(path);
    if (kind == u"rtf" || kind == u"rtfd")
        return {readRichText(path), u"rtf"_s};
    if (kind == u"docx")
        return {readDocx(path), kind};
    if (kind == u"pdf")
        return {readPDF(path), kind};
    return {decoded(AtomicFile::read(path)), kind.isEmpty() ? u"txt"_s : kind};
}

QString DocumentImporter::readDocx(const QString &path)
{
    const std::optional<QString> part = mainPartOfDocx(path);
    if (!part)
        throw failure(ImportError::Kind::unreadable, path);
    return WordText::plainText(*part);
}

QString DocumentImporter::readPDF(const QString &path)
{
    QString text;
    for (const QString &page : pagesOfPDF(path)) {
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
