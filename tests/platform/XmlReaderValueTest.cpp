#include "platform/XmlEvents.h"

#include <gmock/gmock.h>

// Values, attributes, xsi:nil, xsi:type and keys: what is refused, with which code and words.

namespace tv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr auto xsi = "xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'";

// --- simple values

struct ValueCase {
    const char* name;
    const char* type; ///< What stands inside xs:simpleType.
    const char* value;
    bool isValid;
};
void PrintTo(const ValueCase& row, std::ostream* out) {
    *out << row.name;
}

class Values : public XmlReaderFixture, public ::testing::WithParamInterface<ValueCase> {};

TEST_P(Values, RefusedOnceWhateverRefusesThem) {
    useSchema("<xs:element name='r'><xs:simpleType>" + std::string(GetParam().type) +
              "</xs:simpleType></xs:element>");
    const std::string start = "<r>" + std::string(GetParam().value);
    const std::vector<std::string> faults = faultsOf(start + "</r>");
    if (GetParam().isValid) {
        EXPECT_THAT(faults, IsEmpty());
    } else {
        EXPECT_THAT(faults, ElementsAre(StartsWith("error C00CE184 1:" + std::to_string(start.size() + 1))));
    }
}

constexpr auto code = "<xs:restriction base='xs:string'><xs:pattern value='[0-9]+'/><xs:maxLength value='3'/>"
                      "<xs:enumeration value='12'/><xs:enumeration value='345'/></xs:restriction>";
constexpr auto yesNo = "<xs:restriction base='xs:string'><xs:enumeration value='S'/>"
                       "<xs:enumeration value='N'/></xs:restriction>";
constexpr auto yesNoToken = "<xs:restriction base='xs:token'><xs:enumeration value='S'/>"
                            "<xs:enumeration value='N'/></xs:restriction>";
constexpr auto amount = "<xs:restriction base='xs:decimal'><xs:totalDigits value='5'/>"
                        "<xs:fractionDigits value='2'/><xs:minInclusive value='0'/></xs:restriction>";
constexpr auto numberOrDate = "<xs:union memberTypes='xs:int xs:date'/>";
constexpr auto numbers = "<xs:list itemType='xs:int'/>";

const std::vector<ValueCase> values{
    {"CodeRight", code, "345", true},
    {"CodeOfAllFaultsAtOnce", code, "abcdef", false},
    {"CodeNotListed", code, "13", false},
    {"CodeEmpty", code, "", false},
    {"TextKeepsItsBlanks", yesNo, " S ", false},
    {"TokenLosesItsBlanks", yesNoToken, " S\n", true},
    {"AmountRight", amount, "123.45", true},
    {"AmountWithBlanks", amount, " 1.5 ", true},
    {"AmountTooLong", amount, "12345.67", false},
    {"AmountTooFine", amount, "1.234", false},
    {"AmountNegative", amount, "-1", false},
    {"AmountWithComma", amount, "1,5", false},
    {"AmountNoNumber", amount, "um", false},
    {"UnionFirst", numberOrDate, "12", true},
    {"UnionSecond", numberOrDate, "2024-02-29", true},
    {"UnionNeither", numberOrDate, "2023-02-29", false},
    {"ListRight", numbers, "1 2 3", true},
    {"ListOfSeveralFaults", numbers, "x 2 y", false},
    {"InCData", yesNo, "<![CDATA[S]]>", true},
    {"InPieces", yesNo, "<!-- a -->S<?b?>", true},
    {"AsReference", yesNo, "&#83;", true},
};

INSTANTIATE_TEST_SUITE_P(All, Values, ::testing::ValuesIn(values),
                         [](const auto& row) { return std::string(row.param.name); });

// --- attributes

class XmlReaderAttributes : public XmlReaderFixture {
protected:
    void SetUp() override {
        useSchema(R"(
            <xs:element name="r"><xs:complexType><xs:sequence>
              <xs:element name="a" type="xs:string" minOccurs="0"/></xs:sequence>
              <xs:attribute name="obrigatorio" type="xs:int" use="required"/>
              <xs:attribute name="fixo" type="xs:string" fixed="F"/>
              <xs:attribute name="lista"><xs:simpleType><xs:restriction base="xs:string">
                <xs:enumeration value="A"/></xs:restriction></xs:simpleType></xs:attribute>
            </xs:complexType></xs:element>)");
    }
};

TEST_F(XmlReaderAttributes, RightOnesMakeNoFault) {
    EXPECT_THAT(faultsOf("<r obrigatorio='1' fixo='F' lista='A'/>"), IsEmpty());
}

TEST_F(XmlReaderAttributes, NotAllowedOnesAreNamed) {
    EXPECT_THAT(faultsOf("<r obrigatorio='1'>\n <a x='1' y='2'/></r>"),
                ElementsAre("error C00CE011 2:2 O atributo 'x' n\u00E3o \u00E9 permitido no elemento 'a'.",
                            "error C00CE011 2:2 O atributo 'y' n\u00E3o \u00E9 permitido no elemento 'a'."));
}

