#include "boletos/ApplicationFolder.h"

#include "platform/XmlDocument.h"
#include "platform/text.h"

#include <gmock/gmock.h>

// What each form of the report says.

namespace boletos::test {
namespace {

using nlohmann::json;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr auto refusedXml =
    "<RESULTADO linha=\"4\" coluna=\"29\" tipoResultado=\"DOMINIO\" ><DESCRICAO errCode=\"C00CE184\" "
    "titulo=\"Valor n\u00E3o pertence ao Dom\u00EDnio do Campo\" ><![CDATA[Valor n\u00E3o pertence ao "
    "Dom\u00EDnio do Campo]]>"
    "</DESCRICAO><LOCAL fundo=\"111\" secao=\"T\u00EDtulos\" campo=\"Valor\" valor=\"x\" atributo=\"fundo\" "
    "/></RESULTADO>";

// --- texto

TEST_F(BoletosTest, TextIsTheDefaultAndEndsWithASummary) {
    const std::string right = valid("certo.xml");
    const std::string wrong = invalid("errado.xml");
    const Outcome outcome = validar("posicao_1", {right, wrong, (folder / "nada.xml").string()});
    EXPECT_THAT(
        linesOf(outcome.out),
        ElementsAre(
            "V\u00C1LIDO    " + right, "INV\u00C1LIDO  " + wrong + "  (1 resultado)",
            "  4:29  DOMINIO C00CE184  Valor n\u00E3o pertence ao Dom\u00EDnio do Campo  [T\u00EDtulos / "
            "Valor]  valor 'x'",
            "N\u00C3O VERIFICADO  " + (folder / "nada.xml").string() + "  (1 resultado)",
            AllOf(StartsWith(
                      "  0:0  DESCONHECIDO 800C0006  Erro Fatal: N\u00E3o foi poss\u00EDvel ler o arquivo"),
                  HasSubstr("o arquivo n\u00E3o existe")),
            "3 arquivos: 1 v\u00E1lido, 1 inv\u00E1lido, 1 n\u00E3o verificado"));
    EXPECT_EQ(validar("posicao_1", {"--formato", "texto", right}).out,
              "V\u00C1LIDO    " + right + "\n1 arquivo: 1 v\u00E1lido, 0 inv\u00E1lidos\n");
}

TEST_F(BoletosTest, TextKeepsAFindingInOneLine) {
    const std::string file = write("a.xml", document("1", "A", "um\n\tdois " + std::string(200, 'y')));
    const std::vector<std::string> lines = linesOf(validar("posicao_1", {file}).out);
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_THAT(lines[1], AllOf(HasSubstr("valor 'um  dois yyy"), HasSubstr("...'"), Not(HasSubstr("\t"))));
    EXPECT_LT(lines[1].size(), 250U);
}

// --- json

TEST_F(BoletosTest, JsonHoldsEveryFieldOfAFinding) {
    const std::string file = invalid("a.xml", "111");
    const Outcome outcome = validar("posicao_1", {"--formato", "json", file});
    const std::vector<json> objects = jsonOf(outcome.out);
    ASSERT_THAT(objects, SizeIs(1));
    const json expected = {
        {"arquivo", file},
        {"layout", "Posicao_1"},
        {"valido", false},
        {"resultados", json::array({{{"tipoResultado", "DOMINIO"},
                                     {"errCode", "C00CE184"},
                                     {"titulo", "Valor n\u00E3o pertence ao Dom\u00EDnio do Campo"},
                                     {"descricao", "Valor n\u00E3o pertence ao Dom\u00EDnio do Campo"},
                                     {"linha", 4},
                                     {"coluna", 29},
                                     {"tagName", "Valor"},
                                     {"tagValue", "x"},
                                     {"tagPath", "Posicao_1.fundo.titulo.valor"},
                                     {"valorCampoChave", "111"},
                                     {"secao", "T\u00EDtulos"},
                                     {"campo", "Valor"},
                                     {"fundo", "111"},
                                     {"atributo", "fundo"},
                                     {"xml", std::string(refusedXml)}}})},
        {"avisos", json::array()}};
    EXPECT_EQ(objects[0], expected) << objects[0].dump(1);
}

TEST_F(BoletosTest, JsonKeepsTheOrderOfItsKeys) {
    const std::string out = validar("posicao_1", {"--formato", "json", invalid("a.xml")}).out;
    std::size_t at = 0;
    for (const char* key :
         {"arquivo",   "layout", "valido", "resultados", "tipoResultado", "errCode", "titulo",
          "descricao", "linha",  "coluna", "tagName",    "tagValue",      "tagPath", "valorCampoChave",
          "secao",     "campo",  "fundo",  "atributo",   "xml",           "avisos"}) {
        const std::size_t found = out.find("\"" + std::string(key) + "\":", at);
        ASSERT_NE(found, std::string::npos) << key;
        at = found;
    }
}

TEST_F(BoletosTest, JsonOfAValidFileIsShort) {
    const std::string file = valid("a.xml");
    const Outcome outcome = validar("posicao_1", {"--formato", "json", file});
    EXPECT_EQ(outcome.out,
              "{\"arquivo\":\"" + file +
                  "\",\"layout\":\"Posicao_1\",\"valido\":true,\"resultados\":[],\"avisos\":[]}\n");
}

TEST_F(BoletosTest, JsonTellsFaultsWithoutAPath) {
    const json object =
        jsonOf(validar("posicao_1", {"--formato", "json", write("a.xml", "isto n\u00E3o \u00E9 XML")}).out)
            .at(0);
    ASSERT_THAT(object["resultados"], SizeIs(1));
    const json& finding = object["resultados"][0];
    EXPECT_EQ(finding["errCode"], "C00CEE3B");
    EXPECT_EQ(finding["tipoResultado"], "ESTRUTURA");
    EXPECT_EQ(finding["titulo"], "Arquivo com falha na Estrutura ");
    for (const char* key : {"tagName", "tagValue", "tagPath", "valorCampoChave", "secao", "campo", "fundo",
                            "atributo", "xml"}) {
        EXPECT_EQ(finding[key], "") << key;
    }
}

TEST_F(BoletosTest, JsonTellsTypesCodesAndLookups) {
    const std::string file = write("a.xml", "<posicao_1><fundo><header><cnpj>7</cnpj></header><titulo><cod/"
                                            "><valor>1</valor><valor>2</valor></titulo>"
                                            "<nada/></fundo></posicao_1>");
    const json object = jsonOf(validar("posicao_1", {"--formato", "json", file}).out).at(0);
    std::vector<std::string> told;
    for (const json& finding : object["resultados"]) {
        told.push_back(finding["tipoResultado"].get<std::string>() + " " +
                       finding["errCode"].get<std::string>() + " " + finding["tagPath"].get<std::string>() +
                       " [" + finding["secao"].get<std::string>() + "/" +
                       finding["campo"].get<std::string>() + "]");
    }
    EXPECT_THAT(told, ElementsAre("DOMINIO 80040002 Posicao_1.fundo.titulo.cod [T\u00EDtulos/C\u00F3digo]",
                                  "ESTRUTURA 80004005 Posicao_1.fundo.titulo [Fundos/]",
                                  "ESTRUTURA 80004005 Posicao_1.fundo [Fundos/]"));
}

TEST_F(BoletosTest, JsonCarriesItemsOfTheFormula) {
    const std::string file = write("a.xml", document("55", "Z", "1"));
    const json object = jsonOf(validar("comformula", {"--formato", "json", file}).out).at(0);
    EXPECT_EQ(object["valido"], false);
    ASSERT_THAT(object["resultados"], SizeIs(1));
    const json& finding = object["resultados"][0];
    EXPECT_EQ(finding["errCode"], "80040001");
    EXPECT_EQ(finding["titulo"], "Regra");
    EXPECT_EQ(finding["descricao"], "Z n\u00E3o serve");
    EXPECT_EQ(finding["linha"], 7);
    EXPECT_EQ(finding["coluna"], 9);
    EXPECT_EQ(finding["tagName"], "cod");
    EXPECT_EQ(finding["tagValue"], "Z");
    EXPECT_EQ(finding["valorCampoChave"], "55");
    EXPECT_EQ(finding["secao"], "T\u00EDtulos");
    EXPECT_EQ(finding["campo"], "C\u00F3digo");
}

TEST_F(BoletosTest, JsonLinesStandAloneWhateverTheFilesHold) {
    const std::vector<std::string> files{
        valid("a.xml"), write("lixo.xml", std::string("\x00\xFF\xD8\xFE", 4)),
        write("quebras.xml", document("1\n2", "A", "x\ny")), (folder / "nada.xml").string(), valid("z.xml")};
    std::vector<std::string> arguments{"--formato", "json"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    const std::vector<json> objects = jsonOf(validar("posicao_1", arguments).out);
    ASSERT_THAT(objects, SizeIs(5));
    for (std::size_t i = 0; i < files.size(); ++i) {
        EXPECT_EQ(objects[i]["arquivo"], files[i]);
    }
    EXPECT_EQ(objects[2]["resultados"][0]["tagValue"], "x\ny");
    EXPECT_EQ(objects[4]["valido"], true);
}

TEST_F(BoletosTest, JsonTellsChecksThatCouldNotRun) {
    const std::string file = valid("a.xml");
    for (const char* layout : {"SemEsquema", "EsquemaQuebrado", "SemFormula"}) {
        const Outcome outcome = validar(layout, {"--formato", "json", file});
        const json object = jsonOf(outcome.out).at(0);
        EXPECT_EQ(outcome.status, 2) << layout;
        EXPECT_EQ(object["valido"], false) << layout;
        ASSERT_THAT(object["avisos"], SizeIs(1)) << layout;
        EXPECT_EQ(outcome.err, "boletos: " + file + ": " + object["avisos"][0].get<std::string>() + "\n");
    }
}

// --- xml

TEST_F(BoletosTest, XmlIsTheReportDocument) {
    const std::string file = invalid("relat\u00F3rio & <1>.xml", "111");
    const Outcome outcome = validar("posicao_1", {"--formato", "xml", file});
    EXPECT_EQ(outcome.status, 1);
    const std::string out = tv::text::fromLatin1(outcome.out);
    const std::string start = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?><TORVA><BOLETO data=\"";
    ASSERT_THAT(out, StartsWith(start));
    EXPECT_THAT(out.substr(start.size(), 21),
                MatchesRegex("[0-9]{2}/[0-9]{2}/[0-9]{4} - [0-9]{2}:[0-9]{2}:[0-9]{2}"));
    EXPECT_EQ(out.substr(start.size() + 21),
              "\"><LAYOUT><![CDATA[Posi\u00E7\u00E3o (1.0)]]></LAYOUT><ARQUIVO><![CDATA[" + file +
                  "]]></ARQUIVO></BOLETO>" + std::string(refusedXml) + "</TORVA>\n");
    tv::XmlDocument document;
    ASSERT_TRUE(document.load(folder.file("relatorio.xml", outcome.out)));
    EXPECT_EQ(document.selectSingleNode("/TORVA/BOLETO/ARQUIVO").text(), file);
    EXPECT_THAT(document.selectNodes("/TORVA/RESULTADO"), SizeIs(1));
}

TEST_F(BoletosTest, XmlOfAValidFileHasNoFinding) {
    tv::XmlDocument document;
    ASSERT_TRUE(
        document.load(folder.file("r.xml", validar("posicao_1", {"--formato", "xml", valid("a.xml")}).out)));
    EXPECT_THAT(document.selectNodes("/TORVA/*"), SizeIs(1));
}

TEST_F(BoletosTest, XmlHoldsCharactersOutsideOfItsEncodingAndNamesThatWouldEndItsTexts) {
    const std::string file = invalid("pre\u00E7o em \u20AC ]]> fim.xml");
    tv::XmlDocument document;
    ASSERT_TRUE(document.load(folder.file("r.xml", validar("posicao_1", {"--formato", "xml", file}).out)));
    EXPECT_THAT(document.selectSingleNode("/TORVA/BOLETO/ARQUIVO").text(),
                HasSubstr("pre\u00E7o em \u20AC ]] > fim.xml"));
}

TEST_F(BoletosTest, XmlOfSeveralFilesIsADocumentEach) {
    const Outcome outcome = validar("posicao_1", {"--formato", "xml", valid("a.xml"), invalid("b.xml")});
    const std::vector<std::string> lines = linesOf(outcome.out);
    ASSERT_THAT(lines, SizeIs(2));
    for (const std::string& line : lines) {
        tv::XmlDocument document;
        EXPECT_TRUE(document.load(folder.file("r.xml", line)));
    }
}

// --- html

TEST_F(BoletosTest, HtmlIsMadeByTheFoldersStylesheet) {
    const std::string file = invalid("p\u00E1gina.xml");
    const Outcome outcome = validar("posicao_1", {"--formato", "html", file});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, AllOf(HasSubstr("<h1>Posi\u00E7\u00E3o (1.0)</h1>"),
                                   HasSubstr("<p>" + file + "</p>"), HasSubstr("<b>1</b>")));
}

TEST_F(BoletosTest, HtmlOfTheShippedFolderIsAPage) {
    const Outcome outcome = run({"validar", "--layout", "arquivoposicao_4_01", "--formato", "html",
                                 TV_BINARY_DIR "/amostras/arquivoposicao_4_01/valido_pequeno.xml"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out,
                AllOf(HasSubstr("<html"), HasSubstr("valido_pequeno.xml"), HasSubstr("</html>")));
}

TEST_F(BoletosTest, HtmlWithoutItsStylesheetIsTheEndOfTheCall) {
    const std::string file = valid("a.xml");
    std::filesystem::remove(folder / "app/XSD/resultado.xsl");
    Outcome outcome = validar("posicao_1", {"--formato", "html", file});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, StartsWith("boletos: A folha resultado.xsl n\u00E3o p\u00F4de ser lida: "));
    write("app/XSD/resultado.xsl", "<xsl:stylesheet");
    outcome = validar("posicao_1", {"--formato", "html", file});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, StartsWith("boletos: A folha resultado.xsl n\u00E3o p\u00F4de ser lida: "));
}

// --- junit

TEST_F(BoletosTest, JunitCountsFilesAsTestCases) {
    const std::vector<std::string> files{valid("a.xml"), invalid("b & <c>.xml"),
                                         (folder / "nada.xml").string()};
    const Outcome outcome = validar("posicao_1", {"--formato", "junit", files[0], files[1], files[2]});
    EXPECT_EQ(outcome.status, 2);
    tv::XmlDocument document;
    ASSERT_TRUE(document.loadXML(outcome.out)) << document.parseError();
    for (const char* path : {"/testsuites", "/testsuites/testsuite"}) {
        const tv::XmlNode suite = document.selectSingleNode(path);
        EXPECT_EQ(suite.attribute("name"), "Posicao_1");
        EXPECT_EQ(suite.attribute("tests"), "3");
        EXPECT_EQ(suite.attribute("failures"), "1");
        EXPECT_EQ(suite.attribute("errors"), "1");
        EXPECT_THAT(suite.attribute("time").value_or(""), MatchesRegex("[0-9]+\\.[0-9]{3}"));
    }
    const std::vector<tv::XmlNode> cases = document.selectNodes("/testsuites/testsuite/testcase");
    ASSERT_THAT(cases, SizeIs(3));
    for (std::size_t i = 0; i < files.size(); ++i) {
        EXPECT_EQ(cases[i].attribute("name"), files[i]);
        EXPECT_EQ(cases[i].attribute("classname"), "Posicao_1");
    }
    EXPECT_THAT(cases[0].childElements(), IsEmpty());
    EXPECT_EQ(cases[1].child("failure").attribute("message"), "1 resultado");
    EXPECT_THAT(cases[1].child("failure").text(), HasSubstr("4:29 DOMINIO C00CE184"));
    EXPECT_THAT(cases[2].child("error").text(), HasSubstr("0:0 DESCONHECIDO 800C0006"));
}

TEST_F(BoletosTest, JunitTellsChecksThatCouldNotRunAsErrors) {
    const Outcome outcome = validar("SemEsquema", {"--formato", "junit", valid("a.xml")});
    tv::XmlDocument document;
    ASSERT_TRUE(document.loadXML(outcome.out));
    EXPECT_EQ(document.selectSingleNode("/testsuites").attribute("errors"), "1");
    EXPECT_THAT(document.selectSingleNode("//error").text(),
                AllOf(HasSubstr("aviso: "), HasSubstr("nada.xsd")));
}

} // namespace
} // namespace boletos::test
