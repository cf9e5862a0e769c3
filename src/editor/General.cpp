#include "editor/General.h"

#include "platform/Error.h"

#include <algorithm>

namespace tv::General {

std::u16string Change(std::u16string_view a, std::u16string_view b, std::int32_t posicao) {
    if (a.size() > b.size()) {
        std::swap(a, b);
    }
    const std::size_t d = b.size() - a.size();
    const std::int64_t inicio = std::int64_t{posicao} - static_cast<std::int64_t>(d);
    if (inicio < 1) {
        throw Error(errc::invalidCall, "General.Change", "Posição inválida");
    }
    const auto de = static_cast<std::size_t>(inicio - 1);
    return de >= b.size() ? std::u16string{} : std::u16string(b.substr(de, d));
}

} // namespace tv::General
