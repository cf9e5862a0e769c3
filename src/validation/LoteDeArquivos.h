#pragma once

#include "platform/RecordSet.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The batch of files behind a validator window, as far as it can be told without a screen: its record set,
/// what joins it, and the texts about it.
namespace tv::lote {

/// Names of the batch's columns.
namespace coluna {
inline constexpr std::string_view status = "status";
inline constexpr std::string_view boleto = "boleto";
inline constexpr std::string_view arquivo = "arquivo";
inline constexpr std::string_view tamanho = "tamanho";
inline constexpr std::string_view tempo = "tempo";
inline constexpr std::string_view isValid = "isValid";
inline constexpr std::string_view validou = "validou";
inline constexpr std::string_view isNew = "isNew";
inline constexpr std::string_view isModified = "isModified";
} // namespace coluna

/// What the status of a file says that did not pass.
inline constexpr std::string_view naoValido = "Não válido";

/// Said when there is no row to work on.
inline constexpr std::string_view nenhumSelecionado = "Nenhum boleto selecionado!";

/// An open record set without rows; a row is a file.
std::shared_ptr<RecordSet> criaRegistros();

/// The paths of `escolhidos` that no row holds and that did not come before in the list. Paths compare as
/// they are written, with case, blanks around left out.
std::vector<std::string> novos(const RecordSet& registros, const std::vector<std::string>& escolhidos);

/// Adds a file that nobody has checked; the cursor stands on its row. Throws Error 53 when the file is not
/// there, and then adds nothing.
void adiciona(RecordSet& registros, std::string_view caminho);

/// Adds a file in the place of the rows that hold its path, written the same way. It need not be there: it
/// has no size then.
void substitui(RecordSet& registros, std::string_view caminho);

/// Of files and folders that were dropped: the XML files, and those that lie directly in the folders, by
/// name.
std::vector<std::filesystem::path> arquivosXml(const std::vector<std::filesystem::path>& soltos);

/// "12 Arquivos".
std::string contagem(std::size_t linhas);
/// Minutes and seconds between two moments, "MM:SS". Whole hours are dropped, so that a change to or from
/// daylight saving time does no harm.
std::string tempoEntre(DateTime inicio, DateTime fim);
/// The question before `linhas` rows are taken out.
std::string perguntaRemocao(std::size_t linhas);

/// What the window does when the result or the editor of a row is asked for.
enum class Reacao {
    Nenhuma,   ///< The file was not checked, or was opened in the editor since.
    DizValido, ///< There is nothing to show but that it passed.
    Abre,      ///< Its findings can be opened.
};
Reacao reacao(bool validou, bool isValid, std::string_view status);

} // namespace tv::lote
