#include "platform/XmlDocument.h"

#include "ScratchFolder.h"
#include "Throws.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ostream>
#include <string>
#include <vector>

namespace tv {
namespace {

using test::errorOf;

XmlDocument parsed(std::string_view xml) {
    XmlDocument document;
    EXPECT_TRUE(document.loadXML(xml)) << document.parseError();
    return document;
}

class XmlDocumentFiles : public testing::Test {
protected:
    bool load(std::string_view bytes) { return document.load(folder.file("a.xml", bytes)); }

    test::ScratchFolder folder;
    XmlDocument document;
};

TEST_F(XmlDocumentFiles, load_in_the_encoding_that_they_declare) {
    EXPECT_TRUE(load("<?xml version='1.0' encoding='ISO-8859-1'?><a>a\xE7\xE3o</a>"));
    EXPECT_EQ(document.documentElement().text(), "ação");
    EXPECT_TRUE(load("<?xml version='1.0' encoding='UTF-8'?><a>ação–</a>"));
    EXPECT_EQ(document.documentElement().text(), "ação–");
    EXPECT_TRUE(load("<a>ação</a>"));
    EXPECT_EQ(document.documentElement().text(), "ação");
    EXPECT_TRUE(load("<?xml version='1.0' encoding='windows-1252'?><a>\x96</a>"));
    EXPECT_EQ(document.documentElement().text(), "–");
    EXPECT_TRUE(load("\xEF\xBB\xBF<a>ç</a>"));
    EXPECT_EQ(document.documentElement().text(), "ç");
}

TEST_F(XmlDocumentFiles, load_in_utf16_too) {
    const std::u16string text = u"\uFEFF<?xml version='1.0' encoding='UTF-16'?><a>ação</a>";
    std::string little;
    std::string big;
    for (const char16_t unit : text) {
        little += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        big += {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
    }
    EXPECT_TRUE(load(little)) << document.parseError();
    EXPECT_EQ(document.documentElement().text(), "ação");
    EXPECT_TRUE(load(big)) << document.parseError();
    EXPECT_EQ(document.documentElement().text(), "ação");
    EXPECT_FALSE(load(little.substr(0, little.size() - 5)));
    EXPECT_FALSE(load(little + '<')) << "half of a character";
    EXPECT_FALSE(load(big + std::string(2, '\0')));
}

TEST_F(XmlDocumentFiles, that_are_none_are_refused_with_a_reason) {
    const std::string jpeg("\xFF\xD8\xFF\xE0\x00\x10JFIF\x00\x01\x01", 13);
    const std::vector<std::string> broken{"",
                                          " ",
                                          "text",
                                          jpeg,
                                          "<a>",
                                          "<a></b>",
                                          "<a/><b/>",
                                          "<a b=1/>",
                                          "<a>&undeclared;</a>",
                                          "<a>\x01</a>",
                                          "<a>\xE7\xE3o</a>",
                                          "<?xml version='1.0' encoding='none-such'?><a/>",
                                          " <?xml version='1.0'?><a/>",
                                          std::string("<a>\0</a>", 8),
                                          std::string("<a/>\0", 5),
                                          std::string("<a/>\n\0<b/>", 10),
                                          std::string("<!DOCTYPE a><a/>\0lost", 21),
                                          "<p:a/>",
                                          "<a xmlns:p='u' p:x='1' xmlns:q='u' q:x='2'/>",
                                          "<a b='1' b='2'/>",
                                          std::string(1000, '\0')};
    for (const std::string& bytes : broken) {
        EXPECT_FALSE(load(bytes)) << bytes;
        EXPECT_TRUE(document.empty());
        EXPECT_NE(document.parseError(), "") << bytes;
    }
}

TEST_F(XmlDocumentFiles, that_cannot_be_read_are_refused_with_a_reason) {
    EXPECT_FALSE(document.load(folder / "none.xml"));
    EXPECT_TRUE(text::contains(document.parseError(), "none.xml"));
    EXPECT_FALSE(document.load(folder.path()));
    EXPECT_NE(document.parseError(), "");
    EXPECT_TRUE(load("<a/>"));
    EXPECT_EQ(document.parseError(), "") << "the reason is that of the last load";
}

TEST_F(XmlDocumentFiles, cut_off_anywhere_are_refused_without_harm) {
    const std::string whole =
        "<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e 'x'>]><a b='1'><!--c--><![CDATA[d]]>&e;<p/></a>";
    EXPECT_TRUE(load(whole));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(load(whole.substr(0, length))) << length;
    }
}

TEST_F(XmlDocumentFiles, tell_the_line_of_a_fault) {
    EXPECT_FALSE(load("<a>\n<b>\n</a>"));
    EXPECT_TRUE(text::startsWith(document.parseError(), "Linha 3: ")) << document.parseError();
}

TEST_F(XmlDocumentFiles, are_never_reached_from_inside_of_a_document) {
    folder.file("secret.txt", "SECRET");
    folder.file("secret.dtd", "<!ENTITY e 'SECRET'><!ATTLIST a x CDATA 'SECRET'>");
    const std::string secret = (folder / "secret.txt").string();
    const std::string dtd = (folder / "secret.dtd").string();
    const std::vector<std::string> documents{
        "<!DOCTYPE a [<!ENTITY e SYSTEM '" + secret + "'>]><a>&e;</a>",
        "<!DOCTYPE a [<!ENTITY e SYSTEM 'secret.txt'>]><a>&e;</a>",
        "<!DOCTYPE a [<!ENTITY e PUBLIC 'p' 'file://" + secret + "'>]><a>&e;</a>",
        "<!DOCTYPE a SYSTEM '" + dtd + "'><a>&e;</a>",
        "<!DOCTYPE a SYSTEM 'secret.dtd'><a/>",
        "<!DOCTYPE a [<!ENTITY % p SYSTEM '" + dtd + "'> %p;]><a>&e;</a>",
        "<a xmlns:xi='http://www.w3.org/2001/XInclude'><xi:include href='" + secret + "' parse='text'/></a>",
        "<?xml-stylesheet href='" + secret + "'?><a/>"};
    for (const std::string& bytes : documents) {
        if (load(bytes)) {
            EXPECT_EQ(document.documentElement().text(), "") << bytes;
            EXPECT_EQ(document.documentElement().attribute("x"), std::nullopt) << bytes;
        }
    }
}

TEST(XmlDocument, ignores_the_declared_encoding_of_a_text) {
    const XmlDocument document = parsed("<?xml version='1.0' encoding='ISO-8859-1'?><a>ação</a>");
    EXPECT_EQ(document.documentElement().text(), "ação");
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='UTF-16'?><a>ç</a>").documentElement().text(), "ç");
    XmlDocument broken;
    EXPECT_FALSE(broken.loadXML("<a>\xE7\xE3o</a>"));
}

TEST(XmlDocument, takes_views_of_exactly_the_text) {
    const std::string text = "<a>1</a><garbage";
    EXPECT_EQ(parsed(std::string_view(text).substr(0, 8)).documentElement().text(), "1");
}

TEST(XmlDocument, leaves_out_text_of_white_space_alone) {
    const XmlDocument document = parsed("<a>\r\n\t<b> x </b>\n<c>  </c> <!--d--> \n</a>");
    EXPECT_EQ(document.documentElement().childNodes().size(), 3U);
    EXPECT_EQ(document.documentElement().child("b").text(), " x ");
    EXPECT_FALSE(document.documentElement().child("c").firstChild());
    EXPECT_EQ(parsed("<a>x<b/> <c/> y</a>").documentElement().text(), "x y");
}

TEST(XmlDocument, expands_small_entities_of_its_own) {
    const XmlDocument document =
        parsed("<!DOCTYPE a [<!ENTITY e 'fundo &#38;amp; '><!ENTITY f '&e;&e;'>]><a b='&e;'>&f;</a>");
    EXPECT_EQ(document.documentElement().text(), "fundo & fundo & ");
    EXPECT_EQ(document.documentElement().attribute("b"), "fundo & ");
}

/// Entities that each hold the one before ten times.
std::string laughs(int levels, const std::string& use) {
    std::string dtd = "<!DOCTYPE a [<!ENTITY e0 'lol'>";
    for (int level = 1; level <= levels; ++level) {
        dtd += "<!ENTITY e" + std::to_string(level) + " '";
        for (int i = 0; i < 10; ++i) {
            dtd += "&e" + std::to_string(level - 1) + ";";
        }
        dtd += "'>";
    }
    return dtd + "]>" + use;
}

std::string repeated(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

/// A document that means harm; made only when its test runs.
struct Attack {
    const char* name;
    std::string (*document)();
};

void PrintTo(const Attack& attack, std::ostream* out) {
    *out << attack.name;
}

std::string withAttributes(int count) {
    std::string text = "<a";
    for (int i = 0; i < count; ++i) {
        text += " a" + std::to_string(i) + "='>'";
    }
    return text + "/>";
}

std::string entityOf(const std::string& value, const std::string& use) {
    return "<!DOCTYPE a [<!ENTITY e '" + value + "'>]>" + use;
}

class HostileDocument : public testing::TestWithParam<Attack> {};

TEST_P(HostileDocument, ends_quickly_and_stays_small) {
    const std::string text = GetParam().document();
    const auto start = std::chrono::steady_clock::now();
    XmlDocument document;
    if (document.loadXML(text)) {
        EXPECT_LT(document.documentElement().text().size(), 20'000'000 + 20 * text.size());
        EXPECT_LT(document.xml().size(), 40'000'000 + 40 * text.size());
    } else {
        EXPECT_NE(document.parseError(), "");
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

const std::string longText(50000, 'x');

INSTANTIATE_TEST_SUITE_P(
    forms, HostileDocument,
    testing::Values(
        Attack{"laughs_in_a_text", [] { return laughs(30, "<a>&e30;</a>"); }},
        Attack{"laughs_in_an_attribute", [] { return laughs(30, "<a b='&e30;'/>"); }},
        Attack{"moderate_laughs", [] { return laughs(5, "<a>" + repeated("&e5;", 200) + "</a>"); }},
        Attack{"quadratic_text", [] { return entityOf(longText, "<a>" + repeated("&e;", 50000) + "</a>"); }},
        Attack{"quadratic_attribute",
               [] { return entityOf(longText, "<a b='" + repeated("&e;", 50000) + "'/>"); }},
        Attack{"quadratic_over_elements",
               [] { return entityOf(longText, "<a>" + repeated("<b>&e;</b>", 50000) + "</a>"); }},
        Attack{"quadratic_over_attributes",
               [] { return entityOf(longText, "<a>" + repeated("<b c='&e;'/>", 50000) + "</a>"); }},
        Attack{"entities_of_markup",
               [] { return entityOf(repeated("<b/>", 10000), "<a>" + repeated("&e;", 10000) + "</a>"); }},
        Attack{"escaped_markup_in_entities",
               [] { return entityOf(repeated("&#60;b/>", 10000), "<a>" + repeated("&e;", 10000) + "</a>"); }},
        Attack{"entities_that_hold_themselves",
               [] { return std::string("<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>"); }},
        Attack{"parameter_entities",
               [] {
                   return std::string(
                       "<!DOCTYPE a [<!ENTITY % p '<!ENTITY &#37; q \"&#37;p;&#37;p;\">'>%p;%q;]><a/>");
               }},
        Attack{"default_values",
               [] {
                   return "<!DOCTYPE a [<!ATTLIST b x CDATA '" + longText + "'>]><a>" +
                          repeated("<b/>", 50000) + "</a>";
               }},
        Attack{"deep_nesting", [] { return repeated("<b>", 500000); }},
        Attack{"deep_and_closed", [] { return repeated("<b>", 100000) + repeated("</b>", 100000); }},
        Attack{"many_attributes", [] { return withAttributes(500000); }},
        Attack{"a_long_name", [] { return "<" + std::string(2'000'000, 'n') + "/>"; }}),
    [](const testing::TestParamInfo<Attack>& attack) { return attack.param.name; });

TEST(XmlDocument, refuses_what_grows_without_end) {
    XmlDocument document;
    EXPECT_FALSE(document.loadXML(laughs(30, "<a>&e30;</a>")));
    EXPECT_FALSE(document.loadXML(repeated("<b>", 100000) + repeated("</b>", 100000)));
    EXPECT_FALSE(document.loadXML("<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>&e;</a>"));
}

TEST(XmlDocument, loads_texts_of_any_size) {
    const std::string text(12'000'000, 'x');
    EXPECT_EQ(parsed("<a>" + text + "</a>").documentElement().text().size(), text.size());
    EXPECT_EQ(parsed("<a><![CDATA[" + text + "]]></a>").documentElement().text().size(), text.size());
    EXPECT_EQ(parsed("<a b='" + text + "'/>").documentElement().getNamedItem("b").size(), text.size());
}

TEST(XmlDocument, allows_the_depth_that_real_documents_have) {
    EXPECT_EQ(parsed(repeated("<b>", 900) + repeated("</b>", 900)).selectNodes("//b").size(), 900U);
}

TEST(XmlDocument, counts_attributes_and_not_quotation_marks) {
    EXPECT_EQ(parsed(withAttributes(900)).documentElement().attributes().size(), 900U);
    const std::string marks = repeated("'\" < ", 1000);
    EXPECT_EQ(parsed("<a><!--" + marks + "--><![CDATA[" + marks + "]]><?p " + marks + "?></a>")
                  .documentElement()
                  .text(),
              marks);
    EXPECT_EQ(parsed("<a>" + repeated("'\" > ", 1000) + "</a>").documentElement().text().size(), 5000U);
}

TEST(XmlDocument, is_empty_until_something_is_loaded) {
    const XmlDocument document;
    EXPECT_TRUE(document.empty());
    EXPECT_EQ(document.xml(), "");
    EXPECT_EQ(errorOf([&] { document.documentElement(); }), errc::objectNotSet);
    EXPECT_TRUE(document.selectNodes("//a").empty());
    EXPECT_FALSE(document.selectSingleNode("//a"));
}

TEST(XmlDocument, is_replaced_by_each_load) {
    XmlDocument document = parsed("<a/>");
    EXPECT_FALSE(document.loadXML("<b>"));
    EXPECT_TRUE(document.empty());
    EXPECT_TRUE(document.loadXML("<c/>"));
    EXPECT_EQ(document.documentElement().baseName(), "c");
    const XmlDocument other = std::move(document);
    EXPECT_EQ(other.documentElement().baseName(), "c");
}

TEST(XmlDocument, writes_itself_as_text) {
    EXPECT_EQ(parsed("<?xml version='1.0'?><a b='1'><c/>ç&amp;<![CDATA[<]]><!--d--><?e f?></a>").xml(),
              "<a b=\"1\"><c></c>ç&amp;<![CDATA[<]]><!--d--><?e f?></a>");
    EXPECT_EQ(parsed("<!--x--><a/><!--y-->").xml(), "<!--x-->\r\n<a></a>\r\n<!--y-->");
}

TEST(XmlDocument, writes_no_declarations_of_its_entities) {
    EXPECT_EQ(parsed("<!DOCTYPE a [<!ENTITY e '1'><!ATTLIST a b CDATA '&#60;'>]><a>&e;</a>").xml(),
              "<a>1</a>");
    EXPECT_EQ(parsed("<!DOCTYPE a SYSTEM 'x.dtd'><a/>").xml(), "<!DOCTYPE a SYSTEM \"x.dtd\">\r\n<a></a>");
    EXPECT_EQ(parsed("<!DOCTYPE a PUBLIC 'p' 'a\"b'><a/>").xml(),
              "<!DOCTYPE a PUBLIC \"p\" 'a\"b'>\r\n<a></a>");
}

TEST(XmlDocument, what_it_writes_reads_back_the_same) {
    const std::string text = "<a xmlns=\"u\" xmlns:p=\"v\" b=\"&quot;&lt;&amp;&gt;&#9;&#10;&#13;'\" p:c=\"\">"
                             "&lt;&amp;]]&gt;\t\n&#13; <p:d></p:d><![CDATA[a]]]]><![CDATA[>b]]></a>";
    const XmlDocument document = parsed(text);
    const XmlDocument again = parsed(document.xml());
    EXPECT_EQ(again.xml(), document.xml());
    EXPECT_EQ(again.documentElement().text(), "<&]]>\t\n\r a]]>b");
    EXPECT_EQ(again.documentElement().attribute("b"), "\"<&>\t\n\r'");
}

TEST(XmlDocument, saves_in_latin1_as_it_stands) {
    EXPECT_EQ(parsed("<?xml version='1.0' encoding='UTF-8'?>\n<a>\n<b>ç–😀</b><c d='–'/></a>").toLatin1(),
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
              "<a><b>\xE7&#8211;&#128512;</b><c d=\"&#8211;\"></c></a>");
}

TEST(XmlDocument, saves_one_element_a_line) {
    EXPECT_EQ(parsed("<a><b><c>1</c><d/></b><e>x<f/>y</e><!--g--><h><i/></h></a>").toLatin1(true),
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
              "<a>\r\n"
              "\t<b>\r\n"
              "\t\t<c>1</c>\r\n"
              "\t\t<d></d>\r\n"
              "\t</b>\r\n"
              "\t<e>x<f></f>y</e>\r\n"
              "\t<!--g-->\r\n"
              "\t<h>\r\n"
              "\t\t<i></i>\r\n"
              "\t</h>\r\n"
              "</a>\r\n");
}

TEST_F(XmlDocumentFiles, are_saved_whole_and_read_back) {
    ASSERT_TRUE(load("<?xml version='1.0' encoding='ISO-8859-1'?><a><b>\xE7 &#8211;</b></a>"));
    document.save(folder / "b.xml", true);
    EXPECT_EQ(files::readAll(folder / "b.xml"), document.toLatin1(true));
    XmlDocument again;
    EXPECT_TRUE(again.load(folder / "b.xml")) << again.parseError();
    EXPECT_EQ(again.xml(), document.xml());
    EXPECT_EQ(folder.count(), 2U);
    EXPECT_EQ(errorOf([&] { document.save(folder / "none/b.xml"); }), errc::pathNotFound);
}

TEST(XmlDocument, can_be_built_from_nothing) {
    XmlDocument document = XmlDocument::create("TORVA");
    XmlNode root = document.documentElement();
    root.setAttribute("app", "Tramador & Validador");
    XmlNode item = document.createElement("RESULTADO");
    item.setText("1 < 2");
    root.appendChild(item);
    EXPECT_EQ(document.xml(),
              "<TORVA app=\"Tramador &amp; Validador\"><RESULTADO>1 &lt; 2</RESULTADO></TORVA>");
    EXPECT_EQ(errorOf([] { XmlDocument::create("not a name"); }), errc::invalidCall);
    EXPECT_EQ(errorOf([&] { document.createElement(""); }), errc::invalidCall);
}

} // namespace
} // namespace tv
