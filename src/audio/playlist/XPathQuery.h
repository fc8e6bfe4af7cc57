#pragma once

#include "audio/playlist/XmlNode.h"

#include <QByteArray>
#include <limits>
#include <utility>

struct _xmlDoc;

namespace orvel {

// Prefix and URI of each namespace that a query names.
using XPathNamespaces = std::vector<std::pair<QByteArray, QByteArray>>;

// The first `most` nodes that an XPath query finds, in order; nothing when it can't be evaluated or gives no
// nodes but a value. Each node comes with all that is below it, so nested ones multiply.
std::optional<std::vector<XmlNode>> xpathQuery(_xmlDoc *document, const XPathNamespaces &namespaces,
                                               const QByteArray &query,
                                               std::size_t most = std::numeric_limits<std::size_t>::max());

// The same on a document's bytes; nothing also when they hold no XML at all. Broken XML is read as far as it
// goes; nothing is fetched, and entities are not expanded.
std::optional<std::vector<XmlNode>> xpathQuery(const QByteArray &bytes, const XPathNamespaces &namespaces,
                                               const QByteArray &query,
                                               std::size_t most = std::numeric_limits<std::size_t>::max());

} // namespace orvel
