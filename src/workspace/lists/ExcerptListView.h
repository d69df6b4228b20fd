#pragma once

#include "kit/lists/ListColumn.h"
#include "records/Document.h"

#include <QUuid>

class EmptyState;
class ExcerptListModel;
class LibraryStore;
class MemoBar;
class SnippetList;
class QStackedWidget;
struct Code;

/// A code's memo and every passage coded with it.
class ExcerptListView final : public ListColumn {
    Q_OBJECT

public:
    explicit ExcerptListView(LibraryStore &store, QWidget *parent = nullptr);

    /// Shows another code. There need be none of that id.
    void setCodeID(const QUuid &codeID);

protected:
    void render() override;

private:
    [[nodiscard]] QWidget *makeContent();
    /// Absent when there is no such code, or no longer.
    [[nodiscard]] const Code *code() const;

    void renderMemo();
    void renderExcerpts(const Code &code);
    void noteCodings();
    void noteDocuments();
    void saveMemo(const QString &memo);
    void reveal(const QModelIndex &index);

    LibraryStore &m_store;
    QUuid m_codeID;
    QUuid m_memoCodeID; ///< whose memo the bar shows; null before it was there to be read
    QList<Document> m_documents; ///< as they were when the passages were last asked for
    bool m_excerptsAreStale = true;

    ExcerptListModel *m_model;
    ElidedLabel *m_title;
    MemoBar *m_memo = nullptr;
    SnippetList *m_list = nullptr;
    EmptyState *m_noExcerpts = nullptr;
    QStackedWidget *m_excerptPages = nullptr;
    QWidget *m_content = nullptr;
    EmptyState *m_notFound = nullptr;
    QStackedWidget *m_pages = nullptr;
};
