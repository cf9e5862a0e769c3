#include "logging/LogFolder.h"
#include "platform/Clock.h"
#include "validation/PositionXml.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace tv {
namespace {

using test::element;
using test::Fields;
using test::findingsOf;
using test::Fragment;
using test::fragmentsOf;
using test::fundo;
using test::GlobalLogger;
using test::headerWith;
using test::HeaderXml;
using test::occurrences;
using test::posicao;
using test::startLogger;
using test::TemporaryFolder;

constexpr std::size_t sections = 18;
constexpr std::size_t statement = 20; ///< Findings of one failed check.

/// A section of the table: what makes the value of one element, and whether its class counts.
struct Section {
    const char* tag;
    Fields fields;
    double valor;
    bool comClasse;
    const char* rotulo;
    const char* descricao;
};

const std::array<Section, sections>& table() {
    static const std::array<Section, sections> rows{{
        {"titpublico",
         {{"valorfindisp", "1000.50"}, {"valorfinemgar", "200.25"}, {"tributos", "0.75"}},
         1200.00,
         true,
         "Total Tit.Publico",
         "Somatória total de Títulos Públicos"},
        {"titprivado",
         {{"valorfindisp", "2000"}, {"valorfinemgar", "300"}, {"tributos", "20"}},
         2280,
         true,
         "Total Tit.Privado",
         "Somatória total de Títulos Privados"},
        {"debenture",
         {{"valorfindisp", "3000"}, {"valorfinemgar", "400"}, {"tributos", "30"}},
         3370,
         true,
         "Total Debenture",
         "Somatória total de Debentures"},
        {"acoes",
         {{"valorfindisp", "4000"}, {"valorfinemgar", "500"}, {"tributos", "40"}},
         4460,
         true,
         "Total Ações",
         "Somatória total de Ações"},
        {"opcoesacoes",
         {{"valorfinanceiro", "5000"}, {"tributos", "50"}},
         4950,
         true,
         "Total Opções Ações",
         "Somatória total de Opções Ações"},
        {"opcoesderiv",
         {{"valorfinanceiro", "6000"}, {"tributos", "60"}},
         5940,
         true,
         "Total Opções Derivativos",
         "Somatória total de Opções Derivativos"},
        {"opcoesflx",
         {{"valorfinanceiro", "7000"}, {"tributos", "70"}},
         6930,
         true,
         "Total Opções Flexiveis",
         "Somatória total de Opções Flexiveis"},
        {"termorv",
         {{"valorfinanceiro", "8000"}, {"tributos", "80"}},
         7920,
         false,
         "Total Renda Variavel",
         "Somatória total de Termo de Renda Variavel"},
        {"termorf",
         {{"valorfin", "9000"}, {"tributos", "90"}},
         8910,
         false,
         "Total Renda Fixa",
         "Somatória total de Termo de Renda Fixa"},
        {"futuros",
         {{"vlajuste", "10000"}, {"tributos", "100"}},
         9900,
         false,
         "Total Futuros",
         "Somatória total de Futuros"},
        {"swap",
         {{"vlmercadoativo", "11000"}, {"vlmercadopassivo", "1000"}, {"tributos", "110"}},
         9890,
         false,
         "Total Swap",
         "Somatória total de Swap"},
        {"caixa", {{"saldo", "12000"}}, 12000, false, "Total Caixa", "Somatória total de Caixa"},
        {"cotas",
         {{"qtgarantia", "10"}, {"puposicao", "1.5"}, {"qtdisponivel", "8000"}, {"tributos", "5"}},
         12010,
         false,
         "Total Cotas",
         "Somatória total de Cotas"},
        {"imoveis",
         {{"valorcontabil", "14000"}},
         14000,
         false,
         "Total Imoveis",
         "Somatória total de Imoveis"},
        {"opcoesmoedasotc",
         {{"valorfinanceiro", "15000"}, {"tributos", "150"}},
         14850,
         true,
         "Total Opções Moedas OTC",
         "Somatória total de Opções Moedas OTC"},
        {"forwardsmoedas",
         {{"valorfinanceiro", "16000"}, {"tributos", "160"}},
         15840,
         false,
         "Total Forwards Moedas",
         "Somatória total de Forwards Moedas"},
        {"participacoes",
         {{"valorfinanceiro", "17000"}},
         17000,
         false,
         "Total Participações",
         "Somatória total de Participações"},
        {"fidc", {{"valorfinanceiro", "18000"}}, 18000, false, "Total FIDC", "Somatória total de FIDC"},
    }};
    return rows;
}

std::string money(double value) {
    std::array<char, 64> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.2f", value));
    return text.data();
}

/// The class rule of the operations wants a class in these three sections; it is no matter of the sums.
bool needsClass(std::string_view tag) {
    return tag == "titpublico" || tag == "titprivado" || tag == "debenture";
}

/// An element of a section, of class "C" where one is needed.
std::string neutral(const Section& section, const std::string& inside = "") {
    return element(section.tag, section.fields,
                   inside + (needsClass(section.tag) ? "<classeoperacao>C</classeoperacao>" : ""));
}

std::size_t indexOf(const Section& section) {
    return static_cast<std::size_t>(&section - table().data());
}

/// A declared value that is off by far, so that the statement of sums comes and can be read.
const std::string farOff = "900000000";

std::vector<Fragment> statementOf(const std::string& sectionsXml, const std::string& declared = farOff) {
    return findingsOf(posicao(fundo(headerWith(declared) + sectionsXml)));
}

// --- the section table, row by row
// -----------------------------------------------------------------------------

class TotalOfSectionTest : public testing::TestWithParam<std::size_t> {
protected:
    const Section& section = table().at(GetParam());
    /// The section's sum, and that no other section has one.
    static std::string sumAt(const std::vector<Fragment>& found, std::size_t index) {
        if (found.size() != statement) {
            return "(" + std::to_string(found.size()) + " findings)";
        }
        for (std::size_t i = 0; i < sections; ++i) {
            if (i != index && found[i + 1].valor != "0.00") {
                return "(" + found[i + 1].lastElement + " is " + found[i + 1].valor + ")";
            }
        }
        return found[index + 1].valor;
    }
    std::string sumOf(const std::string& xml) const { return sumAt(statementOf(xml), GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Sections, TotalOfSectionTest, testing::Range(std::size_t{0}, sections),
                         [](const auto& row) { return std::string(table().at(row.param).tag); });

TEST_P(TotalOfSectionTest, ValueOfOneElement) {
    EXPECT_EQ(sumOf(neutral(section)), money(section.valor));
}

TEST_P(TotalOfSectionTest, ValuesOfSeveralElementsAddUp) {
    EXPECT_EQ(sumOf(neutral(section) + neutral(section) + neutral(section)), money(3 * section.valor));
}

TEST_P(TotalOfSectionTest, TotalIsTheSumAlone) {
    const auto found = statementOf(neutral(section));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found.back().valor, money(section.valor));
}

TEST_P(TotalOfSectionTest, ClassIsAppliedWhereTheTableSaysSo) {
    const std::string vendida = element(section.tag, section.fields, "<classeoperacao>V</classeoperacao>");
    EXPECT_EQ(sumOf(vendida), money(section.comClasse ? -section.valor : section.valor));
    const std::string tomada = element(section.tag, section.fields, "<classeoperacao>T</classeoperacao>");
    EXPECT_EQ(sumOf(tomada), money(section.comClasse ? 0 : section.valor));
}

TEST_P(TotalOfSectionTest, SumThatEqualsTheHeaderPasses) {
    EXPECT_EQ(fragmentsOf(posicao(fundo(headerWith(money(section.valor)) + neutral(section)))), "");
}

TEST_P(TotalOfSectionTest, NameCountsInLowerCase) {
    std::string xml = neutral(section);
    const std::string tag = section.tag;
    std::string upper = tag;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return c >= 'a' ? char(c - 32) : c; });
    xml.replace(1, tag.size(), upper);
    xml.replace(xml.size() - 1 - tag.size(), tag.size(), upper);
    EXPECT_EQ(sumOf(xml), money(section.valor));
}

