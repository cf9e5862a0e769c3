#include "platform/text.h"
#include "validation/ValidationFolder.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::codes;
using test::Lines;
using test::placeBehind;
using test::placeOf;
using test::summaries;
using test::ValidationFolder;

/// Where findings stand, and what an unexpected element leads to. Documents are written an element a line, as
/// people have them.
class PlaceTest : public testing::Test {
protected:
    Lines check(const std::string& document) {
        validador.isValido(folder.write("doc.xml", document), folder.posicao());
        return summaries(*validador.getResultado());
    }

    ValidationFolder folder;
    clsValidador validador;
};

/// A document in which `header` and `titulos` stand for lines of their own.
std::string lines(const std::string& header, const std::string& titulos = "") {
    return "<?xml version=\"1.0\"?>\n<posicao>\n\t<fundo>\n\t\t<header>\n" + header + "\t\t</header>\n" +
           titulos + "\t</fundo>\n</posicao>\n";
}

constexpr const char* cnpjLine = "\t\t\t<cnpj>111</cnpj>\n";
constexpr const char* dtLine = "\t\t\t<dt>20240628</dt>\n";

/// A titulo that the layout's rule faults: its code stands in no table.
std::string wrongTitulo(const std::string& cod) {
    return "\t\t<titulo>\n\t\t\t<cod>" + cod + "</cod>\n\t\t\t<valor>1</valor>\n\t\t</titulo>\n";
}

// --- values

TEST_F(PlaceTest, FindingOfAValueStandsRightBehindIt) {
    const std::string document = lines(std::string(cnpjLine) + "\t\t\t<dt>20240231</dt>\n");
    ASSERT_EQ(placeOf(document, "20240231"), "6:8");
    EXPECT_EQ(check(document), Lines{"80040002 6:16 posicao.fundo.header.dt [20240231]"});
}

TEST_F(PlaceTest, ColumnMinusTheLengthOfTheValueIsItsFirstCharacter) {
    const std::string document =
        lines(std::string(cnpjLine) + dtLine,
              "<titulo><cod>ÁÉÍ</cod> <valor>1</valor></titulo><titulo><cod>çã-õ</cod>"
              "<valor>vinte</valor></titulo>\n");
    check(document);
    const Resultados& found = *validador.getResultado();
    ASSERT_EQ(found.size(), 3U);
    for (const clsResultado& finding : found) {
        const auto length = static_cast<std::int32_t>(text::length(finding.TAGvalue()));
        EXPECT_EQ(std::to_string(finding.linha()) + ":" + std::to_string(finding.coluna() - length),
                  placeOf(document, finding.TAGvalue()))
            << finding.TAGvalue();
    }
}

TEST_F(PlaceTest, ColumnsCountCharactersInEveryEncoding) {
    const std::string body =
        "<posicao><fundo><header><cnpj>ação é únïca</cnpj><dt>20240231</dt></header></fundo>"
        "</posicao>";
    const std::string declared = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";
    const std::string expected =
        "80040002 " + placeBehind(declared + body, "20240231") + " posicao.fundo.header.dt [20240231]";
    EXPECT_EQ(check(text::toLatin1(declared + body)), Lines{expected});
    const std::string utf8 = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>     ";
    EXPECT_EQ(check(utf8 + body), Lines{expected});
    EXPECT_EQ(validador.getResultado()->front().ValorCampoChave(), "ação é únïcaação é únïca");
}

TEST_F(PlaceTest, AccentedValueIsShownInUtf8) {
    const std::string document = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" +
                                 lines(std::string(cnpjLine) + dtLine, wrongTitulo("Ação")).substr(21);
    check(text::toLatin1(document));
    ASSERT_EQ(validador.getResultado()->size(), 1U);
    EXPECT_EQ(validador.getResultado()->front().TAGvalue(), "Ação");
}

TEST_F(PlaceTest, ValueOverSeveralLinesEndsOnItsLastOne) {
    const std::string document = lines(std::string(cnpjLine) + "<dt>\n  2024\n  0628x</dt>\n");
    const std::string place = placeBehind(document, "0628x");
    ASSERT_EQ(place, "8:8");
    EXPECT_EQ(check(document), (Lines{"C00CE184 8:8 posicao.fundo.header.dt [\n  2024\n  0628x]",
                                      "80040002 8:8 posicao.fundo.header.dt [\n  2024\n  0628x]"}));
}

