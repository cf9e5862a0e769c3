#include "editor/General.h"

#include "logging/Routine.h"
#include "platform/Error.h"

#include <utility>

namespace tv::General {

namespace {

std::u16string pedaco(std::u16string_view texto, std::int64_t inicio, std::size_t tamanho) {
    if (inicio < 1) {
        throw Error(errc::invalidCall, "General.Change", "Posição inválida");
    }
    const auto de = static_cast<std::size_t>(inicio - 1);
    return de >= texto.size() ? std::u16string{} : std::u16string(texto.substr(de, tamanho));
}

} // namespace

std::u16string Change(std::u16string_view a, std::u16string_view b, std::int32_t posicao) {
    return guarded("EditorXML.Change", std::u16string{}, [&] {
        if (a.size() > b.size()) {
            std::swap(a, b);
        }
        const std::size_t d = b.size() - a.size();
        return pedaco(b, std::int64_t{posicao} - static_cast<std::int64_t>(d), d);
    });
}

} // namespace tv::General
