#include "platform/XmlDocument.h"
#include "platform/text.h"
#include "validation/PositionXml.h"
#include "validation/ValidationFolder.h"
#include "validation/documentoResultado.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::codes;
using test::element;
using test::HeaderXml;
using test::Lines;
using test::stylesheet;
using test::summaries;
using test::ValidationFolder;

constexpr const char* valid =
    "<posicao><fundo><header><cnpj>111</cnpj><dt>20240628</dt></header></fundo></posicao>";
constexpr const char* invalid =
    "<posicao><fundo><header><cnpj>111</cnpj><dt>20240231</dt></header></fundo></posicao>";

/// The formula output read into findings.
class FormulaTest : public testing::Test {
protected:
    /// Checks a document by the layout `posicao` with that formula.
    bool check(const std::string& formula, const std::string& document = valid) {
        return validador.isValido(folder.write("doc.xml", document), folder.posicao(formula));
    }
    /// Checks a valid document by a formula whose output is `output`.
    bool checkOutput(const std::string& output) {
        return check(stylesheet(
            "<xsl:text disable-output-escaping='yes'><![CDATA[" + output + "]]></xsl:text>", "text"));
    }
    const Resultados& found() const { return *validador.getResultado(); }
    const std::vector<std::string>& avisos() const { return validador.getAvisos(); }

    ValidationFolder folder;
    clsValidador validador;
};

// --- items

TEST_F(FormulaTest, ItemIsReadIntoAFinding) {
    EXPECT_FALSE(checkOutput(
        "<TORVA><RESULTADO lastElement='Nome do campo' TAGvalor='12.50' path='posicao.fundo.titulo.valor' "
        "keyValor='94000001000180' errCode='-2147221503' strLabel='Um rótulo' linha='17' coluna='4'>"
        "<strDescription>Uma descrição &amp; mais</strDescription></RESULTADO></TORVA>"));
    ASSERT_EQ(found().size(), 1U);
    const clsResultado& item = found()[0];
    EXPECT_EQ(item.TAGname(), "Nome do campo");
    EXPECT_EQ(item.TAGvalue(), "12.50");
    EXPECT_EQ(item.TAGpath(), "posicao.fundo.titulo.valor");
    EXPECT_EQ(item.ValorCampoChave(), "94000001000180");
    EXPECT_EQ(item.ErrorCode(), "80040001");
    EXPECT_EQ(item.TipoResultado(), clsResultado::dominio);
    EXPECT_EQ(item.Titulo(), "Um rótulo");
    EXPECT_EQ(item.Descricao(), "Uma descrição & mais");
    EXPECT_EQ(item.linha(), 17);
    EXPECT_EQ(item.coluna(), 4);
    EXPECT_EQ(item.getSecao(), "Títulos");
    EXPECT_EQ(item.getCampo(), "Valor");
    EXPECT_TRUE(avisos().empty());
}

TEST_F(FormulaTest, AbsentPartsOfAnItemAreEmptyAndItsNumbers0) {
    EXPECT_FALSE(checkOutput("<TORVA><RESULTADO/></TORVA>"));
    ASSERT_EQ(found().size(), 1U);
    const clsResultado& item = found()[0];
    EXPECT_EQ(item.TAGname(), "");
    EXPECT_EQ(item.TAGvalue(), "");
    EXPECT_EQ(item.TAGpath(), "");
    EXPECT_EQ(item.ValorCampoChave(), "");
    EXPECT_EQ(item.ErrorCode(), "0");
    EXPECT_EQ(item.TipoResultado(), clsResultado::desconhecido);
    EXPECT_EQ(item.Titulo(), "");
    EXPECT_EQ(item.Descricao(), "");
    EXPECT_EQ(item.linha(), 0);
    EXPECT_EQ(item.coluna(), 0);
}

TEST_F(FormulaTest, CodeOfAnItemDecidesAsInTheFirstStage) {
    EXPECT_FALSE(checkOutput("<TORVA><RESULTADO path='posicao' errCode='-2147221502' strLabel='outro'>"
                             "<strDescription>outra</strDescription></RESULTADO></TORVA>"));
    ASSERT_EQ(found().size(), 1U);
    EXPECT_EQ(found()[0].Titulo(), "Valor não pertence ao Domínio");
    EXPECT_EQ(found()[0].Descricao(), "O valor do campo não é válido");
}

struct NumberRow {
    const char* texto;
    std::int32_t posicao; ///< As a line or column.
    const char* codigo;   ///< As a code.
};

