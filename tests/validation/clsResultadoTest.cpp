#include "validation/clsResultado.h"
#include "logging/LogFolder.h"
#include "model/LayoutXml.h"
#include "platform/Clock.h"
#include "platform/Error.h"
#include "platform/XmlReader.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::BoletoXml;
using test::CampoXml;
using test::GlobalLogger;
using test::SecaoXml;
using test::startLogger;
using test::tables;
using test::TemporaryFolder;

std::shared_ptr<const clsBoleto> layout(const BoletoXml& xml) {
    auto boleto = std::make_shared<clsBoleto>();
    boleto->setEstrutura(xml.xml(), tables(), "");
    return boleto;
}

/// Sections inside of wrappers, as in the position files.
std::shared_ptr<const clsBoleto> comGrupos() {
    const std::string titulo = SecaoXml{.tag = "titulo",
                                        .inside = CampoXml{.tag = "cod", .titulo = "Código"}.xml() +
                                                  CampoXml{.tag = "taxa", .titulo = "Tx. (a.a.)"}.xml(),
                                        .nome = "Títulos"}
                                   .xml();
    const std::string outros =
        SecaoXml{.tag = "outros", .inside = CampoXml().xml(), .nome = "Out. ativos"}.xml();
    return layout({.tag = "posicao",
                   .inside = SecaoXml{.tag = "fundo", .inside = titulo + outros, .nome = "Fundos"}.xml() +
                             SecaoXml{.tag = "carteira", .inside = titulo, .nome = "Cart. adm."}.xml()});
}

/// Sections straight under the layout.
std::shared_ptr<const clsBoleto> semGrupos() {
    return layout(
        {.tag = "movimento",
         .inside = SecaoXml{.tag = "cotista",
                            .inside = CampoXml{.tag = "cpf", .titulo = "CPF ou CNPJ"}.xml(),
                            .nome = "Cotistas"}
                       .xml() +
                   SecaoXml{.tag = "titulo", .inside = CampoXml().xml(), .nome = "Títulos soltos"}.xml()});
}

clsResultado at(const std::shared_ptr<const clsBoleto>& boleto, const std::string& path,
                const std::string& valor = "", std::string_view chave = "") {
    clsResultado resultado;
    resultado.setTag("nome", valor, path, chave);
    resultado.SetBoleto(boleto);
    return resultado;
}

/// The value of an attribute in the text of a finding.
std::string attribute(const std::string& xml, const std::string& name) {
    const std::string start = " " + name + "=\"";
    const std::size_t from = xml.find(start);
    if (from == std::string::npos) {
        return "(no attribute " + name + ")";
    }
    return xml.substr(from + start.size(), xml.find('"', from + start.size()) - from - start.size());
}

// --- what it holds

TEST(ResultadoTest, NewFindingSaysNothing) {
    const clsResultado novo;
    EXPECT_EQ(novo.TipoResultado(), 0);
    EXPECT_EQ(novo.ErrorCode(), "");
    EXPECT_EQ(novo.Titulo(), "");
    EXPECT_EQ(novo.Descricao(), "");
    EXPECT_EQ(novo.linha(), -1);
    EXPECT_EQ(novo.coluna(), -1);
    EXPECT_EQ(novo.TAGname(), "");
    EXPECT_EQ(novo.TAGvalue(), "");
    EXPECT_EQ(novo.TAGpath(), "");
    EXPECT_EQ(novo.ValorCampoChave(), "");
    EXPECT_EQ(novo.getBoleto(), nullptr);
    EXPECT_FALSE(novo.isDominio());
    EXPECT_EQ(novo.nomeTipo(), "NULL");
}

