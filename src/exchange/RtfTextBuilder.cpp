#include "exchange/RtfTextBuilder.h"

#include "exchange/RtfCodePage.h"
#include "records/TextTrimming.h"

#include <utility>

namespace {

bool isControl(char16_t unit)
{
    return (unit < 0x20 && unit != u'\t' && unit != u'\n') || (unit >= 0x7F && unit < 0xA0);
}

} // namespace

void RtfTextBuilder::appendBytes(QByteArrayView bytes, RtfCodePage &page)
{
    if (m_openPage != &page)
        finishBytes();
    m_openPage = &page;
    page.decode(bytes, m_text);
}

void RtfTextBuilder::appendUnit(char16_t unit)
{
    finishBytes();
    if (QChar::isLowSurrogate(unit) && m_text.size() == m_highSurrogateEnd) {
        m_text.back() = QChar(m_highSurrogate);
        m_text.append(QChar(unit));
    } else if (QChar::isSurrogate(unit)) {
        m_text.append(QChar(QChar::ReplacementCharacter));
        m_highSurrogate = unit;
        m_highSurrogateEnd = QChar::isHighSurrogate(unit) ? m_text.size() : -1;
    } else if (!isControl(unit)) {
        m_text.append(QChar(unit));
    }
}

void RtfTextBuilder::appendCodePoint(char32_t codePoint)
{
    if (!QChar::requiresSurrogates(codePoint)) {
        appendUnit(char16_t(codePoint));
        return;
    }
    appendUnit(QChar::highSurrogate(codePoint));
    appendUnit(QChar::lowSurrogate(codePoint));
}

void RtfTextBuilder::endCell()
{
    appendUnit(u'\t');
    m_cellEnd = m_text.size();
}

void RtfTextBuilder::endRow()
{
    finishBytes();
    if (m_text.size() == m_cellEnd)
        m_text.chop(1);
    m_text.append(u'\n');
    m_cellEnd = -1;
}

void RtfTextBuilder::startLine()
{
    finishBytes();
    if (!m_text.isEmpty() && !m_text.endsWith(u'\n'))
        m_text.append(u'\n');
}

qsizetype RtfTextBuilder::endOfText()
{
    finishBytes();
    return m_text.size();
}

void RtfTextBuilder::dropIfBlank(qsizetype start)
{
    finishBytes();
    if (!TextTrimming::trimmedBlanks(QStringView(m_text).sliced(start)).isEmpty())
        return;
    m_text.truncate(start);
    if (m_cellEnd > start)
        m_cellEnd = -1; // that cell is gone, and other text may end at that length
}

QString RtfTextBuilder::takeText()
{
    finishBytes();
    m_text.squeeze();
    return std::move(m_text);
}

void RtfTextBuilder::finishBytes()
{
    if (m_openPage)
        std::exchange(m_openPage, nullptr)->finish(m_text);
}
