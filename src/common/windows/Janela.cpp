#include "common/windows/Janela.h"

#include "app/windows/mdiMain.h"
#include "logging/Routine.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace tv {

namespace {

QMdiSubWindow* quadro(const Janela& janela) {
    return qobject_cast<QMdiSubWindow*>(janela.parentWidget());
}

/// The frame of a window that was closed by itself would stay behind, empty.
void fechaQuadro(const Janela& janela) {
    if (auto* moldura = quadro(janela)) {
        QMetaObject::invokeMethod(moldura, "close", Qt::QueuedConnection);
    }
}

} // namespace

Janela::Janela(const QString& nome) {
    setObjectName(nome);
    setAccessibleName(nome);
}

void Janela::ZOrder() {
    if (auto* moldura = quadro(*this)) {
        moldura->mdiArea()->setActiveSubWindow(moldura);
        moldura->raise();
    }
}

void Janela::Refresh() {
    update();
}

void Janela::mostra() {
    show();
    if (auto* moldura = quadro(*this)) {
        moldura->setWindowIcon(windowIcon());
        moldura->show();
    }
    ZOrder();
}

void Janela::closeWindow() {
    QWidget* fecha = quadro(*this);
    (fecha != nullptr ? fecha : this)->close();
}

void Janela::closeEvent(QCloseEvent* evento) {
    if (!descarregada_) {
        if (!podeFechar()) {
            evento->ignore();
            return;
        }
        descarregada_ = true;
        proceed([this] { aoDescarregar(); });
        if (mdiMain::existe()) {
            proceed([this] { mdiMain::instancia().removeJanela(*this); });
        }
        fechaQuadro(*this);
    }
    evento->accept();
}

void hospeda(std::unique_ptr<Janela> janela) {
    mdiMain::instancia().recebe(std::move(janela));
}

} // namespace tv
