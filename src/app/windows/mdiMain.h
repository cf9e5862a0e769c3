#pragma once

#include "model/clsBoleto.h"
#include "platform/KeyedCollection.h"

#include <QMainWindow>
#include <QPointer>

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

class QCloseEvent;
class QMdiArea;

namespace tv {

class Ferramentas;
class Janela;
class frmAbout;
class frmObjetos;

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

    /// Enrols a child window under the next number: it gets its `janelaID` and an entry in the window menu,
    /// which follows its title. Numbers are not used again. Throws Error 6 when the number that would come
    /// next is past 32767; the window is enrolled by then.
    void addJanela(Janela& janela);
    /// Takes a child window out of menu and list and closes it, if it is not closing already.
    void removeJanela(Janela& janela);
    /// Fills the two layout menus from the catalog. Throws Error 91 without a logger.
    void buildMenu();
    /// Closes all open windows through their `closeWindow`, the last one first. The hidden frmObjetos is
    /// among them and cannot be closed so, which ends the walk with a FATAL entry in the log.
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
    /// Whether child windows are open, enrolled or not.
    bool temFilhas() const;
    /// The open child windows under their `janelaID`.
    const KeyedCollection<Janela*>& janelas() const noexcept { return janelas_; }
    /// Menu bar and tool bar.
    Ferramentas& ferramentas() noexcept { return *ferramentas_; }

protected:
    void closeEvent(QCloseEvent* evento) override;

private:
    enum class Arranjo { Cascata, LadoALadoHorizontal, LadoALadoVertical };

    mdiMain();
    void montaArea();
    void montaAtalhos();

    void clica(const QString& identificador);
    void executa(const QString& identificador);
    void trazJanela(const QString& identificador);
    void mostraSobre();
    void mostraAjuda();
    void arranja(Arranjo arranjo);

    void esvaziaMenu(const QString& menu);
    void incluiLayout(const clsBoleto& boleto);
    void encerraMenu(const QString& menu);
    void esquece(const QString& janelaID);
    /// The children in the frame, enrolled or not, the last one first.
    std::vector<QPointer<Janela>> filhasDaUltima() const;

    std::unique_ptr<frmObjetos> objetos_; ///< Loaded with the main window, never shown.
    QMdiArea* area_ = nullptr;
    Ferramentas* ferramentas_ = nullptr;
    QPointer<frmAbout> sobre_;
    KeyedCollection<Janela*> janelas_;
    std::int16_t counter_ = 0;
};

} // namespace tv
