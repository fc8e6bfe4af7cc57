#pragma once

#include "audio/playlist/XmlNode.h"

#include <QByteArray>
#include <limits>
#include <utility>

struct _xmlDoc;

namespace orvel {

// Prefix and URI of each namespace that a query names.
using XPathNamespaces = std::vector<std::pair<QByteArray, QByteArray>>;

// Returns at most `maxNodes` nodes that an XPath query finds, in order; std::nullopt when it can't be
// evaluated or yields a value. Each node comes with all that is below it, so nested ones multiply.
std::optional<std::vector<XmlNode>>
xpathQuery(_xmlDoc *document, const XPathNamespaces &namespaces, const QByteArray &query,
           std::size_t maxNodes = std::numeric_limits<std::size_t>::max());

// The same on a document's bytes. Returns std::nullopt also when they hold no XML at all. Broken XML is read
// as far as it goes; no file or address is read, and entities are not expanded.
std::optional<std::vector<XmlNode>>
xpathQuery(const QByteArray &bytes, const XPathNamespaces &namespaces, const QByteArray &query,
           std::size_t maxNodes = std::numeric_limits<std::size_t>::max());

} // namespace orvel
