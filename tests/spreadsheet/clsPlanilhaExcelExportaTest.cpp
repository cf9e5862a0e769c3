// Documents out to workbooks.

#include "PlanilhasDeTeste.h"

#include <gmock/gmock.h>

namespace tv::test {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

const std::string grupo = "arquivoposicao_3_00"; // one of the layouts with funds below the root
const std::string sucesso = "informa Tramador Veldor: Exportação concluída com sucesso!";

std::string documento(const std::string& tag, const std::string& conteudo) {
    return "<?xml version='1.0' encoding='ISO-8859-1' ?>\r\n<" + tag + ">" + conteudo + "</" + tag + ">";
}

class Exporta : public PlanilhaTest {};

// --- which layouts have groups

struct Agrupamento {
    std::string tag;
    bool agrupado;
};

class TagsDosGrupos : public PlanilhaTest, public testing::WithParamInterface<Agrupamento> {};

TEST_P(TagsDosGrupos, DecideHowTheDocumentIsWalked) {
    const std::string& tag = GetParam().tag;
    EXPECT_EQ(clsPlanilhaExcel::isAgrupado(tag), GetParam().agrupado);
    exporta(tag, documento(tag, "<fundo><header><a>1</a></header></fundo>"));
    const std::vector<std::string> comSecao{"a", "1"};
    const std::vector<std::string> comRaiz{"header", "1"};
    EXPECT_EQ(folha(planilha("fundo", 0), GetParam().agrupado ? "header" : "fundo"),
              GetParam().agrupado ? comSecao : comRaiz);
    EXPECT_THAT(folha(planilha("fundo", 0), GetParam().agrupado ? "fundo" : "header"), ElementsAre("não há"));
}

INSTANTIATE_TEST_SUITE_P(
    Todas, TagsDosGrupos,
    testing::Values(Agrupamento{"arquivoposicao_3_00", true}, Agrupamento{"ArquivoPosicao_2_01", true},
                    Agrupamento{"arquivoposicao_4_01", true},
                    Agrupamento{"posicao_passivo_analitico_v100", true}, Agrupamento{"movimento_1_00", true},
                    Agrupamento{"movimento_2_00", true}, Agrupamento{"arquivoposicao_2_01", false},
                    Agrupamento{"ArquivoPosicao_3_00", false}, Agrupamento{"arquivoposicao_4_00", false},
                    Agrupamento{"MOVIMENTO_1_00", false}),
    [](const auto& linha) { return linha.param.tag; });

// --- a document's place in workbooks and sheets

TEST_F(Exporta, TwoFundsGiveTwoWorkbooksWithSheetsOfTheirOwn) {
    exporta(grupo, documento(grupo, "<fundo><header><cnpj>1</cnpj></header><caixa><v>5</v></caixa></fundo>"
                                    "<fundo><header><cnpj>2</cnpj></header></fundo>"));
    EXPECT_THAT(ultima->relato().planilhas,
                ElementsAre(planilha("fundo", 0).string(), planilha("fundo", 1).string()));
    EXPECT_THAT(folha(planilha("fundo", 0), "header"), ElementsAre("cnpj", "1"));
    EXPECT_THAT(folha(planilha("fundo", 0), "caixa"), ElementsAre("v", "5"));
    EXPECT_THAT(folha(planilha("fundo", 1), "header"), ElementsAre("cnpj", "2"));
    EXPECT_THAT(folha(planilha("fundo", 1), "caixa"), ElementsAre("não há"));
    EXPECT_EQ(pasta.count(), 3U);
}

TEST_F(Exporta, SheetsAreNamedInLowerCaseAndColumnsAsWrittenInAGroup) {
    exporta(
        grupo,
        documento(grupo, "<Fundo><caixa><Saldo>5</Saldo></caixa><caixa><Saldo>6</Saldo></caixa></Fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "caixa"), ElementsAre("Saldo", "5", "6"));
}

TEST_F(Exporta, AFlatLayoutGivesAWorkbookForEachRecordWithAllRecordsOfItsName) {
    exporta("plano", documento("plano", "<caixa><Saldo>5</Saldo><x>a</x></caixa><taxa><y>b</y></taxa>"
                                        "<caixa><Saldo>6</Saldo><x>c</x></caixa>"));
    EXPECT_THAT(folha(planilha("caixa", 0), "caixa"), ElementsAre("saldo|x", "5|a", "6|c"));
    EXPECT_THAT(folha(planilha("taxa", 1), "taxa"), ElementsAre("y", "b"));
    EXPECT_THAT(folha(planilha("caixa", 2), "caixa"), ElementsAre("saldo|x", "5|a", "6|c"));
    EXPECT_THAT(folha(planilha("caixa", 0), "taxa"), ElementsAre("não há"));
}

TEST_F(Exporta, AFlatLayoutLeavesTheCompromissoOut) {
    exporta("plano",
            documento("plano", "<a><percprovcred>1</percprovcred><compromisso><d>2</d></compromisso></a>"
                               "<a><percprovcred>3</percprovcred></a>"));
    // The first record names a column that the sheet lacks, and is lost.
    EXPECT_THAT(folha(planilha("a", 0), "a"), ElementsAre("percprovcred", "3"));
}

TEST_F(Exporta, LowerCaseOf201IsFlatAndTheOtherSpellingIsNot) {
    const std::string conteudo = "<fundo><header><a>1</a></header></fundo>";
    exporta("arquivoposicao_2_01", documento("arquivoposicao_2_01", conteudo), "baixa.xml");
    exporta("ArquivoPosicao_2_01", documento("ArquivoPosicao_2_01", conteudo), "alta.xml");
    EXPECT_THAT(folha(planilha("fundo", 0, "baixa"), "fundo"), ElementsAre("header", "1"));
    EXPECT_THAT(folha(planilha("fundo", 0, "alta"), "header"), ElementsAre("a", "1"));
}

TEST_F(Exporta, WorkbooksAreNamedAfterDocumentRootChildAndClock) {
    std::string raiz;
    for (int i = 0; i < 12; ++i) {
        raiz += i % 2 == 0 ? "<Fundo/>" : "<carteira/>";
    }
    exporta(grupo, documento(grupo, raiz), "a.xml.b.xls.xml");
    std::vector<std::string> esperadas;
    for (int i = 0; i < 12; ++i) {
        esperadas.push_back(planilha(i % 2 == 0 ? "fundo" : "carteira", i, "a.b").string());
    }
    EXPECT_EQ(ultima->relato().planilhas, esperadas);
}

TEST_F(Exporta, TheCounterGrowsBeyondThreeDigits) {
    std::string raiz;
    for (int i = 0; i < 1001; ++i) {
        raiz += "<f/>";
    }
    exporta(grupo, documento(grupo, raiz));
    EXPECT_EQ(ultima->relato().planilhas.back(), (pasta / "doc__f_1000_20240131_102030.xls").string());
    EXPECT_EQ(ultima->relato().planilhas.at(7), planilha("f", 7).string());
}

TEST_F(Exporta, ADocumentInCapitalsKeepsItsExtension) {
    exporta(grupo, documento(grupo, "<fundo/>"), "DOC.XML");
    EXPECT_THAT(ultima->relato().planilhas, ElementsAre((pasta / ("DOC.XML__fundo_" + sufixo(0))).string()));
}

// --- the fields of a compromisso

TEST_F(Exporta, CompromissoFieldsStandFlatBehindPercprovcred) {
    exporta(grupo,
            documento(grupo, "<fundo>"
                             "<t><a>1</a><percprovcred>2</percprovcred><compromisso><dtretorno>3</dtretorno>"
                             "<classecomp>4</classecomp></compromisso><z>5</z></t>"
                             "<t><a>6</a><compromisso><dtretorno>7</dtretorno><classecomp>8</classecomp>"
                             "</compromisso><percprovcred>9</percprovcred><z>10</z></t>"
                             "<t><a>11</a><percprovcred>12</percprovcred><z>13</z></t></fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a|percprovcred|dtretorno|classecomp|z",
                                                              "1|2|3|4|5", "6|9|7|8|10", "11|12|-|-|13"));
    EXPECT_THAT(ultima->relato().perdas, IsEmpty());
}

TEST_F(Exporta, CompromissoNamesComeFromTheFirstRecordThatHasOne) {
    exporta(grupo,
            documento(grupo,
                      "<fundo><t><percprovcred>1</percprovcred></t>"
                      "<t><percprovcred>2</percprovcred><compromisso><B>3</B></compromisso></t>"
                      "<t><percprovcred>4</percprovcred><compromisso><c>5</c></compromisso></t></fundo>"));
    // The third record names a column that the sheet lacks.
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("percprovcred|b", "1|-", "2|3"));
    EXPECT_EQ(ultima->relato().registrosPerdidos(), 1U);
}

TEST_F(Exporta, CompromissoWithoutPercprovcredInTheFirstRecordGetsNoColumns) {
    exporta(grupo, documento(grupo, "<fundo><t><a>1</a><compromisso><d>2</d></compromisso></t>"
                                    "<t><a>3</a></t></fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", "3"));
    EXPECT_EQ(ultima->relato().registrosPerdidos(), 1U);
}

TEST_F(Exporta, PercprovcredIsFoundInAnyCaseAndAnEmptyCompromissoAddsNothing) {
    exporta(grupo,
            documento(grupo,
                      "<fundo><t><PercProvCred>1</PercProvCred><compromisso/></t>"
                      "<u><PercProvCred>1</PercProvCred><compromisso><d>2</d></compromisso></u></fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("PercProvCred", "1"));
    EXPECT_THAT(folha(planilha("fundo", 0), "u"), ElementsAre("PercProvCred|d", "1|2"));
}

// --- records that are lost

TEST_F(Exporta, AFieldThatTheFirstRecordLacksLosesItsRecordSilently) {
    exporta(grupo, documento(grupo, "<fundo><t><a>1</a></t><t><a>2</a><b>3</b></t><t><a>4</a></t></fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", "1", "4"));
    EXPECT_THAT(falhas(), Each(HasSubstr("-> [[0]]"))); // nothing of it in the log
    EXPECT_EQ(tela.chamadas.back(), sucesso);
    ASSERT_THAT(ultima->relato().perdas, SizeIs(1));
    EXPECT_EQ(ultima->relato().perdas[0].secao, "t");
    EXPECT_EQ(ultima->relato().perdas[0].registros, 1U);
    EXPECT_EQ(ultima->relato().perdas[0].planilha, planilha("fundo", 0).string());
}

TEST_F(Exporta, ARecordWithoutChildrenIsPassedOver) {
    exporta(grupo, documento(grupo, "<fundo><t><a>1</a></t><t/><t><a>2</a></t></fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", "1", "2"));
    EXPECT_EQ(ultima->relato().registrosPerdidos(), 1U);
}

TEST_F(Exporta, AnApostropheLosesThatRecordAndOnlyThat) {
    exporta(grupo,
            documento(grupo, "<fundo><t><a>1</a></t><t><a>caixa d'agua</a></t><t><a>2</a></t></fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", "1", "2"));
    EXPECT_EQ(ultima->relato().registrosPerdidos(), 1U);
}

TEST_F(Exporta, TwoApostrophesSideBySideAreOne) {
    exporta(grupo, documento(grupo, "<fundo><t><a>caixa d''agua</a></t></fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", "caixa d'agua"));
}

TEST_F(Exporta, ATextBeyond255CharactersLosesItsRecord) {
    const std::string cabe = std::string(253, 'x') + "çã";
    exporta(grupo, "<?xml version='1.0' encoding='UTF-8'?><" + grupo + "><fundo><t><a>" + cabe +
                       "</a></t><t><a>" + cabe + "y</a></t></fundo></" + grupo + ">");
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", cabe));
}

TEST_F(Exporta, LossesOfOneReasonAreCountedTogether) {
    exporta(grupo,
            documento(grupo,
                      "<fundo><t><a>1</a></t><t><b>2</b></t><t><b>3</b></t><u><a>1</a></u><u><b>2</b></u>"
                      "</fundo><fundo><t><a>1</a></t><t><b>2</b></t></fundo>"));
    const auto& perdas = ultima->relato().perdas;
    ASSERT_THAT(perdas, SizeIs(3));
    EXPECT_EQ(perdas[0].secao, "t");
    EXPECT_EQ(perdas[0].registros, 2U);
    EXPECT_EQ(perdas[1].secao, "u");
    EXPECT_EQ(perdas[1].registros, 1U);
    EXPECT_EQ(perdas[2].planilha, planilha("fundo", 1).string());
    EXPECT_EQ(ultima->relato().registrosPerdidos(), 4U);
}

TEST_F(Exporta, ValuesGoOutAsTheyStand) {
    exporta(grupo, "<?xml version='1.0' encoding='UTF-8'?><" + grupo +
                       "><fundo><t><a> 007 </a><b>1&amp;2 &lt;x&gt;</b><c>ção – €</c><d/><e>x<!-- nada "
                       "-->y</e></t></fundo></" +
                       grupo + ">");
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a|b|c|d|e", " 007 |1&2 <x>|ção – €|-|xy"));
}

TEST_F(Exporta, CommentsAttributesAndOtherTextAreLeftOut) {
    exporta(grupo,
            documento(grupo,
                      "<!-- 1 --><fundo x='1'><!-- 2 --><t y='2'><!-- 3 --><a z='3'>4</a>texto</t><!-- 5 -->"
                      "<t><a>6</a></t></fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", "4", "6"));
    EXPECT_THAT(ultima->relato().perdas, IsEmpty());
}

// --- failures

TEST_F(Exporta, ADocumentThatCannotBeParsedEndsInTheSameMessage) {
    exporta(grupo, "<" + grupo + "><fundo>");
    EXPECT_THAT(tela.chamadas, ElementsAre("abre", "fecha", sucesso));
    EXPECT_THAT(falhas(),
                ElementsAre("clsPlanilhaExcel.abrirXML -> [Erro na abertura do arquivo![-2147221048]]",
                            "clsPlanilhaExcel.OpenPlan -> [[0]]"));
    EXPECT_THAT(ultima->relato().planilhas, IsEmpty());
    EXPECT_EQ(pasta.count(), 1U);
    ASSERT_TRUE(ultima->relato().falha);
    EXPECT_EQ(ultima->relato().falha->number(), clsPlanilhaExcel::erroAbertura);
    EXPECT_THAT(ultima->relato().falha->source(), Not(IsEmpty()));
}

TEST_F(Exporta, ADocumentThatIsNotThereEndsInTheSameMessage) {
    clsPlanilhaExcel planilha(&tela);
    planilha.tag = grupo;
    planilha.OpenPlan((pasta / "nada.xml").string(), "header|");
    EXPECT_THAT(tela.chamadas, ElementsAre("abre", "fecha", sucesso));
    EXPECT_THAT(falhas(), SizeIs(2));
    EXPECT_EQ(pasta.count(), 0U);
}

TEST_F(Exporta, AnotherRootOrNoChildGivesNoWorkbookAndTheSameMessage) {
    for (const std::string& xml :
         {documento("outro", "<fundo/>"), documento(grupo, ""), documento(grupo, "texto")}) {
        tela.chamadas.clear();
        exporta(grupo, xml);
        EXPECT_THAT(tela.chamadas, ElementsAre("abre", "fecha", sucesso)) << xml;
        EXPECT_EQ(pasta.count(), 1U);
        EXPECT_FALSE(ultima->relato().falha);
    }
    EXPECT_THAT(falhas(),
                ElementsAre("clsPlanilhaExcel.OpenPlan -> [[0]]", "clsPlanilhaExcel.OpenPlan -> [[0]]",
                            "clsPlanilhaExcel.OpenPlan -> [[0]]"));
}

TEST_F(Exporta, ASectionThatComesBackFailsOnceMoreAndLosesNothing) {
    exporta(grupo, documento(grupo, "<fundo><t><a>1</a></t><u><b>2</b></u><t><a>3</a></t></fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", "1", "3"));
    EXPECT_THAT(folha(planilha("fundo", 0), "u"), ElementsAre("b", "2"));
    const std::vector<std::string> linhas = falhas();
    ASSERT_THAT(linhas, SizeIs(4));
    EXPECT_EQ(linhas[0], "clsPlanilhaExcel.criarPlanilha -> [[0]]");
    EXPECT_EQ(linhas[1], "clsPlanilhaExcel.criarPlanilha -> [[0]]");
    EXPECT_THAT(linhas[2], StartsWith("clsPlanilhaExcel.criarPlanilha -> ["));
    EXPECT_THAT(linhas[2], Not(HasSubstr("[[0]]")));
    EXPECT_EQ(linhas[3], "clsPlanilhaExcel.OpenPlan -> [[0]]");
    EXPECT_THAT(ultima->relato().perdas, IsEmpty());
    EXPECT_EQ(tela.chamadas.back(), sucesso);
}

TEST_F(Exporta, ASheetThatCannotBeMadeStaysAbsentAndTheNextSectionGoesOn) {
    exporta(grupo,
            documento(grupo,
                      "<fundo><t><a>1</a><a>2</a></t><t><a>3</a></t><Alta><a>4</a></Alta><u><b>5</b></u>"
                      "</fundo>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("não há"));    // one column twice
    EXPECT_THAT(folha(planilha("fundo", 0), "alta"), ElementsAre("não há")); // no element of that name
    EXPECT_THAT(folha(planilha("fundo", 0), "u"), ElementsAre("b", "5"));
    const std::vector<std::string> linhas = falhas();
    ASSERT_THAT(linhas, SizeIs(4));
    EXPECT_THAT(linhas[1], HasSubstr("[91]"));
    EXPECT_THAT(linhas[2], HasSubstr("[[0]]"));
    const auto& perdas = ultima->relato().perdas;
    ASSERT_THAT(perdas, SizeIs(2));
    EXPECT_EQ(perdas[0].secao, "t");
    EXPECT_EQ(perdas[0].registros, 2U);
    EXPECT_EQ(perdas[1].secao, "alta");
    EXPECT_EQ(perdas[1].registros, 1U);
}

TEST_F(Exporta, TheSameSecondAndCounterWriteToTheSameWorkbook) {
    const std::string xml = documento(grupo, "<fundo><t><a>1</a></t><t><a>2</a></t></fundo>");
    exporta(grupo, xml);
    exporta(grupo, xml);
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", "1", "2"));
    const std::vector<std::string> linhas = falhas();
    ASSERT_THAT(linhas, SizeIs(4));
    EXPECT_THAT(linhas[2], StartsWith("clsPlanilhaExcel.criarPlanilha -> ["));
    EXPECT_THAT(linhas[2], Not(HasSubstr("[[0]]")));
    EXPECT_EQ(ultima->relato().registrosPerdidos(), 2U);
    EXPECT_EQ(tela.chamadas.back(), sucesso);
}

TEST_F(Exporta, AWorkbookThatCannotBeMadeEndsTheExportWithTheProgressWindowOpen) {
    std::filesystem::create_directory(planilha("fundo", 1));
    exporta(grupo, documento(grupo, "<fundo><t><a>1</a></t></fundo><fundo><t><a>2</a></t></fundo><fundo/>"));
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", "1"));
    EXPECT_FALSE(std::filesystem::exists(planilha("fundo", 2)));
    EXPECT_TRUE(tela.aberta());
    EXPECT_THAT(tela.chamadas, Not(Contains(sucesso)));
    EXPECT_THAT(tela.chamadas, Not(Contains("fecha")));
    EXPECT_THAT(ultima->relato().planilhas, ElementsAre(planilha("fundo", 0).string()));
    ASSERT_TRUE(ultima->relato().falha);
    EXPECT_EQ(falhas().back(), "clsPlanilhaExcel.OpenPlan -> [" + logText(*ultima->relato().falha) + "]");
}

TEST_F(Exporta, ATagThatIsNoNameEndsTheExportBeforeTheProgressWindow) {
    exporta("a b[", documento(grupo, "<fundo/>"));
    EXPECT_THAT(tela.chamadas, IsEmpty());
    EXPECT_THAT(falhas(), SizeIs(1));
    EXPECT_TRUE(ultima->relato().falha);
}

// --- log and progress

TEST_F(Exporta, AGoodExportLeavesALineForEachSheetAndOneForItself) {
    exporta(grupo, documento(grupo, "<fundo><t><a>1</a></t><u><b>2</b></u></fundo><fundo/>"));
    EXPECT_THAT(falhas(),
                ElementsAre("clsPlanilhaExcel.criarPlanilha -> [[0]]",
                            "clsPlanilhaExcel.criarPlanilha -> [[0]]", "clsPlanilhaExcel.OpenPlan -> [[0]]"));
}

TEST_F(Exporta, ShowsItsStagesInOrder) {
    exporta(grupo,
            documento(grupo, "<fundo><t><a>1</a><b>2</b></t><t><a>3</a><b>4</b></t></fundo><carteira/>"));
    const std::string primeira = planilha("fundo", 0).string();
    const std::string segunda = planilha("carteira", 1).string();
    const auto xml = [](const std::string& xls) { return xls.substr(0, xls.size() - 4) + ".xml"; };
    const std::string campo = "Exportando campos | Nome do campo: ";
    EXPECT_THAT(tela.chamadas, ElementsAre("abre", "max 2",
                                           "Exportando Arquivo XML: " + xml(primeira) +
                                               " | Nome do Arq. XLS: " + primeira + " | 0 | 2",
                                           "Criando Planilha | Planilha: t | 0 | 0", "max 1", "+1", "+1", //
                                           "max 1", campo + "a | 0 | 0", campo + "b | 0 | 0",             //
                                           "max 1", campo + "a | 0 | 0", campo + "b | 0 | 0",             //
                                           "+1",                                                          //
                                           "Exportando Arquivo XML: " + xml(segunda) +
                                               " | Nome do Arq. XLS: " + segunda + " | 1 | 2",
                                           "+1", "fecha", sucesso));
    EXPECT_FALSE(tela.aberta());
}

TEST_F(Exporta, NeedsNoScreen) {
    const std::filesystem::path arquivo =
        pasta.file("doc.xml", documento(grupo, "<fundo><t><a>1</a></t></fundo>"));
    clsPlanilhaExcel semTela;
    semTela.tag = grupo;
    semTela.OpenPlan(arquivo.string(), "");
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), ElementsAre("a", "1"));
}

// --- helpers of the windows

TEST_F(Exporta, GetSecoesJoinsTheNamesBelowTheRoot) {
    const std::string arquivo = pasta.file("a.xml", documento(grupo, "<fundo/><Carteira/><fundo/>")).string();
    EXPECT_EQ(clsPlanilhaExcel::getSecoes(arquivo, grupo), "fundo|Carteira|fundo|");
    EXPECT_EQ(clsPlanilhaExcel::getSecoes(arquivo, "outro"), "");
    EXPECT_THAT(falhas(), IsEmpty());
    EXPECT_EQ(clsPlanilhaExcel::getSecoes(pasta.file("b.xml", "<a>").string(), grupo), "");
    ASSERT_THAT(falhas(), SizeIs(1));
    EXPECT_THAT(falhas()[0], HasSubstr("Erro na leitura do XML["));
}

TEST_F(Exporta, PathsChangeEveryExtensionWithItsCase) {
    EXPECT_EQ(clsPlanilhaExcel::caminhoPlanilha("/a.xml/b.xml.XML"), "/a.xls/b.xls.XML");
    EXPECT_EQ(clsPlanilhaExcel::caminhoXml("/a.xls/b.XLS"), "/a.xml/b.XLS");
}

// --- cost

TEST_F(Exporta, SectionsThatAlternateCostNoMoreThanThoseInARow) {
    constexpr int registros = 10000;
    std::string conteudo;
    for (int i = 0; i < registros; ++i) {
        conteudo += "<t><a>" + std::to_string(i) + "</a></t><u><b>1</b></u>";
    }
    tela.anotaPassos = false;
    const auto inicio = std::chrono::steady_clock::now();
    exporta(grupo, documento(grupo, "<fundo>" + conteudo + "</fundo>"));
    EXPECT_LT(std::chrono::steady_clock::now() - inicio,
              std::chrono::seconds(20)); // looking records up each time takes minutes
    EXPECT_THAT(folha(planilha("fundo", 0), "t"), SizeIs(registros + 1));
    EXPECT_THAT(ultima->relato().perdas, IsEmpty());
}

} // namespace
} // namespace tv::test
