#include "composer/windows/EdicaoGrade.h"

#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "composer/bloco.h"
#include "composer/entrada.h"
#include "logging/Routine.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>

#include <algorithm>
#include <map>
#include <set>

namespace tv {

namespace {

constexpr qsizetype maximoDeRecusas = 20; ///< Told of one block, so that the message stays on the screen.

} // namespace

EdicaoGrade::EdicaoGrade(Grade& grade, GradeSecao& secao)
    : QObject(&grade)
    , grade_(grade)
    , secao_(secao)
    , delegado_(new DelegadoCelula(grade, *secao.secao)) {
    grade.setItemDelegate(delegado_);
    grade.setSelectionBehavior(QAbstractItemView::SelectItems);
    grade.setTabKeyNavigation(true);
    grade.setTeclaRemove(false); // Delete empties cells
    grade.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
    grade.installEventFilter(this);
    connect(delegado_, &DelegadoCelula::digitado, this, &EdicaoGrade::digitado);
    connect(delegado_, &DelegadoCelula::itemEscolhido, this, &EdicaoGrade::terminaAtual);
    connect(delegado_, &DelegadoCelula::entrou, this, [this](Qt::KeyboardModifiers modificadores) {
        if (modificadores == Qt::ControlModifier) {
            terminaAtual();
        } else {
            move(modificadores == Qt::ShiftModifier ? -1 : 1);
        }
    });
}

bool EdicaoGrade::isCampo(int coluna) const {
    return coluna >= 0 && static_cast<std::size_t>(coluna) < secao_.secao->getCampos().Count();
}

const clsCampo& EdicaoGrade::campo(int coluna) const {
    return *secao_.secao->getCampos().Item(static_cast<std::size_t>(coluna) + 1);
}

/// Writes a cell and keeps what it held. False when it holds that value already.
bool EdicaoGrade::muda(int linha, int coluna, Value valor, std::vector<CelulaEditada>& celulas) {
    const std::string& tag = campo(coluna).getTag();
    const Value antes = grade_.modelo().valor(linha, tag);
    if (antes == valor) {
        return false;
    }
    const std::size_t numero = grade_.modelo().numeroDaLinha(linha);
    grade_.modelo().setValor(linha, tag, valor);
    celulas.push_back({numero, static_cast<std::size_t>(coluna), antes, std::move(valor)});
    return true;
}

void EdicaoGrade::digitado(const QModelIndex& celula, const QString& texto) {
    guarded("EdicaoGrade.digitado", [&] {
        const clsCampo& este = campo(celula.column());
        const std::optional<Value> valor = entrada::le(este, paraUtf8(texto));
        if (!valor) {
            const bool isData = entrada::controle(este) == entrada::Controle::Data;
            Q_EMIT recusou(grade_.texto(isData ? Grade::dataInvalida : Grade::valorInvalido));
            return;
        }
        std::vector<CelulaEditada> celulas;
        if (muda(celula.row(), celula.column(), *valor, celulas)) {
            pendente_ = celulas.front().linha;
            Q_EMIT editou(celulas);
        }
    });
}

void EdicaoGrade::terminaAtual() {
    const int linha = grade_.linhaAtiva();
    if (linha >= 0) {
        Q_EMIT linhasTerminam({grade_.modelo().numeroDaLinha(linha)});
    }
}

void EdicaoGrade::move(int linhas) {
    const QModelIndex atual = grade_.currentIndex();
    const QModelIndex alvo = atual.siblingAtRow(atual.row() + linhas);
    if (alvo.isValid()) {
        grade_.setCurrentIndex(alvo);
    }
    grade_.setFocus();
}

// --- blocks of cells

QString EdicaoGrade::copia() const {
    std::map<int, std::map<int, std::string>> celulas;
    QModelIndexList escolhidas = grade_.selectionModel()->selectedIndexes();
    if (escolhidas.isEmpty() && grade_.currentIndex().isValid()) {
        escolhidas << grade_.currentIndex();
    }
    for (const QModelIndex& indice : std::as_const(escolhidas)) {
        if (isCampo(indice.column())) {
            celulas[indice.row()][indice.column()] =
                paraUtf8(grade_.modelo().textoVisivel(indice.row(), indice.column()));
        }
    }
    bloco::Bloco texto;
    for (const auto& [linha, colunas] : celulas) {
        auto& nova = texto.emplace_back();
        for (const auto& [coluna, celula] : colunas) {
            nova.push_back(celula);
        }
    }
    return paraQt(bloco::escreve(texto));
}

void EdicaoGrade::cola(const QString& texto) {
    const bloco::Bloco bloco = bloco::le(paraUtf8(texto));
    const QModelIndex canto = grade_.currentIndex();
    if (bloco.empty() || !canto.isValid()) {
        return;
    }
    std::vector<CelulaEditada> celulas;
    QStringList recusadas;
    const int linhas = std::min(static_cast<int>(bloco.size()), grade_.modelo().rowCount() - canto.row());
    for (int i = 0; i < linhas; ++i) {
        const std::vector<std::string>& textos = bloco[static_cast<std::size_t>(i)];
        for (int j = 0; j < static_cast<int>(textos.size()) && isCampo(canto.column() + j); ++j) {
            const clsCampo& este = campo(canto.column() + j);
            const auto valor = entrada::le(este, textos[static_cast<std::size_t>(j)]);
            if (valor) {
                muda(canto.row() + i, canto.column() + j, *valor, celulas);
            } else {
                recusadas << QStringLiteral("\n\tLinha %1: %2")
                                 .arg(canto.row() + i + 1)
                                 .arg(paraQt(este.getNome()));
            }
        }
    }
    conclui(celulas);
    if (recusadas.size() > maximoDeRecusas) {
        recusadas = recusadas.mid(0, maximoDeRecusas) << QStringLiteral("\n\t...");
    }
    if (!recusadas.isEmpty()) {
        Q_EMIT recusou(grade_.texto(Grade::valorInvalido) + recusadas.join(QString()));
    }
}

void EdicaoGrade::limpaCelulas() {
    std::vector<CelulaEditada> celulas;
    QModelIndexList escolhidas = grade_.selectionModel()->selectedIndexes();
    if (escolhidas.isEmpty() && grade_.currentIndex().isValid()) {
        escolhidas << grade_.currentIndex();
    }
    for (const QModelIndex& indice : std::as_const(escolhidas)) {
        if (isCampo(indice.column())) {
            muda(indice.row(), indice.column(), Null{}, celulas);
        }
    }
    conclui(celulas);
}

/// The active row stays under way; the others have been left.
void EdicaoGrade::conclui(const std::vector<CelulaEditada>& celulas) {
    if (celulas.empty()) {
        return;
    }
    const int ativa = grade_.linhaAtiva();
    const std::size_t numeroAtivo = ativa >= 0 ? grade_.modelo().numeroDaLinha(ativa) : 0;
    std::set<std::size_t> outras;
    for (const CelulaEditada& celula : celulas) {
        if (ativa >= 0 && celula.linha == numeroAtivo) {
            pendente_ = numeroAtivo;
        } else {
            outras.insert(celula.linha);
        }
    }
    const std::vector<std::size_t> deixadas(outras.begin(), outras.end());
    Q_EMIT editou(celulas);
    if (!deixadas.empty()) {
        Q_EMIT linhasTerminam(deixadas);
    }
}

void EdicaoGrade::escreve(const std::vector<CelulaEditada>& celulas, bool depois) {
    std::set<std::size_t> mudadas;
    for (const CelulaEditada& celula : celulas) {
        const int linha = grade_.modelo().linhaDoNumero(celula.linha);
        if (linha < 0) {
            continue;
        }
        grade_.modelo().setValor(linha, campo(static_cast<int>(celula.coluna)).getTag(),
                                 depois ? celula.depois : celula.antes);
        if (mudadas.empty()) {
            grade_.setCurrentIndex(grade_.modelo().index(linha, static_cast<int>(celula.coluna)));
        }
        mudadas.insert(celula.linha);
    }
    const std::vector<std::size_t> linhas(mudadas.begin(), mudadas.end());
    if (!linhas.empty()) {
        Q_EMIT linhasTerminam(linhas);
    }
}

// --- the keyboard

bool EdicaoGrade::eventFilter(QObject* alvo, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress) {
        return QObject::eventFilter(alvo, evento);
    }
    bool tratada = false;
    guarded("EdicaoGrade.tecla", [&] {
        const auto& teclaApertada = *static_cast<const QKeyEvent*>(evento);
        tratada = tecla(teclaApertada) || teclaDeBloco(teclaApertada);
    });
    return tratada || QObject::eventFilter(alvo, evento);
}

