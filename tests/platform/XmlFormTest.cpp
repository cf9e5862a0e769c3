#include "platform/XmlForm.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tv::test {
namespace {

struct Case {
    const char* name;
    std::string text;
    std::string form;
};
void PrintTo(const Case& row, std::ostream* out) {
    *out << row.name;
}

class XmlForm : public ::testing::TestWithParam<Case> {};

TEST_P(XmlForm, IsWhatTheParserWrites) {
    EXPECT_EQ(inParsersForm(GetParam().text).value_or("(nothing)"), GetParam().form);
}

const std::vector<Case> cases{
    {"Plain", "<r><a>1</a></r>", "<r><a>1</a></r>"},
    {"WhiteSpaceStays", "<r>\n\t<a>1</a>\n\n\t<b> </b>\n</r>\n\n", "<r>\n\t<a>1</a>\n\n\t<b> </b>\n</r>\n\n"},
    {"DeclarationStays", "<?xml version='1.0'  encoding='ISO-8859-1' ?>\n<r>\u00E9</r>",
     "<?xml version='1.0'  encoding='ISO-8859-1' ?>\n<r>\u00E9</r>"},
    {"Attributes", "<r  b = '2'\n  a=\"1\"  ></r >", "<r b=\"2\" a=\"1\"></r>"},
    {"EmptyElement", "<r><a/><b></b></r>", "<r><a></a><b></b></r>"},
    {"References", "<r>&#233;&#x2013;&lt;&gt;&amp;</r>", "<r>\u00E9\u2013&lt;&gt;&amp;</r>"},
    {"CData", "<r><![CDATA[a<b]]></r>", "<r><![CDATA[a<b]]></r>"},
    {"CommentsAround", "<!-- <a> -->\n<?p q?>\n<r><!-- x --></r>\n<!-- fim -->\n",
     "<!-- <a> -->\n<?p q?>\n<r><!-- x --></r>\n<!-- fim -->\n"},
    {"Doctype", "<!DOCTYPE r [\n<!ENTITY e \"x>y\">\n<!-- ]> ' -->\n]>\n<r>&e;</r>",
     "<!DOCTYPE r [\n<!ENTITY e \"x>y\">\n<!-- ]> ' -->\n]>\n<r>x&gt;y</r>"},
    {"Namespaces", "<p:r xmlns:p='u'><p:a p:b='1'/></p:r>", "<p:r xmlns:p=\"u\"><p:a p:b=\"1\"></p:a></p:r>"},
    {"NotWellFormed", "<r><a></r>", "(nothing)"},
    {"Empty", "", "(nothing)"},
    {"TwoRoots", "<r/><r/>", "(nothing)"},
    {"NoUtf8", "<r>\xE9</r>", "(nothing)"},
};

INSTANTIATE_TEST_SUITE_P(Texts, XmlForm, ::testing::ValuesIn(cases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(XmlForm, IsItsOwnForm) {
    for (const Case& row : cases) {
        if (const auto form = inParsersForm(row.text)) {
            EXPECT_EQ(inParsersForm(*form), form) << row.name;
        }
    }
}

TEST(XmlForm, NothingBehindTheDocumentIsLost) {
    EXPECT_FALSE(inParsersForm(std::string_view("<a/>\0T>x", 8)));
}

TEST(XmlForm, NothingOutsideIsRead) {
    EXPECT_EQ(inParsersForm("<!DOCTYPE r [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><r><a>&e;</a></r>"),
              std::nullopt);
    EXPECT_EQ(inParsersForm("<!DOCTYPE r SYSTEM 'r.dtd'><r>&e;</r>"), std::nullopt);
}

} // namespace
} // namespace tv::test