TEST_P(TotalOfSectionTest, MissingFieldEndsTheFund) {
    for (std::size_t i = 0; i < section.fields.size(); ++i) {
        Fields fields = section.fields;
        fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(i));
        const std::string xml = posicao(fundo(headerWith(farOff) + element(section.tag, fields)));
        EXPECT_EQ(fragmentsOf(xml), "") << "without " << section.fields[i].first;
    }
}

TEST_P(TotalOfSectionTest, FieldThatIsNoNumberEndsTheFund) {
    for (std::size_t i = 0; i < section.fields.size(); ++i) {
        for (const char* text : {"", "  ", "abc", "1,5", "12 34", "1.2.3", "10x", "1e999"}) {
            Fields fields = section.fields;
            fields[i].second = text;
            const std::string xml = posicao(fundo(headerWith(farOff) + element(section.tag, fields)));
            EXPECT_EQ(fragmentsOf(xml), "") << section.fields[i].first << " is '" << text << "'";
        }
    }
}

// --- classes
// ---------------------------------------------------------------------------------------------------

struct ClassRow {
    const char* name;
    const char* texto; ///< Null for an element without a class.
    double semCompromisso;
    double comCompromisso;
};

class ClassOfOperationTest : public testing::TestWithParam<ClassRow> {};

