#include "exchange/RtfReader.h"

#include <algorithm>
#include <utility>

namespace {

using Meaning = RtfKeyword::Meaning;

// No writer comes near. Groups beyond are counted, and what they set holds until the last one saved has ended.
constexpr std::size_t savedGroupLimit = 65536;

bool isIgnoredControl(char byte)
{
    return (uchar(byte) < 0x20 && byte != '\t') || byte == 0x7F;
}

// Writers that give no fallback where one is due must not lose a paragraph end or the next character for it.
bool endsFallback(Meaning meaning)
{
    return meaning == Meaning::unicode || meaning == Meaning::paragraphEnd || meaning == Meaning::cellEnd
        || meaning == Meaning::rowEnd;
}

bool isWantedDestination(Meaning meaning)
{
    return meaning == Meaning::textDestination || meaning == Meaning::textBox || meaning == Meaning::fontTable
        || meaning == Meaning::alternatives;
}

// Parameters are signed numbers of 16 bits; some writers give whole code points instead.
char32_t codePointOf(qint32 parameter)
{
    if (parameter >= -0x8000 && parameter < 0)
        return char32_t(parameter + 0x10000);
    const bool isCodePoint = parameter >= 0 && parameter <= 0x10FFFF;
    return isCodePoint ? char32_t(parameter) : char32_t(QChar::ReplacementCharacter);
}

// Signs of symbol fonts are moved here from the bytes 0x20 to 0xFF.
bool isSymbolSign(char32_t codePoint)
{
    return codePoint >= 0xF020 && codePoint <= 0xF0FF;
}

bool isSymbolPage(int codePage)
{
    return codePage == RtfCodePages::symbolFont || codePage == RtfCodePages::dingbatFont;
}

} // namespace

RtfReader::RtfReader(QByteArrayView document) : m_tokenizer(document)
{
}

QString RtfReader::readText()
{
    bool isInDocument = true;
    while (isInDocument) {
        const RtfToken token = m_tokenizer.next();
        read(token);
        isInDocument = token.kind != RtfToken::Kind::end && !m_outerGroups.empty();
    }
    return m_builder.takeText();
}

void RtfReader::read(const RtfToken &token)
{
    const bool isOptional = std::exchange(m_isOptional, false);
    switch (token.kind) {
    case RtfToken::Kind::end:
        return;
    case RtfToken::Kind::groupStart:
        return openGroup();
    case RtfToken::Kind::groupEnd:
        return closeGroup();
    case RtfToken::Kind::word:
        return readWord(token, isOptional);
    case RtfToken::Kind::symbol:
        return readSymbol(token.symbol);
    case RtfToken::Kind::hexByte:
        return readHexByte(token.symbol);
    case RtfToken::Kind::text:
        return readText(token.bytes);
    }
    Q_UNREACHABLE();
}

void RtfReader::openGroup()
{
    m_fallbackLeft = 0;
    const bool isSkipped = std::exchange(m_group.skipsNextGroup, false);
    if (m_outerGroups.size() < savedGroupLimit) {
        m_outerGroups.push_back(m_group);
        m_group.labelStart = noLabel; // only the group itself is the label
    } else {
        ++m_unsavedGroups;
    }
    if (isSkipped)
        m_tokenizer.skipToGroupEnd();
}

void RtfReader::closeGroup()
{
    m_fallbackLeft = 0;
    if (m_unsavedGroups > 0) {
        --m_unsavedGroups;
        return;
    }
    if (m_group.labelStart != noLabel)
        m_builder.dropIfBlank(m_group.labelStart);
    m_group = m_outerGroups.back();
    m_outerGroups.pop_back();
}

void RtfReader::readWord(const RtfToken &token, bool isOptional)
{
    const RtfKeyword keyword = RtfKeyword::named(token.bytes);
    if (endsFallback(keyword.meaning))
        m_fallbackLeft = 0;
    if (takeAsFallback())
        return;
    if (isOptional && !isWantedDestination(keyword.meaning))
        return skipDestination();
    obey(keyword, token.parameter);
}

void RtfReader::obey(RtfKeyword keyword, std::optional<qint32> parameter)
{
    switch (keyword.meaning) {
    case Meaning::none:
    case Meaning::textDestination:
        return;
    case Meaning::character:
        return appendUnit(keyword.value);
    case Meaning::paragraphEnd:
        return appendUnit(u'\n');
    case Meaning::cellEnd:
        return appendBoundary(&RtfTextBuilder::endCell);
    case Meaning::rowEnd:
        return appendBoundary(&RtfTextBuilder::endRow);
    case Meaning::listLabel:
        return beginListLabel();
    case Meaning::textBox:
        return appendBoundary(&RtfTextBuilder::startLine);
    case Meaning::unicode:
        return readUnicode(parameter);
    case Meaning::skippedDestination:
        return skipDestination();
    case Meaning::alternatives:
        m_group.skipsNextGroup = true;
        return;
    case Meaning::fontTable:
    case Meaning::font:
    case Meaning::defaultFont:
    case Meaning::fontCharset:
    case Meaning::fontCodePage:
        return obeyFontWord(keyword.meaning, parameter.value_or(0));
    case Meaning::documentCodePage:
        return setDocumentCodePage(parameter.value_or(keyword.value));
    case Meaning::fallbackLength:
        m_group.fallbackLength = std::max(0, parameter.value_or(1));
        return;
    case Meaning::plain:
        m_group.font = defaultFont;
        m_group.isHidden = m_group.isDeleted = false;
        return;
    case Meaning::hidden:
        m_group.isHidden = parameter != 0;
        return;
    case Meaning::deleted:
        m_group.isDeleted = parameter != 0;
        return;
    }
    Q_UNREACHABLE();
}

