#include "common/TrabalhoGuardado.h"

#include "platform/Error.h"

#include <gtest/gtest.h>

#include <string>

namespace tv {
namespace {

const EtiquetaDeTrabalho etiqueta{"frmTramador", "posicao", "/tmp/ação.xml",
                                  clock::at(2026, 3, 14, 10, 20, 30)};

PecasDeTrabalho pecas(std::initializer_list<std::string> textos) {
    PecasDeTrabalho todas;
    for (const std::string& texto : textos) {
        todas.push_back(std::make_shared<const std::string>(texto));
    }
    return todas;
}

std::string arquivoDe(const PecasDeTrabalho& conteudo) {
    const arquivoDeTrabalho::Moldura moldura = arquivoDeTrabalho::moldura(etiqueta, conteudo);
    std::string bytes = moldura.inicio;
    for (const auto& peca : conteudo) {
        bytes += *peca;
    }
    return bytes + moldura.fim;
}

TEST(TrabalhoGuardado, ComesBackWithItsLabelWhateverPiecesItIsIn) {
    const std::string zeros("\0\xFF\r\n", 4);
    const TrabalhoGuardado lido = arquivoDeTrabalho::le(arquivoDe(pecas({"um", "", zeros, "três"})));
    EXPECT_EQ(lido.janela, etiqueta.janela);
    EXPECT_EQ(lido.layout, etiqueta.layout);
    EXPECT_EQ(lido.arquivo, etiqueta.arquivo);
    EXPECT_EQ(lido.instante, etiqueta.instante);
    EXPECT_EQ(lido.conteudo, "um" + zeros + "três");
    EXPECT_EQ(arquivoDeTrabalho::le(arquivoDe({})).conteudo, "");
}

TEST(TrabalhoGuardado, EveryChangedByteIsFoundOut) {
    const std::string inteiro = arquivoDe(pecas({"conteúdo"}));
    for (std::size_t i = 0; i < inteiro.size(); ++i) {
        std::string mudado = inteiro;
        mudado[i] = static_cast<char>(mudado[i] ^ 4);
        EXPECT_THROW(arquivoDeTrabalho::le(mudado), Error) << i;
    }
}

TEST(TrabalhoGuardado, EveryCutIsFoundOut) {
    const std::string inteiro = arquivoDe(pecas({"conteúdo"}));
    for (std::size_t tamanho = 0; tamanho < inteiro.size(); ++tamanho) {
        EXPECT_THROW(arquivoDeTrabalho::le(inteiro.substr(0, tamanho)), Error) << tamanho;
    }
    EXPECT_THROW(arquivoDeTrabalho::le(inteiro + "x"), Error);
    EXPECT_THROW(arquivoDeTrabalho::le(std::string(100, 'x')), Error);
}

} // namespace
} // namespace tv
