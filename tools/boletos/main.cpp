#include "Saida.h"
#include "comandos.h"

#include "app/PastaDaAplicacao.h"
#include "platform/Error.h"
#include "platform/Files.h"

#include <CLI/CLI.hpp>
#ifdef TV_MIMALLOC
#include <mimalloc.h>
#endif

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int maximoDeJobs = 256;
constexpr const char* formatos = "texto, json, xml, html ou junit";

// The library's words begin with the option or argument that they are about.
std::string doQue(const std::string& palavras) {
    const std::string nome = palavras.substr(0, palavras.find_first_of(" :"));
    return nome.starts_with("arquivo") ? "o nome de um arquivo" : "a opção " + nome;
}

// What is wrong about the command itself.
std::string explicaComando(const CLI::App& programa) {
    const std::vector<std::string> sobras = programa.remaining();
    return sobras.empty() ? "Falta o comando: validar, exportar, importar ou layouts"
                          : "O comando '" + sobras.front() +
                                "' não existe; os comandos são validar, exportar, importar e layouts";
}

// The library's usage errors in Portuguese.
std::string explica(const CLI::App& programa, const CLI::Error& erro) {
    const std::string palavras = erro.what();
    switch (static_cast<CLI::ExitCodes>(erro.get_exit_code())) {
    case CLI::ExitCodes::RequiredError: {
        const bool faltaComando = palavras.find("subcommand") != std::string::npos;
        return faltaComando ? explicaComando(programa) : "Falta " + doQue(palavras);
    }
    case CLI::ExitCodes::ExtrasError:
        return "Não se sabe o que fazer com" + palavras.substr(palavras.find(':') + 1);
    case CLI::ExitCodes::ValidationError:
        return palavras.starts_with("--jobs")
                   ? "O valor de --jobs deve ser um número de 1 a " + std::to_string(maximoDeJobs)
                   : "O valor de --formato deve ser " + std::string(formatos);
    case CLI::ExitCodes::ConversionError:
        return "O valor de --jobs deve ser um número de 1 a " + std::to_string(maximoDeJobs);
    case CLI::ExitCodes::ArgumentMismatch: {
        const bool falta = palavras.find("missing") != std::string::npos;
        return falta ? "Falta o valor d" + doQue(palavras) : "Aparece mais de uma vez: " + doQue(palavras);
    }
    default:
        return "O comando não foi entendido (" + palavras + ")";
    }
}

void traduz(CLI::App& programa) {
    programa.option_defaults()->group("Opções");
    programa.set_help_flag("-h,--help", "Mostra esta ajuda e termina");
    const auto formato = std::make_shared<CLI::Formatter>();
    formato->label("OPTIONS", "OPÇÕES");
    formato->label("Usage", "Uso");
    formato->label("SUBCOMMAND", "COMANDO");
    formato->label("SUBCOMMANDS", "COMANDOS");
    formato->label("Positionals", "Argumentos");
    formato->label("REQUIRED", "(obrigatório)");
    formato->label("TEXT", "TEXTO");
    formato->column_width(34);
    programa.formatter(formato);
    programa.failure_message([](const CLI::App* app, const CLI::Error& erro) {
        return "boletos: " + explica(*app, erro) + ".\nVeja 'boletos --help'.\n";
    });
}

void opcaoPasta(CLI::App& comando, std::filesystem::path& pasta) {
    comando
        .add_option("--pasta", pasta,
                    "Pasta da aplicação, com o catálogo e a pasta XSD (normalmente a do programa\n"
                    "ou, quando ele está instalado no sistema, a do usuário)")
        ->option_text("DIR");
}

CLI::App& novoComando(CLI::App& programa, const std::string& nome, const std::string& ajuda) {
    CLI::App& comando = *programa.add_subcommand(nome, ajuda);
    comando.group("Comandos");
    comando.get_help_ptr()->group("Opções");
    return comando;
}

// The library takes "[a,b]" for a list of two. A mark behind such an argument keeps it the one name that it
// is.
constexpr char marca = '\x1F';

