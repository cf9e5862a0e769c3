#pragma once

#include "common/windows/Janela.h"
#include "composer/Documento.h"
#include "composer/HistoricoEdicao.h"
#include "composer/RegrasLinha.h"
#include "composer/RetratoDocumento.h"
#include "validation/clsValidador.h"

#include <QPointer>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class QAction;
class QFrame;
class QLabel;
class QSplitter;
class QStatusBar;
class QToolBar;

namespace tv {

class EdicaoGrade;
class Grade;
class GuardaDaJanela;
class PainelGrade;
class VistaFundos;

/// The child window in which a document of one layout is composed: a tree of funds and a grid for each
/// section, of which the one on top shows the rows of the chosen node.
///
/// A row is under way from its first change until it is left, Ctrl+Enter is pressed, an item of a list is
/// chosen, or the keyboard goes elsewhere in the window; then the rules judge it.
class frmTramador : public Janela {
    Q_OBJECT
public:
    frmTramador();
    ~frmTramador() override;

    /// Shows the window with a new document of the layout. A failure is logged and told, and the window
    /// closes.
    void abrir(const std::shared_ptr<const clsBoleto>& boleto);
    /// Shows the window with a document that was kept unsaved, as it stood, rows under way included; only the
    /// steps that could be taken back are gone. False after a failure, which is logged; the window closes.
    bool retoma(const std::shared_ptr<const clsBoleto>& boleto, std::string_view conteudo);
    /// What keeps the unsaved document.
    GuardaDaJanela& guarda() noexcept { return *guarda_; }

    /// Starts a new document, after a question where there is something to save.
    void novoBoleto();
    /// Validates and loads a file; asks for one when `caminho` is empty.
    void abrirBoleto(const QString& caminho);
    /// Writes the document, validates it and puts it in the place that the user chooses.
    void salvarBoleto();
    /// Validates a file and keeps its findings. True when it has none; told when `mostraMensagem` is set.
    bool validarBoleto(const QString& caminho, bool mostraMensagem);

    /// Adds a row to the grid on top and makes it active, unless the rules say no.
    void addRow();
    /// The rules' judgement of a row of the grid on top, by its record's number; told when `mostraMensagem`
    /// is set.
    bool validateRow(std::optional<std::size_t> linha, bool mostraMensagem);
    /// Whether the grid on top takes another row.
    bool canAddRow();
    /// `validateRow` with its message.
    bool canUpdateRow(std::optional<std::size_t> linha) { return validateRow(linha, true); }
    /// The number in a row's cell `rowID`.
    std::int32_t getRowID(std::size_t linha) const;

    /// Ends the cell and the row under way in the grid on top.
    void terminaEdicao();
    void desfaz();
    void refaz();