class ItemNumberTest : public FormulaTest, public testing::WithParamInterface<NumberRow> {};

TEST_P(ItemNumberTest, LeadingNumberIsReadAndWhatItsTypeCannotHoldStays0) {
    const NumberRow& row = GetParam();
    const std::string texto = row.texto;
    EXPECT_FALSE(checkOutput("<TORVA><RESULTADO linha='" + texto +
                             "' coluna='1'/><RESULTADO linha='1' coluna='" + texto +
                             "'/><RESULTADO errCode='" + texto + "' linha='3'/></TORVA>"));
    ASSERT_EQ(found().size(), 3U);
    EXPECT_EQ(found()[0].linha(), row.posicao);
    EXPECT_EQ(found()[0].coluna(), 1);
    EXPECT_EQ(found()[1].linha(), 1);
    EXPECT_EQ(found()[1].coluna(), row.posicao);
    EXPECT_EQ(found()[2].ErrorCode(), row.codigo);
    EXPECT_EQ(found()[2].linha(), 3);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ItemNumberTest,
    testing::Values(NumberRow{"", 0, "0"}, NumberRow{"abc", 0, "0"}, NumberRow{"x1", 0, "0"},
                    NumberRow{"12", 12, "C"}, NumberRow{" 1 2 ", 12, "C"}, NumberRow{"12abc", 12, "C"},
                    NumberRow{"-3", -3, "FFFFFFFD"}, NumberRow{"+7", 7, "7"}, NumberRow{"2.5", 2, "2"},
                    NumberRow{"3.5", 4, "4"}, NumberRow{"1e2", 100, "64"}, NumberRow{"32767", 32767, "7FFF"},
                    NumberRow{"32768", 0, "8000"}, NumberRow{"-32768", -32768, "FFFF8000"},
                    NumberRow{"70000", 0, "11170"}, NumberRow{"2147483648", 0, "0"},
                    NumberRow{"1e999", 0, "0"}));

TEST_F(FormulaTest, ItemsAreReadInTheirOrderAndOnlyBelowTheRoot) {
    EXPECT_FALSE(checkOutput(
        "<TORVA>texto<RESULTADO linha='3'/><OUTRO><RESULTADO linha='9'/></OUTRO><RESULTADO linha='1'>"
        "<RESULTADO linha='8'/></RESULTADO><resultado linha='7'/><RESULTADO linha='2'/></TORVA>"));
    ASSERT_EQ(found().size(), 3U);
    EXPECT_EQ(found()[0].linha(), 3);
    EXPECT_EQ(found()[1].linha(), 1);
    EXPECT_EQ(found()[2].linha(), 2);
}

TEST_F(FormulaTest, FirstStageStandsBeforeTheItems) {
    EXPECT_FALSE(check(stylesheet("<TORVA><RESULTADO path='posicao.item'/></TORVA>"), invalid));
    ASSERT_EQ(codes(found()), (Lines{"80040002", "0"}));
    EXPECT_EQ(found()[1].TAGpath(), "posicao.item");
}

TEST_F(FormulaTest, KeyOfAnItemIsItsOwn) {
    EXPECT_FALSE(check(
        stylesheet("<TORVA><RESULTADO path='posicao' keyValor='{/posicao/fundo/header/cnpj}'/></TORVA>"),
        invalid));
    ASSERT_EQ(found().size(), 2U);
    EXPECT_FALSE(check(
        stylesheet("<TORVA><RESULTADO path='posicao' keyValor='{/posicao/fundo/header/cnpj}'/></TORVA>"),
        invalid));
    ASSERT_EQ(found().size(), 2U);
    EXPECT_EQ(found()[0].ValorCampoChave(), "111111");
    EXPECT_EQ(found()[1].ValorCampoChave(), "111");
}

TEST_F(FormulaTest, DescriptionThatEndsACDataSectionSpoilsTheReportAndNothingElse) {
    EXPECT_FALSE(checkOutput(
        "<TORVA><RESULTADO path='posicao' errCode='-2147221503'><strDescription>a]]&gt;b</strDescription>"
        "</RESULTADO></TORVA>"));
    ASSERT_EQ(found().size(), 1U);
    EXPECT_EQ(found()[0].Descricao(), "a]]>b");
    EXPECT_NE(found()[0].getXML().find("<![CDATA[a]]>b]]>"), std::string::npos);
    XmlDocument relatorio;
    EXPECT_FALSE(relatorio.loadXML(montaDocumentoResultado(found(), "T", "F")));
}

