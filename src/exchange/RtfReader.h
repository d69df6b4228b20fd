#pragma once

#include "exchange/RtfCodePage.h"
#include "exchange/RtfFontTable.h"
#include "exchange/RtfKeyword.h"
#include "exchange/RtfTextBuilder.h"
#include "exchange/RtfTokenizer.h"

#include <optional>
#include <vector>

/// Walks through a Rich Text document once and collects its running text.
class RtfReader {
public:
    /// `document` begins with its first brace and must outlive the reader.
    explicit RtfReader(QByteArrayView document);

    /// The text; to be called once.
    [[nodiscard]] QString readText();

private:
    static constexpr qint32 defaultFont = -1; ///< whichever the document declares to be
    static constexpr qsizetype noLabel = -1;

    /// What a group inherits from the one around it, and what ends with it.
    struct Group {
        qint32 font = defaultFont;
        qint32 fallbackLength = 1;
        qsizetype labelStart = noLabel; ///< where the text ended when the group began as a list label
        bool isInLabel = false; ///< of this group or of one around it: labels in labels would be looked through again
        bool isFontTable = false;
        bool isHidden = false;
        bool isDeleted = false;
        bool skipsNextGroup = false;
    };

    void read(const RtfToken &token);
    void openGroup();
    void closeGroup();
    void readWord(const RtfToken &token, bool isOptional);
    void readUnicode(std::optional<qint32> parameter);
    void readSymbol(char symbol);
    void readHexByte(char byte);
    void readText(QByteArrayView bytes);
    /// Counts what comes now as a fallback and returns true, if the Unicode character before still wants one.
    [[nodiscard]] bool takeAsFallback();

    void obey(RtfKeyword keyword, std::optional<qint32> parameter);
    void obeyFontWord(RtfKeyword::Meaning meaning, qint32 number);
    void setDocumentCodePage(int number);
    void beginListLabel();
    void skipDestination();

    void appendBytes(QByteArrayView bytes);
    void appendUnit(char16_t unit);
    void appendBoundary(void (RtfTextBuilder::*boundary)());
    /// Not directly in the document's own group, where a destination that strayed there would take all the rest.
    [[nodiscard]] bool isInInnerGroup() const;
    [[nodiscard]] bool showsText() const;
    [[nodiscard]] int codePage() const;

    RtfTokenizer m_tokenizer;
    RtfCodePages m_pages;
    RtfTextBuilder m_builder;
    RtfFontTable m_fonts;
    int m_documentCodePage = RtfCodePages::western;
    qint32 m_defaultFont = defaultFont;
    Group m_group;
    std::vector<Group> m_outerGroups; // up to a limit, beyond which groups are only counted
    qint64 m_unsavedGroups = 0;
    qint32 m_fallbackLeft = 0; // characters yet to be left out in favour of the Unicode character before
    bool m_isOptional = false; // the mark of a destination that may be left out came just before
};
