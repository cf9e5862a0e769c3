#include "app/windows/frmObjetos.h"
#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"
#include "validation/windows/SituacaoDelegate.h"
#include "validation/windows/frmValidador.h"

#include <QAction>
#include <QFrame>
#include <QHeaderView>
#include <QLabel>
#include <QShortcut>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <array>

/// The looks of the window: its controls, its tool bar, its grid's columns and where everything stands.
namespace tv {

namespace {

constexpr int twipsPorPixel = 15;
constexpr int larguraFixa = 1500 / twipsPorPixel;  ///< Of every column but the file's.
constexpr int menosAoCriar = 5000 / twipsPorPixel; ///< What the file's column leaves of the grid's width.
constexpr int menosAoMudar = 5070 / twipsPorPixel; ///< The same after a change of size.
constexpr int margem = 150 / twipsPorPixel / 2;    ///< Beside the title frame and the grid.
constexpr int alturaTitulo = 40;
constexpr int alturaLogo = 28;

struct Coluna {
    std::string_view nome;
    const char16_t* titulo; ///< Null for a hidden column.
    std::string_view formato;
    bool monoespaco;
};

constexpr std::array<Coluna, 9> colunas{{
    {lote::coluna::status, u"Status", "", false},
    {lote::coluna::boleto, u"Boleto", "", true},
    {lote::coluna::arquivo, nullptr, "", false},
    {lote::coluna::tamanho, u"Tamanho", R"(###,##0.00\ \K\B)", true},
    {lote::coluna::tempo, u"Tempo", "", true},
    {lote::coluna::isValid, nullptr, "", false},
    {lote::coluna::validou, nullptr, "", false},
    {lote::coluna::isNew, nullptr, "", false},
    {lote::coluna::isModified, nullptr, "", false},
}};

ColunaGrade aparencia(const Coluna& coluna) {
    ColunaGrade nova;
    nova.oculta = coluna.titulo == nullptr;
    nova.titulo = nova.oculta ? QString() : QString::fromUtf16(coluna.titulo);
    nova.formato = coluna.formato;
    nova.largura = larguraFixa;
    if (coluna.monoespaco) {
        nova.fonte = QFont(QStringLiteral("Courier New"), 10);
    }
    if (coluna.nome == lote::coluna::tamanho) {
        nova.alinhamento = Qt::AlignRight;
    }
    return nova;
}

template<typename Controle>
Controle* nomeia(Controle* controle, const QString& nome, const QString& nomeAcessivel) {
    controle->setObjectName(nome);
    controle->setAccessibleName(nomeAcessivel);
    return controle;
}

} // namespace

void frmValidador::montaTela() {
    setAcceptDrops(true);
    toolbar_ = nomeia(new QToolBar(this), QStringLiteral("toolbar"), QStringLiteral("Ferramentas"));
    toolbar_->setIconSize({24, 24});
    toolbar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    connect(toolbar_, &QToolBar::actionTriggered, this,
            [this](const QAction* acao) { toolbar_ButtonClick(acao->objectName()); });
    montaTitulo();
    painelGrade_ = new PainelGrade(QStringLiteral("grid"), this);
    ligaGrade();
    statusBar_ = nomeia(new QStatusBar(this), QStringLiteral("statusBar"), QStringLiteral("Situação"));
    statusBar_->setSizeGripEnabled(false);
    painel_ = nomeia(new QLabel(statusBar_), QStringLiteral("panel1"), QStringLiteral("Situação da janela"));
    painel_->setTextFormat(Qt::PlainText);
    statusBar_->addWidget(painel_, 1);
}

void frmValidador::montaTitulo() {
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

void frmValidador::ligaGrade() {
    grade().setAccessibleName(QStringLiteral("Arquivos"));
    grade().setTeclaRemove(false); // the tool bar has the key
    grade().antesDeRemover = [this](const std::vector<int>&) { return !executando_; };
    grade().setItemDelegateForColumn(0, new SituacaoDelegate(grade()));
    connect(&grade(), &Grade::layoutIniciado, this, &frmValidador::grid_InitializeLayout);
    connect(&grade(), &Grade::doubleClicked, this, &frmValidador::ativaResultado);
    for (const auto tecla : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* atalho = new QShortcut(tecla, &grade());
        atalho->setContext(Qt::WidgetShortcut);
        connect(atalho, &QShortcut::activated, this, &frmValidador::ativaResultado);
    }
}

// --- the tool bar
// ---------------------------------------------------------------------------------------------

void frmValidador::buildToolbar() {
    toolbar_->clear();
    const auto cria = [this](const char16_t* chave, const char16_t* texto, const char16_t* imagem,
                             const char16_t* dica, const QList<QKeySequence>& teclas) {
        QAction* acao = criaBotao(QString::fromUtf16(chave), QString::fromUtf16(texto),
                                  QString::fromUtf16(imagem), QString::fromUtf16(dica));
        acao->setShortcuts(teclas);
        return acao;
    };
    cria(u"btnAdicionar", u"Adicionar", u"imgAdd", u"Adiciona arquivos à lista (Ins)",
         {Qt::Key_Insert, Qt::CTRL | Qt::Key_O});
    cria(u"btnRemover", u"Remover", u"imgRemove", u"Remove da lista os arquivos selecionados (Del)",
         {Qt::Key_Delete});
    toolbar_->addSeparator();
    cria(u"btnEditar", u"Editar", u"imgEdit", u"Abre no editor o arquivo com falhas (F2)", {Qt::Key_F2});
    toolbar_->addSeparator();
    validar_ = cria(u"btnValidar", u"", u"imgRun", u"", {});
    viraValidar();
    toolbar_->addSeparator();
    cria(u"btnResultado", u"Resultado", u"imgResult", u"Mostra o resultado do arquivo (Enter)",
         {Qt::CTRL | Qt::Key_R});
    toolbar_->addSeparator();
    cria(u"btnFechar", u"Fechar", u"imgCloseWindow", u"Fecha a janela (Ctrl+F4)", {});
}

QAction* frmValidador::criaBotao(const QString& chave, const QString& texto, const QString& imagem,
                                 const QString& dica) {
    QAction* acao = toolbar_->addAction(texto);
    acao->setObjectName(chave);
    acao->setToolTip(dica);
    acao->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    proceed([&] { acao->setIcon(frmObjetos::imagem(imagem)); });
    addAction(acao); // its keys work in the whole window
    if (auto* botao = toolbar_->widgetForAction(acao)) {
        botao->setFocusPolicy(Qt::TabFocus);
    }
    return acao;
}

void frmValidador::viraParar() {
    validar_->setObjectName(QStringLiteral("btnParar"));
    validar_->setText(QStringLiteral("Parar"));
    validar_->setIcon(frmObjetos::imagem(QStringLiteral("imgStop")));
    validar_->setToolTip(QStringLiteral("Para a validação depois do arquivo em curso (Esc)"));
    validar_->setShortcut(Qt::Key_Escape);
    validar_->setEnabled(true);
}

void frmValidador::viraValidar() {
    validar_->setEnabled(false);
    validar_->setObjectName(QStringLiteral("btnValidar"));
    validar_->setText(QStringLiteral("Validar"));
    proceed([this] { validar_->setIcon(frmObjetos::imagem(QStringLiteral("imgRun"))); });
    validar_->setToolTip(QStringLiteral("Valida todos os arquivos da lista (F5)"));
    validar_->setShortcut(Qt::Key_F5);
    validar_->setEnabled(true);
}

QAction& frmValidador::botao(const QString& chave) const {
    const QList<QAction*> botoes = toolbar_->actions();
    const auto achado = std::find_if(botoes.begin(), botoes.end(),
                                     [&](const QAction* acao) { return acao->objectName() == chave; });
    if (achado == botoes.end()) {
        throw Error(errc::invalidCall, "frmValidador", "Não há botão com a chave " + paraUtf8(chave));
    }
    return **achado;
}

void frmValidador::enableToolbar(bool flag) {
    for (const char16_t* chave : {u"btnAdicionar", u"btnRemover", u"btnEditar", u"btnValidar",
                                  u"btnResultado", u"btnPlanilha", u"btnFechar"}) {
        proceed([&] { botao(QString::fromUtf16(chave)).setEnabled(flag); });
    }
}

// --- the grid
// -------------------------------------------------------------------------------------------------

void frmValidador::createGrid() {
    modelo().setDados(lote::criaRegistros());
    for (const Coluna& coluna : colunas) {
        modelo().setColuna(coluna.nome, aparencia(coluna));
    }
    setLarguras(std::max(grade().width() - menosAoCriar, menosAoCriar));
}

void frmValidador::grid_InitializeLayout() {
    controleLib::gridInitializeLayout(grade());
    grade().setCaption({});
}

void frmValidador::setLarguras(int boleto) {
    for (const Coluna& coluna : colunas) {
        const int posicao = modelo().indice(coluna.nome);
        ColunaGrade nova = modelo().coluna(posicao);
        nova.largura = coluna.nome == lote::coluna::boleto ? boleto : larguraFixa;
        modelo().setColuna(coluna.nome, std::move(nova));
    }
    grade().aplicaColunas();
}

void frmValidador::desmarca() {
    grade().clearSelection(); // no cell is ever being edited here
}

void frmValidador::mostraUltima() {
    grade().scrollToBottom();
}

// --- where everything stands
// ----------------------------------------------------------------------------------

void frmValidador::resizeEvent(QResizeEvent* evento) {
    Janela::resizeEvent(evento);
    posiciona();
}

void frmValidador::posiciona() {
    toolbar_->setGeometry(0, 0, width(), toolbar_->sizeHint().height());
    const int altura = statusBar_->sizeHint().height();
    statusBar_->setGeometry(0, height() - altura, width(), altura);
    const int largura = std::max(width() - 2 * margem, 0);
    frmTitulo_->setGeometry(margem, toolbar_->geometry().bottom() + 1, largura, alturaTitulo);
    const QSize logo = imgTORVA_->sizeHint();
    imgTORVA_->setGeometry(largura - logo.width() - margem, (alturaTitulo - logo.height()) / 2, logo.width(),
                           logo.height());
    lblTitulo_->setGeometry(margem, 0, std::max(imgTORVA_->x() - 2 * margem, 0), alturaTitulo);
    const int topo = frmTitulo_->geometry().bottom() + 1 + margem;
    painelGrade_->setGeometry(margem, topo, largura, std::max(statusBar_->y() - topo, 0));
    if (modelo().dados()) {
        setLarguras(std::max(painelGrade_->width() - menosAoMudar, larguraFixa));
    }
}

QSize frmValidador::sizeHint() const {
    return {900, 520};
}

QSize frmValidador::minimumSizeHint() const {
    return {520, 260};
}

// --- small ones
// -----------------------------------------------------------------------------------------------

void frmValidador::status(const QString& texto) {
    painel_->setText(texto);
    painel_->repaint();
}

void frmValidador::mostraContagem() {
    status(paraQt(lote::contagem(static_cast<std::size_t>(modelo().rowCount()))));
}

Grade& frmValidador::grade() const {
    return painelGrade_->grade();
}

ModeloGrade& frmValidador::modelo() const {
    return painelGrade_->grade().modelo();
}

} // namespace tv
