#include "Catalogo.h"

#include "logging/Product.h"
#include "platform/Error.h"
#include "platform/Files.h"

namespace boletos {

Catalogo::Catalogo(const std::filesystem::path& pasta) {
    const std::string nome = tv::files::toText(tv::files::findNoCase(pasta, tv::product::catalog).filename());
    tv::objTramadorValidador = std::make_shared<tv::clsTramadorValidador>();
    try {
        if (!tv::objTramadorValidador->load(tv::files::toText(pasta), nome)) {
            throw tv::Error(tv::errc::fileNotFound, "boletos", tv::objTramadorValidador->lastReason());
        }
    } catch (const std::exception& falha) {
        const std::string motivo = falha.what();
        tv::objTramadorValidador.reset();
        throw tv::Error(tv::errc::invalidCall, "boletos",
                        "O catálogo '" + tv::files::toText(pasta / tv::product::catalog) +
                            "' não pôde ser lido: " + motivo);
    }
}

Catalogo::~Catalogo() {
    tv::objTramadorValidador.reset();
}

std::shared_ptr<const tv::clsBoleto> Catalogo::layout(std::string_view tag) const {
    const auto* encontrado = boletos().find(tag);
    if (encontrado == nullptr) {
        std::string conhecidos;
        for (const auto& boleto : boletos()) {
            conhecidos += (conhecidos.empty() ? "" : ", ") + boleto->getTag();
        }
        throw tv::Error(tv::errc::invalidCall, "boletos",
                        "O layout '" + std::string(tag) + "' não existe no catálogo. Layouts: " + conhecidos);
    }
    return *encontrado;
}

std::shared_ptr<const tv::clsBoleto> Catalogo::layoutComValidador(std::string_view tag) const {
    const std::shared_ptr<const tv::clsBoleto> encontrado = layout(tag);
    if (!encontrado->hasValidador()) {
        throw tv::Error(tv::errc::invalidCall, "boletos",
                        "O layout '" + std::string(tag) + "' não tem validador.");
    }
    return encontrado;
}

} // namespace boletos
