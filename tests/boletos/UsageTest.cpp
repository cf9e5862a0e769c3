#include "boletos/ApplicationFolder.h"

#include <gmock/gmock.h>

// How the program is called: help, wrong usage, catalogs and layouts.

namespace boletos::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;

TEST_F(BoletosTest, HelpIsPortuguese) {
    const Outcome outcome = run({"--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, AllOf(HasSubstr("Uso: boletos"), HasSubstr("Comandos:"), HasSubstr("validar"),
                                   HasSubstr("exportar"), HasSubstr("importar"), HasSubstr("layouts"),
                                   HasSubstr("--version")));
    EXPECT_THAT(outcome.out,
                AllOf(Not(HasSubstr("Usage")), Not(HasSubstr("Options")), Not(HasSubstr("Subcommands"))));
    EXPECT_THAT(outcome.err, IsEmpty());
}

TEST_F(BoletosTest, HelpOfCommandsNamesTheirOptions) {
    const Outcome validar = run({"validar", "--help"});
    EXPECT_EQ(validar.status, 0);
    EXPECT_THAT(validar.out,
                AllOf(HasSubstr("Uso: boletos validar"), HasSubstr("--pasta DIR"), HasSubstr("--layout TAG"),
                      HasSubstr("--formato"), HasSubstr("--saida ARQ"), HasSubstr("ARQUIVO...")));
    EXPECT_THAT(validar.out, AllOf(Not(HasSubstr("Options")), Not(HasSubstr("REQUIRED"))));
    for (const std::string command : {"exportar", "importar"}) {
        const Outcome planilhas = run({command, "--help"});
        EXPECT_EQ(planilhas.status, 0);
        EXPECT_THAT(planilhas.out, AllOf(HasSubstr("Uso: boletos " + command), HasSubstr("--pasta DIR"),
                                         HasSubstr("--layout TAG"),
                                         HasSubstr(command == "exportar" ? "ARQUIVO.xml" : "PLANILHA.xls"),
                                         HasSubstr("Termina com 0"), Not(HasSubstr("REQUIRED"))));
    }
    const Outcome layouts = run({"layouts", "-h"});
    EXPECT_EQ(layouts.status, 0);
    EXPECT_THAT(layouts.out, AllOf(HasSubstr("Uso: boletos layouts"), HasSubstr("--pasta DIR"),
                                   Not(HasSubstr("Options"))));
}

