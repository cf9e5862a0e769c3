#pragma once

#include "common/windows/Janela.h"
#include "validation/LoteDeArquivos.h"
#include "validation/clsValidador.h"

#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>

class QAction;
class QDragEnterEvent;
class QDropEvent;
class QFrame;
class QLabel;
class QStatusBar;
class QToolBar;

namespace tv {

class Grade;
class ModeloGrade;
class PainelGrade;

/// The child window in which any number of files of one layout are checked one after the other.
///
/// A run gives the user interface turns. Closing the window during a run hides it at once; the file under way
/// is checked to its end, then the run ends and the window goes.
class frmValidador : public Janela {
    Q_OBJECT
public:
    frmValidador();
    ~frmValidador() override;

    /// Shows the window for a layout. A failure is logged and told, and the window closes.
    void abrir(const std::shared_ptr<const clsBoleto>& boleto);

    /// Adds the files that are not in the grid yet. A failure is logged and told; the rows added so far stay.
    void adicionaArquivos(const QStringList& caminhos);
    /// Takes the selected rows out after a question. No control calls it.
    void removeBoleto();

    /// True from the start of a run to its end.
    bool executando() const noexcept { return executando_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void aoDescarregar() override;
    void closeEvent(QCloseEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void dragEnterEvent(QDragEnterEvent* evento) override;
    void dropEvent(QDropEvent* evento) override;

private:
    // The window's parts.
    void montaTela();
    void montaTitulo();
    void ligaGrade();
    void buildToolbar();
    void enableToolbar(bool flag);
    QAction& botao(const QString& chave) const;
    void createGrid();
    void grid_InitializeLayout();
    void posiciona();
    void setLarguras(int boleto);

    // What the user does.
    void toolbar_ButtonClick(const QString& chave);
    void addBoleto();
    void btnRemover();
    void btnEditar();
    void btnValidar();
    void btnParar() { continuar_ = false; }
    void btnResultado();
    void btnPlanilha();
    void btnImportarPlanilha();
    void ativaResultado();

    void adiciona(const QStringList& caminhos);

    // Workbooks.
    void exportarPlanilha(const QString& caminho);
    bool exportaArquivos(const QString& caminho);
    void importarPlanilha(const QString& caminho);
    void adicionarArquivo(const QString& caminho);

    // The run.
    using Viva = QPointer<frmValidador>;
    void validaBoleto();
    void iniciaExecucao();
    void terminaExecucao();
    static void percorre(const Viva& janela);
    static bool continua(const Viva& janela);
    void grava(int linha, bool valido, const std::shared_ptr<const Resultados>& resultados,
               const std::string& tempo);
    void viraParar();
    void viraValidar();
    void saiDoQuadro();

    // Results.
    int linhaPedida();
    bool marcado(int linha, std::string_view coluna) const;
    lote::Reacao reacao(int linha) const;
    void comAchados(const std::function<void(int)>& abre);
    std::shared_ptr<const Resultados> resultados(int linha) const;
    void abrirValidador(const std::shared_ptr<const Resultados>& resultados, const QString& arquivo);
    void abrirEditor(const std::shared_ptr<const Resultados>& resultados, const QString& arquivo);

    void status(const QString& texto);
    void mostraContagem();
    void desmarca();
    void mostraUltima();
    Grade& grade() const;
    ModeloGrade& modelo() const;

    std::shared_ptr<const clsBoleto> boleto_;
    bool continuar_ = false;  ///< True while a run goes on and nobody has asked it to stop.
    bool executando_ = false; ///< True from the start of a run to its end.
    bool orfa_ = false; ///< Closed during a run: out of the main window's frame, to be deleted at its end.
    QToolBar* toolbar_ = nullptr;
    QAction* validar_ = nullptr; ///< Answers to btnValidar, during a run to btnParar.
    QFrame* frmTitulo_ = nullptr;
    QLabel* lblTitulo_ = nullptr;
    QLabel* imgTORVA_ = nullptr;
    PainelGrade* painelGrade_ = nullptr;
    QStatusBar* statusBar_ = nullptr;
    QLabel* painel_ = nullptr;
};

} // namespace tv