// --- outputs

TEST_F(FormulaTest, OutputWithoutItemsLeavesTheFileValid) {
    for (const char* output : {"<TORVA></TORVA>", "<TORVA>", "<TORVA>\r\n</TORVA>\r\n",
                               "<TORVA></TORVA></TORVA>", "<?xml version=\"1.0\"?><TORVA></TORVA>",
                               "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><TORVA></TORVA>"}) {
        EXPECT_TRUE(checkOutput(output)) << output;
        EXPECT_TRUE(avisos().empty()) << output;
    }
    // An empty element of XML output is written with both its tags.
    EXPECT_TRUE(check(stylesheet("<TORVA/>")));
    EXPECT_TRUE(avisos().empty());
}

TEST_F(FormulaTest, EveryClosingRootTagIsTakenOutAndOneIsPutBack) {
    EXPECT_FALSE(checkOutput("<TORVA><RESULTADO linha='1'/></TORVA><RESULTADO linha='2'/></TORVA>\n"));
    EXPECT_EQ(found().size(), 2U);
    EXPECT_FALSE(checkOutput("<TORVA><RESULTADO linha='1'/>"));
    EXPECT_EQ(found().size(), 1U);
}

TEST_F(FormulaTest, RootUnderAnotherNameHasNoItems) {
    // "</TORVA>" is put behind it, so it cannot be read.
    EXPECT_TRUE(checkOutput("<SAIDA><RESULTADO linha='1'/></SAIDA>"));
    EXPECT_EQ(avisos().size(), 1U);
}

TEST_F(FormulaTest, OutputThatCannotBeReadGivesNoItemAndANotice) {
    for (const char* output :
         {"", "texto", "<TORVA", "<TORVA/>", "<TORVA><RESULTADO></TORVA>", "<TORVA>&nada;</TORVA>",
          "<TORVA><RESULTADO linha='1'/><RESULTADO linha=2/></TORVA>"}) {
        EXPECT_TRUE(checkOutput(output)) << output;
        EXPECT_TRUE(found().empty()) << output;
        ASSERT_EQ(avisos().size(), 1U) << output;
        EXPECT_EQ(avisos()[0].find("A saída da folha de fórmulas não pôde ser lida: "), 0U) << avisos()[0];
    }
}

TEST_F(FormulaTest, FirstStageKeepsItsFindingsWhateverBecomesOfTheSecond) {
    EXPECT_FALSE(check(stylesheet("texto"), invalid));
    EXPECT_EQ(codes(found()), Lines{"80040002"});
}

TEST_F(FormulaTest, StylesheetThatDoesNotLoadGivesNoItemAndANotice) {
    for (const char* formula : {"<xsl:stylesheet", "<posicao/>", "não é XML"}) {
        EXPECT_TRUE(check(formula)) << formula;
        ASSERT_EQ(avisos().size(), 1U) << formula;
        EXPECT_EQ(avisos()[0].find("A folha de fórmulas não pôde ser aplicada: "), 0U) << avisos()[0];
    }
    test::BoletoXml xml = test::positionLayout();
    xml.formula = "falta.xsl";
    EXPECT_TRUE(validador.isValido(folder.write("doc.xml", valid), folder.layout(xml)));
    EXPECT_EQ(avisos().size(), 1U);
}

TEST_F(FormulaTest, StylesheetThatStopsItselfGivesNoItemAndANotice) {
    EXPECT_TRUE(
        check(stylesheet("<TORVA><RESULTADO/></TORVA><xsl:message terminate='yes'>pare</xsl:message>")));
    ASSERT_EQ(avisos().size(), 1U);
    EXPECT_NE(avisos()[0].find("pare"), std::string::npos) << avisos()[0];
}

TEST_F(FormulaTest, NoticesAreThoseOfTheLastRun) {
    EXPECT_TRUE(check("<xsl:stylesheet"));
    EXPECT_EQ(avisos().size(), 1U);
    EXPECT_TRUE(check(stylesheet("<TORVA/>")));
    EXPECT_TRUE(avisos().empty());
}

