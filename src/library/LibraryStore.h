#pragma once

#include "analysis/CompoundQuery.h"
#include "analysis/OccurrenceList.h"
#include "analysis/TermCounter.h"
#include "analysis/WordFrequency.h"
#include "exchange/ExcerptExporter.h"
#include "library/CodeCountCache.h"
#include "library/DocumentCache.h"
#include "library/DocumentFilter.h"
#include "library/LibraryServices.h"
#include "library/Observable.h"
#include "library/SidebarSelection.h"
#include "library/UnwrittenMemos.h"
#include "platform/LocalizedError.h"
#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/Project.h"
#include "records/Snippet.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QUrl>

#include <functional>
#include <optional>
#include <vector>

/// Asks the reader to open a passage. The rising token makes a second request for the same passage another one.
struct RevealRequest {
    QUuid documentID;
    QUuid codingID; ///< the item that asked: a coding, or a row of results
    TextRange range;
    qint64 token = 0;

    bool operator==(const RevealRequest &) const = default;
};

/// The open library: the one owner of the program's state, and the one place where anything is done to it.
///
/// Views connect to the observable values and call the operations; an operation writes the database first and then
/// sets the values, so that what is announced is already in the file. Failures go into `lastError` where the user must
/// know, never to the caller. Codings aren't held: `codingRevision` says that they may have changed. Bound to the main
/// thread.
class LibraryStore : public QObject {
public:
    explicit LibraryStore(LibraryServices services);

    /// @name State that only the store writes
    /// @{
    [[nodiscard]] const Observable<std::optional<Project>> &project() const { return m_project; }
    [[nodiscard]] const Observable<QList<Project>> &projects() const { return m_projects; }
    /// From project id to the number of its documents; no entry for none.
    [[nodiscard]] const Observable<QHash<QUuid, qint64>> &projectDocCounts() const { return m_projectDocCounts; }
    /// Those of the current project, newest first.
    [[nodiscard]] const Observable<QList<Document>> &documents() const { return m_documents; }
    /// Those of the current project, oldest first.
    [[nodiscard]] const Observable<QList<Code>> &codes() const { return m_codes; }
    /// From code id to the number of its own passages, without those of its descendants; no entry for none.
    [[nodiscard]] const Observable<QHash<QUuid, qint64>> &codeCounts() const { return m_codeCounts; }
    /// Rises whenever codings may have changed.
    [[nodiscard]] const Observable<qint64> &codingRevision() const { return m_codingRevision; }
    [[nodiscard]] const Observable<std::optional<RevealRequest>> &revealRequest() const { return m_revealRequest; }
    [[nodiscard]] const Observable<std::optional<QuerySpec>> &activeQuery() const { return m_activeQuery; }
    [[nodiscard]] const Observable<QList<QueryResult>> &queryResults() const { return m_queryResults; }
    [[nodiscard]] const Observable<WordFrequency::Scope> &wordFreqScope() const { return m_wordFreqScope; }
    [[nodiscard]] const Observable<QString> &wordFreqScopeLabel() const { return m_wordFreqScopeLabel; }
    [[nodiscard]] const Observable<QList<WordFrequency::Item>> &wordFreqItems() const { return m_wordFreqItems; }
    [[nodiscard]] const Observable<qint64> &wordFreqMinLength() const { return m_wordFreqMinLength; }
    [[nodiscard]] const Observable<bool> &wordFreqIgnoreStopwords() const { return m_wordFreqIgnoreStopwords; }
    [[nodiscard]] const Observable<bool> &isImporting() const { return m_isImporting; }
    /// @}

