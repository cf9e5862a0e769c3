#include "validation/clsResultado.h"

#include "logging/Routine.h"
#include "model/clsCampo.h"
#include "model/clsSecao.h"
#include "platform/Error.h"
#include "platform/XmlReader.h"
#include "platform/text.h"

#include <array>
#include <charconv>
#include <utility>
#include <vector>

namespace tv {

namespace {

std::string hexadecimal(std::int32_t codigo) {
    std::array<char, 8> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<std::uint32_t>(codigo), 16);
    return text::upper(std::string_view(digits.data(), static_cast<std::size_t>(end.ptr - digits.data())));
}

std::string escapaXML(std::string_view texto) {
    // The ampersand goes first, so that the others are not escaped twice.
    std::string result = text::replaceAll(texto, "&", "&amp;");
    result = text::replaceAll(result, "<", "&lt;");
    result = text::replaceAll(result, ">", "&gt;");
    result = text::replaceAll(result, "'", "&apos;");
    return text::replaceAll(result, "\"", "&quot;");
}

// Tokens of a path counted from its end: 0 is the last one.
class Caminho {
public:
    explicit Caminho(std::string_view path)
        : tokens_(text::split(path, '.')) {}

    std::size_t tamanho() const noexcept { return tokens_.size(); }
    /// Null where the path has no such token.
    const std::string_view* doFim(std::size_t i) const noexcept {
        return i < tokens_.size() ? &tokens_[tokens_.size() - 1 - i] : nullptr;
    }

private:
    std::vector<std::string_view> tokens_;
};

const clsSecao* procuraSecao(const SectionOwner* dono, const std::string_view* tag) {
    if (dono == nullptr || tag == nullptr) {
        return nullptr;
    }
    const auto* found = dono->getSecoes().find(*tag);
    return found == nullptr ? nullptr : found->get();
}

const clsCampo* procuraCampo(const clsSecao* secao, const std::string_view* tag) {
    if (secao == nullptr || tag == nullptr) {
        return nullptr;
    }
    const auto* found = secao->getCampos().find(*tag);
    return found == nullptr ? nullptr : found->get();
}

std::string vazioSeTemPonto(const std::string& texto) {
    return text::contains(texto, ".") ? std::string() : texto;
}

} // namespace

void clsResultado::setError(std::int32_t codigo, std::string_view titulo, std::string_view descricao) {
    errorCode_ = hexadecimal(codigo);
    tipo_ = dominio;
    switch (codigo) {
    case xmlcode::elementNotAllowed:
        tipo_ = estrutura;
        titulo_ = descricao_ = "Nome de Campo não esperado";
        break;
    case codigoEntreCampos:
        titulo_ = titulo;
        descricao_ = descricao;
        break;
    case codigoRegraCampo:
        titulo_ = "Valor não pertence ao Domínio";
        descricao_ = "O valor do campo não é válido";
        break;
    case xmlcode::valueRefused:
        titulo_ = descricao_ = "Valor não pertence ao Domínio do Campo";
        break;
    case xmlcode::notWellFormed:
        tipo_ = estrutura;
        titulo_ = descricao_ = "Arquivo com falha na Estrutura ";
        break;
    default:
        tipo_ = desconhecido;
        titulo_ = titulo;
        descricao_ = descricao;
        break;
    }
}

void clsResultado::setLocation(std::int32_t linha, std::int32_t coluna) noexcept {
    linha_ = linha;
    coluna_ = coluna;
}

void clsResultado::setTag(std::string nome, std::string valor, std::string path,
                          TextoAcumulado::Momento chave) {
    tagName_ = std::move(nome);
    tagValue_ = std::move(valor);
    tagPath_ = std::move(path);
    chave_ = std::move(chave);
}

void clsResultado::continuaChave(const TextoAcumulado& parte, const TextoAcumulado& inteiro,
                                 std::size_t antes) {
    chave_ = inteiro.mesmoMomento(chave_, parte, antes);
}

void clsResultado::setTag(std::string nome, std::string valor, std::string path, std::string_view chave) {
    setTag(std::move(nome), std::move(valor), std::move(path), TextoAcumulado::Momento(chave));
}

