#include "composer/windows/frmTramador.h"

#include "app/windows/frmObjetos.h"
#include "common/windows/Espera.h"
#include "common/windows/Grade.h"
#include "common/windows/GuardaDaJanela.h"
#include "common/windows/controleLib.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "composer/fundos.h"
#include "composer/windows/EdicaoGrade.h"
#include "composer/windows/VistaFundos.h"
#include "logging/Routine.h"
#include "platform/text.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMdiSubWindow>

#include <map>

/// Opening, closing, the tool bar's keys and the tree.
namespace tv {

namespace {

using mensagem::Icone;

} // namespace

frmTramador::frmTramador()
    : Janela(QStringLiteral("frmTramador")) {
    montaTela();
    iniciaGuarda();
}

frmTramador::~frmTramador() {
    aberto_ = false;
    qApp->disconnect(this); // the keyboard still moves while the controls go
    for (const auto& grade : grades_) {
        grade->painel->grade().disconnect(this); // it goes after the document
        grade->edicao->disconnect(this);
        grade->painel->grade().antesDeRemover = nullptr;
    }
    delete treeFundos_; // it listens to the document's tree
}

void frmTramador::abrir(const std::shared_ptr<const clsBoleto>& boleto) {
    const Espera espera;
    const bool abriu = guarded("frmTramador.abrir", [&] {
        status(QStringLiteral("Abrindo Tramador ..."));
        if (!boleto) {
            throw Error(errc::objectNotSet, "frmTramador.abrir", "Não há layout para tramar");
        }
        mostraPaineis(false);
        buildToolbar();
        const QString titulo = QStringLiteral("Tramador de ") + paraQt(boleto->getNome()) +
                               QStringLiteral(" - ") + paraQt(boleto->getVersao());
        setWindowTitle(titulo);
        lblTitulo_->setText(titulo);
        setWindowIcon(frmObjetos::imagem(QStringLiteral("imgBoleto")));
        historico_.limpa();
        removeGrades();
        documento_.abrir(boleto);
        lugar_ = documento_.arvore.chaveSelecionada();
        documento_.estado.btnAdicionar = true; // as the new tool bar has them
        documento_.estado.btnRemover = true;
        aberto_ = true;
        criaGrades();
        atualizaBotoes();
        posiciona();
        mostraPaineis(true);
        mostra();
        if (auto* moldura = qobject_cast<QMdiSubWindow*>(parentWidget())) {
            moldura->showMaximized();
        }
        poeNoTopo(documento_.getGrid());
        gradeAtual().setFocus();
        documentoSalvo();
        status(QStringLiteral("Pronto"));
    });
    if (!abriu) {
        mensagem::mostra(QStringLiteral("Não é possível abrir o Tramador!"), Icone::Exclamacao);
        closeWindow();
    }
}

bool frmTramador::podeFechar() {
    if (!aberto_) {
        return true;
    }
    terminaEdicao();
    return documento_.estado.salvo || perguntaSeSalva();
}

void frmTramador::aoDescarregar() {
    const Routine routine("frmTramador.Form_Unload");
    aberto_ = false;
    guarda_->larga();
    retrato_.solta();
    removeGrades();
    documento_.estado.linhasApagadas.clear();
}

Grade& frmTramador::gradeAtual() const {
    return porSecao_.at(&documento_.getGrid())->painel->grade();
}

// --- the tool bar's keys

void frmTramador::toolbar_ButtonClick(const QString& chave) {
    using Acao = void (frmTramador::*)();
    static const std::map<QString, Acao> acoes{
        {QStringLiteral("btnNovo"), &frmTramador::novoBoleto},
        {QStringLiteral("btnAbrir"), &frmTramador::btnAbrir},
        {QStringLiteral("btnSalvar"), &frmTramador::salvarBoleto},
        {QStringLiteral("btnImprimir"), &frmTramador::btnImprimir},
        {QStringLiteral("btnVisualizar"), &frmTramador::btnVisualizar},
        {QStringLiteral("btnAdicionar"), &frmTramador::btnAdicionar},
        {QStringLiteral("btnRemover"), &frmTramador::btnRemover},
        {QStringLiteral("btnValidar"), &frmTramador::btnValidar},
        {QStringLiteral("btnExportarExcel"), &frmTramador::exportarExcel},
        {QStringLiteral("btnImportarExcel"), &frmTramador::importarExcel},
        {QStringLiteral("btnFechar"), &frmTramador::btnFechar},
    };
    const auto acao = acoes.find(chave);
    if (acao != acoes.end()) {
        guarded([&] { return "frmBolPosicao.toolbar_ButtonClick(" + paraUtf8(chave) + ")"; },
                [&] { (this->*acao->second)(); });
    }
}

void frmTramador::btnImprimir() {
    terminaEdicao();
    controleLib::imprimiGrid(gradeAtual(), false);
}

void frmTramador::btnVisualizar() {
    terminaEdicao();
    controleLib::imprimiGrid(gradeAtual(), true);
}

void frmTramador::btnValidar() {
    terminaEdicao();
    const EstadoDocumento& estado = documento_.estado;
    if (!estado.salvo || text::trim(estado.arquivo).empty()) {
        salvarBoleto();
    } else {
        validarBoleto(paraQt(estado.arquivo), true);
    }
}

void frmTramador::btnFechar() {
    if (mensagem::pergunta(QStringLiteral("Deseja fechar o boleto atual?"), Icone::Pergunta)) {
        closeWindow();
    }
}

// --- the tree

void frmTramador::treeFundos_Click(const QString& chave) {
    terminaEdicao();
    guarded("frmTramador.treeFundos_Click", [&] {
        const Espera espera;
        documento_.arvore.seleciona(paraUtf8(chave));
        fundos::Clique clique;
        try {
            clique = fundos::treeFundos_Click(documento_);
        } catch (...) {
            atualizaBotoes();
            throw;
        }
        atualizaBotoes();
        if (clique.grade == nullptr) {
            return;
        }
        GradeDaTela& grade = daTela(*clique.grade);
        grade.painel->grade().modelo().recarrega();
        controleLib::gridInitializeLayout(grade.painel->grade());
        if (clique.formata) {
            formatGrid(grade);
        }
        poeNoTopo(*clique.grade);
        lugar_ = paraUtf8(chave);
    });
}

void frmTramador::atualizaBotoes() {
    botao(QStringLiteral("btnAdicionar")).setEnabled(documento_.estado.btnAdicionar);
    botao(QStringLiteral("btnRemover")).setEnabled(documento_.estado.btnRemover);
}

} // namespace tv
