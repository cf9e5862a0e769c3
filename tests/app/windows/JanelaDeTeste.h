#pragma once

#include "app/windows/mdiMain.h"
#include "common/windows/Janela.h"

#include <QMdiSubWindow>

#include <functional>

namespace tv::test {

/// A child window whose closing a test decides.
class JanelaDeTeste : public Janela {
public:
    explicit JanelaDeTeste(const QString& titulo)
        : Janela(QStringLiteral("JanelaDeTeste")) {
        setWindowTitle(titulo);
        setMinimumSize(120, 60);
    }

    std::function<bool()> aoPerguntar; ///< Its answer lets the window close.
    std::function<void()> aoFechar;
    QMdiSubWindow* moldura() const { return qobject_cast<QMdiSubWindow*>(parentWidget()); }

protected:
    bool podeFechar() override { return !aoPerguntar || aoPerguntar(); }
    void aoDescarregar() override {
        if (aoFechar) {
            aoFechar();
        }
    }
};

/// A child window in the main window's frame, enrolled and shown, as a tool opens it.
inline JanelaDeTeste& abreJanela(const QString& titulo) {
    auto& janela = criaJanela<JanelaDeTeste>(titulo);
    mdiMain::instancia().addJanela(janela);
    janela.mostra();
    return janela;
}

} // namespace tv::test
