#include "platform/XmlLibrary.h"

#include "platform/text.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <new>

namespace tv::xml {
namespace {

/// Bytes that entities may add to the attributes of a document.
constexpr std::size_t maxAdded = 10'000'000;
/// Attributes of one element; the library compares each with every other.
constexpr int maxAttributes = 1000;
/// Declarations of a DOCTYPE; the library's cost grows with their square.
constexpr int maxDeclarations = 1000;

// The library's only way to hand over messages; a variadic function is what it asks for.
void ignoreMessage(void* /*data*/, const char* /*format*/, ...) {} // NOLINT(cert-dcl50-cpp)

/// What one parse is to keep an eye on.
struct Watch {
    bool hasEntities = false; ///< The internal subset declares entities.
    bool stopAtEntities = true;
    int declarations = 0;
    std::size_t attributeBytes = 0;
    std::size_t maxAttributeBytes = 0;
    std::string reason; ///< Of the first fault.
};

struct FreeParser {
    void operator()(xmlParserCtxt* parser) const noexcept { xmlFreeParserCtxt(parser); }
};
using Parser = std::unique_ptr<xmlParserCtxt, FreeParser>;

xmlParserCtxt* parserOf(void* data) {
    return static_cast<xmlParserCtxt*>(data);
}
Watch& watchOf(void* data) {
    return *static_cast<Watch*>(parserOf(data)->_private);
}

/// Keeps the reason of the first fault. No exception may pass through the library: without memory for the
/// text the fault has none.
template<typename Reason>
void keepReason(Watch& watch, Reason reason) noexcept {
    try {
        if (watch.reason.empty()) {
            watch.reason = reason();
        }
    } catch (const std::bad_alloc&) {
        return;
    }
}

void refuse(void* data, const char* why) noexcept {
    keepReason(watchOf(data), [why] { return why; });
    xmlStopParser(parserOf(data));
}

void onFault(void* data, const xmlError* fault) noexcept {
    if (fault->level >= XML_ERR_ERROR) {
        keepReason(watchOf(data), [fault] { return faultText(*fault); });
    }
}

/// False, and the end of the parse, at the declaration that is one too many.
bool mayDeclare(void* data) {
    const bool may = ++watchOf(data).declarations <= maxDeclarations;
    if (!may) {
        refuse(data, "O documento declara coisas demais em DOCTYPE.");
    }
    return may;
}

/// General entities that hold text alone are taken; those that lie elsewhere, and parameter entities, stay
/// unknown.
void onEntity(void* data, const xmlChar* name, int type, const xmlChar* publicId, const xmlChar* systemId,
              xmlChar* content) {
    Watch& watch = watchOf(data);
    watch.hasEntities = true;
    if (watch.stopAtEntities) {
        xmlStopParser(parserOf(data));
    } else if (mayDeclare(data) && type == XML_INTERNAL_GENERAL_ENTITY) {
        if (text::contains(view(content), "<")) {
            refuse(data, "Uma entidade do documento contém marcação.");
        } else {
            xmlSAX2EntityDecl(data, name, type, publicId, systemId, content);
        }
    }
}

void onElementDeclaration(void* data, const xmlChar* name, int type, xmlElementContent* content) {
    if (mayDeclare(data)) {
        xmlSAX2ElementDecl(data, name, type, content);
    }
}

void onAttributeDeclaration(void* data, const xmlChar* element, const xmlChar* name, int type, int kind,
                            const xmlChar* defaultValue, xmlEnumeration* values) {
    if (mayDeclare(data)) {
        xmlSAX2AttributeDecl(data, element, name, type, kind, defaultValue, values);
    } else {
        xmlFreeEnumeration(values);
    }
}

void onNotation(void* data, const xmlChar* name, const xmlChar* publicId, const xmlChar* systemId) {
    if (mayDeclare(data)) {
        xmlSAX2NotationDecl(data, name, publicId, systemId);
    }
}

void onUnparsedEntity(void* data, const xmlChar* name, const xmlChar* publicId, const xmlChar* systemId,
                      const xmlChar* notation) {
    if (mayDeclare(data)) {
        xmlSAX2UnparsedEntityDecl(data, name, publicId, systemId, notation);
    }
}

void onStartElement(void* data, const xmlChar* localName, const xmlChar* prefix, const xmlChar* uri,
                    int namespaceCount, const xmlChar** namespaces, int attributeCount, int defaultedCount,
                    const xmlChar** attributes) {
    constexpr int fieldsOfAttribute = 5; // name, prefix, URI, start and end of the value
    if (parserOf(data)->nameNr > maxDepth) {
        refuse(data, "Os elementos do documento têm níveis demais.");
        return;
    }
    Watch& watch = watchOf(data);
    for (int i = 0; i < attributeCount - defaultedCount; ++i) { // default values are left out of the tree
        const xmlChar** attribute = attributes + static_cast<std::ptrdiff_t>(i) * fieldsOfAttribute;
        watch.attributeBytes += static_cast<std::size_t>(attribute[4] - attribute[3]);
    }
    if (watch.attributeBytes > watch.maxAttributeBytes) {
        refuse(data, "Os atributos do documento crescem demais.");
        return;
    }
    xmlSAX2StartElementNs(data, localName, prefix, uri, namespaceCount, namespaces, attributeCount,
                          defaultedCount, attributes);
}

/// Place behind `end`, or the end of the text.
std::size_t behind(std::string_view s, std::string_view end, std::size_t from) {
    const std::size_t found = s.find(end, from);
    return found == std::string_view::npos ? s.size() : found + end.size();
}

/// Place behind the tag that starts at `at`, with the number of its values between quotation marks.
std::size_t behindTag(std::string_view s, std::size_t at, int& values) {
    for (++at; at < s.size() && s[at] != '>' && s[at] != '<'; ++at) {
        if (s[at] == '"' || s[at] == '\'') {
            ++values;
            at = std::min(s.find(s[at], at + 1), s.size() - 1);
        }
    }
    return at;
}

/// Bytes of the shortest attribute, as in ` a=""`.
constexpr std::size_t shortestAttribute = 5;

/// True when some element has far more attributes than any document of this field.
bool hasCrowdedTag(std::string_view s) {
    for (std::size_t at = s.find('<'); at < s.size(); at = s.find('<', at)) {
        const std::string_view rest = s.substr(at);
        int values = 0;
        if (rest.starts_with("<!--")) {
            at = behind(s, "-->", at);
        } else if (rest.starts_with("<![CDATA[")) {
            at = behind(s, "]]>", at);
        } else if (rest.starts_with("<?")) {
            at = behind(s, "?>", at);
        } else if (const std::size_t next = std::min(s.find('<', at + 1), s.size());
                   next - at <= shortestAttribute * maxAttributes) {
            at = next; // too short for so many, and no value holds a "<"
        } else {
            at = behindTag(s, at, values);
        }
        if (values > maxAttributes) {
            return true;
        }
    }
    return false;
}

/// Hands the bytes to the parser piece by piece: given at once, they would be copied and recoded as a whole.
int readPiece(void* rest, char* into, int size) {
    auto& left = *static_cast<std::string_view*>(rest);
    const std::size_t taken = left.copy(into, static_cast<std::size_t>(size));
    left.remove_prefix(taken);
    return static_cast<int>(taken);
}

/// True when the parser has left bytes behind the document: it takes a NUL there for the end of the text, and
/// half of a character at the very end for nothing.
bool hasLeftBytes(const xmlParserCtxt& parser, std::string_view unread) {
    const xmlParserInput* input = parser.input;
    return !unread.empty() || (input != nullptr && input->cur < input->end) ||
           (input != nullptr && input->buf != nullptr && input->buf->raw != nullptr &&
            xmlBufUse(input->buf->raw) > 0);
}

Doc parseOnce(std::string_view bytes, const char* encoding, const char* url, Purpose purpose, bool huge,
              Watch& watch) {
    const Parser parser(xmlNewParserCtxt());
    if (!parser) {
        return nullptr;
    }
    watch.maxAttributeBytes = 2 * bytes.size() + maxAdded; // a character may take twice its bytes in UTF-8
    parser->_private = &watch;
    parser->sax->serror = [](void* data, xmlErrorPtr fault) { onFault(data, fault); };
    parser->sax->entityDecl = onEntity;
    parser->sax->elementDecl = onElementDeclaration;
    parser->sax->attributeDecl = onAttributeDeclaration;
    parser->sax->notationDecl = onNotation;
    parser->sax->unparsedEntityDecl = onUnparsedEntity;
    parser->sax->startElementNs = onStartElement;
    const int options = XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_COMPACT | XML_PARSE_NOWARNING |
                        (huge ? XML_PARSE_HUGE : 0) | (encoding != nullptr ? XML_PARSE_IGNORE_ENC : 0) |
                        (purpose == Purpose::Document ? XML_PARSE_NOBLANKS : 0) |
                        (purpose == Purpose::Stylesheet ? XML_PARSE_NOCDATA : 0);
    std::string_view rest = bytes;
    Doc doc(xmlCtxtReadIO(parser.get(), readPiece, nullptr, &rest, url, encoding, options));
    const bool complete = parser->wellFormed == 1 && parser->nsWellFormed == 1 && parser->disableSAX == 0;
    if (complete && hasLeftBytes(*parser, rest)) {
        watch.reason = "Depois do documento há um caractere nulo ou incompleto.";
        return nullptr;
    }
    return complete ? std::move(doc) : nullptr;
}

/// Drops the text nodes that hold white space alone. The parser leaves out most of them, but not those of an
/// element that holds nothing else.
void dropBlankText(xmlDoc* doc) {
    const auto isBlank = [](const xmlNode* node) {
        return node->type == XML_TEXT_NODE && xmlIsBlankNode(node) == 1;
    };
    xmlNode* node = doc->children;
    while (node != nullptr) {
        xmlNode* const current = node;
        if (current->type == XML_ELEMENT_NODE && current->children != nullptr) {
            node = current->children;
        } else {
            xmlNode* up = current;
            while (up != nullptr && up->next == nullptr) {
                up = up->parent;
            }
            node = up == nullptr ? nullptr : up->next;
        }
        if (isBlank(current)) {
            xmlUnlinkNode(current);
            xmlFreeNode(current);
        }
    }
}

} // namespace

void start() {
    thread_local const bool started = [] {
        xmlInitParser();
        xmlSetGenericErrorFunc(nullptr, ignoreMessage);
        return true;
    }();
    static_cast<void>(started);
}

void FreeDoc::operator()(xmlDoc* doc) const noexcept {
    const std::unique_ptr<DocumentData> data(static_cast<DocumentData*>(doc->_private));
    if (data) {
        data->expressions.clear();
        data->context.reset();
        // A detached node may have come to hang below another one.
        std::erase_if(data->detached, [](const xmlNode* node) { return node->parent != nullptr; });
        for (xmlNode* node : data->detached) {
            xmlFreeNode(node);
        }
    }
    xmlFreeDoc(doc);
}

Doc parse(std::string_view bytes, const char* encoding, const char* url, Purpose purpose,
          std::string& reason) {
    start();
    reason.clear();
    if (bytes.size() > INT_MAX) {
        reason = "O documento é grande demais.";
        return nullptr;
    }
    if (hasCrowdedTag(bytes)) {
        reason = "Um elemento do documento tem atributos demais.";
        return nullptr;
    }
    // Texts of any size are welcome, but then the library watches over no entities; so a document that
    // declares some is read once more with all of the library's limits in force.
    Watch watch;
    Doc doc = parseOnce(bytes, encoding, url, purpose, true, watch);
    if (watch.hasEntities) {
        watch = Watch{};
        watch.stopAtEntities = false;
        doc = parseOnce(bytes, encoding, url, purpose, false, watch);
    }
    if (doc && purpose == Purpose::Document) {
        dropBlankText(doc.get());
    }
    if (!doc) {
        reason = watch.reason.empty() ? "O documento está vazio ou incompleto." : watch.reason;
    }
    return doc;
}

DocumentData& dataOf(xmlDoc* doc) {
    if (doc->_private == nullptr) {
        doc->_private = std::make_unique<DocumentData>().release();
    }
    return *static_cast<DocumentData*>(doc->_private);
}

} // namespace tv::xml