TEST_P(ClassOfOperationTest, DecidesHowAnElementCounts) {
    const ClassRow& row = GetParam();
    const std::string classe =
        row.texto == nullptr ? "" : "<classeoperacao>" + std::string(row.texto) + "</classeoperacao>";
    const Fields fields{{"valorfindisp", "100"}, {"valorfinemgar", "0"}, {"tributos", "0"}};
    const auto sum = [&](const std::string& inside) {
        const auto found = statementOf(element("acoes", fields, inside));
        return found.size() == statement ? found[4].valor : "(" + std::to_string(found.size()) + " findings)";
    };
    EXPECT_EQ(sum(classe), money(row.semCompromisso));
    EXPECT_EQ(sum(classe + "<compromisso/>"), money(row.comCompromisso));
    EXPECT_EQ(sum("<compromisso><classecomp>C</classecomp></compromisso>" + classe),
              money(row.comCompromisso));
}

INSTANTIATE_TEST_SUITE_P(Table, ClassOfOperationTest,
                         testing::Values(ClassRow{"None", nullptr, 100, 100}, ClassRow{"V", "V", -100, 0},
                                         ClassRow{"D", "D", 100, 100}, ClassRow{"T", "T", 0, 0},
                                         ClassRow{"C", "C", 100, 100},
                                         ClassRow{"BlanksAroundV", "  V ", -100, 0},
                                         ClassRow{"BlanksAroundC", " C ", 100, 100},
                                         ClassRow{"LowerV", "v", 0, 0}, ClassRow{"LowerC", "c", 0, 0},
                                         ClassRow{"LowerD", "d", 0, 0}, ClassRow{"LowerT", "t", 0, 0},
                                         ClassRow{"Unknown", "X", 0, 0}, ClassRow{"Two", "CV", 0, 0},
                                         ClassRow{"Empty", "", 0, 0}, ClassRow{"Blank", " ", 0, 0}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(TotaisAtivosTest, SoldBondOf100LowersTheSumUnlessItIsCommitted) {
    const Fields fields{{"valorfindisp", "100"}, {"valorfinemgar", "0"}, {"tributos", "0"}};
    const std::string inteiro = element("caixa", {{"saldo", "1000"}});
    const auto total = [&](const std::string& inside) {
        return statementOf(inteiro + element("titpublico", fields, inside)).at(statement - 1).valor;
    };
    EXPECT_EQ(total("<classeoperacao>V</classeoperacao>"), "900.00");
    EXPECT_EQ(
        total("<compromisso><classecomp>V</classecomp></compromisso><classeoperacao>V</classeoperacao>"),
        "1000.00");
}

TEST(TotaisAtivosTest, OnlyADirectChildIsAClassOrACommitment) {
    const Fields fields{{"valorfindisp", "100"}, {"valorfinemgar", "0"}, {"tributos", "0"}};
    const auto found = statementOf(
        element("acoes", fields, "<outro><classeoperacao>V</classeoperacao></outro>") +
        element("acoes", fields, "<classeoperacao>V</classeoperacao><outro><compromisso/></outro>") +
        element("acoes", fields, "<ClasseOperacao>V</ClasseOperacao>"));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[4].valor, "100.00"); // 100 without a class, -100 sold, 100 without a class
}

// --- values
// ----------------------------------------------------------------------------------------------------

TEST(TotaisAtivosTest, SwapWithTheLargerPassiveEndIsNegative) {
    const auto found = statementOf(
        element("swap", {{"vlmercadoativo", "10"}, {"vlmercadopassivo", "25.5"}, {"tributos", "1"}}));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[11].valor, "-16.50");
}

