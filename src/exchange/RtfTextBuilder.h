#pragma once

#include <QByteArrayView>
#include <QString>

class RtfCodePage;

/// Puts a document's text together from bytes, UTF-16 code units and the ends of cells and rows. What it makes is
/// valid UTF-16 without control characters other than tabs and line feeds.
class RtfTextBuilder {
public:
    /// Appends bytes of a code page, which must outlive the builder. A character may be split over calls, as long as
    /// nothing comes between them.
    void appendBytes(QByteArrayView bytes, RtfCodePage &page);
    /// Appends a UTF-16 code unit. Surrogates that don't meet their other half become U+FFFD, and control characters
    /// are dropped.
    void appendUnit(char16_t unit);
    /// Appends a Unicode code point up to U+10FFFF.
    void appendCodePoint(char32_t codePoint);
    /// Ends a table cell with a tab.
    void endCell();
    /// Ends a table row with a line feed, in place of the tab of its last cell.
    void endRow();
    /// Ends the line unless it's empty.
    void startLine();
    /// Where the text ends by now, in UTF-16 code units.
    [[nodiscard]] qsizetype endOfText();
    /// Takes back what came since the text ended at `start`, if it's nothing but blanks.
    void dropIfBlank(qsizetype start);

    [[nodiscard]] QString takeText();

private:
    void finishBytes();

    QString m_text;
    RtfCodePage *m_openPage = nullptr; // may still hold bytes back
    char16_t m_highSurrogate = 0;
    // Where the text ended after a high surrogate and after a cell; once it's longer, they no longer matter.
    qsizetype m_highSurrogateEnd = -1;
    qsizetype m_cellEnd = -1;
};
