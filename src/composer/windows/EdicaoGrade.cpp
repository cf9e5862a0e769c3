#include "composer/windows/EdicaoGrade.h"

#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "composer/entrada.h"
#include "logging/Routine.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>

namespace tv {

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
    connect(delegado_, &DelegadoCelula::pediuInclusao, this, &EdicaoGrade::pedeInclusao);
    connect(delegado_, &DelegadoCelula::pediuRemocao, this, &EdicaoGrade::pedeRemocao);
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
        PassoDeEdicao passo{secao_.chave, {}, {}};
        if (muda(celula.row(), celula.column(), *valor, passo.celulas)) {
            pendente_ = passo.celulas.front().linha;
            Q_EMIT editou(passo);
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
    const bool corta = evento.matches(QKeySequence::Cut);
    if (corta || evento.matches(QKeySequence::Copy)) {
        const QString texto = copia();
        if (!texto.isEmpty()) {
            QApplication::clipboard()->setText(texto);
        }
        if (corta) {
            limpaCelulas();
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
