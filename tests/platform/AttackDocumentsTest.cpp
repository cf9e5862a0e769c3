// Documents that mean harm, put to both readers: an end in time and in bounded memory, a sentence in
// Portuguese, and nothing read from elsewhere.

#include "platform/Attacks.h"
#include "platform/Error.h"
#include "platform/ScratchFolder.h"
#include "platform/Watchers.h"
#include "platform/XmlDocument.h"
#include "platform/XmlForm.h"
#include "platform/XmlReader.h"

#include <gmock/gmock.h>

#include <ostream>

namespace tv::test {
namespace {

using namespace attack; // NOLINT(google-build-using-namespace)
using ::testing::HasSubstr;

constexpr std::size_t hundredMegabytes = 100'000'000;

/// Keeps the faults' number and the last of them, and how much text there was.
class Counter : public XmlHandler {
public:
    std::size_t faults = 0;
    std::size_t textBytes = 0;
    std::string last;
    bool ended = false;

    void documentLocator(const XmlLocator& /*locator*/) override {}
    void startDocument() override {}
    void startElement(std::string_view /*name*/) override {}
    void characters(std::string_view text) override { textBytes += text.size(); }
    void endElement(std::string_view /*name*/) override {}
    void endDocument() override { ended = true; }
    void error(const XmlFault& fault) override { keep(fault); }
    void fatalError(const XmlFault& fault) override { keep(fault); }
    void ignorableWarning(const XmlFault& fault) override { keep(fault); }

private:
    void keep(const XmlFault& fault) {
        ++faults;
        last = fault.message;
    }
};

class AttackFixture : public ::testing::Test {
protected:
    AttackFixture() {
        schema = folder.file("r.xsd", R"(<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema">
            <xs:element name="r"><xs:complexType><xs:sequence>
              <xs:element name="a" type="xs:string" minOccurs="0" maxOccurs="unbounded"/>
            </xs:sequence></xs:complexType></xs:element></xs:schema>)");
    }
    Counter read(const std::string& bytes) const {
        Counter counter;
        XmlReader(SchemaCache::get(schema)).parse(folder.file("documento.xml", bytes), counter);
        return counter;
    }
    /// Loads the document; gives why it cannot be, or the empty text.
    std::string reasonOf(const std::string& bytes) const {
        XmlDocument document;
        document.load(folder.file("documento.xml", bytes));
        return document.parseError();
    }

