#include "editor/LinkDeEmail.h"

#include "platform/text.h"

namespace tv {

namespace {

constexpr std::string_view prefixo = "mailto:";

/// What a link may carry as it is; everything else goes by its bytes.
bool naoReservado(char c) noexcept {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("-._~").find(c) != std::string_view::npos;
}

void codifica(std::string& link, std::string_view texto) {
    constexpr std::string_view algarismos = "0123456789ABCDEF";
    for (const char c : texto) {
        if (naoReservado(c)) {
            link += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        link += '%';
        link += algarismos[byte >> 4U];
        link += algarismos[byte & 0x0FU];
    }
}

std::string comFinsDeLinha(std::string_view texto) {
    return text::replaceAll(text::replaceAll(texto, "\r\n", "\n"), "\n", "\r\n");
}

} // namespace

std::string linkDeEmail(std::string_view endereco, std::string_view assunto, std::string_view corpo) {
    std::string link;
    if (!text::equalsNoCase(endereco.substr(0, prefixo.size()), prefixo)) {
        link = prefixo;
    }
    link += endereco;
    if (!assunto.empty()) {
        link += "?subject=";
        codifica(link, assunto);
    }
    if (!corpo.empty()) {
        link += assunto.empty() ? '?' : '&';
        link += "body=";
        codifica(link, comFinsDeLinha(corpo));
    }
    return link;
}

} // namespace tv
