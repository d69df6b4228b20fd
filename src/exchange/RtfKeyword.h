#pragma once

#include <QByteArrayView>

/// What a control word means to a reader of plain text.
struct RtfKeyword {
    enum class Meaning : quint8 {
        none, ///< formatting, or a word we don't know
        character, ///< stands for the character `value`
        paragraphEnd, ///< ends a paragraph, or a larger part of the document
        cellEnd,
        rowEnd,
        unicode, ///< the parameter is a UTF-16 code unit
        fallbackLength, ///< the parameter is the number of characters to leave out after each `unicode`
        font,
        defaultFont,
        fontCharset,
        fontCodePage,
        documentCodePage, ///< the parameter is a code page, or else `value`
        plain, ///< resets the character formatting
        hidden,
        deleted, ///< taken out by a revision, or moved elsewhere by it
        skippedDestination, ///< begins a group whose text isn't part of the running text
        textDestination, ///< begins a group of running text, even if it's marked as one that may be left out
        listLabel, ///< begins a group with the number or bullet of a paragraph, as text
        textBox, ///< begins a group of text that is laid out on its own
        fontTable, ///< begins the group with the document's fonts
        alternatives, ///< begins a group of two groups with the same text, first in bytes and then in Unicode
    };

    Meaning meaning = Meaning::none;
    quint16 value = 0;

    /// The keyword called `name`, without its backslash; upper and lower case differ.
    [[nodiscard]] static RtfKeyword named(QByteArrayView name);
};
