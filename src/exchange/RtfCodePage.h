#pragma once

#include <QByteArrayView>
#include <QString>

#include <map>
#include <memory>

/// The decoder of one code page. Bytes that are no character there become U+FFFD.
class RtfCodePage {
public:
    virtual ~RtfCodePage() = default;

    /// Appends the characters of `bytes` to `text`. Some may be held back, in whole or in part, until later calls.
    virtual void decode(QByteArrayView bytes, QString &text) = 0;
    /// Appends what `decode` has held back. A character whose other bytes haven't come becomes U+FFFD.
    virtual void finish(QString &text) = 0;
};

/// The code pages of one document, each of them opened when it's first used.
class RtfCodePages {
public:
    static constexpr int western = 1252;
    static constexpr int symbolFont = 42; ///< as Windows numbers it
    static constexpr int dingbatFont = 43; ///< a number of our own

    /// Whether there is a code page with this number, apart from those of fonts.
    [[nodiscard]] static bool knows(int number);

    /// `number` must be known or that of a font. The page lives as long as this object.
    [[nodiscard]] RtfCodePage &page(int number);

private:
    std::map<int, std::unique_ptr<RtfCodePage>> m_pages; // bounded by the pages known
    RtfCodePage *m_lastPage = nullptr; // nearly every run of text is in the page of the run before
    int m_lastNumber = 0;
};
