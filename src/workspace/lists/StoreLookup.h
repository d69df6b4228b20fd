#pragma once

#include "library/LibraryStore.h"

#include <algorithm>
#include <optional>

/// The store's records by their ids. Keep an id rather than a record while waiting for the user's answer: the lists may
/// have changed when it comes.
namespace StoreLookup {

template <typename Item>
[[nodiscard]] std::optional<Item> inList(const QList<Item> &list, const QUuid &id)
{
    const auto found = std::ranges::find(list, id, &Item::id);
    return found == list.end() ? std::nullopt : std::optional(*found);
}

[[nodiscard]] inline std::optional<Code> code(const LibraryStore &store, const QUuid &id)
{
    return inList(store.codes().get(), id);
}

[[nodiscard]] inline std::optional<Document> document(const LibraryStore &store, const QUuid &id)
{
    return inList(store.documents().get(), id);
}

[[nodiscard]] inline std::optional<Project> project(const LibraryStore &store, const QUuid &id)
{
    return inList(store.projects().get(), id);
}

} // namespace StoreLookup
