// Rows that leave a grid: by its key, and by others.
#include "common/windows/Grade.h"

#include "GradeAberta.h"
#include "app/Aplicacao.h"
#include "windows/Caixas.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace tv {
namespace {

using test::Caixas;
using test::registros;
using testing::ElementsAre;
using testing::IsEmpty;

using GradeRemocaoTest = test::GradeAberta;

TEST_F(GradeRemocaoTest, delete_asks_for_one_row_and_removes_it) {
    aplicacao::setTitulo("Título do programa");
    abre(4);
    clica(1);
    Caixas caixas{QStringLiteral("Sim")};
    QSignalSpy removidas(&grade_, &Grade::linhasRemovidas);
    tecla(Qt::Key_Delete);
    ASSERT_EQ(caixas.vistas().size(), 1u);
    EXPECT_EQ(caixas.vistas()[0].texto,
              QStringLiteral("A linha selecionada será removida.\n\nDeseja continuar?"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Question);
    EXPECT_EQ(caixas.vistas()[0].titulo, QStringLiteral("Título do programa"));
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({QStringLiteral("Sim"), QStringLiteral("Não")}));
    EXPECT_EQ(grade_.modelo().rowCount(), 3);
    EXPECT_EQ(removidas.size(), 1);
    EXPECT_EQ(nome(grade_.linhaAtiva()), QStringLiteral("linha 2"));
}

TEST_F(GradeRemocaoTest, delete_asks_for_several_rows) {
    abre(6);
    clica(1);
    clica(3, Qt::ShiftModifier);
    Caixas caixas{QStringLiteral("Não"), QStringLiteral("Sim")};
    tecla(Qt::Key_Delete);
    EXPECT_EQ(caixas.vistas()[0].texto,
              QStringLiteral("As linhas selecionadas serão removidas.\n\nDeseja continuar?"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Question);
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({QStringLiteral("Sim"), QStringLiteral("Não")}));
    EXPECT_EQ(grade_.modelo().rowCount(), 6);
    tecla(Qt::Key_Delete);
    EXPECT_EQ(grade_.modelo().rowCount(), 3);
}

TEST_F(GradeRemocaoTest, delete_shows_no_count_of_an_earlier_removal) {
    abre(6);
    clica(0);
    clica(1, Qt::ControlModifier);
    Caixas caixas{QStringLiteral("Não"), QStringLiteral("Não")};
    controleLib::removeRow(grade_);
    tecla(Qt::Key_Delete);
    EXPECT_EQ(caixas.vistas()[1].texto,
              QStringLiteral("As linhas selecionadas serão removidas.\n\nDeseja continuar?"));
}

TEST_F(GradeRemocaoTest, delete_takes_the_active_row_when_none_is_selected) {
    abre(3);
    grade_.setLinhaAtiva(2);
    Caixas caixas{QStringLiteral("Sim")};
    tecla(Qt::Key_Delete);
    EXPECT_EQ(grade_.modelo().rowCount(), 2);
    EXPECT_EQ(grade_.linhaAtiva(), 1) << "behind the last row the one before it becomes active";
}

TEST_F(GradeRemocaoTest, delete_does_nothing_without_a_row_or_when_switched_off) {
    abre(3);
    const Caixas caixas;
    tecla(Qt::Key_Delete);
    clica(0);
    grade_.setTeclaRemove(false);
    tecla(Qt::Key_Delete);
    EXPECT_EQ(grade_.modelo().rowCount(), 3);
    EXPECT_THAT(caixas.vistas(), IsEmpty());
}

TEST_F(GradeRemocaoTest, delete_belongs_to_the_cell_that_is_edited) {
    abre(3);
    ColunaGrade nome = grade_.modelo().coluna(0);
    nome.editavel = true;
    grade_.modelo().setColuna("nome", nome);
    clica(1);
    grade_.edit(grade_.modelo().index(1, 0));
    const Caixas caixas;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    EXPECT_EQ(grade_.modelo().rowCount(), 3);
}

TEST_F(GradeRemocaoTest, the_hook_may_keep_the_rows) {
    abre(4);
    clica(1);
    clica(2, Qt::ControlModifier);
    std::vector<int> vistas;
    grade_.antesDeRemover = [&](const std::vector<int>& linhas) {
        vistas = linhas;
        return false;
    };
    Caixas caixas{QStringLiteral("Sim")};
    QSignalSpy removidas(&grade_, &Grade::linhasRemovidas);
    EXPECT_FALSE(grade_.removeSelecionadas(QStringLiteral("Remove?")));
    EXPECT_THAT(vistas, ElementsAre(1, 2));
    EXPECT_EQ(grade_.modelo().rowCount(), 4);
    EXPECT_EQ(removidas.size(), 0);
}

TEST_F(GradeRemocaoTest, asks_nothing_without_a_selection) {
    abre(4);
    const Caixas caixas;
    EXPECT_FALSE(grade_.removeSelecionadas(QStringLiteral("Remove?")));
}

TEST_F(GradeRemocaoTest, tells_of_another_record_at_the_same_place_after_a_removal) {
    abre(4);
    clica(1);
    QSignalSpy ativou(&grade_, &Grade::linhaAtivada);
    Caixas caixas{QStringLiteral("Sim")};
    grade_.removeSelecionadas(QStringLiteral("Remove?"));
    ASSERT_EQ(ativou.size(), 1);
    EXPECT_EQ(ativou[0][0].toInt(), 1);
    EXPECT_EQ(nome(1), QStringLiteral("linha 2"));
}

TEST_F(GradeRemocaoTest, does_not_tell_of_a_record_that_only_moves_up) {
    abre(6);
    clica(0);
    clica(1, Qt::ControlModifier);
    grade_.setLinhaAtiva(4);
    QSignalSpy ativou(&grade_, &Grade::linhaAtivada);
    Caixas caixas{QStringLiteral("Sim")};
    grade_.removeSelecionadas(QStringLiteral("Remove?"));
    EXPECT_EQ(grade_.linhaAtiva(), 2);
    EXPECT_EQ(nome(2), QStringLiteral("linha 4"));
    EXPECT_EQ(ativou.size(), 0);
}

TEST_F(GradeRemocaoTest, the_active_row_moves_to_a_neighbour_when_it_is_removed_by_others) {
    abre(5);
    clica(2);
    QSignalSpy ativou(&grade_, &Grade::linhaAtivada);
    const auto clone = dados_->Clone();
    clone->MoveTo(2);
    clone->Delete();
    ASSERT_EQ(ativou.size(), 1);
    EXPECT_EQ(nome(grade_.linhaAtiva()), QStringLiteral("linha 3"));
}

TEST_F(GradeRemocaoTest, removing_scattered_rows_leaves_a_neighbour_active) {
    abre(600);
    for (int linha = 0; linha < 600; linha += 3) {
        grade_.selectionModel()->select(grade_.modelo().index(linha, 0),
                                        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    grade_.setLinhaAtiva(300);
    Caixas caixas{QStringLiteral("Sim")};
    EXPECT_TRUE(grade_.removeSelecionadas(QStringLiteral("Remove?")));
    EXPECT_EQ(grade_.modelo().rowCount(), 400);
    EXPECT_EQ(nome(grade_.linhaAtiva()), QStringLiteral("linha 301"));
}

TEST_F(GradeRemocaoTest, removing_all_rows_leaves_none_active) {
    abre(3);
    tecla(Qt::Key_A, Qt::ControlModifier);
    Caixas caixas{QStringLiteral("Sim")};
    QSignalSpy ativou(&grade_, &Grade::linhaAtivada);
    EXPECT_TRUE(grade_.removeSelecionadas(QStringLiteral("Remove?")));
    EXPECT_EQ(grade_.linhaAtiva(), -1);
    EXPECT_EQ(ativou.size(), 0);
}

} // namespace
} // namespace tv
