#include "composer/Documento.h"

#include "composer/chavesArvore.h"
#include "platform/Error.h"
#include "platform/text.h"

#include <algorithm>

namespace tv {
namespace {

/// Throws Error 91 where the section's fields make no record set.
std::shared_ptr<RecordSet> novoRecordSet(const clsSecao& secao) {
    if (std::shared_ptr<RecordSet> dados = secao.createRecordSet()) {
        return dados;
    }
    throw Error(errc::objectNotSet, "frmTramador", "A seção " + secao.getTag() + " não tem registros");
}

} // namespace

const clsSecao& comoSecao(const SectionOwner& owner) {
    if (const auto* secao = dynamic_cast<const clsSecao*>(&owner)) {
        return *secao;
    }
    throw Error(errc::memberNotOffered, "frmTramador", "O boleto " + owner.getTag() + " não é uma seção");
}

void Documento::abrir(std::shared_ptr<const clsBoleto> boleto) {
    boleto_ = std::move(boleto);
    if (layout_ == nullptr) {
        layout_ = boleto_;
    }
    grids_.clear();
    grade_ = nullptr;
    secoesPorChave_.clear();
    secoesPorChave_.Add(boleto_.get(), chaves::raiz);
    estado.linhasApagadas.clear();
    estado.noAtual = boleto_.get();
    estado.secaoAtual = boleto_->getSecaoMestre().get();
    estado.salvo = true;
    createGrid();
}

void Documento::createGrid() {
    montaArvore();
    if (grids_.empty()) {
        montaGrid(*estado.noAtual, estado.noAtual->getTag(), nullptr);
    } else {
        montaGrid_abreBoleto();
    }
    escolhePrimeiraGrade();
}

/// Group nodes are the first ones made: a click on one finds its section by the node's place in the order of
/// creation.
void Documento::montaArvore() {
    limpaArvore();
    if (!arvoreVisivel()) {
        return;
    }
    arvore.add({}, chaves::raiz, "Boleto", "imgBoleto");
    for (const std::shared_ptr<const clsSecao>& secao : layout_->getSecoes()) {
        if (!secao->getTagGrupo().empty()) {
            arvore.add(chaves::raiz, std::string(chaves::prefixoGrupo) + secao->getTag(), secao->getNome(),
                       "imgBoleto");
        }
    }
    arvore.expande(chaves::raiz, true);
}

/// The key lives across the turns of the loop: a section without fields behind a sibling with fields puts its
/// children below that sibling's key.
void Documento::montaGrid(const SectionOwner& obj, const std::string& chavePai, const clsSecao* secaoTopo) {
    std::string chave;
    for (const std::shared_ptr<const clsSecao>& secao : obj.getSecoes()) {
        const clsSecao& topo = secaoTopo == nullptr ? *secao : *secaoTopo;
        if (!secao->getCampos().empty()) {
            const bool temDono = text::contains(chavePai, obj.getTag());
            const std::string prefixoChave = temDono ? chavePai : chavePai + "_" + obj.getTag();
            chave = prefixoChave + "_" + secao->getTag();
            incluiGrade(obj, *secao, topo, chave);
        }
        if (chave.empty()) {
            chave = obj.getTag();
        }
        if (!secao->getSecoes().empty()) {
            montaGrid(*secao, chave, &topo);
        }
    }
}

void Documento::incluiGrade(const SectionOwner& obj, const clsSecao& secao, const clsSecao& secaoTopo,
                            const std::string& chave) {
    auto nova = std::make_shared<GradeSecao>();
    nova->chave = chave;
    nova->nome = obj.getTag() + "_" + secao.getTag();
    nova->tag = secao.getTag();
    nova->dono = &obj;
    nova->secao = &secao;
    nova->secaoTopo = &secaoTopo;
    nova->dados = novoRecordSet(secao);
    setCaption(*nova, secao);
    setGrid(*nova);
    grids_.Add(std::move(nova), chave);
    secoesPorChave_.Add(&secao, chave);
}

void Documento::montaGrid_abreBoleto() {
    for (const std::shared_ptr<GradeSecao>& grade : grids_) {
        grade->dados = novoRecordSet(*grade->secao);
        setCaption(*grade, *grade->secao);
    }
}

std::string Documento::chavePrimeiraGrade() const {
    const SectionOwner& no = *estado.noAtual;
    std::string chave = layout_->getTag();
    if (&no != layout_.get()) {
        chave += "_" + no.getTag();
    }
    const SectionOwner* dono = &no;
    if (no.getSecaoMestre() == nullptr) {
        dono = no.getSecoes().Item(1).get();
        chave += "_" + dono->getTag();
    }
    if (dono->getSecaoMestre() == nullptr) {
        throw Error(errc::objectNotSet, "frmTramador.createGrid",
                    "A seção " + dono->getTag() + " não tem seção mestre");
    }
    return chave + "_" + dono->getSecaoMestre()->getTag();
}

/// Without a master directly below, the work starts in the first section, which only wraps others.
void Documento::escolhePrimeiraGrade() {
    const std::string chave = chavePrimeiraGrade();
    if (estado.noAtual->getSecaoMestre() == nullptr) {
        estado.noAtual = estado.noAtual->getSecoes().Item(1).get();
        if (const NoArvore* primeiro = arvore.primeiroFilho()) {
            selecionaNo(primeiro->chave);
        }
    }
    setGrid(grade(chave));
    estado.chaveGrid = chave;
}

const SectionOwner& Documento::secaoPorChave(std::string_view chave) const {
    return *secoesPorChave_.Item(chave);
}

GradeSecao& Documento::getGrid() const {
    if (grade_ == nullptr) {
        throw Error(errc::objectNotSet, "frmTramador.getGrid", "Não há grade");
    }
    return *grade_;
}

RecordSets Documento::addRSCollection() const {
    RecordSets recordSets;
    addRSCollection(*layout_, layout_->getTag(), recordSets);
    return recordSets;
}

void Documento::addRSCollection(const SectionOwner& obj, const std::string& chave,
                                RecordSets& recordSets) const {
    for (const std::shared_ptr<const clsSecao>& secao : obj.getSecoes()) {
        const std::string daSecao = chave + "_" + secao->getTag();
        if (!secao->getCampos().empty()) {
            recordSets.Add(grade(daSecao).dados, daSecao);
        }
        if (!secao->getSecoes().empty()) {
            addRSCollection(*secao, daSecao, recordSets);
        }
    }
}

void Documento::setCaption(GradeSecao& grade, const clsSecao& secao) const {
    const std::string titulo = secao.isSecaoMestre() ? layout_->getTitulo() : secao.getNome();
    grade.caption = text::replaceAll(titulo, "&", "&&");
}

const SectionOwner& Documento::secaoDaGrade(const GradeSecao& grade) const {
    if (text::contains(estado.chaveNo, ",")) {
        return secaoPorChave(chaves::parte(estado.chaveNo, 3));
    }
    if (grade.tag == estado.noAtual->getTag()) {
        return *estado.noAtual;
    }
    return *estado.noAtual->getSecoes().Item(grade.tag);
}

void Documento::limpaArvore() {
    arvore.clear();
    estado.chaveNo.clear();
}

void Documento::selecionaNo(std::string_view chave) {
    arvore.seleciona(chave);
    estado.chaveNo = arvore.chaveSelecionada();
}

} // namespace tv
