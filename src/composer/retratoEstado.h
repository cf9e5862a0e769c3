#pragma once

#include "composer/Documento.h"
#include "composer/RetratoDocumento.h"
#include "platform/ByteStream.h"

#include <string_view>

/// The part of a document's snapshot that is not rows: the window's state and the tree of funds.
namespace tv::retratoEstado {

void escreve(ByteWriter& bytes, const Documento& documento, std::string_view lugar);

/// Puts the tree back and gives the state. Throws as `devolveDocumento`.
RetratoDocumento::Volta le(ByteReader& bytes, Documento& documento);

} // namespace tv::retratoEstado
