#include "editor/TabelaDeBytes.h"

#include "platform/text.h"

#include <algorithm>
#include <cstddef>
#include <iconv.h>
#include <string>

namespace tv {
namespace {

/// Names come from files: only those of the well-known families go to the system's converter.
bool isKnownFamily(std::string_view nome) {
    constexpr std::array familias{"windows-125", "cp125",  "iso-8859-", "iso8859-",  "iso_8859-", "ibm850",
                                  "cp850",       "ibm437", "cp437",     "macintosh", "koi8-r",    "cp1252"};
    const bool plain = std::all_of(nome.begin(), nome.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    });
    return plain && std::any_of(familias.begin(), familias.end(),
                                [&](std::string_view familia) { return nome.starts_with(familia); });
}

class Conversor {
public:
    explicit Conversor(const std::string& nome)
        : conversor_(::iconv_open("UTF-16LE", nome.c_str())) {}
    ~Conversor() {
        if (valido()) {
            ::iconv_close(conversor_);
        }
    }
    Conversor(const Conversor&) = delete;
    Conversor& operator=(const Conversor&) = delete;

    // The system's mark of a converter that is none is a pointer of all ones.
    bool valido() const noexcept { return reinterpret_cast<std::ptrdiff_t>(conversor_) != -1; }

    char16_t converte(unsigned char byte) {
        std::array<char, 1> entrada{static_cast<char>(byte)};
        std::array<char, 8> saida{};
        char* de = entrada.data();
        char* para = saida.data();
        std::size_t resta = entrada.size();
        std::size_t livre = saida.size();
        ::iconv(conversor_, nullptr, nullptr, nullptr, nullptr);
        const bool feito = ::iconv(conversor_, &de, &resta, &para, &livre) == 0 && livre == saida.size() - 2;
        return feito ? static_cast<char16_t>(static_cast<unsigned char>(saida[0]) |
                                             (static_cast<unsigned char>(saida[1]) << 8U))
                     : TabelaDeBytes::nenhum;
    }

private:
    iconv_t conversor_;
};

std::string nomeDoSistema(const std::string& nome) {
    return nome.starts_with("windows-") ? "cp" + nome.substr(std::string_view("windows-").size()) : nome;
}

} // namespace

std::shared_ptr<const TabelaDeBytes> TabelaDeBytes::busca(std::string_view nome) {
    const std::string minusculo = text::lower(nome);
    auto tabela = std::make_shared<TabelaDeBytes>();
    std::array<char16_t, 256>& caracteres = tabela->caracteres_;
    const bool ascii = minusculo == "us-ascii" || minusculo == "ascii";
    if (ascii || minusculo == "iso-8859-1" || minusculo == "latin1") {
        for (std::size_t byte = 0; byte < caracteres.size(); ++byte) {
            caracteres[byte] = ascii && byte >= 0x80 ? nenhum : static_cast<char16_t>(byte);
        }
    } else if (isKnownFamily(minusculo)) {
        Conversor conversor(nomeDoSistema(minusculo));
        if (!conversor.valido()) {
            return nullptr;
        }
        for (std::size_t byte = 0; byte < caracteres.size(); ++byte) {
            caracteres[byte] = byte < 0x80 ? static_cast<char16_t>(byte)
                                           : conversor.converte(static_cast<unsigned char>(byte));
        }
    } else {
        return nullptr;
    }
    for (std::size_t byte = 0x80; byte < caracteres.size(); ++byte) {
        if (caracteres[byte] != nenhum) {
            tabela->altos_.emplace(caracteres[byte], static_cast<unsigned char>(byte));
        }
    }
    return tabela;
}

int TabelaDeBytes::byte(char32_t caractere) const noexcept {
    if (caractere < 0x80) {
        return static_cast<int>(caractere);
    }
    if (caractere > 0xFFFF) {
        return -1;
    }
    const auto achado = altos_.find(static_cast<char16_t>(caractere));
    return achado == altos_.end() ? -1 : achado->second;
}

} // namespace tv
