#include "validation/documentoResultado.h"

#include "platform/Clock.h"
#include "platform/format.h"
#include "platform/text.h"

namespace tv {

std::string montaDocumentoResultado(const Resultados& resultados, std::string_view titulo,
                                    std::string_view arquivo, const std::function<void()>& aCadaResultado) {
    std::string documento = R"(<?xml version="1.0" encoding="ISO-8859-1" ?><TORVA><BOLETO data=")";
    documento += format::format(clock::now(), "DD/MM/YYYY \\- HH:MM:SS");
    documento.append("\"><LAYOUT><![CDATA[").append(text::trim(titulo)).append("]]></LAYOUT>");
    documento.append("<ARQUIVO><![CDATA[").append(text::trim(arquivo)).append("]]></ARQUIVO></BOLETO>");
    for (const clsResultado& resultado : resultados) {
        documento += resultado.getXML();
        if (aCadaResultado) {
            aCadaResultado();
        }
    }
    return documento + "</TORVA>";
}

} // namespace tv
