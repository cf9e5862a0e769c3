#pragma once

#include "app/clsTramadorValidador.h"

#include <filesystem>
#include <memory>
#include <string_view>

namespace boletos {

/// The catalog of an application folder for the life of a command; its end closes the log.
class Catalogo {
public:
    /// Throws tv::Error with the reason when the catalog cannot be read.
    explicit Catalogo(const std::filesystem::path& pasta);
    ~Catalogo();
    Catalogo(const Catalogo&) = delete;
    Catalogo& operator=(const Catalogo&) = delete;

    const tv::Boletos& boletos() const noexcept { return tv::objTramadorValidador->getBoletos(); }
    /// The layout of that tag in any case. Throws tv::Error naming the layouts there are.
    std::shared_ptr<const tv::clsBoleto> layout(std::string_view tag) const;
    /// The same, if it has a validator. Throws tv::Error if it has none.
    std::shared_ptr<const tv::clsBoleto> layoutComValidador(std::string_view tag) const;
};

} // namespace boletos
