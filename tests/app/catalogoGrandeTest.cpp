#include "app/clsTramadorValidador.h"
#include "logging/LogFolder.h"
#include "model/LayoutXml.h"
#include "windows/TempoDeProcessador.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::BoletoXml;
using test::CampoXml;
using test::SecaoXml;

constexpr const char* arquivo = "TORVA_TramadorValidador.xml";
constexpr int layouts = 200;
constexpr int secoes = 5;
constexpr int campos = 20;

std::string layout(int numero) {
    std::string dentro;
    for (int i = 0; i < secoes; ++i) {
        std::string daSecao;
        for (int j = 0; j < campos; ++j) {
            daSecao += CampoXml{.tag = "campo" + std::to_string(j)}.xml();
        }
        dentro += SecaoXml{.tag = "secao" + std::to_string(i), .inside = daSecao}.xml();
    }
    return BoletoXml{.tag = "layout" + std::to_string(numero), .inside = dentro}.xml();
}

TEST(CatalogoGrande, LoadsTwoHundredLayoutsWithTwentyThousandFieldsInUnderTwoSeconds) {
    std::string boletos;
    for (int i = 0; i < layouts; ++i) {
        boletos += layout(i);
    }
    const test::TemporaryFolder pasta;
    pasta.write(arquivo,
                "<?xml version='1.0' encoding='UTF-8'?>\n<TORVA><app><titulo>Grande</titulo><versao>1"
                "</versao><site><caption/><link/></site><email><caption/><link/></email><descricao/>"
                "</app><logger type='TXT' level='OFF'/><configuracao><TABELAS/></configuracao>" +
                    boletos + "</TORVA>");
    const test::GlobalLogger semRegistro{nullptr};
    clsTramadorValidador catalogo;
    const test::TempoDeProcessador tempo;
    ASSERT_TRUE(catalogo.load(pasta.text(), arquivo)) << catalogo.lastReason();
    EXPECT_LT(tempo.decorrido(), 2000 * test::folgaDaMedida);
    EXPECT_EQ(catalogo.getBoletos().Count(), static_cast<std::size_t>(layouts));
}

} // namespace
} // namespace tv
