#pragma once

#include <string_view>

namespace tv {
class XmlDocument;
}

/// The two shapes of a document. Files of some layouts nest a group of optional fields in an element that is
/// there only when the group applies; rows are flat and have a field "S" or "N" in its place. Only these
/// layouts are touched: arquivoposicao_3_00, arquivoposicao_4_00, arquivoposicao_4_01 and movimento_2_00.
namespace tv::normalizacao {

/// Rows to file, for the layout of that tag: a group's fields leave their row; they go into the group's
/// element where the flag is "S". The flag goes in any case. Throws Error 91 for a row that lacks the flag, a
/// field of the group or the field in front of which the group stands.
void normalizaParaArquivo(XmlDocument& dom, std::string_view tag);

/// File to rows: the group's fields go to the end of their row, and the flag tells whether the group was
/// there. Throws Error 91 for a group that lacks one of its fields.
void normalizaParaGrid(XmlDocument& dom, std::string_view tag);

} // namespace tv::normalizacao
