#pragma once

#include "platform/SchemaCache.h"
#include "platform/ScratchFolder.h"
#include "platform/XmlReader.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tv::test {

inline std::string at(std::int32_t line, std::int32_t column) {
    return std::to_string(line) + ":" + std::to_string(column);
}

inline std::string hex(std::int32_t code) {
    std::array<char, 9> digits{};
    static_cast<void>(std::snprintf(digits.data(), digits.size(), "%08X", static_cast<unsigned int>(code)));
    return digits.data();
}

/// Writes down what a document is told as, a line an event:
/// "document", "<name>", "'text'", "</name> line:column", "end",
/// "error CODE line:column message", and so for "fatal" and "warning".
class XmlEvents : public XmlHandler {
public:
    std::vector<std::string> all;
    std::vector<std::string> faults; ///< The lines about faults alone.

    void documentLocator(const XmlLocator& locator) override { locator_ = &locator; }
    void startDocument() override { all.emplace_back("document"); }
    void startElement(std::string_view name) override { all.push_back("<" + std::string(name) + ">"); }
    void characters(std::string_view text) override { all.push_back("'" + std::string(text) + "'"); }
    void endElement(std::string_view name) override {
        all.push_back("</" + std::string(name) + "> " + at(locator_->lineNumber(), locator_->columnNumber()));
    }
    void endDocument() override { all.emplace_back("end"); }
    void error(const XmlFault& fault) override { add("error ", fault); }
    void fatalError(const XmlFault& fault) override { add("fatal ", fault); }
    void ignorableWarning(const XmlFault& fault) override { add("warning ", fault); }

private:
    void add(std::string kind, const XmlFault& fault) {
        kind += hex(fault.code) + " " + at(fault.position.line, fault.position.column) + " " + fault.message;
        all.push_back(kind);
        faults.push_back(std::move(kind));
    }
    const XmlLocator* locator_ = nullptr;
};

/// Reads documents against one schema.
class XmlReaderFixture : public ::testing::Test {
protected:
    /// `declarations` are those of the schema; the first element is the root.
    void useSchema(std::string_view declarations) {
        schema_ = folder.file(
            "esquema" + std::to_string(++schemas_) + ".xsd",
            "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\" elementFormDefault=\"qualified\">" +
                std::string(declarations) + "</xs:schema>");
    }
    XmlEvents readFile(const std::filesystem::path& file) const {
        XmlEvents events;
        XmlReader(SchemaCache::get(schema_)).parse(file, events);
        return events;
    }
    XmlEvents read(std::string_view bytes) const { return readFile(folder.file("documento.xml", bytes)); }
    std::vector<std::string> faultsOf(std::string_view bytes) const { return read(bytes).faults; }

    ScratchFolder folder;
    std::filesystem::path schema_;

private:
    int schemas_ = 0;
};

/// A text in UTF-16.
inline std::string utf16(std::u16string_view text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8U);
        const char low = static_cast<char>(unit & 0xFFU);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

inline std::string repeated(std::string_view text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) {
        result += text;
    }
    return result;
}

} // namespace tv::test