TEST_F(XmlReaderAttributes, MissingOneIsNamed) {
    EXPECT_THAT(faultsOf("<r/>"),
                ElementsAre("error C00CE006 1:1 Falta o atributo obrigat\u00F3rio 'obrigatorio'."));
}

TEST_F(XmlReaderAttributes, RefusedValuesBearTheCodeOfValues) {
    EXPECT_THAT(
        faultsOf("<r obrigatorio='um' fixo='G' lista='B'/>"),
        ElementsAre(StartsWith("error C00CE184 1:1 "),
                    "error C00CE01A 1:1 O atributo 'fixo' tem o valor 'G', diferente do valor fixo 'F'.",
                    StartsWith("error C00CE184 1:1 ")));
}

TEST_F(XmlReaderAttributes, FaultsAreToldBehindTheStartOfTheirElement) {
    EXPECT_THAT(read("<r><a/></r>").all, ElementsAre("document", "<r>", StartsWith("error C00CE006 1:1 "),
                                                     "<a>", "</a> 1:4", "</r> 1:8", "end"));
}

TEST_F(XmlReaderAttributes, OfAnUnexpectedElementAreSilent) {
    EXPECT_THAT(faultsOf("<r obrigatorio='1'><x q='1'/></r>"),
                ElementsAre(StartsWith("error 80004005 1:20 ")));
}

TEST_F(XmlReaderAttributes, OfAKnownElementInTheWrongPlaceAreTold) {
    EXPECT_THAT(faultsOf("<r obrigatorio='1'><a/><a q='1'/></r>"),
                ElementsAre(StartsWith("error 80004005 1:24 "), StartsWith("error C00CE011 1:24 ")));
}

// --- xsi:nil, xsi:type, fixed content

class XmlReaderNil : public XmlReaderFixture {
protected:
    void SetUp() override {
        useSchema(R"(
            <xs:element name="r"><xs:complexType><xs:sequence>
              <xs:element name="n" type="xs:int" nillable="true" minOccurs="0"/>
              <xs:element name="s" nillable="true" minOccurs="0"><xs:complexType><xs:sequence>
                <xs:element name="a" type="xs:int"/><xs:element name="b" type="xs:int"/>
              </xs:sequence></xs:complexType></xs:element>
              <xs:element name="v" type="xs:int" minOccurs="0"/>
            </xs:sequence></xs:complexType></xs:element>)");
    }
    std::vector<std::string> faultsIn(const std::string& content) const {
        return faultsOf("<r " + std::string(xsi) + ">\n" + content + "</r>");
    }
};

TEST_F(XmlReaderNil, EmptiesWhatMayBeEmptied) {
    EXPECT_THAT(faultsIn("<n xsi:nil='true'/><s xsi:nil='1'/>"), IsEmpty());
    EXPECT_THAT(faultsIn("<n xsi:nil='true'></n><s xsi:nil='true'></s>"), IsEmpty());
    EXPECT_THAT(faultsIn("<n xsi:nil='false'>1</n><s xsi:nil='0'><a>1</a><b>1</b></s>"), IsEmpty());
}

TEST_F(XmlReaderNil, ExcusesNothingWhenItIsFalse) {
    EXPECT_THAT(faultsIn("<n xsi:nil='false'/><s xsi:nil='false'/>"),
                ElementsAre(StartsWith("error C00CE184 2:1 "), StartsWith("error C00CE015 2:21 ")));
}

TEST_F(XmlReaderNil, RefusesContent) {
    EXPECT_THAT(faultsIn("<n xsi:nil='true'>1</n>"),
                ElementsAre("error C00CE029 2:20 O elemento 'n' foi declarado nulo e deve estar vazio."));
    EXPECT_THAT(faultsIn("<s xsi:nil='true'><a>1</a><b>x</b></s><v>x</v>"),
                ElementsAre(StartsWith("error 80004005 2:19 "), StartsWith("error 80004005 2:27 "),
                            StartsWith("error C00CE184 2:31 "), StartsWith("error C00CE184 2:43 ")));
}

TEST_F(XmlReaderNil, IsRefusedWhereTheSchemaDoesNotAllowIt) {
    for (const char* nil : {"true", "1"}) {
        EXPECT_THAT(faultsIn("<v xsi:nil='" + std::string(nil) + "'>1</v>"),
                    ElementsAre("error C00CE028 2:1 O elemento 'v' n\u00E3o permite 'xsi:nil'."));
    }
}

TEST_F(XmlReaderNil, HasTwoValues) {
    EXPECT_THAT(faultsIn("<n xsi:nil='sim'>1</n>"), ElementsAre(StartsWith("error C00CE184 2:1 ")));
}

