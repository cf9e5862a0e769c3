#pragma once

#include "common/clsArquivo.h"
#include "platform/Clock.h"
#include "platform/KeyedCollection.h"

#include <filesystem>
#include <string>

namespace tv {

/// The moves of one update: a new catalog and new schemas from a folder of the user's choice into the
/// application folder, the old files kept under dated names. File names count without regard to case.
class AtualizacaoArquivos {
public:
    /// The dated names bear the present moment. `raiz` is the root of the drive on which `desfaz` works.
    explicit AtualizacaoArquivos(std::filesystem::path aplicacao, std::filesystem::path raiz = "/");

    /// Takes the catalog and then all schemas and stylesheets of `origem`, by name; other files stay there.
    /// Throws the Error of the first move that fails; what was moved before stays moved.
    void instala(const std::filesystem::path& origem);

    /// Puts the old files back, in the order in which they were set aside, under their names as they were
    /// recorded: that is at the root of the drive, not in the application folder. So this throws Error 53 at
    /// the first file unless the application stands at the root; the backups are there for a person to put
    /// back.
    void desfaz() const;

    /// The files set aside so far, in the order of the moves.
    const KeyedCollection<clsArquivo>& arquivos() const noexcept { return arquivos_; }

private:
    void instalaCatalogo(const std::filesystem::path& novo);
    void instalaEsquema(const std::filesystem::path& novo);
    void registra(clsArquivo arquivo);

    std::filesystem::path aplicacao_;
    std::filesystem::path raiz_;
    std::string sufixo_; ///< "_YYYYMMDD_HHMMSS"
    KeyedCollection<clsArquivo> arquivos_;
};

} // namespace tv
