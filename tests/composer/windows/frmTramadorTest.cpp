// The window as it opens: title, tool bar, panels, grids, and how it closes.
#include "composer/windows/BancadaTramador.h"
#include "windows/TempoDeProcessador.h"

#include <QFrame>
#include <QMdiSubWindow>
#include <QSplitter>

using namespace tv;
using namespace tv::test;

namespace {

class frmTramadorAbertura : public BancadaTramador {};

} // namespace

TEST_F(frmTramadorAbertura, TitleNamesTheLayout) {
    abre("arquivoposicao_4_01");
    const QString titulo = q("Tramador de Arquivo de Posição - 4.01.00");
    EXPECT_EQ(janela->windowTitle(), titulo);
    EXPECT_EQ(janela->findChild<QLabel*>(q("lblTitulo"))->text(), titulo);
    EXPECT_FALSE(janela->windowIcon().isNull());
    EXPECT_EQ(painel(2), q("Pronto"));
    EXPECT_EQ(painel(1), QString());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(janela->janelaID(), q("janela_00000"));
    EXPECT_TRUE(janela->isVisible());
    EXPECT_TRUE(janela->parentWidget()->isMaximized());
    EXPECT_TRUE(estado().salvo);
}

TEST_F(frmTramadorAbertura, ToolBarHasTheKeysOfTheTable) {
    abre("movimento_2_00");
    QStringList botoes;
    for (const QAction* uma : barra().actions()) {
        botoes << (uma->isSeparator() ? q("-") : uma->objectName() + QLatin1Char('=') + uma->text());
        EXPECT_TRUE(uma->isSeparator() || !uma->icon().isNull()) << uma->text().toStdString();
        EXPECT_TRUE(uma->isSeparator() || !uma->toolTip().isEmpty());
        EXPECT_EQ(uma->isEnabled(), uma->objectName() != q("btnExportarExcel"));
    }
    EXPECT_EQ(botoes.join(QLatin1Char(' ')),
              q("btnNovo=Novo btnAbrir=Abrir btnSalvar=Salvar - btnImprimir=Imprimir "
                "btnVisualizar=Visualizar - btnAdicionar=Adicionar btnRemover=Remover - "
                "btnValidar=Validar - btnExportarExcel=Exportar - btnImportarExcel=Importar "
                "btnFechar=Fechar -"));
}

TEST_F(frmTramadorAbertura, EverySectionWithFieldsHasAGridOfWhichOneIsOnTop) {
    for (const char* layout :
         {"arquivoposicao_4_01", "ArquivoPosicao_2_01", "posicao_passivo_analitico_v100"}) {
        abre(layout);
        const auto paineis = janela->findChild<QWidget*>(q("panelGrid"))->findChildren<Grade*>();
        EXPECT_EQ(static_cast<std::size_t>(paineis.size()), documento().grids().Count()) << layout;
        int visiveis = 0;
        for (const Grade* uma : paineis) {
            visiveis += uma->isVisible() ? 1 : 0;
        }
        EXPECT_EQ(visiveis, 1) << layout;
        EXPECT_EQ(grade().objectName(), paraQt(secao().nome)) << layout;
        EXPECT_TRUE(grade().isVisible());
        EXPECT_EQ(modelo().rowCount(), 0);
        EXPECT_TRUE(secao().secao->isSecaoMestre());
        EXPECT_EQ(grade().captionVisivel(), paraQt(documento().layout().getTitulo()));
    }
}

TEST_F(frmTramadorAbertura, LayoutWithoutGroupHasNoTree) {
    abre(layoutSemGrupo());
    EXPECT_FALSE(arvore().isVisible());
    EXPECT_FALSE(janela->findChild<QWidget*>(q("panelFundos"))->isVisible());
    EXPECT_EQ(janela->findChildren<Grade*>().size(), 1);
    EXPECT_TRUE(grade().isVisible());
    EXPECT_EQ(modelo().rowCount(), 0);
    EXPECT_EQ(arvore().topLevelItemCount(), 0);
}

TEST_F(frmTramadorAbertura, LayoutInGroupsStartsAtTheFirstGroup) {
    abre("arquivoposicao_4_01");
    EXPECT_TRUE(arvore().isVisible());
    ASSERT_EQ(arvore().topLevelItemCount(), 1);
    const QTreeWidgetItem& raiz = *arvore().topLevelItem(0);
    EXPECT_EQ(raiz.text(0), q("Boleto"));
    EXPECT_FALSE(raiz.icon(0).isNull());
    ASSERT_EQ(raiz.childCount(), 2);
    EXPECT_EQ(raiz.child(0)->text(0), q("Fundos"));
    EXPECT_EQ(raiz.child(1)->text(0), q("Outras carteiras"));
    EXPECT_EQ(arvore().currentItem(), raiz.child(0));
    EXPECT_EQ(estado().chaveNo, "kCONST_fundo");
}

TEST_F(frmTramadorAbertura, PaneOfFundsHasAWidthOfItsOwn) {
    abre("arquivoposicao_4_01");
    const auto* fundos = janela->findChild<QWidget*>(q("panelFundos"));
    EXPECT_EQ(fundos->minimumWidth(), 200);
    EXPECT_EQ(fundos->maximumWidth(), 200);
}