TEST_F(PlaceTest, CarriageReturnsMakeNoColumnsOfTheirOwn) {
    std::string document = lines(std::string(cnpjLine) + "\t\t\t<dt>20240231</dt>\n");
    document = text::replaceAll(document, "\n", "\r\n");
    EXPECT_EQ(check(document), Lines{"80040002 6:16 posicao.fundo.header.dt [20240231]"});
}

TEST_F(PlaceTest, EmptyElementTagIsFoundAtItsStart) {
    const std::string document =
        lines(std::string(cnpjLine) + "\t\t\t<dt/>\n", "<titulo><cod   /><valor>1</valor></titulo>\n");
    const std::string dt = placeOf(document, "<dt/>");
    EXPECT_EQ(check(document),
              (Lines{"C00CE184 " + dt + " posicao.fundo.header.dt [111]",
                     "80040002 " + dt + " posicao.fundo.header.dt [111]",
                     "80040002 " + placeOf(document, "<cod ") + " posicao.fundo.titulo.cod [111]"}));
}

TEST_F(PlaceTest, ElementWithBothTagsAndNoTextIsFoundBetweenThem) {
    const std::string document = lines(std::string(cnpjLine) + "\t\t\t<dt  ></dt>\n");
    const std::string dt = placeOf(document, "</dt>");
    EXPECT_EQ(check(document), (Lines{"C00CE184 " + dt + " posicao.fundo.header.dt [111]",
                                      "80040002 " + dt + " posicao.fundo.header.dt [111]"}));
}

TEST_F(PlaceTest, MissingElementIsFoundAtTheEndOfItsParent) {
    const std::string document = lines(cnpjLine, "<titulo></titulo>\n<titulo/>\n");
    const Lines found = check(document);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_NE(found[0].find(" " + placeOf(document, "</header>") + " posicao.fundo.header ["),
              std::string::npos)
        << found[0];
    EXPECT_NE(found[1].find(" " + placeOf(document, "</titulo>") + " posicao.fundo.titulo ["),
              std::string::npos)
        << found[1];
    EXPECT_NE(found[2].find(" " + placeOf(document, "<titulo/>") + " posicao.fundo.titulo ["),
              std::string::npos)
        << found[2];
}

TEST_F(PlaceTest, LinesBeyond65535AreRight) {
    std::string titulos;
    for (int i = 0; i < 30'000; ++i) {
        titulos += "<titulo>\n<cod>LFT</cod>\n<valor>1</valor>\n</titulo>\n";
    }
    const std::string document =
        lines(std::string(cnpjLine) + dtLine, titulos + wrongTitulo("XXX") + "<mais/>\n");
    // Seven lines to the end of the header, 120,000 in between, then titulo and cod.
    EXPECT_EQ(check(document), (Lines{"80040002 120009:12 posicao.fundo.titulo.cod [XXX]",
                                      "80004005 120012:1 posicao.fundo [1]"}));
}

TEST_F(PlaceTest, WhiteSpaceBetweenElementsIsNoText) {
    // The finding of the empty element still shows the last field, not the indentation.
    const std::string document = lines(std::string(cnpjLine) + "\t\t\t\n\n   \t<dt/>\n");
    check(document);
    ASSERT_EQ(validador.getResultado()->size(), 2U);
    EXPECT_EQ(validador.getResultado()->front().TAGvalue(), "111");
}

// --- unexpected elements

TEST_F(PlaceTest, UnknownElementIsOneFindingAtItsStartTagWithThePathOfItsSection) {
    const std::string document = lines(cnpjLine + std::string(dtLine) + "\t\t\t<extra>1</extra>\n");
    EXPECT_EQ(check(document),
              Lines{"80004005 " + placeOf(document, "<extra>") + " posicao.fundo.header [20240628]"});
    const clsResultado& finding = validador.getResultado()->front();
    EXPECT_EQ(finding.TAGname(), "Cabeçalho");
    EXPECT_EQ(finding.Titulo(), "Nome de Campo não esperado");
    EXPECT_EQ(finding.TipoResultado(), clsResultado::estrutura);
}