std::string clsResultado::getSecao() const {
    const Caminho caminho(tagPath_);
    const SectionOwner* layout = boleto_.get();
    if (const clsSecao* secao = procuraSecao(layout, caminho.doFim(0))) {
        return secao->getNome();
    }
    if (const clsSecao* secao = procuraSecao(layout, caminho.doFim(1))) {
        return secao->getNome();
    }
    const clsSecao* secao = procuraSecao(procuraSecao(layout, caminho.doFim(2)), caminho.doFim(1));
    return vazioSeTemPonto(secao == nullptr ? tagPath_ : secao->getNome());
}

std::string clsResultado::getCampo() const {
    const Caminho caminho(tagPath_);
    if (caminho.tamanho() == 0) {
        throw Error(errc::subscriptOutOfRange, "clsResultado.getCampo", "O resultado não tem caminho");
    }
    const std::string_view* campo = caminho.doFim(0);
    if (caminho.tamanho() == 1) {
        return std::string(*campo);
    }
    const SectionOwner* layout = boleto_.get();
    if (const clsCampo* found = procuraCampo(procuraSecao(layout, caminho.doFim(1)), campo)) {
        return found->getNome();
    }
    const clsSecao* secao = procuraSecao(procuraSecao(layout, caminho.doFim(2)), caminho.doFim(1));
    if (const clsCampo* found = procuraCampo(secao, campo)) {
        return found->getNome();
    }
    return vazioSeTemPonto(tagPath_);
}

std::string clsResultado::getTipoPosicao(std::string_view path) {
    for (const std::string_view token : text::split(path, '.')) {
        if (token == "fundo" || token == "carteira") {
            return std::string(text::trim(token));
        }
    }
    return {};
}

std::string clsResultado::getCodigoFundo(std::string_view chave) {
    constexpr std::size_t maxCodigo = 14;
    const std::string codigo = text::upper(text::trim(chave.substr(0, chave.find('.'))));
    return std::string(text::left(codigo, maxCodigo));
}

std::string clsResultado::getFundoLocal() const {
    return getTipoPosicao(tagPath_) == "carteira" ? getCodigoFundo(getFundo()) : getFundo();
}

std::string_view clsResultado::nomeTipo() const noexcept {
    switch (tipo_) {
    case nenhum:
        return "NULL";
    case dominio:
        return "DOMINIO";
    case estrutura:
        return "ESTRUTURA";
    case desconhecido:
        return "DESCONHECIDO";
    default:
        return {};
    }
}

std::string clsResultado::montaXML() const {
    std::string xml =
        "<RESULTADO linha=\"@linha\" coluna=\"@coluna\" tipoResultado=\"@tipoResultado\" >"
        "<DESCRICAO errCode=\"@errCode\" titulo=\"@titulo\" ><![CDATA[@descricao]]></DESCRICAO>"
        "<LOCAL fundo=\"@fundo\" secao=\"@secao\" campo=\"@campo\" valor=\"@valor\" atributo=\"@atrib\" />"
        "</RESULTADO>";
    // A text put in by an early step is searched by the later ones too; that is accepted.
    const auto troca = [&xml](std::string_view marca, std::string_view valor) {
        xml = text::replaceAll(xml, marca, valor);
    };
    troca("@linha", std::to_string(linha_));
    troca("@coluna", std::to_string(coluna_));
    if (!nomeTipo().empty()) {
        troca("@tipoResultado", nomeTipo());
    }
    troca("@errCode", errorCode_);
    troca("@titulo", escapaXML(titulo_));
    troca("@descricao", descricao_);
    troca("@secao", escapaXML(getSecao()));
    const std::string campo = escapaXML(getCampo());
    troca("@campo", campo);
    const bool semValor = text::contains(campo, ".") || !text::contains(tagPath_, ".");
    troca("@valor", semValor ? std::string() : escapaXML(getValor()));
    troca("@atrib", getTipoPosicao(tagPath_));
    troca("@fundo", getFundoLocal());
    return xml;
}

std::string clsResultado::getXML() const {
    return guarded("clsResultado.getXML", std::string(), [this] { return montaXML(); });
}

} // namespace tv
