#include "editor/LinkDeEmail.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

struct LinkCase {
    const char* name;
    std::string_view address;
    std::string_view subject;
    std::string_view body;
    std::string_view link;
};

class LinkDeEmailTest : public ::testing::TestWithParam<LinkCase> {};

TEST_P(LinkDeEmailTest, JoinsAddressSubjectAndBody) {
    const LinkCase& c = GetParam();
    EXPECT_EQ(linkDeEmail(c.address, c.subject, c.body), c.link);
}

INSTANTIATE_TEST_SUITE_P(
    MailLink, LinkDeEmailTest,
    ::testing::Values(
        LinkCase{"address_only", "a@b.com.br", "", "", "mailto:a@b.com.br"},
        LinkCase{"prefix_there", "mailto:a@b.com", "", "", "mailto:a@b.com"},
        LinkCase{"prefix_in_any_case", "MailTo:a@b.com", "", "", "MailTo:a@b.com"},
        LinkCase{"prefix_in_the_middle_is_none", "x mailto:a@b.com", "", "", "mailto:x mailto:a@b.com"},
        LinkCase{"shorter_than_the_prefix", "mail", "", "", "mailto:mail"},
        LinkCase{"empty_address", "", "", "", "mailto:"},
        LinkCase{"subject_only", "a@b.com", "Oi", "", "mailto:a@b.com?subject=Oi"},
        LinkCase{"body_only", "a@b.com", "", "Oi", "mailto:a@b.com?body=Oi"},
        LinkCase{"subject_and_body", "a@b.com", "S", "C", "mailto:a@b.com?subject=S&body=C"},
        LinkCase{"blanks_and_brackets", "a@b.com", "[Tramador - 1.0] Oi", "",
                 "mailto:a@b.com?subject=%5BTramador%20-%201.0%5D%20Oi"},
        LinkCase{"separators_do_not_end_a_part", "a@b.com", "R&D?=100%#1", "a+b",
                 "mailto:a@b.com?subject=R%26D%3F%3D100%25%231&body=a%2Bb"},
        LinkCase{"accents_in_utf8", "a@b.com", "Dúvida", "", "mailto:a@b.com?subject=D%C3%BAvida"},
        LinkCase{"line_ends", "a@b.com", "", "um\ndois\r\ntr", "mailto:a@b.com?body=um%0D%0Adois%0D%0Atr"},
        LinkCase{"unreserved_stay", "a@b.com", "Az09-._~", "", "mailto:a@b.com?subject=Az09-._~"}),
    [](const auto& given) { return std::string(given.param.name); });

} // namespace
} // namespace tv
