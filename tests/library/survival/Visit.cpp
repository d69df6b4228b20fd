#include "library/survival/Visit.h"

#include "library/survival/Tour.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"
#include "records/database/Request.h"

using namespace Qt::StringLiterals;

namespace {

bool hasProject(DatabaseQueue &queue)
{
    try {
        return queue.read([](Database &database) {
            return Project::all().order(Column("createdAt")).fetchOne(database).has_value();
        });
    } catch (const LocalizedError &) {
        return true; // which ends the start, and nothing is written either
    }
}

QString seen(LibraryStore &store)
{
    constexpr qsizetype countable = 20;
    QStringList documents;
    for (const Document &each : store.documents().get())
        documents.append(each.title + u' ' + QString::number(each.text.size()));
    QStringList codes;
    for (const FlatCode &line : store.orderedCodes())
        codes.append(
            QString(line.depth, u'.') + line.code.name + u' ' + QString::number(store.excerpts(line.code.id).size()));
    if (codes.size() > countable)
        codes = QStringList{QString::number(codes.size()) + u" codes"_s};
    return documents.join(u", "_s) + u" | "_s + codes.join(u", "_s) + u" | "_s + store.lastError()->value_or(QString());
}

} // namespace

QString visit(const QString &path, const QString &folder, bool isWhole)
{
    const QByteArray before = AtomicFile::readFile(path);
    const auto isUnchanged = [&] { return !isWhole || AtomicFile::readFile(path) == before; };
    std::unique_ptr<DatabaseQueue> queue;
    try {
        queue = AppDatabase::openQueue(path);
    } catch (const LocalizedError &error) {
        return isUnchanged() ? u"refused: "_s + error.description() : u"a refused file was changed"_s;
    }
    const bool staysAsItIs = hasProject(*queue);
    TestLibrary library({}, std::move(queue));
    const QString first = seen(library.store);
    Tour tour(library, folder);
    tour.look();
    const bool isKept = !staysAsItIs || isUnchanged();
    tour.work();
    QStringList verdict{u"open"_s};
    if (!isKept)
        verdict.append(u"looking at the library changed it"_s);
    return (verdict + tour.faults()).join(u"; "_s) + u'\n' + first;
}
