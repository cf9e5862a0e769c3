#include "platform/ContentExpressions.h"
#include "platform/Throws.h"

#include "platform/Error.h"

#include <gmock/gmock.h>

// The automaton over child names, and the walk through it with its recovery behind misplaced children.

namespace tv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Walk {
    const char* name;
    ContentExpression expression;
    std::vector<std::pair<std::string, std::string>> children; ///< And what is told about them.
};
void PrintTo(const Walk& row, std::ostream* out) {
    *out << row.name;
}

class Walks : public ::testing::TestWithParam<Walk> {};

TEST_P(Walks, TellWhatIsWrong) {
    const ContentModel model = modelOf(GetParam().expression);
    for (const auto& [children, told] : GetParam().children) {
        EXPECT_EQ(walkThrough(model, children), told) << children;
    }
}

const std::vector<Walk> walks{
    {"Nothing", ContentExpression{}, {{"", "|"}, {"a", "a|"}, {"x", "x|"}}},
    {"One", letter('a'), {{"a", "|"}, {"", "|a"}, {"aa", "a|"}, {"b", "b|a"}, {"x", "x|"}}},
    {"Optional", letter('a', 0, 1), {{"", "|"}, {"a", "|"}, {"aa", "a|"}}},
    {"AnyNumber", letter('a', 0, unbounded), {{"", "|"}, {"aaaa", "|"}, {"axa", "x|"}}},
    {"AtLeastOne", letter('a', 1, unbounded), {{"", "|a"}, {"aaaa", "|"}}},
    {"AtLeastThree", letter('a', 3, unbounded), {{"aa", "|a"}, {"aaa", "|"}, {"aaaaaa", "|"}}},
    {"ExactlyThree", letter('a', 3, 3), {{"aa", "|a"}, {"aaa", "|"}, {"aaaa", "a|"}}},
    {"TwoToFour", letter('a', 2, 4), {{"a", "|a"}, {"aa", "|"}, {"aaaa", "|"}, {"aaaaaa", "aa|"}}},
    {"Never", letter('a', 0, 0), {{"", "|"}, {"a", "a|"}}},
    {"Sequence",
     sequence({letter('a'), letter('b'), letter('c')}),
     {{"abc", "|"},
      {"ab", "|c"},
      {"", "|abc"},
      {"acb", "c|"},
      {"bac", "b|"},
      {"abxc", "x|"},
      {"abbc", "b|"},
      {"cab", "c|"},
      {"axc", "x|"},
      {"ac", "c|"},
      {"abcabc", "abc|"}}},
    {"Choice",
     choice({letter('a'), letter('b'), letter('c')}),
     {{"a", "|"}, {"c", "|"}, {"", "|?a?b?c"}, {"ab", "b|"}, {"x", "x|"}}},
    {"ChoiceWithAnEmptyBranch", choice({letter('a'), sequence({})}), {{"", "|"}, {"a", "|"}, {"aa", "a|"}}},
    {"EmptyChoice", choice({}), {{"", "|"}, {"a", "a|"}}},
    {"RepeatedChoice",
     choice({letter('a'), letter('b')}, 1, unbounded),
     {{"", "|?a?b"}, {"abba", "|"}, {"axb", "x|"}}},
    {"RepeatedSequence",
     sequence({letter('a'), letter('b', 0, 1)}, 0, unbounded),
     {{"", "|"}, {"aab", "|"}, {"abba", "b|"}, {"b", "b|"}}},
    {"BoundedSequence",
     sequence({letter('a'), letter('b')}, 1, 2),
     {{"ab", "|"}, {"abab", "|"}, {"aba", "|b"}, {"ababab", "ab|"}, {"", "|ab"}}},
    {"Nested",
     sequence({letter('a'), choice({sequence({letter('b'), letter('c')}), letter('d')}, 0, unbounded),
               letter('e')}),
     {{"ae", "|"}, {"abce", "|"}, {"addbce", "|"}, {"abe", "e|"}, {"abde", "d|"}, {"abc", "|e"}}},
    {"CountedAtTheEdge",
     sequence({letter('a', 0, 50), letter('b')}),
     {{std::string(50, 'a') + "b", "|"},
      {std::string(51, 'a') + "b", "a|"},
      {"b", "|"},
      {std::string(50, 'a'), "|b"}}},
    {"CountedWithALowerBound",
     letter('a', 3, 60),
     {{"aa", "|a"}, {"aaa", "|"}, {std::string(60, 'a'), "|"}, {std::string(62, 'a'), "aa|"}}},
    {"CountedInsideALoop",
     sequence({letter('a', 1, 40), letter('b')}, 0, unbounded),
     {{std::string(40, 'a') + "b" + std::string(40, 'a') + "b", "|"}, {std::string(41, 'a') + "bab", "a|"}}},
    {"CountedAloneInALoop", sequence({letter('a', 0, 40)}, 0, unbounded), {{std::string(90, 'a'), "|"}}},
    {"RepeatedRuns",
     sequence({letter('a', 1, 2)}, 2, 2),
     {{"a", "|a"}, {"aa", "|"}, {"aaaa", "|"}, {"aaaaa", "a|"}}},
    {"SameNameTwice",
     sequence({letter('a', 0, 1), letter('a'), letter('b', 0, 1)}),
     {{"", "|a"}, {"a", "|"}, {"aab", "|"}, {"aaa", "a|"}}},
    {"BranchesOfOneBeginning",
     choice({sequence({letter('a'), letter('b')}), sequence({letter('a'), letter('c')})}),
     {{"ab", "|"}, {"ac", "|"}, {"a", "|?b?c"}, {"abc", "c|"}}},
    {"CountedAfterTheSameName",
     sequence({letter('a', 0, 40), letter('b', 0, 1), letter('a', 0, 40)}),
     {{std::string(40, 'a') + "b" + std::string(40, 'a'), "|"}}},
};

