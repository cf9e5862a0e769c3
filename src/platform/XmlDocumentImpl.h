#pragma once

#include "platform/XmlDocument.h"
#include "platform/XmlLibrary.h"

#include <string>
#include <string_view>

namespace tv {

/// The tree behind an XmlDocument, for the document itself and for the transforms.
struct XmlDocument::Impl {
    xml::Doc doc; ///< Null when nothing was loaded.
    std::string parseError;

    /// Replaces the tree; it is null when the bytes cannot be parsed.
    void read(std::string_view bytes, const char* encoding, const char* url) {
        doc.reset();
        doc = xml::parse(bytes, encoding, url, xml::Purpose::Document, parseError);
    }
    xmlNode* documentNode() const { return reinterpret_cast<xmlNode*>(doc.get()); }
};

} // namespace tv
