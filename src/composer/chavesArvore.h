#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Keys of the nodes of the fund tree. A key alone tells the kind of its node and which rows it stands for.
namespace tv::chaves {

inline constexpr std::string_view raiz = "kCONST_RAIZ";
inline constexpr std::string_view prefixoGrupo = "kCONST_";

/// What a node stands for.
enum class TipoNo { Raiz, Grupo, Fundo, Secao, Outro };
/// The kind, told by the key's first characters.
TipoNo tipo(std::string_view chave) noexcept;

/// A `rowID` with at least four digits.
std::string rowID4(std::int32_t rowID);

/// Piece of a key at a position from 0 between separators ",". Throws Error 9 when there are fewer.
std::string_view parte(std::string_view chave, std::size_t posicao);

/// Key of a fund below the node `chaveNo` (which may be empty): "g" + chaveNo + "_" + rowID + "," + key of
/// the master section's grid.
std::string fundo(std::string_view chaveNo, std::int32_t rowID, std::string_view chaveGrade);
/// Key of a section of a fund that was added below the node `chavePai`; `caminho` is its grid's key. Below a
/// section's node, whose key has commas, the first part of that key and the fourth of `caminho` are taken.
std::string secao(std::string_view chavePai, std::int32_t rowID, std::string_view tag,
                  std::string_view caminho);

/// Key of the grid that a fund's key names: what stands behind its last comma.
std::string_view gradeDoFundo(std::string_view chave) noexcept;
/// The `rowID` with which a fund's key was made.
std::int32_t rowIDFeito(std::string_view chave);
/// The `rowID` that a click on a fund goes by: read behind "gkCONST_RAIZ_", and behind "g_" in every other
/// key. A fund below a group therefore gives 0.
std::int32_t rowIDDoFundo(std::string_view chave);
/// The number behind a key's first comma; the number in front of a key that has none. 0 where no number
/// stands.
std::int32_t rowIDDaSecao(std::string_view chave);

} // namespace tv::chaves
