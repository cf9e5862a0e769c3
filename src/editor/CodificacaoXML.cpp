#include "editor/CodificacaoXML.h"

#include "editor/TabelaDeBytes.h"
#include "platform/Utf8.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

namespace tv {
namespace {

using Familia = CodificacaoXML::Familia;
using FimDeLinha = CodificacaoXML::FimDeLinha;

constexpr char16_t substituto = 0xFFFD;
constexpr std::string_view marcaUtf8 = "\xEF\xBB\xBF";
constexpr std::string_view marcaLE = "\xFF\xFE";
constexpr std::string_view marcaBE = "\xFE\xFF";

unsigned char unsignedByte(char c) noexcept {
    return static_cast<unsigned char>(c);
}

void appendUtf16(std::u16string& out, char32_t caractere) {
    if (caractere < 0x10000) {
        out.push_back(static_cast<char16_t>(caractere));
    } else {
        out.push_back(static_cast<char16_t>(0xD7C0 + (caractere >> 10U)));
        out.push_back(static_cast<char16_t>(0xDC00 + (caractere & 0x3FFU)));
    }
}

std::u16string deUtf8(std::string_view bytes, std::size_t& ilegiveis) {
    std::u16string out;
    out.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        if (unsignedByte(bytes[at]) < 0x80) {
            out.push_back(static_cast<char16_t>(bytes[at++]));
            continue;
        }
        const utf8::Decoded lido = utf8::decode(bytes, at);
        ilegiveis += lido.wellFormed ? 0 : 1;
        appendUtf16(out, lido.character);
        at += lido.length;
    }
    return out;
}

bool isHigh(char16_t unit) noexcept {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLow(char16_t unit) noexcept {
    return unit >= 0xDC00 && unit < 0xE000;
}

std::u16string deUtf16(std::string_view bytes, bool bigEndian, std::size_t& ilegiveis) {
    std::u16string out;
    out.reserve(bytes.size() / 2 + 1);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const unsigned alto = unsignedByte(bytes[at + (bigEndian ? 0 : 1)]);
        out.push_back(static_cast<char16_t>((alto << 8U) | unsignedByte(bytes[at + (bigEndian ? 1 : 0)])));
    }
    for (std::size_t at = 0; at < out.size(); ++at) {
        if (isHigh(out[at]) && at + 1 < out.size() && isLow(out[at + 1])) {
            ++at;
        } else if (isHigh(out[at]) || isLow(out[at])) {
            out[at] = substituto;
            ++ilegiveis;
        }
    }
    if (bytes.size() % 2 != 0) {
        out.push_back(substituto);
        ++ilegiveis;
    }
    return out;
}

std::u16string deTabela(std::string_view bytes, const TabelaDeBytes& tabela, std::size_t& ilegiveis) {
    std::u16string out(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), out.begin(), [&](char byte) {
        const char16_t caractere = tabela.caractere(unsignedByte(byte));
        ilegiveis += caractere == TabelaDeBytes::nenhum ? 1 : 0;
        return caractere;
    });
    return out;
}

/// Turns all line ends into line feeds and tells which kind was the most frequent.
FimDeLinha uneLinhas(std::u16string& texto) {
    std::size_t pares = 0;
    std::size_t cr = 0;
    std::size_t lf = 0;
    std::size_t para = 0;
    for (std::size_t de = 0; de < texto.size(); ++de) {
        char16_t unidade = texto[de];
        if (unidade == u'\r') {
            const bool par = de + 1 < texto.size() && texto[de + 1] == u'\n';
            ++(par ? pares : cr);
            de += par ? 1 : 0;
            unidade = u'\n';
        } else if (unidade == u'\n') {
            ++lf;
        }
        texto[para++] = unidade;
    }
    texto.resize(para);
    if (pares > 0 && pares >= lf && pares >= cr) {
        return FimDeLinha::CrLf;
    }
    return cr > lf ? FimDeLinha::Cr : FimDeLinha::Lf;
}

/// The family of bytes without a mark, by how "<" is written.
Familia semMarca(std::string_view bytes) {
    if (bytes.size() >= 2 && bytes[0] == '<' && bytes[1] == '\0') {
        return Familia::Utf16LE;
    }
    if (bytes.size() >= 2 && bytes[0] == '\0' && bytes[1] == '<') {
        return Familia::Utf16BE;
    }
    return Familia::Utf8;
}

bool isUtf8Name(std::string_view nome) {
    return text::equalsNoCase(nome, "UTF-8") || text::equalsNoCase(nome, "UTF8");
}

/// The families that a name stands for; nothing for an unknown one.
std::optional<CodificacaoXML> porNome(std::string_view nome) {
    CodificacaoXML resultado;
    resultado.declarada = nome;
    resultado.nome = text::upper(nome);
    if (isUtf8Name(nome)) {
        resultado.nome = "UTF-8";
    } else if (text::equalsNoCase(nome, "UTF-16") || text::equalsNoCase(nome, "UTF-16LE") ||
               text::equalsNoCase(nome, "ISO-10646-UCS-2")) {
        resultado.familia = Familia::Utf16LE;
    } else if (text::equalsNoCase(nome, "UTF-16BE")) {
        resultado.familia = Familia::Utf16BE;
    } else if (TabelaDeBytes::busca(nome)) {
        resultado.familia = Familia::UmByte;
    } else {
        return std::nullopt;
    }
    return resultado;
}

