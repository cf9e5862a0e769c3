#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"
#include "common/windows/pecasJanela.h"
#include "editor/windows/BarraSubstituir.h"
#include "editor/windows/CaixaXML.h"
#include "editor/windows/PicLines.h"
#include "editor/windows/frmEditor.h"
#include "logging/Routine.h"

#include <QAction>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>

/// The looks of the window: its controls, its tool bar, its keys and where everything stands.
namespace tv {

namespace {

using pecas::emPixels;
using pecas::nomeia;

constexpr int margemEsquerda = emPixels(150);
constexpr int menosNoTitulo = emPixels(400); ///< What the title frame leaves of the window's width.
constexpr int alturaTitulo = 52;
constexpr int alturaLogo = 36;
constexpr int larguraLinhas = 48; ///< Of the strip beside the text.

} // namespace

void frmEditor::montaTela() {
    toolbar_ = pecas::criaToolbar(*this);
    connect(toolbar_, &QToolBar::actionTriggered, this,
            [this](const QAction* acao) { toolbar_ButtonClick(acao->objectName()); });
    montaTitulo();
    montaCorpo();
    statusBar_ = pecas::criaStatusBar(*this);
    painel_ = pecas::criaPainel(*statusBar_, QStringLiteral("panel1"), QStringLiteral("Situação da janela"));
    criaAtalhos();
}

void frmEditor::montaTitulo() {
    const pecas::Titulo partes = pecas::criaTitulo(*this, QStringLiteral("Editor de XML"), alturaLogo, 1);
    frmTitulo_ = partes.frmTitulo;
    lblTitulo_ = partes.lblTitulo;
    lblBoleto_ = pecas::criaRotulo(*frmTitulo_, QStringLiteral("lblBoleto"), QStringLiteral("Boleto"),
                                   QStringLiteral("Boleto"));
    auto* textos = new QVBoxLayout;
    textos->setSpacing(0);
    textos->addWidget(lblTitulo_);
    textos->addWidget(lblBoleto_);
    auto* titulo = new QHBoxLayout(frmTitulo_);
    titulo->setContentsMargins(8, 2, 8, 2);
    titulo->addLayout(textos, 1);
    titulo->addWidget(partes.imgTORVA);
}

void frmEditor::montaCorpo() {
    splitter_ = nomeia(new QSplitter(Qt::Vertical, this), QStringLiteral("splitter"),
                       QStringLiteral("Divisória entre texto e achados"));
    splitter_->setChildrenCollapsible(false);
    auto* painelTexto = new QWidget(splitter_);
    picLines_ = new PicLines(painelTexto);
    picLines_->setAccessibleName(QStringLiteral("Faixa ao lado do texto"));
    picLines_->setFixedWidth(larguraLinhas);
    txtXML_ = new CaixaXML(painelTexto);
    barra_ = new BarraSubstituir(*txtXML_, painelTexto);
    auto* linhaTexto = new QHBoxLayout;
    linhaTexto->setSpacing(0);
    linhaTexto->addWidget(picLines_);
    linhaTexto->addWidget(txtXML_, 1);
    auto* coluna = new QVBoxLayout(painelTexto);
    coluna->setContentsMargins(0, 0, 0, 0);
    coluna->setSpacing(2);
    coluna->addLayout(linhaTexto, 1);
    coluna->addWidget(barra_);
    painelGrade_ = new PainelGrade(QStringLiteral("grid"), splitter_);
    grade().setAccessibleName(QStringLiteral("Achados da validação"));
    grade().setTeclaRemove(false);                        // findings are told, not kept
    grade().horizontalHeader()->setMinimumSectionSize(1); // a share of a narrow grid is narrow
    splitter_->setStretchFactor(0, 2);
    splitter_->setStretchFactor(1, 1);
    splitter_->setSizes({300, 150});
    connect(&grade(), &Grade::layoutIniciado, this, &frmEditor::grid_InitializeLayout);
    connect(&grade(), &Grade::linhaAtivada, this, &frmEditor::achadoAtivado);
    connect(&grade(), &Grade::pressed, this, &frmEditor::achadoTocado);
    connect(txtXML_, &CaixaXML::mudou, this, &frmEditor::registra);
    connect(txtXML_, &QPlainTextEdit::textChanged, this, [this] { salvo_ = false; });
    connect(txtXML_, &QPlainTextEdit::cursorPositionChanged, this, &frmEditor::GetEditStatus);
    connect(txtXML_, &CaixaXML::focada, this, &frmEditor::tiraParadas);
    connect(txtXML_, &CaixaXML::pedeDesfazer, this, &frmEditor::desfaz);
    connect(txtXML_, &CaixaXML::pedeRefazer, this, &frmEditor::refaz);
    connect(txtXML_, &CaixaXML::menuPedido, this, &frmEditor::preparaMenu);
}

// --- tools and keys

void frmEditor::buildToolbar() {
    toolbar_->clear();
    const auto cria = [this](const pecas::Botao& botao) { pecas::criaBotao(*this, *toolbar_, botao); };
    cria({u"btnSalvar", u"Salvar", u"imgSave", u"Salva o arquivo (Ctrl+S)", {Qt::CTRL | Qt::Key_S}});
    toolbar_->addSeparator();
    cria({u"btnImprimir", u"Imprimir", u"imgPrint", u"Imprime o texto (Ctrl+P)", {Qt::CTRL | Qt::Key_P}});
    toolbar_->addSeparator();
    cria({u"btnValidar", u"Validar", u"imgRun", u"Valida o arquivo (F5)", {Qt::Key_F5}});
    toolbar_->addSeparator();
    cria({u"btnFechar", u"Fechar", u"imgCloseWindow", u"Fecha a janela (Ctrl+F4)", {}});
}

void frmEditor::criaAtalhos() {
    const auto cria = [this](const char16_t* nome, const char16_t* texto, const QKeySequence& tecla,
                             auto acaoDoUsuario) {
        auto* acao = new QAction(QString::fromUtf16(texto), this);
        acao->setObjectName(QString::fromUtf16(nome));
        acao->setShortcut(tecla);
        acao->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(acao, &QAction::triggered, this, acaoDoUsuario);
        addAction(acao);
    };
    cria(u"acaoLocalizar", u"&Localizar...", Qt::CTRL | Qt::Key_F, [this] { barra_->abre(false); });
    cria(u"acaoSubstituir", u"S&ubstituir...", Qt::CTRL | Qt::Key_H, [this] { barra_->abre(true); });
    cria(u"acaoLocalizarProximo", u"Localizar &próximo", Qt::Key_F3, [this] { barra_->localiza(false); });
    cria(u"acaoLocalizarAnterior", u"Localizar an&terior", Qt::SHIFT | Qt::Key_F3,
         [this] { barra_->localiza(true); });
    cria(u"acaoIrPara", u"&Ir para a linha...", Qt::CTRL | Qt::Key_G, [this] { irParaLinha(); });
    cria(u"acaoProximoAchado", u"Próximo ac&hado", Qt::Key_F4,
         [this] { toolbar_ButtonClick(QStringLiteral("btnProximo")); });
    cria(u"acaoAchadoAnterior", u"Achado ant&erior", Qt::SHIFT | Qt::Key_F4,
         [this] { toolbar_ButtonClick(QStringLiteral("btnAnterior")); });
    cria(u"acaoAlternarFoco", u"Alternar entre texto e achados", Qt::Key_F6, [this] { alternaFoco(); });
}

void frmEditor::preparaMenu(QMenu& menu) {
    const bool temSelecao = txtXML_->textCursor().hasSelection();
    const auto cria = [&menu](const char16_t* nome, const char16_t* texto, bool ligada, auto acaoDoUsuario) {
        QAction* acao = menu.addAction(QString::fromUtf16(texto), std::move(acaoDoUsuario));
        acao->setObjectName(QString::fromUtf16(nome));
        acao->setEnabled(ligada);
    };
    cria(u"menuDesfazer", u"&Desfazer\tCtrl+Z", undoStack().size() >= 2, [this] { desfaz(); });
    cria(u"menuRefazer", u"&Refazer\tCtrl+Y", !redoStack().empty(), [this] { refaz(); });
    menu.addSeparator();
    cria(u"menuRecortar", u"Re&cortar\tCtrl+X", temSelecao, [this] { txtXML_->cut(); });
    cria(u"menuCopiar", u"C&opiar\tCtrl+C", temSelecao, [this] { txtXML_->copy(); });
    cria(u"menuColar", u"Co&lar\tCtrl+V", txtXML_->canPaste(), [this] { txtXML_->paste(); });
    cria(u"menuExcluir", u"E&xcluir\tDel", temSelecao, [this] { txtXML_->setSelText(u""); });
    menu.addSeparator();
    cria(u"menuSelecionarTudo", u"&Selecionar tudo\tCtrl+A", true, [this] { txtXML_->selectAll(); });
    menu.addSeparator();
    for (const char16_t* nome : {u"acaoLocalizar", u"acaoSubstituir", u"acaoIrPara"}) {
        menu.addAction(findChild<QAction*>(QString::fromUtf16(nome)));
    }
}

/// The Tab key goes into the text once the text has had the focus.
void frmEditor::tiraParadas() {
    for (QWidget* controle : findChildren<QWidget*>()) {
        const bool porClique = (controle->focusPolicy() & Qt::ClickFocus) == Qt::ClickFocus;
        controle->setFocusPolicy(porClique ? Qt::ClickFocus : Qt::NoFocus);
    }
}

void frmEditor::alternaFoco() {
    QWidget* destino = txtXML_;
    if (txtXML_->hasFocus()) {
        destino = &grade();
    }
    destino->setFocus(Qt::ShortcutFocusReason);
}

// --- where everything stands

void frmEditor::resizeEvent(QResizeEvent* evento) {
    Janela::resizeEvent(evento);
    posiciona();
}

void frmEditor::posiciona() {
    pecas::posiciona(*this, *toolbar_, *statusBar_);
    const int topoTitulo = toolbar_->geometry().bottom() + 1;
    const int largura = std::max(width() - menosNoTitulo, 0);
    frmTitulo_->setGeometry(margemEsquerda, topoTitulo, largura, alturaTitulo);
    const int topo = topoTitulo + alturaTitulo + margemEsquerda / 2;
    splitter_->setGeometry(margemEsquerda, topo, std::max(width() - 2 * margemEsquerda, 0),
                           std::max(statusBar_->y() - topo, 0));
    setLarguras();
}

QSize frmEditor::sizeHint() const {
    return {920, 640};
}

QSize frmEditor::minimumSizeHint() const {
    return {480, 360};
}

void frmEditor::status(const QString& texto) {
    pecas::escreve(*painel_, texto);
}

} // namespace tv
