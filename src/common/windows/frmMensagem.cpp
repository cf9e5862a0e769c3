#include "common/windows/frmMensagem.h"

#include "app/Aplicacao.h"
#include "app/windows/frmObjetos.h"
#include "app/windows/mdiMain.h"
#include "common/windows/textoQt.h"
#include "platform/Error.h"

#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QStyle>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include <string>

namespace tv {

namespace {

constexpr int ladoImagem = 48;
constexpr int larguraTexto = 420;
constexpr qint64 intervaloDesenho = 30;    // ms: often enough for the eye, and free for the operation
constexpr unsigned long esperaDaTela = 30; // ms
constexpr int valorInvalido = 380;

[[noreturn]] void recusa(int valor) {
    throw Error(valorInvalido, "ProgressBar", "Valor de propriedade inválido: " + std::to_string(valor));
}

/// One line of text of which the middle gives way where it is too long: a path keeps both its ends.
class Linha : public QLabel {
public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override { return {larguraTexto, QLabel::minimumSizeHint().height()}; }
    QSize sizeHint() const override { return minimumSizeHint(); }

protected:
    void paintEvent(QPaintEvent* /*evento*/) override {
        QPainter pintor(this);
        style()->drawItemText(
            &pintor, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
            fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width()), foregroundRole());
    }
};

Linha* novaLinha(const QString& nome, const QString& descricao, QWidget* dono) {
    auto* linha = new Linha(dono);
    linha->setObjectName(nome);
    linha->setAccessibleName(descricao);
    linha->setTextFormat(Qt::PlainText);
    return linha;
}

QString chaveDaImagem(int operacao) {
    switch (operacao) {
    case 1:
        return QStringLiteral("imgValidador");
    case 3:
        return QStringLiteral("imgDocuments");
    case 4:
        return QStringLiteral("imgPrint");
    default:
        return QStringLiteral("imgProcessando");
    }
}

QProgressBar* novaBarra(QWidget* dono) {
    auto* barra = new QProgressBar(dono);
    barra->setObjectName(QStringLiteral("ProgressBar"));
    barra->setAccessibleName(QStringLiteral("Andamento"));
    barra->setRange(0, 100);
    barra->setValue(0);
    QSizePolicy guardaLugar = barra->sizePolicy();
    guardaLugar.setRetainSizeWhenHidden(true); // the window must not change its size from stage to stage
    barra->setSizePolicy(guardaLugar);
    barra->hide();
    return barra;
}

} // namespace

frmMensagem::frmMensagem()
    : QWidget(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint) {
    setObjectName(QStringLiteral("frmMensagem"));
    setAccessibleName(QStringLiteral("Andamento da operação"));
    setAttribute(Qt::WA_ShowWithoutActivating); // the keyboard stays where the user works
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* timer1 = new QTimer(this); // stands in the window without a job
    timer1->setObjectName(QStringLiteral("Timer1"));
    monta();
}

frmMensagem::~frmMensagem() = default;

void frmMensagem::monta() {
    auto* moldura = new QFrame(this);
    moldura->setObjectName(QStringLiteral("Frame1"));
    moldura->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    auto* tudo = new QVBoxLayout(this);
    tudo->addWidget(moldura);
    tudo->setSizeConstraint(QLayout::SetFixedSize);

    picMessage_ = new QLabel(moldura);
    picMessage_->setObjectName(QStringLiteral("picMessage"));
    picMessage_->setAccessibleName(QStringLiteral("Figura da operação"));
    picMessage_->setFixedSize(ladoImagem, ladoImagem);
    lblTitulo_ = novaLinha(QStringLiteral("lblTitulo"), QStringLiteral("Operação"), moldura);
    QFont negrito = lblTitulo_->font();
    negrito.setBold(true);
    lblTitulo_->setFont(negrito);
    txtDescricao_ = novaLinha(QStringLiteral("txtDescricao"), QStringLiteral("Descrição"), moldura);
    barra_ = novaBarra(moldura);

    auto* textos = new QVBoxLayout;
    textos->addWidget(lblTitulo_);
    textos->addWidget(txtDescricao_);
    textos->addWidget(barra_);
    auto* linha = new QHBoxLayout(moldura);
    linha->setSpacing(12);
    linha->addWidget(picMessage_, 0, Qt::AlignTop);
    linha->addLayout(textos);
}

