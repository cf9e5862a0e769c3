#pragma once

#include "platform/ContentModel.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Small content models over the letters a to e, and what a walk through them tells.
namespace tv::test {

using Kind = ContentExpression::Kind;
inline constexpr std::uint32_t unbounded = ContentExpression::unbounded;

inline ContentExpression letter(char c, std::uint32_t min = 1, std::uint32_t max = 1) {
    return {Kind::Name, static_cast<ChildName>(c - 'a'), {}, min, max};
}
inline ContentExpression sequence(std::vector<ContentExpression> parts, std::uint32_t min = 1,
                                  std::uint32_t max = 1) {
    return {Kind::Sequence, unknownChild, std::move(parts), min, max};
}
inline ContentExpression choice(std::vector<ContentExpression> parts, std::uint32_t min = 1,
                                std::uint32_t max = 1) {
    return {Kind::Choice, unknownChild, std::move(parts), min, max};
}
inline ContentModel modelOf(const ContentExpression& expression) {
    return {{"a", "b", "c", "d", "e"}, expression};
}

/// What a walk tells about the children, "a" for a refused child, and behind a "|" what is missing at the
/// end. A letter behind 'e' is a name that the model does not hold.
inline std::string walkThrough(const ContentModel& model, std::string_view children) {
    ContentWalk walk(model);
    std::string told;
    for (const char c : children) {
        if (!walk.child(c <= 'e' ? static_cast<ChildName>(c - 'a') : unknownChild)) {
            told += c;
        }
    }
    told += '|';
    for (const ChildName name : walk.missing()) {
        told += model.nameOf(name);
    }
    if (told.back() == '|') {
        for (const ChildName name : walk.expectedNow()) {
            told += "?" + model.nameOf(name);
        }
    }
    EXPECT_EQ(walk.endsTooEarly(), told.back() != '|');
    return told;
}

/// Small random numbers, the same in each run.
class Random {
public:
    explicit Random(std::uint32_t seed)
        : engine_(seed) {}
    std::uint32_t below(std::uint32_t bound) { return static_cast<std::uint32_t>(engine_() % bound); }

private:
    std::mt19937 engine_;
};

} // namespace tv::test
