#include "platform/LocalizedError.h"

#include <QFileDevice>
#include <QFileInfo>

using namespace Qt::StringLiterals;

FileError::FileError(QString path, QString message) : m_path(std::move(path)), m_message(std::move(message))
{
}

FileError::FileError(const QFileDevice &file) : FileError(file.fileName(), file.errorString())
{
}

QString FileError::description() const
{
    return u"“%1”: %2"_s.arg(QFileInfo(m_path).fileName(), m_message);
}