/// The declared name, read from the first bytes as far as they are ASCII.
std::string declaradaEmAscii(std::string_view bytes) {
    constexpr std::size_t longe = 512;
    const std::string_view inicio = bytes.substr(0, longe);
    std::u16string texto(inicio.size(), u'\0');
    std::transform(inicio.begin(), inicio.end(), texto.begin(),
                   [](char c) { return static_cast<char16_t>(unsignedByte(c)); });
    return codificacaoDeclarada(texto);
}

CodificacaoXML reconhece(std::string_view bytes) {
    CodificacaoXML resultado;
    if (bytes.starts_with(marcaUtf8)) {
        resultado.marca = true;
    } else if (bytes.starts_with(marcaLE) || bytes.starts_with(marcaBE)) {
        resultado.marca = true;
        resultado.familia = bytes.starts_with(marcaLE) ? Familia::Utf16LE : Familia::Utf16BE;
    } else {
        resultado.familia = semMarca(bytes);
    }
    if (resultado.familia != Familia::Utf8) {
        resultado.nome = "UTF-16";
        return resultado;
    }
    if (resultado.marca) {
        return resultado;
    }
    const std::string nome = declaradaEmAscii(bytes);
    if (nome.empty()) {
        return resultado;
    }
    const std::optional<CodificacaoXML> conhecida = porNome(nome);
    const bool umByte = conhecida && conhecida->familia == Familia::UmByte;
    if (umByte) {
        return *conhecida;
    }
    if (!conhecida && !text::isUtf8(bytes)) {
        resultado.familia = Familia::UmByte;
        resultado.nome = "ISO-8859-1";
    }
    return resultado;
}

class Gravador {
public:
    Gravador(const CodificacaoXML& codificacao, std::size_t tamanho)
        : codificacao_(codificacao) {
        const bool utf16 = codificacao.familia == Familia::Utf16LE || codificacao.familia == Familia::Utf16BE;
        resultado_.bytes.reserve(utf16 ? 2 * tamanho + 2 : tamanho + tamanho / 16 + 3);
        if (codificacao.familia == Familia::UmByte) {
            tabela_ = TabelaDeBytes::busca(codificacao.nome);
        }
        if (codificacao.marca && codificacao.familia != Familia::UmByte) {
            caractere(0xFEFF);
        }
    }

    TextoGravado grava(std::u16string_view texto) {
        for (std::size_t at = 0; at < texto.size(); ++at) {
            const char16_t unidade = texto[at];
            if (unidade == u'\n') {
                fimDeLinha();
                ++linha_;
                inicioDaLinha_ = at + 1;
                continue;
            }
            if (unidade == u'<' || unidade == u'>') {
                acompanha(texto, at);
            }
            char32_t lido = unidade;
            coluna_ = at - inicioDaLinha_ + 1;
            if (isHigh(unidade) && at + 1 < texto.size() && isLow(texto[at + 1])) {
                lido = 0x10000U + ((static_cast<char32_t>(unidade) - 0xD800U) << 10U) +
                       (static_cast<char32_t>(texto[++at]) - 0xDC00U);
            } else if (isHigh(unidade) || isLow(unidade)) {
                lido = substituto;
            }
            caractere(lido);
        }
        return std::move(resultado_);
    }

private:
    /// Follows sections and comments, since references are none in them.
    void acompanha(std::u16string_view texto, std::size_t at) {
        constexpr std::u16string_view abreCData = u"<![CDATA[";
        constexpr std::u16string_view abreComentario = u"<!--";
        const std::u16string_view ate = texto.substr(0, at + 1);
        if (onde_ == Onde::Texto && texto.substr(at, abreCData.size()) == abreCData) {
            onde_ = Onde::CData;
        } else if (onde_ == Onde::Texto && texto.substr(at, abreComentario.size()) == abreComentario) {
            onde_ = Onde::Comentario;
        } else if ((onde_ == Onde::CData && ate.ends_with(u"]]>")) ||
                   (onde_ == Onde::Comentario && ate.ends_with(u"-->"))) {
            onde_ = Onde::Texto;
        }
    }

    void fimDeLinha() {
        if (codificacao_.fimDeLinha != FimDeLinha::Lf) {
            caractere(U'\r');
        }
        if (codificacao_.fimDeLinha != FimDeLinha::Cr) {
            caractere(U'\n');
        }
    }

    void unidade(unsigned valor) {
        const auto alto = static_cast<char>(static_cast<unsigned char>(valor >> 8U));
        const auto baixo = static_cast<char>(static_cast<unsigned char>(valor & 0xFFU));
        const bool bigEndian = codificacao_.familia == Familia::Utf16BE;
        resultado_.bytes.push_back(bigEndian ? alto : baixo);
        resultado_.bytes.push_back(bigEndian ? baixo : alto);
    }