    /// @name State that views write, too
    /// @{
    [[nodiscard]] Observable<std::optional<SidebarSelection>> &sidebarSelection() { return m_sidebarSelection; }
    [[nodiscard]] Observable<std::optional<QUuid>> &selectedDocumentID() { return m_selectedDocumentID; }
    [[nodiscard]] Observable<QString> &searchText() { return m_searchText; }
    [[nodiscard]] Observable<bool> &codingHintDismissed() { return m_codingHintDismissed; }
    [[nodiscard]] Observable<bool> &showPasteSheet() { return m_showPasteSheet; }
    [[nodiscard]] Observable<bool> &showExportSheet() { return m_showExportSheet; }
    [[nodiscard]] Observable<bool> &showQuerySheet() { return m_showQuerySheet; }
    [[nodiscard]] Observable<bool> &showWordFreqSheet() { return m_showWordFreqSheet; }
    [[nodiscard]] Observable<std::optional<QString>> &wordFreqSelectedTerm() { return m_wordFreqSelectedTerm; }
    [[nodiscard]] Observable<OccurrenceList> &wordFreqOccurrences() { return m_wordFreqOccurrences; }
    [[nodiscard]] Observable<std::optional<QString>> &lastError() { return m_lastError; }
    [[nodiscard]] Observable<std::optional<QString>> &statusMessage() { return m_statusMessage; }
    /// @}

    /// @name Start-up and reloading
    /// @{
    /// Opens the oldest project or makes the first one, and loads its lists. Called once.
    void bootstrap();
    /// Reloads the lists of the current project; announces only what differs.
    void refresh();
    /// The documents whose title or text holds `searchText`, in list order.
    [[nodiscard]] QList<Document> visibleDocuments() const;
    /// Fills an empty library with the sample content.
    void seedSampleContent();
    /// The same for the user, who is shown it.
    void loadSampleContent();
    /// @}

    /// @name Projects
    /// @{
    /// Absent, without any change, for a name of blanks.
    std::optional<Project> createProject(const QString &name);
    void selectProject(const QUuid &id);
    void renameProject(const Project &project, const QString &name);
    void goToDocuments();
    /// The code that the sidebar has selected, if it has one.
    [[nodiscard]] std::optional<QUuid> selectedCodeID() const;
    /// @}

    /// @name Documents
    /// @{
    /// Returns whether the document is in the file; if it isn't, the text is still the caller's to keep.
    bool addPastedDocument(const QString &title, const QString &text);
    void renameDocument(const Document &document, const QString &title);
    /// Deletes the document with its codings.
    void deleteDocument(const Document &document);
    void setDocumentMemo(const Document &document, const QString &memo);
    void presentImportPanel();
    /// Imports files, and the files directly in folders, one transaction each.
    void importURLs(const QList<QUrl> &urls);
    /// @}

    /// @name Codes
    /// @{
    /// Absent, without any change, for a name of blanks. Without a colour the palette's next one is taken.
    std::optional<Code> createCode(const QString &name, const std::optional<QString> &colorHex = {});
    void renameCode(const Code &code, const QString &name);
    void setCodeColor(const Code &code, const QString &hex);
    void setCodeMemo(const Code &code, const QString &memo);
    /// Deletes the code with its codings; its children move one level up.
    void deleteCode(const Code &code);
    void nestCode(const QUuid &child, const QUuid &parent);
    void moveCodeToTopLevel(const Code &code);
    /// Moves the codings and children of `source` to `target` and deletes `source`.
    void mergeCodes(const Code &source, const Code &target);
    /// The tree walked into a flat list: see `CodeTree::ordered`.
    [[nodiscard]] QList<FlatCode> orderedCodes() const;
    /// @}

    /// @name Coding passages
    /// @{
    /// The codings of the document, oldest first. Read anew at each call; `codingRevision` tells when to ask again.
    [[nodiscard]] QList<Coding> codings(const Document &document) const;
    /// Codes the passage: `range` in UTF-16 code units, clamped to the text and trimmed of blanks on both sides.
    void assignCode(const Code &code, const Document &document, const TextRange &range);
    void removeCoding(const Coding &coding);
    /// The passages of the code in the current project's documents, oldest coding first.
    [[nodiscard]] QList<ExcerptHit> excerpts(const QUuid &codeID) const;
    void reveal(const ExcerptHit &hit);
    void reveal(const QueryResult &result);
    void reveal(const WordFrequency::Occurrence &occurrence);
    [[nodiscard]] bool shouldShowCodingHint() const;
    /// @}

