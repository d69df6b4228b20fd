#include "workspace/sheets/PopUpList.h"

#include "kit/lists/RowLine.h"

#include <QAbstractListModel>
#include <QListView>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

class EntryModel final : public QAbstractListModel {
public:
    EntryModel(const QList<PopUpList::Entry> &entries, QObject *parent) : QAbstractListModel(parent), m_entries(entries)
    {
    }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_entries.size()) + 1;
    }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        if (!checkIndex(index, CheckIndexOption::IndexIsValid))
            return {};
        if (role == Qt::DisplayRole && m_hidesNames)
            return QString();
        if (role == Qt::DisplayRole)
            return index.row() == 0 ? u"Choose…"_s : RowText::oneLine(m_entries.at(index.row() - 1).second);
        if (role == Qt::UserRole && index.row() > 0)
            return m_entries.at(index.row() - 1).first;
        return {};
    }
    void setHidesNames(bool hides) { m_hidesNames = hides; }
    /// The row of "Choose…" for an id that isn't among the entries.
    [[nodiscard]] int rowOf(const std::optional<QUuid> &id) const
    {
        const auto found = std::ranges::find(m_entries, id, &PopUpList::Entry::first);
        return found == m_entries.end() ? 0 : int(found - m_entries.begin()) + 1;
    }

private:
    QList<PopUpList::Entry> m_entries;
    bool m_hidesNames = false;
};

} // namespace

PopUpList::PopUpList(QWidget *parent) : QComboBox(parent)
{
    // Otherwise the width of every name would be measured, and the widest one would widen the control.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setEntries({});
}

void PopUpList::setEntries(const QList<Entry> &entries)
{
    const std::optional<QUuid> chosen = chosenID();
    auto *next = new EntryModel(entries, this);
    {
        const QSignalBlocker blocker(this); // on the way there nothing is chosen
        setModel(next); // deletes the one before
        setCurrentIndex(next->rowOf(chosen));
    }
    if (chosenID() != chosen)
        Q_EMIT currentIndexChanged(currentIndex());
    update();
}

std::optional<QUuid> PopUpList::chosenID() const
{
    const QVariant id = currentData();
    return id.isValid() ? std::optional(id.toUuid()) : std::nullopt;
}

/// Opening the list measures every name, to make the list as wide as the widest, and every row. But the list is to be
/// as wide as the control, and its rows are alike, so the names are kept back meanwhile.
void PopUpList::showPopup()
{
    if (auto *list = qobject_cast<QListView *>(view()))
        list->setUniformItemSizes(true);
    auto &entries = static_cast<EntryModel &>(*model());
    entries.setHidesNames(true);
    QComboBox::showPopup();
    entries.setHidesNames(false);
    view()->viewport()->update();
}
