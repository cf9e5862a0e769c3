#pragma once

#include "model/clsTabela.h"
#include "platform/RecordSet.h"

#include <QAbstractTableModel>
#include <QFont>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tv {

/// How a column of a grid looks.
struct ColunaGrade {
    QString titulo;      ///< Header.
    bool oculta = false; ///< Not shown.
    std::string formato; ///< Pattern of the general formatter; empty shows the default text.
    Qt::Alignment alinhamento = Qt::AlignLeft; ///< Of the cells.
    int largura = 100;                         ///< Pixels at 96 dpi.
    std::optional<QFont> fonte;                ///< Of the cells; otherwise the grid's own.
    std::shared_ptr<const clsTabela> tabela;   ///< Shows the table's text for a code.
    bool editavel = false;                     ///< Whether its cells take the keyboard.
};

/// The view model of all grids: the rows that a record set shows, with a look for each column, and for each
/// row pictures and a tag. It follows the record set's changes, whichever clone makes them.
class ModeloGrade : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ModeloGrade(QObject* dono = nullptr);
    ~ModeloGrade() override;

    /// Binds the grid to a record set, or to nothing. Looks, pictures and tags start anew: each column is
    /// headed by its name. Filling a record set before it is bound costs less than filling it afterwards.
    void setDados(std::shared_ptr<RecordSet> dados);
    const std::shared_ptr<RecordSet>& dados() const noexcept { return dados_; }
    /// Takes the rows anew after the record set's filter has changed.
    void recarrega();

    /// Position from 0 of a column. Throws Error 5 when there is none.
    int indice(std::string_view coluna) const;
    const ColunaGrade& coluna(int posicao) const { return colunas_.at(static_cast<std::size_t>(posicao)); }
    void setColuna(std::string_view nome, ColunaGrade aparencia);

    /// The record set's number of the row shown at a position from 0, and back (-1 when it is not shown).
    std::size_t numeroDaLinha(int linha) const;
    int linhaDoNumero(std::size_t numero) const;

    /// Value of a cell, and its default text.
    Value valor(int linha, std::string_view coluna) const;
    QString texto(int linha, std::string_view coluna) const;
    void setValor(int linha, std::string_view coluna, Value valor);
    /// The picture of a cell by its key; the empty key takes it away.
    void setImagem(int linha, std::string_view coluna, const QString& chave);
    QString imagem(int linha, std::string_view coluna) const;
    /// What the caller keeps with a row.
    void setMarca(int linha, QVariant marca);
    QVariant marca(int linha) const;
    /// Removes the rows at these positions from the record set.
    void remove(const std::vector<int>& linhas);

    int rowCount(const QModelIndex& pai = {}) const override;
    int columnCount(const QModelIndex& pai = {}) const override;
    QVariant data(const QModelIndex& indice, int papel = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& indice, const QVariant& valor, int papel = Qt::EditRole) override;
    QVariant headerData(int secao, Qt::Orientation orientacao, int papel = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& indice) const override;

private:
    std::shared_ptr<RecordSet> dados_;
    std::vector<ColunaGrade> colunas_;
};

} // namespace tv
