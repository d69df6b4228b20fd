#pragma once

#include <QByteArray>
#include <QStringView>

#include <vector>

/// Writes an indented XML document in UTF-8 into memory.
///
/// The document is well-formed whatever the values hold: what XML can't express (most control characters, U+FFFE,
/// U+FFFF, unpaired surrogates) becomes U+FFFD, and tabs and line ends are read back as they were. Names of elements
/// and attributes are the caller's own and aren't checked.
class XmlWriter {
public:
    /// Writes the XML declaration.
    XmlWriter();

    /// `name` must live until the element is ended.
    void startElement(QByteArrayView name);
    /// To be called before the element gets any content.
    void attribute(QByteArrayView name, QStringView value);
    /// For a value that is ASCII without characters that need escaping, as identifiers and numbers are.
    void plainAttribute(QByteArrayView name, QByteArrayView value);
    /// An element with text has no child elements.
    void text(QStringView text);
    void endElement();

    /// The document, once every element is ended.
    [[nodiscard]] QByteArray takeDocument();

private:
    void closeStartTag();
    void startLine();

    QByteArray m_output;
    std::vector<QByteArrayView> m_openElements;
    bool m_isInStartTag = false;
    bool m_hasText = false; ///< the innermost open element
};
