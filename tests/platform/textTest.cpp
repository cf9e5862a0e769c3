#include "platform/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv::text {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(text, trims_blanks_alone) {
    EXPECT_EQ(trim("  a b  "), "a b");
    EXPECT_EQ(trim(" \ta\r\n "), "\ta\r\n");
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(trim(""), "");
    EXPECT_EQ(trimLeft("  a "), "a ");
    EXPECT_EQ(trim(" \u00A0 "), "\u00A0") << "a hard space is no blank";
}

struct CasePair {
    const char* upper;
    const char* lower;
};

class LetterCase : public testing::TestWithParam<CasePair> {};

TEST_P(LetterCase, maps_both_ways) {
    EXPECT_EQ(lower(GetParam().upper), GetParam().lower);
    EXPECT_EQ(upper(GetParam().lower), GetParam().upper);
    EXPECT_TRUE(equalsNoCase(GetParam().upper, GetParam().lower));
    EXPECT_EQ(foldKey(GetParam().upper), foldKey(GetParam().lower));
}

INSTANTIATE_TEST_SUITE_P(pairs, LetterCase,
                         testing::Values(CasePair{"ABCXYZ", "abcxyz"}, CasePair{"AÇÕES", "ações"},
                                         CasePair{"ÀÁÂÃÄÅÆ", "àáâãäåæ"},
                                         CasePair{"ÐÑÒÓÔÕÖØÙÚÛÜÝÞ", "ðñòóôõöøùúûüýþ"}, CasePair{"Ÿ", "ÿ"},
                                         CasePair{"ĀĂĄĆĶ", "āăąćķ"}, CasePair{"ĹĽŁŇ", "ĺľłň"},
                                         CasePair{"ŊŌŒŠŶ", "ŋōœšŷ"}, CasePair{"ŹŻŽ", "źżž"},
                                         CasePair{"01-_ ", "01-_ "}, CasePair{"×÷", "×÷"}));

TEST(text, leaves_other_characters_and_broken_bytes_alone) {
    EXPECT_EQ(upper("ß µ αω 😀"), "ß µ αω 😀");
    EXPECT_EQ(lower("\xC3"), "\xC3");
    EXPECT_EQ(lower("\xC3(A"), "\xC3(a");
    EXPECT_EQ(upper("\xFF\xFE"), "\xFF\xFE");
}

TEST(text, knows_what_needs_no_folding) {
    EXPECT_TRUE(isFolded("titpublico_1"));
    EXPECT_FALSE(isFolded("titPublico"));
    EXPECT_FALSE(isFolded("ações"));
    EXPECT_FALSE(equalsNoCase("a", "ab"));
}

TEST(text, counts_and_cuts_in_characters) {
    EXPECT_EQ(length("ações"), 5U);
    EXPECT_EQ(length("\xC3\xC3"), 2U) << "a broken byte counts as one";
    EXPECT_EQ(length("😀"), 1U);
    EXPECT_EQ(left("ações", 2), "aç");
    EXPECT_EQ(left("aç", 10), "aç");
    EXPECT_EQ(mid("ações", 2, 3), "çõe");
    EXPECT_EQ(mid("ações", 5, 3), "s");
    EXPECT_EQ(mid("ações", 6, 1), "");
    EXPECT_EQ(mid("ações", 9, 1), "");
}

TEST(text, splits_at_separators) {
    EXPECT_THAT(split("5;4;3", ';'), ElementsAre("5", "4", "3"));
    EXPECT_THAT(split(";a;", ';'), ElementsAre("", "a", ""));
    EXPECT_THAT(split("abc", ';'), ElementsAre("abc"));
    EXPECT_THAT(split("", ';'), IsEmpty());
}

TEST(text, replaces_from_left_to_right_once) {
    EXPECT_EQ(replaceAll("a.b.c", ".", "_"), "a_b_c");
    EXPECT_EQ(replaceAll("aaa", "aa", "a"), "aa");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAll("abc", "c", ""), "ab");
}

TEST(text, looks_for_parts) {
    EXPECT_TRUE(contains("arquivo 4_01", "4_01"));
    EXPECT_FALSE(contains("4_0", "4_01"));
    EXPECT_TRUE(startsWith("kCONST_RAIZ", "kCONST_"));
    EXPECT_TRUE(endsWith("x.xml", ".xml"));
    EXPECT_FALSE(endsWith("xml", ".xml"));
}

} // namespace
} // namespace tv::text
