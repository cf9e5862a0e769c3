#pragma once

#include "editor/PilhaDesfazer.h"

#include <QPlainTextEdit>
#include <QString>

#include <cstdint>
#include <string>
#include <string_view>

class QMimeData;

namespace tv {

/// The editor's text box: plain text in one colour, lines that do not wrap. Positions are UTF-16 units from
/// 0; a line end counts as one. Undoing is the business of its owner.
///
/// Every character comes back as it went in, also those that the text layout keeps for itself (the paragraph
/// separator and two of its own marks), which stand-ins show meanwhile.
class CaixaXML : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit CaixaXML(QWidget* dono = nullptr);

    /// The whole text; lines end in line feeds.
    std::u16string texto() const;
    /// The text as it is shown, and as the states of the undo stack hold it: with stand-ins. Setting it is no
    /// change.
    std::u16string textoInterno() const;
    void setTextoInterno(std::u16string_view texto);
    static std::u16string interno(std::u16string texto);
    int tamanho() const;

    std::int32_t SelStart() const { return textCursor().selectionStart(); }
    std::int32_t SelLength() const { return textCursor().selectionEnd() - textCursor().selectionStart(); }
    /// Places outside of the text count as its ends.
    void seleciona(std::int32_t inicio, std::int32_t tamanho);
    /// Replaces the selection.
    void setSelText(std::u16string_view texto);
    /// Replaces `removidos` units by a text in one step; the selection stays where it can.
    void troca(std::int32_t inicio, std::int32_t removidos, std::u16string_view texto);

    /// First unit of a line (from 0), -1 when there is no such line.
    std::int32_t inicioDaLinha(std::int32_t linha) const;
    /// Keeps what happens to the selection off the screen.
    void HideSelection(bool esconde);

Q_SIGNALS:
    /// Units gave way to others.
    void mudou(const tv::MudancaTexto& mudanca);
    void focada();
    void pedeDesfazer();
    void pedeRefazer();
    /// The context menu is about to show; actions may be added.
    void menuPedido(QMenu& menu);

protected:
    void keyPressEvent(QKeyEvent* evento) override;
    void focusInEvent(QFocusEvent* evento) override;
    void contextMenuEvent(QContextMenuEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    QMimeData* createMimeDataFromSelection() const override;

private:
    void ouve(int inicio, int removidos, int inseridos);
    std::u16string trecho(int inicio, int tamanho) const;
    void enche(std::u16string_view texto);

    int tamanhoConhecido_ = 0;
    bool carregando_ = false;
};

} // namespace tv
