// Documents go into the grids and out again.

#include "Amostras.h"

#include "../platform/ScratchFolder.h"
#include "composer/EscritorBoleto.h"
#include "composer/LeitorBoleto.h"
#include "platform/text.h"
#include "validation/clsValidador.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv::test {
namespace {

/// Numbers beyond the digits of 64-bit floating point come back as the same number, not as the same digits.
std::string comNumerosLongosComoNumeros(const std::string& linha) {
    const std::size_t igual = linha.find('=') + 1;
    const std::string valor = linha.substr(igual);
    const auto numero = text::documentNumber(valor);
    constexpr std::size_t digitosEPonto = 16;
    return igual > 0 && numero && valor.size() > digitosEPonto && valor.find('.') != std::string::npos
               ? linha.substr(0, igual) + defaultText(Value(*numero))
               : linha;
}

std::vector<std::string> arvoreComparavel(const XmlDocument& dom) {
    std::vector<std::string> linhas = arvoreXml(dom);
    std::transform(linhas.begin(), linhas.end(), linhas.begin(), comNumerosLongosComoNumeros);
    return linhas;
}

/// What a validator of other makers says of a file.
bool passaNoEsquema(const std::filesystem::path& arquivo, const clsBoleto& layout) {
    const std::string comando =
        "xmllint --noout --schema '" + layout.getValidador() + "' '" + arquivo.string() + "' >/dev/null 2>&1";
    return std::system(comando.c_str()) == 0; // NOLINT(cert-env33-c): a fixed command on our own files
}

class IdaEVolta : public testing::TestWithParam<std::string> {
protected:
    std::filesystem::path amostra() const { return pastaDasAmostras() / GetParam(); }
};

TEST_P(IdaEVolta, GivesTheSameDocument) {
    Documento documento;
    documento.abrir(layoutDaAmostra(amostra()));
    LeitorBoleto leitor(documento);
    ASSERT_TRUE(leitor.abre(amostra()));
    EXPECT_TRUE(documento.estado.salvo);
    EXPECT_EQ(documento.estado.arquivo, amostra().string());
    const std::vector<std::string> linhas = linhasDoDocumento(documento);
    EXPECT_GT(linhas.size(), 3U);

    XmlDocument aberto;
    ASSERT_TRUE(aberto.load(amostra()));
    const XmlDocument salvo = montaDocumento(documento);
    EXPECT_EQ(arvoreComparavel(salvo), arvoreComparavel(aberto));

    const ScratchFolder pasta;
    salvo.save(pasta / "salvo.xml", true);
    clsValidador validador;
    EXPECT_TRUE(validador.isValido(pasta / "salvo.xml", documento.boleto()));
    EXPECT_TRUE(validador.getAvisos().empty());
    EXPECT_TRUE(passaNoEsquema(pasta / "salvo.xml", *documento.boleto()));

    Documento outra;
    outra.abrir(documento.boleto());
    LeitorBoleto releitor(outra);
    ASSERT_TRUE(releitor.abre(pasta / "salvo.xml"));
    EXPECT_EQ(linhasDoDocumento(outra), linhas);
}

TEST_P(IdaEVolta, PutsEveryFundIntoTheTree) {
    Documento documento;
    documento.abrir(layoutDaAmostra(amostra()));
    LeitorBoleto leitor(documento);
    ASSERT_TRUE(leitor.abre(amostra()));
    std::int32_t maior = 0;
    for (const auto& grade : documento.grids()) {
        const auto dados = grade->dados->Clone();
        std::int32_t rowID = 0;
        for (; grade->secao->isSecaoMestre() && !dados->EOF_(); dados->MoveNext()) {
            EXPECT_EQ(dados->get("rowID"), Value(++rowID));
            ASSERT_NE(documento.arvore.fundo(grade->chave, rowID), nullptr);
        }
        maior = std::max(maior, rowID);
    }
    EXPECT_GT(maior, 0);
    EXPECT_EQ(documento.estado.ultimoRowID, maior);
}

INSTANTIATE_TEST_SUITE_P(Amostras, IdaEVolta, testing::ValuesIn(amostrasValidas()), [](const auto& uma) {
    std::string nome = uma.param.substr(0, uma.param.size() - 4);
    std::replace(nome.begin(), nome.end(), '/', '_');
    return nome;
});

} // namespace
} // namespace tv::test
