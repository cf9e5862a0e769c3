// Documents through the window: new, opened, validated, saved, with real dialogs and files.
#include "composer/Amostras.h"
#include "composer/windows/BancadaTramador.h"
#include "editor/windows/frmEditor.h"
#include "platform/Files.h"
#include "validation/windows/frmBrowser.h"
#include "windows/DialogosDeArquivo.h"
#include "windows/TempoDeProcessador.h"

#include <algorithm>
#include <unistd.h>

using namespace tv;
using namespace tv::test;

namespace {

class frmTramadorDocumento : public BancadaTramador {
protected:
    frmTramadorDocumento() {
        if (::geteuid() == 0) {
            qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1"); // there is none for root
        }
    }
    QString amostra(const char* nome) const { return caminhoQt(pastaDasAmostras() / nome); }
    QString destino(const char* nome) const { return caminhoQt(programa.caminho() / nome); }
    template<typename T>
    T* aberta() const {
        for (Janela* uma : mdiMain::instancia().janelas()) {
            if (auto* achada = dynamic_cast<T*>(uma)) {
                return achada;
            }
        }
        return nullptr;
    }
    std::size_t temporarios() const {
        std::size_t achados = 0;
        for (const auto& arquivo : std::filesystem::directory_iterator(programa.caminho())) {
            achados += arquivo.path().extension() == ".TMP" ? 1U : 0U;
        }
        return achados;
    }
};

} // namespace

TEST_F(frmTramadorDocumento, ValidFileOpensIntoTreeAndGrids) {
    for (const char* nome : {"arquivoposicao_4_01/valido_pequeno.xml",
                             "ArquivoPosicao_2_01/valido_pequeno.xml", "movimento_2_00/valido_pequeno.xml"}) {
        abre(std::filesystem::path(nome).parent_path().c_str());
        janela->abrirBoleto(amostra(nome));
        EXPECT_TRUE(estado().salvo) << nome;
        EXPECT_TRUE(estado().abrindo);
        EXPECT_EQ(estado().arquivo, paraUtf8(amostra(nome)));
        EXPECT_EQ(painel(1), amostra(nome));
        EXPECT_EQ(painel(2), q("Pronto"));
        EXPECT_GT(modelo().rowCount(), 0) << nome;
        EXPECT_EQ(grade().linhaAtiva(), 0);
        EXPECT_TRUE(secao().secao->isSecaoMestre());
        EXPECT_FALSE(linhasDoDocumento(documento()).empty());
        EXPECT_TRUE(acao("btnExportarExcel")->isEnabled());
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
}

TEST_F(frmTramadorDocumento, SavedFileOpensWithTheSameRows) {
    const char* nome = "arquivoposicao_4_01/valido_pequeno.xml";
    abre("arquivoposicao_4_01");
    janela->abrirBoleto(amostra(nome));
    const auto linhas = linhasDoDocumento(documento());
    estado().salvo = false;
    DialogosDeArquivo dialogos{{destino("salvo.xml")}};
    Caixas caixas{q("OK")};
    clica("btnSalvar");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Salvo com sucesso"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Information);
    EXPECT_EQ(dialogos.vistos().at(0).titulo, q("Salvar Boleto como ..."));
    EXPECT_TRUE(estado().salvo);
    EXPECT_EQ(painel(1), destino("salvo.xml"));
    EXPECT_EQ(temporarios(), 0U);
    janela->abrirBoleto(destino("salvo.xml"));
    EXPECT_EQ(linhasDoDocumento(documento()), linhas);
}

TEST_F(frmTramadorDocumento, ProposedNameStandsInTheDocumentsFolder) {
    abre("movimento_2_00");
    janela->abrirBoleto(amostra("movimento_2_00/valido_pequeno.xml"));
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    clica("btnSalvar");
    ASSERT_EQ(dialogos.vistos().size(), 1U);
    EXPECT_EQ(dialogos.vistos()[0].pasta, caminhoQt(pastaDasAmostras() / "movimento_2_00"));
    EXPECT_TRUE(dialogos.vistos()[0].nome.endsWith(q("_.xml"))) << dialogos.vistos()[0].nome.toStdString();
    EXPECT_EQ(dialogos.vistos()[0].filtros, QStringList{q("Arquivos XML (*.xml)")});
}

TEST_F(frmTramadorDocumento, CancelledSaveLeavesTheDocumentUnsaved) {
    abre("arquivoposicao_4_01");
    janela->abrirBoleto(amostra("arquivoposicao_4_01/valido_pequeno.xml"));
    estado().salvo = false;
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    const Caixas caixas;
    clica("btnSalvar");
    EXPECT_FALSE(estado().salvo);
    EXPECT_EQ(temporarios(), 0U);
}

TEST_F(frmTramadorDocumento, NothingToSaveIsTold) {
    abre("arquivoposicao_4_01");
    Caixas caixas{q("OK")};
    clica("btnSalvar");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Não há dados!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_TRUE(estado().salvo);
}

TEST_F(frmTramadorDocumento, InvalidDocumentIsNotSavedWithoutTheUsersWord) {
    abre("arquivoposicao_4_01");
    incluiFundo(cnpj);
    preenche(0, "cnpj", std::string("94000001000181")); // its check digits are wrong
    Caixas caixas{q("Não")};
    clica("btnSalvar");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Boleto inválido!\n\nDeseja salvar assim mesmo?"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Critical);
    EXPECT_FALSE(estado().salvo);
    EXPECT_NE(aberta<frmBrowser>(), nullptr) << "the findings show";
    EXPECT_EQ(temporarios(), 0U);
}

TEST_F(frmTramadorDocumento, ReplacedFileKeepsACopy) {
    abre("arquivoposicao_4_01");
    janela->abrirBoleto(amostra("arquivoposicao_4_01/valido_pequeno.xml"));
    programa.escreve("velho.xml", "antes");
    DialogosDeArquivo dialogos{{destino("velho.xml")}};
    Caixas caixas{q("OK")};
    clica("btnSalvar");
    std::string copia;
    for (const auto& arquivo : std::filesystem::directory_iterator(programa.caminho())) {
        if (arquivo.path().extension() == ".bkp") {
            copia = files::readAll(arquivo.path());
        }
    }
    EXPECT_EQ(copia, "antes");
    EXPECT_NE(programa.le("velho.xml"), "antes");
}

TEST_F(frmTramadorDocumento, StructuralFaultOffersTheEditor) {
    abre("ArquivoPosicao_2_01");
    Caixas caixas{q("Sim")};
    janela->abrirBoleto(amostra("ArquivoPosicao_2_01/errado_malformado.xml"));
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Boleto inválido!\n\nDeseja abrir o editor?"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Critical);
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({q("Sim"), q("Não")}));
    EXPECT_EQ(caixas.vistas()[0].titulo, paraQt(aplicacao::titulo()));
    const auto* editor = aberta<frmEditor>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->arquivo(), amostra("ArquivoPosicao_2_01/errado_malformado.xml"));
    EXPECT_TRUE(linhasDoDocumento(documento()).empty()) << "the file was not loaded";
}

