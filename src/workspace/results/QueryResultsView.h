#pragma once

#include "analysis/CompoundQuery.h"
#include "kit/lists/ListColumn.h"
#include "kit/lists/ListModel.h"
#include "records/Code.h"

#include <QColor>
#include <QHash>
#include <QLabel>

class LibraryStore;
class ResultPage;
class SnippetLayout;

/// A query in words, in at most two lines, as high as these need in its present width. Its cost doesn't grow with what
/// is cut off.
class QuerySummary final : public QLabel {
    Q_OBJECT

public:
    explicit QuerySummary(QWidget *parent = nullptr);

    void setText(const QString &text);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void fitHeight();
    [[nodiscard]] SnippetLayout layOut() const;
};

/// The last query in words, and every passage that it found.
class QueryResultsView final : public ListColumn {
    Q_OBJECT

public:
    explicit QueryResultsView(LibraryStore &store, QWidget *parent = nullptr);

protected:
    void render() override;

private:
    void addPage();
    [[nodiscard]] QVariant describe(const QueryResult &result, int role) const;
    [[nodiscard]] QList<QColor> dotsOf(const QueryResult &result) const;
    [[nodiscard]] QString spoken(const QueryResult &result) const;

    LibraryStore &m_store;
    QHash<QUuid, Code> m_codes;
    ListModel<QList<QueryResult>> *m_model;
    QuerySummary *m_summary;
    ResultPage *m_page = nullptr;
};
