#include "validation/biblioteca.h"
#include "logging/LogFolder.h"
#include "platform/Clock.h"
#include "platform/XmlDocument.h"
#include "validation/FormulaAoLado.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::GlobalLogger;
using test::startLogger;
using test::TemporaryFolder;

std::string stylesheet(const std::string& body, const std::string& method = "xml") {
    return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
           "<xsl:output method='" +
           method + "' omit-xml-declaration='yes' encoding='ISO-8859-1'/><xsl:template match='/'>" + body +
           "</xsl:template></xsl:stylesheet>";
}

constexpr const char* documento = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a><b>texto</b></a>";

/// Names of files in a folder of its own: "doc.xml", "ok.xsl", "torto.xsl" (not well-formed), "falha.xsl"
/// (fails while it runs) and a log of all levels.
class BibliotecaTest : public testing::Test {
protected:
    BibliotecaTest() {
        folder.write("doc.xml", documento);
        folder.write("torto.xml", "<a><b></a>");
        folder.write("ok.xsl", stylesheet("<saida><xsl:value-of select='/a/b'/></saida>"));
        folder.write("torto.xsl", "<xsl:stylesheet");
        folder.write("falha.xsl", stylesheet("<xsl:message terminate='yes'>não dá</xsl:message><saida/>"));
    }
    std::filesystem::path file(const char* name) const { return folder.path() / name; }
    std::string log() const { return folder.read("log20240628.txt"); }

    TemporaryFolder folder;
    clock::Frozen now{clock::at(2024, 6, 28)};
    GlobalLogger global{startLogger(folder, clsLogger::typeTXT, library::level::all)};
};

// --- a document given as text

TEST_F(BibliotecaTest, TextIsTransformedIntoAFile) {
    EXPECT_TRUE(biblioteca::transformStream(std::string_view(documento), file("ok.xsl"), file("out.htm")));
    EXPECT_EQ(folder.read("out.htm"), "<saida>texto</saida>\n");
}

TEST_F(BibliotecaTest, BlanksAroundTheTextAreCut) {
    const std::string texto = "   " + std::string(documento) + "   ";
    EXPECT_TRUE(biblioteca::transformStream(std::string_view(texto), file("ok.xsl"), file("out.htm")));
    EXPECT_EQ(folder.read("out.htm"), "<saida>texto</saida>\n");
}

TEST_F(BibliotecaTest, TextOfBlanksGivesFalseAndNoFile) {
    for (const std::string_view texto : {"", " ", "      "}) {
        EXPECT_FALSE(biblioteca::transformStream(texto, file("ok.xsl"), file("out.htm")));
        EXPECT_FALSE(folder.holds("out.htm"));
    }
}

TEST_F(BibliotecaTest, TextThatDoesNotLoadGivesFalseAndNoFile) {
    EXPECT_FALSE(
        biblioteca::transformStream(std::string_view("<a><b></a>"), file("ok.xsl"), file("out.htm")));
    EXPECT_FALSE(folder.holds("out.htm"));
}

TEST_F(BibliotecaTest, StylesheetThatDoesNotLoadGivesFalseAndNoFile) {
    for (const char* xsl : {"torto.xsl", "falta.xsl", "doc.xml", ""}) {
        EXPECT_FALSE(biblioteca::transformStream(std::string_view(documento), file(xsl), file("out.htm")))
            << xsl;
        EXPECT_FALSE(folder.holds("out.htm")) << xsl;
    }
}

