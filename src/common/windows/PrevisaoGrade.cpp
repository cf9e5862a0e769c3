#include "common/windows/PrevisaoGrade.h"

#include "app/windows/frmObjetos.h"
#include "common/windows/Espera.h"
#include "common/windows/Grade.h"
#include "logging/Routine.h"

#include <QAction>
#include <QLabel>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QScreen>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>

namespace tv {

namespace {

constexpr QSize tamanhoPreferido(900, 760);

QString outro(const QString& texto, const QString& seVazio) {
    return texto.isEmpty() ? seVazio : texto;
}

} // namespace

PrevisaoGrade::PrevisaoGrade(const Grade& grade, QWidget* dono)
    : QDialog(dono)
    , impressao_(grade)
    , impressora_(QPrinter::HighResolution)
    , barra_(new QToolBar(this))
    , pagina_(new QLabel(this)) {
    setObjectName(QStringLiteral("PrevisaoGrade"));
    setAccessibleName(QStringLiteral("Visualização da impressão"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    PrevisaoImpressao aparencia{outro(grade.captionVisivel(), QStringLiteral("Visualizar impressão")), {}};
    proceed([&] { aparencia.icone = frmObjetos::imagem(QStringLiteral("imgPrint")); });
    if (grade.aoVisualizar) {
        grade.aoVisualizar(aparencia);
    }
    setWindowTitle(aparencia.titulo);
    setWindowIcon(aparencia.icone);
    impressao_.prepara(impressora_);
    folhas_ = new QPrintPreviewWidget(&impressora_, this);
    folhas_->setObjectName(QStringLiteral("folhas"));
    folhas_->setAccessibleName(QStringLiteral("Páginas"));
    criaBarra(grade);
    auto* pilha = new QVBoxLayout(this);
    pilha->setContentsMargins(0, 0, 0, 0);
    pilha->setSpacing(0);
    pilha->addWidget(barra_);
    pilha->addWidget(folhas_, 1);
    connect(folhas_, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* impressora) {
        const Espera espera;
        guarded("PrevisaoGrade.desenha", [&] { impressao_.imprime(*impressora); });
    });
    connect(folhas_, &QPrintPreviewWidget::previewChanged, this, &PrevisaoGrade::mostraPagina);
    resize(tamanhoPreferido.boundedTo(screen()->availableSize() * 9 / 10));
    folhas_->fitInView();
}

PrevisaoGrade::~PrevisaoGrade() = default;

QAction* PrevisaoGrade::acao(const QString& nome, const QString& texto, const QKeySequence& tecla,
                             void (PrevisaoGrade::*faz)()) {
    QAction* nova = barra_->addAction(texto);
    nova->setObjectName(nome);
    nova->setShortcut(tecla);
    if (!tecla.isEmpty()) {
        nova->setToolTip(texto + QStringLiteral(" (") + tecla.toString(QKeySequence::NativeText) +
                         QLatin1Char(')'));
    }
    barra_->widgetForAction(nova)->setFocusPolicy(Qt::TabFocus);
    connect(nova, &QAction::triggered, this,
            [this, faz] { guarded("PrevisaoGrade.acao", [&] { (this->*faz)(); }); });
    return nova;
}

void PrevisaoGrade::criaBarra(const Grade& grade) {
    const auto texto = [&](Grade::Texto numero, const QString& seVazio) {
        return outro(grade.texto(numero), seVazio);
    };
    barra_->setObjectName(QStringLiteral("toolbar"));
    acao(QStringLiteral("btnImprimir"), texto(Grade::imprimir, QStringLiteral("Imprimir")),
         QKeySequence::Print, &PrevisaoGrade::imprime);
    acao(QStringLiteral("btnConfigurar"), texto(Grade::configurar, QStringLiteral("Configurar")), {},
         &PrevisaoGrade::configura);
    barra_->addSeparator();
    primeira_ = acao(QStringLiteral("btnPrimeira"), QStringLiteral("Primeira"), QStringLiteral("Ctrl+Home"),
                     &PrevisaoGrade::primeira);
    anterior_ = acao(QStringLiteral("btnAnterior"), QStringLiteral("Anterior"), QStringLiteral("PgUp"),
                     &PrevisaoGrade::anterior);
    pagina_->setObjectName(QStringLiteral("lblPagina"));
    pagina_->setMargin(6);
    barra_->addWidget(pagina_);
    proxima_ = acao(QStringLiteral("btnProxima"), QStringLiteral("Próxima"), QStringLiteral("PgDown"),
                    &PrevisaoGrade::proxima);
    ultima_ = acao(QStringLiteral("btnUltima"), QStringLiteral("Última"), QStringLiteral("Ctrl+End"),
                   &PrevisaoGrade::ultima);
    barra_->addSeparator();
    acao(QStringLiteral("btnAmpliar"), QStringLiteral("Ampliar"), QKeySequence::ZoomIn,
         &PrevisaoGrade::amplia);
    acao(QStringLiteral("btnReduzir"), QStringLiteral("Reduzir"), QKeySequence::ZoomOut,
         &PrevisaoGrade::reduz);
    acao(QStringLiteral("btnLargura"), QStringLiteral("Largura"), {}, &PrevisaoGrade::ajustaLargura);
    acao(QStringLiteral("btnPagina"), QStringLiteral("Página inteira"), {}, &PrevisaoGrade::ajustaPagina);
    barra_->addSeparator();
    QAction* fecha = barra_->addAction(texto(Grade::fechar, QStringLiteral("Fechar")));
    fecha->setObjectName(QStringLiteral("btnFechar"));
    barra_->widgetForAction(fecha)->setFocusPolicy(Qt::TabFocus);
    connect(fecha, &QAction::triggered, this, &QDialog::reject);
}

int PrevisaoGrade::paginas() const {
    return folhas_->pageCount();
}

int PrevisaoGrade::paginaAtual() const {
    return folhas_->currentPage();
}

void PrevisaoGrade::vaiPara(int pagina) {
    folhas_->setCurrentPage(std::clamp(pagina, 1, std::max(paginas(), 1)));
    mostraPagina();
}

void PrevisaoGrade::mostraPagina() {
    pagina_->setText(QStringLiteral("Página %1 de %2").arg(paginaAtual()).arg(paginas()));
    primeira_->setEnabled(paginaAtual() > 1);
    anterior_->setEnabled(paginaAtual() > 1);
    proxima_->setEnabled(paginaAtual() < paginas());
    ultima_->setEnabled(paginaAtual() < paginas());
}

void PrevisaoGrade::ajustaLargura() {
    folhas_->fitToWidth();
}

void PrevisaoGrade::ajustaPagina() {
    folhas_->fitInView();
}

void PrevisaoGrade::amplia() {
    folhas_->zoomIn();
}

void PrevisaoGrade::reduz() {
    folhas_->zoomOut();
}

void PrevisaoGrade::imprime() {
    QPrintDialog dialogo(&impressora_, this);
    dialogo.setWindowTitle(barra_->actions().constFirst()->text());
    dialogo.setOption(QAbstractPrintDialog::PrintPageRange);
    if (dialogo.exec() == QDialog::Accepted) {
        const Espera espera;
        impressao_.imprime(impressora_);
        accept();
    }
}

void PrevisaoGrade::configura() {
    QPageSetupDialog dialogo(&impressora_, this);
    if (dialogo.exec() == QDialog::Accepted) {
        folhas_->updatePreview();
    }
}

} // namespace tv
