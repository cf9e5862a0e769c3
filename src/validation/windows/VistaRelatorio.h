#pragma once

#include <QWidget>

#include <filesystem>
#include <functional>
#include <memory>

class QMenu;
class QPrinter;
class QVBoxLayout;

namespace tv {

class BarraLocalizar;

/// The part of the report window that shows the page: the page itself, in a widget named `brwReport`, and the
/// find bar below it. Copy, find, zoom and print are reached by keys and by the context menu.
class VistaRelatorio : public QWidget {
    Q_OBJECT
public:
    /// Runs once when a print has ended; the argument tells whether it went through.
    using AoImprimir = std::function<void(bool)>;

    ~VistaRelatorio() override;

    /// The view that this machine can run: the web engine where it has its sandbox, otherwise the plain one.
    static std::unique_ptr<VistaRelatorio> cria();

    /// Shows a page of the disk in place of the one before.
    virtual void abre(const std::filesystem::path& pagina) = 0;
    /// Prints the page. The print may go on after the call; a view that lost its window finishes it.
    /// Throws Error 75 while another print is under way.
    virtual void imprime(std::unique_ptr<QPrinter> impressora, AoImprimir aoTerminar) = 0;
    /// True while a print is under way.
    virtual bool imprimindo() const noexcept { return false; }

    virtual void copia() = 0;
    virtual void selecionaTudo() = 0;
    virtual bool temSelecao() const = 0;
    /// Magnification, 1 being the natural size; kept within 0.25 and 5.
    virtual double zoom() const = 0;
    virtual void setZoom(double fator) = 0;
    void amplia() { setZoom(zoom() * passoDeZoom); }
    void reduz() { setZoom(zoom() / passoDeZoom); }

    /// Opens the find bar.
    void localiza();
    /// Leaves its window for `dono`, hidden, finishes the print that is under way and goes away.
    static void deixaTerminar(std::unique_ptr<VistaRelatorio> vista, QWidget* dono);

Q_SIGNALS:
    /// The user asks for a print.
    void pedeImpressao();
    /// The page stands on the screen, or could not be loaded.
    void carregou(bool certo);
    /// A print has ended and its AoImprimir has run.
    void impressaoTerminou();

protected:
    static constexpr double passoDeZoom = 1.1;

    VistaRelatorio();
    /// Puts the widget of the page into the view. To be called once, by the constructor.
    void montaPagina(QWidget* brwReport);
    /// Puts a widget below the page.
    void montaRodape(QWidget* rodape);
    /// Looks for the text from the present match on; an empty text clears the matches. The answer goes to
    /// `barra`.
    virtual void procura(const QString& texto, bool paraTras) = 0;
    BarraLocalizar& barra() noexcept { return *barra_; }
    void abreMenu(const QPoint& lugar);

private:
    void criaAcoes();
    QAction* criaAcao(const QString& nome, const QString& texto, const QList<QKeySequence>& teclas,
                      std::function<void()> faz);
    void fechaLocalizar();

    QVBoxLayout* pilha_;
    QWidget* brwReport_ = nullptr;
    BarraLocalizar* barra_;
    QMenu* menu_;
    QAction* copiar_ = nullptr;
};

} // namespace tv
