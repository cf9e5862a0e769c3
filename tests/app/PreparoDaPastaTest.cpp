#include "app/PreparoDaPasta.h"
#include "app/Distribuicao.h"
#include "platform/Clock.h"
#include "platform/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tv {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
namespace fs = std::filesystem;

class PreparoDaPastaTest : public ::testing::Test {
protected:
    std::vector<std::string> instala(const std::string& numero) {
        distribui(origem, versao(numero));
        return preparo.prepara();
    }
    void altera(const std::string& nome, const std::string& bytes) const {
        files::writeAll(pasta / nome, bytes);
    }
    std::string le(const std::string& nome) const { return files::readAll(pasta / nome); }
    bool tem(const std::string& nome) const { return files::exists(pasta / nome); }
    void limpo() const { EXPECT_FALSE(files::exists(pasta / ".instalacao.nova")); }

    const ScratchFolder raiz;
    const fs::path origem = raiz / "distribuicao";
    const fs::path pasta = raiz / "casa/dados/programa";
    PreparoDaPasta preparo{origem, pasta};
};

/// How a process ended that did `acao`.
int noutroProcesso(const std::function<void()>& acao) {
    const pid_t filho = ::fork();
    if (filho == 0) {
        try {
            acao();
        } catch (const std::exception&) {
            ::_exit(1);
        }
        ::_exit(0);
    }
    int como = 0;
    ::waitpid(filho, &como, 0);
    return como;
}

/// No file of this process may become larger from now on.
void limita(rlim_t bytes) {
    const rlimit limite{bytes, RLIM_INFINITY};
    ::setrlimit(RLIMIT_FSIZE, &limite);
}

TEST_F(PreparoDaPastaTest, FirstStartMakesTheWholeFolder) {
    EXPECT_FALSE(preparo.pronta());
    EXPECT_THAT(instala("1"), IsEmpty());
    EXPECT_EQ(conteudo(pasta), versao("1"));
    EXPECT_TRUE(preparo.pronta());
    EXPECT_EQ(static_cast<unsigned>(fs::status(pasta).permissions()) & 0777U, 0700U);
    limpo();
}

TEST_F(PreparoDaPastaTest, TheSecondStartTouchesNothing) {
    instala("1");
    altera("XSD/tipos.xsd", "meu");
    fs::remove(pasta / "amostras/um/valido.xml");
    const auto antes = files::stamp(pasta / PreparoDaPasta::registro);
    EXPECT_THAT(preparo.prepara(), IsEmpty());
    EXPECT_EQ(le("XSD/tipos.xsd"), "meu");
    EXPECT_FALSE(tem("amostras/um/valido.xml"));
    EXPECT_EQ(files::stamp(pasta / PreparoDaPasta::registro), antes);
}

TEST_F(PreparoDaPastaTest, AnUpdateReplacesWhatTheUserLeftAlone) {
    instala("1");
    EXPECT_THAT(instala("2"), IsEmpty());
    EXPECT_EQ(conteudo(pasta), versao("2"));
    EXPECT_THAT(preparo.ofertas(), IsEmpty());
}

TEST_F(PreparoDaPastaTest, AChangedFileStaysAndTheNewOneIsOffered) {
    instala("1");
    altera("XSD/tipos.xsd", "meu");
    EXPECT_THAT(instala("2"), ElementsAre("XSD/tipos.xsd"));
    auto esperado = versao("2");
    esperado["XSD/tipos.xsd"] = "meu";
    esperado["XSD/tipos.xsd.novo"] = "tipos 2";
    EXPECT_EQ(conteudo(pasta), esperado);
    EXPECT_THAT(preparo.ofertas(), ElementsAre("XSD/tipos.xsd"));
    EXPECT_THAT(preparo.prepara(), IsEmpty()); // it is told once
    limpo();
}

TEST_F(PreparoDaPastaTest, AChangedFileOfWhichNothingNewHasComeIsNotOffered) {
    instala("1");
    altera("XSD/resultado.xsl", "minha");
    EXPECT_THAT(instala("2"), IsEmpty());
    EXPECT_EQ(le("XSD/resultado.xsl"), "minha");
    EXPECT_FALSE(tem("XSD/resultado.xsl.novo"));
}

