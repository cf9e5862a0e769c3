#include "composer/HistoricoEdicao.h"

#include "platform/Error.h"

#include <gtest/gtest.h>

namespace tv::test {
namespace {

PassoDeEdicao passo(std::size_t linha, int depois, std::string grade = "grade") {
    return {std::move(grade), "", {{linha, 0, Value(0), Value(depois)}}};
}

TEST(HistoricoDeEdicao, StepsGoBackAndForth) {
    HistoricoEdicao historico;
    EXPECT_FALSE(historico.podeDesfazer());
    EXPECT_THROW(historico.desfaz(), Error);
    historico.registra(passo(1, 10));
    historico.registra(passo(1, 20));
    EXPECT_EQ(historico.desfaz().celulas[0].depois, Value(20));
    EXPECT_EQ(historico.desfaz().celulas[0].depois, Value(10));
    EXPECT_FALSE(historico.podeDesfazer());
    EXPECT_EQ(historico.refaz().celulas[0].depois, Value(10));
    EXPECT_TRUE(historico.podeDesfazer());
    EXPECT_TRUE(historico.podeRefazer());
}

TEST(HistoricoDeEdicao, NewStepEndsWhatCouldBeMadeAgain) {
    HistoricoEdicao historico;
    historico.registra(passo(1, 10));
    historico.desfaz();
    historico.registra(passo(2, 20));
    EXPECT_FALSE(historico.podeRefazer());
    EXPECT_THROW(historico.refaz(), Error);
}

TEST(HistoricoDeEdicao, StepWithoutCellsIsNone) {
    HistoricoEdicao historico;
    historico.registra({"grade", "", {}});
    EXPECT_FALSE(historico.podeDesfazer());
}

TEST(HistoricoDeEdicao, RowsThatAreGoneAreForgotten) {
    HistoricoEdicao historico;
    historico.registra(passo(1, 10));
    historico.registra(passo(2, 20));
    historico.registra(passo(1, 30, "outra"));
    historico.esquece("grade", {1});
    EXPECT_EQ(historico.desfaz().chaveGrade, "outra");
    EXPECT_EQ(historico.desfaz().celulas[0].linha, 2U);
    EXPECT_FALSE(historico.podeDesfazer());
    historico.esquece("grade", {2});
    EXPECT_EQ(historico.refaz().chaveGrade, "outra");
    historico.limpa();
    EXPECT_FALSE(historico.podeDesfazer());
    EXPECT_FALSE(historico.podeRefazer());
}

} // namespace
} // namespace tv::test
