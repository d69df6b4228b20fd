#pragma once

#include "platform/LocalizedError.h"

#include <QByteArrayView>

#include <functional>
#include <optional>

class QIODevice;

/// Why a document can't be read, in the parser's words.
class XmlError : public LocalizedError {
public:
    explicit XmlError(QString description);

    [[nodiscard]] QString description() const override { return m_description; }

private:
    QString m_description;
};

/// The attributes of one start tag. Lives for the call that hands it over.
class XmlAttributes {
public:
    /// For the reader: `count` attributes in the parser's own layout.
    XmlAttributes(const unsigned char **attributes, int count) : m_attributes(attributes), m_count(count) { }

    /// The value, in UTF-8, of the attribute of that name without a prefix.
    [[nodiscard]] std::optional<QByteArrayView> value(QByteArrayView name) const;

private:
    const unsigned char **m_attributes;
    int m_count;
};

/// Is told what a document holds, in its order. Names are local names: a prefix or a namespace makes no difference.
/// What a handler throws ends the reading.
class XmlHandler {
public:
    virtual ~XmlHandler() = default;
    virtual void startElement(QByteArrayView name, const XmlAttributes &attributes) = 0;
    virtual void endElement() = 0;
    /// A piece of text, in UTF-8; one stretch of text may come in several pieces.
    virtual void characters(QByteArrayView text) = 0;
};

namespace XmlReader {
/// Reads a document to its end, in constant memory and linear time whatever it holds. Nothing but `device` is looked
/// at: a reference to any entity that a document declares is refused, and so are tags of absurd size. Prints nothing.
/// Throws XmlError, also if the device can't be read, and what the handler throws. `onPiece` is called for each piece
/// of some ten thousand bytes and may end the reading by throwing, too.
void read(
    QIODevice &device, XmlHandler &handler, const std::function<void()> &onPiece = [] {});
} // namespace XmlReader
