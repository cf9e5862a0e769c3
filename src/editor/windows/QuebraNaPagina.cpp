#include "editor/windows/QuebraNaPagina.h"

#include <QEvent>
#include <QPageLayout>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QTextDocument>

#include <algorithm>

namespace tv {

namespace {

/// Gives a name to a setter that boxes keep for their own kind.
class Margens : public QPlainTextEdit {
public:
    using QPlainTextEdit::setViewportMargins;
};

} // namespace

QuebraNaPagina::QuebraNaPagina(QPlainTextEdit& caixa)
    : QObject(&caixa)
    , caixa_(&caixa) {
    caixa.viewport()->installEventFilter(this);
}

QuebraNaPagina::~QuebraNaPagina() = default;

QuebraNaPagina* QuebraNaPagina::de(const QPlainTextEdit& caixa) {
    return caixa.findChild<QuebraNaPagina*>(QString(), Qt::FindDirectChildrenOnly);
}

void QuebraNaPagina::limita(int largura) {
    largura_ = largura;
    ajusta();
}

void QuebraNaPagina::libera() {
    largura_.reset();
    ajusta();
}

int QuebraNaPagina::larguraDaPagina(const QPlainTextEdit& caixa) {
    const QPrinter impressora(QPrinter::HighResolution);
    const double polegadas = impressora.pageLayout().fullRect(QPageLayout::Inch).width();
    return qRound(polegadas * caixa.logicalDpiX() + 2 * caixa.document()->documentMargin());
}

bool QuebraNaPagina::eventFilter(QObject* observado, QEvent* evento) {
    if (evento->type() == QEvent::Resize) {
        ajusta();
    }
    return QObject::eventFilter(observado, evento);
}

void QuebraNaPagina::ajusta() {
    const int disponivel = caixa_->viewport()->width() + margem_;
    aplicaMargem(largura_ ? std::max(0, disponivel - *largura_) : 0);
}

void QuebraNaPagina::aplicaMargem(int margem) {
    if (margem != margem_) {
        margem_ = margem;
        using Ajuste = void (QAbstractScrollArea::*)(int, int, int, int);
        (caixa_->*static_cast<Ajuste>(&Margens::setViewportMargins))(0, 0, margem, 0);
    }
}

} // namespace tv