TEST_F(frmTramadorDocumento, DomainFaultsAreOpenedAtTheUsersRisk) {
    abre("ArquivoPosicao_2_01");
    Caixas caixas{q("Sim")};
    janela->abrirBoleto(amostra("ArquivoPosicao_2_01/errado_tabela.xml"));
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto,
              q("Boleto inválido!\n\nAlgumas informações podem ser perdidas!  \n\nDeseja continuar?"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({q("Sim"), q("Não")}));
    ASSERT_NE(aberta<frmBrowser>(), nullptr);
    EXPECT_EQ(arvore().topLevelItem(0)->childCount(), 1);
    const auto linhas = linhasDoDocumento(documento());
    EXPECT_TRUE(std::any_of(linhas.begin(), linhas.end(), [](const std::string& linha) {
        return linha.find("|JUROS|") != std::string::npos;
    })) << "the bad value is kept";
}

TEST_F(frmTramadorDocumento, CancelledOpeningEmptiesTheTreeOnly) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    estado().salvo = true;
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    clica("btnAbrir");
    EXPECT_EQ(dialogos.vistos().at(0).titulo, q("Abrir Boleto"));
    EXPECT_EQ(arvore().topLevelItemCount(), 0);
    EXPECT_EQ(modelo().rowCount(), 1);
}

TEST_F(frmTramadorDocumento, ValidDocumentIsToldValid) {
    abre("arquivoposicao_4_01");
    janela->abrirBoleto(amostra("arquivoposicao_4_01/valido_pequeno.xml"));
    Caixas caixas{q("OK")};
    clica("btnValidar");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Boleto válido"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Information);
    EXPECT_EQ(janela->resultados(), nullptr);
}

TEST_F(frmTramadorDocumento, NewDocumentAsksForTheOldOneAndStartsEmpty) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    estado().salvo = true; // rows alone are enough for the question
    Caixas caixas{q("Não")};
    clica("btnNovo");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Deseja salvar o boleto?"));
    EXPECT_EQ(modelo().rowCount(), 0);
    EXPECT_EQ(arvore().topLevelItem(0)->childCount(), 0);
    EXPECT_TRUE(estado().salvo);
    const QList<QAction*> acoes = janela->actions();
    EXPECT_EQ(std::count_if(acoes.begin(), acoes.end(),
                            [](const QAction* uma) { return uma->objectName() == q("btnSalvar"); }),
              1)
        << "a key of two actions works for neither";
    incluiFundo(cnpj);
    EXPECT_EQ(modelo().rowCount(), 1);
}

