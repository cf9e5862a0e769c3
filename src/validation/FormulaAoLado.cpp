#include "validation/FormulaAoLado.h"

#include "logging/Routine.h"
#include "platform/XmlTransform.h"

#include <utility>

namespace tv {

FormulaAoLado::FormulaAoLado(std::filesystem::path arquivo, std::filesystem::path folha, std::launch modo)
    : emCurso_(std::async(modo, faz, std::move(arquivo), std::move(folha))) {}

FormulaAoLado::Feito FormulaAoLado::faz(const std::filesystem::path& arquivo,
                                        const std::filesystem::path& folha) {
    Feito feito;
    if (feito.documento.load(arquivo)) {
        try {
            aplica(folha, feito);
        } catch (...) {
            feito.falha = std::current_exception();
        }
    }
    return feito;
}

void FormulaAoLado::aplica(const std::filesystem::path& folha, Feito& feito) {
    const auto transformacao = XmlTransform::load(folha, feito.motivo);
    if (transformacao) {
        try {
            feito.saida = transformacao->apply(feito.documento);
        } catch (const Error& falha) {
            feito.motivo = falha.description();
            throw;
        }
    }
}

const FormulaAoLado::Feito& FormulaAoLado::espera() {
    if (emCurso_.valid()) {
        feito_ = emCurso_.get();
    }
    return feito_;
}

const XmlDocument& FormulaAoLado::documento() {
    return espera().documento;
}

std::string FormulaAoLado::saida(std::string& motivo) {
    motivo.clear();
    return guarded("biblioteca.transformStream", std::string(), [&] {
        const Feito& feito = espera();
        motivo = feito.motivo;
        if (feito.falha) {
            std::rethrow_exception(feito.falha);
        }
        return feito.saida;
    });
}

} // namespace tv
