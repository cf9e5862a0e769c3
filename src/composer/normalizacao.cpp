#include "composer/normalizacao.h"

#include "platform/Error.h"
#include "platform/XmlDocument.h"

#include <array>
#include <span>
#include <string>

namespace tv::normalizacao {
namespace {

using Nomes = std::span<const std::string_view>;

/// One group of optional fields of some rows.
struct Conversao {
    Nomes linhas; ///< XPath of the rows.
    std::string_view flag;
    std::string_view grupo;
    Nomes filhos;
    std::string_view antesDe; ///< Field in front of which the group stands; empty for the row's end.
};

constexpr auto titulos = std::to_array<std::string_view>({"//titpublico", "//titprivado", "//debenture"});
constexpr auto ativos = std::to_array<std::string_view>({"//ativosrf", "//ativosrv"});
constexpr auto ativosRF = std::to_array<std::string_view>({"//ativosrf"});
constexpr auto opcoesFlexiveis = std::to_array<std::string_view>({"//opcoesflx"});
constexpr auto swaps = std::to_array<std::string_view>({"//swap"});

constexpr auto camposCompromisso = std::to_array<std::string_view>(
    {"dtretorno", "puretorno", "indexadorcomp", "perindexcomp", "txoperacao", "classecomp"});
constexpr auto camposAluguelPosicao =
    std::to_array<std::string_view>({"dtvencalug", "txalug", "indexadoralug", "percalug"});
constexpr auto camposAluguelMovimento =
    std::to_array<std::string_view>({"cnpjaluguel", "txaluguel", "dtvencaluguel"});
constexpr auto camposBarreira = std::to_array<std::string_view>({"tpbarreira", "limitebarreira"});
constexpr auto camposPremio = std::to_array<std::string_view>({"lpremio", "arrependimento"});

constexpr Conversao compromissoPosicao{titulos, "poscompromissada", "compromisso", camposCompromisso,
                                       "classeoperacao"};
constexpr Conversao aluguelPosicao{titulos, "tipoaluguel", "aluguel", camposAluguelPosicao, ""};
constexpr Conversao aluguelMovimento{ativos, "tipoaluguel", "aluguel", camposAluguelMovimento, ""};
constexpr Conversao compromissoMovimento{ativosRF, "poscompromissada", "compromisso", camposCompromisso,
                                         "classeoperacao"};
constexpr Conversao barreiraMovimento{opcoesFlexiveis, "barreira", "barreira", camposBarreira, ""};
constexpr Conversao premioMovimento{swaps, "premio", "premio", camposPremio, ""};

constexpr auto daPosicao3 = std::to_array<Conversao>({compromissoPosicao});
constexpr auto daPosicao4 = std::to_array<Conversao>({compromissoPosicao, aluguelPosicao});
constexpr auto doMovimento2 =
    std::to_array<Conversao>({aluguelMovimento, compromissoMovimento, barreiraMovimento, premioMovimento});

std::span<const Conversao> conversoesDe(std::string_view tag) {
    if (tag == "arquivoposicao_3_00") {
        return daPosicao3;
    }
    if (tag == "arquivoposicao_4_00" || tag == "arquivoposicao_4_01") {
        return daPosicao4;
    }
    if (tag == "movimento_2_00") {
        return doMovimento2;
    }
    return {};
}

XmlNode exige(const XmlNode& pai, std::string_view nome) {
    const XmlNode filho = pai.child(nome);
    if (!filho) {
        throw Error(errc::objectNotSet, "frmTramador",
                    "O elemento " + pai.baseName() + " não tem o elemento " + std::string(nome));
    }
    return filho;
}

void move(const XmlNode& de, XmlNode para, Nomes filhos) {
    for (const std::string_view nome : filhos) {
        para.appendChild(exige(de, nome));
    }
}

void linhaParaArquivo(XmlDocument& dom, XmlNode linha, const Conversao& conversao) {
    const XmlNode flag = linha.child(conversao.flag);
    const XmlNode novo = dom.createElement(conversao.grupo);
    move(linha, novo, conversao.filhos);
    if (flag.text() == "S") {
        if (conversao.antesDe.empty()) {
            linha.appendChild(novo);
        } else {
            linha.insertBefore(novo, exige(linha, conversao.antesDe));
        }
    }
    linha.removeChild(flag);
}

void linhaParaGrid(XmlNode linha, const Conversao& conversao) {
    const XmlNode grupo = linha.child(conversao.grupo);
    XmlNode flag = linha.appendElement(conversao.flag);
    flag.setText(grupo ? "S" : "N");
    if (grupo) {
        move(grupo, linha, conversao.filhos);
        linha.removeChild(grupo);
    }
}

template<typename Converte>
void paraCadaLinha(const XmlDocument& dom, std::string_view tag, Converte converte) {
    for (const Conversao& conversao : conversoesDe(tag)) {
        for (const std::string_view caminho : conversao.linhas) {
            for (const XmlNode& linha : dom.selectNodes(caminho)) {
                converte(linha, conversao);
            }
        }
    }
}

} // namespace

void normalizaParaArquivo(XmlDocument& dom, std::string_view tag) {
    paraCadaLinha(dom, tag, [&dom](const XmlNode& linha, const Conversao& conversao) {
        linhaParaArquivo(dom, linha, conversao);
    });
}

void normalizaParaGrid(XmlDocument& dom, std::string_view tag) {
    paraCadaLinha(dom, tag, linhaParaGrid);
}

} // namespace tv::normalizacao
