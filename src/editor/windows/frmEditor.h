#pragma once

#include "common/windows/Janela.h"
#include "editor/ArquivoEditado.h"
#include "editor/PilhaDesfazer.h"
#include "editor/QuebraLinhas.h"
#include "editor/RetratoTexto.h"
#include "validation/clsValidador.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string_view>

class QFrame;
class QLabel;
class QMenu;
class QSplitter;
class QStatusBar;
class QToolBar;

namespace tv {

class BarraSubstituir;
class CaixaXML;
class Grade;
class GuardaDaJanela;
class PainelGrade;
class PicLines;

/// The child window that shows one document as text with the list of its findings: a click on a finding
/// selects its value. The text can be changed, saved, validated and printed.
///
/// A save writes the parser's form of a well-formed text, otherwise the text as it stands, in the encoding
/// that its declaration names. Nothing is lost unsaid: a file that has changed meanwhile, characters that the
/// encoding lacks and bytes that could not be read lead to a question, a failure to a message. Closed while
/// it validates, the window goes at the end of the validation.
class frmEditor : public Janela {
    Q_OBJECT
public:
    frmEditor();
    ~frmEditor() override;

    /// Loads and shows a file with its findings (null for none). A file that cannot be read is logged and
    /// leaves an empty text.
    void abrir(const std::shared_ptr<const Resultados>& resultados,
               const std::shared_ptr<const clsBoleto>& boleto, const QString& arquivo);
    /// Shows a text that was kept unsaved, as it stood; only findings and the states before it are gone.
    /// False after a failure, which is logged; the window closes.
    bool retoma(const std::shared_ptr<const clsBoleto>& boleto, const QString& arquivo,
                std::string_view conteudo);
    /// What keeps the unsaved text.
    GuardaDaJanela& guarda() noexcept { return *guarda_; }
    /// The findings of the last validation or those given to `abrir`, and the layout.
    const std::shared_ptr<const Resultados>& resultados() const noexcept { return resultados_; }
    const std::shared_ptr<const clsBoleto>& boleto() const noexcept { return boleto_; }
    const QString& arquivo() const noexcept { return arquivo_; }
    /// True while the text stands as it was saved.
    bool salvo() const noexcept { return salvo_; }

    /// Shows the caret's line (from 1) and column (from 0) in the status bar; past line 65534 that it is
    /// busy.
    void GetEditStatus();
    /// Puts the caret at a line (from 1) and a column (from 0), as GetEditStatus counts them.
    void PlaceCursor(std::int32_t linha, std::int32_t coluna);

    /// Goes from the present state of the text back to the one before it.
    void Undo();
    /// Goes forward to the state undone last.
    void Redo();
    /// While false, changes are not recorded as states.
    bool trapUndo = true;
    /// The text's states, oldest first; the last is the present one. And those undone, the last undone last.
    std::deque<EstadoTexto>& undoStack() noexcept { return pilha_.undoStack; }
    std::deque<EstadoTexto>& redoStack() noexcept { return pilha_.redoStack; }

    /// Saves; `salvo` tells whether it was done.
    void saveBoleto();
    /// Saves a changed text, then checks the file and lists what it finds.
    void validarBoleto();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool podeFechar() override;
    void aoDescarregar() override;
    void resizeEvent(QResizeEvent* evento) override;

private:
    // The window's parts.
    void montaTela();
    void montaTitulo();
    void montaCorpo();
    void buildToolbar();
    void criaAtalhos();
    void posiciona();
    void preparaMenu(QMenu& menu);
    void tiraParadas();
    void alternaFoco();
    void status(const QString& texto);

    // What the user does.
    void toolbar_ButtonClick(const QString& chave);
    void imprime();
    void irParaLinha();
    void moveAchado(int passo);
    void desfaz();
    void refaz();

    // The unsaved text, kept from time to time.
    void iniciaGuarda();
    RetratoTexto retrato() const;

    // The text.
    void abreCom(const std::shared_ptr<const Resultados>& resultados,
                 const std::shared_ptr<const clsBoleto>& boleto, const QString& arquivo,
                 const std::function<void()>& poeTexto);
    void carrega();
    void registra(const MudancaTexto& mudanca);
    void mostraForma(std::u16string_view forma);

    // The findings.
    void createGrid();
    void grid_InitializeLayout();
    void setLarguras();
    void setGrid(const std::shared_ptr<const Resultados>& resultados);
    void grid_AfterRowActivate();
    void achadoAtivado();
    void achadoTocado();
    Grade& grade() const;

    // The file.
    bool perguntaAntes() const;
    bool perguntaPerdas(const ArquivoEditado::Preparo& preparo) const;
    void salva();
    void valida();
    QString descricaoDoArquivo() const;

    std::shared_ptr<const Resultados> resultados_;
    std::shared_ptr<const clsBoleto> boleto_;
    QString arquivo_;
    bool salvo_ = true;
    bool salvamentoFalhou_ = false; ///< The last save was not done: refused by the user, or it failed.
    bool validando_ = false;
    bool ativadoAgora_ = false; ///< A finding became the active one in this turn of the event loop.
    bool fechaDepois_ = false;  ///< Asked to close during a validation.
    ArquivoEditado disco_;
    PilhaDesfazer pilha_;
    std::uint64_t mudancas_ = 0;     ///< Changes of the text so far.
    QuebraLinhas quebras_;           ///< Breaks of the text shown that the file does not have.
    QuebraLinhas quebrasDosAchados_; ///< Those that the findings' places do not know.
    std::chrono::steady_clock::time_point inicio_ = std::chrono::steady_clock::now();

    QToolBar* toolbar_ = nullptr;
    QFrame* frmTitulo_ = nullptr;
    QLabel* lblTitulo_ = nullptr;
    QLabel* lblBoleto_ = nullptr;
    QSplitter* splitter_ = nullptr;
    PicLines* picLines_ = nullptr;
    CaixaXML* txtXML_ = nullptr;
    BarraSubstituir* barra_ = nullptr;
    PainelGrade* painelGrade_ = nullptr;
    QStatusBar* statusBar_ = nullptr;
    QLabel* painel_ = nullptr;
    GuardaDaJanela* guarda_ = nullptr;
};

} // namespace tv
