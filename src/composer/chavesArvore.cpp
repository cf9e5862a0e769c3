#include "composer/chavesArvore.h"

#include "platform/Error.h"
#include "platform/format.h"
#include "platform/text.h"

namespace tv::chaves {
namespace {

std::int32_t numero(std::string_view texto) {
    return text::toInt32(text::lenientNumber(texto));
}

/// What stands in front of the next comma.
std::string_view ateSeparador(std::string_view texto) {
    return texto.substr(0, texto.find(','));
}

} // namespace

TipoNo tipo(std::string_view chave) noexcept {
    if (chave == raiz) {
        return TipoNo::Raiz;
    }
    if (text::startsWith(chave, prefixoGrupo)) {
        return TipoNo::Grupo;
    }
    if (text::startsWith(chave, "g")) {
        return TipoNo::Fundo;
    }
    return text::startsWith(chave, "s") ? TipoNo::Secao : TipoNo::Outro;
}

std::string rowID4(std::int32_t rowID) {
    return format::format(Value(rowID), "0000");
}

std::string_view parte(std::string_view chave, std::size_t posicao) {
    const std::vector<std::string_view> partes = text::split(chave, ',');
    if (posicao >= partes.size()) {
        throw Error(errc::subscriptOutOfRange, "chaves.parte",
                    "A chave não tem essa parte: " + std::string(chave));
    }
    return partes[posicao];
}

std::string fundo(std::string_view chaveNo, std::int32_t rowID, std::string_view chaveGrade) {
    return "g" + std::string(chaveNo) + "_" + rowID4(rowID) + "," + std::string(chaveGrade);
}

std::string secao(std::string_view chavePai, std::int32_t rowID, std::string_view tag,
                  std::string_view caminho) {
    const bool sobSecao = text::contains(chavePai, ",");
    std::string chave = sobSecao ? std::string(parte(chavePai, 0)) : "s" + std::string(chavePai);
    chave += "," + rowID4(rowID) + "," + std::string(tag) + ",";
    return chave.append(sobSecao ? parte(caminho, 3) : caminho);
}

std::string_view gradeDoFundo(std::string_view chave) noexcept {
    const std::size_t virgula = chave.rfind(',');
    return virgula == std::string_view::npos ? std::string_view() : chave.substr(virgula + 1);
}

std::int32_t rowIDFeito(std::string_view chave) {
    const std::string_view antes = chave.substr(0, chave.rfind(','));
    return numero(antes.substr(antes.rfind('_') + 1));
}

std::int32_t rowIDDoFundo(std::string_view chave) {
    constexpr std::string_view sobRaiz = "gkCONST_RAIZ";
    const std::size_t prefixo = text::startsWith(chave, sobRaiz) ? sobRaiz.size() + 1 : 2;
    return numero(ateSeparador(chave.substr(std::min(prefixo, chave.size()))));
}

std::int32_t rowIDDaSecao(std::string_view chave) {
    const std::size_t virgula = chave.find(',');
    return numero(ateSeparador(virgula == std::string_view::npos ? chave : chave.substr(virgula + 1)));
}

} // namespace tv::chaves
