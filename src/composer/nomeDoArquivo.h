#pragma once

#include "composer/Documento.h"

#include <filesystem>
#include <string>
#include <string_view>

/// Names for saved documents and for the copies of what they replace.
namespace tv::nomeDoArquivo {

/// The name that the save dialog proposes: by fund, dates and kind of document; the document's own path where
/// there is no such name. Throws what finding the masters throws.
std::string proposta(const Documento& documento);

/// The name of a version 4 document: kind, number, dates, time and name of its one fund or wallet, ".xml".
/// `nome` again for every other version, the empty text when `linhas` (null for none) has not exactly one row
/// or that row has no number or no date. Throws Error 5 when a field is missing.
std::string propoeNomeArquivo(RecordSet* linhas, const std::string& nome, std::string_view versao,
                              std::string_view tipo);
/// "FD", "CT" or "LT" for "fundo", "carteira" and "lote" in any case; otherwise empty.
std::string siglaTipoArquivo(std::string_view tipo);
/// The name's middle part, or empty.
std::string montaNomeArquivo(RecordSet* linhas, std::string_view tipo);
/// The field that gives "cnpj", "dtposicao" or "nome" for a kind of document, in any case, blanks around
/// allowed; otherwise empty.
std::string campoNomeArquivo(std::string_view tipo, std::string_view campo);

/// The path of the copy of a file that is to be replaced today: the points of its name become "_", "_", the
/// date and ".bkp" follow.
std::filesystem::path copia(const std::filesystem::path& arquivo);

} // namespace tv::nomeDoArquivo
