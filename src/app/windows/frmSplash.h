#pragma once

#include <QTimer>
#include <QWidget>

class QCloseEvent;
class QFrame;

namespace tv {

/// The start-up window. 1,500 ms after its load it starts the system and gives way to the main window; a
/// click on its close picture before that ends the process.
class frmSplash : public QWidget {
    Q_OBJECT
public:
    frmSplash();
    ~frmSplash() override;

protected:
    /// Closing the window while it waits ends the process, as its close picture does.
    void closeEvent(QCloseEvent* evento) override;

private:
    void montaControles();
    void TimerStartUp_Timer();

    QTimer timerAbertura_; ///< Never started.
    QTimer timerStartUp_;
};

} // namespace tv
