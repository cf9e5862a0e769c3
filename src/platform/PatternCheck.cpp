#include "platform/PatternCheck.h"

#include "platform/XercesSupport.h"

#include <re2/re2.h>

#include <algorithm>
#include <string>

namespace tv {

using namespace xercesc; // NOLINT(google-build-using-namespace)

namespace {

/// Opens what a type keeps for types made from it.
class Facets final : public DatatypeValidator {
public:
    static bool hasOnlyPatterns(const DatatypeValidator& type) {
        const int defined = (type.*(&Facets::getFacetsDefined))();
        return (defined & ~(FACET_PATTERN | FACET_WHITESPACE)) == 0;
    }
    static const XMLCh* pattern(const DatatypeValidator& type) { return (type.*(&Facets::getPattern))(); }
};

bool isLiteral(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == ' ' || c == '/';
}

/// True for patterns whose every sign means the same to the schema language and to the matching library.
bool isPlain(std::string_view pattern) {
    constexpr std::string_view signs = "-()[]{}?*+|,";
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char next = i + 1 < pattern.size() ? pattern[i + 1] : '\0';
        if (pattern[i] == '\\' && (next == '.' || next == '-')) {
            ++i;
        } else if (!isLiteral(pattern[i]) && signs.find(pattern[i]) == std::string_view::npos) {
            return false;
        }
    }
    // Options of groups, sets without others, open counts and named classes.
    constexpr std::string_view others[] = {"(?", "-[", "{,", "[["};
    return std::none_of(std::begin(others), std::end(others), [pattern](std::string_view other) {
        return pattern.find(other) != std::string_view::npos;
    });
}

} // namespace

PatternCheck::PatternCheck() = default;

PatternCheck::~PatternCheck() = default;

std::unique_ptr<PatternCheck> PatternCheck::of(DatatypeValidator& type) {
    std::unique_ptr<PatternCheck> check(new PatternCheck); // the constructor is private
    for (DatatypeValidator* level = &type; level != nullptr; level = level->getBaseValidator()) {
        if (level->getType() != DatatypeValidator::String || !Facets::hasOnlyPatterns(*level)) {
            return nullptr;
        }
        const XMLCh* pattern = Facets::pattern(*level);
        if (pattern == nullptr || *pattern == 0) {
            continue;
        }
        const std::string text = xerces::toUtf8(pattern);
        if (!isPlain(text)) {
            return nullptr;
        }
        check->patterns_.push_back(std::make_unique<re2::RE2>(text, re2::RE2::Quiet));
        if (!check->patterns_.back()->ok()) {
            return nullptr;
        }
    }
    return check->patterns_.empty() ? nullptr : std::move(check);
}

bool PatternCheck::matches(std::string_view text) const {
    const re2::StringPiece piece(text.data(), text.size());
    return std::all_of(patterns_.begin(), patterns_.end(),
                       [&piece](const auto& pattern) { return re2::RE2::FullMatch(piece, *pattern); });
}

} // namespace tv
