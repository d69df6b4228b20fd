#include "library/LibraryStore.h"

#include "analysis/CompoundQuery.h"
#include "analysis/TermOccurrences.h"
#include "records/database/Request.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

void LibraryStore::runQuery(const QuerySpec &spec)
{
    if (spec.codeIDs.isEmpty())
        return;
    // Each code has an index entry of its own, so that the codings of all other codes aren't even read.
    const QList<Coding> codings = readOrEmpty([&](Database &database) {
        QList<Coding> found;
        QSet<QUuid> seen;
        for (const QUuid &codeID : spec.codeIDs) {
            if (!seen.contains(codeID))
                found += Coding::filter(Column("codeID") == codeID).fetchAll(database);
            seen.insert(codeID);
        }
        return found;
    });
    const QList<QueryResult> results = CompoundQuery::evaluate(spec, codings, m_documents.get());
    m_activeQuery.set(spec);
    m_queryResults.set(results);
    m_sidebarSelection.set(QuerySelection{});
}

QString LibraryStore::querySummary() const
{
    return m_activeQuery.get() ? CompoundQuery::summary(m_activeQuery->value(), m_codes.get()) : QString();
}

void LibraryStore::runWordFrequency(
    const WordFrequency::Scope &scope, qint64 minLength, bool ignoreStopwords, qint64 limit)
{
    m_wordFreqMinLength.set(minLength);
    m_wordFreqIgnoreStopwords.set(ignoreStopwords);
    m_wordFreqScope.set(scope);
    m_wordFreqScopeLabel.set(scopeLabel(scope));
    m_wordFreqItems.set(countedTerms(scope, limit));
    m_wordFreqSelectedTerm.set({});
    m_wordFreqOccurrences.set({});
    m_sidebarSelection.set(WordFreqSelection{});
}

QList<WordFrequency::Item> LibraryStore::countedTerms(const WordFrequency::Scope &scope, qint64 limit)
{
    const auto top = [&](const TermCounter &terms) {
        return terms.top(m_wordFreqMinLength.get(), m_wordFreqIgnoreStopwords.get(), limit);
    };
    if (std::holds_alternative<WordFrequency::AllDocuments>(scope))
        return top(termsOfAllDocuments());

    TermCounter terms;
    for (const auto &[document, passages] : documentsInScope(scope)) {
        if (passages)
            terms.add(document.text, *passages);
        else
            terms.add(document.text);
    }
    return top(terms);
}

/// Each document is counted once, since texts never change; all are counted again when one has gone.
const TermCounter &LibraryStore::termsOfAllDocuments()
{
    const auto isCounted = [this](const Document &document) { return m_countedDocuments.contains(document.id); };
    if (std::ranges::count_if(m_documents.get(), isCounted) != m_countedDocuments.size()) {
        m_countedDocuments.clear();
        m_terms = {};
    }
    for (const Document &document : m_documents.get()) {
        if (isCounted(document))
            continue;
        m_countedDocuments.insert(document.id);
        m_terms.add(document.text);
    }
    return m_terms;
}

void LibraryStore::selectWordFreqTerm(const QString &term)
{
    m_wordFreqSelectedTerm.set(term);
    OccurrenceList occurrences;
    for (const auto &[document, passages] : documentsInScope(m_wordFreqScope.get()))
        occurrences.add(document.id, document.title, document.text,
            TermOccurrences::occurrences(
                document.text, term, m_wordFreqMinLength.get(), m_wordFreqIgnoreStopwords.get(), passages));
    m_wordFreqOccurrences.set(occurrences);
}

std::vector<LibraryStore::CountedDocument> LibraryStore::documentsInScope(const WordFrequency::Scope &scope) const
{
    const auto *one = std::get_if<WordFrequency::InDocument>(&scope);
    const auto *coded = std::get_if<WordFrequency::InCode>(&scope);
    QHash<QUuid, std::vector<TextRange>> passages;
    if (coded) {
        const QList<Coding> codings = readOrEmpty(
            [&](Database &database) { return Coding::filter(Column("codeID") == coded->codeID).fetchAll(database); });
        for (const Coding &coding : codings)
            passages[coding.documentID].push_back(coding.range());
    }
    std::vector<CountedDocument> result;
    for (const Document &document : m_documents.get()) {
        if (coded && passages.contains(document.id))
            result.push_back({document, passages.value(document.id)});
        else if (!coded && (!one || document.id == one->documentID))
            result.push_back({document, std::nullopt});
    }
    return result;
}

QString LibraryStore::scopeLabel(const WordFrequency::Scope &scope) const
{
    if (const auto *one = std::get_if<WordFrequency::InDocument>(&scope)) {
        const Document *document = findDocument(one->documentID);
        return document ? document->title : u"Document"_s;
    }
    if (const auto *coded = std::get_if<WordFrequency::InCode>(&scope)) {
        const Code *code = findCode(coded->codeID);
        return code ? code->name : u"Code"_s;
    }
    return u"All documents"_s;
}
