#include "app/clsTramadorValidador.h"
#include "logging/LogFolder.h"
#include "logging/streamTXT.h"
#include "logging/streamXML.h"
#include "model/LayoutXml.h"
#include "model/clsSecao.h"
#include "platform/Clock.h"
#include "platform/Files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv {
namespace {

namespace level = library::level;
using test::BoletoXml;
using test::CampoXml;
using test::GlobalLogger;
using test::occurrences;
using test::SecaoXml;
using test::TemporaryFolder;
using test::without;

constexpr const char* fileName = "TORVA_TramadorValidador.xml";

/// A catalog of which a test names the parts that it is about.
struct CatalogXml {
    std::string app = "<app><titulo>Boletos</titulo><versao>1.2</versao>"
                      "<site><caption>Página</caption><link>http://localhost/</link></site>"
                      "<email><caption>Contato</caption><link>mailto:a@localhost</link></email>"
                      "<descricao>Um catálogo</descricao></app>";
    std::string logger = "<logger type='TXT' level='OFF'/>";
    std::string tabelas{};
    std::string boletos{};

    std::string xml() const {
        return "<?xml version='1.0' encoding='UTF-8'?>\n<CATALOGO>" + app + logger +
               "<configuracao><TABELAS>" + tabelas + "</TABELAS></configuracao>" + boletos + "</CATALOGO>";
    }
};

std::string tabela(const std::string& id, const std::string& entradas) {
    return "<TABELA id='" + id + "'>" + entradas + "</TABELA>";
}

std::string entrada(const std::string& valor, const std::string& descricao) {
    return "<ENTRADA valor='" + valor + "' descricao='" + descricao + "'/>";
}

struct CatalogTest : ::testing::Test {
    TemporaryFolder folder;
    clock::Frozen now{clock::at(2024, 3, 5, 14, 7, 9)};
    GlobalLogger global{nullptr};

