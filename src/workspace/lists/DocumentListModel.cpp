#include "workspace/lists/DocumentListModel.h"

#include "workspace/lists/DocumentFacts.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

QString symbolFor(const QString &sourceKind)
{
    static const std::array formatted{u"docx"_s, u"pdf"_s, u"rtf"_s};
    static const std::array marked{u"md"_s, u"markdown"_s};
    if (std::ranges::find(formatted, sourceKind) != formatted.end())
        return u"doc.richtext"_s;
    if (std::ranges::find(marked, sourceKind) != marked.end())
        return u"text.alignleft"_s;
    return u"doc.text"_s;
}

} // namespace

QModelIndex DocumentListModel::indexOf(const QUuid &documentID) const
{
    const auto found = std::ranges::find(m_documents, documentID, &Document::id);
    return found == m_documents.end() ? QModelIndex() : index(int(found - m_documents.begin()));
}

int DocumentListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_documents.size());
}

QVariant DocumentListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Document &shown = document(index);
    switch (role) {
    case Qt::DisplayRole:
        return shown.title;
    case Qt::AccessibleTextRole:
        return u"%1, %2"_s.arg(shown.title, DocumentFacts::inOneLine(shown));
    case subtitleRole:
        return DocumentFacts::inOneLine(shown);
    case symbolRole:
        return symbolFor(shown.sourceKind);
    default:
        return {};
    }
}

void DocumentListModel::setDocuments(const QList<Document> &documents)
{
    if (!std::ranges::equal(m_documents, documents, {}, &Document::id, &Document::id)) {
        beginResetModel();
        m_documents = documents;
        endResetModel();
        return;
    }
    const QList<Document> before = std::exchange(m_documents, documents);
    for (qsizetype row = 0; row < before.size(); ++row) {
        if (before.at(row) != m_documents.at(row))
            Q_EMIT dataChanged(index(int(row)), index(int(row)));
    }
}