TEST_F(FormulaTest, StylesheetCanNeitherReadOtherFilesNorWriteAny) {
    const std::string secret = "conteudo-reservado-8231";
    folder.write("reservado.xml", "<a>" + secret + "</a>");
    const std::string target = (folder.path() / "escrito.txt").string();
    check(stylesheet("<TORVA><RESULTADO path='posicao' TAGvalor=\"{document('" +
                     (folder.path() / "reservado.xml").string() + "')}\"/></TORVA>"));
    for (const clsResultado& item : found()) {
        EXPECT_EQ(item.TAGvalue().find(secret), std::string::npos);
    }
    check("<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' "
          "xmlns:exsl='http://exslt.org/common' extension-element-prefixes='exsl'><xsl:template match='/'>"
          "<exsl:document href='" +
          target + "'><x/></exsl:document><TORVA/></xsl:template></xsl:stylesheet>");
    EXPECT_FALSE(folder.folder().holds("escrito.txt"));
}

// --- the rules across fields behind the items

/// A layout whose tag has the rules across fields, with a schema that lets everything through.
class PositionTest : public FormulaTest {
protected:
    PositionTest() {
        folder.writeXsd(
            "tudo.xsd",
            "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='" + tag +
                "'><xs:complexType><xs:sequence><xs:any processContents='skip' minOccurs='0' "
                "maxOccurs='unbounded'/></xs:sequence></xs:complexType></xs:element></xs:schema>");
    }
    std::shared_ptr<const clsBoleto> boleto(const std::string& formula) const {
        if (!formula.empty()) {
            folder.writeXsd("formula.xsl", formula);
        }
        std::string fields;
        for (const auto& [name, value] : HeaderXml{}.fields()) {
            fields += test::CampoXml{.tag = name,
                                     .campoChave = name == "cnpj" ? "SIM" : "NAO",
                                     .validacao = name == "patliq" ? "DATA" : "",
                                     .titulo = "Título de " + name}
                          .xml();
        }
        const std::string header = test::SecaoXml{.tag = "header", .inside = fields}.xml();
        return folder.layout({.tag = tag,
                              .inside = test::SecaoXml{.tag = "fundo", .inside = header}.xml(),
                              .validador = "tudo.xsd",
                              .formula = formula.empty() ? "" : "formula.xsl"});
    }
    bool checkPosition(const std::string& inside, const std::string& formula) {
        return validador.isValido(folder.write("doc.xml", test::posicao(inside, tag)), boleto(formula));
    }

    const std::string tag = "posicao_4_01";
    const std::string quiet = stylesheet("<TORVA/>");
};

TEST_F(PositionTest, ListHoldsFirstStageThenItemsThenSumsThenOperationRules) {
    // patliq is no date (first stage), the assets are off (twenty), the equity is off twice.
    EXPECT_FALSE(
        checkPosition(test::fundo(HeaderXml{.valorativos = "501", .patliq = "99999"}.xml()),
                      stylesheet("<TORVA><RESULTADO lastElement='da folha' path='posicao'/></TORVA>")));
    ASSERT_EQ(found().size(), 24U);
    EXPECT_EQ(found()[0].ErrorCode(), "80040002");
    EXPECT_EQ(found()[1].TAGname(), "da folha");
    EXPECT_EQ(found()[2].TAGname(), "valorativos");
    EXPECT_EQ(found()[21].TAGname(), "Total Geral");
    EXPECT_EQ(found()[22].TAGname(), "patliq");
    EXPECT_EQ(found()[23].TAGname(), "patliq");
    for (std::size_t i = 2; i < found().size(); ++i) {
        EXPECT_EQ(found()[i].ErrorCode(), "80040001");
        EXPECT_EQ(found()[i].Titulo(), "O valor do campo não corresponde à verificação entre campos");
        EXPECT_EQ(found()[i].linha(), 0);
        EXPECT_EQ(found()[i].coluna(), 0);
        EXPECT_EQ(found()[i].ValorCampoChave(), "94000001000180");
    }
    EXPECT_EQ(found()[2].Descricao(),
              "O valor dos ativos do header não corresponde à soma dos ativos das seções");
    EXPECT_EQ(found()[2].getCampo(), "");
    EXPECT_EQ(found()[22].getCampo(), "Título de patliq");
}

TEST_F(PositionTest, TwoFundsGiveFortyFindings) {
    EXPECT_FALSE(checkPosition(test::fundo(HeaderXml{.cnpj = "1", .valorativos = "501"}.xml()) +
                                   test::fundo(HeaderXml{.cnpj = "2", .valorativos = "501"}.xml()),
                               quiet));
    Lines rules;
    for (const clsResultado& finding : found()) {
        if (finding.ErrorCode() == "80040001" && finding.TAGname() != "patliq") {
            rules.push_back(finding.ValorCampoChave());
        }
    }
    Lines expected(20, "1");
    expected.resize(40, "2");
    EXPECT_EQ(rules, expected);
}

