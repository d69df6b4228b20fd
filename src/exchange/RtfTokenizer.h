#pragma once

#include <QByteArrayView>

#include <optional>

/// One piece of Rich Text syntax.
struct RtfToken {
    enum class Kind : quint8 {
        end, ///< of the data
        groupStart, ///< an opening brace
        groupEnd, ///< a closing brace
        word, ///< a control word: `bytes` is its name
        symbol, ///< a control symbol: `symbol` is the byte after the backslash
        hexByte, ///< a byte written in hexadecimal digits: `symbol`
        text, ///< a run of literal bytes: `bytes`
    };

    Kind kind = Kind::end;
    char symbol = 0;
    QByteArrayView bytes{};
    /// The number after a control word, clamped to its type's range.
    std::optional<qint32> parameter{};
};

/// Splits Rich Text into tokens, which point into the bytes given. Knows the syntax but no control words, except for
/// `\bin`, whose raw data it skips.
class RtfTokenizer {
public:
    /// `bytes` must outlive the tokenizer and its tokens.
    explicit RtfTokenizer(QByteArrayView bytes);

    /// The next token; `end` once the data are used up.
    [[nodiscard]] RtfToken next();
    /// Skips the rest of the group that the last token was in: its closing brace is the next token.
    void skipToGroupEnd();

private:
    [[nodiscard]] RtfToken escape();
    [[nodiscard]] RtfToken controlWord();
    [[nodiscard]] std::optional<qint32> parameter();
    [[nodiscard]] RtfToken hexByte();
    [[nodiscard]] RtfToken textRun();
    void skipBytes(qint64 count);

    const char *m_position;
    const char *m_end;
};
