#pragma once

#include <QAction>
#include <QElapsedTimer>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <functional>
#include <stdexcept>
#include <string>

namespace tv::test {

/// Runs the event loop until a condition holds; gives up after a while that only a failure takes. Gives back
/// whether it holds.
inline bool espera(const std::function<bool()>& condicao, int milissegundos = 20000) {
    QElapsedTimer relogio;
    relogio.start();
    while (!condicao() && relogio.elapsed() < milissegundos) {
        QTest::qWait(2);
    }
    return condicao();
}

/// The action of that key, or null.
inline QAction* acaoDa(const QToolBar& barra, const char* chave) {
    for (QAction* uma : barra.actions()) {
        if (uma->objectName() == QLatin1String(chave)) {
            return uma;
        }
    }
    return nullptr;
}

/// The button of that key. Throws when the bar has none.
inline QToolButton& botaoDa(const QToolBar& barra, const char* chave) {
    QAction* const acao = acaoDa(barra, chave);
    auto* const botao = acao == nullptr ? nullptr : qobject_cast<QToolButton*>(barra.widgetForAction(acao));
    if (botao == nullptr) {
        throw std::runtime_error(std::string("no button ") + chave);
    }
    return *botao;
}

/// Clicks a button of a tool bar as the user does.
inline void clicaNa(const QToolBar& barra, const char* chave) {
    QTest::mouseClick(&botaoDa(barra, chave), Qt::LeftButton);
}

} // namespace tv::test
