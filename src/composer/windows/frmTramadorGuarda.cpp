#include "common/windows/Espera.h"
#include "common/windows/Grade.h"
#include "common/windows/GuardaDaJanela.h"
#include "common/windows/textoQt.h"
#include "composer/windows/EdicaoGrade.h"
#include "composer/windows/VistaFundos.h"
#include "composer/windows/frmTramador.h"
#include "logging/Routine.h"
#include "platform/Clock.h"

#include <QLabel>

/// The unsaved document: how it is kept from time to time, and how it comes back.
namespace tv {

void frmTramador::iniciaGuarda() {
    GuardaDaJanela::Fonte fonte;
    fonte.temTrabalho = [this] { return aberto_ && (!documento_.estado.salvo || retrato_.mudou()); };
    fonte.prepara = [this](const std::function<bool()>& continua) { return retrato_.atualiza(continua); };
    fonte.versao = [this] { return retrato_.versao(); };
    fonte.etiqueta = [this] {
        return EtiquetaDeTrabalho{"frmTramador", documento_.boleto()->getTag(), documento_.estado.arquivo,
                                  clock::now()};
    };
    fonte.conteudo = [this] {
        return [pecas = retrato_.pecas(telaAtual())] { return PecasDeTrabalho(pecas); };
    };
    guarda_ = new GuardaDaJanela(std::move(fonte), this);
}

/// What the window shows is in a file, or new: nothing of it has to be kept.
void frmTramador::documentoSalvo() {
    retrato_.marcaSalvo();
    guarda_->larga();
}

RetratoDocumento::Tela frmTramador::telaAtual() const {
    RetratoDocumento::Tela tela{lugar_};
    for (const auto& grade : grades_) {
        if (const auto pendente = grade->edicao->linhaPendente()) {
            tela.pendentes[grade->secao->chave] = *pendente;
        }
    }
    return tela;
}

bool frmTramador::retoma(const std::shared_ptr<const clsBoleto>& boleto, std::string_view conteudo) {
    abrir(boleto);
    if (!aberto_) {
        return false;
    }
    const bool voltou = guarded("frmTramador.retoma", [&] { devolve(conteudo); });
    if (!voltou) {
        documento_.estado.salvo = true; // what came back is not the user's document
        closeWindow();
    }
    return voltou;
}

void frmTramador::devolve(std::string_view conteudo) {
    const Espera espera;
    const GuardaDaJanela::Pausa pausa(*guarda_);
    for (const auto& grade : grades_) {
        grade->painel->grade().modelo().setDados(nullptr);
    }
    treeFundos_->setUpdatesEnabled(false);
    const auto mostra = [&] {
        treeFundos_->setUpdatesEnabled(true);
        for (const auto& grade : grades_) {
            vincula(*grade);
        }
    };
    RetratoDocumento::Volta volta;
    try {
        volta = devolveDocumento(documento_, conteudo);
    } catch (...) {
        mostra();
        throw;
    }
    mostra();
    if (volta.perdidas > 0 && Routine::isLogged()) {
        oLogger->logWARN("Colunas que o layout não tem mais: " + std::to_string(volta.perdidas));
    }
    mostraVolta(volta);
}

/// The node that was on the screen is clicked again; then the state stands as it did, which a click alone
/// would not always lead to.
void frmTramador::mostraVolta(const RetratoDocumento::Volta& volta) {
    EstadoDocumento& estado = documento_.estado;
    const auto tem = [this](const std::string& no) { return documento_.arvore.find(no) != nullptr; };
    lugar_ = documento_.arvore.chaveSelecionada();
    if (!volta.lugar.empty() && tem(volta.lugar)) {
        treeFundos_Click(paraQt(volta.lugar));
    }
    if (const auto* grade = documento_.grids().find(volta.grade)) {
        documento_.setGrid(**grade);
        estado.chaveGrid = volta.grade;
        (*grade)->caption = volta.caption;
        poeNoTopo(**grade);
    }
    if (!volta.selecionado.empty() && tem(volta.selecionado)) {
        documento_.arvore.seleciona(volta.selecionado);
    }
    if (volta.estado.noAtual != nullptr) {
        estado.noAtual = volta.estado.noAtual;
        estado.secaoAtual = volta.estado.secaoAtual;
    }
    estado.chaveNo = volta.estado.chaveNo;
    estado.btnAdicionar = volta.estado.btnAdicionar;
    estado.btnRemover = volta.estado.btnRemover;
    atualizaBotoes();
    for (const auto& [chave, linha] : volta.pendentes) {
        const GradeDaTela& grade = daTela(documento_.grade(chave));
        grade.edicao->setLinhaPendente(linha);
        Grade& controle = grade.painel->grade();
        if (const int lugar = controle.modelo().linhaDoNumero(linha); lugar >= 0) {
            controle.setLinhaAtiva(lugar);
        }
    }
    painel1_->setText(paraQt(estado.arquivo));
}

} // namespace tv
