#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "composer/windows/EdicaoGrade.h"
#include "composer/windows/VistaFundos.h"
#include "composer/windows/frmTramador.h"
#include "logging/Routine.h"

#include <algorithm>
#include <utility>

/// Rows: how they come, when their editing ends, how they go, and edits taken back.
namespace tv {

using mensagem::Icone;

/// A message that comes while the mouse or the keyboard is at work waits until that is through.
void frmTramador::avisa(const QString& mensagem, bool depois) {
    if (mensagem.isEmpty()) {
        return;
    }
    if (depois) {
        QMetaObject::invokeMethod(
            this, [mensagem] { mensagem::mostra(mensagem, Icone::Exclamacao); }, Qt::QueuedConnection);
    } else {
        mensagem::mostra(mensagem, Icone::Exclamacao);
    }
}

void frmTramador::addRow() {
    guarded("frmTramador.addRow", [&] {
        if (!documento_.estado.btnAdicionar) {
            return;
        }
        GradeDaTela& grade = atual();
        Grade& controle = grade.painel->grade();
        grade.edicao->encerraCelula();
        const int ativa = controle.linhaAtiva();
        const auto numero = ativa < 0 ? std::nullopt : std::optional(controle.modelo().numeroDaLinha(ativa));
        if (!validateRow(numero, true)) {
            return;
        }
        terminaPendente(grade, false);
        const RegrasLinha::NovaLinha nova = regras_.addRow(*grade.secao, numero);
        avisa(paraQt(nova.mensagem), false);
        if (nova.linha) {
            registra({grade.secao->chave, {}, {}, {{grade.secao->chave, *nova.linha, {}}}, {}});
            comeca(grade, *nova.linha);
        }
    });
}

/// A new row becomes the active one, under way from its first cell on.
void frmTramador::comeca(const GradeDaTela& grade, std::size_t linha) {
    Grade& controle = grade.painel->grade();
    grade.edicao->setLinhaPendente(linha);
    controle.setFocus();
    controle.clearSelection();
    controle.setCurrentIndex(controle.modelo().index(controle.modelo().linhaDoNumero(linha), 0));
}

bool frmTramador::validateRow(std::optional<std::size_t> linha, bool mostraMensagem) {
    const RegrasLinha::Validacao validacao = regras_.validateRow(documento_.getGrid(), linha);
    if (mostraMensagem) {
        avisa(paraQt(validacao.mensagem), false);
    }
    return validacao.valida;
}

bool frmTramador::canAddRow() {
    return regras_.canAddRow(documento_.getGrid());
}

std::int32_t frmTramador::getRowID(std::size_t linha) const {
    return regras_.getRowID(documento_.getGrid(), linha);
}

void frmTramador::terminaEdicao() {
    guarded("frmTramador.terminaEdicao", [&] {
        if (aberto_) {
            atual().edicao->encerraCelula();
            terminaPendente(atual(), false);
        }
    });
}

/// Another row has become active: the one before has been left.
void frmTramador::linhaAtivada(GradeDaTela& grade, int linha) {
    guarded("frmTramador.linhaAtivada", [&] {
        const auto pendente = grade.edicao->linhaPendente();
        if (pendente && *pendente != grade.painel->grade().modelo().numeroDaLinha(linha)) {
            terminaPendente(grade, true);
        }
    });
}

void frmTramador::terminaPendente(GradeDaTela& grade, bool avisaDepois) {
    if (const auto pendente = grade.edicao->linhaPendente()) {
        terminaLinhas(grade, {*pendente}, avisaDepois);
    }
}

/// Ends the editing of rows. Their failings are told at once, each row's once.
void frmTramador::terminaLinhas(GradeDaTela& grade, const std::vector<std::size_t>& linhas,
                                bool avisaDepois) {
    ModeloGrade& modelo = grade.painel->grade().modelo();
    QStringList falhas;
    guarded("frmTramador.grid_Update", [&] {
        for (const std::size_t numero : linhas) {
            if (grade.edicao->linhaPendente() == numero) {
                grade.edicao->setLinhaPendente(std::nullopt);
            }
            if (const int linha = modelo.linhaDoNumero(numero); linha >= 0) {
                modelo.confirma(linha);
                const QString falha = paraQt(regras_.grid_AfterRowUpdate(*grade.secao, numero).mensagem);
                if (!falha.isEmpty() && !falhas.contains(falha)) {
                    falhas << falha;
                }
            }
        }
    });
    avisa(falhas.join(QLatin1Char('\n')), avisaDepois);
}

void frmTramador::btnRemover() {
    GradeDaTela& grade = atual();
    grade.edicao->encerraCelula();
    controleLib::removeRow(grade.painel->grade());
}

bool frmTramador::antesDeRemover(GradeDaTela& grade, const std::vector<int>& linhas) {
    return guarded("frmTramador.antesDeRemover", false, [&] {
        std::vector<std::size_t> numeros;
        numeros.reserve(linhas.size());
        for (const int linha : linhas) {
            numeros.push_back(grade.painel->grade().modelo().numeroDaLinha(linha));
        }
        const auto pendente = grade.edicao->linhaPendente();
        if (pendente && std::find(numeros.begin(), numeros.end(), *pendente) != numeros.end()) {
            grade.edicao->setLinhaPendente(std::nullopt);
        }
        regras_.grid_BeforeRowsDeleted(*grade.secao, numeros);
        remocao_ = {grade.secao->chave, {}, {}, {}, regras_.linhasQueSaem(*grade.secao, numeros)};
        if (!documento_.estado.linhasApagadas.empty() && grade.secao->secao->isSecaoMestre()) {
            desvinculaDetalhes(*grade.secao);
        }
        return true;
    });
}

void frmTramador::linhasRemovidas(const GradeDaTela& grade) {
    guarded("frmTramador.linhasRemovidas", [&] {
        const std::vector<GradeSecao*> refeitas = regras_.grid_AfterRowsDeleted(*grade.secao);
        registra(std::exchange(remocao_, {}));
        refazDetalhes(refeitas);
    });
}

/// The keyboard goes from the grid to another part of the window: the row is ended. Another window, a list or
/// a message does not end it.
void frmTramador::focoMudou(QWidget* antes, QWidget* agora) {
    if (!aberto_ || antes == nullptr || agora == nullptr || !isAncestorOf(agora)) {
        return;
    }
    proceed([&] {
        GradeDaTela& grade = atual();
        if (grade.painel->isAncestorOf(antes) && !grade.painel->isAncestorOf(agora)) {
            terminaPendente(grade, true);
        }
    });
}

} // namespace tv
