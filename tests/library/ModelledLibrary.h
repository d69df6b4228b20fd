#pragma once

#include "records/AppDatabase.h"
#include "records/CodePalette.h"
#include "records/TextTrimming.h"
#include "records/database/Request.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/TestLibrary.h"

#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>

template <typename R>
R *find(QList<R> &records, const QUuid &id)
{
    const auto found = std::ranges::find(records, id, &R::id);
    return found == records.end() ? nullptr : &*found;
}

template <typename R, typename Value>
void removeWhere(QList<R> &records, Value R::*member, const Value &value)
{
    records.removeIf([&](const R &record) { return record.*member == value; });
}

/// With U+FFFD for each unpaired surrogate.
inline QString wellFormed(const QString &text)
{
    QString result;
    for (const uint character : text.toUcs4())
        result += QChar::fromUcs4(character);
    return result;
}

/// From the first to the last unit in the range that is no blank; of length 0 without one.
inline TextRange plainPassage(const QString &text, const TextRange &range)
{
    QList<qint64> kept;
    for (qint64 at = 0; at < text.size(); ++at) {
        const bool isIn = range.length > 0 && range.location <= at && range.location > at - range.length;
        if (isIn && !TextTrimming::trimmed(text.mid(at, 1)).isEmpty())
            kept.append(at);
    }
    return kept.isEmpty() ? TextRange{} : TextRange{kept.first(), kept.last() - kept.first() + 1};
}

/// Whether the way up from the code leads to `above`.
inline bool liesBelow(QList<Code> codes, const Code &code, const QUuid &above)
{
    std::optional<QUuid> parent = code.parentID;
    for (qsizetype step = 0; parent && step <= codes.size(); ++step) {
        if (*parent == above)
            return true;
        const Code *next = find(codes, *parent);
        parent = next ? next->parentID : std::nullopt;
    }
    return false;
}

/// The real store in a file that another program locks at times, beside lists that are kept by the plainest means:
/// every operation is done to both.
class ModelledLibrary {
public:
    explicit ModelledLibrary(unsigned seed) : m_random(seed), m_library({}, AppDatabase::openQueue(m_path))
    {
        m_project = m_store.project()->value();
        m_projects = {*m_project};
        tick();
        tick();
        m_sidebar = ProjectSelection{m_project->id};
    }

    void step()
    {
        using Operation = void (ModelledLibrary::*)();
        using Self = ModelledLibrary;
        static constexpr Operation operations[]{&Self::lockOrUnlock, &Self::createProject, &Self::selectProject,
            &Self::renameProject, &Self::paste, &Self::renameDocument, &Self::deleteDocument,
            &Self::changeDocumentBehindTheStoresBack, &Self::createCode, &Self::editCode, &Self::nestCode,
            &Self::nestCode, &Self::deleteOrMergeCode, &Self::setMemo, &Self::setMemo, &Self::removeCoding,
            &Self::revealExcerpt, &Self::assignCode, &Self::assignCode, &Self::assignCode};
        m_store.lastError().set({});
        m_expectsError = false;
        if (m_isLocked && m_random.onceIn(3))
            lockOrUnlock();
        else if (documents().isEmpty())
            paste();
        else if (codes().isEmpty())
            createCode();
        else
            (this->*any(operations))();
    }

private:
    void lockOrUnlock()
    {
        m_other.writeWithoutTransaction(
            [&](Database &database) { database.execute(m_isLocked ? "ROLLBACK" : "BEGIN IMMEDIATE"); });
        m_isLocked = !m_isLocked;
    }

    /// Whether something can be put into the project. If so, the project is in the file afterwards.
    bool entersProject()
    {
        if (m_isLocked)
            return false;
        if (!find(m_projects, m_project->id)) {
            m_projects.append(*m_project);
            std::ranges::sort(m_projects, {}, &Project::createdAt);
        }
        return true;
    }