    void caractere(char32_t c) {
        switch (codificacao_.familia) {
        case Familia::Utf8:
            if (c < 0x80) {
                resultado_.bytes.push_back(static_cast<char>(c));
            } else {
                utf8::append(resultado_.bytes, c);
            }
            return;
        case Familia::Utf16LE:
        case Familia::Utf16BE:
            if (c < 0x10000) {
                unidade(c);
            } else {
                unidade(0xD7C0U + (c >> 10U));
                unidade(0xDC00U + (c & 0x3FFU));
            }
            return;
        case Familia::UmByte:
            umByte(c);
        }
    }

    void umByte(char32_t c) {
        const int byte = c < 0x80 ? static_cast<int>(c) : tabela_->byte(c);
        if (byte >= 0) {
            resultado_.bytes.push_back(static_cast<char>(static_cast<unsigned char>(byte)));
            return;
        }
        if (resultado_.ausentes++ == 0) {
            resultado_.primeiroAusente = c;
            resultado_.linha = linha_;
            resultado_.coluna = static_cast<std::int32_t>(coluna_);
        }
        const std::string referencia = "&#" + std::to_string(static_cast<std::uint32_t>(c)) + ";";
        resultado_.bytes += onde_ == Onde::CData ? "]]>" + referencia + "<![CDATA[" : referencia;
    }

    enum class Onde { Texto, CData, Comentario };

    const CodificacaoXML& codificacao_;
    std::shared_ptr<const TabelaDeBytes> tabela_;
    TextoGravado resultado_;
    Onde onde_ = Onde::Texto;
    std::int32_t linha_ = 1;
    std::size_t coluna_ = 1;
    std::size_t inicioDaLinha_ = 0;
};

} // namespace

std::u16string utf16DeUtf8(std::string_view utf8) {
    std::size_t quebrados = 0;
    return deUtf8(utf8, quebrados);
}

std::string codificacaoDeclarada(std::u16string_view texto) {
    constexpr std::u16string_view espacos = u" \t\r\n";
    constexpr std::u16string_view inicio = u"<?xml";
    constexpr std::u16string_view chave = u"encoding";
    if (!texto.starts_with(inicio) || texto.size() == inicio.size() ||
        espacos.find(texto[inicio.size()]) == std::u16string_view::npos) {
        return {};
    }
    std::u16string_view resto = texto.substr(0, texto.find(u"?>"));
    const std::size_t lugar = resto.find(chave);
    if (lugar == std::u16string_view::npos) {
        return {};
    }
    resto.remove_prefix(lugar + chave.size());
    resto.remove_prefix(std::min(resto.find_first_not_of(espacos), resto.size()));
    if (!resto.starts_with(u'=')) {
        return {};
    }
    resto.remove_prefix(1);
    resto.remove_prefix(std::min(resto.find_first_not_of(espacos), resto.size()));
    if (!resto.starts_with(u'"') && !resto.starts_with(u'\'')) {
        return {};
    }
    const std::u16string_view nome = resto.substr(1, resto.find(resto.front(), 1) - 1);
    std::string resultado;
    text::appendUtf8(resultado, nome.data(), nome.size());
    return resultado;
}

TextoLido leTexto(std::string_view bytes) {
    TextoLido lido;
    lido.codificacao = reconhece(bytes);
    CodificacaoXML& codificacao = lido.codificacao;
    if (codificacao.marca) {
        bytes.remove_prefix((codificacao.familia == Familia::Utf8 ? marcaUtf8 : marcaLE).size());
    }
    switch (codificacao.familia) {
    case Familia::Utf8:
        lido.texto = deUtf8(bytes, lido.ilegiveis);
        break;
    case Familia::Utf16LE:
    case Familia::Utf16BE:
        lido.texto = deUtf16(bytes, codificacao.familia == Familia::Utf16BE, lido.ilegiveis);
        break;
    case Familia::UmByte:
        lido.texto = deTabela(bytes, *TabelaDeBytes::busca(codificacao.nome), lido.ilegiveis);
        break;
    }
    codificacao.fimDeLinha = uneLinhas(lido.texto);
    codificacao.declarada = codificacaoDeclarada(lido.texto);
    return lido;
}

CodificacaoXML codificacaoParaGravar(std::u16string_view texto, const CodificacaoXML& lida) {
    const std::string declarada = codificacaoDeclarada(texto);
    if (text::equalsNoCase(declarada, lida.declarada)) {
        return lida;
    }
    const bool utf16 = lida.familia == Familia::Utf16LE || lida.familia == Familia::Utf16BE;
    std::optional<CodificacaoXML> nova = declarada.empty() ? CodificacaoXML{} : porNome(declarada);
    if (!nova || (declarada.empty() && utf16)) {
        return lida;
    }
    nova->fimDeLinha = lida.fimDeLinha;
    nova->marca = nova->familia == Familia::Utf8 ? lida.marca && lida.familia == Familia::Utf8
                                                 : nova->familia != Familia::UmByte;
    return *nova;
}

TextoGravado gravaTexto(std::u16string_view texto, const CodificacaoXML& codificacao) {
    return Gravador(codificacao, texto.size()).grava(texto);
}

} // namespace tv
