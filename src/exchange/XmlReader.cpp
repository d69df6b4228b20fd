#include "exchange/XmlReader.h"

#include "records/LongestName.h"

#include <QByteArray>
#include <QIODevice>

#include <exception>
#include <memory>
#include <new>
#include <vector>

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype chunkSize = 1 << 16; // bytes

// The parser compares each attribute of a tag with all others, and each prefix with all that are declared around it.
constexpr int maxAttributes = 256; ///< in one tag
constexpr int maxNamespaces = 256; ///< declared by all elements that are open at a time
/// Bytes in UTF-8; a comment counts as well. Has room for the longest name, were all of it escaped.
constexpr qsizetype longestTag = 1 << 21;
static_assert(longestTag > longestName * 6 + (1 << 16));

const char *bytesAt(const xmlChar *text)
{
    return reinterpret_cast<const char *>(text);
}

void dropMessage(void *, const char *, ...) // NOLINT(cert-dcl50-cpp): the shape that libxml2 asks for
{
}

/// Turns the libraries' own messages, which would be printed, away from the program's outputs for its lifetime.
class SilencedMessages {
public:
    SilencedMessages(void *context, xmlStructuredErrorFunc structured)
    {
        xmlSetGenericErrorFunc(nullptr, dropMessage);
        xmlSetStructuredErrorFunc(context, structured);
    }
    ~SilencedMessages()
    {
        xmlSetGenericErrorFunc(m_genericContext, m_generic);
        xmlSetStructuredErrorFunc(m_structuredContext, m_structured);
    }
    SilencedMessages(const SilencedMessages &) = delete;
    SilencedMessages &operator=(const SilencedMessages &) = delete;

private:
    const xmlGenericErrorFunc m_generic = xmlGenericError;
    void *const m_genericContext = xmlGenericErrorContext;
    const xmlStructuredErrorFunc m_structured = xmlStructuredError;
    void *const m_structuredContext = xmlStructuredErrorContext;
};

/// One run of the parser in its push form. This form, with a handler of our own that offers no entities, is the one
/// that neither reads other files, nor expands declared entities, nor quietly leaves references to them out.
class Parser {
public:
    explicit Parser(XmlHandler &handler);

    void feed(QByteArrayView bytes);
    void finish();

private:
    static void startElement(void *self, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri,
        int namespaceCount, const xmlChar **namespaces, int attributeCount, int defaultedCount,
        const xmlChar **attributes);
    static void endElement(void *self, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri);
    static void characters(void *self, const xmlChar *text, int length);
    // Releases of the library differ in whether the error is constant.
    template <typename Error>
    static void noteError(void *self, Error *error);

    [[nodiscard]] static xmlSAXHandler callbacks();
    /// Nothing may be thrown through the library: what `body` throws waits for the end of the chunk.
    template <typename Body>
    void tell(Body body) noexcept;
    void enterElement(int attributeCount, int namespaceCount);
    void leaveElement();
    [[nodiscard]] bool isPastRoot() const noexcept { return m_hasRoot && m_depth == 0; }
    void parse(const char *bytes, int size, bool isLast);
    void throwOnFailure() const;

    struct ContextFreer {
        void operator()(xmlParserCtxt *context) const noexcept
        {
            xmlFreeDoc(context->myDoc); // the parser keeps declared entities in one
            context->myDoc = nullptr;
            xmlFreeParserCtxt(context);
        }
    };
    struct NamespaceScope {
        qsizetype depth;
        int count;
    };

    XmlHandler &m_handler;
    SilencedMessages m_silence;
    std::unique_ptr<xmlParserCtxt, ContextFreer> m_context;
    std::exception_ptr m_failure; ///< ours or the handler's
    QString m_message; ///< the parser's first one that is about a failure
    bool m_hasRoot = false;
    qsizetype m_depth = 0;
    std::vector<NamespaceScope> m_namespaceScopes; ///< of open elements that declare any
    int m_namespaceCount = 0;
};

Parser::Parser(XmlHandler &handler) : m_handler(handler), m_silence(this, noteError)
{
    xmlSAXHandler sax = callbacks();
    m_context.reset(xmlCreatePushParserCtxt(&sax, this, nullptr, 0, nullptr));
    if (!m_context)
        throw std::bad_alloc();
    // Without NOENT, "&amp;" in an attribute would come as "&#38;". It expands nothing here, there being no entities.
    xmlCtxtUseOptions(m_context.get(), XML_PARSE_NONET | XML_PARSE_NOENT);
}

xmlSAXHandler Parser::callbacks()
{
    xmlSAXHandler sax{};
    sax.initialized = XML_SAX2_MAGIC;
    sax.startElementNs = startElement;
    sax.endElementNs = endElement;
    sax.characters = characters;
    sax.ignorableWhitespace = characters;
    sax.serror = noteError;
    return sax;
}

