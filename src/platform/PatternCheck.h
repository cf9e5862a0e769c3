#pragma once

#include <xercesc/validators/datatype/DatatypeValidator.hpp>

#include <memory>
#include <string_view>
#include <vector>

namespace re2 {
class RE2;
}

namespace tv {

/// The patterns of a text type, matched by an automaton that is made once, where the parser's own matching
/// tries one way after the other for each value.
class PatternCheck {
public:
    /// Null for a type that asks for more than patterns, or whose patterns use more than literals of ASCII,
    /// sets, groups and repetitions: what those mean is the parser's to say.
    static std::unique_ptr<PatternCheck> of(xercesc::DatatypeValidator& type);
    ~PatternCheck();
    PatternCheck(const PatternCheck&) = delete;
    PatternCheck& operator=(const PatternCheck&) = delete;

    /// True when the text, in ASCII, matches the patterns of the type and of all types that it restricts.
    bool matches(std::string_view text) const;

private:
    PatternCheck();
    std::vector<std::unique_ptr<re2::RE2>> patterns_;
};

} // namespace tv
