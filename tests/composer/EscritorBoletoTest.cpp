#include "composer/EscritorBoleto.h"

#include "../platform/Throws.h"
#include "Layouts.h"
#include "composer/escrita.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tv::test {
namespace {

clsCampo campoDe(const CampoXml& xml) {
    clsCampo campo;
    campo.setEstrutura(xml.xml(), tables());
    return campo;
}

struct ValorEscrito {
    std::string nome;
    std::string tipo;
    std::string mascara;
    Value valor;
    std::string esperado;
};

class CampoEscrito : public testing::TestWithParam<ValorEscrito> {};

TEST_P(CampoEscrito, HasTheValueInTheFormOfItsType) {
    const ValorEscrito& caso = GetParam();
    const clsCampo campo = campoDe({.tag = "c", .tipo = caso.tipo, .maskOutput = caso.mascara});
    EXPECT_EQ(escrita::getXML(campo, caso.valor), "<c>" + caso.esperado + "</c>\r\n");
}

INSTANTIATE_TEST_SUITE_P(
    Todos, CampoEscrito,
    testing::Values(ValorEscrito{"DecimalNulo", "DECIMAL", "0.00", Null{}, ""},
                    ValorEscrito{"DecimalSemMascara", "DECIMAL", "", 1234.5, "1234.5"},
                    ValorEscrito{"DecimalComMascara", "DECIMAL", "0.00", 1234.5, "1234.50"},
                    ValorEscrito{"DecimalComVirgulas", "DECIMAL", "#,##0.00", 1234.5, "1.234.50"},
                    ValorEscrito{"DecimalNegativo", "DECIMAL", "0.00", -0.125, "-0.13"},
                    ValorEscrito{"DecimalMaiorQueOFormato", "DECIMAL", "0.00000000", 286459416.72594255,
                                 "286459416.72594255"},
                    ValorEscrito{"DecimalMaiorNegativo", "DECIMAL", "0.00000000", -96920919.81774674,
                                 "-96920919.81774674"},
                    ValorEscrito{"DecimalDeQuinzeDigitos", "DECIMAL", "0.00000000", 5183649.48145165,
                                 "5183649.48145165"},
                    ValorEscrito{"DecimalEnorme", "DECIMAL", "0.00", 1e20, "100000000000000000000.00"},
                    ValorEscrito{"DecimalCalculado", "DECIMAL", "0.00000000", 0.1 + 0.2, "0.30000000"},
                    ValorEscrito{"InteiroNulo", "INTEIRO", "0", Null{}, ""},
                    ValorEscrito{"InteiroSemMascara", "INTEIRO", "", 42, "42"},
                    ValorEscrito{"InteiroComMascara", "INTEIRO", "0000", 42, "0042"},
                    ValorEscrito{"InteiroComVirgula", "INTEIRO", "#,##0", 1234, "1,234"},
                    ValorEscrito{"LogicoNulo", "BOOLEAN", "", Null{}, ""},
                    ValorEscrito{"LogicoSim", "BOOLEAN", "", true, "S"},
                    ValorEscrito{"LogicoNao", "BOOLEAN", "0", false, "N"},
                    ValorEscrito{"DataNula", "DATA", "YYYYMMDD", Null{}, ""},
                    ValorEscrito{"DataComMascara", "DATA", "YYYYMMDD", clock::at(2024, 6, 28), "20240628"},
                    ValorEscrito{"DataSemMascara", "DATA", "", clock::at(2024, 6, 28), "28/06/2024"},
                    ValorEscrito{"DataComVirgula", "DATA", "DD,MM", clock::at(2024, 6, 28), "28,06"},
                    ValorEscrito{"TextoNulo", "TEXTO", "", Null{}, ""},
                    ValorEscrito{"TextoComVirgula", "TEXTO", "", "a,b", "a,b"},
                    ValorEscrito{"TextoAparado", "TEXTO", "", "  a b  ", "a b"},
                    ValorEscrito{"TextoSoBrancos", "TEXTO", "", "   ", ""},
                    ValorEscrito{"TextoComMascara", "TEXTO", "@@-@@", "1234", "12-34"},
                    ValorEscrito{"TextoComMarcas", "TEXTO", "", "<A> & B", "&lt;A&gt; &amp; B"},
                    ValorEscrito{"TextoComEntidade", "TEXTO", "", "&amp;", "&amp;amp;"},
                    ValorEscrito{"TextoComRetorno", "TEXTO", "", "a\rb", "a&#13;b"}),
    [](const auto& um) { return um.param.nome; });

TEST(CampoEscrito, TakesDecimalsThatAreNoNumberAsTheyRead) {
    const clsCampo campo = campoDe({.tag = "c", .tipo = "DECIMAL", .maskOutput = "0.00"});
    EXPECT_EQ(escrita::getXML(campo, Value(std::nan(""))).find("<c>"), 0U);
}

class Escritor : public testing::Test {
protected:
    void abre(std::shared_ptr<const clsBoleto> layout) { documento.abrir(std::move(layout)); }
    void linha(const std::string& grade, const std::string& coluna, const std::string& valor,
               std::int32_t rowID, std::int32_t rowMaster) {
        RecordSet& dados = *documento.grade(grade).dados;
        dados.AddNew();
        dados.set(coluna, valor);
        dados.set("rowID", rowID);
        dados.set("rowMaster", rowMaster);
        dados.Update();
    }
    std::string texto() const {
        const clsBoleto& layout = documento.layout();
        return EscritorBoleto().getXML_origem(layout, documento.addRSCollection(), layout.getTag());
    }