    /// The record in the file, if it is there and can be changed.
    template <typename R>
    R *writable(QList<R> &records, const QUuid &id)
    {
        return m_isLocked ? nullptr : find(records, id);
    }

    void openProject(const Project &project)
    {
        m_project = project;
        m_selected.reset();
        m_reveal.reset();
        EXPECT_TRUE(m_store.queryResults()->isEmpty() && m_store.wordFreqItems()->isEmpty()
            && m_store.wordFreqOccurrences()->isEmpty());
        EXPECT_FALSE(m_store.activeQuery().get() || m_store.wordFreqSelectedTerm().get());
    }

    void createProject()
    {
        const QString name = anyName();
        const auto created = m_store.createProject(name);
        ASSERT_EQ(created.has_value(), !name.trimmed().isEmpty());
        if (!created)
            return;
        const QDateTime now = tick();
        openProject({{}, created->id, name.trimmed(), now, tick()});
        if (!m_isLocked)
            m_projects.append(*m_project);
        m_sidebar = ProjectSelection{created->id};
    }

    void selectProject()
    {
        const Project chosen = m_random.onceIn(5) ? Project() : any(m_projects);
        m_store.selectProject(chosen.id);
        if (!find(m_projects, chosen.id))
            return;
        m_sidebar = ProjectSelection{chosen.id};
        if (chosen.id != m_project->id)
            openProject(chosen);
    }

    void renameProject()
    {
        Project renamed = m_random.onceIn(2) ? *m_project : any(m_projects);
        const QString name = anyName();
        m_store.renameProject(renamed, name);
        if (name.trimmed().isEmpty())
            return;
        renamed.name = name.trimmed();
        renamed.modifiedAt = tick();
        if (renamed.id == m_project->id)
            m_project = renamed;
        if (Project *stored = writable(m_projects, renamed.id))
            *stored = renamed;
    }

    void paste()
    {
        const QString title = m_random.onceIn(4) ? QString() : anyName();
        const QString text = m_random.next(40);
        ASSERT_EQ(m_store.addPastedDocument(title, text), !m_isLocked);
        const QDateTime now = tick();
        m_expectsError = m_isLocked;
        if (!entersProject())
            return;
        m_selected = m_store.documents()->first().id;
        m_documents.append(
            {{}, *m_selected, m_project->id, title.isEmpty() ? QStringLiteral("Untitled Document") : title,
                wellFormed(text), now, QStringLiteral("paste"), PlainAnalysis::wordCount(wellFormed(text)),
                PlainAnalysis::characterCount(wellFormed(text)), {}});
    }

    void renameDocument()
    {
        const Document document = any(documents());
        const QString title = anyName();
        m_store.renameDocument(document, title);
        if (Document *stored = writable(m_documents, document.id); stored && !title.trimmed().isEmpty())
            stored->title = title.trimmed();
    }

    void deleteDocument()
    {
        const QUuid id = any(documents()).id;
        m_store.deleteDocument(*std::ranges::find(m_store.documents().get(), id, &Document::id));
        m_expectsError = m_isLocked;
        if (m_isLocked)
            return;
        ++m_revision;
        if (m_reveal && m_reveal->documentID == id)
            m_reveal.reset();
        removeWhere(m_documents, &Document::id, id);
        removeWhere(m_codings, &Coding::documentID, id);
        m_unwritten.remove(id);
    }

    /// Moves one to another project, or puts another document into the row of the newest.
    void changeDocumentBehindTheStoresBack()
    {
        if (m_isLocked)
            return;
        Document *changed = find(m_documents, any(documents()).id);
        const QUuid before = changed->id;
        changed->projectID = any(m_projects).id;
        changed->addedAt = m_documents.first().addedAt; // the same moment
        if (changed == &m_documents.last()) {
            changed->id = QUuid::createUuid();
            changed->text = QStringLiteral("in the row of another");
            removeWhere(m_codings, &Coding::documentID, before);
        }
        (m_random.onceIn(2) ? m_other : *m_library.queue).write([&](Database &database) {
            if (changed->id == before)
                return changed->update(database);
            Document::deleteOne(database, before);
            Coding::filter(Column("documentID") == before).deleteAll(database);
            changed->insert(database);
        });
    }

