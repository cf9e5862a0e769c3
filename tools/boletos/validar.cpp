#include "Catalogo.h"
#include "Relatorio.h"
#include "comandos.h"

#include "platform/Error.h"
#include "platform/Files.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <map>
#include <unistd.h>

namespace boletos {

namespace {

volatile std::sig_atomic_t interrompido = 0;

extern "C" void aoInterromper(int /*sinal*/) {
    interrompido = 1;
}

using Fabrica = std::unique_ptr<Relatorio> (*)(const Contexto&);

Fabrica fabricaDe(const std::string& formato) {
    static const std::map<std::string, Fabrica, std::less<>> fabricas{
        {"texto", relatorioTexto}, {"json", relatorioJson},   {"xml", relatorioXml},
        {"html", relatorioHtml},   {"junit", relatorioJunit},
    };
    return fabricas.at(formato);
}

// Which file is under way, on a terminal's standard error.
class Progresso {
public:
    explicit Progresso(std::size_t total)
        : total_(total)
        , ativo_(isatty(STDERR_FILENO) != 0) {}
    ~Progresso() { apaga(); }
    Progresso(const Progresso&) = delete;
    Progresso& operator=(const Progresso&) = delete;

    void mostra(std::size_t n, const std::filesystem::path& arquivo) const {
        if (ativo_) {
            static_cast<void>(std::fprintf(stderr, "\r\033[K[%zu/%zu] %s", n, total_,
                                           tv::files::toText(arquivo.filename()).c_str()));
        }
    }
    void apaga() const {
        if (ativo_) {
            static_cast<void>(std::fputs("\r\033[K", stderr));
        }
    }

private:
    std::size_t total_;
    bool ativo_;
};

ArquivoValidado verifica(tv::clsValidador& validador, const std::filesystem::path& arquivo,
                         const std::shared_ptr<const tv::clsBoleto>& layout) {
    const auto antes = validador.getResultado();
    const auto inicio = std::chrono::steady_clock::now();
    const bool semResultado = validador.isValido(arquivo, layout);
    ArquivoValidado validado;
    validado.tempo = std::chrono::steady_clock::now() - inicio;
    validado.arquivo = arquivo;
    validado.avisos = validador.getAvisos();
    validado.ilegivel = validador.arquivoIlegivel();
    // A run that could not begin leaves the findings of the file before.
    const bool rodou = validador.getResultado() != antes;
    validado.resultados = rodou ? validador.getResultado() : std::make_shared<const tv::Resultados>();
    validado.valido = rodou && semResultado && validado.avisos.empty();
    return validado;
}

int statusDe(const ArquivoValidado& validado) {
    if (validado.ilegivel || !validado.avisos.empty()) {
        return status::falha;
    }
    return validado.valido ? status::valido : status::invalido;
}

} // namespace

int validar(const PedidoValidar& pedido) {
    const Catalogo catalogo(pedido.pasta);
    const Contexto contexto{catalogo.layout(pedido.layout), pedido.pasta, pedido.saida,
                            pedido.arquivos.size()};
    const std::unique_ptr<Relatorio> relatorio = fabricaDe(pedido.formato)(contexto);
    static_cast<void>(std::signal(SIGINT, aoInterromper));

    tv::clsValidador validador;
    const Progresso progresso(pedido.arquivos.size());
    int resultado = status::valido;
    std::size_t n = 0;
    for (const std::filesystem::path& arquivo : pedido.arquivos) {
        if (interrompido != 0) {
            break;
        }
        progresso.mostra(++n, arquivo);
        const ArquivoValidado validado = verifica(validador, arquivo, contexto.layout);
        progresso.apaga();
        for (const std::string& aviso : validado.avisos) {
            static_cast<void>(
                std::fprintf(stderr, "boletos: %s: %s\n", tv::files::toText(arquivo).c_str(), aviso.c_str()));
        }
        relatorio->arquivo(validado);
        resultado = std::max(resultado, statusDe(validado));
    }
    relatorio->termina();
    if (n < pedido.arquivos.size()) {
        static_cast<void>(std::fprintf(stderr, "boletos: interrompido depois de %zu de %zu arquivos\n", n,
                                       pedido.arquivos.size()));
        return status::falha;
    }
    return resultado;
}

} // namespace boletos