void RtfReader::obeyFontWord(RtfKeyword::Meaning meaning, qint32 number)
{
    if (meaning == Meaning::fontTable)
        m_group.isFontTable = isInInnerGroup();
    else if (meaning == Meaning::defaultFont)
        m_defaultFont = number;
    else if (meaning == Meaning::font && !m_group.isFontTable)
        m_group.font = number;
    else if (meaning == Meaning::font)
        m_fonts.beginFont(number);
    else if (meaning == Meaning::fontCharset)
        m_fonts.setCharset(number);
    else if (meaning == Meaning::fontCodePage)
        m_fonts.setCodePage(number);
}

void RtfReader::setDocumentCodePage(int number)
{
    m_documentCodePage = RtfCodePages::knows(number) ? number : RtfCodePages::western;
}

void RtfReader::beginListLabel()
{
    if (m_group.isInLabel || !isInInnerGroup() || m_unsavedGroups > 0)
        return;
    m_group.isInLabel = true;
    m_group.labelStart = m_builder.endOfText();
}

void RtfReader::skipDestination()
{
    if (isInInnerGroup())
        m_tokenizer.skipToGroupEnd();
}

void RtfReader::readUnicode(std::optional<qint32> parameter)
{
    if (!parameter)
        return;
    const char32_t codePoint = codePointOf(*parameter);
    if (isSymbolSign(codePoint) && isSymbolPage(codePage())) {
        const char byte = char(codePoint & 0xFF);
        appendBytes(QByteArrayView(&byte, 1));
    } else if (showsText()) {
        m_builder.appendCodePoint(codePoint);
    }
    m_fallbackLeft = m_group.fallbackLength;
}

void RtfReader::readSymbol(char symbol)
{
    const bool isParagraphEnd = symbol == '\r' || symbol == '\n';
    if (isParagraphEnd)
        m_fallbackLeft = 0;
    if (takeAsFallback())
        return;
    switch (symbol) {
    case '\r':
    case '\n':
        return appendUnit(u'\n');
    case '\\':
    case '{':
    case '}':
        return appendBytes(QByteArrayView(&symbol, 1)); // may be the second half of a character
    case '~':
        return appendUnit(QChar::Nbsp);
    case '_':
        return appendUnit(u'\u2011');
    case '\t':
        return appendUnit(u'\t');
    case '\'':
        return appendUnit(QChar::ReplacementCharacter); // without its digits
    case '*':
        m_isOptional = true;
        return;
    default:
        return; // optional hyphens and signs for index entries, which nobody sees within a line
    }
}

void RtfReader::readHexByte(char byte)
{
    if (takeAsFallback())
        return;
    if (byte == '\r' || byte == '\n')
        appendUnit(u'\n');
    else if (!isIgnoredControl(byte))
        appendBytes(QByteArrayView(&byte, 1));
}

void RtfReader::readText(QByteArrayView bytes)
{
    const qsizetype leftOut = std::min<qsizetype>(m_fallbackLeft, bytes.size());
    m_fallbackLeft -= qint32(leftOut);
    const QByteArrayView rest = bytes.sliced(leftOut);
    if (m_group.isFontTable)
        m_fonts.setName(rest);
    else if (!rest.isEmpty())
        appendBytes(rest);
}

bool RtfReader::takeAsFallback()
{
    if (m_fallbackLeft == 0)
        return false;
    --m_fallbackLeft;
    return true;
}

bool RtfReader::isInInnerGroup() const
{
    return m_outerGroups.size() > 1;
}

bool RtfReader::showsText() const
{
    return !m_group.isFontTable && !m_group.isHidden && !m_group.isDeleted;
}

int RtfReader::codePage() const
{
    const qint32 font = m_group.font == defaultFont ? m_defaultFont : m_group.font;
    return m_fonts.codePage(font).value_or(m_documentCodePage);
}

void RtfReader::appendBytes(QByteArrayView bytes)
{
    if (showsText())
        m_builder.appendBytes(bytes, m_pages.page(codePage()));
}

void RtfReader::appendUnit(char16_t unit)
{
    if (showsText())
        m_builder.appendUnit(unit);
}

void RtfReader::appendBoundary(void (RtfTextBuilder::*boundary)())
{
    if (showsText())
        (m_builder.*boundary)();
}
