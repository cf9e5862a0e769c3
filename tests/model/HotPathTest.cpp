#include "model/CountAllocations.h"
#include "model/LayoutXml.h"
#include "model/clsBoleto.h"
#include "model/clsSecao.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::BoletoXml;
using test::CampoXml;
using test::SecaoXml;

/// Runs `call` and gives the number of its allocations.
template<typename Call>
std::size_t allocationsOf(Call&& call) {
    const std::size_t before = test::allocations();
    call();
    return test::allocations() - before;
}

struct HotPathTest : ::testing::Test {
    clsBoleto boleto;

    void SetUp() override {
        const SecaoXml inner{.tag = "SecaoDentroDaPrimeiraSecao"};
        const SecaoXml outer{.tag = "fundo",
                             .inside = CampoXml{.tag = "CampoComUmNomeComprido", .validacao = "DATA"}.xml() +
                                       CampoXml{.tag = "cnpj", .validacao = "CNPJ"}.xml() +
                                       CampoXml{.tag = "papel", .tabela = "titulos"}.xml() +
                                       CampoXml{.tag = "nome", .mandatorio = "S"}.xml() + inner.xml()};
        boleto.setEstrutura(BoletoXml{.inside = outer.xml()}.xml(), test::tables(), "/tv");
        ASSERT_GT(test::allocations(), 0U) << "the counter must be at work";
    }
};

TEST_F(HotPathTest, WalkingToAKnownNodeAllocatesNothing) {
    const LayoutNode& fundo = boleto.GetChild("fundo");
    const std::size_t counted = allocationsOf([&] {
        EXPECT_NE(boleto.findChild("fundo"), nullptr);
        EXPECT_NE(fundo.findChild("CampoComUmNomeComprido"), nullptr);
        EXPECT_NE(fundo.findChild("SecaoDentroDaPrimeiraSecao"), nullptr);
        EXPECT_EQ(fundo.findChild("elemento_que_ninguem_conhece"), nullptr);
    });
    EXPECT_EQ(counted, 0U);
}

TEST_F(HotPathTest, JudgingAValueAllocatesNothing) {
    const LayoutNode& fundo = boleto.GetChild("fundo");
    const std::size_t counted = allocationsOf([&] {
        EXPECT_TRUE(fundo.findChild("CampoComUmNomeComprido")->isValido("20240115"));
        EXPECT_TRUE(fundo.findChild("cnpj")->isValido("11222333000181"));
        EXPECT_TRUE(fundo.findChild("papel")->isValido("LFT"));
        EXPECT_FALSE(fundo.findChild("papel")->isValido("lft"));
        EXPECT_TRUE(fundo.findChild("nome")->isValido("Fundo de um nome mais comprido do que curto"));
    });
    EXPECT_EQ(counted, 0U);
}

} // namespace
} // namespace tv
