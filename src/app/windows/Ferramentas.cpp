#include "app/windows/Ferramentas.h"

#include "common/windows/textoQt.h"
#include "platform/Error.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace tv {

namespace {

[[noreturn]] void naoDefinida(const QString& identificador) {
    throw Error(errc::invalidCall, "Ferramentas",
                "Não há ferramenta com o identificador " + paraUtf8(identificador));
}

void retira(QWidget& lugar, QAction* acao) {
    lugar.removeAction(acao);
    if (acao->parent() == &lugar) { // a separator belongs to its place
        acao->deleteLater();
    }
}

} // namespace

Ferramentas::Ferramentas(QMainWindow& janela)
    : QObject(&janela)
    , janela_(janela)
    , barra_(janela.addToolBar(QStringLiteral("Barra de ferramentas"))) {
    janela.menuBar()->setObjectName(QStringLiteral("MenuBar"));
    janela.menuBar()->setAccessibleName(QStringLiteral("Barra de menus"));
    barra_->setObjectName(QStringLiteral("toolbar"));
    barra_->setAccessibleName(barra_->windowTitle());
    barra_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    // The frame's own context menu would let the only tool bar disappear for good.
    janela.setContextMenuPolicy(Qt::PreventContextMenu);
}

Ferramentas::~Ferramentas() = default;

void Ferramentas::define(const Ferramenta& ferramenta, Tipo tipo) {
    const QString& identificador = ferramenta.identificador;
    if (existe(identificador)) {
        throw Error(errc::keyTaken, "Ferramentas",
                    "Já há uma ferramenta com o identificador " + paraUtf8(identificador));
    }
    Entrada nova{ferramenta, tipo};
    if (tipo == Tipo::Menu) {
        nova.menu = new QMenu(ferramenta.caption, &janela_);
        nova.menu->setObjectName(identificador);
        nova.menu->setIcon(ferramenta.imagem);
        nova.acao = nova.menu->menuAction();
        nova.acao->setObjectName(identificador);
    } else if (tipo == Tipo::Botao) {
        nova.acao = criaAcao(ferramenta);
    }
    entradas_.emplace(identificador, nova);
}

QAction* Ferramentas::criaAcao(const Ferramenta& ferramenta) {
    auto* acao = new QAction(ferramenta.imagem, ferramenta.caption, this);
    acao->setObjectName(ferramenta.identificador);
    acao->setMenuRole(QAction::NoRole);
    connect(acao, &QAction::triggered, this,
            [this, identificador = ferramenta.identificador] { Q_EMIT clicada(identificador); });
    return acao;
}

void Ferramentas::remove(const QString& identificador) {
    const Entrada saida = entrada(identificador);
    for (const auto& [nome, outra] : entradas_) {
        while (outra.menu != nullptr && noMenu(nome).contains(identificador)) {
            removeDoMenu(nome, identificador);
        }
    }
    entradas_.erase(identificador);
    if (saida.acao != nullptr) {
        barra_->removeAction(saida.acao);
        janela_.menuBar()->removeAction(saida.acao);
        // The click that led here may be the action's own, so it goes at the next turn.
        saida.acao->setObjectName(QString());
        saida.acao->setShortcut(QKeySequence());
    }
    if (saida.menu != nullptr) {
        saida.menu->setObjectName(QString());
        saida.menu->deleteLater();
    } else if (saida.acao != nullptr) {
        saida.acao->deleteLater();
    }
}

bool Ferramentas::existe(const QString& identificador) const {
    return entradas_.contains(identificador);
}

QStringList Ferramentas::identificadores() const {
    QStringList todos;
    for (const auto& [identificador, ignorada] : entradas_) {
        todos << identificador;
    }
    return todos;
}

const Ferramentas::Entrada& Ferramentas::entrada(const QString& identificador) const {
    const auto achada = entradas_.find(identificador);
    if (achada == entradas_.end()) {
        naoDefinida(identificador);
    }
    return achada->second;
}

const Ferramenta& Ferramentas::ferramenta(const QString& identificador) const {
    return entrada(identificador).ferramenta;
}

void Ferramentas::setCaption(const QString& identificador, const QString& caption) {
    const auto achada = entradas_.find(identificador);
    if (achada == entradas_.end()) {
        naoDefinida(identificador);
    }
    achada->second.ferramenta.caption = caption;
    if (achada->second.acao != nullptr) {
        achada->second.acao->setText(caption);
    }
}

void Ferramentas::incluiNaBarraDeMenus(const QString& identificador) {
    janela_.menuBar()->addMenu(menu(identificador));
}

void Ferramentas::incluiNaBarra(const QString& identificador) {
    const Entrada& nova = entrada(identificador);
    if (nova.tipo == Tipo::Separador) {
        barra_->addSeparator()->setObjectName(identificador);
        return;
    }
    barra_->addAction(nova.acao);
    nomeiaBotao(nova);
}

void Ferramentas::nomeiaBotao(const Entrada& entrada) {
    QWidget* botao = barra_->widgetForAction(entrada.acao);
    botao->setObjectName(entrada.ferramenta.identificador);
    botao->setAccessibleName(entrada.acao->iconText());
    botao->setFocusPolicy(Qt::TabFocus);
}

void Ferramentas::incluiNoMenu(const QString& nomeDoMenu, const QString& identificador) {
    QMenu* destino = menu(nomeDoMenu);
    const Entrada& nova = entrada(identificador);
    if (nova.tipo == Tipo::Separador) {
        destino->addSeparator()->setObjectName(identificador);
    } else {
        destino->addAction(nova.acao);
    }
}

void Ferramentas::separaNaBarra() {
    barra_->addSeparator();
}

void Ferramentas::separaNoMenu(const QString& nomeDoMenu) {
    menu(nomeDoMenu)->addSeparator();
}

void Ferramentas::removeDoMenu(const QString& nomeDoMenu, const QString& identificador) {
    QMenu* lugar = menu(nomeDoMenu);
    const auto acoes = lugar->actions();
    for (QAction* acao : acoes) {
        if (acao->objectName() == identificador) {
            retira(*lugar, acao);
            return;
        }
    }
    naoDefinida(identificador);
}

QStringList Ferramentas::noMenu(const QString& nomeDoMenu) const {
    QStringList conteudo;
    const auto acoes = menu(nomeDoMenu)->actions();
    for (const QAction* acao : acoes) {
        conteudo << acao->objectName();
    }
    return conteudo;
}

QAction* Ferramentas::acao(const QString& identificador) const {
    return entrada(identificador).acao;
}

QMenu* Ferramentas::menu(const QString& identificador) const {
    QMenu* achado = entrada(identificador).menu;
    if (achado == nullptr) {
        naoDefinida(identificador);
    }
    return achado;
}

QString semMnemonico(QString texto) {
    return texto.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace tv
