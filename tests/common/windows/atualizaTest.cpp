#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/biblioteca.h"
#include "app/windows/mdiMain.h"
#include "common/PastasDeAtualizacao.h"
#include "common/windows/Janela.h"
#include "common/windows/controleLib.h"
#include "common/windows/textoQt.h"
#include "platform/Clock.h"
#include "platform/Throws.h"
#include "windows/Caixas.h"
#include "windows/DialogosDeArquivo.h"

#include <QPointer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

using namespace tv;
using namespace tv::test;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const QString falha = QStringLiteral("Falha na atualização do sistema");
const QString pergunta =
    QStringLiteral("Todas as janelas serão fechadas. \n\nDeseja reiniciar o sistema agora?");
const QString sucesso = QStringLiteral("Sistema atualizado com sucesso");

std::string catalogo(const std::string& titulo, const std::string& nivel = "ALL") {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><TORVA><app><titulo>" + titulo +
           "</titulo><versao>1.0</versao><site><caption>s</caption><link>l</link></site>"
           "<email><caption>e</caption><link>l</link></email><descricao>d</descricao></app>"
           "<logger type=\"TXT\" level=\"" +
           nivel + "\"/><configuracao><TABELAS/></configuracao></TORVA>";
}

class ChildWindow : public Janela {
public:
    ChildWindow()
        : Janela(QStringLiteral("janelaDeTeste")) {}
};

/// The program running on a catalog of its own, with an update at hand.
class FieldUpdate : public testing::Test {
protected:
    clock::Frozen agora{clock::at(2024, 3, 7, 9, 5, 2)};
    PastasDeAtualizacao pastas;

    FieldUpdate() {
        pastas.instalado("TORVA_TramadorValidador.xml", catalogo("Antigo"));
        aplicacao::setPasta(pastas.aplicacao());
        biblioteca::iniciaSistema();
        mdiMain::instancia().show();
    }
    ~FieldUpdate() override {
        mdiMain::destroi();
        objTramadorValidador.reset();
        oLogger.reset();
    }
    FieldUpdate(const FieldUpdate&) = delete;
    FieldUpdate& operator=(const FieldUpdate&) = delete;

    QStringList origem() const { return {caminhoQt(pastas.origem())}; }
    std::string diario() const { return files::readAll(pastas.aplicacao() / "log20240307.txt"); }
    Arquivos instalados() const {
        Arquivos arquivos = pastas.conteudo();
        arquivos.erase("log20240307.txt");
        return arquivos;
    }
};

TEST_F(FieldUpdate, AsksForTheFolderUnderTheProductsTitle) {
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    controleLib::atualizaSistema();
    EXPECT_EQ(dialogos.vistos().at(0).titulo,
              QStringLiteral("Localize os Arquivos de Atualização do Antigo"));
    EXPECT_EQ(dialogos.vistos().at(0).nomeObjeto, QStringLiteral("dialogoPasta"));
}

TEST_F(FieldUpdate, DoesNothingWhenTheFolderBrowserIsCancelled) {
    pastas.novo("TORVA_TramadorValidador.xml", catalogo("Novo"));
    const Arquivos antes = instalados();
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    const Caixas caixas;
    controleLib::atualizaSistema();
    EXPECT_THAT(caixas.vistas(), IsEmpty());
    EXPECT_EQ(instalados(), antes);
    EXPECT_THAT(pastas.sobras(), testing::SizeIs(1));
}

TEST_F(FieldUpdate, AsksForTheRestartAboveAllWindows) {
    DialogosDeArquivo dialogos{origem()};
    Caixas caixas{QStringLiteral("Não")};
    bool acima = false;
    caixas.aoVer = [&](const QMessageBox& caixa) {
        acima = caixa.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
    };
    controleLib::atualizaSistema();
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, pergunta);
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(caixas.vistas()[0].titulo, QStringLiteral("Antigo"));
    EXPECT_EQ(caixas.vistas()[0].botoes, (QStringList{QStringLiteral("Sim"), QStringLiteral("Não")}));
    EXPECT_TRUE(acima);
}

