#include "exchange/RefiQdpxDocument.h"

#include "exchange/RefiQdpx.h"
#include "exchange/XmlReader.h"
#include "platform/TextDecoder.h"
#include "records/TextTrimming.h"

#include <QHash> // std::hash of QByteArray

#include <algorithm>
#include <charconv>
#include <limits>
#include <set>
#include <unordered_map>
#include <utility>

using namespace Qt::StringLiterals;

namespace RefiQdpx {

namespace {

constexpr size_t maxCodeLevels = 8;

// Far more than any project has: an archive of a few kilobytes can hold any number of elements.
constexpr size_t maxCodes = 200'000;
constexpr size_t maxSources = 500'000;
constexpr size_t maxCodedRanges = 10'000'000;

void refuseBeyond(bool isBeyond)
{
    if (isBeyond)
        throw RefiError::notUsable(u"it holds more than a project can hold"_s);
}

std::optional<QString> stringValue(const XmlAttributes &attributes, QByteArrayView name)
{
    const std::optional<QByteArrayView> value = attributes.value(name);
    return value ? std::optional(TextDecoder::unmarkedUtf8(*value)) : std::nullopt;
}

QString nameOr(const QString &substitute, const XmlAttributes &attributes)
{
    QString name = stringValue(attributes, "name").value_or(substitute);
    if (name.size() > maxNameLength)
        throw RefiError::notUsable(u"a name in it is too long"_s);
    return name;
}

/// The value of an optional sign and digits; absent for anything else, and beyond 64 bits.
std::optional<qint64> decimalInteger(QByteArrayView text)
{
    if (text.startsWith('+') && !text.startsWith("+-"))
        text = text.sliced(1);
    qint64 value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    return error == std::errc() && end == text.end() ? std::optional(value) : std::nullopt;
}

/// The range of a selection; a negative start becomes 0 and the length stays.
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
    const quint64 span = quint64(*end) - quint64(*start); // may exceed a signed integer
    constexpr quint64 maxLength = std::numeric_limits<qint64>::max();
    return TextRange{std::max<qint64>(*start, 0), qint64(std::min(span, maxLength))};
}

class DocumentReader final : public XmlHandler {
public:
    void startElement(QByteArrayView name, const XmlAttributes &attributes) override
    {
        const Entered place = m_ignoredDepth == 0 ? entered(name, attributes) : std::nullopt;
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
        // Text counts at any depth, that of ignored elements included.
        if (m_places.back() != Place::description && m_places.back() != Place::content)
            return;
        refuseBeyond(m_text.size() + text.size() > maxText);
        m_text.append(text);
    }

    [[nodiscard]] ParsedDocument takeDocument() { return std::move(m_document); }

private:
    /// The elements that are read. All others are ignored, with everything in them.
    enum class Place : quint8 {
        document,
        project,
        codeBook,
        codes,
        code,
        sources,
        source,
        description,
        content,
        selection,
        coding
    };

    using Entered = std::optional<Place>; ///< absent: the element is ignored

    Entered entered(QByteArrayView name, const XmlAttributes &attributes)
    {
        switch (m_places.back()) {
        case Place::document:
            m_document.isProject = name == "Project";
            return m_document.isProject ? Entered(Place::project) : std::nullopt;
        case Place::project:
            if (name == "CodeBook")
                return firstTime(Place::codeBook);
            return name == "Sources" ? firstTime(Place::sources) : std::nullopt;
        case Place::codeBook:
            return name == "Codes" ? firstTime(Place::codes) : std::nullopt;
        case Place::codes:
            return name == "Code" ? enteredCode(attributes) : std::nullopt;
        case Place::code:
            if (name == "Description")
                return enteredText(Place::description, m_document.codes[m_openCodes.back()].memo);
            return name == "Code" ? enteredCode(attributes) : std::nullopt;
        case Place::sources:
            return name == "TextSource" ? enteredSource(attributes) : std::nullopt;
        case Place::source:
            return enteredPartOfSource(name, attributes);
        case Place::selection:
            m_hasReference = false;
            return name == "Coding" ? Entered(Place::coding) : std::nullopt;
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

    Entered firstTime(Place place) { return m_seenPlaces.insert(place).second ? Entered(place) : std::nullopt; }

    Entered enteredCode(const XmlAttributes &attributes)
    {
        if (m_openCodes.size() == maxCodeLevels)
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

    Entered enteredSource(const XmlAttributes &attributes)
    {
        refuseBeyond(m_document.sources.size() == maxSources);
        ParsedDocument::Source &source = m_document.sources.emplace_back();
        source.title = nameOr(u"Imported Source"_s, attributes);
        source.plainTextPath = stringValue(attributes, "plainTextPath");
        return Place::source;
    }

    Entered enteredPartOfSource(QByteArrayView name, const XmlAttributes &attributes)
    {
        ParsedDocument::Source &source = m_document.sources.back();
        if (name == "Description")
            return enteredText(Place::description, source.memo);
        if (name == "PlainTextContent")
            return enteredText(Place::content, source.content);
        const std::optional<TextRange> range = name == "PlainTextSelection" ? selectedRange(attributes) : std::nullopt;
        if (!range)
            return {};
        m_range = *range;
        return Place::selection;
    }

    /// Only the first of several elements counts for `destination`, which is absent before.
    template <typename Text>
    static Entered enteredText(Place place, std::optional<Text> &destination)
    {
        if (destination)
            return {};
        destination.emplace();
        return place;
    }

    void takeReference(const XmlAttributes &attributes)
    {
        const auto target = attributes.value("targetGUID");
        if (std::exchange(m_hasReference, true) || !target)
            return;
        refuseBeyond(++m_codedRangeCount > maxCodedRanges);
        m_document.sources.back().codedRanges.push_back({m_range, targetOf(*target)});
    }

    void leave(Place place)
    {
        if (place == Place::code)
            m_openCodes.pop_back();
        else if (place == Place::description)
            openMemo() = TextDecoder::unmarkedUtf8(std::exchange(m_text, {}));
        else if (place == Place::content)
            m_document.sources.back().content = std::exchange(m_text, {});
    }

    std::optional<QString> &openMemo()
    {
        if (m_places.back() == Place::code)
            return m_document.codes[m_openCodes.back()].memo;
        return m_document.sources.back().memo;
    }

    /// The number of an identifier; upper and lower case are the same.
    size_t targetOf(QByteArrayView guid)
    {
        // Every selection names an identifier, and nearly all are ASCII: a QString for each would cost a fifth more.
        const bool isAscii = std::ranges::all_of(guid, [](char byte) { return uchar(byte) < 0x80; });
        const QByteArray key =
            isAscii ? guid.toByteArray().toLower() : TextDecoder::unmarkedUtf8(guid).toLower().toUtf8();
        const auto [target, isNew] = m_targets.try_emplace(key, m_document.codeOfTarget.size());
        if (isNew)
            m_document.codeOfTarget.emplace_back();
        return target->second;
    }

    ParsedDocument m_document;
    std::vector<Place> m_places{Place::document}; ///< the open elements, without the ignored ones
    qsizetype m_ignoredDepth = 0; ///< how many open elements are ignored; they are the innermost ones
    std::set<Place> m_seenPlaces;
    std::vector<size_t> m_openCodes;
    std::unordered_map<QByteArray, size_t> m_targets;
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
