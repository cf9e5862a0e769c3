#include "app/Aplicacao.h"

#include "logging/Product.h"
#include "platform/Files.h"

#include <optional>
#include <utility>

namespace tv::aplicacao {

namespace {

struct Estado {
    std::optional<std::filesystem::path> pasta;
    std::string titulo{product::title};
};

Estado& estado() {
    static Estado unico;
    return unico;
}

} // namespace

std::filesystem::path pasta() {
    return estado().pasta ? *estado().pasta : files::executableFolder();
}

void setPasta(std::filesystem::path pasta) {
    estado().pasta = std::move(pasta);
}

std::filesystem::path arquivo(std::string_view nome) {
    return files::findNoCase(pasta(), nome);
}

std::string titulo() {
    return estado().titulo;
}

void setTitulo(std::string titulo) {
    estado().titulo = std::move(titulo);
}

} // namespace tv::aplicacao
