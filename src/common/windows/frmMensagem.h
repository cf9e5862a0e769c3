#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <memory>

class QCloseEvent;
class QLabel;
class QProgressBar;

namespace tv {

/// The progress window of one long operation: a picture, a title, a line of description and a bar. It stands
/// in front of the main window and does not block the user interface.
///
/// The operation owns it, by value or by std::unique_ptr; no other window does. `destroy` takes it off the
/// screen, the end of its owner does the same. It draws itself at once, without giving other events a turn,
/// at most every 30 ms, so that calls may come for every row of a large document. `Value` and the texts are
/// exact at any time.
class frmMensagem : public QWidget {
    Q_OBJECT
public:
    frmMensagem();
    ~frmMensagem() override;

    /// Shows a stage: the bar is hidden and set to `valor`, `operacao` chooses the picture (1 validator,
    /// 3 documents, 4 print, any other processing). Throws Error 380 when `valor` lies outside of the bar.
    void setMsg(const QString& titulo, const QString& descricao, std::int16_t valor = 0, int operacao = 0);
    /// Moves the bar and shows it. Beyond its end it starts over by what is left; the position is a 16-bit
    /// number, so a bar of more than 32767 steps starts over there. Throws Error 380, with the bar unmoved,
    /// when even what is left lies beyond its end.
    void incProgress(std::int16_t incremento = 1);
    /// Steps of the bar, 100 at first; a position beyond them moves to their end. Throws Error 380 for 0 or
    /// less, which an empty list gives.
    void setMax(int maximo);
    int Max() const;
    int Value() const;
    /// Closes the window for good: later calls still count but show nothing.
    void destroy();
    /// Leaves the window of an operation that has failed open. Its user closes it, or the main window's end.
    static void abandona(std::unique_ptr<frmMensagem> janela);

protected:
    void closeEvent(QCloseEvent* evento) override;

private:
    void monta();
    void setValue(int valor);
    void setImagem(int operacao);
    void apresenta();
    void esperaTela();
    void desenha();
    bool venceu() const;

    QLabel* picMessage_;
    QLabel* lblTitulo_;
    QLabel* txtDescricao_;
    QProgressBar* barra_;
    QElapsedTimer desenhado_; ///< Since the last drawing.
    int operacao_ = -1;       ///< Whose picture is shown.
    bool encerrada_ = false;
};

} // namespace tv
