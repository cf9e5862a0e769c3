#include "Saida.h"

#include "platform/Error.h"
#include "platform/Files.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace boletos {

namespace {

[[noreturn]] void falha(const std::filesystem::path& arquivo) {
    const int motivo = errno;
    const std::int32_t numero = motivo == ENOSPC ? tv::errc::diskFull : tv::errc::pathError;
    const std::string nome = arquivo.empty() ? "a saída padrão" : "'" + tv::files::toText(arquivo) + "'";
    throw tv::Error(numero, "boletos",
                    "Não foi possível escrever em " + nome + ": " + std::generic_category().message(motivo));
}

} // namespace

void Saida::Fecha::operator()(std::FILE* fluxo) const noexcept {
    if (fluxo != stdout) {
        static_cast<void>(std::fclose(fluxo));
    }
}

Saida::Saida(std::filesystem::path arquivo)
    : arquivo_(std::move(arquivo)) {
    if (arquivo_.empty()) {
        fluxo_.reset(stdout);
        return;
    }
    parcial_ = arquivo_;
    parcial_ += ".parcial";
    fluxo_.reset(std::fopen(parcial_.c_str(), "wb"));
    if (!fluxo_) {
        falha(arquivo_);
    }
}

Saida::~Saida() {
    if (fluxo_ && !parcial_.empty()) {
        fluxo_.reset();
        std::error_code ignorado;
        std::filesystem::remove(parcial_, ignorado);
    }
}

void Saida::escreve(std::string_view texto) {
    if (std::fwrite(texto.data(), 1, texto.size(), fluxo_.get()) != texto.size()) {
        falha(arquivo_);
    }
}

void Saida::descarrega() {
    if (std::fflush(fluxo_.get()) != 0) {
        falha(arquivo_);
    }
}

void Saida::termina() {
    descarrega();
    if (parcial_.empty()) {
        return;
    }
    fluxo_.reset();
    std::error_code erro;
    std::filesystem::rename(parcial_, arquivo_, erro);
    if (erro) {
        errno = erro.value();
        falha(arquivo_);
    }
}

} // namespace boletos
