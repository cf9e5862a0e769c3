#include "validation/BuscaNoRelatorio.h"

#include "logging/LogFolder.h"
#include "platform/Files.h"
#include "validation/biblioteca.h"
#include "validation/documentoResultado.h"

#include <gmock/gmock.h>

namespace tv {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::string_view pagina =
    "<html><head><title>oculto</title><style>td { color: red }</style></head><body><header id=\"inicio\">"
    "<h1>Resultado</h1></header><section class=\"bloco\"><table><caption>Todas</caption><tbody>"
    "<tr id=\"o1\"><td class=\"n\">1</td><td>Posição <small>não é aceita</small></td></tr>"
    "<tr id=\"o2\"><td class=\"n\">2</td><td>a &lt;b&gt; &amp; &quot;c&quot; &#233;&#x41;&nbsp;z</td></tr>"
    "</tbody></table></section><section class=\"bloco\"><table><caption>Outras</caption><tbody>"
    "<tr id=\"o3\"><td class=\"n\">3</td><td>POSIÇÃO</td><td>posicao</td></tr>"
    "</tbody></table></section></body></html>";

struct Busca {
    const char* caso;
    const char* texto;
    std::vector<std::size_t> lugares;
};

void PrintTo(const Busca& busca, std::ostream* saida) {
    *saida << busca.texto;
}

class BuscaNoRelatorioTest : public testing::TestWithParam<Busca> {};

TEST_P(BuscaNoRelatorioTest, GivesTheFindingsThatHoldTheText) {
    EXPECT_EQ(BuscaNoRelatorio(pagina).lugares(GetParam().texto), GetParam().lugares);
}

INSTANTIATE_TEST_SUITE_P(
    Textos, BuscaNoRelatorioTest,
    testing::Values(Busca{"OnceForEachFinding", "posição", {1, 3}}, Busca{"Accents", "posicao", {1, 3}},
                    Busca{"Case", "NÃO É ACEITA", {1}}, Busca{"Header", "resultado", {0}},
                    Busca{"HeaderAndFindings", "o", {0, 1, 3}}, Busca{"NotOverATag", "Posição não", {}},
                    Busca{"NotOverACell", "POSIÇÃOposicao", {}}, Busca{"NotOverARow", "aceita2", {}},
                    Busca{"References", "A <b> & \"c\" éa", {2}},
                    Busca{"BlankThatDoesNotBreak", "\u00A0z", {2}}, Busca{"MarkupIsNoText", "class", {}},
                    Busca{"HeadIsNotSeen", "oculto", {}}, Busca{"CaptionsAreNoFindings", "outras", {}},
                    Busca{"Nowhere", "nunca", {}}, Busca{"Nothing", "", {}}),
    [](const auto& qual) { return std::string(qual.param.caso); });

TEST(BuscaNoRelatorioPaginaTest, CountsTheFindingsAndNamesTheirPlaces) {
    EXPECT_EQ(BuscaNoRelatorio(pagina).ocorrencias(), 3U);
    EXPECT_EQ(BuscaNoRelatorio::ancora(0), "inicio");
    EXPECT_EQ(BuscaNoRelatorio::ancora(12), "o12");
}

TEST(BuscaNoRelatorioPaginaTest, PagesWithoutFindingsAndBrokenOnesDoNoHarm) {
    EXPECT_EQ(BuscaNoRelatorio("").ocorrencias(), 0U);
    EXPECT_EQ(BuscaNoRelatorio("<body>&&;&#;&#xFFFFFFFF;&#xD800;<").ocorrencias(), 0U);
    EXPECT_THAT(BuscaNoRelatorio("<body>a & b &naoha; c").lugares("& b &naoha; c"), ElementsAre(0U));
    const BuscaNoRelatorio cortada("<body><tr id=\"o1\"><td>meio");
    EXPECT_THAT(cortada.lugares("meio"), SizeIs(2)); // it has no block, so all of it is header too
}

/// "finding number/total", or "-".
std::string vai(BuscaNoRelatorio& busca, std::string_view texto, bool paraTras = false) {
    const auto passo = busca.vai(texto, paraTras);
    return passo ? std::to_string(passo->lugar) + " " + std::to_string(passo->numero) + "/" +
                       std::to_string(passo->total)
                 : "-";
}

TEST(BuscaNoRelatorioPaginaTest, GoesFromFindingToFindingAroundTheEnd) {
    BuscaNoRelatorio busca(pagina);
    EXPECT_EQ(vai(busca, "posi"), "1 1/2");
    EXPECT_EQ(vai(busca, "posiç"), "1 1/2") << "typed on, it still matches";
    EXPECT_EQ(vai(busca, "posiç"), "3 2/2");
    EXPECT_EQ(vai(busca, "posiç"), "1 1/2");
    EXPECT_EQ(vai(busca, "posiç", true), "3 2/2");
    EXPECT_EQ(vai(busca, "posiç", true), "1 1/2");
    EXPECT_EQ(vai(busca, "<b>"), "2 1/1");
    EXPECT_EQ(vai(busca, "<b>"), "2 1/1");
    EXPECT_EQ(vai(busca, "<b>", true), "2 1/1");
    EXPECT_EQ(vai(busca, "nunca"), "-");
    EXPECT_EQ(vai(busca, "posi", true), "1 1/2") << "from where the last match stood";
    EXPECT_EQ(vai(busca, "resultado"), "0 1/1");
    EXPECT_EQ(vai(busca, ""), "-");
}

TEST(BuscaNoRelatorioPaginaTest, TheShippedPageMarksItsFindings) {
    const test::TemporaryFolder pasta;
    const test::GlobalLogger logger(test::startLogger(pasta, clsLogger::typeTXT, library::level::all));
    Resultados achados;
    for (int i = 1; i <= 450; ++i) {
        clsResultado um;
        um.setTag("campo", "valor " + std::to_string(i), "raiz.secao.campo", "12345678000195");
        um.setError(clsResultado::codigoEntreCampos, "Soma não confere", "A soma <b> não confere");
        um.setLocation(i, 3);
        achados.push_back(um);
    }
    const auto destino = pasta.path() / "pagina.html";
    ASSERT_TRUE(biblioteca::transformStream(montaDocumentoResultado(achados, "Posição", "/dados/f.xml"),
                                            TV_SOURCE_DIR "/data/XSD/resultado.xsl", destino));
    const BuscaNoRelatorio busca(files::readAll(destino));
    EXPECT_EQ(busca.ocorrencias(), 450U);
    EXPECT_THAT(busca.lugares("valor 317"), ElementsAre(317U));
    EXPECT_THAT(busca.lugares("a soma <B> nao"), SizeIs(450));
    EXPECT_THAT(busca.lugares("/dados/f.xml"), ElementsAre(0U));
    EXPECT_THAT(busca.lugares("content-visibility"), IsEmpty());
    EXPECT_NE(files::readAll(destino).find("<header id=\"inicio\">"), std::string::npos);
}

} // namespace
} // namespace tv
