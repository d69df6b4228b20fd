#pragma once

#include "records/Document.h"

#include <QAbstractListModel>

/// The documents that the list shows, in the store's order.
class DocumentListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        subtitleRole = Qt::UserRole + 1, ///< QString: words and day
        symbolRole, ///< QString: the name of the icon
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const Document &document(const QModelIndex &index) const { return m_documents.at(index.row()); }
    /// Invalid for a document that isn't shown.
    [[nodiscard]] QModelIndex indexOf(const QUuid &documentID) const;
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

    /// Resets the model only if other documents are shown than before.
    void setDocuments(const QList<Document> &documents);

private:
    QList<Document> m_documents;
};