TEST_F(FieldUpdate, GoesOnWithTheOldCatalogOnNo) {
    pastas.novo("TORVA_TramadorValidador.xml", catalogo("Novo"));
    pastas.novo("a.xsd", "novo");
    const auto antes = objTramadorValidador;
    const QPointer<ChildWindow> filha = &criaJanela<ChildWindow>();
    DialogosDeArquivo dialogos{origem()};
    Caixas caixas{QStringLiteral("Não")};
    controleLib::atualizaSistema();
    EXPECT_EQ(objTramadorValidador, antes);
    EXPECT_FALSE(filha.isNull());
    EXPECT_EQ(instalados(), (Arquivos{{"TORVA_TramadorValidador.xml", catalogo("Novo")},
                                      {"TORVA_TramadorValidador_20240307_090502.xml", catalogo("Antigo")},
                                      {"XSD/a.xsd", "novo"}}));
    EXPECT_THAT(pastas.sobras(), IsEmpty());
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(FieldUpdate, RestartsOnTheNewCatalogOnYes) {
    pastas.novo("TORVA_TramadorValidador.xml", catalogo("Novo"));
    QPointer<ChildWindow> filha = &criaJanela<ChildWindow>();
    mdiMain::instancia().addJanela(*filha);
    filha->mostra();
    DialogosDeArquivo dialogos{origem()};
    Caixas caixas{QStringLiteral("Sim"), QStringLiteral("OK")};
    controleLib::atualizaSistema();
    EXPECT_TRUE(mdiMain::instancia().janelas().empty());
    EXPECT_EQ(objTramadorValidador->getTitulo(), "Novo");
    EXPECT_EQ(mdiMain::instancia().windowTitle(), QStringLiteral("[Novo - 1.0]"));
    ASSERT_EQ(caixas.vistas().size(), 2U);
    EXPECT_EQ(caixas.vistas()[1].texto, sucesso);
    EXPECT_EQ(caixas.vistas()[1].icone, QMessageBox::NoIcon);
    EXPECT_EQ(caixas.vistas()[1].titulo, QStringLiteral("Novo"));
    EXPECT_EQ(caixas.vistas()[1].botoes, QStringList{QStringLiteral("OK")});
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(FieldUpdate, EndsTheOldLogAndBeginsANewOneAtTheRestart) {
    pastas.novo("TORVA_TramadorValidador.xml", catalogo("Novo"));
    const std::string antes = diario();
    DialogosDeArquivo dialogos{origem()};
    Caixas caixas{QStringLiteral("Sim"), QStringLiteral("OK")};
    controleLib::atualizaSistema();
    const std::string depois = diario().substr(antes.size());
    const std::size_t entrada = depois.find("STACK  controleLib.atualizaSistema");
    const std::size_t termino = depois.find("Término de Execução: 09:05:02");
    const std::size_t inicio = depois.find("Início de Execução: 09:05:02");
    ASSERT_NE(inicio, std::string::npos) << depois;
    EXPECT_LT(entrada, termino);
    EXPECT_LT(termino, inicio);
}

TEST_F(FieldUpdate, ClaimsSuccessForAFolderThatHoldsNothingOfIt) {
    pastas.novo("LEIA-ME.txt", "");
    const Arquivos antes = instalados();
    DialogosDeArquivo dialogos{origem()};
    Caixas caixas{QStringLiteral("Sim"), QStringLiteral("OK")};
    controleLib::atualizaSistema();
    EXPECT_EQ(instalados(), antes);
    EXPECT_EQ(caixas.vistas().at(1).texto, sucesso);
}

TEST_F(FieldUpdate, TellsAFailureAndGivesTheOneOfItsUndoToTheCaller) {
    pastas.novo("TORVA_TramadorValidador.xml", catalogo("Novo"));
    pastas.novo("a.xsd", "novo");
    pastas.trancaEsquemas();
    DialogosDeArquivo dialogos{origem()};
    Caixas caixas{QStringLiteral("OK")};
    EXPECT_EQ(errorOf([] { controleLib::atualizaSistema(); }), errc::fileNotFound);
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, falha);
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(caixas.vistas()[0].titulo, QStringLiteral("Antigo"));
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList{QStringLiteral("OK")});
    EXPECT_EQ(instalados(), (Arquivos{{"TORVA_TramadorValidador.xml", catalogo("Novo")},
                                      {"TORVA_TramadorValidador_20240307_090502.xml", catalogo("Antigo")}}));
    EXPECT_EQ(pastas.sobras(), (Arquivos{{"a.xsd", "novo"}}));
    EXPECT_TRUE(oLogger->callStack.EOF_());
    EXPECT_THAT(diario(), testing::Not(HasSubstr("[53]"))) << "the failure is the caller's to log";
}

TEST_F(FieldUpdate, HasNothingToUndoWhenItFailsAtItsFirstMove) {
    files::remove(pastas.aplicacao() / "TORVA_TramadorValidador.xml");
    pastas.novo("TORVA_TramadorValidador.xml", catalogo("Novo"));
    DialogosDeArquivo dialogos{origem()};
    Caixas caixas{QStringLiteral("OK")};
    EXPECT_EQ(errorOf([] { controleLib::atualizaSistema(); }), std::nullopt);
    EXPECT_EQ(caixas.vistas().at(0).texto, falha);
    EXPECT_THAT(pastas.sobras(), testing::SizeIs(1));
}

TEST_F(FieldUpdate, TellsAFailureWithoutACatalog) {
    objTramadorValidador.reset();
    Caixas caixas{QStringLiteral("OK")};
    EXPECT_EQ(errorOf([] { controleLib::atualizaSistema(); }), std::nullopt);
    EXPECT_EQ(caixas.vistas().at(0).texto, falha);
}

/// In a process of its own, since a bad catalog ends it.
class BadCatalog : public FieldUpdate {
protected:
    BadCatalog() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    /// The messages on the way to the end, with the folder given up at the last one.
    void atualiza() const {
        DialogosDeArquivo dialogos{origem()};
        Caixas caixas{QStringLiteral("Sim"), QStringLiteral("OK"), QStringLiteral("OK")};
        caixas.aoVer = [this](const QMessageBox& caixa) {
            std::fprintf(stderr, "<%s>", caixa.text().toUtf8().constData());
            if (caixa.text() == QStringLiteral("O sistema será encerrado.")) {
                const bool guardado =
                    files::exists(pastas.aplicacao() / "TORVA_TramadorValidador_20240307_090502.xml");
                std::fprintf(stderr, "<%s>", guardado ? "guardado" : "perdido");
                std::filesystem::remove_all(pastas.aplicacao().parent_path());
            }
        };
        controleLib::atualizaSistema();
    }
};

TEST_F(BadCatalog, IsFoundAtTheRestartAndEndsTheProcessWithTheOldOneKept) {
    pastas.novo("TORVA_TramadorValidador.xml", "<TORVA>");
    EXPECT_EXIT(atualiza(), testing::ExitedWithCode(1),
                testing::AllOf(HasSubstr("<Erro na inicialização do sistema!>"),
                               HasSubstr("<O sistema será encerrado.><guardado>")));
}

} // namespace
