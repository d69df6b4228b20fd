#include "records/database/DatabaseError.h"

using namespace Qt::StringLiterals;

DatabaseError::DatabaseError(int code, QString description) : m_code(code), m_description(std::move(description))
{
}

DatabaseError DatabaseError::whileExecuting(int code, const QString &message, QByteArrayView sql)
{
    if (sql.isEmpty())
        return {code, message};
    return {code, message + u" - while executing `"_s + QString::fromUtf8(sql) + u"`"_s};
}

DatabaseError DatabaseError::undecodable(const QString &column, const QString &reason)
{
    return {0, u"The value of column “%1” can't be read: %2."_s.arg(column, reason)};
}

DatabaseError DatabaseError::recordNotFound(const QString &table)
{
    return {0, u"The record isn't in table “%1” any more."_s.arg(table)};
}

DatabaseError DatabaseError::misuse(const QString &message)
{
    return {0, message};
}
