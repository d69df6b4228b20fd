#include "library/survival/Researcher.h"

#include "exchange/RefiQdpxExport.h"
#include "platform/AtomicFile.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// Bigger than a page now and then, so that a write is many writes.
QString someText(NastyText &random)
{
    QString text = u"word "_s;
    for (int size = random.onceIn(4) ? random.number(200, 2'000) : random.number(1, 20); size > 0; --size)
        text += random.next(4);
    return text + u" end"_s;
}

template <typename Record, typename Name>
std::optional<Record> chosen(QList<Record> records, Name Record::*name, NastyText &random)
{
    if (records.isEmpty())
        return {};
    std::ranges::sort(records, {}, name);
    return records.at(random.number(0, int(records.size()) - 1));
}

} // namespace

Researcher::Researcher(TestLibrary &library, QString folder, unsigned seed)
    : m_library(library),
      m_store(library.store),
      m_folder(std::move(folder)),
      m_seed(seed)
{
}

void Researcher::work(int number)
{
    m_number = number;
    m_random = NastyText(m_seed * 1'000'003U + unsigned(number));
    struct Step {
        int weight;
        void (Researcher::*work)();
    };
    static constexpr std::array steps{Step{4, &Researcher::importFiles}, Step{1, &Researcher::importArchive},
        Step{4, &Researcher::paste}, Step{8, &Researcher::makeCode}, Step{16, &Researcher::assign},
        Step{3, &Researcher::unassign}, Step{6, &Researcher::nest}, Step{2, &Researcher::toTop},
        Step{3, &Researcher::merge}, Step{3, &Researcher::removeCode}, Step{2, &Researcher::removeDocument},
        Step{5, &Researcher::writeMemo}, Step{4, &Researcher::rename}, Step{3, &Researcher::writeReport}};
    int weights = 0;
    for (const Step &step : steps)
        weights += step.weight;
    int choice = m_random.number(0, weights - 1);
    for (const Step &step : steps) {
        choice -= step.weight;
        if (choice < 0)
            return (this->*step.work)();
    }
}

void Researcher::importFiles()
{
    QList<QUrl> urls;
    for (int count = m_random.number(1, 3); count > 0; --count) {
        const QString path = m_folder + u'/' + fresh(u"file"_s) + u'-' + QString::number(count) + u".txt"_s;
        AtomicFile::write(path, someText(m_random).toUtf8());
        urls.append(QUrl::fromLocalFile(path));
    }
    m_store.importURLs(urls);
}

void Researcher::importArchive()
{
    const QString path = m_folder + u'/' + fresh(u"study"_s) + u".qdpx"_s;
    makeArchive(path);
    m_store.importQdpx(path);
}

void Researcher::makeArchive(const QString &path)
{
    RefiQdpx::ExportInput input;
    input.project.id = QUuid::createUuid();
    for (int count = m_random.number(1, 4); count > 0; --count) {
        Document document;
        document.id = QUuid::createUuid();
        document.title = fresh(u"archived"_s) + u'-' + QString::number(count);
        document.text = someText(m_random);
        Code code;
        code.id = QUuid::createUuid();
        code.name = fresh(u"theme"_s) + u'-' + QString::number(count);
        code.colorHex = u"#12AB3F"_s;
        if (!input.codes.isEmpty())
            code.parentID = input.codes.last().id;
        Coding coding;
        coding.id = QUuid::createUuid();
        coding.documentID = document.id;
        coding.codeID = code.id;
        coding.length = 4;
        input.documents.append(document);
        input.codes.append(code);
        input.codings.append(coding);
    }
    RefiQdpx::exportArchive(input, path);
}

void Researcher::paste()
{
    m_store.addPastedDocument(fresh(u"note"_s), someText(m_random));
}

void Researcher::makeCode()
{
    m_store.createCode(fresh(u"code"_s), u"#334455"_s);
}

void Researcher::assign()
{
    const auto code = someCode();
    const auto document = someDocument();
    if (!code || !document)
        return;
    const int start = m_random.number(0, int(document->text.size()));
    m_store.assignCode(*code, *document, {start, m_random.number(1, 200)});
}

void Researcher::unassign()
{
    const auto document = someDocument();
    if (!document)
        return;
    QList<Coding> codings = m_store.codings(*document);
    QHash<QUuid, QString> names;
    for (const Code &code : m_store.codes().get())
        names.insert(code.id, code.name);
    std::ranges::sort(
        codings, {}, [&](const Coding &each) { return std::tuple(names.value(each.codeID), each.start, each.length); });
    if (!codings.isEmpty())
        m_store.removeCoding(codings.at(m_random.number(0, int(codings.size()) - 1)));
}

void Researcher::nest()
{
    const auto child = someCode();
    const auto parent = someCode();
    if (child && parent)
        m_store.nestCode(child->id, parent->id);
}

void Researcher::toTop()
{
    if (const auto code = someCode())
        m_store.moveCodeToTopLevel(*code);
}

void Researcher::merge()
{
    const auto source = someCode();
    const auto target = someCode();
    if (source && target)
        m_store.mergeCodes(*source, *target);
}

void Researcher::removeCode()
{
    if (const auto code = someCode())
        m_store.deleteCode(*code);
}

void Researcher::removeDocument()
{
    if (const auto document = someDocument())
        m_store.deleteDocument(*document);
}

void Researcher::writeMemo()
{
    const QString memo = m_random.onceIn(4) ? QString() : m_random.next(30);
    const auto code = someCode();
    const auto document = someDocument();
    if (code && m_random.onceIn(2))
        m_store.setCodeMemo(*code, memo);
    else if (document)
        m_store.setDocumentMemo(*document, memo);
}

void Researcher::rename()
{
    const auto code = someCode();
    const auto document = someDocument();
    if (code && m_random.onceIn(2))
        m_store.renameCode(*code, fresh(u"renamed code"_s));
    else if (document && m_random.onceIn(2))
        m_store.renameDocument(*document, fresh(u"renamed"_s));
    else
        m_store.renameProject(m_store.project()->value(), fresh(u"study"_s));
}

void Researcher::writeReport()
{
    m_store.writeExport(m_store.exportGroups({}), ExportFormat::html, reportIn(m_folder));
}

QString Researcher::fresh(const QString &kind) const
{
    return kind + u' ' + QString::number(m_number);
}

std::optional<Document> Researcher::someDocument()
{
    return chosen(m_store.documents().get(), &Document::title, m_random);
}

std::optional<Code> Researcher::someCode()
{
    return chosen(m_store.codes().get(), &Code::name, m_random);
}
