#include "library/survival/LibraryDigest.h"

#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/Project.h"
#include "records/database/DatabaseQueue.h"
#include "records/database/Request.h"
#include "records/database/Row.h"

#include <QCryptographicHash>
#include <QHash>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

template <typename R>
QHash<QUuid, R> allByID(Database &database)
{
    QHash<QUuid, R> result;
    for (const R &record : R::all().fetchAll(database))
        result.insert(record.id, record);
    return result;
}

QString shortened(const QString &text)
{
    const QByteArray hash = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Md5).toHex();
    return QString::number(text.size()) + u':' + QString::fromLatin1(hash);
}

QString memoText(const std::optional<QString> &memo)
{
    return memo ? u'"' + *memo + u'"' : u"-"_s;
}

bool isOwnAncestor(const Code &code, const QHash<QUuid, Code> &codes)
{
    std::optional<QUuid> cursor = code.parentID;
    for (qsizetype step = 0; cursor && step <= codes.size(); ++step) {
        if (*cursor == code.id)
            return true;
        cursor = codes.contains(*cursor) ? codes[*cursor].parentID : std::nullopt;
    }
    return false;
}

QStringList faults(Database &database)
{
    QStringList result;
    for (const Row &row : Row::fetchAll(database, "PRAGMA integrity_check")) {
        const QString line = row.value<QString>("integrity_check").value_or(u"?"_s);
        if (line != u"ok"_s)
            result.append(line);
    }
    const auto projects = allByID<Project>(database);
    const auto documents = allByID<Document>(database);
    const auto codes = allByID<Code>(database);
    for (const Document &document : documents) {
        if (!projects.contains(document.projectID))
            result.append(u"document in no project: "_s + document.title);
    }
    for (const Code &code : codes) {
        if (!projects.contains(code.projectID))
            result.append(u"code in no project: "_s + code.name);
        if (code.parentID && !codes.contains(*code.parentID))
            result.append(u"code under nothing: "_s + code.name);
        if (isOwnAncestor(code, codes))
            result.append(u"code on a cycle: "_s + code.name);
    }
    for (const Coding &coding : Coding::all().fetchAll(database)) {
        const bool isWhole = documents.contains(coding.documentID) && codes.contains(coding.codeID);
        if (!isWhole || coding.start < 0 || coding.length < 1
            || coding.start + coding.length > documents[coding.documentID].text.size())
            result.append(u"coding of nothing: "_s + coding.id.toString());
    }
    return result;
}

QStringList lines(Database &database)
{
    QStringList result;
    const auto projects = allByID<Project>(database);
    const auto documents = allByID<Document>(database);
    const auto codes = allByID<Code>(database);
    for (const Project &project : projects)
        result.append(u"project "_s + project.name);
    for (const Document &document : documents)
        result.append(u"document %1 | %2 | %3 | %4"_s.arg(
            projects[document.projectID].name, document.title, shortened(document.text), memoText(document.memo)));
    for (const Code &code : codes)
        result.append(u"code %1 | %2 | %3 | %4 | %5"_s.arg(projects[code.projectID].name, code.name, code.colorHex,
            code.parentID ? codes[*code.parentID].name : QString(), memoText(code.memo)));
    for (const Coding &coding : Coding::all().fetchAll(database))
        result.append(u"coding %1 | %2 | %3+%4"_s.arg(documents[coding.documentID].title, codes[coding.codeID].name)
                          .arg(coding.start)
                          .arg(coding.length));
    result.sort();
    return result;
}

} // namespace

QString digestOf(DatabaseQueue &queue)
{
    return queue.read([](Database &database) { return lines(database).join(u'\n'); });
}

QString faultsOf(DatabaseQueue &queue)
{
    return queue.read([](Database &database) { return faults(database).join(u'\n'); });
}
