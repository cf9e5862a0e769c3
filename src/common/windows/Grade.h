#pragma once

#include "common/windows/ImpressaoGrade.h"
#include "common/windows/ModeloGrade.h"

#include <QColor>
#include <QFont>
#include <QString>
#include <QTableView>

#include <functional>
#include <map>
#include <optional>
#include <vector>

class QLabel;

namespace tv {

/// The look of a grid's header and rows. All texts on these backgrounds are black.
struct AparenciaGrade {
    QFont cabecalho;        ///< Of the headers.
    QFont celulas;          ///< Of the cells, where a column has no font of its own.
    QColor fundoLinhaAtiva; ///< Behind the active row.
    QColor fundoCabecalho;  ///< Behind the headers.
    QColor fundoLinha;      ///< Behind the first, the third, ... row.
    QColor fundoAlternado;  ///< Behind the second, the fourth, ... row.
};

/// The grid of all windows: a table of rows with a caption, an active row, selected rows, a question before
/// rows are deleted, and a print and preview of its own.
///
/// A click makes a row active and selects it; Ctrl and Shift extend the selection, by mouse and keyboard.
/// Home and End lead to the first and last row, in a grid with editable columns to the first and last cell of
/// the row. Delete removes the selected rows after a question, Ctrl+C copies them as lines of cells parted by
/// tabs.
///
/// The caption shows in a label above it (`PainelGrade` lays both out) and is the property `caption`.
class Grade : public QTableView {
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption NOTIFY captionMudou)
public:
    /// Numbers of the texts that the grid shows.
    enum Texto {
        tituloRemocao = 1,
        removeVarias = 2,
        removeUma = 3,
        tituloAviso = 4,
        itensExcedidos = 5,
        valorInvalido = 6,
        tituloErro = 7,
        selecaoInvalida = 12,
        dataInvalida = 15,
        imprimir = 25,
        configurar = 26,
        fechar = 27
    };

    explicit Grade(const QString& nome, QWidget* dono = nullptr);
    ~Grade() override;

    ModeloGrade& modelo() noexcept { return *modelo_; }
    const ModeloGrade& modelo() const noexcept { return *modelo_; }

    /// "&&" stands for one "&" on the screen.
    QString caption() const { return caption_; }
    void setCaption(const QString& caption);
    /// The caption as it reads on the screen and on paper.
    QString captionVisivel() const;
    QFont fonteCaption() const { return fonteCaption_; }
    void setFonteCaption(const QFont& fonte);

    /// Texts by number; gridInitializeLayout sets them. Empty for a number without a text.
    QString texto(int numero) const;
    void setTexto(int numero, const QString& texto);

    /// The question before rows are deleted: number 3 for one row, number 2 for several.
    static QString perguntaComum(Texto numero);

    /// The look that gridInitializeLayout gave; without one the grid looks as the desktop does.
    const std::optional<AparenciaGrade>& aparencia() const noexcept { return aparencia_; }
    void setAparencia(const AparenciaGrade& aparencia);

    /// Position from 0 of the active row, -1 without one. Setting it makes it current and visible; an active
    /// row need not be selected. A position without a row leaves none active.
    int linhaAtiva() const;
    void setLinhaAtiva(int linha);
    /// Positions of the selected rows, ascending.
    std::vector<int> linhasSelecionadas() const;
    /// Selects this row alone; a position without a row selects none.
    void selecionaLinha(int linha);

    /// Runs before rows are deleted, with their positions; false keeps them. Runs after the question.
    std::function<bool(const std::vector<int>&)> antesDeRemover;
    /// Asks with `pergunta` and deletes the selected rows. False when nothing was deleted. A row close to the
    /// deleted ones is active afterwards.
    bool removeSelecionadas(const QString& pergunta);
    /// Whether the Delete key removes rows; it does unless this is switched off.
    void setTeclaRemove(bool liga) noexcept { teclaRemove_ = liga; }

    /// The last word on a print's header and footer, before it starts or is previewed.
    std::function<void(TrabalhoImpressao&)> aoImprimir;
    /// The same for the preview's window.
    std::function<void(PrevisaoImpressao&)> aoVisualizar;

    /// The selected rows, without them the active one, as lines of cells parted by tabs. Hidden columns are
    /// left out; a cell with a tab, a line end or a quotation mark stands between quotation marks.
    QString textoParaCopia() const;

    /// Applies the columns' looks (width, hidden) to the view after they were set. setColuna does it too.
    void aplicaColunas();

Q_SIGNALS:
    void captionMudou(const QString& caption);
    /// Another record has become the active row: by mouse, keyboard or setLinhaAtiva, or because rows were
    /// deleted. Not told when no row is active any more.
    void linhaAtivada(int linha);
    /// After rows were deleted.
    void linhasRemovidas();
    /// Another record set was bound: the moment for gridInitializeLayout and the columns' looks.
    void layoutIniciado();

protected:
    void keyPressEvent(QKeyEvent* evento) override;
    void focusInEvent(QFocusEvent* evento) override;
    QModelIndex moveCursor(CursorAction acao, Qt::KeyboardModifiers modificadores) override;
    void currentChanged(const QModelIndex& atual, const QModelIndex& anterior) override;

private:
    void acompanhaModelo();
    void aplicaColuna(int coluna);
    void linhasMudam();
    void cedeAtiva(int primeira, int ultima);
    void linhasMudaram();
    void linhasVoltaram();
    std::optional<std::size_t> vizinhaDe(const std::vector<int>& removidas) const;
    void setAlturaDasLinhas(const QFont& fonte);
    void anunciaAtiva();
    void removePelaTecla();
    int colunaVisivel() const;

    ModeloGrade* modelo_;
    QString caption_;
    QString nomeAcessivel_ = QStringLiteral("Grade"); // the name that follows the caption
    QFont fonteCaption_;
    std::map<int, QString> textos_;
    std::optional<AparenciaGrade> aparencia_;
    std::optional<std::size_t> ativa_;       // number of the active row's record, as last announced
    const RecordSet* dadosVistos_ = nullptr; // the record set that the number belongs to
    int mudancas_ = 0;                       // changes of rows under way
    bool teclaRemove_ = true;
};

/// A grid with its caption above it. An empty caption takes no room.
class PainelGrade : public QWidget {
    Q_OBJECT
public:
    /// `nome` is the grid's object name; the label's is `nome` + "Caption".
    explicit PainelGrade(const QString& nome, QWidget* dono = nullptr);
    Grade& grade() noexcept { return *grade_; }

private:
    void mostraCaption();

    Grade* grade_;
    QLabel* rotulo_;
};

} // namespace tv
