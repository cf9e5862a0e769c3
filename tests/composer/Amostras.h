#pragma once

#include "../app/ShippedCatalog.h"
#include "composer/Documento.h"
#include "platform/XmlDocument.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace tv::test {

inline const std::filesystem::path& pastaDasAmostras() {
    static const std::filesystem::path pasta = std::filesystem::path(TV_SOURCE_DIR) / "data" / "amostras";
    return pasta;
}

/// The sound samples as "layout/name", sorted.
inline std::vector<std::string> amostrasValidas() {
    std::vector<std::string> nomes;
    for (const auto& item : std::filesystem::recursive_directory_iterator(pastaDasAmostras())) {
        if (item.path().extension() == ".xml" && item.path().filename().string().starts_with("valido")) {
            nomes.push_back(std::filesystem::relative(item.path(), pastaDasAmostras()).generic_string());
        }
    }
    std::sort(nomes.begin(), nomes.end());
    return nomes;
}

inline const std::shared_ptr<const clsBoleto>& layoutDaAmostra(const std::filesystem::path& amostra) {
    return shippedCatalog().getBoletos().Item(amostra.parent_path().filename().string());
}

/// An element with all below it, one line an element: tags by depth, and the text of those without children.
inline void linhasDaArvore(const XmlNode& no, const std::string& recuo, std::vector<std::string>& linhas) {
    const auto filhos = no.childElements();
    linhas.push_back(recuo + no.baseName() + (filhos.empty() ? "=" + no.text() : ""));
    for (const XmlNode& filho : filhos) {
        linhasDaArvore(filho, recuo + " ", linhas);
    }
}

inline std::vector<std::string> arvoreXml(const XmlDocument& dom) {
    std::vector<std::string> linhas;
    linhasDaArvore(dom.documentElement(), "", linhas);
    return linhas;
}

/// All rows of a document as text: key of the grid, number of the row, columns with their values.
inline std::vector<std::string> linhasDoDocumento(const Documento& documento) {
    std::vector<std::string> linhas;
    for (const auto& grade : documento.grids()) {
        const auto dados = grade->dados->Clone();
        for (; !dados->EOF_(); dados->MoveNext()) {
            std::string linha = grade->chave;
            for (const Column& coluna : dados->columns()) {
                const Value& valor = dados->get(coluna.name);
                linha += "|" + (isNull(valor) ? "null" : defaultText(valor));
            }
            linhas.push_back(linha);
        }
    }
    return linhas;
}

} // namespace tv::test
