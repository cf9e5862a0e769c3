#include "common/windows/frmSelecionaBoleto.h"

#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/frmObjetos.h"
#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <string>

namespace tv {

namespace {

constexpr int larguraMinima = 420;
constexpr int larguraDaVersao = 110;
constexpr int linhasMinimas = 8;
constexpr int linhasMaximas = 18;
constexpr int folgaDaColuna = 24;

clsTramadorValidador& catalogo() {
    if (!objTramadorValidador) {
        throw Error(errc::objectNotSet, "frmSelecionaBoleto", "O catálogo não está carregado");
    }
    return *objTramadorValidador;
}

QPushButton* novoBotao(const QString& nome, const QString& texto, const QString& descricao, QWidget* dono) {
    auto* botao = new QPushButton(texto, dono);
    botao->setObjectName(nome);
    botao->setAccessibleName(descricao);
    return botao;
}

} // namespace

frmSelecionaBoleto::frmSelecionaBoleto(QWidget* dono)
    : QDialog(dono)
    , painel_(new PainelGrade(QStringLiteral("grid"), this))
    , grid_(painel_->grade())
    , cmdOk_(novoBotao(QStringLiteral("cmdOk"), QStringLiteral("&OK"), QStringLiteral("OK"), this))
    , cmdCancel_(novoBotao(QStringLiteral("cmdCancel"), QStringLiteral("&Cancelar"),
                           QStringLiteral("Cancelar"), this)) {
    setObjectName(QStringLiteral("frmSelecionaBoleto"));
    setAccessibleName(QStringLiteral("Seleção do tipo de boleto"));
    setWindowTitle(paraQt(aplicacao::titulo()));
    setSizeGripEnabled(true);
    criaBotoes();
    guarded("frmSelecionaBoleto.Form_Load", [this] { criaRegistros(); });
    grid_.setTeclaRemove(false);
    grid_.setFocus();
    connect(&grid_, &QTableView::doubleClicked, this, &frmSelecionaBoleto::cmdOk_Click);
}

frmSelecionaBoleto::~frmSelecionaBoleto() = default;

void frmSelecionaBoleto::criaBotoes() {
    auto* botoes = new QHBoxLayout;
    botoes->addStretch(1);
    botoes->addWidget(cmdOk_);
    botoes->addWidget(cmdCancel_);
    auto* pilha = new QVBoxLayout(this);
    pilha->addWidget(painel_, 1);
    pilha->addLayout(botoes);
    cmdOk_->setDefault(true);
    connect(cmdOk_, &QPushButton::clicked, this, &frmSelecionaBoleto::cmdOk_Click);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmSelecionaBoleto::reject);
}

void frmSelecionaBoleto::criaRegistros() {
    auto registros = std::make_shared<RecordSet>();
    registros->Append("boleto", ColumnType::FixedChar, 80);
    registros->Append("versao", ColumnType::FixedChar, 10);
    registros->Append("tag", ColumnType::FixedChar, 80);
    registros->Open();
    grid_.modelo().setDados(std::move(registros));
    controleLib::gridInitializeLayout(grid_);
    grid_.setCaption(QStringLiteral("Selecione o tipo do Boleto"));
    grid_.modelo().setColuna("boleto", {.titulo = QStringLiteral("Boleto")});
    grid_.modelo().setColuna("versao", {.titulo = QStringLiteral("Versão"), .largura = larguraDaVersao});
    grid_.modelo().setColuna("tag", {.titulo = QStringLiteral("tag"), .oculta = true});
    grid_.horizontalHeader()->setStretchLastSection(true);
}

void frmSelecionaBoleto::tramador() {
    escolhe("frmSelecionaBoleto.tramador", QStringLiteral("imgBoleto"),
            [](const clsBoleto& boleto) { return boleto.hasTramador(); });
}

void frmSelecionaBoleto::validador() {
    escolhe("frmSelecionaBoleto.validador", QStringLiteral("imgValidador"),
            [](const clsBoleto& boleto) { return boleto.hasValidador(); });
}

void frmSelecionaBoleto::escolhe(std::string_view rotina, const QString& imagem, const Serve& serve) {
    guarded(rotina, [&] {
        boleto_.reset();
        preenche(imagem, serve);
        if (grid_.modelo().rowCount() == 0) {
            const QString aviso = QStringLiteral("Não há tramadores!");
            mensagem::mostra(aviso, mensagem::Icone::Exclamacao);
            requireLogger().logWARN(paraUtf8(aviso));
            close();
            return;
        }
        grid_.setLinhaAtiva(0);
        grid_.selecionaLinha(0);
        proceed([&] { setWindowIcon(frmObjetos::imagem(imagem)); });
        ajustaTamanho();
        exec();
    });
}

void frmSelecionaBoleto::preenche(const QString& imagem, const Serve& serve) {
    ModeloGrade& modelo = grid_.modelo();
    RecordSet& registros = *modelo.dados();
    for (registros.MoveFirst(); !registros.EOF_(); registros.MoveNext()) {
        registros.Delete();
    }
    for (const auto& boleto : catalogo().getBoletos()) {
        if (serve(*boleto)) {
            registros.AddNew();
            registros.set("boleto", boleto->getNome());
            registros.set("versao", boleto->getVersao());
            registros.set("tag", boleto->getTag());
            registros.Update();
            modelo.setImagem(modelo.rowCount() - 1, "boleto", imagem);
        }
    }
}

/// Every name in full, and as many rows as the screen bears.
void frmSelecionaBoleto::ajustaTamanho() {
    grid_.resizeColumnToContents(0);
    const QSize tela = screen()->availableSize();
    const int nome = std::max(grid_.columnWidth(0) + folgaDaColuna, larguraMinima - larguraDaVersao);
    const int linhas = std::clamp(grid_.modelo().rowCount(), linhasMinimas, linhasMaximas);
    const int altura = grid_.horizontalHeader()->sizeHint().height() +
                       linhas * grid_.verticalHeader()->defaultSectionSize() + 2 * grid_.frameWidth();
    grid_.setColumnWidth(0, nome);
    grid_.setColumnWidth(1, larguraDaVersao);
    ensurePolished();
    const QSize fora = sizeHint() - grid_.sizeHint();
    const int barra = grid_.verticalScrollBar()->sizeHint().width();
    resize(std::min(nome + larguraDaVersao + barra + 2 * grid_.frameWidth() + std::max(fora.width(), 0),
                    tela.width() * 9 / 10),
           std::min(altura + std::max(fora.height(), 0), tela.height() * 9 / 10));
}

void frmSelecionaBoleto::cmdOk_Click() {
    guarded("frmSelecionaBoleto.cmdOk_Click", [this] {
        const std::string tag = paraUtf8(grid_.modelo().texto(grid_.linhaAtiva(), "tag"));
        boleto_ = catalogo().getBoletos().Item(std::string_view(tag));
        accept();
    });
}

void frmSelecionaBoleto::reject() {
    boleto_.reset();
    QDialog::reject();
}

std::shared_ptr<const clsBoleto> frmSelecionaBoleto::getBoleto() {
    auto escolhido = boleto_; // closing is a cancel, which forgets it
    close();
    return escolhido;
}

} // namespace tv
