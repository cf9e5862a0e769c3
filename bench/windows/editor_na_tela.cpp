// How long a user waits for a large document in the editor: from the call of abrir to the first picture, for
// the jump to a finding in its last line, for keys at its start and end, for scrolling, a search, an undo, a
// save and for the list of many findings. Times are those of the clock, with the processor's in brackets.
//
// Usage: editor_na_tela [megabytes, 50] [findings, 40000] [picture.png]
#include "app/windows/mdiMain.h"
#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "editor/windows/CaixaXML.h"
#include "editor/windows/frmEditor.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPixmap>
#include <QScrollBar>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

namespace {

constexpr std::size_t megabyte = 1'000'000;

/// A document of many short lines; its last value is wrong.
std::string documento(std::size_t bytes, int& linhas) {
    std::string texto = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<arquivo>\r\n";
    linhas = 2;
    while (texto.size() < bytes) {
        texto += "\t<titulo>\r\n\t\t<codigo>BRSTNCLF1R" + std::to_string(linhas) +
                 "</codigo>\r\n\t\t<emissor>Tesouro da Uni\xE3o</emissor>\r\n\t\t<valorfinanceiro>12345.67"
                 "</valorfinanceiro>\r\n\t</titulo>\r\n";
        linhas += 5;
    }
    texto += "\t<valor>errado</valor></arquivo>";
    ++linhas;
    return texto;
}

std::shared_ptr<tv::Resultados> achados(int quantos, int ultimaLinha) {
    auto lista = std::make_shared<tv::Resultados>();
    for (int i = 1; i < quantos; ++i) {
        tv::clsResultado achado;
        achado.setTag("valor", "12345.67", "arquivo.titulo.valor", "12345678000195");
        achado.setError(tv::clsResultado::codigoRegraCampo, "", "");
        achado.setLocation(i * 5, 28);
        lista->push_back(achado);
    }
    tv::clsResultado ultimo;
    ultimo.setTag("valor", "errado", "arquivo.titulo.valor", "12345678000195");
    ultimo.setError(tv::clsResultado::codigoRegraCampo, "", "");
    ultimo.setLocation(ultimaLinha, 15);
    lista->push_back(ultimo);
    return lista;
}

void mede(const char* nome, const std::function<void()>& acao) {
    QElapsedTimer relogio;
    relogio.start();
    const std::clock_t antes = std::clock();
    acao();
    const double processador = static_cast<double>(std::clock() - antes) * 1000.0 / CLOCKS_PER_SEC;
    std::printf("%-44s %7lld ms  (%.0f)\n", nome, static_cast<long long>(relogio.elapsed()), processador);
    std::fflush(stdout);
}

/// Lets the events and a picture of the window through.
void mostra(QWidget& janela) {
    QApplication::processEvents();
    janela.grab();
}

void tecla(QWidget& alvo, int qual, const QString& texto = {}, Qt::KeyboardModifiers com = Qt::NoModifier) {
    QKeyEvent aperta(QEvent::KeyPress, qual, com, texto);
    QApplication::sendEvent(&alvo, &aperta);
    QKeyEvent solta(QEvent::KeyRelease, qual, com, texto);
    QApplication::sendEvent(&alvo, &solta);
}

/// Answers each message box with its first button.
class Responde : public QObject {
public:
    Responde() {
        connect(&relogio_, &QTimer::timeout, this, [] {
            if (auto* caixa = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                caixa->buttons().constFirst()->click();
            }
        });
        relogio_.start(1);
    }

private:
    QTimer relogio_;
};

void medeTexto(tv::frmEditor& janela, tv::CaixaXML& texto) {
    constexpr int teclas = 20;
    const auto digita = [&] {
        for (int i = 0; i < teclas; ++i) {
            tecla(texto, Qt::Key_A, QStringLiteral("a"));
            QApplication::processEvents();
        }
    };
    mede("20 keys in the last line", digita);
    mede("Ctrl+Z", [&] {
        tecla(texto, Qt::Key_Z, {}, Qt::ControlModifier);
        QApplication::processEvents();
    });
    mede("caret to the start", [&] {
        janela.PlaceCursor(3, 1);
        mostra(janela);
    });
    mede("20 keys in the third line", digita);
    mede("Enter", [&] {
        tecla(texto, Qt::Key_Return, QStringLiteral("\r"));
        mostra(janela);
    });
    mede("50 leaps of the scroll bar, each drawn", [&] {
        QScrollBar& barra = *texto.verticalScrollBar();
        for (int i = 0; i < 50; ++i) {
            barra.setValue(i * (barra.maximum() / 50));
            mostra(texto);
        }
    });
    mede("search through the whole text", [&] { texto.find(QStringLiteral("errado</valor></arquivo>")); });
}

} // namespace

int main(int argc, char** argv) {
    QApplication aplicativo(argc, argv);
    const std::size_t tamanho = (argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 50) * megabyte;
    const int quantos = argc > 2 ? std::atoi(argv[2]) : 40'000;
    const auto caminho = std::filesystem::temp_directory_path() / "editor_na_tela.xml";
    int linhas = 0;
    std::ofstream(caminho, std::ios::binary) << documento(tamanho, linhas);
    const auto lista = achados(quantos, linhas);
    std::printf("%zu bytes, %d lines, %d findings\n",
                static_cast<std::size_t>(std::filesystem::file_size(caminho)), linhas, quantos);

    tv::mdiMain::instancia().resize(1000, 760);
    tv::mdiMain::instancia().show();
    mostra(tv::mdiMain::instancia());
    auto& janela = tv::criaJanela<tv::frmEditor>();
    const auto layout = std::make_shared<tv::clsBoleto>();
    mede("document and findings on the screen", [&] {
        janela.abrir(lista, layout, tv::caminhoQt(caminho));
        mostra(janela);
    });
    auto& texto = *janela.findChild<tv::CaixaXML*>(QStringLiteral("txtXML"));
    auto& grade = *janela.findChild<tv::Grade*>(QStringLiteral("grid"));
    mede("finding in the last line", [&] {
        grade.setLinhaAtiva(quantos - 1);
        mostra(janela);
    });
    std::printf("selected: %s\n", texto.textCursor().selectedText().toStdString().c_str());
    if (argc > 3) {
        janela.grab().save(QString::fromLocal8Bit(argv[3]));
    }
    medeTexto(janela, texto);
    {
        const Responde responde;
        mede("save in the parser's form", [&] { janela.saveBoleto(); });
    }
    std::printf("saved: %s\n", janela.salvo() ? "yes" : "no");
    mede("close", [&] {
        janela.closeWindow();
        QApplication::processEvents();
    });

    auto& vazia = tv::criaJanela<tv::frmEditor>();
    std::ofstream(caminho, std::ios::binary) << "<a/>";
    mede("findings alone", [&] {
        vazia.abrir(lista, layout, tv::caminhoQt(caminho));
        mostra(vazia);
    });
    vazia.closeWindow();
    QApplication::processEvents();
    std::filesystem::remove(caminho);
    tv::mdiMain::destroi();
    return 0;
}
