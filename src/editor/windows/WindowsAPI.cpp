#include "editor/windows/WindowsAPI.h"

#include "common/windows/Espera.h"
#include "common/windows/textoQt.h"
#include "editor/LinkDeEmail.h"
#include "editor/windows/PaginasDeTexto.h"
#include "logging/Routine.h"
#include "platform/Error.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QLocale>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QTextDocument>
#include <QUrl>

namespace tv::WindowsAPI {

namespace {

/// A path as a file address; what already is an address stays one. A file that is not there has none.
QUrl endereco(const QString& caminhoOuEndereco) {
    const QFileInfo arquivo(caminhoOuEndereco);
    if (arquivo.exists()) {
        return QUrl::fromLocalFile(arquivo.absoluteFilePath());
    }
    const QUrl externo = QUrl::fromUserInput(caminhoOuEndereco);
    return externo.isLocalFile() ? QUrl() : externo;
}

bool abre(const QUrl& destino) {
    return destino.isValid() && QDesktopServices::openUrl(destino);
}

constexpr int erroDeImpressora = 482;
constexpr double twipsPorPolegada = 1440;
constexpr double pontosPorPolegada = 72;

/// Margins of the printed text from the paper's edges, in twips.
struct Margens {
    int esquerda;
    int topo;
    int direita;
    int base;
};

/// Where the text stands on the paper, in dots of the printer, whose origin is the corner of what it can
/// print.
QRectF areaDeTexto(const QPrinter& impressora, const Margens& margens) {
    const double pontos = impressora.resolution() / twipsPorPolegada;
    const QPageLayout pagina = impressora.pageLayout();
    const QRectF papel = pagina.fullRectPixels(impressora.resolution());
    const QMargins naoImprimivel =
        impressora.fullPage() ? QMargins() : pagina.marginsPixels(impressora.resolution());
    return papel
        .adjusted(margens.esquerda * pontos, margens.topo * pontos, -margens.direita * pontos,
                  -margens.base * pontos)
        .translated(-naoImprimivel.left(), -naoImprimivel.top());
}

/// The box's font in points, which mean the same on paper.
QFont fonteNoPapel(const QPlainTextEdit& caixa) {
    QFont fonte = caixa.font();
    if (fonte.pixelSize() > 0) {
        fonte.setPointSizeF(fonte.pixelSize() * pontosPorPolegada / caixa.logicalDpiY());
    }
    return fonte;
}

void exige(bool feito) {
    if (!feito) {
        throw Error(erroDeImpressora, "Printer", "Erro de impressora");
    }
}

void imprime(const QPlainTextEdit& caixa, QPrinter& impressora, const Margens& margens) {
    PaginasDeTexto paginas(*caixa.document(), fonteNoPapel(caixa), areaDeTexto(impressora, margens),
                           caixa.tabStopDistance());
    QPainter pincel;
    exige(pincel.begin(&impressora));
    pincel.setPen(Qt::black);
    paginas.desenhaPagina(pincel);
    while (!paginas.terminou()) {
        exige(impressora.newPage());
        paginas.desenhaPagina(pincel);
    }
    exige(pincel.end());
}

} // namespace

bool abreDocumento(const QString& caminhoOuEndereco) {
    bool aceito = false;
    proceed([&] { aceito = abre(endereco(caminhoOuEndereco)); });
    return aceito;
}

bool abreEmail(const QString& endereco, QString& assunto, QString& corpo) {
    bool aceito = false;
    proceed([&] {
        const std::string link = linkDeEmail(paraUtf8(endereco), paraUtf8(assunto), paraUtf8(corpo));
        aceito = abre(QUrl(paraQt(link)));
    });
    return aceito;
}

QString textoDoLocal(int item) {
    QString texto;
    proceed([&] {
        if (item == separadorDecimal) {
            texto = QLocale::system().decimalPoint();
        }
    });
    return texto;
}

void PrintRTF(const QPlainTextEdit& caixa, int esquerda, int topo, int direita, int base) {
    guarded("WindowsAPI.PrintRTF", [&] {
        const Espera espera;
        QPrinter impressora(QPrinter::HighResolution);
        exige(impressora.outputFormat() == QPrinter::NativeFormat && impressora.isValid());
        imprime(caixa, impressora, {esquerda, topo, direita, base});
    });
}

void PrintRTF(const QPlainTextEdit& caixa, QPrinter& impressora, int esquerda, int topo, int direita,
              int base) {
    guarded("WindowsAPI.PrintRTF", [&] { imprime(caixa, impressora, {esquerda, topo, direita, base}); });
}

} // namespace tv::WindowsAPI
