#include "common/windows/pecasJanela.h"

#include "app/windows/frmObjetos.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"

#include <QAction>
#include <QFrame>
#include <QLabel>
#include <QStatusBar>
#include <QToolBar>

#include <algorithm>

namespace tv::pecas {

QToolBar* criaToolbar(QWidget& janela) {
    auto* toolbar = nomeia(new QToolBar(&janela), QStringLiteral("toolbar"), QStringLiteral("Ferramentas"));
    toolbar->setIconSize({24, 24});
    toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    return toolbar;
}

QAction* criaBotao(QWidget& janela, QToolBar& toolbar, const Botao& botao) {
    QAction* acao = toolbar.addAction(QString::fromUtf16(botao.texto));
    acao->setObjectName(QString::fromUtf16(botao.chave));
    if (acao->text().contains(QLatin1Char('&'))) {
        acao->setIconText(acao->text()); // keeps the mnemonic on the button
    }
    acao->setToolTip(QString::fromUtf16(botao.dica));
    acao->setShortcuts(botao.teclas);
    acao->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    proceed([&] { acao->setIcon(frmObjetos::imagem(QString::fromUtf16(botao.imagem))); });
    janela.addAction(acao);
    if (auto* face = toolbar.widgetForAction(acao)) {
        face->setFocusPolicy(Qt::TabFocus);
    }
    return acao;
}

QAction& botao(const QToolBar& toolbar, const QString& chave) {
    const QList<QAction*> botoes = toolbar.actions();
    const auto achado = std::find_if(botoes.begin(), botoes.end(),
                                     [&](const QAction* acao) { return acao->objectName() == chave; });
    if (achado == botoes.end()) {
        throw Error(errc::invalidCall, "toolbar", "Não há botão com a chave " + paraUtf8(chave));
    }
    return **achado;
}

QLabel* criaRotulo(QWidget& dono, const QString& nome, const QString& nomeAcessivel, const QString& texto) {
    auto* rotulo = nomeia(new QLabel(texto, &dono), nome, nomeAcessivel);
    rotulo->setTextFormat(Qt::PlainText);
    rotulo->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long path widens no window
    return rotulo;
}

Titulo criaTitulo(QWidget& janela, const QString& texto, int alturaLogo, double aumento) {
    Titulo titulo{};
    titulo.frmTitulo = nomeia(new QFrame(&janela), QStringLiteral("frmTitulo"), QStringLiteral("Título"));
    titulo.frmTitulo->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    titulo.lblTitulo =
        criaRotulo(*titulo.frmTitulo, QStringLiteral("lblTitulo"), QStringLiteral("Título da janela"), texto);
    QFont fonte = titulo.lblTitulo->font();
    fonte.setBold(true);
    fonte.setPointSizeF(fonte.pointSizeF() * aumento);
    titulo.lblTitulo->setFont(fonte);
    titulo.imgTORVA =
        nomeia(new QLabel(titulo.frmTitulo), QStringLiteral("imgTORVA"), QStringLiteral("Logotipo"));
    proceed([&] { titulo.imgTORVA->setPixmap(frmObjetos::logotipo(alturaLogo)); });
    return titulo;
}

QStatusBar* criaStatusBar(QWidget& janela) {
    auto* statusBar =
        nomeia(new QStatusBar(&janela), QStringLiteral("statusBar"), QStringLiteral("Situação"));
    statusBar->setSizeGripEnabled(false);
    return statusBar;
}

QLabel* criaPainel(QStatusBar& statusBar, const QString& nome, const QString& nomeAcessivel) {
    auto* painel = criaRotulo(statusBar, nome, nomeAcessivel, {});
    statusBar.addWidget(painel, 1);
    return painel;
}

void escreve(QLabel& painel, const QString& texto) {
    painel.setText(texto);
    painel.repaint();
}

void posiciona(const QWidget& janela, QToolBar& toolbar, QStatusBar& statusBar) {
    toolbar.setGeometry(0, 0, janela.width(), toolbar.sizeHint().height());
    const int altura = statusBar.sizeHint().height();
    statusBar.setGeometry(0, janela.height() - altura, janela.width(), altura);
}

} // namespace tv::pecas
