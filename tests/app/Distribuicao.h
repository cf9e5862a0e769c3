#pragma once

#include "app/PreparoDaPasta.h"
#include "platform/Checksum.h"
#include "platform/Files.h"
#include "platform/ScratchFolder.h"

#include <filesystem>
#include <map>
#include <string>

namespace tv::test {

/// Writes a distribution: the files and their list.
inline void distribui(const std::filesystem::path& pasta,
                      const std::map<std::string, std::string>& arquivos) {
    std::filesystem::remove_all(pasta);
    std::string lista;
    for (const auto& [nome, bytes] : arquivos) {
        std::filesystem::create_directories((pasta / nome).parent_path());
        files::writeAll(pasta / nome, bytes);
        lista += checksum::sha256(bytes) + "  " + nome + "\n";
    }
    files::writeAll(pasta / PreparoDaPasta::lista, lista);
}

inline const std::string nomeDoCatalogo = "TORVA_TramadorValidador.xml";

/// What a version of the program brings: its catalog, a schema, a stylesheet and a sample.
inline std::map<std::string, std::string> versao(const std::string& numero) {
    return {{nomeDoCatalogo, "catalogo " + numero},
            {"XSD/tipos.xsd", "tipos " + numero},
            {"XSD/resultado.xsl", "sempre o mesmo"},
            {"amostras/um/valido.xml", "amostra " + numero}};
}

/// All files below a folder by their names, but for those of the set-up itself.
inline std::map<std::string, std::string> conteudo(const std::filesystem::path& pasta) {
    std::map<std::string, std::string> achados;
    for (const auto& item : std::filesystem::recursive_directory_iterator(pasta)) {
        const std::string nome = item.path().lexically_relative(pasta).string();
        if (item.is_regular_file() && !nome.starts_with(".instalacao")) {
            achados[nome] = files::readAll(item.path());
        }
    }
    return achados;
}

} // namespace tv::test
