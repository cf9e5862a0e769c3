#pragma once

#include "model/clsBoleto.h"

#include <QDialog>

#include <memory>

namespace tv {

/// Asks which layout to work on.
class frmSelecionaBoleto : public QDialog {
    Q_OBJECT
public:
    explicit frmSelecionaBoleto(QWidget* dono);
    ~frmSelecionaBoleto() override;

    /// Let the user choose among the layouts that have a composer, or a validator. When there is none, a
    /// message tells so.
    void tramador();
    void validador();
    /// Closes the window and gives the layout chosen, null when cancelled.
    std::shared_ptr<const clsBoleto> getBoleto();
};

} // namespace tv
