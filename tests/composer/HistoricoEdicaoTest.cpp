#include "composer/HistoricoEdicao.h"

#include "platform/Error.h"

#include <gtest/gtest.h>

namespace tv::test {
namespace {

PassoDeEdicao passo(std::size_t linha, int depois, std::string grade = "grade") {
    return {std::move(grade), "", {{linha, 0, Value(0), Value(depois)}}, {}, {}};
}

TEST(HistoricoDeEdicao, StepsGoBackAndForth) {
    HistoricoEdicao historico;
    EXPECT_EQ(historico.aDesfazer(), nullptr);
    EXPECT_THROW(historico.desfaz(), Error);
    historico.registra(passo(1, 10));
    historico.registra(passo(1, 20));
    EXPECT_EQ(historico.desfaz().celulas[0].depois, Value(20));
    EXPECT_EQ(historico.desfaz().celulas[0].depois, Value(10));
    EXPECT_EQ(historico.aDesfazer(), nullptr);
    EXPECT_EQ(historico.refaz().celulas[0].depois, Value(10));
    EXPECT_NE(historico.aDesfazer(), nullptr);
    EXPECT_NE(historico.aRefazer(), nullptr);
}

TEST(HistoricoDeEdicao, NewStepEndsWhatCouldBeMadeAgain) {
    HistoricoEdicao historico;
    historico.registra(passo(1, 10));
    historico.desfaz();
    historico.registra(passo(2, 20));
    EXPECT_EQ(historico.aRefazer(), nullptr);
    EXPECT_THROW(historico.refaz(), Error);
}

TEST(HistoricoDeEdicao, StepWithoutCellsIsNone) {
    HistoricoEdicao historico;
    historico.registra({"grade", "", {}, {}, {}});
    EXPECT_EQ(historico.aDesfazer(), nullptr);
}

TEST(HistoricoDeEdicao, RowsAloneMakeAStepToo) {
    HistoricoEdicao historico;
    historico.registra({"grade", "", {}, {{"grade", 3, {}}}, {}});
    historico.registra({"grade", "", {}, {}, {{"outra", 4, {}}}});
    ASSERT_NE(historico.aDesfazer(), nullptr);
    EXPECT_EQ(historico.aDesfazer()->removidas.size(), 1U);
    EXPECT_EQ(historico.aRefazer(), nullptr);
    historico.desfaz();
    EXPECT_EQ(historico.aRefazer()->removidas.size(), 1U);
    EXPECT_EQ(historico.aDesfazer()->incluidas.size(), 1U);
}

TEST(HistoricoDeEdicao, AStepKeepsWhatIsEnteredForTheWayBack) {
    HistoricoEdicao historico;
    historico.registra({"grade", "", {}, {{"grade", 3, {}}}, {}});
    historico.desfaz().incluidas[0].valores = {Value(7)};
    EXPECT_EQ(historico.refaz().incluidas[0].valores, std::vector<Value>{Value(7)});
    historico.limpa();
    EXPECT_EQ(historico.aDesfazer(), nullptr);
    EXPECT_EQ(historico.aRefazer(), nullptr);
}

} // namespace
} // namespace tv::test
