#include "validation/documentoResultado.h"
#include "platform/Clock.h"
#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

constexpr const char* declaration = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>";

clsResultado finding(const std::string& path, std::int32_t linha) {
    clsResultado resultado;
    resultado.setTag("nome", "valor", path, "chave");
    resultado.setError(5, "Erro", "descrição");
    resultado.setLocation(linha, 1);
    return resultado;
}

TEST(DocumentoResultadoTest, WithoutFindingsHoldsTheBoletoAlone) {
    const clock::Frozen now(clock::at(2024, 6, 28, 9, 5, 7));
    EXPECT_EQ(montaDocumentoResultado({}, "Arquivo de Posição (4.01)", "/dados/fundo.xml"),
              std::string(declaration) + "<TORVA><BOLETO data=\"28/06/2024 - "
                                         "09:05:07\"><LAYOUT><![CDATA[Arquivo de Posição (4.01)]]></LAYOUT>"
                                         "<ARQUIVO><![CDATA[/dados/fundo.xml]]></ARQUIVO></BOLETO></TORVA>");
}

TEST(DocumentoResultadoTest, DateFollowsTheClock) {
    const clock::Frozen now(clock::at(1999, 12, 31, 23, 59, 59));
    EXPECT_NE(montaDocumentoResultado({}, "", "").find("data=\"31/12/1999 - 23:59:59\""), std::string::npos);
}

TEST(DocumentoResultadoTest, FindingsStandBehindTheBoletoInTheirOrder) {
    const clock::Frozen now(clock::at(2024, 6, 28));
    const Resultados resultados{finding("a.b", 30), finding("a.c", 10), finding("a.b", 20)};
    EXPECT_EQ(montaDocumentoResultado(resultados, "T", "F"),
              std::string(declaration) +
                  "<TORVA><BOLETO data=\"28/06/2024 - 00:00:00\"><LAYOUT><![CDATA[T]]></LAYOUT>"
                  "<ARQUIVO><![CDATA[F]]></ARQUIVO></BOLETO>" +
                  resultados[0].getXML() + resultados[1].getXML() + resultados[2].getXML() + "</TORVA>");
}

TEST(DocumentoResultadoTest, FindingWithoutAPathLeavesNothing) {
    const clock::Frozen now(clock::at(2024, 6, 28));
    const Resultados resultados{finding("a.b", 1), finding("", 2), finding("a.c", 3)};
    XmlDocument documento;
    ASSERT_TRUE(documento.loadXML(montaDocumentoResultado(resultados, "T", "F")));
    ASSERT_EQ(documento.selectNodes("/TORVA/RESULTADO").size(), 2U);
    EXPECT_EQ(documento.selectSingleNode("/TORVA/RESULTADO[2]/@linha").text(), "3");
}

TEST(DocumentoResultadoTest, TitleAndPathAreTrimmedAndSafeInCData) {
    const std::string text = montaDocumentoResultado({}, "  A & <B>  ", "  /dados/<x> & 'y'.xml ");
    XmlDocument documento;
    ASSERT_TRUE(documento.loadXML(text)) << documento.parseError();
    EXPECT_EQ(documento.selectSingleNode("/TORVA/BOLETO/LAYOUT").text(), "A & <B>");
    EXPECT_EQ(documento.selectSingleNode("/TORVA/BOLETO/ARQUIVO").text(), "/dados/<x> & 'y'.xml");
    EXPECT_NE(text.find("<LAYOUT><![CDATA[A & <B>]]></LAYOUT>"), std::string::npos);
}

TEST(DocumentoResultadoTest, ProgressIsToldAfterEachFinding) {
    int steps = 0;
    static_cast<void>(montaDocumentoResultado({finding("a.b", 1), finding("", 2), finding("a.c", 3)}, "T",
                                              "F", [&] { ++steps; }));
    EXPECT_EQ(steps, 3);
}

} // namespace
} // namespace tv
