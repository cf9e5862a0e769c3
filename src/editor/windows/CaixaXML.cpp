#include "editor/windows/CaixaXML.h"

#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QResizeEvent>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace tv {

namespace {

/// Characters of the text layout, and the noncharacters that stand for them.
struct Substituto {
    char16_t caractere;
    char16_t interno;
};
constexpr std::array<Substituto, 3> substitutos{{{0x2029, 0xFDD9}, {0xFDD0, 0xFDDA}, {0xFDD1, 0xFDDB}}};
constexpr char16_t separador = 0x2029; ///< What ends a line in the layout's raw text.

std::u16string deQt(const QString& texto) {
    std::u16string resultado(reinterpret_cast<const char16_t*>(texto.utf16()),
                             static_cast<std::size_t>(texto.size()));
    std::replace(resultado.begin(), resultado.end(), separador, u'\n');
    return resultado;
}

QString paraTexto(std::u16string_view texto) {
    return QString(reinterpret_cast<const QChar*>(texto.data()), static_cast<qsizetype>(texto.size()));
}

/// Cuts a text into lines.
class Cortador {
public:
    /// `cortes` are the places of the cuts in the text as it is before the first of them, ascending.
    Cortador(QTextCursor& cursor, const std::vector<int>& cortes)
        : cursor_(cursor)
        , cortes_(cortes)
        , bloco_(cursor.blockFormat())
        , caractere_(cursor.charFormat()) {}

    /// Makes the cuts `de` up to `ate`; `feitos` were made in front of them.
    void corta(std::size_t de, std::size_t ate, int feitos) {
        if (de >= ate) {
            return;
        }
        const std::size_t meio = de + (ate - de) / 2;
        cursor_.setPosition(cortes_[meio] + feitos);
        cursor_.insertBlock(bloco_, caractere_);
        corta(meio + 1, ate, feitos + 1); // what lies behind first: places in front stay as they are
        corta(de, meio, feitos);
    }

private:
    QTextCursor& cursor_;
    const std::vector<int>& cortes_;
    QTextBlockFormat bloco_;
    QTextCharFormat caractere_;
};

bool isRedo(const QKeyEvent& evento) {
    return evento.matches(QKeySequence::Redo) ||
           (evento.key() == Qt::Key_Y && evento.modifiers() == Qt::ControlModifier) ||
           (evento.key() == Qt::Key_Z && evento.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier));
}

} // namespace

