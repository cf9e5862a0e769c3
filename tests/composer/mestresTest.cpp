#include "composer/mestres.h"

#include "../platform/Throws.h"
#include "Layouts.h"

#include <gtest/gtest.h>

namespace tv::test {
namespace {

Documento documentoDe(const BoletoXml& layout) {
    Documento documento;
    documento.abrir(layoutOf(layout));
    return documento;
}

void linha(const Documento& documento, std::string_view grade, std::int32_t rowID = 1) {
    RecordSet& dados = *documento.grade(grade).dados;
    dados.AddNew();
    dados.set("rowID", rowID);
    dados.Update();
}

TEST(Mestres, AreFundsAndWalletsWhereTheLayoutHasGroups) {
    Documento documento;
    documento.abrir(layoutEmGrupos());
    for (const std::string_view noAtual : {"fundo", "carteira"}) {
        documento.estado.noAtual = documento.layout().getSecoes().Item(noAtual).get();
        EXPECT_EQ(mestres::acha(documento).a->chave, "posicao_fundo_header");
        EXPECT_EQ(mestres::acha(documento).b->chave, "posicao_carteira_header");
    }
    // Also while a detail section is worked on.
    documento.estado.noAtual = documento.grade("posicao_fundo_titulo").secao;
    EXPECT_EQ(mestres::acha(documento).b->chave, "posicao_carteira_header");
}

TEST(Mestres, AreOneWhereTheLayoutHasAMaster) {
    Documento documento;
    documento.abrir(layoutDireto());
    for (const char* grade : {"passivo_header", "passivo_cotista"}) {
        EXPECT_EQ(mestres::acha(documento).a->chave, "passivo_header");
        EXPECT_EQ(mestres::acha(documento).a, mestres::acha(documento).b);
        documento.estado.noAtual = documento.grade(grade).secao;
    }
}

TEST(Mestres, AreTheSectionWorkedOnWhereTheSecondOneHasFields) {
    Documento documento = documentoDe({.tag = "l", .inside = grupo("g", "G", mestre()) + detalhe("solta")});
    EXPECT_EQ(errorOf([&] { mestres::acha(documento); }), errc::invalidCall); // "l_g" has no grid
    documento.estado.noAtual = documento.grade("l_solta").secao;
    EXPECT_EQ(mestres::acha(documento).a->chave, "l_solta");
}

TEST(Mestres, AreNotFoundWithASingleGroup) {
    const Documento documento = documentoDe({.tag = "l", .inside = grupo("g", "G", mestre())});
    EXPECT_EQ(errorOf([&] { mestres::acha(documento); }), errc::subscriptOutOfRange);
}

struct Dados {
    bool fundo;
    bool carteira;
};

TEST(Mestres, TellWhetherThereIsAnything) {
    for (const Dados& dados : {Dados{false, false}, {true, false}, {false, true}, {true, true}}) {
        Documento documento;
        documento.abrir(layoutEmGrupos());
        if (dados.fundo) {
            linha(documento, "posicao_fundo_header");
        }
        if (dados.carteira) {
            linha(documento, "posicao_carteira_header");
        }
        linha(documento, "posicao_fundo_titulo"); // details do not count
        EXPECT_EQ(mestres::temDados(documento), dados.fundo || dados.carteira);
        const mestres::Contagem contagem = mestres::conta(mestres::acha(documento));
        EXPECT_EQ(contagem.a, dados.fundo ? 1U : 0U);
        EXPECT_EQ(contagem.b, dados.carteira ? 1U : 0U);
    }
}

TEST(Mestres, AreCountedWithoutTheirFilters) {
    Documento documento;
    documento.abrir(layoutEmGrupos());
    linha(documento, "posicao_fundo_header");
    linha(documento, "posicao_carteira_header");
    documento.grade("posicao_fundo_header").dados->Filter("rowID = 0");
    documento.grade("posicao_carteira_header").dados->Filter("rowID = 0");
    EXPECT_EQ(mestres::conta(mestres::acha(documento)).a, 1U);
    EXPECT_EQ(mestres::conta(mestres::acha(documento)).b, 1U);
    EXPECT_FALSE(mestres::temDados(documento)); // which goes by what the grids show
}

} // namespace
} // namespace tv::test
