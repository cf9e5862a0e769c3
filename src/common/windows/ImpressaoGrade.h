#pragma once

#include "common/PaginacaoGrade.h"

#include <QFont>
#include <QIcon>
#include <QString>

#include <vector>

class QPainter;
class QPrinter;
class QWidget;

namespace tv {

class Grade;

/// Header and footer of a grid's print. A text holds up to three pieces parted by tabs, for the left, the
/// middle and the right; a text in one piece stands in the middle of the header, at the left of the footer.
/// "<#>" stands for the page's number and "<##>" for the count of pages.
struct TrabalhoImpressao {
    QString cabecalho;
    QFont fonteCabecalho;
    QString subtitulo; ///< Below the header, in the footer's font.
    QString rodape;
    QFont fonteRodape;
};

/// The preview's window.
struct PrevisaoImpressao {
    QString titulo;
    QIcon icone;
};

/// A grid on paper: header, column titles and rows on every page, footer. Hidden columns are left out, the
/// others stand in the order and width of the screen.
class ImpressaoGrade {
public:
    /// Asks the grid's `aoImprimir` for header and footer. The grid must live as long as the object.
    explicit ImpressaoGrade(const Grade& grade);

    /// Names the job and lays the paper on its side for a wide grid.
    void prepara(QPrinter& impressora) const;
    int paginas(const QPrinter& impressora) const;
    /// Prints the pages of the printer's range, every copy. Throws Error 482 when the printer does not take
    /// them.
    void imprime(QPrinter& impressora) const;

    const TrabalhoImpressao& trabalho() const noexcept { return trabalho_; }

private:
    struct Folha;
    Folha folhaDe(const QPrinter& impressora) const;
    double larguraTotal() const;
    void pagina(QPainter& pintor, const Folha& folha, int numero) const;
    void titulos(QPainter& pintor, const Folha& folha, std::size_t primeira, std::size_t quantas) const;
    void linhas(QPainter& pintor, const Folha& folha, const PaginacaoGrade::Pagina& conteudo) const;
    void malha(QPainter& pintor, const Folha& folha, const std::vector<double>& bordas,
               std::size_t quantas) const;
    void celula(QPainter& pintor, const Folha& folha, const QRectF& lugar, int linha, int coluna) const;

    const Grade& grade_;
    std::vector<int> colunas_; // visible ones, in visual order
    TrabalhoImpressao trabalho_;
};

/// Lets the user choose a printer and prints the grid. False when the user cancels.
bool imprimeGrade(const Grade& grade);

} // namespace tv
