#pragma once

#include "platform/Files.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tv {

class XmlDocument;

/// The last branch of an XML file's tree, from the root down along the last children, and where its elements
/// stand in the file. Entries of a log go to its end, so that one more is written without a look at the rest
/// of the file. Levels count from 0, the root.
class RamoFinal {
public:
    /// Takes the branch from a document and the bytes that were just written of it to `arquivo`. Where the
    /// file ends in more than the root, the branch stays unknown.
    void le(const XmlDocument& documento, std::string_view bytes, const std::filesystem::path& arquivo);
    void esquece() noexcept { niveis_.clear(); }

    /// True while the file is as it was when the branch was taken or last changed.
    bool vale(const std::filesystem::path& arquivo) const;
    /// True when the branch's elements from `nivel` on bear these names.
    bool passaPor(std::size_t nivel, const std::vector<std::string>& nomes) const;
    /// True when some element of the file bears this name.
    bool temNome(const std::string& nome) const { return nomes_.contains(nome); }

    /// Writes an element of the name, given as the bytes of its tags and of nothing between them, as the last
    /// child of the one of that level, and continues the branch with it.
    void acrescenta(std::size_t nivel, const std::string& nome, std::string_view bytes);
    /// Writes the attribute `fim` of the branch's element of that level. False, with nothing done, when it
    /// has none of that length.
    bool marcaFim(std::size_t nivel, std::string_view hora);

private:
    struct Nivel {
        std::string nome;
        std::string fecho;   ///< Bytes of the end tag.
        std::size_t fim = 0; ///< Where the value of `fim` stands in the file; 0 without one.
        std::size_t tamanhoDoFim = 0;
    };
    void localizaFim(Nivel& nivel, std::string_view tag, std::size_t inicio) const;
    void escreve(std::size_t onde, std::string_view bytes);

    std::filesystem::path arquivo_;
    files::Stamp marca_;
    std::size_t tamanho_ = 0;
    std::vector<Nivel> niveis_;
    std::unordered_set<std::string> nomes_;
};

} // namespace tv
