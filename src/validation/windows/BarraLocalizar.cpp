#include "validation/windows/BarraLocalizar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QToolButton>

namespace tv {

BarraLocalizar::BarraLocalizar(QWidget* dono)
    : QWidget(dono)
    , texto_(new QLineEdit(this))
    , achados_(new QLabel(this)) {
    setObjectName(QStringLiteral("barraLocalizar"));
    setAccessibleName(QStringLiteral("Localizar na página"));
    texto_->setObjectName(QStringLiteral("txtLocalizar"));
    texto_->setAccessibleName(QStringLiteral("Texto a localizar"));
    texto_->setClearButtonEnabled(true);
    texto_->setMaximumWidth(320);
    achados_->setObjectName(QStringLiteral("lblAchados"));
    achados_->setAccessibleName(QStringLiteral("Ocorrências do texto"));

    auto* rotulo = new QLabel(QStringLiteral("&Localizar:"), this);
    rotulo->setBuddy(texto_);
    auto* anterior = criaBotao(QStringLiteral("btnLocalizarAnterior"), QStringLiteral("Anterior"),
                               QStringLiteral("Ocorrência anterior (Shift+F3)"));
    auto* proximo = criaBotao(QStringLiteral("btnLocalizarProximo"), QStringLiteral("Próxima"),
                              QStringLiteral("Próxima ocorrência (F3)"));
    auto* sair = criaBotao(QStringLiteral("btnLocalizarFechar"), QStringLiteral("Fechar"),
                           QStringLiteral("Fechar a busca (Esc)"));

    auto* fila = new QHBoxLayout(this);
    fila->setContentsMargins(6, 3, 6, 3);
    for (QWidget* parte : {static_cast<QWidget*>(rotulo), static_cast<QWidget*>(texto_),
                           static_cast<QWidget*>(anterior), static_cast<QWidget*>(proximo)}) {
        fila->addWidget(parte);
    }
    fila->addWidget(achados_, 1);
    fila->addWidget(sair);

    connect(texto_, &QLineEdit::textChanged, this, [this](const QString& texto) {
        achados_->clear();
        Q_EMIT procura(texto, false);
    });
    connect(anterior, &QToolButton::clicked, this, [this] { repete(true); });
    connect(proximo, &QToolButton::clicked, this, [this] { repete(false); });
    connect(sair, &QToolButton::clicked, this, &BarraLocalizar::fecha);
}

QToolButton* BarraLocalizar::criaBotao(const QString& nome, const QString& texto, const QString& dica) {
    auto* botao = new QToolButton(this);
    botao->setObjectName(nome);
    botao->setText(texto);
    botao->setAccessibleName(texto);
    botao->setToolTip(dica);
    botao->setFocusPolicy(Qt::TabFocus);
    botao->setAutoRaise(true);
    return botao;
}

void BarraLocalizar::abre() {
    const bool aberta = isVisible();
    show();
    texto_->setFocus();
    texto_->selectAll();
    if (!aberta && !texto_->text().isEmpty()) {
        Q_EMIT procura(texto_->text(), false);
    }
}

void BarraLocalizar::repete(bool paraTras) {
    if (texto_->text().isEmpty()) {
        abre();
        return;
    }
    show();
    Q_EMIT procura(texto_->text(), paraTras);
}

void BarraLocalizar::mostraAchados(int posicao, int total) {
    const QLocale brasil(QLocale::Portuguese, QLocale::Brazil);
    mostraAviso(total == 0
                    ? QStringLiteral("Texto não encontrado")
                    : QStringLiteral("%1 de %2").arg(brasil.toString(posicao), brasil.toString(total)));
}

void BarraLocalizar::mostraAviso(const QString& aviso) {
    achados_->setText(texto_->text().isEmpty() ? QString() : aviso);
}

void BarraLocalizar::keyPressEvent(QKeyEvent* evento) {
    switch (evento->key()) {
    case Qt::Key_Escape:
        fecha();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        repete(evento->modifiers().testFlag(Qt::ShiftModifier));
        return;
    default:
        QWidget::keyPressEvent(evento);
    }
}

void BarraLocalizar::fecha() {
    hide();
    Q_EMIT fechada();
}

} // namespace tv
