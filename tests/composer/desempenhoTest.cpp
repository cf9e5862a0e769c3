// A document of 100,000 rows costs ten times one of 10,000, and a click on it nothing that is felt.

#include "Layouts.h"

#include "composer/EscritorBoleto.h"
#include "composer/LeitorBoleto.h"
#include "composer/fundos.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <ostream>

namespace tv::test {
namespace {

using Segundos = std::chrono::duration<double>;

template<typename Acao>
double segundosDe(Acao acao) {
    const auto inicio = std::chrono::steady_clock::now();
    acao();
    return Segundos(std::chrono::steady_clock::now() - inicio).count();
}

/// The best of several runs: other programs on the machine make single ones slow.
template<typename Acao>
double melhorDe(int vezes, Acao acao) {
    double melhor = segundosDe(acao);
    for (int vez = 1; vez < vezes; ++vez) {
        melhor = std::min(melhor, segundosDe(acao));
    }
    return melhor;
}

std::string documentoDe(int fundos, int detalhes) {
    std::string xml = "<passivo>";
    for (int fundo = 0; fundo < fundos; ++fundo) {
        xml += "<fundo><header><cnpj>94000001000180</cnpj></header>";
        for (int detalhe = 0; detalhe < detalhes; ++detalhe) {
            xml += "<cotista><codigo>" + std::to_string(detalhe) + "</codigo></cotista>";
        }
        xml += "</fundo>";
    }
    return xml + "</passivo>";
}

void abre(Documento& documento, const std::string& xml) {
    XmlDocument dom;
    ASSERT_TRUE(dom.loadXML(xml));
    static const auto layout = layoutDireto();
    documento.abrir(layout);
    LeitorBoleto(documento).abre(dom);
}

struct Tamanho {
    std::string nome;
    int fundos;
    int detalhes;
};

void PrintTo(const Tamanho& tamanho, std::ostream* saida) {
    *saida << tamanho.nome;
}

class CustoLinear : public testing::TestWithParam<Tamanho> {};

TEST_P(CustoLinear, TenTimesTheRowsCostLittleMoreThanTenTimesTheTime) {
    const Tamanho& t = GetParam();
    const bool muitosFundos = t.fundos > t.detalhes;
    const std::string pequeno =
        documentoDe(muitosFundos ? t.fundos / 10 : t.fundos, muitosFundos ? t.detalhes : t.detalhes / 10);
    const std::string grande = documentoDe(t.fundos, t.detalhes);
    Documento umDecimo;
    Documento inteiro;
    const double abrePequeno = melhorDe(3, [&] { abre(umDecimo, pequeno); });
    const double abreGrande = melhorDe(2, [&] { abre(inteiro, grande); });
    const double salvaPequeno = melhorDe(3, [&] { montaDocumento(umDecimo); });
    const double salvaGrande = melhorDe(2, [&] { montaDocumento(inteiro); });
    constexpr double folga = 4; // a cost by the square of the rows would be ten times the ten
    EXPECT_LT(abreGrande, abrePequeno * 10 * folga);
    EXPECT_LT(salvaGrande, salvaPequeno * 10 * folga);
}

INSTANTIATE_TEST_SUITE_P(Formas, CustoLinear,
                         testing::Values(Tamanho{"UmFundo", 1, 100'000}, Tamanho{"MilFundos", 1'000, 99},
                                         Tamanho{"DezMilFundos", 10'000, 9}),
                         [](const auto& um) { return um.param.nome; });

TEST(Desempenho, AClickFiltersAHundredThousandDetailsUnseen) {
    Documento documento;
    abre(documento, documentoDe(100, 1'000));
    std::size_t linhas = 0;
    const double segundos = melhorDe(5, [&] {
        documento.arvore.seleciona("skCONST_RAIZ,0007,cotista,passivo_cotista");
        linhas = fundos::treeFundos_Click(documento).grade->dados->rows().size();
    });
    EXPECT_EQ(linhas, 1'000U);
    EXPECT_LT(segundos, 0.050);
}

} // namespace
} // namespace tv::test
