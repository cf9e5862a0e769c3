#include "Relatorio.h"
#include "Saida.h"

#include "platform/Files.h"

#include <nlohmann/json.hpp>

namespace boletos {

namespace {

nlohmann::ordered_json emJson(const tv::clsResultado& resultado) {
    return {
        {"tipoResultado", resultado.nomeTipo()},
        {"errCode", resultado.ErrorCode()},
        {"titulo", resultado.Titulo()},
        {"descricao", resultado.Descricao()},
        {"linha", resultado.linha()},
        {"coluna", resultado.coluna()},
        {"tagName", resultado.TAGname()},
        {"tagValue", resultado.TAGvalue()},
        {"tagPath", resultado.TAGpath()},
        {"valorCampoChave", resultado.ValorCampoChave()},
        {"secao", resultado.getSecao()},
        {"campo", campoDe(resultado)},
        {"fundo", resultado.getFundoLocal()},
        {"atributo", tv::clsResultado::getTipoPosicao(resultado.TAGpath())},
        {"xml", resultado.getXML()},
    };
}

class Json final : public Relatorio {
public:
    explicit Json(const Contexto& contexto)
        : saida_(contexto.saida)
        , layout_(contexto.layout->getTag()) {}

    void arquivo(const ArquivoValidado& validado) override {
        // The list is written item by item: a file may have hundreds of thousands of findings.
        saida_.escreve("{\"arquivo\":" + texto(tv::files::toText(validado.arquivo)) +
                       ",\"layout\":" + texto(layout_) +
                       ",\"valido\":" + (validado.valido ? "true" : "false") + ",\"resultados\":[");
        bool primeiro = true;
        for (const tv::clsResultado& resultado : *validado.resultados) {
            saida_.escreve((primeiro ? "" : ",") + texto(emJson(resultado)));
            primeiro = false;
        }
        saida_.escreve("],\"avisos\":" + texto(validado.avisos) + "}\n");
        saida_.descarrega();
    }

    void termina() override { saida_.termina(); }

private:
    static std::string texto(const nlohmann::ordered_json& valor) {
        return valor.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    }

    Saida saida_;
    std::string layout_;
};

} // namespace

std::unique_ptr<Relatorio> relatorioJson(const Contexto& contexto) {
    return std::make_unique<Json>(contexto);
}

} // namespace boletos
