#include "composer/retratoEstado.h"

#include "platform/Error.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tv::retratoEstado {

namespace {

constexpr std::string_view assinatura = "frmTramador 1"; ///< Another form gets another number.
constexpr std::string_view doLayout = "/";

/// The path of tags from `dono` down to `procurado`, which is one of its sections at any depth.
bool achaCaminho(const SectionOwner& dono, const SectionOwner* procurado, std::string& caminho) {
    return std::any_of(dono.getSecoes().begin(), dono.getSecoes().end(), [&](const auto& secao) {
        const std::size_t antes = caminho.size();
        caminho += "/" + secao->getTag();
        const bool achou = secao.get() == procurado || achaCaminho(*secao, procurado, caminho);
        caminho.resize(achou ? caminho.size() : antes);
        return achou;
    });
}

/// Where a section stands in its layout; the layout itself is "/", nothing the empty text.
std::string caminhoDe(const clsBoleto& layout, const SectionOwner* procurado) {
    std::string caminho;
    if (procurado == nullptr) {
        return caminho;
    }
    return procurado != &layout && achaCaminho(layout, procurado, caminho) ? caminho : std::string(doLayout);
}

/// Null where the layout has no such section.
const SectionOwner* noCaminho(const clsBoleto& layout, std::string_view caminho) {
    if (caminho.empty()) {
        return nullptr;
    }
    const SectionOwner* dono = &layout;
    for (caminho.remove_prefix(1); !caminho.empty();) {
        const std::size_t fim = std::min(caminho.find('/'), caminho.size());
        const auto* secao = dono->getSecoes().find(caminho.substr(0, fim));
        if (secao == nullptr) {
            return nullptr;
        }
        dono = secao->get();
        caminho.remove_prefix(std::min(fim + 1, caminho.size()));
    }
    return dono;
}

void junta(const NoArvore& no, std::vector<const NoArvore*>& nos) {
    nos.push_back(&no);
    for (const NoArvore* filho : no.filhos) {
        junta(*filho, nos);
    }
}

/// All nodes, in the order of creation: groups come before funds, parents before their children.
std::vector<const NoArvore*> nosDe(const ArvoreFundos& arvore) {
    std::vector<const NoArvore*> nos;
    if (arvore.raiz() != nullptr) {
        junta(*arvore.raiz(), nos);
    }
    std::stable_sort(nos.begin(), nos.end(),
                     [](const NoArvore* a, const NoArvore* b) { return a->Index < b->Index; });
    return nos;
}

void escreveArvore(ByteWriter& bytes, const ArvoreFundos& arvore) {
    const std::vector<const NoArvore*> nos = nosDe(arvore);
    bytes.number(nos.size());
    for (const NoArvore* no : nos) {
        bytes.text(no->pai == nullptr ? std::string_view() : no->pai->chave);
        bytes.text(no->chave);
        bytes.text(no->texto);
        bytes.text(no->imagem);
        bytes.number(no->expandido ? 1 : 0);
    }
    bytes.text(arvore.chaveSelecionada());
}

/// Nodes are opened when all are there, so that a view draws once.
std::string leArvore(ByteReader& bytes, Documento& documento) {
    documento.limpaArvore();
    std::vector<std::string> abertos;
    for (std::size_t nos = bytes.count(); nos > 0; --nos) {
        const std::string_view pai = bytes.text();
        const std::string_view chave = bytes.text();
        const std::string_view texto = bytes.text();
        documento.arvore.add(pai, chave, texto, bytes.text());
        if (bytes.number() != 0) {
            abertos.emplace_back(chave);
        }
    }
    for (const std::string& aberto : abertos) {
        documento.arvore.expande(aberto, true);
    }
    return std::string(bytes.text());
}

} // namespace

void escreve(ByteWriter& bytes, const Documento& documento, std::string_view lugar) {
    const EstadoDocumento& estado = documento.estado;
    bytes.text(assinatura);
    bytes.text(estado.arquivo);
    bytes.value(estado.ultimoRowID);
    bytes.value(estado.abrindo);
    bytes.text(caminhoDe(documento.layout(), estado.noAtual));
    bytes.text(caminhoDe(documento.layout(), estado.secaoAtual));
    bytes.text(estado.chaveNo);
    bytes.value(estado.btnAdicionar);
    bytes.value(estado.btnRemover);
    bytes.text(lugar);
    bytes.text(documento.getGrid().chave);
    bytes.text(documento.getGrid().caption);
    escreveArvore(bytes, documento.arvore);
}

RetratoDocumento::Volta le(ByteReader& bytes, Documento& documento) {
    const auto sim = [&bytes] { return bytes.value() == Value(true); };
    if (bytes.text() != assinatura) {
        throw Error(errc::invalidCall, "RetratoDocumento",
                    "O trabalho guardado é de outra versão do programa");
    }
    RetratoDocumento::Volta volta;
    EstadoDocumento& estado = volta.estado;
    estado.salvo = false;
    estado.arquivo = bytes.text();
    const Value ultimo = bytes.value();
    if (const auto* rowID = std::get_if<std::int32_t>(&ultimo)) {
        estado.ultimoRowID = *rowID;
    }
    estado.abrindo = sim();
    estado.noAtual = noCaminho(documento.layout(), bytes.text());
    estado.secaoAtual = dynamic_cast<const clsSecao*>(noCaminho(documento.layout(), bytes.text()));
    estado.chaveNo = bytes.text();
    estado.btnAdicionar = sim();
    estado.btnRemover = sim();
    volta.lugar = bytes.text();
    volta.grade = bytes.text();
    volta.caption = bytes.text();
    volta.selecionado = leArvore(bytes, documento);
    return volta;
}

} // namespace tv::retratoEstado
