#pragma once

#include "records/TextRange.h"

#include <QByteArrayView>
#include <QString>

#include <algorithm>
#include <cstdint>
#include <limits>

/// Splits an input into the arguments of a target, from front to back. Past its end every value is 0 or empty.
class InputReader {
public:
    InputReader(const uint8_t *data, size_t size) : m_rest(reinterpret_cast<const char *>(data), qsizetype(size)) { }

    [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }
    [[nodiscard]] int byte() { return atEnd() ? 0 : uchar(take(1).front()); }
    /// From 0 up to, but without, `end`, which is at most 65,536.
    [[nodiscard]] int below(int end)
    {
        const int high = byte();
        return (high << 8 | byte()) % end;
    }
    [[nodiscard]] QByteArrayView bytes(qsizetype length) { return take(length); }
    /// Any UTF-16 code units, halves of surrogate pairs among them.
    [[nodiscard]] QString units(qsizetype length)
    {
        const QByteArrayView pairs = take(length * 2);
        QString text;
        for (qsizetype index = 1; index < pairs.size(); index += 2)
            text.append(QChar(uchar(pairs[index - 1]), uchar(pairs[index])));
        return text;
    }
    /// Mostly inside a text of that many units or just outside of it; now and then the largest or smallest number.
    [[nodiscard]] TextRange range(qsizetype textLength) { return {place(textLength), place(textLength)}; }

private:
    [[nodiscard]] qint64 place(qsizetype textLength)
    {
        const int number = below(0x10000);
        if (number == 0xFFFF)
            return std::numeric_limits<qint64>::max();
        if (number == 0xFFFE)
            return std::numeric_limits<qint64>::min();
        return number % (textLength + 4) - 2;
    }
    [[nodiscard]] QByteArrayView take(qsizetype length)
    {
        const QByteArrayView result = m_rest.first(std::min(length, m_rest.size()));
        m_rest = m_rest.sliced(result.size());
        return result;
    }

    QByteArrayView m_rest;
};
