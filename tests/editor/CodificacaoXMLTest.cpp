#include "editor/CodificacaoXML.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using namespace std::string_literals;

namespace tv::test {
namespace {

using Familia = CodificacaoXML::Familia;
using FimDeLinha = CodificacaoXML::FimDeLinha;

std::string utf16(std::u16string_view texto, bool bigEndian) {
    std::string bytes;
    for (const char16_t unidade : texto) {
        const char alto = static_cast<char>(static_cast<unsigned char>(unidade >> 8U));
        const char baixo = static_cast<char>(static_cast<unsigned char>(unidade & 0xFFU));
        bytes += bigEndian ? alto : baixo;
        bytes += bigEndian ? baixo : alto;
    }
    return bytes;
}

struct Caso {
    const char* nome;
    std::string bytes;
    std::u16string texto;
    Familia familia;
    const char* codificacao;
    bool marca;
    FimDeLinha fim;
};
void PrintTo(const Caso& caso, std::ostream* saida) {
    *saida << caso.nome;
}

class Leitura : public ::testing::TestWithParam<Caso> {};

TEST_P(Leitura, FollowsMarkAndDeclaration) {
    const Caso& caso = GetParam();
    const TextoLido lido = leTexto(caso.bytes);
    EXPECT_EQ(lido.texto, caso.texto);
    EXPECT_EQ(lido.codificacao.familia, caso.familia);
    EXPECT_EQ(lido.codificacao.nome, caso.codificacao);
    EXPECT_EQ(lido.codificacao.marca, caso.marca);
    EXPECT_EQ(lido.codificacao.fimDeLinha, caso.fim);
    EXPECT_EQ(lido.ilegiveis, 0U);
}

TEST_P(Leitura, WritingGivesTheSameBytes) {
    const TextoLido lido = leTexto(GetParam().bytes);
    const TextoGravado gravado = gravaTexto(lido.texto, codificacaoParaGravar(lido.texto, lido.codificacao));
    EXPECT_EQ(gravado.bytes, GetParam().bytes);
    EXPECT_EQ(gravado.ausentes, 0U);
}

const std::u16string declaracao16 = u"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<a>\u00E9\U0001F600</a>";

const std::vector<Caso> casos{
    {"Empty", "", u"", Familia::Utf8, "UTF-8", false, FimDeLinha::Lf},
    {"NoDeclaration", "<a>\u00E9</a>\n", u"<a>\u00E9</a>\n", Familia::Utf8, "UTF-8", false, FimDeLinha::Lf},
    {"Utf8", "<?xml version='1.0' encoding='utf-8'?>\r\n<a>\u00E9\U0001F600</a>\r\n",
     u"<?xml version='1.0' encoding='utf-8'?>\n<a>\u00E9\U0001F600</a>\n", Familia::Utf8, "UTF-8", false,
     FimDeLinha::CrLf},
    {"Utf8WithMark", "\xEF\xBB\xBF<a>\u00E9</a>", u"<a>\u00E9</a>", Familia::Utf8, "UTF-8", true,
     FimDeLinha::Lf},
    {"MarkBeatsDeclaration", "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\u00E9</a>",
     u"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\u00E9</a>", Familia::Utf8, "UTF-8", true,
     FimDeLinha::Lf},
    {"Utf16LittleEndian", "\xFF\xFE" + utf16(declaracao16, false), declaracao16, Familia::Utf16LE, "UTF-16",
     true, FimDeLinha::Lf},
    {"Utf16BigEndian", "\xFE\xFF" + utf16(declaracao16, true), declaracao16, Familia::Utf16BE, "UTF-16", true,
     FimDeLinha::Lf},
    {"Utf16WithoutMark", utf16(declaracao16, false), declaracao16, Familia::Utf16LE, "UTF-16", false,
     FimDeLinha::Lf},
    {"Utf16BigEndianWithoutMark", utf16(declaracao16, true), declaracao16, Familia::Utf16BE, "UTF-16", false,
     FimDeLinha::Lf},
    {"Latin1", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<a>S\xE3o \x80\xFF</a>",
     u"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a>S\u00E3o \u0080\u00FF</a>", Familia::UmByte,
     "ISO-8859-1", false, FimDeLinha::CrLf},
    {"Windows1252", "<?xml version=\"1.0\" encoding=\"windows-1252\"?><a>\x80 \x93x\x94</a>",
     u"<?xml version=\"1.0\" encoding=\"windows-1252\"?><a>\u20AC \u201Cx\u201D</a>", Familia::UmByte,
     "WINDOWS-1252", false, FimDeLinha::Lf},
    {"Latin9", "<?xml version=\"1.0\" encoding=\"ISO-8859-15\"?><a>\xA4</a>",
     u"<?xml version=\"1.0\" encoding=\"ISO-8859-15\"?><a>\u20AC</a>", Familia::UmByte, "ISO-8859-15", false,
     FimDeLinha::Lf},
    {"Ascii", "<?xml version=\"1.0\" encoding=\"US-ASCII\"?><a>x</a>",
     u"<?xml version=\"1.0\" encoding=\"US-ASCII\"?><a>x</a>", Familia::UmByte, "US-ASCII", false,
     FimDeLinha::Lf},
    {"BlanksInTheDeclaration", "<?xml version = '1.0'\tencoding = 'ISO-8859-1' ?><a>\xE9</a>",
     u"<?xml version = '1.0'\tencoding = 'ISO-8859-1' ?><a>\u00E9</a>", Familia::UmByte, "ISO-8859-1", false,
     FimDeLinha::Lf},
    {"UnknownNameInUtf8", "<?xml version=\"1.0\" encoding=\"X-MEU\"?><a>\u00E9</a>",
     u"<?xml version=\"1.0\" encoding=\"X-MEU\"?><a>\u00E9</a>", Familia::Utf8, "UTF-8", false,
     FimDeLinha::Lf},
    {"UnknownNameInOtherBytes", "<?xml version=\"1.0\" encoding=\"X-MEU\"?><a>\xE9</a>",
     u"<?xml version=\"1.0\" encoding=\"X-MEU\"?><a>\u00E9</a>", Familia::UmByte, "ISO-8859-1", false,
     FimDeLinha::Lf},
    {"SaysUtf16ButIsNot", "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\u00E9</a>",
     u"<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\u00E9</a>", Familia::Utf8, "UTF-8", false,
     FimDeLinha::Lf},
    {"CarriageReturnsAlone", "<a>\r</a>\r", u"<a>\n</a>\n", Familia::Utf8, "UTF-8", false, FimDeLinha::Cr},
    {"ControlCharacters", "\x01\x02"s + '\0' + "\x1F", u"\u0001\u0002"s + u'\0' + u"\u001F", Familia::Utf8,
     "UTF-8", false, FimDeLinha::Lf},
};

INSTANTIATE_TEST_SUITE_P(Formas, Leitura, ::testing::ValuesIn(casos),
                         [](const auto& caso) { return std::string(caso.param.nome); });

TEST(CodificacaoXML, BytesThatAreNoCharactersAreCounted) {
    EXPECT_EQ(leTexto("<a>S\xE3o J\xE9</a>").texto, u"<a>S\uFFFDo J\uFFFD</a>");
    EXPECT_EQ(leTexto("<a>S\xE3o J\xE9</a>").ilegiveis, 2U);
    EXPECT_EQ(leTexto("<?xml version=\"1.0\" encoding=\"US-ASCII\"?>\x80").ilegiveis, 1U);
    EXPECT_EQ(leTexto("<?xml version=\"1.0\" encoding=\"windows-1252\"?>\x81").ilegiveis, 1U);
    EXPECT_EQ(leTexto("\xFF\xFE\x00\xD8\x41\x00"s).texto, u"\uFFFDA");
    EXPECT_EQ(leTexto("\xFF\xFE\x41\x00\x42"s).ilegiveis, 1U);
}

TEST(CodificacaoXML, TheMostFrequentLineEndIsKept) {
    EXPECT_EQ(leTexto("a\r\nb\nc\r\n").codificacao.fimDeLinha, FimDeLinha::CrLf);
    EXPECT_EQ(leTexto("a\nb\nc\r\n").codificacao.fimDeLinha, FimDeLinha::Lf);
    EXPECT_EQ(leTexto("a\r\nb\nc\r").texto, u"a\nb\nc\n");
}

struct Declaracao {
    const char* nome;
    std::u16string texto;
    const char* codificacao;
};
void PrintTo(const Declaracao& caso, std::ostream* saida) {
    *saida << caso.nome;
}

class CodificacaoDeclarada : public ::testing::TestWithParam<Declaracao> {};

TEST_P(CodificacaoDeclarada, StandsInTheDeclaration) {
    EXPECT_EQ(codificacaoDeclarada(GetParam().texto), GetParam().codificacao);
}

INSTANTIATE_TEST_SUITE_P(
    Textos, CodificacaoDeclarada,
    ::testing::Values(Declaracao{"Plain", u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "UTF-8"},
                      Declaracao{"Apostrophes", u"<?xml version='1.0' encoding='x'?>", "x"},
                      Declaracao{"None", u"<?xml version='1.0'?><a encoding='x'/>", ""},
                      Declaracao{"NoDeclaration", u"<a encoding='x'/>", ""},
                      Declaracao{"AnotherInstruction", u"<?xmlx encoding='x'?>", ""},
                      Declaracao{"NotClosed", u"<?xml encoding='x", "x"},
                      Declaracao{"NoValue", u"<?xml encoding?>", ""}, Declaracao{"Empty", u"", ""},
                      Declaracao{"NotFirst", u" <?xml encoding='x'?>", ""}),
    [](const auto& caso) { return std::string(caso.param.nome); });

CodificacaoXML latin1() {
    return leTexto("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>").codificacao;
}

TEST(CodificacaoXML, CharactersThatTheEncodingLacksBecomeReferences) {
    const TextoGravado gravado = gravaTexto(u"<a>\u00E9\n 1\u2013\U0001F600</a>", latin1());
    EXPECT_EQ(gravado.bytes, "<a>\xE9\n 1&#8211;&#128512;</a>");
    EXPECT_EQ(gravado.ausentes, 2U);
    EXPECT_EQ(gravado.primeiroAusente, U'\u2013');
    EXPECT_EQ(gravado.linha, 2);
    EXPECT_EQ(gravado.coluna, 3);
}

TEST(CodificacaoXML, ReferencesStandOutsideOfSections) {
    EXPECT_EQ(gravaTexto(u"<a><![CDATA[1\u20132]]>\u2013</a>", latin1()).bytes,
              "<a><![CDATA[1]]>&#8211;<![CDATA[2]]>&#8211;</a>");
    EXPECT_EQ(gravaTexto(u"<!-- <![CDATA[ --><a>\u2013</a>", latin1()).bytes,
              "<!-- <![CDATA[ --><a>&#8211;</a>");
}

TEST(CodificacaoXML, AChangedDeclarationChangesTheEncoding) {
    const CodificacaoXML lida = leTexto("<?xml version='1.0' encoding='UTF-8'?>\r\n<a/>").codificacao;
    const CodificacaoXML nova =
        codificacaoParaGravar(u"<?xml version='1.0' encoding='iso-8859-1'?>\n<a>\u00E9</a>", lida);
    EXPECT_EQ(nova.familia, Familia::UmByte);
    EXPECT_EQ(gravaTexto(u"<a>\u00E9</a>\n", nova).bytes, "<a>\xE9</a>\r\n");
}

TEST(CodificacaoXML, ADeclarationOfUtf16BringsAMark) {
    const CodificacaoXML nova = codificacaoParaGravar(u"<?xml version='1.0' encoding='UTF-16'?>", {});
    EXPECT_EQ(gravaTexto(u"a", nova).bytes, "\xFF\xFE\x61\x00"s);
}

TEST(CodificacaoXML, ADeclarationTakenAwayMeansUtf8) {
    EXPECT_EQ(codificacaoParaGravar(u"<a/>", latin1()).familia, Familia::Utf8);
    const CodificacaoXML larga = leTexto("\xFF\xFE" + utf16(u"<a/>", false)).codificacao;
    EXPECT_EQ(codificacaoParaGravar(u"<a/>", larga).familia, Familia::Utf16LE);
}

TEST(CodificacaoXML, AnUnknownNewNameLeavesTheEncoding) {
    EXPECT_EQ(codificacaoParaGravar(u"<?xml version='1.0' encoding='nenhuma'?>", latin1()).nome,
              "ISO-8859-1");
}

TEST(CodificacaoXML, NamesOutsideOfTheKnownFamiliesAreNotAskedFor) {
    const TextoLido lido = leTexto("<?xml version='1.0' encoding='UTF-7//TRANSLIT'?>+AOk-");
    EXPECT_EQ(lido.codificacao.familia, Familia::Utf8);
    EXPECT_TRUE(lido.texto.ends_with(u"+AOk-"));
}

} // namespace
} // namespace tv::test
