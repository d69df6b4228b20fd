#pragma once

#include <QByteArrayView>
#include <QString>

#include <map>
#include <memory>

/// Decodes the bytes of one code page. Invalid ones become U+FFFD.
class RtfCodePage {
public:
    virtual ~RtfCodePage() = default;

    /// Appends the characters of `bytes` to `text`. Some may be held back until later calls.
    virtual void decode(QByteArrayView bytes, QString &text) = 0;
    /// Appends what `decode` held back. An incomplete character becomes U+FFFD.
    virtual void finish(QString &text) = 0;
};

/// The code pages of one document, opened on first use.
class RtfCodePages {
public:
    static constexpr int western = 1252;
    static constexpr int symbolFont = 42; ///< the fonts called Symbol; the number that Windows uses
    static constexpr int dingbatFont = 43; ///< the fonts called Wingdings; a number that Windows doesn't use

    /// Whether `number` is a supported code page, those of fonts excluded.
    [[nodiscard]] static bool knows(int number);

    /// `number` must be known or a font's. The page lives as long as this object.
    [[nodiscard]] RtfCodePage &page(int number);

private:
    std::map<int, std::unique_ptr<RtfCodePage>> m_pages;
    RtfCodePage *m_lastPage = nullptr; // most runs of text use the same page as the run before
    int m_lastNumber = 0;
};
