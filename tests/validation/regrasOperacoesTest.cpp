#include "logging/LogFolder.h"
#include "platform/Clock.h"
#include "validation/PositionXml.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::element;
using test::Fields;
using test::findingsOf;
using test::Fragment;
using test::fragmentsOf;
using test::fundo;
using test::GlobalLogger;
using test::HeaderXml;
using test::occurrences;
using test::posicao;
using test::startLogger;
using test::TemporaryFolder;

constexpr const char* byParts = "O valor do patrimônio líquido não corresponde à fórmula: patLiq = "
                                "valorativos + valorreceber - valorpagar - "
                                "vlcotasemitir - vlcotasresgatar";
constexpr const char* byShares =
    "O valor do patrimônio líquido não corresponde à fórmula: patLiq = valorcota * quantidade";
constexpr const char* byWallet = "O valor do patrimônio líquido não corresponde à fórmula: patLiq = "
                                 "valorativos + valorreceber - valorpagar";
constexpr const char* byClass = "A classe da operação deve ser igual a classe da compromissada";

std::string carteira(const std::string& inside) {
    return "<carteira>" + inside + "</carteira>";
}

/// Cash that makes the declared assets right, so that only the rule under test speaks.
std::string cash(const std::string& valorativos) {
    return element("caixa", {{"saldo", valorativos}});
}

std::vector<std::string> descriptions(const std::vector<Fragment>& found) {
    std::vector<std::string> texts;
    texts.reserve(found.size());
    for (const Fragment& fragment : found) {
        texts.push_back(fragment.descricao);
    }
    return texts;
}

using Texts = std::vector<std::string>;

// --- equity of a fund

struct EquityRow {
    const char* name;
    HeaderXml header;
    Texts descriptions;
};

class EquityOfFundTest : public testing::TestWithParam<EquityRow> {};

TEST_P(EquityOfFundTest, BothFormulasAreTested) {
    const EquityRow& row = GetParam();
    const auto found = findingsOf(posicao(fundo(row.header.xml() + cash(row.header.valorativos))));
    EXPECT_EQ(descriptions(found), row.descriptions);
}

INSTANTIATE_TEST_SUITE_P(
    Table, EquityOfFundTest,
    testing::Values(
        EquityRow{"Zero", {}, {}},
        EquityRow{"Exact",
                  {.valorativos = "1000",
                   .valorreceber = "50",
                   .valorpagar = "30",
                   .vlcotasemitir = "15",
                   .vlcotasresgatar = "5",
                   .valorcota = "2.5",
                   .quantidade = "400",
                   .patliq = "1000"},
                  {}},
        EquityRow{"Computed1500",
                  {.valorativos = "1500", .valorcota = "1", .quantidade = "1000", .patliq = "1000"},
                  {}},
        EquityRow{"Computed1500And5",
                  {.valorativos = "1500.5", .valorcota = "1", .quantidade = "1000", .patliq = "1000"},
                  {byParts}},
        EquityRow{"Computed500",
                  {.valorativos = "500", .valorcota = "1", .quantidade = "1000", .patliq = "1000"},
                  {}},
        EquityRow{"Computed499",
                  {.valorativos = "499.99", .valorcota = "1", .quantidade = "1000", .patliq = "1000"},
                  {byParts}},
        EquityRow{"SharesAreOff",
                  {.valorativos = "1000", .valorcota = "2", .quantidade = "1000", .patliq = "1000"},
                  {byShares}},
        EquityRow{"SharesAreOffBy500",
                  {.valorativos = "1000", .valorcota = "1.5", .quantidade = "1000", .patliq = "1000"},
                  {}},
        EquityRow{"BothAreOff",
                  {.valorativos = "2000", .valorcota = "2", .quantidade = "1000", .patliq = "1000"},
                  {byParts, byShares}},
        EquityRow{"ReceivablesCountUp",
                  {.valorreceber = "501", .valorcota = "1", .quantidade = "501", .patliq = "501"},
                  {}},
        EquityRow{"ReceivablesMissing", {.valorreceber = "501"}, {byParts}},
        EquityRow{"PayablesMissing", {.valorpagar = "501"}, {byParts}},
        EquityRow{"SharesToIssueMissing", {.vlcotasemitir = "501"}, {byParts}},
        EquityRow{"SharesToRedeemMissing", {.vlcotasresgatar = "501"}, {byParts}},
        EquityRow{
            "EachOfTheOthersCountsDown",
            {.valorativos = "3000", .valorpagar = "1000", .vlcotasemitir = "1000", .vlcotasresgatar = "1000"},
            {}},
        EquityRow{"Negative", {.valorativos = "-1000", .patliq = "-1501"}, {byParts, byShares}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(RegrasOperacoesTest, EquityShowsTheDeclaredValue) {
    const auto found = findingsOf(posicao(fundo(HeaderXml{.cnpj = " 111 ", .patliq = "-1234.5"}.xml())));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0],
              (Fragment{"patliq", "-1234.50", "arquivoposicao_4_00.fundo.header.patliq", "111", byParts}));
    EXPECT_EQ(found[1],
              (Fragment{"patliq", "-1234.50", "arquivoposicao_4_00.fundo.header.patliq", "111", byShares}));
}

TEST(RegrasOperacoesTest, DeclaredValueIsShownWithTwoDecimalsAndNoGroups) {
    const auto found = findingsOf(posicao(fundo(HeaderXml{.patliq = "1234567.891"}.xml())));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].valor, "1234567.89");
}