TEST_F(PlaceTest, UnknownElementWithContentIsOneFinding) {
    for (const char* extra :
         {"<extra/>", "<extra a='1'><a/><b>2</b>texto<c><d/></c></extra>", "<x:extra xmlns:x='urn:x'/>"}) {
        const std::string document = lines(cnpjLine + std::string(dtLine) + extra + "\n");
        EXPECT_EQ(check(document), Lines{"80004005 " + placeOf(document, std::string(extra).substr(0, 6)) +
                                         " posicao.fundo.header [20240628]"})
            << extra;
    }
}

TEST_F(PlaceTest, UnknownSectionIsOneFinding) {
    const std::string document =
        lines(cnpjLine + std::string(dtLine), "\t\t<secao>\n\t\t\t<cod>LFT</cod>\n\t\t</secao>\n");
    EXPECT_EQ(check(document),
              Lines{"80004005 " + placeOf(document, "<secao>") + " posicao.fundo [20240628]"});
}

TEST_F(PlaceTest, KnownElementInTheWrongPlaceIsOneFinding) {
    // A field too early, a field twice, a section before the header, a section inside of another one.
    std::string document = lines("<cnpj>111</cnpj>\n<nome>A</nome>\n<dt>20240628</dt>\n");
    EXPECT_EQ(check(document),
              Lines{"80004005 " + placeOf(document, "<nome>") + " posicao.fundo.header [111]"});
    document = lines("<cnpj>111</cnpj>\n<dt>20240628</dt>\n<dt>20240629</dt>\n<nome>A</nome>\n");
    EXPECT_EQ(check(document),
              Lines{"80004005 " + placeOf(document, "<dt>", 2) + " posicao.fundo.header [20240628]"});
    document = "<posicao><fundo>\n<titulo><cod>LFT</cod><valor>1</valor></titulo>\n<header><cnpj>1</"
               "cnpj><dt>20240628</dt>"
               "</header></fundo></posicao>";
    EXPECT_EQ(check(document), Lines{"80004005 " + placeOf(document, "<titulo>") + " posicao.fundo [A]"});
    document =
        lines("<cnpj>111</cnpj>\n<dt>20240628</dt>\n<titulo><cod>LFT</cod><valor>1</valor></titulo>\n");
    EXPECT_EQ(check(document),
              Lines{"80004005 " + placeOf(document, "<titulo>") + " posicao.fundo.header [20240628]"});
}

TEST_F(PlaceTest, MisplacedKnownElementKeepsTheWalkAndIsStillJudged) {
    const std::string document =
        lines("<cnpj>111</cnpj>\n<nome>A</nome>\n<dt>20240231</dt>\n", wrongTitulo("XXX"));
    EXPECT_EQ(check(document),
              (Lines{"80004005 " + placeOf(document, "<nome>") + " posicao.fundo.header [111]",
                     "80040002 " + placeBehind(document, "20240231") + " posicao.fundo.header.dt [20240231]",
                     "80040002 " + placeBehind(document, "XXX") + " posicao.fundo.titulo.cod [XXX]"}));
}

TEST_F(PlaceTest, SeveralUnexpectedElementsAreAFindingEach) {
    const std::string document = "<posicao>\n<fundo>\n<header>\n<cnpj>111</cnpj><dt>20240628</dt>\n<um/"
                                 ">\n<dois/>\n</header>\n<tres/>\n</fundo>\n"
                                 "<quatro/>\n</posicao>";
    // Each of them pops a level: the walk falls short, and so do the paths.
    EXPECT_EQ(check(document),
              (Lines{"80004005 5:1 posicao.fundo.header [20240628]", "80004005 6:1 posicao.fundo [20240628]",
                     "80004005 8:1 posicao [20240628]", "80004005 10:1 posicao [20240628]"}));
}

