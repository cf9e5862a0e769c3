#include "composer/RetratoDocumento.h"

#include "Amostras.h"
#include "RegrasDeLinha.h"
#include "composer/EscritorBoleto.h"
#include "composer/LeitorBoleto.h"
#include "composer/chavesArvore.h"
#include "platform/Error.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

namespace tv::test {
namespace {

bool semFim() {
    return true;
}

std::string junta(const RetratoDocumento::Pecas& pecas) {
    std::string bytes;
    for (const auto& peca : pecas) {
        bytes += *peca;
    }
    return bytes;
}

std::string retratoDe(const Documento& documento, const RetratoDocumento::Tela& tela = {}) {
    RetratoDocumento retrato(documento);
    EXPECT_TRUE(retrato.atualiza(semFim));
    return junta(retrato.pecas(tela));
}

void junta(const NoArvore& no, const std::string& recuo, std::vector<std::string>& linhas) {
    linhas.push_back(recuo + no.chave + "|" + no.texto + "|" + no.imagem + (no.expandido ? "|+" : "|-"));
    for (const NoArvore* filho : no.filhos) {
        junta(*filho, recuo + " ", linhas);
    }
}

std::vector<std::string> arvoreDe(const Documento& documento) {
    std::vector<std::string> linhas;
    if (documento.arvore.raiz() != nullptr) {
        junta(*documento.arvore.raiz(), "", linhas);
    }
    return linhas;
}

/// What a snapshot has to bring back.
void esperaIgual(const Documento& volta, const Documento& antes) {
    EXPECT_EQ(linhasDoDocumento(volta), linhasDoDocumento(antes));
    EXPECT_EQ(arvoreDe(volta), arvoreDe(antes));
    EXPECT_EQ(volta.estado.arquivo, antes.estado.arquivo);
    EXPECT_EQ(volta.estado.ultimoRowID, antes.estado.ultimoRowID);
    EXPECT_EQ(volta.estado.abrindo, antes.estado.abrindo);
    EXPECT_FALSE(volta.estado.salvo);
}

class RetratoDasAmostras : public testing::TestWithParam<std::string> {};

TEST_P(RetratoDasAmostras, ComesBackByteForByte) {
    const std::filesystem::path amostra = pastaDasAmostras() / GetParam();
    const auto layout = layoutDaAmostra(amostra);
    Documento antes;
    antes.abrir(layout);
    ASSERT_TRUE(LeitorBoleto(antes).abre(amostra));
    Documento volta;
    volta.abrir(layout);
    const RetratoDocumento::Volta tela = devolveDocumento(volta, retratoDe(antes));
    esperaIgual(volta, antes);
    EXPECT_EQ(tela.perdidas, 0U);
    EXPECT_EQ(tela.estado.noAtual, antes.estado.noAtual);
    EXPECT_EQ(tela.estado.secaoAtual, antes.estado.secaoAtual);
    EXPECT_EQ(tela.estado.chaveNo, antes.estado.chaveNo);
    EXPECT_EQ(montaDocumento(volta).xml(), montaDocumento(antes).xml());
}

INSTANTIATE_TEST_SUITE_P(Amostras, RetratoDasAmostras, testing::ValuesIn(amostrasValidas()),
                         [](const auto& amostra) {
                             std::string nome = amostra.param;
                             std::replace_if(
                                 nome.begin(), nome.end(),
                                 [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; },
                                 '_');
                             return nome;
                         });

class RetratoDocumentoTest : public RegrasDeLinha {
protected:
    static constexpr const char* mestres = "passivo_header";
    static constexpr const char* cotistas = "passivo_cotista";

