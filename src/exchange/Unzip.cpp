#include "exchange/Unzip.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isPatternSign(QChar unit)
{
    return unit == u'[' || unit == u'*' || unit == u'?';
}

QString patternForExactly(const QString &path)
{
    if (std::ranges::none_of(path, isPatternSign))
        return path;
    // Folders are taken literally even in a pattern. In the name, a backslash must be in brackets, too: elsewhere it
    // would escape the bracket after it.
    const qsizetype nameStart = path.lastIndexOf(u'/') + 1;
    QString result = path.first(nameStart);
    for (const QChar unit : QStringView(path).sliced(nameStart)) {
        if (isPatternSign(unit))
            result.append(u'[').append(unit).append(u']');
        else if (unit == u'\\')
            result.append(u"[\\\\]");
        else
            result.append(unit);
    }
    return result;
}

/// Whether there is a regular, readable file at `path` that ends as a zip archive does.
bool endsLikeArchive(const QString &path)
{
    constexpr qint64 endRecordSize = 22; // bytes, without the comment that may follow
    constexpr qint64 searchedSize = 66'000; // as far back as unzip looks for the record
    if (!QFileInfo(path).isFile()) // opening a pipe would block
        return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(std::max<qint64>(file.size() - searchedSize, 0)))
        return false;
    QByteArray tail = file.read(searchedSize);
    tail.chop(endRecordSize - 4);
    return tail.contains("PK\x05\x06");
}

} // namespace

ChildProcess::Result Unzip::run(const Call &call)
{
    const QString path = QFileInfo(call.archive).absoluteFilePath(); // never begins with a dash
    if (!endsLikeArchive(path))
        return {.end = ChildProcess::Result::End::exited, .status = notAnArchive, .output = {}};
    return ChildProcess::run({.program = u"/usr/bin/unzip"_s,
        .arguments = call.options + QStringList{patternForExactly(path)} + call.rest,
        .outputLimit = call.outputLimit,
        .mayGoOn = call.mayGoOn});
}
