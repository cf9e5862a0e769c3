#pragma once

#include "model/clsSecao.h"
#include "platform/RecordSet.h"

#include <string>

/// Fields and rows as the text of elements, in UTF-8, lines ended by CR LF.
namespace tv::escrita {

/// One field as an element; a null gives an empty element.
std::string getXML(const clsCampo& campo, const Value& valor);

/// The fields of the current row.
std::string getXMLCampos(const clsSecao& secao, const RecordSet& dados);

/// The rows that a record set shows, as elements of the section. A section that holds others writes the
/// fields alone: one element around all of its rows comes later.
std::string getXML(const clsSecao& secao, RecordSet& dados);

} // namespace tv::escrita