    /// @name Memos as they were last given
    /// Also those that couldn't be stored yet, unlike the lists. Absent for what isn't listed.
    /// @{
    [[nodiscard]] std::optional<QString> documentMemo(const QUuid &id) const;
    [[nodiscard]] std::optional<QString> codeMemo(const QUuid &id) const;
    /// Whether that memo is in the file.
    [[nodiscard]] bool isMemoWritten(const QUuid &id) const { return !m_unwrittenMemos.contains(id); }
    /// Tries to store those that aren't. Returns why some still can't be.
    std::optional<QString> saveUnwrittenMemos();
    /// @}

    /// @name Analysis
    /// @{
    void runQuery(const QuerySpec &spec);
    /// The active query in one line; empty without one.
    [[nodiscard]] QString querySummary() const;
    /// Counts terms and publishes the `limit` most frequent; `limit` must not be negative.
    void runWordFrequency(const WordFrequency::Scope &scope, qint64 minLength, bool ignoreStopwords, qint64 limit);
    void selectWordFreqTerm(const QString &term);
    /// @}

    /// @name Export and exchange
    /// @{
    /// One group for each code, also for those without passages; only that of `scopeCodeID` if there is such a code.
    [[nodiscard]] QList<ExportCodeGroup> exportGroups(const std::optional<QUuid> &scopeCodeID) const;
    /// Writes the report on what is in the file now. Throws LocalizedError, also if not all of it can be read: lists
    /// that are shown may be incomplete, but not what somebody relies on later.
    void exportReport(const std::optional<QUuid> &scopeCodeID, ExportFormat format, const QString &path);
    /// Replaces the file at `path` by the report, or leaves it as it was. Throws FileError.
    void writeExport(const QList<ExportCodeGroup> &groups, ExportFormat format, const QString &path) const;
    /// For the sheet that asks by itself where its report is to go, and shows it afterwards.
    [[nodiscard]] FileDialogs &fileDialogs() const { return m_services.fileDialogs; }
    [[nodiscard]] FileViewer &fileViewer() const { return m_services.fileViewer; }
    /// Throws LocalizedError, as `exportReport`.
    void exportQdpx(const QString &path);
    void importQdpx(const QString &path);
    void presentExportQdpxPanel();
    void presentExportQdcPanel();
    void presentImportQdpxPanel();
    /// @}

private:
    void ensureProject();
    [[nodiscard]] Project newProject(const QString &name) const;
    /// Stores the open project if its own write failed: nothing may lie in a project that no later start can open. To
    /// be called in the transaction that puts something into it.
    void keepProject(Database &database) const;
    void loadProjects();
    void resetContext();

    /// Reads the lists anew. Throws DatabaseError where `refresh` would go on with what it has.
    void expectWholeLists();
    void refreshCodeCounts();
    void setDocuments(const QList<Document> &documents);
    void selectFirstDocument();
    [[nodiscard]] const Document *findDocument(const QUuid &id) const;
    [[nodiscard]] const Code *findCode(const QUuid &id) const;
    [[nodiscard]] QList<Code> readCodes(Database &database) const;

    [[nodiscard]] Document newDocument(const QString &title, const QString &text, const QString &sourceKind) const;
    Code addCode(const QString &name, const QString &hex);
    void addCoding(const QUuid &documentID, const QUuid &codeID, const TextRange &range);
    void concludeRemoval(QUuid codeID, const SidebarSelection &next, bool isRemoved);
    void raiseCodingRevision();
    [[nodiscard]] QList<ExcerptHit> readExcerpts(const QUuid &codeID) const;
    void reveal(const QUuid &documentID, const QUuid &itemID, const TextRange &range);

    void seedDocumentsIfEmpty();
    void seedCodesIfEmpty();
    void seedMemosIfMissing();

    struct ImportCount {
        qint64 imported = 0;
        qint64 skipped = 0;
    };
    /// Returns whether the import goes on.
    bool importCandidate(const QString &path, const ImportStep &step, ImportCount &count);
    void concludeImport(const ImportCount &count);

