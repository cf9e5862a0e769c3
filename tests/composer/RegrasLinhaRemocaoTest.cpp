// What goes with deleted rows.
#include "RegrasDeLinha.h"

#include <gmock/gmock.h>

namespace tv::test {
namespace {

using testing::ElementsAre;

TEST_F(RegrasDeLinha, DeletingAMasterTakesItsDetailsInAllSectionsAndNoOthers) {
    abre(layoutEmGrupos());
    GradeSecao& header = grade("posicao_fundo_header");
    const std::size_t primeiro = digita(header, "cnpj", Value(cnpj));
    digita(header, "cnpj", Value(outroCnpj));
    for (const std::string fundo : {"0001", "0002"}) {
        for (const std::string secao : {"titulo", "despesas"}) {
            clica("skCONST_fundo," + fundo + "," + secao + ",posicao_fundo_" + secao);
            digita(documento.getGrid(), "codigo", Value("x"));
        }
    }
    // A wallet's details of the same number belong to another master.
    RecordSet& carteira = *grade("posicao_carteira_titulo").dados;
    carteira.AddNew();
    carteira.set("rowMaster", 1);
    carteira.Update();
    clica("kCONST_fundo");
    documento.estado.salvo = true;

    apaga(header, primeiro);

    EXPECT_EQ(linhas("posicao_fundo_header"), 1U);
    EXPECT_EQ(linhas("posicao_fundo_titulo"), 1U);
    EXPECT_EQ(linhas("posicao_fundo_despesas"), 1U);
    EXPECT_EQ(linhas("posicao_carteira_titulo"), 1U);
    EXPECT_EQ(grade("posicao_fundo_titulo").dados->get("rowMaster"), Value(2));
    EXPECT_THAT(refeitas, ElementsAre(&grade("posicao_fundo_titulo"), &grade("posicao_fundo_despesas")));
    // The fund stays in the tree until the document is loaded again.
    EXPECT_NE(documento.arvore.fundo("posicao_fundo_header", 1), nullptr);
    EXPECT_FALSE(documento.estado.salvo);
    EXPECT_FALSE(documento.estado.apagando);
}

TEST_F(RegrasDeLinha, MastersStraightBelowTheLayoutTakeTheDetailsOfAllItsSections) {
    abre(layoutDireto());
    GradeSecao& header = grade("passivo_header");
    const std::size_t linha = digita(header, "cnpj", Value(cnpj));
    for (const std::string secao : {"cotista", "despesas"}) {
        clica("skCONST_RAIZ,0001," + secao + ",passivo_" + secao);
        digita(documento.getGrid(), "codigo", Value("x"));
    }
    clica("kCONST_RAIZ");
    apaga(header, linha);
    EXPECT_EQ(linhas("passivo_cotista"), 0U);
    EXPECT_EQ(linhas("passivo_despesas"), 0U);
}

TEST_F(RegrasDeLinha, SeveralMastersGoAtOnce) {
    abre(layoutDireto());
    GradeSecao& header = grade("passivo_header");
    std::vector<std::size_t> todas;
    RecordSet& cotista = *grade("passivo_cotista").dados;
    for (int fundo = 1; fundo <= 3; ++fundo) {
        todas.push_back(digita(header, "cnpj", Value(cnpj)));
        cotista.AddNew();
        cotista.set("rowMaster", fundo);
        cotista.Update();
    }
    todas.pop_back();
    regras.grid_BeforeRowsDeleted(header, todas);
    EXPECT_TRUE(documento.estado.apagando);
    EXPECT_THAT(documento.estado.linhasApagadas, ElementsAre("1", "2"));
    regras.grid_AfterRowsDeleted(header);
    EXPECT_EQ(linhas("passivo_cotista"), 1U);
    EXPECT_EQ(cotista.get("rowMaster"), Value(3));
}

TEST_F(RegrasDeLinha, DeletingDetailsTouchesNoOtherSection) {
    abre(layoutEmGrupos());
    digita(grade("posicao_fundo_header"), "cnpj", Value(cnpj));
    clica("skCONST_fundo,0001,despesas,posicao_fundo_despesas");
    digita(documento.getGrid(), "codigo", Value("x"));
    clica("skCONST_fundo,0001,titulo,posicao_fundo_titulo");
    const std::size_t linha = digita(documento.getGrid(), "codigo", Value("x"));
    documento.estado.salvo = true;
    documento.estado.linhasApagadas = {"1"}; // from a deletion before
    apaga(documento.getGrid(), linha);
    EXPECT_EQ(linhas("posicao_fundo_titulo"), 0U);
    EXPECT_EQ(linhas("posicao_fundo_despesas"), 1U);
    EXPECT_EQ(linhas("posicao_fundo_header"), 1U);
    EXPECT_TRUE(refeitas.empty());
    EXPECT_FALSE(documento.estado.salvo);
    EXPECT_FALSE(documento.estado.apagando);
}

TEST_F(RegrasDeLinha, WhatGoesWithADeletionIsKnownBeforeIt) {
    abre(layoutEmGrupos());
    GradeSecao& header = grade("posicao_fundo_header");
    const std::size_t primeiro = digita(header, "cnpj", Value(cnpj));
    digita(header, "cnpj", Value(outroCnpj));
    for (const std::string fundo : {"0001", "0002"}) {
        clica("skCONST_fundo," + fundo + ",titulo,posicao_fundo_titulo");
        digita(documento.getGrid(), "codigo", Value("LTN"));
    }
    regras.grid_BeforeRowsDeleted(documento.getGrid(), {0});
    EXPECT_EQ(regras.linhasQueSaem(documento.getGrid(), {0}).size(), 1U);
    documento.estado.apagando = false;
    clica("kCONST_fundo");
    regras.grid_BeforeRowsDeleted(header, {primeiro});
    const std::vector<LinhaGuardada> saem = regras.linhasQueSaem(header, {primeiro});
    ASSERT_EQ(saem.size(), 2U);
    EXPECT_EQ(saem[0].chaveGrade, "posicao_fundo_header");
    EXPECT_EQ(saem[0].linha, primeiro);
    EXPECT_EQ(saem[0].valores.at(0), Value(cnpj));
    EXPECT_EQ(saem[1].chaveGrade, "posicao_fundo_titulo");
    EXPECT_EQ(saem[1].valores.at(0), Value("LTN"));
}

} // namespace
} // namespace tv::test