    Documento devolve(const std::string& bytes, RetratoDocumento::Volta* tela = nullptr) const {
        Documento volta;
        volta.abrir(documento.boleto());
        RetratoDocumento::Volta lida = devolveDocumento(volta, bytes);
        if (tela != nullptr) {
            *tela = std::move(lida);
        }
        return volta;
    }
    void enche(int quantas) const {
        RecordSet& dados = *grade(cotistas).dados;
        for (int i = 0; i < quantas; ++i) {
            dados.AddNew();
            dados.set("codigo", std::to_string(i));
            dados.set("rowMaster", 1);
        }
        dados.Update();
    }
    void muda(std::size_t linha, const char* codigo) const {
        const auto dados = grade(cotistas).dados->Clone();
        dados->MoveTo(linha);
        dados->set("codigo", std::string(codigo));
        dados->Update();
    }
};

TEST_F(RetratoDocumentoTest, BringsBackRowsThatTheRulesDoNotTake) {
    abre(layoutDireto());
    clica(chaves::raiz);
    digita(grade(mestres), "cnpj", std::string(cnpj));
    digita(grade(mestres), "cnpj", std::string("12"));
    EXPECT_NE(mensagem, "");
    EXPECT_EQ(montaDocumento(devolve(retratoDe(documento))).xml(), montaDocumento(documento).xml());
    esperaIgual(devolve(retratoDe(documento)), documento);
}

TEST_F(RetratoDocumentoTest, BringsBackTheRowUnderWay) {
    abre(layoutDireto());
    clica(chaves::raiz);
    digita(grade(mestres), "cnpj", std::string(cnpj));
    apaga(grade(mestres), digita(grade(mestres), "cnpj", std::string(outroCnpj)));
    const auto nova = regras.addRow(grade(mestres), std::nullopt);
    ASSERT_TRUE(nova.linha);
    grade(mestres).dados->set("cnpj", std::string("9"));
    RetratoDocumento::Volta tela;
    const Documento volta =
        devolve(retratoDe(documento, {std::string(chaves::raiz), {{mestres, *nova.linha}}}), &tela);
    EXPECT_EQ(tela.lugar, chaves::raiz);
    ASSERT_TRUE(tela.pendentes.contains(mestres));
    const RecordSet& dados = *volta.grade(mestres).dados;
    EXPECT_EQ(*dados.cell(tela.pendentes.at(mestres), 0), Value(std::string("9")));
    EXPECT_TRUE(grade(mestres).dados->isNew(*nova.linha)) << "taking the snapshot ends nothing";
}

TEST_F(RetratoDocumentoTest, BringsBackGroupsAndTheNodeUnderTheCursor) {
    abre(layoutEmGrupos());
    clica("kCONST_carteira");
    digita(grade("posicao_carteira_header"), "codcart", std::string(cnpj));
    clica("kCONST_fundo");
    digita(grade("posicao_fundo_header"), "cnpj", std::string(outroCnpj));
    RetratoDocumento::Volta tela;
    const Documento volta = devolve(retratoDe(documento, {"kCONST_fundo"}), &tela);
    esperaIgual(volta, documento);
    EXPECT_EQ(tela.lugar, "kCONST_fundo");
    EXPECT_EQ(tela.selecionado, documento.arvore.chaveSelecionada());
    EXPECT_EQ(tela.estado.noAtual, documento.estado.noAtual);
    EXPECT_EQ(tela.estado.secaoAtual, documento.estado.secaoAtual);
    EXPECT_EQ(tela.estado.chaveNo, documento.estado.chaveNo);
}

TEST_F(RetratoDocumentoTest, ALayoutWithoutTreeComesBack) {
    abre(layoutSemGrupo());
    regras.addRow(documento.getGrid(), std::nullopt);
    documento.getGrid().dados->set("cnpj", std::string(cnpj));
    esperaIgual(devolve(retratoDe(documento)), documento);
}

TEST_F(RetratoDocumentoTest, KnowsWhetherARowHasChangedSinceTheSave) {
    abre(layoutDireto());
    RetratoDocumento retrato(documento);
    retrato.marcaSalvo();
    EXPECT_FALSE(retrato.mudou());
    clica(chaves::raiz);
    EXPECT_FALSE(retrato.mudou()) << "to look is not to change";
    digita(grade(mestres), "cnpj", std::string("12"));
    EXPECT_TRUE(retrato.mudou()) << "an invalid row is work, too";
    EXPECT_TRUE(documento.estado.salvo);
    retrato.marcaSalvo();
    EXPECT_FALSE(retrato.mudou());
    EXPECT_TRUE(retrato.atualiza(semFim));
    EXPECT_FALSE(retrato.mudou());
}

TEST_F(RetratoDocumentoTest, EditsOfANewRowAreSeenWhenTheSnapshotIsTaken) {
    abre(layoutDireto());
    clica(chaves::raiz);
    RetratoDocumento retrato(documento);
    regras.addRow(grade(mestres), std::nullopt);
    ASSERT_TRUE(retrato.atualiza(semFim));
    const auto versao = retrato.versao();
    ASSERT_TRUE(retrato.atualiza(semFim));
    EXPECT_EQ(retrato.versao(), versao);
    grade(mestres).dados->set("cnpj", std::string("9"));
    ASSERT_TRUE(retrato.atualiza(semFim));
    EXPECT_NE(retrato.versao(), versao);
    EXPECT_EQ(junta(retrato.pecas({})), retratoDe(documento));
}

TEST_F(RetratoDocumentoTest, OnlyTheBlockOfAnEditIsMadeAnew) {
    abre(layoutDireto());
    enche(2000);
    RetratoDocumento retrato(documento);
    ASSERT_TRUE(retrato.atualiza(semFim));
    const RetratoDocumento::Pecas antes = retrato.pecas({});
    const std::string bytesAntes = junta(antes);
    muda(1000, "outro");
    ASSERT_TRUE(retrato.atualiza(semFim));
    const RetratoDocumento::Pecas depois = retrato.pecas({});
    ASSERT_EQ(antes.size(), depois.size());
    int outras = 0;
    for (std::size_t i = 1; i < antes.size(); ++i) { // the first one is the window's state
        outras += antes[i] == depois[i] ? 0 : 1;
    }
    EXPECT_EQ(outras, 1);
    EXPECT_EQ(junta(antes), bytesAntes) << "what was given before is not touched";
    EXPECT_EQ(junta(depois), retratoDe(documento));
    esperaIgual(devolve(junta(depois)), documento);
}

TEST_F(RetratoDocumentoTest, FollowsRowsThatGoAndComeBack) {
    abre(layoutDireto());
    enche(600);
    RetratoDocumento retrato(documento);
    ASSERT_TRUE(retrato.atualiza(semFim));
    const auto dados = grade(cotistas).dados->Clone();
    const std::vector<Value> guardados = dados->values(300);
    for (const std::size_t linha : {0U, 300U, 599U}) {
        dados->MoveTo(linha);
        dados->Delete();
    }
    ASSERT_TRUE(retrato.atualiza(semFim));
    esperaIgual(devolve(junta(retrato.pecas({}))), documento);
    dados->Restore(300, guardados);
    ASSERT_TRUE(retrato.atualiza(semFim));
    esperaIgual(devolve(junta(retrato.pecas({}))), documento);
}

TEST_F(RetratoDocumentoTest, ALongDocumentIsTakenInSlicesAndStaysRightWhenItChangesBetween) {
    abre(layoutDireto());
    enche(3000);
    RetratoDocumento retrato(documento);
    int fatias = 0;
    while (!retrato.atualiza([] { return false; })) {
        if (++fatias == 5) {
            muda(0, "durante");
            muda(2999, "durante");
        }
    }
    EXPECT_GT(fatias, 10);
    EXPECT_EQ(junta(retrato.pecas({})), retratoDe(documento));
}

TEST_F(RetratoDocumentoTest, ADocumentThatTakesThePlaceOfAnotherIsFollowed) {
    abre(layoutDireto());
    enche(300);
    RetratoDocumento retrato(documento);
    ASSERT_TRUE(retrato.atualiza(semFim));
    retrato.marcaSalvo();
    const std::weak_ptr<RecordSet> velho = grade(cotistas).dados;
    documento.createGrid();
    EXPECT_TRUE(retrato.mudou());
    EXPECT_TRUE(velho.expired()) << "it does not hold on to what was there";
    enche(3);
    ASSERT_TRUE(retrato.atualiza(semFim));
    EXPECT_EQ(junta(retrato.pecas({})), retratoDe(documento));
    documento.abrir(documento.boleto());
    ASSERT_TRUE(retrato.atualiza(semFim));
    EXPECT_EQ(junta(retrato.pecas({})), retratoDe(documento));
}

TEST_F(RetratoDocumentoTest, WhatTheLayoutDoesNotHaveAnyMoreIsLeftOut) {
    const auto com = [](const std::string& inside) {
        return layoutOf({.tag = "passivo",
                         .inside = mestre("header", campoChave() + inside) + detalhe("cotista"),
                         .nomeGrupo = "Fundo",
                         .tagGrupo = "fundo"});
    };
    abre(com(campo("extra")));
    clica(chaves::raiz);
    digita(grade(mestres), "cnpj", std::string(cnpj));
    const std::string bytes = retratoDe(documento);
    Documento volta;
    volta.abrir(com(""));
    EXPECT_EQ(devolveDocumento(volta, bytes).perdidas, 1U);
    EXPECT_EQ(*volta.grade(mestres).dados->cell(0, 0), Value(std::string(cnpj)));
}

TEST_F(RetratoDocumentoTest, CutBytesAreRefused) {
    abre(layoutDireto());
    clica(chaves::raiz);
    digita(grade(mestres), "cnpj", std::string(cnpj));
    enche(2);
    const std::string bytes = retratoDe(documento);
    for (std::size_t tamanho = 0; tamanho < bytes.size(); ++tamanho) {
        EXPECT_THROW(devolve(bytes.substr(0, tamanho)), Error) << tamanho;
    }
    EXPECT_THROW(devolve(bytes + "x"), Error);
}

TEST_F(RetratoDocumentoTest, ChangedBytesNeverDoMoreThanFail) {
    abre(layoutEmGrupos());
    clica("kCONST_fundo");
    digita(grade("posicao_fundo_header"), "cnpj", std::string(cnpj));
    const std::string bytes = retratoDe(documento);
    int recusados = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        for (const int mascara : {1, 0x80, 0xFF}) {
            std::string mudado = bytes;
            mudado[i] = static_cast<char>(mudado[i] ^ mascara);
            try {
                devolve(mudado);
            } catch (const Error&) {
                ++recusados;
            }
        }
    }
    EXPECT_GT(recusados, 0);
}

double processador() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

TEST_F(RetratoDocumentoTest, AfterAnEditALargeDocumentCostsNextToNothing) {
    abre(layoutDireto());
    enche(200000);
    RetratoDocumento retrato(documento);
    const double inicio = processador();
    ASSERT_TRUE(retrato.atualiza(semFim));
    const double tudo = processador() - inicio;
    double edicoes = 0;
    for (int vez = 0; vez < 10; ++vez) {
        muda(static_cast<std::size_t>(vez) * 1000, "x");
        const double antes = processador();
        ASSERT_TRUE(retrato.atualiza(semFim));
        ASSERT_GT(retrato.pecas({}).size(), 700U);
        edicoes += processador() - antes;
    }
    RecordProperty("all_ms", static_cast<int>(1000 * tudo));
    RecordProperty("ten_edits_us", static_cast<int>(1000000 * edicoes));
    EXPECT_LT(edicoes, tudo) << "ten of them less than the whole once";
}

} // namespace
} // namespace tv::test
