#include "library/survival/Workplace.h"

#include "exchange/RefiQdpxExport.h"
#include "library/survival/Isolated.h"
#include "platform/AtomicFile.h"
#include "records/AppDatabase.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

#include <ostream>

using namespace Qt::StringLiterals;

namespace {

/// Everybody may reach it: a disaster may make another user of us.
void makeOpenFolder(const QString &path)
{
    QDir().mkpath(path);
    QFile::setPermissions(path, QFile::Permissions(0x7777));
}

void fillLibrary(TestLibrary &library)
{
    library.makeCodes({u"Alpha"_s, u"Beta"_s, u"Gamma"_s});
    library.store.nestCode(library.code(u"Beta"_s).id, library.code(u"Alpha"_s).id);
    const Document first = library.paste(u"First"_s, u"some words to code"_s);
    QString numbers; // which no archiver makes very small
    for (int number = 0; number < 6'000; ++number)
        numbers += QString::number(number * 7'919 % 10'007) + u' ';
    const Document second = library.paste(u"Second"_s, numbers);
    library.store.assignCode(library.code(u"Alpha"_s), first, {0, 4});
    library.store.assignCode(library.code(u"Beta"_s), first, {5, 5});
    library.store.assignCode(library.code(u"Beta"_s), second, {5, 5'000});
    library.store.setCodeMemo(library.code(u"Gamma"_s), u"why it matters"_s);
}

} // namespace

Workplace::Workplace()
{
    makeOpenFolder(m_root.path());
    for (const QString &folder : {library(), m_root.filePath(u"material"_s), exports(), temporary()})
        makeOpenFolder(folder);
    qputenv("TMPDIR", QFile::encodeName(temporary()));
    AtomicFile::write(material(u"one.txt"_s), "One text.");
    AtomicFile::write(material(u"two.txt"_s), QByteArray("Another, longer text. ").repeated(500));
    TestLibrary source;
    fillLibrary(source);
    source.store.exportQdpx(material(u"study.qdpx"_s));
}

Workplace::~Workplace()
{
    m_smallDisk.reset();
    qputenv("TMPDIR", m_temporaryBefore);
}

QString Workplace::material(const QString &name) const
{
    return m_root.filePath(u"material/"_s + name);
}

QStringList Workplace::leftovers() const
{
    return QDir(temporary()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

bool Workplace::putOnSmallDisk(const QString &folder, int kibibytes)
{
    m_smallDisk = std::make_unique<SmallDisk>(folder, kibibytes);
    return m_smallDisk->isThere();
}

void Workplace::restoreLibrary()
{
    static const QByteArray bytes = [] {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"vorn.sqlite"_s);
        {
            TestLibrary library({}, AppDatabase::openQueue(path));
            fillLibrary(library);
        }
        return AtomicFile::readFile(path);
    }();
    AtomicFile::write(libraryFile(), bytes);
}

void runAndBeKilled(const QString &path, const QByteArrayList &statements)
{
    std::ignore = inProcessOfItsOwn([&]() -> QString {
        DatabaseQueue queue(path);
        queue.writeWithoutTransaction([&](Database &database) {
            for (const QByteArray &statement : statements)
                database.execute(statement);
            ::_exit(EXIT_SUCCESS);
        });
        return {};
    });
}

const std::vector<Disaster> &disasters()
{
    static const std::vector<Disaster> all{
        {"NothingMoreIsWritten", false,
            [](Workplace &, const QString &) { return std::make_shared<FileSizeLimit>(0); }},
        {"TheFolderIsGone", false,
            [](Workplace &, const QString &folder) { return std::make_shared<Vanished>(folder); }},
        {"TheFolderIsClosed", false,
            [](Workplace &, const QString &folder) { return std::make_shared<ClosedFolder>(folder); }},
        {"TheDiskIsFull", true,
            [](Workplace &place, const QString &) { return std::make_shared<FullDisk>(place.smallDisk(), 0); }},
    };
    return all;
}

void PrintTo(const Disaster &disaster, std::ostream *stream)
{
    *stream << disaster.name;
}
