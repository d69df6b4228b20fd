#include "support/FailingDisk.h"

#include "records/database/DatabaseQueue.h"

#include <QFileInfo>

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

std::function<void()> limitFiles(qint64 room)
{
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{rlim_t(room), before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    return [=] {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    };
}

std::function<void()> close(const QString &folder)
{
    constexpr uid_t nobody = 65'534;
    const uid_t user = ::geteuid();
    QFile::setPermissions(folder, QFile::Permissions());
    if (user == 0 && ::seteuid(nobody) != 0)
        qFatal("The user can't be changed.");
    return [=] {
        if (::seteuid(user) != 0)
            qFatal("The user can't be changed back.");
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    };
}

std::function<void()> lock(const QString &folder)
{
    const auto other = std::make_shared<DatabaseQueue>(folder + u"/vorn.sqlite"_s);
    other->writeWithoutTransaction([](Database &database) { database.execute("BEGIN EXCLUSIVE TRANSACTION"); });
    return [other] {
        other->writeWithoutTransaction([](Database &database) { database.execute("ROLLBACK TRANSACTION"); });
    };
}

} // namespace

FailingDisk::FailingDisk(Kind kind, const QString &folder, qint64 room)
    : m_end(kind == Kind::full     ? limitFiles(room)
            : kind == Kind::closed ? close(folder)
                                   : lock(folder))
{
}

bool isReachableForAll(const QString &folder)
{
    for (QString each = QFileInfo(folder).canonicalFilePath(); each != u"/"_s; each = QFileInfo(each).path()) {
        if (!QFile::permissions(each).testFlag(QFile::ExeOther))
            return false;
    }
    return true;
}
