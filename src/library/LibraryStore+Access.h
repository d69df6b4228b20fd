#pragma once

#include "library/LibraryStore.h"
#include "platform/LocalizedError.h"
#include "records/database/Request.h"

// How the store's operations reach the database; for its own sources only.

template <typename Body>
void LibraryStore::writeIgnoringFailure(Body &&body)
{
    try {
        m_queue.write(std::forward<Body>(body));
    } catch (const LocalizedError &) {
        // The operation goes on; what the next reload shows is the truth.
    }
}

template <typename Body>
auto LibraryStore::readOrEmpty(Body &&body) const
{
    try {
        return m_queue.read(std::forward<Body>(body));
    } catch (const LocalizedError &) {
        return std::invoke_result_t<Body, Database &>{};
    }
}
