#include "common/TrabalhoGuardado.h"

#include "platform/ByteStream.h"
#include "platform/Error.h"

namespace tv::arquivoDeTrabalho {

namespace {

constexpr std::string_view assinatura = "TVTRABALHO1\n"; ///< Another form gets another number.
constexpr std::size_t tamanhoDaSoma = 16;                ///< Hexadecimal digits.

std::string digitos(std::uint64_t soma) {
    constexpr std::string_view digito = "0123456789abcdef";
    constexpr unsigned bitsDoDigito = 4;
    std::string texto(tamanhoDaSoma, '0');
    for (auto lugar = texto.rbegin(); lugar != texto.rend(); ++lugar, soma >>= bitsDoDigito) {
        *lugar = digito[soma % digito.size()];
    }
    return texto;
}

[[noreturn]] void danificado() {
    throw Error(errc::invalidCall, "arquivoDeTrabalho", "O trabalho guardado está danificado");
}

} // namespace

Moldura moldura(const EtiquetaDeTrabalho& etiqueta, const PecasDeTrabalho& conteudo) {
    std::size_t tamanho = 0;
    for (const auto& peca : conteudo) {
        tamanho += peca->size();
    }
    ByteWriter inicio;
    inicio.text(etiqueta.janela);
    inicio.text(etiqueta.layout);
    inicio.text(etiqueta.arquivo);
    inicio.value(etiqueta.instante);
    inicio.number(tamanho);
    Moldura moldura{std::string(assinatura) + inicio.take(), {}};
    std::uint64_t soma = checksum(moldura.inicio);
    for (const auto& peca : conteudo) {
        soma = checksum(*peca, soma);
    }
    moldura.fim = digitos(soma);
    return moldura;
}

TrabalhoGuardado le(std::string_view bytes) {
    if (!bytes.starts_with(assinatura) || bytes.size() < assinatura.size() + tamanhoDaSoma) {
        danificado();
    }
    const std::string_view somado = bytes.substr(0, bytes.size() - tamanhoDaSoma);
    if (digitos(checksum(somado)) != bytes.substr(somado.size())) {
        danificado();
    }
    ByteReader leitor(somado.substr(assinatura.size()));
    TrabalhoGuardado lido;
    lido.janela = leitor.text();
    lido.layout = leitor.text();
    lido.arquivo = leitor.text();
    const Value instante = leitor.value();
    const std::size_t tamanho = leitor.count();
    if (!std::holds_alternative<DateTime>(instante) || tamanho != leitor.left()) {
        danificado();
    }
    lido.instante = std::get<DateTime>(instante);
    lido.conteudo = somado.substr(somado.size() - tamanho);
    return lido;
}

} // namespace tv::arquivoDeTrabalho