TEST_F(frmTramadorDocumento, NewDocumentHasNoFile) {
    abre("arquivoposicao_4_01");
    janela->abrirBoleto(amostra("arquivoposicao_4_01/valido_pequeno.xml"));
    Caixas caixas{q("Não"), q("OK")};
    clica("btnNovo");
    EXPECT_EQ(estado().arquivo, "");
    EXPECT_EQ(painel(1), QString());
    EXPECT_FALSE(acao("btnExportarExcel")->isEnabled());
    clica("btnValidar"); // which would save
    ASSERT_EQ(caixas.vistas().size(), 2U);
    EXPECT_EQ(caixas.vistas()[1].texto, q("Não há dados!"));
}

TEST_F(frmTramadorDocumento, NewDocumentOfAFundsNodeTakesRowsAgain) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    clicaNo({"Boleto", "94.000.001/0001-80"});
    ASSERT_FALSE(acao("btnAdicionar")->isEnabled());
    Caixas caixas{q("Não")};
    clica("btnNovo");
    EXPECT_TRUE(acao("btnAdicionar")->isEnabled());
    clica("btnAdicionar");
    EXPECT_EQ(modelo().rowCount(), 1);
}

TEST_F(frmTramadorDocumento, PrintsTheCaptionAboveAndTheFileBelow) {
    abre("arquivoposicao_4_01");
    estado().arquivo = "/dados/boleto.xml";
    const ImpressaoGrade impressao(grade());
    EXPECT_EQ(impressao.trabalho().cabecalho, grade().captionVisivel());
    EXPECT_EQ(impressao.trabalho().fonteCabecalho.family(), q("Times New Roman"));
    EXPECT_EQ(impressao.trabalho().fonteCabecalho.pointSize(), 14);
    EXPECT_TRUE(impressao.trabalho().fonteCabecalho.bold());
    EXPECT_EQ(impressao.trabalho().subtitulo, QString());
    EXPECT_EQ(impressao.trabalho().rodape, q("Arquivo: /dados/boleto.xml\t\tPágina: <#>"));
    EXPECT_EQ(impressao.trabalho().fonteRodape.pointSize(), 8);
    EXPECT_TRUE(impressao.trabalho().fonteRodape.italic());
    PrevisaoImpressao previsao;
    grade().aoVisualizar(previsao);
    EXPECT_EQ(previsao.titulo, grade().captionVisivel());
    EXPECT_FALSE(previsao.icone.isNull());
}

TEST_F(frmTramadorDocumento, PreviewBearsTheGridsCaption) {
    abre("arquivoposicao_4_01");
    incluiFundo(cnpj);
    QString titulo;
    QTimer::singleShot(50, janela, [&] {
        QWidget* const previsao = QApplication::activeModalWidget();
        ASSERT_NE(previsao, nullptr);
        titulo = previsao->windowTitle();
        QTest::keyClick(previsao, Qt::Key_Escape);
    });
    clica("btnVisualizar");
    EXPECT_EQ(titulo, grade().captionVisivel());
    EXPECT_EQ(titulo, paraQt(documento().layout().getTitulo()));
}

TEST_F(frmTramadorDocumento, PrintingAsksForThePrinter) {
    abre("arquivoposicao_4_01");
    incluiFundo(cnpj);
    bool perguntou = false;
    QTimer::singleShot(50, janela, [&] {
        QWidget* const dialogo = QApplication::activeModalWidget();
        ASSERT_NE(dialogo, nullptr);
        perguntou = dialogo->inherits("QPrintDialog");
        dialogo->close();
    });
    clica("btnImprimir");
    EXPECT_TRUE(perguntou);
}

TEST_F(frmTramadorDocumento, ClickOnAFundAmongManyRowsIsQuick) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    RecordSet& caixa = *documento().grade("ArquivoPosicao_2_01_caixa").dados;
    for (int i = 0; i < 100000; ++i) {
        caixa.AddNew();
        caixa.set("rowMaster", i % 1000 + 1);
    }
    caixa.Update();
    clicaNo({"Boleto", "94.000.001/0001-80", "Caixa"}); // makes the index
    clicaNo({"Boleto"});
    const TempoDeProcessador tempo;
    clicaNo({"Boleto", "94.000.001/0001-80", "Caixa"});
    RecordProperty("milliseconds", static_cast<int>(tempo.decorrido()));
    EXPECT_EQ(modelo().rowCount(), 100);
    EXPECT_LT(tempo.decorrido(), 200 * folgaDaMedida)
        << "the 50 ms that a click is to take, and the tree's drawing";
}
