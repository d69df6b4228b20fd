#pragma once

#include "kit/lists/ListColumn.h"
#include "kit/lists/ListModel.h"
#include "records/Document.h"
#include "records/Snippet.h"

#include <QColor>
#include <QUuid>

class EmptyState;
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

    /// Shows another code. Without a code of that id the view says so.
    void setCodeID(const QUuid &codeID);

protected:
    void render() override;

private:
    [[nodiscard]] QWidget *makeContent();
    [[nodiscard]] QVariant describe(const ExcerptHit &hit, int role) const;

    void renderMemo();
    void renderExcerpts(const Code &code);
    void noteCodings();
    void noteDocuments();
    void saveMemo(const QString &memo);

    LibraryStore &m_store;
    QUuid m_codeID;
    QUuid m_memoCodeID; ///< whose memo the bar shows; null until that code exists
    QList<Document> m_documents; ///< as they were when the passages were last read
    bool m_excerptsAreStale = true;

    QColor m_color; ///< of the dots of all rows
    ListModel<QList<ExcerptHit>> *m_model;
    ElidedLabel *m_title;
    MemoBar *m_memo = nullptr;
    SnippetList *m_list = nullptr;
    EmptyState *m_noExcerpts = nullptr;
    QStackedWidget *m_excerptPages = nullptr;
    QWidget *m_content = nullptr;
    EmptyState *m_notFound = nullptr;
    QStackedWidget *m_pages = nullptr;
};
