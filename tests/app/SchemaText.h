#pragma once

#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace tv::test {

/// A simple type of a schema, as far as the shipped schemas use them: restrictions of a text.
struct SimpleType {
    std::vector<std::string> patterns;
    std::set<std::string> values;
    std::optional<std::size_t> maxLength;
    std::size_t minLength = 0;

    /// True when the type takes the text.
    bool takes(const std::string& text) const {
        if (!values.empty() && !values.contains(text)) {
            return false;
        }
        if (text.size() < minLength || (maxLength && text.size() > *maxLength)) {
            return false;
        }
        for (const std::string& pattern : patterns) {
            if (!std::regex_match(text, std::regex(pattern))) {
                return false;
            }
        }
        return true;
    }
};

/// A child element that a complex type declares.
struct SchemaElement {
    std::string name;
    std::string type; ///< Name of its type; empty when the type stands inside.
    XmlNode node;
    bool isOptional = false;
};

/// The text of a schema with the files that it includes, for tests that compare it with the catalog.
class SchemaText {
public:
    explicit SchemaText(const std::filesystem::path& file) { read(file); }

    /// Children of the global element of that name, or nothing when there is none.
    std::vector<SchemaElement> root(const std::string& name) const {
        const auto found = elements_.find(name);
        return found == elements_.end() ? std::vector<SchemaElement>() : childrenOf(element(found->second));
    }
    /// Children in the order of the schema; none for an element of simple type.
    std::vector<SchemaElement> childrenOf(const SchemaElement& parent) const {
        std::vector<SchemaElement> children;
        const auto named = complexTypes_.find(parent.type);
        const XmlNode type = named == complexTypes_.end() ? parent.node.child("complexType") : named->second;
        if (type) {
            collect(type, false, children);
        }
        return children;
    }
    /// The simple type of that name.
    const SimpleType* simpleType(const std::string& name) const {
        const auto found = simpleTypes_.find(name);
        return found == simpleTypes_.end() ? nullptr : &found->second;
    }

private:
    static SchemaElement element(XmlNode node) {
        return {node.attribute("name").value_or(""), node.attribute("type").value_or(""), node,
                node.attribute("minOccurs").value_or("1") == "0"};
    }

    void collect(XmlNode particle, bool isOptional, std::vector<SchemaElement>& children) const {
        for (const XmlNode& part : particle.childElements()) {
            const std::string kind = part.baseName();
            const bool optionalHere = isOptional || part.attribute("minOccurs").value_or("1") == "0";
            if (kind == "element") {
                children.push_back(element(part));
                children.back().isOptional = optionalHere;
            } else if (kind == "group") {
                collect(groups_.at(part.getNamedItem("ref")), optionalHere, children);
            } else if (kind == "sequence" || kind == "choice") {
                collect(part, optionalHere || kind == "choice", children);
            }
        }
    }

    static SimpleType readSimpleType(XmlNode node) {
        SimpleType type;
        for (const XmlNode& facet : node.firstElement().childElements()) {
            const std::string value = facet.attribute("value").value_or("");
            const std::string kind = facet.baseName();
            if (kind == "pattern") {
                type.patterns.push_back(value);
            } else if (kind == "enumeration") {
                type.values.insert(value);
            } else if (kind == "maxLength") {
                type.maxLength = std::stoul(value);
            } else if (kind == "minLength") {
                type.minLength = std::stoul(value);
            } else if (kind == "length") {
                type.maxLength = type.minLength = std::stoul(value);
            }
        }
        return type;
    }

    void read(const std::filesystem::path& file) {
        documents_.push_back(std::make_unique<XmlDocument>());
        XmlDocument& document = *documents_.back();
        ASSERT_TRUE(document.load(file)) << file << ": " << document.parseError();
        for (const XmlNode& node : document.documentElement().childElements()) {
            const std::string kind = node.baseName();
            const std::string name = node.attribute("name").value_or("");
            if (kind == "include") {
                read(file.parent_path() / node.getNamedItem("schemaLocation"));
            } else if (kind == "element") {
                elements_.emplace(name, node);
            } else if (kind == "complexType") {
                complexTypes_.emplace(name, node);
            } else if (kind == "group") {
                groups_.emplace(name, node);
            } else if (kind == "simpleType") {
                simpleTypes_.emplace(name, readSimpleType(node));
            }
        }
    }

    std::vector<std::unique_ptr<XmlDocument>> documents_;
    std::map<std::string, XmlNode> elements_;
    std::map<std::string, XmlNode> complexTypes_;
    std::map<std::string, XmlNode> groups_;
    std::map<std::string, SimpleType> simpleTypes_;
};

} // namespace tv::test
