#include "exchange/RefiQdpxUnpack.h"

#include "exchange/ArchivePath.h"
#include "exchange/ImportStep.h"
#include "exchange/RefiQdpx.h"
#include "platform/ChildProcess.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace RefiQdpx {

namespace {

constexpr int statusOfWarnings = 1; // of unzip: all files are there
constexpr int statusOfNoArchive = 9; // of unzip

fs::path filePath(const QString &path)
{
    return fs::path(QFile::encodeName(path).toStdString());
}

/// Calls `visit(entry)` for everything in the folder at any depth until it says no; returns whether it never did. Links
/// aren't followed. One folder is open at a time, for folders may lie deeper than files may be open.
template <typename Visit>
bool forEachEntry(const fs::path &root, Visit visit)
{
    std::vector<fs::path> waiting{root};
    while (!waiting.empty()) {
        const fs::path folder = std::move(waiting.back());
        waiting.pop_back();
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
            if (!visit(*entry))
                return false;
            std::error_code ignored;
            if (entry->symlink_status(ignored).type() == fs::file_type::directory)
                waiting.push_back(entry->path());
        }
    }
    return true;
}

/// Keeps an eye on a folder that is being filled.
class FolderWatch {
public:
    FolderWatch(const QString &folder, qint64 maxBytes, qint64 maxEntries)
        : m_folder(filePath(folder)),
          m_mostBytes(maxBytes),
          m_mostEntries(maxEntries)
    {
        m_clock.start();
    }

    /// As `isWithinLimits`, but looks only now and then: counting takes at most a tenth of the time.
    [[nodiscard]] bool seemsWithinLimits()
    {
        const qint64 now = m_clock.elapsed();
        if (now < m_nextLook)
            return true;
        const bool result = isWithinLimits();
        const qint64 end = m_clock.elapsed();
        m_nextLook = end + (end - now) * 9;
        return result;
    }

    [[nodiscard]] bool isWithinLimits() const
    {
        qint64 bytes = 0;
        qint64 entries = 0;
        return forEachEntry(m_folder, [&](const fs::directory_entry &entry) {
            std::error_code error;
            if (entry.symlink_status(error).type() == fs::file_type::regular) {
                const std::uintmax_t size = entry.file_size(error);
                bytes += error ? 0 : qint64(size); // it may have gone meanwhile
            }
            return bytes <= m_mostBytes && ++entries <= m_mostEntries;
        });
    }

private:
    fs::path m_folder;
    qint64 m_mostBytes;
    qint64 m_mostEntries;
    QElapsedTimer m_clock;
    qint64 m_nextLook = 0;
};

/// Archives of some tools give no permissions at all.
void makeReadable(const QString &folder)
{
    (void)forEachEntry(filePath(folder), [](const fs::directory_entry &entry) {
        std::error_code error;
        const fs::file_type type = entry.symlink_status(error).type();
        if (type == fs::file_type::directory)
            fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add, error);
        else if (type == fs::file_type::regular)
            fs::permissions(entry.path(), fs::perms::owner_read, fs::perm_options::add, error);
        return true;
    });
}

ChildProcess::Result runUnzip(
    const QString &archive, const QString &folder, FolderWatch &watch, const std::function<bool()> &mayGoOn)
{
    if (!endsLikeArchive(archive))
        return {.end = ChildProcess::Result::End::exited, .status = statusOfNoArchive, .output = {}};
    return ChildProcess::run({.program = u"/usr/bin/unzip"_s,
        .arguments = {u"-o"_s, u"-q"_s, literalForUnzip(archive), u"-d"_s, folder},
        .mayGoOn = [&] { return mayGoOn() && watch.seemsWithinLimits(); }});
}

} // namespace

void unpackArchive(
    const QString &archive, const QString &folder, const UnpackLimits &limits, const std::function<bool()> &mayGoOn)
{
    const QFileInfo file(archive);
    FolderWatch watch(folder, std::max(limits.bytes, file.size() * limits.archiveSizes), limits.entries);
    bool isWanted = true;
    const ChildProcess::Result result =
        runUnzip(file.absoluteFilePath(), folder, watch, [&] { return isWanted = mayGoOn(); });
    makeReadable(folder);
    if (!isWanted)
        throw ImportStopped();
    if (result.end == ChildProcess::Result::End::stopped || !watch.isWithinLimits())
        throw RefiError(RefiError::Kind::notAQdpx, u"it unpacks to more than a project can hold"_s);
    if (result.end != ChildProcess::Result::End::exited || result.status != statusOfWarnings)
        throwUnlessSucceeded(u"/usr/bin/unzip"_s, result);
}

} // namespace RefiQdpx
