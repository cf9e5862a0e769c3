#include "app/windows/frmObjetos.h"
#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"
#include "common/windows/pecasJanela.h"
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

using pecas::emPixels;

constexpr int larguraFixa = emPixels(1500);  ///< Of every column but the file's.
constexpr int menosAoCriar = emPixels(5000); ///< What the file's column leaves of the grid's width.
constexpr int menosAoMudar = emPixels(5070); ///< The same after a change of size.
constexpr int margem = emPixels(150) / 2;    ///< Beside the title frame and the grid.
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

} // namespace

void frmValidador::montaTela() {
    setAcceptDrops(true);
    toolbar_ = pecas::criaToolbar(*this);
    connect(toolbar_, &QToolBar::actionTriggered, this,
            [this](const QAction* acao) { toolbar_ButtonClick(acao->objectName()); });
    montaTitulo();
    painelGrade_ = new PainelGrade(QStringLiteral("grid"), this);
    ligaGrade();
    statusBar_ = pecas::criaStatusBar(*this);
    painel_ = pecas::criaPainel(*statusBar_, QStringLiteral("panel1"), QStringLiteral("Situação da janela"));
}

void frmValidador::montaTitulo() {
    const pecas::Titulo titulo = pecas::criaTitulo(*this, {}, alturaLogo, 1.3);
    frmTitulo_ = titulo.frmTitulo;
    lblTitulo_ = titulo.lblTitulo;
    imgTORVA_ = titulo.imgTORVA;
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

void frmValidador::buildToolbar() {
    toolbar_->clear();
    const auto cria = [this](const pecas::Botao& botao) { return pecas::criaBotao(*this, *toolbar_, botao); };
    cria({u"btnAdicionar",
          u"Adicionar",
          u"imgAdd",
          u"Adiciona arquivos à lista (Ins)",
          {Qt::Key_Insert, Qt::CTRL | Qt::Key_O}});
    cria({u"btnRemover",
          u"Remover",
          u"imgRemove",
          u"Remove da lista os arquivos selecionados (Del)",
          {Qt::Key_Delete}});
    toolbar_->addSeparator();
    cria({u"btnEditar", u"Editar", u"imgEdit", u"Abre no editor o arquivo com falhas (F2)", {Qt::Key_F2}});
    toolbar_->addSeparator();
    validar_ = cria({u"btnValidar", u"", u"imgRun", u"", {}});
    viraValidar();
    toolbar_->addSeparator();
    cria({u"btnResultado",
          u"Resultado",
          u"imgResult",
          u"Mostra o resultado do arquivo (Enter)",
          {Qt::CTRL | Qt::Key_R}});
    toolbar_->addSeparator();
    cria({u"btnFechar", u"Fechar", u"imgCloseWindow", u"Fecha a janela (Ctrl+F4)", {}});
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
    return pecas::botao(*toolbar_, chave);
}

void frmValidador::enableToolbar(bool flag) {
    for (const char16_t* chave : {u"btnAdicionar", u"btnRemover", u"btnEditar", u"btnValidar",
                                  u"btnResultado", u"btnPlanilha", u"btnFechar"}) {
        proceed([&] { botao(QString::fromUtf16(chave)).setEnabled(flag); });
    }
}

// --- the grid

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

void frmValidador::resizeEvent(QResizeEvent* evento) {
    Janela::resizeEvent(evento);
    posiciona();
}

void frmValidador::posiciona() {
    pecas::posiciona(*this, *toolbar_, *statusBar_);
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

void frmValidador::status(const QString& texto) {
    pecas::escreve(*painel_, texto);
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