TEST(TotaisAtivosTest, BothQuantitiesOfSharesTakeTheSamePrice) {
    const auto found = statementOf(element(
        "cotas", {{"qtdisponivel", "3"}, {"qtgarantia", "2"}, {"puposicao", "10.5"}, {"tributos", "0.5"}}));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[13].valor, "52.00");
}

TEST(TotaisAtivosTest, FixedIncomeForwardReadsAFieldOfItsOwn) {
    // A termorf with the field of its neighbours lacks its own, and that ends the fund.
    EXPECT_EQ(fragmentsOf(posicao(fundo(headerWith(farOff) +
                                        element("termorf", {{"valorfinanceiro", "1"}, {"tributos", "0"}})))),
              "");
}

TEST(TotaisAtivosTest, NumbersTakeBlanksASignAndAnExponent) {
    for (const auto& [texto, valor] : Fields{{" 100 ", "100.00"},
                                             {"+100", "100.00"},
                                             {"-100", "-100.00"},
                                             {"1e2", "100.00"},
                                             {"1.5E+2", "150.00"},
                                             {".5", "0.50"},
                                             {"5.", "5.00"}}) {
        const auto found = statementOf(element("caixa", {{"saldo", texto}}));
        ASSERT_EQ(found.size(), statement) << texto;
        EXPECT_EQ(found[12].valor, valor) << texto;
    }
}

TEST(TotaisAtivosTest, OtherElementsAddNothing) {
    const std::string passedOver = element("provisao", {{"valor", "1000"}}) +
                                   element("despesas", {{"txadm", "1000"}}) +
                                   "<!-- comentário -->texto solto" + element("corretagem", {});
    EXPECT_EQ(fragmentsOf(posicao(fundo(headerWith("0") + passedOver))), "");
}

TEST(TotaisAtivosTest, SectionsInsideOfOthersAddNothing) {
    EXPECT_EQ(fragmentsOf(posicao(
                  fundo(headerWith("0") + "<grupo>" + element("caixa", {{"saldo", "1000"}}) + "</grupo>"))),
              "");
}

// --- the tolerance
// ---------------------------------------------------------------------------------------------

struct ToleranceRow {
    const char* declared;
    const char* total;
    bool passes;
};

class ToleranceTest : public testing::TestWithParam<ToleranceRow> {};

TEST_P(ToleranceTest, DifferenceOfExactly500Passes) {
    const ToleranceRow& row = GetParam();
    const std::string xml =
        posicao(fundo(headerWith(row.declared) + element("caixa", {{"saldo", row.total}})));
    EXPECT_EQ(findingsOf(xml).size(), row.passes ? 0 : statement) << row.declared << " " << row.total;
}

INSTANTIATE_TEST_SUITE_P(
    Table, ToleranceTest,
    testing::Values(ToleranceRow{"1000.00", "1000.00", true}, ToleranceRow{"1000.00", "1500.00", true},
                    ToleranceRow{"1000.00", "1500.01", false}, ToleranceRow{"1000.00", "500.00", true},
                    ToleranceRow{"1000.00", "499.99", false}, ToleranceRow{"-1000.00", "-1500.00", true},
                    ToleranceRow{"-1000.00", "-1500.01", false}, ToleranceRow{"0", "-500", true},
                    ToleranceRow{"0", "-500.01", false},
                    // The total is rounded to cents before it is compared, ties to even.
                    ToleranceRow{"1000.00", "1500.004", true}, ToleranceRow{"1000.00", "1500.005", true},
                    ToleranceRow{"1000.00", "1500.006", false}, ToleranceRow{"1000.00", "1500.015", false},
                    // The declared value is not.
                    ToleranceRow{"999.999", "1500.00", false}));

