#include "exchange/DocumentImporter.h"

#include "exchange/ImportStep.h"
#include "exchange/PdfText.h"
#include "exchange/RtfText.h"
#include "exchange/Unzip.h"
#include "exchange/WordText.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "platform/TextDecoder.h"
#include "records/TextTrimming.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The maximum size of a document's markup, in bytes: an archive of a few kilobytes can unpack to any size.
qint64 maxWordPart(qint64 archiveSize)
{
    return std::clamp(archiveSize * 100, qint64(1) << 26, qint64(1) << 30);
}

QString descriptionOf(ImportError::Kind kind, const QString &fileName)
{
    // Not with arg(): a file name may hold "%1".
    switch (kind) {
    case ImportError::Kind::unreadable:
        return u"Couldn't read "_s + fileName + u'.';
    case ImportError::Kind::noTextLayer:
        return u"No text layer found in "_s + fileName + u" — it looks like a scanned PDF. OCR isn't supported yet."_s;
    case ImportError::Kind::empty:
        return u"The document appears to be empty."_s;
    }
    Q_UNREACHABLE();
}

ImportError failure(ImportError::Kind kind, const QString &path)
{
    return ImportError(kind, QFileInfo(path).fileName());
}

// In the order of how much they refuse.
constexpr auto encodings = {TextDecoder::utf8, TextDecoder::utf16, TextDecoder::gb18030};

QString readRichText(const QString &path)
{
    const std::optional<QString> text = RtfText::plainText(AtomicFile::readFile(path));
    if (!text || text->isEmpty())
        throw failure(ImportError::Kind::unreadable, path);
    return *text;
}

std::optional<QString> mainPartOfDocx(const QString &path, const DocumentImporter::MayGoOn &mayGoOn)
{
    bool isWanted = true;
    const ChildProcess::Result unzip = Unzip::run({.archive = path,
        .options = {u"-p"_s},
        .rest = {u"word/document.xml"_s},
        .outputLimit = maxWordPart(QFileInfo(path).size()),
        .mayGoOn = [&] { return isWanted = mayGoOn(); }});
    if (!isWanted || !mayGoOn()) // unzip may have ended before the first question
        throw ImportStopped();
    return unzip.succeeded() ? TextDecoder::utf8(unzip.output) : std::nullopt;
}

QStringList pagesOfPDF(const QString &path, const DocumentImporter::MayGoOn &mayGoOn)
{
    try {
        if (std::optional<QStringList> pages = PdfText::pages(AtomicFile::readFile(path), mayGoOn))
            return *std::move(pages);
    } catch (const FileError &) {
        // The message is the same as for a file that is no PDF.
    }
    throw failure(ImportError::Kind::unreadable, path);
}

} // namespace

ImportError::ImportError(Kind kind, const QString &fileName) : ExchangeError(descriptionOf(kind, fileName))
{
}

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
    return {TextDecoder::decoded(AtomicFile::readFile(path), encodings), kind.isEmpty() ? u"txt"_s : kind};
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
