#pragma once

#include "platform/LocalizedError.h"

/// What the user would be told about how the work failed, or "" if it didn't.
template <typename Work>
QString complaintAbout(const Work &work)
{
    try {
        work();
    } catch (const LocalizedError &error) {
        return error.description();
    }
    return {};
}
