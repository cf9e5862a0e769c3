#include "validation/windows/frmValidador.h"

#include "app/windows/frmObjetos.h"
#include "app/windows/mdiMain.h"
#include "common/windows/Espera.h"
#include "common/windows/FileOperations.h"
#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "editor/windows/frmEditor.h"
#include "logging/Routine.h"
#include "validation/windows/frmBrowser.h"

#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPointer>
#include <QUrl>

#include <algorithm>
#include <map>

namespace tv {

namespace {

using mensagem::Icone;

QStringList arquivosSoltos(const QMimeData& dados) {
    std::vector<std::filesystem::path> soltos;
    for (const QUrl& endereco : dados.urls()) {
        if (endereco.isLocalFile()) {
            soltos.push_back(paraCaminho(endereco.toLocalFile()));
        }
    }
    QStringList arquivos;
    for (const std::filesystem::path& arquivo : lote::arquivosXml(soltos)) {
        arquivos << caminhoQt(arquivo);
    }
    return arquivos;
}

bool trazArquivos(const QMimeData& dados) {
    const QList<QUrl> enderecos = dados.urls();
    return std::any_of(enderecos.begin(), enderecos.end(), [](const QUrl& u) { return u.isLocalFile(); });
}

} // namespace

frmValidador::frmValidador()
    : Janela(QStringLiteral("frmValidador")) {
    montaTela();
}

frmValidador::~frmValidador() = default;

void frmValidador::abrir(const std::shared_ptr<const clsBoleto>& boleto) {
    const Espera espera;
    const bool abriu = guarded("frmValidador.abrir", [&] {
        status(QStringLiteral("Abrindo Validador ..."));
        boleto_ = boleto;
        continuar_ = false;
        buildToolbar();
        createGrid();
        if (!boleto_) {
            throw Error(errc::objectNotSet, "frmValidador.abrir", "Não há layout para validar");
        }
        const QString titulo = QStringLiteral("Validador de ") + paraQt(boleto_->getNome()) +
                               QStringLiteral(" - ") + paraQt(boleto_->getVersao());
        setWindowTitle(titulo);
        lblTitulo_->setText(titulo);
        grade().setCaption(titulo);
        setWindowIcon(frmObjetos::imagem(QStringLiteral("imgValidador")));
        posiciona();
        mostra();
        grade().setFocus();
        status(QStringLiteral("Pronto"));
    });
    if (!abriu) {
        mensagem::mostra(QStringLiteral("Não é possível abrir o Validador!"), Icone::Exclamacao);
        closeWindow();
    }
}

void frmValidador::aoDescarregar() {
    continuar_ = false;
    boleto_.reset();
}

// --- the tool bar's keys

void frmValidador::toolbar_ButtonClick(const QString& chave) {
    using Acao = void (frmValidador::*)();
    static const std::map<QString, Acao> acoes{
        {QStringLiteral("btnAdicionar"), &frmValidador::addBoleto},
        {QStringLiteral("btnRemover"), &frmValidador::btnRemover},
        {QStringLiteral("btnEditar"), &frmValidador::btnEditar},
        {QStringLiteral("btnValidar"), &frmValidador::btnValidar},
        {QStringLiteral("btnParar"), &frmValidador::btnParar},
        {QStringLiteral("btnResultado"), &frmValidador::btnResultado},
        {QStringLiteral("btnPlanilha"), &frmValidador::btnPlanilha},
        {QStringLiteral("btnImportarPlanilha"), &frmValidador::btnImportarPlanilha},
        {QStringLiteral("btnFechar"), &frmValidador::closeWindow},
    };
    const auto acao = acoes.find(chave);
    if (acao != acoes.end()) {
        guarded([&] { return "frmValidador.toolbar_ButtonClick(" + paraUtf8(chave) + ")"; },
                [&] { (this->*acao->second)(); });
    }
}

void frmValidador::btnRemover() {
    controleLib::removeRow(grade());
}

void frmValidador::btnValidar() {
    continuar_ = true;
    validaBoleto();
}

void frmValidador::btnResultado() {
    comAchados([this](int linha) {
        abrirValidador(resultados(linha), modelo().texto(linha, lote::coluna::boleto));
    });
}

void frmValidador::btnEditar() {
    comAchados([this](int linha) {
        abrirEditor(resultados(linha), modelo().texto(linha, lote::coluna::boleto));
        modelo().setValor(linha, lote::coluna::status, std::string());
        modelo().setImagem(linha, lote::coluna::status, {});
    });
}

/// Opens something for the row asked for when it holds findings; tells of a file that passed.
void frmValidador::comAchados(const std::function<void(int)>& abre) {
    const int linha = linhaPedida();
    switch (reacao(linha)) {
    case lote::Reacao::DizValido:
        mensagem::mostra(QStringLiteral("O Boleto selecionado é válido."), Icone::Informacao);
        break;
    case lote::Reacao::Abre:
        abre(linha);
        break;
    case lote::Reacao::Nenhuma:
        break;
    }
}

// --- results

int frmValidador::linhaPedida() {
    if (grade().linhaAtiva() < 0 && modelo().rowCount() > 0) {
        grade().setLinhaAtiva(0);
    }
    return grade().linhaAtiva();
}

bool frmValidador::marcado(int linha, std::string_view coluna) const {
    const Value valor = modelo().valor(linha, coluna);
    const bool* marca = std::get_if<bool>(&valor);
    return marca != nullptr && *marca;
}

lote::Reacao frmValidador::reacao(int linha) const {
    if (linha < 0) {
        return lote::Reacao::Nenhuma;
    }
    return lote::reacao(marcado(linha, lote::coluna::validou), marcado(linha, lote::coluna::isValid),
                        paraUtf8(modelo().texto(linha, lote::coluna::status)));
}

std::shared_ptr<const Resultados> frmValidador::resultados(int linha) const {
    return modelo().marca(linha).value<std::shared_ptr<const Resultados>>();
}

void frmValidador::abrirValidador(const std::shared_ptr<const Resultados>& resultados,
                                  const QString& arquivo) {
    const QString titulo =
        paraQt(boleto_->getNome()) + QStringLiteral(" (") + paraQt(boleto_->getVersao()) + QLatin1Char(')');
    auto& janela = criaJanela<frmBrowser>();
    janela.abrir(resultados, titulo, arquivo);
    mdiMain::instancia().addJanela(janela);
}

void frmValidador::abrirEditor(const std::shared_ptr<const Resultados>& resultados, const QString& arquivo) {
    auto& janela = criaJanela<frmEditor>();
    janela.abrir(resultados, boleto_, arquivo);
    mdiMain::instancia().addJanela(janela);
}

void frmValidador::ativaResultado() {
    if (!executando_) {
        toolbar_ButtonClick(QStringLiteral("btnResultado"));
    }
}

// --- adding and removing

void frmValidador::addBoleto() {
    const QPointer<frmValidador> viva(this);
    const QStringList escolhidos = FileOperations::selecionaVarios(this, true);
    if (viva) {
        adicionaArquivos(escolhidos);
    }
}

void frmValidador::adicionaArquivos(const QStringList& caminhos) {
    const bool adicionou = guarded("frmValidador.addBoleto", [&] {
        const Espera espera;
        status(QStringLiteral("Adicionando boletos ..."));
        adiciona(caminhos);
    });
    if (!adicionou) {
        mensagem::mostra(QStringLiteral("Falha ao tentar adicionar boleto(s)!"), Icone::Exclamacao);
    }
    mostraContagem();
    mostraUltima();
}

void frmValidador::adiciona(const QStringList& caminhos) {
    std::vector<std::string> escolhidos;
    escolhidos.reserve(static_cast<std::size_t>(caminhos.size()));
    for (const QString& caminho : caminhos) {
        escolhidos.push_back(paraUtf8(caminho));
    }
    const auto registros = modelo().dados()->Clone();
    for (const std::string& caminho : lote::novos(*registros, escolhidos)) {
        lote::adiciona(*registros, caminho);
        modelo().setImagem(modelo().linhaDoNumero(registros->currentRow()), lote::coluna::boleto,
                           QStringLiteral("imgBoleto"));
    }
}

void frmValidador::removeBoleto() {
    const bool removeu = guarded("frmValidador.removeBoleto", [&] {
        const std::vector<int> linhas = grade().linhasSelecionadas();
        if (linhas.empty()) {
            mensagem::mostra(paraQt(lote::nenhumSelecionado), Icone::Exclamacao);
            requireLogger().logWARN(lote::nenhumSelecionado);
        } else if (mensagem::pergunta(paraQt(lote::perguntaRemocao(linhas.size())), Icone::Pergunta)) {
            const Espera espera;
            status(QStringLiteral("Removendo boletos ..."));
            modelo().remove(linhas);
        }
        mostraContagem();
    });
    if (!removeu) {
        mensagem::mostra(QStringLiteral("Falha ao tentar remover boleto(s)!"), Icone::Exclamacao);
    }
}

void frmValidador::dragEnterEvent(QDragEnterEvent* evento) {
    if (!executando_ && boleto_ && trazArquivos(*evento->mimeData())) {
        evento->acceptProposedAction();
    }
}

void frmValidador::dropEvent(QDropEvent* evento) {
    if (executando_ || !boleto_) {
        return;
    }
    evento->acceptProposedAction();
    adicionaArquivos(arquivosSoltos(*evento->mimeData()));
}

} // namespace tv
