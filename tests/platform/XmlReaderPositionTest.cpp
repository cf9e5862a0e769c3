#include "platform/XmlEvents.h"

#include "platform/text.h"

#include <gmock/gmock.h>

// Where faults stand: a value's right behind it, an element's at the "<" of its start tag.

namespace tv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

class XmlReaderPosition : public XmlReaderFixture {
protected:
    void SetUp() override {
        useSchema(R"(
            <xs:element name="r"><xs:complexType><xs:sequence>
              <xs:element name="t" type="xs:string" minOccurs="0" maxOccurs="unbounded"/>
              <xs:element name="v" type="xs:int" minOccurs="0" maxOccurs="unbounded"/>
            </xs:sequence></xs:complexType></xs:element>)");
    }
    /// "CODE line:column" of each fault.
    std::vector<std::string> places(std::string_view bytes) const {
        std::vector<std::string> result;
        for (const std::string& fault : faultsOf(bytes)) {
            const std::size_t code = fault.find(' ') + 1;
            result.push_back(fault.substr(code, fault.find(' ', fault.find(' ', code) + 1) - code));
        }
        return result;
    }
};

struct Case {
    const char* name;
    std::string document;
    std::vector<std::string> places;
};
void PrintTo(const Case& row, std::ostream* out) {
    *out << row.name;
}

class Places : public XmlReaderPosition, public ::testing::WithParamInterface<Case> {};

TEST_P(Places, AreWhereAPersonCountsThem) {
    EXPECT_EQ(places(GetParam().document), GetParam().places);
}

