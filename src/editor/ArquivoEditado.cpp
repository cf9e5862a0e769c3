#include "editor/ArquivoEditado.h"

#include "platform/Error.h"
#include "platform/XmlForm.h"
#include "platform/text.h"

#include <cstdint>
#include <utility>

namespace tv {
namespace {

/// Units that the text widget can hold with room for its own work.
constexpr std::size_t maxUnidades = std::size_t{1} << 30U;
constexpr std::int32_t semMemoria = 7;

} // namespace

std::u16string ArquivoEditado::le(std::filesystem::path caminho) {
    caminho_ = std::move(caminho);
    codificacao_ = {};
    ilegiveis_ = 0;
    lido_ = false;
    estado_.reset();
    anotaEstado(); // before the bytes: a change during the read counts as one after it
    const std::string bytes = files::readAll(caminho_);
    if (bytes.size() > maxUnidades) {
        throw Error(semMemoria, "ArquivoEditado", "Arquivo grande demais: " + files::toText(caminho_));
    }
    TextoLido lido = leTexto(bytes);
    codificacao_ = std::move(lido.codificacao);
    ilegiveis_ = lido.ilegiveis;
    lido_ = true;
    return std::move(lido.texto);
}

void ArquivoEditado::anotaEstado() {
    try {
        estado_ = files::stamp(caminho_);
    } catch (const Error&) {
        estado_.reset();
    }
}

bool ArquivoEditado::naoLido() const {
    return !lido_ && files::exists(caminho_);
}

bool ArquivoEditado::mudouNoDisco() const {
    if (!files::exists(caminho_)) {
        return false; // nothing is there to be lost
    }
    try {
        return !estado_ || *estado_ != files::stamp(caminho_);
    } catch (const Error&) {
        return true;
    }
}

ArquivoEditado::Preparo ArquivoEditado::prepara(std::u16string_view texto) const {
    Preparo preparo;
    preparo.codificacao = codificacaoParaGravar(texto, codificacao_);
    std::string utf8;
    utf8.reserve(texto.size() + texto.size() / 8);
    text::appendUtf8(utf8, texto.data(), texto.size());
    if (const std::optional<std::string> forma = inParsersForm(utf8)) {
        preparo.forma = utf16DeUtf8(*forma);
    }
    utf8 = {};
    const std::u16string_view saida = preparo.forma ? *preparo.forma : texto;
    preparo.gravado = gravaTexto(saida, preparo.codificacao);
    preparo.perdeIlegiveis = ilegiveis_ > 0 && saida.find(u'\uFFFD') != std::u16string_view::npos;
    return preparo;
}

void ArquivoEditado::grava(const Preparo& preparo) {
    files::replaceWhole(caminho_, preparo.gravado.bytes);
    codificacao_ = preparo.codificacao;
    ilegiveis_ = 0;
    lido_ = true;
    anotaEstado();
}

} // namespace tv
