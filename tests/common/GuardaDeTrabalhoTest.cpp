#include "common/GuardaDeTrabalho.h"

#include "PastasDeAtualizacao.h"
#include "app/Aplicacao.h"
#include "platform/Error.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tv {
namespace {

namespace fs = std::filesystem;

PecasDeTrabalho peca(std::string texto) {
    return {std::make_shared<const std::string>(std::move(texto))};
}

class GuardaDeTrabalhoTest : public ::testing::Test {
protected:
    GuardaDeTrabalhoTest() { aplicacao::setPasta(raiz.path()); }
    ~GuardaDeTrabalhoTest() override { aplicacao::setPasta(antes); }
    GuardaDeTrabalhoTest(const GuardaDeTrabalhoTest&) = delete;
    GuardaDeTrabalhoTest& operator=(const GuardaDeTrabalhoTest&) = delete;

    static EtiquetaDeTrabalho etiqueta() { return {"frmTramador", "posicao", "", clock::at(2026, 3, 14)}; }
    static void espera(const GuardaDeTrabalho& guarda) {
        while (guarda.ocupada()) {
            std::this_thread::yield();
        }
    }
    static void guarda(GuardaDeTrabalho& onde, const std::string& texto) {
        onde.guarda(etiqueta(), [texto] { return peca(texto); });
        espera(onde);
    }
    bool temTrabalho() const {
        std::error_code ignorada;
        for (fs::directory_iterator item(pasta, ignorada), fim; !ignorada && item != fim;
             item.increment(ignorada)) {
            if (item->path().extension() == ".trabalho") {
                return true;
            }
        }
        return false;
    }
    static std::string conteudo(const fs::path& lugar) {
        return arquivoDeTrabalho::le(files::readAll(lugar)).conteudo;
    }

    test::ScratchFolder raiz;
    fs::path antes = aplicacao::pasta();
    fs::path pasta = raiz / "recuperacao";
};

TEST_F(GuardaDeTrabalhoTest, KeepsTheLastWorkInOneFile) {
    GuardaDeTrabalho esta;
    EXPECT_FALSE(esta.temTrabalho());
    guarda(esta, "um");
    const fs::path lugar = esta.lugar();
    EXPECT_EQ(conteudo(lugar), "um");
    guarda(esta, "dois");
    EXPECT_EQ(esta.lugar(), lugar);
    EXPECT_EQ(conteudo(lugar), "dois");
    EXPECT_EQ(test::arquivosDe(pasta).size(), 2U) << "the work and the lock";
    esta.larga();
    EXPECT_FALSE(esta.temTrabalho());
    EXPECT_FALSE(fs::exists(pasta));
}

TEST_F(GuardaDeTrabalhoTest, TwoWindowsKeepTwoFiles) {
    GuardaDeTrabalho uma;
    GuardaDeTrabalho outra;
    guarda(uma, "um");
    guarda(outra, "dois");
    EXPECT_EQ(conteudo(uma.lugar()), "um");
    EXPECT_EQ(conteudo(outra.lugar()), "dois");
    uma.larga();
    EXPECT_EQ(conteudo(outra.lugar()), "dois");
    outra.larga();
}

TEST_F(GuardaDeTrabalhoTest, WhatIsKeptStaysWhenItsOwnerGoesWithoutAWord) {
    fs::path lugar;
    {
        GuardaDeTrabalho esta;
        esta.guarda(etiqueta(), [] { return peca("um"); }); // its end waits for the write
        lugar = esta.lugar();
    }
    EXPECT_EQ(conteudo(lugar), "um");
}

TEST_F(GuardaDeTrabalhoTest, AWriteUnderWayIsGivenUp) {
    GuardaDeTrabalho esta;
    std::atomic<bool> comecou = false;
    std::atomic<bool> segue = false;
    esta.guarda(etiqueta(), [&] {
        comecou = true;
        while (!segue) {
            std::this_thread::yield();
        }
        return peca(std::string(std::size_t{8} << 20U, 'x'));
    });
    while (!comecou) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(esta.ocupada());
    EXPECT_THROW(esta.guarda(etiqueta(), [] { return peca("outro"); }), Error);
    std::thread solta([&] { segue = true; });
    esta.larga();
    solta.join();
    EXPECT_FALSE(esta.ocupada());
    EXPECT_FALSE(fs::exists(pasta));
}

TEST_F(GuardaDeTrabalhoTest, AdoptedWorkIsReplacedInItsPlace) {
    const auto daqui = PastaDeGuarda::doPrograma();
    const fs::path lugar = daqui->novoLugar();
    files::writeAll(lugar, "velho");
    GuardaDeTrabalho esta;
    esta.adota(daqui, lugar);
    EXPECT_TRUE(esta.temTrabalho());
    guarda(esta, "novo");
    EXPECT_EQ(conteudo(lugar), "novo");
    esta.larga();
    EXPECT_FALSE(fs::exists(pasta));
}

TEST_F(GuardaDeTrabalhoTest, AFolderThatCannotBeMadeIsTold) {
    files::writeAll(pasta, "no lugar");
    GuardaDeTrabalho esta;
    EXPECT_THROW(esta.guarda(etiqueta(), [] { return peca("um"); }), Error);
    EXPECT_FALSE(esta.ocupada());
    files::remove(pasta);
    guarda(esta, "um");
    EXPECT_EQ(conteudo(esta.lugar()), "um") << "the next time it works";
    esta.larga();
}

TEST_F(GuardaDeTrabalhoTest, AFolderThatWasTakenAwayIsMadeAgain) {
    GuardaDeTrabalho esta;
    guarda(esta, "um");
    fs::remove_all(pasta);
    guarda(esta, "dois");
    EXPECT_EQ(esta.falha(), "");
    EXPECT_EQ(conteudo(esta.lugar()), "dois");
    esta.larga();
}

/// No file of the process may grow beyond a size, as on a disk that is full.
class DiscoCheio {
public:
    explicit DiscoCheio(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &limite_);
        rlimit menor = limite_;
        menor.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &menor);
        sinal_ = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~DiscoCheio() {
        ::setrlimit(RLIMIT_FSIZE, &limite_);
        std::signal(SIGXFSZ, sinal_);
    }
    DiscoCheio(const DiscoCheio&) = delete;
    DiscoCheio& operator=(const DiscoCheio&) = delete;

private:
    rlimit limite_{};
    void (*sinal_)(int) = nullptr;
};

