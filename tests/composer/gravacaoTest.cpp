#include "composer/gravacao.h"

#include "../platform/ScratchFolder.h"
#include "../platform/Throws.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

namespace tv::test {
namespace {

namespace fs = std::filesystem;

/// Fails at one of its calls, before that call does anything.
class Falhas : public gravacao::Operacoes {
public:
    explicit Falhas(int qual)
        : falta_(qual) {}
    bool existe(const fs::path& arquivo) override { return Operacoes::existe(passa(arquivo)); }
    std::string le(const fs::path& arquivo) override { return Operacoes::le(passa(arquivo)); }
    void substitui(const fs::path& arquivo, std::string_view bytes) override {
        Operacoes::substitui(passa(arquivo), bytes);
    }
    void apaga(const fs::path& arquivo) override { Operacoes::apaga(passa(arquivo)); }
    bool falhou() const { return falta_ <= 0; }

private:
    const fs::path& passa(const fs::path& arquivo) {
        if (--falta_ == 0) {
            throw Error(errc::diskFull, "teste", "Disco cheio: " + arquivo.string());
        }
        return arquivo;
    }
    int falta_;
};

class Gravacao : public testing::Test {
protected:
    fs::path temporario() const { return pasta.file("kvo1.TMP", "novo"); }
    fs::path destino() const { return pasta / "fundo.xml"; }
    fs::path copia() const { return pasta / "fundo_xml_20240705.bkp"; }

    const clock::Frozen agora{clock::at(2024, 7, 5)};
    const ScratchFolder pasta;
};

TEST_F(Gravacao, MakesANewFileWithoutACopy) {
    gravacao::grava(temporario(), destino());
    EXPECT_EQ(files::readAll(destino()), "novo");
    EXPECT_EQ(pasta.count(), 1U);
}

TEST_F(Gravacao, KeepsTheOldFileAsTodaysCopy) {
    files::writeAll(destino(), "velho");
    gravacao::grava(temporario(), destino());
    EXPECT_EQ(files::readAll(destino()), "novo");
    EXPECT_EQ(files::readAll(copia()), "velho");
    EXPECT_EQ(pasta.count(), 2U);
}

TEST_F(Gravacao, TwiceOnADayKeepsTheLatestCopyOnly) {
    files::writeAll(destino(), "primeiro");
    gravacao::grava(pasta.file("a.TMP", "segundo"), destino());
    gravacao::grava(pasta.file("b.TMP", "terceiro"), destino());
    EXPECT_EQ(files::readAll(destino()), "terceiro");
    EXPECT_EQ(files::readAll(copia()), "segundo");
    EXPECT_EQ(pasta.count(), 2U);
}

TEST_F(Gravacao, WhicheverOperationFailsTheOldOrTheNewFileStands) {
    bool falhou = true;
    for (int qual = 1; falhou; ++qual) {
        ASSERT_LT(qual, 20);
        files::writeAll(destino(), "velho");
        const fs::path novo = temporario();
        Falhas falhas(qual);
        const auto erro = errorOf([&] { gravacao::grava(novo, destino(), falhas); });
        falhou = falhas.falhou();
        EXPECT_EQ(files::readAll(destino()), erro ? "velho" : "novo") << qual;
        EXPECT_TRUE(!erro || files::readAll(novo) == "novo") << qual;
        EXPECT_TRUE(!erro || *erro == errc::diskFull);
    }
}

TEST_F(Gravacao, WithoutACopyTheTargetStaysUntouched) {
    files::writeAll(destino(), "velho");
    fs::create_directory(copia()); // no file can take its place
    EXPECT_NE(errorOf([&] { gravacao::grava(temporario(), destino()); }), std::nullopt);
    EXPECT_EQ(files::readAll(destino()), "velho");
}

TEST_F(Gravacao, AFolderThatIsNotThereTellsSo) {
    EXPECT_EQ(errorOf([&] { gravacao::grava(temporario(), pasta / "nenhuma" / "a.xml"); }),
              errc::pathNotFound);
}

TEST_F(Gravacao, AMissingDocumentLeavesTheTarget) {
    files::writeAll(destino(), "velho");
    EXPECT_EQ(errorOf([&] { gravacao::grava(pasta / "nenhum.TMP", destino()); }), errc::fileNotFound);
    EXPECT_EQ(files::readAll(destino()), "velho");
    EXPECT_FALSE(files::exists(copia()));
}

} // namespace
} // namespace tv::test
