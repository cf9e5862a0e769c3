#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace boletos {

/// Where a report goes: standard output, or a file that appears whole under its name when the report is
/// finished.
class Saida {
public:
    /// Standard output for an empty path. Throws tv::Error when the file cannot be created.
    explicit Saida(std::filesystem::path arquivo);
    ~Saida();
    Saida(const Saida&) = delete;
    Saida& operator=(const Saida&) = delete;

    /// Throws tv::Error 61 or 75 when the text cannot be written.
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
    std::filesystem::path parcial_;
    std::unique_ptr<std::FILE, Fecha> fluxo_;
};

} // namespace boletos