std::vector<std::string> marcados(int argc, char** argv) {
    std::vector<std::string> argumentos(argv + 1, argv + argc);
    for (std::string& argumento : argumentos) {
        if (argumento.size() > 1 && argumento.front() == '[' && argumento.back() == ']') {
            argumento += marca;
        }
    }
    std::reverse(argumentos.begin(), argumentos.end()); // as the library takes them
    return argumentos;
}

std::string semMarca(std::string texto) {
    if (texto.ends_with(std::string("]") + marca)) {
        texto.pop_back();
    }
    return texto;
}

void opcoesDeValidar(CLI::App& comando, boletos::PedidoValidar& pedido) {
    comando.add_option("--layout", pedido.layout, "Layout dos arquivos (veja 'boletos layouts')")
        ->option_text("TAG")
        ->required();
    comando
        .add_option("--formato", pedido.formato, std::string("Um de ") + formatos + " (normalmente texto)")
        ->option_text("FORMATO")
        ->check(CLI::IsMember({"texto", "json", "xml", "html", "junit"}));
    comando
        .add_option("--saida", pedido.saida,
                    "Arquivo do relatório; com xml e html, a pasta quando há mais de um arquivo")
        ->option_text("ARQ");
    comando
        .add_option("--jobs", pedido.jobs,
                    "Quantos arquivos verificar ao mesmo tempo (normalmente 1); o relatório é o mesmo")
        ->option_text("N")
        ->check(CLI::Range(1, maximoDeJobs));
    comando.add_option("arquivos", pedido.arquivos, "Arquivos XML, verificados nesta ordem")
        ->option_text("ARQUIVO...")
        ->required();
    comando.footer(
        "Termina com 0 se todos os arquivos são válidos, 1 se algum não é, e 2 se algo não pôde ser\n"
        "verificado: uso errado, catálogo, layout, arquivo, esquema ou folha que não pode ser lida.");
}

void opcoesDePlanilha(CLI::App& comando, boletos::PedidoPlanilha& pedido, const std::string& arquivo,
                      const std::string& nome) {
    comando.add_option("--layout", pedido.layout, "Layout do documento (veja 'boletos layouts')")
        ->option_text("TAG")
        ->required();
    comando.add_option("arquivo", pedido.arquivo, arquivo)->option_text(nome)->required();
}

void opcoesDeExportar(CLI::App& comando, boletos::PedidoPlanilha& pedido) {
    opcoesDePlanilha(comando, pedido, "Documento; as planilhas ficam ao lado dele", "ARQUIVO.xml");
    comando.footer(
        "Escreve o caminho de cada planilha. Termina com 0 se todos os registros estão nelas, 1 se\n"
        "algum se perdeu (a seção e o motivo vão para a saída de erros), e 2 se nada pôde ser\n"
        "exportado: uso errado, catálogo, layout ou documento que não pode ser lido, pasta sem\n"
        "permissão.");
}

void opcoesDeImportar(CLI::App& comando, boletos::PedidoPlanilha& pedido) {
    opcoesDePlanilha(comando, pedido, "Planilha; o documento fica ao lado dela, com .xml em vez de .xls",
                     "PLANILHA.xls");
    comando.footer(
        "Escreve o caminho do documento. Termina com 0 se ele está inteiro, 1 se a planilha não tem\n"
        "seção do layout ou o documento não é XML bem formado, e 2 se nada pôde ser importado: uso\n"
        "errado, catálogo, layout ou planilha que não pode ser lida, documento que já existe.\n"
        "Nos layouts de fundos e carteiras, o caminho da planilha diz com a palavra 'fundo' ou\n"
        "'carteira' de que ela é.");
}

void avisa(const std::string& texto) {
    static_cast<void>(std::fprintf(stderr, "boletos: %s\n", texto.c_str()));
}

// The application folder of a call that names none, set up first where it is the user's own. What an update
// has left alone is told once, by the call that makes the update.
std::filesystem::path pastaNormal() {
    try {
        const auto preparada = tv::pastaDaAplicacao::prepara(tv::pastaDaAplicacao::lugares());
        if (!preparada.aviso.empty()) {
            avisa("A pasta da aplicação continua na versão anterior: " + preparada.aviso);
        }
        for (const std::string& nome : preparada.oferecidos) {
            avisa("O arquivo '" + tv::files::toText(preparada.pasta / nome) +
                  "' foi alterado e fica como está; o novo está ao lado, com .novo no nome.");
        }
        return preparada.pasta;
    } catch (const tv::Error& falha) {
        throw tv::Error(falha.number(), "boletos",
                        falha.description() + ". Outra pasta se indica com --pasta.");
    }
}

