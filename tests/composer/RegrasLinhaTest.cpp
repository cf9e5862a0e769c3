#include "RegrasDeLinha.h"
#include "composer/chavesArvore.h"

#include <gmock/gmock.h>

#include <limits>

namespace tv::test {
namespace {

using testing::ElementsAre;

TEST_F(RegrasDeLinha, AMasterRowTakesTheNextNumber) {
    abre(layoutDireto());
    GradeSecao& header = grade("passivo_header");
    EXPECT_EQ(celula(header, digita(header, "cnpj", Value(cnpj)), "rowID"), Value(1));
    EXPECT_EQ(celula(header, digita(header, "cnpj", Value(outroCnpj)), "rowID"), Value(2));
    EXPECT_EQ(documento.estado.ultimoRowID, 2);
    EXPECT_FALSE(documento.estado.salvo);
    EXPECT_THAT(textosAbaixo(*documento.arvore.raiz()),
                ElementsAre("94.000.001/0001-80", "94.000.031/0001-96"));
}

TEST_F(RegrasDeLinha, AMasterRowBelowAGroupHasTheFundZero) {
    abre(layoutEmGrupos());
    GradeSecao& header = grade("posicao_fundo_header");
    const std::size_t linha = digita(header, "cnpj", Value(cnpj));
    EXPECT_EQ(celula(header, linha, "rowID"), Value(1));
    EXPECT_EQ(celula(header, linha, "rowMaster"), Value(0));
}

TEST_F(RegrasDeLinha, AMasterRowBelowTheRootHasNoFund) {
    abre(layoutDireto());
    clica("kCONST_RAIZ");
    GradeSecao& header = grade("passivo_header");
    EXPECT_TRUE(isNull(celula(header, digita(header, "cnpj", Value(cnpj)), "rowMaster")));
}

TEST_F(RegrasDeLinha, ADetailRowSharesTheLastNumberAndHangsOnTheSelectedFund) {
    abre(layoutEmGrupos());
    GradeSecao& header = grade("posicao_fundo_header");
    digita(header, "cnpj", Value(cnpj));
    digita(header, "cnpj", Value(outroCnpj));
    clica("skCONST_fundo,0001,titulo,posicao_fundo_titulo");
    GradeSecao& titulo = grade("posicao_fundo_titulo");
    for (int vez = 0; vez < 2; ++vez) {
        const std::size_t linha = digita(titulo, "codigo", Value("LTN"));
        EXPECT_EQ(celula(titulo, linha, "rowID"), Value(2));
        EXPECT_EQ(celula(titulo, linha, "rowMaster"), Value(1));
    }
    EXPECT_EQ(documento.estado.ultimoRowID, 2);
}

TEST_F(RegrasDeLinha, WithoutATreeADetailHangsOnNoFund) {
    abre(layoutOf({.tag = "lista", .inside = mestre("registro") + detalhe("item")}));
    digita(grade("lista_registro"), "cnpj", Value(cnpj));
    GradeSecao& item = grade("lista_item");
    EXPECT_TRUE(isNull(celula(item, digita(item, "codigo", Value("x")), "rowMaster")));
    EXPECT_FALSE(documento.estado.salvo); // also without a tree
}

TEST_F(RegrasDeLinha, NumbersDoNotGoBeyondTheirRange) {
    abre(layoutDireto());
    documento.estado.ultimoRowID = std::numeric_limits<std::int32_t>::max();
    EXPECT_FALSE(regras.addRow(grade("passivo_header"), std::nullopt).linha);
    EXPECT_EQ(documento.estado.ultimoRowID, std::numeric_limits<std::int32_t>::max());
}

TEST_F(RegrasDeLinha, NothingIsAddedWhileTheButtonIsOff) {
    abre(layoutDireto());
    documento.estado.btnAdicionar = false;
    const auto nova = regras.addRow(grade("passivo_header"), std::nullopt);
    EXPECT_FALSE(nova.linha);
    EXPECT_EQ(nova.mensagem, "");
    EXPECT_EQ(linhas("passivo_header"), 0U);
}

TEST_F(RegrasDeLinha, NoNewRowStartsWhileTheActiveOneIsInvalid) {
    abre(layoutDireto());
    GradeSecao& header = grade("passivo_header");
    const std::size_t linha = digita(header, "cnpj", Value("1"));
    EXPECT_EQ(mensagem, "Os valores dos seguintes campos são inválidos: \n\tCNPJ");
    const auto nova = regras.addRow(header, linha);
    EXPECT_FALSE(nova.linha);
    EXPECT_EQ(nova.mensagem, mensagem);
    EXPECT_EQ(linhas("passivo_header"), 1U);
}

TEST_F(RegrasDeLinha, AnInvalidRowStaysAndLeavesTheDocumentSaved) {
    abre(layoutDireto());
    digita(grade("passivo_header"), "cnpj", Value("1"));
    EXPECT_EQ(linhas("passivo_header"), 1U);
    EXPECT_TRUE(documento.estado.salvo);
    EXPECT_TRUE(documento.arvore.raiz()->filhos.empty());
}

TEST_F(RegrasDeLinha, ASectionThatOccursOnceTakesOneRowForEachFund) {
    abre(layoutEmGrupos());
    GradeSecao& header = grade("posicao_fundo_header");
    digita(header, "cnpj", Value(cnpj));
    digita(header, "cnpj", Value(outroCnpj));
    GradeSecao& despesas = grade("posicao_fundo_despesas");
    for (const std::string fundo : {"0001", "0002"}) {
        clica("skCONST_fundo," + fundo + ",despesas,posicao_fundo_despesas");
        const std::size_t linha = digita(despesas, "codigo", Value("x"));
        const auto segunda = regras.addRow(despesas, linha);
        EXPECT_FALSE(segunda.linha);
        EXPECT_EQ(segunda.mensagem, "");
    }
    EXPECT_EQ(linhas("posicao_fundo_despesas"), 2U);
}

struct Ocorrencia {
    std::string ocorrencia;
    std::size_t existentes;
    bool pode;
};

TEST_F(RegrasDeLinha, TheOccurrenceLimitsTheRowsOfAView) {
    const std::vector<Ocorrencia> rows = {
        {"*", 0, true},  {"*", 3, true},  {"1", 0, true},   {"1", 1, false},  {"2", 1, true},
        {"2", 2, false}, {"0", 0, true},  {"0", 1, false},  {"N", 0, true},   {"N", 1, false},
        {"", 1, false},  {"3a", 2, true}, {"3a", 3, false}, {"2.5", 2, true}, {"2.5", 3, false},
    };
    for (const Ocorrencia& row : rows) {
        Documento outro;
        outro.abrir(layoutOf({.tag = "l", .inside = mestre() + detalhe("d", row.ocorrencia)}));
        GradeSecao& alvo = outro.grade("l_d");
        for (std::size_t i = 0; i < row.existentes; ++i) {
            alvo.dados->AddNew();
        }
        EXPECT_EQ(RegrasLinha(outro).canAddRow(alvo), row.pode)
            << row.ocorrencia << " com " << row.existentes;
    }
}

TEST_F(RegrasDeLinha, AMasterHasNoLimit) {
    abre(layoutDireto());
    grade("passivo_header").dados->AddNew();
    EXPECT_EQ(grade("passivo_header").secao->getOcorrencia(), "1");
    EXPECT_TRUE(regras.canAddRow(grade("passivo_header")));
}

TEST_F(RegrasDeLinha, NoRowIsValidAndSoIsEveryRowDuringADeletion) {
    abre(layoutDireto());
    GradeSecao& header = grade("passivo_header");
    EXPECT_TRUE(regras.validateRow(header, std::nullopt).valida);
    header.dados->AddNew();
    const std::size_t linha = header.dados->currentRow();
    EXPECT_FALSE(regras.validateRow(header, linha).valida);
    documento.estado.apagando = true;
    EXPECT_TRUE(regras.validateRow(header, linha).valida);
}

TEST_F(RegrasDeLinha, TheMessageNamesEveryFieldAtFaultInTheirOrder) {
    const std::string campos =
        campoChave() +
        CampoXml{.tag = "dt",
                 .tipo = "DATA",
                 .mandatorio = "S",
                 .validacao = "DATA",
                 .titulo = "Data",
                 .maskOutput = "YYYYMMDD"}
            .xml() +
        campo("livre") +
        CampoXml{.tag = "tit", .mandatorio = "S", .titulo = "Título", .tabela = "titulos"}.xml();
    abre(layoutOf({.tag = "l", .inside = mestre("header", campos)}));
    GradeSecao& header = grade("l_header");
    header.dados->AddNew();
    const std::size_t linha = header.dados->currentRow();
    EXPECT_EQ(regras.validateRow(header, linha).mensagem,
              "Os valores dos seguintes campos são inválidos: \n\tCNPJ\n\tData\n\tTítulo");
    header.dados->set("cnpj", Value(cnpj));
    header.dados->set("tit", Value("LFT"));
    EXPECT_EQ(regras.validateRow(header, linha).mensagem,
              "Os valores dos seguintes campos são inválidos: \n\tData");
    // A date is judged in the form in which it would be written.
    header.dados->set("dt", clock::at(2024, 1, 15));
    EXPECT_TRUE(regras.validateRow(header, linha).valida);
}

TEST_F(RegrasDeLinha, AFailureIsNoValidRow) {
    abre(layoutDireto());
    digita(grade("passivo_header"), "cnpj", Value(cnpj));
    clica("g_0001,passivo_header");
    documento.estado.salvo = true;
    GradeSecao& header = grade("passivo_header");
    EXPECT_FALSE(regras.validateRow(header, 0).valida);
    EXPECT_EQ(regras.validateRow(header, 0).mensagem, "");
    // A committed change of the master row shown by its fund neither renames it nor counts as unsaved.
    header.dados->MoveTo(0);
    header.dados->set("cnpj", Value(outroCnpj));
    header.dados->Update();
    regras.grid_AfterRowUpdate(header, 0);
    EXPECT_TRUE(documento.estado.salvo);
    EXPECT_THAT(textosAbaixo(*documento.arvore.raiz()), ElementsAre("94.000.001/0001-80"));
}

TEST_F(RegrasDeLinha, ACommittedMasterRenamesItsFund) {
    abre(layoutEmGrupos());
    GradeSecao& header = grade("posicao_fundo_header");
    const std::size_t linha = digita(header, "cnpj", Value(cnpj));
    header.dados->set("cnpj", Value(outroCnpj));
    header.dados->Update();
    regras.grid_AfterRowUpdate(header, linha);
    EXPECT_THAT(textosAbaixo(*documento.arvore.find("kCONST_fundo")), ElementsAre("94.000.031/0001-96"));
}

TEST_F(RegrasDeLinha, AfterAClickOnTheRootTheMasterItselfIsWorkedOn) {
    abre(layoutDireto());
    GradeSecao& header = grade("passivo_header");
    digita(header, "cnpj", Value(cnpj));
    clica("kCONST_RAIZ");
    ASSERT_EQ(documento.estado.noAtual, header.secao);
    digita(header, "cnpj", Value(outroCnpj));
    EXPECT_NE(documento.arvore.find("gkCONST_RAIZ_0002,passivo_header"), nullptr);
}

TEST_F(RegrasDeLinha, ARowOfASectionWithSubsectionsGoesIntoTheTree) {
    const std::string ordem = SecaoXml{.tag = "ordem",
                                       .inside = campoChave("numero") + detalhe("item"),
                                       .nome = "Ordens",
                                       .ocorrencia = "*"}
                                  .xml();
    abre(layoutOf({.tag = "l", .inside = mestre() + ordem, .nomeGrupo = "F", .tagGrupo = "fundo"}));
    digita(grade("l_header"), "cnpj", Value(cnpj));
    clica("skCONST_RAIZ,0001,ordem,l_ordem");
    digita(grade("l_ordem"), "numero", Value(outroCnpj));
    EXPECT_THAT(textosAbaixo(*documento.arvore.find("skCONST_RAIZ,0001,ordem,l_ordem")),
                ElementsAre("94.000.031/0001-96"));
    EXPECT_FALSE(documento.estado.salvo);
}

TEST_F(RegrasDeLinha, ASectionWithSubsectionsButNoKeyFailsQuietly) {
    const std::string ordem = SecaoXml{.tag = "ordem", .inside = campo("numero") + detalhe("item")}.xml();
    abre(layoutOf({.tag = "l", .inside = mestre() + ordem, .nomeGrupo = "F", .tagGrupo = "fundo"}));
    digita(grade("l_header"), "cnpj", Value(cnpj));
    clica("skCONST_RAIZ,0001,ordem,l_ordem");
    documento.estado.salvo = true;
    digita(grade("l_ordem"), "numero", Value("1"));
    EXPECT_TRUE(documento.estado.salvo); // the failure ends the routine in front of that step
}

TEST_F(RegrasDeLinha, NothingRunsForARowThatALoadAdds) {
    abre(layoutDireto());
    GradeSecao& header = grade("passivo_header");
    header.dados->AddNew();
    documento.estado.carregando = true;
    EXPECT_TRUE(regras.grid_AfterRowUpdate(header, header.dados->currentRow()).valida);
    EXPECT_TRUE(documento.estado.salvo);
}

// The section worked on holds the master's and has a key of its own: the master's titles the fund.
TEST_F(RegrasDeLinha, AMasterIsTitledByItsOwnKey) {
    const std::string fora = SecaoXml{.tag = "fora",
                                      .inside = campoChave("numero") + mestre(),
                                      .nome = "Fora",
                                      .ocorrencia = "*",
                                      .nomeGrupo = "Fora",
                                      .tagGrupo = "fora"}
                                 .xml();
    abre(layoutOf({.tag = "l", .inside = fora, .nomeGrupo = "F", .tagGrupo = "fora"}));
    clica("kCONST_fora");
    digita(grade("l_fora_header"), "cnpj", Value(cnpj));
    EXPECT_EQ(mensagem, "");
    EXPECT_THAT(textosAbaixo(*documento.arvore.find("kCONST_fora")), ElementsAre("94.000.001/0001-80"));
}

TEST_F(RegrasDeLinha, AnEmptyCellCountsAsRowZero) {
    abre(layoutDireto());
    GradeSecao& header = grade("passivo_header");
    header.dados->AddNew();
    EXPECT_EQ(regras.getRowID(header, header.dados->currentRow()), 0);
    EXPECT_EQ(regras.getRowID(header, 99), 0); // a row that is not there
}

} // namespace
} // namespace tv::test
