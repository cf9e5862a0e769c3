#include "validation/windows/frmBrowser.h"

#include "app/Aplicacao.h"
#include "app/windows/frmObjetos.h"
#include "app/windows/mdiMain.h"
#include "common/windows/Espera.h"
#include "common/windows/FileOperations.h"
#include "common/windows/frmMensagem.h"
#include "common/windows/mensagem.h"
#include "common/windows/pecasJanela.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"
#include "platform/Files.h"
#include "validation/biblioteca.h"
#include "validation/documentoResultado.h"
#include "validation/nomeRelatorio.h"
#include "validation/windows/VistaRelatorio.h"

#include <QAction>
#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include <utility>

namespace tv {

namespace {

constexpr std::int32_t semResultado = -2147221504;
constexpr int margemTitulo = 5;     // pixels at each side: the frame is 150 twips narrower than the window
constexpr int alturaLogotipo = 28;  // pixels
constexpr int resolucaoPapel = 300; // dots per inch; the engine paints sheets as pictures, which grow with it

/// The progress window of making a report.
std::unique_ptr<frmMensagem> avisoDeAbertura(const QString& titulo) {
    auto aviso = std::make_unique<frmMensagem>();
    aviso->setMsg(QStringLiteral("Abrindo relatório de validação"), QStringLiteral("Boleto:  ") + titulo);
    return aviso;
}

std::unique_ptr<QPrinter> impressoraDeRelatorio(const QString& documento) {
    auto impressora = std::make_unique<QPrinter>(QPrinter::HighResolution);
    impressora->setResolution(resolucaoPapel);
    impressora->setPageSize(QPageSize(QPageSize::A4));
    impressora->setPageOrientation(QPageLayout::Landscape);
    impressora->setDocName(documento);
    return impressora;
}

} // namespace

frmBrowser::frmBrowser()
    : Janela(QStringLiteral("frmBrowser")) {
    montaTela();
}

frmBrowser::~frmBrowser() {
    apagaReport();
}

void frmBrowser::montaTela() {
    toolbar_ = pecas::criaToolbar(*this);
    statusBar_ = pecas::criaStatusBar(*this);
    painel_ = pecas::criaPainel(*statusBar_, QStringLiteral("panel1"), QStringLiteral("Situação"));
    painel_->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto vista = VistaRelatorio::cria();
    vista_ = vista.get();
    connect(vista_, &VistaRelatorio::pedeImpressao, this, &frmBrowser::imprimirReport);

    auto* pilha = new QVBoxLayout(this);
    pilha->setContentsMargins(0, 0, 0, 0);
    pilha->setSpacing(0);
    pilha->addWidget(toolbar_);
    auto* faixa = new QHBoxLayout;
    faixa->setContentsMargins(margemTitulo, margemTitulo, margemTitulo, margemTitulo);
    faixa->addWidget(montaTitulo());
    pilha->addLayout(faixa);
    pilha->addWidget(vista.release(), 1); // the layout's window owns it
    pilha->addWidget(statusBar_);
    setFocusProxy(vista_);
}

QSize frmBrowser::sizeHint() const {
    return {1000, 600};
}

QSize frmBrowser::minimumSizeHint() const {
    return {520, 320};
}

QFrame* frmBrowser::montaTitulo() {
    const pecas::Titulo titulo =
        pecas::criaTitulo(*this, QStringLiteral("Resultado da Validação"), alturaLogotipo, 1.3);
    lblTitulo_ = titulo.lblTitulo;
    auto* fila = new QHBoxLayout(titulo.frmTitulo);
    fila->setContentsMargins(6, 3, 6, 3);
    fila->addWidget(lblTitulo_, 1);
    fila->addWidget(titulo.imgTORVA);
    return titulo.frmTitulo;
}

void frmBrowser::buildToolbar() {
    toolbar_->clear();
    const auto cria = [this](const pecas::Botao& botao, void (frmBrowser::*acao)()) {
        connect(pecas::criaBotao(*this, *toolbar_, botao), &QAction::triggered, this, acao);
    };
    cria({u"btnImprimir", u"&Imprimir", u"imgPrint", u"Imprime o relatório (Ctrl+P)"},
         &frmBrowser::imprimirReport);
    toolbar_->addSeparator();
    cria({u"btnFechar", u"Fechar", u"imgCloseWindow", u"Fecha a janela (Ctrl+F4)"}, &frmBrowser::closeWindow);
}

void frmBrowser::abrir(const std::shared_ptr<const Resultados>& resultados, const QString& titulo,
                       const QString& arquivo) {
    std::unique_ptr<frmMensagem> aviso;
    {
        const Espera ampulheta;
        const bool certo = guarded("frmBrowser.abrir", [&] {
            aviso = avisoDeAbertura(titulo);
            if (!resultados) {
                throw Error(errc::objectNotSet, "frmBrowser", "Não há resultados de validação.");
            }
            carrega(*resultados, titulo, arquivo);
        });
        if (!certo) {
            proceed([this] { mostra(); });
            mensagem::mostra(QStringLiteral("Não é possível abrir o resultado da validação!"),
                             mensagem::Icone::Exclamacao);
        }
        proceed([&aviso] {
            if (aviso) {
                aviso->destroy();
            }
        });
    }
    painel_->setText(arquivo);
    painel_->setToolTip(arquivo);
}

void frmBrowser::carrega(const Resultados& resultados, const QString& titulo, const QString& arquivo) {
    painel_->setText(QStringLiteral("Abrindo relatório de validação ..."));
    const QString nome = QStringLiteral("[%1]").arg(semBlancos(FileOperations::GetFTitle(arquivo)));
    setWindowTitle(QStringLiteral("Resultado da Validação ") + nome);
    nomeNaImpressora_ = QStringLiteral("Resultado da Validação - ") + QFileInfo(arquivo).completeBaseName();
    setWindowIcon(frmObjetos::imagem(QStringLiteral("imgResult")));
    lblTitulo_->setText(lblTitulo_->text() + QStringLiteral(" - ") + nome);
    lblTitulo_->setToolTip(lblTitulo_->text());
    buildToolbar();
    tomaNomeTemporario();
    createResultFile(resultados, titulo, arquivo, arquivoReport_);
    vista_->abre(arquivoReport_);
    mostra();
    vista_->setFocus(); // keys of the page work at once
}

void frmBrowser::tomaNomeTemporario() {
    std::filesystem::path pasta = aplicacao::pasta();
    arquivoReport_ = FileOperations::nomeTemporario(pasta);
    if (files::exists(arquivoReport_)) {
        files::remove(arquivoReport_);
    }
    arquivoReport_ = nomeRelatorio(arquivoReport_);
}

void frmBrowser::createResultFile(const Resultados& resultados, const QString& titulo, const QString& arquivo,
                                  const std::filesystem::path& destino) {
    const Routine rotina("frmBrowser.createResultFile");
    try {
        const auto aviso = avisoDeAbertura(titulo);
        if (!resultados.empty()) { // the bar takes no length of 0
            aviso->setMax(static_cast<int>(resultados.size()));
        }
        const std::string documento = montaDocumentoResultado(resultados, paraUtf8(titulo), paraUtf8(arquivo),
                                                              [&aviso] { aviso->incProgress(); });
        if (!biblioteca::transformStream(documento, aplicacao::arquivo("\\XSD\\resultado.xsl"), destino)) {
            throw Error(semResultado, "frmBrowser", "Não foi possível gerar arquivo de resultado");
        }
        proceed([&aviso] { aviso->destroy(); });
    } catch (const std::exception& falha) {
        logFailure(falha);
        throw;
    }
}

void frmBrowser::imprimirReport() {
    // The progress window and the log outlive this window where the print goes on behind its back.
    auto aviso = std::make_shared<frmMensagem>();
    const QString documento = caminhoQt(arquivoReport_);
    const bool certo = guarded("frmBrowser.imprimirReport", [&] {
        aviso->setMsg(QStringLiteral("Imprimindo relatório de validação"),
                      QStringLiteral("Boleto:  ") + documento);
        auto impressora = impressoraDeRelatorio(nomeNaImpressora_);
        QPrintDialog dialogo(impressora.get(), this);
        dialogo.setWindowTitle(QStringLiteral("Imprimir"));
        dialogo.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintCollateCopies |
                           QAbstractPrintDialog::PrintShowPageSize);
        const QPointer<frmBrowser> janela = this;
        if (dialogo.exec() != QDialog::Accepted || !janela) {
            aviso->destroy();
            return;
        }
        vista_->imprime(std::move(impressora), [aviso](bool impresso) {
            if (!impresso) {
                const Routine rotina("frmBrowser.imprimirReport");
                logFailure(Error(errc::pathError, "frmBrowser", "Não foi possível imprimir o relatório."));
            }
            aviso->destroy();
        });
    });
    if (!certo) {
        aviso->destroy();
    }
}

void frmBrowser::aoDescarregar() {
    apagaReport();
    if (vista_->imprimindo()) {
        std::unique_ptr<VistaRelatorio> vista(std::exchange(vista_, nullptr));
        VistaRelatorio::deixaTerminar(std::move(vista), mdiMain::existe() ? &mdiMain::instancia() : nullptr);
    }
}

void frmBrowser::apagaReport() noexcept {
    if (!arquivoReport_.empty()) {
        proceed([this] { files::remove(arquivoReport_); });
        arquivoReport_.clear();
    }
}

} // namespace tv
