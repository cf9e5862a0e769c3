#include "platform/XmlDocument.h"

#include "Throws.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace tv {
namespace {

using test::errorOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

XmlDocument parsed(std::string_view xml) {
    XmlDocument document;
    EXPECT_TRUE(document.loadXML(xml)) << document.parseError();
    return document;
}

std::vector<std::string> namesOf(const std::vector<XmlNode>& nodes) {
    std::vector<std::string> names;
    for (const XmlNode& node : nodes) {
        names.push_back(node.baseName());
    }
    return names;
}

TEST(XmlNode, gives_names_without_their_prefix) {
    const XmlDocument document = parsed("<p:a xmlns:p='u'><b/><!--c--><?d e?>t</p:a>");
    const XmlNode root = document.documentElement();
    EXPECT_EQ(root.baseName(), "a");
    EXPECT_EQ(root.name(), "a");
    EXPECT_TRUE(root.isElement());
    const std::vector<XmlNode> children = root.childNodes();
    ASSERT_EQ(children.size(), 4U);
    EXPECT_THAT(namesOf(children), ElementsAre("b", "", "d", ""));
    EXPECT_FALSE(children[1].isElement());
}

TEST(XmlNode, joins_the_text_of_all_below) {
    const XmlDocument document = parsed("<a>1<b>2<c>3</c></b><!--x--><?y z?><![CDATA[<4>]]>&amp;5</a>");
    const XmlNode root = document.documentElement();
    EXPECT_EQ(root.text(), "123<4>&5");
    EXPECT_EQ(root.child("b").text(), "23");
    EXPECT_EQ(document.selectSingleNode("//c/text()").text(), "3");
    EXPECT_EQ(document.selectSingleNode("//comment()").text(), "x");
    EXPECT_EQ(parsed("<a/>").documentElement().text(), "");
}

TEST(XmlNode, lends_a_single_text_without_a_copy) {
    const XmlDocument document =
        parsed("<a><b>long enough for no small buffer at all</b><c>1<d/>2</c><e/></a>");
    const XmlNode root = document.documentElement();
    std::string buffer = "untouched";
    EXPECT_EQ(root.child("b").text(buffer), "long enough for no small buffer at all");
    EXPECT_EQ(root.child("e").text(buffer), "");
    EXPECT_EQ(buffer, "untouched");
    EXPECT_EQ(root.child("c").text(buffer), "12");
    EXPECT_EQ(buffer, "12");
}

TEST(XmlNode, finds_its_relatives) {
    const XmlDocument document = parsed("<a>t<b/><!--x--><c><d/></c><b id='2'/></a>");
    const XmlNode root = document.documentElement();
    EXPECT_FALSE(root.parent());
    EXPECT_FALSE(root.nextElement());
    EXPECT_EQ(root.firstChild().text(), "t");
    EXPECT_EQ(root.firstElement().baseName(), "b");
    EXPECT_EQ(root.firstElement().nextElement().baseName(), "c");
    EXPECT_EQ(root.child("c").firstElement().parent(), root.child("c"));
    EXPECT_EQ(root.child("b").attribute("id"), std::nullopt) << "the first of that name";
    EXPECT_FALSE(root.child("B"));
    EXPECT_FALSE(root.child("d")) << "children only";
    EXPECT_THAT(namesOf(root.childElements()), ElementsAre("b", "c", "b"));
    EXPECT_FALSE(root.child("b").firstChild());
    EXPECT_FALSE(root.child("b").firstElement());
}

TEST(XmlNode, reads_attributes) {
    const XmlDocument document = parsed("<a z='1' b='&lt;2&gt;' xmlns:p='u' p:c='3' d=''/>");
    const XmlNode root = document.documentElement();
    EXPECT_EQ(root.getNamedItem("b"), "<2>");
    EXPECT_EQ(root.getNamedItem("p:c"), "3");
    EXPECT_EQ(root.getNamedItem("d"), "");
    EXPECT_EQ(root.attribute("c"), std::nullopt);
    EXPECT_EQ(root.attribute("B"), std::nullopt) << "names are compared with regard to case";
    EXPECT_EQ(errorOf([&] { root.getNamedItem("none"); }), errc::objectNotSet);
    EXPECT_THAT(root.attributes(),
                ElementsAre(Pair("z", "1"), Pair("b", "<2>"), Pair("p:c", "3"), Pair("d", "")));
    EXPECT_THAT(parsed("<a>t</a>").documentElement().firstChild().attributes(), IsEmpty());
}

TEST(XmlNode, an_empty_one_answers_nothing) {
    XmlNode none;
    XmlDocument document = parsed("<a/>");
    XmlNode root = document.documentElement();
    EXPECT_FALSE(none);
    EXPECT_EQ(none, root.child("b"));
    const std::vector<std::function<void()>> questions{
        [&] { none.isElement(); },
        [&] { none.baseName(); },
        [&] { none.text(); },
        [&] { none.setText("x"); },
        [&] { none.getNamedItem("x"); },
        [&] { none.attribute("x"); },
        [&] { none.attributes(); },
        [&] { none.parent(); },
        [&] { none.firstChild(); },
        [&] { none.firstElement(); },
        [&] { none.nextElement(); },
        [&] { none.child("x"); },
        [&] { none.childNodes(); },
        [&] { none.childElements(); },
        [&] { none.selectNodes("x"); },
        [&] { none.selectSingleNode("x"); },
        [&] { none.outerXml(); },
        [&] { none.appendElement("x"); },
        [&] { none.appendChild(root); },
        [&] { root.appendChild(none); },
        [&] { root.removeChild(none); },
        [&] { none.setAttribute("x", "y"); },
    };
    for (std::size_t i = 0; i < questions.size(); ++i) {
        EXPECT_EQ(errorOf(questions[i]), errc::objectNotSet) << i;
    }
}

TEST(XmlNode, selects_by_xpath) {
    const XmlDocument document = parsed("<a><b id='1'><c>x</c></b><b id='2'><c>y</c><c>z</c></b></a>");
    const XmlNode root = document.documentElement();
    EXPECT_EQ(document.selectNodes("//b").size(), 2U);
    EXPECT_EQ(document.selectNodes("//a/*").size(), 2U);
    EXPECT_EQ(root.selectNodes("b/c").size(), 3U);
    EXPECT_EQ(root.selectSingleNode("b[@id='2']/c").text(), "y");
    EXPECT_EQ(root.child("b").selectNodes("//c").size(), 3U) << "from the document";
    EXPECT_EQ(root.child("b").selectNodes(".//c").size(), 1U);
    EXPECT_EQ(document.selectSingleNode("//b/@id").text(), "1");
    EXPECT_EQ(document.selectNodes("/a/b/node()").size(), 3U);
    EXPECT_EQ(document.selectNodes("//c[last()] | //b").size(), 4U);
    EXPECT_FALSE(root.selectSingleNode("none"));
    EXPECT_THAT(root.selectNodes("none/*"), IsEmpty());
    EXPECT_THAT(document.selectNodes("//namespace::*"), IsEmpty()) << "these are no nodes of the document";
    EXPECT_THAT(document.selectNodes("/"), IsEmpty());
}

TEST(XmlNode, refuses_what_is_no_expression_for_nodes) {
    const XmlDocument document = parsed("<a/>");
    for (const char* xpath :
         {"", "//[", "a b", "@", "p:a", "none()", "count(//a)", "'text'", "1 + 1", "$x", "a["}) {
        EXPECT_EQ(errorOf([&] { document.selectNodes(xpath); }), errc::typeMismatch) << xpath;
        EXPECT_EQ(errorOf([&] { document.selectSingleNode(xpath); }), errc::typeMismatch) << xpath;
    }
}

TEST(XmlNode, selects_the_children_of_a_large_document_in_linear_time) {
    std::string text = "<a>";
    for (int i = 0; i < 200000; ++i) {
        text += "<b><c/></b>";
    }
    const XmlDocument document = parsed(text + "</a>");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(document.selectNodes("//a/*").size(), 200000U);
    EXPECT_EQ(document.selectNodes("//b/c").size(), 200000U);
    EXPECT_EQ(document.selectNodes("//b/*").size(), 200000U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(XmlNode, keeps_no_end_of_expressions) {
    const XmlDocument document = parsed("<a><b>7</b></a>");
    for (int i = 0; i < 500; ++i) {
        EXPECT_EQ(document.selectNodes("//b[. = " + std::to_string(i) + "]").size(), i == 7 ? 1U : 0U);
    }
}

TEST(XmlNode, replaces_its_text) {
    XmlDocument document = parsed("<a><b>1<c/>2</b></a>");
    XmlNode b = document.documentElement().child("b");
    XmlNode c = b.child("c");
    b.setText("<x> & y");
    EXPECT_EQ(b.text(), "<x> & y");
    EXPECT_EQ(document.xml(), "<a><b>&lt;x&gt; &amp; y</b></a>");
    EXPECT_EQ(c.baseName(), "c") << "a handle outlives the place of its node";
    b.setText("");
    EXPECT_EQ(document.xml(), "<a><b></b></a>");
    b.setText("1");
    b.firstChild().setText("2 &lt;");
    EXPECT_EQ(b.text(), "2 &lt;");
}

TEST(XmlNode, holds_only_what_xml_can_hold) {
    XmlDocument document = parsed("<a/>");
    XmlNode root = document.documentElement();
    root.setText(std::string("a\x01\0b\xE7 ç\t\n", 10));
    root.setAttribute("x", "\x0C\uFFFF");
    EXPECT_EQ(root.text(), "a\uFFFD\uFFFDb\uFFFD ç\t\n");
    EXPECT_EQ(root.attribute("x"), "\uFFFD\uFFFD");
    EXPECT_EQ(parsed(document.xml()).xml(), document.xml());
}

TEST(XmlNode, sets_attributes) {
    XmlDocument document = parsed("<a b='1'/>");
    XmlNode root = document.documentElement();
    root.setAttribute("b", "<2>");
    root.setAttribute("c", "ç");
    root.setAttribute("c", "");
    EXPECT_THAT(root.attributes(), ElementsAre(Pair("b", "<2>"), Pair("c", "")));
    for (const char* name : {"", "a b", "1a", "a=", "<", "a(b)"}) {
        EXPECT_EQ(errorOf([&] { root.setAttribute(name, "x"); }), errc::invalidCall) << name;
    }
    root.setText("t");
    EXPECT_EQ(errorOf([&] { root.firstChild().setAttribute("x", "y"); }), errc::invalidCall);
}

TEST(XmlNode, makes_elements_in_their_places) {
    XmlDocument document = parsed("<a><b/></a>");
    XmlNode root = document.documentElement();
    root.appendElement("d").setText("1");
    root.insertElement("c", root.child("d"));
    root.insertElement("e", {});
    EXPECT_EQ(document.xml(), "<a><b></b><c></c><d>1</d><e></e></a>");
    for (const char* name : {"", "a b", "-a", "metodo(x)", "a\tb"}) {
        EXPECT_EQ(errorOf([&] { root.appendElement(name); }), errc::invalidCall) << name;
    }
    EXPECT_EQ(errorOf([&] { root.insertElement("x", root); }), errc::invalidCall);
    EXPECT_EQ(errorOf([&] { root.child("d").firstChild().appendElement("x"); }), errc::invalidCall);
    EXPECT_EQ(document.xml(), "<a><b></b><c></c><d>1</d><e></e></a>")
        << "nothing came in on the failing ways";
}

TEST(XmlNode, moves_nodes) {
    XmlDocument document = parsed("<a><b><x/>t</b><c/></a>");
    XmlNode root = document.documentElement();
    XmlNode b = root.child("b");
    XmlNode c = root.child("c");
    c.appendChild(b.child("x"));
    root.insertBefore(c, b);
    EXPECT_EQ(document.xml(), "<a><c><x></x></c><b>t</b></a>");
    root.insertBefore(c, c);
    root.appendChild(b);
    EXPECT_EQ(document.xml(), "<a><c><x></x></c><b>t</b></a>");
    c.appendChild(b.firstChild());
    c.appendChild(c.firstChild());
    EXPECT_EQ(document.xml(), "<a><c>t<x></x></c><b></b></a>");
}

TEST(XmlNode, texts_that_come_together_stay_apart) {
    XmlDocument document = parsed("<a><b>1</b><c>2</c></a>");
    XmlNode root = document.documentElement();
    XmlNode first = root.child("b").firstChild();
    XmlNode second = root.child("c").firstChild();
    root.appendChild(first);
    root.appendChild(second);
    EXPECT_EQ(first.text(), "1");
    EXPECT_EQ(second.text(), "2");
    EXPECT_EQ(root.text(), "12");
}

TEST(XmlNode, refuses_moves_that_make_no_tree) {
    XmlDocument document = parsed("<a d='1'><b><c/></b></a>");
    XmlDocument other = parsed("<x/>");
    XmlNode root = document.documentElement();
    XmlNode b = root.child("b");
    EXPECT_EQ(errorOf([&] { b.child("c").appendChild(b); }), errc::invalidCall) << "into itself";
    EXPECT_EQ(errorOf([&] { b.appendChild(b); }), errc::invalidCall);
    EXPECT_EQ(errorOf([&] { b.appendChild(root); }), errc::invalidCall);
    EXPECT_EQ(errorOf([&] { root.appendChild(other.documentElement()); }), errc::invalidCall)
        << "of another document";
    EXPECT_EQ(errorOf([&] { b.appendChild(document.selectSingleNode("/a/@d")); }), errc::invalidCall);
    EXPECT_EQ(errorOf([&] { root.insertBefore(b, b.child("c")); }), errc::invalidCall)
        << "not a child to stand before";
    EXPECT_EQ(document.xml(), "<a d=\"1\"><b><c></c></b></a>");
}

TEST(XmlNode, removes_children_that_can_come_back) {
    XmlDocument document = parsed("<a><b><c/></b><d/></a>");
    XmlNode root = document.documentElement();
    XmlNode b = root.child("b");
    root.removeChild(b);
    EXPECT_EQ(document.xml(), "<a><d></d></a>");
    EXPECT_EQ(document.selectNodes("//b").size(), 0U);
    EXPECT_EQ(b.outerXml(), "<b><c></c></b>");
    EXPECT_FALSE(b.parent());
    EXPECT_EQ(errorOf([&] { root.removeChild(b); }), errc::invalidCall);
    EXPECT_EQ(errorOf([&] { root.removeChild(root); }), errc::invalidCall);
    root.appendChild(b);
    root.removeChild(b);
    root.child("d").appendChild(b);
    EXPECT_EQ(document.xml(), "<a><d><b><c></c></b></d></a>");
}

TEST(XmlNode, keeps_document_order_after_moves) {
    XmlDocument document = parsed("<a><b i='1'/><b i='2'/><b i='3'/></a>");
    XmlNode root = document.documentElement();
    const std::vector<XmlNode> nodes = document.selectNodes("//b");
    root.insertBefore(nodes[2], nodes[0]);
    root.appendChild(nodes[1]);
    std::string order;
    for (const XmlNode& node : document.selectNodes("//b[@i=2] | //b[@i=1] | //b[@i=3]")) {
        order += node.getNamedItem("i");
    }
    EXPECT_EQ(order, "312");
}

TEST(XmlNode, writes_itself_with_all_below) {
    const XmlDocument document = parsed("<?xml version='1.0'?><a><b c='1'>x<d/></b>y</a>");
    EXPECT_EQ(document.documentElement().child("b").outerXml(), "<b c=\"1\">x<d></d></b>");
    EXPECT_EQ(document.selectSingleNode("/a/text()").outerXml(), "y");
}

TEST(XmlNode, takes_the_name_spaces_that_it_needs_along) {
    const XmlDocument document = parsed("<a xmlns='d' xmlns:p='u' xmlns:q='v'><p:b q:x='1'><c "
                                        "xmlns:p='w'><p:e/></c></p:b><f xml:lang='pt'/></a>");
    const std::string b = document.selectSingleNode("//*[local-name() = 'b']").outerXml();
    EXPECT_EQ(
        b, "<p:b xmlns=\"d\" xmlns:p=\"u\" xmlns:q=\"v\" q:x=\"1\"><c xmlns:p=\"w\"><p:e></p:e></c></p:b>");
    EXPECT_EQ(parsed(b).xml(), b);
    const std::string f = document.selectSingleNode("//*[local-name() = 'f']").outerXml();
    EXPECT_EQ(f, "<f xmlns=\"d\" xml:lang=\"pt\"></f>");
    EXPECT_EQ(parsed("<a xmlns:p='u'><b>1</b></a>").documentElement().child("b").outerXml(), "<b>1</b>");
}

} // namespace
} // namespace tv
