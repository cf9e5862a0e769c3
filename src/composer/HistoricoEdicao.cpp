#include "composer/HistoricoEdicao.h"

#include "platform/Error.h"

#include <utility>

namespace tv {
namespace {

PassoDeEdicao& passa(std::vector<PassoDeEdicao>& de, std::vector<PassoDeEdicao>& para) {
    if (de.empty()) {
        throw Error(errc::invalidCall, "HistoricoEdicao", "Não há edição para desfazer ou refazer");
    }
    para.push_back(std::move(de.back()));
    de.pop_back();
    return para.back();
}

} // namespace

void HistoricoEdicao::registra(PassoDeEdicao passo) {
    if (!passo.celulas.empty() || !passo.incluidas.empty() || !passo.removidas.empty()) {
        feitos_.push_back(std::move(passo));
        desfeitos_.clear();
    }
}

PassoDeEdicao& HistoricoEdicao::desfaz() {
    return passa(feitos_, desfeitos_);
}

PassoDeEdicao& HistoricoEdicao::refaz() {
    return passa(desfeitos_, feitos_);
}

void HistoricoEdicao::limpa() {
    feitos_.clear();
    desfeitos_.clear();
}

} // namespace tv
