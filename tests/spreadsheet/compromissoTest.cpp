// What becomes of headers and of the fields of a compromisso on their way back.

#include "ImportacaoDeTeste.h"

#include <gmock/gmock.h>

namespace tv::test {
namespace {

class ImportaCompromisso : public Importa {};

TEST_F(ImportaCompromisso, AHeaderWithTwoRowsGivesTheFirst) {
    planilhaCom("header", {"a", "dtretorno", "classecomp"}, {{"1", "2", std::nullopt}, {"3", "4", "5"}});
    // Every field of it is written, those of a compromisso too.
    EXPECT_EQ(importa(grupo, pasta / "x_fundo.xls"),
              comGrupo(grupo,
                       "<header>\r\n<a>1</a>\r\n<dtretorno>2</dtretorno>\r\n<classecomp></classecomp>\r\n"
                       "</header>\r\n"));
}

TEST_F(ImportaCompromisso, AHeaderCanHaveACompromisso) {
    planilhaCom("header", {"dtretorno", "classecomp"}, {{"1", "2"}});
    EXPECT_EQ(importa(comCompromisso, pasta / "x_fundo.xls"),
              comGrupo(comCompromisso, "<header>\r\n<compromisso>\r\n<dtretorno>1</dtretorno>\r\n"
                                       "<classecomp>2</classecomp>\r\n</compromisso>\r\n</header>\r\n"));
}

const std::vector<std::string> colunasDoCompromisso{"a", "dtretorno", "taxa", "classecomp", "classeoperacao"};

TEST_F(ImportaCompromisso, CompromissoIsMadeAnewRoundItsColumns) {
    planilhaCom("t", colunasDoCompromisso,
                {{"1", "2", std::nullopt, "3", "4"},
                 {"5", "6", "7", std::nullopt, "8"},
                 {"9", std::nullopt, "10", "11", "12"}});
    EXPECT_EQ(
        importa(comCompromisso, pasta / "x_fundo.xls"),
        comGrupo(
            comCompromisso,
            "<t>\r\n<a>1</a>\r\n<compromisso>\r\n<dtretorno>2</dtretorno>\r\n<taxa></taxa>\r\n"
            "<classecomp>3</classecomp>\r\n</compromisso>\r\n<classeoperacao>4</classeoperacao>\r\n</t>\r\n"
            "<t>\r\n<a>5</a>\r\n<classeoperacao>8</classeoperacao>\r\n</t>\r\n"
            "<t>\r\n<a>9</a>\r\n<compromisso>\r\n<dtretorno></dtretorno>\r\n<taxa>10</taxa>\r\n"
            "<classecomp>11</classecomp>\r\n</compromisso>\r\n<classeoperacao>12</classeoperacao>\r\n</"
            "t>\r\n"));
}

TEST_F(ImportaCompromisso, OnOtherLayoutsTheCompromissoStandsFlatOrIsLeftOut) {
    planilhaCom("t", colunasDoCompromisso, {{"1", "2", "x", "3", "4"}, {"5", "6", "7", std::nullopt, "8"}});
    EXPECT_EQ(
        importa("arquivoposicao_4_01", pasta / "x_fundo.xls"),
        comGrupo(
            "arquivoposicao_4_01",
            "<t>\r\n<a>1</a>\r\n<dtretorno>2</dtretorno>\r\n<taxa>x</taxa>\r\n<classecomp>3</classecomp>\r\n"
            "<classeoperacao>4</classeoperacao>\r\n</t>\r\n"
            "<t>\r\n<a>5</a>\r\n<classeoperacao>8</classeoperacao>\r\n</t>\r\n"));
}

TEST_F(ImportaCompromisso, ARowWithoutClassecompLosesItsRangeOnAFlatLayoutToo) {
    planilhaCom("fundo", colunasDoCompromisso, {{"5", "6", "7", std::nullopt, "8"}});
    EXPECT_EQ(importa("plano", pasta / "x_fundo.xls"),
              declaracao +
                  "<plano>\r\n<fundo>\r\n<a>5</a>\r\n<classeoperacao>8</classeoperacao>\r\n</fundo>\r\n"
                  "</plano>\r\n");
}

TEST_F(ImportaCompromisso, WithoutClasseoperacaoTheRangeGoesToTheLastColumn) {
    planilhaCom("t", {"dtretorno", "classecomp", "z"}, {{"1", "2", std::nullopt}, {"1", std::nullopt, "3"}});
    EXPECT_EQ(importa(comCompromisso, pasta / "x_fundo.xls"),
              comGrupo(comCompromisso,
                       "<t>\r\n</t>\r\n"
                       "<t>\r\n<compromisso>\r\n<dtretorno>1</dtretorno>\r\n<classecomp></classecomp>\r\n"
                       "</compromisso>\r\n<z>3</z>\r\n</t>\r\n"));
}

TEST_F(ImportaCompromisso, WithoutDtretornoThereIsNoRange) {
    planilhaCom("t", {"a", "classecomp", "classeoperacao"}, {{"1", std::nullopt, "2"}});
    EXPECT_EQ(importa(comCompromisso, pasta / "x_fundo.xls"),
              comGrupo(comCompromisso, "<t>\r\n<a>1</a>\r\n<classecomp></classecomp>\r\n"
                                       "<classeoperacao>2</classeoperacao>\r\n</t>\r\n"));
}

TEST_F(ImportaCompromisso, TheRangeIsFoundInAnyCaseAndTheGroupInSmallLettersOnly) {
    planilhaCom("t", {"DtRetorno", "ClasseComp", "ClasseOperacao"},
                {{"1", "2", "3"}, {"1", std::nullopt, "3"}});
    EXPECT_EQ(importa(comCompromisso, pasta / "x_fundo.xls"),
              comGrupo(comCompromisso, "<t>\r\n<DtRetorno>1</DtRetorno>\r\n<ClasseComp>2</ClasseComp>\r\n"
                                       "<ClasseOperacao>3</ClasseOperacao>\r\n</"
                                       "t>\r\n<t>\r\n<ClasseOperacao>3</ClasseOperacao>\r\n</t>\r\n"));
}

} // namespace
} // namespace tv::test
