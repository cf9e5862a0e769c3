#include "BancadaEditor.h"

#include "app/Aplicacao.h"
#include "editor/windows/PicLines.h"

#include <QScrollBar>
#include <QSplitter>

#include <gmock/gmock.h>

#include <vector>

// What the window shows when it opens: texts, tools, columns, places.

namespace tv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class frmEditorTest : public BancadaEditor {};

TEST_F(frmEditorTest, ShowsFileAndLayout) {
    abre(documento());
    const QString caminho = caminhoQt(pasta.path() / "a.xml");
    EXPECT_EQ(janela->windowTitle(), QStringLiteral("Editor de XML [%1]").arg(caminho));
    EXPECT_EQ(rotulo("lblTitulo"), QStringLiteral("Editor de XML - [%1]").arg(caminho));
    EXPECT_EQ(rotulo("lblBoleto"),
              QStringLiteral("Boleto - Posição (%1)").arg(paraQt(pasta.posicao()->getVersao())));
    EXPECT_FALSE(janela->windowIcon().isNull());
    EXPECT_EQ(texto(), documento());
    EXPECT_TRUE(caixa().isVisible());
    EXPECT_TRUE(janela->salvo());
    EXPECT_EQ(painel(), "Pronto");
    EXPECT_EQ(caixa().lineWrapMode(), QPlainTextEdit::NoWrap);
    EXPECT_EQ(janela->boleto()->getNome(), "Posição");
    EXPECT_TRUE(janela->janelaID().startsWith(QStringLiteral("janela_")));
}

TEST_F(frmEditorTest, TrimsThePathInItsTitles) {
    const auto caminho = pasta.write("a.xml", documento());
    janela = &criaJanela<frmEditor>();
    janela->abrir(nullptr, pasta.posicao(), QStringLiteral("  ") + caminhoQt(caminho) + QStringLiteral(" "));
    EXPECT_EQ(janela->windowTitle(), QStringLiteral("Editor de XML [%1]").arg(caminhoQt(caminho)));
    EXPECT_EQ(texto(), documento());
}

TEST_F(frmEditorTest, OffersItsToolsInOrder) {
    abre(documento());
    std::vector<std::string> botoes;
    for (const QAction* acao : barra().actions()) {
        botoes.push_back(
            acao->isSeparator() ? "-" : (acao->objectName() + QLatin1Char('=') + acao->text()).toStdString());
    }
    EXPECT_THAT(botoes, ElementsAre("btnSalvar=Salvar", "-", "btnImprimir=Imprimir", "-",
                                    "btnValidar=Validar", "-", "btnFechar=Fechar"));
    for (const QAction* acao : barra().actions()) {
        EXPECT_EQ(acao->icon().isNull(), acao->isSeparator()) << acao->objectName().toStdString();
    }
}

TEST_F(frmEditorTest, HasItsControlsNamedAndTold) {
    abre(documento());
    for (const char* nome : {"toolbar", "txtXML", "picLines", "splitter", "grid", "statusBar", "lblTitulo",
                             "lblBoleto", "imgTORVA", "frmTitulo"}) {
        const auto* controle = janela->findChild<QWidget*>(QString::fromLatin1(nome));
        ASSERT_NE(controle, nullptr) << nome;
        EXPECT_FALSE(controle->accessibleName().isEmpty()) << nome;
        EXPECT_TRUE(controle->isVisible()) << nome;
    }
}

TEST_F(frmEditorTest, TextAboveSplitterAboveGridAboveStatus) {
    abre(documento());
    const auto topo = [&](const char* nome) {
        auto* controle = janela->findChild<QWidget*>(QString::fromLatin1(nome));
        return controle->mapTo(janela.data(), QPoint(0, 0)).y();
    };
    EXPECT_LT(topo("toolbar"), topo("frmTitulo"));
    EXPECT_LT(topo("frmTitulo"), topo("txtXML"));
    EXPECT_LT(topo("txtXML"), topo("grid"));
    EXPECT_LT(topo("grid"), topo("statusBar"));
    const auto* titulo = janela->findChild<QWidget*>(QStringLiteral("frmTitulo"));
    EXPECT_EQ(titulo->x(), 10);
    EXPECT_EQ(titulo->width(), janela->width() - 400 / 15);
    EXPECT_EQ(janela->findChild<QWidget*>(QStringLiteral("splitter"))->x(), 10);
}

struct Coluna {
    const char* nome;
    const char* titulo;
    int porCento;
};
const std::vector<Coluna> colunas{
    {"linha", "linha", 5},  {"coluna", "coluna", 5}, {"fundo", "Fundo", 15},        {"secao", "Seção", 15},
    {"campo", "Campo", 15}, {"valor", "Valor", 15},  {"descricao", "Descrição", 40}};

