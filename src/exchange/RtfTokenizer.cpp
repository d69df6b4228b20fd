#include "exchange/RtfTokenizer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>

namespace {

enum class ByteKind : quint8 { text, ignored, syntax };

// Line ends and other control characters have no meaning.
constexpr std::array<ByteKind, 256> byteKinds = [] {
    std::array<ByteKind, 256> kinds{};
    std::fill_n(kinds.begin(), 0x20, ByteKind::ignored);
    kinds[0x7F] = ByteKind::ignored;
    kinds['\t'] = ByteKind::text;
    for (const char byte : {'{', '}', '\\'})
        kinds[uchar(byte)] = ByteKind::syntax;
    return kinds;
}();

ByteKind kindOf(char byte)
{
    return byteKinds[uchar(byte)];
}

constexpr bool isLetter(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

} // namespace

RtfTokenizer::RtfTokenizer(QByteArrayView bytes) : m_position(bytes.begin()), m_end(bytes.end())
{
}

RtfToken RtfTokenizer::next()
{
    m_position = std::find_if(m_position, m_end, [](char byte) { return kindOf(byte) != ByteKind::ignored; });
    if (m_position == m_end)
        return {};
    switch (*m_position) {
    case '{':
        ++m_position;
        return {.kind = RtfToken::Kind::groupStart};
    case '}':
        ++m_position;
        return {.kind = RtfToken::Kind::groupEnd};
    case '\\':
        ++m_position;
        return escape();
    default:
        return textRun();
    }
}

void RtfTokenizer::skipToGroupEnd()
{
    qint64 openGroups = 0;
    while (true) {
        m_position = std::find_if(m_position, m_end, [](char byte) { return kindOf(byte) == ByteKind::syntax; });
        if (m_position == m_end || (*m_position == '}' && openGroups == 0))
            return;
        const RtfToken token = next();
        if (token.kind == RtfToken::Kind::groupStart)
            ++openGroups;
        else if (token.kind == RtfToken::Kind::groupEnd)
            --openGroups;
    }
}

RtfToken RtfTokenizer::escape()
{
    if (m_position == m_end)
        return {};
    if (isLetter(*m_position))
        return controlWord();
    const char symbol = *m_position++;
    if (symbol == '\'')
        return hexByte();
    return {.kind = RtfToken::Kind::symbol, .symbol = symbol};
}

RtfToken RtfTokenizer::controlWord()
{
    const char *nameStart = m_position;
    m_position = std::find_if_not(m_position, m_end, isLetter);
    const QByteArrayView name(nameStart, m_position);
    const std::optional<qint32> number = parameter();
    if (m_position != m_end && *m_position == ' ')
        ++m_position;
    if (name == "bin")
        skipBytes(number.value_or(0));
    return {.kind = RtfToken::Kind::word, .bytes = name, .parameter = number};
}

std::optional<qint32> RtfTokenizer::parameter()
{
    qint32 number = 0;
    const auto [end, error] = std::from_chars(m_position, m_end, number);
    if (error == std::errc::invalid_argument) // no digits
        return {};
    using Limits = std::numeric_limits<qint32>;
    if (error == std::errc::result_out_of_range)
        number = *m_position == '-' ? Limits::min() : Limits::max();
    m_position = end;
    return number;
}

RtfToken RtfTokenizer::hexByte()
{
    if (m_end - m_position < 2) {
        m_position = m_end;
        return {};
    }
    const char *end = m_position + 2;
    quint8 byte = 0; // unsigned, so that no sign is taken
    if (std::from_chars(m_position, end, byte, 16).ptr != end)
        return {.kind = RtfToken::Kind::symbol, .symbol = '\''};
    m_position = end;
    return {.kind = RtfToken::Kind::hexByte, .symbol = char(byte)};
}

RtfToken RtfTokenizer::textRun()
{
    const char *start = m_position;
    m_position = std::find_if(m_position, m_end, [](char byte) { return kindOf(byte) != ByteKind::text; });
    return {.kind = RtfToken::Kind::text, .bytes = QByteArrayView(start, m_position)};
}

void RtfTokenizer::skipBytes(qint64 count)
{
    m_position += std::clamp<qint64>(count, 0, m_end - m_position);
}
