#include "library/survival/Workplace.h"

#include "platform/AtomicFile.h"
#include "records/AppDatabase.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

constexpr auto digest = R"(
    SELECT 'project ' || name AS line FROM project
    UNION ALL SELECT 'document ' || p.name || ' | ' || title || ' | ' || text || ' | ' || ifnull(memo, '-')
    FROM document AS d JOIN project AS p ON p.id = d.projectID
    UNION ALL SELECT 'code ' || p.name || ' | ' || c.name || ' | ' || c.colorHex || ' | ' || ifnull(u.name, '-') || ' | '
        || ifnull(c.memo, '-')
    FROM code AS c JOIN project AS p ON p.id = c.projectID LEFT JOIN code AS u ON u.id = c.parentID
    UNION ALL SELECT 'coding ' || title || ' | ' || name || ' | ' || start || ' | ' || length
    FROM coding JOIN document AS d ON d.id = documentID JOIN code AS c ON c.id = codeID
    ORDER BY line)";

constexpr auto faults = R"(
    WITH RECURSIVE up(id, ancestor) AS (SELECT id, parentID FROM code
        UNION SELECT up.id, code.parentID FROM up JOIN code ON code.id = ancestor)
    SELECT 'in no project: ' || title FROM document WHERE projectID NOT IN (SELECT id FROM project)
    UNION ALL SELECT 'in no project: ' || name FROM code WHERE projectID NOT IN (SELECT id FROM project)
    UNION ALL SELECT 'below nothing: ' || name FROM code WHERE parentID NOT IN (SELECT id FROM code)
    UNION ALL SELECT 'a code below itself' FROM up WHERE id = ancestor
    UNION ALL SELECT 'a coding of nothing' FROM coding LEFT JOIN document AS d ON d.id = documentID
    WHERE d.id IS NULL OR codeID NOT IN (SELECT id FROM code)
        OR start < 0 OR coding.length < 1 OR start + coding.length > length(d.text)
    UNION ALL SELECT integrity_check FROM pragma_integrity_check WHERE integrity_check <> 'ok')";

QString lines(DatabaseQueue &queue, QByteArrayView question)
{
    QStringList result;
    queue.read([&](Database &database) {
        database.forEachRow(
            question, {}, [&](const Statement &row) { result.append(QString::fromUtf8(row.column(0).bytes)); });
    });
    return result.join(u'\n');
}

void fill(TestLibrary &library)
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
    for (const QString &folder : {library(), m_root.filePath(u"material"_s), exports(), temporary(), m_root.path()}) {
        QDir().mkpath(folder);
        QFile::setPermissions(folder, QFile::Permissions(0x7777)); // a failing disk may make another user of us
    }
    qputenv("TMPDIR", QFile::encodeName(temporary()));
    AtomicFile::write(material(u"two.txt"_s), QByteArray("Another, longer text. ").repeated(500));
    static const QByteArray archive = [this] {
        TestLibrary source;
        fill(source);
        source.store.exportQdpx(material(u"study.qdpx"_s));
        return AtomicFile::readFile(material(u"study.qdpx"_s));
    }();
    AtomicFile::write(material(u"study.qdpx"_s), archive);
}

Workplace::~Workplace()
{
    qputenv("TMPDIR", m_temporaryBefore);
}

QStringList Workplace::leftovers() const
{
    return QDir(temporary()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

void Workplace::restoreLibrary()
{
    static const QByteArray bytes = [this] {
        {
            TestLibrary library({}, AppDatabase::openQueue(libraryFile()));
            fill(library);
        }
        return AtomicFile::readFile(libraryFile());
    }();
    AtomicFile::write(libraryFile(), bytes);
}

std::unique_ptr<DatabaseQueue> Workplace::restored()
{
    restoreLibrary();
    return AppDatabase::openQueue(libraryFile());
}

QString digestOf(DatabaseQueue &queue)
{
    return lines(queue, digest);
}

QString faultsOf(DatabaseQueue &queue)
{
    return lines(queue, faults);
}

std::span<const Operation> operations()
{
    using On = const Operation::Subject &;
    static const Operation all[] = {
        {"import_of_a_file", [](On on) { on.store.importURLs({QUrl::fromLocalFile(on.place.material(u"two.txt"_s))}); },
            "two.txt: "},
        {"import_of_an_archive", [](On on) { on.store.importQdpx(on.place.material(u"study.qdpx"_s)); },
            "Import failed: "},
        {"paste", [](On on) { on.store.addPastedDocument(u"Pasted"_s, u"text "_s.repeated(3'000)); },
            "The document couldn't be added: "},
        {"new_code", [](On on) { on.store.createCode(u"Delta"_s, u"#112233"_s); }},
        {"coding",
            [](On on) {
                on.store.assignCode(on.library.code(u"Gamma"_s), on.library.document(u"First"_s), {5, 5});
            }},
        {"removal_of_a_coding",
            [](On on) {
                for (const Coding &coding : on.store.codings(on.library.document(u"Second"_s)))
                    on.store.removeCoding(coding);
            }},
        {"nesting", [](On on) { on.store.nestCode(on.library.code(u"Gamma"_s).id, on.library.code(u"Beta"_s).id); }},
        {"move_to_the_top", [](On on) { on.store.moveCodeToTopLevel(on.library.code(u"Beta"_s)); }},
        {"memo",
            [](On on) { on.store.setDocumentMemo(on.library.document(u"First"_s), u"a thought "_s.repeated(700)); },
            "The memo couldn't be saved: "},
        {"merge", [](On on) { on.store.mergeCodes(on.library.code(u"Alpha"_s), on.library.code(u"Gamma"_s)); }},
        {"deletion_of_a_code", [](On on) { on.store.deleteCode(on.library.code(u"Beta"_s)); }},
        {"deletion_of_a_document", [](On on) { on.store.deleteDocument(on.library.document(u"First"_s)); }, ""},
        {"new_name", [](On on) { on.store.renameDocument(on.library.document(u"Second"_s), u"Third"_s); }},
        {"new_project", [](On on) { on.store.createProject(u"Other"_s); }},
    };
    return all;
}
