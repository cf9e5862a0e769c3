#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>
#include <QWidget>

class QAction;
class QFrame;
class QLabel;
class QStatusBar;
class QToolBar;

/// The parts that all child windows have: tool bar, title with logo, status bar.
namespace tv::pecas {

/// Lengths are given in twips; a pixel at 96 dpi is 15 of them.
constexpr int emPixels(int twips) {
    return twips / 15;
}

/// Gives a control the name by which it is found, and the one that screen readers say.
template<typename Controle>
Controle* nomeia(Controle* controle, const QString& nome, const QString& nomeAcessivel) {
    controle->setObjectName(nome);
    controle->setAccessibleName(nomeAcessivel);
    return controle;
}

/// A tool bar `toolbar` with the texts below the pictures.
QToolBar* criaToolbar(QWidget& janela);

/// What a button of a tool bar is made of.
struct Botao {
    const char16_t* chave;  ///< Object name of its action.
    const char16_t* texto;  ///< Caption.
    const char16_t* imagem; ///< Key of its picture.
    const char16_t* dica;   ///< Tool tip.
    QList<QKeySequence> teclas = {};
};

/// Adds a button behind the others. Its keys work in the whole window.
QAction* criaBotao(QWidget& janela, QToolBar& toolbar, const Botao& botao);

/// The button of that key. Throws Error 5 when the tool bar has none.
QAction& botao(const QToolBar& toolbar, const QString& chave);

/// The title's controls: the frame `frmTitulo` with the bold label `lblTitulo` and the logo `imgTORVA`.
struct Titulo {
    QFrame* frmTitulo;
    QLabel* lblTitulo;
    QLabel* imgTORVA;
};

/// A label of plain text that shows what fits and asks for no width of its own.
QLabel* criaRotulo(QWidget& dono, const QString& nome, const QString& nomeAcessivel, const QString& texto);

/// `alturaLogo` is in pixels; `aumento` is how much larger than usual the label's letters are.
Titulo criaTitulo(QWidget& janela, const QString& texto, int alturaLogo, double aumento);

/// A status bar `statusBar` without panels.
QStatusBar* criaStatusBar(QWidget& janela);
/// Adds a panel that shares the bar's width with the others.
QLabel* criaPainel(QStatusBar& statusBar, const QString& nome, const QString& nomeAcessivel);
/// Shows a text in a panel at once, also while an operation lets no event through.
void escreve(QLabel& painel, const QString& texto);

/// Puts the tool bar at the window's head and the status bar at its foot.
void posiciona(const QWidget& janela, QToolBar& toolbar, QStatusBar& statusBar);

} // namespace tv::pecas
