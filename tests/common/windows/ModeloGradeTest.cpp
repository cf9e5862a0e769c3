#include "common/windows/ModeloGrade.h"

#include "Registros.h"
#include "common/windows/textoQt.h"
#include "platform/Error.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QPalette>
#include <QSignalSpy>
#include <QStringList>

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::acrescenta;
using test::registros;
using test::registrosVazios;

/// Every test runs under Qt's own test of models, which stops the process at the first fault.
class ModeloGradeTest : public testing::Test {
protected:
    void liga(std::shared_ptr<RecordSet> dados) {
        dados_ = std::move(dados);
        modelo_.setDados(dados_);
    }
    QString nomes() const {
        QStringList todos;
        for (int linha = 0; linha < modelo_.rowCount(); ++linha) {
            todos << modelo_.texto(linha, "nome");
        }
        return todos.join(QLatin1Char(' '));
    }
    QVariant dado(int linha, std::string_view coluna, int papel = Qt::DisplayRole) const {
        return modelo_.index(linha, modelo_.indice(coluna)).data(papel);
    }
    void ajusta(std::string_view coluna, const std::function<void(ColunaGrade&)>& muda) {
        ColunaGrade aparencia = modelo_.coluna(modelo_.indice(coluna));
        muda(aparencia);
        modelo_.setColuna(coluna, aparencia);
    }

    ModeloGrade modelo_;
    QAbstractItemModelTester prova_{&modelo_, QAbstractItemModelTester::FailureReportingMode::Fatal};
    std::shared_ptr<RecordSet> dados_;
};

TEST_F(ModeloGradeTest, is_empty_without_data) {
    EXPECT_EQ(modelo_.rowCount(), 0);
    EXPECT_EQ(modelo_.columnCount(), 0);
    EXPECT_EQ(modelo_.dados(), nullptr);
    EXPECT_THROW(modelo_.indice("nome"), Error);
    EXPECT_THROW(modelo_.numeroDaLinha(0), Error);
    modelo_.recarrega();
    modelo_.remove({});
    EXPECT_EQ(modelo_.rowCount(), 0);
}

