#include "platform/XmlNodes.h"

#include "platform/Error.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <map>
#include <set>

namespace tv::xml {
namespace {

constexpr std::size_t maxExpressions = 64;

[[noreturn]] void failSelection(std::string_view xpath) {
    throw Error(errc::typeMismatch, "XPath", "Expressão XPath inválida: " + std::string(xpath));
}

struct FreeResult {
    void operator()(xmlXPathObject* result) const noexcept { xmlXPathFreeObject(result); }
};

xmlXPathContext& contextOf(DocumentData& data, xmlDoc* doc) {
    if (!data.context) {
        data.context.reset(xmlXPathNewContext(doc));
        data.context->error = [](void*, xmlErrorPtr) {}; // the caller hears of it by an exception
    }
    return *data.context;
}

xmlXPathCompExpr* compile(DocumentData& data, xmlXPathContext& context, std::string_view xpath) {
    const std::string key(xpath);
    if (const auto known = data.expressions.find(key); known != data.expressions.end()) {
        return known->second.get();
    }
    if (data.expressions.size() >= maxExpressions) {
        data.expressions.clear();
    }
    std::unique_ptr<xmlXPathCompExpr, FreeCompiled> fresh(xmlXPathCtxtCompile(&context, bytes(key.c_str())));
    if (!fresh) {
        failSelection(xpath);
    }
    return data.expressions.emplace(key, std::move(fresh)).first->second.get();
}

/// Namespace nodes are the result's own and go with it; the document and its DTD are no nodes to a caller.
bool isSelectable(const xmlNode* node) {
    switch (node->type) {
    case XML_ELEMENT_NODE:
    case XML_ATTRIBUTE_NODE:
    case XML_TEXT_NODE:
    case XML_CDATA_SECTION_NODE:
    case XML_COMMENT_NODE:
    case XML_PI_NODE:
        return true;
    default:
        return false;
    }
}

using Declared = std::set<const xmlNs*>;
using Foreign = std::map<std::string_view, const xmlNs*>; // by prefix

/// Namespaces that the node and all below it use but do not declare themselves.
void collectForeign(const xmlNode* node, Declared declared, Foreign& foreign) {
    for (const xmlNs* space = node->nsDef; space != nullptr; space = space->next) {
        declared.insert(space);
    }
    const auto use = [&](const xmlNs* space) {
        if (space != nullptr && view(space->prefix) != "xml" && !declared.contains(space)) {
            foreign.emplace(view(space->prefix), space);
        }
    };
    use(node->ns);
    for (const xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
        use(attribute->ns);
    }
    for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
        if (child->type == XML_ELEMENT_NODE) {
            collectForeign(child, declared, foreign);
        }
    }
}

bool declaredAbove(const xmlNode* node) {
    for (const xmlNode* above = node->parent; above != nullptr && above->type == XML_ELEMENT_NODE;
         above = above->parent) {
        if (above->nsDef != nullptr) {
            return true;
        }
    }
    return false;
}

/// The library may have numbered the elements for comparing their places; a moved one's number tells no more.
void forgetPlaces(xmlNode* node) {
    if (node->type != XML_ELEMENT_NODE) {
        return;
    }
    node->content = nullptr;
    for (xmlNode* child = node->children; child != nullptr; child = child->next) {
        forgetPlaces(child);
    }
}

bool isLegal(char32_t c) {
    return c >= 0x20 ? c != 0xFFFE && c != 0xFFFF : c == '\t' || c == '\n' || c == '\r';
}

[[noreturn]] void failNode(const char* why) {
    throw Error(errc::invalidCall, "XmlNode", why);
}

} // namespace

std::vector<xmlNode*> select(xmlNode* context, std::string_view xpath) {
    DocumentData& data = dataOf(context->doc);
    xmlXPathContext& engine = contextOf(data, context->doc);
    xmlXPathCompExpr* expression = compile(data, engine, xpath);
    engine.node = context;
    const std::unique_ptr<xmlXPathObject, FreeResult> result(xmlXPathCompiledEval(expression, &engine));
    if (!result || result->type != XPATH_NODESET) {
        failSelection(xpath);
    }
    std::vector<xmlNode*> nodes;
    if (const xmlNodeSet* set = result->nodesetval; set != nullptr && set->nodeNr > 0) {
        nodes.reserve(static_cast<std::size_t>(set->nodeNr));
        std::copy_if(set->nodeTab, set->nodeTab + set->nodeNr, std::back_inserter(nodes), isSelectable);
    }
    return nodes;
}

std::string outerXml(const xmlNode* node) {
    std::string out;
    write(out, node, false);
    if (node->type != XML_ELEMENT_NODE || !declaredAbove(node)) {
        return out;
    }
    Foreign foreign;
    collectForeign(node, {}, foreign);
    std::string declarations;
    for (const auto& [prefix, space] : foreign) {
        writeNamespace(declarations, space);
    }
    return out.insert(std::min(out.find_first_of(" >"), out.size()), declarations);
}

std::string legalText(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const utf8::Decoded decoded = utf8::decode(text, at);
        utf8::append(out, isLegal(decoded.character) ? decoded.character : utf8::replacement);
        at += decoded.length;
    }
    return out;
}

std::string legalName(std::string_view name) {
    std::string result(name);
    if (result.size() != std::string_view(result.c_str()).size() ||
        xmlValidateName(bytes(result.c_str()), 0) != 0) {
        throw Error(errc::invalidCall, "XmlNode", "O nome não é permitido em XML: " + result);
    }
    return result;
}

xmlNode* newElement(xmlDoc* doc, std::string_view name) {
    return xmlNewDocRawNode(doc, nullptr, bytes(legalName(name).c_str()), nullptr);
}

void requireParent(const xmlNode* parent, const xmlNode* before) {
    if (parent->type != XML_ELEMENT_NODE) {
        failNode("O nó não pode ter filhos");
    }
    if (before != nullptr && before->parent != parent) {
        failNode("O nó de referência não é filho deste elemento");
    }
}

void requireMovable(const xmlNode* node, const xmlNode* parent) {
    if (node->doc != parent->doc || node->type == XML_ATTRIBUTE_NODE) {
        failNode("O nó não pode ser filho deste elemento");
    }
    for (const xmlNode* above = parent; above != nullptr; above = above->parent) {
        if (above == node) {
            failNode("O nó contém este elemento");
        }
    }
}

void detach(xmlNode* node) {
    if (node->parent != nullptr) {
        xmlUnlinkNode(node);
        dataOf(node->doc).detached.insert(node);
    }
}

void link(xmlNode* node, xmlNode* parent, xmlNode* before) {
    forgetPlaces(node);
    node->parent = parent;
    node->next = before;
    node->prev = before != nullptr ? before->prev : parent->last;
    (node->prev != nullptr ? node->prev->next : parent->children) = node;
    (before != nullptr ? before->prev : parent->last) = node;
}

} // namespace tv::xml
