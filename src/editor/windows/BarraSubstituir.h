#pragma once

#include <QString>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QToolButton;

namespace tv {

class CaixaXML;

/// The narrow bar under the text that looks for a text and replaces it. Enter goes to the next match,
/// Shift+Enter to the one before, Esc closes the bar. The search goes on from the other end of the text.
class BarraSubstituir : public QWidget {
    Q_OBJECT
public:
    /// Works on `caixa`, which outlives it.
    BarraSubstituir(CaixaXML& caixa, QWidget* dono);

    /// Shows the bar, with the fields for the replacement or without. A selection within a line becomes the
    /// text to look for.
    void abre(bool comSubstituicao);
    /// Selects the next or the previous match. Opens the bar when there is no text to look for.
    void localiza(bool paraTras);
    /// Replaces the selection if it is a match, and goes to the next one.
    void substitui();
    /// Replaces all matches in one step.
    void substituiTudo();

protected:
    void keyPressEvent(QKeyEvent* evento) override;

private:
    QToolButton* criaBotao(const QString& nome, const QString& texto, const QString& dica);
    void monta();
    void fecha();
    bool selecaoCombina() const;
    bool procuraDe(int posicao, bool paraTras);
    Qt::CaseSensitivity caixaDasLetras() const;

    CaixaXML& caixa_;
    QLabel* rotuloSubstituir_ = nullptr;
    QLineEdit* txtLocalizar_ = nullptr;
    QLineEdit* txtSubstituir_ = nullptr;
    QCheckBox* chkMaiusculas_ = nullptr;
    QToolButton* btnSubstituir_ = nullptr;
    QToolButton* btnSubstituirTudo_ = nullptr;
    QLabel* lblAviso_ = nullptr;
};

} // namespace tv
