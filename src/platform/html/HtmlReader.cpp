#include "platform/html/HtmlReader.h"

#include <QByteArrayView>
#include <QRegularExpression>
#include <QStringView>
#include <libxml/HTMLparser.h>
#include <memory>

namespace orvel {

namespace {

constexpr qsizetype maxBytes = 256 * 1024;
// libxml2 compares each attribute of a tag with the differing ones before it. This bounds the names that
// differ, beyond which attributes are left out: 256 KiB of attributes take 20 ms with it, and 3 s without.
constexpr std::size_t maxNameBytes = 4 * 1024;
// Stands around the document: libxml2 ends its reading with the outermost element. No page closes this one.
constexpr QByteArrayView root = "<orvel-root>";

bool isNoText(QChar character)
{
    const bool isSpace = character == u'\t' || character == u'\n' || character == u'\r';
    return (character < u' ' && !isSpace) || character >= u'\ufffe';
}

// Without what libxml2 stumbles over, and without what it would report as text: "<![if !supportLists]>" of
// word processors, and declarations.
QString withoutDeclarations(QString html)
{
    static const QRegularExpression declaration(QStringLiteral("<!(?!--)[^<>]*+(?<!--)>"));
    return html.removeIf(isNoText).remove(declaration);
}

// Cut between two characters.
QByteArray boundedUtf8(const QString &html)
{
    QByteArray bytes = withoutDeclarations(html.left(maxBytes)).toUtf8();
    qsizetype end = std::min(bytes.size(), maxBytes);
    while (end < bytes.size() && (uchar(bytes.at(end)) & 0xC0) == 0x80)
        --end;
    bytes.truncate(end);
    return bytes;
}

QByteArray nameOf(const xmlChar *name) { return reinterpret_cast<const char *>(name); }

// Pages number Windows' characters as if they were Unicode's: "&#146;" is an apostrophe.
QString withoutWindowsNumbers(QString text)
{
    static constexpr QStringView windows = u"€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008dŽ\u008f\u0090‘’“”•–—˜™š›œ\u009džŸ";
    for (QChar &character : text) {
        if (character >= u'\u0080' && character <= u'\u009f')
            character = windows.at(character.unicode() - 0x80);
    }
    return text;
}

class Reader
{
public:
    explicit Reader(HtmlHandler &handler) : m_handler(handler) {}

    // Returns what comes after the tag that was too deep, or an empty view.
    QByteArrayView read(QByteArrayView html)
    {
        htmlSAXHandler events{};
        events.startElement = startElement;
        events.endElement = endElement;
        events.characters = events.ignorableWhitespace = characters;
        events.cdataBlock = leaveOut; // scripts and styles
        const std::unique_ptr<htmlParserCtxt, decltype(&htmlFreeParserCtxt)> parser(
            htmlCreatePushParserCtxt(&events, this, nullptr, 0, nullptr, XML_CHAR_ENCODING_UTF8),
            htmlFreeParserCtxt);
        if (!parser)
            return {};
        m_parser = parser.get();
        m_tooDeepAt = -1;
        htmlCtxtUseOptions(m_parser, HTML_PARSE_RECOVER | HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC |
                                         HTML_PARSE_NOIMPLIED | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING);
        xmlDictSetLimit(m_parser->dict, maxNameBytes);
        htmlParseChunk(m_parser, root.data(), int(root.size()), 0);
        htmlParseChunk(m_parser, html.data(), int(html.size()), 1);
        while (!m_open.isEmpty())
            m_handler.endElement(m_open.takeLast());
        const qsizetype end = m_tooDeepAt < 0 ? -1 : html.indexOf('>', m_tooDeepAt);
        return end < 0 ? QByteArrayView() : html.sliced(end + 1);
    }

private:
    static void startElement(void *self, const xmlChar *name, const xmlChar **attributes)
    {
        static_cast<Reader *>(self)->start(nameOf(name), attributes);
    }
    static void endElement(void *self, const xmlChar *name)
    {
        static_cast<Reader *>(self)->end(nameOf(name));
    }
    static void characters(void *self, const xmlChar *text, int size)
    {
        static_cast<Reader *>(self)->m_handler.characters(
            withoutWindowsNumbers(QString::fromUtf8(reinterpret_cast<const char *>(text), size)));
    }
    static void leaveOut(void *, const xmlChar *, int) {}

    void start(const QByteArray &name, const xmlChar **attributes)
    {
        if (name == root.sliced(1, root.size() - 2))
            return;
        if (m_open.size() == maxHtmlDepth) {
            m_tooDeepAt = qsizetype(xmlByteConsumed(m_parser)) - root.size();
            xmlStopParser(m_parser);
            return;
        }
        HtmlAttributes values;
        for (; attributes && attributes[0]; attributes += 2)
            values.insert(nameOf(attributes[0]), QString::fromUtf8(nameOf(attributes[1])));
        m_open.append(name);
        m_handler.startElement(name, values);
    }
    // libxml2 may end what it has not started, and leave open what it has.
    void end(const QByteArray &name)
    {
        const qsizetype at = m_open.lastIndexOf(name);
        while (at >= 0 && m_open.size() > at)
            m_handler.endElement(m_open.takeLast());
    }

    HtmlHandler &m_handler;
    htmlParserCtxtPtr m_parser = nullptr;
    QByteArrayList m_open;
    qsizetype m_tooDeepAt = -1;
};

} // namespace

void readHtml(const QString &html, HtmlHandler &handler)
{
    const QByteArray bytes = boundedUtf8(html);
    Reader reader(handler);
    for (QByteArrayView rest = bytes; !rest.isEmpty();)
        rest = reader.read(rest);
}

} // namespace orvel
