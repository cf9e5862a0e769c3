#pragma once

#include "platform/ContentModel.h"
#include "platform/Files.h"
#include "platform/SchemaCache.h"

#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/validators/schema/ComplexTypeInfo.hpp>
#include <xercesc/validators/schema/SchemaElementDecl.hpp>

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tv {

/// What may stand inside an element of one type.
class TypeModel {
public:
    /// Unchecked: anything goes, or the parser's own check has to do.
    enum class Kind { Children, NoChildren, Unchecked };

    /// The model of a complex type, made from its schema particles.
    static TypeModel ofType(const xercesc::ComplexTypeInfo& type);
    static TypeModel noChildren();
    static TypeModel unchecked();

    Kind kind() const noexcept { return kind_; }
    const ContentModel& children() const noexcept { return *children_; }
    /// The child's number; `unknownChild` for an element that the type does not hold.
    ChildName numberOf(const xercesc::XMLElementDecl& child) const;

private:
    explicit TypeModel(Kind kind)
        : kind_(kind) {}
    ChildName findByName(const xercesc::XMLElementDecl& child) const;

    struct Name {
        std::u16string local;
        unsigned int uri;
    };
    friend class TypeModelBuilder;
    Kind kind_;
    std::unique_ptr<ContentModel> children_;
    std::vector<Name> names_;
    mutable std::unordered_map<const xercesc::XMLElementDecl*, ChildName> numbers_;
};

/// The compiled schema. What is made on first use (models, names) is not shared between threads: each thread
/// of a batch takes a schema of its own.
struct Schema::Impl {
    std::unique_ptr<xercesc::XMLGrammarPoolImpl> pool;
    std::vector<std::pair<std::filesystem::path, files::Stamp>> files;
    mutable std::unordered_map<const xercesc::ComplexTypeInfo*, TypeModel> models;
    mutable std::unordered_map<const xercesc::XMLElementDecl*, std::string> names;

    const TypeModel& modelOf(const xercesc::ComplexTypeInfo* type,
                             const xercesc::SchemaElementDecl& element) const;
    /// Local name of a declared element in UTF-8.
    const std::string& nameOf(const xercesc::XMLElementDecl& element) const;
};

} // namespace tv
