#include "editor/windows/EditorXML.h"

#include "editor/windows/PicLines.h"
#include "editor/windows/QuebraNaPagina.h"
#include "editor/windows/janelaAtiva.h"
#include "logging/Routine.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace tv::EditorXML {

namespace {

QPlainTextEdit& caixaAtiva() {
    return controleDaJanelaAtiva<QPlainTextEdit>(QStringLiteral("txtXML"));
}

/// Asks the active child's box, and 0 where there is none.
template<typename Pergunta>
std::int32_t daCaixaAtiva(Pergunta pergunta) {
    std::int32_t resposta = 0;
    proceed([&] { resposta = pergunta(caixaAtiva()); });
    return resposta;
}

/// First and last line of the selection; the caret's line twice without one.
struct LinhasSelecionadas {
    std::int32_t primeira;
    std::int32_t ultima;
};

LinhasSelecionadas linhasSelecionadas(const QPlainTextEdit& caixa) {
    const QTextCursor cursor = caixa.textCursor();
    const std::int32_t inicio = cursor.selectionStart();
    const std::int32_t ultimo = cursor.selectionEnd() - 1;
    const std::int32_t primeira = GetCurrentLine(caixa, inicio);
    return {primeira, ultimo > inicio ? GetCurrentLine(caixa, ultimo) : primeira};
}

/// Height of a line of text on the strip.
int alturaDaLinha(const PicLines& picLines) {
    return QFontMetrics(picLines.font(), &picLines).height();
}

/// The numbers from the first visible line to the strip's foot or the text's end; one at least.
void desenhaNumeros(QPainter& pincel, QRect area, int pe, const QPlainTextEdit& caixa,
                    const QPalette& paleta) {
    const int altura = area.height();
    const std::int32_t total = GetTotalLines(caixa);
    const LinhasSelecionadas selecao = linhasSelecionadas(caixa);
    std::int32_t linha = GetFirstVisibleLine(caixa);
    pincel.setPen(paleta.color(QPalette::Dark));
    do {
        if (linha == selecao.primeira) {
            pincel.setPen(paleta.color(QPalette::WindowText));
        } else if (linha == selecao.ultima + 1) {
            pincel.setPen(paleta.color(QPalette::Dark));
        }
        pincel.drawText(area, Qt::AlignRight | Qt::AlignTop | Qt::TextSingleLine, QString::number(linha + 1));
        ++linha;
        area.translate(0, altura);
    } while (linha + 1 <= total && area.top() + altura <= pe);
}

void desenha(PicLines& picLines, const QPlainTextEdit& caixa) {
    const QRect cliente = picLines.rect();
    if (cliente.isEmpty()) {
        return;
    }
    const QRect area(2, 0, cliente.width() - 4, alturaDaLinha(picLines));
    const QPalette paleta = picLines.palette();
    QPainter pincel(&picLines.superficie());
    pincel.setFont(picLines.font());
    pincel.fillRect(cliente, picLines.BackColor());
    desenhaNumeros(pincel, area, cliente.height(), caixa, paleta);
    pincel.setPen(QPen(paleta.color(QPalette::Dark), 1));
    const int divisa = cliente.width() - 1;
    pincel.drawLine(divisa, 0, divisa, cliente.height() - 1);
    pincel.end();
    if (picLines.AutoRedraw()) {
        picLines.Refresh();
    }
}

} // namespace

std::int32_t GetTotalLines() {
    return daCaixaAtiva([](const QPlainTextEdit& caixa) { return GetTotalLines(caixa); });
}

std::int32_t GetTotalLines(const QPlainTextEdit& caixa) {
    return caixa.document()->blockCount();
}

std::int32_t GetFirstVisibleLine() {
    return daCaixaAtiva([](const QPlainTextEdit& caixa) { return GetFirstVisibleLine(caixa); });
}

std::int32_t GetFirstVisibleLine(const QPlainTextEdit& caixa) {
    return caixa.cursorForPosition(QPoint(0, 0)).blockNumber();
}

std::int32_t GetCurrentLine(std::int32_t& indice) {
    return daCaixaAtiva([&](const QPlainTextEdit& caixa) { return GetCurrentLine(caixa, indice); });
}

std::int32_t GetCurrentLine(const QPlainTextEdit& caixa, std::int32_t indice) {
    const std::int32_t posicao = indice == -1 ? caixa.textCursor().selectionStart() : std::max(indice, 0);
    const QTextBlock linha = caixa.document()->findBlock(posicao);
    return linha.isValid() ? linha.blockNumber() : GetTotalLines(caixa) - 1;
}

void DrawLines(PicLines& picLines) {
    guarded("EditorXML.DrawLines", [&] { desenha(picLines, caixaAtiva()); });
}

void DrawLines(PicLines& picLines, const QPlainTextEdit& caixa) {
    guarded("EditorXML.DrawLines", [&] { desenha(picLines, caixa); });
}

void quebraLinhas(Quebra modo) {
    proceed([&] { quebraLinhas(caixaAtiva(), modo); });
}

void quebraLinhas(QPlainTextEdit& caixa, Quebra modo) {
    caixa.setLineWrapMode(modo == Quebra::Nenhuma ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
    QuebraNaPagina* limite = QuebraNaPagina::de(caixa);
    if (modo != Quebra::NaPagina) {
        if (limite != nullptr) {
            limite->libera();
        }
        return;
    }
    if (limite == nullptr) {
        limite = new QuebraNaPagina(caixa); // the box owns it
    }
    limite->limita(QuebraNaPagina::larguraDaPagina(caixa));
}

} // namespace tv::EditorXML
