#include "exchange/WordText.h"

#include "exchange/TextLines.h"
#include "records/TextTrimming.h"

#include <algorithm>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Markup that stands for a character. It is replaced before tags are looked for, also within what would be a tag.
struct Literal {
    QStringView markup;
    char16_t replacement;
};

constexpr std::array literals{
    Literal{u"<w:br/>", u' '},
    Literal{u"<w:br />", u' '},
    Literal{u"<w:tab/>", u'\t'},
    Literal{u"</w:p>", u'\n'},
    // Replacing the first literal inside this one makes the second, which is replaced afterwards.
    Literal{u"<w:br<w:br/>/>", u' '},
};

bool isAt(QStringView text, qsizetype position, QStringView wanted)
{
    return position >= 0 && text.size() - position >= wanted.size()
        && std::equal(wanted.begin(), wanted.end(), text.begin() + position);
}

const Literal *literalStartingAt(QStringView xml, qsizetype start)
{
    for (const Literal &literal : literals) {
        if (isAt(xml, start, literal.markup))
            return &literal;
    }
    return nullptr;
}

bool literalEndsAt(QStringView xml, qsizetype end)
{
    return std::any_of(literals.begin(), literals.end(),
        [=](const Literal &literal) { return isAt(xml, end - literal.markup.size(), literal.markup); });
}

qsizetype positionOf(QChar unit, QStringView text, qsizetype from)
{
    const auto *found = std::find(text.begin() + from, text.end(), unit);
    return found == text.end() ? -1 : found - text.begin();
}

/// The first '>' at or after `from` that belongs to no literal, or -1.
qsizetype closingBracket(QStringView xml, qsizetype from)
{
    qsizetype bracket = xml.indexOf(u'>', from);
    while (bracket >= 0 && literalEndsAt(xml, bracket + 1))
        bracket = xml.indexOf(u'>', bracket + 1);
    return bracket;
}

QString withoutMarkup(QStringView xml)
{
    QString text;
    text.reserve(xml.size()); // memory that isn't written to costs nothing
    bool mayClose = true; // once no bracket closes, none does further on; searching again would be quadratic
    qsizetype copied = 0;
    qsizetype open = xml.indexOf(u'<');
    while (open >= 0) {
        text += xml.sliced(copied, open - copied);
        copied = open;
        if (const Literal *literal = literalStartingAt(xml, open)) {
            text += QChar(literal->replacement);
            copied += literal->markup.size();
        } else if (mayClose) {
            const qsizetype close = closingBracket(xml, open + 1);
            mayClose = close >= 0;
            if (close > open + 1) // "<>" is no tag
                copied = close + 1;
        }
        open = positionOf(u'<', xml, std::max(copied, open + 1));
    }
    text += xml.sliced(copied);
    return text;
}

/// What '&' and the units after it stand for.
struct Reference {
    qsizetype length = 0; ///< UTF-16 units after the '&'
    std::optional<char32_t> scalar = U'&'; ///< absent if the reference disappears
};

bool isHexDigit(QChar unit)
{
    return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'F') || (unit >= u'a' && unit <= u'f');
}

/// `rest` is what follows a '&'.
Reference numericReference(QStringView rest)
{
    if (!rest.startsWith(u'#'))
        return {};
    const bool isHexadecimal = isAt(rest, 1, u"x");
    const qsizetype firstDigit = isHexadecimal ? 2 : 1;
    const qsizetype end = std::find_if_not(rest.begin() + firstDigit, rest.end(), isHexDigit) - rest.begin();
    if (end == firstDigit || !isAt(rest, end, u";"))
        return {};
    bool isNumber = false; // else it is too large, or decimal with other digits
    const char32_t value = rest.sliced(firstDigit, end - firstDigit).toUInt(&isNumber, isHexadecimal ? 16 : 10);
    const bool isScalar = isNumber && value <= QChar::LastValidCodePoint && !QChar::isSurrogate(value);
    return {end + 1, isScalar ? std::optional(value) : std::nullopt};
}

Reference namedReference(QStringView rest)
{
    struct Name {
        QStringView name;
        char32_t scalar;
    };
    constexpr std::array names{Name{u"lt;", U'<'}, Name{u"gt;", U'>'}, Name{u"quot;", U'"'}, Name{u"apos;", U'\''}};
    for (const Name &candidate : names)
        if (isAt(rest, 0, candidate.name))
            return {candidate.name.size(), candidate.scalar};
    return {};
}

/// "&amp;" is replaced before the others, once, so that "&amp;lt;" is "<" in the end.
Reference anyReference(QStringView rest)
{
    const qsizetype ampersand = isAt(rest, 0, u"amp;") ? 4 : 0;
    rest = rest.sliced(ampersand);
    Reference reference = rest.startsWith(u'#') ? numericReference(rest) : namedReference(rest);
    reference.length += ampersand;
    return reference;
}

template <typename ReferenceAt>
QString withReferencesReplaced(QStringView text, ReferenceAt referenceAt)
{
    QString result;
    result.reserve(text.size());
    qsizetype copied = 0;
    for (qsizetype start = text.indexOf(u'&'); start >= 0; start = text.indexOf(u'&', copied)) {
        result += text.sliced(copied, start - copied);
        const Reference reference = referenceAt(text.sliced(start + 1));
        if (reference.scalar)
            result += QStringView(QChar::fromUcs4(*reference.scalar));
        copied = start + 1 + reference.length;
    }
    result += text.sliced(copied);
    return result;
}

bool isSpaceOrTab(QChar unit)
{
    return unit == u' ' || unit == u'\t';
}

/// Appends `line` with each run of spaces and tabs as one space.
void appendCollapsed(QString &result, QStringView line)
{
    qsizetype copied = 0;
    for (qsizetype index = 0; index < line.size(); ++index) {
        if (!isSpaceOrTab(line[index]))
            continue;
        const auto *runEnd = std::find_if_not(line.begin() + index, line.end(), isSpaceOrTab);
        const qsizetype end = runEnd - line.begin();
        if (end == index + 1 && line[index] == u' ')
            continue;
        result += line.sliced(copied, index - copied);
        result += u' ';
        copied = end;
        index = end - 1;
    }
    result += line.sliced(copied);
}

/// Trims the lines, and leaves one empty line of several between two with text.
QString withTidyLines(QStringView text)
{
    QString result;
    result.reserve(text.size());
    bool isAfterEmptyLine = false;
    forEachLine(text, [&](QStringView line) {
        line = TextTrimming::trimmedBlanks(line);
        if (!line.isEmpty()) {
            if (!result.isEmpty())
                result += isAfterEmptyLine ? u"\n\n"_s : u"\n"_s;
            appendCollapsed(result, line);
        }
        isAfterEmptyLine = line.isEmpty();
    });
    return result;
}

} // namespace

QString WordText::plainText(QStringView wordXML)
{
    const QString text = withReferencesReplaced(withoutMarkup(wordXML), anyReference);
    QString lines = withTidyLines(text);
    const QStringView trimmed = TextTrimming::trimmed(lines);
    const qsizetype start = trimmed.data() - lines.constData();
    return lines.mid(start, trimmed.size());
}

QString WordText::decodeNumericEntities(QStringView text)
{
    return withReferencesReplaced(text, numericReference);
}
