#pragma once

#include <QWidget>

#include <cstdint>

class QLabel;
class QProgressBar;

namespace tv {

/// The progress window of one long operation: a picture, a title, a line of description and a bar. It does
/// not block the user interface. An owner that goes away without `destroy` takes the window with it.
class frmMensagem : public QWidget {
    Q_OBJECT
public:
    frmMensagem();
    ~frmMensagem() override;

    /// Shows a stage: the bar is hidden and set to `valor`, `operacao` chooses the picture (1 validator,
    /// 3 documents, 4 print, any other processing). Throws Error 380 when `valor` lies outside of the bar.
    void setMsg(const QString& titulo, const QString& descricao, std::int16_t valor = 0, int operacao = 0);
    /// Moves the bar and shows it. Beyond its end it starts over by what is left.
    void incProgress(std::int16_t incremento = 1);
    /// Steps of the bar. Throws Error 380 for 0 or less, which an empty list gives.
    void setMax(int maximo);
    int Max() const;
    int Value() const;
    /// Closes the window for good.
    void destroy();
};

} // namespace tv
