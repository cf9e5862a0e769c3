#include "validation/windows/VistaRelatorio.h"

#include "validation/windows/BarraLocalizar.h"
#include "validation/windows/SandboxWeb.h"
#include "validation/windows/VistaSimples.h"
#include "validation/windows/VistaWeb.h"

#include <QAction>
#include <QMenu>
#include <QPrinter>
#include <QVBoxLayout>

namespace tv {

std::unique_ptr<VistaRelatorio> VistaRelatorio::cria() {
    if (sandboxWeb::podeAbrir()) {
        return std::make_unique<VistaWeb>();
    }
    return std::make_unique<VistaSimples>();
}

VistaRelatorio::VistaRelatorio()
    : pilha_(new QVBoxLayout(this))
    , barra_(new BarraLocalizar(this))
    , menu_(new QMenu(this)) {
    setObjectName(QStringLiteral("vistaReport"));
    pilha_->setContentsMargins(0, 0, 0, 0);
    pilha_->setSpacing(0);
    pilha_->addWidget(barra_);
    barra_->hide();
    connect(barra_, &BarraLocalizar::procura, this, &VistaRelatorio::procura);
    connect(barra_, &BarraLocalizar::fechada, this, &VistaRelatorio::fechaLocalizar);
    menu_->setObjectName(QStringLiteral("menuReport"));
    criaAcoes();
}

VistaRelatorio::~VistaRelatorio() = default;

void VistaRelatorio::montaPagina(QWidget* brwReport) {
    brwReport_ = brwReport;
    brwReport->setObjectName(QStringLiteral("brwReport"));
    brwReport->setAccessibleName(QStringLiteral("Página do relatório"));
    pilha_->insertWidget(0, brwReport, 1);
    setFocusProxy(brwReport);
}

void VistaRelatorio::montaRodape(QWidget* rodape) {
    pilha_->addWidget(rodape);
}

void VistaRelatorio::criaAcoes() {
    copiar_ = criaAcao(QStringLiteral("copiar"), QStringLiteral("&Copiar"), {QKeySequence::Copy},
                       [this] { copia(); });
    criaAcao(QStringLiteral("selecionarTudo"), QStringLiteral("Selecionar &tudo"), {QKeySequence::SelectAll},
             [this] { selecionaTudo(); });
    menu_->addSeparator();
    criaAcao(QStringLiteral("localizar"), QStringLiteral("&Localizar..."), {QKeySequence::Find},
             [this] { localiza(); });
    criaAcao(QStringLiteral("localizarProximo"), QStringLiteral("Localizar &próximo"),
             {QKeySequence(Qt::Key_F3)}, [this] { barra_->repete(false); });
    criaAcao(QStringLiteral("localizarAnterior"), QStringLiteral("Localizar &anterior"),
             {QKeySequence(Qt::SHIFT | Qt::Key_F3)}, [this] { barra_->repete(true); });
    menu_->addSeparator();
    criaAcao(QStringLiteral("ampliar"), QStringLiteral("A&mpliar"),
             {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
             [this] { amplia(); });
    criaAcao(QStringLiteral("reduzir"), QStringLiteral("&Reduzir"), {QKeySequence(Qt::CTRL | Qt::Key_Minus)},
             [this] { reduz(); });
    criaAcao(QStringLiteral("tamanhoNormal"), QStringLiteral("Tamanho &normal"),
             {QKeySequence(Qt::CTRL | Qt::Key_0)}, [this] { setZoom(1); });
    menu_->addSeparator();
    criaAcao(QStringLiteral("imprimir"), QStringLiteral("&Imprimir..."), {QKeySequence::Print},
             [this] { Q_EMIT pedeImpressao(); });
}

QAction* VistaRelatorio::criaAcao(const QString& nome, const QString& texto,
                                  const QList<QKeySequence>& teclas, std::function<void()> faz) {
    QAction* acao = menu_->addAction(texto);
    acao->setObjectName(nome);
    acao->setShortcuts(teclas);
    acao->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(acao, &QAction::triggered, this, [faz = std::move(faz)] { faz(); });
    addAction(acao);
    return acao;
}

void VistaRelatorio::abreMenu(const QPoint& lugar) {
    copiar_->setEnabled(temSelecao());
    menu_->popup(lugar);
    connect(
        menu_, &QMenu::aboutToHide, copiar_, [this] { copiar_->setEnabled(true); }, Qt::SingleShotConnection);
}

void VistaRelatorio::deixaTerminar(std::unique_ptr<VistaRelatorio> vista, QWidget* dono) {
    vista->hide();
    vista->setParent(dono);
    VistaRelatorio* solta = vista.release(); // frees itself, or goes with its new owner
    connect(solta, &VistaRelatorio::impressaoTerminou, solta, &QObject::deleteLater);
}

void VistaRelatorio::localiza() {
    barra_->abre();
}

void VistaRelatorio::fechaLocalizar() {
    procura(QString(), false);
    brwReport_->setFocus();
}

} // namespace tv
