#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tv {

/// A text that only ever grows, and moments of it.
///
/// The key text of a run grows from fund to fund and from file to file, and every finding shows all of it.
/// The findings therefore share one buffer, and each keeps only how long the text was at its moment.
class TextoAcumulado {
public:
    /// The text as it was at one moment. Cheap to copy.
    class Momento {
    public:
        Momento() = default;
        explicit Momento(std::string_view texto)
            : base_(std::make_shared<const std::string>(texto))
            , tamanho_(texto.size()) {}

        /// Valid as long as the moment, and until the text grows again.
        std::string_view texto() const noexcept {
            return base_ ? std::string_view(*base_).substr(0, tamanho_) : std::string_view();
        }

    private:
        friend class TextoAcumulado;
        Momento(std::shared_ptr<const std::string> base, std::size_t tamanho) noexcept
            : base_(std::move(base))
            , tamanho_(tamanho) {}
        std::shared_ptr<const std::string> base_;
        std::size_t tamanho_ = 0;
    };

    void acrescenta(std::string_view texto) { texto_->append(texto); }
    Momento agora() const { return {texto_, texto_->size()}; }
    std::size_t tamanho() const noexcept { return texto_->size(); }

    /// A moment of `parte`, whose text stands in this one behind `antes` bytes, as the moment of this one
    /// that it was. Any other moment comes back as it is.
    Momento mesmoMomento(const Momento& momento, const TextoAcumulado& parte, std::size_t antes) const {
        return momento.base_ == parte.texto_ ? Momento(texto_, antes + momento.tamanho_) : momento;
    }

private:
    std::shared_ptr<std::string> texto_ = std::make_shared<std::string>();
};

} // namespace tv
