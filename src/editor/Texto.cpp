#include "editor/Texto.h"

#include <algorithm>

namespace tv {

/// A node of a height-balanced tree: a leaf shows a slice of a shared buffer, an inner node joins two texts.
struct Texto::No {
    std::size_t tamanho = 0;
    int altura = 0;
    Raiz esquerda;
    Raiz direita;
    std::shared_ptr<const std::u16string> base; ///< Of a leaf; null for an inner node.
    std::size_t inicio = 0;
};

Texto::Texto(std::u16string texto) {
    const std::size_t quantos = texto.size();
    if (quantos > 0) {
        raiz_ = folha(std::make_shared<const std::u16string>(std::move(texto)), 0, quantos);
    }
}

int Texto::altura(const Raiz& no) noexcept {
    return no ? no->altura : -1;
}

std::size_t Texto::tamanho(const Raiz& no) noexcept {
    return no ? no->tamanho : 0;
}

std::size_t Texto::tamanho() const noexcept {
    return tamanho(raiz_);
}

Texto::Raiz Texto::folha(std::shared_ptr<const std::u16string> base, std::size_t inicio,
                         std::size_t tamanho) {
    auto no = std::make_shared<No>();
    no->tamanho = tamanho;
    no->base = std::move(base);
    no->inicio = inicio;
    return no;
}

Texto::Raiz Texto::par(Raiz esquerda, Raiz direita) {
    auto no = std::make_shared<No>();
    no->tamanho = esquerda->tamanho + direita->tamanho;
    no->altura = std::max(esquerda->altura, direita->altura) + 1;
    no->esquerda = std::move(esquerda);
    no->direita = std::move(direita);
    return no;
}

/// Joins two trees whose heights differ by two at most.
Texto::Raiz Texto::equilibra(const Raiz& esquerda, const Raiz& direita) {
    if (altura(esquerda) > altura(direita) + 1) {
        const Raiz& meio = esquerda->direita;
        if (altura(esquerda->esquerda) >= altura(meio)) {
            return par(esquerda->esquerda, par(meio, direita));
        }
        return par(par(esquerda->esquerda, meio->esquerda), par(meio->direita, direita));
    }
    if (altura(direita) > altura(esquerda) + 1) {
        const Raiz& meio = direita->esquerda;
        if (altura(direita->direita) >= altura(meio)) {
            return par(par(esquerda, meio), direita->direita);
        }
        return par(par(esquerda, meio->esquerda), par(meio->direita, direita->direita));
    }
    return par(esquerda, direita);
}

Texto::Raiz Texto::junta(const Raiz& esquerda, const Raiz& direita) {
    if (!esquerda || !direita) {
        return esquerda ? esquerda : direita;
    }
    if (altura(esquerda) > altura(direita) + 1) {
        return equilibra(esquerda->esquerda, junta(esquerda->direita, direita));
    }
    if (altura(direita) > altura(esquerda) + 1) {
        return equilibra(junta(esquerda, direita->esquerda), direita->direita);
    }
    return par(esquerda, direita);
}

std::pair<Texto::Raiz, Texto::Raiz> Texto::parte(const Raiz& no, std::size_t lugar) {
    if (lugar == 0 || !no) {
        return {nullptr, no};
    }
    if (lugar >= no->tamanho) {
        return {no, nullptr};
    }
    if (no->base) {
        return {folha(no->base, no->inicio, lugar), folha(no->base, no->inicio + lugar, no->tamanho - lugar)};
    }
    const std::size_t divisa = no->esquerda->tamanho;
    if (lugar < divisa) {
        auto [antes, depois] = parte(no->esquerda, lugar);
        return {std::move(antes), junta(depois, no->direita)};
    }
    auto [antes, depois] = parte(no->direita, lugar - divisa);
    return {junta(no->esquerda, antes), std::move(depois)};
}

Texto Texto::insere(std::size_t inicio, std::u16string trecho) const {
    const auto [antes, depois] = parte(raiz_, inicio);
    return Texto(junta(junta(antes, Texto(std::move(trecho)).raiz_), depois));
}

Texto Texto::remove(std::size_t inicio, std::size_t quantos) const {
    const std::size_t de = std::min(inicio, tamanho());
    const auto [antes, resto] = parte(raiz_, de);
    return Texto(junta(antes, parte(resto, std::min(quantos, tamanho() - de)).second));
}

/// Appends the units from `inicio` up to `fim`, both inside of the node.
void Texto::copia(const Raiz& no, std::size_t inicio, std::size_t fim, std::u16string& destino) {
    if (inicio >= fim) {
        return;
    }
    if (no->base) {
        destino.append(*no->base, no->inicio + inicio, fim - inicio);
        return;
    }
    const std::size_t divisa = no->esquerda->tamanho;
    copia(no->esquerda, std::min(inicio, divisa), std::min(fim, divisa), destino);
    copia(no->direita, std::max(inicio, divisa) - divisa, std::max(fim, divisa) - divisa, destino);
}

std::u16string Texto::trecho(std::size_t inicio, std::size_t quantos) const {
    std::u16string resultado;
    const std::size_t de = std::min(inicio, tamanho());
    const std::size_t copiados = std::min(quantos, tamanho() - de);
    resultado.reserve(copiados);
    copia(raiz_, de, de + copiados, resultado);
    return resultado;
}

} // namespace tv