CaixaXML::CaixaXML(QWidget* dono)
    : QPlainTextEdit(dono) {
    setObjectName(QStringLiteral("txtXML"));
    setAccessibleName(QStringLiteral("Texto do arquivo XML"));
    QTextOption opcoes = document()->defaultTextOption();
    opcoes.setTextDirection(Qt::LeftToRight); // markup reads so, whatever language its values are in
    document()->setDefaultTextOption(opcoes);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setUndoRedoEnabled(false);
    QFont fonte = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fonte.setPointSize(10);
    setFont(fonte);
    constexpr int colunasDoTab = 4;
    setTabStopDistance(colunasDoTab * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
    connect(document(), &QTextDocument::contentsChange, this, &CaixaXML::ouve);
}

std::u16string CaixaXML::interno(std::u16string texto) {
    for (char16_t& unidade : texto) {
        if (unidade >= separador) { // the smallest of them
            for (const Substituto& par : substitutos) {
                unidade = unidade == par.caractere ? par.interno : unidade;
            }
        }
    }
    return texto;
}

void CaixaXML::setTextoInterno(std::u16string_view texto) {
    carregando_ = true;
    clear();
    enche(texto);
    moveCursor(QTextCursor::Start);
    tamanhoConhecido_ = tamanho();
    carregando_ = false;
}

/// Fills the empty box. The layout keeps the pieces of a text in trees: lines that come one behind the other
/// make them deep, and every further line walks all the way down. The text in one piece, cut at its line ends
/// from the middle outwards, keeps the ways short; a large document is shown in little more than half of the
/// time.
void CaixaXML::enche(std::u16string_view texto) {
    QString semLinhas;
    semLinhas.reserve(static_cast<qsizetype>(texto.size()));
    std::vector<int> cortes;
    for (std::size_t inicio = 0; inicio <= texto.size();) {
        const std::size_t fim = std::min(texto.find(u'\n', inicio), texto.size());
        semLinhas += paraTexto(texto.substr(inicio, fim - inicio));
        if (fim < texto.size()) {
            cortes.push_back(static_cast<int>(semLinhas.size()));
        }
        inicio = fim + 1;
    }
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.insertText(semLinhas);
    Cortador(cursor, cortes).corta(0, cortes.size(), 0);
    cursor.endEditBlock();
}

std::u16string CaixaXML::textoInterno() const {
    return deQt(document()->toRawText());
}

std::u16string CaixaXML::texto() const {
    std::u16string resultado = textoInterno();
    for (char16_t& unidade : resultado) {
        for (const Substituto& par : substitutos) {
            unidade = unidade == par.interno ? par.caractere : unidade;
        }
    }
    return resultado;
}

int CaixaXML::tamanho() const {
    return document()->characterCount() - 1;
}

void CaixaXML::seleciona(std::int32_t inicio, std::int32_t quantos) {
    const int fim = tamanho();
    const int de = std::clamp(inicio, 0, fim);
    QTextCursor cursor = textCursor();
    cursor.setPosition(de);
    cursor.setPosition(de + std::clamp(quantos, 0, fim - de), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void CaixaXML::setSelText(std::u16string_view texto) {
    QTextCursor cursor = textCursor();
    cursor.insertText(paraTexto(texto));
    setTextCursor(cursor);
}

void CaixaXML::troca(std::int32_t inicio, std::int32_t removidos, std::u16string_view texto) {
    const int fim = tamanho();
    const int de = std::clamp(inicio, 0, fim);
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.setPosition(de);
    cursor.setPosition(de + std::clamp(removidos, 0, fim - de), QTextCursor::KeepAnchor);
    cursor.insertText(paraTexto(texto));
    cursor.endEditBlock();
}

std::int32_t CaixaXML::inicioDaLinha(std::int32_t linha) const {
    const QTextBlock bloco = linha < 0 ? QTextBlock() : document()->findBlockByNumber(linha);
    return bloco.isValid() ? bloco.position() : -1;
}

void CaixaXML::HideSelection(bool esconde) {
    viewport()->setUpdatesEnabled(!esconde);
}

std::u16string CaixaXML::trecho(int inicio, int quantos) const {
    QTextCursor cursor(document());
    cursor.setPosition(inicio);
    cursor.setPosition(inicio + quantos, QTextCursor::KeepAnchor);
    return deQt(cursor.selectedText());
}

/// The layout counts the end of the last line in some of its changes; lengths before and after tell what
/// really happened.
void CaixaXML::ouve(int inicio, int /*removidos*/, int inseridos) {
    if (carregando_) {
        return;
    }
    const int antes = std::exchange(tamanhoConhecido_, tamanho());
    const int depois = tamanhoConhecido_;
    const int de = std::min({inicio, antes, depois});
    const int novos = std::clamp(inseridos, std::max(0, depois - antes), depois - de);
    MudancaTexto mudanca{static_cast<std::size_t>(de), static_cast<std::size_t>(antes - (depois - novos)),
                         trecho(de, novos)};
    Q_EMIT mudou(mudanca);
}

void CaixaXML::keyPressEvent(QKeyEvent* evento) {
    if (evento->matches(QKeySequence::Undo)) {
        Q_EMIT pedeDesfazer();
    } else if (isRedo(*evento)) {
        Q_EMIT pedeRefazer();
    } else if (evento->matches(QKeySequence::InsertLineSeparator)) {
        textCursor().insertText(QStringLiteral("\n")); // a line is a line, with Shift or without
        ensureCursorVisible();
    } else {
        QPlainTextEdit::keyPressEvent(evento);
        return;
    }
    evento->accept();
}

void CaixaXML::focusInEvent(QFocusEvent* evento) {
    QPlainTextEdit::focusInEvent(evento);
    Q_EMIT focada();
}

void CaixaXML::contextMenuEvent(QContextMenuEvent* evento) {
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("menuTexto"));
    Q_EMIT menuPedido(menu);
    menu.exec(evento->globalPos());
}

/// At another width the box would lay every line out anew, and keep a layout for each. Lines that do not wrap
/// and begin at the left do not depend on the width.
void CaixaXML::resizeEvent(QResizeEvent* evento) {
    if (lineWrapMode() != QPlainTextEdit::NoWrap) {
        QPlainTextEdit::resizeEvent(evento);
        return;
    }
    QResizeEvent soAltura(evento->size(), QSize(evento->size().width(), evento->oldSize().height()));
    QPlainTextEdit::resizeEvent(&soAltura);
}

QMimeData* CaixaXML::createMimeDataFromSelection() const {
    // The standard copy would turn blanks that do not break into plain ones.
    auto dados = std::make_unique<QMimeData>();
    dados->setText(paraTexto(deQt(textCursor().selectedText())));
    return dados.release();
}

} // namespace tv
