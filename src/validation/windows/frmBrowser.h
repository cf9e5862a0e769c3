#pragma once

#include "common/windows/Janela.h"
#include "validation/clsValidador.h"

#include <memory>

namespace tv {

/// The child window that shows the findings of one file as a page.
class frmBrowser : public Janela {
    Q_OBJECT
public:
    frmBrowser();
    ~frmBrowser() override;

    /// Makes the report of a file's findings and shows it. `titulo` names the layout. A failure is logged and
    /// told; the window stays open.
    void abrir(const std::shared_ptr<const Resultados>& resultados, const QString& titulo,
               const QString& arquivo);
    /// Prints the page after a print dialog.
    void imprimirReport();
};

} // namespace tv
