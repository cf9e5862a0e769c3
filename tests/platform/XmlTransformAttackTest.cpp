// Stylesheets that mean harm: they reach nobody, open and write nothing, and come to an end.

#include "platform/Attacks.h"
#include "platform/Error.h"
#include "platform/ScratchFolder.h"
#include "platform/Watchers.h"
#include "platform/XmlTransform.h"

#include <gmock/gmock.h>

#include <ostream>

namespace tv::test {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class StylesheetAttack : public ::testing::Test {
protected:
    StylesheetAttack()
        : secret(folder.file("segredo.xml", "<s>SEGREDO</s>"))
        , target(folder / "escrito.xml") {
        EXPECT_TRUE(document.loadXML("<r>" + attack::repeated("<i>1</i>", 20'000) + "</r>"));
    }
    ~StylesheetAttack() override { XmlTransform::clearStore(); }

    /// What loading and applying the stylesheet gives: its output, or why there is none.
    std::string outcome(const std::string& body, std::chrono::milliseconds limit = XmlTransform::maxTime) {
        const auto file =
            folder.file("a.xsl", "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/"
                                 "Transform'>" +
                                     body + "</xsl:stylesheet>");
        std::string reason;
        const auto transform = XmlTransform::load(file, reason);
        if (!transform) {
            return reason;
        }
        try {
            return transform->apply(document, limit);
        } catch (const Error& failure) {
            return failure.description();
        }
    }
    static std::string rootTemplate(const std::string& body) {
        return "<xsl:template match='/'><a>" + body + "</a></xsl:template>";
    }

    ScratchFolder folder;
    std::filesystem::path secret;
    std::filesystem::path target;
    XmlDocument document;
};

// --- reading and writing

/// Stylesheets that ask for what lies at `uri`.
std::vector<std::string> readers(const std::string& uri) {
    const auto root = [](const std::string& body) {
        return "<xsl:template match='/'><a>" + body + "</a></xsl:template>";
    };
    return {
        root("<xsl:copy-of select=\"document('" + uri + "')\"/>"),
        root("<xsl:copy-of select=\"document('" + uri + "', /)//s\"/>"),
        root("<xsl:for-each select='//i[1]'><xsl:copy-of select=\"document('" + uri +
             "')\"/></xsl:for-each>"),
        root("<xsl:variable name='u'>" + uri + "</xsl:variable><xsl:copy-of select='document($u)'/>"),
        root("<xsl:value-of select=\"unparsed-text('" + uri + "')\"/>"),
        root("<xsl:value-of select=\"unparsed-entity-uri('" + uri + "')\"/>"),
        "<xsl:include href='" + uri + "'/>" + root(""),
        "<xsl:import href='" + uri + "'/>" + root(""),
        "<xsl:key name='k' match='s' use=\"document('" + uri + "')\"/>" +
            root("<xsl:copy-of select=\"key('k', 'x')\"/>"),
        "<xsl:variable name='v' select=\"document('" + uri + "')\"/>" + root("<xsl:copy-of select='$v'/>"),
        "<xsl:template match=\"s[document('" + uri + "')]\"/>" + root("<xsl:apply-templates/>"),
        root("<xi:include xmlns:xi='http://www.w3.org/2001/XInclude' href='" + uri + "'/>"),
    };
}

TEST_F(StylesheetAttack, OpensNoOtherFile) {
    const Watched watched(secret);
    for (const std::string& uri : {secret.string(), "file://" + secret.string(), std::string("segredo.xml"),
                                   std::string("./segredo.xml")}) {
        for (const std::string& body : readers(uri)) {
            EXPECT_EQ(outcome(body).find("SEGREDO"), std::string::npos) << body;
        }
    }
    EXPECT_FALSE(watched.wasOpened());
}

TEST_F(StylesheetAttack, CallsNobody) {
    const Listener listener;
    for (const std::string& body : readers(listener.url())) {
        outcome(body);
    }
    EXPECT_FALSE(listener.wasCalled());
}

TEST_F(StylesheetAttack, WritesNothing) {
    const Listener listener;
    const std::size_t before = folder.count() + 1; // with the stylesheet
    const auto with = [](const std::string& space, const std::string& element) {
        return "<xsl:template match='/'><a xmlns:x='" + space + "' xsl:extension-element-prefixes='x'>" +
               element + "</a></xsl:template>";
    };
    for (const std::string& uri : {target.string(), "file://" + target.string(), std::string("escrito.xml"),
                                   (folder / "nova/x.xml").string(), listener.url()}) {
        const std::string href = " href='" + uri + "'><b/>";
        const std::string file = " file='" + uri + "'><b/>";
        for (const std::string& body :
             {with("http://exslt.org/common", "<x:document" + href + "</x:document>"),
              with("http://icl.com/saxon", "<x:output" + file + "</x:output>"),
              with("http://icl.com/saxon", "<x:output" + href + "</x:output>"),
              with("http://www.jclark.com/xt", "<x:document" + href + "</x:document>"),
              with("org.apache.xalan.xslt.extensions.Redirect", "<x:write" + file + "</x:write>"),
              with("http://xmlsoft.org/XSLT/namespace", "<x:debug/><x:document" + href + "</x:document>"),
              with("urn:x", "<xsl:document" + href + "</xsl:document>"),
              with("urn:x", "<xsl:result-document" + href + "</xsl:result-document>")}) {
            outcome(body);
            EXPECT_EQ(folder.count(), before) << body;
        }
    }
    EXPECT_FALSE(std::filesystem::exists("escrito.xml")) << "in the working folder";
    EXPECT_FALSE(listener.wasCalled());
}

// --- coming to an end

struct Endless {
    const char* name;
    std::string body;
};
void PrintTo(const Endless& row, std::ostream* out) {
    *out << row.name;
}

class EndlessStylesheet : public StylesheetAttack, public ::testing::WithParamInterface<Endless> {};

TEST_P(EndlessStylesheet, IsEndedInTime) {
    const Cost cost;
    EXPECT_THAT(outcome(GetParam().body, 1s), StartsWith("Falha na transformação: "));
    cost.expectBelow(8, 700);
    EXPECT_THAT(outcome(rootTemplate("<xsl:value-of select='count(//i)'/>")), HasSubstr(">20000<"))
        << "the next one works";
}

/// Bytes of the text that grows; the sanitizers' memory copies it with every piece that it grows by.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t longPart = 300;
#else
constexpr std::size_t longPart = 30'000;
#endif

/// A variable `t` of a thousand such parts (30 MB), and a use of it.
std::string longText(const std::string& use) {
    std::string body = "<xsl:variable name='t0' select=\"'" + std::string(longPart, 'x') + "'\"/>";
    for (int i = 1; i <= 3; ++i) {
        const std::string last = "$t" + std::to_string(i - 1);
        body += "<xsl:variable name='t" + std::to_string(i) + "' select=\"concat(" +
                attack::repeated(last + ", ", 9) + last + ")\"/>";
    }
    return "<xsl:template match='/'><a>" + body + use + "</a></xsl:template>";
}

INSTANTIATE_TEST_SUITE_P(
    All, EndlessStylesheet,
    ::testing::Values(
        Endless{"StepsUponSteps",
                "<xsl:template match='/'><a><xsl:value-of select='count(//*[count(//*) &gt; "
                "count(//i)])'/></a></xsl:template>"},
        Endless{"Nested", "<xsl:template match='/'><xsl:for-each select='//i'><xsl:for-each "
                          "select='//i'><xsl:for-each select='//i'/></xsl:for-each></xsl:for-each>"
                          "</xsl:template>"},
        Endless{"LooksThroughALongText",
                longText("<xsl:value-of select=\"count(//i[contains($t3, 'y')])\"/>")},
        Endless{"LongTextsInALoop", longText("<xsl:for-each select='//i'><xsl:if test=\"translate($t3, 'x', "
                                             "'y') = string-length($t3)\"/></xsl:for-each>")},
        Endless{"KeysOfOneGroup",
                "<xsl:key name='k' match='i' use='.'/><xsl:template match='/'><xsl:for-each "
                "select='//i'><xsl:if test=\"count(key('k', '1')) = 0\"/></xsl:for-each>"
                "<xsl:for-each select='//i'><xsl:if test=\"count(key('k', '1')) = 0\"/>"
                "</xsl:for-each></xsl:template>"},
        Endless{"TemplatesInACircle",
                "<xsl:template match='/'><xsl:apply-templates select='//i'/></xsl:template>"
                "<xsl:template match='i'><xsl:apply-templates select='..'/></xsl:template>"
                "<xsl:template match='r'><xsl:apply-templates select='i[1]'/></xsl:template>"},
        Endless{"NumbersOfAll", "<xsl:template match='/'><xsl:for-each select='//i'><xsl:number level='any' "
                                "count=\"i[count(../i) = 20000]\"/></xsl:for-each></xsl:template>"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(StylesheetAttack, ATimeThatIsNotUsedUpEndsNothing) {
    EXPECT_THAT(outcome(rootTemplate("<xsl:value-of select='sum(//i)'/>"), 10min), HasSubstr(">20000<"));
}

} // namespace
} // namespace tv::test