TEST_F(PlaceTest, UnknownElementLeavesTheWalkOneLevelShortForTheRestOfItsSection) {
    const std::string document =
        lines("<cnpj>111</cnpj>\n<extra/>\n<dt>20240231</dt>\n",
              wrongTitulo("XXX") + "<titulo><cod>YYY</cod><valor>dois</valor></titulo>\n");
    // The layout's rules judge nothing any more; the schema's faults come with the path that is left.
    EXPECT_EQ(check(document),
              (Lines{"80004005 " + placeOf(document, "<extra/>") + " posicao.fundo.header [111]",
                     "C00CE184 " + placeBehind(document, "dois") + " posicao [dois]"}));
}

TEST_F(PlaceTest, WalkFindsItsWayAgainAtTheNextFund) {
    const std::string fundo1 = "<fundo><header><cnpj>111</cnpj><dt>20240628</dt><extra/></header>\n" +
                               wrongTitulo("XXX") + "</fundo>\n";
    const std::string fundo2 =
        "<fundo><header><cnpj>222</cnpj><dt>20240628</dt></header>\n" + wrongTitulo("YYY") + "</fundo>\n";
    const std::string document = "<posicao>\n" + fundo1 + fundo2 + "</posicao>";
    EXPECT_EQ(check(document),
              (Lines{"80004005 " + placeOf(document, "<extra/>") + " posicao.fundo.header [20240628]",
                     "80040002 " + placeBehind(document, "YYY") + " posicao.fundo.titulo.cod [YYY]"}));
    EXPECT_EQ(validador.getResultado()->back().ValorCampoChave(), "111222");
}

TEST_F(PlaceTest, UnknownElementInsideOfACommitmentPopsTheSection) {
    const std::string document =
        lines(cnpjLine + std::string(dtLine), "<titulo><cod>LFT</cod><valor>1</valor><compromisso><extra/></"
                                              "compromisso><classe> </classe></titulo>\n" +
                                                  wrongTitulo("XXX"));
    EXPECT_EQ(check(document),
              Lines{"80004005 " + placeOf(document, "<extra/>") + " posicao.fundo.titulo [1]"});
}

TEST_F(PlaceTest, FaultsBehindAnUnexpectedElementAreTold) {
    const std::string document =
        lines("<cnpj>111</cnpj>\n<extra/>\n<dt>x</dt>\n<outro/>\n",
              "<titulo><valor>y</valor></titulo>\n<titulo><cod>LFT</cod><valor>z</valor></titulo>\n");
    check(document);
    const Lines found = codes(*validador.getResultado());
    ASSERT_EQ(found.size(), 6U);
    EXPECT_EQ(found[0], "80004005");
    EXPECT_EQ(found[1], "C00CE184"); // dt
    EXPECT_EQ(found[2], "80004005");
    // A titulo that starts with its second field: that field is the unexpected one.
    EXPECT_EQ(found[3], "80004005");
    EXPECT_EQ(found[4], "C00CE184"); // y
    EXPECT_EQ(found[5], "C00CE184"); // z
}

TEST_F(PlaceTest, TextWhereOnlyElementsMayStandIsAFinding) {
    const std::string document = lines(cnpjLine + std::string(dtLine) + "texto solto\n");
    const Lines found = check(document);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].substr(0, 5), "C00CE");
    EXPECT_NE(found[0].find(" posicao.fundo.header ["), std::string::npos) << found[0];
    EXPECT_EQ(validador.getResultado()->front().TipoResultado(), clsResultado::desconhecido);
}

TEST_F(PlaceTest, AttributeThatIsNotAllowedIsAFindingInPortuguese) {
    const std::string document = lines("<cnpj tipo='x'>111</cnpj>\n" + std::string(dtLine));
    check(document);
    ASSERT_EQ(validador.getResultado()->size(), 1U);
    const clsResultado& finding = validador.getResultado()->front();
    EXPECT_EQ(finding.TipoResultado(), clsResultado::desconhecido);
    EXPECT_EQ(finding.Titulo(), "Erro");
    EXPECT_NE(finding.Descricao().find("tipo"), std::string::npos) << finding.Descricao();
    EXPECT_NE(finding.Descricao().find("atributo"), std::string::npos) << finding.Descricao();
}

} // namespace
} // namespace tv
