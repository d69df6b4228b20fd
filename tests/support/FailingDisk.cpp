#include "support/FailingDisk.h"

#include <QFile>

#ifdef Q_OS_LINUX
#include <sched.h>
#include <sys/mount.h>
#endif
#include <unistd.h>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

FileSizeLimit::FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
{
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limit{bytes, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
}

FileSizeLimit::~FileSizeLimit()
{
    setrlimit(RLIMIT_FSIZE, &m_before);
    std::signal(SIGXFSZ, m_handler);
}

Vanished::Vanished(QString path) : m_path(std::move(path))
{
    QFile::rename(m_path, m_path + u".elsewhere"_s);
}

Vanished::~Vanished()
{
    QFile::rename(m_path + u".elsewhere"_s, m_path);
}

ClosedFolder::ClosedFolder(QString path) : m_path(std::move(path)), m_wasRoot(::geteuid() == 0)
{
    constexpr uid_t nobody = 65'534;
    QFile::setPermissions(m_path, QFile::Permissions());
    if (m_wasRoot && ::seteuid(nobody) != 0)
        qFatal("The user can't be changed.");
}

ClosedFolder::~ClosedFolder()
{
    if (m_wasRoot && ::seteuid(0) != 0)
        qFatal("The user can't be changed back.");
    QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

#ifdef Q_OS_LINUX

SmallDisk::SmallDisk(QString path, int kibibytes) : m_path(std::move(path))
{
    // In a namespace of this process, so that nobody else sees the disk and none stays behind.
    const QByteArray options = "size=" + QByteArray::number(kibibytes) + "k";
    m_isThere = ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("none", QFile::encodeName(m_path).constData(), "tmpfs", 0, options.constData()) == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_isThere)
        ::umount2(QFile::encodeName(m_path).constData(), MNT_DETACH);
}

#else

SmallDisk::SmallDisk(QString path, int) : m_path(std::move(path))
{
}

SmallDisk::~SmallDisk() = default;

#endif

void SmallDisk::fill(qint64 free)
{
    QFile filler(m_path + u"/filler"_s);
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return;
    const QByteArray page(4'096, 'x');
    while (filler.write(page) == page.size()) { }
    filler.resize(std::max<qint64>(filler.size() - free, 0));
}

void SmallDisk::empty()
{
    QFile::remove(m_path + u"/filler"_s);
}
