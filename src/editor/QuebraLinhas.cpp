#include "editor/QuebraLinhas.h"

#include <algorithm>

namespace tv {
namespace {

constexpr std::size_t npos = std::u16string_view::npos;

bool hasLongLine(std::u16string_view texto, std::size_t limite) {
    for (std::size_t inicio = 0; texto.size() - inicio > limite;) {
        const std::size_t fim = std::min(texto.find(u'\n', inicio), texto.size());
        if (fim - inicio > limite) {
            return true;
        }
        inicio = std::min(fim + 1, texto.size());
    }
    return false;
}

/// Place behind the markup that starts at `at`, which holds a "<".
std::size_t behindMarkup(std::u16string_view s, std::size_t at) {
    const std::u16string_view resto = s.substr(at);
    std::u16string_view fim = u">";
    if (resto.starts_with(u"<![CDATA[")) {
        fim = u"]]>";
    } else if (resto.starts_with(u"<!--")) {
        fim = u"-->";
    } else if (resto.starts_with(u"<?")) {
        fim = u"?>";
    }
    const std::size_t achado = s.find(fim, at);
    return achado == npos ? s.size() : achado + fim.size();
}

bool isOpeningTag(std::u16string_view marcacao) {
    return marcacao.size() > 2 && marcacao[1] != u'/' && marcacao[1] != u'!' && marcacao[1] != u'?' &&
           marcacao[marcacao.size() - 2] != u'/';
}

} // namespace

std::u16string QuebraLinhas::quebra(std::u16string texto) {
    quebras_.clear();
    forcada_ = false;
    if (!hasLongLine(texto, limite_)) {
        return texto;
    }
    std::u16string destino;
    destino.reserve(texto.size() + texto.size() / 16);
    const std::u16string_view tudo = texto;
    std::int32_t numero = 1;
    for (std::size_t inicio = 0; inicio <= tudo.size(); ++numero) {
        const std::size_t fim = std::min(tudo.find(u'\n', inicio), tudo.size());
        const std::u16string_view linha = tudo.substr(inicio, fim - inicio);
        if (linha.size() > limite_) {
            quebraLinha(linha, numero, destino);
        } else {
            destino.append(linha);
        }
        if (fim < tudo.size()) {
            destino.push_back(u'\n');
        }
        inicio = fim + 1;
    }
    return destino;
}

/// Copies the line from the last cut up to `ate`; a piece that is still too long is cut by force.
void QuebraLinhas::corta(std::u16string_view linha, std::int32_t numero, std::size_t ate,
                         std::u16string& destino) {
    const auto quebraEm = [&](std::size_t lugar) {
        if (lugar < linha.size()) {
            quebras_.push_back({numero, lugar});
            destino.push_back(u'\n');
        }
    };
    while (ate - ultimoCorte_ > limite_) {
        std::size_t lugar = ultimoCorte_ + limite_;
        if ((linha[lugar] & 0xFC00U) == 0xDC00U) {
            --lugar; // not between the halves of a character
        }
        destino.append(linha.substr(ultimoCorte_, lugar - ultimoCorte_));
        quebraEm(lugar);
        ultimoCorte_ = lugar;
        forcada_ = true;
    }
    destino.append(linha.substr(ultimoCorte_, ate - ultimoCorte_));
    quebraEm(ate);
    ultimoCorte_ = ate;
}

void QuebraLinhas::quebraLinha(std::u16string_view linha, std::int32_t numero, std::u16string& destino) {
    ultimoCorte_ = 0;
    for (std::size_t at = linha.find(u'<'); at < linha.size();) {
        const std::size_t fim = behindMarkup(linha, at);
        const bool pegada = fim < linha.size() && linha[fim] == u'<';
        const bool vazio =
            pegada && isOpeningTag(linha.substr(at, fim - at)) &&
            (linha.substr(fim).starts_with(u"</") || linha.substr(fim).starts_with(u"<![CDATA["));
        const bool dados = linha.substr(at).starts_with(u"<![CDATA[");
        if (pegada && !vazio && !dados) {
            corta(linha, numero, fim, destino);
        }
        at = linha.find(u'<', fim);
    }
    corta(linha, numero, linha.size(), destino);
}

LugarTexto QuebraLinhas::lugar(LugarTexto antes) const {
    const auto deslocamento = static_cast<std::size_t>(std::max(antes.coluna, 1) - 1);
    const auto ultima = std::partition_point(quebras_.begin(), quebras_.end(), [&](const Quebra& quebra) {
        return quebra.linha < antes.linha ||
               (quebra.linha == antes.linha && quebra.deslocamento <= deslocamento);
    });
    if (ultima == quebras_.begin()) {
        return antes;
    }
    LugarTexto agora = antes;
    agora.linha += static_cast<std::int32_t>(ultima - quebras_.begin());
    if (const Quebra& quebra = *(ultima - 1); quebra.linha == antes.linha) {
        agora.coluna -= static_cast<std::int32_t>(quebra.deslocamento);
    }
    return agora;
}

} // namespace tv
