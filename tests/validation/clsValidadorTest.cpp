#include "validation/clsValidador.h"
#include "platform/Clock.h"
#include "platform/Turns.h"
#include "validation/ValidationFolder.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tv {
namespace {

using test::codes;
using test::GlobalLogger;
using test::Lines;
using test::occurrences;
using test::placeBehind;
using test::startLogger;
using test::summaries;
using test::ValidationFolder;

std::string header(const std::string& cnpj, const std::string& dt = "20240628") {
    return "<header><cnpj>" + cnpj + "</cnpj><dt>" + dt + "</dt></header>";
}

std::string titulo(const std::string& cod, const std::string& valor = "1") {
    return "<titulo><cod>" + cod + "</cod><valor>" + valor + "</valor></titulo>";
}

std::string posicao(const std::string& inside) {
    return "<posicao>" + inside + "</posicao>";
}

std::string fundo(const std::string& inside) {
    return "<fundo>" + inside + "</fundo>";
}

class ValidadorTest : public testing::Test {
protected:
    /// Checks a document by the layout `posicao`, each under a name of its own.
    bool check(const std::string& document) { return check(document, folder.posicao()); }
    bool check(const std::string& document, const std::shared_ptr<const clsBoleto>& boleto) {
        return validador.isValido(folder.write("doc" + std::to_string(++documents) + ".xml", document),
                                  boleto);
    }
    const Resultados& found() const { return *validador.getResultado(); }

