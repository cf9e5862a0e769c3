#include "platform/XmlTransform.h"

#include "ScratchFolder.h"
#include "Throws.h"
#include "platform/Error.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <ostream>
#include <string>

namespace tv {
namespace {

using test::errorOf;

class XmlTransformTest : public testing::Test {
protected:
    XmlTransformTest() { EXPECT_TRUE(document.loadXML("<r><i v='1'>um</i><i v='2'>dois</i><e/></r>")); }
    ~XmlTransformTest() override { XmlTransform::clearStore(); }

    std::filesystem::path stylesheet(std::string_view body, std::string_view name = "a.xsl") {
        return folder.file(name,
                           "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
                               std::string(body) + "</xsl:stylesheet>");
    }
    std::shared_ptr<const XmlTransform> loaded(std::string_view body) {
        auto transform = XmlTransform::load(stylesheet(body), reason);
        EXPECT_TRUE(transform) << reason;
        return transform;
    }
    std::string apply(std::string_view body) {
        const auto transform = loaded(body);
        return transform ? transform->apply(document) : std::string();
    }
    /// Description of the failure that applying the stylesheet ends in.
    std::string failure(std::string_view body) {
        try {
            apply(body);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), errc::invalidCall);
            return error.description();
        }
        return "no failure";
    }
    bool holds(std::string_view whole, std::string_view part) { return text::contains(whole, part); }

    test::ScratchFolder folder;
    XmlDocument document;
    std::string reason;
};

constexpr const char* identity =
    "<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates select='@*|node()'/>"
    "</xsl:copy></xsl:template>";

