#include "platform/text.h"

#include <gtest/gtest.h>

#include <string>

namespace tv::text {
namespace {

TEST(text, turns_latin1_both_ways) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_TRUE(isUtf8(fromLatin1(all)));
    EXPECT_EQ(toLatin1(fromLatin1(all)), all);
    EXPECT_EQ(fromLatin1("a\xE7\xF5"), "açõ");
    EXPECT_EQ(toLatin1(""), "");
}

TEST(text, substitutes_what_latin1_does_not_have) {
    EXPECT_EQ(toLatin1("a–b"), "a?b");
    EXPECT_EQ(toLatin1("a😀b", '.'), "a.b");
    EXPECT_EQ(toLatin1("a\xC3"), "a?");
}

struct Markup {
    const char* utf8;
    const char* latin1;
};

class Latin1Markup : public testing::TestWithParam<Markup> {};

TEST_P(Latin1Markup, writes_references_where_they_are_understood) {
    EXPECT_EQ(toLatin1Markup(GetParam().utf8), GetParam().latin1);
}

INSTANTIATE_TEST_SUITE_P(
    places, Latin1Markup,
    testing::Values(Markup{"<a>ç</a>", "<a>\xE7</a>"}, Markup{"<a>1–2</a>", "<a>1&#8211;2</a>"},
                    Markup{"<a b='–'/>", "<a b='&#8211;'/>"}, Markup{"<a>😀</a>", "<a>&#128512;</a>"},
                    Markup{"<![CDATA[a–b]]>", "<![CDATA[a]]>&#8211;<![CDATA[b]]>"},
                    Markup{"<![CDATA[ç]]>–<![CDATA[–]]>",
                           "<![CDATA[\xE7]]>&#8211;<![CDATA[]]>&#8211;<![CDATA[]]>"},
                    Markup{"<!-- – --><a>–</a>", "<!-- ? --><a>&#8211;</a>"},
                    Markup{"<?p – ?><a>–</a>", "<?p ? ?><a>&#8211;</a>"},
                    Markup{"–<![CDATA[<!-- ]]>–", "&#8211;<![CDATA[<!-- ]]>&#8211;"},
                    Markup{"<![CDATA[unclosed –", "<![CDATA[unclosed ]]>&#8211;<![CDATA["}, Markup{"", ""}));

TEST(text, tells_well_formed_utf8) {
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("plain ASCII that is longer than one block"));
    EXPECT_TRUE(isUtf8("ações – 😀"));
    EXPECT_TRUE(isUtf8("\xF4\x8F\xBF\xBF"));
    for (const char* broken :
         {"\x80", "\xC3", "\xC3(", "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xE2\x82", "ASCII before \xE7 and behind"}) {
        EXPECT_FALSE(isUtf8(broken)) << broken;
    }
}

TEST(text, mends_broken_utf8) {
    EXPECT_EQ(sanitizeUtf8("ação"), "ação");
    EXPECT_EQ(sanitizeUtf8("a\xE7\xE3o"), "a\uFFFD\uFFFDo");
    EXPECT_EQ(sanitizeUtf8("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(sanitizeUtf8("x\xE2\x82"), "x\uFFFD\uFFFD");
}

TEST(text, appends_utf16) {
    const std::u16string units = u"aç–😀";
    std::string out = ">";
    appendUtf8(out, units.data(), units.size());
    EXPECT_EQ(out, ">aç–😀");
}

TEST(text, replaces_lone_surrogates) {
    const char16_t units[] = {0xD83D, 'a', 0xDE00, 0xD83D};
    std::string out;
    appendUtf8(out, units, 4);
    EXPECT_EQ(out, "\uFFFDa\uFFFD\uFFFD");
}

} // namespace
} // namespace tv::text
