#include "platform/text.h"
#include "validation/ValidationFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tv {
namespace {

using test::codes;
using test::Lines;
using test::stylesheet;
using test::summaries;
using test::ValidationFolder;

constexpr const char* valid =
    "<posicao><fundo><header><cnpj>111</cnpj><dt>20240628</dt></header></fundo></posicao>";

/// A formula that finds one thing in every document that it can read.
std::string findsOne() {
    return stylesheet(
        "<TORVA><RESULTADO lastElement='x' path='posicao' errCode='-2147221503' strLabel='Um'/></TORVA>");
}

/// Files that are no documents of the layout: each ends in a finding or a clear message, and never stops the
/// file behind it. Both with and without a second stage.
class EntradaTest : public testing::TestWithParam<bool> {
protected:
    bool hasFormula() const { return GetParam(); }
    std::shared_ptr<const clsBoleto> boleto() const { return folder.posicao(hasFormula() ? findsOne() : ""); }

    bool check(const std::string& bytes) {
        return validador.isValido(folder.write("doc.xml", bytes), boleto());
    }
    const Resultados& found() const { return *validador.getResultado(); }

    /// The first stage's finding is a single one, fatal, and the second stage had nothing to read.
    void expectOneFatal(const std::string& code) const {
        ASSERT_EQ(codes(found()), Lines{code});
        EXPECT_EQ(found()[0].TipoResultado(), code == "C00CEE3B" ? 2 : 4);
        EXPECT_TRUE(validador.getAvisos().empty());
    }
    /// The object still serves.
    void expectStillServes() {
        EXPECT_EQ(check(valid), !hasFormula());
        EXPECT_EQ(found().size(), hasFormula() ? 1U : 0U);
        EXPECT_FALSE(validador.arquivoIlegivel());
    }
    /// No finding shows `secret` anywhere.
    void expectHidden(const std::string& secret) const {
        for (const clsResultado& finding : found()) {
            EXPECT_EQ(finding.getXML().find(secret), std::string::npos);
            EXPECT_EQ(finding.TAGvalue().find(secret), std::string::npos);
            EXPECT_EQ(finding.ValorCampoChave().find(secret), std::string::npos);
            EXPECT_EQ(finding.Descricao().find(secret), std::string::npos);
        }
        for (const std::string& aviso : validador.getAvisos()) {
            EXPECT_EQ(aviso.find(secret), std::string::npos);
        }
    }