    ScratchFolder folder;
    std::filesystem::path schema;
};

// --- bounds

struct Attack {
    const char* name;
    std::string (*bytes)();
    const char* fault;  ///< What the reader tells last; empty when it has nothing to tell.
    const char* reason; ///< Why the document is not loaded; empty when it is.
    double seconds;     ///< Of processor time, for both readers.
    double megabytes;
};
void PrintTo(const Attack& attack, std::ostream* out) {
    *out << attack.name;
}

class AttackDocuments : public AttackFixture, public ::testing::WithParamInterface<Attack> {};

TEST_P(AttackDocuments, EndInTimeAndInBoundedMemory) {
    const Attack& attack = GetParam();
    const std::string bytes = attack.bytes();
    const Cost cost;
    const Counter counter = read(bytes);
    EXPECT_EQ(counter.faults == 0, std::string(attack.fault).empty()) << counter.last;
    EXPECT_THAT(counter.last, HasSubstr(attack.fault));
    const std::string reason = reasonOf(bytes);
    EXPECT_EQ(reason.empty(), std::string(attack.reason).empty()) << reason;
    EXPECT_THAT(reason, HasSubstr(attack.reason));
    cost.expectBelow(attack.seconds, attack.megabytes);
}

constexpr const char* tooDeep = "níveis demais";
constexpr const char* tooMuchDeclared = "declara coisas demais em DOCTYPE";
constexpr const char* tooManyAttributes = "atributos demais";
constexpr const char* entitiesUsed = "O arquivo usa entidades vezes demais; o limite é de 1000 usos.";
constexpr const char* entitiesGrow = "As entidades se citam em círculo ou crescem demais.";

INSTANTIATE_TEST_SUITE_P(
    All, AttackDocuments,
    ::testing::Values(
        Attack{"Laughs", [] { return doctype("r", laughs(12)) + "<r><a>&e12;</a></r>"; }, entitiesUsed,
               entitiesGrow, 2, 60},
        Attack{"LaughsInAnAttribute", [] { return doctype("r", laughs(12)) + "<r q='&e12;'/>"; },
               entitiesUsed, entitiesGrow, 2, 60},
        Attack{"LaughsOfParameters", [] { return doctype("r", parameterLaughs(12)) + "<r/>"; },
               tooMuchDeclared, "p12", 2, 60},
        Attack{"QuadraticBlowUp",
               [] {
                   return doctype("r", "<!ENTITY e \"" + std::string(20'000, 'x') + "\">") + "<r><a>" +
                          repeated("&e;", 20'000) + "</a></r>";
               },
               entitiesUsed, entitiesGrow, 4, 200},
        Attack{"LargeEntity",
               [] {
                   return doctype("r", "<!ENTITY e \"" + std::string(10'000'000, 'x') + "\">") +
                          "<r><a>&e;</a></r>";
               },
               "As entidades declaradas no arquivo são grandes demais.", "grande demais", 4, 200},
        Attack{"ManyEntities",
               [] { return doctype("r", declarations("<!ENTITY e{} \"\">", 300'000)) + "<r/>"; },
               tooMuchDeclared, tooMuchDeclared, 2, 100},
        Attack{"ManyParameterEntities",
               [] { return doctype("r", declarations("<!ENTITY % e{} \"\">", 300'000)) + "<r/>"; },
               tooMuchDeclared, tooMuchDeclared, 2, 100},
        Attack{"ManyElementDeclarations",
               [] { return doctype("r", declarations("<!ELEMENT e{} ANY>", 300'000)) + "<r/>"; },
               tooMuchDeclared, tooMuchDeclared, 2, 100},
        Attack{"ManyAttributeDeclarations",
               [] { return doctype("r", declarations("<!ATTLIST a q{} CDATA 'x'>", 300'000)) + "<r/>"; },
               tooMuchDeclared, tooMuchDeclared, 2, 100},
        Attack{"ManyNotations",
               [] { return doctype("r", declarations("<!NOTATION e{} SYSTEM 'x'>", 300'000)) + "<r/>"; },
               tooMuchDeclared, tooMuchDeclared, 2, 100},
        Attack{"Nesting", [] { return nested("r", 1'000'000); }, tooDeep, tooDeep, 3, 100},
        Attack{"NestingThatStaysOpen", [] { return repeated("<r>", 1'000'000); }, tooDeep, tooDeep, 3, 100},
        Attack{"NestingBelowTheRoot", [] { return "<r>" + nested("x", 1'000'000) + "</r>"; }, tooDeep,
               tooDeep, 3, 100},
        Attack{"HugeText", [] { return "<r><a>" + std::string(hundredMegabytes, 'x') + "</a></r>"; }, "", "",
               8, 1200},
        Attack{"HugeCData",
               [] { return "<r><a><![CDATA[" + std::string(hundredMegabytes, 'x') + "]]></a></r>"; }, "", "",
               12, 1500},
        Attack{"HugeComment", [] { return "<r><!--" + std::string(hundredMegabytes, 'x') + "--></r>"; }, "",
               "", 12, 1500},
        Attack{"HugeAttribute", [] { return "<r q='" + std::string(hundredMegabytes, 'x') + "'/>"; },
               "O atributo 'q' não é permitido", "", 12, 1500},
        Attack{"HugeName", [] { return "<r><" + std::string(20'000'000, 'n') + "/></r>"; },
               "não é permitido aqui", "longo demais", 8, 800},
        Attack{"MillionAttributes", [] { return "<r" + attributes(million) + "/>"; },
               "não é permitido no elemento 'r'", tooManyAttributes, 20, 1200},
        Attack{"MillionNamespaces", [] { return "<r" + declarations(" xmlns:a{}='u{}'", million) + "/>"; },
               "", tooManyAttributes, 8, 800},
        Attack{"MillionSections", [] { return "<r>" + repeated("<a><![CDATA[x]]></a>", million) + "</r>"; },
               "", "", 12, 1200},
        Attack{"AngleBrackets", [] { return std::string(20'000'000, '<'); }, "expected",
               "Falta o nome de um elemento ou atributo.", 2, 200},
        Attack{"OpenQuotes", [] { return "<r " + std::string(20'000'000, '"'); }, "expected",
               tooManyAttributes, 2, 200}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(AttackFixture, TheEditorsFormIsRefusedAtTheSameBounds) {
    const Cost cost;
    for (const std::string& text : {nested("r", 1'000'000), doctype("r", laughs(12)) + "<r>&e12;</r>",
                                    "<r" + attributes(million) + "/>",
                                    doctype("r", declarations("<!ENTITY e{} \"\">", 300'000)) + "<r/>"}) {
        EXPECT_FALSE(inParsersForm(text)) << text.substr(0, 40);
    }
    cost.expectBelow(8, 200);
}

TEST_F(AttackFixture, AsMuchAsADoctypeMayDeclareIsRead) {
    const std::string text =
        doctype("r", declarations("<!ENTITY e{} \"x\">", 1000)) + "<r><a>&e0;&e999;</a></r>";
    EXPECT_EQ(read(text).textBytes, 2U);
    EXPECT_EQ(reasonOf(text), "");
    EXPECT_EQ(read(doctype("r", declarations("<!ENTITY e{} \"x\">", 1001)) + "<r/>").faults, 1U);
}

// --- encodings and bytes

struct Bytes {
    const char* name;
    std::string bytes;
    const char* reason; ///< Why the document is not loaded.
};
void PrintTo(const Bytes& row, std::ostream* out) {
    *out << row.name;
}

class AttackBytes : public AttackFixture, public ::testing::WithParamInterface<Bytes> {};

TEST_P(AttackBytes, AreRefusedByBothReaders) {
    const Counter counter = read(GetParam().bytes);
    EXPECT_FALSE(counter.ended);
    EXPECT_EQ(counter.faults, 1U) << counter.last;
    EXPECT_THAT(reasonOf(GetParam().bytes), HasSubstr(GetParam().reason));
}

constexpr const char* badBytes = "Linha 1: Há "; // which of two the library tells is its own matter
constexpr const char* badCharacter = "Há um caractere que não é permitido em XML.";

INSTANTIATE_TEST_SUITE_P(
    All, AttackBytes,
    ::testing::Values(Bytes{"InvalidUtf8", "<r><a>\xFF\xFE</a></r>", badBytes},
                      Bytes{"OverlongUtf8", "<r><a>\xC0\xBCscript\xC0\xBE</a></r>", badBytes},
                      Bytes{"SurrogateInUtf8", "<r><a>\xED\xA0\x80</a></r>", badBytes},
                      Bytes{"CutUtf8", "<r><a>\xE2\x82</a></r>", badBytes},
                      Bytes{"NulByte", std::string("<r><a>x\0y</a></r>", 17), badCharacter},
                      Bytes{"ControlCharacter", "<r><a>\x1B[2J</a></r>", badCharacter},
                      Bytes{"ReferenceToAControlCharacter", "<r><a>&#27;</a></r>", badCharacter},
                      Bytes{"Utf16WithoutAMark", utf16("<r><a>x</a></r>"), ""},
                      Bytes{"UnknownEncoding", "<?xml version='1.0' encoding='x-nada'?><r/>",
                            "A codificação declarada não é conhecida."},
                      Bytes{"Utf16DeclaredAsUtf8",
                            "\xFF\xFE" + utf16("<?xml version='1.0' encoding='UTF-8'?><r/>") + "\xFF", ""}),
    [](const auto& row) { return std::string(row.param.name); });

// --- reaching out

class AttackOutside : public AttackFixture {
protected:
    AttackOutside()
        : secret(folder.file("segredo.txt", "SEGREDO"))
        , watched(secret) {
        folder.file("fora.dtd", "<!ENTITY e 'SEGREDO'>");
    }

    /// Documents that ask for the text at `uri` in every way there is.
    static std::vector<std::string> documents(const std::string& uri) {
        const std::string xsi = "<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' ";
        return {
            doctype("r", "<!ENTITY e SYSTEM \"" + uri + "\">") + "<r><a>&e;</a></r>",
            doctype("r", "<!ENTITY e SYSTEM \"" + uri + "\">") + "<r q='&e;'/>",
            doctype("r", "<!ENTITY e PUBLIC \"p\" \"" + uri + "\">") + "<r><a>&e;</a></r>",
            doctype("r", "<!ENTITY % p SYSTEM \"" + uri + "\"> %p;") + "<r><a>x</a></r>",
            doctype("r", "<!ENTITY % p SYSTEM \"" + uri + "\"><!ENTITY % q \"<!ENTITY e '&#37;p;'>\">%q;") +
                "<r><a>&e;</a></r>",
            "<!DOCTYPE r SYSTEM \"" + uri + "\"><r><a>x</a></r>",
            "<!DOCTYPE r PUBLIC \"p\" \"" + uri + "\" [<!ENTITY f 'x'>]><r><a>&f;</a></r>",
            doctype("r", "<!NOTATION n SYSTEM \"" + uri + "\"><!ENTITY e SYSTEM \"" + uri + "\" NDATA n>") +
                "<r><a>x</a></r>",
            xsi + "xsi:noNamespaceSchemaLocation='" + uri + "'><a>x</a></r>",
            xsi + "xsi:schemaLocation='urn:x " + uri + "'><x:b xmlns:x='urn:x'/></r>",
            "<?xml-stylesheet type='text/xsl' href='" + uri + "'?><?xml-model href='" + uri +
                "'?><r><a>x</a></r>",
            "<r><xi:include xmlns:xi='http://www.w3.org/2001/XInclude' parse='text' href='" + uri + "'/></r>",
            "<r xml:base='" + uri + "' xmlns='" + uri + "'/>",
        };
    }
    /// Both readers, and the form for the editor.
    void readAll(const std::string& uri) const {
        for (const std::string& text : documents(uri)) {
            SCOPED_TRACE(text);
            const Counter counter = read(text);
            EXPECT_LE(counter.textBytes, 1U);
            XmlDocument document;
            if (document.load(folder.file("documento.xml", text))) {
                EXPECT_LE(document.documentElement().text().size(), 1U);
            }
            EXPECT_EQ(inParsersForm(text).value_or("").find("SEGREDO"), std::string::npos);
        }
    }

    std::filesystem::path secret;
    Watched watched;
};

TEST_F(AttackOutside, NoOtherFileIsOpened) {
    for (const std::string& uri :
         {secret.string(), "file://" + secret.string(), std::string("segredo.txt"),
          std::string("./segredo.txt"), "../" + folder.path().filename().string() + "/segredo.txt"}) {
        readAll(uri);
        EXPECT_FALSE(watched.wasOpened()) << uri;
    }
    EXPECT_EQ(files::readAll(secret), "SEGREDO");
    EXPECT_TRUE(watched.wasOpened()) << "the watch works";
}

TEST_F(AttackOutside, NobodyIsCalled) {
    const Listener listener;
    readAll(listener.url());
    readAll("ftp://127.0.0.1:" + std::to_string(listener.port()) + "/x");
    readAll("//127.0.0.1:" + std::to_string(listener.port()) + "/x");
    EXPECT_FALSE(listener.wasCalled());
}

TEST_F(AttackOutside, TheListenerHearsACall) {
    const Listener listener;
    const int caller = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(listener.port());
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(::connect(caller, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_TRUE(listener.wasCalled());
    ::close(caller);
}

TEST_F(AttackOutside, SchemasReachNobody) {
    const Listener listener;
    const auto refused = [&](const std::string& inside) {
        const auto file = folder.file(
            "mau.xsd", doctype("xs:schema", "") + "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>" +
                           inside + "<xs:element name='r'/></xs:schema>");
        try {
            SchemaCache::get(file);
        } catch (const Error&) {
            return true;
        }
        return false;
    };
    for (const std::string& uri : {listener.url("x.xsd"), "file://" + secret.string(), secret.string(),
                                   std::string("../x.xsd"), std::string("..\\x.xsd")}) {
        EXPECT_TRUE(refused("<xs:include schemaLocation='" + uri + "'/>")) << uri;
        EXPECT_TRUE(refused("<xs:import namespace='urn:x' schemaLocation='" + uri + "'/>")) << uri;
        EXPECT_TRUE(refused("<xs:redefine schemaLocation='" + uri + "'/>")) << uri;
    }
    EXPECT_FALSE(listener.wasCalled());
}

} // namespace
} // namespace tv::test
