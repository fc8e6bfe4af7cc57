#include "audio/playlist/XmlNode.h"

#include <libxml/tree.h>

namespace orvel {

namespace {

QString textOf(const xmlChar *utf8) { return QString::fromUtf8(reinterpret_cast<const char *>(utf8)); }

// Other kinds have no content of their own, or something else in its place.
const xmlChar *contentOf(const xmlNode &node)
{
    switch (node.type) {
    case XML_TEXT_NODE:
    case XML_CDATA_SECTION_NODE:
    case XML_PI_NODE:
    case XML_COMMENT_NODE:
        return node.content;
    default:
        return nullptr;
    }
}

bool hasChildrenOfItsOwn(const xmlNode &node)
{
    return node.type == XML_ELEMENT_NODE || node.type == XML_ATTRIBUTE_NODE || node.type == XML_DOCUMENT_NODE;
}

std::vector<XmlAttribute> attributesOf(const xmlNode &node)
{
    std::vector<XmlAttribute> attributes;
    if (node.type != XML_ELEMENT_NODE)
        return attributes;
    for (const xmlAttr *attribute = node.properties; attribute; attribute = attribute->next) {
        XmlAttribute &made = attributes.emplace_back(XmlAttribute{textOf(attribute->name)});
        if (!attribute->children)
            continue;
        if (std::optional<XmlNode> content = nodeDictionary(*attribute->children, &made.nodeContent))
            made.attributeContent = std::make_shared<XmlNode>(std::move(*content));
    }
    return attributes;
}

} // namespace

std::optional<XmlNode> nodeDictionary(const _xmlNode &node, std::optional<QString> *parentContent)
{
    if (node.type == XML_NAMESPACE_DECL)
        return std::nullopt;
    XmlNode made;
    if (node.name)
        made.nodeName = textOf(node.name);
    if (const xmlChar *const content = contentOf(node)) {
        if (parentContent && made.nodeName == QStringLiteral("text")) {
            *parentContent = parentContent->value_or(QString()) + textOf(content).trimmed();
            return std::nullopt;
        }
        made.nodeContent = textOf(content);
    }
    made.nodeAttributeArray = attributesOf(node);
    if (hasChildrenOfItsOwn(node)) {
        for (const _xmlNode *child = node.children; child; child = child->next) {
            if (std::optional<XmlNode> converted = nodeDictionary(*child, &made.nodeContent))
                made.nodeChildArray.push_back(std::move(*converted));
        }
    }
    return made;
}

} // namespace orvel
