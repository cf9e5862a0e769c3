#pragma once

#include "app/Aplicacao.h"
#include "app/windows/mdiMain.h"
#include "common/windows/textoQt.h"
#include "logging/LogFolder.h"
#include "validation/windows/VistaRelatorio.h"
#include "validation/windows/frmBrowser.h"
#include "windows/Caixas.h"
#include "windows/Janelas.h"

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QWebEngineFindTextResult>
#include <QWebEnginePage>
#include <QWebEngineView>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace tv::test {

inline clsResultado achado(const std::string& caminho, const std::string& valor, std::int32_t linha = 7) {
    clsResultado novo;
    novo.setTag("campo", valor, caminho, "12345678000195");
    novo.setError(clsResultado::codigoEntreCampos, "Soma não confere", "A soma do valor não confere");
    novo.setLocation(linha, 3);
    return novo;
}

inline std::shared_ptr<const Resultados> lista(std::vector<clsResultado> achados) {
    return std::make_shared<const Resultados>(std::move(achados));
}

/// `quantos` findings with the values "valor 1" to "valor <quantos>".
inline std::shared_ptr<const Resultados> muitos(int quantos) {
    Resultados achados;
    for (int i = 1; i <= quantos; ++i) {
        achados.push_back(achado("raiz.secao.campo", "valor " + std::to_string(i), i));
    }
    return lista(std::move(achados));
}

/// An application folder with the shipped stylesheet, a log, and the main window. The web engine has no
/// sandbox for root, so tests that run as root switch it off.
class BancadaRelatorio : public ::testing::Test {
protected:
    BancadaRelatorio() {
        if (::geteuid() == 0) {
            qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
        }
        instalaFolha(files::readAll(TV_SOURCE_DIR "/data/XSD/resultado.xsl"));
        aplicacao::setPasta(pasta.path());
        mdiMain::instancia().resize(1200, 800);
        mdiMain::instancia().show();
    }
    ~BancadaRelatorio() override {
        mdiMain::destroi();
        aplicacao::setPasta(antes_);
    }

    void instalaFolha(const std::string& texto) const { pasta.write("XSD/resultado.xsl", texto); }
    /// A stylesheet that writes this body whatever it is given.
    void instalaPagina(const std::string& cabeca, const std::string& corpo) const {
        instalaFolha(
            "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
            "<xsl:output method='html' encoding='UTF-8' indent='no'/><xsl:template match='/'><html><head>" +
            cabeca + "</head><body>" + corpo + "</body></html></xsl:template></xsl:stylesheet>");
    }

    /// Opens a report and enrols its window as a batch window does.
    frmBrowser& abre(const std::shared_ptr<const Resultados>& achados,
                     const QString& arquivo = QStringLiteral("/dados/fundo.xml"),
                     const QString& titulo = QStringLiteral("Arquivo de Posição (4.01)")) {
        auto& nova = criaJanela<frmBrowser>();
        janela = &nova;
        bool chegou = false;
        QObject::connect(&vista(), &VistaRelatorio::carregou, &nova, [&chegou, this](bool certo) {
            chegou = true;
            carregada = certo;
        });
        nova.abrir(achados, titulo, arquivo);
        mdiMain::instancia().addJanela(nova);
        if (!nova.arquivoReport().empty() && files::exists(nova.arquivoReport())) {
            EXPECT_TRUE(espera([&chegou] { return chegou; })) << "the page was not loaded";
        }
        QObject::disconnect(&vista(), &VistaRelatorio::carregou, &nova, nullptr);
        // A desktop gives the keyboard back when the progress window goes; the offscreen platform does not.
        mdiMain::instancia().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&mdiMain::instancia()));
        return nova;
    }

    VistaRelatorio& vista() const { return *janela->findChild<VistaRelatorio*>(); }
    QWebEngineView& brwReport() const {
        return *janela->findChild<QWebEngineView*>(QStringLiteral("brwReport"));
    }
    /// The text of what is drawn of the page.
    std::string textoDaPagina() const {
        QString texto;
        bool veio = false;
        brwReport().page()->toPlainText([&](const QString& tudo) {
            texto = tudo;
            veio = true;
        });
        EXPECT_TRUE(espera([&veio] { return veio; }));
        return paraUtf8(texto);
    }
    /// True when a reader finds this text in the page, drawn or not yet.
    bool naPagina(const std::string& texto) const {
        int quantos = -1;
        brwReport().page()->findText(
            paraQt(texto), QWebEnginePage::FindCaseSensitively,
            [&quantos](const QWebEngineFindTextResult& achados) { quantos = achados.numberOfMatches(); });
        EXPECT_TRUE(espera([&quantos] { return quantos >= 0; }));
        return quantos > 0;
    }

    template<typename T = QWidget>
    T& controle(const char* nome) const {
        return *janela->findChild<T*>(QString::fromLatin1(nome));
    }
    std::string painel() const { return paraUtf8(controle<QLabel>("panel1").text()); }
    QToolButton& botao(const char* chave) const { return botaoDa(controle<QToolBar>("toolbar"), chave); }
    /// Pages of reports that lie in the application folder.
    std::vector<std::string> paginasNoDisco() const {
        std::vector<std::string> nomes;
        for (const auto& item : std::filesystem::recursive_directory_iterator(pasta.path())) {
            if (item.is_regular_file() && item.path().extension() != ".xsl") {
                nomes.push_back(item.path().filename().string());
            }
        }
        return nomes;
    }
    std::string registro() const {
        return log.read(std::filesystem::path(oLogger->getFilename()).filename().string());
    }

    TemporaryFolder pasta;
    TemporaryFolder log;
    GlobalLogger logger{startLogger(log, clsLogger::typeTXT, library::level::all)};
    frmBrowser* janela = nullptr;
    bool carregada = false; ///< What the last page's load told.

private:
    std::filesystem::path antes_ = aplicacao::pasta();
};

} // namespace tv::test
