#pragma once

#include <QByteArrayView>
#include <QString>

class RtfCodePage;

/// Builds a document's text from bytes, UTF-16 code units and ends of cells and rows. The result is valid UTF-16
/// without control characters other than tabs and line feeds.
class RtfTextBuilder {
public:
    /// Appends bytes of a code page, which must outlive the builder. A character may be split over consecutive
    /// calls.
    void appendBytes(QByteArrayView bytes, RtfCodePage &page);
    /// Appends a UTF-16 code unit. Unpaired surrogates become U+FFFD; control characters are dropped.
    void appendUnit(char16_t unit);
    /// Appends a code point, up to U+10FFFF.
    void appendCodePoint(char32_t codePoint);
    /// Ends a table cell with a tab.
    void endCell();
    /// Ends a table row with a line feed, in place of the tab of its last cell.
    void endRow();
    /// Ends the line unless it's empty.
    void startLine();
    /// The length of the text so far, in UTF-16 code units.
    [[nodiscard]] qsizetype endOfText();
    /// Removes what was appended after the length was `start`, if it is only blanks.
    void dropIfBlank(qsizetype start);

    [[nodiscard]] QString takeText();

private:
    void finishBytes();

    QString m_text;
    RtfCodePage *m_openPage = nullptr; // may hold back bytes of an unfinished character
    char16_t m_highSurrogate = 0;
    // The text's lengths after the last high surrogate and the last cell; they matter only while it hasn't grown.
    qsizetype m_highSurrogateEnd = -1;
    qsizetype m_cellEnd = -1;
};
