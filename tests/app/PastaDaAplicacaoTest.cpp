#include "app/PastaDaAplicacao.h"
#include "app/Aplicacao.h"
#include "app/Distribuicao.h"
#include "platform/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace tv {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

class PastaDaAplicacaoTest : public ::testing::Test {
protected:
    PastaDaAplicacaoTest() {
        fs::permissions(raiz.path(), fs::perms(0755));
        fs::create_directories(sistema / "bin");
        fs::create_directories(casa);
        fs::permissions(casa, fs::perms(0777));
    }
    ~PastaDaAplicacaoTest() override { aplicacao::setPasta(files::executableFolder()); }
    void instala(const std::string& numero) const { distribui(partilhada, versao(numero)); }
    pastaDaAplicacao::Lugares lugares() const { return {sistema / "bin", casa}; }

    const ScratchFolder raiz;
    const fs::path sistema = raiz / "usr";
    const fs::path partilhada = sistema / "share/tramador-validador";
    const fs::path casa = raiz / "casa";
    const fs::path propria = casa / "tramador-validador";
};

/// Runs `acao` as somebody to whom other people's folders are closed, in a process of its own; gives whether
/// it held.
bool comoUsuarioComum(const std::function<bool()>& acao) {
    constexpr uid_t ninguem = 65534;
    const pid_t filho = ::fork();
    if (filho == 0) {
        const bool comum = ::geteuid() != 0 || ::setresuid(ninguem, ninguem, ninguem) == 0;
        ::_exit(comum && acao() ? 0 : 1);
    }
    int como = 0;
    ::waitpid(filho, &como, 0);
    return WIFEXITED(como) && WEXITSTATUS(como) == 0;
}

TEST_F(PastaDaAplicacaoTest, AFolderWithTheCatalogThatTakesFilesIsUsedAsItStands) {
    instala("1");
    distribui(sistema / "bin", versao("2"));
    const auto escolha = pastaDaAplicacao::escolhe(lugares());
    EXPECT_EQ(escolha.pasta, sistema / "bin");
    EXPECT_TRUE(escolha.distribuicao.empty());
    EXPECT_EQ(pastaDaAplicacao::prepara(lugares()).pasta, sistema / "bin");
    EXPECT_FALSE(files::exists(propria));
}

TEST_F(PastaDaAplicacaoTest, AnInstalledProgramWorksInTheUsersFolder) {
    instala("1");
    const auto preparada = pastaDaAplicacao::prepara(lugares());
    EXPECT_EQ(preparada.pasta, propria);
    EXPECT_EQ(preparada.distribuicao, partilhada);
    EXPECT_EQ(preparada.aviso, "");
    EXPECT_EQ(conteudo(propria), versao("1"));
    EXPECT_EQ(aplicacao::pasta(), propria);
}

TEST_F(PastaDaAplicacaoTest, WithoutAnyInstallationTheExecutablesFolderRemains) {
    const auto preparada = pastaDaAplicacao::prepara({sistema / "bin", {}});
    EXPECT_EQ(preparada.pasta, sistema / "bin");
    EXPECT_FALSE(files::exists(propria));
    fs::create_directories(partilhada);
    files::writeAll(partilhada / nomeDoCatalogo, "sem a lista");
    EXPECT_EQ(pastaDaAplicacao::escolhe(lugares()).pasta, sistema / "bin");
}

TEST_F(PastaDaAplicacaoTest, AFolderThatTakesNoFilesIsWhatTheUsersIsMadeFrom) {
    distribui(sistema / "bin", versao("1"));
    fs::permissions(sistema / "bin", fs::perms(0555));
    EXPECT_TRUE(comoUsuarioComum([&] {
        const auto preparada = pastaDaAplicacao::prepara(lugares());
        return preparada.pasta == propria && preparada.distribuicao == sistema / "bin" &&
               conteudo(propria) == versao("1");
    }));
    EXPECT_EQ(conteudo(propria), versao("1"));
    fs::permissions(sistema / "bin", fs::perms(0755));
}

TEST_F(PastaDaAplicacaoTest, TheSystemsFoldersMayBeClosedToTheUser) {
    instala("1");
    for (const fs::path& fechada : {partilhada, sistema / "bin", sistema}) {
        fs::permissions(fechada, fs::perms(0555));
    }
    EXPECT_TRUE(comoUsuarioComum([&] { return pastaDaAplicacao::prepara(lugares()).pasta == propria; }));
    EXPECT_EQ(conteudo(propria), versao("1"));
    for (const fs::path& fechada : {sistema, sistema / "bin", partilhada}) {
        fs::permissions(fechada, fs::perms(0755));
    }
}

TEST_F(PastaDaAplicacaoTest, AUserWithoutAnyFolderIsTold) {
    instala("1");
    try {
        static_cast<void>(pastaDaAplicacao::prepara({sistema / "bin", {}}));
        FAIL();
    } catch (const Error& falha) {
        EXPECT_EQ(falha.number(), errc::pathNotFound);
        EXPECT_THAT(falha.description(), HasSubstr("XDG_DATA_HOME"));
    }
}

TEST_F(PastaDaAplicacaoTest, AHomeThatTakesNoFilesIsToldWithFolderAndReason) {
    instala("1");
    fs::permissions(casa, fs::perms(0555));
    EXPECT_TRUE(comoUsuarioComum([&] {
        try {
            static_cast<void>(pastaDaAplicacao::prepara(lugares()));
        } catch (const Error& falha) {
            return falha.number() == errc::permissionDenied &&
                   falha.description().find(propria.string()) != std::string::npos &&
                   falha.description().find("Permissão negada") != std::string::npos;
        }
        return false;
    }));
}

TEST_F(PastaDaAplicacaoTest, AnUpdateThatCannotBeMadeLeavesAFolderThatWorks) {
    instala("1");
    static_cast<void>(pastaDaAplicacao::prepara(lugares()));
    instala("2");
    files::writeAll(partilhada / "XSD/tipos.xsd", "outro");
    const auto preparada = pastaDaAplicacao::prepara(lugares());
    EXPECT_THAT(preparada.aviso, HasSubstr("a instalação está incompleta"));
    EXPECT_EQ(conteudo(propria), versao("1"));
}

TEST_F(PastaDaAplicacaoTest, FilesPutBesideTheUsersAreNamedOnce) {
    instala("1");
    static_cast<void>(pastaDaAplicacao::prepara(lugares()));
    files::writeAll(propria / "XSD/tipos.xsd", "meu");
    instala("2");
    EXPECT_THAT(pastaDaAplicacao::prepara(lugares()).oferecidos, ElementsAre("XSD/tipos.xsd"));
    EXPECT_THAT(pastaDaAplicacao::prepara(lugares()).oferecidos, IsEmpty());
}

TEST(LugaresTest, AreThoseOfTheProcess) {
    EXPECT_EQ(pastaDaAplicacao::lugares().executavel, files::executableFolder());
}

} // namespace
} // namespace tv
