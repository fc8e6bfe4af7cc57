#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace orvel {

// Attribute values by their names, which are in lower case.
using HtmlAttributes = QHash<QByteArray, QString>;

// Takes what readHtml() finds, in the order of the document. Names are in lower case.
class HtmlHandler
{
public:
    virtual ~HtmlHandler() = default;
    virtual void startElement(const QByteArray &name, const HtmlAttributes &attributes) = 0;
    // Called once for each started element, innermost first.
    virtual void endElement(const QByteArray &name) = 0;
    // Entities are resolved. A run of text may come in several calls.
    virtual void characters(const QString &text) = 0;
};

// At most this many elements are open at a time.
inline constexpr int maxHtmlDepth = 128;

// Reads HTML as it is delivered, however broken. Leaves out scripts, styles and comments. Opens no file and
// no connection. Takes time and memory in proportion to the size of `html`, and reads its first 256 KiB (as
// UTF-8) only. Ends all open elements where more than maxHtmlDepth would be nested. Any thread.
void readHtml(const QString &html, HtmlHandler &handler);

} // namespace orvel
