#include "platform/XmlEvents.h"

#include <gmock/gmock.h>

#include <random>
#include <sys/stat.h>

// Files that cannot be read, that are no XML, or that mean harm: a fault each, never a hang.

namespace tv::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class XmlReaderInput : public XmlReaderFixture {
protected:
    void SetUp() override {
        useSchema(R"(
            <xs:element name="r"><xs:complexType><xs:sequence>
              <xs:element name="a" type="xs:string" minOccurs="0" maxOccurs="unbounded"/>
            </xs:sequence><xs:attribute name="q" type="xs:string"/></xs:complexType></xs:element>)");
    }
    /// Parses and checks what holds for whatever is read: one end or one fatal fault, and nothing behind it.
    XmlEvents readToAnEnd(std::string_view bytes) const {
        XmlEvents events = read(bytes);
        const auto fatals = std::count_if(events.all.begin(), events.all.end(),
                                          [](const std::string& e) { return e.starts_with("fatal "); });
        const auto ends = std::count(events.all.begin(), events.all.end(), "end");
        EXPECT_EQ(fatals + ends, 1) << bytes.substr(0, 200);
        EXPECT_TRUE(events.all.back() == "end" || events.all.back().starts_with("fatal "))
            << bytes.substr(0, 200);
        return events;
    }
};

// --- files that cannot be read

TEST_F(XmlReaderInput, MissingFileIsFatal) {
    EXPECT_THAT(readFile(folder / "nada.xml").all,
                ElementsAre(AllOf(StartsWith("fatal 800C0006 0:0 "), HasSubstr("nada.xml"),
                                  HasSubstr("o arquivo n\u00E3o existe"))));
}

TEST_F(XmlReaderInput, FileInAMissingFolderIsFatal) {
    EXPECT_THAT(readFile(folder / "nada/nada.xml").all, ElementsAre(StartsWith("fatal 800C0006 0:0 ")));
}

TEST_F(XmlReaderInput, LinkToNothingIsFatal) {
    std::filesystem::create_symlink(folder / "nada.xml", folder / "ligacao.xml");
    EXPECT_THAT(readFile(folder / "ligacao.xml").all, ElementsAre(StartsWith("fatal 800C0006 0:0 ")));
}

TEST_F(XmlReaderInput, LinkToItselfIsFatal) {
    std::filesystem::create_symlink(folder / "ligacao.xml", folder / "ligacao.xml");
    EXPECT_THAT(readFile(folder / "ligacao.xml").all, ElementsAre(StartsWith("fatal 800C000")));
}

TEST_F(XmlReaderInput, FolderIsFatal) {
    EXPECT_THAT(readFile(folder.path()).all,
                ElementsAre(AllOf(StartsWith("fatal 800C0008 0:0 "), HasSubstr("\u00E9 uma pasta"))));
}

TEST_F(XmlReaderInput, FileBelowAFileIsFatal) {
    const auto file = folder.file("a.xml", "<r/>");
    EXPECT_THAT(readFile(file / "b.xml").all, ElementsAre(StartsWith("fatal 800C000")));
}

TEST_F(XmlReaderInput, NameThatIsTooLongIsFatal) {
    EXPECT_THAT(readFile(folder / repeated("x", 5000)).all, ElementsAre(StartsWith("fatal 800C000")));
}

TEST_F(XmlReaderInput, PipeIsFatalInsteadOfAWait) {
    const auto pipe = folder / "cano";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_THAT(readFile(pipe).all,
                ElementsAre(AllOf(StartsWith("fatal 800C0008 0:0 "), HasSubstr("arquivo comum"))));
}

TEST_F(XmlReaderInput, DeviceIsFatal) {
    EXPECT_THAT(readFile("/dev/zero").all, ElementsAre(StartsWith("fatal 800C0008 0:0 ")));
}

TEST_F(XmlReaderInput, NamesOfAnyKindAreRead) {
    for (const char* name : {"com espa\u00E7o e a\u00E7\u00E3o.xml", "cem%20por%.xml", "a#b?c=d.xml",
                             "-r.xml", "http:x.xml", "\xE9-latin1.xml"}) {
        EXPECT_THAT(readFile(folder.file(name, "<r><a>1</a></r>")).faults, IsEmpty()) << name;
    }
}

