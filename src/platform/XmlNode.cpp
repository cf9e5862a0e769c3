#include "platform/Error.h"
#include "platform/XmlDocument.h"
#include "platform/XmlLibrary.h"
#include "platform/XmlNodes.h"

namespace tv {
namespace {

using xml::bytes;
using xml::view;

xmlNode* require(void* node) {
    if (node == nullptr) {
        throw Error(errc::objectNotSet, "XmlNode", "O nó não existe no documento");
    }
    return static_cast<xmlNode*>(node);
}

bool isText(const xmlNode* node) {
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

/// Comments and instructions hold their content themselves.
bool holdsContent(const xmlNode* node) {
    return isText(node) || node->type == XML_COMMENT_NODE || node->type == XML_PI_NODE;
}

bool isVisible(const xmlNode* node) {
    return node->type == XML_ELEMENT_NODE || holdsContent(node);
}

bool hasName(const xmlNode* node) {
    return node->type == XML_ELEMENT_NODE || node->type == XML_ATTRIBUTE_NODE || node->type == XML_PI_NODE;
}

xmlNode* firstOf(xmlNode* node, bool (*wanted)(const xmlNode*)) {
    while (node != nullptr && !wanted(node)) {
        node = node->next;
    }
    return node;
}

bool isElementNode(const xmlNode* node) {
    return node->type == XML_ELEMENT_NODE;
}

/// The next node in document order below `top`, or null.
const xmlNode* following(const xmlNode* node, const xmlNode* top) {
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
        return node->children;
    }
    while (node != top && node->next == nullptr) {
        node = node->parent;
    }
    return node == top ? nullptr : node->next;
}

void appendText(std::string& out, const xmlNode* top) {
    for (const xmlNode* node = top->children; node != nullptr; node = following(node, top)) {
        if (isText(node)) {
            out.append(view(node->content));
        }
    }
}

std::string qualifiedName(const xmlAttr* attribute) {
    std::string name(attribute->ns != nullptr ? view(attribute->ns->prefix) : std::string_view{});
    return (name.empty() ? name : name + ":").append(view(attribute->name));
}

std::string valueOf(const xmlAttr* attribute) {
    std::string value;
    for (const xmlNode* part = attribute->children; part != nullptr; part = part->next) {
        value.append(view(part->content));
    }
    return value;
}

xmlAttr* firstAttribute(const xmlNode* node) {
    return node->type == XML_ELEMENT_NODE ? node->properties : nullptr;
}

xmlAttr* findAttribute(const xmlNode* node, std::string_view name) {
    for (xmlAttr* attribute = firstAttribute(node); attribute != nullptr; attribute = attribute->next) {
        const bool plain = attribute->ns == nullptr || attribute->ns->prefix == nullptr;
        if (plain ? view(attribute->name) == name : qualifiedName(attribute) == name) {
            return attribute;
        }
    }
    return nullptr;
}

} // namespace

bool XmlNode::isElement() const {
    return require(node_)->type == XML_ELEMENT_NODE;
}

std::string XmlNode::baseName() const {
    return std::string(name());
}

std::string_view XmlNode::name() const {
    const xmlNode* node = require(node_);
    return hasName(node) ? view(node->name) : std::string_view{};
}

std::string XmlNode::text() const {
    std::string buffer;
    const std::string_view text = this->text(buffer);
    if (text.data() != buffer.data()) {
        buffer = text;
    }
    return buffer;
}

std::string_view XmlNode::text(std::string& buffer) const {
    const xmlNode* node = require(node_);
    if (holdsContent(node)) {
        return view(node->content);
    }
    const xmlNode* child = node->children;
    if (child == nullptr) {
        return {};
    }
    if (child->next == nullptr && isText(child)) {
        return view(child->content);
    }
    buffer.clear();
    appendText(buffer, node);
    return buffer;
}

void XmlNode::setText(std::string_view text) {
    xmlNode* node = require(node_);
    if (holdsContent(node)) {
        xmlNodeSetContent(node, nullptr);
        const std::string legal = xml::legalText(text);
        xmlNodeAddContentLen(node, bytes(legal.data()), static_cast<int>(legal.size()));
        return;
    }
    while (node->children != nullptr) {
        xml::detach(node->children);
    }
    if (!text.empty()) {
        const std::string legal = xml::legalText(text);
        xml::link(xmlNewDocTextLen(node->doc, bytes(legal.data()), static_cast<int>(legal.size())), node,
                  nullptr);
    }
}

std::string XmlNode::getNamedItem(std::string_view name) const {
    xmlNode* node = require(node_);
    if (const xmlAttr* found = findAttribute(node, name)) {
        return valueOf(found);
    }
    throw Error(errc::objectNotSet, "XmlNode",
                "O elemento '" + std::string(view(node->name)) + "' da linha " +
                    std::to_string(xmlGetLineNo(node)) + " não tem o atributo '" + std::string(name) + "'");
}

std::optional<std::string> XmlNode::attribute(std::string_view name) const {
    const xmlAttr* found = findAttribute(require(node_), name);
    return found == nullptr ? std::nullopt : std::optional(valueOf(found));
}

std::vector<std::pair<std::string, std::string>> XmlNode::attributes() const {
    std::vector<std::pair<std::string, std::string>> result;
    for (xmlAttr* attribute = firstAttribute(require(node_)); attribute != nullptr;
         attribute = attribute->next) {
        result.emplace_back(qualifiedName(attribute), valueOf(attribute));
    }
    return result;
}

XmlNode XmlNode::parent() const {
    xmlNode* above = require(node_)->parent;
    return XmlNode(above != nullptr && above->type == XML_ELEMENT_NODE ? above : nullptr);
}

XmlNode XmlNode::firstChild() const {
    return XmlNode(firstOf(require(node_)->children, isVisible));
}

XmlNode XmlNode::firstElement() const {
    return XmlNode(firstOf(require(node_)->children, isElementNode));
}

XmlNode XmlNode::nextElement() const {
    return XmlNode(firstOf(require(node_)->next, isElementNode));
}

XmlNode XmlNode::child(std::string_view name) const {
    for (xmlNode* node = require(node_)->children; node != nullptr; node = node->next) {
        if (node->type == XML_ELEMENT_NODE && view(node->name) == name) {
            return XmlNode(node);
        }
    }
    return {};
}

std::vector<XmlNode> XmlNode::childNodes() const {
    std::vector<XmlNode> result;
    for (xmlNode* node = require(node_)->children; node != nullptr; node = node->next) {
        if (isVisible(node)) {
            result.push_back(XmlNode(node));
        }
    }
    return result;
}

std::vector<XmlNode> XmlNode::childElements() const {
    std::vector<XmlNode> result;
    for (XmlNode node = firstElement(); node; node = node.nextElement()) {
        result.push_back(node);
    }
    return result;
}

std::vector<XmlNode> XmlNode::selectNodes(std::string_view xpath) const {
    std::vector<XmlNode> result;
    for (xmlNode* node : xml::select(require(node_), xpath)) {
        result.push_back(XmlNode(node));
    }
    return result;
}

XmlNode XmlNode::selectSingleNode(std::string_view xpath) const {
    const std::vector<xmlNode*> found = xml::select(require(node_), xpath);
    return XmlNode(found.empty() ? nullptr : found.front());
}

std::string XmlNode::outerXml() const {
    return xml::outerXml(require(node_));
}

XmlNode XmlNode::appendElement(std::string_view name) {
    return insertElement(name, {});
}

XmlNode XmlNode::insertElement(std::string_view name, XmlNode before) {
    xmlNode* node = require(node_);
    xml::requireParent(node, static_cast<xmlNode*>(before.node_));
    xmlNode* fresh = xml::newElement(node->doc, name);
    xml::link(fresh, node, static_cast<xmlNode*>(before.node_));
    return XmlNode(fresh);
}

void XmlNode::appendChild(XmlNode child) {
    insertBefore(child, {});
}

void XmlNode::insertBefore(XmlNode child, XmlNode before) {
    xmlNode* node = require(node_);
    xmlNode* moved = require(child.node_);
    auto* const place = static_cast<xmlNode*>(before.node_);
    xml::requireParent(node, place);
    xml::requireMovable(moved, node);
    if (moved != place) {
        xml::detach(moved);
        xml::link(moved, node, place);
    }
}

void XmlNode::removeChild(XmlNode child) {
    xmlNode* node = require(node_);
    xmlNode* removed = require(child.node_);
    if (removed->parent != node || removed->type == XML_ATTRIBUTE_NODE) {
        throw Error(errc::invalidCall, "XmlNode", "O nó não é filho deste elemento");
    }
    xml::detach(removed);
}

void XmlNode::setAttribute(std::string_view name, std::string_view value) {
    xmlNode* node = require(node_);
    const std::string legalName = xml::legalName(name);
    const std::string legalValue = xml::legalText(value);
    if (node->type != XML_ELEMENT_NODE) {
        throw Error(errc::invalidCall, "XmlNode", "O nó não tem atributos");
    }
    if (xmlAttr* found = findAttribute(node, name)) {
        xmlFreeNodeList(found->children);
        found->children = found->last = xmlNewDocText(node->doc, bytes(legalValue.c_str()));
        found->children->parent = reinterpret_cast<xmlNode*>(found);
    } else {
        xmlNewProp(node, bytes(legalName.c_str()), bytes(legalValue.c_str()));
    }
}

} // namespace tv
