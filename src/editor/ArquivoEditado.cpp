#include "editor/ArquivoEditado.h"

#include "platform/ByteStream.h"
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

/// Throws Error 5 for a number beyond the last of the kinds.
template<typename Tipo>
Tipo umDe(std::uint64_t numero, Tipo ultimo) {
    if (numero > static_cast<std::uint64_t>(ultimo)) {
        throw Error(errc::invalidCall, "ArquivoEditado", "Os dados guardados estão danificados");
    }
    return static_cast<Tipo>(numero);
}

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

void ArquivoEditado::guarda(ByteWriter& bytes) const {
    bytes.number(static_cast<std::uint64_t>(codificacao_.familia));
    bytes.text(codificacao_.nome);
    bytes.text(codificacao_.declarada);
    bytes.value(codificacao_.marca);
    bytes.number(static_cast<std::uint64_t>(codificacao_.fimDeLinha));
    bytes.number(ilegiveis_);
    bytes.value(lido_);
    bytes.value(estado_.has_value());
    if (estado_) {
        bytes.number(estado_->size);
        bytes.number(static_cast<std::uint64_t>(estado_->time.time_since_epoch().count()));
    }
}

void ArquivoEditado::retoma(std::filesystem::path caminho, ByteReader& bytes) {
    using Familia = CodificacaoXML::Familia;
    using FimDeLinha = CodificacaoXML::FimDeLinha;
    const auto sim = [&bytes] { return bytes.value() == Value(true); };
    caminho_ = std::move(caminho);
    codificacao_.familia = umDe<Familia>(bytes.number(), Familia::UmByte);
    codificacao_.nome = bytes.text();
    codificacao_.declarada = bytes.text();
    codificacao_.marca = sim();
    codificacao_.fimDeLinha = umDe<FimDeLinha>(bytes.number(), FimDeLinha::Cr);
    ilegiveis_ = static_cast<std::size_t>(bytes.number());
    lido_ = sim();
    estado_.reset();
    if (sim()) {
        const std::uint64_t tamanho = bytes.number();
        const std::filesystem::file_time_type::duration instante(static_cast<std::int64_t>(bytes.number()));
        estado_ = {tamanho, std::filesystem::file_time_type(instante)};
    }
}

} // namespace tv