TEST_F(XmlTransformTest, gives_xml_with_both_tags_of_empty_elements) {
    EXPECT_EQ(apply("<xsl:template match='/'><TORVA><xsl:for-each select='//i'><x v='{@v}'><xsl:value-of "
                    "select='.'/></x>"
                    "</xsl:for-each><vazio/></TORVA></xsl:template>"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<TORVA><x v=\"1\">um</x><x v=\"2\">dois</x><vazio></vazio></TORVA>\n");
    EXPECT_TRUE(holds(apply("<xsl:template match='/'><TORVA/></xsl:template>"), "<TORVA></TORVA>"));
}

TEST_F(XmlTransformTest, gives_utf8_whatever_is_asked_for) {
    for (const char* encoding : {"ISO-8859-1", "UTF-16", "US-ASCII", "no-such-encoding"}) {
        const std::string output = "<xsl:output encoding='" + std::string(encoding) + "'/>";
        EXPECT_EQ(apply(output + "<xsl:template match='/'><a>ç–😀</a></xsl:template>"),
                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>ç–😀</a>\n");
        EXPECT_EQ(apply("<xsl:output method='text' encoding='" + std::string(encoding) +
                        "'/><xsl:template match='/'>ç–</xsl:template>"),
                  "ç–");
    }
}

TEST_F(XmlTransformTest, leaves_the_declaration_out_when_asked_to) {
    EXPECT_EQ(apply("<xsl:output omit-xml-declaration='yes' encoding='ISO-8859-1'/>"
                    "<xsl:template match='/'><a>ç</a></xsl:template>"),
              "<a>ç</a>\n");
}

TEST_F(XmlTransformTest, gives_html_that_says_utf8) {
    const std::string html =
        apply("<xsl:output method='html' encoding='ISO-8859-1'/><xsl:template match='/'><html><head>"
              "<title>Relatório–</title></head><body><br/><p/></body></html></xsl:template>");
    EXPECT_TRUE(holds(html, "charset=UTF-8")) << html;
    EXPECT_FALSE(holds(html, "8859")) << html;
    EXPECT_TRUE(holds(html, "Relatório–")) << html;
    EXPECT_TRUE(holds(html, "<br>")) << html;
}

TEST_F(XmlTransformTest, corrects_a_charset_that_the_stylesheet_writes) {
    const std::string html = apply(
        "<xsl:output method='html'/><xsl:template match='/'><html><head><meta http-equiv='Content-Type' "
        "content='text/html; charset=ISO-8859-1'/></head><body>ç</body></html></xsl:template>");
    EXPECT_FALSE(holds(html, "8859")) << html;
    EXPECT_TRUE(holds(html, "charset=UTF-8")) << html;
}

TEST_F(XmlTransformTest, keeps_white_space_that_the_stylesheet_writes) {
    EXPECT_EQ(
        apply("<xsl:output omit-xml-declaration='yes'/><xsl:template match='/'><a>1<xsl:text> </xsl:text>2"
              "<xsl:text><![CDATA[ & ]]></xsl:text></a></xsl:template>"),
        "<a>1 2 &amp; </a>\n");
}

TEST_F(XmlTransformTest, may_give_nothing) {
    EXPECT_EQ(apply("<xsl:output method='text'/><xsl:template match='/'/>"), "");
    EXPECT_EQ(apply("<xsl:output omit-xml-declaration='yes'/><xsl:template match='/'/>"), "");
}

TEST_F(XmlTransformTest, leaves_the_document_as_it_is) {
    ASSERT_TRUE(document.loadXML("<r><i/></r>"));
    document.documentElement().child("i").setText("  ");
    const std::string before = document.xml();
    EXPECT_TRUE(holds(apply(std::string("<xsl:strip-space elements='*'/>") + identity), "<i></i>"));
    EXPECT_EQ(document.xml(), before);
    EXPECT_TRUE(holds(apply(identity), "<i>  </i>"));
    EXPECT_TRUE(holds(apply("<xsl:key name='k' match='i' use='.'/><xsl:template match='/'><a><xsl:value-of "
                            "select=\"count(key('k', '  '))\"/><xsl:value-of select='generate-id(//i)'/></a>"
                            "</xsl:template>"),
                      "<a>1id"));
    EXPECT_EQ(document.xml(), before);
    document.documentElement().appendElement("j");
    EXPECT_EQ(document.selectNodes("/r/*").size(), 2U);
}

TEST_F(XmlTransformTest, finds_keys_where_white_space_is_left_out) {
    EXPECT_TRUE(
        holds(apply("<xsl:strip-space elements='*'/><xsl:key name='k' match='i' use='@v'/>"
                    "<xsl:template match='/'><x><xsl:value-of select=\"key('k','2')\"/></x></xsl:template>"),
              "<x>dois</x>"));
}

TEST_F(XmlTransformTest, can_be_applied_again_and_again) {
    const auto transform =
        loaded("<xsl:template match='/'><a><xsl:value-of select='count(//i)'/></a></xsl:template>");
    const std::string first = transform->apply(document);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(transform->apply(document), first);
    }
}

TEST_F(XmlTransformTest, fails_on_an_empty_document) {
    const auto transform = loaded(identity);
    EXPECT_EQ(errorOf([&] { transform->apply(XmlDocument()); }), errc::invalidCall);
}

TEST_F(XmlTransformTest, is_compiled_once_for_an_unchanged_file) {
    const auto path = stylesheet("<xsl:template match='/'><a/></xsl:template>");
    const auto first = XmlTransform::load(path, reason);
    EXPECT_EQ(XmlTransform::load(path, reason), first);
    stylesheet("<xsl:template match='/'><changed/></xsl:template>");
    const auto second = XmlTransform::load(path, reason);
    EXPECT_NE(second, first);
    EXPECT_TRUE(holds(second->apply(document), "<changed>"));
    EXPECT_TRUE(holds(first->apply(document), "<a>")) << "who holds the old one may still use it";
    XmlTransform::clearStore();
    EXPECT_NE(XmlTransform::load(path, reason), second);
    std::filesystem::remove(path);
    EXPECT_EQ(XmlTransform::load(path, reason), nullptr);
}

TEST_F(XmlTransformTest, tells_why_a_stylesheet_cannot_be_loaded) {
    EXPECT_EQ(XmlTransform::load(folder / "none.xsl", reason), nullptr);
    EXPECT_TRUE(holds(reason, "none.xsl")) << reason;
    EXPECT_EQ(XmlTransform::load(folder.path(), reason), nullptr);
    EXPECT_NE(reason, "");
    for (const char* bytes : {"", "text", "<a>", "<xsl:stylesheet/>", "\xFF\xD8\xFF\xE0"}) {
        EXPECT_EQ(XmlTransform::load(folder.file("a.xsl", bytes), reason), nullptr) << bytes;
        EXPECT_TRUE(text::startsWith(reason, "A folha de estilo não pode ser carregada: ")) << reason;
    }
    for (const char* body : {"<xsl:template match='/['/>", "<xsl:template/>"}) {
        EXPECT_EQ(XmlTransform::load(stylesheet(body), reason), nullptr) << body;
        EXPECT_GT(reason.size(), std::string("A folha de estilo não pode ser carregada: ").size()) << body;
    }
    EXPECT_TRUE(loaded(identity));
    EXPECT_EQ(reason, "");
}

TEST_F(XmlTransformTest, fails_with_the_processor_s_message) {
    EXPECT_TRUE(holds(failure("<xsl:template match='/'><xsl:value-of select='no-such(1)'/></xsl:template>"),
                      "function"));
    EXPECT_TRUE(
        holds(failure("<xsl:template match='/'><xsl:value-of select='$x'/></xsl:template>"), "variable"));
    EXPECT_TRUE(holds(failure("<xsl:template match='/'><xsl:message terminate='yes'>formato "
                              "inválido</xsl:message></xsl:template>"),
                      "formato inválido"));
}

TEST_F(XmlTransformTest, prints_no_messages) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    EXPECT_TRUE(
        holds(apply("<xsl:template match='/'><xsl:message>olá</xsl:message><a/></xsl:template>"), "<a>"));
    failure("<xsl:template match='/'><xsl:value-of select='no-such(1)'/></xsl:template>");
    XmlTransform::load(stylesheet("<xsl:template match='/['/>"), reason);
    XmlTransform::load(folder.file("b.xsl", "<a"), reason);
    XmlDocument broken;
    broken.loadXML("<a>");
    errorOf([&] { document.selectNodes("//["); });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(XmlTransformTest, reads_no_other_file) {
    folder.file("secret.xml", "<s>SECRET</s>");
    const std::string secret = (folder / "secret.xml").string();
    for (const std::string& uri : {secret, std::string("secret.xml"), "file://" + secret,
                                   std::string("/etc/passwd"), std::string("http://localhost:1/x.xml")}) {
        const std::string body =
            "<xsl:template match='/'><a><xsl:copy-of select=\"document('" + uri + "')\"/></a></xsl:template>";
        std::string output;
        try {
            output = apply(body);
        } catch (const Error&) {
            output = "failed";
        }
        EXPECT_FALSE(holds(output, "SECRET")) << uri;
        EXPECT_LT(output.size(), 100U) << uri;
    }
}

TEST_F(XmlTransformTest, may_look_into_itself) {
    EXPECT_TRUE(holds(
        apply(
            "<t:nome xmlns:t='t' codigo='1'>um</t:nome><xsl:template match='/'><a xmlns:t='t'><xsl:value-of "
            "select=\"document('')//t:nome[@codigo='1']\"/></a></xsl:template>"),
        ">um</a>"));
}

TEST_F(XmlTransformTest, takes_in_no_other_stylesheet) {
    stylesheet("<xsl:template match='/'><other/></xsl:template>", "other.xsl");
    for (const char* element : {"include", "import"}) {
        const std::string body =
            "<xsl:" + std::string(element) + " href='other.xsl'/><xsl:template match='x'/>";
        EXPECT_EQ(XmlTransform::load(stylesheet(body), reason), nullptr);
        EXPECT_TRUE(holds(reason, "other.xsl")) << reason;
    }
}

TEST_F(XmlTransformTest, reaches_nothing_through_its_own_entities) {
    folder.file("secret.txt", "SECRET");
    const std::string xsl =
        "<!DOCTYPE x [<!ENTITY e SYSTEM 'secret.txt'>]><xsl:stylesheet version='1.0' "
        "xmlns:xsl='http://www.w3.org/1999/XSL/Transform'><xsl:template match='/'><a>&e;</a>"
        "</xsl:template></xsl:stylesheet>";
    EXPECT_EQ(XmlTransform::load(folder.file("a.xsl", xsl), reason), nullptr);
}

TEST_F(XmlTransformTest, writes_no_file) {
    const std::string target = (folder / "written.xml").string();
    const char* const saxon = "xmlns:s='http://icl.com/saxon' extension-element-prefixes='s'";
    const char* const xalan =
        "xmlns:s='org.apache.xalan.xslt.extensions.Redirect' extension-element-prefixes='s'";
    const char* const exslt = "xmlns:s='http://exslt.org/common' extension-element-prefixes='s'";
    const std::vector<std::string> bodies{
        "<xsl:template match='/'><xsl:document href='" + target + "'><a/></xsl:document></xsl:template>",
        "<xsl:template match='/'><s:output " + std::string(saxon) + " file='" + target +
            "'><a/></s:output></xsl:template>",
        "<xsl:template match='/'><s:write " + std::string(xalan) + " file='" + target +
            "'><a/></s:write></xsl:template>",
        "<xsl:template match='/'><s:document " + std::string(exslt) + " href='" + target +
            "'><a/></s:document></xsl:template>",
        "<xsl:template match='/'><s:document " + std::string(exslt) + " href='" +
            (folder / "new/x.xml").string() + "'><a/></s:document></xsl:template>"};
    for (const std::string& body : bodies) {
        try {
            if (const auto transform = XmlTransform::load(stylesheet(body), reason)) {
                transform->apply(document);
            }
        } catch (const Error&) { // failing is as good as writing nothing
        }
        EXPECT_EQ(folder.count(), 1U) << body;
    }
}

constexpr const char* start =
    "<xsl:template match='/'><xsl:call-template name='r'><xsl:with-param name='n' select='60'/>"
    "</xsl:call-template></xsl:template>";
constexpr const char* twice =
    "<xsl:if test='$n &gt; 0'><xsl:call-template name='r'><xsl:with-param name='n' "
    "select='$n - 1'/></xsl:call-template><xsl:call-template name='r'><xsl:with-param name='n' "
    "select='$n - 1'/></xsl:call-template></xsl:if>";

std::string doubling(const std::string& work) {
    return std::string(start) + "<xsl:template name='r'><xsl:param name='n'/>" + work + twice +
           "</xsl:template>";
}

/// Hands a parameter `t` down that is made anew at each level.
std::string growing(const std::string& first, const std::string& next) {
    return std::string(start) + "<xsl:template name='r'><xsl:param name='n'/><xsl:param name='t'>" + first +
           "</xsl:param><xsl:choose><xsl:when test='$n &gt; 0'><xsl:call-template name='r'><xsl:with-param "
           "name='n' "
           "select='$n - 1'/>" +
           next +
           "</xsl:call-template></xsl:when><xsl:otherwise><xsl:value-of "
           "select='$t'/></xsl:otherwise></xsl:choose>"
           "</xsl:template>";
}

/// A stylesheet that means harm.
struct Attack {
    const char* name;
    std::string body;
};

void PrintTo(const Attack& attack, std::ostream* out) {
    *out << attack.name;
}

class HostileStylesheet : public XmlTransformTest, public testing::WithParamInterface<Attack> {};

TEST_P(HostileStylesheet, is_ended) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(text::startsWith(failure(GetParam().body), "Falha na transformação: "));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(100));
    EXPECT_TRUE(holds(apply(identity), "dois")) << "the next transform is not disturbed";
}