class XmlReaderTypes : public XmlReaderFixture {
protected:
    void SetUp() override {
        useSchema(R"(
            <xs:element name="r"><xs:complexType><xs:sequence>
              <xs:element name="v" type="xs:decimal" minOccurs="0"/>
              <xs:element name="f" type="xs:string" fixed="F" minOccurs="0"/>
              <xs:element name="s" type="Base" minOccurs="0"/>
            </xs:sequence></xs:complexType></xs:element>
            <xs:complexType name="Base"><xs:sequence>
              <xs:element name="a" type="xs:int"/></xs:sequence></xs:complexType>
            <xs:complexType name="Maior"><xs:complexContent><xs:extension base="Base"><xs:sequence>
              <xs:element name="b" type="xs:int"/></xs:sequence></xs:extension></xs:complexContent></xs:complexType>
            <xs:complexType name="Outro"><xs:sequence/></xs:complexType>)");
    }
    std::vector<std::string> faultsIn(const std::string& content) const {
        return faultsOf("<r " + std::string(xsi) + " xmlns:xs='http://www.w3.org/2001/XMLSchema'>\n" +
                        content + "</r>");
    }
};

TEST_F(XmlReaderTypes, AreTakenFromTheDocumentWhereTheyDerive) {
    EXPECT_THAT(faultsIn("<s xsi:type='Maior'><a>1</a><b>1</b></s>"), IsEmpty());
    EXPECT_THAT(faultsIn("<s xsi:type='Maior'><a>1</a></s>"),
                ElementsAre("error C00CE015 2:29 Falta o elemento obrigat\u00F3rio 'b'."));
    EXPECT_THAT(faultsIn("<s><a>1</a><b>1</b></s>"), ElementsAre(StartsWith("error 80004005 2:12 ")));
    EXPECT_THAT(faultsIn("<v xsi:type='xs:int'>1</v>"), IsEmpty());
    EXPECT_THAT(faultsIn("<v xsi:type='xs:int'>1.5</v>"), ElementsAre(StartsWith("error C00CE184 2:25 ")));
}

TEST_F(XmlReaderTypes, AreRefusedWhereTheyDoNot) {
    EXPECT_THAT(
        faultsIn("<s xsi:type='Nada'><a>1</a></s>"),
        ElementsAre("error C00CE03A 2:1 O tipo 'Nada' indicado em 'xsi:type' n\u00E3o existe no esquema."));
    EXPECT_THAT(
        faultsIn("<s xsi:type='Outro'><a>1</a></s>"),
        ElementsAre(StartsWith("error C00CE03B 2:1 O tipo 'Outro' indicado em 'xsi:type' n\u00E3o deriva")));
}

TEST_F(XmlReaderTypes, FixedContentIsCompared) {
    EXPECT_THAT(faultsIn("<f>F</f>"), IsEmpty());
    EXPECT_THAT(faultsIn("<f/>"), IsEmpty());
    EXPECT_THAT(
        faultsIn("<f>G</f>"),
        ElementsAre(
            "error C00CE02A 2:5 O conte\u00FAdo do elemento 'f' \u00E9 diferente do valor fixo do esquema."));
}

// --- keys and identifiers

class XmlReaderKeys : public XmlReaderFixture {
protected:
    void SetUp() override {
        useSchema(R"(
            <xs:element name="r"><xs:complexType><xs:sequence>
              <xs:element name="i" maxOccurs="unbounded"><xs:complexType><xs:sequence>
                <xs:element name="c" type="xs:string" minOccurs="0"/>
                <xs:element name="id" type="xs:ID" minOccurs="0"/>
                <xs:element name="ref" type="xs:IDREF" minOccurs="0"/>
              </xs:sequence></xs:complexType></xs:element>
            </xs:sequence></xs:complexType>
            <xs:unique name="u"><xs:selector xpath="i"/><xs:field xpath="c"/></xs:unique></xs:element>)");
    }
};

TEST_F(XmlReaderKeys, ValueThatMustBeUniqueIsToldBehindItsRepetition) {
    EXPECT_THAT(faultsOf("<r>\n<i><c>1</c></i>\n<i><c>2</c></i>\n<i><c>1</c></i></r>"),
                ElementsAre(StartsWith("error C00CE045 4:8 O elemento 'r' repete um valor")));
}

TEST_F(XmlReaderKeys, IdentifiersAreUniqueAndExist) {
    EXPECT_THAT(faultsOf("<r><i><id>a</id><ref>a</ref></i></r>"), IsEmpty());
    EXPECT_THAT(
        faultsOf("<r><i><id>a</id></i>\n<i><id>a</id><ref>b</ref></i>\n</r>"),
        ElementsAre(StartsWith("error C00CE184 2:9 "),
                    "error C00CE00D 3:5 O identificador 'b' \u00E9 citado mas n\u00E3o existe no arquivo."));
}

TEST_F(XmlReaderKeys, DoNotPassFromOneDocumentToTheNext) {
    const std::string document = "<r><i><c>1</c><id>a</id></i></r>";
    XmlReader reader(SchemaCache::get(schema_));
    for (int i = 0; i < 3; ++i) {
        XmlEvents events;
        reader.parse(folder.file("a.xml", document), events);
        EXPECT_THAT(events.faults, IsEmpty());
    }
}

} // namespace
} // namespace tv::test
