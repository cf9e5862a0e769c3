#include "common/windows/Grade.h"

#include "GradeAberta.h"
#include "Registros.h"
#include "common/windows/controleLib.h"
#include "windows/Caixas.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace tv {
namespace {

using test::Caixas;
using test::registros;
using testing::ElementsAre;
using testing::IsEmpty;

using GradeTest = test::GradeAberta;

TEST_F(GradeTest, has_no_active_row_at_first_even_with_the_focus) {
    abre(3);
    QTest::keyClick(&painel_, Qt::Key_Tab);
    EXPECT_EQ(grade_.linhaAtiva(), -1);
    EXPECT_THAT(grade_.linhasSelecionadas(), IsEmpty());
}

TEST_F(GradeTest, a_click_activates_and_selects_a_row) {
    abre(5);
    QSignalSpy ativou(&grade_, &Grade::linhaAtivada);
    clica(2);
    EXPECT_EQ(grade_.linhaAtiva(), 2);
    EXPECT_THAT(grade_.linhasSelecionadas(), ElementsAre(2));
    ASSERT_EQ(ativou.size(), 1);
    EXPECT_EQ(ativou[0][0].toInt(), 2);
    clica(2);
    EXPECT_EQ(ativou.size(), 1) << "the same row is active already";
}

TEST_F(GradeTest, ctrl_and_shift_extend_the_selection) {
    abre(8);
    clica(1);
    clica(4, Qt::ControlModifier);
    EXPECT_THAT(grade_.linhasSelecionadas(), ElementsAre(1, 4));
    EXPECT_EQ(grade_.linhaAtiva(), 4);
    clica(6, Qt::ShiftModifier);
    EXPECT_THAT(grade_.linhasSelecionadas(), ElementsAre(1, 4, 5, 6));
    tecla(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_THAT(grade_.linhasSelecionadas(), ElementsAre(1, 4, 5));
    clica(3);
    EXPECT_THAT(grade_.linhasSelecionadas(), ElementsAre(3)) << "a plain click starts anew";
    tecla(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(grade_.linhasSelecionadas().size(), 8u);
}

TEST_F(GradeTest, the_keyboard_walks_over_the_rows) {
    abre(100);
    QSignalSpy ativou(&grade_, &Grade::linhaAtivada);
    tecla(Qt::Key_Down);
    EXPECT_EQ(grade_.linhaAtiva(), 0) << "the first key comes to the first row";
    tecla(Qt::Key_Down);
    EXPECT_EQ(grade_.linhaAtiva(), 1);
    tecla(Qt::Key_End);
    EXPECT_EQ(grade_.linhaAtiva(), 99);
    tecla(Qt::Key_Home);
    EXPECT_EQ(grade_.linhaAtiva(), 0);
    tecla(Qt::Key_PageDown);
    const int pagina = grade_.linhaAtiva();
    EXPECT_GT(pagina, 5);
    tecla(Qt::Key_PageUp);
    EXPECT_EQ(grade_.linhaAtiva(), 0);
    tecla(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(grade_.linhasSelecionadas().size(), 100u);
    EXPECT_EQ(ativou.size(), 7);
}

TEST_F(GradeTest, home_and_end_stay_in_the_row_where_cells_are_edited) {
    abre(10);
    ColunaGrade nome = grade_.modelo().coluna(0);
    nome.editavel = true;
    grade_.modelo().setColuna("nome", nome);
    grade_.setLinhaAtiva(4);
    tecla(Qt::Key_End);
    EXPECT_EQ(grade_.linhaAtiva(), 4);
    EXPECT_EQ(grade_.currentIndex().column(), 4);
    tecla(Qt::Key_Home);
    EXPECT_EQ(grade_.currentIndex().column(), 0);
}

TEST_F(GradeTest, the_active_row_need_not_be_selected) {
    abre(300);
    QSignalSpy ativou(&grade_, &Grade::linhaAtivada);
    clica(1);
    grade_.setLinhaAtiva(250);
    EXPECT_EQ(grade_.linhaAtiva(), 250);
    EXPECT_THAT(grade_.linhasSelecionadas(), ElementsAre(1));
    EXPECT_TRUE(grade_.viewport()->rect().contains(lugarDaLinha(250))) << "it is made visible";
    EXPECT_EQ(ativou.size(), 2);
    grade_.setLinhaAtiva(-1);
    EXPECT_EQ(grade_.linhaAtiva(), -1);
    EXPECT_EQ(ativou.size(), 2) << "no row is told of";
    grade_.selecionaLinha(7);
    EXPECT_THAT(grade_.linhasSelecionadas(), ElementsAre(7));
    EXPECT_EQ(grade_.linhaAtiva(), -1) << "a selected row need not be active";
    grade_.selecionaLinha(-1);
    EXPECT_THAT(grade_.linhasSelecionadas(), IsEmpty());
}

TEST_F(GradeTest, the_columns_take_their_looks) {
    abre(1);
    grade_.modelo().setColuna("nome", {.titulo = QStringLiteral("Nome"), .largura = 222});
    grade_.modelo().setColuna("valor", {.titulo = QStringLiteral("Valor"), .oculta = true});
    EXPECT_EQ(grade_.columnWidth(0), 222);
    EXPECT_TRUE(grade_.isColumnHidden(1));
    EXPECT_EQ(grade_.horizontalHeader()->sectionResizeMode(0), QHeaderView::Interactive);
    grade_.modelo().setColuna("valor", {.titulo = QStringLiteral("Valor"), .largura = 77});
    EXPECT_FALSE(grade_.isColumnHidden(1));
    EXPECT_EQ(grade_.columnWidth(1), 77);
    grade_.setColumnWidth(1, 150);
    grade_.aplicaColunas();
    EXPECT_EQ(grade_.columnWidth(1), 77);
}

TEST_F(GradeTest, tells_when_data_are_bound) {
    QSignalSpy iniciou(&grade_, &Grade::layoutIniciado);
    abre(3);
    EXPECT_EQ(iniciou.size(), 1);
}

TEST_F(GradeTest, wears_the_colours_of_its_look) {
    abre(4);
    EXPECT_EQ(fundoDaLinha(0), QColor(240, 240, 240));
    EXPECT_EQ(fundoDaLinha(1), QColor(255, 255, 255));
    EXPECT_EQ(fundoDaLinha(2), QColor(240, 240, 240));
    grade_.setLinhaAtiva(1);
    EXPECT_EQ(fundoDaLinha(1), QColor(255, 255, 200));
    clica(2);
    EXPECT_EQ(fundoDaLinha(2), QColor(255, 255, 200))
        << "an active row stays pale yellow when it is selected";
    EXPECT_EQ(fundoDaLinha(1), QColor(255, 255, 255));
    clica(3, Qt::ControlModifier);
    EXPECT_EQ(fundoDaLinha(2), grade_.palette().color(QPalette::Highlight)) << "selected only";
    const QHeaderView& cabecalho = *grade_.horizontalHeader();
    EXPECT_EQ(cor({cabecalho.sectionViewportPosition(1) + 90, 3}, *cabecalho.viewport()),
              QColor(166, 202, 240));
}

TEST_F(GradeTest, writes_black_on_its_own_backgrounds_under_a_dark_theme) {
    QPalette escura;
    escura.setColor(QPalette::Window, QColor(30, 30, 30));
    escura.setColor(QPalette::Base, QColor(20, 20, 20));
    escura.setColor(QPalette::Text, Qt::white);
    escura.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(escura);
    abre(2);
    EXPECT_EQ(grade_.palette().color(QPalette::Text), QColor(Qt::black));
    EXPECT_EQ(fundoDaLinha(1), QColor(255, 255, 255));
    const QImage celula = grade_.viewport()->grab(grade_.visualRect(grade_.modelo().index(0, 0))).toImage();
    int escuros = 0;
    for (int y = 0; y < celula.height(); ++y) {
        for (int x = 0; x < celula.width(); ++x) {
            escuros += celula.pixelColor(x, y).lightness() < 90 ? 1 : 0;
        }
    }
    EXPECT_GT(escuros, 20) << "the text is dark";
}

TEST_F(GradeTest, rows_have_room_for_text_and_picture) {
    abre(2);
    EXPECT_GE(grade_.rowHeight(0), QFontMetrics(grade_.font()).height() + 4);
    EXPECT_GE(grade_.rowHeight(0), 20);
    EXPECT_TRUE(grade_.verticalHeader()->isHidden());
}

TEST_F(GradeTest, the_caption_shows_above_with_one_ampersand_for_two) {
    auto* rotulo = painel_.findChild<QLabel*>(QStringLiteral("gridCaption"));
    ASSERT_NE(rotulo, nullptr);
    EXPECT_TRUE(rotulo->isHidden());
    abre(1);
    QSignalSpy mudou(&grade_, &Grade::captionMudou);
    grade_.setCaption(QStringLiteral("Ações && Opções"));
    EXPECT_EQ(grade_.property("caption").toString(), QStringLiteral("Ações && Opções"));
    EXPECT_EQ(rotulo->text(), QStringLiteral("Ações & Opções"));
    EXPECT_TRUE(rotulo->isVisible());
    EXPECT_EQ(rotulo->font().family(), QStringLiteral("Times New Roman"));
    EXPECT_EQ(grade_.accessibleName(), QStringLiteral("Ações & Opções"));
    EXPECT_EQ(mudou.size(), 1);
    grade_.setCaption(QString());
    EXPECT_TRUE(rotulo->isHidden());
    grade_.setAccessibleName(QStringLiteral("Arquivos"));
    grade_.setCaption(QStringLiteral("Título"));
    EXPECT_EQ(grade_.accessibleName(), QStringLiteral("Arquivos")) << "a given name stays";
}

TEST_F(GradeTest, the_active_row_stays_when_the_filter_still_shows_it) {
    abre(9);
    clica(4);
    QSignalSpy ativou(&grade_, &Grade::linhaAtivada);
    dados_->Filter("grupo = 1");
    grade_.modelo().recarrega();
    EXPECT_EQ(grade_.linhaAtiva(), 1);
    EXPECT_EQ(ativou.size(), 0) << "it is the same record";
    dados_->Filter("grupo = 2");
    grade_.modelo().recarrega();
    EXPECT_EQ(grade_.linhaAtiva(), -1);
}

TEST_F(GradeTest, other_data_start_without_an_active_row) {
    abre(5);
    clica(2);
    grade_.modelo().setDados(registros(5));
    EXPECT_EQ(grade_.linhaAtiva(), -1);
    QSignalSpy ativou(&grade_, &Grade::linhaAtivada);
    grade_.setLinhaAtiva(2);
    EXPECT_EQ(ativou.size(), 1) << "row 2 of other data is another row";
}

TEST_F(GradeTest, copies_the_selected_rows_as_lines_of_cells) {
    abre(5);
    test::acrescenta(*dados_, "com\ttab e \"aspas\"");
    grade_.modelo().setColuna("ativo", {.oculta = true});
    grade_.modelo().setColuna("data", {.oculta = true});
    clica(1);
    clica(5, Qt::ControlModifier);
    tecla(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              QStringLiteral("linha 1\t1.5\t1\n\"com\ttab e \"\"aspas\"\"\"\t0.5\t0"));
}

TEST_F(GradeTest, copies_the_active_row_without_a_selection_and_nothing_without_both) {
    abre(3);
    QApplication::clipboard()->setText(QStringLiteral("antes"));
    tecla(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("antes"));
    grade_.setLinhaAtiva(2);
    EXPECT_EQ(grade_.textoParaCopia(), QStringLiteral("linha 2\t2.5\t2\t\t"));
}

TEST_F(GradeTest, shows_forty_thousand_findings_within_a_second) {
    const test::TempoDeProcessador tempo;
    abre(40000);
    grade_.viewport()->grab();
    EXPECT_LT(tempo.decorrido(), 1000 * test::folgaDaMedida);
}

TEST_F(GradeTest, follows_a_running_batch_without_effort) {
    abre(100000);
    const test::TempoDeProcessador tempo;
    for (int linha = 0; linha < 2000; ++linha) {
        grade_.setLinhaAtiva(linha);
        grade_.modelo().setImagem(linha, "nome", QStringLiteral("imgOK"));
        grade_.modelo().setValor(linha, "ativo", true);
        grade_.modelo().setMarca(linha, linha);
    }
    EXPECT_LT(tempo.decorrido(), 2000 * test::folgaDaMedida);
}

} // namespace
} // namespace tv