TEST_F(PreparoDaPastaTest, AFileOfWhichNothingIsKnownIsTheUsers) {
    fs::create_directories(pasta / "XSD");
    altera("XSD/tipos.xsd", "de antes");
    altera("XSD/minha.xsd", "esquema");
    EXPECT_THAT(instala("1"), ElementsAre("XSD/tipos.xsd"));
    EXPECT_EQ(le("XSD/tipos.xsd"), "de antes");
    EXPECT_EQ(le("XSD/minha.xsd"), "esquema");
}

TEST_F(PreparoDaPastaTest, ALinkIsTheUsersWhateverItLeadsTo) {
    instala("1");
    files::writeAll(raiz / "partilhado.xsd", "tipos 1");
    fs::remove(pasta / "XSD/tipos.xsd");
    fs::create_symlink(raiz / "partilhado.xsd", pasta / "XSD/tipos.xsd");
    EXPECT_THAT(instala("2"), ElementsAre("XSD/tipos.xsd"));
    EXPECT_TRUE(fs::is_symlink(pasta / "XSD/tipos.xsd"));
    EXPECT_EQ(files::readAll(raiz / "partilhado.xsd"), "tipos 1");
}

TEST_F(PreparoDaPastaTest, NamesCountWithoutRegardToCase) {
    fs::create_directories(pasta / "xsd");
    altera("xsd/TIPOS.XSD", "meu");
    EXPECT_THAT(instala("1"), ElementsAre("XSD/tipos.xsd"));
    EXPECT_EQ(le("xsd/TIPOS.XSD"), "meu");
    EXPECT_EQ(le("xsd/TIPOS.XSD.novo"), "tipos 1");
    EXPECT_EQ(le("xsd/resultado.xsl"), "sempre o mesmo");
    EXPECT_FALSE(tem("XSD"));
}

TEST_F(PreparoDaPastaTest, ACatalogThatIsGoneComesBack) {
    instala("1");
    altera("XSD/tipos.xsd", "meu");
    fs::remove(pasta / nomeDoCatalogo);
    EXPECT_FALSE(preparo.pronta());
    EXPECT_THAT(preparo.prepara(), IsEmpty());
    EXPECT_EQ(le(nomeDoCatalogo), "catalogo 1");
    EXPECT_EQ(le("XSD/tipos.xsd"), "meu");
}

TEST_F(PreparoDaPastaTest, FilesThatAreNoLongerShippedStay) {
    instala("1");
    auto menor = versao("2");
    menor.erase("XSD/resultado.xsl");
    distribui(origem, menor);
    preparo.prepara();
    EXPECT_EQ(le("XSD/resultado.xsl"), "sempre o mesmo");
}

TEST_F(PreparoDaPastaTest, AcceptedOffersTakeThePlaceAndTheOldFilesStayBeside) {
    const clock::Frozen agora(clock::at(2026, 3, 14, 10, 20, 30));
    instala("1");
    altera("XSD/tipos.xsd", "meu");
    altera(nomeDoCatalogo, "meu catalogo");
    instala("2");
    preparo.aceita();
    auto esperado = versao("2");
    esperado["XSD/tipos.xsd.anterior_20260314_102030"] = "meu";
    esperado[nomeDoCatalogo + ".anterior_20260314_102030"] = "meu catalogo";
    EXPECT_EQ(conteudo(pasta), esperado);
    EXPECT_THAT(preparo.ofertas(), IsEmpty());
    EXPECT_THAT(instala("3"), IsEmpty()); // they are ours again
    EXPECT_EQ(le("XSD/tipos.xsd"), "tipos 3");
}

TEST_F(PreparoDaPastaTest, RefusedOffersAreNotMadeAgainUntilSomethingNewComes) {
    instala("1");
    altera("XSD/tipos.xsd", "meu");
    instala("2");
    preparo.recusa();
    EXPECT_THAT(preparo.ofertas(), IsEmpty());
    EXPECT_EQ(le("XSD/tipos.xsd"), "meu");
    EXPECT_EQ(le("XSD/tipos.xsd.novo"), "tipos 2");
    EXPECT_THAT(instala("3"), ElementsAre("XSD/tipos.xsd"));
    EXPECT_EQ(le("XSD/tipos.xsd.novo"), "tipos 3");
    EXPECT_EQ(le("XSD/tipos.xsd"), "meu");
}

