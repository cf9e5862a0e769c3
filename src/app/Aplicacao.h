#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// What the whole program shares about itself.
namespace tv::aplicacao {

/// The application folder, the root of all relative paths: the executable's folder until setPasta.
std::filesystem::path pasta();
void setPasta(std::filesystem::path pasta);

/// A file of the application folder by its portable name ("\XSD\help.xsl"), found without regard to case.
std::filesystem::path arquivo(std::string_view nome);

/// The title that message boxes bear when they have none of their own (UTF-8): the product's name until
/// setTitulo.
std::string titulo();
void setTitulo(std::string titulo);

} // namespace tv::aplicacao
