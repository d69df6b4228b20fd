#pragma once

/// Gives assistive technologies an interface to every `CodingTextView` that is created from now on. To be called before
/// the first one is: Qt's interface for a text edit, which it would get else, reads the laid-out document instead of
/// the given text, and lays all of it out.
void installAccessibleCodingText();
