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
    std::optional<QString> nodeContent{};              // the value, trimmed
    std::shared_ptr<const XmlNode> attributeContent{}; // only of a value that is no plain text
};

// What a query tells of a node; what has no value is absent or empty.
struct XmlNode
{
    std::optional<QString> nodeName{};
    // The node's own content; of an element the texts directly in it, each trimmed, joined with nothing
    // between.
    std::optional<QString> nodeContent{};
    std::vector<XmlAttribute> nodeAttributeArray{};
    std::vector<XmlNode> nodeChildArray{};
};

// Nothing for a text that went into its parent's content (`parentContent`, null when there is no parent), and
// for what is no node of the tree. An entity reference has its name alone: neither its text nor what it
// stands for is followed.
std::optional<XmlNode> nodeDictionary(const _xmlNode &node, std::optional<QString> *parentContent);

} // namespace orvel