// --- not well-formed

struct Malformed {
    const char* name;
    std::string document;
};
void PrintTo(const Malformed& row, std::ostream* out) {
    *out << row.name;
}

class MalformedInput : public XmlReaderInput, public ::testing::WithParamInterface<Malformed> {};

TEST_P(MalformedInput, IsExactlyOneFatalFault) {
    const XmlEvents events = readToAnEnd(GetParam().document);
    EXPECT_THAT(events.faults, ElementsAre(StartsWith("fatal C00CEE3B ")));
    EXPECT_THAT(events.all, Not(Contains("end")));
}

const std::vector<Malformed> malformed{
    {"Empty", ""},
    {"WhiteSpace", "  \n\t\n"},
    {"CommentOnly", "<!-- nada -->"},
    {"DeclarationOnly", "<?xml version=\"1.0\"?>\n"},
    {"Text", "isto n\u00E3o \u00E9 XML"},
    {"OpenTag", "<r"},
    {"OpenAttribute", "<r q='1"},
    {"OpenElement", "<r><a>1</a>"},
    {"OpenComment", "<r><!-- </r>"},
    {"OpenCData", "<r><a><![CDATA[1</a></r>"},
    {"WrongEndTag", "<r><a>1</b></r>"},
    {"Crossing", "<r><a>1</r></a>"},
    {"TwoRoots", "<r/><r/>"},
    {"TextBehindTheRoot", "<r/>lixo"},
    {"TextBeforeTheRoot", "lixo<r/>"},
    {"AttributeTwice", "<r q='1' q='2'/>"},
    {"AttributeWithoutQuotes", "<r q=1/>"},
    {"AttributeWithoutValue", "<r q/>"},
    {"LessThanInAttribute", "<r q='<'/>"},
    {"BareAmpersand", "<r><a>A & B</a></r>"},
    {"UnknownEntity", "<r><a>&nada;</a></r>"},
    {"ControlCharacter", "<r><a>\x01</a></r>"},
    {"ReferenceToControlCharacter", "<r><a>&#1;</a></r>"},
    {"ReferenceBeyondUnicode", "<r><a>&#x110000;</a></r>"},
    {"NullByte", std::string("<r><a>1\0</a></r>", 16)},
    {"EndOfCDataInText", "<r><a>]]></a></r>"},
    {"UnknownPrefix", "<r><p:a/></r>"},
    {"DeclarationNotFirst", "\n<?xml version=\"1.0\"?><r/>"},
    {"UnknownVersion", "<?xml version=\"7.0\"?><r/>"},
    {"UnknownEncoding", "<?xml version=\"1.0\" encoding=\"KLINGON\"?><r/>"},
    {"Utf16DeclaredUtf8", utf16(u"\uFEFF<?xml version='1.0' encoding='UTF-8'?><r/>", false)},
    {"Utf16CutInHalf", utf16(u"\uFEFF<r/>", false).substr(0, 9)},
    {"Latin1WithoutDeclaration", "<r><a>S\xE3o</a></r>"},
    {"OverlongUtf8", "<r><a>\xC0\xBC</a></r>"},
    {"SurrogateInUtf8", "<r><a>\xED\xA0\x80</a></r>"},
    {"Picture", "\xFF\xD8\xFF\xE0\x10JFIF\x01\x01\x48"},
    {"Archive", "PK\x03\x04\x14"},
    {"NameOfDigits", "<1r/>"},
};

