#include "exchange/RtfText.h"

#include "exchange/RtfCodePage.h"
#include "exchange/RtfFontTable.h"
#include "exchange/RtfKeyword.h"
#include "exchange/RtfTextBuilder.h"
#include "exchange/RtfTokenizer.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using Meaning = RtfKeyword::Meaning;

// Far more than any writer nests. Deeper groups are only counted: formatting set in them lasts until the deepest saved
// group ends.
constexpr std::size_t savedGroupLimit = 65536;

bool isIgnoredControl(char byte)
{
    return (uchar(byte) < 0x20 && byte != '\t') || byte == 0x7F;
}

// Some writers omit the fallback after a Unicode character; a paragraph end or the next character isn't one.
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

// Parameters are signed 16-bit numbers, but some writers give whole code points.
char32_t codePointOf(qint32 parameter)
{
    if (parameter >= -0x8000 && parameter < 0)
        return char32_t(parameter + 0x10000);
    const bool isCodePoint = parameter >= 0 && parameter <= 0x10FFFF;
    return isCodePoint ? char32_t(parameter) : char32_t(QChar::ReplacementCharacter);
}

// Writers map the bytes 0x20 to 0xFF of symbol fonts to this part of the private use area.
bool isSymbolSign(char32_t codePoint)
{
    return codePoint >= 0xF020 && codePoint <= 0xF0FF;
}

bool isSymbolPage(int codePage)
{
    return codePage == RtfCodePages::symbolFont || codePage == RtfCodePages::dingbatFont;
}

/// Reads a Rich Text document once from front to back and collects its running text.
class Reader {
public:
    /// `document` begins with its first brace and must outlive the reader.
    explicit Reader(QByteArrayView document) : m_tokenizer(document) { }

    /// The text; to be called once.
    [[nodiscard]] QString readText()
    {
        bool isInDocument = true;
        while (isInDocument) {
            const RtfToken token = m_tokenizer.next();
            read(token);
            isInDocument = token.kind != RtfToken::Kind::end && !m_outerGroups.empty();
        }
        return m_builder.takeText();
    }

private:
    static constexpr qint32 defaultFont = -1; ///< the one that the document declares as its default
    static constexpr qsizetype noLabel = -1;

    /// State that a group inherits from its parent and that ends with the group.
    struct Group {
        qint32 font = defaultFont;
        qint32 fallbackLength = 1;
        qsizetype labelStart = noLabel; ///< length of the text where this list label began
        bool isInLabel = false; ///< of this group or a parent: nested labels would be scanned again and again
        bool isFontTable = false;
        bool isHidden = false;
        bool isDeleted = false;
        bool skipsNextGroup = false;
    };

    void read(const RtfToken &token)
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

    void openGroup()
    {
        m_fallbackLeft = 0;
        const bool isSkipped = std::exchange(m_group.skipsNextGroup, false);
        if (m_outerGroups.size() < savedGroupLimit) {
            m_outerGroups.push_back(m_group);
            m_group.labelStart = noLabel; // an inner group is no label of its own
        } else {
            ++m_unsavedGroups;
        }
        if (isSkipped)
            m_tokenizer.skipToGroupEnd();
    }

    void closeGroup()
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

    void readWord(const RtfToken &token, bool isOptional)
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

    void obey(RtfKeyword keyword, std::optional<qint32> parameter)
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

    void obeyFontWord(Meaning meaning, qint32 number)
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

    void setDocumentCodePage(int number)
    {
        m_documentCodePage = RtfCodePages::knows(number) ? number : RtfCodePages::western;
    }

    void beginListLabel()
    {
        if (m_group.isInLabel || !isInInnerGroup() || m_unsavedGroups > 0)
            return;
        m_group.isInLabel = true;
        m_group.labelStart = m_builder.endOfText();
    }

    void skipDestination()
    {
        if (isInInnerGroup())
            m_tokenizer.skipToGroupEnd();
    }

    void readUnicode(std::optional<qint32> parameter)
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

    void readSymbol(char symbol)
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
            return appendBytes(QByteArrayView(&symbol, 1)); // may be the second byte of a character
        case '~':
            return appendUnit(QChar::Nbsp);
        case '_':
            return appendUnit(u'\u2011');
        case '\t':
            return appendUnit(u'\t');
        case '\'':
            return appendUnit(QChar::ReplacementCharacter); // its hexadecimal digits are missing
        case '*':
            m_isOptional = true;
            return;
        default:
            return; // optional hyphens and index marks, which are invisible within a line
        }
    }

    void readHexByte(char byte)
    {
        if (takeAsFallback())
            return;
        if (byte == '\r' || byte == '\n')
            appendUnit(u'\n');
        else if (!isIgnoredControl(byte))
            appendBytes(QByteArrayView(&byte, 1));
    }

    void readText(QByteArrayView bytes)
    {
        const qsizetype leftOut = std::min<qsizetype>(m_fallbackLeft, bytes.size());
        m_fallbackLeft -= qint32(leftOut);
        const QByteArrayView rest = bytes.sliced(leftOut);
        if (m_group.isFontTable)
            m_fonts.setName(rest);
        else if (!rest.isEmpty())
            appendBytes(rest);
    }

    /// Returns true, and counts it, if the current character is a fallback for the Unicode character before it.
    [[nodiscard]] bool takeAsFallback()
    {
        if (m_fallbackLeft == 0)
            return false;
        --m_fallbackLeft;
        return true;
    }

    /// Whether a group inside the document's own is open: a destination directly in that one would swallow the rest.
    [[nodiscard]] bool isInInnerGroup() const { return m_outerGroups.size() > 1; }

    [[nodiscard]] bool showsText() const { return !m_group.isFontTable && !m_group.isHidden && !m_group.isDeleted; }

    [[nodiscard]] int codePage() const
    {
        const qint32 font = m_group.font == defaultFont ? m_defaultFont : m_group.font;
        return m_fonts.codePage(font).value_or(m_documentCodePage);
    }

    void appendBytes(QByteArrayView bytes)
    {
        if (showsText())
            m_builder.appendBytes(bytes, m_pages.page(codePage()));
    }

    void appendUnit(char16_t unit)
    {
        if (showsText())
            m_builder.appendUnit(unit);
    }

    void appendBoundary(void (RtfTextBuilder::*boundary)())
    {
        if (showsText())
            (m_builder.*boundary)();
    }

    RtfTokenizer m_tokenizer;
    RtfCodePages m_pages;
    RtfTextBuilder m_builder;
    RtfFontTable m_fonts;
    int m_documentCodePage = RtfCodePages::western;
    qint32 m_defaultFont = defaultFont;
    Group m_group;
    std::vector<Group> m_outerGroups; // at most `savedGroupLimit`
    qint64 m_unsavedGroups = 0;
    qint32 m_fallbackLeft = 0; // fallback characters still to skip after a Unicode character
    bool m_isOptional = false; // the last token was \*
};

QByteArrayView withoutLeadingBlanks(QByteArrayView bytes)
{
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    if (bytes.startsWith(byteOrderMark))
        bytes = bytes.sliced(byteOrderMark.size());
    const auto isBlank = [](char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); };
    const auto *start = std::find_if_not(bytes.begin(), bytes.end(), isBlank);
    return bytes.sliced(start - bytes.begin());
}

} // namespace

std::optional<QString> RtfText::plainText(QByteArrayView rtf)
{
    const QByteArrayView document = withoutLeadingBlanks(rtf);
    if (!document.startsWith("{\\rtf"))
        return {};
    return Reader(document).readText();
}
