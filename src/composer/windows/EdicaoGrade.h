#pragma once

#include "common/windows/DesenhoGrade.h"
#include "composer/GradeSecao.h"
#include "composer/HistoricoEdicao.h"
#include "composer/RegrasLinha.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

class QKeyEvent;

namespace tv {

class Grade;

/// The editors of a section's cells: lists for tables and yes/no, dates and numbers typed as the field's
/// masks ask.
class DelegadoCelula : public DesenhoGrade {
    Q_OBJECT
public:
    DelegadoCelula(Grade& grade, const clsSecao& secao);

    QWidget* createEditor(QWidget* dono, const QStyleOptionViewItem& opcao,
                          const QModelIndex& indice) const override;
    void setEditorData(QWidget* editor, const QModelIndex& indice) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* modelo, const QModelIndex& indice) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& opcao,
                              const QModelIndex& indice) const override;
    bool eventFilter(QObject* alvo, QEvent* evento) override;

    /// Writes the open editor's text into its cell and closes it.
    void encerra();

Q_SIGNALS:
    /// A text was entered in a cell.
    void digitado(const QModelIndex& celula, const QString& texto) const;
    /// An item of a list was chosen; its code is in the cell.
    void itemEscolhido() const;
    /// Enter ended the editing of a cell.
    void entrou(Qt::KeyboardModifiers modificadores) const;
    /// The chords that add and remove rows ended it.
    void pediuInclusao() const;
    void pediuRemocao() const;

private:
    bool teclaDoEditor(const QKeyEvent& tecla);
    const clsCampo& campo(const QModelIndex& indice) const;
    QWidget* criaLista(QWidget* dono, const clsCampo& campo) const;
    QWidget* criaTexto(QWidget* dono, const clsCampo& campo) const;

    const clsSecao& secao_;
    mutable QPointer<QWidget> editor_; ///< The one that is open.
};

/// How the rows of one grid of the composer are edited with the keyboard: cells, blocks of cells, and which
/// row is under way. Whether a row may be ended, added or removed is for others to say.
class EdicaoGrade : public QObject {
    Q_OBJECT
public:
    /// Both must live as long as the object; the grid becomes its owner.
    EdicaoGrade(Grade& grade, GradeSecao& secao);

    /// Ends the cell that is being typed; its text goes into the row.
    void encerraCelula() { delegado_->encerra(); }
    /// Number of the row that has changed and whose editing has not ended yet.
    std::optional<std::size_t> linhaPendente() const noexcept { return pendente_; }
    void setLinhaPendente(std::optional<std::size_t> linha) noexcept { pendente_ = linha; }

    /// The selected cells, without any the current one, as a block of texts as they show.
    QString copia() const;
    /// Puts a block into the cells from the current one on, in an empty grid from the first one on. Where it
    /// reaches below the last row, rows are added as long as `novaLinha` gives some; what reaches beyond the
    /// last column is left out. Tells the cells whose text the field does not take, and how many lines found
    /// no row.
    void cola(const QString& texto);
    /// Empties the selected cells.
    void limpaCelulas();
    /// Makes the first of these rows the active one, in a column where one is given, and leaves it under
    /// way; the others end.
    void retoma(const std::vector<std::size_t>& linhas, std::optional<std::size_t> coluna);

    /// Adds a row, unless the rules say no or the row given, which comes before it, is at fault. Without it
    /// no block adds rows.
    std::function<RegrasLinha::NovaLinha(std::optional<std::size_t> anterior)> novaLinha;

Q_SIGNALS:
    /// One action has changed cells and added rows. The step names no node.
    void editou(const PassoDeEdicao& passo);
    /// The editing of the rows of these numbers is to be ended.
    void linhasTerminam(const std::vector<std::size_t>& linhas);
    void pedeInclusao();
    void pedeRemocao();
    /// A text was not taken; the message says why.
    void recusou(const QString& mensagem);

protected:
    bool eventFilter(QObject* alvo, QEvent* evento) override;

private:
    struct Colagem;

    bool tecla(const QKeyEvent& evento);
    bool teclaDeBloco(const QKeyEvent& evento);
    void digitado(const QModelIndex& celula, const QString& texto);
    void terminaAtual();
    void move(int linhas);
    QModelIndexList escolhidas() const;
    void colaLinha(int linha, int coluna, const std::vector<std::string>& textos, Colagem& colagem);
    int incluiLinha(Colagem& colagem);
    void conclui(const PassoDeEdicao& passo);
    void termina(const std::vector<std::size_t>& linhas);
    bool muda(int linha, int coluna, Value valor, std::vector<CelulaEditada>& celulas);
    const clsCampo& campo(int coluna) const;
    bool isCampo(int coluna) const;

    Grade& grade_;
    GradeSecao& secao_;
    DelegadoCelula* delegado_;
    std::optional<std::size_t> pendente_;
};

} // namespace tv
