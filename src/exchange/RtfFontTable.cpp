#include "exchange/RtfFontTable.h"

#include "exchange/RtfCodePage.h"

#include <algorithm>
#include <array>

namespace {

constexpr qint32 symbolCharset = 2;

struct Charset {
    qint32 number;
    int codePage;
};

// Western, Macintosh (77 to 89), Japanese, Korean, Simplified and Traditional Chinese, Greek, Turkish, Vietnamese,
// Hebrew, Arabic (178 to 180), Hebrew, Baltic, Russian, Thai, Central European and DOS. The others, such as 1
// (default), take the document's code page.
constexpr auto charsets = std::to_array<Charset>({{0, 1252}, {77, 10000}, {78, 10001}, {79, 10003}, {80, 10008},
    {81, 10002}, {85, 10006}, {86, 10081}, {88, 10029}, {89, 10007}, {128, 932}, {129, 949}, {134, 936}, {136, 950},
    {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {179, 1256}, {180, 1256}, {181, 1255}, {186, 1257},
    {204, 1251}, {222, 874}, {238, 1250}, {254, 437}, {255, 850}});

int codePageOf(qint32 charset)
{
    const auto *place = std::ranges::find(charsets, charset, &Charset::number);
    return place != charsets.end() ? place->codePage : 0;
}

} // namespace

std::optional<int> RtfFontTable::codePage(qint32 font) const
{
    if (font < 0 || std::size_t(font) >= m_codePages.size() || m_codePages[std::size_t(font)] == 0)
        return {};
    return m_codePages[std::size_t(font)];
}

void RtfFontTable::beginFont(qint32 font)
{
    m_font = font;
    m_isSymbolFont = false;
}

void RtfFontTable::setCharset(qint32 charset)
{
    m_isSymbolFont = charset == symbolCharset;
    store(codePageOf(charset));
}

void RtfFontTable::setCodePage(qint32 number)
{
    if (RtfCodePages::knows(number))
        store(number);
}

void RtfFontTable::setName(QByteArrayView name)
{
    if (!m_isSymbolFont)
        return;
    if (name.startsWith("Symbol"))
        store(RtfCodePages::symbolFont);
    else if (name.startsWith("Wingdings"))
        store(RtfCodePages::dingbatFont);
}

void RtfFontTable::store(int codePage)
{
    if (m_font < 0 || m_font >= fontLimit)
        return;
    const auto index = std::size_t(m_font);
    if (index >= m_codePages.size())
        m_codePages.resize(index + 1);
    m_codePages[index] = quint16(codePage);
}