    /// The document that the window shows.
    Documento& documento() noexcept { return documento_; }
    const Documento& documento() const noexcept { return documento_; }
    /// The grid on top. Throws Error 91 when there is none.
    Grade& gradeAtual() const;
    /// The findings of the last validation, null after one without any.
    const std::shared_ptr<const Resultados>& resultados() const noexcept { return resultados_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool podeFechar() override;
    void aoDescarregar() override;
    void resizeEvent(QResizeEvent* evento) override;

private:
    /// A grid of the document with what shows and edits it.
    struct GradeDaTela {
        GradeSecao* secao;
        PainelGrade* painel;
        EdicaoGrade* edicao;
    };

    // The window's parts.
    void montaTela();
    void montaTitulo();
    void montaPaineis();
    void montaSituacao();
    void montaTeclas();
    void buildToolbar();
    QAction& botao(const QString& chave) const;
    void posiciona();
    void posicionaPaineis();
    void mostraPaineis(bool mostra);
    void trocaPainel();
    void status(const QString& texto);

    // Grids.
    void criaGrades();
    void removeGrades();
    void ligaGrade(GradeDaTela& grade);
    void vincula(GradeDaTela& grade);
    void formatGrid(const GradeDaTela& grade);
    GradeDaTela& daTela(const GradeSecao& grade);
    GradeDaTela& atual() { return daTela(documento_.getGrid()); }
    void poeNoTopo(const GradeSecao& grade);
    void desvinculaDetalhes(const GradeSecao& mestre);
    void refazDetalhes(const std::vector<GradeSecao*>& refeitas);

    // What the user does.
    void toolbar_ButtonClick(const QString& chave);
    void btnAdicionar() { addRow(); }
    void btnRemover();
    void btnImprimir();
    void btnVisualizar();
    void btnValidar();
    void btnFechar();
    void btnAbrir() { abrirBoleto({}); }
    void exportarExcel();
    void importarExcel();
    void treeFundos_Click(const QString& chave);
    void atualizaBotoes();
    void focoMudou(QWidget* antes, QWidget* agora);

    // Rows.
    void linhaAtivada(GradeDaTela& grade, int linha);
    void terminaPendente(GradeDaTela& grade, bool avisaDepois);
    void terminaLinhas(GradeDaTela& grade, const std::vector<std::size_t>& linhas, bool avisaDepois);
    static void comeca(const GradeDaTela& grade, std::size_t linha);
    void avisa(const QString& mensagem, bool depois);
    bool antesDeRemover(GradeDaTela& grade, const std::vector<int>& linhas);
    void linhasRemovidas(const GradeDaTela& grade);

    // Edits taken back and made again.
    void registra(PassoDeEdicao passo);
    void aplica(bool refaz);
    bool vaiPara(const PassoDeEdicao& passo);
    void desvinculaCheias(const PassoDeEdicao& passo);

    // Documents.
    bool perguntaSeSalva();
    QString escolheArquivo(const QString& caminho);
    void abreArquivo(const QString& nome);
    bool aceitaParaAbrir(const QString& nome);
    void boletoInvalido(const QString& caminho, bool pergunta);
    void carrega(const QString& nome);
    void salva(const std::filesystem::path& temporario);
    void grava(const std::filesystem::path& temporario, const QString& destino);
    void mostraResultado(const std::shared_ptr<const Resultados>& resultados);
    QString tituloDoResultado() const;

    // The unsaved document, kept from time to time.
    void iniciaGuarda();
    void documentoSalvo();
    RetratoDocumento::Tela telaAtual() const;
    void devolve(std::string_view conteudo);
    void mostraVolta(const RetratoDocumento::Volta& volta);

    // Workbooks.
    void exportarPlanilha(const QString& arquivo);
    void importarPlanilha(const QString& caminho);

    Documento documento_;
    RegrasLinha regras_{documento_};
    RetratoDocumento retrato_{documento_};
    HistoricoEdicao historico_;
    std::string lugar_;     ///< Key of the node that shows the grid on top as it is; empty without one.
    PassoDeEdicao remocao_; ///< The deletion under way.
    std::shared_ptr<const Resultados> resultados_;
    std::vector<std::unique_ptr<GradeDaTela>> grades_;
    std::unordered_map<const GradeSecao*, GradeDaTela*> porSecao_;
    std::vector<GradeDaTela*> desvinculadas_; ///< Grids without rows while very many of theirs change.
    bool aberto_ = false;                     ///< There is a document.

    QToolBar* toolbar_ = nullptr;
    QFrame* frmTitulo_ = nullptr;
    QLabel* lblTitulo_ = nullptr;
    QLabel* imgTORVA_ = nullptr;
    QSplitter* splitter_ = nullptr;
    QWidget* panelFundos_ = nullptr;
    QLabel* panelTituloFundos_ = nullptr;
    VistaFundos* treeFundos_ = nullptr;
    QWidget* panelGrid_ = nullptr;
    QStatusBar* statusBar_ = nullptr;
    QLabel* painel1_ = nullptr;
    QLabel* painel2_ = nullptr;
    GuardaDaJanela* guarda_ = nullptr;
};

} // namespace tv