TEST_F(frmEditorTest, ColumnsTakeTheirShareOfTheGridAtEachSize) {
    abre(documento());
    for (const int largura : {0, 700, 940, 520}) { // 0: as it opened
        if (largura > 0) {
            janela->parentWidget()->resize(largura, 640);
            QCoreApplication::processEvents();
        }
        int soma = 0;
        for (std::size_t i = 0; i < colunas.size(); ++i) {
            const int posicao = static_cast<int>(i);
            EXPECT_EQ(grade().model()->headerData(posicao, Qt::Horizontal).toString().toStdString(),
                      colunas[i].titulo);
            EXPECT_EQ(grade().modelo().indice(colunas[i].nome), posicao);
            const int esperada = (grade().width() - 10) * colunas[i].porCento / 100;
            EXPECT_EQ(grade().columnWidth(posicao), esperada) << colunas[i].nome << " at " << largura;
            soma += grade().columnWidth(posicao);
        }
        EXPECT_GT(soma, grade().width()); // it scrolls sideways
    }
}

TEST_F(frmEditorTest, ListsTheFindingsItIsGiven) {
    clsResultado um = achado(5, 37, "  20241399 ");
    um.SetBoleto(pasta.posicao());
    abre(documento("20241399"), achados(um, achado(7, 1, "")));
    ASSERT_EQ(grade().modelo().rowCount(), 2);
    const auto celula = [&](const char* nome) { return grade().modelo().texto(0, nome).toStdString(); };
    EXPECT_EQ(celula("linha"), "5");
    EXPECT_EQ(celula("coluna"), "37");
    EXPECT_EQ(celula("fundo"), "12345");
    EXPECT_EQ(celula("secao"), paraUtf8(paraQt(um.getSecao())));
    EXPECT_EQ(celula("campo"), um.getCampo());
    EXPECT_EQ(celula("valor"), "20241399");
    EXPECT_EQ(celula("descricao"), "O valor do campo não é válido");
    EXPECT_EQ(grade().linhaAtiva(), -1); // nothing is selected before a click
    EXPECT_EQ(janela->resultados()->size(), 2U);
}

TEST_F(frmEditorTest, AFindingWithoutAPathIsListedAndLogged) {
    abre("lixo", achados(achado(1, 1, "", ""), achado(1, 2, "x")));
    ASSERT_EQ(grade().modelo().rowCount(), 2);
    EXPECT_EQ(grade().modelo().texto(0, "linha"), QStringLiteral("1"));
    EXPECT_EQ(grade().modelo().texto(0, "campo"), QString());
    EXPECT_THAT(registro(), HasSubstr("[9]"));
}

TEST_F(frmEditorTest, AFileThatIsNotThereLeavesAnEmptyText) {
    abreCaminho(pasta.path() / "falta.xml");
    EXPECT_EQ(texto(), "");
    EXPECT_TRUE(caixa().isVisible());
    EXPECT_TRUE(janela->salvo());
    EXPECT_EQ(painel(), "Pronto");
    EXPECT_THAT(registro(), HasSubstr("[53]"));
}

TEST_F(frmEditorTest, TheStripStaysBlank) {
    abre(documento() + std::string(300, '\n'));
    auto* faixa = janela->findChild<PicLines*>(QStringLiteral("picLines"));
    const auto cores = [&] {
        const QImage imagem = faixa->grab().toImage();
        for (int y = 0; y < imagem.height(); ++y) {
            for (int x = 0; x < imagem.width(); ++x) {
                if (imagem.pixel(x, y) != imagem.pixel(0, 0)) {
                    return false;
                }
            }
        }
        return true;
    };
    EXPECT_TRUE(cores());
    tecla(Qt::Key_End, Qt::ControlModifier);
    caixa().selectAll();
    QCoreApplication::processEvents();
    EXPECT_TRUE(cores());
}

TEST_F(frmEditorTest, TabGoesIntoTheTextOnceItHasHadTheFocus) {
    abre("<a/>");
    grade().setFocus();
    caixa().setFocus();
    for (const QWidget* controle : janela->findChildren<QWidget*>()) {
        EXPECT_EQ(controle->focusPolicy() & Qt::TabFocus, 0) << controle->objectName().toStdString();
    }
    tecla(Qt::Key_Tab);
    EXPECT_EQ(texto(), "\t<a/>");
    grade().setFocus();
    EXPECT_EQ(grade().focusPolicy() & Qt::TabFocus, 0); // nothing brings it back
}

TEST_F(frmEditorTest, F6GoesBetweenTextAndFindings) {
    abre("<a/>", achados(achado(1, 1, "")));
    caixa().setFocus();
    tecla(Qt::Key_F6);
    EXPECT_TRUE(grade().hasFocus());
    QTest::keyClick(&grade(), Qt::Key_F6);
    EXPECT_TRUE(caixa().hasFocus());
}