const std::vector<Case> cases{
    {"Value", "<r><v>12x</v></r>", {"C00CE184 1:10"}},
    {"ValueOfTwoLines", "<r><v>1\n2x</v></r>", {"C00CE184 2:3"}},
    {"LineFeeds", "<?xml version=\"1.0\"?>\n<r>\n  <v>12x</v>\n</r>\n", {"C00CE184 3:9"}},
    {"CarriageReturnsAndLineFeeds",
     "<?xml version=\"1.0\"?>\r\n<r>\r\n  <v>12x</v>\r\n</r>\r\n",
     {"C00CE184 3:9"}},
    {"CarriageReturnsAlone", "<?xml version=\"1.0\"?>\r<r>\r  <v>12x</v>\r</r>\r", {"C00CE184 3:9"}},
    {"TabsCountOne", "<r>\n\t\t<v>12x</v>\n\t<z/></r>", {"C00CE184 2:9", "80004005 3:2"}},
    {"Latin1",
     text::toLatin1Markup(
         "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r><t>S\u00E3o Jo\u00E3o</t><v>\u00E9x</v></r>"),
     {"C00CE184 1:67"}},
    {"Utf8",
     "<?xml version=\"1.0\" encoding=\"UTF-8\"?><r><t>S\u00E3o Jo\u00E3o</t><v>\u00E9x</v></r>",
     {"C00CE184 1:62"}},
    {"Utf8WithMark", "\xEF\xBB\xBF<r><t>S\u00E3o</t><v>x</v></r>", {"C00CE184 1:18"}},
    {"MarkBeforeUnknownRoot", "\xEF\xBB\xBF<z/>", {"80004005 1:1"}},
    {"Utf16LittleEndian",
     utf16(u"\uFEFF<?xml version=\"1.0\"?>\n<r><t>S\u00E3o</t><v>x</v></r>", false),
     {"C00CE184 2:18"}},
    {"Utf16BigEndian", utf16(u"\uFEFF<r><t>S\u00E3o</t>\r\n<v>x</v></r>", true), {"C00CE184 2:5"}},
    {"BeforeAComment", "<r><v>12x<!-- porque --></v></r>", {"C00CE184 1:10"}},
    {"BehindAComment", "<r><v><!-- porque -->12x</v></r>", {"C00CE184 1:25"}},
    {"BeforeAnInstruction", "<r><v>12x<?p?></v></r>", {"C00CE184 1:10"}},
    {"CData", "<r><v><![CDATA[12x]]></v></r>", {"C00CE184 1:22"}},
    {"CharacterReference", "<r><v>1&#120;</v></r>", {"C00CE184 1:14"}},
    {"EntityAtTheEnd", "<!DOCTYPE r [<!ENTITY e \"x\">]>\n<r><v>1&e;</v></r>", {"C00CE184 2:11"}},
    {"EntityInside", "<!DOCTYPE r [<!ENTITY e \"x\">]>\n<r><v>&e;1</v></r>", {"C00CE184 2:11"}},
    {"EntityOfSeveralLines",
     "<!DOCTYPE r [<!ENTITY e \"x\n\ny\">]>\n<r><v>&e;</v><z/></r>",
     {"C00CE184 4:10", "80004005 4:14"}},
    {"EmptyTag", "<r>\n  <v/></r>", {"C00CE184 2:3"}},
    {"EmptyTagOfSeveralLines", "<r>\n  <v\n\n/></r>", {"C00CE184 2:3"}},
    {"EmptyTagBehindText", "<r><t>abc</t><v/></r>", {"C00CE184 1:14"}},
    {"EmptyElement", "<r><v></v></r>", {"C00CE184 1:7"}},
    {"UnknownElement", "<r>\n <z a=\"1\">x</z></r>", {"80004005 2:2"}},
    {"UnknownElementOfSeveralLines", "<r>\n <z\n a=\"1\"\n></z></r>", {"80004005 2:2"}},
    {"UnknownElementBehindAComment", "<r><!-- a\nb --><z/></r>", {"80004005 2:6"}},
    {"UnknownElementBehindAnInstruction", "<r><?p x?><z/></r>", {"80004005 1:11"}},
    {"UnknownElementBehindAnElement", "<r><v>1</v><z/></r>", {"80004005 1:12"}},
    {"UnknownElementBehindAnEmptyTag", "<r><t/><z/></r>", {"80004005 1:8"}},
    {"UnknownElementInAValue", "<r><v>1<z/></v></r>", {"80004005 1:8"}},
    {"UnknownRoot", "<?xml version=\"1.0\"?>\n<!-- a -->\n <z/>", {"80004005 3:2"}},
    {"UnknownRootBehindDoctype", "<!DOCTYPE z><z/>", {"80004005 1:13"}},
    {"UnknownRootBehindExternalSubset", "<!DOCTYPE z SYSTEM \"z.dtd\"><z/>", {"80004005 1:28"}},
    {"UnknownRootBehindBothSubsets",
     "<!DOCTYPE z SYSTEM \"z.dtd\" [<!ENTITY e \"1\">]><z/>",
     {"80004005 1:46"}},
    {"UnknownRootBehindSubset", "<!DOCTYPE z [<!ENTITY e \"1\">]><z/>", {"80004005 1:31"}},
    {"UnknownRootOnTheNextLine", "<!DOCTYPE z [<!ENTITY e \"1\">]>\n<z/>", {"80004005 2:1"}},
    {"AttributeAtTheTag", "<r>\n <t\n  a=\"1\"\n >x</t></r>", {"C00CE011 2:2"}},
    {"TextAmongElements", "<r><t>a</t>solto<v>1</v></r>", {"C00CE016 1:17"}},
    {"NotWellFormed", "<r>\n <v>1</t></r>", {"C00CEE3B 2:8"}},
    {"NoUtf8", "<r>\r\n<t>S\xE3o</t>\r\n</r>", {"C00CEE3B 2:5"}},
    {"NoUtf8FarBehind",
     "<r>" + repeated("\n<t>a\u00E9</t>", 9000) + "\n<t>\xE9</t></r>",
     {"C00CEE3B 9002:4"}},
};

