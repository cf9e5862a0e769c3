#include "platform/XmlLibrary.h"

#include <algorithm>

namespace tv::xml {
namespace {

constexpr std::string_view lineEnd = "\r\n";

/// Escapes what may not stand in a text, or in a value between quotation marks.
void writeEscaped(std::string& out, std::string_view text, bool inQuotes) {
    const std::string_view special = inQuotes ? "&<>\"\t\n\r" : "&<>\r";
    std::size_t from = 0;
    for (std::size_t at = text.find_first_of(special); at != std::string_view::npos;
         at = text.find_first_of(special, from)) {
        out.append(text, from, at - from);
        switch (text[at]) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out.append("&#").append(std::to_string(static_cast<int>(text[at]))).append(";");
        }
        from = at + 1;
    }
    out.append(text, from);
}

void writeName(std::string& out, const xmlNs* space, const xmlChar* name) {
    if (space != nullptr && space->prefix != nullptr) {
        out.append(view(space->prefix)).append(":");
    }
    out.append(view(name));
}

void writeAttribute(std::string& out, const xmlAttr* attribute) {
    out += ' ';
    writeName(out, attribute->ns, attribute->name);
    out += "=\"";
    for (const xmlNode* part = attribute->children; part != nullptr; part = part->next) {
        writeEscaped(out, view(part->content), true);
    }
    out += '"';
}

void writeCData(std::string& out, std::string_view text) {
    // The end mark inside of the text is divided between two sections.
    out += "<![CDATA[";
    std::size_t from = 0;
    for (std::size_t at = text.find("]]>"); at != std::string_view::npos; at = text.find("]]>", from)) {
        out.append(text, from, at + 2 - from).append("]]><![CDATA[");
        from = at + 2;
    }
    out.append(text, from).append("]]>");
}

/// Names the external DTD. The internal subset is not needed any more: its entities and default values stand
/// in their places since the document was loaded.
void writeDoctype(std::string& out, const xmlDtd* dtd) {
    if (dtd->SystemID == nullptr) {
        return;
    }
    const std::string_view system = view(dtd->SystemID);
    const char mark = system.find('"') == std::string_view::npos ? '"' : '\'';
    out.append("<!DOCTYPE ").append(view(dtd->name));
    if (dtd->ExternalID != nullptr) {
        out.append(" PUBLIC \"").append(view(dtd->ExternalID)).append("\" ");
    } else {
        out += " SYSTEM ";
    }
    out += mark;
    out.append(system) += mark;
    out += '>';
}

bool isText(const xmlNode* node) {
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE ||
           node->type == XML_ENTITY_REF_NODE;
}

bool holdsText(const xmlNode* element) {
    for (const xmlNode* child = element->children; child != nullptr; child = child->next) {
        if (isText(child)) {
            return true;
        }
    }
    return false;
}

class Writer {
public:
    Writer(std::string& out, bool indent)
        : out_(out)
        , indent_(indent) {}

    void write(const xmlNode* node) {
        switch (node->type) {
        case XML_ELEMENT_NODE:
            writeElement(node);
            break;
        case XML_TEXT_NODE:
            writeEscaped(out_, view(node->content), false);
            break;
        case XML_CDATA_SECTION_NODE:
            writeCData(out_, view(node->content));
            break;
        case XML_COMMENT_NODE:
            out_.append("<!--").append(view(node->content)).append("-->");
            break;
        case XML_PI_NODE:
            out_.append("<?").append(view(node->name));
            out_.append(node->content == nullptr ? "" : " ").append(view(node->content)).append("?>");
            break;
        case XML_DTD_NODE:
            writeDoctype(out_, reinterpret_cast<const xmlDtd*>(node));
            break;
        default: // a reference to an entity that was not declared has no text
            break;
        }
    }

private:
    void writeElement(const xmlNode* node) {
        out_ += '<';
        writeName(out_, node->ns, node->name);
        for (const xmlNs* space = node->nsDef; space != nullptr; space = space->next) {
            writeNamespace(out_, space);
        }
        for (const xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
            writeAttribute(out_, attribute);
        }
        out_ += '>';
        writeChildren(node);
        out_ += "</";
        writeName(out_, node->ns, node->name);
        out_ += '>';
    }

    void writeChildren(const xmlNode* node) {
        const bool outer = indent_;
        indent_ = indent_ && node->children != nullptr && !holdsText(node);
        ++level_;
        for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
            newLine();
            write(child);
        }
        --level_;
        newLine();
        indent_ = outer;
    }

    void newLine() {
        if (indent_) {
            out_.append(lineEnd).append(level_, '\t');
        }
    }

    std::string& out_;
    bool indent_;
    std::size_t level_ = 0;
};

} // namespace

void writeNamespace(std::string& out, const xmlNs* space) {
    out += " xmlns";
    if (space->prefix != nullptr) {
        out.append(":").append(view(space->prefix));
    }
    out += "=\"";
    writeEscaped(out, view(space->href), true);
    out += '"';
}

void write(std::string& out, const xmlNode* node, bool indent) {
    Writer(out, indent).write(node);
}

void write(std::string& out, const xmlDoc* doc, bool indent) {
    std::size_t before = out.size();
    for (const xmlNode* node = doc->children; node != nullptr; node = node->next) {
        write(out, node, indent);
        const bool wrote = out.size() > before;
        if (wrote && (indent || node->next != nullptr)) {
            out += lineEnd;
        }
        before = out.size();
    }
}

} // namespace tv::xml
