#include "editor/General.h"

#include "logging/LogFolder.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

struct ChangeCase {
    const char* name;
    std::u16string_view a;
    std::u16string_view b;
    std::int32_t position;
    std::u16string_view piece;
};

class ChangeTest : public ::testing::TestWithParam<ChangeCase> {};

TEST_P(ChangeTest, GivesThePieceThatTheShorterTextLacks) {
    const ChangeCase& c = GetParam();
    EXPECT_EQ(General::Change(c.a, c.b, c.position), c.piece);
}

INSTANTIATE_TEST_SUITE_P(General, ChangeTest,
                         ::testing::Values(ChangeCase{"one_character_typed", u"abc", u"abXc", 4, u"X"},
                                           ChangeCase{"typed_at_the_end", u"abc", u"abcde", 6, u"de"},
                                           ChangeCase{"typed_at_the_start", u"bc", u"abc", 2, u"a"},
                                           ChangeCase{"longer_text_first", u"abXc", u"abc", 4, u"X"},
                                           ChangeCase{"into_an_empty_text", u"", u"novo", 5, u"novo"},
                                           ChangeCase{"a_line_end", u"ab", u"a\nb", 3, u"\n"},
                                           ChangeCase{"accents_count_once", u"aço", u"ação", 4, u"ã"},
                                           ChangeCase{"same_length", u"abc", u"xyz", 2, u""},
                                           ChangeCase{"text_ends_within_the_piece", u"", u"abcd", 6, u"bcd"},
                                           ChangeCase{"text_ends_before_the_piece", u"a", u"abc", 10, u""}),
                         [](const auto& given) { return std::string(given.param.name); });

struct ChangeLogTest : ::testing::Test {
    test::TemporaryFolder folder;
    clock::Frozen now{clock::at(2024, 3, 5, 14, 7, 9)};
    test::GlobalLogger global{test::startLogger(folder, clsLogger::typeTXT, library::level::all)};

    std::size_t logged(std::string_view what) const {
        return test::occurrences(folder.read("log20240305.txt"), what);
    }
};

TEST_F(ChangeLogTest, StandsOnTheCallStackUnderTheEditorsName) {
    General::Change(u"abc", u"abXc", 4);
    EXPECT_EQ(logged("STACK  EditorXML.Change"), 1U) << folder.read("log20240305.txt");
    EXPECT_EQ(logged("END    EditorXML.Change"), 1U);
    EXPECT_EQ(logged("FATAL"), 0U);
}

TEST_F(ChangeLogTest, APieceThatWouldBeginBeforeTheTextIsLoggedAndEmpty) {
    EXPECT_EQ(General::Change(u"abc", u"abXc", 1), u"");
    EXPECT_EQ(General::Change(u"abc", u"abc", 0), u"");
    EXPECT_EQ(General::Change(u"", u"abcd", -7), u"");
    EXPECT_EQ(logged("[5]]"), 3U) << folder.read("log20240305.txt");
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

} // namespace
} // namespace tv
