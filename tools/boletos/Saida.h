#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

namespace boletos {

/// Where a report goes: standard output, or a file that appears whole under its name when the report is
/// finished. What is no plain file (a device, a pipe) is written as it is.
class Saida {
public:
    /// Standard output for an empty path. Throws tv::Error 61, 70, 75 or 76 when the file cannot be created.
    explicit Saida(std::filesystem::path arquivo);
    ~Saida();
    Saida(const Saida&) = delete;
    Saida& operator=(const Saida&) = delete;

    /// Throws tv::Error as the constructor does when the text cannot be written.
    void escreve(std::string_view texto);
    /// Hands what was written so far on to a waiting reader.
    void descarrega();
    /// Ends the report; a file takes its name now.
    void termina();

private:
    struct Fecha {
        void operator()(std::FILE* fluxo) const noexcept;
    };
    std::filesystem::path arquivo_;
    std::filesystem::path parcial_; // where the text stands until it is whole; empty when it goes out at once
    std::unique_ptr<std::FILE, Fecha> fluxo_;
};

/// Files that no report may take the place of.
class Protegidos {
public:
    explicit Protegidos(const std::vector<std::filesystem::path>& arquivos);
    /// Throws tv::Error 58 when a report of that path would replace one of the files.
    void confere(const std::filesystem::path& saida) const;

private:
    std::set<std::filesystem::path> lugares_;
};

} // namespace boletos
