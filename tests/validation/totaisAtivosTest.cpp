#include "logging/LogFolder.h"
#include "platform/Clock.h"
#include "validation/AssetSections.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::element;
using test::findingsOf;
using test::Fragment;
using test::fragmentsOf;
using test::fundo;
using test::GlobalLogger;
using test::headerWith;
using test::HeaderXml;
using test::indexOf;
using test::money;
using test::neutral;
using test::occurrences;
using test::posicao;
using test::Section;
using test::startLogger;
using test::statement;
using test::statementOf;
using test::table;
using test::TemporaryFolder;

// --- the statement

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
