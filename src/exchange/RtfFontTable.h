#pragma once

#include <QByteArrayView>

#include <optional>
#include <vector>

/// The code pages that the fonts of a document are written in.
class RtfFontTable {
public:
    /// The code page of the font, or nothing if the font is unknown or leaves it to the document.
    [[nodiscard]] std::optional<int> codePage(qint32 font) const;

    // The definition of a font, in the order of the file.
    void beginFont(qint32 font);
    /// The character set by its number in the Windows interface.
    void setCharset(qint32 charset);
    void setCodePage(qint32 number);
    /// Symbol fonts share one character set, so that only the name tells what their bytes stand for.
    void setName(QByteArrayView name);

private:
    void store(int codePage);

    // By number of the font, 0 where there is none. Numbers above the limit are left out, so that a hostile table
    // can't grow large.
    static constexpr qint32 fontLimit = 65536;
    std::vector<quint16> m_codePages;
    qint32 m_font = fontLimit;
    bool m_isSymbolFont = false;
};
