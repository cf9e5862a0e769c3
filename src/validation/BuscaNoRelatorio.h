#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// Finds texts in a report's page without laying it out: by findings, which the page marks with
/// `<tr id="o1">`, `<tr id="o2">` and so on. Case and the accents of the Latin letters make no difference,
/// and no match goes from one piece of text over a tag into the next.
class BuscaNoRelatorio {
public:
    explicit BuscaNoRelatorio(std::string_view html);

    /// How many findings the page marks.
    std::size_t ocorrencias() const noexcept { return fins_.size() - 1; }
    /// Numbers of the findings that hold the text, ascending; 0 stands for what comes before all of them.
    std::vector<std::size_t> lugares(std::string_view texto) const;

    /// A finding that a search has reached.
    struct Passo {
        std::size_t lugar = 0; ///< Its number, as `lugares` gives it.
        int numero = 0;        ///< Which of the findings with the text it is, from 1.
        int total = 0;         ///< How many those are.
    };
    /// Goes on to the next finding with the text, or to the one before, around the page's end. For another
    /// text than the last time the present finding may be the answer. Nothing when no finding holds it.
    std::optional<Passo> vai(std::string_view texto, bool paraTras);

    /// Name of the place in the page for a number that `lugares` gave.
    static std::string ancora(std::size_t lugar);

private:
    std::string texto_;             ///< As `paraBusca` gives it, piece by piece.
    std::vector<std::size_t> fins_; ///< Where the text of each number ends.
    std::string procurado_;
    std::vector<std::size_t> achados_; ///< Places of `procurado_`.
    std::size_t atual_ = 0;
};

/// What a reader sees of a piece of HTML, in the form in which texts are compared: small letters without
/// accents, a mark of its own in place of each tag.
std::string paraBusca(std::string_view html);
/// The same form of a plain text.
std::string textoParaBusca(std::string_view texto);

} // namespace tv