    template <typename Excerpts>
    [[nodiscard]] QList<ExportCodeGroup> groupsOf(const std::optional<QUuid> &scopeCodeID, Excerpts excerptsOf) const;
    /// Lets the user choose a place, writes there, and tells how it went.
    struct ExchangeFile;
    void presentExchangePanel(const ExchangeFile &file);

    /// A document that is counted, or only some passages of it.
    struct CountedDocument {
        const Document &document;
        std::optional<std::vector<TextRange>> passages;
    };
    [[nodiscard]] std::vector<CountedDocument> documentsInScope(const WordFrequency::Scope &scope) const;
    [[nodiscard]] QString scopeLabel(const WordFrequency::Scope &scope) const;
    [[nodiscard]] QList<WordFrequency::Item> countedTerms(const WordFrequency::Scope &scope, qint64 limit);
    [[nodiscard]] const TermCounter &termsOfAllDocuments();

    template <typename R>
    void setMemo(R record, const QString &memo, const R *listed, Observable<QList<R>> &records);
    template <typename R>
    [[nodiscard]] std::optional<QString> memoOf(const R *listed) const;

    /// Writes; returns false if that failed, which the next reload shows.
    bool tryWrite(const std::function<void(Database &database)> &body);
    /// Gives one field of the record a new value, and reloads.
    template <typename R, typename Value>
    void change(R record, const Field<R, Value> &field, const Value &value)
    {
        record.*field.member = value;
        tryWrite([&](Database &database) { record.update(database, {field.name}); });
        refresh();
    }
    /// Reads; a failure gives an empty result.
    template <typename Body>
    [[nodiscard]] auto readOrEmpty(Body &&body) const
    {
        try {
            return m_queue.read(std::forward<Body>(body));
        } catch (const LocalizedError &) {
            return std::invoke_result_t<Body, Database &>{};
        }
    }

    LibraryServices m_services;
    DatabaseQueue &m_queue;
    DocumentCache m_documentCache;
    CodeCountCache m_codeCountCache;
    TermCounter m_terms; ///< of all documents in `m_countedDocuments`
    QSet<QUuid> m_countedDocuments;
    mutable DocumentFilter m_filter;
    QHash<QUuid, qsizetype> m_documentPositions; ///< in the list
    UnwrittenMemos m_unwrittenMemos;

    Observable<std::optional<Project>> m_project;
    Observable<QList<Project>> m_projects;
    Observable<QHash<QUuid, qint64>> m_projectDocCounts;
    Observable<QList<Document>> m_documents;
    Observable<QList<Code>> m_codes;
    Observable<QHash<QUuid, qint64>> m_codeCounts;
    Observable<qint64> m_codingRevision;
    Observable<bool> m_codingHintDismissed;
    Observable<std::optional<QUuid>> m_selectedDocumentID;
    Observable<std::optional<SidebarSelection>> m_sidebarSelection;
    Observable<std::optional<RevealRequest>> m_revealRequest;
    Observable<QString> m_searchText;
    Observable<bool> m_showPasteSheet;
    Observable<bool> m_showExportSheet;
    Observable<bool> m_showQuerySheet;
    Observable<bool> m_showWordFreqSheet;
    Observable<std::optional<QuerySpec>> m_activeQuery;
    Observable<QList<QueryResult>> m_queryResults;
    Observable<WordFrequency::Scope> m_wordFreqScope;
    Observable<QString> m_wordFreqScopeLabel;
    Observable<QList<WordFrequency::Item>> m_wordFreqItems;
    Observable<std::optional<QString>> m_wordFreqSelectedTerm;
    Observable<OccurrenceList> m_wordFreqOccurrences;
    Observable<qint64> m_wordFreqMinLength{3};
    Observable<bool> m_wordFreqIgnoreStopwords{true};
    Observable<bool> m_isImporting;
    Observable<std::optional<QString>> m_lastError;
    Observable<std::optional<QString>> m_statusMessage;
};
