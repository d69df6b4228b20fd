#include "exchange/RefiQdpxDocument.h"

#include "exchange/RefiQdpx.h"
#include "exchange/XmlReader.h"
#include "platform/TextDecoder.h"
#include "records/LongestName.h"

#include <QHash>

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

using namespace Qt::StringLiterals;

namespace RefiQdpx {

namespace {

constexpr size_t codeLevels = 8;

// What the largest of projects doesn't come near. An archive of a few kilobytes can hold any number of elements.
constexpr size_t maxCodes = 200'000;
constexpr size_t maxSources = 500'000;
constexpr size_t maxCodedRanges = 10'000'000;

void refuseBeyond(bool isBeyond)
{
    if (isBeyond)
        throw RefiError(RefiError::Kind::notAQdpx, u"it holds more than a project can hold"_s);
}

std::optional<QString> stringValue(const XmlAttributes &attributes, QByteArrayView name)
{
    const std::optional<QByteArrayView> value = attributes.value(name);
    return value ? std::optional(TextDecoder::unmarkedUtf8(*value)) : std::nullopt;
}

QString nameOr(const QString &substitute, const XmlAttributes &attributes)
{
    QString name = stringValue(attributes, "name").value_or(substitute);
    if (name.size() > longestName)
        throw RefiError(RefiError::Kind::notAQdpx, u"a name in it is too long"_s);
    return name;
}

/// An optional sign and digits. Absent for all else, and for what 64 bits don't hold.
std::optional<qint64> decimalInteger(QByteArrayView text)
{
    if (text.startsWith('+') && !text.startsWith("+-"))
        text = text.sliced(1);
    qint64 value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    return error == std::errc() && end == text.end() ? std::optional(value) : std::nullopt;
}

/// The range that a selection means; a negative start moves to 0 and keeps its span.
std::optional<TextRange> selectedRange(const XmlAttributes &attributes)
{
    const auto position = [&](QByteArrayView name) {
        const std::optional<QByteArrayView> value = attributes.value(name);
        return value ? decimalInteger(*value) : std::nullopt;
    };
    const std::optional<qint64> start = position("startPosition");
    const std::optional<qint64> end = position("endPosition");
    if (!start || !end || *end <= *start)
        return {};
    const quint64 span = quint64(*end) - quint64(*start); // may be more than a signed integer holds
    constexpr quint64 longest = std::numeric_limits<qint64>::max();
    return TextRange{std::max<qint64>(*start, 0), qint64(std::min(span, longest))};
}

/// Numbers the identifiers of a document in the order of their appearance; their case makes no difference.
class GuidNumbers {
public:
    size_t numberOf(QByteArrayView guid)
    {
        setKey(guid);
        const auto known = m_numbers.constFind(m_key);
        if (known != m_numbers.constEnd())
            return *known;
        return *m_numbers.insert(m_key, size_t(m_numbers.size()));
    }

private:
    void setKey(QByteArrayView guid)
    {
        const bool isPlain = std::ranges::all_of(guid, [](char byte) { return static_cast<signed char>(byte) >= 0; });
        if (!isPlain) {
            m_key = TextDecoder::unmarkedUtf8(guid).toLower().toUtf8();
            return;
        }
        m_key.resize(guid.size());
        std::ranges::transform(guid, m_key.begin(),
            [](char byte) { return byte >= 'A' && byte <= 'Z' ? char(byte + ('a' - 'A')) : byte; });
    }

    QHash<QByteArray, size_t> m_numbers;
    QByteArray m_key; // kept, so that looking up costs no memory
};

class DocumentReader final : public XmlHandler {
public:
    void startElement(QByteArrayView name, const XmlAttributes &attributes) override
    {
        std::optional<Place> place;
        if (m_ignoredDepth == 0)
            place = entered(name, attributes);
        if (place)
            m_places.push_back(*place);
        else
            ++m_ignoredDepth;
    }

    void endElement() override
    {
        if (m_ignoredDepth > 0) {
            --m_ignoredDepth;
            return;
        }
        const Place place = m_places.back();
        m_places.pop_back();
        leave(place);
    }

    void characters(QByteArrayView text) override
    {
        // Text counts at any depth below, ignored elements included.
        if (!m_places.empty() && (m_places.back() == Place::description || m_places.back() == Place::content))
            takeText(text);
    }

    [[nodiscard]] ParsedDocument takeDocument() { return std::move(m_document); }

private:
    /// The elements that are read. All others are ignored with all that they hold.
    enum class Place { project, codeBook, codes, code, sources, source, description, content, selection, coding };

    using Entered = std::optional<Place>;

    Entered entered(QByteArrayView name, const XmlAttributes &attributes)
    {
        if (m_places.empty())
            return enteredRoot(name);
        switch (m_places.back()) {
        case Place::project:
            return enteredPart(name);
        case Place::codeBook:
            return name == "Codes" ? first(m_hasCodes, Place::codes) : std::nullopt;
        case Place::codes:
            return name == "Code" ? enteredCode(attributes) : std::nullopt;
        case Place::code:
            return enteredPartOfCode(name, attributes);
        case Place::sources:
            return name == "TextSource" ? enteredSource(attributes) : std::nullopt;
        case Place::source:
            return enteredPartOfSource(name, attributes);
        case Place::selection:
            return name == "Coding" ? enteredCoding() : std::nullopt;
        case Place::coding:
            if (name == "CodeRef")
                takeReference(attributes);
            return {};
        case Place::description:
        case Place::content:
            return {};
        }
        Q_UNREACHABLE();
    }

