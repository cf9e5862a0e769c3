#include "app/windows/frmObjetos.h"
#include "common/windows/Grade.h"
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

constexpr int twipsPorPixel = 15;
constexpr int menosDoTitulo = 150 / twipsPorPixel;  ///< What the title frame leaves of the width.
constexpr int menosDoLogo = 400 / twipsPorPixel;    ///< From where the logo is placed.
constexpr int menosDosFundos = 100 / twipsPorPixel; ///< What title and tree leave of their panel's width.
constexpr int menosDaArvore = 150 / twipsPorPixel;  ///< What the tree leaves of its panel's height.
constexpr int larguraDosFundos = 3000 / twipsPorPixel;
constexpr int alturaTitulo = 40;
constexpr int alturaLogo = 28;
constexpr int alturaTituloFundos = 22;

template<typename Controle>
Controle* nomeia(Controle* controle, const QString& nome, const QString& nomeAcessivel) {
    controle->setObjectName(nome);
    controle->setAccessibleName(nomeAcessivel);
    return controle;
}

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
    toolbar_ = nomeia(new QToolBar(this), QStringLiteral("toolbar"), QStringLiteral("Ferramentas"));
    toolbar_->setIconSize({24, 24});
    toolbar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    connect(toolbar_, &QToolBar::actionTriggered, this,
            [this](const QAction* acao) { toolbar_ButtonClick(acao->objectName()); });
    montaTitulo();
    montaPaineis();
    montaSituacao();
    montaTeclas();
    connect(qApp, &QApplication::focusChanged, this, &frmTramador::focoMudou);
}

void frmTramador::montaTitulo() {
    frmTitulo_ = nomeia(new QFrame(this), QStringLiteral("frmTitulo"), QStringLiteral("Título"));
    frmTitulo_->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    lblTitulo_ = nomeia(new QLabel(frmTitulo_), QStringLiteral("lblTitulo"), QStringLiteral("Layout"));
    lblTitulo_->setTextFormat(Qt::PlainText);
    QFont fonte = lblTitulo_->font();
    fonte.setBold(true);
    fonte.setPointSizeF(fonte.pointSizeF() * 1.3);
    lblTitulo_->setFont(fonte);
    imgTORVA_ = nomeia(new QLabel(frmTitulo_), QStringLiteral("imgTORVA"), QStringLiteral("Logotipo"));
    proceed([this] { imgTORVA_->setPixmap(frmObjetos::logotipo(alturaLogo)); });
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
    statusBar_ = nomeia(new QStatusBar(this), QStringLiteral("statusBar"), QStringLiteral("Situação"));
    statusBar_->setSizeGripEnabled(false);
    painel1_ = nomeia(new QLabel(statusBar_), QStringLiteral("panel1"), QStringLiteral("Arquivo"));
    painel2_ = nomeia(new QLabel(statusBar_), QStringLiteral("panel2"), QStringLiteral("Situação da janela"));
    for (QLabel* painel : {painel1_, painel2_}) {
        painel->setTextFormat(Qt::PlainText);
        painel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        statusBar_->addWidget(painel, 1);
    }
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
// ---------------------------------------------------------------------------------------------

void frmTramador::buildToolbar() {
    const QList<QAction*> velhas = toolbar_->actions();
    for (QAction* velha : velhas) {
        removeAction(velha); // two actions of one key would stop each other
        toolbar_->removeAction(velha);
        velha->deleteLater();
    }
    const auto cria = [this](const char16_t* chave, const char16_t* texto, const char16_t* imagem,
                             const char16_t* dica, const QKeySequence& tecla = {}) {
        criaBotao(QString::fromUtf16(chave), QString::fromUtf16(texto), QString::fromUtf16(imagem),
                  QString::fromUtf16(dica), tecla);
    };
    cria(u"btnNovo", u"Novo", u"imgNew", u"Começa um novo boleto (Ctrl+N)", Qt::CTRL | Qt::Key_N);
    cria(u"btnAbrir", u"Abrir", u"imgBoleto", u"Abre um boleto (Ctrl+O)", Qt::CTRL | Qt::Key_O);
    cria(u"btnSalvar", u"Salvar", u"imgSave", u"Salva o boleto (Ctrl+S)", Qt::CTRL | Qt::Key_S);
    toolbar_->addSeparator();
    cria(u"btnImprimir", u"Imprimir", u"imgPrint", u"Imprime a grade atual (Ctrl+P)", Qt::CTRL | Qt::Key_P);
    cria(u"btnVisualizar", u"Visualizar", u"imgPreview", u"Mostra a grade atual como será impressa");
    toolbar_->addSeparator();
    cria(u"btnAdicionar", u"Adicionar", u"imgAdd", u"Adiciona um registro (Ctrl e + do teclado numérico)");
    cria(u"btnRemover", u"Remover", u"imgRemove",
         u"Remove os registros selecionados (Ctrl e - do teclado numérico)");
    toolbar_->addSeparator();
    cria(u"btnValidar", u"Validar", u"imgRun", u"Valida o boleto (F5)", Qt::Key_F5);
    toolbar_->addSeparator();
    cria(u"btnExportarExcel", u"Exportar", u"imgExcel", u"Exporta o boleto para planilhas");
    toolbar_->addSeparator();
    cria(u"btnImportarExcel", u"Importar", u"imgExcel", u"Importa uma planilha");
    cria(u"btnFechar", u"Fechar", u"imgCloseWindow", u"Fecha o boleto");
    toolbar_->addSeparator();
    botao(QStringLiteral("btnExportarExcel")).setEnabled(false);
}

void frmTramador::criaBotao(const QString& chave, const QString& texto, const QString& imagem,
                            const QString& dica, const QKeySequence& tecla) {
    QAction* acao = toolbar_->addAction(texto);
    acao->setObjectName(chave);
    acao->setToolTip(dica);
    acao->setShortcut(tecla);
    acao->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    proceed([&] { acao->setIcon(frmObjetos::imagem(imagem)); });
    addAction(acao); // its key works in the whole window
    if (auto* botao = toolbar_->widgetForAction(acao)) {
        botao->setFocusPolicy(Qt::TabFocus);
    }
}

QAction& frmTramador::botao(const QString& chave) const {
    const QList<QAction*> botoes = toolbar_->actions();
    const auto achado = std::find_if(botoes.begin(), botoes.end(),
                                     [&](const QAction* acao) { return acao->objectName() == chave; });
    if (achado == botoes.end()) {
        throw Error(errc::invalidCall, "frmTramador", "Não há botão com a chave " + chave.toStdString());
    }
    return **achado;
}

// --- where everything stands
// ----------------------------------------------------------------------------------

void frmTramador::resizeEvent(QResizeEvent* evento) {
    Janela::resizeEvent(evento);
    posiciona();
}

void frmTramador::posiciona() {
    if (isMinimized() || (parentWidget() != nullptr && parentWidget()->isMinimized())) {
        return;
    }
    toolbar_->setGeometry(0, 0, width(), toolbar_->sizeHint().height());
    const int altura = statusBar_->sizeHint().height();
    statusBar_->setGeometry(0, height() - altura, width(), altura);
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
    painel2_->setText(texto);
    painel2_->repaint();
}

} // namespace tv