    void createCode()
    {
        const QString name = anyName();
        const auto color = m_random.onceIn(4) ? std::optional(QStringLiteral("nonsense")) : std::nullopt;
        const auto created = m_store.createCode(name, color);
        ASSERT_EQ(created.has_value(), !name.trimmed().isEmpty());
        if (!created)
            return;
        const Code code{{}, created->id, m_project->id, name.trimmed(),
            color.value_or(CodePalette::colors()[size_t(codes().size() % 9)].hex), {}, {}, tick()};
        EXPECT_EQ(created, code);
        if (entersProject())
            m_codes.append(code);
    }

    void editCode()
    {
        Code code = any(codes());
        m_sidebar = CodeSelection{any(codes()).id};
        m_store.sidebarSelection().set(m_sidebar);
        const QString name = anyName();
        if (m_random.onceIn(2)) {
            m_store.renameCode(code, name);
            code.name = name.trimmed().isEmpty() ? code.name : name.trimmed();
        } else {
            m_store.setCodeColor(code, name);
            code.colorHex = name;
        }
        if (Code *stored = writable(m_codes, code.id))
            *stored = code;
    }

    void nestCode()
    {
        const Code child = any(codes());
        const Code parent = any(codes());
        Code *stored = writable(m_codes, child.id);
        if (m_random.onceIn(4)) {
            m_store.moveCodeToTopLevel(child);
            if (stored)
                stored->parentID.reset();
            return;
        }
        m_store.nestCode(child.id, parent.id);
        m_store.nestCode(child.id, QUuid::createUuid());
        m_store.nestCode(QUuid::createUuid(), parent.id);
        if (stored && child.id != parent.id && !liesBelow(m_codes, parent, child.id))
            stored->parentID = parent.id;
    }

    void deleteOrMergeCode()
    {
        const Code gone = any(codes());
        const Code target = any(codes());
        const bool merges = m_random.onceIn(2);
        const auto listed = [this](const Code &code) -> const Code & {
            return *std::ranges::find(m_store.codes().get(), code.id, &Code::id);
        };
        merges ? m_store.mergeCodes(listed(gone), listed(target)) : m_store.deleteCode(listed(gone));
        if (merges && gone.id == target.id)
            return;
        ++m_revision;
        if (m_sidebar == SidebarSelection(CodeSelection{gone.id}))
            m_sidebar = merges ? SidebarSelection(CodeSelection{target.id}) : ProjectSelection{gone.projectID};
        if (m_isLocked)
            return;
        if (merges && liesBelow(m_codes, target, gone.id))
            find(m_codes, target.id)->parentID = gone.parentID;
        for (Code &code : m_codes) {
            if (code.parentID == gone.id)
                code.parentID = merges ? std::optional(target.id) : gone.parentID;
        }
        for (Coding &coding : m_codings) {
            if (merges && coding.codeID == gone.id)
                coding.codeID = target.id;
        }
        removeWhere(m_codings, &Coding::codeID, gone.id);
        removeWhere(m_codes, &Code::id, gone.id);
        m_unwritten.remove(gone.id);
    }

    void setMemo()
    {
        if (m_random.onceIn(2))
            setMemo(any(documents()), &LibraryStore::setDocumentMemo);
        else
            setMemo(any(codes()), &LibraryStore::setCodeMemo);
    }