TEST(TotaisAtivosTest, GrandTotalIsShownBeforeItsRounding) {
    // 0.004 and 0.004 give 0.008, shown as 0.01; each for itself shows 0.00.
    const auto found = statementOf(element("caixa", {{"saldo", "0.004"}}) +
                                   element("imoveis", {{"valorcontabil", "0.004"}}));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[12].valor, "0.00");
    EXPECT_EQ(found[19].valor, "0.01");
}

TEST(TotaisAtivosTest, NegativeValuesShowTheirSign) {
    const auto found = statementOf(element("caixa", {{"saldo", "-1500.01"}}), "-100");
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[0].valor, "-100.00");
    EXPECT_EQ(found[12].valor, "-1500.01");
    EXPECT_EQ(found[19].valor, "-1500.01");
}

// --- the statement
// ---------------------------------------------------------------------------------------------

TEST(TotaisAtivosTest, StatementNamesTheHeaderEachSectionAndTheTotalInOrder) {
    std::string all;
    double total = 0;
    for (const Section& section : table()) {
        all += neutral(section);
        total += section.valor;
    }
    const auto found = findingsOf(posicao(fundo(headerWith("1") + all)));
    ASSERT_EQ(found.size(), statement);
    const std::string key = "94000001000180";
    EXPECT_EQ(found[0],
              (Fragment{"valorativos", "1.00", "arquivoposicao_4_00.fundo.header.valorativos ", key,
                        "O valor dos ativos do header não corresponde à soma dos ativos das seções"}));
    for (const Section& section : table()) {
        EXPECT_EQ(found[indexOf(section) + 1],
                  (Fragment{section.rotulo, money(section.valor),
                            "arquivoposicao_4_00.fundo." + std::string(section.tag) + ".valortotal", key,
                            section.descricao}));
    }
    EXPECT_EQ(found[19], (Fragment{"Total Geral", money(total),
                                   "arquivoposicao_4_00.fundo.totalgeral.valortotal", key, "TOTAL GERAL"}));
}

TEST(TotaisAtivosTest, StatementByteForByte) {
    const auto line = [](const std::string& rotulo, const std::string& valor, const std::string& fim,
                         const std::string& descricao) {
        return "<RESULTADO lastElement='" + rotulo + "' TAGvalor='" + valor +
               "' path='arquivoposicao_4_00.fundo" + fim +
               "' keyValor='94000001000180' errCode='-2147221503' strLabel='O valor do campo não corresponde "
               "à "
               "verificação entre campos'><strDescription><![CDATA[" +
               descricao + "]]></strDescription></RESULTADO>\r\n";
    };
    std::string expected = line("valorativos", "501.00", ".header.valorativos ",
                                "O valor dos ativos do header não corresponde à soma dos ativos das seções");
    for (const Section& section : table()) {
        expected +=
            line(section.rotulo, "0.00", "." + std::string(section.tag) + ".valortotal", section.descricao);
    }
    expected += line("Total Geral", "0.00", ".totalgeral.valortotal", "TOTAL GERAL") + "</TORVA>\r\n";
    EXPECT_EQ(fragmentsOf(posicao(fundo(headerWith("501")))), expected);
}

TEST(TotaisAtivosTest, LargeValuesHaveNoGroupSeparators) {
    const auto found = statementOf(element("caixa", {{"saldo", "1234567890123.45"}}), "0.5");
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[0].valor, "0.50");
    EXPECT_EQ(found[12].valor, "1234567890123.45");
}

TEST(TotaisAtivosTest, WalletsHaveTheirOwnPaths) {
    const auto found = findingsOf(posicao("<carteira>" + headerWith("501") + "</carteira>"));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[0].path, "arquivoposicao_4_00.carteira.header.valorativos ");
    EXPECT_EQ(found[1].path, "arquivoposicao_4_00.carteira.titpublico.valortotal");
}

TEST(TotaisAtivosTest, EveryChildOfTheRootIsAddedUpUnderItsName) {
    const auto found = findingsOf(posicao("<Clube>" + headerWith("501") + "</Clube>"));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[1].path, "arquivoposicao_4_00.clube.titpublico.valortotal");
}

