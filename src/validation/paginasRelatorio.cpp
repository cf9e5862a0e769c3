#include "validation/paginasRelatorio.h"

namespace tv {

namespace {

constexpr std::string_view inicioDeBloco = R"(<section class="bloco")";
constexpr std::string_view inicioDeCorpo = "<body>";

/// Where the blocks begin.
std::vector<std::size_t> lugares(std::string_view html) {
    std::vector<std::size_t> achados;
    for (auto lugar = html.find(inicioDeBloco); lugar != std::string_view::npos;
         lugar = html.find(inicioDeBloco, lugar + inicioDeBloco.size())) {
        achados.push_back(lugar);
    }
    return achados;
}

} // namespace

std::vector<std::string> paginasRelatorio(std::string_view html) {
    const std::vector<std::size_t> blocos = lugares(html);
    const auto corpo = html.find(inicioDeCorpo);
    if (blocos.size() < 2 || corpo == std::string_view::npos) {
        return {std::string(html)};
    }
    const std::string_view cabeca = html.substr(0, corpo + inicioDeCorpo.size());
    std::vector<std::string> paginas;
    paginas.reserve(blocos.size());
    for (std::size_t i = 0; i < blocos.size(); ++i) {
        const auto inicio = i == 0 ? cabeca.size() : blocos[i];
        const auto fim = i + 1 < blocos.size() ? blocos[i + 1] : html.size();
        paginas.emplace_back(cabeca).append(html.substr(inicio, fim - inicio));
    }
    return paginas;
}

} // namespace tv
