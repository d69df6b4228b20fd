#include "library/SelfTests.h"

#include "exchange/RefiQdpx.h"
#include "exchange/RefiQdpxExport.h"
#include "exchange/RefiQdpxImport.h"
#include "library/LibraryStore.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"
#include "records/database/Request.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

std::optional<Code> earliestCode(DatabaseQueue &queue)
{
    return queue.read([](Database &database) { return Code::all().order(Column("createdAt")).fetchOne(database); });
}

QStringList rangesOf(const QList<Coding> &codings)
{
    QStringList ranges;
    for (const Coding &coding : codings)
        ranges.append(QString::number(coding.start) + u':' + QString::number(coding.length));
    ranges.sort();
    return ranges;
}

QString listed(const QStringList &entries)
{
    return entries.isEmpty() ? u"[]"_s : u"[\""_s + entries.join(u"\", \""_s) + u"\"]"_s;
}

} // namespace

void SelfTests::runQdpxSelfTest(const QString &path)
{
    const std::optional<Project> project = m_store.project().get();
    if (!project) {
        print(u"QDPX-TEST FAIL no project"_s);
        return;
    }
    QDir().mkpath(path);
    const QString archive = path + u"/roundtrip.qdpx"_s;
    const QString codebook = path + u"/vorn-codebook.qdc"_s;
    QFile::remove(archive);
    try {
        const QList<Document> documents = m_store.documents().get();
        const QList<Code> codes = m_store.codes().get();
        const QList<Coding> codings =
            m_store.m_queue.read([](Database &database) { return Coding::all().fetchAll(database); });
        RefiQdpx::exportArchive({*project, documents, codes, codings}, archive);
        QFile::remove(codebook);
        AtomicFile::write(codebook, RefiQdpx::buildCodebookXML(codes));

        const auto fresh = AppDatabase::makeFreshQueue();
        const RefiQdpx::ImportSummary got = RefiQdpx::importQdpx(archive, *fresh, project->id);
        const bool agree =
            got.codes == codes.size() && got.documents == documents.size() && got.excerpts == codings.size();
        print(u"QDPX-TEST %1 expected codes=%2 docs=%3 codings=%4 · got codes=%5 docs=%6 codings=%7 · file="_s
                  .arg(agree ? u"OK"_s : u"MISMATCH"_s)
                  .arg(codes.size())
                  .arg(documents.size())
                  .arg(codings.size())
                  .arg(got.codes)
                  .arg(got.documents)
                  .arg(got.excerpts)
            + archive);
        compareRoundTrip(codings, *fresh);
        if (QFileInfo::exists(path + u"/external.qdpx"_s))
            runExternalImport(path + u"/external.qdpx"_s);
    } catch (const LocalizedError &error) {
        print(u"QDPX-TEST FAIL "_s + error.description());
    }
}

void SelfTests::compareRoundTrip(const QList<Coding> &exported, DatabaseQueue &imported)
{
    const std::optional<Code> importedCode = earliestCode(imported);
    if (!m_store.codes()->isEmpty() && importedCode)
        compareFirstCode(m_store.codes()->first(), *importedCode);

    const QStringList expected = rangesOf(exported);
    const QStringList got =
        rangesOf(imported.read([](Database &database) { return Coding::all().fetchAll(database); }));
    print(u"QDPX-TEST coding-ranges "_s
        + (expected == got ? u"OK"_s : u"FAIL "_s + listed(expected) + u" vs "_s + listed(got)));
}

void SelfTests::compareFirstCode(const Code &first, const Code &imported)
{
    const auto verdict = [](bool same, const QString &got) { return same ? u"OK"_s : u"FAIL("_s + got + u')'; };
    print(u"QDPX-TEST first-code name="_s + verdict(first.name == imported.name, imported.name) + u" color="_s
        + verdict(first.colorHex == imported.colorHex, imported.colorHex) + u" memo="_s
        + (first.memo == imported.memo ? u"OK"_s : u"DIFF"_s));
}

void SelfTests::runExternalImport(const QString &archive)
{
    const auto fresh = AppDatabase::makeFreshQueue();
    const RefiQdpx::ImportSummary got = RefiQdpx::importQdpx(archive, *fresh, m_store.project()->value().id);
    const std::optional<Code> first = earliestCode(*fresh);
    print(u"QDPX-TEST external-import codes=%1 docs=%2 codings=%3 first="_s.arg(got.codes)
              .arg(got.documents)
              .arg(got.excerpts)
        + (first ? first->name : u"nil"_s));
}
