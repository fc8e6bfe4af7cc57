#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

struct _xmlNode;

namespace orvel {

struct XmlNode;

struct XmlAttribute
{
    QString attributeName;
    std::optional<QString> nodeContent{}; // the value, trimmed
    // Deliberate: set only for a value that is not plain text
    // (XPathQueryTest.TellsNamesContentsAttributesAndChildren).
    std::shared_ptr<const XmlNode> attributeContent{};
};

// What a query finds of a node. What has no value is absent or empty.
struct XmlNode
{
    std::optional<QString> nodeName{};
    // The node's own content. An element's are the texts directly in it, each trimmed, joined without a
    // separator.
    std::optional<QString> nodeContent{};
    std::vector<XmlAttribute> nodeAttributeArray{};
    std::vector<XmlNode> nodeChildArray{};
};

// Returns std::nullopt for a text, which is appended to its parent's content (`parentContent`, nullptr
// without a parent), and for what is not a node of the tree. An entity reference has its name alone; what it
// stands for is not followed.
std::optional<XmlNode> nodeDictionary(const _xmlNode &node, std::optional<QString> *parentContent);

} // namespace orvel
