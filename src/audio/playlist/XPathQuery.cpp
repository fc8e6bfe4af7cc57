#include "audio/playlist/XPathQuery.h"

#include "platform/foundation/Log.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>
#include <limits>
#include <memory>

namespace orvel {

namespace {

template<auto function>
struct Freed
{
    template<typename T>
    void operator()(T *handle) const
    {
        function(handle);
    }
};
using Parser = std::unique_ptr<xmlParserCtxt, Freed<xmlFreeParserCtxt>>;
using Document = std::unique_ptr<xmlDoc, Freed<xmlFreeDoc>>;
using Context = std::unique_ptr<xmlXPathContext, Freed<xmlXPathFreeContext>>;
using Result = std::unique_ptr<xmlXPathObject, Freed<xmlXPathFreeObject>>;

const xmlChar *utf8(const QByteArray &text) { return reinterpret_cast<const xmlChar *>(text.constData()); }

void logXPathError(void *, xmlErrorPtr error) { qCDebug(logAudio) << "XPath:" << error->message; }

std::nullopt_t fail(const char *message)
{
    qCWarning(logAudio) << message;
    return std::nullopt;
}

// libxml2 takes quadratic time for the attributes of one tag: it compares each with the differing ones before
// it, whose names the parser's dictionary bounds, and looks for the end of its list of them all. A megabyte
// of attributes would take minutes. Counted here, whatever encoding the document is in.
constexpr std::size_t maxNameBytes = 16 * 1024;
constexpr int maxAttributes = 5000;

void startElement(void *parser, const xmlChar *name, const xmlChar *prefix, const xmlChar *uri,
                  int namespaceCount, const xmlChar **namespaces, int attributeCount, int defaultedCount,
                  const xmlChar **attributes)
{
    if (attributeCount > maxAttributes)
        xmlStopParser(static_cast<xmlParserCtxtPtr>(parser));
    else
        xmlSAX2StartElementNs(parser, name, prefix, uri, namespaceCount, namespaces, attributeCount,
                              defaultedCount, attributes);
}

// Attributes declared with values belong to every element of a name: a small document could stand for a huge
// one.
void refuseAttributeDeclaration(void *parser, const xmlChar *, const xmlChar *, int, int, const xmlChar *,
                                xmlEnumerationPtr values)
{
    xmlFreeEnumeration(values);
    xmlStopParser(static_cast<xmlParserCtxtPtr>(parser));
}

// libxml2 reports bytes that are not in a document's encoding on stderr, whatever the options, while a thread
// has no handler of its own.
class SilentErrors
{
public:
    SilentErrors() { xmlSetStructuredErrorFunc(nullptr, ignore); }
    ~SilentErrors() { xmlSetStructuredErrorFunc(nullptr, nullptr); }
    SilentErrors(const SilentErrors &) = delete;
    SilentErrors &operator=(const SilentErrors &) = delete;

private:
    static void ignore(void *, xmlErrorPtr) {}
};

Document documentOf(const QByteArray &bytes)
{
    // Without XML_PARSE_NOENT and XML_PARSE_HUGE a document stays about as large as its text.
    constexpr int options = XML_PARSE_RECOVER | XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
    const Parser parser(xmlNewParserCtxt());
    if (!parser || bytes.size() > std::numeric_limits<int>::max())
        return nullptr;
    const SilentErrors silent;
    xmlDictSetLimit(parser->dict, maxNameBytes);
    parser->sax->startElementNs = startElement;
    parser->sax->attributeDecl = refuseAttributeDeclaration;
    return Document(
        xmlCtxtReadMemory(parser.get(), bytes.constData(), int(bytes.size()), "", nullptr, options));
}

} // namespace

std::optional<std::vector<XmlNode>> xpathQuery(_xmlDoc *document, const XPathNamespaces &namespaces,
                                               const QByteArray &query, std::size_t maxNodes)
{
    const Context context(xmlXPathNewContext(document));
    if (!context)
        return fail("Unable to create XPath context.");
    context->error = logXPathError;
    for (const auto &[prefix, uri] : namespaces)
        xmlXPathRegisterNs(context.get(), utf8(prefix), utf8(uri));
    const Result result(xmlXPathEvalExpression(utf8(query), context.get()));
    if (!result)
        return fail("Unable to evaluate XPath.");
    if (result->type != XPATH_NODESET || !result->nodesetval)
        return fail("Nodes was nil.");

    std::vector<XmlNode> nodes;
    for (int i = 0; i < result->nodesetval->nodeNr && nodes.size() < maxNodes; ++i) {
        if (std::optional<XmlNode> node = nodeDictionary(*result->nodesetval->nodeTab[i], nullptr))
            nodes.push_back(std::move(*node));
    }
    return nodes;
}

std::optional<std::vector<XmlNode>> xpathQuery(const QByteArray &bytes, const XPathNamespaces &namespaces,
                                               const QByteArray &query, std::size_t maxNodes)
{
    const Document document = documentOf(bytes);
    if (!document)
        return fail("Unable to parse.");
    return xpathQuery(document.get(), namespaces, query, maxNodes);
}

} // namespace orvel
