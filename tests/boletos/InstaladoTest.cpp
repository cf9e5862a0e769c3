#include "app/Distribuicao.h"
#include "boletos/ApplicationFolder.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <optional>

// The program as it is installed: executable in one folder of the system, its files in another, and the
// user's application folder made at the first call.

namespace boletos::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
namespace fs = std::filesystem;

/// Variables of the environment for the calls of a test.
class Ambiente {
public:
    explicit Ambiente(const fs::path& dados) { ::setenv("XDG_DATA_HOME", dados.c_str(), 1); }
    ~Ambiente() { ::unsetenv("XDG_DATA_HOME"); }
    Ambiente(const Ambiente&) = delete;
    Ambiente& operator=(const Ambiente&) = delete;
};

class InstaladoTest : public BoletosTest {
protected:
    InstaladoTest() {
        fs::create_directories(programa.parent_path());
        fs::copy_file(TV_BINARY_DIR "/boletos", programa);
        instala("versão 1");
    }
    /// A catalog of which one comment tells the version.
    void instala(const std::string& numero) const {
        const std::string layouts = boleto("Posicao_1", "posicao.xsd");
        tv::test::distribui(folder.path() / "usr/share/tramador-validador",
                            {{tv::test::nomeDoCatalogo, catalog(layouts) + "<!-- " + numero + " -->"},
                             {"XSD/posicao.xsd", std::string(schema)}});
    }
    Outcome chama(const std::vector<std::string>& argumentos) const {
        return run(argumentos, {.program = programa, .folder = {}});
    }
    std::string le(const std::string& nome) const { return tv::files::readAll(propria / nome); }

    const fs::path programa = folder.path() / "usr/bin/boletos";
    const fs::path dados = folder.path() / "dados";
    const fs::path propria = dados / "tramador-validador";
    const Ambiente ambiente{dados};
};

TEST_F(InstaladoTest, TheFirstCallMakesTheUsersFolderWithoutAWord) {
    const Outcome outcome = chama({"validar", "--layout", "Posicao_1", valid("a.xml")});
    EXPECT_EQ(outcome.status, 0) << outcome.out;
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_TRUE(fs::exists(propria / "XSD/posicao.xsd"));
}

TEST_F(InstaladoTest, HelpVersionAndAFolderThatIsNamedMakeNone) {
    EXPECT_EQ(chama({"--help"}).status, 0);
    EXPECT_EQ(chama({"--version"}).status, 0);
    EXPECT_EQ(chama({"validar"}).status, 2);
    EXPECT_EQ(chama({"layouts", "--pasta", app()}).status, 0);
    EXPECT_FALSE(fs::exists(dados));
}

TEST_F(InstaladoTest, AnUpdateIsTakenAndWhatTheUserChangedIsToldOnce) {
    chama({"layouts"});
    tv::files::append(propria / "XSD/posicao.xsd", "<!-- meu -->");
    const std::string meu = le("XSD/posicao.xsd");
    tv::test::distribui(folder.path() / "usr/share/tramador-validador",
                        {{tv::test::nomeDoCatalogo, catalog(boleto("Posicao_2", "posicao.xsd"))},
                         {"XSD/posicao.xsd", std::string(schema) + "\n"}});
    const Outcome primeira = chama({"layouts"});
    EXPECT_EQ(primeira.status, 0);
    EXPECT_THAT(primeira.out, StartsWith("Posicao_2\t"));
    EXPECT_EQ(primeira.err,
              "boletos: O arquivo '" + (propria / "XSD/posicao.xsd").string() +
                  "' foi alterado e fica como est\u00E1; o novo est\u00E1 ao lado, com .novo no nome.\n");
    EXPECT_EQ(le("XSD/posicao.xsd"), meu);
    EXPECT_EQ(le("XSD/posicao.xsd.novo"), std::string(schema) + "\n");
    EXPECT_THAT(chama({"layouts"}).err, IsEmpty());
}

TEST_F(InstaladoTest, AnUpdateThatCannotBeMadeIsToldAndTheEarlierFilesServe) {
    chama({"layouts"});
    instala("2");
    tv::files::append(folder.path() / "usr/share/tramador-validador/XSD/posicao.xsd", " ");
    const fs::path catalogo = folder.path() / "usr/share/tramador-validador" / tv::test::nomeDoCatalogo;
    tv::files::append(catalogo, " ");
    const Outcome outcome = chama({"layouts"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("Posicao_1\t"));
    EXPECT_THAT(
        outcome.err,
        AllOf(StartsWith("boletos: A pasta da aplica\u00E7\u00E3o continua na vers\u00E3o anterior: "),
              HasSubstr(catalogo.string())));
}

TEST_F(InstaladoTest, WhereNoFolderCanBeMadeTheOptionIsNamed) {
    tv::files::writeAll(dados, "a file in its place");
    const Outcome outcome = chama({"layouts"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, AllOf(HasSubstr(propria.string()), HasSubstr("--pasta")));
}

} // namespace
} // namespace boletos::test
