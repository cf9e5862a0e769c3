#pragma once

#include <libxml/tree.h>
#include <libxml/xmlerror.h>
#include <libxml/xpath.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

/// What the document, its nodes and the transforms share about the document library.
namespace tv::xml {

/// Starts the library once a thread and silences what it would print.
void start();

/// Elements nest no deeper than this in a document that is loaded.
inline constexpr int maxDepth = 1000;

struct FreeDoc {
    void operator()(xmlDoc* doc) const noexcept;
};
/// A document; what `DocumentData` holds of it goes with it.
using Doc = std::unique_ptr<xmlDoc, FreeDoc>;

/// What the bytes are for: a document loses its text nodes of white space alone and keeps its CDATA sections,
/// a stylesheet the other way round. As written keeps both.
enum class Purpose { Document, Stylesheet, AsWritten };

/// Parses foreign bytes. No external entity and no DTD is read; entities of the internal subset may hold text
/// alone and grow the document by a small factor at most. `encoding` names the encoding, null means what the
/// bytes declare. Empty when the bytes are not a well-formed document with namespaces; `reason` then tells
/// why.
Doc parse(std::string_view bytes, const char* encoding, const char* url, Purpose purpose,
          std::string& reason);

/// The Portuguese sentence for a fault of the library with its line; where there is none, the library's own
/// text.
std::string faultText(const xmlError& fault);

struct FreeCompiled {
    void operator()(xmlXPathCompExpr* expression) const noexcept { xmlXPathFreeCompExpr(expression); }
};
struct FreeContext {
    void operator()(xmlXPathContext* context) const noexcept { xmlXPathFreeContext(context); }
};

/// What hangs on a document beside its tree: compiled expressions, and the nodes that were taken out of the
/// tree, which live as long as the document since handles may point to them.
struct DocumentData {
    std::unordered_set<xmlNode*> detached;
    std::unordered_map<std::string, std::unique_ptr<xmlXPathCompExpr, FreeCompiled>> expressions;
    std::unique_ptr<xmlXPathContext, FreeContext> context;
};

/// The data of a document, made at the first call.
DocumentData& dataOf(xmlDoc* doc);

inline const xmlChar* bytes(const char* text) noexcept {
    return reinterpret_cast<const xmlChar*>(text);
}
inline const char* chars(const xmlChar* text) noexcept {
    return reinterpret_cast<const char*>(text);
}
inline std::string_view view(const xmlChar* text) noexcept {
    return text == nullptr ? std::string_view{} : std::string_view{chars(text)};
}

/// Writes a node and all below it, or a document without its declaration, as UTF-8 text. Empty elements get
/// both their tags. `indent` puts one element a line (CR LF), a tab a level, where elements hold no text of
/// their own.
void write(std::string& out, const xmlNode* node, bool indent);
void write(std::string& out, const xmlDoc* doc, bool indent);
/// Writes the declaration of a name space, as it stands in a start tag.
void writeNamespace(std::string& out, const xmlNs* space);

} // namespace tv::xml
