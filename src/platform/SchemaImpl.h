#pragma once

#include "platform/ContentModel.h"
#include "platform/ElementTable.h"
#include "platform/Files.h"
#include "platform/RememberedValues.h"
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
    /// Unchecked: anything goes.
    enum class Kind { Children, NoChildren, Unchecked };

    /// A child's numbers in the type: its own name's, `unknownChild` where the type does not hold it, and
    /// those of the wildcards that take it.
    struct ChildNumbers {
        ChildName own = unknownChild;
        std::vector<ChildName> wildcards;
    };

    /// The model of a complex type, made from its schema particles. The check of stray text in a type of
    /// elements only passes to the reader with it, which tells the text first: the library would drop it.
    static TypeModel ofType(xercesc::ComplexTypeInfo& type);
    static TypeModel noChildren();
    static TypeModel unchecked();

    Kind kind() const noexcept { return kind_; }
    const ContentModel& children() const noexcept { return *children_; }
    /// Elements only: text is white space or a fault.
    bool refusesText() const noexcept { return refusesText_; }
    /// False for a model that takes more than the type does, because the type's own is too large for an
    /// automaton: the parser's check has the last word then.
    bool isExact() const noexcept { return isExact_; }
    const ChildNumbers& numbersOf(const xercesc::XMLElementDecl& child) const;

private:
    explicit TypeModel(Kind kind)
        : kind_(kind) {}
    ChildName findByName(const xercesc::XMLElementDecl& child) const;
    ChildNumbers findNumbers(const xercesc::XMLElementDecl& child) const;

    struct Name {
        std::u16string local;
        unsigned int uri;
    };
    struct Wildcard {
        enum class Takes { Any, Namespace, OtherNamespaces } takes;
        unsigned int uri;
        ChildName number;
    };
    static bool takes(const Wildcard& wildcard, unsigned int uri);
    friend class TypeModelBuilder;
    Kind kind_;
    bool refusesText_ = false;
    bool isExact_ = true;
    std::unique_ptr<ContentModel> children_;
    std::vector<Name> names_; // by number; a wildcard's has an empty local part
    std::vector<Wildcard> wildcards_;
    mutable ElementTable<ChildNumbers> numbers_;
    mutable ChildNumbers undeclared_;
};

/// The compiled schema. What is made on first use (models, names) is not shared between threads: each thread
/// of a batch takes a schema of its own.
struct Schema::Impl {
    RememberedValues values; // outlives the pool that uses it
    std::unique_ptr<xercesc::XMLGrammarPoolImpl> pool;
    std::vector<std::pair<std::filesystem::path, files::Stamp>> files;
    mutable std::unordered_map<const xercesc::ComplexTypeInfo*, TypeModel> models;
    mutable ElementTable<std::string> names;

    const TypeModel& modelOf(xercesc::ComplexTypeInfo* type, const xercesc::SchemaElementDecl& element) const;
    /// Local name of a declared element in UTF-8.
    const std::string& nameOf(const xercesc::XMLElementDecl& element) const;
};

} // namespace tv
