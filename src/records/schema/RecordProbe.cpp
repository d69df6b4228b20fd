#include "records/schema/RecordProbe.h"

#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/Project.h"
#include "records/database/DatabaseQueue.h"
#include "records/database/Request.h"
#include "records/database/TableChanges.h"
#include "records/schema/SchemaRefusal.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace {

/// What the fields of a record are filled with.
struct Sample {
    QString text;
    qint64 number = 0;
    QDateTime date;
    bool hasOptionals = false;
};

/// A text that some would take for a number, a number that no fraction can hold, the last moment there is.
Sample full()
{
    return {u"1984"_s, (qint64(1) << 53) + 1, QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59, 999), Qt::UTC), true};
}

/// Texts may hold the end mark of other languages, and characters of two units.
Sample bare()
{
    return {u"a\0\U0001F642 é "_s, 0, QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC), false};
}

void fill(QUuid &value, const Sample &)
{
    value = QUuid::createUuid();
}

void fill(QString &value, const Sample &sample)
{
    value = sample.text;
}

void fill(qint64 &value, const Sample &sample)
{
    value = sample.number;
}

void fill(QDateTime &value, const Sample &sample)
{
    value = sample.date;
}

template <typename T>
void fill(std::optional<T> &value, const Sample &sample)
{
    if (sample.hasOptionals)
        fill(value.emplace(), sample);
}

template <typename R>
R filled(const Sample &sample)
{
    R result;
    std::apply([&](const auto &...field) { (fill(result.*field.member, sample), ...); }, R::databaseColumns());
    return result;
}

/// What may be done with the records of one kind, and what must be in the table after it.
template <typename R>
class Probe {
public:
    explicit Probe(DatabaseQueue &queue) : m_queue(queue), m_changes(queue, R::databaseTable) { }

    void insert(const R &record)
    {
        m_expected.append(record);
        change([&](Database &database) { record.insert(database); });
    }
    void update(const R &record)
    {
        m_expected.first() = record;
        change([&](Database &database) { record.update(database); });
    }
    void deleteFirst()
    {
        const QUuid key = m_expected.takeFirst().id;
        change([&](Database &database) { R::deleteOne(database, key); });
    }
    void insertTwin(const R &record)
    {
        if (m_queue.writeWithoutTransaction([&](Database &database) { return isTaken(record, database); }))
            throw DatabaseError::misuse(u"it takes an identifier twice"_s);
    }

private:
    static bool isTaken(const R &record, Database &database)
    {
        try {
            record.insert(database);
        } catch (const DatabaseError &) {
            return false;
        }
        return true;
    }
    template <typename Body>
    void change(Body body)
    {
        m_queue.writeWithoutTransaction([&](Database &database) {
            std::ignore = m_changes.take(database);
            body(database);
            if (R::all().fetchAll(database) != m_expected)
                throw DatabaseError::misuse(u"what is written into it doesn't come back as it was"_s);
            if (m_changes.take(database).rowIDs.size() != 1)
                throw DatabaseError::misuse(u"it doesn't tell of its changes"_s);
        });
    }

    DatabaseQueue &m_queue;
    TableChanges m_changes;
    QList<R> m_expected;
};

template <typename R>
void refuseUnlessKept(DatabaseQueue &queue)
{
    try {
        Probe<R> probe(queue);
        const R first = filled<R>(full());
        R changed = filled<R>(bare());
        changed.id = first.id;
        probe.insert(first);
        probe.insert(filled<R>(bare()));
        probe.insertTwin(changed);
        probe.update(changed);
        probe.deleteFirst();
        probe.deleteFirst();
    } catch (const DatabaseError &trouble) {
        SchemaRefusal::refuse(R::databaseTable, trouble);
    }
}

} // namespace

void RecordProbe::refuseUnlessKept(DatabaseQueue &queue)
{
    ::refuseUnlessKept<Project>(queue);
    ::refuseUnlessKept<Document>(queue);
    ::refuseUnlessKept<Code>(queue);
    ::refuseUnlessKept<Coding>(queue);
}
