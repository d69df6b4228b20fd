#include "exchange/XmlWriter.h"

#include <QStringEncoder>

#include <array>

namespace {

constexpr qsizetype indentation = 4;
// A block of this size comes straight from the system: memory that isn't written to costs nothing.
constexpr qsizetype initialRoom = qsizetype(64) << 20; // bytes
constexpr qsizetype roomPerElement = qsizetype(1) << 16; // bytes; more than nearly any element takes

// What each byte of UTF-8 is written as; empty for one that stands for itself.
using Escapes = std::array<QByteArrayView, 256>;

constexpr Escapes textEscapes = [] {
    Escapes escapes{};
    for (size_t control = 0; control < 0x20; ++control)
        escapes[control] = "\xEF\xBF\xBD"; // U+FFFD
    escapes['\t'] = escapes['\n'] = {};
    escapes['\r'] = "&#13;"; // a reader would turn a literal one into a line feed
    escapes['&'] = "&amp;";
    escapes['<'] = "&lt;";
    escapes['>'] = "&gt;";
    // The last bytes of U+FFFE and U+FFFF, among other characters; U+FFFD differs from them in this byte alone.
    escapes[0xBE] = escapes[0xBF] = "\xBD";
    return escapes;
}();

constexpr Escapes attributeEscapes = [] {
    Escapes escapes = textEscapes;
    escapes['"'] = "&quot;";
    escapes['\t'] = "&#9;"; // a reader would turn literal ones into spaces
    escapes['\n'] = "&#10;";
    return escapes;
}();

void appendEscaped(QByteArray &output, QStringView value, const Escapes &escapes)
{
    // Stateless, so that a high surrogate at the end isn't kept for a next call.
    QStringEncoder encoder(QStringEncoder::Utf8, QStringConverter::Flag::Stateless);
    const QByteArray utf8 = encoder(value);
    const char *copied = utf8.cbegin();
    for (const char *byte = copied; byte != utf8.cend(); ++byte) {
        const QByteArrayView escape = escapes[uchar(*byte)];
        if (escape.isEmpty())
            continue;
        const bool isContinuation = uchar(*byte) >= 0x80;
        if (isContinuation && !QByteArrayView(utf8.cbegin(), byte).endsWith("\xEF\xBF"))
            continue;
        output.append(copied, byte - copied).append(escape);
        copied = byte + 1;
    }
    output.append(copied, utf8.cend() - copied);
}

} // namespace

XmlWriter::XmlWriter()
{
    m_output.reserve(initialRoom);
    m_output.append(R"(<?xml version="1.0" encoding="UTF-8"?>)");
}

void XmlWriter::startElement(QByteArrayView name)
{
    // append() copies a block that grows, reserve() doesn't.
    if (m_output.capacity() - m_output.size() < roomPerElement)
        m_output.reserve(m_output.capacity() * 2);
    closeStartTag();
    startLine();
    m_output.append('<').append(name);
    m_openElements.push_back(name);
    m_isInStartTag = true;
    m_hasText = false;
}

void XmlWriter::attribute(QByteArrayView name, QStringView value)
{
    Q_ASSERT(m_isInStartTag);
    m_output.append(' ').append(name).append("=\"");
    appendEscaped(m_output, value, attributeEscapes);
    m_output.append('"');
}

void XmlWriter::plainAttribute(QByteArrayView name, QByteArrayView value)
{
    Q_ASSERT(m_isInStartTag);
    m_output.append(' ').append(name).append("=\"").append(value).append('"');
}

void XmlWriter::text(QStringView text)
{
    closeStartTag();
    appendEscaped(m_output, text, textEscapes);
    m_hasText = true;
}

void XmlWriter::endElement()
{
    const QByteArrayView name = m_openElements.back();
    m_openElements.pop_back();
    if (m_isInStartTag) {
        m_output.append("/>");
    } else {
        if (!m_hasText)
            startLine();
        m_output.append("</").append(name).append('>');
    }
    m_isInStartTag = false;
    m_hasText = false;
}

QByteArray XmlWriter::takeDocument()
{
    Q_ASSERT(m_openElements.empty());
    m_output.append('\n');
    m_output.squeeze();
    return std::exchange(m_output, {});
}

void XmlWriter::closeStartTag()
{
    if (m_isInStartTag)
        m_output.append('>');
    m_isInStartTag = false;
}

void XmlWriter::startLine()
{
    m_output.append('\n').append(indentation * qsizetype(m_openElements.size()), ' ');
}
