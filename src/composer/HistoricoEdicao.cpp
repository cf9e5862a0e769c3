#include "composer/HistoricoEdicao.h"

#include "platform/Error.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace tv {
namespace {

const PassoDeEdicao& passa(std::vector<PassoDeEdicao>& de, std::vector<PassoDeEdicao>& para) {
    if (de.empty()) {
        throw Error(errc::invalidCall, "HistoricoEdicao", "Não há edição para desfazer ou refazer");
    }
    para.push_back(std::move(de.back()));
    de.pop_back();
    return para.back();
}

} // namespace

void HistoricoEdicao::registra(PassoDeEdicao passo) {
    if (!passo.celulas.empty()) {
        feitos_.push_back(std::move(passo));
        desfeitos_.clear();
    }
}

const PassoDeEdicao& HistoricoEdicao::desfaz() {
    return passa(feitos_, desfeitos_);
}

const PassoDeEdicao& HistoricoEdicao::refaz() {
    return passa(desfeitos_, feitos_);
}

void HistoricoEdicao::esquece(const std::string& chaveGrade, const std::vector<std::size_t>& linhas) {
    const std::unordered_set<std::size_t> idas(linhas.begin(), linhas.end());
    for (auto* lado : {&feitos_, &desfeitos_}) {
        for (PassoDeEdicao& passo : *lado) {
            if (passo.chaveGrade == chaveGrade) {
                std::erase_if(passo.celulas,
                              [&](const CelulaEditada& celula) { return idas.contains(celula.linha); });
            }
        }
        std::erase_if(*lado, [](const PassoDeEdicao& passo) { return passo.celulas.empty(); });
    }
}

void HistoricoEdicao::limpa() {
    feitos_.clear();
    desfeitos_.clear();
}

} // namespace tv
