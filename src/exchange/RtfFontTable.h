#pragma once

#include <QByteArrayView>

#include <optional>
#include <vector>

/// The code pages of a document's fonts.
class RtfFontTable {
public:
    /// The code page of the font; absent if the font is unknown or uses the document's code page.
    [[nodiscard]] std::optional<int> codePage(qint32 font) const;

    // What a font's definition holds, called in the order of the file.
    void beginFont(qint32 font);
    /// `charset` is a character set's number on Windows.
    void setCharset(qint32 charset);
    void setCodePage(qint32 number);
    /// Matters for symbol fonts: they share one character set, and only the name tells which characters they have.
    void setName(QByteArrayView name);

private:
    void store(int codePage);

    // Indexed by font number, 0 for none. Fonts numbered above the limit are ignored, so that a hostile file can't make
    // the table huge.
    static constexpr qint32 fontLimit = 65536;
    std::vector<quint16> m_codePages;
    qint32 m_font = fontLimit;
    bool m_isSymbolFont = false;
};
