#include "windows/Caixas.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace tv::test {

namespace {

QString semMnemonico(QString texto) {
    return texto.remove(QLatin1Char('&'));
}

Caixa retrato(const QMessageBox& caixa) {
    Caixa vista{caixa.windowTitle(), caixa.text(), caixa.icon(), {}};
    for (const QAbstractButton* botao : caixa.buttons()) {
        vista.botoes << semMnemonico(botao->text());
    }
    return vista;
}

} // namespace

Caixas::Caixas(std::initializer_list<QString> respostas)
    : respostas_(respostas) {
    connect(&relogio_, &QTimer::timeout, this, &Caixas::olha);
    relogio_.start(5);
}

Caixas::~Caixas() {
    for (const QString& sobra : respostas_) {
        ADD_FAILURE() << "no message box came up for the answer " << sobra.toStdString();
    }
}

void Caixas::olha() {
    auto* caixa = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (caixa == nullptr || !caixa->isVisible()) {
        return;
    }
    vistas_.push_back(retrato(*caixa));
    if (aoVer) {
        aoVer(*caixa);
    }
    if (respostas_.empty()) {
        ADD_FAILURE() << "unexpected message box: " << caixa->text().toStdString();
        caixa->done(0);
        return;
    }
    const QString resposta = respostas_.front();
    respostas_.pop_front();
    for (QAbstractButton* botao : caixa->buttons()) {
        if (semMnemonico(botao->text()) == resposta) {
            QTest::mouseClick(botao, Qt::LeftButton);
            return;
        }
    }
    ADD_FAILURE() << "the message box has no button " << resposta.toStdString() << ": "
                  << caixa->text().toStdString();
    caixa->done(0);
}

} // namespace tv::test
