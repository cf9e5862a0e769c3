#pragma once

#include "validation/windows/VistaRelatorio.h"

#include <QString>

#include <string>
#include <vector>

class QLabel;
class QTextBrowser;
class QToolButton;

namespace tv {

/// The report where the web engine cannot run: a text widget that knows neither programs nor the network. It
/// lays out all that it is given at once, so it shows one block of findings at a time.
class VistaSimples : public VistaRelatorio {
    Q_OBJECT
public:
    VistaSimples();
    ~VistaSimples() override;

    void abre(const std::filesystem::path& pagina) override;
    /// Prints before it comes back; each block begins a new sheet.
    void imprime(std::unique_ptr<QPrinter> impressora, AoImprimir aoTerminar) override;
    void copia() override;
    void selecionaTudo() override;
    bool temSelecao() const override;
    double zoom() const override { return zoom_; }
    void setZoom(double fator) override;

protected:
    void procura(const QString& texto, bool paraTras) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    QWidget* montaNavegacao();
    QToolButton* criaBotao(const QString& nome, const QString& texto, int passo);
    void mostraPagina(int numero);
    bool procuraAdiante(const QString& texto, bool paraTras);

    QTextBrowser* brwReport_;
    QWidget* navegacao_ = nullptr;
    QLabel* lblBloco_ = nullptr;
    QToolButton* anterior_ = nullptr;
    QToolButton* proxima_ = nullptr;
    std::vector<std::string> paginas_;
    int atual_ = 0;
    double zoom_ = 1;
    QString procurado_;
};

} // namespace tv
