#pragma once

#include "common/windows/Janela.h"
#include "validation/clsValidador.h"

#include <filesystem>
#include <memory>

class QAction;
class QFrame;
class QLabel;
class QStatusBar;
class QToolBar;

namespace tv {

class VistaRelatorio;

/// The child window that shows the findings of one file as a page. It is made for one report and deletes its
/// page's file when it closes.
class frmBrowser : public Janela {
    Q_OBJECT
public:
    frmBrowser();
    ~frmBrowser() override;

    /// Makes the report of a file's findings and shows it. `titulo` names the layout. A failure is logged and
    /// told; the window stays open.
    void abrir(const std::shared_ptr<const Resultados>& resultados, const QString& titulo,
               const QString& arquivo);
    /// Writes the page of the findings to `destino`. A failure is logged and thrown: Error -2147221504 when
    /// the transform gives nothing.
    void createResultFile(const Resultados& resultados, const QString& titulo, const QString& arquivo,
                          const std::filesystem::path& destino);
    /// Prints the page after a print dialog. A failure is logged.
    void imprimirReport();

    /// The page's file, which lives as long as the window; empty before abrir.
    const std::filesystem::path& arquivoReport() const noexcept { return arquivoReport_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void aoDescarregar() override;

private:
    void montaTela();
    QFrame* montaTitulo();
    void buildToolbar();
    void tomaNomeTemporario();
    void carrega(const Resultados& resultados, const QString& titulo, const QString& arquivo);
    void apagaReport() noexcept;

    QToolBar* toolbar_ = nullptr;
    QLabel* lblTitulo_ = nullptr;
    QStatusBar* statusBar_ = nullptr;
    QLabel* painel_ = nullptr;
    VistaRelatorio* vista_ = nullptr; ///< Owned by the window.
    std::filesystem::path arquivoReport_;
    QString nomeNaImpressora_; ///< The print's name, which a file printed to is proposed to bear.
};

} // namespace tv
