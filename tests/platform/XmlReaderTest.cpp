#include "platform/XmlEvents.h"

#include "platform/Error.h"

#include <gmock/gmock.h>

// The events of a document: which, in which order, with which text.

namespace tv::test {
namespace {

using ::testing::ElementsAre;

class XmlReaderEvents : public XmlReaderFixture {
protected:
    void SetUp() override {
        useSchema(R"(
            <xs:element name="posicao"><xs:complexType><xs:sequence>
              <xs:element name="ativo" minOccurs="0" maxOccurs="unbounded"><xs:complexType><xs:sequence>
                <xs:element name="nome" type="xs:string" minOccurs="0"/>
                <xs:element name="valor" type="xs:decimal" minOccurs="0"/>
              </xs:sequence></xs:complexType></xs:element>
            </xs:sequence></xs:complexType></xs:element>)");
    }
};

TEST_F(XmlReaderEvents, ComeInTheOrderOfTheDocument) {
    EXPECT_THAT(read("<posicao><ativo><nome>LTN</nome><valor>1.5</valor></ativo></posicao>").all,
                ElementsAre("document", "<posicao>", "<ativo>", "<nome>", "'LTN'", "</nome> 1:26", "<valor>",
                            "'1.5'", "</valor> 1:43", "</ativo> 1:51", "</posicao> 1:59", "end"));
}

TEST_F(XmlReaderEvents, WhiteSpaceBetweenElementsIsNoText) {
    EXPECT_THAT(read("<posicao>\n\t<ativo>\r\n    <nome>LTN</nome>\n\t</ativo>\n</posicao>\n").all,
                ElementsAre("document", "<posicao>", "<ativo>", "<nome>", "'LTN'", "</nome> 3:14",
                            "</ativo> 4:2", "</posicao> 5:1", "end"));
}

TEST_F(XmlReaderEvents, WhiteSpaceInAValueIsText) {
    EXPECT_THAT(read("<posicao><ativo><nome> \n </nome></ativo></posicao>").all,
                ElementsAre("document", "<posicao>", "<ativo>", "<nome>", "' \n '", "</nome> 2:2",
                            "</ativo> 2:9", "</posicao> 2:17", "end"));
}

TEST_F(XmlReaderEvents, WhiteSpaceAroundTheRootIsNoText) {
    EXPECT_THAT(read("<?xml version=\"1.0\"?>\n\n <posicao> </posicao>\n\n").all,
                ElementsAre("document", "<posicao>", "</posicao> 3:12", "end"));
}

TEST_F(XmlReaderEvents, EmptyElementTagHasNoText) {
    EXPECT_THAT(read("<posicao><ativo><nome/><valor></valor></ativo></posicao>").all,
                ElementsAre("document", "<posicao>", "<ativo>", "<nome>", "</nome> 1:17", "<valor>",
                            ::testing::StartsWith("error C00CE184 1:31"), "</valor> 1:31", "</ativo> 1:39",
                            "</posicao> 1:47", "end"));
}

TEST_F(XmlReaderEvents, ReferencesAndCDataBelongToOneRunOfText) {
    EXPECT_THAT(read("<!DOCTYPE posicao [<!ENTITY e \"de &amp; para\">]>\n"
                     "<posicao><ativo><nome>a&lt;b &#233; &e;<![CDATA[<c>]]>d</nome></ativo></posicao>")
                    .all,
                ElementsAre("document", "<posicao>", "<ativo>", "<nome>", "'a<b \u00E9 de & para<c>d'",
                            "</nome> 2:56", "</ativo> 2:63", "</posicao> 2:71", "end"));
}

TEST_F(XmlReaderEvents, CommentsAndInstructionsPartRunsOfText) {
    EXPECT_THAT(read("<posicao><!-- x --><ativo><nome>ab<!-- y -->cd<?z?>ef</nome></ativo></posicao>").all,
                ElementsAre("document", "<posicao>", "<ativo>", "<nome>", "'ab'", "'cd'", "'ef'",
                            "</nome> 1:54", "</ativo> 1:61", "</posicao> 1:69", "end"));
}

TEST_F(XmlReaderEvents, AttributesWithoutFaultMakeNoEvent) {
    EXPECT_THAT(read("<posicao xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
                     "xsi:noNamespaceSchemaLocation=\"outro.xsd\"/>")
                    .all,
                ElementsAre("document", "<posicao>", "</posicao> 1:1", "end"));
}

TEST_F(XmlReaderEvents, TextAmongElementsIsToldAndThenItsFault) {
    EXPECT_THAT(read("<posicao><ativo>\n solto &amp; preso<nome>x</nome></ativo></posicao>").all,
                ElementsAre("document", "<posicao>", "<ativo>", "'\n solto & preso'",
                            "error C00CE016 2:19 H\u00E1 texto onde s\u00F3 s\u00E3o permitidos elementos.",
                            "<nome>", "'x'", "</nome> 2:26", "</ativo> 2:33", "</posicao> 2:41", "end"));
}

TEST_F(XmlReaderEvents, LongTextAmongElementsIsOneFault) {
    const XmlEvents events = read("<posicao>" + repeated("solto ", 40000) + "</posicao>");
    EXPECT_THAT(events.faults, ElementsAre(::testing::StartsWith("error C00CE016 1:240010")));
    EXPECT_THAT(events.all, ::testing::Contains("'" + repeated("solto ", 40000) + "'"));
}

TEST_F(XmlReaderEvents, CDataOfWhiteSpaceAmongElementsIsNoText) {
    EXPECT_THAT(read("<posicao><![CDATA[ \n ]]></posicao>").all,
                ElementsAre("document", "<posicao>", "</posicao> 2:5", "end"));
}

// --- text that the parser's buffers cut

class TextOfSize : public XmlReaderEvents, public ::testing::WithParamInterface<std::size_t> {};

TEST_P(TextOfSize, IsOneRun) {
    std::string text;
    for (std::size_t i = 0; text.size() < GetParam(); ++i) {
        text += std::to_string(i) + (i % 3 == 0 ? "\u00E7 " : ".");
    }
    const XmlEvents events = read("<posicao><ativo><nome>" + text + "</nome></ativo></posicao>");
    ASSERT_EQ(events.all.size(), 9U);
    EXPECT_TRUE(events.all[4] == "'" + text + "'");
}

INSTANTIATE_TEST_SUITE_P(AroundBuffers, TextOfSize,
                         ::testing::Values(16383, 16384, 16385, 32768, 49151, 49152, 49153, 65536, 200000,
                                           10'000'000));

TEST_F(XmlReaderEvents, ValuesAcrossBufferEndsAreWhole) {
    // Each shift puts the ends of the buffers at other places of a value.
    for (std::size_t shift = 0; shift < 24; ++shift) {
        std::string document = "<posicao><!--" + repeated("x", shift) + "-->";
        for (int i = 0; i < 4000; ++i) {
            document += "<ativo><nome>A&amp;" + std::to_string(100000 + i) + "</nome></ativo>";
        }
        const XmlEvents events = read(document + "</posicao>");
        ASSERT_EQ(events.all.size(), 4000U * 5U + 4U);
        for (std::size_t i = 0; i < 4000; ++i) {
            ASSERT_EQ(events.all[4 + i * 5], "'A&" + std::to_string(100000 + i) + "'") << "shift " << shift;
        }
    }
}

// --- one reader, several documents

TEST_F(XmlReaderEvents, ReaderServesManyDocumentsWhateverTheyHeld) {
    XmlReader reader(SchemaCache::get(schema_));
    const std::vector<std::string> faulty{
        "<posicao><ativo><x/></posicao>",
        "<posicao><ativo><nome>aberto",
        "<outra><nome/></outra>",
        "<posicao><ativo><p:x xmlns:p=\"urn:p\"><y/></p:x>solto</ativo></posicao>",
        "<!DOCTYPE posicao [<!ENTITY e \"" + repeated("e", 30000) + "\">]><posicao/>",
        "<!DOCTYPE posicao [<!ENTITY e \"<nome>&amp;</nome>\">]><posicao><ativo>&e;</ativo></posicao>",
        repeated("<ativo>", 5000),
        "",
    };
    for (const std::string& bytes : faulty) {
        XmlEvents first;
        reader.parse(folder.file("ruim.xml", bytes), first);
        XmlEvents second;
        reader.parse(
            folder.file("bom.xml", "<posicao><ativo><nome>LTN</nome><valor>x</valor></ativo></posicao>"),
            second);
        EXPECT_THAT(second.all,
                    ElementsAre("document", "<posicao>", "<ativo>", "<nome>", "'LTN'", "</nome> 1:26",
                                "<valor>", "'x'", ::testing::StartsWith("error C00CE184 1:41"),
                                "</valor> 1:41", "</ativo> 1:49", "</posicao> 1:57", "end"))
            << bytes.substr(0, 60);
    }
}

TEST_F(XmlReaderEvents, EntitiesOfOneDocumentAreUnknownInTheNext) {
    XmlReader reader(SchemaCache::get(schema_));
    XmlEvents first;
    reader.parse(folder.file("a.xml", "<!DOCTYPE posicao [<!ENTITY e \"um\">]>"
                                      "<posicao><ativo><nome>&e;</nome></ativo></posicao>"),
                 first);
    EXPECT_THAT(first.all, ::testing::Contains("'um'"));
    XmlEvents second;
    reader.parse(folder.file("b.xml", "<posicao><ativo><nome>&e;</nome></ativo></posicao>"), second);
    EXPECT_THAT(second.faults, ElementsAre(::testing::StartsWith("fatal C00CEE3B 1:")));
}

TEST_F(XmlReaderEvents, ExceptionsOfTheHandlerPassThroughAndTheReaderStaysUsable) {
    class Impatient : public XmlEvents {
    public:
        void characters(std::string_view /*text*/) override { throw Error(-1, "teste", "basta"); }
    };
    XmlReader reader(SchemaCache::get(schema_));
    const auto file = folder.file("a.xml", "<posicao><ativo><nome>LTN</nome></ativo></posicao>");
    Impatient impatient;
    EXPECT_THROW(reader.parse(file, impatient), Error);
    XmlEvents events;
    reader.parse(file, events);
    EXPECT_THAT(events.all, ::testing::Contains("'LTN'"));
    EXPECT_EQ(events.all.back(), "end");
}

TEST_F(XmlReaderEvents, ReadersOfOneSchemaWorkSideBySide) {
    // The second reader parses in the middle of the first one's document.
    class Nested : public XmlEvents {
    public:
        Nested(XmlReader& inner, std::filesystem::path file)
            : inner_(inner)
            , file_(std::move(file)) {}
        void startElement(std::string_view name) override {
            XmlEvents::startElement(name);
            if (name == "nome") {
                inner_.parse(file_, events);
            }
        }
        XmlEvents events;

    private:
        XmlReader& inner_;
        std::filesystem::path file_;
    };
    XmlReader outer(SchemaCache::get(schema_));
    XmlReader inner(SchemaCache::get(schema_));
    const auto file = folder.file("a.xml", "<posicao><ativo><nome>LTN</nome></ativo><x/></posicao>");
    Nested nested(inner, file);
    outer.parse(file, nested);
    EXPECT_EQ(nested.all, nested.events.all);
    EXPECT_EQ(nested.faults.size(), 1U);
}

} // namespace
} // namespace tv::test
