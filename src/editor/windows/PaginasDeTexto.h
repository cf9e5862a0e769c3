#pragma once

#include <QFont>
#include <QRectF>
#include <QString>
#include <QTextBlock>
#include <QTextOption>

class QPainter;
class QTextDocument;

namespace tv {

/// Sets a plain text page by page for a printer. Only a few lines are laid out at a time, and a paragraph of
/// any length is taken in pieces, so that time goes with the length of the text and memory with a page's.
class PaginasDeTexto {
public:
    /// `area` is where the text stands on each page, in the device's dots; `tabulacao` the distance of tab
    /// stops in pixels of the screen. The text must outlive the object, and stay as it is. Throws Error 5 for
    /// an empty area.
    PaginasDeTexto(const QTextDocument& texto, const QFont& fonte, const QRectF& area, qreal tabulacao);

    /// Draws the next page, which takes one line at least where text is left.
    void desenhaPagina(QPainter& pincel);
    /// Position in the text of the next character to draw.
    int proximo() const;
    /// True when no character is left.
    bool terminou() const;

private:
    bool desenhaPedaco(QPainter& pincel, qreal& y);
    void abreParagrafo(const QTextBlock& paragrafo);

    QFont fonte_;
    QRectF area_;
    QTextOption opcoes_;
    int tamanho_;
    QTextBlock paragrafo_;
    QString conteudo_;     ///< Of the paragraph.
    qsizetype inicio_ = 0; ///< Of what is left of the paragraph.
};

} // namespace tv
