#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// How a document's bytes stand for its text, read and written without loss.
namespace tv {

/// The form of a file: encoding, byte order mark and line ends.
struct CodificacaoXML {
    enum class Familia { Utf8, Utf16LE, Utf16BE, UmByte };
    enum class FimDeLinha { Lf, CrLf, Cr };

    Familia familia = Familia::Utf8;
    std::string nome = "UTF-8"; ///< For people; for one-byte encodings also what names their table.
    std::string declarada;      ///< The name in the XML declaration; empty when it names none.
    bool marca = false;         ///< Starts with a byte order mark.
    FimDeLinha fimDeLinha = FimDeLinha::Lf; ///< The one that most lines have.
};

/// A file's text.
struct TextoLido {
    CodificacaoXML codificacao;
    std::u16string texto;      ///< Lines end in a line feed. Without the byte order mark.
    std::size_t ilegiveis = 0; ///< Places whose bytes are no character; they show as U+FFFD.
};

/// A text's bytes, and what its encoding could not say.
struct TextoGravado {
    std::string bytes;
    std::size_t ausentes = 0;     ///< Characters written as references because the encoding lacks them.
    char32_t primeiroAusente = 0; ///< The first of them, with its line and column (UTF-16 units) from 1.
    std::int32_t linha = 0;
    std::int32_t coluna = 0;
};

/// UTF-8 to UTF-16; broken bytes become U+FFFD.
std::u16string utf16DeUtf8(std::string_view utf8);

/// The name of the encoding that the XML declaration at the start of a text gives, or the empty text.
std::string codificacaoDeclarada(std::u16string_view texto);

/// Reads bytes in the encoding of their byte order mark, otherwise in the one that the declaration names,
/// otherwise in UTF-8. A name that nothing answers to counts as UTF-8 when the bytes are that, and as
/// ISO-8859-1 otherwise.
TextoLido leTexto(std::string_view bytes);

/// The encoding in which a text that was read as `lida` is to be written: that one, or the one that its
/// declaration names meanwhile.
CodificacaoXML codificacaoParaGravar(std::u16string_view texto, const CodificacaoXML& lida);

/// Writes a text whose lines end in line feeds. Characters that the encoding lacks become character
/// references ("&#8211;"), in CDATA sections between two sections.
TextoGravado gravaTexto(std::u16string_view texto, const CodificacaoXML& codificacao);

} // namespace tv
