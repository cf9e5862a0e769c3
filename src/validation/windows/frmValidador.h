#pragma once

#include "common/windows/Janela.h"
#include "validation/clsValidador.h"

#include <memory>

namespace tv {

/// The child window in which any number of files of one layout are checked one after the other.
class frmValidador : public Janela {
    Q_OBJECT
public:
    frmValidador();
    ~frmValidador() override;

    /// Shows the window for a layout. A failure is logged and told, and the window closes.
    void abrir(const std::shared_ptr<const clsBoleto>& boleto);

private:
    std::shared_ptr<const clsBoleto> boleto_;
};

} // namespace tv
