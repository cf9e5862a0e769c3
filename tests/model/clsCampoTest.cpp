#include "model/clsCampo.h"
#include "logging/LogFolder.h"
#include "model/LayoutXml.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::CampoXml;
using test::GlobalLogger;
using test::occurrences;
using test::startLogger;
using test::tables;
using test::TemporaryFolder;
using test::without;

clsCampo campoOf(const CampoXml& xml) {
    clsCampo campo;
    campo.setEstrutura(xml.xml(), tables());
    return campo;
}

std::int32_t errorOf(const std::string& xml) {
    try {
        clsCampo campo;
        campo.setEstrutura(xml, tables());
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

struct ValueCase {
    const char* name;
    CampoXml field;
    std::string value;
    bool expected;
};

void PrintTo(const ValueCase& c, std::ostream* out) {
    *out << c.name << " '" << c.value << "'";
}

struct FieldValueTest : ::testing::TestWithParam<ValueCase> {};

TEST_P(FieldValueTest, JudgesTheValue) {
    EXPECT_EQ(campoOf(GetParam().field).isValido(GetParam().value), GetParam().expected);
}

const CampoXml optional;
const CampoXml mandatory{.mandatorio = "S"};
const CampoXml optionalCnpj{.validacao = "CNPJ"};
const CampoXml mandatoryCnpj{.mandatorio = "S", .validacao = "CNPJ"};
const CampoXml optionalData{.validacao = "DATA"};
const CampoXml mandatoryData{.mandatorio = "S", .validacao = "Data"};
const CampoXml optionalTable{.tabela = "titulos"};
const CampoXml mandatoryTable{.mandatorio = "S", .tabela = "titulos"};
const CampoXml maskedTable{.mandatorio = "S", .maskOutput = "0000", .tabela = "titulos"};
const CampoXml tableOverRule{.validacao = "DATA", .tabela = "titulos"};
const CampoXml ruleWithoutTable{.validacao = "Tabela"};
const CampoXml mandatoryRuleWithoutTable{.mandatorio = "S", .validacao = "tabela"};

INSTANTIATE_TEST_SUITE_P(
    Values, FieldValueTest,
    ::testing::Values(
        ValueCase{"MandatoryCnpjEmpty", mandatoryCnpj, "", false},
        ValueCase{"OptionalCnpjEmpty", optionalCnpj, "", true},
        ValueCase{"CnpjSound", mandatoryCnpj, " 11222333000181 ", true},
        ValueCase{"CnpjUnsound", optionalCnpj, "11222333000182", false},
        ValueCase{"OptionalDataBlank", optionalData, "   ", true},
        ValueCase{"DataInLowerCaseIsTheSameRule", mandatoryData, "20090229", false},
        ValueCase{"DataSound", mandatoryData, "20240115", true},
        ValueCase{"MandatoryTableBlank", mandatoryTable, "  ", false},
        ValueCase{"OptionalTableBlank", optionalTable, "  ", true},
        ValueCase{"TableValue", mandatoryTable, "LFT", true},
        ValueCase{"TableValueWithBlanksAround", mandatoryTable, " LFT ", true},
        ValueCase{"TableValueInAnotherCase", mandatoryTable, "lft", false},
        ValueCase{"TableValueInTheFormOfItsMask", maskedTable, "1", true},
        ValueCase{"TableValueThatTheMaskDoesNotTouch", maskedTable, "LFT", true},
        ValueCase{"TableValueThatTheMaskChanges", maskedTable, "2", false},
        ValueCase{"TableGoesBeforeTheRule", tableOverRule, "20240115", true},
        ValueCase{"TableGoesBeforeTheRuleNo", tableOverRule, "20240116", false},
        ValueCase{"NoRuleOptional", optional, "qualquer texto", true},
        ValueCase{"NoRuleOptionalEmpty", optional, "", true},
        ValueCase{"NoRuleMandatory", mandatory, "x", true},
        ValueCase{"NoRuleMandatoryBlank", mandatory, "   ", false},
        ValueCase{"TabsAreNoBlanks", mandatory, "\t", true},
        ValueCase{"TypeTakesNoPart", CampoXml{.tipo = "INTEIRO", .mandatorio = "S"}, "palavra", true},
        ValueCase{"SizeTakesNoPart", CampoXml{.tamanho = "1"}, "comprido", true},
        ValueCase{"UnknownRule", CampoXml{.mandatorio = "S", .validacao = "CPF"}, "x", true},
        ValueCase{"RuleNameIsNotTrimmed", CampoXml{.mandatorio = "S", .validacao = " DATA"}, "x", true},
        ValueCase{"TableRuleWithoutTableEmpty", ruleWithoutTable, "", true},
        ValueCase{"TableRuleWithoutTable", ruleWithoutTable, "LFT", false},
        ValueCase{"MandatoryTableRuleWithoutTable", mandatoryRuleWithoutTable, "", false},
        ValueCase{"MandatorioSimIsNo", CampoXml{.mandatorio = "SIM"}, "", true},
        ValueCase{"MandatorioInLowerCase", CampoXml{.mandatorio = "s"}, "", false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CampoTest, TableRuleWithoutTableIsLogged) {
    const TemporaryFolder folder;
    const clock::Frozen now(clock::at(2024, 3, 5));
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, library::level::all));
    const clsCampo campo = campoOf(ruleWithoutTable);
    EXPECT_TRUE(campo.isValido(""));
    EXPECT_EQ(occurrences(folder.read("log20240305.txt"), "isValorTabela"), 0U);
    EXPECT_FALSE(campo.isValido("LFT"));
    EXPECT_EQ(occurrences(folder.read("log20240305.txt"), " - FATAL  bibliotecaKVO.isValorTabela"), 1U);
    EXPECT_EQ(occurrences(folder.read("log20240305.txt"), "[91]]"), 1U);
}

TEST(CampoTest, ReadsItsElement) {
    const clsCampo campo = campoOf({.tag = " cod ",
                                    .campoChave = " sim ",
                                    .observacao = " Um campo ",
                                    .tipo = "DATA",
                                    .validacao = "DATA",
                                    .titulo = "Código"});
    EXPECT_EQ(campo.getTag(), "cod");
    EXPECT_TRUE(campo.isCampoChave());
    EXPECT_TRUE(campo.isKeyField());
    EXPECT_EQ(campo.getDescricao(), "Um campo");
    EXPECT_EQ(campo.getNome(), "Código");
    EXPECT_EQ(campo.getDado().getTipo(), 133);
    EXPECT_EQ(campo.getColuna().getLargura(), 1500);
    EXPECT_EQ(campo.getValidacao(), "DATA");
    EXPECT_FALSE(campo.hasTabela());
    EXPECT_TRUE(campo.hasParent());
}

TEST(CampoTest, CampoChaveTakesOnlyTheWordSim) {
    struct {
        const char* word;
        bool chave;
    } const table[] = {{"SIM", true}, {"sim", true},  {" Sim ", true},
                       {"S", false},  {"NAO", false}, {"", false}};
    for (const auto& row : table) {
        EXPECT_EQ(campoOf({.campoChave = row.word}).isCampoChave(), row.chave) << "'" << row.word << "'";
    }
}

TEST(CampoTest, FieldOfATableSharesItsEntries) {
    const std::shared_ptr<const Tabelas> all = tables();
    clsCampo campo;
    campo.setEstrutura(CampoXml{.validacao = "DATA", .tabela = "TITULOS"}.xml(), all);
    EXPECT_TRUE(campo.hasTabela());
    EXPECT_EQ(campo.getTabela().get(), &all->Item("titulos")->linha);
    EXPECT_EQ(campo.getValidacao(), "Tabela");
}

TEST(CampoTest, MissingItemsRaiseError91) {
    const CampoXml xml;
    const std::string whole = xml.xml();
    EXPECT_EQ(errorOf(whole), 0);
    EXPECT_EQ(errorOf(without(whole, "tag")), 91);
    EXPECT_EQ(errorOf(without(whole, "campoChave")), 91);
    const auto cut = [&whole](const std::string& part) {
        std::string rest = whole;
        return rest.erase(rest.find(part), part.size());
    };
    EXPECT_EQ(errorOf(cut("<OBSERVACAO>Um campo</OBSERVACAO>")), 91);
    EXPECT_EQ(errorOf(cut(xml.dado())), 91);
    EXPECT_EQ(errorOf(cut(xml.coluna())), 91);
}

TEST(CampoTest, EmptyRemarkRaisesError91) {
    EXPECT_EQ(errorOf(CampoXml{.observacao = ""}.xml()), 91);
}

TEST(CampoTest, UnknownTableRaisesError5) {
    EXPECT_EQ(errorOf(CampoXml{.tabela = "ausente"}.xml()), 5);
    EXPECT_EQ(errorOf(CampoXml{.tabela = " "}.xml()), 5);
}

TEST(CampoTest, TableWithoutACatalogRaisesError91) {
    clsCampo campo;
    try {
        campo.setEstrutura(CampoXml{.tabela = "titulos"}.xml(), nullptr);
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 91);
    }
}

TEST(CampoTest, TextThatDoesNotParseLeavesTheFieldEmpty) {
    clsCampo campo;
    campo.setEstrutura("<CAMPO tag='x'>", tables());
    EXPECT_EQ(campo.getTag(), "");
    EXPECT_THROW(campo.getDado(), Error);
    EXPECT_THROW(campo.getColuna(), Error);
    EXPECT_THROW(campo.getNome(), Error);
    EXPECT_FALSE(campo.isValido("x")) << "a failure counts as false";
}

TEST(CampoTest, RuleFollowsTheSetters) {
    clsCampo campo = campoOf(optional);
    EXPECT_TRUE(campo.isValido("x"));
    clsDado dado;
    dado.setValidacao("data");
    campo.setDado(dado);
    EXPECT_FALSE(campo.isValido("x"));
    campo.setDescricao("  outra  ");
    EXPECT_EQ(campo.getDescricao(), "outra");
}

TEST(CampoTest, OffersNoChild) {
    const clsCampo campo = campoOf(optional);
    try {
        campo.GetChild("x");
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 438);
    }
    EXPECT_EQ(campo.findChild("x"), nullptr);
}

} // namespace
} // namespace tv
