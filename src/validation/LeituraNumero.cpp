#include "validation/LeituraNumero.h"

#include "platform/Error.h"
#include "platform/text.h"

#include <cmath>
#include <string>

namespace tv {

double leNumero(const XmlNode& no, std::string_view campo) {
    const XmlNode filho = no.child(campo);
    if (!filho) {
        throw Error(errc::objectNotSet, "clsValidador", "Falta o campo " + std::string(campo));
    }
    std::string buffer;
    const std::string_view texto = filho.text(buffer);
    const std::optional<double> valor = text::documentNumber(texto);
    if (!valor) {
        throw Error(errc::typeMismatch, "clsValidador",
                    "O campo " + std::string(campo) + " não é um número: " + std::string(texto));
    }
    return *valor;
}

double confere(double valor) {
    if (!std::isfinite(valor)) {
        throw Error(errc::overflow, "clsValidador", "Estouro na soma dos valores");
    }
    return valor;
}

} // namespace tv