TEST_F(PreparoDaPastaTest, AnOfferThatTheUserTookHimselfIsNone) {
    instala("1");
    altera("XSD/tipos.xsd", "meu");
    instala("2");
    fs::rename(pasta / "XSD/tipos.xsd.novo", pasta / "XSD/tipos.xsd");
    EXPECT_THAT(preparo.ofertas(), IsEmpty());
    EXPECT_THAT(instala("3"), IsEmpty());
    EXPECT_EQ(conteudo(pasta), versao("3"));
}

TEST_F(PreparoDaPastaTest, WithoutSpaceTheFolderStaysThatOfTheEarlierVersion) {
    instala("1");
    altera("XSD/tipos.xsd", "meu");
    const auto antes = conteudo(pasta);
    auto maior = versao("2");
    maior["amostras/um/valido.xml"] = std::string(100'000, 'x');
    distribui(origem, maior);
    const int como = noutroProcesso([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        limita(50'000);
        preparo.prepara();
    });
    EXPECT_TRUE(WIFEXITED(como) && WEXITSTATUS(como) == 1);
    EXPECT_EQ(conteudo(pasta), antes);
    EXPECT_TRUE(preparo.pronta());
    limpo();
    EXPECT_THAT(preparo.prepara(), ElementsAre("XSD/tipos.xsd")); // when there is space again
    EXPECT_EQ(le("amostras/um/valido.xml").size(), 100'000U);
}

TEST_F(PreparoDaPastaTest, WithoutSpaceAtTheFirstStartNothingIsHalfThere) {
    auto grande = versao("1");
    grande["amostras/um/valido.xml"] = std::string(100'000, 'x');
    distribui(origem, grande);
    const int como = noutroProcesso([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        limita(50'000);
        preparo.prepara();
    });
    EXPECT_TRUE(WIFEXITED(como) && WEXITSTATUS(como) == 1);
    EXPECT_FALSE(preparo.pronta());
    EXPECT_THAT(conteudo(pasta), IsEmpty());
    limpo();
}

TEST_F(PreparoDaPastaTest, AKilledSetUpIsDoneAgain) {
    instala("1");
    altera("XSD/tipos.xsd", "meu");
    auto maior = versao("2");
    maior["amostras/um/valido.xml"] = std::string(100'000, 'x');
    distribui(origem, maior);
    const int como = noutroProcesso([&] {
        limita(50'000); // the first byte beyond it ends the process
        preparo.prepara();
    });
    ASSERT_TRUE(WIFSIGNALED(como));
    EXPECT_TRUE(files::exists(pasta / ".instalacao.nova")); // what it left behind
    EXPECT_TRUE(preparo.pronta());
    EXPECT_THAT(preparo.prepara(), ElementsAre("XSD/tipos.xsd"));
    maior["XSD/tipos.xsd"] = "meu";
    maior["XSD/tipos.xsd.novo"] = "tipos 2";
    EXPECT_EQ(conteudo(pasta), maior);
    limpo();
}

TEST_F(PreparoDaPastaTest, BetweenTwoFilesOfAnUpdateNothingOfTheUsersIsTakenForOurs) {
    instala("1");
    altera("XSD/tipos.xsd", "meu");
    // As a process leaves it that ends when one of the files is in place: both versions are known, none
    // whole.
    Manifesto manifesto = Manifesto::le(le(PreparoDaPasta::registro));
    manifesto.origem.clear();
    manifesto.arquivos[nomeDoCatalogo].insert(checksum::sha256("catalogo 2"));
    manifesto.arquivos["amostras/um/valido.xml"].insert(checksum::sha256("amostra 2"));
    altera(PreparoDaPasta::registro, manifesto.texto());
    altera(nomeDoCatalogo, "catalogo 2");
    EXPECT_FALSE(preparo.pronta());
    EXPECT_THAT(instala("3"), ElementsAre("XSD/tipos.xsd"));
    EXPECT_EQ(le(nomeDoCatalogo), "catalogo 3");
    EXPECT_EQ(le("amostras/um/valido.xml"), "amostra 3");
    EXPECT_EQ(le("XSD/tipos.xsd"), "meu");
}

TEST_F(PreparoDaPastaTest, KilledAtAnyMomentItNeverLosesWhatIsTheUsers) {
    constexpr int vezes = 40;
    for (int vez = 0; vez < vezes; ++vez) {
        fs::remove_all(pasta);
        instala("1");
        altera("XSD/tipos.xsd", "meu");
        distribui(origem, versao("2"));
        const pid_t filho = ::fork();
        if (filho == 0) {
            preparo.prepara();
            ::_exit(0);
        }
        ::usleep(static_cast<useconds_t>(vez) * 100);
        ::kill(filho, SIGKILL);
        ::waitpid(filho, nullptr, 0);
        EXPECT_EQ(le("XSD/tipos.xsd"), "meu");
        preparo.prepara();
        auto esperado = versao("2");
        esperado["XSD/tipos.xsd"] = "meu";
        esperado["XSD/tipos.xsd.novo"] = "tipos 2";
        ASSERT_EQ(conteudo(pasta), esperado) << vez;
        ASSERT_TRUE(preparo.pronta());
    }
}

TEST_F(PreparoDaPastaTest, SeveralStartsAtOnceTakeTurns) {
    for (const char* numero : {"1", "2"}) {
        distribui(origem, versao(numero));
        std::vector<pid_t> filhos;
        for (int i = 0; i < 6; ++i) {
            filhos.push_back(::fork());
            if (filhos.back() == 0) {
                try {
                    preparo.prepara();
                } catch (const std::exception&) {
                    ::_exit(1);
                }
                ::_exit(conteudo(pasta) == versao(numero) ? 0 : 2);
            }
        }
        for (const pid_t filho : filhos) {
            int como = 0;
            ::waitpid(filho, &como, 0);
            EXPECT_TRUE(WIFEXITED(como));
            EXPECT_EQ(WEXITSTATUS(como), 0);
        }
        EXPECT_EQ(conteudo(pasta), versao(numero));
        limpo();
    }
}

TEST_F(PreparoDaPastaTest, AnInstallationThatIsJustBeingChangedIsNotTaken) {
    instala("1");
    distribui(origem, versao("2"));
    files::writeAll(origem / "XSD/tipos.xsd", "ja o da 3");
    EXPECT_THROW(preparo.prepara(), Error);
    EXPECT_EQ(conteudo(pasta), versao("1"));
    EXPECT_TRUE(preparo.pronta());
}

TEST_F(PreparoDaPastaTest, AListThatLeadsOutsideIsRefused) {
    const std::string soma = checksum::sha256("x");
    distribui(origem, versao("1"));
    for (const std::string& linha : {soma + "  ../fora.txt", soma + "  /fora.txt", soma + " um.txt",
                                     std::string("um.txt"), soma + "  ", "G" + soma.substr(1) + "  um.txt"}) {
        files::writeAll(origem / PreparoDaPasta::lista, linha + "\n");
        EXPECT_THROW(preparo.prepara(), Error) << linha;
    }
    EXPECT_FALSE(files::exists(pasta));
}

TEST(ManifestoTest, IsReadAsItWasWritten) {
    const std::string soma = checksum::sha256("x");
    const std::string outra = checksum::sha256("y");
    const Manifesto manifesto{outra, {{"XSD/com espaço.xsd", {soma, outra}}, {"b", {soma}}}, {"b"}};
    const Manifesto lido = Manifesto::le(manifesto.texto());
    EXPECT_EQ(lido.origem, manifesto.origem);
    EXPECT_EQ(lido.arquivos, manifesto.arquivos);
    EXPECT_EQ(lido.ofertas, manifesto.ofertas);
}

TEST(ManifestoTest, DamagedLinesCountAsNotThere) {
    const std::string soma = checksum::sha256("x");
    const Manifesto lido =
        Manifesto::le("origem 12\narquivo " + soma + " ../fora\narquivo xx b\noferta \nlixo\n" + "arquivo " +
                      soma + " dentro");
    EXPECT_EQ(lido.origem, "");
    EXPECT_EQ(lido.arquivos.size(), 1U);
    EXPECT_TRUE(lido.arquivos.contains("dentro"));
    EXPECT_THAT(lido.ofertas, IsEmpty());
}

} // namespace
} // namespace tv
