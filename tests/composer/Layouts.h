#pragma once

#include "../model/LayoutXml.h"
#include "composer/Documento.h"
#include "model/clsBoleto.h"

#include <memory>
#include <string>
#include <vector>

namespace tv::test {

/// A small layout. `inside` is the XML of its sections.
inline std::shared_ptr<const clsBoleto> layoutOf(const BoletoXml& xml) {
    auto boleto = std::make_shared<clsBoleto>();
    boleto->setEstrutura(xml.xml(), tables(), "/nenhuma");
    return boleto;
}

/// A field: text, not mandatory, no mask.
inline std::string campo(const std::string& tag) {
    return CampoXml{.tag = tag, .titulo = "Campo " + tag}.xml();
}

/// The key field of a master: a mandatory company number.
inline std::string campoChave(const std::string& tag = "cnpj") {
    return CampoXml{.tag = tag,
                    .campoChave = "SIM",
                    .tamanho = "14",
                    .mandatorio = "S",
                    .validacao = "CNPJ",
                    .titulo = "CNPJ",
                    .maskDisplay = "@@.@@@.@@@/@@@@-@@"}
        .xml();
}

inline std::string mestre(const std::string& tag = "header", const std::string& inside = campoChave()) {
    return SecaoXml{
        .tag = tag, .inside = inside, .nome = "Cabeçalho", .ocorrencia = "1", .secaoMestre = "SIM"}
        .xml();
}

inline std::string detalhe(const std::string& tag, const std::string& ocorrencia = "*") {
    return SecaoXml{.tag = tag, .inside = campo("codigo"), .nome = "Seção " + tag, .ocorrencia = ocorrencia}
        .xml();
}

/// A section without fields around others.
inline std::string grupo(const std::string& tag, const std::string& nome, const std::string& inside) {
    return SecaoXml{
        .tag = tag, .inside = inside, .nome = nome, .ocorrencia = "*", .nomeGrupo = nome, .tagGrupo = tag}
        .xml();
}

/// Funds and wallets in groups of their own: no master directly below the layout.
inline std::shared_ptr<const clsBoleto> layoutEmGrupos() {
    const std::string fundo = mestre() + detalhe("titulo") + detalhe("despesas", "1");
    const std::string carteira = mestre("header", campoChave("codcart")) + detalhe("titulo");
    return layoutOf(
        {.tag = "posicao",
         .inside = grupo("fundo", "Fundos", fundo) + grupo("carteira", "Outras carteiras", carteira),
         .nomeGrupo = "Fundo ou carteira",
         .tagGrupo = "fundo"});
}

/// One fund's sections straight below the layout.
inline std::shared_ptr<const clsBoleto> layoutDireto() {
    return layoutOf({.tag = "passivo",
                     .inside = mestre() + detalhe("cotista") + detalhe("despesas", "1"),
                     .nomeGrupo = "Fundo",
                     .tagGrupo = "fundo"});
}

/// No group, one master section: no tree.
inline std::shared_ptr<const clsBoleto> layoutSemGrupo() {
    return layoutOf({.tag = "lista", .inside = mestre("registro")});
}

inline std::vector<std::string> chavesDasGrades(const Documento& documento) {
    std::vector<std::string> chaves;
    for (const auto& grade : documento.grids()) {
        chaves.push_back(grade->chave);
    }
    return chaves;
}

/// Texts of the nodes below one, in the tree's order.
inline std::vector<std::string> textosAbaixo(const NoArvore& no) {
    std::vector<std::string> textos;
    for (const NoArvore* filho : no.filhos) {
        textos.push_back(filho->texto);
    }
    return textos;
}

} // namespace tv::test
