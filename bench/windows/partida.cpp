// How long the program takes to start: the load of a large catalog, and the way from the end of the start-up
// window's wait to a main window that is painted and takes keys, on the shipped catalog.
// Usage: partida [folder for the large catalog]
#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "app/windows/biblioteca.h"
#include "app/windows/mdiMain.h"

#include <QApplication>
#include <QDir>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace {

using Relogio = std::chrono::steady_clock;

constexpr const char* catalogo = "TORVA_TramadorValidador.xml";
constexpr int layouts = 200;
constexpr int secoes = 5;  // of each layout
constexpr int campos = 20; // of each section: 20,000 fields in all
constexpr int repeticoes = 5;

template<typename Trabalho>
double milissegundos(Trabalho&& trabalho) {
    const Relogio::time_point inicio = Relogio::now();
    trabalho();
    return std::chrono::duration<double, std::milli>(Relogio::now() - inicio).count();
}

std::string campo(int numero) {
    const std::string n = std::to_string(numero);
    return "<CAMPO tag=\"campo" + n + "\" campoChave=\"NAO\"><OBSERVACAO>O campo " + n +
           "</OBSERVACAO><DADO tipo=\"TEXTO\" tamanho=\"12\" mandatorio=\"S\" validacao=\"\" default=\"\"/>"
           "<COLUNA titulo=\"Campo " +
           n +
           "\" largura=\"1500\" alinhamento=\"ESQUERDA\" maskInput=\"\" maskDisplay=\"\" maskOutput=\"\" "
           "tabela=\"\"/></CAMPO>";
}

std::string secao(int numero) {
    const std::string n = std::to_string(numero);
    std::string texto = "<SECAO tag=\"secao" + n + "\" nome=\"Seção " + n +
                        "\" ocorrencia=\"N\" secaoMestre=\"NAO\" nomeGrupo=\"\" tagGrupo=\"\">";
    for (int i = 0; i < campos; ++i) {
        texto += campo(i);
    }
    return texto + "</SECAO>";
}

std::string layout(int numero) {
    const std::string n = std::to_string(numero);
    std::string texto = "<BOLETO nome=\"Layout " + n + "\" versao=\"1.00\" tag=\"layout" + n +
                        "\" validador=\"\\XSD\\layout.xsd\" formula=\"\" tramador=\"SIM\" nomeGrupo=\"\" "
                        "tagGrupo=\"\">";
    for (int i = 0; i < secoes; ++i) {
        texto += secao(i);
    }
    return texto + "</BOLETO>";
}

/// Writes a catalog of 200 layouts with 20,000 fields; gives its size in bytes.
std::size_t escreveCatalogoGrande(const std::filesystem::path& pasta) {
    std::string texto = "<?xml version=\"1.0\" "
                        "encoding=\"UTF-8\"?>\n<TORVA><app><titulo>Grande</titulo><versao>1</versao><site>"
                        "<caption/><link/></site><email><caption/><link/></email><descricao/></app>"
                        "<logger type=\"TXT\" level=\"OFF\"/><configuracao><TABELAS/></configuracao>";
    for (int i = 0; i < layouts; ++i) {
        texto += layout(i);
    }
    texto += "</TORVA>";
    std::filesystem::create_directories(pasta);
    std::ofstream(pasta / catalogo, std::ios::binary) << texto;
    return texto.size();
}

double melhorCarga(const std::filesystem::path& pasta) {
    double melhor = 1e9;
    for (int i = 0; i < repeticoes; ++i) {
        tv::clsTramadorValidador sistema;
        bool carregou = false;
        melhor = std::min(melhor, milissegundos([&] { carregou = sistema.load(pasta.string(), catalogo); }));
        if (!carregou) {
            std::cerr << sistema.lastReason() << "\n";
            return -1;
        }
    }
    return melhor;
}

/// What the start-up timer does, until the window has been painted and the event loop waits.
void abreJanelaPrincipal() {
    tv::biblioteca::iniciaSistema();
    tv::mdiMain& principal = tv::mdiMain::instancia();
    principal.show();
    while (!principal.windowHandle()->isExposed()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    principal.repaint();
    QCoreApplication::processEvents();
}

} // namespace

int main(int argc, char** argv) {
    const Relogio::time_point inicio = Relogio::now();
    const QApplication application(argc, argv);
    const double qt = std::chrono::duration<double, std::milli>(Relogio::now() - inicio).count();

    const std::filesystem::path pasta =
        argc > 1 ? std::filesystem::path(argv[1]) : std::filesystem::temp_directory_path() / "tv-partida";
    const std::size_t bytes = escreveCatalogoGrande(pasta);
    std::cout << "QApplication: " << qt << " ms\n";
    std::cout << "janela principal com o catálogo distribuído: " << milissegundos(abreJanelaPrincipal)
              << " ms\n";
    std::cout << "carga do catálogo distribuído: " << melhorCarga(tv::aplicacao::pasta()) << " ms\n";
    std::cout << "carga de " << layouts << " layouts, " << layouts * secoes * campos << " campos ("
              << bytes / 1024 << " KiB): " << melhorCarga(pasta) << " ms\n";
    tv::aplicacao::setPasta(pasta);
    std::cout << "menus com " << layouts
              << " layouts: " << milissegundos([] { tv::biblioteca::iniciaSistema(); }) << " ms\n";
    std::filesystem::remove_all(pasta);
    tv::mdiMain::destroi();
    tv::objTramadorValidador.reset();
    return 0;
}
