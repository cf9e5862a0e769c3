#include "composer/fundos.h"

#include "composer/chavesArvore.h"
#include "logging/Routine.h"
#include "platform/Error.h"
#include "platform/text.h"

namespace tv::fundos {
namespace {

constexpr std::string_view tituloFundo = "Fundo CNPJ:";

const clsSecao& mestreDe(const SectionOwner& owner) {
    if (owner.getSecaoMestre() == nullptr) {
        throw Error(errc::objectNotSet, "frmTramador", "Não há seção mestre em " + owner.getTag());
    }
    return *owner.getSecaoMestre();
}

/// Key of the grid that a fund's node leads to.
std::string gradeDoFundo(const clsBoleto& layout, const SectionOwner& obj) {
    const std::string base = layout.getTag() + "_";
    if (layout.hasGrupo() && obj.getTag() == layout.getTag()) {
        return base + mestreDe(obj).getTag();
    }
    if (layout.hasGrupo() && obj.getSecaoMestre() == nullptr) {
        return base + (obj.getSecoes().empty() ? "" : layout.getNomeGrupo() + "_") + obj.getTag();
    }
    return base + obj.getTag() + "_" + mestreDe(obj).getTag();
}

/// What the keys of a fund's sections start with.
std::string caminhoDasSecoes(const clsBoleto& layout, std::string_view chaveNo) {
    const std::string_view depois = chaveNo.substr(std::min(chaveNo.size(), chaves::prefixoGrupo.size()));
    if (chaveNo.empty() || depois == "RAIZ") {
        return layout.getTag();
    }
    return layout.getTag() + "_" + std::string(depois);
}

/// The node for a fund while no node is known.
std::string paiInicial(const Documento& documento, const SectionOwner& obj) {
    if (documento.arvore.selecionado() != nullptr) {
        return std::string(documento.arvore.chaveSelecionada());
    }
    const auto& mestre = documento.layout().getSecaoMestre();
    if (mestre == nullptr) {
        return std::string(chaves::prefixoGrupo) + obj.getTag();
    }
    return mestre->getSecoes().empty() ? std::string(chaves::raiz) : obj.getTag();
}

std::string caminhoDaSecao(const std::string& caminho, const SectionOwner& obj, const clsSecao& secao) {
    if (caminho.empty()) {
        return secao.getTag();
    }
    const bool temDono = text::contains(caminho, obj.getTag());
    return caminho + "_" + (temDono ? "" : obj.getTag() + "_") + secao.getTag();
}

/// A repeated key is no fault: that section stands in the tree already.
void addTreeViewSecao(ArvoreFundos& arvore, const SectionOwner& obj, const std::string& chavePai,
                      std::int32_t rowID, const std::string& noPai, const std::string& caminho) {
    const Routine routine("frmTramador.addTreeViewSecao");
    for (const std::shared_ptr<const clsSecao>& secao : obj.getSecoes()) {
        if (secao->isSecaoMestre()) {
            continue;
        }
        const std::string chave =
            chaves::secao(chavePai, rowID, secao->getTag(), caminhoDaSecao(caminho, obj, *secao));
        if (arvore.find(chave) == nullptr) {
            arvore.add(noPai, chave, secao->getNome(), secao->getSecoes().empty() ? "imgNew" : "imgFundo");
        }
    }
}

/// A node that is not there gives way to the root: the master of a layout without groups names one.
void garanteNo(const ArvoreFundos& arvore, std::string& chaveNo) {
    if (!chaveNo.empty() && arvore.find(chaveNo) == nullptr) {
        chaveNo = chaves::raiz;
    }
}

/// A new fund with its sections. Throws Error 5 when there is no root.
const NoArvore& novoFundo(Documento& documento, const SectionOwner& obj, std::int32_t rowID,
                          std::string_view chaveGrade, std::string_view titulo) {
    std::string& chaveNo = documento.estado.chaveNo;
    const clsBoleto& layout = documento.layout();
    garanteNo(documento.arvore, chaveNo);
    const std::string chave = chaves::fundo(chaveNo, rowID, chaveGrade);
    const std::string caminho = caminhoDasSecoes(layout, chaveNo);
    if (chaveNo.empty()) {
        chaveNo = paiInicial(documento, obj);
        garanteNo(documento.arvore, chaveNo);
    }
    const NoArvore& no = documento.arvore.add(chaveNo, chave, titulo, "imgFundo");
    const SectionOwner& dono = layout.getSecaoMestre() != nullptr ? layout : obj;
    addTreeViewSecao(documento.arvore, dono, chaveNo, rowID, chave, caminho);
    return no;
}

void incluiOuRenomeia(Documento& documento, const SectionOwner& obj, std::int32_t rowID,
                      std::string_view titulo) {
    EstadoDocumento& estado = documento.estado;
    ArvoreFundos& arvore = documento.arvore;
    if ((estado.chaveNo.empty() || estado.abrindo) && documento.layout().getTag() != obj.getTag()) {
        estado.chaveNo = std::string(chaves::prefixoGrupo) + obj.getTag();
    }
    const std::string chaveGrade = gradeDoFundo(documento.layout(), obj);
    const NoArvore* no = arvore.fundo(chaveGrade, rowID);
    if (no == nullptr) {
        no = &novoFundo(documento, obj, rowID, chaveGrade, titulo);
    } else {
        arvore.setTexto(no->chave, titulo);
    }
    arvore.expande(chaves::raiz, true);
    arvore.expande(no->chave, false);
}

void filtra(GradeSecao& grade, std::string_view coluna, std::int32_t rowID) {
    grade.dados->Filter(std::string(coluna) + " = " + std::to_string(rowID));
}

GradeSecao& gradeDaRaiz(const Documento& documento, const clsSecao& primeira) {
    std::string chave = documento.layout().getTag() + "_" + primeira.getTag();
    if (primeira.getCampos().empty()) {
        chave += "_" + mestreDe(primeira).getTag();
    }
    return documento.grade(chave);
}

/// All masters of the first section, whichever fund they are. The document's node is entered for new rows;
/// where funds stand in groups, that is the first group.
Clique cliqueNaRaiz(Documento& documento) {
    const Secoes& secoes = documento.layout().getSecoes();
    if (secoes.empty()) {
        return {};
    }
    EstadoDocumento& estado = documento.estado;
    const clsSecao& primeira = *secoes.Item(1);
    const NoArvore* filho = documento.arvore.primeiroFilho();
    estado.secaoAtual = &primeira;
    GradeSecao& grade = gradeDaRaiz(documento, primeira);
    if (primeira.getCampos().empty() && filho != nullptr) {
        estado.chaveNo = filho->chave;
    }
    grade.dados->Filter("");
    documento.setCaption(grade, *grade.secao);
    if (filho != nullptr && text::startsWith(filho->chave, "g_")) {
        estado.noAtual = &mestreDe(documento.layout());
    } else if (filho != nullptr) {
        estado.noAtual = &primeira;
        documento.arvore.seleciona(filho->chave);
    }
    return {&grade, true};
}

Clique cliqueNoGrupo(Documento& documento, const NoArvore& no) {
    const clsSecao& secao = *documento.secaoPorChave(chaves::raiz).getSecoes().Item(no.Index - 1);
    const clsSecao& mestre = mestreDe(secao);
    EstadoDocumento& estado = documento.estado;
    estado.secaoAtual = &mestre;
    GradeSecao& grade =
        documento.grade(documento.layout().getTag() + "_" + secao.getTag() + "_" + mestre.getTag());
    grade.dados->Filter("");
    grade.caption = secao.getNome() + " - " + mestre.getNome();
    estado.noAtual = &secao;
    return {&grade, true};
}

Clique cliqueNoFundo(Documento& documento, const NoArvore& no) {
    EstadoDocumento& estado = documento.estado;
    const std::string_view chaveGrade = chaves::gradeDoFundo(no.chave);
    if (estado.noAtual == nullptr) {
        estado.noAtual = &documento.secaoPorChave(chaveGrade);
    }
    estado.secaoAtual = estado.noAtual->getSecaoMestre().get();
    GradeSecao& grade = documento.grade(chaveGrade);
    filtra(grade, "rowID", chaves::rowIDDoFundo(no.chave));
    grade.caption = std::string(tituloFundo) + no.texto;
    estado.btnAdicionar = false;
    estado.btnRemover = false;
    return {&grade, estado.secaoAtual != nullptr};
}

Clique cliqueNaSecao(Documento& documento, const NoArvore& no) {
    EstadoDocumento& estado = documento.estado;
    const std::string_view chaveGrade = chaves::parte(no.chave, 3);
    const SectionOwner& secao = documento.secaoPorChave(chaveGrade);
    estado.noAtual = &secao;
    estado.secaoAtual = &comoSecao(secao);
    GradeSecao& grade = documento.grade(chaveGrade);
    filtra(grade, "rowMaster", chaves::rowIDDaSecao(no.chave));
    documento.setCaption(grade, *estado.secaoAtual);
    grade.caption += " - " + std::string(tituloFundo) + (no.pai == nullptr ? "" : no.pai->texto);
    return {&grade, true};
}

Clique porTipo(Documento& documento, const NoArvore& no) {
    switch (chaves::tipo(no.chave)) {
    case chaves::TipoNo::Raiz:
        return cliqueNaRaiz(documento);
    case chaves::TipoNo::Grupo:
        return cliqueNoGrupo(documento, no);
    case chaves::TipoNo::Fundo:
        return cliqueNoFundo(documento, no);
    case chaves::TipoNo::Secao:
        return cliqueNaSecao(documento, no);
    case chaves::TipoNo::Outro:
        break;
    }
    return {};
}

} // namespace

void addFundo2TreeView(Documento& documento, const SectionOwner& obj, std::int32_t rowID,
                       std::string_view titulo) {
    guarded("frmTramador.addFundo2TreeView", [&] { incluiOuRenomeia(documento, obj, rowID, titulo); });
}

Clique treeFundos_Click(Documento& documento) {
    const NoArvore* no = documento.arvore.selecionado();
    if (no == nullptr) {
        return {};
    }
    documento.estado.chaveNo = no->chave;
    documento.estado.btnAdicionar = true;
    documento.estado.btnRemover = true;
    const Clique clique = porTipo(documento, *no);
    if (clique.grade != nullptr) {
        documento.setGrid(*clique.grade);
        documento.estado.chaveGrid = clique.grade->chave;
    }
    return clique;
}

} // namespace tv::fundos
