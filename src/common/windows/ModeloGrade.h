#pragma once

#include "model/clsTabela.h"
#include "platform/RecordSet.h"

#include <QAbstractTableModel>
#include <QFont>
#include <QIcon>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tv {

/// How a column of a grid looks.
struct ColunaGrade {
    QString titulo = {};      ///< Header.
    bool oculta = false;      ///< Not shown.
    std::string formato = {}; ///< Pattern of the general formatter; empty shows the default text.
    Qt::Alignment alinhamento = Qt::AlignLeft;         ///< Of the cells.
    int largura = 100;                                 ///< Pixels at 96 dpi.
    std::optional<QFont> fonte = std::nullopt;         ///< Of the cells; otherwise the grid's own.
    std::shared_ptr<const clsTabela> tabela = nullptr; ///< Shows the table's text for a code.
    bool editavel = false;                             ///< Whether its cells take the keyboard.
};

/// The view model of all grids: the rows that a record set shows, with a look for each column, and for each
/// row pictures and a tag. It follows the record set's changes, whichever clone makes them.
///
/// Rows stand in the order of their numbers. Nothing here moves the record set's cursor.
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
    /// True when some column takes the keyboard.
    bool temEditavel() const;

    /// The record set's number of the row shown at a position from 0, and back (-1 when it is not shown).
    /// Throws Error 9 for a position without a row, as all calls by position do.
    std::size_t numeroDaLinha(int linha) const;
    int linhaDoNumero(std::size_t numero) const;

    /// Value of a cell, and its default text.
    Value valor(int linha, std::string_view coluna) const;
    QString texto(int linha, std::string_view coluna) const;
    /// The text that the cell shows: the table's text or the value in the column's format.
    QString textoVisivel(int linha, int coluna) const;
    /// Writes a cell into the record set. The row's editing ends with it, but not that of a new row, which
    /// ends by the record set's own Update or by `confirma`. Throws what RecordSet::set throws.
    void setValor(int linha, std::string_view coluna, Value valor);
    /// Ends the editing of a new row: filters take it into account from then on.
    void confirma(int linha);
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
    /// Writes a cell of an editable column; a text is read as the column's type asks, the empty text is null.
    /// False for what does not read so.
    bool setData(const QModelIndex& indice, const QVariant& valor, int papel = Qt::EditRole) override;
    QVariant headerData(int secao, Qt::Orientation orientacao, int papel = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& indice) const override;

Q_SIGNALS:
    /// Another record set, or none, stands behind the grid; the columns have their first looks.
    void dadosTrocados();

private:
    void ouve(const RecordSet::Change& mudanca);
    void insere(std::size_t numero);
    void retira(int linha);
    void esquece(std::size_t numero);
    void mudou(int linha);
    void colunasIniciais();
    const Value* celula(int linha, int coluna) const;
    QString textoDe(const Value& valor, const ColunaGrade& coluna) const;
    std::size_t chaveDaCelula(std::size_t numero, int coluna) const;
    QVariant icone(const QModelIndex& indice) const;
    using Trecho = std::pair<int, int>; // first and last position
    std::vector<Trecho> trechos(std::vector<int> linhas) const;
    void removeTrecho(const Trecho& trecho);
    void apaga(std::size_t numero);

    std::shared_ptr<RecordSet> dados_;
    std::unique_ptr<RecordSet> escrita_; // a clone of its own, so that the caller's cursor stays
    std::size_t assinatura_ = 0;
    std::vector<ColunaGrade> colunas_;
    std::vector<std::size_t> linhas_; // numbers of the rows shown, ascending
    std::unordered_map<std::size_t, QVariant> marcas_;
    std::unordered_map<std::size_t, QString> imagens_; // by chaveDaCelula
    mutable std::unordered_map<std::string, QIcon> icones_;
    bool removendo_ = false;
};

} // namespace tv
