#include "validation/RegrasEntreCampos.h"

#include "logging/Routine.h"
#include "platform/Error.h"
#include "platform/format.h"
#include "platform/text.h"
#include "validation/LeituraNumero.h"

#include <cmath>

namespace tv {

namespace {

constexpr double tolerancia = 500.0;

std::string comparado(std::string_view s) {
    return text::lower(text::trim(s));
}

bool difere(double declarado, double calculado) {
    return std::abs(confere(declarado - calculado)) > tolerancia;
}

} // namespace

void RegrasEntreCampos::verificaOperacoes(const std::vector<XmlNode>& filhos, const std::string& tipo,
                                          const std::string& chave) {
    guarded("clsValidador.verificaOperacoes", [&] {
        for (const XmlNode& filho : filhos) {
            const std::string nome = comparado(filho.name());
            if (nome == "header") {
                verificaPatrimonio(filho, tipo, chave);
            } else if (nome == "titpublico" || nome == "titprivado" || nome == "debenture") {
                verificaClasse(filho, nome, tipo, chave);
            }
        }
    });
}

void RegrasEntreCampos::verificaClasse(const XmlNode& no, const std::string& secao, const std::string& tipo,
                                       const std::string& chave) {
    const XmlNode classe = no.child("classeoperacao");
    if (!classe) {
        throw Error(errc::objectNotSet, "clsValidador.verificaOperacoes", "Falta o campo classeoperacao");
    }
    const std::string texto = classe.text();
    if (getClasseCompromisso(no, texto) != comparado(texto)) {
        montaResultado(tipo, text::trim(texto),
                       "A classe da operação deve ser igual a classe da compromissada", secao,
                       "classeoperacao", chave);
    }
}

std::string RegrasEntreCampos::getClasseCompromisso(const XmlNode& no, std::string_view classeoperacao) {
    return guarded("clsValidador.getClasseCompromisso", std::string(), [&]() -> std::string {
        const XmlNode compromisso = no.child("compromisso");
        if (!compromisso) {
            return comparado(classeoperacao);
        }
        for (XmlNode filho = compromisso.firstElement(); filho; filho = filho.nextElement()) {
            if (comparado(filho.name()) == "classecomp") {
                return comparado(filho.text());
            }
        }
        return {};
    });
}

void RegrasEntreCampos::verificaPatrimonio(const XmlNode& header, const std::string& tipo,
                                           const std::string& chave) {
    guarded("clsValidador.verificaPatrimonio", [&] {
        const std::string comparada = comparado(tipo);
        const bool fundo = comparada == "fundo";
        if (!fundo && comparada != "carteira") {
            return;
        }
        const double valorativos = leNumero(header, "valorativos");
        const double valorreceber = leNumero(header, "valorreceber");
        const double valorpagar = leNumero(header, "valorpagar");
        const double vlcotasemitir = fundo ? leNumero(header, "vlcotasemitir") : 0;
        const double vlcotasresgatar = fundo ? leNumero(header, "vlcotasresgatar") : 0;
        const double valorcota = fundo ? leNumero(header, "valorcota") : 0;
        const double quantidade = fundo ? leNumero(header, "quantidade") : 0;
        const double patliq = leNumero(header, "patliq");

        const auto acusa = [&](std::string_view descricao) {
            montaResultado(tipo, format::format(Value(patliq), "#0.00"), descricao, "header", "patliq",
                           chave);
        };
        if (!fundo) {
            if (difere(patliq, valorreceber + valorativos - valorpagar)) {
                acusa("O valor do patrimônio líquido não corresponde à fórmula: patLiq = valorativos + "
                      "valorreceber - "
                      "valorpagar");
            }
            return;
        }
        if (difere(patliq, valorreceber + valorativos - valorpagar - vlcotasemitir - vlcotasresgatar)) {
            acusa("O valor do patrimônio líquido não corresponde à fórmula: patLiq = valorativos + "
                  "valorreceber - "
                  "valorpagar - vlcotasemitir - vlcotasresgatar");
        }
        if (difere(patliq, valorcota * quantidade)) {
            acusa("O valor do patrimônio líquido não corresponde à fórmula: patLiq = valorcota * quantidade");
        }
    });
}

void RegrasEntreCampos::montaResultado(std::string_view tipo, std::string_view valor,
                                       std::string_view descricao, std::string_view secao,
                                       std::string_view campo, std::string_view chave) {
    // Nothing is escaped: a value with markup spoils its fragment.
    fragmentos_.append("<RESULTADO lastElement='").append(campo).append("' TAGvalor='").append(valor);
    fragmentos_.append("' path='arquivoposicao_4_00.")
        .append(tipo)
        .append(".")
        .append(secao)
        .append(".")
        .append(campo);
    fragmentos_.append("' keyValor='").append(chave);
    fragmentos_.append(
        "' errCode='-2147221503' strLabel='O valor do campo não corresponde à verificação entre "
        "campos'>\r\n");
    fragmentos_.append("<strDescription><![CDATA[")
        .append(descricao)
        .append("]]></strDescription></RESULTADO>\r\n");
    fragmentos_.append("</TORVA>\r\n");
}

} // namespace tv
