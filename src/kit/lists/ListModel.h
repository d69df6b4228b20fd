#pragma once

#include <QAbstractListModel>

#include <algorithm>
#include <functional>
#include <ranges>
#include <type_traits>
#include <utility>

/// The items of `List` as a model without children; a function says what the roles of an item are. `List` needs
/// `size()`, `at()` and equality. Has no Q_OBJECT, since moc doesn't read templates; a subclass may have one.
template <typename List>
class ListModel : public QAbstractListModel {
public:
    using Item = std::remove_cvref_t<decltype(std::declval<const List &>().at(0))>;
    using Describe = std::function<QVariant(const Item &item, int role)>;

    explicit ListModel(Describe describe, QObject *parent = nullptr)
        : QAbstractListModel(parent),
          m_describe(std::move(describe))
    {
    }

    [[nodiscard]] const List &items() const { return m_items; }
    /// A copy, since the list may change while the item is in use. `index` must be a valid one of this model.
    [[nodiscard]] Item item(const QModelIndex &index) const { return m_items.at(positionOf(index)); }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_items.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        return checkIndex(index, CheckIndexOption::IndexIsValid) ? m_describe(m_items.at(positionOf(index)), role)
                                                                 : QVariant();
    }

    /// Returns false if the items are the same as before, which changes nothing. Resets the model only if other items
    /// are listed than before, as far as they have an `id`.
    bool setItems(const List &items)
    {
        if (items == m_items)
            return false;
        if (listsTheSame(items)) {
            m_items = items;
            Q_EMIT dataChanged(index(0), index(rowCount() - 1));
            return true;
        }
        beginResetModel();
        m_items = items;
        endResetModel();
        return true;
    }

protected:
    using Position = decltype(std::declval<const List &>().size());
    [[nodiscard]] static Position positionOf(const QModelIndex &index) { return Position(index.row()); }

    List m_items;

private:
    [[nodiscard]] bool listsTheSame(const List &items) const
    {
        // cppcheck-suppress constStatement ; it asks whether there is such a member
        if constexpr (requires(const Item &item) { item.id; } && std::ranges::range<List>)
            return std::ranges::equal(m_items, items, {}, &Item::id, &Item::id);
        return false;
    }

    Describe m_describe;
};