TEST_F(PositionTest, LayoutWithoutAFormulaHasNoRulesAcrossFields) {
    EXPECT_TRUE(checkPosition(test::fundo(element("caixa", {{"saldo", "99999"}})), ""));
    EXPECT_TRUE(found().empty());
    EXPECT_FALSE(checkPosition(test::fundo(element("caixa", {{"saldo", "99999"}})), quiet));
    EXPECT_EQ(found().size(), 20U);
}

TEST_F(PositionTest, FragmentsOfOneRunAreNotThoseOfTheNext) {
    EXPECT_FALSE(checkPosition(test::fundo(element("caixa", {{"saldo", "99999"}})), quiet));
    EXPECT_TRUE(checkPosition(test::fundo(element("caixa", {{"saldo", "1"}})), quiet));
}

TEST_F(PositionTest, SpoiledFragmentDropsTheWholeSecondStageWithoutAWord) {
    const auto debenture = [](const std::string& classe) {
        return element("debenture", {{"valorfindisp", "0"}, {"valorfinemgar", "0"}, {"tributos", "0"}},
                       "<compromisso/><classeoperacao>" + classe + "</classeoperacao>");
    };
    const std::string item = stylesheet("<TORVA><RESULTADO lastElement='da folha' path='posicao'/></TORVA>");
    const std::string off = element("caixa", {{"saldo", "99999"}});
    EXPECT_FALSE(checkPosition(test::fundo(debenture("dagua") + off), item));
    EXPECT_EQ(found().size(), 22U); // the item, twenty of the sums, the class
    for (const char* classe : {"d'agua", "a&lt;b", "a&amp;b"}) {
        EXPECT_TRUE(checkPosition(test::fundo(debenture(classe) + off), item)) << classe;
        EXPECT_TRUE(found().empty()) << classe;
        EXPECT_TRUE(avisos().empty()) << classe;
    }
}

TEST_F(PositionTest, KeyTextCanSpoilAFragmentToo) {
    const std::string off = element("caixa", {{"saldo", "99999"}});
    EXPECT_FALSE(checkPosition(test::fundo(HeaderXml{.cnpj = "d agua"}.xml() + off), quiet));
    EXPECT_TRUE(checkPosition(test::fundo(HeaderXml{.cnpj = "d'agua", .patliq = ""}.xml() + off), quiet));
    EXPECT_TRUE(avisos().empty());
}

TEST_F(PositionTest, UnreadableOutputOfTheStylesheetTakesTheRulesWithItAndIsTold) {
    const std::string off = test::fundo(element("caixa", {{"saldo", "99999"}}));
    EXPECT_TRUE(checkPosition(off, stylesheet("<x")));
    for (const std::string& formula :
         {stylesheet("texto"), stylesheet("<SAIDA/>"), std::string("<xsl:stylesheet")}) {
        EXPECT_TRUE(checkPosition(off, formula)) << formula;
        EXPECT_TRUE(found().empty());
        EXPECT_EQ(avisos().size(), 1U) << formula;
    }
}

TEST_F(PositionTest, StyleSheetThatLeavesItsRootOpenIsReadWithTheRules) {
    const std::string formula =
        stylesheet("<xsl:text disable-output-escaping='yes'><![CDATA[<TORVA><RESULTADO lastElement='da "
                   "folha'/>]]></xsl:text>",
                   "text");
    EXPECT_FALSE(checkPosition(test::fundo(element("caixa", {{"saldo", "99999"}})), formula));
    ASSERT_EQ(found().size(), 21U);
    EXPECT_EQ(found()[0].TAGname(), "da folha");
}

TEST_F(PositionTest, AccentsOfTheFileSurviveBothStages) {
    const std::string document = "<?xml version='1.0' encoding='ISO-8859-1'?>" +
                                 test::posicao("<carteira>" + HeaderXml{.cnpj = "ação"}.xml() +
                                                   element("caixa", {{"saldo", "99999"}}) + "</carteira>",
                                               tag);
    EXPECT_FALSE(validador.isValido(
        folder.write("doc.xml", text::toLatin1(document)),
        boleto(stylesheet("<TORVA><RESULTADO TAGvalor='{//cnpj}' path='posicao'/></TORVA>"))));
    ASSERT_EQ(found().size(), 21U);
    EXPECT_EQ(found()[0].TAGvalue(), "ação");
    EXPECT_EQ(found()[1].ValorCampoChave(), "ação");
}

} // namespace
} // namespace tv
