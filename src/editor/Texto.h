#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace tv {

/// A text in UTF-16 that never changes. Texts that come from one another share what they have in common, so
/// that a thousand states of a large document cost little more than one: an edit takes a few nodes and the
/// piece that it brings in.
class Texto {
public:
    Texto() = default;
    explicit Texto(std::u16string texto);
    explicit Texto(std::u16string_view texto)
        : Texto(std::u16string(texto)) {}
    explicit Texto(const char16_t* texto)
        : Texto(std::u16string(texto)) {}

    /// UTF-16 units.
    std::size_t tamanho() const noexcept;
    bool vazio() const noexcept { return tamanho() == 0; }

    /// The text with `trecho` put in before position `inicio` (from 0; beyond the end it goes to the end).
    Texto insere(std::size_t inicio, std::u16string trecho) const;
    /// The text without the `quantos` units from `inicio`; what lies beyond the end counts for nothing.
    Texto remove(std::size_t inicio, std::size_t quantos) const;

    /// `quantos` units from `inicio`; shorter where the text ends before.
    std::u16string trecho(std::size_t inicio, std::size_t quantos) const;
    std::u16string inteiro() const { return trecho(0, tamanho()); }

    bool operator==(const Texto& outro) const { return inteiro() == outro.inteiro(); }

private:
    struct No;
    using Raiz = std::shared_ptr<const No>;

    explicit Texto(Raiz raiz)
        : raiz_(std::move(raiz)) {}
    static int altura(const Raiz& no) noexcept;
    static std::size_t tamanho(const Raiz& no) noexcept;
    static Raiz folha(std::shared_ptr<const std::u16string> base, std::size_t inicio, std::size_t tamanho);
    static Raiz par(Raiz esquerda, Raiz direita);
    static Raiz equilibra(const Raiz& esquerda, const Raiz& direita);
    static Raiz junta(const Raiz& esquerda, const Raiz& direita);
    static std::pair<Raiz, Raiz> parte(const Raiz& no, std::size_t lugar);
    static void copia(const Raiz& no, std::size_t inicio, std::size_t fim, std::u16string& destino);

    Raiz raiz_;
};

} // namespace tv