TEST(TotaisAtivosTest, KeyIsTheFirstChildOfTheHeaderWhateverItsName) {
    const std::string header = "<header><codigo>  CART 01  </codigo>" + headerWith("501").substr(8);
    const auto found = findingsOf(posicao("<carteira>" + header + "</carteira>"));
    ASSERT_EQ(found.size(), statement);
    for (const Fragment& fragment : found) {
        EXPECT_EQ(fragment.chave, "CART 01");
    }
}

TEST(TotaisAtivosTest, SecondHeaderTakesThePlaceOfTheFirst) {
    const std::string first = HeaderXml{.cnpj = "111", .valorativos = "900000"}.xml();
    const std::string second = HeaderXml{.cnpj = "222", .valorativos = "1000"}.xml();
    const std::string caixa = element("caixa", {{"saldo", "1600"}});
    // What each header says of its equity is a matter of its own.
    auto found = findingsOf(posicao(fundo(first + caixa + second)));
    ASSERT_GE(found.size(), statement);
    EXPECT_EQ(found[0].valor, "1000.00");
    EXPECT_EQ(found[0].chave, "222");
    found = findingsOf(posicao(fundo(second + caixa + first)));
    ASSERT_GE(found.size(), statement);
    EXPECT_EQ(found[0].valor, "900000.00");
    EXPECT_EQ(found[0].chave, "111");
}

TEST(TotaisAtivosTest, WithoutAHeaderNothingIsDeclared) {
    const auto found = findingsOf(posicao(fundo(element("caixa", {{"saldo", "501"}}))));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[0].valor, "0.00");
    EXPECT_EQ(found[0].chave, "");
    EXPECT_EQ(fragmentsOf(posicao(fundo(element("caixa", {{"saldo", "500"}})))), "");
}

TEST(TotaisAtivosTest, TwoFundsGiveFortyFindingsInOrderEachWithItsEnd) {
    const std::string one = fundo(HeaderXml{
        .cnpj = "111", .valorativos = "1000", .valorcota = "1", .quantidade = "1000", .patliq = "1000"}
                                      .xml());
    const std::string two = fundo(HeaderXml{
        .cnpj = "222", .valorativos = "2000", .valorcota = "1", .quantidade = "2000", .patliq = "2000"}
                                      .xml());
    const auto found = findingsOf(posicao(one + two));
    ASSERT_EQ(found.size(), 2 * statement);
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i].chave, i < statement ? "111" : "222") << i;
    }
    EXPECT_EQ(found[0].lastElement, "valorativos");
    EXPECT_EQ(found[statement].lastElement, "valorativos");
    EXPECT_EQ(occurrences(fragmentsOf(posicao(one + two)), "</RESULTADO>\r\n</TORVA>\r\n"), 2U);
}

// --- which files
// -----------------------------------------------------------------------------------------------

TEST(TotaisAtivosTest, OnlyLayoutsOfTheseVersionsHaveTotals) {
    struct Row {
        const char* tag;
        bool hasTotals;
    };
    for (const Row& row : {Row{"arquivoposicao_4_01", true},
                           {"arquivoposicao_4_00", true},
                           {"ARQUIVOPOSICAO_4_01", true},
                           {"ArquivoPosicao_4_00_teste", true},
                           {"x4_01", true},
                           {"arquivoposicao_4_02", false},
                           {"arquivoposicao_3_01", false},
                           {"arquivoposicao", false},
                           {"arquivoposicao_401", false}}) {
        EXPECT_EQ(findingsOf(posicao(fundo(headerWith("501")), row.tag), row.tag).size(),
                  row.hasTotals ? statement : 0)
            << row.tag;
    }
}

TEST(TotaisAtivosTest, RootUnderAnotherNameHasNoChildrenToCheck) {
    EXPECT_EQ(fragmentsOf(posicao(fundo(headerWith("501")), "arquivoposicao_4_00"), "arquivoposicao_4_01"),
              "");
    EXPECT_EQ(fragmentsOf(posicao(fundo(headerWith("501")), "Arquivoposicao_4_01"), "arquivoposicao_4_01"),
              "");
}

