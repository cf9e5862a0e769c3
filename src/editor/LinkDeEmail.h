#pragma once

#include <string>
#include <string_view>

/// Links that open a mail.
namespace tv {

/// The link for a mail to `endereco`, which may bear "mailto:" in any case already. Subject and body, where
/// they are not empty, follow as its parameters, percent-encoded in UTF-8; line ends of the body become
/// CR LF. The address is taken as it is.
std::string linkDeEmail(std::string_view endereco, std::string_view assunto, std::string_view corpo);

} // namespace tv