TEST_F(frmEditorTest, TheCaretsPlaceStandsInTheStatusBar) {
    abre("um\ndois\n");
    janela->PlaceCursor(2, 3);
    EXPECT_EQ(caixa().SelStart(), 6);
    EXPECT_EQ(painel(), "Linha: 2, Coluna: 3");
    tecla(Qt::Key_Home);
    EXPECT_EQ(painel(), "Linha: 2, Coluna: 0");
    tecla(Qt::Key_Down);
    EXPECT_EQ(painel(), "Linha: 3, Coluna: 0");
}

TEST_F(frmEditorTest, TextScrollsSidewaysAsFarAsItsLinesAtEachSize) {
    abre("<a>" + std::string(3000, 'x') + "</a>\n<b/>\n");
    for (const int largura : {700, 940, 520}) {
        janela->parentWidget()->resize(largura, 640);
        QCoreApplication::processEvents();
        caixa().grab();
        janela->PlaceCursor(1, 0);
        EXPECT_EQ(caixa().horizontalScrollBar()->value(), 0) << largura;
        janela->PlaceCursor(1, 3007);
        EXPECT_EQ(caixa().horizontalScrollBar()->value(), caixa().horizontalScrollBar()->maximum())
            << largura;
        EXPECT_TRUE(caixa().viewport()->rect().contains(caixa().cursorRect().center())) << largura;
    }
}

TEST_F(frmEditorTest, ValuesOfAnyScriptBeginAtTheLeft) {
    abre("<a>um</a>\n\u05D0\u05D1\n");
    janela->parentWidget()->resize(700, 640);
    QCoreApplication::processEvents();
    janela->PlaceCursor(2, 0);
    EXPECT_LT(caixa().cursorRect().x(), caixa().viewport()->width() / 4);
}

TEST_F(frmEditorTest, FarLinesAreNotTold) {
    abre(std::string(70'000, '\n'));
    janela->PlaceCursor(65'534, 0);
    EXPECT_EQ(painel(), "Linha: 65534, Coluna: 0");
    janela->PlaceCursor(65'535, 0);
    EXPECT_EQ(painel(), "Processando ...");
}

TEST_F(frmEditorTest, ClosesWithoutAQuestionWhenSaved) {
    abre(documento());
    clica("btnFechar");
    EXPECT_TRUE(janela == nullptr || !janela->isVisible());
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
    janela = nullptr;
}

TEST_F(frmEditorTest, AsksBeforeItClosesOverAChange) {
    for (const char* resposta : {"Não", "Sim"}) {
        abre(documento());
        digita("\n");
        EXPECT_FALSE(janela->salvo());
        Caixas caixas{QString::fromUtf8(resposta)};
        if (*resposta == 'S') {
            caixas.responde(QStringLiteral("OK"));
        }
        janela->closeWindow();
        ASSERT_FALSE(caixas.vistas().empty());
        EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Deseja salvar o boleto?"));
        EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Question);
        EXPECT_EQ(caixas.vistas()[0].titulo, paraQt(aplicacao::titulo()));
        EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({QStringLiteral("Sim"), QStringLiteral("Não")}));
        EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
        EXPECT_EQ(noDisco() == documento(), *resposta != 'S');
        janela = nullptr;
    }
}

TEST_F(frmEditorTest, TheButtonsOfOtherKeysMoveTheActiveFinding) {
    abre(documento(), achados(achado(1, 3, "x"), achado(2, 3, "x"), achado(3, 3, "x")));
    QAction* proximo = barra().addAction(QStringLiteral("Próximo"));
    proximo->setObjectName(QStringLiteral("btnProximo"));
    QAction* anterior = barra().addAction(QStringLiteral("Anterior"));
    anterior->setObjectName(QStringLiteral("btnAnterior"));
    std::vector<int> ativas;
    for (QAction* acao : {proximo, proximo, proximo, proximo, anterior, anterior, anterior}) {
        acao->trigger();
        ativas.push_back(grade().linhaAtiva());
    }
    EXPECT_THAT(ativas, ElementsAre(0, 1, 2, 2, 1, 0, 0));
}

TEST_F(frmEditorTest, F4GoesToTheNextFinding) {
    abre(documento("20241399", "errado"), achados(achado(5, 30, "20241399"), achado(6, 16, "errado")));
    caixa().setFocus();
    tecla(Qt::Key_F4);
    EXPECT_EQ(selecionado(), "20241399");
    tecla(Qt::Key_F4);
    EXPECT_EQ(selecionado(), "errado");
    tecla(Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_EQ(selecionado(), "20241399");
}

TEST_F(frmEditorTest, AnUnknownKeyDoesNothing) {
    abre(documento());
    QAction* outra = barra().addAction(QStringLiteral("Outra"));
    outra->setObjectName(QStringLiteral("btnOutra"));
    outra->trigger();
    EXPECT_EQ(texto(), documento());
}

} // namespace
} // namespace tv::test