    Documento documento;
};

constexpr const char* declaracao = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\r\n";

TEST_F(Escritor, WritesEachMasterWithItsDetailsInTheLayoutsGroup) {
    abre(layoutDireto());
    linha("passivo_header", "cnpj", "1", 1, 0);
    linha("passivo_header", "cnpj", "2", 2, 0);
    linha("passivo_cotista", "codigo", "b", 0, 2);
    linha("passivo_cotista", "codigo", "a", 0, 1);
    linha("passivo_despesas", "codigo", "d", 0, 1);
    linha("passivo_cotista", "codigo", "c", 0, 1);
    EXPECT_EQ(texto(), std::string(declaracao) +
                           "<passivo>\r\n"
                           "<fundo>\r\n<header>\r\n<cnpj>1</cnpj>\r\n</header>\r\n"
                           "<cotista>\r\n<codigo>a</codigo>\r\n</cotista>\r\n"
                           "<cotista>\r\n<codigo>c</codigo>\r\n</cotista>\r\n"
                           "<despesas>\r\n<codigo>d</codigo>\r\n</despesas>\r\n</fundo>\r\n"
                           "<fundo>\r\n<header>\r\n<cnpj>2</cnpj>\r\n</header>\r\n"
                           "<cotista>\r\n<codigo>b</codigo>\r\n</cotista>\r\n</fundo>\r\n"
                           "</passivo>");
}

TEST_F(Escritor, WritesEachTopSectionWhereTheLayoutHasNoMaster) {
    abre(layoutEmGrupos());
    linha("posicao_carteira_header", "codcart", "K", 1, 0);
    linha("posicao_fundo_header", "cnpj", "1", 1, 0);
    linha("posicao_fundo_titulo", "codigo", "t", 0, 1);
    linha("posicao_carteira_titulo", "codigo", "u", 0, 1);
    EXPECT_EQ(texto(), std::string(declaracao) +
                           "<posicao>\r\n"
                           "<fundo>\r\n<header>\r\n<cnpj>1</cnpj>\r\n</header>\r\n"
                           "<titulo>\r\n<codigo>t</codigo>\r\n</titulo>\r\n</fundo>\r\n"
                           "<carteira>\r\n<header>\r\n<codcart>K</codcart>\r\n</header>\r\n"
                           "<titulo>\r\n<codigo>u</codigo>\r\n</titulo>\r\n</carteira>\r\n"
                           "</posicao>");
}

TEST_F(Escritor, WithoutAGroupNothingStandsAroundARow) {
    abre(layoutSemGrupo());
    linha("lista_registro", "cnpj", "1", 1, 0);
    EXPECT_EQ(texto(), std::string(declaracao) +
                           "<lista>\r\n<registro>\r\n<cnpj>1</cnpj>\r\n</registro>\r\n\r\n</lista>");
}

TEST_F(Escritor, WritesAnEmptyDocument) {
    abre(layoutDireto());
    EXPECT_EQ(texto(), std::string(declaracao) + "<passivo>\r\n</passivo>");
}

TEST_F(Escritor, TakesNoNoteOfTheGridsFilters) {
    abre(layoutDireto());
    linha("passivo_header", "cnpj", "1", 1, 0);
    linha("passivo_cotista", "codigo", "a", 0, 1);
    const std::string antes = texto();
    documento.grade("passivo_header").dados->Filter("rowID = 99");
    documento.grade("passivo_cotista").dados->Filter("rowMaster = 99");
    EXPECT_EQ(texto(), antes);
    EXPECT_EQ(documento.grade("passivo_header").dados->RecordCount(), 0U); // and leaves them as they are
}

TEST_F(Escritor, AMasterWithoutDetailsStandsAlone) {
    abre(layoutEmGrupos());
    linha("posicao_fundo_header", "cnpj", "1", 1, 0);
    EXPECT_EQ(texto(), std::string(declaracao) +
                           "<posicao>\r\n<fundo>\r\n<header>\r\n<cnpj>1</cnpj>\r\n</header>\r\n</fundo>\r\n"
                           "</posicao>");
}

std::shared_ptr<const clsBoleto> comSubsecoes() {
    const std::string ordens =
        SecaoXml{.tag = "ordens", .inside = campo("numero") + detalhe("item") + detalhe("taxa")}.xml();
    return layoutOf({.tag = "l", .inside = mestre() + detalhe("antes") + ordens + detalhe("depois")});
}

TEST_F(Escritor, OneElementStandsAroundTheRowsOfASectionThatHoldsOthers) {
    abre(comSubsecoes());
    linha("l_header", "cnpj", "1", 1, 0);
    linha("l_ordens", "numero", "10", 0, 1);
    linha("l_ordens", "numero", "11", 0, 1);
    linha("l_ordens_item", "codigo", "i", 0, 1);
    linha("l_depois", "codigo", "z", 0, 1);
    EXPECT_EQ(texto(), std::string(declaracao) +
                           "<l>\r\n<header>\r\n<cnpj>1</cnpj>\r\n</header>\r\n"
                           "<ordens><numero>10</numero>\r\n\r\n\r\n<numero>11</numero>\r\n\r\n\r\n"
                           "<item>\r\n<codigo>i</codigo>\r\n</item>\r\n</ordens>"
                           "<depois>\r\n<codigo>z</codigo>\r\n</depois>\r\n\r\n</l>");
}

// What was written earlier for the master falls inside the element, earlier sections included.
TEST_F(Escritor, AChildOfASectionWithoutRowsDrawsAllBeforeItInside) {
    abre(comSubsecoes());
    linha("l_header", "cnpj", "1", 1, 0);
    linha("l_antes", "codigo", "a", 0, 1);
    linha("l_ordens_taxa", "codigo", "t", 0, 1);
    EXPECT_EQ(texto(), std::string(declaracao) +
                           "<l>\r\n<header>\r\n<cnpj>1</cnpj>\r\n</header>\r\n"
                           "<ordens><antes>\r\n<codigo>a</codigo>\r\n</antes>\r\n"
                           "<taxa>\r\n<codigo>t</codigo>\r\n</taxa>\r\n</ordens>\r\n</l>");
}

TEST_F(Escritor, ASectionWithoutRowsAndChildRowsGivesNothing) {
    abre(comSubsecoes());
    linha("l_header", "cnpj", "1", 1, 0);
    EXPECT_EQ(texto(),
              std::string(declaracao) + "<l>\r\n<header>\r\n<cnpj>1</cnpj>\r\n</header>\r\n\r\n</l>");
}

TEST_F(Escritor, AnEmptyDateOfADebentureIsWrittenAsZeros) {
    const std::string campos =
        campo("codigo") + CampoXml{.tag = "dtvencimento", .tipo = "DATA", .maskOutput = "YYYYMMDD"}.xml();
    abre(layoutOf({.tag = "l", .inside = mestre() + SecaoXml{.tag = "debenture", .inside = campos}.xml()}));
    linha("l_header", "cnpj", "1", 1, 0);
    linha("l_debenture", "codigo", "x", 0, 1);
    const XmlDocument dom = montaDocumento(documento);
    EXPECT_EQ(dom.selectSingleNode("//debenture/dtvencimento").text(), "00000000");
    EXPECT_EQ(dom.selectSingleNode("//debenture/codigo").text(), "x");
}

TEST_F(Escritor, ALayoutWithoutMasterAndGroupsCannotBeWritten) {
    const auto layout = layoutOf({.tag = "l", .inside = grupo("g", "G", mestre()) + detalhe("solta")});
    abre(layout);
    EXPECT_EQ(errorOf([&] { texto(); }), errc::objectNotSet);
}

TEST_F(Escritor, AValueThatNoXmlCanHoldFails) {
    abre(layoutDireto());
    linha("passivo_header", "cnpj", "\x01", 1, 0);
    try {
        montaDocumento(documento);
        ADD_FAILURE();
    } catch (const Error& erro) {
        EXPECT_EQ(erro.description(), "Erro na contrução do XML");
    }
    linha("passivo_cotista", "codigo", "\x02", 0, 1);
    EXPECT_EQ(errorOf([&] { montaDocumento(documento); }), static_cast<std::int32_t>(0x8004124F));
}

TEST_F(Escritor, KeepsMarkupAndAccentsOfValues) {
    abre(layoutDireto());
    linha("passivo_header", "cnpj", "A & B <ç> \"x\" 'y' \xE2\x82\xAC", 1, 0);
    const XmlDocument dom = montaDocumento(documento);
    EXPECT_EQ(dom.selectSingleNode("//cnpj").text(), "A & B <ç> \"x\" 'y' \xE2\x82\xAC");
}

} // namespace
} // namespace tv::test
