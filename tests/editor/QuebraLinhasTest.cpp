#include "editor/QuebraLinhas.h"

#include <gtest/gtest.h>

namespace tv::test {
namespace {

TEST(QuebraLinhas, LeavesTextsOfShortLinesAsTheyAre) {
    QuebraLinhas curta(11);
    EXPECT_EQ(curta.quebra(u"<a><b/></a>\n0123456789"), u"<a><b/></a>\n0123456789");
    EXPECT_TRUE(curta.vazia());
    EXPECT_EQ(curta.lugar({2, 5}), (LugarTexto{2, 5}));
    EXPECT_EQ(QuebraLinhas(3).quebra(u""), u"");
}

TEST(QuebraLinhas, BreaksALongLineBetweenItsElements) {
    QuebraLinhas quebras(20);
    EXPECT_EQ(quebras.quebra(u"curta\n<r><a>1</a><b></b><c/><d>x</d></r>\n<z/>"),
              u"curta\n<r>\n<a>1</a>\n<b></b>\n<c/>\n<d>x</d>\n</r>\n<z/>");
    EXPECT_FALSE(quebras.forcada());
    EXPECT_FALSE(quebras.vazia());
}

TEST(QuebraLinhas, FindsThePlacesOfTheTextBefore) {
    QuebraLinhas quebras(20);
    quebras.quebra(u"curta\n<r><a>1</a><b></b><c/><d>x</d></r>\n<z/>");
    EXPECT_EQ(quebras.lugar({1, 3}), (LugarTexto{1, 3}));
    EXPECT_EQ(quebras.lugar({2, 1}), (LugarTexto{2, 1}));
    EXPECT_EQ(quebras.lugar({2, 8}), (LugarTexto{3, 5}));  // behind the 1
    EXPECT_EQ(quebras.lugar({2, 27}), (LugarTexto{6, 5})); // behind the x
    EXPECT_EQ(quebras.lugar({3, 2}), (LugarTexto{8, 2}));
    EXPECT_EQ(quebras.lugar({0, 1}), (LugarTexto{0, 1}));
    EXPECT_EQ(quebras.lugar({-1, -1}), (LugarTexto{-1, -1}));
}

TEST(QuebraLinhas, LeavesSectionsAndCommentsWhole) {
    QuebraLinhas quebras(30);
    EXPECT_EQ(quebras.quebra(u"<a><![CDATA[<b><c>]]></a><!--<d><e>--><f/><g/>"),
              u"<a><![CDATA[<b><c>]]></a>\n<!--<d><e>-->\n<f/>\n<g/>");
    EXPECT_FALSE(quebras.forcada());
}

TEST(QuebraLinhas, BreaksByForceWhereThereIsNoPlace) {
    QuebraLinhas quebras(4);
    EXPECT_EQ(quebras.quebra(u"0123456789"), u"0123\n4567\n89");
    EXPECT_TRUE(quebras.forcada());
    EXPECT_EQ(quebras.lugar({1, 6}), (LugarTexto{2, 2}));
    EXPECT_EQ(quebras.quebra(u"012\U0001F600x"), u"012\n\U0001F600x");
}

} // namespace
} // namespace tv::test
