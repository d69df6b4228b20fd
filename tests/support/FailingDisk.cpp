#include "support/FailingDisk.h"

#include <QDir>
#include <QFileInfo>

#include <unistd.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

void becomeUser(uid_t user)
{
    if (::seteuid(user) != 0)
        qFatal("The user can't be changed.");
}

} // namespace

FailingDisk::FailingDisk(Kind kind, QString folder, qint64 room)
    : m_kind(kind),
      m_folder(std::move(folder)),
      m_wasRoot(::geteuid() == 0)
{
    constexpr uid_t nobody = 65'534;
    switch (m_kind) {
    case Kind::full: {
        m_handlerBefore = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_limitBefore);
        const rlimit limit{rlim_t(room), m_limitBefore.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        break;
    }
    case Kind::closed:
        QFile::setPermissions(m_folder, QFile::Permissions());
        if (m_wasRoot)
            becomeUser(nobody);
        break;
    case Kind::gone:
        QFile::rename(m_folder, m_folder + u".elsewhere"_s);
        break;
    }
}

FailingDisk::~FailingDisk()
{
    switch (m_kind) {
    case Kind::full:
        ::setrlimit(RLIMIT_FSIZE, &m_limitBefore);
        std::signal(SIGXFSZ, m_handlerBefore);
        break;
    case Kind::closed:
        if (m_wasRoot)
            becomeUser(0);
        QFile::setPermissions(m_folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        break;
    case Kind::gone:
        QFile::rename(m_folder + u".elsewhere"_s, m_folder);
        break;
    }
}

bool isReachableForAll(const QString &folder)
{
    for (QString each = QFileInfo(folder).canonicalFilePath(); each != u"/"_s; each = QFileInfo(each).path()) {
        if (!QFile::permissions(each).testFlag(QFile::ExeOther))
            return false;
    }
    return true;
}
