#pragma once

#include <QString>
#include <QUuid>

#include <ostream>

// How GoogleTest shows Qt's values when an expectation fails.
inline void PrintTo(const QString &text, std::ostream *stream)
{
    *stream << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray &bytes, std::ostream *stream)
{
    *stream << '"' << bytes.toStdString() << '"';
}
inline void PrintTo(const QUuid &id, std::ostream *stream)
{
    *stream << id.toString(QUuid::WithoutBraces).toStdString();
}
