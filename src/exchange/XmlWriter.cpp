#include "exchange/XmlWriter.h"

#include <QChar>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr qsizetype indentation = 4;
// A block of this size comes straight from the system: memory that isn't written to costs nothing, and the block grows
// without leaving smaller copies of itself behind.
constexpr qsizetype initialRoom = qsizetype(64) << 20; // bytes

enum class Context { text, attribute };

/// What a unit below U+0080 becomes; empty for one that stands for itself.
constexpr QByteArrayView escaped(unsigned unit, Context context)
{
    const bool isAttribute = context == Context::attribute;
    switch (unit) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '\r': // a reader takes a bare one for a line feed
        return "&#13;";
    case '"':
        return isAttribute ? QByteArrayView("&quot;") : QByteArrayView();
    case '\t': // a reader takes bare ones in attributes for blanks
        return isAttribute ? QByteArrayView("&#9;") : QByteArrayView();
    case '\n':
        return isAttribute ? QByteArrayView("&#10;") : QByteArrayView();
    default:
        return unit < 0x20 ? QByteArrayView("\xEF\xBF\xBD") : QByteArrayView();
    }
}

constexpr auto plainUnits(Context context)
{
    std::array<bool, 0x80> plain{};
    for (unsigned unit = 0; unit < plain.size(); ++unit)
        plain[unit] = escaped(unit, context).isEmpty();
    return plain;
}

/// Encodes one value for one context.
template <Context context>
class Encoder {
public:
    /// No unit makes more bytes than "&quot;".
    static constexpr qsizetype maxBytesPerUnit = 6;

    explicit Encoder(char *output) : m_output(output) { }

    [[nodiscard]] char *end() const noexcept { return m_output; }

    void encode(QLatin1StringView value)
    {
        for (const char character : value)
            encodeScalar(static_cast<unsigned char>(character));
    }

    /// `value` must not end in the middle of a surrogate pair.
    void encode(QStringView value)
    {
        const char16_t *unit = value.utf16();
        const char16_t *const end = unit + value.size();
        while (unit != end) {
            if (*unit < 0x80 && isPlain[*unit]) {
                *m_output++ = char(*unit++);
            } else if (QChar::isHighSurrogate(*unit) && unit + 1 != end && QChar::isLowSurrogate(unit[1])) {
                encodeScalar(QChar::surrogateToUcs4(unit[0], unit[1]));
                unit += 2;
            } else {
                encodeScalar(isExpressible(*unit) ? *unit : u'\uFFFD');
                ++unit;
            }
        }
    }

private:
    static constexpr std::array<bool, 0x80> isPlain = plainUnits(context);

    static constexpr bool isExpressible(char16_t unit) { return !QChar::isSurrogate(unit) && unit < 0xFFFE; }

    void encodeScalar(char32_t scalar)
    {
        if (scalar < 0x80) {
            if (isPlain[scalar])
                put(scalar);
            else
                put(escaped(scalar, context));
        } else if (scalar < 0x800) {
            put(0xC0 | scalar >> 6);
            put(0x80 | (scalar & 0x3F));
        } else if (scalar < 0x10000) {
            put(0xE0 | scalar >> 12);
            put(0x80 | (scalar >> 6 & 0x3F));
            put(0x80 | (scalar & 0x3F));
        } else {
            put(0xF0 | scalar >> 18);
            put(0x80 | (scalar >> 12 & 0x3F));
            put(0x80 | (scalar >> 6 & 0x3F));
            put(0x80 | (scalar & 0x3F));
        }
    }

    void put(char32_t byte) { *m_output++ = char(byte); }
    void put(QByteArrayView bytes)
    {
        std::memcpy(m_output, bytes.data(), size_t(bytes.size()));
        m_output += bytes.size();
    }

    char *m_output;
};

/// How many units of a non-empty `rest` to encode in one go: no pair is torn apart.
qsizetype strideIn(QStringView rest)
{
    constexpr qsizetype stride = 4096;
    if (rest.size() <= stride)
        return rest.size();
    return rest[stride - 1].isHighSurrogate() ? stride + 1 : stride;
}

qsizetype strideIn(QLatin1StringView rest)
{
    return rest.size();
}

template <Context context, typename Value>
void appendEncoded(QByteArray &output, Value value)
{
    while (!value.isEmpty()) {
        const qsizetype stride = strideIn(value);
        const qsizetype used = output.size();
        output.resize(used + stride * Encoder<context>::maxBytesPerUnit);
        Encoder<context> encoder(output.data() + used);
        encoder.encode(value.first(stride));
        output.truncate(encoder.end() - output.constData());
        value = value.sliced(stride);
    }
}

} // namespace

XmlWriter::XmlWriter()
{
    m_output.reserve(initialRoom);
    m_output.append(R"(<?xml version="1.0" encoding="UTF-8"?>)");
}

void XmlWriter::startElement(QByteArrayView name)
{
    closeStartTag();
    startLine();
    m_output.append('<').append(name);
    m_openElements.push_back(name);
    m_isInStartTag = true;
    m_hasText = false;
}

void XmlWriter::attribute(QByteArrayView name, QStringView value)
{
    writeAttribute(name, value);
}

void XmlWriter::attribute(QByteArrayView name, QLatin1StringView value)
{
    writeAttribute(name, value);
}

template <typename Value>
void XmlWriter::writeAttribute(QByteArrayView name, Value value)
{
    Q_ASSERT(m_isInStartTag);
    m_output.append(' ').append(name).append("=\"");
    appendEncoded<Context::attribute>(m_output, value);
    m_output.append('"');
}

void XmlWriter::text(QStringView text)
{
    closeStartTag();
    appendEncoded<Context::text>(m_output, text);
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