void Parser::feed(QByteArrayView bytes)
{
    parse(bytes.data(), int(bytes.size()), false);
    // What is left waits for its end. The parser's own limit is enough for a CDATA section, which is text.
    const xmlParserInput *input = m_context->input;
    if (m_context->instate != XML_PARSER_CDATA_SECTION && input && input->end - input->cur > longestTag)
        throw XmlError(u"A tag is too long"_s);
}

void Parser::finish()
{
    parse(nullptr, 0, true);
    if (!m_context->wellFormed)
        throw XmlError(u"The document is not well-formed"_s);
}

void Parser::parse(const char *bytes, int size, bool isLast)
{
    xmlParseChunk(m_context.get(), bytes, size, isLast ? 1 : 0);
    throwOnFailure();
}

void Parser::throwOnFailure() const
{
    if (m_failure)
        std::rethrow_exception(m_failure);
    if (!m_message.isEmpty())
        throw XmlError(m_message);
    if (m_context->disableSAX)
        throw XmlError(u"The document is not well-formed"_s);
}

template <typename Body>
void Parser::tell(Body body) noexcept
{
    if (m_failure || !m_message.isEmpty())
        return;
    try {
        body();
    } catch (...) {
        m_failure = std::current_exception();
    }
}

void Parser::startElement(void *self, const xmlChar *name, const xmlChar *, const xmlChar *, int namespaceCount,
    const xmlChar **, int attributeCount, int, const xmlChar **attributes)
{
    auto &parser = *static_cast<Parser *>(self);
    parser.tell([&] {
        parser.enterElement(attributeCount, namespaceCount);
        parser.m_handler.startElement(bytesAt(name), XmlAttributes(attributes, attributeCount));
    });
}

void Parser::enterElement(int attributeCount, int namespaceCount)
{
    m_hasRoot = true;
    ++m_depth;
    if (namespaceCount > 0) {
        m_namespaceScopes.push_back({m_depth, namespaceCount});
        m_namespaceCount += namespaceCount;
    }
    if (attributeCount > maxAttributes)
        throw XmlError(u"A tag has too many attributes"_s);
    if (m_namespaceCount > maxNamespaces)
        throw XmlError(u"Too many namespaces are declared"_s);
}

void Parser::endElement(void *self, const xmlChar *, const xmlChar *, const xmlChar *)
{
    auto &parser = *static_cast<Parser *>(self);
    parser.tell([&] {
        parser.leaveElement();
        parser.m_handler.endElement();
    });
}

void Parser::leaveElement()
{
    if (!m_namespaceScopes.empty() && m_namespaceScopes.back().depth == m_depth) {
        m_namespaceCount -= m_namespaceScopes.back().count;
        m_namespaceScopes.pop_back();
    }
    --m_depth;
}

void Parser::characters(void *self, const xmlChar *text, int length)
{
    auto &parser = *static_cast<Parser *>(self);
    parser.tell([&] { parser.m_handler.characters(QByteArrayView(bytesAt(text), length)); });
}

template <typename Error>
void Parser::noteError(void *self, Error *error)
{
    auto &parser = *static_cast<Parser *>(self);
    // Where a document names a definition outside of it, a missing entity is but a warning, and its text is left out.
    // A prefix that isn't declared is no failure: names are local here.
    const bool isFailure = error->level == XML_ERR_FATAL || error->code == XML_WAR_UNDECLARED_ENTITY;
    if (!isFailure || !parser.m_message.isEmpty())
        return;
    const bool endsEarly = error->code == XML_ERR_DOCUMENT_END && !parser.isPastRoot();
    // The parser would speak of extra content at the end.
    parser.m_message = endsEarly ? u"Premature end of the document"_s : QString::fromUtf8(error->message).trimmed();
}

} // namespace

XmlError::XmlError(QString description) : m_description(std::move(description))
{
}

std::optional<QByteArrayView> XmlAttributes::value(QByteArrayView name) const
{
    // For each attribute: local name, prefix, namespace, begin and end of the value.
    for (int index = 0; index < m_count; ++index) {
        const unsigned char **attribute = m_attributes + qsizetype(index) * 5;
        if (!attribute[1] && name == QByteArrayView(bytesAt(attribute[0])))
            return QByteArrayView(bytesAt(attribute[3]), attribute[4] - attribute[3]);
    }
    return {};
}

void XmlReader::read(QIODevice &device, XmlHandler &handler, const std::function<void()> &onPiece)
{
    Parser parser(handler);
    QByteArray chunk(chunkSize, Qt::Uninitialized);
    while (const qint64 count = device.read(chunk.data(), chunk.size())) {
        if (count < 0)
            throw XmlError(device.errorString());
        onPiece();
        parser.feed(QByteArrayView(chunk).first(count));
    }
    parser.finish();
}
