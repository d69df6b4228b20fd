#pragma once

#include "exchange/ExchangeError.h"

#include <QByteArrayView>

#include <functional>
#include <optional>

class QIODevice;

/// Why a document can't be read, in the parser's words.
class XmlError : public ExchangeError {
public:
    using ExchangeError::ExchangeError;
};

/// The attributes of a start tag. Valid only during the call that gets it.
class XmlAttributes {
public:
    /// `attributes` is in the parser's own layout.
    XmlAttributes(const unsigned char **attributes, int count) : m_attributes(attributes), m_count(count) { }

    /// The value, in UTF-8, of the attribute that has this name and no prefix.
    [[nodiscard]] std::optional<QByteArrayView> value(QByteArrayView name) const;

private:
    const unsigned char **m_attributes;
    int m_count;
};

/// Gets a document's content in its order. Names are local names: prefixes and namespaces are ignored. The reading
/// stops when a handler throws.
class XmlHandler {
public:
    virtual ~XmlHandler() = default;
    virtual void startElement(QByteArrayView name, const XmlAttributes &attributes) = 0;
    virtual void endElement() = 0;
    /// A piece of text, in UTF-8; a text may come in several pieces.
    virtual void characters(QByteArrayView text) = 0;
};

namespace XmlReader {
/// Reads a whole document in constant memory and linear time. Reads nothing but `device`: references to entities that
/// the document declares are refused, as are tags of absurd size. Throws XmlError, also if the device can't be read,
/// and what the handler throws. `onPiece` is called for each piece of some ten thousand bytes and may stop the reading
/// by throwing.
void read(
    QIODevice &device, XmlHandler &handler, const std::function<void()> &onPiece = [] {});
} // namespace XmlReader
