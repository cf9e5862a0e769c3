#pragma once

#include "platform/Clock.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// What unsaved work belongs to.
struct EtiquetaDeTrabalho {
    std::string janela;  ///< Class of the window ("frmTramador").
    std::string layout;  ///< Tag of the document's layout.
    std::string arquivo; ///< Path of the document (UTF-8); empty for one that was never saved.
    DateTime instante;   ///< When it was kept.
};

/// Unsaved work as it comes back from its file.
struct TrabalhoGuardado : EtiquetaDeTrabalho {
    std::string conteudo; ///< Only the window's class knows its form.
};

/// A content in pieces, one behind the other, which several snapshots may share.
using PecasDeTrabalho = std::vector<std::shared_ptr<const std::string>>;

/// The form of a file with unsaved work: its label, its content and a sum that tells whether both are whole.
namespace arquivoDeTrabalho {

/// The bytes in front of the content, and those behind it.
struct Moldura {
    std::string inicio;
    std::string fim;
};
Moldura moldura(const EtiquetaDeTrabalho& etiqueta, const PecasDeTrabalho& conteudo);

/// Throws Error 5 for bytes that are no such file, or not a whole one.
TrabalhoGuardado le(std::string_view bytes);

} // namespace arquivoDeTrabalho
} // namespace tv
