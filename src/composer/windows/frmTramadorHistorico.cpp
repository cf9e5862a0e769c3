#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "composer/chavesArvore.h"
#include "composer/passos.h"
#include "composer/windows/EdicaoGrade.h"
#include "composer/windows/frmTramador.h"
#include "logging/Routine.h"

#include <algorithm>
#include <map>
#include <utility>

/// Edits taken back and made again.
namespace tv {

namespace {

constexpr std::size_t muitasLinhas =
    500; ///< From here on rows come and go quicker in a grid that is unbound.

/// True when the step brings or takes this row of its grid.
bool mexeNaLinha(const PassoDeEdicao& passo, std::size_t linha) {
    const auto isEsta = [&](const LinhaGuardada& guardada) {
        return guardada.linha == linha && guardada.chaveGrade == passo.chaveGrade;
    };
    return std::any_of(passo.incluidas.begin(), passo.incluidas.end(), isEsta) ||
           std::any_of(passo.removidas.begin(), passo.removidas.end(), isEsta);
}

} // namespace

void frmTramador::registra(PassoDeEdicao passo) {
    passo.chaveNo = lugar_;
    historico_.registra(std::move(passo));
}

void frmTramador::desfaz() {
    aplica(false);
}

void frmTramador::refaz() {
    aplica(true);
}

/// The step's place comes back on the screen, then the step is taken back or made again there.
void frmTramador::aplica(bool refaz) {
    guarded("frmTramador.aplica", [&] {
        if (!aberto_) {
            return;
        }
        atual().edicao->encerraCelula();
        const PassoDeEdicao* proximo = refaz ? historico_.aRefazer() : historico_.aDesfazer();
        if (proximo == nullptr || !vaiPara(*proximo)) {
            return;
        }
        PassoDeEdicao& passo = refaz ? historico_.refaz() : historico_.desfaz();
        GradeDaTela& grade = atual();
        const auto pendente = grade.edicao->linhaPendente();
        if (pendente && mexeNaLinha(passo, *pendente)) {
            grade.edicao->setLinhaPendente(std::nullopt); // it goes without a judgement
        }
        desvinculaCheias(passo);
        passos::Efeito efeito = refaz ? passos::refaz(documento_, passo) : passos::desfaz(documento_, passo);
        refazDetalhes({});
        for (const std::size_t linha : efeito.devolvidas) {
            regras_.grid_AfterRowUpdate(*grade.secao, linha); // a fund is in the tree again
        }
        if (efeito.mudadas.empty()) {
            efeito.mudadas = std::exchange(efeito.devolvidas, {});
        }
        const bool temCelulas = !passo.celulas.empty();
        grade.edicao->retoma(efeito.mudadas,
                             temCelulas ? std::optional(passo.celulas.front().coluna) : std::nullopt);
    });
}

/// False where the step's grid cannot be shown as it was: its node is gone.
bool frmTramador::vaiPara(const PassoDeEdicao& passo) {
    if (lugar_ != passo.chaveNo) {
        const std::string no = passo.chaveNo.empty() ? std::string(chaves::raiz) : passo.chaveNo;
        if (documento_.arvore.find(no) == nullptr) {
            return false;
        }
        treeFundos_Click(paraQt(no));
    }
    return documento_.getGrid().chave == passo.chaveGrade;
}

void frmTramador::desvinculaCheias(const PassoDeEdicao& passo) {
    std::map<std::string, std::size_t> linhas;
    for (const auto* lado : {&passo.incluidas, &passo.removidas}) {
        for (const LinhaGuardada& guardada : *lado) {
            ++linhas[guardada.chaveGrade];
        }
    }
    for (const auto& [chave, quantas] : linhas) {
        if (quantas > muitasLinhas) {
            GradeDaTela& cheia = daTela(documento_.grade(chave));
            cheia.painel->grade().modelo().setDados(nullptr);
            desvinculadas_.push_back(&cheia);
        }
    }
}

} // namespace tv