    std::unique_ptr<clsTramadorValidador> load(const CatalogXml& xml) {
        folder.write(fileName, xml.xml());
        auto catalog = std::make_unique<clsTramadorValidador>();
        EXPECT_TRUE(catalog->load(folder.text(), fileName)) << catalog->lastReason();
        return catalog;
    }
    std::int32_t errorOf(const CatalogXml& xml) {
        folder.write(fileName, xml.xml());
        try {
            clsTramadorValidador catalog;
            catalog.load(folder.text(), fileName);
        } catch (const Error& error) {
            reason = error.description();
            return error.number();
        }
        return 0;
    }
    std::string reason; ///< Of the last errorOf.
};

TEST_F(CatalogTest, ReadsTheApplicationsData) {
    const auto catalog = load({});
    EXPECT_EQ(catalog->getTitulo(), "Boletos");
    EXPECT_EQ(catalog->getVersao(), "1.2");
    EXPECT_EQ(catalog->getSite(), "Página");
    EXPECT_EQ(catalog->getSiteLink(), "http://localhost/");
    EXPECT_EQ(catalog->getEmail(), "Contato");
    EXPECT_EQ(catalog->getEmailLink(), "mailto:a@localhost");
    EXPECT_EQ(catalog->getDescricao(), "Um catálogo");
    EXPECT_EQ(catalog->getPath(), folder.text());
    EXPECT_EQ(catalog->lastReason(), "");
}

TEST_F(CatalogTest, IsEmptyBeforeTheLoad) {
    const clsTramadorValidador catalog;
    EXPECT_EQ(catalog.getLogger(), nullptr);
    EXPECT_TRUE(catalog.getBoletos().empty());
    ASSERT_NE(catalog.getTabelas(), nullptr);
    EXPECT_TRUE(catalog.getTabelas()->empty());
}

TEST_F(CatalogTest, LoadsWithoutAnyLayout) {
    const auto catalog = load({});
    EXPECT_TRUE(catalog->getBoletos().empty());
    EXPECT_TRUE(catalog->getTabelas()->empty());
}

TEST_F(CatalogTest, ReadsTables) {
    const auto catalog =
        load({.tabelas = tabela("titulos", entrada("LFT", "Letra") + "<OUTRA/>" + entrada("NTN", "Nota")) +
                         tabela("vazia", "")});
    ASSERT_EQ(catalog->getTabelas()->Count(), 2U);
    const clsTabela& titulos = *catalog->getTabelas()->Item("TITULOS");
    EXPECT_EQ(titulos.key, "titulos");
    ASSERT_EQ(titulos.linha.Count(), 2U);
    EXPECT_EQ(titulos.linha.Item(std::size_t{1}).key, "LFT");
    EXPECT_EQ(titulos.linha.Item(std::size_t{1}).valor, "Letra");
    EXPECT_EQ(titulos.linha.Item("ntn").valor, "Nota");
    EXPECT_TRUE(catalog->getTabelas()->Item("vazia")->linha.empty());
}

TEST_F(CatalogTest, TablesOutsideOfTheConfigurationAreNotRead) {
    const auto catalog = load({.boletos = "<TABELAS>" + tabela("x", "") + "</TABELAS>"});
    EXPECT_TRUE(catalog->getTabelas()->empty());
}

TEST_F(CatalogTest, TablesThatDifferOnlyInCaseFail) {
    EXPECT_EQ(errorOf({.tabelas = tabela("titulos", "") + tabela("TITULOS", "")}), 457);
}

TEST_F(CatalogTest, EntriesWithOneValueFail) {
    EXPECT_EQ(errorOf({.tabelas = tabela("t", entrada("A", "1") + entrada("A", "2"))}), 457);
    EXPECT_EQ(errorOf({.tabelas = tabela("t", entrada("A", "1") + entrada("a", "2"))}), 457);
}

TEST_F(CatalogTest, LayoutsWithOneTagFail) {
    EXPECT_EQ(errorOf({.boletos = BoletoXml().xml() + BoletoXml{.tag = "POSICAO"}.xml()}), 457);
}

std::string layoutWithTable(const std::string& table) {
    return BoletoXml{.inside = SecaoXml{.inside = CampoXml{.tabela = table}.xml()}.xml()}.xml();
}

TEST_F(CatalogTest, ColumnOfAnUndeclaredTableFails) {
    EXPECT_EQ(errorOf({.tabelas = tabela("titulos", ""), .boletos = layoutWithTable("ausente")}), 5);
}

TEST_F(CatalogTest, ColumnMayNameATableWhicheverStandsFirst) {
    const std::string tables =
        "<configuracao><TABELAS>" + tabela("titulos", entrada("LFT", "Letra")) + "</TABELAS></configuracao>";
    for (const std::string& content :
         {tables + layoutWithTable("titulos"), layoutWithTable("titulos") + tables}) {
        const auto catalog = load({.boletos = content});
        EXPECT_TRUE(catalog->getBoletos().Item("posicao")->GetChild("fundo").GetChild("cod").isValido("LFT"));
        EXPECT_EQ(errorOf({.boletos = text::replaceAll(content, "tabela='titulos'", "tabela='outra'")}), 5);
    }
}

TEST_F(CatalogTest, LayoutsAreFoundAnywhereInTheOrderOfTheFile) {
    const auto catalog =
        load({.boletos = "<a><b>" + BoletoXml{.tag = "z"}.xml() + "</b></a>" + BoletoXml{.tag = "m"}.xml() +
                         "<c>" + BoletoXml{.tag = "a"}.xml() + "</c>"});
    ASSERT_EQ(catalog->getBoletos().Count(), 3U);
    EXPECT_EQ(catalog->getBoletos().Item(std::size_t{1})->getTag(), "z");
    EXPECT_EQ(catalog->getBoletos().Item(std::size_t{2})->getTag(), "m");
    EXPECT_EQ(catalog->getBoletos().Item(std::size_t{3})->getTag(), "a");
}

TEST_F(CatalogTest, LayoutsGetTheCatalogsTablesAndFolder) {
    const auto schema = folder.write("XSD/Posicao.xsd", "<x/>");
    const auto catalog = load({.boletos = BoletoXml{.validador = "POSICAO.XSD"}.xml()});
    const clsBoleto& boleto = *catalog->getBoletos().Item("posicao");
    EXPECT_EQ(boleto.getTabelas(), catalog->getTabelas());
    EXPECT_EQ(boleto.getValidador(), schema.string());
}

TEST_F(CatalogTest, AHeldLayoutOutlivesTheCatalog) {
    auto catalog =
        load({.tabelas = tabela("titulos", entrada("LFT", "Letra")), .boletos = layoutWithTable("titulos")});
    const std::shared_ptr<const clsBoleto> boleto = catalog->getBoletos().Item("posicao");
    catalog.reset();
    EXPECT_TRUE(boleto->GetChild("fundo").GetChild("cod").isValido("LFT"));
}

TEST_F(CatalogTest, EachMissingTextRaisesError91) {
    const CatalogXml whole;
    for (const char* part : {"<titulo>Boletos</titulo>", "<versao>1.2</versao>", "<caption>Página</caption>",
                             "<link>http://localhost/</link>", "<caption>Contato</caption>",
                             "<link>mailto:a@localhost</link>", "<descricao>Um catálogo</descricao>"}) {
        CatalogXml cut;
        cut.app = text::replaceAll(whole.app, part, "");
        ASSERT_NE(cut.app, whole.app) << part;
        EXPECT_EQ(errorOf(cut), 91) << part;
    }
    EXPECT_EQ(errorOf({.app = ""}), 91);
}

TEST_F(CatalogTest, MissingAttributesRaiseError91) {
    EXPECT_EQ(errorOf({.logger = ""}), 91);
    EXPECT_EQ(errorOf({.logger = "<logger type='TXT'/>"}), 91);
    EXPECT_EQ(errorOf({.logger = "<logger level='OFF'/>"}), 91);
    EXPECT_EQ(errorOf({.tabelas = "<TABELA/>"}), 91);
    EXPECT_EQ(errorOf({.tabelas = tabela("t", without(entrada("A", "1"), "valor"))}), 91);
    EXPECT_EQ(errorOf({.tabelas = tabela("t", without(entrada("A", "1"), "descricao"))}), 91);
    EXPECT_EQ(errorOf({.boletos = without(BoletoXml().xml(), "validador")}), 91);
}

TEST_F(CatalogTest, WhatIsMissingIsNamed) {
    errorOf({.logger = ""});
    EXPECT_EQ(reason, "Falta no catálogo o elemento 'logger'");
    errorOf({.tabelas = "\n<TABELA/>"});
    EXPECT_THAT(reason,
                ::testing::MatchesRegex("O elemento 'TABELA' da linha [0-9]+ não tem o atributo 'id'"));
    errorOf({.boletos = without(BoletoXml().xml(), "validador")});
    EXPECT_THAT(reason, ::testing::HasSubstr("'BOLETO'"));
    EXPECT_THAT(reason, ::testing::HasSubstr("'validador'"));
}

TEST_F(CatalogTest, EmptyTextsOfTheApplicationAreAllowed) {
    const auto catalog = load({.app = text::replaceAll(CatalogXml().app, "Um catálogo", "")});
    EXPECT_EQ(catalog->getDescricao(), "");
}

TEST_F(CatalogTest, MissingFileGivesFalse) {
    clsTramadorValidador catalog;
    EXPECT_FALSE(catalog.load(folder.text(), fileName));
    EXPECT_EQ(catalog.getLogger(), nullptr);
    EXPECT_EQ(oLogger, nullptr);
    EXPECT_NE(catalog.lastReason(), "");
}

TEST_F(CatalogTest, MalformedFileGivesFalseAndNoLog) {
    folder.write(fileName, "<CATALOGO><app>");
    clsTramadorValidador catalog;
    EXPECT_FALSE(catalog.load(folder.text(), fileName));
    EXPECT_EQ(catalog.getLogger(), nullptr);
    EXPECT_NE(catalog.lastReason(), "");
    EXPECT_EQ(folder.countFiles(), 1U);
}

TEST_F(CatalogTest, FileIsFoundInWhateverCaseItIsWritten) {
    folder.write("torva_tramadorvalidador.XML", CatalogXml().xml());
    clsTramadorValidador catalog;
    EXPECT_TRUE(catalog.load(folder.text(), fileName));
}

struct LoggerCase {
    const char* type;
    const char* level;
    bool isText;
    std::int16_t expected;
};

void PrintTo(const LoggerCase& c, std::ostream* out) {
    *out << c.type << "/" << c.level;
}

struct CatalogLoggerTest : CatalogTest, ::testing::WithParamInterface<LoggerCase> {};

TEST_P(CatalogLoggerTest, MakesTheLoggerOfTheTexts) {
    const LoggerCase& c = GetParam();
    const auto catalog =
        load({.logger = std::string("<logger type='") + c.type + "' level='" + c.level + "'/>"});
    ASSERT_NE(catalog->getLogger(), nullptr);
    EXPECT_EQ(oLogger, catalog->getLogger());
    EXPECT_EQ(oLogger->getLevel(), c.expected);
    EXPECT_EQ(oLogger->getStream()->getFileExtension(), c.isText ? "txt" : "xml");
    EXPECT_EQ(oLogger->appTitle(), "Boletos");
    EXPECT_EQ(oLogger->appVersion(), "1.2");
    EXPECT_EQ(folder.holds(c.isText ? "log20240305.txt" : "log20240305.xml"), c.expected > 0);
    EXPECT_EQ(oLogger->getFilename(),
              (folder.path() / (c.isText ? "log20240305.txt" : "log20240305.xml")).string());
}

INSTANTIATE_TEST_SUITE_P(
    Texts, CatalogLoggerTest,
    ::testing::Values(
        LoggerCase{"TXT", "OFF", true, level::off}, LoggerCase{"TXT", "INFO", true, level::info},
        LoggerCase{"TXT", "WARN", true, level::warn}, LoggerCase{"XML", "FATAL", false, level::fatal},
        LoggerCase{"XML", "ALL", false, level::all}, LoggerCase{"txt", "all", true, level::all},
        LoggerCase{"xml", "Fatal", false, level::fatal}, LoggerCase{"CSV", "INFO", false, level::info},
        LoggerCase{"", "", false, level::off}, LoggerCase{"outro", "tudo", false, level::off},
        LoggerCase{"TXT", "STACK", true, level::off}, LoggerCase{"TXT", " ALL", true, level::off}));

TEST_F(CatalogTest, ItsEndWritesTheClosingBanner) {
    auto catalog = load({.logger = "<logger type='TXT' level='INFO'/>"});
    oLogger->callStack.push("mdiMain.load");
    EXPECT_EQ(occurrences(folder.read("log20240305.txt"), "Término de Execução"), 0U);
    catalog.reset();
    const std::string log = folder.read("log20240305.txt");
    EXPECT_EQ(occurrences(log, " - END    mdiMain.load"), 1U);
    EXPECT_EQ(occurrences(log, "Término de Execução"), 1U);
    EXPECT_TRUE(oLogger->callStack.EOF_()) << "the global logger stays, with nothing on its stack";
}

TEST_F(CatalogTest, ARestartWritesASecondRunIntoTheSameFile) {
    objTramadorValidador = load({.logger = "<logger type='TXT' level='INFO'/>"});
    objTramadorValidador.reset();
    objTramadorValidador = load({.logger = "<logger type='TXT' level='INFO'/>"});
    objTramadorValidador.reset();
    const std::string log = folder.read("log20240305.txt");
    EXPECT_EQ(occurrences(log, "KVO Logger"), 1U);
    EXPECT_EQ(occurrences(log, "Início de Execução"), 2U);
    EXPECT_EQ(occurrences(log, "Término de Execução"), 2U);
}

TEST_F(CatalogTest, NothingIsLoggedOfAFaultInTheContent) {
    EXPECT_EQ(errorOf({.logger = "<logger type='TXT' level='ALL'/>", .boletos = layoutWithTable("ausente")}),
              5);
    const std::string log = folder.read("log20240305.txt");
    EXPECT_EQ(occurrences(log, "FATAL"), 0U);
    EXPECT_EQ(occurrences(log, "STACK"), 0U);
}

TEST_F(CatalogTest, LogFileThatCannotBeOpenedGivesATextLogInTheProgramsFolder) {
    // A day of its own keeps the file apart from other logs in the folder of the test program.
    const clock::Frozen someDay(clock::at(1999, 12, 31, 23, 59, 58));
    std::filesystem::create_directory(folder.path() / "log19991231.xml");
    const std::filesystem::path fallback = files::executableFolder() / "log19991231.txt";
    std::filesystem::remove(fallback);
    {
        const auto catalog = load({.logger = "<logger type='XML' level='WARN'/>"});
        EXPECT_EQ(catalog->getTitulo(), "Boletos");
        EXPECT_EQ(oLogger, catalog->getLogger());
        EXPECT_EQ(oLogger->getLevel(), level::all);
        EXPECT_EQ(oLogger->getFilename(), fallback.string());
        EXPECT_TRUE(oLogger->callStack.EOF_());
    }
    const std::string log = files::readAll(fallback);
    EXPECT_EQ(occurrences(log, "X Application: Boletos "), 1U);
    EXPECT_EQ(occurrences(log, "23:59:58 - STACK  clsTramadorValidador.setLogger\r\n"), 1U);
    EXPECT_EQ(occurrences(log, "23:59:58 - FATAL  clsTramadorValidador.setLogger"), 1U);
    EXPECT_EQ(occurrences(log, "log19991231.xml"), 1U);
    EXPECT_EQ(occurrences(log, "23:59:58 - END    clsTramadorValidador.setLogger\r\n"), 1U);
    std::filesystem::remove(fallback);
}

} // namespace
} // namespace tv