INSTANTIATE_TEST_SUITE_P(
    forms, HostileStylesheet,
    testing::Values(
        Attack{"endless_recursion", "<xsl:template match='/'><xsl:call-template name='r'/></xsl:template>"
                                    "<xsl:template name='r'><xsl:call-template name='r'/></xsl:template>"},
        Attack{"endless_applying",
               "<xsl:template match='node()'><xsl:apply-templates select='/'/></xsl:template>"
               "<xsl:template match='/'><xsl:apply-templates select='.'/></xsl:template>"},
        Attack{"doubling_elements", doubling("<x/>")},
        Attack{"doubling_texts", doubling("<xsl:value-of select=\"'" + std::string(4000, 'x') + "'\"/>")},
        Attack{"doubling_attributes", doubling("<x a='" + std::string(4000, 'x') + "'/>")},
        Attack{"growing_fragment",
               growing("xxxxxxxxxxxxxxxx",
                       "<xsl:with-param name='t'><xsl:value-of select='$t'/><xsl:value-of "
                       "select='$t'/></xsl:with-param>")},
        Attack{"growing_text",
               growing("xxxxxxxxxxxxxxxx", "<xsl:with-param name='t' select='concat($t, $t)'/>")}),
    [](const testing::TestParamInfo<Attack>& attack) { return attack.param.name; });

