#include "model/clsBoleto.h"
#include "logging/LogFolder.h"
#include "model/LayoutXml.h"
#include "model/clsSecao.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::BoletoXml;
using test::CampoXml;
using test::SecaoXml;
using test::tables;
using test::TemporaryFolder;
using test::without;

clsBoleto boletoOf(const std::string& xml, const std::string& path = "/tv") {
    clsBoleto boleto;
    boleto.setEstrutura(xml, tables(), path);
    return boleto;
}

std::int32_t errorOf(const std::string& xml) {
    try {
        boletoOf(xml);
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

TEST(BoletoTest, ReadsItsAttributesTrimmed) {
    const clsBoleto boleto = boletoOf(BoletoXml{.tag = " posicao ",
                                                .nome = " Posição ",
                                                .versao = " 4.01 ",
                                                .nomeGrupo = " Fundos ",
                                                .tagGrupo = " fundos "}
                                          .xml());
    EXPECT_EQ(boleto.getTag(), "posicao");
    EXPECT_EQ(boleto.getNome(), "Posição");
    EXPECT_EQ(boleto.getVersao(), "4.01");
    EXPECT_EQ(boleto.getNomeGrupo(), "Fundos");
    EXPECT_EQ(boleto.getTagGrupo(), "fundos");
    EXPECT_EQ(boleto.getFilename(), "");
    EXPECT_EQ(boleto.getSecaoChild(), nullptr);
    EXPECT_NE(boleto.getTabelas(), nullptr);
}

TEST(BoletoTest, TituloPutsTheVersionInBrackets) {
    EXPECT_EQ(boletoOf(BoletoXml{.nome = "Posição", .versao = "4.01"}.xml()).getTitulo(), "Posição (4.01)");
}

TEST(BoletoTest, TramadorTakesOnlyTheWordSim) {
    struct {
        const char* word;
        bool tramador;
    } const table[] = {{"SIM", true}, {" sim ", true}, {"Sim", true},
                       {"S", false},  {"NAO", false},  {"", false}};
    for (const auto& row : table) {
        EXPECT_EQ(boletoOf(BoletoXml{.tramador = row.word}.xml()).hasTramador(), row.tramador) << row.word;
    }
}

TEST(BoletoTest, EmptyValidatorMeansNone) {
    for (const char* name : {"", "   "}) {
        const clsBoleto boleto = boletoOf(BoletoXml{.validador = name, .formula = name}.xml());
        EXPECT_FALSE(boleto.hasValidador());
        EXPECT_FALSE(boleto.hasFormula());
        EXPECT_EQ(boleto.getValidador(), "");
        EXPECT_EQ(boleto.getFormula(), "");
    }
}

TEST(BoletoTest, EachMissingAttributeRaisesError91) {
    for (const char* name :
         {"nome", "versao", "tag", "validador", "formula", "tramador", "nomeGrupo", "tagGrupo"}) {
        EXPECT_EQ(errorOf(without(BoletoXml().xml(), name)), 91) << name;
    }
}

TEST(BoletoTest, SchemaAndFormulaLieInTheFolderXsd) {
    const clsBoleto boleto =
        boletoOf(BoletoXml{.validador = "posicao.xsd ", .formula = "somas.xsl"}.xml(), "/tv");
    EXPECT_TRUE(boleto.hasValidador());
    EXPECT_TRUE(boleto.hasFormula());
    EXPECT_EQ(boleto.getValidador(), "/tv/XSD/posicao.xsd");
    EXPECT_EQ(boleto.getFormula(), "/tv/XSD/somas.xsl");
}

TEST(BoletoTest, SchemaIsFoundInWhateverCaseItIsWritten) {
    const TemporaryFolder folder;
    const auto schema = folder.write("xsd/Posicao.XSD", "<x/>");
    const clsBoleto boleto = boletoOf(BoletoXml{.validador = "posicao.xsd"}.xml(), folder.text());
    EXPECT_EQ(boleto.getValidador(), schema.string());
}

TEST(BoletoTest, WithoutSectionsItLoads) {
    const clsBoleto boleto = boletoOf(BoletoXml().xml());
    EXPECT_TRUE(boleto.getSecoes().empty());
    EXPECT_EQ(boleto.getSecaoMestre(), nullptr);
}

TEST(BoletoTest, HasAGroupOnlyWhenNameAndTagAreFilled) {
    struct {
        const char* nome;
        const char* tag;
        bool grupo;
    } const table[] = {{"Fundos", "fundos", true},
                       {"Fundos", "", false},
                       {"", "fundos", false},
                       {"Fundos", "  ", false},
                       {"", "", false}};
    for (const auto& row : table) {
        EXPECT_EQ(boletoOf(BoletoXml{.nomeGrupo = row.nome, .tagGrupo = row.tag}.xml()).hasGrupo(), row.grupo)
            << row.nome << "/" << row.tag;
    }
}

const SecaoXml master{
    .tag = "fundo", .inside = CampoXml{.tag = "cnpj", .campoChave = "SIM"}.xml(), .secaoMestre = "SIM"};

TEST(BoletoTest, SectionsAndMasterComeFromItsChildren) {
    const clsBoleto boleto =
        boletoOf(BoletoXml{.inside = master.xml() + SecaoXml{.tag = "titulo"}.xml()}.xml());
    ASSERT_EQ(boleto.getSecoes().Count(), 2U);
    EXPECT_EQ(boleto.getSecoes().Item(std::size_t{1})->getTag(), "fundo");
    EXPECT_EQ(boleto.getSecoes().Item(std::size_t{2})->getTag(), "titulo");
    EXPECT_EQ(boleto.getSecaoMestre(), boleto.getSecoes().Item("fundo"));
}

TEST(BoletoTest, PathOfTheKeyField) {
    EXPECT_EQ(boletoOf(BoletoXml{.inside = master.xml()}.xml()).getPathCampoChave(), "posicao.fundo.cnpj");
    EXPECT_EQ(boletoOf(BoletoXml{.inside = master.xml(), .nomeGrupo = "Fundos", .tagGrupo = "fundos"}.xml())
                  .getPathCampoChave(),
              "posicao.fundos.fundo.cnpj");
}

TEST(BoletoTest, PathOfTheKeyFieldFailsWithoutOne) {
    EXPECT_THROW(boletoOf(BoletoXml().xml()).getPathCampoChave(), Error);
    EXPECT_THROW(
        boletoOf(BoletoXml{.inside = SecaoXml{.secaoMestre = "SIM"}.xml()}.xml()).getPathCampoChave(), Error);
}

TEST(BoletoTest, WalkingProtocol) {
    const clsBoleto boleto = boletoOf(BoletoXml{.inside = master.xml()}.xml());
    EXPECT_TRUE(boleto.isValido("qualquer"));
    EXPECT_FALSE(boleto.isKeyField());
    EXPECT_FALSE(boleto.hasParent());
    EXPECT_EQ(&boleto.GetChild("fundo"), boleto.getSecoes().Item("fundo").get());
    EXPECT_EQ(boleto.findChild("FUNDO"), boleto.getSecoes().Item("fundo").get());
    EXPECT_EQ(boleto.findChild("ausente"), nullptr);
    try {
        boleto.GetChild("ausente");
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 5);
    }
}

TEST(BoletoTest, TextThatDoesNotParseLeavesItEmpty) {
    const clsBoleto boleto = boletoOf("<BOLETO nome='x'");
    EXPECT_EQ(boleto.getNome(), "");
    EXPECT_NE(boleto.getTabelas(), nullptr);
    EXPECT_TRUE(boleto.getSecoes().empty());
}

TEST(BoletoTest, FaultsBelowComeOutUnchanged) {
    EXPECT_EQ(errorOf(BoletoXml{.inside = SecaoXml{.inside = CampoXml{.largura = "x"}.xml()}.xml()}.xml()),
              13);
    EXPECT_EQ(errorOf(BoletoXml{.inside = SecaoXml{.inside = CampoXml{.tabela = "x"}.xml()}.xml()}.xml()), 5);
    EXPECT_EQ(errorOf(BoletoXml{.inside = SecaoXml().xml() + SecaoXml().xml()}.xml()), 457);
}

TEST(BoletoTest, KeepsItsTablesAlive) {
    std::shared_ptr<const Tabelas> all = tables();
    clsBoleto boleto;
    boleto.setEstrutura(
        BoletoXml{.inside = SecaoXml{.inside = CampoXml{.tabela = "titulos"}.xml()}.xml()}.xml(), all, "/tv");
    all.reset();
    boleto.setTabelas(nullptr);
    EXPECT_TRUE(boleto.GetChild("fundo").GetChild("cod").isValido("LFT"));
}

TEST(BoletoTest, StoredTextsAreTrimmed) {
    clsBoleto boleto;
    boleto.setFilename(" a.xml ");
    boleto.setValidador(" /x/a.xsd ");
    boleto.setFormula("  ");
    EXPECT_EQ(boleto.getFilename(), "a.xml");
    EXPECT_EQ(boleto.getValidador(), "/x/a.xsd");
    EXPECT_FALSE(boleto.hasFormula());
    const auto secao = std::make_shared<clsSecao>();
    boleto.setSecaoChild(secao);
    EXPECT_EQ(boleto.getSecaoChild(), secao);
}

} // namespace
} // namespace tv
