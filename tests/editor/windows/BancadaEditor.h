#pragma once

#include "app/windows/mdiMain.h"
#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "editor/windows/CaixaXML.h"
#include "editor/windows/frmEditor.h"
#include "logging/LogFolder.h"
#include "platform/Turns.h"
#include "validation/ValidationFolder.h"
#include "windows/Caixas.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QStatusBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace tv::test {

/// A document of the layout `posicao` with a value in each of the fields.
inline std::string documento(std::string_view data = "20240115", std::string_view nome = "Fundo",
                             std::string_view inicio = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>") {
    return std::string(inicio) + "\n<posicao>\n\t<fundo>\n\t\t<header>\n\t\t\t<cnpj>1</cnpj><dt>" +
           std::string(data) + "</dt>\n\t\t\t<nome>" + std::string(nome) +
           "</nome>\n\t\t</header>\n\t</fundo>\n</posicao>\n";
}

/// One finding with a place and a value.
inline clsResultado achado(int linha, int coluna, std::string valor,
                           std::string path = "posicao.fundo.header.dt") {
    clsResultado resultado;
    resultado.setTag("Data", std::move(valor), std::move(path), "12345");
    resultado.setError(clsResultado::codigoRegraCampo, "", "");
    resultado.setLocation(linha, coluna);
    return resultado;
}

template<typename... Achados>
std::shared_ptr<const Resultados> achados(Achados... um) {
    auto lista = std::make_shared<Resultados>();
    (lista->push_back(std::move(um)), ...);
    return lista;
}

/// The main window with an editor for a document on disk, and a log at level ALL.
class BancadaEditor : public ::testing::Test {
protected:
    BancadaEditor() {
        mdiMain::instancia().resize(1000, 760);
        mdiMain::instancia().show();
    }
    ~BancadaEditor() override {
        turns::setHandler({});
        if (janela != nullptr) {
            // Nobody is there to answer a question.
            Caixas caixas;
            if (!janela->salvo()) {
                caixas.responde(QStringLiteral("Não"));
            }
            janela->closeWindow();
        }
        mdiMain::destroi();
    }

    frmEditor& abre(std::string_view bytes, const std::shared_ptr<const Resultados>& resultados = nullptr) {
        return abreCaminho(pasta.write("a.xml", bytes), resultados);
    }
    frmEditor& abreCaminho(const std::filesystem::path& caminho,
                           const std::shared_ptr<const Resultados>& resultados = nullptr) {
        janela = &criaJanela<frmEditor>();
        janela->abrir(resultados, pasta.posicao(), caminhoQt(caminho));
        mdiMain::instancia().addJanela(*janela);
        QCoreApplication::processEvents();
        ativa();
        return *janela;
    }
    /// Gives the main window the keyboard back; no window manager does it here when a window closes.
    static void ativa() { QApplication::setActiveWindow(&mdiMain::instancia()); }

    CaixaXML& caixa() const { return *janela->findChild<CaixaXML*>(QStringLiteral("txtXML")); }
    Grade& grade() const { return *janela->findChild<Grade*>(QStringLiteral("grid")); }
    QToolBar& barra() const { return *janela->findChild<QToolBar*>(QStringLiteral("toolbar")); }
    QString rotulo(const char* nome) const {
        return janela->findChild<QLabel*>(QString::fromLatin1(nome))->text();
    }
    std::string painel() const { return rotulo("panel1").toStdString(); }
    std::string texto() const { return caixa().toPlainText().toStdString(); }
    std::string selecionado() const { return caixa().textCursor().selectedText().toStdString(); }
    std::string noDisco() const { return pasta.folder().read("a.xml"); }

    void clica(const char* chave) const {
        for (QAction* acao : barra().actions()) {
            if (acao->objectName() == QLatin1String(chave)) {
                QTest::mouseClick(barra().widgetForAction(acao), Qt::LeftButton);
                return;
            }
        }
        FAIL() << "no button " << chave;
    }
    /// Clicks a finding as the user does.
    void clicaAchado(int linha) const {
        const QModelIndex celula = grade().model()->index(linha, 0);
        grade().scrollTo(celula);
        QTest::mouseClick(grade().viewport(), Qt::LeftButton, {}, grade().visualRect(celula).center());
    }
    void tecla(Qt::Key qual, Qt::KeyboardModifiers com = Qt::NoModifier) const {
        QTest::keyClick(&caixa(), qual, com);
    }
    /// Types; a line feed is the Enter key.
    void digita(std::string_view letras) const {
        caixa().setFocus();
        for (const char letra : letras) {
            if (letra == '\n') {
                QTest::keyClick(&caixa(), Qt::Key_Return);
            } else {
                QTest::keyClick(&caixa(), letra);
            }
        }
    }
    std::string registro() const {
        return log.read(std::filesystem::path(oLogger->getFilename()).filename().string());
    }

    ValidationFolder pasta;
    TemporaryFolder log;
    GlobalLogger global{startLogger(log, clsLogger::typeTXT, library::level::all)};
    QPointer<frmEditor> janela;
};

} // namespace tv::test
