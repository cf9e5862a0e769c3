#include "common/windows/textoQt.h"
#include "editor/windows/CaixaXML.h"
#include "editor/windows/EditorXML.h"
#include "editor/windows/frmEditor.h"
#include "logging/Routine.h"

#include <QInputDialog>
#include <QScrollBar>

#include <algorithm>

/// The caret, and the states of the text.
namespace tv {

namespace {

constexpr std::int32_t linhasContadas = 65535; ///< From this line on the caret's place is not told.

/// One change of a stack's step at a time; none of them is recorded.
class SemRegistro {
public:
    explicit SemRegistro(bool& trapUndo)
        : trapUndo_(trapUndo) {
        trapUndo_ = false;
    }
    ~SemRegistro() { trapUndo_ = true; }
    SemRegistro(const SemRegistro&) = delete;
    SemRegistro& operator=(const SemRegistro&) = delete;

private:
    bool& trapUndo_;
};

} // namespace

void frmEditor::GetEditStatus() {
    guarded("frmEditor.GetEditStatus", [this] {
        const std::int32_t inicio = txtXML_->SelStart();
        const std::int32_t linha = EditorXML::GetCurrentLine(*txtXML_, inicio) + 1;
        const std::int32_t coluna = inicio - txtXML_->inicioDaLinha(linha - 1);
        status(linha < linhasContadas ? QStringLiteral("Linha: %1, Coluna: %2").arg(linha).arg(coluna)
                                      : QStringLiteral("Processando ..."));
    });
}

void frmEditor::PlaceCursor(std::int32_t linha, std::int32_t coluna) {
    guarded("frmEditor.PlaceCursor",
            [&] { txtXML_->seleciona(txtXML_->inicioDaLinha(linha - 1) + coluna, 0); });
}

void frmEditor::irParaLinha() {
    const int total = EditorXML::GetTotalLines(*txtXML_);
    QInputDialog dialogo(this);
    dialogo.setObjectName(QStringLiteral("dlgIrPara"));
    dialogo.setWindowTitle(QStringLiteral("Ir para a linha"));
    dialogo.setLabelText(QStringLiteral("&Linha (1 a %1):").arg(total));
    dialogo.setOkButtonText(QStringLiteral("OK"));
    dialogo.setCancelButtonText(QStringLiteral("Cancelar"));
    dialogo.setInputMode(QInputDialog::IntInput);
    dialogo.setIntRange(1, total);
    dialogo.setIntValue(EditorXML::GetCurrentLine(*txtXML_, -1) + 1);
    if (dialogo.exec() == QDialog::Accepted) {
        PlaceCursor(dialogo.intValue(), 0);
        txtXML_->centerCursor();
        txtXML_->setFocus();
    }
}

// --- states

void frmEditor::registra(const MudancaTexto& mudanca) {
    ++mudancas_;
    guarded("frmEditor.registra", [&] {
        if (trapUndo) {
            pilha_.registra(mudanca, std::chrono::duration_cast<PilhaDesfazer::Instante>(
                                         std::chrono::steady_clock::now() - inicio_));
        } else {
            pilha_.acompanha(mudanca);
        }
    });
}

void frmEditor::Undo() {
    guarded("frmEditor.Undo", [this] {
        if (undoStack().size() < 2 || !trapUndo) {
            return;
        }
        const SemRegistro semRegistro(trapUndo);
        const PassoTexto passo = pilha_.passoUndo();
        if (passo.remocao) {
            txtXML_->HideSelection(true);
            txtXML_->seleciona(passo.inicio, passo.tamanho);
            txtXML_->setSelText(u"");
            txtXML_->HideSelection(false);
        } else {
            txtXML_->seleciona(passo.inicio, 0);
            txtXML_->setSelText(passo.trecho);
            const bool seleciona = passo.trecho != u"\n" && passo.tamanho > 1;
            txtXML_->seleciona(passo.inicio + (seleciona ? 0 : passo.tamanho), seleciona ? passo.tamanho : 0);
        }
        pilha_.desfeito();
    });
    trapUndo = true;
    txtXML_->setFocus();
}

void frmEditor::Redo() {
    guarded("frmEditor.Redo", [this] {
        if (redoStack().empty() || undoStack().empty() || !trapUndo) {
            return;
        }
        const SemRegistro semRegistro(trapUndo);
        const PassoTexto passo = pilha_.passoRedo();
        txtXML_->seleciona(passo.inicio, passo.remocao ? passo.tamanho : 0);
        txtXML_->setSelText(passo.trecho);
        pilha_.refeito();
    });
    txtXML_->setFocus();
}

/// What the user did last, which may be two states.
void frmEditor::desfaz() {
    Undo();
    while (undoStack().size() > 1 && undoStack().back().parcial) {
        Undo();
    }
}

void frmEditor::refaz() {
    Redo();
    while (!redoStack().empty() && undoStack().back().parcial) {
        Redo();
    }
}

/// Shows what was saved, so that places in the file are places in the text. Caret and view stay.
void frmEditor::mostraForma(std::u16string_view forma) {
    const std::u16string novo = CaixaXML::interno(std::u16string(forma));
    const std::u16string velho = txtXML_->textoInterno();
    if (novo == velho) {
        return;
    }
    const std::size_t menor = std::min(novo.size(), velho.size());
    const auto limite = [](const std::u16string& texto, std::size_t quantos) {
        return texto.begin() + static_cast<std::ptrdiff_t>(quantos);
    };
    const auto comuns = static_cast<std::size_t>(
        std::mismatch(velho.begin(), limite(velho, menor), novo.begin()).first - velho.begin());
    const auto resto = static_cast<std::ptrdiff_t>(menor - comuns);
    const auto finais = static_cast<std::size_t>(
        std::mismatch(velho.rbegin(), velho.rbegin() + resto, novo.rbegin()).first - velho.rbegin());
    const std::int32_t linha = EditorXML::GetCurrentLine(*txtXML_, -1) + 1;
    const std::int32_t coluna = txtXML_->SelStart() - txtXML_->inicioDaLinha(linha - 1);
    const int rolagem = txtXML_->verticalScrollBar()->value();
    txtXML_->troca(static_cast<std::int32_t>(comuns),
                   static_cast<std::int32_t>(velho.size() - comuns - finais),
                   std::u16string_view(novo).substr(comuns, novo.size() - comuns - finais));
    const std::int32_t linhaNova = std::min(linha, EditorXML::GetTotalLines(*txtXML_));
    const std::int32_t inicio = txtXML_->inicioDaLinha(linhaNova - 1);
    const std::int32_t seguinte = txtXML_->inicioDaLinha(linhaNova);
    const std::int32_t fim = seguinte < 0 ? txtXML_->tamanho() : seguinte - 1;
    txtXML_->seleciona(std::min(inicio + coluna, fim), 0);
    txtXML_->verticalScrollBar()->setValue(rolagem);
}

} // namespace tv
