#include "common/windows/DesenhoGrade.h"

#include "common/windows/Grade.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace tv {

namespace {

constexpr int margemDoTexto = 4;
constexpr int escurecimentoDaBorda = 130; // per cent

} // namespace

CabecalhoGrade::CabecalhoGrade(Grade& grade)
    : QHeaderView(Qt::Horizontal, &grade)
    , grade_(grade) {
    setSectionsClickable(true);
    setHighlightSections(false);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setTextElideMode(Qt::ElideRight);
}

void CabecalhoGrade::paintSection(QPainter* pintor, const QRect& lugar, int coluna) const {
    if (!grade_.aparencia()) {
        QHeaderView::paintSection(pintor, lugar, coluna);
        return;
    }
    const QColor fundo = grade_.aparencia()->fundoCabecalho;
    pintor->save();
    pintor->fillRect(lugar, fundo);
    pintor->setPen(fundo.darker(escurecimentoDaBorda));
    pintor->drawLine(lugar.topRight(), lugar.bottomRight());
    pintor->drawLine(lugar.bottomLeft(), lugar.bottomRight());
    pintor->setPen(Qt::black);
    pintor->setFont(font());
    const QRect dentro = lugar.adjusted(margemDoTexto, 0, -margemDoTexto, 0);
    const QString titulo = model()->headerData(coluna, Qt::Horizontal).toString();
    pintor->drawText(dentro, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(titulo, textElideMode(), dentro.width()));
    pintor->restore();
}

DesenhoGrade::DesenhoGrade(Grade& grade)
    : QStyledItemDelegate(&grade)
    , grade_(grade) {}

void DesenhoGrade::initStyleOption(QStyleOptionViewItem* opcao, const QModelIndex& indice) const {
    QStyledItemDelegate::initStyleOption(opcao, indice);
    if (!grade_.modelo().temEditavel()) {
        opcao->state &= ~QStyle::State_HasFocus; // rows are chosen here, not cells
    }
    if (grade_.aparencia() && indice.row() == grade_.linhaAtiva()) {
        opcao->state &= ~QStyle::State_Selected;
        opcao->backgroundBrush = grade_.aparencia()->fundoLinhaAtiva;
    }
}

void DesenhoGrade::paint(QPainter* pintor, const QStyleOptionViewItem& opcao,
                         const QModelIndex& indice) const {
    QStyledItemDelegate::paint(pintor, opcao, indice);
    const bool selecionada = opcao.state.testFlag(QStyle::State_Selected);
    if (selecionada && grade_.aparencia() && indice.row() == grade_.linhaAtiva()) {
        const QBrush moldura = opcao.palette.highlight();
        const QRect& celula = opcao.rect;
        pintor->fillRect(celula.left(), celula.top(), celula.width(), 2, moldura);
        pintor->fillRect(celula.left(), celula.bottom() - 1, celula.width(), 2, moldura);
    }
}

bool DesenhoGrade::helpEvent(QHelpEvent* evento, QAbstractItemView* vista, const QStyleOptionViewItem& opcao,
                             const QModelIndex& indice) {
    if (evento->type() != QEvent::ToolTip || !indice.isValid()) {
        return QStyledItemDelegate::helpEvent(evento, vista, opcao, indice);
    }
    const QString texto = indice.data().toString();
    const bool cabe = sizeHint(opcao, indice).width() <= opcao.rect.width();
    QToolTip::showText(evento->globalPos(),
                       cabe ? QString() : QStringLiteral("<p>%1</p>").arg(texto.toHtmlEscaped()), vista);
    return true;
}

} // namespace tv
