#include "app/windows/frmSplash.h"

#include "app/windows/biblioteca.h"
#include "app/windows/frmObjetos.h"
#include "app/windows/mdiMain.h"
#include "app/windows/recuperacao.h"
#include "logging/Routine.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QLabel>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

#include <cstdlib>

namespace tv {

namespace {

constexpr int intervalo = 1500; // milliseconds
constexpr int alturaDoLogotipo = 96;
constexpr int margem = 32;

QLabel* criaFigura(QWidget* quadro) {
    auto* figura = new QLabel(quadro);
    figura->setObjectName(QStringLiteral("picIcon"));
    figura->setAccessibleName(QStringLiteral("Logotipo"));
    figura->setAlignment(Qt::AlignCenter);
    proceed([&] { figura->setPixmap(frmObjetos::logotipo(alturaDoLogotipo)); });
    return figura;
}

QToolButton* criaBotaoFechar(QWidget* quadro) {
    auto* botao = new QToolButton(quadro);
    botao->setObjectName(QStringLiteral("imgCloseButton"));
    botao->setAccessibleName(QStringLiteral("Fechar"));
    botao->setToolTip(QStringLiteral("Fechar"));
    botao->setAutoRaise(true);
    botao->setCursor(Qt::ArrowCursor);
    proceed([&] { botao->setIcon(frmObjetos::imagem(QStringLiteral("imgCloseButton"))); });
    return botao;
}

} // namespace

frmSplash::frmSplash()
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint)
    , timerAbertura_(this)
    , timerStartUp_(this) {
    setObjectName(QStringLiteral("frmSplash"));
    setAccessibleName(QStringLiteral("Abertura"));
    montaControles();
    timerAbertura_.setObjectName(QStringLiteral("timerAbertura"));
    timerAbertura_.setInterval(intervalo);
    timerStartUp_.setObjectName(QStringLiteral("TimerStartUp"));
    timerStartUp_.setInterval(intervalo);
    timerStartUp_.setTimerType(Qt::PreciseTimer); // a coarse one may fire up to 75 ms early
    // Once is enough: a message of the start would let the timer fire again behind it.
    timerStartUp_.setSingleShot(true);
    connect(&timerStartUp_, &QTimer::timeout, this, &frmSplash::TimerStartUp_Timer);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    timerStartUp_.start();
}

frmSplash::~frmSplash() = default;

void frmSplash::montaControles() {
    auto* quadro = new QFrame(this);
    quadro->setObjectName(QStringLiteral("Frame1"));
    quadro->setFrameShape(QFrame::StyledPanel);
    auto* figura = criaFigura(quadro);
    auto* botao = criaBotaoFechar(quadro);
    connect(botao, &QToolButton::clicked, this, [] { biblioteca::encerraProcesso(EXIT_SUCCESS); });

    auto* dentro = new QVBoxLayout(quadro);
    dentro->setContentsMargins(4, 4, 4, margem);
    dentro->addWidget(botao, 0, Qt::AlignRight);
    auto* faixa = new QHBoxLayout;
    faixa->setContentsMargins(margem, 0, margem, 0);
    faixa->addWidget(figura);
    dentro->addLayout(faixa);
    auto* fora = new QVBoxLayout(this);
    fora->setContentsMargins(0, 0, 0, 0);
    fora->addWidget(quadro);
    adjustSize();
    const QRect tela = screen()->availableGeometry();
    move(tela.center() - rect().center());
}

void frmSplash::closeEvent(QCloseEvent* evento) {
    if (timerStartUp_.isActive()) {
        biblioteca::encerraProcesso(EXIT_SUCCESS);
    }
    evento->accept();
}

void frmSplash::TimerStartUp_Timer() {
    proceed([] { biblioteca::iniciaSistema(); });
    proceed([this] { hide(); });
    proceed([] {
        mdiMain& principal = mdiMain::instancia();
        // Off and on again, on purpose: the window comes up anew, whatever state it was in.
        principal.setVisible(false);
        principal.show();
        principal.setVisible(true);
    });
    proceed([this] { close(); });
    QApplication::restoreOverrideCursor();
    // Behind the start, with the main window on the screen.
    QTimer::singleShot(0, &mdiMain::instancia(), [] { proceed(recuperacao::oferece); });
}

} // namespace tv
