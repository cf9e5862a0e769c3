#pragma once

#include "platform/XmlDocument.h"

#include <string_view>

namespace tv {

/// The number that a child element holds. Throws Error 91 when there is no such child and Error 13 when its
/// text is no number, the empty text included.
double leNumero(const XmlNode& no, std::string_view campo);

/// `valor` again; throws Error 6 when a sum has left the range of 64-bit floating point.
double confere(double valor);

} // namespace tv
