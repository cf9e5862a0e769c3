#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

class XmlDocument;

/// A node of an XmlDocument: a light handle that lives no longer than its document. A default-made node is
/// empty, and asking an empty node for anything throws Error 91.
class XmlNode {
public:
    XmlNode() = default;

    explicit operator bool() const noexcept { return node_ != nullptr; }
    bool operator==(const XmlNode&) const = default;

    bool isElement() const;
    /// Name without its prefix; empty for texts and comments.
    std::string baseName() const;
    /// The same bytes without a copy; valid as long as the document.
    std::string_view name() const;
    /// Text of the node and all below it, joined (the value, for an attribute).
    std::string text() const;
    /// The text without a copy when the node holds at most one text node, otherwise joined into `buffer`.
    std::string_view text(std::string& buffer) const;
    /// Replaces everything below the node by a text. What no XML document can hold (broken bytes, control
    /// characters) becomes U+FFFD, here and in attributes.
    void setText(std::string_view text);

    /// Value of an attribute, asked for by its name with its prefix. Throws Error 91 when it is not there.
    std::string getNamedItem(std::string_view name) const;
    std::optional<std::string> attribute(std::string_view name) const;
    /// Attributes in the order of the document, as name and value.
    std::vector<std::pair<std::string, std::string>> attributes() const;

    XmlNode parent() const;
    XmlNode firstChild() const;
    XmlNode firstElement() const;
    XmlNode nextElement() const;
    /// First child element of exactly that name, or an empty node.
    XmlNode child(std::string_view name) const;
    /// Child nodes of every kind.
    std::vector<XmlNode> childNodes() const;
    std::vector<XmlNode> childElements() const;

    /// XPath 1.0 relative to this node, without names of name spaces. Throw Error 13 for an expression that
    /// is none, or that gives no nodes.
    std::vector<XmlNode> selectNodes(std::string_view xpath) const;
    XmlNode selectSingleNode(std::string_view xpath) const;

    /// The element with all below it as text in UTF-8, without a declaration. Name spaces that it uses and
    /// that are declared above are declared on it.
    std::string outerXml() const;

    /// A new element behind the last child, or before `before`. Throw Error 5 when `name` is no legal name or
    /// `before` is no child of this node.
    XmlNode appendElement(std::string_view name);
    XmlNode insertElement(std::string_view name, XmlNode before);
    /// Moves `child` behind the last child, or before `before`. Throw Error 5 when `child` is of another
    /// document or holds this node.
    void appendChild(XmlNode child);
    void insertBefore(XmlNode child, XmlNode before);
    /// Takes a child out of the tree; it lives on with the document and may be put in again. Throws Error 5
    /// when `child` is not a child of this node.
    void removeChild(XmlNode child);
    /// Throws Error 5 when `name` is no legal attribute name.
    void setAttribute(std::string_view name, std::string_view value);

private:
    friend class XmlDocument;
    friend class XmlTransform;
    explicit XmlNode(void* node)
        : node_(node) {}
    void* node_ = nullptr;
};

/// A document in memory. Text nodes of white space alone are left out on loading. Nothing outside of the text
/// is ever read: no external entity, no DTD, no network; the expansion of internal entities is bounded.
class XmlDocument {
public:
    XmlDocument();
    ~XmlDocument();
    XmlDocument(XmlDocument&&) noexcept;
    XmlDocument& operator=(XmlDocument&&) noexcept;
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;

    /// Loads a file in the encoding that its declaration names. False when it cannot be read or is not
    /// well-formed; the document is empty then and `parseError` tells why.
    bool load(const std::filesystem::path& path);
    /// Loads a text in UTF-8, whatever encoding its declaration names.
    bool loadXML(std::string_view utf8);
    /// Reason of the last failed load with its line, or the empty text.
    const std::string& parseError() const noexcept;

    /// The root element. Throws Error 91 on an empty document.
    XmlNode documentElement() const;
    bool empty() const noexcept;
    /// XPath from the document; an empty document gives nothing.
    std::vector<XmlNode> selectNodes(std::string_view xpath) const;
    XmlNode selectSingleNode(std::string_view xpath) const;

    /// A new document with a root element.
    static XmlDocument create(std::string_view rootName);
    /// An element of this document that hangs nowhere yet. Throws Error 5 when `name` is no legal name.
    XmlNode createElement(std::string_view name);

    /// The whole document as text in UTF-8, declaration left out.
    std::string xml() const;
    /// Writes the document as it stands in ISO-8859-1 with its declaration; characters outside the set become
    /// character references. `indent` puts one element a line, a tab a level, lines ended by CR LF. The file
    /// is replaced whole. Throws Error as files::replaceWhole.
    void save(const std::filesystem::path& path, bool indent = false) const;
    /// The bytes that `save` writes.
    std::string toLatin1(bool indent = false) const;

private:
    friend class XmlTransform;
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace tv