INSTANTIATE_TEST_SUITE_P(All, MalformedInput, ::testing::ValuesIn(malformed),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(XmlReaderInput, FaultsBeforeTheFatalOneAreKept) {
    EXPECT_THAT(readToAnEnd("<r><x/><a q='1'/></z>").faults,
                ElementsAre(StartsWith("error 80004005 1:4 "), StartsWith("error C00CE011 1:8 "),
                            StartsWith("fatal C00CEE3B 1:")));
}

TEST_F(XmlReaderInput, TextBeforeTheFatalFaultIsTold) {
    EXPECT_THAT(readToAnEnd("<r><a>aberto &nada;").all,
                ElementsAre("document", "<r>", "<a>", "'aberto '", StartsWith("fatal C00CEE3B 1:")));
}

TEST_F(XmlReaderInput, TruncatedAnywhereIsOneFatalFault) {
    const std::string document =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE r [<!ENTITY e \"x\">]>\n"
        "<r q='1'><!-- c --><a>S\u00E3o &amp; &e;</a>\r\n<a><![CDATA[y]]></a><a/></r>";
    for (std::size_t size = 0; size < document.size(); ++size) {
        EXPECT_THAT(readToAnEnd(document.substr(0, size)).faults, ElementsAre(StartsWith("fatal C00CEE3B ")))
            << size;
    }
    EXPECT_THAT(readToAnEnd(document).faults, IsEmpty());
}

TEST_F(XmlReaderInput, RandomBytesAreOneFatalFault) {
    for (unsigned int seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        std::string bytes;
        for (std::size_t size = random() % 2000 + 1; bytes.size() < size;) {
            bytes += static_cast<char>(random() & 0xFFU);
        }
        EXPECT_THAT(readToAnEnd(bytes).faults, ElementsAre(StartsWith("fatal C00CEE3B "))) << "seed " << seed;
    }
}

TEST_F(XmlReaderInput, DocumentsWithRandomDamageComeToAnEnd) {
    const std::string document = "<?xml version='1.0'?><!DOCTYPE r [<!ENTITY e '&#65;'>]><r q='1'>"
                                 "<a>&e;b&lt;</a><x y='z'>t<!--c--></x><![CDATA[d]]><?p i?><a/></r>";
    constexpr std::string_view pieces = "<>&;/'\"!?[]-=%# \n\xE9";
    for (unsigned int seed = 0; seed < 1000; ++seed) {
        std::mt19937 random(seed);
        std::string damaged = document;
        for (unsigned int i = 0; i <= seed % 4; ++i) {
            damaged[random() % damaged.size()] = pieces[random() % pieces.size()];
        }
        readToAnEnd(damaged);
    }
}

// --- documents that mean harm

std::string doctype(const std::string& declarations) {
    return "<!DOCTYPE r [" + declarations + "]>";
}

std::string nestedEntities(int levels) {
    std::string declarations = "<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i <= levels; ++i) {
        declarations += "<!ENTITY e" + std::to_string(i) + " \"" +
                        repeated("&e" + std::to_string(i - 1) + ";", 10) + "\">";
    }
    return doctype(declarations);
}

TEST_F(XmlReaderInput, FewEntitiesAreTaken) {
    EXPECT_THAT(readToAnEnd(nestedEntities(1) + "<r><a>&e1;</a></r>").all,
                Contains("'" + repeated("0123456789", 10) + "'"));
}

TEST_F(XmlReaderInput, NestedEntitiesAreBounded) {
    const XmlEvents events = readToAnEnd(nestedEntities(12) + "<r><a>&e12;</a></r>");
    EXPECT_THAT(events.faults, ElementsAre(StartsWith("fatal C00CEE3B ")));
    for (const std::string& event : events.all) {
        EXPECT_LT(event.size(), 20'000U);
    }
}

TEST_F(XmlReaderInput, NestedEntitiesInAttributesAreBounded) {
    EXPECT_THAT(readToAnEnd(nestedEntities(12) + "<r q='&e12;'/>").faults,
                ElementsAre(StartsWith("fatal C00CEE3B ")));
}

TEST_F(XmlReaderInput, OneLargeEntityOftenIsBounded) {
    EXPECT_THAT(readToAnEnd(doctype("<!ENTITY e \"" + repeated("x", 19'000) + "\">") + "<r><a>" +
                            repeated("&e;", 5000) + "</a></r>")
                    .faults,
                ElementsAre(StartsWith("fatal C00CEE3B ")));
    EXPECT_THAT(
        readToAnEnd(doctype("<!ENTITY e \"" + repeated("x", 21'000) + "\">") + "<r><a>&e;</a></r>").faults,
        ElementsAre("fatal C00CEE3B 1:1 As entidades declaradas no arquivo s\u00E3o grandes demais."));
}

TEST_F(XmlReaderInput, EntityOfItselfIsFatal) {
    EXPECT_THAT(readToAnEnd(doctype("<!ENTITY e \"&f;\"><!ENTITY f \"&e;\">") + "<r><a>&e;</a></r>").faults,
                ElementsAre(StartsWith("fatal C00CEE3B ")));
}

TEST_F(XmlReaderInput, ParameterEntitiesAreBounded) {
    std::string declarations = "<!ENTITY % p0 \"<!ENTITY x 'y'>\">";
    for (int i = 1; i < 12; ++i) {
        declarations += "<!ENTITY % p" + std::to_string(i) + " \"" +
                        repeated("&#37;p" + std::to_string(i - 1) + ";", 10) + "\">";
    }
    readToAnEnd(doctype(declarations + "%p11;") + "<r/>");
}

TEST_F(XmlReaderInput, DeepNestingIsBounded) {
    const XmlEvents events = readToAnEnd(repeated("<r>", 400'000));
    EXPECT_THAT(events.faults.back(),
                "fatal C00CEE3B 1:3001 Os elementos do arquivo t\u00EAm n\u00EDveis demais.");
    EXPECT_EQ(std::count(events.all.begin(), events.all.end(), "<r>"), 1000);
}

TEST_F(XmlReaderInput, NestingUpToTheBoundIsRead) {
    EXPECT_EQ(readToAnEnd("<r>" + repeated("<x>", 999) + repeated("</x>", 999) + "</r>").all.back(), "end");
}

TEST_F(XmlReaderInput, ThousandsOfAttributesAreRead) {
    std::string document = "<r";
    for (int i = 0; i < 3000; ++i) {
        document += " a" + std::to_string(i) + "='1'";
    }
    EXPECT_EQ(readToAnEnd(document + "/>").faults.size(), 3000U);
}

class XmlReaderOutside : public XmlReaderInput {
protected:
    void SetUp() override {
        XmlReaderInput::SetUp();
        secret = folder.file("segredo.txt", "SEGREDO");
        folder.file("fora.dtd", "<!ENTITY e \"SEGREDO\"><!ENTITY f \"SEGREDO\">");
        folder.file("outro.xsd", "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
                                 "<xs:element name='r' type='xs:int'/></xs:schema>");
    }
    XmlEvents readWithoutSecret(std::string_view document) const {
        XmlEvents events = readToAnEnd(document);
        EXPECT_THAT(events.all, Each(Not(HasSubstr("SEGREDO"))));
        return events;
    }
    std::filesystem::path secret;
};

TEST_F(XmlReaderOutside, EntityIsNotReadAndIsTold) {
    for (const std::string& name :
         {secret.string(), std::string("segredo.txt"), "file://" + secret.string()}) {
        const XmlEvents events =
            readWithoutSecret(doctype("<!ENTITY e SYSTEM \"" + name + "\">") + "<r><a>a&e;b</a></r>");
        EXPECT_THAT(events.all, Contains("'ab'"));
        EXPECT_THAT(events.faults, ElementsAre("error C00CE033 1:" + std::to_string(name.size() + 47) +
                                               " A entidade externa '" + name + "' n\u00E3o \u00E9 lida."));
    }
}

TEST_F(XmlReaderOutside, DocumentTypeIsNotRead) {
    for (const std::string& name : {(folder / "fora.dtd").string(), std::string("fora.dtd")}) {
        const XmlEvents events = readWithoutSecret("<!DOCTYPE r SYSTEM \"" + name + "\"><r><a>&e;</a></r>");
        EXPECT_THAT(events.faults,
                    Contains(HasSubstr("A entidade 'e' n\u00E3o est\u00E1 declarada no arquivo.")));
    }
    EXPECT_THAT(
        readWithoutSecret("<!DOCTYPE r SYSTEM \"http://127.0.0.1:1/nada.dtd\"><r><a>1</a></r>").faults,
        IsEmpty());
}

TEST_F(XmlReaderOutside, ParameterEntityIsNotRead) {
    const XmlEvents events = readWithoutSecret(
        doctype("<!ENTITY % p SYSTEM \"" + (folder / "fora.dtd").string() + "\"> %p;") + "<r><a>&f;</a></r>");
    EXPECT_THAT(events.faults, Not(IsEmpty()));
}

TEST_F(XmlReaderOutside, SchemaLocationsAreNotFollowed) {
    const std::string xsi = "<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' ";
    EXPECT_THAT(readToAnEnd(xsi + "xsi:noNamespaceSchemaLocation='outro.xsd'><a>1</a></r>").faults,
                IsEmpty());
    EXPECT_THAT(readToAnEnd(xsi + "xsi:noNamespaceSchemaLocation='nada.xsd'><a>1</a></r>").faults, IsEmpty());
    EXPECT_THAT(
        readToAnEnd(xsi + "xsi:schemaLocation='urn:x http://127.0.0.1:1/nada.xsd'><a>1</a></r>").faults,
        IsEmpty());
    EXPECT_THAT(readToAnEnd(xsi + "xsi:noNamespaceSchemaLocation='outro.xsd'>1</r>").faults,
                ElementsAre(StartsWith("error C00CE016 ")));
}

TEST_F(XmlReaderOutside, InclusionsAreNotFollowed) {
    EXPECT_THAT(
        readWithoutSecret("<r><xi:include xmlns:xi='http://www.w3.org/2001/XInclude' parse='text' href='" +
                          secret.string() + "'/></r>")
            .faults,
        ElementsAre(StartsWith("error 80004005 1:4 ")));
}

// --- what a document says of itself wrongly, though it can be read

TEST_F(XmlReaderInput, ContradictoryEncodingIsAWarning) {
    EXPECT_THAT(
        readToAnEnd("<?xml version=\"1.0\" encoding=\"UTF-16\"?><r><a>1</a></r>").faults,
        ElementsAre(
            "warning C00CD004 1:40 A codifica\u00E7\u00E3o 'UTF-16' declarada no arquivo n\u00E3o \u00E9 "
            "a que ele usa; a declara\u00E7\u00E3o foi ignorada."));
}

TEST_F(XmlReaderInput, DeclarationsMadeTwiceAreTold) {
    EXPECT_THAT(readToAnEnd(doctype("<!NOTATION n SYSTEM 'x'><!NOTATION n SYSTEM 'x'>"
                                    "<!ATTLIST r q CDATA #IMPLIED><!ATTLIST r q CDATA #IMPLIED>") +
                            "<r/>")
                    .faults,
                ElementsAre(HasSubstr("C00CD002 1:61 A nota\u00E7\u00E3o 'n' foi declarada mais de uma vez."),
                            HasSubstr("O atributo 'q' foi declarado mais de uma vez para o elemento 'r'.")));
}

TEST_F(XmlReaderInput, RootOtherThanTheDocumentTypeIsTold) {
    EXPECT_THAT(
        readToAnEnd("<!DOCTYPE z><r/>").faults,
        ElementsAre("error C00CE005 1:13 O elemento raiz \u00E9 diferente do que foi declarado em DOCTYPE."));
}

TEST_F(XmlReaderInput, EncodingsInUseAreRead) {
    EXPECT_THAT(readToAnEnd("<?xml version='1.0' encoding='ISO-8859-1'?><r><a>S\xE3o</a></r>").all,
                Contains("'S\u00E3o'"));
    EXPECT_THAT(readToAnEnd("<?xml version='1.0' encoding='windows-1252'?><r><a>\x80</a></r>").all,
                Contains("'\u20AC'"));
    EXPECT_THAT(readToAnEnd("<?xml version='1.1' encoding='UTF-8'?><r><a>S\u00E3o</a></r>").all,
                Contains("'S\u00E3o'"));
    EXPECT_THAT(readToAnEnd("<r><a>\U0001F600</a></r>").all, Contains("'\U0001F600'"));
}

} // namespace
} // namespace tv::test