TEST_F(GuardaDeTrabalhoTest, WithoutRoomTheWorkKeptBeforeStaysAndTheFailureIsTold) {
    GuardaDeTrabalho esta;
    guarda(esta, "um");
    {
        const DiscoCheio cheio(5000);
        guarda(esta, std::string(100000, 'x'));
    }
    EXPECT_NE(esta.falha().find('['), std::string::npos) << "with its number, as the log has it";
    EXPECT_EQ(esta.falha(), "") << "once";
    EXPECT_EQ(conteudo(esta.lugar()), "um");
    EXPECT_EQ(test::arquivosDe(pasta).size(), 2U) << "nothing half written is left";
    guarda(esta, "dois");
    EXPECT_EQ(esta.falha(), "");
    EXPECT_EQ(conteudo(esta.lugar()), "dois");
    esta.larga();
}

TEST_F(GuardaDeTrabalhoTest, AFailureOfTheSnapshotIsTold) {
    GuardaDeTrabalho esta;
    esta.guarda(etiqueta(),
                []() -> PecasDeTrabalho { throw Error(errc::overflow, "teste", "Grande demais"); });
    espera(esta);
    EXPECT_EQ(esta.falha(), "Grande demais[6]");
    esta.larga();
}

/// Keeps texts of one letter in ever new lengths until it is killed.
[[noreturn]] void guardaSemParar() {
    GuardaDeTrabalho esta;
    for (std::size_t vez = 0;; ++vez) {
        const std::string texto(1 + (vez * 7919) % 300000, static_cast<char>('a' + vez % 26));
        esta.guarda({"frmEditor", "posicao", "", clock::at(2026, 3, 14)}, [texto] { return peca(texto); });
        while (esta.ocupada()) {
            std::this_thread::yield();
        }
    }
}

TEST_F(GuardaDeTrabalhoTest, KilledAtAnyMomentALeftFileIsAWholeOne) {
    constexpr int vezes = 25;
    std::size_t inteiros = 0;
    for (int vez = 0; vez < vezes; ++vez) {
        const pid_t filho = ::fork();
        ASSERT_GE(filho, 0);
        if (filho == 0) {
            guardaSemParar();
        }
        while (vez % 2 == 0 && !temTrabalho()) {
            std::this_thread::yield(); // so that every other one is killed with something kept
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5 + vez * 3));
        ::kill(filho, SIGKILL);
        int estado = 0;
        ASSERT_EQ(::waitpid(filho, &estado, 0), filho);
        PastaDeGuarda depois(pasta);
        for (const fs::path& lugar : depois.assume()) {
            const std::string texto = conteudo(lugar);
            EXPECT_FALSE(texto.empty());
            EXPECT_EQ(texto.find_first_not_of(texto.front()), std::string::npos);
            ++inteiros;
            depois.libera(lugar);
        }
        EXPECT_FALSE(fs::exists(pasta)) << "nothing else is left behind";
    }
    EXPECT_GE(inteiros, static_cast<std::size_t>(vezes / 2));
}

} // namespace
} // namespace tv