void frmMensagem::setMsg(const QString& titulo, const QString& descricao, std::int16_t valor, int operacao) {
    const bool outraEtapa = titulo != lblTitulo_->text();
    lblTitulo_->setText(titulo);
    txtDescricao_->setText(descricao);
    lblTitulo_->setToolTip(titulo);
    txtDescricao_->setToolTip(descricao);
    barra_->hide();
    setValue(valor);
    setImagem(operacao);
    if (!encerrada_ && (outraEtapa || !isVisible() || venceu())) {
        apresenta();
    }
}

void frmMensagem::incProgress(std::int16_t incremento) {
    auto n = static_cast<std::int16_t>(barra_->value() + incremento);
    if (n > barra_->maximum()) {
        n = static_cast<std::int16_t>(n - barra_->maximum());
    }
    setValue(n < barra_->minimum() ? barra_->minimum() : n);
    barra_->show();
    if (venceu()) {
        desenha();
    }
}

void frmMensagem::setMax(int maximo) {
    if (maximo <= barra_->minimum()) {
        recusa(maximo);
    }
    const int valor = qMin(barra_->value(), maximo);
    barra_->setMaximum(maximo);
    setValue(valor);
}

int frmMensagem::Max() const {
    return barra_->maximum();
}

int frmMensagem::Value() const {
    return barra_->value();
}

void frmMensagem::destroy() {
    encerrada_ = true;
    hide();
}

/// What nobody sees has nothing to tell.
void frmMensagem::abandona(std::unique_ptr<frmMensagem> janela) {
    if (!janela || !janela->isVisible() || !mdiMain::existe()) {
        return;
    }
    frmMensagem* const aberta = janela.release(); // its own from here on
    aberta->encerrada_ = true;
    aberta->setAttribute(Qt::WA_DeleteOnClose);
    connect(&mdiMain::instancia(), &QObject::destroyed, aberta, [aberta] { delete aberta; });
    aberta->setWindowFlag(Qt::WindowSystemMenuHint);
    aberta->setWindowFlag(Qt::WindowCloseButtonHint);
    aberta->show(); // a change of the frame hides it
}

/// The window goes with its operation, not with a key of the window manager.
void frmMensagem::closeEvent(QCloseEvent* evento) {
    evento->setAccepted(encerrada_);
}

void frmMensagem::setValue(int valor) {
    if (valor < barra_->minimum() || valor > barra_->maximum()) {
        recusa(valor);
    }
    // Qt's bar draws itself at each visible step, which costs the operation more than its own work.
    barra_->setUpdatesEnabled(false);
    barra_->setValue(valor);
    barra_->setUpdatesEnabled(true);
}

void frmMensagem::setImagem(int operacao) {
    if (operacao != operacao_) {
        picMessage_->setPixmap(frmObjetos::imagem(chaveDaImagem(operacao)).pixmap(ladoImagem, ladoImagem));
        operacao_ = operacao;
    }
}

void frmMensagem::apresenta() {
    if (!isVisible()) {
        setWindowTitle(paraQt(aplicacao::titulo()));
        adjustSize();
        create();
        if (mdiMain::existe()) {
            const mdiMain& dona = mdiMain::instancia();
            windowHandle()->setTransientParent(dona.windowHandle());
            move(dona.frameGeometry().center() - rect().center());
        }
        show();
        esperaTela();
    }
    raise();
    desenha();
}

/// The window system puts a window on the screen by and by and tells so by an event, which does not come in
/// the middle of an operation. So the window is drawn without that word, after the time that it takes.
void frmMensagem::esperaTela() {
    setAttribute(Qt::WA_Mapped);
    if (!windowHandle()->isExposed()) {
        repaint();
        QThread::msleep(esperaDaTela);
    }
}

void frmMensagem::desenha() {
    repaint();
    desenhado_.start();
}

bool frmMensagem::venceu() const {
    return !desenhado_.isValid() || desenhado_.elapsed() >= intervaloDesenho;
}

} // namespace tv
