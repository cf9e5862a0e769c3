#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Applies a stylesheet to a document: for the second stage of a validation, for the report and for the help.
/// Failures are logged; the routines then give false or the empty text.
namespace tv::biblioteca {

/// Transforms a document given as text and writes the result to `destino` as Unicode text (UTF-8), replacing
/// any file of that name. False for a text of blanks, or when text or stylesheet cannot be loaded; no file is
/// written then.
bool transformStream(std::string_view xml, const std::filesystem::path& xsl,
                     const std::filesystem::path& destino);

/// The same for a document in a file.
bool transformFile(const std::filesystem::path& arquivo, const std::filesystem::path& xsl,
                   const std::filesystem::path& destino);

/// The result as text in UTF-8; empty when the name is blank or a load fails.
std::string transformStream(const std::filesystem::path& arquivo, const std::filesystem::path& xsl);

} // namespace tv::biblioteca
