#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace tv {

/// The narrow bar that looks for a text in the page above it. Enter goes to the next match, Shift+Enter to
/// the one before, Esc closes the bar.
class BarraLocalizar : public QWidget {
    Q_OBJECT
public:
    explicit BarraLocalizar(QWidget* dono);

    /// Shows the bar with its text selected, ready to type.
    void abre();
    /// Goes to the next or the previous match of the text; opens the bar when there is no text yet.
    void repete(bool paraTras);
    /// Tells which match of how many is shown; none when `total` is 0.
    void mostraAchados(int posicao, int total);
    /// Tells something else in its place.
    void mostraAviso(const QString& aviso);

Q_SIGNALS:
    /// Look for this text; an empty one clears the matches.
    void procura(const QString& texto, bool paraTras);
    void fechada();

protected:
    void keyPressEvent(QKeyEvent* evento) override;

private:
    QToolButton* criaBotao(const QString& nome, const QString& texto, const QString& dica);
    void fecha();

    QLineEdit* texto_;
    QLabel* achados_;
};

} // namespace tv
