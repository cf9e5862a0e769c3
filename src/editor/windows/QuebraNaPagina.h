#pragma once

#include <QObject>

#include <optional>

class QPlainTextEdit;

namespace tv {

/// Keeps the text of a box no wider than the printer's page, however the box is resized. The box owns it.
class QuebraNaPagina : public QObject {
    Q_OBJECT
public:
    explicit QuebraNaPagina(QPlainTextEdit& caixa);
    ~QuebraNaPagina() override;

    /// The one of a box, null before it has one.
    static QuebraNaPagina* de(const QPlainTextEdit& caixa);

    /// Limits the text to this width in pixels of the box.
    void limita(int largura);
    /// Gives the text the whole box again.
    void libera();

    /// Width of the printer's page in pixels of the box. Makes contact with the printer.
    static int larguraDaPagina(const QPlainTextEdit& caixa);

protected:
    bool eventFilter(QObject* observado, QEvent* evento) override;

private:
    void ajusta();
    void aplicaMargem(int margem);

    QPlainTextEdit* caixa_;
    std::optional<int> largura_;
    int margem_ = 0;
};

} // namespace tv
