#pragma once

#include <QByteArrayView>

#include <optional>

/// One piece of Rich Text syntax.
struct RtfToken {
    enum class Kind : quint8 {
        end, ///< the data are used up
        groupStart, ///< an opening brace
        groupEnd, ///< a closing brace
        word, ///< a control word: `bytes` is its name, `parameter` its number
        symbol, ///< a control symbol: `symbol` is the byte after the backslash
        hexByte, ///< a byte written in hexadecimal digits: `symbol`
        text, ///< a run of bytes that stand for themselves: `bytes`
    };

    Kind kind = Kind::end;
    char symbol = 0;
    QByteArrayView bytes{};
    /// Clamped to the range of its type, whatever number of digits the file has.
    std::optional<qint32> parameter{};
};

/// Cuts Rich Text into tokens, which point into the data given. Knows the syntax and no meanings, except for the
/// raw data after a `\bin`, which are passed over.
class RtfTokenizer {
public:
    /// `bytes` must outlive the tokenizer and its tokens.
    explicit RtfTokenizer(QByteArrayView bytes);

    /// The next token; from the end of the data on, always `end`.
    [[nodiscard]] RtfToken next();
    /// Moves on to the closing brace of the group that the last token stood in, which will be the next token.
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