TEST_F(frmTramadorAbertura, ControlsFollowTheWindowsSize) {
    abre("arquivoposicao_4_01");
    auto* moldura = qobject_cast<QMdiSubWindow*>(janela->parentWidget());
    moldura->showNormal();
    for (const QSize tamanho : {QSize(900, 500), QSize(1100, 640), QSize(760, 420)}) {
        moldura->resize(tamanho);
        QCoreApplication::processEvents();
        const auto* titulo = janela->findChild<QFrame*>(q("frmTitulo"));
        const auto* logo = janela->findChild<QLabel*>(q("imgTORVA"));
        const auto* divisor = janela->findChild<QSplitter*>(q("splitter"));
        const auto* situacao = janela->findChild<QStatusBar*>(q("statusBar"));
        const auto* fundos = janela->findChild<QWidget*>(q("panelFundos"));
        const auto* tituloFundos = janela->findChild<QWidget*>(q("panelTituloFundos"));
        const auto* painelGrade = janela->findChild<QWidget*>(q("panelGrid"));
        EXPECT_EQ(titulo->width(), janela->width() - 10);
        EXPECT_LE(logo->geometry().right(), janela->width() - 26);
        EXPECT_EQ(situacao->geometry().bottom(), janela->height() - 1);
        EXPECT_LE(divisor->geometry().bottom(), situacao->y());
        EXPECT_GT(divisor->y(), titulo->geometry().bottom());
        EXPECT_EQ(arvore().width(), fundos->width() - 6);
        EXPECT_EQ(tituloFundos->width(), fundos->width() - 6);
        EXPECT_EQ(arvore().height(), fundos->height() - tituloFundos->height() - 10);
        EXPECT_EQ(grade().parentWidget()->size(), painelGrade->size());
    }
}

TEST_F(frmTramadorAbertura, ColumnsLookAsTheirFieldsSay) {
    abre("arquivoposicao_4_01");
    for (const auto& outra : documento().grids()) {
        const auto& campos = outra->secao->getCampos();
        Grade& esta = *janela->findChildren<Grade*>(paraQt(outra->nome)).front();
        ASSERT_EQ(static_cast<std::size_t>(esta.modelo().columnCount()), campos.Count() + 2) << outra->chave;
        for (const auto& campo : campos) {
            const ColunaGrade& coluna = esta.modelo().coluna(esta.modelo().indice(campo->getTag()));
            EXPECT_FALSE(coluna.oculta);
            EXPECT_TRUE(coluna.editavel);
            EXPECT_EQ(coluna.titulo, paraQt(campo->getNome()));
            EXPECT_EQ(coluna.largura, campo->getColuna().getLargura() / 15);
            EXPECT_EQ(coluna.formato, campo->getColuna().getMaskDisplay());
            const bool isLista = campo->hasTabela() || campo->getDado().getTipo() == 11;
            EXPECT_EQ(coluna.tabela != nullptr, isLista) << outra->chave << campo->getTag();
        }
        for (const char* oculta : {"rowID", "rowMaster"}) {
            const ColunaGrade& coluna = esta.modelo().coluna(esta.modelo().indice(oculta));
            EXPECT_TRUE(coluna.oculta);
            EXPECT_EQ(coluna.largura, 0);
            EXPECT_EQ(coluna.titulo, q(oculta));
            EXPECT_FALSE(coluna.editavel);
        }
    }
}

TEST_F(frmTramadorAbertura, LargestLayoutOpensWithinASecond) {
    const TempoDeProcessador tempo;
    abre("arquivoposicao_4_01");
    QCoreApplication::processEvents();
    RecordProperty("milliseconds", static_cast<int>(tempo.decorrido()));
    EXPECT_LT(tempo.decorrido(), 1000 * folgaDaMedida);
}

TEST_F(frmTramadorAbertura, FailureIsToldAndClosesTheWindow) {
    Caixas caixas{q("OK")};
    auto& nova = criaJanela<frmTramador>();
    const QPointer<frmTramador> viva(&nova);
    nova.abrir(nullptr);
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Não é possível abrir o Tramador!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList{q("OK")});
    EXPECT_TRUE(espera([&] { return !viva; }));
}

TEST_F(frmTramadorAbertura, CloseAsksFirst) {
    abre("arquivoposicao_4_01");
    {
        Caixas caixas{q("Não")};
        clica("btnFechar");
        ASSERT_EQ(caixas.vistas().size(), 1U);
        EXPECT_EQ(caixas.vistas()[0].texto, q("Deseja fechar o boleto atual?"));
        EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Question);
        EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({q("Sim"), q("Não")}));
        EXPECT_EQ(caixas.vistas()[0].titulo, paraQt(aplicacao::titulo()));
    }
    ASSERT_TRUE(janela);
    Caixas caixas{q("Sim")};
    clica("btnFechar");
    EXPECT_TRUE(espera([&] { return !janela; }));
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
}

TEST_F(frmTramadorAbertura, UnsavedDocumentAsksBeforeItCloses) {
    abre("arquivoposicao_4_01");
    incluiFundo(cnpj);
    ASSERT_FALSE(estado().salvo);
    Caixas caixas{q("Sim"), q("Não")};
    clica("btnFechar");
    ASSERT_EQ(caixas.vistas().size(), 2U);
    EXPECT_EQ(caixas.vistas()[1].texto, q("Deseja salvar o boleto?"));
    EXPECT_EQ(caixas.vistas()[1].icone, QMessageBox::Question);
    EXPECT_EQ(caixas.vistas()[1].botoes, QStringList({q("Sim"), q("Não")}));
    EXPECT_TRUE(espera([&] { return !janela; }));
}
