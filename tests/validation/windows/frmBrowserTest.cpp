#include "validation/windows/frmBrowserBancada.h"

#include "app/windows/frmObjetos.h"
#include "windows/Andamento.h"

#include <QMdiSubWindow>
#include <QPointer>

#include <gmock/gmock.h>

using namespace tv;
using namespace tv::test;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::SizeIs;

namespace {

class frmBrowserTest : public BancadaRelatorio {};

// --- what the window shows

TEST_F(frmBrowserTest, TitlesBearTheFilesTitle) {
    abre(muitos(1), QStringLiteral("/dados/posições/ fundo.xml "));
    EXPECT_EQ(janela->objectName(), QStringLiteral("frmBrowser"));
    EXPECT_EQ(paraUtf8(janela->windowTitle()), "Resultado da Validação [fundo.xml]");
    EXPECT_EQ(paraUtf8(controle<QLabel>("lblTitulo").text()), "Resultado da Validação - [fundo.xml]");
    EXPECT_EQ(painel(), "/dados/posições/ fundo.xml ");
    EXPECT_FALSE(janela->windowIcon().isNull());
}

TEST_F(frmBrowserTest, ToolBarHoldsPrintAndClose) {
    abre(muitos(1));
    std::vector<std::string> botoes;
    for (const QAction* acao : controle<QToolBar>("toolbar").actions()) {
        botoes.push_back(
            acao->isSeparator() ? "-" : paraUtf8(acao->objectName() + QLatin1Char('|') + acao->text()));
        EXPECT_EQ(acao->icon().isNull(), acao->isSeparator());
    }
    EXPECT_THAT(botoes, ElementsAre("btnImprimir|&Imprimir", "-", "btnFechar|Fechar"));
    EXPECT_EQ(botao("btnImprimir").shortcut(), QKeySequence(Qt::ALT | Qt::Key_I));
}

TEST_F(frmBrowserTest, ControlsHaveNamesForReaders) {
    abre(muitos(1));
    for (const char* nome :
         {"toolbar", "statusBar", "panel1", "lblTitulo", "frmTitulo", "imgTORVA", "brwReport"}) {
        EXPECT_FALSE(controle(nome).accessibleName().isEmpty()) << nome;
    }
}

TEST_F(frmBrowserTest, PageTellsTheFindings) {
    abre(lista({achado("raiz.secao.campo", "12,50", 41)}));
    EXPECT_TRUE(carregada);
    for (const char* texto : {"Arquivo de Posição (4.01)", "/dados/fundo.xml", "Soma não confere",
                              "A soma do valor não confere", "12,50", "12345678000195", "41"}) {
        EXPECT_TRUE(naPagina(texto)) << texto;
    }
}

TEST_F(frmBrowserTest, WindowIsVisibleAndInFront) {
    abre(muitos(1));
    EXPECT_TRUE(janela->isVisible());
    EXPECT_EQ(mdiMain::instancia().janelaAtiva(), janela);
}

TEST_F(frmBrowserTest, ProgressTellsOfTheReport) {
    const Andamento andamento;
    abre(muitos(3));
    EXPECT_THAT(andamento.textos,
                ::testing::Contains("Abrindo relatório de validação|Boleto:  Arquivo de Posição (4.01)"));
}

TEST_F(frmBrowserTest, ProgressAndPointerAreGoneAfterwards) {
    abre(muitos(3));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    for (const QWidget* janelaAberta : QApplication::topLevelWidgets()) {
        EXPECT_FALSE(janelaAberta->objectName() == QStringLiteral("frmMensagem") &&
                     janelaAberta->isVisible());
    }
}

TEST_F(frmBrowserTest, WithoutFindingsThePageIsMadeAllTheSame) {
    abre(lista({}));
    EXPECT_TRUE(carregada);
    EXPECT_TRUE(naPagina("Arquivo de Posição (4.01)"));
    EXPECT_TRUE(naPagina("Não há ocorrências a mostrar."));
}

TEST_F(frmBrowserTest, FindingWithoutAPathLeavesNothing) {
    abre(lista({achado("", "some"), achado("raiz.secao.campo", "fica")}));
    EXPECT_TRUE(naPagina("fica"));
    EXPECT_FALSE(naPagina("some"));
}

TEST_F(frmBrowserTest, MarkupInPathAndLayoutIsText) {
    abre(muitos(1), QStringLiteral("/dados/<b>fundo</b> & cia.xml"),
         QStringLiteral("<i>Posição</i> & outras"));
    EXPECT_TRUE(naPagina("/dados/<b>fundo</b> & cia.xml"));
    EXPECT_TRUE(naPagina("<i>Posição</i> & outras"));
}

TEST_F(frmBrowserTest, MarkupInValuesIsText) {
    abre(lista({achado("raiz.secao.campo", "<script>alert(1)</script><img src=x> &amp; \"'")}));
    EXPECT_TRUE(naPagina("<script>alert(1)</script><img src=x> &amp; \"'"));
}

// --- the page's file

TEST_F(frmBrowserTest, PageLiesInTheApplicationFolderUnderItsOwnName) {
    abre(muitos(1));
    EXPECT_EQ(janela->arquivoReport().parent_path(), pasta.path());
    EXPECT_THAT(janela->arquivoReport().filename().string(), MatchesRegex("KVO[0-9A-F]+\\.HTM"));
    EXPECT_THAT(paginasNoDisco(), ElementsAre(janela->arquivoReport().filename().string()));
}

TEST_F(frmBrowserTest, CloseButtonDeletesThePageAndLeavesTheMainWindow) {
    const QPointer<frmBrowser> aberta = &abre(muitos(1));
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 1U);
    QTest::mouseClick(&botao("btnFechar"), Qt::LeftButton);
    EXPECT_THAT(paginasNoDisco(), IsEmpty());
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
    EXPECT_TRUE(espera([&aberta] { return aberta.isNull(); }));
}

