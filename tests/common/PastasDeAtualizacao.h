#pragma once

#include "platform/Files.h"
#include "platform/ScratchFolder.h"

#include <filesystem>
#include <map>
#include <string>

namespace tv::test {

/// Files below a folder by their names from there, with their content.
using Arquivos = std::map<std::string, std::string>;

inline Arquivos arquivosDe(const std::filesystem::path& pasta) {
    Arquivos arquivos;
    for (const auto& item : std::filesystem::recursive_directory_iterator(pasta)) {
        if (item.is_regular_file()) {
            arquivos[files::toText(item.path().lexically_relative(pasta))] = files::readAll(item.path());
        }
    }
    return arquivos;
}

/// An application folder with an empty folder XSD, and a folder with the files of an update.
class PastasDeAtualizacao {
public:
    PastasDeAtualizacao() {
        std::filesystem::create_directories(aplicacao() / "XSD");
        std::filesystem::create_directory(origem());
    }

    std::filesystem::path aplicacao() const { return pasta_ / "aplicacao"; }
    std::filesystem::path origem() const { return pasta_ / "origem"; }
    void instalado(const std::string& nome, const std::string& bytes) const {
        files::writeAll(aplicacao() / nome, bytes);
    }
    void novo(const std::string& nome, const std::string& bytes) const {
        files::writeAll(origem() / nome, bytes);
    }
    Arquivos conteudo() const { return arquivosDe(aplicacao()); }
    Arquivos sobras() const { return arquivosDe(origem()); }

    /// From now on nobody, whatever their rights, can put a file into the folder XSD.
    void trancaEsquemas() const {
        std::filesystem::remove_all(aplicacao() / "XSD");
        std::filesystem::create_directory_symlink("/proc/self/fdinfo", aplicacao() / "XSD");
    }

private:
    ScratchFolder pasta_;
};

/// A folder on another file system than the temporary ones, where the machine has one.
class ForaDoDisco {
public:
    ForaDoDisco()
        : path_(std::filesystem::path("/dev/shm") / ("tv-fora-" + std::to_string(::getpid()))) {
        std::filesystem::create_directory(path_);
    }
    ~ForaDoDisco() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ForaDoDisco(const ForaDoDisco&) = delete;
    ForaDoDisco& operator=(const ForaDoDisco&) = delete;
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace tv::test