TEST_F(ModeloGradeTest, heads_each_column_by_its_name_until_it_gets_a_look) {
    liga(registros(1));
    EXPECT_EQ(modelo_.columnCount(), 5);
    EXPECT_EQ(modelo_.headerData(0, Qt::Horizontal).toString(), QStringLiteral("nome"));
    modelo_.setColuna("NOME", {.titulo = QStringLiteral("Nome do fundo"), .largura = 321});
    EXPECT_EQ(modelo_.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Nome do fundo"));
    EXPECT_EQ(modelo_.coluna(0).largura, 321);
    EXPECT_EQ(modelo_.indice("Valor"), 1) << "columns are found in any case";
    EXPECT_THROW(modelo_.setColuna("nada", {}), Error);
}

TEST_F(ModeloGradeTest, shows_values_in_their_default_text) {
    liga(registrosVazios());
    dados_->AddNew();
    dados_->set("nome", std::string("Ação"));
    dados_->set("valor", 1234.5);
    dados_->set("ativo", true);
    dados_->set("data", clock::at(2005, 7, 31));
    dados_->Update();
    EXPECT_EQ(dado(0, "nome").toString(), QStringLiteral("Ação"));
    EXPECT_EQ(dado(0, "valor").toString(), QStringLiteral("1234.5"));
    EXPECT_EQ(dado(0, "grupo").toString(), QString()) << "null shows nothing";
    EXPECT_EQ(dado(0, "ativo").toString(), QStringLiteral("True"));
    EXPECT_EQ(dado(0, "data").toString(), QStringLiteral("31/07/2005"));
    EXPECT_EQ(modelo_.texto(0, "valor"), QStringLiteral("1234.5"));
    EXPECT_EQ(std::get<double>(modelo_.valor(0, "valor")), 1234.5);
}

TEST_F(ModeloGradeTest, shows_values_in_the_column_s_format) {
    liga(registrosVazios());
    dados_->AddNew();
    dados_->set("valor", 2.0);
    dados_->Update();
    ajusta("valor", [](ColunaGrade& coluna) { coluna.formato = R"(###,##0.00\ \K\B)"; });
    EXPECT_EQ(dado(0, "valor").toString(), QStringLiteral("2.00 KB"));
    EXPECT_EQ(modelo_.textoVisivel(0, 1), QStringLiteral("2.00 KB"));
    EXPECT_EQ(modelo_.texto(0, "valor"), QStringLiteral("2")) << "the default text stays";
}

TEST_F(ModeloGradeTest, shows_the_table_s_text_for_a_code) {
    auto tabela = std::make_shared<clsTabela>();
    tabela->linha.Add({"1", "Ações"}, "1");
    liga(registrosVazios());
    acrescenta(*dados_, "a", 1);
    acrescenta(*dados_, "b", 7);
    ajusta("grupo", [&](ColunaGrade& coluna) { coluna.tabela = tabela; });
    EXPECT_EQ(dado(0, "grupo").toString(), QStringLiteral("Ações"));
    EXPECT_EQ(dado(1, "grupo").toString(), QStringLiteral("7")) << "a code without an entry shows itself";
}

TEST_F(ModeloGradeTest, gives_each_column_its_alignment_and_font) {
    liga(registros(1));
    const QFont fonte(QStringLiteral("Courier New"), 10);
    ajusta("valor", [&](ColunaGrade& coluna) {
        coluna.alinhamento = Qt::AlignRight;
        coluna.fonte = fonte;
    });
    EXPECT_EQ(dado(0, "valor", Qt::TextAlignmentRole).value<Qt::Alignment>(),
              Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(dado(0, "valor", Qt::FontRole).value<QFont>(), fonte);
    EXPECT_FALSE(dado(0, "nome", Qt::FontRole).isValid());
}

TEST_F(ModeloGradeTest, follows_rows_that_are_added_changed_and_removed_through_any_clone) {
    liga(registros(2));
    const QSignalSpy mudou(&modelo_, &QAbstractItemModel::dataChanged);
    const auto clone = dados_->Clone();
    acrescenta(*clone, "nova");
    EXPECT_EQ(nomes(), QStringLiteral("linha 0 linha 1 nova"));
    clone->MoveFirst();
    clone->set("nome", std::string("outra"));
    const auto antes = mudou.size();
    clone->Update();
    EXPECT_GT(mudou.size(), antes);
    EXPECT_EQ(nomes(), QStringLiteral("outra linha 1 nova"));
    clone->MoveNext();
    clone->Delete();
    EXPECT_EQ(nomes(), QStringLiteral("outra nova"));
}

TEST_F(ModeloGradeTest, takes_the_rows_of_the_filter_when_told) {
    liga(registros(7));
    dados_->Filter("grupo = 1");
    modelo_.recarrega();
    EXPECT_EQ(nomes(), QStringLiteral("linha 1 linha 4"));
    dados_->Filter("");
    modelo_.recarrega();
    EXPECT_EQ(modelo_.rowCount(), 7);
}

TEST_F(ModeloGradeTest, keeps_to_the_filter_while_rows_change) {
    liga(registros(7));
    dados_->Filter("grupo = 1");
    modelo_.recarrega();
    const auto clone = dados_->Clone();
    clone->MoveTo(1);
    clone->set("grupo", 2);
    clone->Update();
    EXPECT_EQ(nomes(), QStringLiteral("linha 4")) << "the row has left the filter";
    clone->MoveTo(0);
    clone->set("grupo", 1);
    clone->Update();
    EXPECT_EQ(nomes(), QStringLiteral("linha 0 linha 4")) << "a row has come into it, in its place";
    clone->MoveTo(5);
    clone->Delete();
    EXPECT_EQ(modelo_.rowCount(), 2) << "a removed row that was not shown changes nothing";
}

TEST_F(ModeloGradeTest, shows_a_new_row_until_its_editing_ends_outside_of_the_filter) {
    liga(registros(3));
    dados_->Filter("grupo = 1");
    modelo_.recarrega();
    dados_->AddNew();
    EXPECT_EQ(modelo_.rowCount(), 2);
    modelo_.setValor(1, "grupo", 2);
    EXPECT_EQ(modelo_.rowCount(), 2) << "writing a cell does not end the editing of a new row";
    modelo_.confirma(1);
    EXPECT_EQ(modelo_.rowCount(), 1);
}

TEST_F(ModeloGradeTest, finds_rows_by_number_and_numbers_by_row) {
    liga(registros(5));
    modelo_.remove({1, 2});
    EXPECT_EQ(modelo_.numeroDaLinha(1), 3u);
    EXPECT_EQ(modelo_.linhaDoNumero(3), 1);
    EXPECT_EQ(modelo_.linhaDoNumero(2), -1);
    EXPECT_THROW(modelo_.numeroDaLinha(3), Error);
    EXPECT_THROW(modelo_.numeroDaLinha(-1), Error);
}

TEST_F(ModeloGradeTest, writes_values_without_moving_the_caller_s_cursor) {
    liga(registros(3));
    dados_->MoveTo(1);
    modelo_.setValor(2, "nome", std::string("novo"));
    EXPECT_EQ(dados_->currentRow(), 1u);
    EXPECT_EQ(modelo_.texto(2, "nome"), QStringLiteral("novo"));
    dados_->Filter("nome = 'novo'");
    EXPECT_EQ(dados_->RecordCount(), 1u) << "filters know the value at once";
    EXPECT_THROW(modelo_.setValor(0, "grupo", std::string("texto")), Error);
    EXPECT_THROW(modelo_.setValor(9, "nome", std::string("x")), Error);
}

TEST_F(ModeloGradeTest, tells_of_a_written_cell_once) {
    liga(registros(3));
    const QSignalSpy mudou(&modelo_, &QAbstractItemModel::dataChanged);
    modelo_.setValor(1, "nome", std::string("novo"));
    ASSERT_EQ(mudou.size(), 1);
    EXPECT_EQ(mudou[0][0].toModelIndex().row(), 1);
    EXPECT_EQ(mudou[0][1].toModelIndex().row(), 1);
}

TEST_F(ModeloGradeTest, keeps_pictures_and_marks_with_their_rows) {
    liga(registros(4));
    modelo_.setImagem(2, "nome", QStringLiteral("imgOK"));
    modelo_.setMarca(2, QStringLiteral("marca"));
    modelo_.remove({0});
    EXPECT_EQ(modelo_.imagem(1, "nome"), QStringLiteral("imgOK"));
    EXPECT_EQ(modelo_.imagem(1, "valor"), QString());
    EXPECT_EQ(modelo_.marca(1).toString(), QStringLiteral("marca"));
    EXPECT_FALSE(modelo_.marca(0).isValid());
    EXPECT_FALSE(dado(1, "nome", Qt::DecorationRole).value<QIcon>().isNull());
    modelo_.setImagem(1, "nome", QString());
    EXPECT_EQ(modelo_.imagem(1, "nome"), QString());
    EXPECT_FALSE(dado(1, "nome", Qt::DecorationRole).isValid());
}

TEST_F(ModeloGradeTest, shows_no_picture_for_an_unknown_key) {
    liga(registros(1));
    modelo_.setImagem(0, "nome", QStringLiteral("imgQueNaoExiste"));
    EXPECT_TRUE(dado(0, "nome", Qt::DecorationRole).value<QIcon>().isNull());
}

TEST_F(ModeloGradeTest, draws_pictures_in_black_for_its_light_rows_under_a_dark_theme) {
    QPalette escura;
    escura.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(escura);
    liga(registros(1));
    modelo_.setImagem(0, "nome", QStringLiteral("imgBoleto"));
    const QImage desenho = dado(0, "nome", Qt::DecorationRole).value<QIcon>().pixmap(48, 48).toImage();
    int pretos = 0;
    int brancos = 0;
    for (int y = 0; y < desenho.height(); ++y) {
        for (int x = 0; x < desenho.width(); ++x) {
            const QColor cor = desenho.pixelColor(x, y);
            pretos += cor.alpha() > 200 && cor.lightness() < 30 ? 1 : 0;
            brancos += cor.alpha() > 200 && cor.lightness() > 225 ? 1 : 0;
        }
    }
    EXPECT_GT(pretos, 50);
    EXPECT_EQ(brancos, 0);
}

TEST_F(ModeloGradeTest, starts_anew_with_another_record_set) {
    liga(registros(2));
    modelo_.setImagem(0, "nome", QStringLiteral("imgOK"));
    modelo_.setMarca(0, 5);
    modelo_.setColuna("nome", {.titulo = QStringLiteral("Nome")});
    const auto antigos = dados_;
    const QSignalSpy trocou(&modelo_, &ModeloGrade::dadosTrocados);
    liga(registros(1));
    EXPECT_EQ(trocou.size(), 1);
    EXPECT_EQ(modelo_.imagem(0, "nome"), QString());
    EXPECT_FALSE(modelo_.marca(0).isValid());
    EXPECT_EQ(modelo_.coluna(0).titulo, QStringLiteral("nome"));
    acrescenta(*antigos, "tarde");
    EXPECT_EQ(modelo_.rowCount(), 1) << "the old record set is no concern any more";
    modelo_.setDados(nullptr);
    EXPECT_EQ(modelo_.columnCount(), 0);
}

TEST_F(ModeloGradeTest, removes_rows_in_stretches) {
    liga(registros(8));
    const QSignalSpy removeu(&modelo_, &QAbstractItemModel::rowsRemoved);
    modelo_.remove({6, 1, 2, 1, 3});
    EXPECT_EQ(nomes(), QStringLiteral("linha 0 linha 4 linha 5 linha 7"));
    EXPECT_EQ(removeu.size(), 2) << "one for the rows 1 to 3, one for row 6";
    EXPECT_EQ(dados_->RecordCount(), 4u);
    EXPECT_THROW(modelo_.remove({0, 4}), Error);
    EXPECT_EQ(modelo_.rowCount(), 4) << "nothing is removed when a row is not there";
}

TEST_F(ModeloGradeTest, removes_many_scattered_rows_at_once) {
    liga(registros(1000));
    modelo_.setMarca(999, 5);
    std::vector<int> pares;
    for (int linha = 0; linha < 1000; linha += 2) {
        pares.push_back(linha);
    }
    const QSignalSpy recomecou(&modelo_, &QAbstractItemModel::modelReset);
    modelo_.remove(pares);
    EXPECT_EQ(recomecou.size(), 1);
    EXPECT_EQ(modelo_.rowCount(), 500);
    EXPECT_EQ(modelo_.texto(499, "nome"), QStringLiteral("linha 999"));
    EXPECT_EQ(modelo_.marca(499).toInt(), 5);
}

TEST_F(ModeloGradeTest, survives_a_listener_that_removes_further_rows) {
    liga(registros(6));
    const auto clone = dados_->Clone();
    dados_->subscribe([&](const RecordSet::Change& mudanca) {
        if (mudanca.kind == RecordSet::Change::Kind::Removed && mudanca.row == 1) {
            clone->MoveTo(4);
            clone->Delete();
        }
    });
    modelo_.remove({1});
    EXPECT_EQ(nomes(), QStringLiteral("linha 0 linha 2 linha 3 linha 5"));
}

struct Digitado {
    const char* nome;
    std::string_view coluna;
    QString texto;
    bool aceito;
    QString fica;
};

class Digitacao : public ModeloGradeTest, public testing::WithParamInterface<Digitado> {};

TEST_P(Digitacao, reads_as_the_column_s_type) {
    liga(registros(1));
    ajusta(GetParam().coluna, [](ColunaGrade& coluna) { coluna.editavel = true; });
    const QModelIndex celula = modelo_.index(0, modelo_.indice(GetParam().coluna));
    EXPECT_EQ(modelo_.setData(celula, GetParam().texto), GetParam().aceito);
    EXPECT_EQ(modelo_.texto(0, GetParam().coluna), GetParam().fica);
}

INSTANTIATE_TEST_SUITE_P(
    ModeloGrade, Digitacao,
    testing::Values(Digitado{"texto", "nome", QStringLiteral("Ação"), true, QStringLiteral("Ação")},
                    Digitado{"vazio", "nome", QString(), true, QString()},
                    Digitado{"numero", "valor", QStringLiteral("12.25"), true, QStringLiteral("12.25")},
                    Digitado{"com_virgula", "valor", QStringLiteral("12,25"), false, QStringLiteral("0.5")},
                    Digitado{"inteiro", "grupo", QStringLiteral("42"), true, QStringLiteral("42")},
                    Digitado{"grande", "grupo", QStringLiteral("99999999999"), false, QStringLiteral("0")},
                    Digitado{"letras", "grupo", QStringLiteral("abc"), false, QStringLiteral("0")},
                    Digitado{"data", "data", QStringLiteral("29/02/2004"), true,
                             QStringLiteral("29/02/2004")},
                    Digitado{"sem_dia", "data", QStringLiteral("30/02/2004"), false, QString()},
                    Digitado{"logico", "ativo", QStringLiteral("true"), true, QStringLiteral("True")},
                    Digitado{"nao_logico", "ativo", QStringLiteral("talvez"), false, QString()}),
    [](const auto& caso) { return std::string(caso.param.nome); });

TEST_F(ModeloGradeTest, takes_the_keyboard_in_editable_columns_only) {
    liga(registros(1));
    EXPECT_FALSE(modelo_.temEditavel());
    ajusta("nome", [](ColunaGrade& coluna) { coluna.editavel = true; });
    EXPECT_TRUE(modelo_.temEditavel());
    EXPECT_TRUE(modelo_.index(0, 0).flags() & Qt::ItemIsEditable);
    EXPECT_FALSE(modelo_.index(0, 1).flags() & Qt::ItemIsEditable);
    EXPECT_FALSE(modelo_.setData(modelo_.index(0, 1), 5.0));
    EXPECT_FALSE(modelo_.setData(modelo_.index(0, 0), 5.0, Qt::DisplayRole));
    EXPECT_EQ(dado(0, "valor", Qt::EditRole).toDouble(), 0.5);
    ajusta("nome", [](ColunaGrade& coluna) { coluna.oculta = true; });
    EXPECT_FALSE(modelo_.temEditavel()) << "nobody types into a hidden column";
}

TEST(ModeloGradeLargo, binds_a_hundred_thousand_rows_in_a_blink) {
    const auto dados = registros(100000);
    ModeloGrade modelo;
    const test::TempoDeProcessador tempo;
    modelo.setDados(dados);
    EXPECT_LT(tempo.decorrido(), 200 * test::folgaDaMedida);
    EXPECT_EQ(modelo.rowCount(), 100000);
}

/// A scan of the rows at each change would take minutes here.
TEST(ModeloGradeLargo, changes_cost_the_same_however_many_rows_there_are) {
    const auto dados = registros(100000);
    ModeloGrade modelo;
    modelo.setDados(dados);
    const test::TempoDeProcessador tempo;
    for (int linha = 0; linha < 100000; ++linha) {
        modelo.setValor(linha, "grupo", linha);
    }
    for (int i = 0; i < 20000; ++i) {
        acrescenta(*dados, "nova");
    }
    EXPECT_LT(tempo.decorrido(), 4000 * test::folgaDaMedida);
    EXPECT_EQ(modelo.rowCount(), 120000);
}

} // namespace
} // namespace tv
