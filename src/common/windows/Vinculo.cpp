#include "common/windows/Vinculo.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

namespace tv {

Vinculo::Vinculo(QWidget* dono)
    : QLabel(dono) {
    setTextFormat(Qt::PlainText);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setForegroundRole(QPalette::Link);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred); // the blank beside the text is no link
    QFont sublinhada = font();
    sublinhada.setUnderline(true);
    setFont(sublinhada);
}

void Vinculo::mouseReleaseEvent(QMouseEvent* evento) {
    if (evento->button() == Qt::LeftButton && rect().contains(evento->position().toPoint())) {
        Q_EMIT acionado();
    }
}

void Vinculo::keyPressEvent(QKeyEvent* evento) {
    switch (evento->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        Q_EMIT acionado();
        break;
    default:
        QLabel::keyPressEvent(evento);
    }
}

void Vinculo::paintEvent(QPaintEvent* evento) {
    QLabel::paintEvent(evento);
    if (hasFocus()) {
        QPainter pintor(this);
        QStyleOptionFocusRect foco;
        foco.initFrom(this);
        foco.backgroundColor = palette().color(QPalette::Window);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &foco, &pintor, this);
    }
}

} // namespace tv
