#include "composer/EscritorBoleto.h"

#include "composer/Documento.h"
#include "composer/datasVazias.h"
#include "composer/escrita.h"
#include "composer/normalizacao.h"
#include "platform/Error.h"
#include "platform/text.h"

#include <optional>

namespace tv {
namespace {

constexpr std::string_view fimDeLinha = "\r\n";
constexpr std::int32_t textoNaoConstruido = -2147221504; // 0x80040000

std::string abertura(std::string_view tag) {
    return "<" + std::string(tag) + ">";
}

std::string fechamento(std::string_view tag) {
    return "</" + std::string(tag) + ">";
}

bool soBrancos(std::string_view texto) {
    return text::trim(texto).empty();
}

} // namespace

std::string EscritorBoleto::getXML_origem(const clsBoleto& layout, const RecordSets& recordSets,
                                          const std::string& chave) {
    std::string texto = R"(<?xml version="1.0" encoding="ISO-8859-1" ?>)";
    texto.append(fimDeLinha).append(abertura(layout.getTag())).append(fimDeLinha);
    if (layout.getSecaoMestre() != nullptr) {
        texto += getXML(layout, recordSets, chave);
    } else {
        for (const std::shared_ptr<const clsSecao>& secao : layout.getSecoes()) {
            texto += getXML(*secao, recordSets, chave + "_" + secao->getTag());
        }
    }
    return texto + fechamento(layout.getTag());
}

std::string EscritorBoleto::getXML(const SectionOwner& owner, const RecordSets& recordSets,
                                   const std::string& chave) {
    if (owner.getSecaoMestre() == nullptr) {
        throw Error(errc::objectNotSet, "clsBoleto.getXML", "Não há seção mestre em " + owner.getTag());
    }
    const clsSecao& mestre = *owner.getSecaoMestre();
    const std::unique_ptr<RecordSet> linhas = recordSets.Item(chave + "_" + mestre.getTag())->Clone();
    std::string texto;
    for (linhas->MoveFirst(); !linhas->EOF_(); linhas->MoveNext()) {
        std::string bloco = abertura(mestre.getTag()).append(fimDeLinha);
        bloco += escrita::getXMLCampos(mestre, *linhas);
        bloco.append(fechamento(mestre.getTag())).append(fimDeLinha);
        const Value& rowID = linhas->get("rowID");
        const auto* numero = std::get_if<std::int32_t>(&rowID);
        detalhes_.clear();
        bloco += montaDetalhesXML(recordSets, chave, owner, numero == nullptr ? 0 : *numero);
        if (soBrancos(bloco)) {
            continue;
        }
        if (owner.hasGrupo()) {
            texto.append(abertura(owner.getTagGrupo())).append(fimDeLinha).append(text::trim(bloco));
            texto.append(fechamento(owner.getTagGrupo())).append(fimDeLinha);
        } else {
            texto.append(bloco).append(fimDeLinha);
        }
    }
    return texto;
}

const std::string& EscritorBoleto::montaDetalhesXML(const RecordSets& recordSets, const std::string& chave,
                                                    const SectionOwner& secaoPai, std::int32_t rowID) {
    for (const std::shared_ptr<const clsSecao>& secao : secaoPai.getSecoes()) {
        if (!secao->isSecaoMestre()) {
            incluiSecao(recordSets, chave + "_" + secao->getTag(), *secao, rowID);
        }
    }
    return detalhes_;
}

/// A section without rows whose children wrote something goes around all that was written for this master so
/// far, earlier sections included.
void EscritorBoleto::incluiSecao(const RecordSets& recordSets, const std::string& chave,
                                 const clsSecao& secao, std::int32_t rowID) {
    const bool temFilhas = !secao.getSecoes().empty();
    std::string texto;
    std::optional<std::size_t> contagem;
    if (!secao.getCampos().empty()) {
        const std::unique_ptr<RecordSet> linhas = recordSets.Item(chave)->Clone();
        linhas->Filter("rowMaster=" + std::to_string(rowID));
        contagem = linhas->RecordCount();
        texto = datasVazias::ajustaDatasVazias(escrita::getXML(secao, *linhas), secao.getTag(), contagem);
    }
    escreveu_ = !texto.empty();
    if (!texto.empty()) {
        detalhes_ += temFilhas ? abertura(secao.getTag()) + texto : texto;
    }
    if (!temFilhas) {
        return;
    }
    montaDetalhesXML(recordSets, chave, secao, rowID);
    if (!texto.empty()) {
        detalhes_ += fechamento(secao.getTag());
    } else if (escreveu_) {
        detalhes_ = abertura(secao.getTag()) + detalhes_ + fechamento(secao.getTag());
    }
}

XmlDocument montaDocumento(const Documento& documento) {
    const clsBoleto& layout = documento.layout();
    XmlDocument dom;
    if (!dom.loadXML(EscritorBoleto().getXML_origem(layout, documento.addRSCollection(), layout.getTag()))) {
        throw Error(textoNaoConstruido, "frmTramador.salvarBoleto", "Erro na contrução do XML");
    }
    normalizacao::normalizaParaArquivo(dom, documento.boleto()->getTag());
    return dom;
}

} // namespace tv
