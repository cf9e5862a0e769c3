#pragma once

#include <QString>
#include <QWidget>

#include <memory>
#include <utility>

class QCloseEvent;

namespace tv {

/// A child window of the main window: what the main window calls on each of them.
///
/// A child is made by `criaJanela`, which puts it into the main window's frame, hidden; the frame owns it
/// from then on and destroys it when it closes. Closing goes the same way whoever starts it (`closeWindow`,
/// the frame's button, Ctrl+F4, the end of the program): `podeFechar` may ask the user, `aoDescarregar` does
/// the window's last work, then the main window forgets the child.
class Janela : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString janelaID READ janelaID WRITE setJanelaID)
    Q_PROPERTY(bool AutoRedraw READ AutoRedraw WRITE setAutoRedraw)
public:
    /// `nome` is the window's class, which becomes its object name.
    explicit Janela(const QString& nome);

    QString janelaID() const { return janelaID_; }
    void setJanelaID(const QString& id) { janelaID_ = id; }
    bool AutoRedraw() const noexcept { return autoRedraw_; }
    void setAutoRedraw(bool liga) noexcept { autoRedraw_ = liga; }
    /// The title; it is also the caption of the window's entry in the window menu when it is enrolled.
    QString Caption() const { return windowTitle(); }
    QIcon Picture() const { return windowIcon(); }

    /// Brings the window to the front of its siblings and makes it the active child.
    void ZOrder();
    /// Draws the window anew.
    void Refresh();
    /// Shows the window in the frame, and in front.
    void mostra();
    /// Closes the window. Nothing happens when the window refuses.
    virtual void closeWindow();
    /// True once the window has closed, or is past the point where it could refuse to.
    bool descarregada() const noexcept { return descarregada_; }

protected:
    /// Asked before the window closes; false keeps it open.
    virtual bool podeFechar() { return true; }
    /// The window's last work, before the main window forgets it.
    virtual void aoDescarregar() {}
    void closeEvent(QCloseEvent* evento) override;

private:
    QString janelaID_;
    bool autoRedraw_ = false;
    bool descarregada_ = false;
};

/// Puts the window into the main window's frame, hidden, and gives it to the frame.
void hospeda(std::unique_ptr<Janela> janela);

/// Makes a child window of class `T` in the main window's frame.
template<typename T, typename... Args>
T& criaJanela(Args&&... args) {
    auto janela = std::make_unique<T>(std::forward<Args>(args)...);
    T& nova = *janela;
    hospeda(std::move(janela));
    return nova;
}

} // namespace tv
