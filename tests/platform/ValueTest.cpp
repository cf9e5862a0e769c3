#include "platform/Value.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

struct TextOf {
    Value value;
    const char* text;
};

class DefaultText : public testing::TestWithParam<TextOf> {};

TEST_P(DefaultText, shows_the_value) {
    EXPECT_EQ(defaultText(GetParam().value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(values, DefaultText,
                         testing::Values(TextOf{Null{}, ""}, TextOf{0, "0"}, TextOf{-42, "-42"},
                                         TextOf{2147483647, "2147483647"}, TextOf{0.0, "0"},
                                         TextOf{-0.0, "0"}, TextOf{1.5, "1.5"}, TextOf{-0.25, "-0.25"},
                                         TextOf{100.0, "100"}, TextOf{123456.78, "123456.78"},
                                         TextOf{0.1, "0.1"}, TextOf{0.00001, "0.00001"},
                                         TextOf{1e-7, "0.0000001"},
                                         TextOf{999999999999999.0, "999999999999999"},
                                         TextOf{123456789012345.0, "123456789012345"}, TextOf{1e15, "1E+15"},
                                         TextOf{-1.25e20, "-1.25E+20"},
                                         TextOf{12345678.12345678, "12345678.12345678"}, TextOf{true, "True"},
                                         TextOf{false, "False"}, TextOf{clock::at(2024, 1, 31), "31/01/2024"},
                                         TextOf{clock::at(2024, 1, 31, 9, 5, 7), "31/01/2024 09:05:07"},
                                         TextOf{std::string("ações"), "ações"}, TextOf{std::string(), ""}));

TEST(Value, knows_null) {
    EXPECT_TRUE(isNull(Value()));
    EXPECT_FALSE(isNull(Value(std::string())));
    EXPECT_FALSE(isNull(Value(0)));
}

} // namespace
} // namespace tv
