#include "Registros.h"
#include "app/Aplicacao.h"
#include "common/windows/Grade.h"
#include "common/windows/controleLib.h"
#include "logging/LogFolder.h"
#include "windows/Caixas.h"

#include <QHeaderView>

#include <gmock/gmock.h>

namespace tv {
namespace {

using test::Caixas;
using test::registros;
using testing::ElementsAre;
using testing::HasSubstr;

class GradeComum : public testing::Test {
protected:
    GradeComum() { aplicacao::setTitulo("Título do programa"); }
    ~GradeComum() override { aplicacao::setTitulo(""); }
    void abre(int linhas) {
        grade_.modelo().setDados(registros(linhas));
        controleLib::gridInitializeLayout(grade_);
    }
    void seleciona(int primeira, int ultima) {
        const ModeloGrade& modelo = grade_.modelo();
        grade_.selectionModel()->select({modelo.index(primeira, 0), modelo.index(ultima, 4)},
                                        QItemSelectionModel::ClearAndSelect);
    }

    Grade grade_{QStringLiteral("grid")};
};

struct TextoDaGrade {
    int numero;
    QString texto;
};

class Textos : public GradeComum, public testing::WithParamInterface<TextoDaGrade> {};

TEST_P(Textos, are_the_program_s_own) {
    EXPECT_EQ(grade_.texto(GetParam().numero), QString());
    controleLib::gridInitializeLayout(grade_);
    EXPECT_EQ(grade_.texto(GetParam().numero), GetParam().texto);
}

INSTANTIATE_TEST_SUITE_P(
    gridInitializeLayout, Textos,
    testing::Values(
        TextoDaGrade{1, QStringLiteral("Título do programa")},
        TextoDaGrade{4, QStringLiteral("Título do programa")},
        TextoDaGrade{7, QStringLiteral("Título do programa")},
        TextoDaGrade{3, QStringLiteral("A linha selecionada será removida.\n\nDeseja continuar?")},
        TextoDaGrade{2, QStringLiteral("As linhas selecionadas serão removidas.\n\nDeseja continuar?")},
        TextoDaGrade{6, QStringLiteral("Valor inválido!")},
        TextoDaGrade{15, QStringLiteral("Data inválida!")},
        TextoDaGrade{12, QStringLiteral("Seleção Inválida!")}, TextoDaGrade{27, QStringLiteral("Fechar")},
        TextoDaGrade{25, QStringLiteral("Imprimir")}, TextoDaGrade{26, QStringLiteral("Configurar")},
        TextoDaGrade{5, QStringLiteral("Número de ítens excedido!")}),
    [](const auto& caso) { return "numero_" + std::to_string(caso.param.numero); });

TEST_F(GradeComum, a_grid_without_data_gets_the_texts_and_the_caption_s_font_only) {
    const QFont celulas = grade_.font();
    const QFont cabecalho = grade_.horizontalHeader()->font();
    controleLib::gridInitializeLayout(grade_);
    EXPECT_EQ(grade_.texto(Grade::fechar), QStringLiteral("Fechar"));
    EXPECT_EQ(grade_.fonteCaption().family(), QStringLiteral("Times New Roman"));
    EXPECT_EQ(grade_.fonteCaption().pointSize(), 14);
    EXPECT_TRUE(grade_.fonteCaption().bold());
    EXPECT_FALSE(grade_.aparencia().has_value());
    EXPECT_EQ(grade_.font(), celulas);
    EXPECT_EQ(grade_.horizontalHeader()->font(), cabecalho);
}

TEST_F(GradeComum, a_grid_with_data_gets_fonts_and_colours) {
    abre(1);
    const QFont titulos = grade_.horizontalHeader()->font();
    EXPECT_EQ(titulos.family(), QStringLiteral("Verdana"));
    EXPECT_EQ(titulos.pointSize(), 9);
    EXPECT_TRUE(titulos.bold());
    EXPECT_EQ(grade_.font().family(), QStringLiteral("Arial"));
    EXPECT_EQ(grade_.font().pointSize(), 10);
    EXPECT_FALSE(grade_.font().bold());
    ASSERT_TRUE(grade_.aparencia().has_value());
    EXPECT_EQ(grade_.aparencia()->fundoLinhaAtiva, QColor(255, 255, 200));
    EXPECT_EQ(grade_.aparencia()->fundoCabecalho, QColor(166, 202, 240));
    EXPECT_EQ(grade_.aparencia()->fundoLinha, QColor(240, 240, 240));
    EXPECT_EQ(grade_.aparencia()->fundoAlternado, QColor(255, 255, 255));
}

TEST_F(GradeComum, removeRow_does_nothing_without_rows) {
    abre(0);
    const Caixas caixas;
    controleLib::removeRow(grade_);
    grade_.modelo().setDados(nullptr);
    controleLib::removeRow(grade_);
    EXPECT_TRUE(caixas.vistas().empty());
}

TEST_F(GradeComum, removeRow_says_that_no_row_is_selected) {
    abre(2);
    Caixas caixas{QStringLiteral("OK")};
    controleLib::removeRow(grade_);
    ASSERT_EQ(caixas.vistas().size(), 1u);
    EXPECT_EQ(caixas.vistas()[0].texto,
              QStringLiteral("Não foi possível remover.\nNenhuma linha selecionada!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(caixas.vistas()[0].titulo, QStringLiteral("Título do programa"));
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList{QStringLiteral("OK")});
    EXPECT_EQ(grade_.modelo().rowCount(), 2);
}

TEST_F(GradeComum, removeRow_selects_the_active_row_and_asks_for_it) {
    abre(3);
    grade_.setLinhaAtiva(1);
    Caixas caixas{QStringLiteral("Não")};
    controleLib::removeRow(grade_);
    ASSERT_EQ(caixas.vistas().size(), 1u);
    EXPECT_EQ(caixas.vistas()[0].texto,
              QStringLiteral("Existe uma linha selecionada para remoção.\nDeseja continuar?"));
    EXPECT_EQ(caixas.vistas()[0].titulo, QStringLiteral("Título do programa"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Question);
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({QStringLiteral("Sim"), QStringLiteral("Não")}));
    EXPECT_THAT(grade_.linhasSelecionadas(), ElementsAre(1));
    EXPECT_EQ(grade_.modelo().rowCount(), 3);
}

TEST_F(GradeComum, removeRow_asks_with_the_count_and_removes) {
    abre(5);
    seleciona(1, 3);
    Caixas caixas{QStringLiteral("Sim")};
    controleLib::removeRow(grade_);
    EXPECT_EQ(caixas.vistas()[0].texto,
              QStringLiteral("Existem 3 linhas selecionadas para remoção.\nDeseja continuar?"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Question);
    EXPECT_EQ(caixas.vistas()[0].titulo, QStringLiteral("Título do programa"));
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({QStringLiteral("Sim"), QStringLiteral("Não")}));
    EXPECT_EQ(grade_.texto(Grade::removeVarias), caixas.vistas()[0].texto)
        << "the text takes the place of number 2";
    EXPECT_EQ(grade_.modelo().rowCount(), 2);
}

TEST_F(GradeComum, removeRow_removes_the_selected_rows_not_the_active_one) {
    abre(5);
    grade_.setLinhaAtiva(0);
    seleciona(3, 3);
    Caixas caixas{QStringLiteral("Sim")};
    controleLib::removeRow(grade_);
    EXPECT_EQ(grade_.modelo().rowCount(), 4);
    EXPECT_EQ(grade_.modelo().texto(0, "nome"), QStringLiteral("linha 0"));
    EXPECT_EQ(grade_.modelo().linhaDoNumero(3), -1);
}

TEST_F(GradeComum, removeRow_logs_a_failure_and_keeps_the_rows) {
    abre(3);
    grade_.setLinhaAtiva(1);
    grade_.antesDeRemover = [](const std::vector<int>&) -> bool {
        throw Error(errc::invalidCall, "teste", "A linha está presa");
    };
    const test::TemporaryFolder pasta;
    const test::GlobalLogger global(test::startLogger(pasta, clsLogger::typeTXT, library::level::all));
    const Caixas caixas{QStringLiteral("Sim")};
    controleLib::removeRow(grade_);
    EXPECT_EQ(grade_.modelo().rowCount(), 3);
    const std::string registro = files::readAll(oLogger->getFilename());
    EXPECT_THAT(registro, HasSubstr("controleLib.removeRow"));
    EXPECT_THAT(registro, HasSubstr("A linha está presa[5]"));
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

} // namespace
} // namespace tv
