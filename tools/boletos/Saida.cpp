#include "Saida.h"

#include "platform/Error.h"
#include "platform/Files.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace boletos {

namespace {

std::string motivoDe(int numero) {
    switch (numero) {
    case ENOSPC:
        return "não há mais espaço no disco";
    case EPIPE:
        return "quem lia a saída já terminou";
    case ENOENT:
        return "a pasta não existe";
    case EACCES:
    case EPERM:
    case EROFS:
        return "sem permissão para escrever";
    case EISDIR:
        return "é uma pasta";
    case ENOTDIR:
        return "uma parte do caminho não é uma pasta";
    case ENAMETOOLONG:
        return "o nome é longo demais";
    default:
        return std::generic_category().message(numero);
    }
}

std::int32_t numeroDe(int numero) {
    switch (numero) {
    case ENOSPC:
        return tv::errc::diskFull;
    case ENOENT:
    case ENOTDIR:
        return tv::errc::pathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return tv::errc::permissionDenied;
    default:
        return tv::errc::pathError;
    }
}

[[noreturn]] void falha(const std::filesystem::path& arquivo, int numero) {
    const std::string nome = arquivo.empty() ? "na saída padrão" : "em '" + tv::files::toText(arquivo) + "'";
    throw tv::Error(numeroDe(numero), "boletos",
                    "Não foi possível escrever " + nome + ": " + motivoDe(numero) + ".");
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
    std::error_code ignorado;
    const auto tipo = std::filesystem::status(arquivo_, ignorado).type();
    if (tipo == std::filesystem::file_type::directory) {
        falha(arquivo_, EISDIR);
    }
    const bool existe = std::filesystem::exists(std::filesystem::file_status(tipo));
    if (existe && tipo != std::filesystem::file_type::regular) {
        fluxo_.reset(std::fopen(arquivo_.c_str(), "wb"));
    } else {
        if (existe) {
            arquivo_ = std::filesystem::canonical(arquivo_, ignorado); // a link stays, its file is replaced
        }
        parcial_ = arquivo_;
        parcial_ += ".parcial";
        fluxo_.reset(std::fopen(parcial_.c_str(), "wb"));
    }
    if (!fluxo_) {
        parcial_.clear();
        falha(arquivo_, errno);
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
        falha(arquivo_, errno);
    }
}

void Saida::descarrega() {
    if (std::fflush(fluxo_.get()) != 0) {
        falha(arquivo_, errno);
    }
}

void Saida::termina() {
    descarrega();
    if (parcial_.empty()) {
        return;
    }
    std::error_code erro;
    std::filesystem::rename(parcial_, arquivo_, erro);
    if (erro) {
        falha(arquivo_, erro.value());
    }
    fluxo_.reset(); // what is left to the destructor has happened
}

Protegidos::Protegidos(const std::vector<std::filesystem::path>& arquivos) {
    std::error_code erro;
    for (const std::filesystem::path& arquivo : arquivos) {
        const std::filesystem::path lugar = std::filesystem::canonical(arquivo, erro);
        if (!erro) {
            lugares_.insert(lugar);
        }
    }
}

void Protegidos::confere(const std::filesystem::path& saida) const {
    std::error_code erro;
    const std::filesystem::path lugar = std::filesystem::canonical(saida, erro);
    if (!erro && lugares_.contains(lugar)) {
        throw tv::Error(tv::errc::fileExists, "boletos",
                        "O relatório '" + tv::files::toText(saida) +
                            "' ficaria no lugar de um arquivo a verificar; indique outro lugar em --saida.");
    }
}

} // namespace boletos
