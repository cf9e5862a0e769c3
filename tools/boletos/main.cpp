#include "comandos.h"

#include "platform/Error.h"
#include "platform/Files.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>

namespace {

// The library's usage errors in Portuguese.
std::string explica(const CLI::Error& erro) {
    const std::string tipo = erro.get_name();
    if (tipo == "RequiredError") {
        return "Falta uma parte obrigatória do comando";
    }
    if (tipo == "ExtrasError") {
        return "Há uma opção ou um argumento desconhecido";
    }
    if (tipo == "ValidationError") {
        return "Uma opção tem um valor que não é permitido";
    }
    if (tipo == "ArgumentMismatch") {
        return "Falta o valor de uma opção, ou ele aparece mais de uma vez";
    }
    return "O comando não foi entendido";
}

void traduz(CLI::App& programa) {
    programa.set_help_flag("-h,--help", "Mostra esta ajuda e termina");
    const auto formato = std::make_shared<CLI::Formatter>();
    formato->label("OPTIONS", "OPÇÕES");
    formato->label("Options", "Opções");
    formato->label("Usage", "Uso");
    formato->label("Subcommands", "Comandos");
    formato->label("SUBCOMMAND", "COMANDO");
    formato->label("SUBCOMMANDS", "COMANDOS");
    formato->label("Positionals", "Argumentos");
    formato->label("REQUIRED", "(obrigatório)");
    formato->label("TEXT", "TEXTO");
    formato->column_width(34);
    programa.formatter(formato);
    programa.failure_message([](const CLI::App* app, const CLI::Error& erro) {
        return "boletos: " + explica(erro) + " (" + erro.what() + ").\nVeja '" + app->get_name() +
               " --help'.\n";
    });
}

void opcaoPasta(CLI::App& comando, std::filesystem::path& pasta) {
    comando
        .add_option("--pasta", pasta,
                    "Pasta da aplicação, com o catálogo e a pasta XSD (normalmente a do programa)")
        ->option_text("DIR");
}

int executa(int argc, char** argv) {
    CLI::App programa("Verifica arquivos XML de posição e movimento de fundos pelos layouts do catálogo.",
                      "boletos");
    traduz(programa);
    programa.set_version_flag("--version", "boletos " TV_VERSION, "Mostra a versão e termina");
    programa.require_subcommand(1);

    boletos::PedidoValidar pedido;
    pedido.pasta = tv::files::executableFolder();
    std::filesystem::path pasta = pedido.pasta;

    CLI::App& validar = *programa.add_subcommand("validar", "Verifica arquivos e escreve o que encontrou");
    opcaoPasta(validar, pedido.pasta);
    validar.add_option("--layout", pedido.layout, "Layout dos arquivos (veja 'boletos layouts')")
        ->option_text("TAG")
        ->required();
    validar.add_option("--formato", pedido.formato, "texto (padrão), json, xml, html ou junit")
        ->option_text("FORMATO")
        ->check(CLI::IsMember({"texto", "json", "xml", "html", "junit"}));
    validar
        .add_option("--saida", pedido.saida,
                    "Arquivo do relatório; com xml e html, a pasta quando há mais de um arquivo")
        ->option_text("ARQ");
    validar.add_option("arquivos", pedido.arquivos, "Arquivos XML, verificados nesta ordem")
        ->option_text("ARQUIVO...")
        ->required();
    validar.footer(
        "Termina com 0 se todos os arquivos são válidos, 1 se algum não é, e 2 se algo não pôde ser\n"
        "verificado: uso errado, catálogo, layout, arquivo, esquema ou folha que não pode ser lida.");

    CLI::App& layouts =
        *programa.add_subcommand("layouts", "Mostra os layouts do catálogo, separados por tabulação:\n"
                                            "tag, versão, nome, tramador e validador");
    opcaoPasta(layouts, pasta);

    try {
        programa.parse(argc, argv);
    } catch (const CLI::ParseError& erro) {
        return programa.exit(erro) == 0 ? boletos::status::valido : boletos::status::falha;
    }
    return layouts.parsed() ? boletos::layouts(pasta) : boletos::validar(pedido);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return executa(argc, argv);
    } catch (const std::exception& falha) {
        static_cast<void>(std::fprintf(stderr, "boletos: %s\n", falha.what()));
        return boletos::status::falha;
    }
}