TEST_F(BibliotecaTest, FileOfThatNameIsReplaced) {
    folder.write("out.htm", std::string(5'000, 'x'));
    EXPECT_TRUE(biblioteca::transformStream(std::string_view(documento), file("ok.xsl"), file("out.htm")));
    EXPECT_EQ(folder.read("out.htm"), "<saida>texto</saida>\n");
}

TEST_F(BibliotecaTest, ResultIsUnicodeWhateverTheStylesheetAsksFor) {
    EXPECT_TRUE(biblioteca::transformStream(std::string_view("<a><b>ação – R$ 1</b></a>"), file("ok.xsl"),
                                            file("out.htm")));
    EXPECT_EQ(folder.read("out.htm"), "<saida>ação – R$ 1</saida>\n");
}

TEST_F(BibliotecaTest, TransformThatFailsIsLoggedAndGivesFalse) {
    EXPECT_FALSE(
        biblioteca::transformStream(std::string_view(documento), file("falha.xsl"), file("out.htm")));
    EXPECT_FALSE(folder.holds("out.htm"));
    EXPECT_NE(log().find("FATAL  biblioteca.transformStream"), std::string::npos) << log();
    EXPECT_NE(log().find("não dá"), std::string::npos) << log();
}

TEST_F(BibliotecaTest, OutputThatCannotBeWrittenIsLoggedAndGivesFalse) {
    EXPECT_FALSE(biblioteca::transformStream(std::string_view(documento), file("ok.xsl"),
                                             folder.path() / "falta" / "out.htm"));
    EXPECT_NE(log().find("FATAL  biblioteca.transformStream"), std::string::npos) << log();
}

// --- a document in a file, the result in a file

TEST_F(BibliotecaTest, FileIsTransformedIntoAFile) {
    EXPECT_TRUE(biblioteca::transformFile(file("doc.xml"), file("ok.xsl"), file("out.htm")));
    EXPECT_EQ(folder.read("out.htm"), "<saida>texto</saida>\n");
    EXPECT_NE(log().find("biblioteca.transformFile"), std::string::npos) << log();
}

TEST_F(BibliotecaTest, FileFormGivesFalseAndNoFileWhenSomethingDoesNotLoad) {
    struct Row {
        const char* arquivo;
        const char* xsl;
    };
    for (const Row& row : {Row{"falta.xml", "ok.xsl"},
                           {"torto.xml", "ok.xsl"},
                           {"doc.xml", "falta.xsl"},
                           {"doc.xml", "torto.xsl"}}) {
        EXPECT_FALSE(biblioteca::transformFile(file(row.arquivo), file(row.xsl), file("out.htm")))
            << row.arquivo << " " << row.xsl;
        EXPECT_FALSE(folder.holds("out.htm"));
    }
    EXPECT_FALSE(biblioteca::transformFile("", file("ok.xsl"), file("out.htm")));
    EXPECT_FALSE(biblioteca::transformFile("   ", file("ok.xsl"), file("out.htm")));
    EXPECT_FALSE(folder.holds("out.htm"));
}

TEST_F(BibliotecaTest, TransformOfAFileThatFailsIsLoggedUnderItsName) {
    EXPECT_FALSE(biblioteca::transformFile(file("doc.xml"), file("falha.xsl"), file("out.htm")));
    EXPECT_NE(log().find("FATAL  biblioteca.transformFile"), std::string::npos) << log();
}

// --- the result as text

TEST_F(BibliotecaTest, FileIsTransformedIntoText) {
    EXPECT_EQ(biblioteca::transformStream(file("doc.xml"), file("ok.xsl")), "<saida>texto</saida>\n");
}

TEST_F(BibliotecaTest, EmptyElementsKeepTheirEndTags) {
    const auto xsl = folder.write("vazio.xsl", stylesheet("<TORVA/>"));
    EXPECT_EQ(biblioteca::transformStream(file("doc.xml"), xsl), "<TORVA></TORVA>\n");
}

TEST_F(BibliotecaTest, TextFormGivesTheEmptyTextWhenSomethingDoesNotLoad) {
    EXPECT_EQ(biblioteca::transformStream(std::filesystem::path(), file("ok.xsl")), "");
    EXPECT_EQ(biblioteca::transformStream(std::filesystem::path("   "), file("ok.xsl")), "");
    EXPECT_EQ(biblioteca::transformStream(file("falta.xml"), file("ok.xsl")), "");
    EXPECT_EQ(biblioteca::transformStream(file("torto.xml"), file("ok.xsl")), "");
    EXPECT_EQ(biblioteca::transformStream(file("doc.xml"), file("falta.xsl")), "");
    EXPECT_EQ(biblioteca::transformStream(file("doc.xml"), file("torto.xsl")), "");
}

TEST_F(BibliotecaTest, TransformIntoTextThatFailsIsLoggedAndGivesTheEmptyText) {
    EXPECT_EQ(biblioteca::transformStream(file("doc.xml"), file("falha.xsl")), "");
    EXPECT_NE(log().find("FATAL  biblioteca.transformStream"), std::string::npos) << log();
}

TEST_F(BibliotecaTest, StylesheetThatChangedIsReadAgain) {
    EXPECT_EQ(biblioteca::transformStream(file("doc.xml"), file("ok.xsl")), "<saida>texto</saida>\n");
    folder.write("ok.xsl", stylesheet("<outra-saida/>"));
    EXPECT_EQ(biblioteca::transformStream(file("doc.xml"), file("ok.xsl")), "<outra-saida></outra-saida>\n");
}

// --- beside the first stage

TEST_F(BibliotecaTest, FormulaGivesTheDocumentAndItsText) {
    FormulaAoLado formula(file("doc.xml"), file("ok.xsl"));
    std::string motivo = "antes";
    EXPECT_EQ(formula.saida(motivo), "<saida>texto</saida>\n");
    EXPECT_EQ(motivo, "");
    EXPECT_FALSE(formula.documento().empty());
    EXPECT_EQ(formula.saida(motivo), "<saida>texto</saida>\n") << "asked once more";
}

TEST_F(BibliotecaTest, ReasonTellsWhyTheStylesheetGaveNothing) {
    for (const char* xsl : {"falta.xsl", "torto.xsl", "falha.xsl"}) {
        FormulaAoLado formula(file("doc.xml"), file(xsl));
        std::string motivo;
        EXPECT_EQ(formula.saida(motivo), "") << xsl;
        EXPECT_NE(motivo, "") << xsl;
        EXPECT_FALSE(formula.documento().empty()) << xsl;
    }
    EXPECT_NE(log().find("FATAL  biblioteca.transformStream"), std::string::npos) << log();
}

TEST_F(BibliotecaTest, ADocumentThatDoesNotLoadIsNoFaultOfTheStylesheet) {
    for (const char* nome : {"falta.xml", "torto.xml"}) {
        FormulaAoLado formula(file(nome), file("ok.xsl"));
        std::string motivo;
        EXPECT_EQ(formula.saida(motivo), "") << nome;
        EXPECT_EQ(motivo, "") << nome;
        EXPECT_TRUE(formula.documento().empty()) << nome;
        EXPECT_NE(formula.documento().parseError(), "") << nome;
    }
}

TEST_F(BibliotecaTest, AFormulaThatNobodyAsksForIsDoneBeforeItGoes) {
    const FormulaAoLado formula(file("doc.xml"), file("ok.xsl"));
}

} // namespace
} // namespace tv
