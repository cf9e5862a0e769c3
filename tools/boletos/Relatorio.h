#pragma once

#include "platform/Error.h"
#include "validation/clsValidador.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace boletos {

/// What the check of one file gave.
struct ArquivoValidado {
    std::filesystem::path arquivo;
    bool valido = false;   ///< No finding, and every check could be made.
    bool ilegivel = false; ///< The file could not be read at all.
    std::shared_ptr<const tv::Resultados> resultados;
    std::vector<std::string> avisos; ///< Why checks could not be made.
    std::chrono::duration<double> tempo{};

    /// Every check could be made, whatever it found.
    bool verificado() const noexcept { return !ilegivel && avisos.empty(); }
};

/// The report of one file could not be made or written; those of the others still can.
class FalhaDoRelatorio : public tv::Error {
public:
    using tv::Error::Error;
};

/// A form in which the results of a call are written. Files are told in the order of the arguments, each as
/// soon as it has been checked.
class Relatorio {
public:
    virtual ~Relatorio() = default;
    /// Throws FalhaDoRelatorio for this file alone, and any other tv::Error when nothing more can be written.
    virtual void arquivo(const ArquivoValidado& validado) = 0;
    /// After the last file.
    virtual void termina() = 0;
};

/// What a report needs to know besides the files.
struct Contexto {
    std::shared_ptr<const tv::clsBoleto> layout;
    std::filesystem::path pasta; ///< The application folder.
    std::filesystem::path saida; ///< File or folder named by --saida; empty for standard output.
    std::vector<std::filesystem::path> arquivos;
};

/// Lines for people: a file, its findings, a summary at the end.
std::unique_ptr<Relatorio> relatorioTexto(const Contexto& contexto);
/// JSON Lines in UTF-8, an object a file.
std::unique_ptr<Relatorio> relatorioJson(const Contexto& contexto);
/// JUnit XML for build servers, a test case a file.
std::unique_ptr<Relatorio> relatorioJunit(const Contexto& contexto);
/// The report document of each file in ISO-8859-1, on standard output or as a file each.
std::unique_ptr<Relatorio> relatorioXml(const Contexto& contexto);
/// The same through the stylesheet XSD/resultado.xsl, in UTF-8.
std::unique_ptr<Relatorio> relatorioHtml(const Contexto& contexto);

/// Name of a file as every format can hold it: UTF-8 without control characters.
std::string nomeVisivel(const std::filesystem::path& arquivo);
/// Name of a finding's field, or the empty text for a finding without a path.
std::string campoDe(const tv::clsResultado& resultado);

} // namespace boletos
