#include "records/schema/SchemaRefusal.h"

#include "records/database/DatabaseError.h"

using namespace Qt::StringLiterals;

namespace SchemaRefusal {

void refuse(const QString &reason)
{
    throw DatabaseError::misuse(u"The file isn't a library of Vorn: "_s + reason);
}

void refuse(QByteArrayView table, const QString &reason)
{
    refuse(u"its table “%1” %2."_s.arg(QString::fromUtf8(table), reason));
}

void refuse(QByteArrayView table, const DatabaseError &trouble)
{
    // The statement may be of any length, and helps nobody who didn't write it.
    QString reason = trouble.description().section(u" - while executing"_s, 0, 0);
    if (reason.endsWith(u'.'))
        reason.chop(1);
    refuse(table, u"can't be used: "_s + reason);
}

} // namespace SchemaRefusal