    template <typename R>
    void setMemo(const R &record, void (LibraryStore::*set)(const R &, const QString &))
    {
        const QString memo = m_random.onceIn(3) ? QString() : anyName();
        (m_store.*set)(record, memo);
        const auto given = memo.isEmpty() ? std::nullopt : std::optional(memo);
        const bool isUnwritten = m_unwritten.contains(record.id);
        m_expectsError = m_isLocked && given != record.memo && !isUnwritten;
        if (!m_isLocked || given != record.memo || isUnwritten)
            m_unwritten.insert(record.id, given);
        if (m_isLocked)
            return;
        for (auto entry = m_unwritten.cbegin(); entry != m_unwritten.cend(); ++entry) {
            if (Document *document = find(m_documents, entry.key()))
                document->memo = *entry;
            if (Code *code = find(m_codes, entry.key()))
                code->memo = *entry;
        }
        m_unwritten.clear();
    }

    void removeCoding()
    {
        if (m_codings.isEmpty())
            return;
        const Coding coding = any(m_codings);
        m_store.removeCoding(coding);
        ++m_revision;
        if (!m_isLocked)
            removeWhere(m_codings, &Coding::id, coding.id);
    }

    void assignCode()
    {
        const Code code = any(codes());
        const Document document = any(documents());
        const TextRange range{m_random.position(-3, 40), m_random.position(-1, 12)};
        m_store.assignCode(code, document, range);
        const TextRange passage = plainPassage(document.text, range);
        const bool isKnown = std::ranges::any_of(m_codings, [&](const Coding &coding) {
            return coding.documentID == document.id && coding.codeID == code.id && coding.range() == passage;
        });
        if (passage.length == 0 || isKnown)
            return;
        ++m_revision;
        const QDateTime now = tick();
        if (!m_isLocked)
            m_codings.append(
                {{}, m_library.storedCodings().last().id, document.id, code.id, passage.location, passage.length, now});
    }

    void revealExcerpt()
    {
        for (const ExcerptHit &hit : m_store.excerpts(any(codes()).id).mid(0, 1)) {
            m_store.reveal(hit);
            noteReveal(hit.documentID, hit.id, hit.range());
        }
    }

protected:
    void noteReveal(const QUuid &documentID, const QUuid &itemID, const TextRange &range)
    {
        m_selected = documentID;
        m_reveal = {documentID, itemID, range, m_reveal ? m_reveal->token + 1 : 1};
    }

    template <typename List>
    auto any(const List &list) -> std::remove_cvref_t<decltype(*std::begin(list))>
    {
        return *std::next(std::begin(list), m_random.number(0, int(std::size(list)) - 1));
    }

    /// What the store's clock will say.
    QDateTime tick() { return m_now = m_now.addSecs(1); }

    QString anyName()
    {
        return m_random.onceIn(6) ? QStringLiteral(" \n") : QStringLiteral(" name %1\t").arg(m_random.number(0, 99));
    }

    /// Those of the current project.
    template <typename R>
    [[nodiscard]] QList<R> inProject(QList<R> records) const
    {
        records.removeIf([this](const R &record) { return record.projectID != m_project->id; });
        return records;
    }
    [[nodiscard]] QList<Code> codes() const { return inProject(m_codes); }
    /// Newest first.
    [[nodiscard]] QList<Document> documents() const
    {
        QList<Document> result = inProject(m_documents);
        std::ranges::stable_sort(result, std::ranges::greater(), &Document::addedAt);
        return result;
    }

    NastyText m_random;
    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("vorn.sqlite"));
    TestLibrary m_library;
    LibraryStore &m_store = m_library.store;
    DatabaseQueue m_other{m_path}; ///< another program's connection
    bool m_isLocked = false;
    bool m_expectsError = false;
    QDateTime m_now{QDate(2026, 3, 1), QTime(9, 0), QTimeZone::utc()};

    QList<Project> m_projects;
    QList<Document> m_documents;
    QList<Code> m_codes;
    QList<Coding> m_codings;
    std::optional<Project> m_project; ///< perhaps not in the file, or there with an older name
    std::optional<QUuid> m_selected;
    std::optional<SidebarSelection> m_sidebar;
    std::optional<RevealRequest> m_reveal;
    qint64 m_revision = 0;
    QHash<QUuid, std::optional<QString>> m_unwritten;
};
