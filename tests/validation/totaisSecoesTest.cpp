#include "validation/AssetSections.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tv {
namespace {

using test::element;
using test::farOff;
using test::Fields;
using test::findingsOf;
using test::Fragment;
using test::fragmentsOf;
using test::fundo;
using test::headerWith;
using test::money;
using test::neutral;
using test::posicao;
using test::Section;
using test::sections;
using test::statement;
using test::statementOf;
using test::table;

// --- the section table, row by row

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

TEST(TotaisSecoesTest, SoldBondOf100LowersTheSumUnlessItIsCommitted) {
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

TEST(TotaisSecoesTest, OnlyADirectChildIsAClassOrACommitment) {
    const Fields fields{{"valorfindisp", "100"}, {"valorfinemgar", "0"}, {"tributos", "0"}};
    const auto found = statementOf(
        element("acoes", fields, "<outro><classeoperacao>V</classeoperacao></outro>") +
        element("acoes", fields, "<classeoperacao>V</classeoperacao><outro><compromisso/></outro>") +
        element("acoes", fields, "<ClasseOperacao>V</ClasseOperacao>"));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[4].valor, "100.00"); // 100 without a class, -100 sold, 100 without a class
}

// --- values

TEST(TotaisSecoesTest, SwapWithTheLargerPassiveEndIsNegative) {
    const auto found = statementOf(
        element("swap", {{"vlmercadoativo", "10"}, {"vlmercadopassivo", "25.5"}, {"tributos", "1"}}));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[11].valor, "-16.50");
}

TEST(TotaisSecoesTest, BothQuantitiesOfSharesTakeTheSamePrice) {
    const auto found = statementOf(element(
        "cotas", {{"qtdisponivel", "3"}, {"qtgarantia", "2"}, {"puposicao", "10.5"}, {"tributos", "0.5"}}));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[13].valor, "52.00");
}

TEST(TotaisSecoesTest, FixedIncomeForwardReadsAFieldOfItsOwn) {
    // A termorf with the field of its neighbours lacks its own, and that ends the fund.
    EXPECT_EQ(fragmentsOf(posicao(fundo(headerWith(farOff) +
                                        element("termorf", {{"valorfinanceiro", "1"}, {"tributos", "0"}})))),
              "");
}

TEST(TotaisSecoesTest, NumbersTakeBlanksASignAndAnExponent) {
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

TEST(TotaisSecoesTest, OtherElementsAddNothing) {
    const std::string passedOver = element("provisao", {{"valor", "1000"}}) +
                                   element("despesas", {{"txadm", "1000"}}) +
                                   "<!-- comentário -->texto solto" + element("corretagem", {});
    EXPECT_EQ(fragmentsOf(posicao(fundo(headerWith("0") + passedOver))), "");
}

TEST(TotaisSecoesTest, SectionsInsideOfOthersAddNothing) {
    EXPECT_EQ(fragmentsOf(posicao(
                  fundo(headerWith("0") + "<grupo>" + element("caixa", {{"saldo", "1000"}}) + "</grupo>"))),
              "");
}

// --- the tolerance

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

TEST(TotaisSecoesTest, GrandTotalIsShownBeforeItsRounding) {
    // 0.004 and 0.004 give 0.008, shown as 0.01; each for itself shows 0.00.
    const auto found = statementOf(element("caixa", {{"saldo", "0.004"}}) +
                                   element("imoveis", {{"valorcontabil", "0.004"}}));
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[12].valor, "0.00");
    EXPECT_EQ(found[19].valor, "0.01");
}

TEST(TotaisSecoesTest, NegativeValuesShowTheirSign) {
    const auto found = statementOf(element("caixa", {{"saldo", "-1500.01"}}), "-100");
    ASSERT_EQ(found.size(), statement);
    EXPECT_EQ(found[0].valor, "-100.00");
    EXPECT_EQ(found[12].valor, "-1500.01");
    EXPECT_EQ(found[19].valor, "-1500.01");
}

} // namespace
} // namespace tv
