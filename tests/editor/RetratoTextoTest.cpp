#include "editor/RetratoTexto.h"

#include "../platform/ScratchFolder.h"
#include "platform/Error.h"

#include <gtest/gtest.h>

#include <string>

namespace tv {
namespace {

RetratoTexto retratoDe(std::u16string texto) {
    RetratoTexto retrato;
    retrato.texto = Texto(std::move(texto));
    return retrato;
}

std::u16string idaEVolta(const std::u16string& texto) {
    return RetratoTexto::le(retratoDe(texto).bytes(), "a.xml").texto.inteiro();
}

TEST(RetratoTexto, TheTextComesBackUnitForUnit) {
    const std::u16string textos[] = {u"", u"<a>ação €</a>\n\n\t", u"\U0001F600 e \uFFFD",
                                     u"\uFDD0\uFDD1\u2029", std::u16string(u"zero\0no meio", 12)};
    for (const std::u16string& texto : textos) {
        EXPECT_EQ(idaEVolta(texto), texto);
    }
}

TEST(RetratoTexto, HalvesOfCharactersComeBackToo) {
    const std::u16string textos[] = {
        {0xD800}, {0xDC00}, {u'a', 0xDC00, 0xD800, u'b'}, {0xD83D, 0xD83D, 0xDE00}};
    for (const std::u16string& texto : textos) {
        EXPECT_EQ(idaEVolta(texto), texto);
    }
}

TEST(RetratoTexto, SelectionAndBreaksComeBack) {
    RetratoTexto retrato = retratoDe(u"texto");
    retrato.inicioSelecao = 2;
    retrato.tamanhoSelecao = 3;
    retrato.quebraForcada = true;
    const RetratoTexto volta = RetratoTexto::le(retrato.bytes(), "a.xml");
    EXPECT_EQ(volta.inicioSelecao, 2);
    EXPECT_EQ(volta.tamanhoSelecao, 3);
    EXPECT_TRUE(volta.quebraForcada);
}

/// The file as it stood when the text was kept.
class RetratoDoArquivo : public ::testing::Test {
protected:
    RetratoTexto volta() const {
        RetratoTexto retrato = retratoDe(u"texto");
        retrato.arquivo = arquivo;
        return RetratoTexto::le(retrato.bytes(), caminho);
    }

    test::ScratchFolder pasta;
    std::filesystem::path caminho =
        pasta.file("a.xml", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<a>\xE7\xE3o</a>\r\n");
    ArquivoEditado arquivo;
};

TEST_F(RetratoDoArquivo, GoesBackInItsEncodingAndLineEnds) {
    arquivo.le(caminho);
    RetratoTexto retomado = volta();
    EXPECT_EQ(retomado.arquivo.codificacao().nome, arquivo.codificacao().nome);
    EXPECT_FALSE(retomado.arquivo.mudouNoDisco());
    EXPECT_FALSE(retomado.arquivo.naoLido());
    const std::u16string_view novo = u"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a>não</a>\n";
    retomado.arquivo.grava(retomado.arquivo.prepara(novo));
    EXPECT_EQ(files::readAll(caminho),
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<a>n\xE3o</a>\r\n");
}

TEST_F(RetratoDoArquivo, AChangeOfTheFileMeanwhileIsSeen) {
    arquivo.le(caminho);
    files::writeAll(caminho, "<a>de outro</a>");
    EXPECT_TRUE(volta().arquivo.mudouNoDisco());
}

TEST_F(RetratoDoArquivo, AFileThatCouldNotBeReadStaysSo) {
    EXPECT_THROW(arquivo.le(pasta / "nenhum.xml"), Error);
    EXPECT_TRUE(volta().arquivo.naoLido());
}

TEST_F(RetratoDoArquivo, OtherBytesAreRefused) {
    arquivo.le(caminho);
    RetratoTexto retrato = retratoDe(u"texto");
    retrato.arquivo = arquivo;
    const std::string bytes = retrato.bytes();
    for (std::size_t tamanho = 0; tamanho < bytes.size(); ++tamanho) {
        EXPECT_THROW(RetratoTexto::le(bytes.substr(0, tamanho), caminho), Error) << tamanho;
    }
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::string mudado = bytes;
        mudado[i] = static_cast<char>(mudado[i] ^ 0x40);
        try {
            static_cast<void>(RetratoTexto::le(mudado, caminho)); // the sum in front of it finds these out
        } catch (const Error&) {
            continue;
        }
    }
}

} // namespace
} // namespace tv
