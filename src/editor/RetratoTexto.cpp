#include "editor/RetratoTexto.h"

#include "editor/CodificacaoXML.h"
#include "platform/ByteStream.h"
#include "platform/Error.h"
#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace tv {

namespace {

constexpr std::string_view assinatura = "frmEditor 1"; ///< Another form gets another number.
constexpr unsigned bitsDoByte = 8;

/// UTF-8 has no way to say them.
bool temMetades(std::u16string_view texto) {
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const unsigned parte = texto[i] & 0xFC00U;
        const bool par = parte == 0xD800U && i + 1 < texto.size() && (texto[i + 1] & 0xFC00U) == 0xDC00U;
        if (!par && (parte == 0xD800U || parte == 0xDC00U)) {
            return true;
        }
        i += par ? 1 : 0;
    }
    return false;
}

std::string emUnidades(std::u16string_view texto) {
    std::string bytes;
    bytes.reserve(2 * texto.size());
    for (const char16_t unidade : texto) {
        bytes += static_cast<char>(unidade & 0xFFU);
        bytes += static_cast<char>(unidade >> bitsDoByte);
    }
    return bytes;
}

std::u16string deUnidades(std::string_view bytes) {
    std::u16string texto;
    texto.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const unsigned baixo = static_cast<unsigned char>(bytes[i]);
        const unsigned alto = static_cast<unsigned char>(bytes[i + 1]);
        texto += static_cast<char16_t>(baixo | (alto << bitsDoByte));
    }
    return texto;
}

std::int32_t inteiro(ByteReader& bytes) {
    const Value valor = bytes.value();
    const auto* lido = std::get_if<std::int32_t>(&valor);
    return lido == nullptr ? 0 : *lido;
}

} // namespace

std::string RetratoTexto::bytes() const {
    ByteWriter bytes;
    bytes.text(assinatura);
    bytes.value(inicioSelecao);
    bytes.value(tamanhoSelecao);
    bytes.value(quebraForcada);
    arquivo.guarda(bytes);
    const std::u16string unidades = texto.inteiro();
    const bool metades = temMetades(unidades);
    bytes.value(metades);
    if (metades) {
        bytes.text(emUnidades(unidades));
    } else {
        std::string utf8;
        utf8.reserve(unidades.size() + unidades.size() / 8);
        text::appendUtf8(utf8, unidades.data(), unidades.size());
        bytes.text(utf8);
    }
    return bytes.take();
}

RetratoTexto RetratoTexto::le(std::string_view conteudo, std::filesystem::path caminho) {
    ByteReader bytes(conteudo);
    if (bytes.text() != assinatura) {
        throw Error(errc::invalidCall, "RetratoTexto", "O trabalho guardado é de outra versão do programa");
    }
    RetratoTexto retrato;
    retrato.inicioSelecao = inteiro(bytes);
    retrato.tamanhoSelecao = inteiro(bytes);
    retrato.quebraForcada = bytes.value() == Value(true);
    retrato.arquivo.retoma(std::move(caminho), bytes);
    const bool metades = bytes.value() == Value(true);
    const std::string_view texto = bytes.text();
    retrato.texto = Texto(metades ? deUnidades(texto) : utf16DeUtf8(texto));
    return retrato;
}

} // namespace tv
