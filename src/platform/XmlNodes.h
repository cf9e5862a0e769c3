#pragma once

#include "platform/XmlLibrary.h"

#include <string>
#include <string_view>
#include <vector>

/// Work on the nodes of a document's tree that XmlNode and XmlDocument share.
namespace tv::xml {

/// Nodes that an XPath 1.0 expression selects, in document order. `context` is a node or the document. Throws
/// Error 13 for an expression that is none or that selects no nodes by its nature.
std::vector<xmlNode*> select(xmlNode* context, std::string_view xpath);

/// The node with all below it as text; names of name spaces declared above are declared on it.
std::string outerXml(const xmlNode* node);

/// `text` without what no XML document can hold: broken bytes and control characters become U+FFFD.
std::string legalText(std::string_view text);
/// `name` itself. Throws Error 5 when it is no legal name.
std::string legalName(std::string_view name);

/// A new element that hangs nowhere. Throws Error 5 when `name` is no legal name.
xmlNode* newElement(xmlDoc* doc, std::string_view name);

/// Throws Error 5 unless `parent` can hold children and `before`, if any, is one of them.
void requireParent(const xmlNode* parent, const xmlNode* before);
/// Throws Error 5 unless `node` is of the same document and can hang below `parent`.
void requireMovable(const xmlNode* node, const xmlNode* parent);

/// Takes a node out of the tree; it lives on with the document.
void detach(xmlNode* node);
/// Hangs a node that hangs nowhere below `parent`, before `before` or last. Texts are not joined.
void link(xmlNode* node, xmlNode* parent, xmlNode* before);

} // namespace tv::xml
