#include "editor/PosicaoAchado.h"

#include "platform/Error.h"
#include "platform/text.h"

namespace tv {

std::int32_t numeroInicial(std::string_view texto) {
    return text::toInt32(text::lenientNumber(texto));
}

SelecaoTexto selecaoDoAchado(std::int32_t inicioDaLinha, std::int32_t coluna, std::int32_t tamanho) {
    if (inicioDaLinha == -1) {
        throw Error(errc::typeMismatch, "frmEditor.grid_AfterRowActivate", "Tipos incompatíveis");
    }
    const std::int64_t inicio = std::int64_t{inicioDaLinha} + coluna - tamanho - 1;
    if (inicio <= 0) {
        return {1, 0, false};
    }
    return {text::toInt32(static_cast<double>(inicio)), tamanho};
}

} // namespace tv
