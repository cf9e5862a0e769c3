// A document through both stages of its layout's check: schema, rules of fields, formula, sums.
#include "Scratch.h"
#include "Shipped.h"
#include "Target.h"

#include "platform/Error.h"
#include "platform/text.h"
#include "validation/clsValidador.h"
#include "validation/documentoResultado.h"

void readForeign(std::string_view bytes) {
    static const fuzz::Scratch folder;
    const std::shared_ptr<const tv::clsBoleto>& layout = fuzz::layoutOf(bytes);
    tv::clsValidador validator(tv::clsValidador::Estagios::UmAposOutro);
    const bool isValid = validator.isValido(folder.write("documento.xml", bytes), layout);
    const tv::Resultados& findings = *validator.getResultado();
    require(isValid == findings.empty(), "a valid document has no findings");
    require(!validator.arquivoIlegivel(), "a file that is there is read");
    for (const tv::clsResultado& finding : findings) {
        require(finding.linha() >= 0 && finding.coluna() >= 0, "a finding has a place");
    }
    const std::string report = tv::montaDocumentoResultado(findings, layout->getTitulo(), "documento.xml");
    require(tv::text::isUtf8(report), "a report is UTF-8");
}
