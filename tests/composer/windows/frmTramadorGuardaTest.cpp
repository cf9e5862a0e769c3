// Unsaved documents, kept from time to time and brought back.
#include "common/windows/GuardaDaJanela.h"
#include "composer/Amostras.h"
#include "composer/EscritorBoleto.h"
#include "composer/windows/BancadaTramador.h"
#include "logging/LogFolder.h"
#include "windows/DialogosDeArquivo.h"
#include "windows/GuardaDeTeste.h"

using namespace tv;
using namespace tv::test;

namespace {

constexpr const char* layoutDoTeste = "arquivoposicao_4_01";

bool qualquer(const TrabalhoGuardado&) {
    return true;
}

class frmTramadorGuarda : public BancadaTramador {
protected:
    void abreAmostra() {
        abre(layoutDoTeste);
        janela->abrirBoleto(caminhoQt(pastaDasAmostras() / layoutDoTeste / "valido_pequeno.xml"));
    }
    /// The kept work as soon as it holds the rows that the window shows now.
    TrabalhoGuardado guardadoAgora() const {
        return guardadoCom([this](const TrabalhoGuardado& lido) {
            Documento volta;
            volta.abrir(documento().boleto());
            devolveDocumento(volta, lido.conteudo);
            return linhasDoDocumento(volta) == linhasDoDocumento(documento());
        });
    }
    /// Closes the window, which asks when there is something to save.
    void fecha(const char* resposta) const {
        const Caixas caixas{q(resposta)};
        janela->closeWindow();
        EXPECT_TRUE(espera([this] { return janela == nullptr; }));
    }
    /// A second window with what the first one kept; it becomes the one of the test.
    void retoma(const TrabalhoGuardado& trabalho) { retoma(trabalho, documento().boleto()); }
    void retoma(const TrabalhoGuardado& trabalho, const std::shared_ptr<const clsBoleto>& layout) {
        janela = &criaJanela<frmTramador>();
        ASSERT_TRUE(janela->retoma(layout, trabalho.conteudo));
        mdiMain::instancia().addJanela(*janela);
    }

    GuardaApressada apressada;
};

} // namespace

TEST_F(frmTramadorGuarda, ADocumentThatNobodyChangedIsNotKept) {
    abre(layoutDoTeste);
    deixaPassar();
    abreAmostra();
    deixaPassar();
    EXPECT_TRUE(guardados().empty());
    EXPECT_FALSE(std::filesystem::exists(PastaDeGuarda::doPrograma()->pasta()));
}

TEST_F(frmTramadorGuarda, AnUnsavedDocumentIsKeptWithItsLabel) {
    abre(layoutDoTeste);
    incluiFundo(cnpj);
    const TrabalhoGuardado guardado = guardadoCom(qualquer);
    EXPECT_EQ(guardado.janela, "frmTramador");
    EXPECT_EQ(guardado.layout, layoutDoTeste);
    EXPECT_EQ(guardado.arquivo, "");
    EXPECT_EQ(guardado.instante, clock::now());
    fecha("Não");
    EXPECT_FALSE(std::filesystem::exists(PastaDeGuarda::doPrograma()->pasta())) << "not wanted";
}

TEST_F(frmTramadorGuarda, TheKeptWorkFollowsEveryChangeAndIsLeftAloneWithoutOne) {
    abre(layoutDoTeste);
    incluiFundo(cnpj);
    const auto primeiro = guardadoCom(qualquer).conteudo;
    incluiFundo(outroCnpj);
    ASSERT_NE(guardadoCom([&](const auto& lido) { return lido.conteudo != primeiro; }).conteudo, "");
    deixaPassar();
    const auto instante = std::filesystem::last_write_time(guardados().at(0));
    deixaPassar();
    EXPECT_EQ(std::filesystem::last_write_time(guardados().at(0)), instante);
    fecha("Não");
}

TEST_F(frmTramadorGuarda, ASavedDocumentIsNotKeptAnyMore) {
    abreAmostra();
    modelo().setValor(0, "nome", std::string("Outro nome"));
    ASSERT_NE(guardadoCom(qualquer).conteudo, "") << "though the rules have not seen the row yet";
    DialogosDeArquivo dialogos{{caminhoQt(programa.caminho() / "salvo.xml")}};
    Caixas caixas{q("OK")};
    caixas.aoVer = [](QMessageBox&) { EXPECT_TRUE(guardados().empty()) << "at once, not at the next look"; };
    clica("btnSalvar");
    deixaPassar();
    EXPECT_TRUE(guardados().empty());
    EXPECT_TRUE(estado().salvo);
}

