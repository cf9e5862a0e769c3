#include "common/windows/mensagem.h"

#include "app/Aplicacao.h"
#include "common/windows/textoQt.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

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

/// The widest text of a box, in pixels: of what Qt lets a box take of the screen, the rest is icon and
/// margins.
int maiorLargura(const QScreen& tela) {
    constexpr int telaPequena = 1024;
    const int largura = tela.availableSize().width();
    return largura <= telaPequena ? largura * 3 / 4 : std::min(largura - 600, 800);
}

/// A box breaks lines early; those of the text stay whole as far as the screen bears.
void guardaLinhas(const QMessageBox& caixa) {
    constexpr int folga = 24; // what the label keeps free around its text
    auto* rotulo = caixa.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (rotulo == nullptr) {
        return;
    }
    int largura = 0;
    for (const QString& linha : caixa.text().split(QLatin1Char('\n'))) {
        largura = std::max(largura, rotulo->fontMetrics().horizontalAdvance(linha) + folga);
    }
    rotulo->setMinimumWidth(std::min(largura, maiorLargura(*caixa.screen())));
}

void prepara(QMessageBox& caixa, const QString& texto, Icone icone, const QString& titulo) {
    caixa.setObjectName(QStringLiteral("mensagem"));
    caixa.setTextFormat(Qt::PlainText);
    caixa.setText(texto);
    caixa.setIcon(iconeQt(icone));
    caixa.setWindowTitle(titulo.isEmpty() ? paraQt(aplicacao::titulo()) : titulo);
    caixa.setWindowModality(Qt::ApplicationModal);
    guardaLinhas(caixa);
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

void mostra(const QString& texto, Icone icone, const QString& titulo, const QString& explicacao) {
    QMessageBox caixa(QApplication::activeWindow());
    prepara(caixa, texto, icone, titulo);
    caixa.setInformativeText(explicacao);
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
