#include "app/windows/JanelaDeTeste.h"
#include "app/windows/PrincipalAberta.h"
#include "common/windows/textoQt.h"
#include "platform/text.h"
#include "windows/Caixas.h"
#include "windows/DialogosDeArquivo.h"
#include "windows/EnderecosAbertos.h"

#include <QDialog>
#include <QToolButton>

#include <filesystem>

namespace tv {
namespace {

using test::abreJanela;
using test::EsperaDialogo;
using test::layout;
using test::occurrences;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

class MdiMainCliques : public test::PrincipalAberta {};

TEST_F(MdiMainCliques, EachClickStandsOnTheCallStackOfTheLog) {
    inicia();
    for (const char* identificador : {"btnFrmCascata", "btnFecharJanelas", "btnImportacao"}) {
        clica(identificador);
        EXPECT_GE(
            occurrences(programa.registro(), "mdiMain.toolbar_ToolClick(" + std::string(identificador) + ")"),
            1U)
            << identificador;
    }
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(MdiMainCliques, TheImportDoesNothing) {
    inicia();
    const std::string antes = programa.registro();
    const test::Caixas caixas;
    clica("btnImportacao");
    EXPECT_EQ(occurrences(programa.registro(), "FATAL"), occurrences(antes, "FATAL"));
    EXPECT_EQ(principal().janelas().Count(), 0U);
}

TEST_F(MdiMainCliques, AnUnknownIdentifierDoesNothing) {
    inicia();
    const test::Caixas caixas;
    Q_EMIT ferramentas().clicada(q("outra"));
    Q_EMIT ferramentas().clicada(q("Tramador_POSICAO"));
    EXPECT_EQ(principal().janelas().Count(), 0U);
    EXPECT_EQ(occurrences(programa.registro(), "[5]"), 0U);
}

// ---- layouts ----

TEST_F(MdiMainCliques, ALayoutsEntryOpensTheValidatorForIt) {
    inicia();
    clica("validador_POSICAO");
    ASSERT_EQ(principal().janelas().Count(), 1U);
    EXPECT_EQ(principal().janelas().Item(1)->objectName(), q("frmValidador"));
    EXPECT_EQ(principal().janelas().Item(1)->janelaID(), q("janela_00000"));
    EXPECT_TRUE(principal().janelas().Item(1)->isVisible());
}

TEST_F(MdiMainCliques, ALayoutsEntryOpensTheComposerForIt) {
    programa.catalogoDistribuido();
    mostra();
    const auto& primeiro = *objTramadorValidador->getBoletos().Item(1);
    clica(("tramador_" + text::upper(primeiro.getTag())).c_str());
    ASSERT_EQ(principal().janelas().Count(), 1U);
    const Janela& janela = *principal().janelas().Item(1);
    EXPECT_EQ(janela.objectName(), q("frmTramador"));
    EXPECT_EQ(janela.janelaID(), q("janela_00000"));
    EXPECT_EQ(janela.Caption(), paraQt("Tramador de " + primeiro.getNome() + " - " + primeiro.getVersao()));
    EXPECT_TRUE(janela.isVisible());
}

TEST_F(MdiMainCliques, ALayoutThatTheComposerCannotOpenLeavesNoWindow) {
    inicia(); // its one section is no master
    const test::Caixas caixas{q("OK")};
    clica("tramador_POSICAO");
    EXPECT_EQ(caixas.vistas().at(0).texto, q("Não é possível abrir o Tramador!"));
    EXPECT_EQ(principal().janelas().Count(), 0U);
    EXPECT_FALSE(principal().temFilhas());
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(MdiMainCliques, SeveralWindowsOfOneToolAndOneLayoutCanBeOpen) {
    inicia();
    clica("validador_POSICAO");
    clica("validador_POSICAO");
    EXPECT_EQ(principal().janelas().Count(), 2U);
}

TEST_F(MdiMainCliques, ALayoutThatIsNotInTheCatalogIsLogged) {
    inicia();
    const test::Caixas caixas;
    Q_EMIT ferramentas().clicada(q("validador_OUTRO"));
    EXPECT_EQ(principal().janelas().Count(), 0U);
    EXPECT_EQ(occurrences(programa.registro(), "[5]"), 1U);
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(MdiMainCliques, TheLayoutIsFoundWithoutRegardToCase) {
    inicia(layout("Posicao_Ação", "Posição", true, true));
    clica("validador_POSICAO_AÇÃO");
    EXPECT_EQ(principal().janelas().Count(), 1U);
}

TEST_F(MdiMainCliques, TheValidatorButtonAsksForALayoutAndOpensIt) {
    inicia();
    const EsperaDialogo escolha("frmSelecionaBoleto", [](QWidget& dialogo) {
        QTest::mouseClick(dialogo.findChild<QWidget*>(q("cmdOk")), Qt::LeftButton);
    });
    QTest::mouseClick(principal().findChild<QToolButton*>(q("validadorButtonID")), Qt::LeftButton);
    EXPECT_EQ(escolha.vezes(), 1);
    ASSERT_EQ(principal().janelas().Count(), 1U);
    EXPECT_EQ(principal().janelas().Item(1)->objectName(), q("frmValidador"));
}

TEST_F(MdiMainCliques, TheComposerButtonAsksForALayoutAndOpensIt) {
    programa.catalogoDistribuido();
    mostra();
    const EsperaDialogo escolha("frmSelecionaBoleto", [](QWidget& dialogo) {
        QTest::mouseClick(dialogo.findChild<QWidget*>(q("cmdOk")), Qt::LeftButton);
    });
    QTest::mouseClick(principal().findChild<QToolButton*>(q("tramadorButtonID")), Qt::LeftButton);
    EXPECT_EQ(escolha.vezes(), 1);
    ASSERT_EQ(principal().janelas().Count(), 1U);
    EXPECT_EQ(principal().janelas().Item(1)->objectName(), q("frmTramador"));
}

TEST_F(MdiMainCliques, CancellingTheChoiceOpensNoWindow) {
    inicia();
    const EsperaDialogo escolha("frmSelecionaBoleto", [](QWidget& dialogo) {
        QTest::mouseClick(dialogo.findChild<QWidget*>(q("cmdCancel")), Qt::LeftButton);
    });
    clica("validadorButtonID");
    clica("tramadorButtonID");
    EXPECT_EQ(escolha.vezes(), 2);
    EXPECT_EQ(principal().janelas().Count(), 0U);
}

TEST_F(MdiMainCliques, WithoutAValidatorAMessageTellsAndNoWindowOpens) {
    inicia(layout("so_tramador", "Só tramador", true, false));
    const test::Caixas caixas{q("OK")};
    clica("validadorButtonID");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Não há tramadores!"));
    EXPECT_EQ(principal().janelas().Count(), 0U);
}

// ---- update ----

TEST_F(MdiMainCliques, AtualizacaoAsksForTheFolderOfTheNewFiles) {
    inicia();
    const test::DialogosDeArquivo dialogos{test::DialogosDeArquivo::cancela()};
    clica("atualizacaoID");
    ASSERT_EQ(dialogos.vistos().size(), 1U);
    EXPECT_EQ(dialogos.vistos()[0].titulo, q("Localize os Arquivos de Atualização do Boletos de Teste"));
    EXPECT_EQ(occurrences(programa.registro(), "FATAL"), 0U);
}

TEST_F(MdiMainCliques, TheFailureOfAnUpdatesUndoIsLoggedByTheClick) {
    inicia();
    // Nobody, whatever their rights, can put a file there.
    std::filesystem::create_directory_symlink("/proc/self/fdinfo", programa.caminho() / "XSD");
    const test::TemporaryFolder novos;
    novos.write("TORVA_TramadorValidador.xml", test::CatalogoXml{}.xml());
    novos.write("a.xsd", "novo");
    const test::DialogosDeArquivo dialogos{{caminhoQt(novos.path())}};
    const test::Caixas caixas{q("OK")};
    clica("atualizacaoID");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Falha na atualização do sistema"));
    EXPECT_EQ(occurrences(programa.registro(), "[53]"), 1U);
    EXPECT_TRUE(oLogger->callStack.EOF_());
    EXPECT_TRUE(principal().isVisible()) << "the system waits for the next click";
}

// ---- help and About ----

TEST_F(MdiMainCliques, F1OpensTheHelp) {
    programa.catalogoDistribuido();
    inicia();
    const test::EnderecosAbertos documentos;
    QTest::keyClick(&principal(), Qt::Key_F1);
    EXPECT_EQ(documentos.abertos.size(), 1U);
}

TEST_F(MdiMainCliques, TheHelpIsTheCatalogRendered) {
    programa.catalogoDistribuido();
    biblioteca::iniciaSistema();
    const test::EnderecosAbertos documentos;
    clica("hlpContent");
    ASSERT_EQ(documentos.abertos.size(), 1U);
    EXPECT_EQ(documentos.abertos[0].toLocalFile().toStdString(), (programa.caminho() / "help.html").string());
    const std::string pagina = programa.le("help.html");
    for (const auto& boleto : objTramadorValidador->getBoletos()) {
        EXPECT_NE(pagina.find(boleto->getNome()), std::string::npos) << boleto->getNome();
    }
}

TEST_F(MdiMainCliques, AMissingStylesheetGivesNoHelpPage) {
    inicia();
    const test::EnderecosAbertos documentos;
    const test::Caixas caixas;
    clica("hlpContent");
    EXPECT_TRUE(documentos.abertos.empty());
    EXPECT_FALSE(programa.tem("help.html"));
}

TEST_F(MdiMainCliques, SobreShowsTheAboutWindowOnce) {
    inicia();
    const auto janelasSobre = [] {
        int vistas = 0;
        const auto janelas = QApplication::topLevelWidgets();
        for (const QWidget* janela : janelas) {
            vistas += janela->objectName() == q("frmAbout") && janela->isVisible() ? 1 : 0;
        }
        return vistas;
    };
    clica("hlpAbout");
    EXPECT_EQ(janelasSobre(), 1);
    clica("hlpAbout");
    EXPECT_EQ(janelasSobre(), 1);
    principal().findChild<QDialog*>(q("frmAbout"))->close();
    EXPECT_EQ(janelasSobre(), 0);
    clica("hlpAbout");
    EXPECT_EQ(janelasSobre(), 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(janelasSobre(), 1) << "the one that was closed goes alone";
}

// ---- end ----

TEST_F(MdiMainCliques, AnsweringNaoLeavesEveryWindowOpenAndTheCallStackAsItWas) {
    inicia();
    abreJanela(q("A"));
    oLogger->callStack.push("antes");
    const test::Caixas caixas{q("Não")};
    clica("appClose");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Você deseja realmente encerrar suas operações?"));
    EXPECT_EQ(caixas.vistas()[0].titulo, q("Boletos de Teste"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::NoIcon);
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({q("Sim"), q("Não")}));
    EXPECT_EQ(principal().janelas().Count(), 1U);
    EXPECT_TRUE(principal().isVisible());
    EXPECT_NE(objTramadorValidador, nullptr);
    EXPECT_EQ(oLogger->callStack.lenght(), 1);
    EXPECT_EQ(oLogger->callStack.getLastElement(), "antes");
}

} // namespace
} // namespace tv
