// Documents, catalogs, stylesheets and workbooks that mean harm, given to the program as a whole: a status
// and a sentence in Portuguese, in time, in bounded memory, and nothing read from elsewhere.

#include "boletos/ApplicationFolder.h"
#include "platform/Attacks.h"
#include "platform/Watchers.h"
#include "platform/XmlDocument.h"
#include "platform/text.h"

#include <gmock/gmock.h>

#include <ostream>
#include <sys/stat.h>

namespace boletos::test {
namespace {

using namespace tv::test::attack; // NOLINT(google-build-using-namespace)
using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// A sound document with this in front of the root and this text in its first field.
std::string with(const std::string& front, const std::string& text) {
    return front + document(text, "A", "1");
}

void expectWithin(const Outcome& outcome, double seconds, double megabytes) {
    EXPECT_EQ(outcome.signal, 0);
    EXPECT_LT(outcome.seconds, seconds * tv::test::slack);
    EXPECT_LT(outcome.megabytes, megabytes * tv::test::slack);
}

// --- validar and exportar, both stages

struct Ataque {
    const char* name;
    std::string (*bytes)();
    int validar;           ///< Status of `validar`.
    const char* validado;  ///< What it says.
    int exportar;          ///< Status of `exportar`.
    const char* exportado; ///< What it says.
    double seconds;        ///< Of processor time, for each.
    double megabytes;
};
void PrintTo(const Ataque& ataque, std::ostream* out) {
    *out << ataque.name;
}

class Ataques : public BoletosTest, public ::testing::WithParamInterface<Ataque> {};

TEST_P(Ataques, EndWithAStatusAndASentence) {
    const Ataque& ataque = GetParam();
    const std::string file = write("ataque.xml", ataque.bytes());
    const Outcome checked = validar("ComFormula", {file});
    EXPECT_EQ(checked.status, ataque.validar) << checked.err;
    EXPECT_THAT(checked.out + checked.err, HasSubstr(ataque.validado));
    expectWithin(checked, ataque.seconds, ataque.megabytes);

    // Workbooks are made of the layout's own tag, as it is written.
    const std::string own =
        write("proprio.xml", tv::text::replaceAll(ataque.bytes(), "posicao_1", "Posicao_1"));
    const Outcome exported = run({"exportar", "--pasta", app(), "--layout", "Posicao_1", own});
    EXPECT_EQ(exported.status, ataque.exportar) << exported.err;
    EXPECT_THAT(exported.out + exported.err, HasSubstr(ataque.exportado));
    expectWithin(exported, ataque.seconds, ataque.megabytes);
}

constexpr const char* structure = "Arquivo com falha na Estrutura";
constexpr const char* notOpened = "Erro na abertura do arquivo! ";
constexpr const char* outside = "A entidade externa '";
constexpr const char* unread = "não está declarada no documento ou está fora dele.";

INSTANTIATE_TEST_SUITE_P(
    Todos, Ataques,
    ::testing::Values(
        Ataque{"EntityOfAFile",
               [] { return with(doctype("posicao_1", "<!ENTITY e SYSTEM \"file:///etc/passwd\">"), "&e;"); },
               2, outside, 2, unread, 2, 150},
        Ataque{"EntityOfADevice",
               [] { return with(doctype("posicao_1", "<!ENTITY e SYSTEM \"/dev/zero\">"), "&e;"); }, 2,
               outside, 2, unread, 2, 150},
        Ataque{
            "ParameterEntityOfAFile",
            [] { return with(doctype("posicao_1", "<!ENTITY % p SYSTEM \"file:///etc/passwd\"> %p;"), "1"); },
            2, unread, 2, unread, 2, 150},
        Ataque{"TypesOfAFile", [] { return with("<!DOCTYPE posicao_1 SYSTEM \"/etc/passwd\">", "1"); }, 0,
               "VÁLIDO", 0, ".xls", 2, 150},
        Ataque{"Laughs", [] { return with(doctype("posicao_1", laughs(12)), "&e12;"); }, 1, structure, 2,
               "crescem demais", 2, 150},
        Ataque{"LaughsOfParameters", [] { return with(doctype("posicao_1", parameterLaughs(12)), "1"); }, 1,
               structure, 2, notOpened, 2, 150},
        Ataque{"QuadraticBlowUp",
               [] {
                   return with(doctype("posicao_1", "<!ENTITY e \"" + std::string(20'000, 'x') + "\">"),
                               repeated("&e;", 1000));
               },
               2, "crescem demais", 2, "crescem demais", 4, 300},
        Ataque{"Declarations",
               [] { return with(doctype("posicao_1", declarations("<!ENTITY e{} \"\">", 300'000)), "1"); }, 1,
               structure, 2, "declara coisas demais", 2, 200},
        Ataque{"Markup", [] { return with(doctype("posicao_1", "<!ENTITY e \"<x/>\">"), "&e;"); }, 2,
               "contém marcação", 2, "contém marcação", 2, 150},
        Ataque{"Nesting", [] { return nested("posicao_1", 1'000'000); }, 1, structure, 2, "níveis demais", 3,
               200},
        Ataque{"NestingThatStaysOpen", [] { return "<posicao_1>" + repeated("<fundo>", 1'000'000); }, 1,
               structure, 2, "níveis demais", 3, 200},
        Ataque{"NestingWithinTheBound", [] { return "<posicao_1>" + nested("fundo", 900) + "</posicao_1>"; },
               1, "Nome de Campo", 0, ".xls", 10, 300},
        Ataque{"HugeText", [] { return with("", std::string(100'000'000, 'x')); }, 0, "VÁLIDO", 1, "255", 8,
               1500},
        Ataque{"HugeAttribute",
               [] {
                   const std::string text = document("1", "A", "1");
                   return tv::text::replaceAll(text, "<cnpj>",
                                               "<cnpj q='" + std::string(20'000'000, 'x') + "'>");
               },
               1, "O atributo 'q' não é permitido", 0, ".xls", 12, 1500},
        Ataque{"MillionAttributes",
               [] {
                   const std::string text = document("1", "A", "1");
                   return tv::text::replaceAll(text, "<cnpj>", "<cnpj" + attributes(million) + ">");
               },
               2, "atributos demais", 2, "atributos demais", 25, 1800},
        Ataque{"SchemaElsewhere",
               [] {
                   return tv::text::replaceAll(
                       document("1", "A", "x"), "<posicao_1>",
                       "<posicao_1 xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
                       "xsi:noNamespaceSchemaLocation='/tmp/tudo.xsd'>");
               },
               1, "Valor não pertence ao Domínio", 0, ".xls", 2, 150},
        Ataque{"NulByte", [] { return with("", std::string("1\0", 2)); }, 1, structure, 2,
               "caractere que não é permitido", 2, 150},
        Ataque{"InvalidUtf8", [] { return with("", "\xFF\xFE"); }, 1, structure, 2, "Linha 3: Há ", 2, 150},
        Ataque{"Overlong", [] { return with("", "\xC0\xBC"); }, 1, structure, 2, "Linha 3: Há ", 2, 150},
        Ataque{"Utf16WithoutAMark", [] { return utf16(document("1", "A", "1")); }, 1, structure, 2, notOpened,
               2, 150},
        Ataque{"UnknownEncoding", [] { return with("<?xml version='1.0' encoding='x-nada'?>", "1"); }, 1,
               structure, 2, "codificação declarada não é conhecida", 2, 150}),
    [](const auto& row) { return std::string(row.param.name); });

// --- nothing is read from elsewhere

TEST_F(BoletosTest, NobodyIsCalledAndNoFileIsOpened) {
    const tv::test::Listener listener;
    const std::string secret = write("segredo.txt", "SEGREDO");
    const tv::test::Watched watched(secret);
    std::vector<std::string> documents;
    for (const std::string& uri : {listener.url(), secret, "file://" + secret, std::string("segredo.txt")}) {
        const auto named = [&](const std::string& bytes) {
            return write("d" + std::to_string(documents.size()) + ".xml", bytes);
        };
        documents.push_back(named(with(doctype("posicao_1", "<!ENTITY e SYSTEM \"" + uri + "\">"), "&e;")));
        documents.push_back(
            named(with(doctype("posicao_1", "<!ENTITY % p SYSTEM \"" + uri + "\"> %p;"), "1")));
        documents.push_back(named(with("<!DOCTYPE posicao_1 SYSTEM \"" + uri + "\">", "1")));
        documents.push_back(named(with("<?xml-stylesheet type='text/xsl' href='" + uri + "'?>", "1")));
        documents.push_back(named(tv::text::replaceAll(
            document("1", "A", "1"), "<posicao_1>",
            "<posicao_1 xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='urn:x " +
                uri + "' xsi:noNamespaceSchemaLocation='" + uri + "'>")));
    }
    for (const char* format : {"texto", "json", "xml", "html", "junit"}) {
        std::vector<std::string> arguments{"--formato", format, "--saida", (folder / "saida").string()};
        arguments.insert(arguments.end(), documents.begin(), documents.end());
        const Outcome outcome = validar("ComFormula", arguments);
        EXPECT_EQ(outcome.signal, 0);
        EXPECT_THAT(outcome.out + outcome.err, Not(HasSubstr("SEGREDO")));
        std::filesystem::remove_all(folder / "saida");
    }
    for (const std::string& file : documents) {
        run({"exportar", "--pasta", app(), "--layout", "Posicao_1", file});
    }
    EXPECT_FALSE(watched.wasOpened());
    EXPECT_FALSE(listener.wasCalled());
}

// --- formulas

TEST_F(BoletosTest, AFormulaThatReachesOutIsToldOf) {
    const tv::test::Listener listener;
    const auto formula = [&](const std::string& body) {
        folder.file("app/XSD/formula.xsl",
                    "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" + body +
                        "</xsl:stylesheet>");
        return validar("ComFormula", {valid("a.xml")});
    };
    EXPECT_THAT(formula("<xsl:include href='" + listener.url() + "'/>").err,
                HasSubstr("o acesso a outro arquivo não é permitido"));
    const Outcome outcome = formula("<xsl:template match='/'><TORVA><xsl:copy-of select=\"document('" +
                                    listener.url() + "')\"/></TORVA></xsl:template>");
    EXPECT_THAT(outcome.status, AnyOf(0, 2));
    const Outcome endless =
        formula("<xsl:template match='/'><xsl:apply-templates select='/'/></xsl:template>");
    EXPECT_EQ(endless.status, 2);
    EXPECT_THAT(endless.err,
                HasSubstr("A folha de fórmulas não pôde ser aplicada: Falha na transformação: "));
    expectWithin(endless, 4, 300);
    EXPECT_FALSE(listener.wasCalled());
}

/// The shipped formulas look for the same fund twice; a file of one fund only is their worst case.
class Formulas : public ::testing::TestWithParam<const char*> {};

TEST_P(Formulas, AreLinearInFundsThatAreAllTheSame) {
    const std::string layout = GetParam();
    const tv::test::ScratchFolder folder;
    const auto file = folder.file("a.xml", "<" + layout + ">" +
                                               repeated("<fundo><header><cnpj/></header></fundo>", 20'000) +
                                               "</" + layout + ">");
    const Outcome outcome =
        run({"validar", "--layout", layout, "--saida", (folder / "s").string(), file.string()});
    EXPECT_EQ(outcome.status, 1) << outcome.err;
    expectWithin(outcome, 5, 400);
}

INSTANTIATE_TEST_SUITE_P(All, Formulas,
                         ::testing::Values("arquivoposicao_4_01", "arquivoposicao_3_00",
                                           "ArquivoPosicao_2_01", "movimento_1_00", "movimento_2_00",
                                           "posicao_passivo_analitico_v100"),
                         [](const auto& row) { return std::string(row.param); });

// --- catalogs

struct Caminho {
    const char* name;
    const char* validador;
    int status;
    const char* said;
};
void PrintTo(const Caminho& row, std::ostream* out) {
    *out << row.name;
}

class CaminhosDoCatalogo : public BoletosTest, public ::testing::WithParamInterface<Caminho> {};

TEST_P(CaminhosDoCatalogo, LeadNowhereElse) {
    const std::string outsideFile = write("fora.xsd", schema);
    write("app/fora.xsd", schema);
    write("app/XSD/sub/dentro.xsd", schema);
    const tv::test::Watched watched(outsideFile);
    const tv::test::Watched watchedToo(folder / "app/fora.xsd");
    const std::string name = tv::text::replaceAll(GetParam().validador, "{fora}", outsideFile);
    folder.file("app/TORVA_TramadorValidador.xml",
                catalog(boleto("Posicao_1", name) + boleto("Outro", "posicao.xsd", name)));
    const Outcome outcome = validar("Posicao_1", {valid("a.xml")});
    EXPECT_EQ(outcome.status, GetParam().status) << outcome.err;
    EXPECT_THAT(outcome.out + outcome.err, HasSubstr(GetParam().said));
    EXPECT_FALSE(watched.wasOpened());
    EXPECT_FALSE(watchedToo.wasOpened());
}

INSTANTIATE_TEST_SUITE_P(
    Todos, CaminhosDoCatalogo,
    ::testing::Values(Caminho{"Up", "../fora.xsd", 2, "está fora da pasta XSD"},
                      Caminho{"UpTwice", "../../fora.xsd", 2, "está fora da pasta XSD"},
                      Caminho{"UpWithTheOtherSign", "..\\..\\fora.xsd", 2, "está fora da pasta XSD"},
                      Caminho{"DownAndUp", "sub/../../fora.xsd", 2, "está fora da pasta XSD"},
                      Caminho{"BlanksAndUp", "  ..\\fora.xsd ", 2, "está fora da pasta XSD"},
                      Caminho{"Absolute", "{fora}", 2, "o arquivo não existe"},
                      Caminho{"Address", "http://127.0.0.1/x.xsd", 2, "o arquivo não existe"},
                      Caminho{"Device", "/dev/zero", 2, "o arquivo não existe"},
                      Caminho{"Below", "sub\\dentro.xsd", 0, "VÁLIDO"},
                      Caminho{"BelowAndBack", "sub/../posicao.xsd", 0, "VÁLIDO"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(BoletosTest, CatalogsOfHarmAreRefused) {
    const auto layouts = [&](const std::string& bytes) {
        folder.file("app/TORVA_TramadorValidador.xml", bytes);
        Outcome outcome = run({"layouts", "--pasta", app()});
        expectWithin(outcome, 4, 300);
        return outcome;
    };
    const std::string plain = catalog(boleto("Posicao_1", "posicao.xsd"));
    EXPECT_EQ(layouts(plain).status, 0);
    const auto front = [&](const std::string& declarations, const std::string& use) {
        return tv::text::replaceAll(
            tv::text::replaceAll(plain, "<TORVA>", doctype("TORVA", declarations) + "<TORVA>"), "Teste", use);
    };
    for (const std::string& bytes :
         {front(laughs(12), "&e12;"), front("<!ENTITY e SYSTEM 'file:///etc/passwd'>", "&e;"),
          front(declarations("<!ENTITY e{} ''>", 300'000), "x"), nested("TORVA", 1'000'000),
          tv::text::replaceAll(plain, "<TORVA>", "<TORVA" + attributes(300'000) + ">")}) {
        const Outcome outcome = layouts(bytes);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, HasSubstr("não pôde ser lido: "));
        EXPECT_THAT(outcome.out, IsEmpty());
    }
}

TEST_F(BoletosTest, SectionsInSectionsInACatalogAreRead) {
    const std::string field =
        "<CAMPO tag='c' campoChave='NAO'><OBSERVACAO>x</OBSERVACAO><DADO tipo='TEXTO' tamanho='20' "
        "mandatorio='N' validacao='' default=''/><COLUNA titulo='C' largura='1' alinhamento='ESQUERDA' "
        "maskInput='' maskDisplay='' maskOutput='' tabela=''/></CAMPO>";
    const std::string open =
        "<SECAO tag='s' nome='s' ocorrencia='*' secaoMestre='NAO' nomeGrupo='' tagGrupo=''>";
    const std::string boletos = boleto("Posicao_1", "posicao.xsd");
    const std::size_t at = boletos.rfind("</BOLETO>");
    folder.file("app/TORVA_TramadorValidador.xml",
                catalog(boletos.substr(0, at) + repeated(open, 900) + field + repeated("</SECAO>", 900) +
                        boletos.substr(at)));
    const Outcome outcome = validar("Posicao_1", {valid("a.xml")});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    expectWithin(outcome, 4, 300);
}

// --- what findings show

constexpr const char* markup = "\"'><script>alert(1)</script><img src=x onerror=alert(1)></td>&lt;";

TEST_F(BoletosTest, MarkupInValuesIsTextInTheReport) {
    std::filesystem::copy_file(TV_BINARY_DIR "/XSD/resultado.xsl", folder / "app/XSD/resultado.xsl",
                               std::filesystem::copy_options::overwrite_existing);
    const std::string escaped = tv::text::replaceAll(tv::text::replaceAll(markup, "&", "&amp;"), "<", "&lt;");
    const std::string value = tv::text::replaceAll(escaped, ">", "&gt;");
    const std::string file = write("<img src=x onerror=alert(2)>'\"&lt;.xml", document("1", "Z", value));
    folder.file("app/TORVA_TramadorValidador.xml",
                catalog(tv::text::replaceAll(boleto("Posicao_1", "posicao.xsd", "formula.xsl"), "'CNPJ'",
                                             "'&lt;script&gt;alert(3)&lt;/script&gt;'")));
    const Outcome html = validar("Posicao_1", {"--formato", "html", file});
    EXPECT_EQ(html.status, 1) << html.err;
    EXPECT_THAT(html.out, AllOf(HasSubstr("&lt;script&gt;alert(1)"), HasSubstr("&lt;img src=x onerror")));
    EXPECT_THAT(html.out, Not(AnyOf(HasSubstr("<script"), HasSubstr("<img"))));

    // The key stands in the report's document as it is; what it spoils is told.
    const Outcome key =
        validar("Posicao_1", {"--formato", "html", write("k.xml", document(value, "A", "x"))});
    EXPECT_THAT(key.out, Not(AnyOf(HasSubstr("<script"), HasSubstr("<img"))));
    EXPECT_EQ(key.status, 2);
    EXPECT_THAT(key.err, HasSubstr("Não foi possível gerar arquivo de resultado: "));

    tv::XmlDocument read;
    const std::string report = validar("Posicao_1", {"--formato", "xml", file}).out;
    EXPECT_TRUE(read.load(std::filesystem::path(write("saida.xml", report)))) << read.parseError();
    EXPECT_TRUE(read.loadXML(validar("Posicao_1", {"--formato", "junit", file}).out)) << read.parseError();
    const auto json = jsonOf(validar("Posicao_1", {"--formato", "json", file}).out);
    ASSERT_FALSE(json.empty());
    EXPECT_THAT(json[0].dump(), HasSubstr("<script>alert(1)"));
}

TEST_F(BoletosTest, ControlCharactersReachNoTerminal) {
    // U+009B, DEL, U+202E, U+2066, U+2028: an escape sequence, and what turns or parts a line.
    const std::string value = "a&#x9B;2Jb&#x7F;c&#x202E;d&#x2066;e&#x2028;f";
    const std::string later = "<?xml version='1.1'?>" + document("1", "A", "&#x1B;[2Jx&#x7;");
    for (const std::string& bytes : {document("1", "A", value), document(value, "Z", "1"),
                                     tv::text::replaceAll(later, "<valor>1.5", "<valor>&#x1B;[2J")}) {
        const Outcome outcome = validar("ComFormula", {write("a\x1B[2J\xC2\x9B.xml", bytes)});
        const std::string all = outcome.out + outcome.err;
        for (const char* control :
             {"\x1B", "\x7", "\x7F", "\xC2\x9B", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xE2\x80\xA8"}) {
            EXPECT_THAT(all, Not(HasSubstr(control)));
        }
    }
    EXPECT_THAT(validar("ComFormula", {write("v.xml", document("1", "A", value))}).out,
                HasSubstr("valor 'a 2Jb c d e f'"));
}

} // namespace
} // namespace boletos::test
