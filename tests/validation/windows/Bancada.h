#pragma once

#include "app/Aplicacao.h"
#include "app/windows/mdiMain.h"
#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "platform/Turns.h"
#include "validation/ValidationFolder.h"
#include "validation/windows/frmValidador.h"
#include "windows/Caixas.h"
#include "windows/Janelas.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <unistd.h>
#include <utility>

namespace tv::test {

inline void PrintTo(const Caixa& caixa, std::ostream* saida) {
    *saida << caixa.texto.toStdString();
}

/// Time that stands still until a test moves it on. A run asks for it in front of each file; every question
/// makes a turn due, so that each file sees one at its first text.
class RelogioDeTurnos {
public:
    explicit RelogioDeTurnos(std::function<void()> turno) {
        clock::setSource([this, turno = std::move(turno)] {
            turns::setHandler(turno); // a handler just installed has never had a turn
            return agora_;
        });
    }
    ~RelogioDeTurnos() { clock::setSource({}); }
    RelogioDeTurnos(const RelogioDeTurnos&) = delete;
    RelogioDeTurnos& operator=(const RelogioDeTurnos&) = delete;

    void avanca(std::chrono::seconds tempo) { agora_ += tempo; }

private:
    DateTime agora_ = clock::at(2026, 3, 14, 10);
};

/// The main window with one validator window for a small layout, documents on disk, and a log at level ALL.
class Bancada : public ::testing::Test {
protected:
    Bancada() {
        if (::geteuid() == 0) {
            qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1"); // there is none for root
        }
        pasta.writeXsd("resultado.xsl", files::readAll(TV_SOURCE_DIR "/data/XSD/resultado.xsl"));
        aplicacao::setPasta(pasta.path());
        turns::setHandler([this] { turno(); });
        mdiMain::instancia().resize(1000, 700);
        mdiMain::instancia().show();
        mdiMain::instancia().activateWindow();
        espera([] { return mdiMain::instancia().isActiveWindow(); });
    }
    ~Bancada() override {
        turns::setHandler({});
        mdiMain::destroi();
        aplicacao::setPasta(pastaAntes_);
    }

    /// What a run's turn does.
    void turno() const {
        if (aoTurno) {
            aoTurno();
        }
        QCoreApplication::processEvents();
    }

    /// Opens a window for the layout `posicao`, or another one.
    frmValidador& abre(std::shared_ptr<const clsBoleto> layout = nullptr) {
        mdiMain::instancia().abrirValidador(layout ? layout : pasta.posicao());
        janela = dynamic_cast<frmValidador*>(mdiMain::instancia().janelaAtiva());
        if (janela == nullptr) {
            throw std::runtime_error("the window is not there");
        }
        return *janela;
    }

    std::string valido(const std::string& nome) const {
        return pasta
            .write(nome, "<posicao><fundo><header><cnpj>1</cnpj><dt>20240115</dt></header></fundo></posicao>")
            .string();
    }
    /// A document with one finding.
    std::string errado(const std::string& nome) const {
        return pasta
            .write(nome, "<posicao><fundo><header><cnpj>1</cnpj><dt>20241399</dt></header></fundo></posicao>")
            .string();
    }
    void adiciona(std::initializer_list<std::string> arquivos) const {
        QStringList caminhos;
        for (const std::string& arquivo : arquivos) {
            caminhos << paraQt(arquivo);
        }
        janela->adicionaArquivos(caminhos);
    }

    QToolBar& barra() const { return *janela->findChild<QToolBar*>(QStringLiteral("toolbar")); }
    Grade& grade() const { return *janela->findChild<Grade*>(QStringLiteral("grid")); }
    ModeloGrade& modelo() const { return grade().modelo(); }
    QString painel() const {
        return janela->findChild<QStatusBar*>(QStringLiteral("statusBar"))->findChild<QLabel*>()->text();
    }
    QAction* acao(const char* chave) const { return acaoDa(barra(), chave); }
    void clica(const char* chave) const { clicaNa(barra(), chave); }
    QAction* acrescentaBotao(const char* chave) const {
        QAction* nova = barra().addAction(QString::fromLatin1(chave));
        nova->setObjectName(QString::fromLatin1(chave));
        return nova;
    }

    /// A row as "status|picture|isValid|validou|tempo|findings".
    std::string estado(int linha) const {
        const auto achados = modelo().marca(linha).value<std::shared_ptr<const Resultados>>();
        const auto texto = [&](std::string_view coluna) { return paraUtf8(modelo().texto(linha, coluna)); };
        return texto("status") + "|" + paraUtf8(modelo().imagem(linha, "status")) + "|" + texto("isValid") +
               "|" + texto("validou") + "|" + texto("tempo") + "|" +
               (achados ? std::to_string(achados->size()) : "-");
    }
    std::vector<std::string> estados() const {
        std::vector<std::string> todos;
        for (int linha = 0; linha < modelo().rowCount(); ++linha) {
            todos.push_back(estado(linha));
        }
        return todos;
    }
    /// What was logged at a level ("FATAL", "WARN").
    bool registrou(const std::string& texto) const {
        return log.read(std::filesystem::path(oLogger->getFilename()).filename().string()).find(texto) !=
               std::string::npos;
    }

    clock::Frozen hora{clock::at(2026, 3, 14, 10)}; ///< A file takes no time.
    ValidationFolder pasta;
    TemporaryFolder log;
    GlobalLogger registro{startLogger(log, clsLogger::typeTXT, library::level::all)};
    std::function<void()> aoTurno; ///< Runs in each turn of a run, before the events are served.
    QPointer<frmValidador> janela;

private:
    std::filesystem::path pastaAntes_ = aplicacao::pasta();
};

inline const std::string adicionado = "||False|False|00:00|-";
inline const std::string passou = "|imgOK|True|True|00:00|-";
inline const std::string reprovado = "Não válido|imgError|False|True|00:00|1";
inline const std::string noEditor = "||False|True|00:00|1";

} // namespace tv::test
