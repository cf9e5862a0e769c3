#pragma once

#include "app/windows/PastaDoPrograma.h"
#include "app/windows/frmSplash.h"
#include "app/windows/mdiMain.h"
#include "windows/Caixas.h"
#include "windows/EnderecosAbertos.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <iostream>
#include <string>
#include <utility>

namespace tv::test {

inline const char* nomeDoIcone(QMessageBox::Icon icone) {
    switch (icone) {
    case QMessageBox::Critical:
        return "critico";
    case QMessageBox::Information:
        return "informacao";
    case QMessageBox::Warning:
        return "exclamacao";
    case QMessageBox::Question:
        return "pergunta";
    case QMessageBox::NoIcon:
        break;
    }
    return "sem icone";
}

/// A box as one line: title|icon|text|buttons.
inline std::string descreve(const QMessageBox& caixa) {
    std::string linha = "caixa " + caixa.windowTitle().toStdString() + "|" + nomeDoIcone(caixa.icon()) + "|" +
                        caixa.text().toStdString();
    for (const QAbstractButton* botao : caixa.buttons()) {
        linha += "|" + botao->text().remove(QLatin1Char('&')).toStdString();
    }
    return linha + "\n";
}

/// Answers boxes and tells each on the error stream.
class CaixasContadas : public Caixas {
public:
    CaixasContadas(std::initializer_list<QString> respostas)
        : Caixas(respostas) {
        aoVer = [](const QMessageBox& caixa) { std::cerr << descreve(caixa); };
    }
};

/// Documents that are opened are told on the error stream, since the process ends before a test can ask.
class DocumentosContados : public EnderecosAbertos {
public:
    DocumentosContados() {
        connect(this, &EnderecosAbertos::abriu, this, [](const QUrl& endereco) {
            std::cerr << "documento " << endereco.fileName().toStdString() << "\n";
        });
    }
};

/// Runs `acao` as soon as `pronto` holds, looking every 5 ms.
inline void quando(std::function<bool()> pronto, std::function<void()> acao) {
    auto* relogio = new QTimer(qApp);
    QObject::connect(relogio, &QTimer::timeout, qApp,
                     [relogio, pronto = std::move(pronto), acao = std::move(acao)] {
                         if (pronto()) {
                             relogio->stop();
                             relogio->deleteLater();
                             acao();
                         }
                     });
    relogio->start(5);
}

inline bool principalVisivel() {
    return mdiMain::existe() && mdiMain::instancia().isVisible();
}

inline frmSplash* splashVisivel() {
    const auto janelas = QApplication::topLevelWidgets();
    for (QWidget* janela : janelas) {
        if (auto* splash = qobject_cast<frmSplash*>(janela); splash != nullptr && splash->isVisible()) {
            return splash;
        }
    }
    return nullptr;
}

/// The program in a folder of its own. Where the process ends, a test runs in another process, which tells on
/// its error stream what it saw before.
class ProgramaInteiro : public ::testing::Test {
protected:
    ProgramaInteiro() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    std::size_t aberturas() const { return occurrences(programa.registro(), aberturaDoRegistro); }
    std::size_t fechamentos() const { return occurrences(programa.registro(), fechamentoDoRegistro); }

    PastaDoPrograma programa;
};

} // namespace tv::test
