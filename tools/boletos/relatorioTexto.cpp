#include "Relatorio.h"
#include "Saida.h"

#include "platform/Files.h"
#include "platform/text.h"

#include <algorithm>

namespace boletos {

namespace {

// Length of the control character that the text begins with, or 0. Those behind U+007F are two bytes long;
// the ones that turn the direction of writing, and the separators of lines, three.
std::size_t controleNoInicio(std::string_view texto) {
    const auto byte = [&](std::size_t i) {
        return i < texto.size() ? static_cast<unsigned char>(texto[i]) : 0U;
    };
    if (byte(0) < 0x20 || byte(0) == 0x7F) {
        return 1;
    }
    if (byte(0) == 0xC2 && byte(1) < 0xA0) {
        return 2;
    }
    const bool separaOuVira = byte(1) == 0x80 && byte(2) >= 0xA8 && byte(2) <= 0xAE;
    const bool isola = byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9;
    return byte(0) == 0xE2 && (separaOuVira || isola) ? 3 : 0;
}

// A text for one line of a terminal: no line ends and no control characters.
std::string emUmaLinha(std::string_view texto) {
    const std::string certo = tv::text::sanitizeUtf8(texto);
    std::string linha;
    linha.reserve(certo.size());
    for (std::size_t i = 0; i < certo.size();) {
        const std::size_t controle = controleNoInicio(std::string_view(certo).substr(i));
        linha += controle > 0 ? ' ' : certo[i];
        i += std::max<std::size_t>(controle, 1);
    }
    return linha;
}

// A long value tells no more than its beginning.
std::string abreviado(std::string_view texto) {
    constexpr std::size_t maximo = 80;
    const std::string_view inicio = tv::text::left(texto, maximo);
    return emUmaLinha(inicio) + (inicio.size() < texto.size() ? "..." : "");
}

std::string linhaDoResultado(const tv::clsResultado& resultado) {
    std::string linha =
        "  " + std::to_string(resultado.linha()) + ":" + std::to_string(resultado.coluna()) + "  ";
    linha.append(resultado.nomeTipo()).append(" ").append(resultado.ErrorCode()).append("  ");
    linha += emUmaLinha(tv::text::trim(resultado.Titulo()));
    if (resultado.Descricao() != resultado.Titulo()) {
        linha += ": " + emUmaLinha(resultado.Descricao());
    }
    const std::string secao = resultado.getSecao();
    const std::string campo = campoDe(resultado);
    if (!secao.empty() || !campo.empty()) {
        linha += "  [" + emUmaLinha(secao) + (secao.empty() || campo.empty() ? "" : " / ") +
                 emUmaLinha(campo) + "]";
    } else if (!resultado.TAGpath().empty()) {
        linha += "  [" + emUmaLinha(resultado.TAGpath()) + "]";
    }
    if (!resultado.getValor().empty()) {
        linha += "  valor '" + abreviado(resultado.getValor()) + "'";
    }
    return linha + "\n";
}

std::string contagem(std::size_t n, std::string_view um, std::string_view varios) {
    return std::to_string(n) + " " + std::string(n == 1 ? um : varios);
}

class Texto final : public Relatorio {
public:
    explicit Texto(const Contexto& contexto)
        : saida_(contexto.saida) {}

    void arquivo(const ArquivoValidado& validado) override {
        const std::size_t total = validado.resultados->size();
        std::string texto = !validado.verificado() ? "NÃO VERIFICADO  "
                            : validado.valido      ? "VÁLIDO    "
                                                   : "INVÁLIDO  ";
        texto += nomeVisivel(validado.arquivo);
        texto += total == 0 ? "\n" : "  (" + contagem(total, "resultado", "resultados") + ")\n";
        for (const std::string& aviso : validado.avisos) {
            texto += "  aviso: " + emUmaLinha(aviso) + "\n";
        }
        for (const tv::clsResultado& resultado : *validado.resultados) {
            texto += linhaDoResultado(resultado);
        }
        saida_.escreve(texto);
        saida_.descarrega();
        ++(!validado.verificado() ? naoVerificados_ : validado.valido ? validos_ : invalidos_);
    }

    void termina() override {
        std::string resumo = contagem(validos_ + invalidos_ + naoVerificados_, "arquivo", "arquivos") + ": " +
                             contagem(validos_, "válido", "válidos") + ", " +
                             contagem(invalidos_, "inválido", "inválidos");
        if (naoVerificados_ > 0) {
            resumo += ", " + contagem(naoVerificados_, "não verificado", "não verificados");
        }
        saida_.escreve(resumo + "\n");
        saida_.termina();
    }

private:
    Saida saida_;
    std::size_t validos_ = 0;
    std::size_t invalidos_ = 0;
    std::size_t naoVerificados_ = 0;
};

} // namespace

std::string nomeVisivel(const std::filesystem::path& arquivo) {
    return emUmaLinha(tv::files::toText(arquivo));
}

std::string campoDe(const tv::clsResultado& resultado) {
    return resultado.TAGpath().empty() ? std::string() : resultado.getCampo();
}

std::unique_ptr<Relatorio> relatorioTexto(const Contexto& contexto) {
    return std::make_unique<Texto>(contexto);
}

} // namespace boletos