    ValidationFolder folder;
    clsValidador validador;
};

INSTANTIATE_TEST_SUITE_P(Stages, EntradaTest, testing::Bool(),
                         [](const auto& row) { return row.param ? "BothStages" : "FirstStageOnly"; });

TEST_P(EntradaTest, MissingFileEndsTheRunWithAFatalFinding) {
    EXPECT_FALSE(validador.isValido(folder.path() / "falta.xml", boleto()));
    ASSERT_EQ(found().size(), 1U);
    EXPECT_EQ(summaries(found())[0], "800C0006 0:0  []");
    EXPECT_EQ(found()[0].Titulo(), "Erro Fatal");
    EXPECT_NE(found()[0].Descricao().find("falta.xml"), std::string::npos);
    EXPECT_TRUE(validador.arquivoIlegivel());
    EXPECT_TRUE(validador.getAvisos().empty());
    expectStillServes();
}

TEST_P(EntradaTest, FolderIsNoFile) {
    EXPECT_FALSE(validador.isValido(folder.path() / "XSD", boleto()));
    ASSERT_EQ(codes(found()), Lines{"800C0008"});
    EXPECT_EQ(found()[0].Titulo(), "Erro Fatal");
    EXPECT_TRUE(validador.arquivoIlegivel());
    expectStillServes();
}

struct BrokenFile {
    const char* name;
    std::string bytes;
};

std::vector<BrokenFile> brokenFiles() {
    using namespace std::string_literals; // NOLINT(google-build-using-namespace)
    const std::string document = valid;
    return {{"empty", ""},
            {"blanks", "   \n\n  "},
            {"text", "isto não é XML"},
            {"JPEG", "\xFF\xD8\xFF\xE0\x00\x10JFIF\x00\x01\x01\x00\x00\x48\x00\x48\x00\x00\xFF\xDB"s},
            {"zip", "PK\x03\x04\x14\x00\x06\x00"s},
            {"NUL bytes", std::string(1'000, '\0')},
            {"truncated", document.substr(0, document.size() / 2)},
            {"truncated in a tag", document.substr(0, document.find("<dt>") + 2)},
            {"two roots", document + document},
            {"wrong end tag", "<posicao><fundo></posicao></fundo>"},
            {"broken UTF-8", "<posicao>\xC3\x28</posicao>"},
            {"Latin-1 without a declaration", text::toLatin1("<posicao><fundo>ação</fundo></posicao>")},
            {"unknown encoding", "<?xml version=\"1.0\" encoding=\"x-nada\"?><posicao/>"},
            {"unknown entity", "<posicao>&nada;</posicao>"},
            {"character that is none", "<posicao>&#1;</posicao>"},
            {"half of UTF-16", "\xFF\xFE<\0p\0o"s},
            {"undeclared prefix", "<x:posicao/>"}};
}

TEST_P(EntradaTest, FileThatIsNotWellFormedGivesExactlyOneFatalFindingAndNoSecondStage) {
    for (const BrokenFile& file : brokenFiles()) {
        SCOPED_TRACE(file.name);
        EXPECT_FALSE(check(file.bytes));
        const Resultados& list = found();
        ASSERT_FALSE(list.empty());
        // The schema's findings about what stands before the fault are no matter here.
        EXPECT_EQ(std::count_if(list.begin(), list.end(),
                                [](const auto& r) { return r.ErrorCode() == "C00CEE3B"; }),
                  1);
        EXPECT_EQ(list.back().ErrorCode(), "C00CEE3B");
        EXPECT_EQ(list.back().Titulo(), "Arquivo com falha na Estrutura ");
        EXPECT_EQ(list.back().Descricao(), "Arquivo com falha na Estrutura ");
        EXPECT_TRUE(validador.getAvisos().empty());
        EXPECT_FALSE(validador.arquivoIlegivel());
        expectStillServes();
    }
}

TEST_P(EntradaTest, TruncatedFileTellsWhereItEnds) {
    EXPECT_FALSE(check("<posicao>\n<fundo>\n<header>\n<cnpj>111</cnpj>\n"));
    expectOneFatal("C00CEE3B");
    EXPECT_EQ(found()[0].linha(), 5);
    EXPECT_EQ(found()[0].TAGpath(), "posicao.fundo.header");
}

TEST_P(EntradaTest, FaultsBeforeTheFatalOneStay) {
    EXPECT_FALSE(check("<posicao><fundo><header><cnpj>111</cnpj><dt>20240231</dt></header></fundo>"));
    EXPECT_EQ(codes(found()), (Lines{"80040002", "C00CEE3B"}));
}

TEST_P(EntradaTest, Utf16IsReadLikeAnyOtherEncoding) {
    std::string utf16 = "\xFF\xFE";
    for (const char* c = valid; *c != '\0'; ++c) {
        utf16 += *c;
        utf16 += '\0';
    }
    EXPECT_EQ(check(utf16), !hasFormula());
    EXPECT_EQ(found().size(), hasFormula() ? 1U : 0U);
    EXPECT_TRUE(validador.getAvisos().empty());
}

TEST_P(EntradaTest, DocumentOfAnotherLayoutGivesFindings) {
    EXPECT_FALSE(check("<?xml version='1.0'?><nfe><emitente><cnpj>1</cnpj></emitente></nfe>"));
    EXPECT_GE(found().size(), 1U);
    EXPECT_EQ(found()[0].ErrorCode(), "80004005");
    expectStillServes();
}

TEST_P(EntradaTest, TextOfTenMegabytesIsAValueLikeAnyOther) {
    const std::string document =
        "<posicao><fundo><header><cnpj>111</cnpj><dt>20240628</dt></header><titulo><cod>" +
        std::string(10'000'000, 'A') + "</cod><valor>1</valor></titulo></fundo></posicao>";
    EXPECT_FALSE(check(document));
    ASSERT_EQ(found().size(), hasFormula() ? 2U : 1U);
    EXPECT_EQ(found()[0].ErrorCode(), "80040002");
    EXPECT_EQ(found()[0].TAGvalue().size(), 10'000'000U);
    EXPECT_TRUE(validador.getAvisos().empty());
}

// --- entities and other ways out of the file

std::string withSubset(const std::string& subset, const std::string& cnpj) {
    return "<!DOCTYPE posicao [" + subset + "]><posicao><fundo><header><cnpj>" + cnpj +
           "</cnpj><dt>20240231</dt></header></fundo></posicao>";
}

TEST_P(EntradaTest, InternalEntityIsText) {
    EXPECT_FALSE(check(withSubset("<!ENTITY e 'abc'>", "1&e;2")));
    ASSERT_FALSE(found().empty());
    EXPECT_EQ(found()[0].ErrorCode(), "80040002");
    EXPECT_EQ(found()[0].ValorCampoChave(), "1abc2");
}

TEST_P(EntradaTest, EntityBombIsRefused) {
    std::string subset = "<!ENTITY a0 '0123456789'>";
    for (int i = 1; i < 12; ++i) {
        const std::string last = "&a" + std::to_string(i - 1) + ";";
        std::string ten;
        for (int k = 0; k < 10; ++k) {
            ten += last;
        }
        subset += "<!ENTITY a" + std::to_string(i) + " '" + ten + "'>";
    }
    EXPECT_FALSE(check(withSubset(subset, "&a11;")));
    ASSERT_FALSE(found().empty());
    EXPECT_EQ(found().back().ErrorCode(), "C00CEE3B");
    expectStillServes();
}

TEST_P(EntradaTest, OneLargeEntityUsedOftenIsRefused) {
    std::string often;
    for (int i = 0; i < 10'000; ++i) {
        often += "&e;";
    }
    EXPECT_FALSE(check(withSubset("<!ENTITY e '" + std::string(100'000, 'x') + "'>", often)));
    ASSERT_FALSE(found().empty());
    EXPECT_EQ(found().back().ErrorCode(), "C00CEE3B");
    expectStillServes();
}

TEST_P(EntradaTest, EntityThatHoldsItselfIsRefused) {
    EXPECT_FALSE(check(withSubset("<!ENTITY a '&b;'><!ENTITY b '&a;'>", "&a;")));
    ASSERT_FALSE(found().empty());
    EXPECT_EQ(found().back().ErrorCode(), "C00CEE3B");
    expectStillServes();
}

TEST_P(EntradaTest, ContentOfAnotherFileNeverAppears) {
    const std::string secret = "conteudo-reservado-8231";
    const std::string other = folder.write("reservado.txt", secret).string();
    for (const std::string& subset :
         {"<!ENTITY e SYSTEM \"" + other + "\">", "<!ENTITY e SYSTEM \"file://" + other + "\">",
          std::string("<!ENTITY e SYSTEM \"reservado.txt\">"),
          "<!ENTITY % p SYSTEM \"" + other + "\"> %p; <!ENTITY e 'x'>"}) {
        SCOPED_TRACE(subset);
        check(withSubset(subset, "1&e;2"));
        expectHidden(secret);
        expectStillServes();
    }
}

TEST_P(EntradaTest, ExternalSubsetIsNotFetched) {
    const std::string secret = "conteudo-reservado-8231";
    folder.write("fora.dtd", "<!ENTITY e '" + secret + "'>");
    check("<!DOCTYPE posicao SYSTEM \"" + (folder.path() / "fora.dtd").string() +
          "\"><posicao><fundo><header><cnpj>1&e;</cnpj><dt>20240231</dt></header></fundo></posicao>");
    expectHidden(secret);
    expectStillServes();
}

TEST_P(EntradaTest, SchemaLocationInADocumentIsNotFollowed) {
    // The schema beside the document would allow everything; the layout's own still refuses the date.
    folder.write(
        "tudo.xsd",
        "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'><xs:element name='posicao'/></xs:schema>");
    EXPECT_FALSE(check("<posicao xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
                       "xsi:noNamespaceSchemaLocation='tudo.xsd' xsi:schemaLocation='urn:x tudo.xsd'>"
                       "<fundo><header><cnpj>111</cnpj><dt>x</dt></header></fundo></posicao>"));
    EXPECT_EQ(codes(found())[0], "C00CE184");
    EXPECT_EQ(codes(found())[1], "80040002");
    EXPECT_EQ(found().size(), hasFormula() ? 3U : 2U);
}

TEST_P(EntradaTest, TypeInADocumentDoesNotReplaceTheSchemas) {
    EXPECT_FALSE(
        check("<posicao xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><fundo><header><cnpj>111</cnpj>"
              "<dt xmlns:xs='http://www.w3.org/2001/XMLSchema' xsi:type='xs:string'>x</dt></header></fundo>"
              "</posicao>"));
    EXPECT_FALSE(found().empty());
}

TEST_P(EntradaTest, DeepNestingEndsWithoutACrash) {
    std::string open = "<posicao>";
    std::string close = "</posicao>";
    for (int i = 0; i < 20'000; ++i) {
        open += "<a>";
        close.insert(0, "</a>");
    }
    EXPECT_FALSE(check(open + close));
    EXPECT_FALSE(found().empty());
    expectStillServes();
}

} // namespace
} // namespace tv
