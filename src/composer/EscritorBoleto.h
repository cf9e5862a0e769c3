#pragma once

#include "composer/GradeSecao.h"
#include "model/clsBoleto.h"
#include "platform/XmlDocument.h"

#include <cstdint>
#include <string>

namespace tv {

class Documento;

/// Writes record sets as the text of a document. The text is UTF-8, though its declaration names the encoding
/// of the file that is made of it; lines end in CR LF.
class EscritorBoleto {
public:
    /// The whole text. `chave` is the layout's tag, with which the record sets' keys start. Throws Error 5
    /// for a missing record set, Error 91 for a top section without a master in a layout without one, Error
    /// 0x8004124F for a value that no XML can hold.
    std::string getXML_origem(const clsBoleto& layout, const RecordSets& recordSets,
                              const std::string& chave);
    /// The body of one owner of a master section: for each of its rows the row, its details, and the owner's
    /// group around both.
    std::string getXML(const SectionOwner& owner, const RecordSets& recordSets, const std::string& chave);
    /// The details of one master row, section by section.
    const std::string& montaDetalhesXML(const RecordSets& recordSets, const std::string& chave,
                                        const SectionOwner& secaoPai, std::int32_t rowID);

private:
    void incluiSecao(const RecordSets& recordSets, const std::string& chave, const clsSecao& secao,
                     std::int32_t rowID);

    std::string detalhes_;
    bool escreveu_ = false;
};

/// The document as it will be saved: written, parsed and brought into the file's shape. Throws what
/// EscritorBoleto and the conversion throw, and an Error "Erro na contrução do XML" when the text does not
/// parse.
XmlDocument montaDocumento(const Documento& documento);

} // namespace tv