TEST(RegrasOperacoesTest, FindingByteForByte) {
    const std::string carteiraXml =
        carteira(HeaderXml{.cnpj = "CART", .valorativos = "0", .patliq = "501"}.xml());
    EXPECT_EQ(fragmentsOf(posicao(carteiraXml)),
              "<RESULTADO lastElement='patliq' TAGvalor='501.00' "
              "path='arquivoposicao_4_00.carteira.header.patliq' keyValor='CART' errCode='-2147221503' "
              "strLabel='O valor do campo não corresponde à verificação entre campos'>\r\n"
              "<strDescription><![CDATA[" +
                  std::string(byWallet) + "]]></strDescription></RESULTADO>\r\n</TORVA>\r\n");
}

TEST(RegrasOperacoesTest, MissingOrUnreadableFieldOfAFundEndsBothTests) {
    const HeaderXml off{.patliq = "99999"};
    for (const auto& [name, value] : off.fields()) {
        if (name == "cnpj" || name == "valorativos") {
            continue; // the key, and what the sums need already
        }
        EXPECT_EQ(fragmentsOf(posicao(fundo(off.without(name)))), "") << name;
    }
    HeaderXml text = off;
    text.quantidade = "muitas";
    EXPECT_EQ(fragmentsOf(posicao(fundo(text.xml()))), "");
    text = off;
    text.vlcotasemitir = "";
    EXPECT_EQ(fragmentsOf(posicao(fundo(text.xml()))), "");
}

TEST(RegrasOperacoesTest, ProductBeyondTheRangeOfNumbersEndsTheRoutineBehindTheFirstTest) {
    const HeaderXml huge{.valorcota = "1e200", .quantidade = "1e200", .patliq = "99999"};
    EXPECT_EQ(descriptions(findingsOf(posicao(fundo(huge.xml())))), Texts{byParts});
}

// --- equity of a wallet

class EquityOfWalletTest : public testing::TestWithParam<EquityRow> {};

TEST_P(EquityOfWalletTest, OneFormulaIsTested) {
    const EquityRow& row = GetParam();
    const auto found = findingsOf(posicao(carteira(row.header.xml() + cash(row.header.valorativos))));
    EXPECT_EQ(descriptions(found), row.descriptions);
}