TEST_F(XmlTransformTest, is_ended_in_a_thread_of_its_own_while_others_work) {
    const auto hostile = loaded(doubling("<x/>"));
    auto ended = std::async(std::launch::async, [&] { return errorOf([&] { hostile->apply(document); }); });
    while (ended.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        XmlDocument other = XmlDocument::create("raiz"); // its nodes are no matter of the transform
        for (int i = 0; i < 1000; ++i) {
            other.documentElement().appendElement("filho");
        }
        EXPECT_EQ(other.selectNodes("/raiz/filho").size(), 1000U);
    }
    EXPECT_EQ(ended.get(), errc::invalidCall);
}

TEST_F(XmlTransformTest, allows_the_recursion_that_real_stylesheets_need) {
    EXPECT_TRUE(holds(
        apply(
            "<xsl:template match='/'><a><xsl:call-template name='r'><xsl:with-param name='n' select='1000'/>"
            "</xsl:call-template></a></xsl:template><xsl:template name='r'><xsl:param name='n'/>"
            "<xsl:param name='sum' select='0'/><xsl:choose><xsl:when test='$n = 0'><xsl:value-of "
            "select='$sum'/></xsl:when><xsl:otherwise><xsl:call-template name='r'><xsl:with-param name='n' "
            "select='$n - 1'/><xsl:with-param name='sum' select='$sum + $n'/></xsl:call-template>"
            "</xsl:otherwise></xsl:choose></xsl:template>"),
        "<a>500500</a>"));
}

} // namespace
} // namespace tv
