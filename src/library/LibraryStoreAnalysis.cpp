#include "library/LibraryStore.h"

#include "analysis/CompoundQuery.h"
#include "analysis/TermOccurrences.h"
#include "library/LibraryStoreAccess.h"

#include <QSet>

#include <algorithm>
#include <ranges>

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
        return top(m_terms.over(m_documents.get()));

    TermCounter terms;
    const auto coded = codedPassages(scope);
    for (const Document &document : documentsForScope(scope)) {
        if (coded)
            terms.add(document.text, coded->value(document.id));
        else
            terms.add(document.text);
    }
    return top(terms);
}

void LibraryStore::selectWordFreqTerm(const QString &term)
{
    m_wordFreqSelectedTerm.set(term);
    const WordFrequency::Scope &scope = m_wordFreqScope.get();
    const auto coded = codedPassages(scope);
    OccurrenceList occurrences;
    for (const Document &document : documentsForScope(scope)) {
        const auto passages = coded ? std::optional(coded->value(document.id)) : std::nullopt;
        occurrences.add(document.id, document.title, document.text,
            TermOccurrences::occurrences(
                document.text, term, m_wordFreqMinLength.get(), m_wordFreqIgnoreStopwords.get(), passages));
    }
    m_wordFreqOccurrences.set(occurrences);
}

QList<Document> LibraryStore::documentsForScope(const WordFrequency::Scope &scope) const
{
    if (std::holds_alternative<WordFrequency::AllDocuments>(scope))
        return m_documents.get();
    QList<Document> result;
    if (const auto *one = std::get_if<WordFrequency::InDocument>(&scope)) {
        if (const Document *document = findDocument(one->documentID))
            result.append(*document);
        return result;
    }
    const auto coded = codedPassages(scope);
    std::ranges::copy_if(m_documents.get(), std::back_inserter(result),
        [&](const Document &document) { return coded->contains(document.id); });
    return result;
}

std::optional<LibraryStore::Passages> LibraryStore::codedPassages(const WordFrequency::Scope &scope) const
{
    const auto *coded = std::get_if<WordFrequency::InCode>(&scope);
    if (!coded)
        return {};
    const QList<Coding> codings = readOrEmpty(
        [&](Database &database) { return Coding::filter(Column("codeID") == coded->codeID).fetchAll(database); });
    Passages passages;
    for (const Coding &coding : codings)
        passages[coding.documentID].push_back(coding.range());
    for (auto &ranges : passages)
        std::ranges::sort(ranges, {}, &TextRange::location);
    return passages;
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