INSTANTIATE_TEST_SUITE_P(
    Table, EquityOfWalletTest,
    testing::Values(
        EquityRow{"Zero", {}, {}},
        EquityRow{
            "Exact", {.valorativos = "1000", .valorreceber = "50", .valorpagar = "30", .patliq = "1020"}, {}},
        EquityRow{"Computed1500", {.valorativos = "1500", .patliq = "1000"}, {}},
        EquityRow{"Computed1500And1", {.valorativos = "1500.01", .patliq = "1000"}, {byWallet}},
        EquityRow{"OffTheOtherWay", {.valorativos = "499.99", .patliq = "1000"}, {byWallet}},
        EquityRow{"ReceivablesMissing", {.valorreceber = "501"}, {byWallet}},
        EquityRow{"PayablesMissing", {.valorpagar = "501"}, {byWallet}},
        EquityRow{"SharesAreNotLookedAt",
                  {.valorativos = "1000",
                   .vlcotasemitir = "5000",
                   .vlcotasresgatar = "x",
                   .valorcota = "",
                   .quantidade = "1e999",
                   .patliq = "1000"},
                  {}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(RegrasOperacoesTest, WalletNeedsNoFieldsOfShares) {
    const Fields few{{"codcart", "CART"},
                     {"patliq", "501"},
                     {"valorativos", "0"},
                     {"valorreceber", "0"},
                     {"valorpagar", "0"}};
    EXPECT_EQ(descriptions(findingsOf(posicao(carteira(element("header", few))))), Texts{byWallet});
}

TEST(RegrasOperacoesTest, MissingFieldOfAWalletEndsTheTest) {
    const HeaderXml off{.patliq = "99999"};
    for (const char* name : {"valorreceber", "valorpagar", "patliq"}) {
        EXPECT_EQ(fragmentsOf(posicao(carteira(off.without(name)))), "") << name;
    }
}

TEST(RegrasOperacoesTest, OtherChildrenOfTheRootHaveNoEquity) {
    const std::string off = HeaderXml{.patliq = "99999"}.xml();
    EXPECT_EQ(fragmentsOf(posicao("<clube>" + off + "</clube>")), "");
    EXPECT_EQ(findingsOf(posicao("<FUNDO>" + off + "</FUNDO>")).size(), 2U);
    EXPECT_EQ(findingsOf(posicao("<Carteira>" + off + "</Carteira>")).size(), 1U);
    EXPECT_EQ(findingsOf(posicao("<fundo>" + off.substr(0, 1) + "HEADER" + off.substr(7, off.size() - 14) +
                                 "HEADER></fundo>"))
                  .size(),
              2U);
}

// --- class of an operation and of its commitment

struct ClassRow {
    const char* name;
    const char* inside; ///< Behind the values of the element.
    const char* shown;  ///< The finding's value, or null for none.
};

class ClassOfCommitmentTest : public testing::TestWithParam<ClassRow> {
protected:
    /// An element of value 0, so that its class changes no sum.
    static std::string zero(const std::string& tag, const std::string& inside) {
        return element(tag, {{"valorfindisp", "0"}, {"valorfinemgar", "0"}, {"tributos", "0"}}, inside);
    }
};

TEST_P(ClassOfCommitmentTest, MustEqualTheOperationsInThreeSections) {
    const ClassRow& row = GetParam();
    for (const char* secao : {"titpublico", "titprivado", "debenture"}) {
        const auto found =
            findingsOf(posicao(fundo(HeaderXml{.cnpj = "111"}.xml() + zero(secao, row.inside))));
        if (row.shown == nullptr) {
            EXPECT_EQ(found, std::vector<Fragment>()) << secao;
            continue;
        }
        EXPECT_EQ(found, (std::vector<Fragment>{
                             {"classeoperacao", row.shown,
                              "arquivoposicao_4_00.fundo." + std::string(secao) + ".classeoperacao", "111",
                              byClass}}))
            << secao;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, ClassOfCommitmentTest,
    testing::Values(
        ClassRow{"Equal",
                 "<compromisso><classecomp>C</classecomp></compromisso><classeoperacao>C</classeoperacao>",
                 nullptr},
        ClassRow{"EqualButForCase",
                 "<compromisso><classecomp>v</classecomp></compromisso><classeoperacao>V</classeoperacao>",
                 nullptr},
        ClassRow{
            "EqualButForBlanks",
            "<compromisso><classecomp>  C </classecomp></compromisso><classeoperacao> c</classeoperacao>",
            nullptr},
        ClassRow{"Different",
                 "<compromisso><classecomp>V</classecomp></compromisso><classeoperacao>C</classeoperacao>",
                 "C"},
        ClassRow{"ShownTrimmedInItsCase",
                 "<compromisso><classecomp>V</classecomp></compromisso><classeoperacao>  c </classeoperacao>",
                 "c"},
        ClassRow{"NoCommitment", "<classeoperacao>C</classeoperacao>", nullptr},
        ClassRow{"NoCommitmentWhateverTheClass", "<classeoperacao>xyz</classeoperacao>", nullptr},
        ClassRow{"NoCommitmentAndNoText", "<classeoperacao/>", nullptr},
        ClassRow{"CommitmentWithoutAClass", "<compromisso/><classeoperacao>C</classeoperacao>", "C"},
        ClassRow{
            "CommitmentWithOtherFields",
            "<compromisso><dtretorno>20240101</dtretorno></compromisso><classeoperacao>C</classeoperacao>",
            "C"},
        ClassRow{"CommitmentWithoutAClassAndNoText", "<compromisso/><classeoperacao> </classeoperacao>",
                 nullptr},
        ClassRow{"CommitmentWithAnEmptyClass",
                 "<compromisso><classecomp/></compromisso><classeoperacao>C</classeoperacao>", "C"},
        ClassRow{"NameOfTheClassInAnyCase",
                 "<compromisso><ClasseComp>C</ClasseComp></compromisso><classeoperacao>C</classeoperacao>",
                 nullptr},
        ClassRow{"FirstClassCounts",
                 "<compromisso><dt>1</dt><classecomp>C</classecomp><classecomp>V</classecomp></compromisso>"
                 "<classeoperacao>C</classeoperacao>",
                 nullptr},
        ClassRow{"NameOfTheCommitmentIsExact",
                 "<Compromisso><classecomp>V</classecomp></Compromisso><classeoperacao>C</classeoperacao>",
                 nullptr}),
    [](const auto& row) { return std::string(row.param.name); });

constexpr const char* wrongClass =
    "<compromisso><classecomp>V</classecomp></compromisso><classeoperacao>C</classeoperacao>";

const Fields& zeroValues() {
    static const Fields fields{{"valorfindisp", "0"}, {"valorfinemgar", "0"}, {"tributos", "0"}};
    return fields;
}

TEST(RegrasOperacoesTest, OtherSectionsHaveNoClassRule) {
    EXPECT_EQ(fragmentsOf(posicao(
                  fundo(HeaderXml{}.xml() + element("acoes", zeroValues(), wrongClass) +
                        element("opcoesacoes", {{"valorfinanceiro", "0"}, {"tributos", "0"}}, wrongClass) +
                        element("caixa", {{"saldo", "0"}}, wrongClass)))),
              "");
}

TEST(RegrasOperacoesTest, ClassRuleHoldsForWalletsAndAnyOtherChildOfTheRoot) {
    for (const char* tipo : {"carteira", "clube"}) {
        const std::string block = "<" + std::string(tipo) + ">" + HeaderXml{}.xml() +
                                  element("debenture", zeroValues(), wrongClass) + "</" + tipo + ">";
        const auto found = findingsOf(posicao(block));
        ASSERT_EQ(found.size(), 1U) << tipo;
        EXPECT_EQ(found[0].path, "arquivoposicao_4_00." + std::string(tipo) + ".debenture.classeoperacao");
    }
}

TEST(RegrasOperacoesTest, SectionNamesCountInLowerCase) {
    const auto found =
        findingsOf(posicao(fundo(HeaderXml{}.xml() + element("TitPublico", zeroValues(), wrongClass))));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].path, "arquivoposicao_4_00.fundo.titpublico.classeoperacao");
}

TEST(RegrasOperacoesTest, FindingsFollowTheOrderOfTheDocument) {
    const std::string header = HeaderXml{.patliq = "99999"}.xml();
    const std::string titulo = element("titpublico", zeroValues(), wrongClass);
    EXPECT_EQ(descriptions(findingsOf(posicao(fundo(header + titulo)))), (Texts{byParts, byShares, byClass}));
    EXPECT_EQ(descriptions(findingsOf(posicao(fundo(titulo + header)))), (Texts{byClass, byParts, byShares}));
}

TEST(RegrasOperacoesTest, ElementWithoutAClassEndsTheWalk) {
    const std::string wrong = element("titpublico", zeroValues(), wrongClass);
    const std::string without = element("titprivado", zeroValues());
    const std::string header = HeaderXml{.patliq = "99999"}.xml();
    // What was found before it stays, what stands behind it is not looked at, the next fund is.
    EXPECT_EQ(descriptions(findingsOf(
                  posicao(fundo(wrong + without + wrong + header) + fundo(HeaderXml{}.xml() + wrong)))),
              (Texts{byClass, byClass}));
}

TEST(RegrasOperacoesTest, UnreadableEquityEndsItsOwnTestOnly) {
    const std::string wrong = element("titpublico", zeroValues(), wrongClass);
    const std::string header = HeaderXml{.patliq = "99999"}.without("quantidade");
    EXPECT_EQ(descriptions(findingsOf(posicao(fundo(wrong + header + wrong)))), (Texts{byClass, byClass}));
}

TEST(RegrasOperacoesTest, ClassWithMarkupSpoilsItsFragment) {
    const std::string fragments = fragmentsOf(posicao(fundo(
        HeaderXml{}.xml() + element("titpublico", zeroValues(),
                                    "<compromisso/><classeoperacao>d'água &lt; &amp;</classeoperacao>"))));
    EXPECT_NE(fragments.find("TAGvalor='d'água < &' path="), std::string::npos) << fragments;
}

TEST(RegrasOperacoesTest, FailuresGoToTheLogUnderTheirRoutines) {
    const TemporaryFolder folder;
    const clock::Frozen now(clock::at(2024, 6, 28));
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, library::level::all));
    static_cast<void>(fragmentsOf(posicao(fundo(HeaderXml{}.without("quantidade")) +
                                          fundo(HeaderXml{}.xml() + element("debenture", zeroValues())))));
    const std::string log = folder.read("log20240628.txt");
    EXPECT_EQ(occurrences(log, "FATAL  \t\t\tclsValidador.verificaPatrimonio"), 1U) << log;
    EXPECT_EQ(occurrences(log, "FATAL  \t\tclsValidador.verificaOperacoes"), 1U) << log;
    EXPECT_EQ(occurrences(log, "[91]]"), 2U) << log;
}

} // namespace
} // namespace tv