INSTANTIATE_TEST_SUITE_P(All, Places, ::testing::ValuesIn(cases),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(XmlReaderPosition, ColumnMinusLengthIsTheValuesFirstCharacter) {
    const std::string document = "<r>\n\t<t>a</t>\n\t<v>errado</v>\n</r>";
    ASSERT_THAT(places(document), ElementsAre("C00CE184 3:11"));
    const std::string line = "\t<v>errado</v>";
    EXPECT_EQ(line.substr(11 - 6 - 1, 6), "errado");
}

TEST_F(XmlReaderPosition, OfValuesAroundBufferEnds) {
    // A value's end moves over the ends of the buffers of 16 and 48 KiB, character by character.
    for (const std::size_t edge : {16384U, 32768U, 49152U, 65536U, 98304U}) {
        for (std::size_t start = edge - 20; start < edge + 6; ++start) {
            const std::string filler = repeated("y", start - std::string("<r><t></t><v>").size());
            const std::string document = "<r><t>" + filler + "</t><v>12345x</v><z/></r>";
            ASSERT_EQ(document.substr(start, 6), "12345x");
            EXPECT_THAT(places(document), ElementsAre("C00CE184 1:" + std::to_string(start + 7),
                                                      "80004005 1:" + std::to_string(start + 11)))
                << start;
        }
    }
}

TEST_F(XmlReaderPosition, OfValuesAroundBufferEndsWithAccents) {
    // The bytes of a letter are cut by a buffer's end for every other shift.
    for (const std::size_t letters : {8192U, 16384U, 24576U, 49152U}) {
        for (std::size_t count = letters - 12; count < letters + 3; ++count) {
            const std::string document =
                "<r><t>" + repeated("\u00E9", count) + "</t><v>\u00E9\u00E9x</v></r>";
            EXPECT_THAT(places(document), ElementsAre("C00CE184 1:" + std::to_string(count + 17))) << count;
        }
    }
}

TEST_F(XmlReaderPosition, OfValuesAroundBufferEndsWithLineBreaks) {
    // The pair of a line break is cut by a buffer's end for one of the shifts.
    for (const std::size_t edge : {16384U, 49152U}) {
        for (std::size_t end = edge - 6; end < edge + 6; ++end) {
            const std::string filler = repeated("y", end - std::string("<r><t></t>").size());
            EXPECT_THAT(places("<r><t>" + filler + "</t>\r\n<v>x</v>\r\n</r>"), ElementsAre("C00CE184 2:5"))
                << end;
        }
    }
}

TEST_F(XmlReaderPosition, LinesBeyondAllSmallNumbers) {
    std::string document = "<r>\n";
    for (int line = 2; line < 150'000; ++line) {
        document += line == 65'536 || line == 65'537 || line == 100'001 ? "<v>x</v>\n" : "<v>1</v>\n";
    }
    document += "<z/></r>";
    EXPECT_THAT(places(document), ElementsAre("C00CE184 65536:5", "C00CE184 65537:5", "C00CE184 100001:5",
                                              "80004005 150000:1"));
}

TEST_F(XmlReaderPosition, ColumnsBeyondAllSmallNumbers) {
    EXPECT_THAT(places("<r>" + repeated("<v>1</v>", 20'000) + "<v>x</v></r>"),
                ElementsAre("C00CE184 1:160008"));
}

TEST_F(XmlReaderPosition, LocatorStandsBehindTheValueWhileItsElementEnds) {
    const XmlEvents events = read("<r>\n<t>abc</t>\n<t/>\n<t>a<!-- b --></t>\n<t></t></r>");
    EXPECT_THAT(events.all, ElementsAre("document", "<r>", "<t>", "'abc'", "</t> 2:7", "<t>", "</t> 3:1",
                                        "<t>", "'a'", "</t> 4:5", "<t>", "</t> 5:4", "</r> 5:8", "end"));
}

TEST_F(XmlReaderPosition, OfMissingElementsIsTheEndOfTheirParent) {
    useSchema(R"(
        <xs:element name="r"><xs:complexType><xs:sequence>
          <xs:element name="s" maxOccurs="unbounded"><xs:complexType><xs:sequence>
            <xs:element name="a" type="xs:int"/><xs:element name="b" type="xs:int"/>
          </xs:sequence></xs:complexType></xs:element>
        </xs:sequence></xs:complexType></xs:element>)");
    EXPECT_THAT(places("<r>\n <s>\n  <a>1</a>\n </s>\n <s><a>1</a></s>\n <s/>\n <s></s>\n</r>"),
                ElementsAre("C00CE015 4:2", "C00CE015 5:13", "C00CE015 6:2", "C00CE015 7:5"));
}

} // namespace
} // namespace tv::test
