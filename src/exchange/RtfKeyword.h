#pragma once

#include <QByteArrayView>

/// What a control word means for the plain text.
struct RtfKeyword {
    enum class Meaning : quint8 {
        none, ///< formatting, or unknown
        character, ///< stands for the character `value`
        paragraphEnd, ///< of a paragraph or a larger part
        cellEnd,
        rowEnd,
        unicode, ///< the parameter is a UTF-16 code unit
        fallbackLength, ///< the parameter is the number of characters to skip after each `unicode`
        font,
        defaultFont,
        fontCharset,
        fontCodePage,
        documentCodePage, ///< the parameter is the code page, `value` if there is none
        plain, ///< resets the character formatting
        hidden,
        deleted, ///< removed or moved elsewhere by a tracked change
        skippedDestination, ///< starts a group that isn't running text
        textDestination, ///< starts a group of running text, even if marked as ignorable
        listLabel, ///< starts a group with a paragraph's number or bullet as text
        textBox, ///< starts a group whose text is laid out separately
        fontTable, ///< starts the group of the document's fonts
        alternatives, ///< starts a group of two groups with the same text: in bytes, then in Unicode
    };

    Meaning meaning = Meaning::none;
    quint16 value = 0;

    /// `name` is without its backslash and case-sensitive.
    [[nodiscard]] static RtfKeyword named(QByteArrayView name);
};
