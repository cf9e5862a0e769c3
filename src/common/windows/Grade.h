#pragma once

#include "common/windows/ModeloGrade.h"

#include <QString>
#include <QTableView>

#include <functional>
#include <map>
#include <vector>

class QLabel;

namespace tv {

/// The grid of all windows: a table of rows with a caption, an active row, selected rows, a question before
/// rows are deleted, and a print and preview of its own.
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
    QFont fonteCaption() const { return fonteCaption_; }
    void setFonteCaption(const QFont& fonte);

    /// Texts by number; gridInitializeLayout sets them.
    QString texto(int numero) const;
    void setTexto(int numero, const QString& texto);

    /// Position from 0 of the active row, -1 without one. Setting it makes it current and visible; an active
    /// row need not be selected.
    int linhaAtiva() const;
    void setLinhaAtiva(int linha);
    /// Positions of the selected rows, ascending.
    std::vector<int> linhasSelecionadas() const;
    void selecionaLinha(int linha);

    /// Runs before rows are deleted, with their positions; false keeps them. Runs after the question.
    std::function<bool(const std::vector<int>&)> antesDeRemover;
    /// Asks with `pergunta` and deletes the selected rows. False when nothing was deleted.
    bool removeSelecionadas(const QString& pergunta);

    /// Applies the columns' looks (width, hidden) to the view after they were set.
    void aplicaColunas();

Q_SIGNALS:
    void captionMudou(const QString& caption);
    /// Another row has become the active one.
    void linhaAtivada(int linha);
    /// After rows were deleted.
    void linhasRemovidas();

private:
    ModeloGrade* modelo_;
    QString caption_;
    QFont fonteCaption_;
    std::map<int, QString> textos_;
};

/// A grid with its caption above it.
class PainelGrade : public QWidget {
    Q_OBJECT
public:
    /// `nome` is the grid's object name; the label's is `nome` + "Caption".
    explicit PainelGrade(const QString& nome, QWidget* dono = nullptr);
    Grade& grade() noexcept { return *grade_; }

private:
    Grade* grade_;
    QLabel* rotulo_;
};

} // namespace tv
