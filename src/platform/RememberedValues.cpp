#include "platform/RememberedValues.h"

#include "platform/PatternCheck.h"

#include <xercesc/validators/schema/SchemaElementDecl.hpp>
#include <xercesc/validators/schema/SchemaGrammar.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace tv {

using namespace xercesc; // NOLINT(google-build-using-namespace)

/// One data type with the values that it took lately.
class RememberedValues::Type final : public DatatypeValidator {
public:
    explicit Type(DatatypeValidator& own)
        : DatatypeValidator(own.getBaseValidator(), nullptr, own.getFinalSet(), own.getType())
        , own_(own) {
        setWhiteSpace(own.getWSFacet());
    }

    const DatatypeValidator& own() const noexcept { return own_; }

    void validate(const XMLCh* const content, ValidationContext* const context,
                  MemoryManager* const manager) override {
        Value value;
        const bool fits = value.take(content);
        Value& place = values_.at(value.hash % values_.size());
        if (fits && place == value) {
            return;
        }
        if (!fits || !matchesPatterns(value)) {
            own_.validate(content, context, manager);
        }
        if (fits) {
            place = value;
        }
    }

    bool isAtomic() const override { return own_.isAtomic(); }
    const RefArrayVectorOf<XMLCh>* getEnumString() const override { return own_.getEnumString(); }
    const XMLCh* getCanonicalRepresentation(const XMLCh* const data, MemoryManager* const manager,
                                            bool toValidate) const override {
        return own_.getCanonicalRepresentation(data, manager, toValidate);
    }
    bool isSubstitutableBy(const DatatypeValidator* const other) override {
        return own_.isSubstitutableBy(other);
    }
    int compare(const XMLCh* const a, const XMLCh* const b, MemoryManager* const manager) override {
        return own_.compare(a, b, manager);
    }
    DatatypeValidator* newInstance(RefHashTableOf<KVStringPair>* const facets,
                                   RefArrayVectorOf<XMLCh>* const enums, const int finalSet,
                                   MemoryManager* const manager) override {
        return own_.newInstance(facets, enums, finalSet, manager);
    }
    bool isSerializable() const override { return own_.isSerializable(); }
    XProtoType* getProtoType() const override { return own_.getProtoType(); }
    void serialize(XSerializeEngine& engine) override { own_.serialize(engine); }

private:
    static constexpr std::size_t longest = 27;
    static constexpr std::size_t places = 128;

    // A short text with its hash (FNV-1a); longer ones are rarely the same twice.
    struct Value {
        std::uint32_t hash = 2166136261U;
        std::uint16_t length = 0xFFFF;
        std::array<XMLCh, longest> text{};

        bool take(const XMLCh* content) noexcept {
            std::uint16_t n = 0;
            for (; content[n] != 0; ++n) {
                if (n == longest) {
                    return false;
                }
                text[n] = content[n];
                hash = (hash ^ content[n]) * 16777619U;
            }
            length = n;
            return true;
        }
        bool operator==(const Value& other) const noexcept {
            return hash == other.hash && length == other.length &&
                   std::equal(text.begin(), text.begin() + length, other.text.begin());
        }
    };

    /// True when the type's patterns are all that it asks for, and the text matches them. Their automaton is
    /// worth its making only for types of many values.
    bool matchesPatterns(const Value& value) {
        if (unknown_ < fewValues) {
            ++unknown_;
            if (unknown_ < fewValues) {
                return false;
            }
            patterns_ = PatternCheck::of(own_);
        }
        std::array<char, longest> ascii{};
        const auto* const end = value.text.begin() + value.length;
        const bool isAscii = std::all_of(value.text.begin(), end, [](XMLCh c) { return c < 0x80; });
        if (!patterns_ || !isAscii) {
            return false;
        }
        std::transform(value.text.begin(), end, ascii.begin(), [](XMLCh c) { return static_cast<char>(c); });
        return patterns_->matches({ascii.data(), value.length});
    }

    static constexpr int fewValues = 64;

    DatatypeValidator& own_;
    std::array<Value, places> values_;
    std::unique_ptr<PatternCheck> patterns_;
    int unknown_ = 0; ///< Values that were not remembered, up to `fewValues`.
};

RememberedValues::RememberedValues() = default;

RememberedValues::~RememberedValues() = default;

RememberedValues::Type* RememberedValues::remembering(DatatypeValidator& own) {
    switch (own.getType()) {
    case DatatypeValidator::String:
    case DatatypeValidator::Boolean:
    case DatatypeValidator::Float:
    case DatatypeValidator::Double:
    case DatatypeValidator::Decimal:
    case DatatypeValidator::DateTime:
    case DatatypeValidator::Date:
    case DatatypeValidator::Time:
        break;
    default:
        return nullptr; // depends on the document around it, or is rare
    }
    const auto known =
        std::find_if(types_.begin(), types_.end(), [&own](const auto& type) { return &type->own() == &own; });
    if (known != types_.end()) {
        return known->get();
    }
    types_.push_back(std::make_unique<Type>(own));
    return types_.back().get();
}

void RememberedValues::attach(XMLGrammarPool& pool) {
    RefHashTableOfEnumerator<Grammar> grammars = pool.getGrammarEnumerator();
    while (grammars.hasMoreElements()) {
        auto* grammar = dynamic_cast<SchemaGrammar*>(&grammars.nextElement());
        if (grammar == nullptr) {
            continue;
        }
        RefHash3KeysIdPoolEnumerator<SchemaElementDecl> elements = grammar->getElemEnumerator();
        while (elements.hasMoreElements()) {
            SchemaElementDecl& element = elements.nextElement();
            DatatypeValidator* own = element.getDatatypeValidator();
            if (Type* type =
                    own == nullptr || element.getComplexTypeInfo() != nullptr ? nullptr : remembering(*own)) {
                element.setDatatypeValidator(type);
            }
        }
    }
}

} // namespace tv