TEST_F(frmBrowserTest, ClosesWithoutAWordWhenThePageIsGone) {
    abre(muitos(1));
    files::remove(janela->arquivoReport());
    janela->closeWindow();
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
    EXPECT_THAT(registro(), Not(HasSubstr("FATAL")));
}

TEST_F(frmBrowserTest, EndOfTheMainWindowDeletesThePage) {
    abre(muitos(1));
    mdiMain::destroi();
    EXPECT_THAT(paginasNoDisco(), IsEmpty());
}

TEST_F(frmBrowserTest, ReportsStandSideBySide) {
    frmBrowser& primeira = abre(lista({achado("a.b.c", "um")}), QStringLiteral("/dados/um.xml"));
    frmBrowser& segunda = abre(lista({achado("a.b.c", "dois")}), QStringLiteral("/dados/dois.xml"));
    EXPECT_NE(primeira.arquivoReport(), segunda.arquivoReport());
    EXPECT_THAT(paginasNoDisco(), SizeIs(2));
    EXPECT_TRUE(naPagina("/dados/dois.xml"));
    segunda.closeWindow();
    janela = &primeira;
    EXPECT_TRUE(files::exists(primeira.arquivoReport()));
    EXPECT_TRUE(naPagina("/dados/um.xml"));
    EXPECT_THAT(paginasNoDisco(), SizeIs(1));
}

// --- failures

TEST_F(frmBrowserTest, WithoutAStylesheetTellsAndStaysOpenAndEmpty) {
    std::filesystem::remove_all(pasta.path() / "XSD");
    const Caixas caixas{QStringLiteral("OK")};
    abre(muitos(2));
    ASSERT_THAT(caixas.vistas(), SizeIs(1));
    EXPECT_EQ(paraUtf8(caixas.vistas()[0].texto), "Não é possível abrir o resultado da validação!");
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_TRUE(janela->isVisible());
    EXPECT_EQ(textoDaPagina(), "");
    EXPECT_EQ(painel(), "/dados/fundo.xml");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(occurrences(registro(), "Não foi possível gerar arquivo de resultado[-2147221504]"), 2U)
        << "once for the page's routine and once for the window's";
    EXPECT_THAT(paginasNoDisco(), IsEmpty());
    janela->closeWindow();
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
}

TEST_F(frmBrowserTest, BrokenStylesheetTellsTheSame) {
    instalaFolha("<xsl:stylesheet");
    const Caixas caixas{QStringLiteral("OK")};
    abre(muitos(1));
    EXPECT_EQ(paraUtf8(caixas.vistas().at(0).texto), "Não é possível abrir o resultado da validação!");
}

