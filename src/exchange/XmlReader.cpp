#include "exchange/XmlReader.h"

#include "records/TextTrimming.h"

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

// libxml2 compares each attribute of a tag with all others, and each prefix with all that are in scope.
constexpr int maxAttributes = 256; ///< in one tag
constexpr int maxNamespaces = 256; ///< declared by all open elements together
/// In bytes of UTF-8; comments count as tags. Has room for the longest name with every character escaped.
constexpr qsizetype maxTag = 1 << 21;
static_assert(maxTag > maxNameLength * 6 + (1 << 16));

const char *bytesAt(const xmlChar *text)
{
    return reinterpret_cast<const char *>(text);
}

void dropMessage(void *, const char *, ...) // NOLINT(cert-dcl50-cpp): the shape that libxml2 asks for
{
}

/// Keeps libxml2 from printing its messages during this object's lifetime.
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

/// One run of libxml2's SAX2 push parser. Only this interface, with callbacks that offer no entities, neither reads
/// other files, nor expands declared entities, nor silently drops references to them.
class Parser {
public:
    explicit Parser(XmlHandler &handler);

    void feed(QByteArrayView bytes);
    void finish() { parse(nullptr, 0, true); }

private:
    static void startElement(void *self, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri,
        int namespaceCount, const xmlChar **namespaces, int attributeCount, int defaultedCount,
        const xmlChar **attributes);
    static void endElement(void *self, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri);
    static void characters(void *self, const xmlChar *text, int length);
    // Whether the error is const depends on the version of libxml2.
    template <typename Error>
    static void noteError(void *self, Error *error);

    [[nodiscard]] static xmlSAXHandler callbacks();
    /// Exceptions must not pass through C code: what `body` throws is rethrown after the chunk.
    template <typename Body>
    void tell(Body body) noexcept;
    void enterElement(int attributeCount, int namespaceCount);
    void leaveElement();
    [[nodiscard]] bool isPastRoot() const noexcept { return m_hasRoot && m_depth == 0; }
    void parse(const char *bytes, int size, bool isLast);

    struct ContextFreer {
        void operator()(xmlParserCtxt *context) const noexcept
        {
            xmlFreeDoc(context->myDoc); // holds the declared entities
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
    std::exception_ptr m_failure; ///< thrown by us or the handler
    QString m_message; ///< the parser's first error
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
    // Without NOENT, "&amp;" in an attribute arrives as "&#38;". It expands nothing: the callbacks offer no entities.
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
    // What is left is an unfinished tag. CDATA sections are text and have the parser's own limit.
    const xmlParserInput *input = m_context->input;
    if (m_context->instate != XML_PARSER_CDATA_SECTION && input && input->end - input->cur > maxTag)
        throw XmlError(u"A tag is too long"_s);
}

void Parser::parse(const char *bytes, int size, bool isLast)
{
    xmlParseChunk(m_context.get(), bytes, size, isLast ? 1 : 0);
    if (m_failure)
        std::rethrow_exception(m_failure);
    if (!m_message.isEmpty())
        throw XmlError(m_message);
    if (m_context->disableSAX || (isLast && !m_context->wellFormed))
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
    // In a document with an external definition an unknown entity is only a warning, and its text would be missing.
    // Undeclared prefixes are no failure: only local names matter.
    const bool isFailure = error->level == XML_ERR_FATAL || error->code == XML_WAR_UNDECLARED_ENTITY;
    if (!isFailure || !parser.m_message.isEmpty())
        return;
    const bool endsEarly = error->code == XML_ERR_DOCUMENT_END && !parser.isPastRoot();
    // libxml2's own message for a cut-off document speaks of extra content at its end.
    parser.m_message = endsEarly ? u"Premature end of the document"_s : QString::fromUtf8(error->message).trimmed();
}

} // namespace

std::optional<QByteArrayView> XmlAttributes::value(QByteArrayView name) const
{
    // libxml2's layout: local name, prefix, namespace, begin and end of the value.
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
