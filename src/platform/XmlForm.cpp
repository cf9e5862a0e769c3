#include "platform/XmlForm.h"

#include "platform/XmlLibrary.h"

#include <algorithm>
#include <cstddef>

namespace tv {
namespace {

/// Place behind `end`, or the end of the text.
std::size_t behind(std::string_view s, std::string_view end, std::size_t from) {
    const std::size_t found = s.find(end, from);
    return found == std::string_view::npos ? s.size() : found + end.size();
}

/// Place behind a comment or an instruction that starts at `at`; `at` itself when none does.
std::size_t behindRemark(std::string_view s, std::size_t at) {
    const std::string_view rest = s.substr(at);
    if (rest.starts_with("<?")) {
        return behind(s, "?>", at);
    }
    return rest.starts_with("<!--") ? behind(s, "-->", at) : at;
}

std::size_t behindDoctype(std::string_view s, std::size_t at) {
    bool inSubset = false;
    for (++at; at < s.size(); ++at) {
        if (const std::size_t next = behindRemark(s, at); next > at) {
            at = next - 1;
        } else if (s[at] == '"' || s[at] == '\'') {
            at = std::min(s.find(s[at], at + 1), s.size() - 1);
        } else if (s[at] == '[' || s[at] == ']') {
            inSubset = s[at] == '[';
        } else if (s[at] == '>' && !inSubset) {
            return at + 1;
        }
    }
    return s.size();
}

/// Where the root element of a well-formed document starts.
std::size_t rootStart(std::string_view s) {
    std::size_t at = std::min(s.find('<'), s.size());
    while (at < s.size()) {
        const std::size_t next = behindRemark(s, at);
        if (next == at && !s.substr(at).starts_with("<!")) {
            break;
        }
        at = std::min(s.find('<', next > at ? next : behindDoctype(s, at)), s.size());
    }
    return at;
}

/// True when something below the node stands for a text that was not read.
bool hasUnknownEntity(const xmlNode* node) {
    for (const xmlNode* child = node->children; child != nullptr; child = child->next) {
        const bool element = child->type == XML_ELEMENT_NODE;
        if (child->type == XML_ENTITY_REF_NODE || (element && hasUnknownEntity(child))) {
            return true;
        }
    }
    return false;
}

} // namespace

std::optional<std::string> inParsersForm(std::string_view utf8) {
    std::string reason;
    const xml::Doc doc = xml::parse(utf8, "UTF-8", nullptr, xml::Purpose::AsWritten, reason);
    const xmlNode* root = doc ? xmlDocGetRootElement(doc.get()) : nullptr;
    if (root == nullptr || (doc->intSubset != nullptr && hasUnknownEntity(root))) {
        return std::nullopt;
    }
    std::string out;
    out.reserve(utf8.size() + utf8.size() / 16);
    out.append(utf8.substr(0, rootStart(utf8)));
    xml::write(out, root, false);
    for (const xmlNode* node = root->next; node != nullptr; node = node->next) {
        out += '\n';
        xml::write(out, node, false);
    }
    out.append(utf8.substr(utf8.rfind('>') + 1));
    return out;
}

} // namespace tv