TEST_F(frmBrowserTest, FolderThatHoldsTheSuffixGetsNoPage) {
    const auto raiz = pasta.path() / "dados.tmp";
    pasta.write("dados.tmp/XSD/resultado.xsl", files::readAll(pasta.path() / "XSD/resultado.xsl"));
    aplicacao::setPasta(raiz);
    const Caixas caixas{QStringLiteral("OK")};
    abre(muitos(1));
    ASSERT_THAT(caixas.vistas(), SizeIs(1));
    EXPECT_EQ(paraUtf8(caixas.vistas()[0].texto), "Não é possível abrir o resultado da validação!");
    EXPECT_EQ(janela->arquivoReport().parent_path(), pasta.path() / "dados.HTM");
    EXPECT_THAT(paginasNoDisco(), IsEmpty());
}

TEST_F(frmBrowserTest, FolderThatDoesNotExistTells) {
    aplicacao::setPasta(pasta.path() / "nada");
    const Caixas caixas{QStringLiteral("OK")};
    abre(muitos(1));
    EXPECT_EQ(paraUtf8(caixas.vistas().at(0).texto), "Não é possível abrir o resultado da validação!");
    EXPECT_TRUE(janela->isVisible());
}

TEST_F(frmBrowserTest, WithoutAListTells) {
    const Caixas caixas{QStringLiteral("OK")};
    abre(nullptr);
    EXPECT_EQ(paraUtf8(caixas.vistas().at(0).texto), "Não é possível abrir o resultado da validação!");
    EXPECT_THAT(registro(), HasSubstr("[91]"));
}

// --- createResultFile by itself

TEST_F(frmBrowserTest, CreateResultFileWritesThePage) {
    auto& nova = criaJanela<frmBrowser>();
    nova.createResultFile(*muitos(2), QStringLiteral("T"), QStringLiteral("F"), pasta.path() / "pagina.html");
    EXPECT_THAT(pasta.read("pagina.html"), HasSubstr("valor 2"));
}

TEST_F(frmBrowserTest, CreateResultFilePassesItsFailureOn) {
    auto& nova = criaJanela<frmBrowser>();
    try {
        nova.createResultFile(*muitos(1), QStringLiteral("T"), QStringLiteral("F"),
                              pasta.path() / "nada/pagina.html");
        FAIL() << "nothing was thrown";
    } catch (const Error& falha) {
        EXPECT_EQ(falha.number(), -2147221504);
        EXPECT_EQ(falha.description(), "Não foi possível gerar arquivo de resultado");
    }
    EXPECT_THAT(registro(), HasSubstr("Não foi possível gerar arquivo de resultado[-2147221504]"));
}

// --- where everything stands

TEST_F(frmBrowserTest, PageFillsTheWindowDownToTheStatusBar) {
    abre(muitos(1));
    auto* moldura = qobject_cast<QMdiSubWindow*>(janela->parentWidget());
    ASSERT_NE(moldura, nullptr);
    for (const QSize tamanho : {QSize(700, 500), QSize(1100, 640)}) {
        moldura->resize(tamanho);
        QCoreApplication::processEvents();
        const auto lugar = [this](const char* nome) {
            const QWidget& um = controle(nome);
            return QRect(um.mapTo(janela, QPoint(0, 0)), um.size());
        };
        EXPECT_EQ(lugar("frmTitulo").width(), janela->width() - 150 / 15);
        EXPECT_EQ(lugar("brwReport").left(), 0);
        EXPECT_EQ(lugar("brwReport").width(), janela->width());
        EXPECT_EQ(lugar("brwReport").bottom() + 1, lugar("statusBar").top());
        EXPECT_EQ(lugar("statusBar").bottom() + 1, janela->height());
        EXPECT_GT(lugar("brwReport").top(), lugar("frmTitulo").bottom());
        EXPECT_GT(lugar("imgTORVA").left(), lugar("lblTitulo").right());
        EXPECT_NEAR(lugar("imgTORVA").right(), lugar("frmTitulo").right(), 12);
    }
}

} // namespace
