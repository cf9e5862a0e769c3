#pragma once

#include "platform/SchemaCache.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace tv {

/// A place in a document: line and column from 1. The column counts UTF-16 units, which are characters unless
/// they lie beyond the basic plane (there two). Lines have no upper bound.
struct XmlPosition {
    std::int32_t line = 0;
    std::int32_t column = 0;
};

/// Codes that a fault of a document carries. Every other fault keeps a code of its own: 0xC00CE000 plus the
/// parser's number of a validity fault, or 0xC00CD000 plus that of another fault of the document.
namespace xmlcode {
inline constexpr std::int32_t elementNotAllowed = static_cast<std::int32_t>(0x80004005);
inline constexpr std::int32_t valueRefused = static_cast<std::int32_t>(0xC00CE184);
inline constexpr std::int32_t notWellFormed = static_cast<std::int32_t>(0xC00CEE3B);
inline constexpr std::int32_t fileNotFound = static_cast<std::int32_t>(0x800C0006);
inline constexpr std::int32_t fileNotReadable = static_cast<std::int32_t>(0x800C0008);
} // namespace xmlcode

/// A fault that the parser found: what, and where.
struct XmlFault {
    std::int32_t code = 0;
    std::string message; ///< Portuguese where a translation is known, otherwise the parser's own text.
    XmlPosition position;
};

/// Where the reader stands. In `endElement` it is the place right behind the element's value, that is the "<"
/// of its end tag, or the "<" of an empty element tag.
class XmlLocator {
public:
    virtual ~XmlLocator() = default;
    virtual std::int32_t lineNumber() const = 0;
    virtual std::int32_t columnNumber() const = 0;
};

/// What a document is made of, in its order. Texts are UTF-8 and live as long as the call.
class XmlHandler {
public:
    virtual ~XmlHandler() = default;

    /// Before anything else; the locator lives as long as the parse.
    virtual void documentLocator(const XmlLocator& locator) = 0;
    virtual void startDocument() = 0;
    virtual void startElement(std::string_view localName) = 0;
    /// A run of text up to the next markup, whole, however the parser cut it. White space alone between
    /// elements is no text where the schema knows that the element holds elements only.
    virtual void characters(std::string_view text) = 0;
    virtual void endElement(std::string_view localName) = 0;
    virtual void endDocument() = 0;

    /// A fault after which the parse goes on.
    virtual void error(const XmlFault& fault) = 0;
    /// The fault that ends the parse: not well-formed, or a file that cannot be read. No endDocument follows.
    virtual void fatalError(const XmlFault& fault) = 0;
    virtual void ignorableWarning(const XmlFault& fault) = 0;
};

/// Reads a document and checks it against a schema while it reads, in memory that does not grow with the
/// file.
///
/// Checking goes on after every fault, and all faults are told. An element that may not stand where it stands
/// gives one fault, at its own start tag and before its startElement; what a misplaced element pushes out of
/// order gives no second one, and neither does what an unknown element holds. A required element that is
/// still missing at the end of its parent gives one fault there that names it. A refused value gives one
/// fault, right behind the value. Faults of attributes are told at the start tag, behind their element's
/// startElement. Text where only elements may stand is told as text, and then as a fault.
///
/// Documents are foreign input: no DTD is fetched and no external entity (whose text is then a fault),
/// internal entities are bounded in number and size, elements are nested at most 1,000 deep, and
/// `xsi:schemaLocation` is not followed.
class XmlReader {
public:
    /// `schema` is what documents are checked against.
    explicit XmlReader(std::shared_ptr<const Schema> schema);
    ~XmlReader();
    XmlReader(const XmlReader&) = delete;
    XmlReader& operator=(const XmlReader&) = delete;

    /// Parses a plain file. Ends in exactly one of endDocument and fatalError. Exceptions of the handler pass
    /// through.
    void parse(const std::filesystem::path& file, XmlHandler& handler);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace tv