    ValidationFolder folder;
    clsValidador validador;
    int documents = 0;
};

// --- what a run gives

TEST_F(ValidadorTest, NewObjectHasNoFindings) {
    ASSERT_NE(validador.getResultado(), nullptr);
    EXPECT_TRUE(found().empty());
    EXPECT_TRUE(validador.getAvisos().empty());
    EXPECT_FALSE(validador.arquivoIlegivel());
}

TEST_F(ValidadorTest, FileWithoutFaultsIsValid) {
    EXPECT_TRUE(check(posicao(fundo(header("111") + titulo("LFT") + titulo("0001")))));
    EXPECT_EQ(summaries(found()), Lines());
    EXPECT_TRUE(validador.getAvisos().empty());
}

TEST_F(ValidadorTest, BlankPathOrMissingLayoutGivesFalseWithoutAFindingAndWithoutAParse) {
    EXPECT_FALSE(check(posicao(fundo(header("111", "x")))));
    const auto before = validador.getResultado();
    for (const char* path : {"", " ", "     "}) {
        EXPECT_FALSE(validador.isValido(path, folder.posicao())) << "'" << path << "'";
        EXPECT_EQ(validador.getResultado(), before);
    }
    EXPECT_FALSE(validador.isValido(folder.write("ok.xml", posicao(fundo(header("111")))), nullptr));
    EXPECT_EQ(validador.getResultado(), before);

    clsValidador novo;
    EXPECT_FALSE(novo.isValido("", folder.posicao()));
    EXPECT_TRUE(novo.getResultado()->empty());
}

TEST_F(ValidadorTest, ListStaysWithTheCallerWhenTheNextRunStarts) {
    EXPECT_FALSE(check(posicao(fundo(header("111", "20240231")))));
    const auto first = validador.getResultado();
    const Lines before = summaries(*first);
    EXPECT_EQ(before.size(), 1U);
    EXPECT_TRUE(check(posicao(fundo(header("222")))));
    EXPECT_TRUE(found().empty());
    EXPECT_NE(validador.getResultado(), first);
    EXPECT_EQ(summaries(*first), before);
    EXPECT_EQ(first->front().ValorCampoChave(), "111");
}

TEST_F(ValidadorTest, FindingsHoldTheLayout) {
    const auto boleto = folder.posicao();
    EXPECT_FALSE(check(posicao(fundo(header("111", "20240231"))), boleto));
    ASSERT_EQ(found().size(), 1U);
    EXPECT_EQ(found()[0].getBoleto(), boleto);
    EXPECT_EQ(found()[0].getSecao(), "Cabeçalho");
    EXPECT_EQ(found()[0].getCampo(), "Data");
}

TEST_F(ValidadorTest, FileNameKeepsItsBlanks) {
    const auto path = folder.write(" com brancos ", posicao(fundo(header("111", "20240231"))));
    EXPECT_FALSE(validador.isValido(path, folder.posicao()));
    EXPECT_EQ(codes(found()), Lines{"80040002"});
}

TEST_F(ValidadorTest, UserInterfaceGetsTurnsWhoseFailuresAreNoMatterOfTheFile) {
    int turns = 0;
    turns::setHandler([&] {
        ++turns;
        throw std::runtime_error("a window broke");
    });
    std::string many;
    for (int i = 0; i < 20'000; ++i) {
        many += titulo("LFT");
    }
    const bool valid = check(posicao(fundo(header("111") + many)));
    turns::setHandler({});
    EXPECT_TRUE(valid) << summaries(found()).size();
    EXPECT_GT(turns, 0);
}

// --- values and the layout's rules

TEST_F(ValidadorTest, InvalidValueMakesOneFinding) {
    const std::string document = posicao(fundo(header("111") + titulo("XXX")));
    EXPECT_FALSE(check(document));
    EXPECT_EQ(summaries(found()),
              Lines{"80040002 " + placeBehind(document, "XXX") + " posicao.fundo.titulo.cod [XXX]"});
    const clsResultado& finding = found()[0];
    EXPECT_EQ(finding.TAGname(), "Código");
    EXPECT_EQ(finding.Titulo(), "Valor não pertence ao Domínio");
    EXPECT_EQ(finding.Descricao(), "O valor do campo não é válido");
    EXPECT_TRUE(finding.isDominio());
}

TEST_F(ValidadorTest, SchemaAndLayoutCanBothSpeakOfOneElement) {
    const std::string document = posicao(fundo(header("111", "2024-06")));
    EXPECT_FALSE(check(document));
    const std::string place = placeBehind(document, "2024-06");
    EXPECT_EQ(summaries(found()), (Lines{"C00CE184 " + place + " posicao.fundo.header.dt [2024-06]",
                                         "80040002 " + place + " posicao.fundo.header.dt [2024-06]"}));
    EXPECT_EQ(found()[0].Titulo(), "Valor não pertence ao Domínio do Campo");
    EXPECT_EQ(found()[0].Descricao(), "Valor não pertence ao Domínio do Campo");
}

TEST_F(ValidadorTest, ValueThatOnlyTheSchemaRefusesMakesOneFinding) {
    const std::string document = posicao(fundo(header("111") + titulo("LFT", "1,5")));
    EXPECT_FALSE(check(document));
    EXPECT_EQ(summaries(found()),
              Lines{"C00CE184 " + placeBehind(document, "1,5") + " posicao.fundo.titulo.valor [1,5]"});
}

TEST_F(ValidadorTest, MissingElementKeepsACodeOfItsOwnAndItsMessage) {
    EXPECT_FALSE(check(posicao(fundo("<header><cnpj>111</cnpj></header>"))));
    ASSERT_EQ(found().size(), 1U);
    const clsResultado& finding = found()[0];
    EXPECT_EQ(finding.TipoResultado(), clsResultado::desconhecido);
    EXPECT_EQ(finding.ErrorCode().substr(0, 5), "C00CE");
    EXPECT_EQ(finding.Titulo(), "Erro");
    EXPECT_EQ(finding.Descricao(), "Falta o elemento obrigatório 'dt'.");
    EXPECT_EQ(finding.TAGpath(), "posicao.fundo.header");
}

TEST_F(ValidadorTest, WarningOfTheParserCountsAsAFinding) {
    EXPECT_FALSE(check("<!DOCTYPE posicao [<!ATTLIST posicao a CDATA #IMPLIED a CDATA #IMPLIED>]>" +
                       posicao(fundo(header("111")))));
    ASSERT_EQ(found().size(), 1U);
    EXPECT_EQ(found()[0].Titulo(), "Alerta");
    EXPECT_EQ(found()[0].TipoResultado(), clsResultado::desconhecido);
    EXPECT_EQ(found()[0].TAGpath(), "");
    EXPECT_EQ(found()[0].getXML(), "");
}

TEST_F(ValidadorTest, ThereIsNoCapOnTheNumberOfFindings) {
    std::string many;
    for (int i = 0; i < 40'000; ++i) {
        many += titulo("XXX");
    }
    EXPECT_FALSE(check(posicao(fundo(header("111") + many))));
    EXPECT_EQ(found().size(), 40'000U);
}

TEST_F(ValidadorTest, ChunkOfOneLineFeedIsDroppedAndBlanksAreTrimmed) {
    // A comment parts the text of an element into chunks.
    EXPECT_TRUE(check(posicao(fundo(header("111") + titulo("LFT<!-- -->\n")))));
    EXPECT_TRUE(check(posicao(fundo(header("111") + titulo("\n<!-- -->LFT<!-- -->  \n  ")))));
    EXPECT_TRUE(check(posicao(fundo(header("111") + titulo("   LFT   ")))));
    EXPECT_TRUE(check(posicao(fundo(header("111") + titulo("  <!-- -->LFT<!-- -->  ")))));
    // A line feed that comes with other text belongs to the value.
    EXPECT_FALSE(check(posicao(fundo(header("111") + titulo("LFT\n")))));
    EXPECT_EQ(codes(found()), Lines{"80040002"});
    EXPECT_EQ(found()[0].TAGvalue(), "LFT\n");
    EXPECT_FALSE(check(posicao(fundo(header("111") + titulo("LFT<!-- -->\n\n")))));
    EXPECT_EQ(codes(found()), Lines{"80040002"});
}

TEST_F(ValidadorTest, ChunkOfOneLineFeedIsNoKeyText) {
    EXPECT_FALSE(check(posicao(fundo(header("\n<!-- -->11<!-- --> <!-- -->1", "20240231")))));
    ASSERT_EQ(found().size(), 1U);
    EXPECT_EQ(found()[0].ValorCampoChave(), "11 1");
}

TEST_F(ValidadorTest, FindingWithoutATextOfItsOwnCarriesTheLastOneBefore) {
    const std::string document =
        posicao(fundo("<header><cnpj>111</cnpj><dt></dt></header><titulo><cod/><valor>1</valor></titulo>"));
    EXPECT_FALSE(check(document));
    const std::string dt = placeBehind(document, "<dt>");
    const std::string cod = placeBehind(document, "<titulo>");
    EXPECT_EQ(summaries(found()), (Lines{"C00CE184 " + dt + " posicao.fundo.header.dt [111]",
                                         "80040002 " + dt + " posicao.fundo.header.dt [111]",
                                         "80040002 " + cod + " posicao.fundo.titulo.cod [111]"}));
}

TEST_F(ValidadorTest, LastTextSurvivesTheRun) {
    EXPECT_TRUE(check(posicao(fundo(header("111") + titulo("LFT", "77")))));
    EXPECT_FALSE(check("<posicao/>"));
    ASSERT_EQ(found().size(), 1U);
    EXPECT_EQ(found()[0].TAGvalue(), "77");
}

TEST_F(ValidadorTest, ValueOfAFindingIsTheWholeLastRunOfText) {
    // Entity references and the parser's buffers cut a text, but no finding shows it cut.
    const std::string longText(100'000, 'x');
    const std::string cut = "a&amp;b&#65;" + longText + "&lt;z";
    EXPECT_FALSE(check(posicao(fundo(header("111") + titulo(cut)))));
    ASSERT_EQ(found().size(), 1U);
    EXPECT_EQ(found()[0].TAGvalue(), "a&bA" + longText + "<z");
    // A comment is markup: the run behind it is the last.
    EXPECT_FALSE(check(posicao(fundo(header("111") + titulo("ab<!-- -->cd")))));
    ASSERT_EQ(found().size(), 1U);
    EXPECT_EQ(found()[0].TAGvalue(), "cd");
}

// --- key text

TEST_F(ValidadorTest, KeyTextPilesUpOverTheFundsOfAFile) {
    EXPECT_FALSE(check(posicao(fundo(header("111", "20240231")) + fundo(header("222", "20240231")))));
    ASSERT_EQ(found().size(), 2U);
    EXPECT_EQ(found()[0].ValorCampoChave(), "111");
    EXPECT_EQ(found()[1].ValorCampoChave(), "111222");
}

TEST_F(ValidadorTest, KeyTextPilesUpOverTheFilesOfABatch) {
    EXPECT_TRUE(check(posicao(fundo(header("111")))));
    EXPECT_FALSE(check(posicao(fundo(header("222", "20240231")))));
    const auto second = validador.getResultado();
    EXPECT_FALSE(check(posicao(fundo(header("333", "20240231")))));
    EXPECT_EQ(second->front().getFundo(), "111222");
    EXPECT_EQ(found()[0].getFundo(), "111222333");

    clsValidador novo;
    EXPECT_FALSE(
        novo.isValido(folder.write("x.xml", posicao(fundo(header("444", "20240231")))), folder.posicao()));
    EXPECT_EQ(novo.getResultado()->front().getFundo(), "444");
}

// --- the walk

TEST_F(ValidadorTest, CommitmentLeavesTheWalkInItsSection) {
    const std::string document =
        posicao(fundo(header("111") +
                      "<titulo><cod>LFT</cod><valor>1</valor><compromisso><dtretorno>20240231"
                      "</dtretorno><classecomp>C</classecomp></compromisso><classe> </classe></titulo>" +
                      titulo("XXX")));
    EXPECT_FALSE(check(document));
    EXPECT_EQ(
        summaries(found()),
        (Lines{"80040002 " + placeBehind(document, "20240231") + " posicao.fundo.titulo.dtretorno [20240231]",
               "80040002 " + placeBehind(document, "<classe> ") + " posicao.fundo.titulo.classe [ ]",
               "80040002 " + placeBehind(document, "XXX") + " posicao.fundo.titulo.cod [XXX]"}));
}

TEST_F(ValidadorTest, EveryEndOfAnElementEmptiesTheTextReadSoFar) {
    // The end of the misplaced commitment pops nothing, but what stood before it is forgotten.
    const std::string document = posicao(fundo(header("111") + titulo("XX<compromisso/>LFT")));
    EXPECT_FALSE(check(document));
    EXPECT_EQ(codes(found()), Lines{"80004005"});
    EXPECT_FALSE(check(posicao(fundo(header("111") + titulo("LFT<compromisso/>XX")))));
    EXPECT_EQ(codes(found()), (Lines{"80004005", "80040002"}));
}

TEST_F(ValidadorTest, FirstElementIsTheRootWhateverItsName) {
    EXPECT_FALSE(check("<outra>" + fundo(header("111", "20240231")) + "</outra>"));
    ASSERT_EQ(found().size(), 2U);
    // Only the schema objects to the root, before there is a node to stand on.
    EXPECT_EQ(summaries(found())[0], "80004005 1:1  []");
    EXPECT_EQ(found()[0].TAGname(), "");
    EXPECT_EQ(found()[0].getXML(), "");
    EXPECT_EQ(found()[1].ErrorCode(), "80040002");
    EXPECT_EQ(found()[1].TAGpath(), "posicao.fundo.header.dt");
}

TEST_F(ValidadorTest, LayoutFieldsCompareWithoutCaseButTheJudgedNameExactly) {
    // The layout knows the element in another case and walks into it; only the exact name is judged.
    const std::string document =
        posicao(fundo("<header><cnpj>111</cnpj><DT>20240231</DT><dt>20240628</dt></header>"));
    EXPECT_FALSE(check(document));
    EXPECT_EQ(codes(found()), Lines{"80004005"});
}

// --- a schema that does not load

struct SchemaRow {
    const char* name;
    const char* bytes; ///< Null for a file that is not there.
};

class BrokenSchemaTest : public ValidadorTest, public testing::WithParamInterface<SchemaRow> {
protected:
    std::shared_ptr<const clsBoleto> broken() const {
        if (GetParam().bytes != nullptr) {
            folder.writeXsd("torto.xsd", GetParam().bytes);
        }
        test::BoletoXml xml = test::positionLayout();
        xml.validador = "torto.xsd";
        return folder.layout(xml);
    }
};

TEST_P(BrokenSchemaTest, NewObjectCallsTheFileValidAndTellsWhyItCouldNotCheck) {
    EXPECT_TRUE(check(posicao(fundo(header("111", "x"))), broken()));
    EXPECT_TRUE(found().empty());
    ASSERT_EQ(validador.getAvisos().size(), 1U);
    EXPECT_NE(validador.getAvisos()[0].find("torto.xsd"), std::string::npos) << validador.getAvisos()[0];
}

TEST_P(BrokenSchemaTest, PreviousFindingsDecide) {
    EXPECT_FALSE(check(posicao(fundo(header("111", "20240231")))));
    const auto before = validador.getResultado();
    EXPECT_FALSE(check(posicao(fundo(header("222"))), broken()));
    EXPECT_EQ(validador.getResultado(), before);
    EXPECT_EQ(validador.getAvisos().size(), 1U);
    EXPECT_TRUE(check(posicao(fundo(header("333")))));
    EXPECT_TRUE(check(posicao(fundo(header("444"))), broken()));
}

TEST_P(BrokenSchemaTest, FailureIsLogged) {
    const clock::Frozen now(clock::at(2024, 6, 28));
    const GlobalLogger global(startLogger(folder.folder(), clsLogger::typeTXT, library::level::all));
    // The schema comes before the file, so the file need not be there. Its name is short: the log drops
    // entries of routines with long names.
    EXPECT_TRUE(validador.isValido("x.xml", broken()));
    const std::string log = folder.folder().read("log20240628.txt");
    EXPECT_EQ(occurrences(log, "FATAL  clsValidador.isValido(x.xml,Posição)"), 1U) << log;
    EXPECT_NE(log.find(GetParam().bytes == nullptr ? "[53]]" : "[-1072898028]]"), std::string::npos) << log;
}

INSTANTIATE_TEST_SUITE_P(Files, BrokenSchemaTest,
                         testing::Values(SchemaRow{"Missing", nullptr}, SchemaRow{"Empty", ""},
                                         SchemaRow{"NotWellFormed", "<xs:schema"},
                                         SchemaRow{"NotASchema", "<posicao/>"},
                                         SchemaRow{"UnknownType",
                                                   "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
                                                   "<xs:element name='posicao' type='Falta'/></xs:schema>"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ValidadorTest, LayoutWithoutASchemaIsSuchAFailureToo) {
    test::BoletoXml xml = test::positionLayout();
    xml.validador = "";
    EXPECT_TRUE(check(posicao(fundo(header("111", "x"))), folder.layout(xml)));
    EXPECT_EQ(validador.getAvisos().size(), 1U);
}

} // namespace
} // namespace tv
