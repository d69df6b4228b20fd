#pragma once

#include "records/Document.h"

#include <QHash>
#include <QList>
#include <QString>

#include <vector>

class TextSearch;

/// Finds the documents whose title or text holds a search text, as it is typed letter by letter.
class DocumentFilter {
public:
    /// In the order of `documents`; all of them when `searchText`, without the blanks around it, is empty.
    [[nodiscard]] QList<Document> matching(const QList<Document> &documents, const QString &searchText);

private:
    void lookAtAll(qsizetype count);
    void find(const QString &needle);
    [[nodiscard]] bool isInText(const TextSearch &search, const Document &document);

    /// The last search and what it found: a search text that contains the last one can only find some of that.
    QList<Document> m_searched;
    QString m_needle;
    std::vector<qsizetype> m_found; ///< positions
    QHash<QUuid, bool> m_needsLowering; ///< by document, for each text that was searched
};
