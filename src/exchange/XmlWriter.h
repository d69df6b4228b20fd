#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QStringView>

#include <vector>

/// Writes an indented XML document in UTF-8 into memory.
///
/// The document is well-formed whatever the values hold: what XML can't express (most control characters, U+FFFE,
/// U+FFFF, halves of surrogate pairs) becomes U+FFFD, and tabs and line ends come back from a reader as they were.
/// Names of elements and attributes are the caller's own and are written as they are.
class XmlWriter {
public:
    /// Writes the XML declaration.
    XmlWriter();

    /// `name` must live until the element is ended.
    void startElement(QByteArrayView name);
    /// To be called before the element gets any content.
    void attribute(QByteArrayView name, QStringView value);
    void attribute(QByteArrayView name, QLatin1StringView value);
    /// An element with text has no child elements.
    void text(QStringView text);
    void endElement();

    /// The document, once every element is ended.
    [[nodiscard]] QByteArray takeDocument();

private:
    template <typename Value>
    void writeAttribute(QByteArrayView name, Value value);
    void closeStartTag();
    void startLine();

    QByteArray m_output;
    std::vector<QByteArrayView> m_openElements;
    bool m_isInStartTag = false;
    bool m_hasText = false; ///< the innermost open element
};