INSTANTIATE_TEST_SUITE_P(All, Walks, ::testing::ValuesIn(walks),
                         [](const auto& row) { return std::string(row.param.name); });

// --- children in any order

TEST(ContentModelInAnyOrder, TakesEachOnce) {
    const ContentModel model = ContentModel::inAnyOrder({"a", "b", "c"}, {true, false, true}, false);
    EXPECT_EQ(walkThrough(model, "ca"), "|");
    EXPECT_EQ(walkThrough(model, "bca"), "|");
    EXPECT_EQ(walkThrough(model, "aa"), "a|c");
    EXPECT_EQ(walkThrough(model, "axc"), "x|");
    EXPECT_EQ(walkThrough(model, ""), "|ac");
    EXPECT_EQ(walkThrough(model, "e"), "e|ac");
}

TEST(ContentModelInAnyOrder, MayBeEmptyAltogether) {
    const ContentModel model = ContentModel::inAnyOrder({"a", "b"}, {true, true}, true);
    EXPECT_EQ(walkThrough(model, ""), "|");
    EXPECT_EQ(walkThrough(model, "b"), "|a");
    EXPECT_EQ(walkThrough(model, "x"), "x|");
}

// --- the automaton itself

TEST(ContentModelStates, TellWhatMayFollow) {
    const ContentModel model = modelOf(sequence({letter('a'), letter('b', 0, 1), letter('c')}));
    const ContentModel::State behindA = model.step(0, 0);
    EXPECT_THAT(model.expected(0), ElementsAre(0U));
    EXPECT_THAT(model.expected(behindA), ElementsAre(1U, 2U));
    EXPECT_THAT(model.required(behindA), ElementsAre(2U));
    EXPECT_FALSE(model.isFinal(behindA));
    const ContentModel::State behindC = model.step(behindA, 2);
    EXPECT_TRUE(model.isFinal(behindC));
    EXPECT_THAT(model.expected(behindC), IsEmpty());
    EXPECT_EQ(model.step(behindC, 0), ContentModel::none);
    EXPECT_EQ(model.step(0, unknownChild), ContentModel::none);
    EXPECT_EQ(model.nameCount(), 5U);
    EXPECT_EQ(model.nameOf(1), "b");
}

TEST(ContentModelStates, AreBounded) {
    const auto pairs = [](std::uint32_t max) { return sequence({letter('a'), letter('b')}, 0, max); };
    EXPECT_EQ(errorOf([&] { modelOf(pairs(2048)); }), std::nullopt);
    EXPECT_EQ(errorOf([&] { modelOf(pairs(2049)); }), errc::overflow);
    // A single name is counted and takes no more than one position.
    EXPECT_EQ(errorOf([&] { modelOf(letter('a', 0, 4'000'000'000)); }), std::nullopt);
}

// --- children that wildcards take

TEST(ContentWalkWildcards, TakeWhatHasNoNameOfItsOwn) {
    // a, then up to two of whatever the wildcard d takes, then b
    const ContentModel model = modelOf(sequence({letter('a'), letter('d', 0, 2), letter('b')}));
    const std::vector<ChildName> wildcard{3};
    ContentWalk walk(model);
    EXPECT_TRUE(walk.child(0));
    EXPECT_TRUE(walk.child(unknownChild, wildcard));
    EXPECT_TRUE(walk.child(unknownChild, wildcard));
    EXPECT_FALSE(walk.hasFault());
    EXPECT_FALSE(walk.child(unknownChild, wildcard));
    EXPECT_TRUE(walk.hasFault());
    EXPECT_TRUE(walk.child(1));
    EXPECT_THAT(walk.missing(), IsEmpty());
}

TEST(ContentWalkWildcards, GiveWayToTheChildsOwnName) {
    // whatever d takes, or b; then c
    const ContentModel model = modelOf(sequence({letter('b', 0, 1), letter('d', 0, unbounded), letter('c')}));
    const std::vector<ChildName> wildcard{3};
    ContentWalk walk(model);
    EXPECT_TRUE(walk.child(1, wildcard)); // as b
    EXPECT_TRUE(walk.child(1, wildcard)); // as d
    EXPECT_TRUE(walk.child(2, wildcard)); // as c
    EXPECT_THAT(walk.missing(), IsEmpty());
}

} // namespace
} // namespace tv::test
