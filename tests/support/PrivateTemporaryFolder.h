#pragma once

#include <QFile>
#include <QTemporaryDir>

/// Lets this process and its children put their temporary files where no other test, running at the same time, does:
/// a test can tell then what was left behind.
class PrivateTemporaryFolder {
public:
    PrivateTemporaryFolder()
    {
        // Some tests go on as another user, who must be able to pass through.
        QFile::setPermissions(m_folder.path(), QFile::permissions(m_folder.path()) | QFile::ExeGroup | QFile::ExeOther);
        qputenv("TMPDIR", QFile::encodeName(m_folder.path()));
    }

private:
    QTemporaryDir m_folder;
};
