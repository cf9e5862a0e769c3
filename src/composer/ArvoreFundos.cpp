#include "composer/ArvoreFundos.h"

#include "composer/chavesArvore.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

namespace tv {
namespace {

/// The letters that have accents in Portuguese and its neighbours, and what they sort as.
constexpr auto acentos = std::to_array<std::pair<std::string_view, char>>(
    {{"á", 'a'}, {"à", 'a'}, {"â", 'a'}, {"ã", 'a'}, {"ä", 'a'}, {"ç", 'c'}, {"é", 'e'}, {"è", 'e'},
     {"ê", 'e'}, {"ë", 'e'}, {"í", 'i'}, {"ì", 'i'}, {"î", 'i'}, {"ï", 'i'}, {"ñ", 'n'}, {"ó", 'o'},
     {"ò", 'o'}, {"ô", 'o'}, {"õ", 'o'}, {"ö", 'o'}, {"ú", 'u'}, {"ù", 'u'}, {"û", 'u'}, {"ü", 'u'}});

std::string ordemDe(std::string_view texto) {
    std::string ordem;
    const std::string minusculo = text::foldKey(texto);
    for (std::string_view resto = minusculo; !resto.empty();) {
        const auto* acento = std::find_if(acentos.begin(), acentos.end(), [resto](const auto& um) {
            return text::startsWith(resto, um.first);
        });
        const bool simples = acento == acentos.end();
        ordem += simples ? resto.front() : acento->second;
        resto.remove_prefix(simples ? 1 : acento->first.size());
    }
    return ordem;
}

/// Equal texts stand in the order of creation.
bool antesDe(const NoArvore* a, const NoArvore* b) {
    return std::tie(a->ordem, a->Index) < std::tie(b->ordem, b->Index);
}

void penduraOrdenado(NoArvore& pai, NoArvore& no) {
    pai.filhos.insert(std::upper_bound(pai.filhos.begin(), pai.filhos.end(), &no, antesDe), &no);
}

std::string chaveDoIndice(std::string_view chaveGrade, std::int32_t rowID) {
    return std::string(chaveGrade) + "," + std::to_string(rowID);
}

std::string indiceDoFundo(std::string_view chave) {
    return chaveDoIndice(chaves::gradeDoFundo(chave), chaves::rowIDFeito(chave));
}

bool isFundo(std::string_view chave) {
    return chaves::tipo(chave) == chaves::TipoNo::Fundo;
}

} // namespace

const NoArvore& ArvoreFundos::add(std::string_view chavePai, std::string_view chave, std::string_view texto,
                                  std::string_view imagem) {
    NoArvore* const pai = chavePai.empty() ? nullptr : &item(chavePai);
    auto no = std::make_shared<NoArvore>();
    no->chave = chave;
    no->texto = texto;
    no->imagem = imagem;
    no->pai = pai;
    no->Index = nos_.Count() + 1;
    no->ordem = ordemDe(texto);
    NoArvore& novo = *no;
    nos_.Add(std::move(no), chave);
    if (pai != nullptr) {
        penduraOrdenado(*pai, novo);
    }
    if (isFundo(chave)) {
        fundos_.try_emplace(indiceDoFundo(chave), &novo);
    }
    avisa(Mudanca::Tipo::Incluido, &novo);
    return novo;
}

const NoArvore* ArvoreFundos::find(std::string_view chave) const {
    const std::shared_ptr<NoArvore>* no = nos_.find(chave);
    return no == nullptr ? nullptr : no->get();
}

const NoArvore* ArvoreFundos::fundo(std::string_view chaveGrade, std::int32_t rowID) const noexcept {
    const auto achado = fundos_.find(chaveDoIndice(chaveGrade, rowID));
    return achado == fundos_.end() ? nullptr : achado->second;
}

NoArvore& ArvoreFundos::item(std::string_view chave) {
    return *nos_.Item(chave);
}

void ArvoreFundos::setTexto(std::string_view chave, std::string_view texto) {
    NoArvore& no = item(chave);
    if (no.texto == texto) {
        return;
    }
    if (no.pai != nullptr) {
        std::erase(no.pai->filhos, &no);
    }
    no.texto = texto;
    no.ordem = ordemDe(texto);
    if (no.pai != nullptr) {
        penduraOrdenado(*no.pai, no);
    }
    avisa(Mudanca::Tipo::Renomeado, &no);
}

void ArvoreFundos::expande(std::string_view chave, bool expandido) {
    NoArvore& no = item(chave);
    if (no.expandido != expandido) {
        no.expandido = expandido;
        avisa(Mudanca::Tipo::Expandido, &no);
    }
}

void ArvoreFundos::remove(std::string_view chave) {
    const std::shared_ptr<NoArvore> no = nos_.Item(chave);
    while (!no->filhos.empty()) {
        remove(std::string(no->filhos.back()->chave));
    }
    if (selecionado_ == no.get()) {
        seleciona({});
    }
    if (no->pai != nullptr) {
        std::erase(no->pai->filhos, no.get());
    }
    if (isFundo(no->chave)) {
        fundos_.erase(indiceDoFundo(no->chave));
    }
    nos_.Remove(chave);
    std::size_t Index = 0;
    for (const std::shared_ptr<NoArvore>& restante : nos_) {
        restante->Index = ++Index;
    }
    avisa(Mudanca::Tipo::Removido, no.get());
}

void ArvoreFundos::clear() {
    selecionado_ = nullptr;
    fundos_.clear();
    nos_.clear();
    avisa(Mudanca::Tipo::Limpa, nullptr);
}

const NoArvore* ArvoreFundos::raiz() const noexcept {
    return nos_.empty() ? nullptr : nos_.begin()->get();
}

const NoArvore* ArvoreFundos::primeiroFilho() const noexcept {
    const NoArvore* no = raiz();
    return no == nullptr || no->filhos.empty() ? nullptr : no->filhos.front();
}

std::string_view ArvoreFundos::chaveSelecionada() const noexcept {
    return selecionado_ == nullptr ? std::string_view() : selecionado_->chave;
}

void ArvoreFundos::seleciona(std::string_view chave) {
    NoArvore* const no = chave.empty() ? nullptr : &item(chave);
    if (no != selecionado_) {
        selecionado_ = no;
        avisa(Mudanca::Tipo::Selecionado, no);
    }
}

std::size_t ArvoreFundos::posicao(const NoArvore& no) {
    if (no.pai == nullptr) {
        return 0;
    }
    const std::vector<NoArvore*>& irmaos = no.pai->filhos;
    return static_cast<std::size_t>(std::lower_bound(irmaos.begin(), irmaos.end(), &no, antesDe) -
                                    irmaos.begin());
}

void ArvoreFundos::avisa(Mudanca::Tipo tipo, const NoArvore* no) const {
    if (ouvinte_) {
        ouvinte_({tipo, no});
    }
}

} // namespace tv
