#include "platform/ContentExpressions.h"

#include <gmock/gmock.h>

#include <regex>

// The walk's recovery behind faults, and its acceptance beside that of regular expressions.

namespace tv::test {
namespace {

using ::testing::ElementsAre;

// --- recovery: one fault each for what is moved, doubled, left out or unknown

std::vector<std::string> faultsOf(const ContentModel& model, std::string_view children) {
    const std::string told = walkThrough(model, children);
    std::vector<std::string> faults;
    for (const char c : told.substr(0, told.find('|'))) {
        faults.emplace_back(1, c);
    }
    if (told.back() != '|') {
        faults.push_back(told.substr(told.find('|')));
    }
    return faults;
}

std::string letters(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += static_cast<char>('a' + i);
    }
    return text;
}

struct Grammar {
    const char* name;
    std::uint32_t min;
    std::uint32_t max;
};
void PrintTo(const Grammar& row, std::ostream* out) {
    *out << row.name;
}

/// Sequences of five names, each required, optional or repeated.
class Recovery : public ::testing::TestWithParam<Grammar> {
protected:
    ContentModel model = modelOf(
        sequence({letter('a', GetParam().min, GetParam().max), letter('b', GetParam().min, GetParam().max),
                  letter('c', GetParam().min, GetParam().max), letter('d', GetParam().min, GetParam().max),
                  letter('e', GetParam().min, GetParam().max)}));
    const std::string right = letters(5);
};

TEST_P(Recovery, OneUnknownChildIsOneFaultAnywhere) {
    for (std::size_t at = 0; at <= right.size(); ++at) {
        std::string children = right;
        children.insert(at, "x");
        EXPECT_THAT(faultsOf(model, children), ElementsAre("x")) << children;
    }
}

TEST_P(Recovery, OneMovedChildIsOneFaultAnywhere) {
    for (std::size_t from = 0; from < right.size(); ++from) {
        for (std::size_t to = 0; to < right.size(); ++to) {
            std::string children = right;
            children.erase(from, 1).insert(to, 1, right[from]);
            EXPECT_EQ(faultsOf(model, children).size(), from == to ? 0U : 1U) << children;
        }
    }
}

TEST_P(Recovery, OneChildInAnothersPlaceIsOneFault) {
    for (std::size_t at = 0; at < right.size(); ++at) {
        std::string children = right;
        children[at] = 'x';
        EXPECT_THAT(faultsOf(model, children), ElementsAre("x")) << children;
    }
}

TEST_P(Recovery, OneMissingChildIsAtMostOneFault) {
    for (std::size_t at = 0; at < right.size(); ++at) {
        std::string children = right;
        children.erase(at, 1);
        EXPECT_EQ(faultsOf(model, children).size(), GetParam().min == 0 ? 0U : 1U) << children;
    }
}

TEST_P(Recovery, EveryUnknownChildIsToldHoweverMany) {
    for (std::uint32_t which = 0; which < 64; ++which) {
        std::string children;
        std::size_t unknown = 0;
        for (std::size_t at = 0; at <= right.size(); ++at) {
            if ((which >> at & 1U) != 0) {
                children += 'x';
                ++unknown;
            }
            children += at < right.size() ? right.substr(at, 1) : "";
        }
        EXPECT_EQ(faultsOf(model, children).size(), unknown) << children;
    }
}

INSTANTIATE_TEST_SUITE_P(Sequences, Recovery,
                         ::testing::Values(Grammar{"Required", 1, 1}, Grammar{"Optional", 0, 1},
                                           Grammar{"AnyNumber", 0, unbounded},
                                           Grammar{"AtLeastOne", 1, unbounded}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ContentWalkRecovery, NeverTellsMoreFaultsThanChildrenAndOneEnd) {
    Random random(20);
    const ContentModel model =
        modelOf(sequence({letter('a'), letter('b', 0, unbounded),
                          choice({letter('c'), letter('d')}, 0, unbounded), letter('e')}));
    for (int round = 0; round < 2000; ++round) {
        std::string children;
        for (std::size_t size = random.below(12); children.size() < size;) {
            children += "abcdex"[random.below(6)];
        }
        EXPECT_LE(faultsOf(model, children).size(), children.size() + 1) << children;
    }
}

// --- the walk against regular expressions

/// A random expression of at most that many letters, and its text for std::regex.
ContentExpression randomExpression(Random& random, int depth, std::string& text) {
    ContentExpression e;
    const unsigned int kind = random.below(depth > 0 ? 4U : 2U);
    if (kind < 2) {
        e = letter(static_cast<char>('a' + random.below(3)));
        text += std::string(1, static_cast<char>('a' + e.name));
    } else {
        e.kind = kind == 2 ? Kind::Sequence : Kind::Choice;
        text += "(?:";
        for (unsigned int part = 0, parts = random.below(3) + 1; part < parts; ++part) {
            text += part > 0 && e.kind == Kind::Choice ? "|" : "";
            e.parts.push_back(randomExpression(random, depth - 1, text));
        }
        text += ")";
    }
    e.minOccurs = random.below(3);
    switch (random.below(4)) {
    case 0:
        e.maxOccurs = unbounded;
        text += "{" + std::to_string(e.minOccurs) + ",}";
        break;
    case 1:
        e.maxOccurs = e.minOccurs + random.below(3);
        text += "{" + std::to_string(e.minOccurs) + "," + std::to_string(e.maxOccurs) + "}";
        break;
    default:
        e.minOccurs = e.maxOccurs = 1;
    }
    return e;
}

// Matching in steps that grow with the text's length only: the usual way takes years over nested repetitions.
std::regex regexOf(const std::string& text) {
    return std::regex(text, std::regex::ECMAScript | std::regex_constants::__polynomial);
}

bool isAccepted(const ContentModel& model, const std::string& children) {
    return walkThrough(model, children) == "|";
}

TEST(ContentWalkAcceptance, EqualsThatOfRegularExpressions) {
    Random random(4711);
    int accepted = 0;
    for (int round = 0; round < 1500; ++round) {
        std::string text;
        const ContentModel model = modelOf(randomExpression(random, 3, text));
        const std::regex regex = regexOf(text);
        for (int list = 0; list < 40; ++list) {
            std::string children;
            for (std::size_t size = random.below(8); children.size() < size;) {
                children += static_cast<char>('a' + random.below(3));
            }
            const bool expected = std::regex_match(children, regex);
            accepted += expected ? 1 : 0;
            ASSERT_EQ(isAccepted(model, children), expected) << text << " on '" << children << "'";
        }
    }
    EXPECT_GT(accepted, 1000); // the comparison would mean little otherwise
}

TEST(ContentWalkAcceptance, EqualsThatOfRegularExpressionsForCountedNames) {
    Random random(815);
    int accepted = 0;
    for (int round = 0; round < 100; ++round) {
        std::vector<ContentExpression> parts;
        std::string text = "(?:";
        for (unsigned int part = 0; part < 3; ++part) {
            const std::uint32_t min = random.below(3);
            const std::uint32_t max = min + 30 + random.below(5);
            parts.push_back(letter(static_cast<char>('a' + random.below(3)), min, max));
            text += std::string(1, static_cast<char>('a' + parts.back().name)) + "{" + std::to_string(min) +
                    "," + std::to_string(max) + "}";
        }
        const bool isRepeated = random.below(4) == 0;
        text += isRepeated ? ")*" : ")";
        const ContentModel model = modelOf(sequence(parts, isRepeated ? 0 : 1, isRepeated ? unbounded : 1));
        const std::regex regex = regexOf(text);
        for (int list = 0; list < 30; ++list) {
            std::string children;
            for (const ContentExpression& part : parts) {
                children += std::string(random.below(6) == 0 ? 0 : part.maxOccurs - 2 + random.below(4),
                                        static_cast<char>('a' + part.name));
            }
            const bool expected = std::regex_match(children, regex);
            accepted += expected ? 1 : 0;
            ASSERT_EQ(isAccepted(model, children), expected) << text << " on '" << children << "'";
        }
    }
    EXPECT_GT(accepted, 300);
}

} // namespace
} // namespace tv::test