bool EdicaoGrade::tecla(const QKeyEvent& evento) {
    const bool doTeclado = evento.modifiers().testFlag(Qt::KeypadModifier);
    const Qt::KeyboardModifiers modificadores = evento.modifiers() & ~Qt::KeypadModifier;
    const bool comCtrl = modificadores == Qt::ControlModifier;
    switch (evento.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (comCtrl) {
            encerraCelula();
            terminaAtual();
        } else {
            move(modificadores == Qt::ShiftModifier ? -1 : 1);
        }
        return true;
    case Qt::Key_Plus:
        if (comCtrl && doTeclado) {
            Q_EMIT pedeInclusao();
            return true;
        }
        return false;
    case Qt::Key_Minus:
        if (comCtrl && doTeclado) {
            Q_EMIT pedeRemocao();
            return true;
        }
        return false;
    default:
        return false;
    }
}

bool EdicaoGrade::teclaDeBloco(const QKeyEvent& evento) {
    if (evento.matches(QKeySequence::Copy)) {
        const QString texto = copia();
        if (!texto.isEmpty()) {
            QApplication::clipboard()->setText(texto);
        }
        return true;
    }
    if (evento.matches(QKeySequence::Paste)) {
        cola(QApplication::clipboard()->text());
        return true;
    }
    if (evento.matches(QKeySequence::Delete)) {
        limpaCelulas();
        return true;
    }
    return false;
}

} // namespace tv
