#pragma once

#include "common/windows/Janela.h"
#include "validation/clsValidador.h"

#include <memory>

namespace tv {

/// The child window that shows one document as text with the list of its findings.
class frmEditor : public Janela {
    Q_OBJECT
public:
    frmEditor();
    ~frmEditor() override;

    /// Loads and shows a file with its findings (null for none).
    void abrir(const std::shared_ptr<const Resultados>& resultados,
               const std::shared_ptr<const clsBoleto>& boleto, const QString& arquivo);
    /// The findings of the last validation or those given to `abrir`, and the layout.
    const std::shared_ptr<const Resultados>& resultados() const noexcept { return resultados_; }
    const std::shared_ptr<const clsBoleto>& boleto() const noexcept { return boleto_; }

private:
    std::shared_ptr<const Resultados> resultados_;
    std::shared_ptr<const clsBoleto> boleto_;
};

} // namespace tv