TEST_F(BoletosTest, VersionIsOneLine) {
    const Outcome outcome = run({"--version"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, MatchesRegex("boletos [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

struct Misuse {
    const char* name;
    std::vector<std::string> arguments;
    const char* message;
};
void PrintTo(const Misuse& row, std::ostream* out) {
    *out << row.name;
}

class WrongUsage : public ::testing::TestWithParam<Misuse> {};

TEST_P(WrongUsage, IsToldInPortugueseWithStatusTwo) {
    const Outcome outcome = run(GetParam().arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_EQ(outcome.err, "boletos: " + std::string(GetParam().message) + ".\nVeja 'boletos --help'.\n");
}

INSTANTIATE_TEST_SUITE_P(
    All, WrongUsage,
    ::testing::Values(
        Misuse{"Nothing", {}, "Falta o comando: validar, exportar, importar ou layouts"},
        Misuse{
            "UnknownCommand",
            {"valida"},
            "O comando 'valida' n\u00E3o existe; os comandos s\u00E3o validar, exportar, importar e layouts"},
        Misuse{"UnknownOption",
               {"validar", "--layout", "x", "--xpto", "a.xml"},
               "N\u00E3o se sabe o que fazer com --xpto"},
        Misuse{"ShortOption",
               {"validar", "--layout", "x", "a.xml", "-q"},
               "N\u00E3o se sabe o que fazer com -q"},
        Misuse{"NoLayout", {"validar", "a.xml"}, "Falta a op\u00E7\u00E3o --layout"},
        Misuse{"NoFile", {"validar", "--layout", "x"}, "Falta o nome de um arquivo"},
        Misuse{"NoValue", {"validar", "a.xml", "--layout"}, "Falta o valor da op\u00E7\u00E3o --layout"},
        Misuse{"TwoLayouts",
               {"validar", "--layout", "x", "--layout", "y", "a.xml"},
               "Aparece mais de uma vez: a op\u00E7\u00E3o --layout"},
        Misuse{"UnknownFormat",
               {"validar", "--layout", "x", "--formato", "pdf", "a.xml"},
               "O valor de --formato deve ser texto, json, xml, html ou junit"},
        Misuse{"ExportWithoutLayout", {"exportar", "a.xml"}, "Falta a op\u00E7\u00E3o --layout"},
        Misuse{"ExportWithoutFile", {"exportar", "--layout", "x"}, "Falta o nome de um arquivo"},
        Misuse{"ImportWithoutFile", {"importar", "--layout", "x"}, "Falta o nome de um arquivo"},
        Misuse{"ImportOfTwo",
               {"importar", "--layout", "x", "a.xls", "b.xls"},
               "N\u00E3o se sabe o que fazer com b.xls"},
        Misuse{"ArgumentOfLayouts", {"layouts", "a.xml"}, "N\u00E3o se sabe o que fazer com a.xml"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(BoletosTest, LayoutIsFoundInAnyCase) {
    const std::string file = valid("a.xml");
    for (const char* layout : {"Posicao_1", "posicao_1", "POSICAO_1"}) {
        const Outcome outcome = validar(layout, {"--formato", "json", file});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(jsonOf(outcome.out).at(0).at("layout"), "Posicao_1");
    }
}

TEST_F(BoletosTest, UnknownLayoutNamesThoseThereAre) {
    const Outcome outcome = validar("posicao_9", {valid("a.xml")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_EQ(
        outcome.err,
        "boletos: O layout 'posicao_9' n\u00E3o existe no cat\u00E1logo. Layouts: Posicao_1, ComFormula, "
        "SemValidador, SemEsquema, EsquemaQuebrado, SemFormula\n");
}

TEST_F(BoletosTest, LayoutWithoutAValidatorIsRefused) {
    const Outcome outcome = validar("SemValidador", {valid("a.xml")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "boletos: O layout 'SemValidador' n\u00E3o tem validador.\n");
}

TEST_F(BoletosTest, LayoutsAreListedInTheCatalogsOrder) {
    const Outcome outcome = run({"layouts", "--pasta", app()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(linesOf(outcome.out), ElementsAre("Posicao_1\t1.0\tPosi\u00E7\u00E3o\tsim\tsim",
                                                  "ComFormula\t1.0\tPosi\u00E7\u00E3o\tnao\tsim",
                                                  "SemValidador\t1.0\tPosi\u00E7\u00E3o\tsim\tnao",
                                                  "SemEsquema\t1.0\tPosi\u00E7\u00E3o\tsim\tsim",
                                                  "EsquemaQuebrado\t1.0\tPosi\u00E7\u00E3o\tsim\tsim",
                                                  "SemFormula\t1.0\tPosi\u00E7\u00E3o\tsim\tsim"));
}

TEST_F(BoletosTest, CatalogWithoutLayoutsListsNothing) {
    write("vazio/TORVA_TramadorValidador.xml", catalog(""));
    const Outcome outcome = run({"layouts", "--pasta", (folder / "vazio").string()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, IsEmpty());
}

TEST_F(BoletosTest, ShippedFolderIsTheProgramsOwn) {
    const Outcome outcome = run({"layouts"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, HasSubstr("arquivoposicao_4_01\t4.01.00\t"));
}

TEST_F(BoletosTest, ShippedSampleIsValid) {
    const Outcome outcome = run({"validar", "--layout", "arquivoposicao_4_01",
                                 TV_BINARY_DIR "/amostras/arquivoposicao_4_01/valido_pequeno.xml"});
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
}

TEST_F(BoletosTest, FolderOfTheExecutableIsTheDefault) {
    std::filesystem::copy_file(TV_BINARY_DIR "/boletos", folder / "app/boletos");
    const Outcome outcome = run({"validar", "--layout", "posicao_1", valid("a.xml")},
                                {folder / "app/boletos", folder.path(), -1, -1});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST_F(BoletosTest, CatalogIsFoundInAnyCase) {
    std::filesystem::rename(folder / "app/TORVA_TramadorValidador.xml",
                            folder / "app/torva_tramadorvalidador.XML");
    EXPECT_EQ(run({"layouts", "--pasta", app()}).status, 0);
}

TEST_F(BoletosTest, RelativeFoldersAreThoseOfTheWorkingFolder) {
    valid("a.xml");
    const Outcome outcome =
        run({"validar", "--pasta", "app", "--layout", "posicao_1", "a.xml"}, {{}, folder.path(), -1, -1});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
}

// --- catalogs that do not load

struct BadCatalog {
    const char* name;
    std::string text;
    const char* reason;
};
void PrintTo(const BadCatalog& row, std::ostream* out) {
    *out << row.name;
}

class BadCatalogs : public BoletosTest, public ::testing::WithParamInterface<BadCatalog> {};

TEST_P(BadCatalogs, AreTheEndOfTheCallWithTheirReason) {
    write("app/TORVA_TramadorValidador.xml", GetParam().text);
    const std::string start =
        "boletos: O cat\u00E1logo '" + app() + "/TORVA_TramadorValidador.xml' n\u00E3o p\u00F4de ser lido: ";
    for (const Outcome& outcome :
         {validar("posicao_1", {valid("a.xml")}), run({"layouts", "--pasta", app()})}) {
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.out, IsEmpty());
        EXPECT_THAT(outcome.err, AllOf(StartsWith(start), HasSubstr(GetParam().reason)));
        EXPECT_GT(outcome.err.size(), start.size() + 5);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, BadCatalogs,
    ::testing::Values(
        BadCatalog{"Empty", "", ""}, BadCatalog{"NotWellFormed", "<TORVA><app>", "1"},
        BadCatalog{"AnotherDocument", "<outra/>", ""},
        BadCatalog{"LayoutTwice", catalog(boleto("A", "a.xsd") + boleto("a", "a.xsd")), "a"},
        BadCatalog{"BadNumber",
                   catalog("<BOLETO tag='A' nome='A' versao='1' validador='' formula='' tramador='SIM' "
                           "nomeGrupo='' tagGrupo=''><SECAO tag='s' nome='s' ocorrencia='1' "
                           "secaoMestre='NAO' nomeGrupo='' tagGrupo=''><CAMPO tag='c' campoChave='NAO'>"
                           "<OBSERVACAO/><DADO tipo='TEXTO' tamanho='dez' mandatorio='N' validacao='' "
                           "default=''/></CAMPO></SECAO></BOLETO>"),
                   ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(BoletosTest, MissingCatalogIsToldWithItsPlace) {
    std::filesystem::remove(folder / "app/TORVA_TramadorValidador.xml");
    const Outcome outcome = run({"layouts", "--pasta", app()});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("O cat\u00E1logo '" + app() + "/TORVA_TramadorValidador.xml'"),
                                   HasSubstr("n\u00E3o encontrado")));
}

TEST_F(BoletosTest, MissingFolderIsTold) {
    const Outcome outcome = run({"layouts", "--pasta", (folder / "nada").string()});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("n\u00E3o p\u00F4de ser lido"));
}

} // namespace
} // namespace boletos::test