    /// `place` when it is the first of its kind.
    static Entered first(bool &wasSeen, Place place)
    {
        return std::exchange(wasSeen, true) ? std::nullopt : Entered(place);
    }

    Entered enteredRoot(QByteArrayView name)
    {
        m_document.isProject = name == "Project";
        return m_document.isProject ? Entered(Place::project) : std::nullopt;
    }

    Entered enteredPart(QByteArrayView name)
    {
        if (name == "CodeBook")
            return first(m_hasCodeBook, Place::codeBook);
        if (name == "Sources")
            return first(m_hasSources, Place::sources);
        return {};
    }

    Entered enteredCode(const XmlAttributes &attributes)
    {
        if (m_openCodes.size() == codeLevels)
            return {};
        const std::optional<QString> color = stringValue(attributes, "color");
        const size_t index = m_document.codes.size();
        refuseBeyond(index == maxCodes);
        m_document.codes.push_back({.name = nameOr(u"Unnamed Code"_s, attributes),
            .colorHex = color ? normalizedColor(*color) : QString(fallbackColor),
            .memo = {},
            .parent = m_openCodes.empty() ? std::nullopt : std::optional(m_openCodes.back())});
        m_openCodes.push_back(index);
        if (const auto guid = attributes.value("guid"))
            m_document.codeOfTarget[targetOf(*guid)] = index; // the last of several counts
        return Place::code;
    }

    Entered enteredPartOfCode(QByteArrayView name, const XmlAttributes &attributes)
    {
        if (name == "Code")
            return enteredCode(attributes);
        if (name == "Description")
            return enteredDescription(m_document.codes[m_openCodes.back()].memo);
        return {};
    }

    Entered enteredSource(const XmlAttributes &attributes)
    {
        refuseBeyond(m_document.sources.size() == maxSources);
        m_document.sources.push_back({.title = nameOr(u"Imported Source"_s, attributes),
            .plainTextPath = stringValue(attributes, "plainTextPath"),
            .content = {},
            .memo = {},
            .codedRanges = {}});
        return Place::source;
    }

    Entered enteredPartOfSource(QByteArrayView name, const XmlAttributes &attributes)
    {
        ParsedDocument::Source &source = m_document.sources.back();
        if (name == "PlainTextSelection")
            return enteredSelection(attributes);
        if (name == "Description")
            return enteredDescription(source.memo);
        if (name != "PlainTextContent" || source.content)
            return {};
        source.content.emplace();
        return Place::content;
    }

    static Entered enteredDescription(std::optional<QString> &memo)
    {
        if (memo)
            return {};
        memo.emplace();
        return Place::description;
    }

    Entered enteredSelection(const XmlAttributes &attributes)
    {
        const std::optional<TextRange> range = selectedRange(attributes);
        if (!range)
            return {};
        m_range = *range;
        return Place::selection;
    }

    Entered enteredCoding()
    {
        m_hasReference = false;
        return Place::coding;
    }

    void takeReference(const XmlAttributes &attributes)
    {
        const auto target = attributes.value("targetGUID");
        if (std::exchange(m_hasReference, true) || !target)
            return;
        refuseBeyond(++m_codedRangeCount > maxCodedRanges);
        m_document.sources.back().codedRanges.push_back({m_range, targetOf(*target)});
    }

    void takeText(QByteArrayView text)
    {
        refuseBeyond(m_text.size() + text.size() > largestText);
        m_text.append(text);
    }

    void leave(Place place)
    {
        if (place == Place::code)
            m_openCodes.pop_back();
        else if (place == Place::description)
            describedByText() = TextDecoder::unmarkedUtf8(std::exchange(m_text, {}));
        else if (place == Place::content)
            m_document.sources.back().content = std::exchange(m_text, {});
    }

    std::optional<QString> &describedByText()
    {
        if (m_places.back() == Place::code)
            return m_document.codes[m_openCodes.back()].memo;
        return m_document.sources.back().memo;
    }

    size_t targetOf(QByteArrayView guid)
    {
        const size_t target = m_guids.numberOf(guid);
        if (target == m_document.codeOfTarget.size())
            m_document.codeOfTarget.emplace_back();
        return target;
    }

    ParsedDocument m_document;
    std::vector<Place> m_places; ///< the open elements, without the ignored ones
    qsizetype m_ignoredDepth = 0; ///< how many open elements are ignored; they are the innermost ones
    bool m_hasCodeBook = false;
    bool m_hasCodes = false;
    bool m_hasSources = false;
    std::vector<size_t> m_openCodes;
    GuidNumbers m_guids;
    size_t m_codedRangeCount = 0; ///< of all sources
    TextRange m_range; ///< of the open selection
    bool m_hasReference = false; ///< of the open coding
    QByteArray m_text; ///< of the open description or content
};

} // namespace

ParsedDocument readProjectDocument(QIODevice &device, const std::function<void()> &onPiece)
{
    DocumentReader reader;
    XmlReader::read(device, reader, onPiece);
    return reader.takeDocument();
}

} // namespace RefiQdpx
