#pragma once

#include <string>
#include <string_view>

/// Rules for the names that users give files.
namespace tv::nomes {

/// True when a file's title holds none of the nine characters | > < " ? * : / \.
bool tituloValido(std::string_view titulo);

/// The name shown by default: the name given, with ".xml" behind it unless it holds ".XML" in any case.
std::string comExtensaoXml(std::string_view nome);

} // namespace tv::nomes
