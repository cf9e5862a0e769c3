#include "editor/windows/PaginasDeTexto.h"

#include "platform/Error.h"

#include <QPainter>
#include <QTextDocument>
#include <QTextLayout>

namespace tv {

namespace {

/// Characters that are laid out at a time; many times what a line holds.
constexpr qsizetype maiorPedaco = 4096;

/// The lines of a piece that go onto the page.
struct Composicao {
    int linhas = 0;
    qsizetype caracteres = 0; ///< On those lines.
    bool cheia = false;       ///< The page has no room for the next line.
};

/// Breaks a piece into lines down from `y`, which moves along. The last line of a piece that does not end its
/// paragraph may go on behind it and is left for the next piece.
Composicao compoe(QTextLayout& layout, const QRectF& area, qreal& y, bool fimDoParagrafo) {
    Composicao feita;
    layout.beginLayout();
    for (QTextLine linha = layout.createLine(); linha.isValid(); linha = layout.createLine()) {
        linha.setLineWidth(area.width());
        const qsizetype fim = linha.textStart() + linha.textLength();
        if (!fimDoParagrafo && fim == layout.text().size() && feita.linhas > 0) {
            break;
        }
        feita.cheia = y > area.top() && y + linha.height() > area.bottom();
        if (feita.cheia) {
            break;
        }
        linha.setPosition(QPointF(area.left(), y));
        y += linha.height();
        feita.caracteres = fim;
        ++feita.linhas;
    }
    layout.endLayout();
    return feita;
}

} // namespace

PaginasDeTexto::PaginasDeTexto(const QTextDocument& texto, const QFont& fonte, const QRectF& area,
                               qreal tabulacao)
    : fonte_(fonte)
    , area_(area)
    , tamanho_(texto.characterCount() - 1) {
    if (area.isEmpty()) {
        throw Error(errc::invalidCall, "PaginasDeTexto", "As margens não deixam lugar para o texto");
    }
    opcoes_.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    opcoes_.setTabStopDistance(tabulacao); // the layout scales it to the device, as it does the font
    abreParagrafo(texto.firstBlock());
}

void PaginasDeTexto::desenhaPagina(QPainter& pincel) {
    qreal y = area_.top();
    bool cabe = true;
    while (cabe && !terminou()) {
        cabe = desenhaPedaco(pincel, y);
    }
}

int PaginasDeTexto::proximo() const {
    return paragrafo_.isValid() ? paragrafo_.position() + static_cast<int>(inicio_) : tamanho_;
}

bool PaginasDeTexto::terminou() const {
    return proximo() >= tamanho_;
}

/// False when the page is full.
bool PaginasDeTexto::desenhaPedaco(QPainter& pincel, qreal& y) {
    const QString pedaco = conteudo_.mid(inicio_, maiorPedaco);
    const bool fimDoParagrafo = inicio_ + pedaco.size() == conteudo_.size();
    QTextLayout layout(pedaco, fonte_, pincel.device());
    layout.setTextOption(opcoes_);
    const Composicao feita = compoe(layout, area_, y, fimDoParagrafo);
    for (int linha = 0; linha < feita.linhas; ++linha) {
        layout.lineAt(linha).draw(&pincel, QPointF(0, 0));
    }
    inicio_ += feita.caracteres;
    if (!feita.cheia && inicio_ == conteudo_.size()) {
        abreParagrafo(paragrafo_.next());
    }
    return !feita.cheia;
}

void PaginasDeTexto::abreParagrafo(const QTextBlock& paragrafo) {
    paragrafo_ = paragrafo;
    conteudo_ = paragrafo.text();
    inicio_ = 0;
}

} // namespace tv
