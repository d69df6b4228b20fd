#pragma once

#include <QString>

struct Document;

/// What lists say about a document.
namespace DocumentFacts {

/// "1,112 words · Nov 24": its length and the day when it was added, as the user's locale writes them.
[[nodiscard]] QString inOneLine(const Document &document);

} // namespace DocumentFacts
