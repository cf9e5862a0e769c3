#pragma once

#include "model/clsBoleto.h"
#include "platform/KeyedCollection.h"

#include <QMainWindow>

#include <cstdint>
#include <memory>

class QCloseEvent;
class QMdiArea;

namespace tv {

class Ferramentas;
class Janela;

/// The main window: a multi-document frame with a menu bar and a tool bar that hold tools by identifier. It
/// opens the two tools for a chosen layout and keeps the list of open child windows.
class mdiMain : public QMainWindow {
    Q_OBJECT
public:
    /// The one main window, made at the first call. Making it checks the decimal separator of the system,
    /// which ends the process when it is not a point.
    static mdiMain& instancia();
    /// True when the main window has been made and not destroyed.
    static bool existe() noexcept;
    /// Destroys the main window with all its children, without a question.
    static void destroi();

    ~mdiMain() override;

    /// Enrols a child window under the next number: it gets its `janelaID` and an entry in the window menu.
    /// Throws Error 6 past window 32767.
    void addJanela(Janela& janela);
    /// Takes a child window out of menu and list and closes it.
    void removeJanela(Janela& janela);
    /// Fills the two layout menus from the catalog.
    void buildMenu();
    /// Closes all child windows through their `closeWindow`, the last one first.
    void closeAllWindows();
    /// Let the user choose a layout and open the tool for it.
    void selectTramador();
    void selectValidador();
    /// Open a tool for a layout.
    void abrirValidador(const std::shared_ptr<const clsBoleto>& boleto);
    void abrirTramador(const std::shared_ptr<const clsBoleto>& boleto);

    /// Takes a child window into the frame, hidden, and owns it from then on.
    void recebe(std::unique_ptr<Janela> janela);
    /// The child window in front, or null.
    Janela* janelaAtiva() const;
    /// The open child windows under their `janelaID`.
    const KeyedCollection<Janela*>& janelas() const noexcept { return janelas_; }
    /// Menu bar and tool bar.
    Ferramentas& ferramentas() noexcept { return *ferramentas_; }

protected:
    void closeEvent(QCloseEvent* evento) override;

private:
    mdiMain();
    void clica(const QString& identificador);

    QMdiArea* area_ = nullptr;
    Ferramentas* ferramentas_ = nullptr;
    KeyedCollection<Janela*> janelas_;
    std::int16_t counter_ = 0;
};

} // namespace tv
