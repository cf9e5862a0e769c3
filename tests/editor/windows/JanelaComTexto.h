#pragma once

#include "app/windows/mdiMain.h"
#include "common/windows/Janela.h"
#include "editor/windows/PicLines.h"

#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace tv::test {

/// A child window with the editor's text box and, if wanted, its strip.
class JanelaComTexto : public Janela {
public:
    explicit JanelaComTexto(const QString& texto, bool comFaixa = true)
        : Janela(QStringLiteral("JanelaComTexto"))
        , txtXML(new QPlainTextEdit(texto, this))
        , picLines(comFaixa ? new PicLines(this) : nullptr) {
        txtXML->setObjectName(QStringLiteral("txtXML"));
        txtXML->setGeometry(40, 0, 300, 200);
        if (comFaixa) {
            picLines->setGeometry(0, 0, 40, 200);
        }
    }

    QPlainTextEdit* txtXML;
    PicLines* picLines; ///< Null without one.
};

/// Some other child window.
class OutraJanela : public Janela {
public:
    OutraJanela()
        : Janela(QStringLiteral("OutraJanela")) {}
};

/// Puts a child window into the main window, active.
template<typename T, typename... Args>
T& ativa(Args&&... args) {
    T& janela = criaJanela<T>(std::forward<Args>(args)...);
    mdiMain::instancia().addJanela(janela);
    mdiMain::instancia().show();
    janela.mostra();
    return janela;
}

} // namespace tv::test
