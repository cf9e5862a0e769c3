#pragma once

#include <QDialog>

class QLabel;
class QLayout;

namespace tv {

/// The product's identity with links to its site and its mail address.
class frmAbout : public QDialog {
    Q_OBJECT
public:
    /// Reads the catalog. Without one the window stays empty and the failure is logged.
    explicit frmAbout(QWidget* dono);
    ~frmAbout() override;

    /// Shows the system's information on this machine. No control of the window asks for it.
    void informacoesDoSistema();

private:
    void monta();
    QLayout* montaIdentidade();
    void carrega();
    void lblSite_Click();
    void lblEmail_Click();

    QLabel* picIcon_;
    QLabel* lblTitle_;
    QLabel* lblVersion_;
    QLabel* lblDescription_;
    QLabel* lblSite_;
    QLabel* lblEmail_;
};

} // namespace tv
