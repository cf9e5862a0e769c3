#include "editor/windows/PicLines.h"

#include <QPaintEvent>
#include <QPainter>

namespace tv {

PicLines::PicLines(QWidget* dono)
    : QWidget(dono) {
    setObjectName(QStringLiteral("picLines"));
    setAccessibleName(QStringLiteral("Números das linhas"));
    setFocusPolicy(Qt::NoFocus);
}

PicLines::~PicLines() = default;

QColor PicLines::BackColor() const {
    return backColor_.value_or(palette().color(QPalette::Window));
}

void PicLines::setBackColor(const QColor& cor) {
    backColor_ = cor;
    update();
}

void PicLines::Refresh() {
    update();
}

QPixmap& PicLines::superficie() {
    const QSize pontos = size() * devicePixelRatioF();
    if (superficie_.size() != pontos) {
        superficie_ = QPixmap(pontos);
        superficie_.setDevicePixelRatio(devicePixelRatioF());
        superficie_.fill(BackColor());
    }
    return superficie_;
}

void PicLines::paintEvent(QPaintEvent* evento) {
    QPainter pincel(this);
    pincel.fillRect(evento->rect(), BackColor());
    if (!superficie_.isNull()) {
        pincel.drawPixmap(0, 0, superficie_);
    }
}

} // namespace tv
