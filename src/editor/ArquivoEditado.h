#pragma once

#include "editor/CodificacaoXML.h"
#include "platform/Files.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tv {

class ByteReader;
class ByteWriter;

/// The file behind an edited text: how its bytes were read, whether it is still the file that was read, and
/// how the text goes back without anything being lost unsaid.
class ArquivoEditado {
public:
    /// Reads the file; the answer is its text. A failure (Error as files::readAll, or 7 for a text that is
    /// beyond what an editor holds) leaves the file marked as not readable.
    std::u16string le(std::filesystem::path caminho);

    const CodificacaoXML& codificacao() const noexcept { return codificacao_; }
    /// Places of the file whose bytes were no characters, and are lost at the first save.
    std::size_t ilegiveis() const noexcept { return ilegiveis_; }
    /// True when the file is there, but its text is not what the editor shows.
    bool naoLido() const;
    /// True when someone else has changed the file since it was read or written here.
    bool mudouNoDisco() const;

    /// What a save would write.
    struct Preparo {
        TextoGravado gravado;
        CodificacaoXML codificacao;
        std::optional<std::u16string> forma; ///< The parser's form; nothing when not well-formed.
        bool perdeIlegiveis = false;         ///< Bytes that could not be read are overwritten by U+FFFD.
    };
    Preparo prepara(std::u16string_view texto) const;
    /// Replaces the file. Throws Error as files::replaceWhole.
    void grava(const Preparo& preparo);

    /// Puts all that is known about the file, but for its path, into bytes, and takes it from there: as if
    /// the file had been read when the one that was kept was. `retoma` throws as ByteReader.
    void guarda(ByteWriter& bytes) const;
    void retoma(std::filesystem::path caminho, ByteReader& bytes);

private:
    void anotaEstado();

    std::filesystem::path caminho_;
    CodificacaoXML codificacao_;
    std::size_t ilegiveis_ = 0;
    bool lido_ = false;
    std::optional<files::Stamp> estado_;
};

} // namespace tv
