#pragma once

#include <string>

namespace tv {

/// One file that an update set aside. Both names are relative to the application folder, with a leading "\".
struct clsArquivo {
    std::string nomeInstalado; ///< Where the file stood and the new one stands.
    std::string nomeBackup;    ///< Where the old file is kept.
};

} // namespace tv