TEST(ResultadoTest, KeepsWhatItIsGiven) {
    clsResultado resultado;
    resultado.setTag("Código", "LFT", "posicao.fundo.titulo.cod", "123");
    resultado.setLocation(70'000, 12);
    const auto boleto = comGrupos();
    resultado.SetBoleto(boleto);
    EXPECT_EQ(resultado.TAGname(), "Código");
    EXPECT_EQ(resultado.TAGvalue(), "LFT");
    EXPECT_EQ(resultado.getValor(), "LFT");
    EXPECT_EQ(resultado.TAGpath(), "posicao.fundo.titulo.cod");
    EXPECT_EQ(resultado.ValorCampoChave(), "123");
    EXPECT_EQ(resultado.getFundo(), "123");
    EXPECT_EQ(resultado.linha(), 70'000);
    EXPECT_EQ(resultado.coluna(), 12);
    EXPECT_EQ(resultado.getBoleto(), boleto);
}

// --- setError

struct ErrorRow {
    std::int32_t codigo;
    const char* errorCode;
    std::int16_t tipo;
    const char* titulo;
    const char* descricao;
};

class ResultadoErrorTest : public testing::TestWithParam<ErrorRow> {};

TEST_P(ResultadoErrorTest, CodeDecidesKindTitleAndDescription) {
    const ErrorRow& row = GetParam();
    clsResultado resultado;
    resultado.setError(row.codigo, "título dado", "descrição dada");
    EXPECT_EQ(resultado.ErrorCode(), row.errorCode);
    EXPECT_EQ(resultado.TipoResultado(), row.tipo);
    EXPECT_EQ(resultado.Titulo(), row.titulo);
    EXPECT_EQ(resultado.Descricao(), row.descricao);
    EXPECT_EQ(resultado.isDominio(), row.tipo == 1);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ResultadoErrorTest,
    testing::Values(ErrorRow{-2147467259, "80004005", 2, "Nome de Campo não esperado",
                             "Nome de Campo não esperado"},
                    ErrorRow{-2147221503, "80040001", 1, "título dado", "descrição dada"},
                    ErrorRow{-2147221502, "80040002", 1, "Valor não pertence ao Domínio",
                             "O valor do campo não é válido"},
                    ErrorRow{-1072897660, "C00CE184", 1, "Valor não pertence ao Domínio do Campo",
                             "Valor não pertence ao Domínio do Campo"},
                    ErrorRow{-1072894405, "C00CEE3B", 2, "Arquivo com falha na Estrutura ",
                             "Arquivo com falha na Estrutura "},
                    ErrorRow{-1072898028, "C00CE014", 4, "título dado", "descrição dada"},
                    ErrorRow{-1, "FFFFFFFF", 4, "título dado", "descrição dada"},
                    ErrorRow{0, "0", 4, "título dado", "descrição dada"},
                    ErrorRow{2748, "ABC", 4, "título dado", "descrição dada"},
                    ErrorRow{2147483647, "7FFFFFFF", 4, "título dado", "descrição dada"}),
    [](const auto& row) { return "Code" + std::string(row.param.errorCode); });

TEST(ResultadoTest, NamesOfTheKinds) {
    clsResultado resultado;
    resultado.setError(clsResultado::codigoEntreCampos, "", "");
    EXPECT_EQ(resultado.nomeTipo(), "DOMINIO");
    resultado.setError(xmlcode::elementNotAllowed, "", "");
    EXPECT_EQ(resultado.nomeTipo(), "ESTRUTURA");
    resultado.setError(5, "", "");
    EXPECT_EQ(resultado.nomeTipo(), "DESCONHECIDO");
}

// --- section and field

struct PathRow {
    const char* name;
    std::shared_ptr<const clsBoleto> (*layout)();
    const char* path;
    const char* secao;
    const char* campo;
};

class ResultadoPathTest : public testing::TestWithParam<PathRow> {};

TEST_P(ResultadoPathTest, PathLeadsToSectionAndField) {
    const PathRow& row = GetParam();
    const clsResultado resultado = at(row.layout(), row.path);
    EXPECT_EQ(resultado.getSecao(), row.secao);
    EXPECT_EQ(resultado.getCampo(), row.campo);
}

INSTANTIATE_TEST_SUITE_P(
    WithWrappers, ResultadoPathTest,
    testing::Values(
        PathRow{"RootAlone", comGrupos, "posicao", "posicao", "posicao"},
        PathRow{"SectionAlone", comGrupos, "fundo", "Fundos", "fundo"},
        PathRow{"NameWithAPointOfATopSectionStays", comGrupos, "carteira", "Cart. adm.", "carteira"},
        PathRow{"UnknownAlone", comGrupos, "outra", "outra", "outra"},
        PathRow{"Wrapper", comGrupos, "posicao.fundo", "Fundos", ""},
        PathRow{"UnknownBelowTheRoot", comGrupos, "posicao.outra", "", ""},
        PathRow{"SectionShowsItsWrapper", comGrupos, "posicao.fundo.titulo", "Fundos", ""},
        PathRow{"UnknownBelowAWrapper", comGrupos, "posicao.fundo.outra", "Fundos", ""},
        PathRow{"FieldWithoutTheRoot", comGrupos, "fundo.titulo.cod", "Títulos", "Código"},
        PathRow{"Field", comGrupos, "posicao.fundo.titulo.cod", "Títulos", "Código"},
        PathRow{"FieldOfTheOtherWrapper", comGrupos, "posicao.carteira.titulo.cod", "Títulos", "Código"},
        PathRow{"KeysCompareWithoutCase", comGrupos, "POSICAO.Fundo.TITULO.Cod", "Títulos", "Código"},
        PathRow{"RootOfAnotherVersion", comGrupos, "posicao_0.fundo.titulo.cod", "Títulos", "Código"},
        PathRow{"TotalOfASection", comGrupos, "posicao.fundo.titulo.valortotal", "Títulos", ""},
        PathRow{"FieldWithABlankBehind", comGrupos, "posicao.fundo.titulo.cod ", "Títulos", ""},
        PathRow{"UnknownSection", comGrupos, "posicao.fundo.outra.cod", "", ""},
        PathRow{"UnknownWrapper", comGrupos, "posicao.clube.titulo.cod", "", ""},
        PathRow{"NameWithAPointOfANestedSectionIsLost", comGrupos, "posicao.fundo.outros.cod", "", "Código"},
        PathRow{"NameOfAFieldKeepsItsPoints", comGrupos, "posicao.fundo.titulo.taxa", "Títulos",
                "Tx. (a.a.)"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    WithoutWrappers, ResultadoPathTest,
    testing::Values(
        PathRow{"RootAlone", semGrupos, "movimento", "movimento", "movimento"},
        PathRow{"Section", semGrupos, "movimento.cotista", "Cotistas", ""},
        PathRow{"Field", semGrupos, "movimento.cotista.cpf", "Cotistas", "CPF ou CNPJ"},
        PathRow{"FieldWithoutTheRoot", semGrupos, "cotista.cpf", "Cotistas", "CPF ou CNPJ"},
        PathRow{"UnknownField", semGrupos, "movimento.cotista.idade", "Cotistas", ""},
        PathRow{"FieldBelowOneMoreLevel", semGrupos, "movimento.fundo.cotista.cpf", "Cotistas",
                "CPF ou CNPJ"},
        PathRow{"LastTokenGoesFirst", semGrupos, "movimento.cotista.titulo", "Títulos soltos", ""},
        PathRow{"TotalOfASection", semGrupos, "movimento.titulo.valortotal", "Títulos soltos", ""},
        PathRow{"UnknownSection", semGrupos, "movimento.a.b.c", "", ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ResultadoTest, EmptyPathHasNoSectionAndNoFieldToAskFor) {
    const clsResultado resultado = at(comGrupos(), "");
    EXPECT_EQ(resultado.getSecao(), "");
    try {
        static_cast<void>(resultado.getCampo());
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), errc::subscriptOutOfRange);
    }
}

TEST(ResultadoTest, WithoutALayoutLookupsFindNothing) {
    EXPECT_EQ(at(nullptr, "posicao.fundo.titulo.cod").getSecao(), "");
    EXPECT_EQ(at(nullptr, "posicao.fundo.titulo.cod").getCampo(), "");
    EXPECT_EQ(at(nullptr, "posicao").getCampo(), "posicao");
}

// --- position and fund

TEST(ResultadoTest, KindOfPositionIsTheFirstTokenThatNamesOne) {
    struct Row {
        const char* path;
        const char* tipo;
    };
    for (const Row& row : {Row{"", ""},
                           {"posicao", ""},
                           {"fundo", "fundo"},
                           {"posicao.fundo.titulo.cod", "fundo"},
                           {"posicao.carteira.titulo.cod", "carteira"},
                           {"posicao.carteira.fundo", "carteira"},
                           {"posicao.fundo.carteira", "fundo"},
                           {"posicao.Fundo.titulo", ""},
                           {"posicao. fundo.titulo", ""},
                           {"posicao.fundos.titulo", ""}}) {
        EXPECT_EQ(clsResultado::getTipoPosicao(row.path), row.tipo) << row.path;
    }
}

TEST(ResultadoTest, CodeOfAWalletIsTheFirstTokenCutTo14Characters) {
    struct Row {
        const char* chave;
        const char* codigo;
    };
    for (const Row& row : {Row{"", ""},
                           {"   ", ""},
                           {".abc", ""},
                           {"abc", "ABC"},
                           {"  cart01  ", "CART01"},
                           {"cart.01", "CART"},
                           {"12345678901234", "12345678901234"},
                           {"abcdefghijklmnopqrst", "ABCDEFGHIJKLMN"},
                           {"  abcdefghijklmnopqrst", "ABCDEFGHIJKLMN"},
                           {"ação-gestão-própria", "AÇÃO-GESTÃO-PR"}}) {
        EXPECT_EQ(clsResultado::getCodigoFundo(row.chave), row.codigo) << row.chave;
    }
}

TEST(ResultadoTest, OnlyAWalletsKeyIsCut) {
    const std::string chave = "abcdefghijklmnopqrst";
    EXPECT_EQ(at(nullptr, "posicao.carteira.titulo.cod", "", chave).getFundoLocal(), "ABCDEFGHIJKLMN");
    EXPECT_EQ(at(nullptr, "posicao.fundo.titulo.cod", "", chave).getFundoLocal(), chave);
    EXPECT_EQ(at(nullptr, "posicao", "", chave).getFundoLocal(), chave);
}

// --- getXML

TEST(ResultadoTest, WritesItselfAsOneLine) {
    clsResultado resultado = at(comGrupos(), "posicao.fundo.titulo.cod", "LFT", "12345678000195");
    resultado.setError(clsResultado::codigoRegraCampo, "", "");
    resultado.setLocation(17, 42);
    EXPECT_EQ(resultado.getXML(),
              "<RESULTADO linha=\"17\" coluna=\"42\" tipoResultado=\"DOMINIO\" >"
              "<DESCRICAO errCode=\"80040002\" titulo=\"Valor não pertence ao Domínio\" >"
              "<![CDATA[O valor do campo não é válido]]></DESCRICAO>"
              "<LOCAL fundo=\"12345678000195\" secao=\"Títulos\" campo=\"Código\" valor=\"LFT\" "
              "atributo=\"fundo\" /></RESULTADO>");
}

TEST(ResultadoTest, FindingOfAWalletShowsItsCode) {
    clsResultado resultado = at(comGrupos(), "posicao.carteira.titulo.cod", "x", "cart0000000000000001");
    resultado.setError(xmlcode::elementNotAllowed, "", "");
    resultado.setLocation(1, 2);
    EXPECT_EQ(resultado.getXML(),
              "<RESULTADO linha=\"1\" coluna=\"2\" tipoResultado=\"ESTRUTURA\" >"
              "<DESCRICAO errCode=\"80004005\" titulo=\"Nome de Campo não esperado\" >"
              "<![CDATA[Nome de Campo não esperado]]></DESCRICAO>"
              "<LOCAL fundo=\"CART0000000000\" secao=\"Títulos\" campo=\"Código\" valor=\"x\" "
              "atributo=\"carteira\" /></RESULTADO>");
}

TEST(ResultadoTest, FindingThatWasNeverFilledButForItsPath) {
    EXPECT_EQ(
        at(comGrupos(), "posicao").getXML(),
        "<RESULTADO linha=\"-1\" coluna=\"-1\" tipoResultado=\"NULL\" >"
        "<DESCRICAO errCode=\"\" titulo=\"\" ><![CDATA[]]></DESCRICAO>"
        "<LOCAL fundo=\"\" secao=\"posicao\" campo=\"posicao\" valor=\"\" atributo=\"\" /></RESULTADO>");
}

TEST(ResultadoTest, TextsOfAnUnknownCodeAreEscapedButForTheDescription) {
    clsResultado resultado = at(comGrupos(), "posicao.fundo.titulo.cod", "<a & 'b' \"c\">&amp;");
    resultado.setError(5, "um & \"dois\" <três> d'água", "texto <livre> & \"cru\"");
    const std::string xml = resultado.getXML();
    EXPECT_EQ(attribute(xml, "titulo"), "um &amp; &quot;dois&quot; &lt;três&gt; d&apos;água");
    EXPECT_EQ(attribute(xml, "valor"), "&lt;a &amp; &apos;b&apos; &quot;c&quot;&gt;&amp;amp;");
    EXPECT_NE(xml.find("<![CDATA[texto <livre> & \"cru\"]]>"), std::string::npos);
}

TEST(ResultadoTest, NamesOfSectionAndFieldAreEscaped) {
    const auto boleto = layout(
        {.inside = SecaoXml{.tag = "s", .inside = CampoXml{.titulo = "C &lt; D"}.xml(), .nome = "A &amp; B"}
                       .xml()});
    const std::string xml = at(boleto, "posicao.s.cod").getXML();
    EXPECT_EQ(attribute(xml, "secao"), "A &amp; B");
    EXPECT_EQ(attribute(xml, "campo"), "C &lt; D");
}

TEST(ResultadoTest, KeyTextIsNotEscaped) {
    EXPECT_NE(at(comGrupos(), "posicao.fundo", "", "a<b").getXML().find("fundo=\"a<b\""), std::string::npos);
}

TEST(ResultadoTest, EndOfACDataSectionInADescriptionIsNotGuarded) {
    clsResultado resultado = at(comGrupos(), "posicao.fundo");
    resultado.setError(5, "", "a]]>b");
    EXPECT_NE(resultado.getXML().find("<![CDATA[a]]>b]]>"), std::string::npos);
}

TEST(ResultadoTest, ValueIsLeftOutForAPathWithoutPointsAndAFieldNameWithOne) {
    struct Row {
        const char* path;
        const char* valor;
    };
    for (const Row& row : {Row{"posicao", ""},
                           {"posicao.fundo", "v"},
                           {"posicao.fundo.titulo.valortotal", "v"},
                           {"posicao.fundo.titulo.cod", "v"},
                           {"posicao.fundo.titulo.taxa", ""}}) {
        EXPECT_EQ(attribute(at(comGrupos(), row.path, "v").getXML(), "valor"), row.valor) << row.path;
    }
}

TEST(ResultadoTest, LaterPlaceholdersInATextAreReplacedAndEarlierOnesStay) {
    clsResultado resultado = at(comGrupos(), "posicao.fundo.titulo.cod", "@linha @atrib @fundo", "CHAVE");
    resultado.setError(5, "@linha @titulo @valor", "@coluna @campo");
    resultado.setLocation(3, 4);
    const std::string xml = resultado.getXML();
    // The title put in at step 5 meets @valor at step 9, whose text meets @atrib and @fundo at 10 and 11.
    EXPECT_EQ(attribute(xml, "titulo"), "@linha @titulo @linha fundo CHAVE");
    EXPECT_NE(xml.find("<![CDATA[@coluna Código]]>"), std::string::npos);
    EXPECT_EQ(attribute(xml, "valor"), "@linha fundo CHAVE");
    EXPECT_EQ(attribute(xml, "linha"), "3");
}

TEST(ResultadoTest, KeyTextComesLastSoThatItsPlaceholdersStay) {
    const std::string xml = at(comGrupos(), "posicao.fundo.titulo.cod", "v", "@atrib @valor").getXML();
    EXPECT_EQ(attribute(xml, "fundo"), "@atrib @valor");
    EXPECT_EQ(attribute(xml, "atributo"), "fundo");
}

TEST(ResultadoTest, PlaceholdersCompareWithCase) {
    clsResultado resultado = at(comGrupos(), "posicao.fundo.titulo.cod");
    resultado.setError(5, "@Valor", "@FUNDO");
    const std::string xml = resultado.getXML();
    EXPECT_EQ(attribute(xml, "titulo"), "@Valor");
    EXPECT_NE(xml.find("<![CDATA[@FUNDO]]>"), std::string::npos);
}

TEST(ResultadoTest, EmptyPathGivesNoElementAndAnEntryInTheLog) {
    const TemporaryFolder folder;
    const clock::Frozen now(clock::at(2024, 6, 28, 9, 30, 0));
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, library::level::all));
    EXPECT_EQ(at(comGrupos(), "").getXML(), "");
    const std::string log = folder.read("log20240628.txt");
    EXPECT_NE(log.find("09:30:00 - FATAL  clsResultado.getXML"), std::string::npos) << log;
    EXPECT_NE(log.find("[9]]"), std::string::npos) << log;
}

} // namespace
} // namespace tv
