// Two objects stand for two programs: a lock that one of them holds is refused to the other, as it is between
// processes.
#include "common/PastaDeGuarda.h"

#include "PastasDeAtualizacao.h"
#include "app/Aplicacao.h"
#include "platform/Error.h"

#include <gtest/gtest.h>

#include <chrono>
#include <set>
#include <string>

namespace tv {
namespace {

namespace fs = std::filesystem;

class PastaDeGuardaTest : public ::testing::Test {
protected:
    /// The work of a program that is gone.
    fs::path deixa(const std::string& bytes) {
        PastaDeGuarda morta(pasta);
        const fs::path lugar = morta.novoLugar();
        files::writeAll(lugar, bytes);
        return lugar;
    }
    std::set<std::string> extensoes() const {
        std::set<std::string> todas;
        for (const auto& item : fs::directory_iterator(pasta)) {
            todas.insert(item.path().extension().string());
        }
        return todas;
    }
    static void envelhece(const fs::path& arquivo, int dias) {
        fs::last_write_time(arquivo, fs::file_time_type::clock::now() - std::chrono::hours(24 * dias));
    }

    test::ScratchFolder raiz;
    fs::path pasta = raiz / "recuperacao";
};

TEST_F(PastaDeGuardaTest, IsThereOnlyWhileSomethingIsKept) {
    PastaDeGuarda esta(pasta);
    EXPECT_TRUE(esta.assume().empty());
    EXPECT_FALSE(fs::exists(pasta));
    const fs::path um = esta.novoLugar();
    const fs::path outro = esta.novoLugar();
    EXPECT_NE(um, outro);
    files::writeAll(um, "um");
    esta.libera(um);
    EXPECT_FALSE(fs::exists(um));
    EXPECT_TRUE(fs::exists(pasta)) << "another place is taken";
    esta.libera(outro);
    EXPECT_FALSE(fs::exists(pasta));
    EXPECT_TRUE(fs::exists(esta.novoLugar().parent_path())) << "it starts again";
}

TEST_F(PastaDeGuardaTest, TakesOverWhatAProgramThatIsGoneLeft) {
    const fs::path velho = deixa("trabalho");
    PastaDeGuarda nova(pasta);
    const auto assumidos = nova.assume();
    ASSERT_EQ(assumidos.size(), 1U);
    EXPECT_FALSE(fs::exists(velho));
    EXPECT_EQ(files::readAll(assumidos[0]), "trabalho");
    EXPECT_TRUE(nova.assume().empty()) << "its own work is not left behind";
    nova.libera(assumidos[0]);
    EXPECT_FALSE(fs::exists(pasta)) << "the lock of the other has gone too";
}

TEST_F(PastaDeGuardaTest, GivesTheOldestFirst) {
    const fs::path novo = deixa("novo");
    const fs::path velho = deixa("velho");
    envelhece(velho, 2);
    PastaDeGuarda nova(pasta);
    const auto assumidos = nova.assume();
    ASSERT_EQ(assumidos.size(), 2U);
    EXPECT_EQ(files::readAll(assumidos[0]), "velho");
    EXPECT_EQ(files::readAll(assumidos[1]), "novo");
}

TEST_F(PastaDeGuardaTest, LeavesTheWorkOfAProgramThatRunsAlone) {
    PastaDeGuarda viva(pasta);
    const fs::path lugar = viva.novoLugar();
    files::writeAll(lugar, "meu");
    files::writeAll(fs::path(lugar).replace_extension(".parcial"), "pela metade");
    const auto antes = test::arquivosDe(pasta);
    PastaDeGuarda outra(pasta);
    EXPECT_TRUE(outra.assume().empty());
    EXPECT_EQ(test::arquivosDe(pasta), antes);
}

TEST_F(PastaDeGuardaTest, OneOfTwoProgramsTakesItOver) {
    deixa("trabalho");
    PastaDeGuarda uma(pasta);
    PastaDeGuarda outra(pasta);
    EXPECT_EQ(uma.assume().size(), 1U);
    EXPECT_TRUE(outra.assume().empty());
}

TEST_F(PastaDeGuardaTest, WhatAProgramTookOverIsLeftBehindAgainWhenItGoes) {
    deixa("trabalho");
    EXPECT_EQ(PastaDeGuarda(pasta).assume().size(), 1U);
    EXPECT_EQ(PastaDeGuarda(pasta).assume().size(), 1U);
}

TEST_F(PastaDeGuardaTest, HalfWrittenFilesOfTheDeadGo) {
    const fs::path lugar = deixa("inteiro");
    files::writeAll(fs::path(lugar).replace_extension(".parcial"), "pela metade");
    PastaDeGuarda nova(pasta);
    ASSERT_EQ(nova.assume().size(), 1U);
    EXPECT_EQ(extensoes(), (std::set<std::string>{".trabalho", ".trava"}));
}

TEST_F(PastaDeGuardaTest, AWorkWithoutALockFileIsTakenOver) {
    fs::create_directories(pasta);
    files::writeAll(pasta / "qualquer_1.trabalho", "de volta");
    PastaDeGuarda nova(pasta);
    ASSERT_EQ(nova.assume().size(), 1U);
}

TEST_F(PastaDeGuardaTest, OtherFilesAreNotTouched) {
    fs::create_directories(pasta);
    files::writeAll(pasta / "leia.txt", "de alguém");
    deixa("trabalho");
    PastaDeGuarda nova(pasta);
    const auto assumidos = nova.assume();
    ASSERT_EQ(assumidos.size(), 1U);
    nova.libera(assumidos[0]);
    EXPECT_EQ(test::arquivosDe(pasta), (test::Arquivos{{"leia.txt", "de alguém"}}));
}

TEST_F(PastaDeGuardaTest, WhatIsSetAsideStaysForItsDaysAndIsNotOffered) {
    deixa("recusado");
    deixa("danificado");
    PastaDeGuarda nova(pasta);
    const auto assumidos = nova.assume();
    ASSERT_EQ(assumidos.size(), 2U);
    for (const fs::path& assumido : assumidos) {
        envelhece(assumido, 100);
    }
    nova.recusa(assumidos[0]);
    nova.danificado(assumidos[1]);
    EXPECT_EQ(extensoes(), (std::set<std::string>{".recusado", ".danificado"})) << "no lock is left";
    EXPECT_TRUE(PastaDeGuarda(pasta).assume().empty());
    EXPECT_EQ(extensoes().size(), 2U) << "the days count from the answer";
    for (const auto& item : fs::directory_iterator(pasta)) {
        envelhece(item.path(), PastaDeGuarda::diasDosRecusados + 1);
    }
    EXPECT_TRUE(PastaDeGuarda(pasta).assume().empty());
    EXPECT_FALSE(fs::exists(pasta));
}

TEST_F(PastaDeGuardaTest, ARefusedWorkIsOfferedAgainUnderItsOldName) {
    deixa("trabalho");
    {
        PastaDeGuarda nova(pasta);
        nova.recusa(nova.assume().at(0));
    }
    for (const auto& item : fs::directory_iterator(pasta)) {
        fs::rename(item.path(), fs::path(item.path()).replace_extension(".trabalho"));
    }
    PastaDeGuarda outra(pasta);
    ASSERT_EQ(outra.assume().size(), 1U);
}

TEST_F(PastaDeGuardaTest, AFolderThatWasTakenAwayIsMadeAgain) {
    PastaDeGuarda esta(pasta);
    static_cast<void>(esta.novoLugar());
    fs::remove_all(pasta);
    const fs::path lugar = esta.novoLugar();
    files::writeAll(lugar, "trabalho");
    EXPECT_TRUE(PastaDeGuarda(pasta).assume().empty()) << "and there is a lock again";
}

TEST_F(PastaDeGuardaTest, AFileInTheFoldersPlaceIsTold) {
    files::writeAll(pasta, "no lugar");
    PastaDeGuarda esta(pasta);
    EXPECT_THROW(esta.novoLugar(), Error);
    EXPECT_TRUE(esta.assume().empty());
    EXPECT_EQ(files::readAll(pasta), "no lugar") << "it is somebody's";
}

TEST_F(PastaDeGuardaTest, TheProgramsFolderIsBelowTheApplicationFolderWithoutALog) {
    const fs::path antes = aplicacao::pasta();
    aplicacao::setPasta(raiz.path());
    EXPECT_EQ(PastaDeGuarda::doPrograma()->pasta(), pasta);
    EXPECT_EQ(PastaDeGuarda::doPrograma(), PastaDeGuarda::doPrograma());
    aplicacao::setPasta(antes);
}

} // namespace
} // namespace tv