TEST_F(frmTramadorGuarda, ANewDocumentInTheSameWindowStartsWithoutIt) {
    abre(layoutDoTeste);
    incluiFundo(cnpj);
    ASSERT_NE(guardadoCom(qualquer).conteudo, "");
    const Caixas caixas{q("Não")};
    janela->novoBoleto();
    EXPECT_TRUE(guardados().empty());
    deixaPassar();
    EXPECT_TRUE(guardados().empty());
}

TEST_F(frmTramadorGuarda, WhatWasKeptComesBackByteForByteAndUnsaved) {
    abreAmostra();
    modelo().setValor(0, "nome", std::string("Outro nome"));
    estado().salvo = false;
    const TrabalhoGuardado guardado = guardadoAgora();
    const std::string xml = montaDocumento(documento()).xml();
    const auto linhas = linhasDoDocumento(documento());
    const std::string arquivo = estado().arquivo;
    const QString titulo = grade().captionVisivel();
    const auto layout = documento().boleto();
    fecha("Não");
    retoma(guardado, layout);
    EXPECT_EQ(montaDocumento(documento()).xml(), xml);
    EXPECT_EQ(linhasDoDocumento(documento()), linhas);
    EXPECT_EQ(estado().arquivo, arquivo);
    EXPECT_EQ(painel(1), paraQt(arquivo));
    EXPECT_EQ(paraUtf8(grade().captionVisivel()), paraUtf8(titulo));
    EXPECT_FALSE(estado().salvo);
    Caixas caixas{q("Não")};
    janela->closeWindow();
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Deseja salvar o boleto?"));
}

TEST_F(frmTramadorGuarda, TheNodeOnTheScreenComesBackAndWorkGoesOnThere) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    clicaNo({"Boleto", "94.000.001/0001-80", "Caixa"});
    clica("btnAdicionar");
    completa(0);
    QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
    const TrabalhoGuardado guardado = guardadoAgora();
    const QString titulo = grade().captionVisivel();
    retoma(guardado);
    EXPECT_EQ(grade().captionVisivel(), titulo);
    EXPECT_EQ(grade().objectName(), q("ArquivoPosicao_2_01_caixa"));
    ASSERT_EQ(modelo().rowCount(), 1);
    EXPECT_TRUE(acao("btnAdicionar")->isEnabled());
    clica("btnAdicionar");
    ASSERT_EQ(modelo().rowCount(), 2);
    EXPECT_EQ(texto(1, "rowMaster"), texto(0, "rowMaster")) << "a new row belongs to the same fund";
    clicaNo({"Boleto", "94.000.001/0001-80"});
    EXPECT_EQ(modelo().rowCount(), 1);
}

TEST_F(frmTramadorGuarda, ARowUnderWayComesBackAndIsJudgedWhenItEnds) {
    abre(layoutDoTeste);
    clica("btnAdicionar");
    const std::string chave = secao().secao->getCampoChave()->getTag();
    vaiPara(0, chave);
    digita("12");
    EXPECT_TRUE(estado().salvo) << "no row has been taken yet";
    const TrabalhoGuardado guardado = guardadoCom([](const auto& lido) {
        return lido.conteudo.find(std::string("\x06\x02"
                                              "12")) != std::string::npos;
    });
    ASSERT_NE(guardado.conteudo, "");
    const auto layout = documento().boleto();
    fecha("OK"); // the rules tell what the row lacks
    retoma(guardado, layout);
    ASSERT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(texto(0, chave), "12");
    EXPECT_EQ(grade().linhaAtiva(), 0);
    Caixas caixas{q("OK")};
    QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_TRUE(caixas.vistas()[0].texto.startsWith(q("Os valores dos seguintes campos são inválidos: ")));
}

TEST_F(frmTramadorGuarda, OtherBytesOpenNoWindow) {
    abre(layoutDoTeste);
    const auto layout = documento().boleto();
    QPointer<frmTramador> outra = &criaJanela<frmTramador>();
    EXPECT_FALSE(outra->retoma(layout, "qualquer coisa"));
    EXPECT_TRUE(espera([&] { return outra == nullptr; }));
}

TEST_F(frmTramadorGuarda, WithoutAPlaceItGoesOnWithOneLineInTheLog) {
    oLogger->setLevel(library::level::all);
    const auto pasta = PastaDeGuarda::doPrograma()->pasta();
    files::writeAll(pasta, "no lugar da pasta");
    abre(layoutDoTeste);
    incluiFundo(cnpj);
    EXPECT_TRUE(espera([this] { return occurrences(programa.registro(), "não pôde ser guardado") > 0; }));
    incluiFundo(outroCnpj);
    deixaPassar();
    EXPECT_EQ(modelo().rowCount(), 2);
    EXPECT_EQ(occurrences(programa.registro(), "não pôde ser guardado"), 1U);
    files::remove(pasta);
    EXPECT_NE(guardadoCom(qualquer).conteudo, "") << "it is tried again";
    fecha("Não");
}
