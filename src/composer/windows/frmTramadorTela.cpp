#include "common/windows/Grade.h"
#include "common/windows/pecasJanela.h"
#include "composer/windows/EdicaoGrade.h"
#include "composer/windows/VistaFundos.h"
#include "composer/windows/frmTramador.h"
#include "logging/Routine.h"

#include <QAction>
#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QResizeEvent>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>

#include <algorithm>
#include <functional>
#include <utility>

/// The looks of the window: its controls, its tool bar and where everything stands.
namespace tv {

namespace {

using pecas::emPixels;
using pecas::nomeia;

constexpr int menosDoTitulo = emPixels(150);  ///< What the title frame leaves of the width.
constexpr int menosDoLogo = emPixels(400);    ///< From where the logo is placed.
constexpr int menosDosFundos = emPixels(100); ///< What title and tree leave of their panel's width.
constexpr int menosDaArvore = emPixels(150);  ///< What the tree leaves of its panel's height.
constexpr int larguraDosFundos = emPixels(3000);
constexpr int alturaTitulo = 40;
constexpr int alturaLogo = 28;
constexpr int alturaTituloFundos = 22;

/// Tells when a panel has changed its size.
class AoMudarTamanho : public QObject {
public:
    AoMudarTamanho(QObject* dono, std::function<void()> faz)
        : QObject(dono)
        , faz_(std::move(faz)) {}
    bool eventFilter(QObject* alvo, QEvent* evento) override {
        if (evento->type() == QEvent::Resize) {
            proceed(faz_);
        }
        return QObject::eventFilter(alvo, evento);
    }

private:
    std::function<void()> faz_;
};

} // namespace

void frmTramador::montaTela() {
    toolbar_ = pecas::criaToolbar(*this);
    connect(toolbar_, &QToolBar::actionTriggered, this,
            [this](const QAction* acao) { toolbar_ButtonClick(acao->objectName()); });
    montaTitulo();
    montaPaineis();
    montaSituacao();
    montaTeclas();
    connect(qApp, &QApplication::focusChanged, this, &frmTramador::focoMudou);
}

void frmTramador::montaTitulo() {
    const pecas::Titulo titulo = pecas::criaTitulo(*this, {}, alturaLogo, 1.3);
    frmTitulo_ = titulo.frmTitulo;
    lblTitulo_ = titulo.lblTitulo;
    imgTORVA_ = titulo.imgTORVA;
}

void frmTramador::montaPaineis() {
    splitter_ = nomeia(new QSplitter(this), QStringLiteral("splitter"), QStringLiteral("Fundos e registros"));
    splitter_->setChildrenCollapsible(false);
    panelFundos_ = nomeia(new QWidget(splitter_), QStringLiteral("panelFundos"), QStringLiteral("Fundos"));
    panelTituloFundos_ = nomeia(new QLabel(QStringLiteral("Fundos"), panelFundos_),
                                QStringLiteral("panelTituloFundos"), QStringLiteral("Título dos fundos"));
    panelTituloFundos_->setAlignment(Qt::AlignCenter);
    panelTituloFundos_->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    treeFundos_ = nomeia(new VistaFundos(panelFundos_), QStringLiteral("treeFundos"),
                         QStringLiteral("Fundos e suas seções"));
    panelGrid_ = nomeia(new QWidget(splitter_), QStringLiteral("panelGrid"), QStringLiteral("Registros"));
    splitter_->addWidget(panelFundos_);
    splitter_->addWidget(panelGrid_);
    splitter_->setStretchFactor(1, 1);
    treeFundos_->acompanha(documento_.arvore);
    connect(treeFundos_, &VistaFundos::noEscolhido, this, &frmTramador::treeFundos_Click);
    connect(splitter_, &QSplitter::splitterMoved, this, [this] { proceed([this] { posiciona(); }); });
    auto* aoMudar = new AoMudarTamanho(this, [this] { posicionaPaineis(); });
    panelFundos_->installEventFilter(aoMudar);
    panelGrid_->installEventFilter(aoMudar);
}

void frmTramador::montaSituacao() {
    statusBar_ = pecas::criaStatusBar(*this);
    painel1_ = pecas::criaPainel(*statusBar_, QStringLiteral("panel1"), QStringLiteral("Arquivo"));
    painel2_ = pecas::criaPainel(*statusBar_, QStringLiteral("panel2"), QStringLiteral("Situação da janela"));
}

void frmTramador::montaTeclas() {
    const auto atalho = [this](const QKeySequence& teclas, void (frmTramador::*faz)()) {
        auto* novo = new QShortcut(teclas, this);
        novo->setContext(Qt::WidgetWithChildrenShortcut);
        connect(novo, &QShortcut::activated, this, faz);
    };
    atalho(QKeySequence(Qt::CTRL | Qt::Key_Z), &frmTramador::desfaz);
    atalho(QKeySequence(Qt::CTRL | Qt::Key_Y), &frmTramador::refaz);
    atalho(QKeySequence(Qt::Key_F6), &frmTramador::trocaPainel);
}

/// The tool bar, the tree and the grid are reached by Tab only from outside of the grid, where it leads from
/// cell to cell: this key leads from the one to the other.
void frmTramador::trocaPainel() {
    proceed([this] {
        const bool naArvore = treeFundos_->hasFocus();
        if (naArvore || !documento_.arvoreVisivel()) {
            gradeAtual().setFocus();
        } else {
            treeFundos_->setFocus();
        }
    });
}

// --- the tool bar

void frmTramador::buildToolbar() {
    const QList<QAction*> velhas = toolbar_->actions();
    for (QAction* velha : velhas) {
        removeAction(velha); // two actions of one key would stop each other
        toolbar_->removeAction(velha);
        velha->deleteLater();
    }
    const auto cria = [this](const pecas::Botao& botao) { pecas::criaBotao(*this, *toolbar_, botao); };
    cria({u"btnNovo", u"Novo", u"imgNew", u"Começa um novo boleto (Ctrl+N)", {Qt::CTRL | Qt::Key_N}});
    cria({u"btnAbrir", u"Abrir", u"imgBoleto", u"Abre um boleto (Ctrl+O)", {Qt::CTRL | Qt::Key_O}});
    cria({u"btnSalvar", u"Salvar", u"imgSave", u"Salva o boleto (Ctrl+S)", {Qt::CTRL | Qt::Key_S}});
    toolbar_->addSeparator();
    cria({u"btnImprimir",
          u"Imprimir",
          u"imgPrint",
          u"Imprime a grade atual (Ctrl+P)",
          {Qt::CTRL | Qt::Key_P}});
    cria({u"btnVisualizar", u"Visualizar", u"imgPreview", u"Mostra a grade atual como será impressa"});
    toolbar_->addSeparator();
    cria({u"btnAdicionar", u"Adicionar", u"imgAdd", u"Adiciona um registro (Ctrl e + do teclado numérico)"});
    cria({u"btnRemover", u"Remover", u"imgRemove",
          u"Remove os registros selecionados (Ctrl e - do teclado numérico)"});
    toolbar_->addSeparator();
    cria({u"btnValidar", u"Validar", u"imgRun", u"Valida o boleto (F5)", {Qt::Key_F5}});
    toolbar_->addSeparator();
    cria({u"btnExportarExcel", u"Exportar", u"imgExcel", u"Exporta o boleto para planilhas"});
    toolbar_->addSeparator();
    cria({u"btnImportarExcel", u"Importar", u"imgExcel", u"Importa uma planilha"});
    cria({u"btnFechar", u"Fechar", u"imgCloseWindow", u"Fecha o boleto"});
    toolbar_->addSeparator();
    botao(QStringLiteral("btnExportarExcel")).setEnabled(false);
}

QAction& frmTramador::botao(const QString& chave) const {
    return pecas::botao(*toolbar_, chave);
}

// --- where everything stands

void frmTramador::resizeEvent(QResizeEvent* evento) {
    Janela::resizeEvent(evento);
    posiciona();
}

void frmTramador::posiciona() {
    if (isMinimized() || (parentWidget() != nullptr && parentWidget()->isMinimized())) {
        return;
    }
    pecas::posiciona(*this, *toolbar_, *statusBar_);
    const int largura = std::max(width() - menosDoTitulo, 0);
    frmTitulo_->setGeometry(menosDoTitulo / 2, toolbar_->geometry().bottom() + 1, largura, alturaTitulo);
    const QSize logo = imgTORVA_->sizeHint();
    imgTORVA_->setGeometry(width() - menosDoLogo - logo.width(), (alturaTitulo - logo.height()) / 2,
                           logo.width(), logo.height());
    lblTitulo_->setGeometry(menosDoTitulo / 2, 0, std::max(imgTORVA_->x() - menosDoTitulo, 0), alturaTitulo);
    const int topo = frmTitulo_->geometry().bottom() + 1 + menosDoTitulo / 2;
    splitter_->setGeometry(menosDoTitulo / 2, topo, largura, std::max(statusBar_->y() - topo, 0));
    posicionaPaineis();
}

void frmTramador::posicionaPaineis() {
    for (const auto& grade : grades_) {
        grade->painel->setGeometry(panelGrid_->rect());
    }
    const int largura = std::max(panelFundos_->width() - menosDosFundos, 0);
    panelTituloFundos_->setGeometry(0, 0, largura, alturaTituloFundos);
    const int altura = panelFundos_->height() - alturaTituloFundos - menosDaArvore;
    treeFundos_->setGeometry(0, alturaTituloFundos, largura, altura >= 0 ? altura : treeFundos_->height());
}

/// The pane of funds is there for layouts with a group only, with a width of its own.
void frmTramador::mostraPaineis(bool mostra) {
    const bool comFundos = mostra && documento_.arvoreVisivel();
    panelFundos_->setMinimumWidth(comFundos ? larguraDosFundos : 0);
    panelFundos_->setMaximumWidth(comFundos ? larguraDosFundos : 0);
    panelFundos_->setVisible(comFundos);
    panelGrid_->setVisible(mostra);
    splitter_->setVisible(mostra);
}

QSize frmTramador::sizeHint() const {
    return {1000, 600};
}

QSize frmTramador::minimumSizeHint() const {
    return {640, 320};
}

void frmTramador::status(const QString& texto) {
    pecas::escreve(*painel2_, texto);
}

} // namespace tv
