#include "composer/passos.h"

#include "../platform/Throws.h"
#include "Layouts.h"
#include "composer/RegrasLinha.h"
#include "composer/fundos.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* cnpj = "94000001000180";

/// One fund with two rows in a detail section, in a layout whose sections lie straight below it.
class Passos : public testing::Test {
protected:
    Passos() {
        documento.abrir(layoutDireto());
        fundo = inclui("passivo_header", "cnpj", Value(cnpj));
        documento.arvore.seleciona("skCONST_RAIZ,0001,cotista,passivo_cotista");
        fundos::treeFundos_Click(documento);
        primeira = inclui("passivo_cotista", "codigo", Value("a"));
        segunda = inclui("passivo_cotista", "codigo", Value("b"));
        documento.estado.salvo = true;
    }
    std::size_t inclui(const char* chave, const char* coluna, const Value& valor) {
        GradeSecao& grade = documento.grade(chave);
        const auto nova = regras.addRow(grade, std::nullopt);
        grade.dados->set(coluna, valor);
        grade.dados->Update();
        regras.grid_AfterRowUpdate(grade, *nova.linha);
        return *nova.linha;
    }
    RecordSet& cotistas() const { return *documento.grade("passivo_cotista").dados; }
    std::vector<std::string> codigos() const {
        std::vector<std::string> textos;
        const auto dados = cotistas().Clone();
        for (; !dados->EOF_(); dados->MoveNext()) {
            textos.push_back(defaultText(dados->get("codigo")));
        }
        return textos;
    }

    Documento documento;
    RegrasLinha regras{documento};
    std::size_t fundo = 0;
    std::size_t primeira = 0;
    std::size_t segunda = 0;
};

TEST_F(Passos, CellsGoBackAndForthWithoutMovingTheGridsCursor) {
    PassoDeEdicao passo{"passivo_cotista",
                        "",
                        {{primeira, 0, Value("a"), Value("x")}, {segunda, 0, Value("b"), Value("y")}},
                        {},
                        {}};
    cotistas().MoveTo(segunda);
    EXPECT_THAT(passos::refaz(documento, passo).mudadas, ElementsAre(primeira, segunda));
    EXPECT_THAT(codigos(), ElementsAre("x", "y"));
    EXPECT_FALSE(documento.estado.salvo);
    EXPECT_THAT(passos::desfaz(documento, passo).mudadas, ElementsAre(primeira, segunda));
    EXPECT_THAT(codigos(), ElementsAre("a", "b"));
    EXPECT_EQ(cotistas().currentRow(), segunda);
    EXPECT_EQ(cotistas().RecordCount(), 2U) << "under the fund's filter";
}

TEST_F(Passos, AnAddedRowGoesAndComesBackAsItWas) {
    PassoDeEdicao passo{"passivo_cotista", "", {}, {{"passivo_cotista", segunda, {}}}, {}};
    EXPECT_THAT(passos::desfaz(documento, passo).devolvidas, IsEmpty());
    EXPECT_THAT(codigos(), ElementsAre("a"));
    EXPECT_THAT(passos::refaz(documento, passo).devolvidas, ElementsAre(segunda));
    EXPECT_THAT(codigos(), ElementsAre("a", "b"));
    EXPECT_EQ(*cotistas().cell(segunda, cotistas().columnIndex("rowMaster")), Value(1));
}

TEST_F(Passos, AnAddedMasterTakesItsFundFromTheTree) {
    PassoDeEdicao passo{"passivo_header", "", {}, {{"passivo_header", fundo, {}}}, {}};
    documento.selecionaNo("kCONST_RAIZ");
    passos::desfaz(documento, passo);
    EXPECT_TRUE(documento.arvore.raiz()->filhos.empty());
    EXPECT_THAT(passos::refaz(documento, passo).devolvidas, ElementsAre(fundo));
    EXPECT_EQ(*documento.grade("passivo_header").dados->cell(fundo, 0), Value(cnpj));
}

TEST_F(Passos, RemovedRowsOfAllGridsComeBackInTheirPlaces) {
    documento.selecionaNo("kCONST_RAIZ");
    fundos::treeFundos_Click(documento);
    GradeSecao& header = documento.grade("passivo_header");
    regras.grid_BeforeRowsDeleted(header, {fundo});
    PassoDeEdicao passo{"passivo_header", "", {}, {}, regras.linhasQueSaem(header, {fundo})};
    header.dados->MoveTo(fundo);
    header.dados->Delete();
    regras.grid_AfterRowsDeleted(header);
    ASSERT_THAT(codigos(), IsEmpty());
    documento.estado.salvo = true;

    EXPECT_THAT(passos::desfaz(documento, passo).devolvidas, ElementsAre(fundo)) << "the grid's own";
    EXPECT_THAT(codigos(), ElementsAre("a", "b"));
    EXPECT_EQ(header.dados->Clone()->RecordCount(), 1U);
    EXPECT_FALSE(documento.estado.salvo);
    cotistas().Filter("rowMaster = 1");
    EXPECT_EQ(cotistas().RecordCount(), 2U);

    passos::refaz(documento, passo);
    EXPECT_THAT(codigos(), IsEmpty());
    EXPECT_EQ(header.dados->Clone()->RecordCount(), 0U);
    EXPECT_NE(documento.arvore.fundo("passivo_header", 1), nullptr) << "as after the deletion itself";
}

TEST_F(Passos, RowsThatAreGoneArePassedOver) {
    cotistas().MoveTo(primeira);
    cotistas().Delete();
    PassoDeEdicao passo{"passivo_cotista",
                        "",
                        {{primeira, 0, Value("a"), Value("x")}, {segunda, 0, Value("b"), Value("y")}},
                        {{"passivo_cotista", primeira, {}}},
                        {}};
    EXPECT_THAT(passos::desfaz(documento, passo).mudadas, ElementsAre(segunda));
    PassoDeEdicao estranho{"nenhuma", "", {}, {}, {}};
    EXPECT_EQ(errorOf([&] { passos::desfaz(documento, estranho); }), errc::invalidCall);
}

} // namespace
} // namespace tv::test
