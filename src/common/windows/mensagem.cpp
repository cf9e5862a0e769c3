#include "common/windows/mensagem.h"

#include "app/Aplicacao.h"
#include "common/windows/textoQt.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace tv::mensagem {

namespace {

QMessageBox::Icon iconeQt(Icone icone) {
    switch (icone) {
    case Icone::Informacao:
        return QMessageBox::Information;
    case Icone::Exclamacao:
        return QMessageBox::Warning;
    case Icone::Critico:
        return QMessageBox::Critical;
    case Icone::Pergunta:
        return QMessageBox::Question;
    case Icone::Nenhum:
        break;
    }
    return QMessageBox::NoIcon;
}

/// A wait cursor would belong to the work that the box interrupts, not to the box.
class CursorNormal {
public:
    CursorNormal() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~CursorNormal() { QApplication::restoreOverrideCursor(); }
    CursorNormal(const CursorNormal&) = delete;
    CursorNormal& operator=(const CursorNormal&) = delete;
};

void prepara(QMessageBox& caixa, const QString& texto, Icone icone, const QString& titulo) {
    caixa.setObjectName(QStringLiteral("mensagem"));
    caixa.setTextFormat(Qt::PlainText);
    caixa.setText(texto);
    caixa.setIcon(iconeQt(icone));
    caixa.setWindowTitle(titulo.isEmpty() ? paraQt(aplicacao::titulo()) : titulo);
    caixa.setWindowModality(Qt::ApplicationModal);
}

bool perguntaEm(QMessageBox& caixa) {
    auto* sim = caixa.addButton(QStringLiteral("&Sim"), QMessageBox::YesRole);
    auto* nao = caixa.addButton(QStringLiteral("&Não"), QMessageBox::NoRole);
    caixa.setDefaultButton(sim);
    caixa.setEscapeButton(nao);
    const CursorNormal cursor;
    caixa.exec();
    return caixa.clickedButton() == sim;
}

} // namespace

void mostra(const QString& texto, Icone icone, const QString& titulo) {
    QMessageBox caixa(QApplication::activeWindow());
    prepara(caixa, texto, icone, titulo);
    caixa.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    const CursorNormal cursor;
    caixa.exec();
}

bool pergunta(const QString& texto, Icone icone, const QString& titulo) {
    QMessageBox caixa(QApplication::activeWindow());
    prepara(caixa, texto, icone, titulo);
    return perguntaEm(caixa);
}

bool perguntaAcimaDeTudo(const QString& texto, Icone icone, const QString& titulo) {
    QMessageBox caixa(QApplication::activeWindow());
    prepara(caixa, texto, icone, titulo);
    caixa.setWindowFlag(Qt::WindowStaysOnTopHint);
    return perguntaEm(caixa);
}

} // namespace tv::mensagem
