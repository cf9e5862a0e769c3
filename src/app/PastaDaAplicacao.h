#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Which folder is the application folder of a program that was just started.
namespace tv::pastaDaAplicacao {

/// What the choice stands on.
struct Lugares {
    std::filesystem::path executavel; ///< The folder of the executable.
    std::filesystem::path dados; ///< Where the user's programs keep their data; empty when he has no home.
};

/// Those of the running process.
Lugares lugares();

struct Escolha {
    std::filesystem::path pasta;        ///< The application folder.
    std::filesystem::path distribuicao; ///< What it is made from; empty when it is used as it stands.
};

/// The executable's folder when it holds the catalog and takes files. Otherwise a folder of the user's, made
/// from what was installed: ../share/tramador-validador beside the executable's folder, or the executable's
/// folder itself. Where nothing is installed the executable's folder remains. Throws Error 76 when the user
/// has no place for a folder of his own.
Escolha escolhe(const Lugares& lugares);

struct Preparada {
    std::filesystem::path pasta;
    std::filesystem::path distribuicao;
    std::vector<std::string> oferecidos; ///< Files of the user whose new one has just been put beside them.
    std::string aviso; ///< Why the folder is still that of an earlier installation; or empty.
};

/// Chooses the folder, sets it up, and makes it the program's (`aplicacao::setPasta`). Throws Error when
/// there is no folder to work in, with the folder and the reason in its text.
Preparada prepara(const Lugares& lugares);

} // namespace tv::pastaDaAplicacao
