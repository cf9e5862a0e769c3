#pragma once

#include "app/windows/Ferramentas.h"
#include "app/windows/PastaDoPrograma.h"
#include "app/windows/mdiMain.h"

#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace tv::test {

/// Does something with the dialog of that class as soon as it stands; counts how often it came.
class EsperaDialogo : public QObject {
public:
    EsperaDialogo(const char* nome, std::function<void(QWidget&)> acao)
        : nome_(QString::fromUtf8(nome))
        , acao_(std::move(acao)) {
        connect(&relogio_, &QTimer::timeout, this, [this] { olha(); });
        relogio_.start(5);
    }
    int vezes() const { return vezes_; }

private:
    void olha() {
        QWidget* dialogo = QApplication::activeModalWidget();
        if (dialogo != nullptr && dialogo->isVisible() && dialogo->objectName() == nome_) {
            ++vezes_;
            acao_(*dialogo);
        }
    }

    QString nome_;
    std::function<void(QWidget&)> acao_;
    QTimer relogio_;
    int vezes_ = 0;
};

/// The program on a small catalog, with its main window on the screen.
class PrincipalAberta : public ::testing::Test {
protected:
    void inicia(const std::string& boletos = layout("posicao", "Posição", true, true)) {
        programa.catalogo({.boletos = boletos});
        mostra();
    }
    void mostra() {
        biblioteca::iniciaSistema();
        principal().resize(1000, 700);
        principal().setWindowState(Qt::WindowNoState);
        principal().show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&principal()));
    }
    static mdiMain& principal() { return mdiMain::instancia(); }
    static Ferramentas& ferramentas() { return principal().ferramentas(); }
    static void clica(const char* identificador) {
        ferramentas().acao(QString::fromUtf8(identificador))->trigger();
    }
    static QMdiArea& area() { return *principal().findChild<QMdiArea*>(); }

    PastaDoPrograma programa;
};

} // namespace tv::test
