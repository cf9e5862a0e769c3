#include "Catalogo.h"
#include "Relatorio.h"
#include "Saida.h"
#include "Verificacao.h"
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
                                           nomeVisivel(arquivo.filename()).c_str()));
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

int statusDe(const ArquivoValidado& validado) {
    if (!validado.verificado()) {
        return status::falha;
    }
    return validado.valido ? status::valido : status::invalido;
}

void avisa(const std::filesystem::path& arquivo, const std::string& aviso) {
    static_cast<void>(std::fprintf(stderr, "boletos: %s: %s\n", nomeVisivel(arquivo).c_str(), aviso.c_str()));
}

// Why a file was not checked, for people who read no report.
void avisaMotivos(const ArquivoValidado& validado) {
    for (const std::string& aviso : validado.avisos) {
        avisa(validado.arquivo, aviso);
    }
    if (validado.ilegivel && !validado.resultados->empty()) {
        avisa(validado.arquivo, validado.resultados->front().Descricao());
    }
}

// Ctrl-C asks for the end behind the file under way; a second one ends the program at once.
void trataInterrupcao() {
    struct sigaction aoFim = {};
    aoFim.sa_handler = aoInterromper;
    aoFim.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    static_cast<void>(sigaction(SIGINT, &aoFim, nullptr));
}

/// The call's files in their order.
class Lote {
public:
    Lote(const Contexto& contexto, int jobs, Relatorio& relatorio)
        : contexto_(contexto)
        , relatorio_(relatorio)
        , verificacao_(Verificacao::cria(contexto.arquivos, contexto.layout, jobs))
        , progresso_(contexto.arquivos.size()) {}

    /// Gives the status of the files.
    int verificaTodos() {
        for (const std::filesystem::path& arquivo : contexto_.arquivos) {
            if (interrompido != 0) {
                break;
            }
            progresso_.mostra(++feitos_, arquivo);
            const ArquivoValidado validado = verificacao_->proximo();
            progresso_.apaga();
            avisaMotivos(validado);
            relata(validado);
            status_ = std::max(status_, statusDe(validado));
        }
        relatorio_.termina();
        return feitos_ < contexto_.arquivos.size() ? avisaInterrupcao() : status_;
    }

private:
    void relata(const ArquivoValidado& validado) {
        try {
            relatorio_.arquivo(validado);
        } catch (const FalhaDoRelatorio& falha) {
            avisa(validado.arquivo, falha.description());
            status_ = status::falha;
        }
    }

    int avisaInterrupcao() const {
        static_cast<void>(std::fprintf(stderr, "boletos: interrompido depois de %zu de %zu arquivos\n",
                                       feitos_, contexto_.arquivos.size()));
        return status::falha;
    }

    const Contexto& contexto_;
    Relatorio& relatorio_;
    std::unique_ptr<Verificacao> verificacao_;
    Progresso progresso_;
    std::size_t feitos_ = 0;
    int status_ = status::valido;
};

} // namespace

int validar(const PedidoValidar& pedido) {
    trataInterrupcao();
    const Catalogo catalogo(pedido.pasta);
    const Contexto contexto{catalogo.layoutComValidador(pedido.layout), pedido.pasta, pedido.saida,
                            pedido.arquivos};
    Protegidos(pedido.arquivos).confere(pedido.saida);
    const std::unique_ptr<Relatorio> relatorio = fabricaDe(pedido.formato)(contexto);
    return Lote(contexto, pedido.jobs, *relatorio).verificaTodos();
}

} // namespace boletos
