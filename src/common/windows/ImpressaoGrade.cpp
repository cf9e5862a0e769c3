#include "common/windows/ImpressaoGrade.h"

#include "app/Aplicacao.h"
#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "platform/Clock.h"
#include "platform/Error.h"
#include "platform/format.h"

#include <QFontMetricsF>
#include <QHeaderView>
#include <QLineF>
#include <QList>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

#include <algorithm>
#include <array>
#include <cmath>

namespace tv {

namespace {

constexpr int erroDeImpressao = 482;
constexpr double pontosPorPolegada = 96;
constexpr double folga = 4;         // pixels at 96 dpi around a text
constexpr double ladoDaImagem = 16; // the same
constexpr int escurecimentoDaLinha = 130;

QFont fonteDoRodape() {
    QFont fonte(QStringLiteral("Times New Roman"), 8);
    fonte.setStyleHint(QFont::Serif);
    fonte.setItalic(true);
    return fonte;
}

TrabalhoImpressao trabalhoComum(const Grade& grade) {
    const QString titulo = paraQt(aplicacao::titulo());
    const QString caption = grade.captionVisivel();
    return {
        caption.isEmpty() ? titulo : caption, grade.fonteCaption(), caption.isEmpty() ? QString() : titulo,
        paraQt(format::format(clock::now(), "DD/MM/YYYY HH:MM")) + QStringLiteral("\t\tPágina <#> de <##>"),
        fonteDoRodape()};
}

QFont emEscala(QFont fonte, double escala) {
    fonte.setPointSizeF(fonte.pointSizeF() * escala);
    return fonte;
}

/// Up to three pieces of a line at their places.
void linhaDeTexto(QPainter& pintor, const QRectF& lugar, const QString& texto, Qt::Alignment umaSo) {
    QStringList partes = texto.split(QLatin1Char('\t'));
    if (partes.size() == 1) {
        pintor.drawText(
            lugar, static_cast<int>(umaSo | Qt::AlignVCenter) | Qt::TextSingleLine,
            pintor.fontMetrics().elidedText(texto, Qt::ElideMiddle, static_cast<int>(lugar.width())));
        return;
    }
    const std::array<Qt::Alignment, 3> lugares{Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight};
    double livre = lugar.width();
    // The outer pieces keep their room; the left one, which may be a path, takes what they leave.
    for (int parte = std::min<int>(static_cast<int>(partes.size()), 3) - 1; parte >= 0; --parte) {
        const QString cabe =
            pintor.fontMetrics().elidedText(partes[parte], Qt::ElideMiddle, static_cast<int>(livre));
        livre -= QFontMetricsF(pintor.font(), pintor.device()).horizontalAdvance(cabe);
        pintor.drawText(lugar,
                        static_cast<int>(lugares.at(static_cast<std::size_t>(parte)) | Qt::AlignVCenter) |
                            Qt::TextSingleLine,
                        cabe);
    }
}

} // namespace

/// A printer's page with everything on it in its own dots.
struct ImpressaoGrade::Folha {
    double ponto; ///< Dots of a pixel at 96 dpi.
    QRectF area;
    QFont fonteTitulos;
    QFont fonteCelulas;
    double alturaCabecalho;
    double alturaSubtitulo;
    double alturaRodape;
    double alturaTitulos; ///< Scaled.
    double alturaLinha;   ///< Scaled.
    PaginacaoGrade cortes;
};

ImpressaoGrade::ImpressaoGrade(const Grade& grade)
    : grade_(grade)
    , trabalho_(trabalhoComum(grade)) {
    const QHeaderView& cabecalho = *grade.horizontalHeader();
    for (int visual = 0; visual < cabecalho.count(); ++visual) {
        if (!cabecalho.isSectionHidden(cabecalho.logicalIndex(visual))) {
            colunas_.push_back(cabecalho.logicalIndex(visual));
        }
    }
    if (grade.aoImprimir) {
        grade.aoImprimir(trabalho_);
    }
}

double ImpressaoGrade::larguraTotal() const {
    double soma = 0;
    for (const int coluna : colunas_) {
        soma += grade_.columnWidth(coluna);
    }
    return soma;
}

void ImpressaoGrade::prepara(QPrinter& impressora) const {
    impressora.setDocName(trabalho_.cabecalho.simplified());
    const double largura = impressora.pageRect(QPrinter::Inch).width() * pontosPorPolegada;
    if (larguraTotal() > largura) {
        impressora.setPageOrientation(QPageLayout::Landscape);
    }
}

ImpressaoGrade::Folha ImpressaoGrade::folhaDe(const QPrinter& impressora) const {
    const double ponto = impressora.resolution() / pontosPorPolegada;
    const QRectF pagina(QPointF(0, 0), impressora.pageRect(QPrinter::DevicePixel).size());
    const auto altura = [&](const QFont& fonte) {
        return QFontMetricsF(fonte, &impressora).height() + folga * ponto;
    };
    const double cabecalho = trabalho_.cabecalho.isEmpty() ? 0 : altura(trabalho_.fonteCabecalho);
    const double subtitulo = trabalho_.subtitulo.isEmpty() ? 0 : altura(trabalho_.fonteRodape);
    const double rodape = trabalho_.rodape.isEmpty() ? 0 : altura(trabalho_.fonteRodape);

    PaginacaoGrade::Medidas medidas;
    for (const int coluna : colunas_) {
        medidas.larguras.push_back(grade_.columnWidth(coluna) * ponto);
    }
    medidas.larguraUtil = pagina.width();
    medidas.alturaUtil = pagina.height() - cabecalho - subtitulo - rodape - 2 * folga * ponto;
    medidas.alturaTitulos = altura(grade_.horizontalHeader()->font()) + folga * ponto;
    medidas.alturaLinha = std::max(altura(grade_.font()), (ladoDaImagem + folga) * ponto);
    medidas.linhas = static_cast<std::size_t>(grade_.modelo().rowCount());
    const double alturaTitulos = medidas.alturaTitulos;
    const double alturaLinha = medidas.alturaLinha;
    PaginacaoGrade cortes(std::move(medidas));
    const double escala = cortes.escala();
    return {ponto,
            pagina,
            emEscala(grade_.horizontalHeader()->font(), escala),
            emEscala(grade_.font(), escala),
            cabecalho,
            subtitulo,
            rodape,
            alturaTitulos * escala,
            alturaLinha * escala,
            std::move(cortes)};
}

int ImpressaoGrade::paginas(const QPrinter& impressora) const {
    return static_cast<int>(folhaDe(impressora).cortes.paginas());
}

void ImpressaoGrade::imprime(QPrinter& impressora) const {
    const Folha folha = folhaDe(impressora);
    const int total = static_cast<int>(folha.cortes.paginas());
    const int primeira = impressora.fromPage() > 0 ? impressora.fromPage() : 1;
    const int ultima = impressora.toPage() > 0 ? std::min(impressora.toPage(), total) : total;
    const int copias = impressora.supportsMultipleCopies() ? 1 : impressora.copyCount();
    QPainter pintor;
    if (!pintor.begin(&impressora)) {
        throw Error(erroDeImpressao, "ImpressaoGrade", "A impressora não aceita o trabalho");
    }
    bool comecou = false;
    for (int copia = 0; copia < copias; ++copia) {
        for (int numero = primeira; numero <= ultima; ++numero) {
            if (comecou && !impressora.newPage()) {
                throw Error(erroDeImpressao, "ImpressaoGrade", "A impressora não aceita mais páginas");
            }
            comecou = true;
            pagina(pintor, folha, numero);
        }
    }
}

void ImpressaoGrade::pagina(QPainter& pintor, const Folha& folha, int numero) const {
    const auto comNumeros = [&](QString texto) {
        return texto.replace(QStringLiteral("<##>"), QString::number(folha.cortes.paginas()))
            .replace(QStringLiteral("<#>"), QString::number(numero));
    };
    pintor.setPen(Qt::black);
    double y = folha.area.top();
    pintor.setFont(trabalho_.fonteCabecalho);
    linhaDeTexto(pintor, {folha.area.left(), y, folha.area.width(), folha.alturaCabecalho},
                 comNumeros(trabalho_.cabecalho), Qt::AlignHCenter);
    y += folha.alturaCabecalho;
    pintor.setFont(trabalho_.fonteRodape);
    linhaDeTexto(pintor, {folha.area.left(), y, folha.area.width(), folha.alturaSubtitulo},
                 comNumeros(trabalho_.subtitulo), Qt::AlignHCenter);
    linhaDeTexto(
        pintor,
        {folha.area.left(), folha.area.bottom() - folha.alturaRodape, folha.area.width(), folha.alturaRodape},
        comNumeros(trabalho_.rodape), Qt::AlignLeft);
    y += folha.alturaSubtitulo + folga * folha.ponto;

    const PaginacaoGrade::Pagina conteudo = folha.cortes.pagina(static_cast<std::size_t>(numero - 1));
    pintor.save();
    pintor.translate(folha.area.left(), y);
    titulos(pintor, folha, conteudo.colunas.primeira, conteudo.colunas.quantas);
    pintor.translate(0, folha.alturaTitulos);
    linhas(pintor, folha, conteudo);
    pintor.restore();
}

void ImpressaoGrade::linhas(QPainter& pintor, const Folha& folha,
                            const PaginacaoGrade::Pagina& conteudo) const {
    std::vector<double> bordas{0};
    for (std::size_t c = 0; c < conteudo.colunas.quantas; ++c) {
        bordas.push_back(bordas.back() + folha.cortes.largura(conteudo.colunas.primeira + c));
    }
    pintor.setFont(folha.fonteCelulas);
    for (std::size_t i = 0; i < conteudo.linhas.quantas; ++i) {
        const auto linha = static_cast<int>(conteudo.linhas.primeira + i);
        const double topo = static_cast<double>(i) * folha.alturaLinha;
        if (grade_.aparencia()) {
            pintor.fillRect(QRectF(0, topo, bordas.back(), folha.alturaLinha),
                            linha % 2 == 0 ? grade_.aparencia()->fundoLinha
                                           : grade_.aparencia()->fundoAlternado);
        }
        for (std::size_t c = 0; c < conteudo.colunas.quantas; ++c) {
            celula(pintor, folha, {bordas[c], topo, bordas[c + 1] - bordas[c], folha.alturaLinha}, linha,
                   colunas_[conteudo.colunas.primeira + c]);
        }
    }
    malha(pintor, folha, bordas, conteudo.linhas.quantas);
}

/// The lines between rows and columns, drawn in one go: line by line they would outweigh the texts.
void ImpressaoGrade::malha(QPainter& pintor, const Folha& folha, const std::vector<double>& bordas,
                           std::size_t quantas) const {
    const double altura = static_cast<double>(quantas) * folha.alturaLinha;
    QList<QLineF> tracos;
    for (std::size_t i = 1; i <= quantas; ++i) {
        const double y = static_cast<double>(i) * folha.alturaLinha;
        tracos.emplace_back(0, y, bordas.back(), y);
    }
    for (const double x : bordas) {
        tracos.emplace_back(x, 0, x, altura);
    }
    pintor.setPen(QPen(QColor(Qt::gray), folha.ponto / 2));
    pintor.drawLines(tracos);
    pintor.setPen(Qt::black);
}

void ImpressaoGrade::titulos(QPainter& pintor, const Folha& folha, std::size_t primeira,
                             std::size_t quantas) const {
    const QColor fundo = grade_.aparencia() ? grade_.aparencia()->fundoCabecalho : QColor(Qt::lightGray);
    const double margem = folga * folha.ponto * folha.cortes.escala();
    pintor.setFont(folha.fonteTitulos);
    double x = 0;
    for (std::size_t coluna = primeira; coluna < primeira + quantas; ++coluna) {
        const QRectF lugar(x, 0, folha.cortes.largura(coluna), folha.alturaTitulos);
        pintor.setPen(QPen(fundo.darker(escurecimentoDaLinha), folha.ponto / 2));
        pintor.setBrush(fundo);
        pintor.drawRect(lugar);
        pintor.setPen(Qt::black);
        const QRectF dentro = lugar.adjusted(margem, 0, -margem, 0);
        const QString titulo = grade_.modelo().coluna(colunas_[coluna]).titulo;
        pintor.drawText(
            dentro, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine,
            pintor.fontMetrics().elidedText(titulo, Qt::ElideRight, static_cast<int>(dentro.width())));
        x += lugar.width();
    }
    pintor.setBrush(Qt::NoBrush);
}

void ImpressaoGrade::celula(QPainter& pintor, const Folha& folha, const QRectF& lugar, int linha,
                            int coluna) const {
    const ModeloGrade& modelo = grade_.modelo();
    const double escala = folha.ponto * folha.cortes.escala();
    QRectF dentro = lugar.adjusted(folga * escala, 0, -folga * escala, 0);
    const QModelIndex indice = modelo.index(linha, coluna);
    const auto imagem = indice.data(Qt::DecorationRole).value<QIcon>();
    if (!imagem.isNull()) {
        const double lado = ladoDaImagem * escala;
        const QRectF quadro(dentro.left(), lugar.center().y() - lado / 2, lado, lado);
        imagem.paint(&pintor, quadro.toRect());
        dentro.setLeft(quadro.right() + folga * escala);
    }
    const QString texto = modelo.textoVisivel(linha, coluna).simplified();
    if (texto.isEmpty() || dentro.width() <= 0) {
        return;
    }
    const ColunaGrade& aparencia = modelo.coluna(coluna);
    if (aparencia.fonte) {
        pintor.setFont(emEscala(*aparencia.fonte, folha.cortes.escala()));
    }
    pintor.drawText(dentro, static_cast<int>(aparencia.alinhamento | Qt::AlignVCenter) | Qt::TextSingleLine,
                    pintor.fontMetrics().elidedText(texto, Qt::ElideRight, static_cast<int>(dentro.width())));
    if (aparencia.fonte) {
        pintor.setFont(folha.fonteCelulas);
    }
}

bool imprimeGrade(const Grade& grade) {
    const ImpressaoGrade impressao(grade);
    QPrinter impressora(QPrinter::HighResolution);
    impressao.prepara(impressora);
    QPrintDialog dialogo(&impressora, grade.window());
    dialogo.setWindowTitle(grade.texto(Grade::imprimir));
    dialogo.setOption(QAbstractPrintDialog::PrintPageRange);
    if (dialogo.exec() != QDialog::Accepted) {
        return false;
    }
    impressao.imprime(impressora);
    return true;
}

} // namespace tv
