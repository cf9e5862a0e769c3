#include "editor/ArquivoEditado.h"

#include "logging/LogFolder.h"
#include "platform/Error.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace tv::test {
namespace {

class ArquivoEditadoTest : public ::testing::Test {
protected:
    std::u16string le(std::string_view bytes) { return arquivo.le(pasta.write("a.xml", bytes)); }
    std::string salva(std::u16string_view texto) {
        arquivo.grava(arquivo.prepara(texto));
        return pasta.read("a.xml");
    }
    TemporaryFolder pasta;
    ArquivoEditado arquivo;
};

TEST_F(ArquivoEditadoTest, AWellFormedTextTakesTheParsersForm) {
    const std::u16string texto = le("<?xml version='1.0'?>\r\n<r>\r\n\t<a  x = '1'/>\r\n</r>\r\n");
    EXPECT_EQ(salva(texto), "<?xml version='1.0'?>\r\n<r>\r\n\t<a x=\"1\"></a>\r\n</r>\r\n");
    EXPECT_FALSE(arquivo.mudouNoDisco());
}

TEST_F(ArquivoEditadoTest, ATextThatIsNotWellFormedIsWrittenAsItStands) {
    EXPECT_EQ(salva(le("<r>\r\n\t<a  x = '1'>\r\n</r>\r\n")), "<r>\r\n\t<a  x = '1'>\r\n</r>\r\n");
}

TEST_F(ArquivoEditadoTest, TheEncodingIsKept) {
    const std::u16string texto = le("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>S\xE3o</r>");
    EXPECT_EQ(texto, u"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>S\u00E3o</r>");
    EXPECT_EQ(salva(texto + u"\n"), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>S\xE3o</r>\n");
}

TEST_F(ArquivoEditadoTest, BytesThatCouldNotBeReadAreToldOfUntilTheyAreGone) {
    const std::u16string texto = le("<r>S\xE3o</r>");
    EXPECT_EQ(arquivo.ilegiveis(), 1U);
    EXPECT_TRUE(arquivo.prepara(texto).perdeIlegiveis);
    EXPECT_FALSE(arquivo.prepara(u"<r>S\u00E3o</r>").perdeIlegiveis);
    salva(texto);
    EXPECT_FALSE(arquivo.prepara(texto).perdeIlegiveis);
}

TEST_F(ArquivoEditadoTest, AChangeByOthersShows) {
    le("<r/>");
    EXPECT_FALSE(arquivo.mudouNoDisco());
    pasta.write("a.xml", "<rr/>");
    EXPECT_TRUE(arquivo.mudouNoDisco());
    salva(u"<r></r>");
    EXPECT_FALSE(arquivo.mudouNoDisco());
    const auto depois = std::filesystem::last_write_time(pasta.path() / "a.xml") + std::chrono::seconds(2);
    std::filesystem::last_write_time(pasta.path() / "a.xml", depois);
    EXPECT_TRUE(arquivo.mudouNoDisco());
    std::filesystem::remove(pasta.path() / "a.xml");
    EXPECT_FALSE(arquivo.mudouNoDisco());
}

TEST_F(ArquivoEditadoTest, AFileThatCannotBeReadIsMarked) {
    EXPECT_THROW(arquivo.le(pasta.path() / "falta.xml"), Error);
    EXPECT_FALSE(arquivo.naoLido()); // nothing is there to be lost
    EXPECT_THROW(arquivo.le(pasta.path()), Error);
    EXPECT_TRUE(arquivo.naoLido());
}

TEST_F(ArquivoEditadoTest, AFileThatWasNotThereCanBeWritten) {
    EXPECT_THROW(arquivo.le(pasta.path() / "a.xml"), Error);
    EXPECT_EQ(salva(u"<r>\u00E9</r>"), "<r>\u00E9</r>");
    EXPECT_FALSE(arquivo.naoLido());
}

TEST_F(ArquivoEditadoTest, AFailedSaveThrowsAndKeepsTheFile) {
    le("<r/>");
    std::filesystem::remove(pasta.path() / "a.xml");
    std::filesystem::create_directory(pasta.path() / "a.xml");
    EXPECT_THROW(arquivo.grava(arquivo.prepara(u"<r/>")), Error);
}

} // namespace
} // namespace tv::test