TEST(TotaisAtivosTest, EmptyDocumentGivesNoFinding) {
    std::string fragments;
    RegrasEntreCampos(fragments).verificaArquivo(XmlDocument(), "arquivoposicao_4_01");
    EXPECT_EQ(fragments, "");
}

TEST(TotaisAtivosTest, FragmentsAreAppended) {
    XmlDocument document;
    ASSERT_TRUE(document.loadXML(posicao(fundo(headerWith("501")))));
    std::string fragments = "antes";
    RegrasEntreCampos(fragments).verificaArquivo(document, "arquivoposicao_4_01");
    EXPECT_EQ(fragments.substr(0, 15), "antes<RESULTADO");
}

// --- failures
// --------------------------------------------------------------------------------------------------

TEST(TotaisAtivosTest, HeaderWithoutItsValueEndsTheFundAndTheNextOneIsStillChecked) {
    const std::string broken = HeaderXml{.cnpj = "111"}.without("valorativos");
    const std::string caixa = element("caixa", {{"saldo", "501"}});
    const auto found = findingsOf(posicao(fundo(broken + caixa) + fundo(headerWith("0") + caixa)));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[0].chave, "94000001000180");
}

TEST(TotaisAtivosTest, HeaderValueThatIsNoNumberEndsTheFund) {
    for (const char* text : {"", " ", "abc", "1.000,00", "1,000.00"}) {
        EXPECT_EQ(fragmentsOf(posicao(fundo(HeaderXml{.valorativos = text, .patliq = "99999"}.xml()))), "")
            << text;
    }
}

TEST(TotaisAtivosTest, FailureOfTheSumsKeepsTheOperationsFromBeingChecked) {
    const std::string badEquity = HeaderXml{.patliq = "99999"}.xml();
    EXPECT_EQ(findingsOf(posicao(fundo(badEquity))).size(), 2U);
    EXPECT_EQ(fragmentsOf(posicao(fundo(badEquity + element("caixa", {{"saldo", "x"}})))), "");
}

TEST(TotaisAtivosTest, OperationsAreCheckedBehindTheTotalsOfEachFund) {
    const std::string header = HeaderXml{.valorativos = "501", .patliq = "99999"}.xml();
    const auto found = findingsOf(posicao(fundo(header)));
    ASSERT_EQ(found.size(), statement + 2);
    EXPECT_EQ(found[statement].lastElement, "patliq");
}

TEST(TotaisAtivosTest, SumBeyondTheRangeOfNumbersEndsTheFund) {
    const std::string huge = element("caixa", {{"saldo", "1.7e308"}});
    EXPECT_EQ(fragmentsOf(posicao(fundo(headerWith("0") + huge + huge))), "");
    // The same within one element, and between two sections.
    EXPECT_EQ(fragmentsOf(posicao(fundo(headerWith("0") + element("swap", {{"vlmercadoativo", "1.7e308"},
                                                                           {"vlmercadopassivo", "-1.7e308"},
                                                                           {"tributos", "0"}})))),
              "");
    EXPECT_EQ(fragmentsOf(posicao(
                  fundo(headerWith("0") + huge + element("imoveis", {{"valorcontabil", "1.7e308"}})))),
              "");
    EXPECT_EQ(fragmentsOf(posicao(fundo(HeaderXml{.valorativos = "-1.7e308"}.xml() + huge))), "");
}

TEST(TotaisAtivosTest, FailuresGoToTheLog) {
    const TemporaryFolder folder;
    const clock::Frozen now(clock::at(2024, 6, 28));
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, library::level::all));
    static_cast<void>(fragmentsOf(posicao(fundo(headerWith("0") + element("caixa", {})) +
                                          fundo(headerWith("0") + element("caixa", {{"saldo", "x"}})))));
    const std::string log = folder.read("log20240628.txt");
    EXPECT_EQ(occurrences(log, "FATAL  \tclsValidador.verificaAtivos"), 2U) << log;
    EXPECT_EQ(occurrences(log, "[91]]"), 1U) << log;
    EXPECT_EQ(occurrences(log, "[13]]"), 1U) << log;
}

} // namespace
} // namespace tv
