#pragma once

#include "platform/XmlDocument.h"

#include <exception>
#include <filesystem>
#include <future>
#include <string>

namespace tv {

/// Loads a document and applies a formula stylesheet to it in a thread of its own, from the construction on,
/// so that the second stage's work is done beside the first one's. The thread logs nothing and takes no
/// turns; what went wrong in it is told when its result is asked for. The destructor waits for it.
class FormulaAoLado {
public:
    /// `std::launch::deferred` does the work in the thread that asks first instead.
    FormulaAoLado(std::filesystem::path arquivo, std::filesystem::path folha,
                  std::launch modo = std::launch::async);

    /// Waits, and gives the loaded document; empty when it could not be loaded (`parseError` tells why).
    const XmlDocument& documento();

    /// Waits, and gives the stylesheet's output as text in UTF-8, as the routine
    /// "biblioteca.transformStream": a failure is logged and gives the empty text, as an empty document does.
    /// `motivo` receives why the stylesheet gave nothing (it does not load, or the transform failed),
    /// otherwise the empty text.
    std::string saida(std::string& motivo);

private:
    struct Feito {
        XmlDocument documento;
        std::string saida;
        std::string motivo;
        std::exception_ptr falha;
    };
    static Feito faz(const std::filesystem::path& arquivo, const std::filesystem::path& folha);
    static void aplica(const std::filesystem::path& folha, Feito& feito);
    const Feito& espera();

    std::future<Feito> emCurso_;
    Feito feito_;
};

} // namespace tv