// Ends a call that runs no command: help and version on standard output, wrong usage on standard error.
int semComando(const CLI::App& programa, const CLI::ParseError& erro) {
    std::ostringstream ajuda;
    std::ostringstream queixa;
    if (programa.exit(erro, ajuda, queixa) == 0) {
        boletos::Saida saida({});
        saida.escreve(ajuda.str());
        saida.termina();
        return boletos::status::valido;
    }
    std::string texto = queixa.str();
    std::erase(texto, marca);
    static_cast<void>(std::fputs(texto.c_str(), stderr));
    return boletos::status::falha;
}

// The commands and what they were asked for.
struct Comandos {
    explicit Comandos(CLI::App& programa)
        : validar(novoComando(programa, "validar", "Verifica arquivos e escreve o que encontrou"))
        , exportar(novoComando(programa, "exportar", "Escreve um documento em planilhas (.xls)"))
        , importar(novoComando(programa, "importar", "Faz um documento de uma planilha (.xls)"))
        , layouts(novoComando(programa, "layouts",
                              "Mostra os layouts do catálogo, separados por tabulação:\n"
                              "tag, versão, nome, tramador e validador")) {
        for (CLI::App* comando : todos) {
            opcaoPasta(*comando, pasta);
        }
        opcoesDeValidar(validar, pedido);
        opcoesDeExportar(exportar, planilha);
        opcoesDeImportar(importar, planilha);
    }

    int executa() {
        const bool indicada = std::any_of(todos.begin(), todos.end(), [](const CLI::App* comando) {
            return comando->count("--pasta") > 0;
        });
        pasta = indicada ? std::filesystem::path(semMarca(pasta.string())) : pastaNormal();
        if (layouts.parsed()) {
            return boletos::layouts(pasta);
        }
        if (validar.parsed()) {
            return executaValidar();
        }
        planilha.layout = semMarca(planilha.layout);
        planilha.pasta = pasta;
        planilha.arquivo = semMarca(planilha.arquivo.string());
        return exportar.parsed() ? boletos::exportar(planilha) : boletos::importar(planilha);
    }

private:
    int executaValidar() {
        pedido.layout = semMarca(pedido.layout);
        pedido.pasta = pasta;
        pedido.saida = semMarca(pedido.saida.string());
        for (std::filesystem::path& arquivo : pedido.arquivos) {
            arquivo = semMarca(arquivo.string());
        }
        return boletos::validar(pedido);
    }

    CLI::App& validar;
    CLI::App& exportar;
    CLI::App& importar;
    CLI::App& layouts;
    std::array<CLI::App*, 4> todos{&validar, &exportar, &importar, &layouts};
    std::filesystem::path pasta; // as the call names it
    boletos::PedidoValidar pedido{};
    boletos::PedidoPlanilha planilha{};
};

int executa(int argc, char** argv) {
    CLI::App programa("Verifica arquivos XML de posição e movimento de fundos pelos layouts do catálogo,\n"
                      "e troca documentos com planilhas.",
                      "boletos");
    traduz(programa);
    programa.set_version_flag("--version", "boletos " TV_VERSION, "Mostra a versão e termina");
    programa.require_subcommand(1);
    Comandos comandos(programa);
    try {
        programa.parse(marcados(argc, argv));
    } catch (const CLI::ParseError& erro) {
        return semComando(programa, erro);
    }
    return comandos.executa();
}

} // namespace

int main(int argc, char** argv) {
#ifdef TV_MIMALLOC
    mi_option_set(mi_option_decommit_delay, 0); // what the catalog's documents took goes back before the run
#endif
    // A reader that goes away is a failure to write, not the end of the program without a word.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    try {
        return executa(argc, argv);
    } catch (const std::exception& falha) {
        static_cast<void>(std::fprintf(stderr, "boletos: %s\n", falha.what()));
        return boletos::status::falha;
    }
}
