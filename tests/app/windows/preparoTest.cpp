// What the user is asked and told when the application folder is set up.
#include "app/windows/preparo.h"

#include "app/Aplicacao.h"
#include "app/Distribuicao.h"
#include "app/windows/biblioteca.h"
#include "windows/Caixas.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using namespace test;
namespace fs = std::filesystem;

QString q(const char* texto) {
    return QString::fromUtf8(texto);
}

class PreparoTest : public ::testing::Test {
protected:
    PreparoTest() { fs::create_directories(sistema / "bin"); }
    ~PreparoTest() override { aplicacao::setPasta(antes); }

    void instala(const std::map<std::string, std::string>& arquivos) const {
        distribui(sistema / "share/tramador-validador", arquivos);
    }
    bool prepara() const { return preparo::pasta({sistema / "bin", raiz / "dados"}); }
    std::string le(const std::string& nome) const { return files::readAll(propria / nome); }
    /// A user who has changed a file of which the next version brings a new one.
    void alteraEAtualiza() const {
        instala(versao("1"));
        ASSERT_TRUE(prepara());
        files::writeAll(propria / "XSD/tipos.xsd", "meu");
        instala(versao("2"));
    }

    const fs::path antes = aplicacao::pasta();
    const ScratchFolder raiz;
    const fs::path sistema = raiz / "usr";
    const fs::path propria = raiz / "dados/tramador-validador";
};

TEST_F(PreparoTest, FirstStartsAndUpdatesOfUntouchedFilesAskNothing) {
    const Caixas nenhuma;
    instala(versao("1"));
    EXPECT_TRUE(prepara());
    instala(versao("2"));
    EXPECT_TRUE(prepara());
    EXPECT_EQ(conteudo(propria), versao("2"));
    EXPECT_EQ(aplicacao::pasta(), propria);
}

TEST_F(PreparoTest, YesTakesTheNewFilesAndAsksOnce) {
    alteraEAtualiza();
    Caixas caixas({q("Sim")});
    EXPECT_TRUE(prepara());
    EXPECT_TRUE(prepara());
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas().front().titulo, q("Tramador e Validador"));
    EXPECT_TRUE(caixas.vistas().front().texto.contains(q("XSD/tipos.xsd")));
    EXPECT_EQ(le("XSD/tipos.xsd"), "tipos 2");
}

TEST_F(PreparoTest, NoLeavesTheUsersFilesAndAsksOnce) {
    alteraEAtualiza();
    Caixas caixas({q("Não")});
    EXPECT_TRUE(prepara());
    EXPECT_TRUE(prepara());
    EXPECT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(le("XSD/tipos.xsd"), "meu");
    EXPECT_EQ(le("XSD/tipos.xsd.novo"), "tipos 2");
}

TEST_F(PreparoTest, OffersOfTheCommandLineAreAskedForAtTheNextStart) {
    alteraEAtualiza();
    PreparoDaPasta(sistema / "share/tramador-validador", propria).prepara();
    const Caixas caixas({q("Sim")});
    EXPECT_TRUE(prepara());
    EXPECT_EQ(le("XSD/tipos.xsd"), "tipos 2");
}

TEST_F(PreparoTest, OfManyFilesTheFirstTenAreNamed) {
    auto muitos = versao("1");
    for (int i = 10; i < 23; ++i) {
        muitos["XSD/a" + std::to_string(i)] = "1";
    }
    instala(muitos);
    ASSERT_TRUE(prepara());
    for (auto& [nome, bytes] : muitos) {
        if (nome.starts_with("XSD/a")) {
            files::writeAll(propria / nome, "meu");
            bytes = "2";
        }
    }
    instala(muitos);
    Caixas caixas({q("Não")});
    EXPECT_TRUE(prepara());
    ASSERT_EQ(caixas.vistas().size(), 1U);
    const QString texto = caixas.vistas().front().texto;
    EXPECT_TRUE(texto.contains(q("XSD/a19\n    e mais 3\n"))) << texto.toStdString();
    EXPECT_FALSE(texto.contains(q("XSD/a20")));
}

TEST_F(PreparoTest, AnUpdateThatCannotBeMadeIsToldAndTheProgramStarts) {
    instala(versao("1"));
    ASSERT_TRUE(prepara());
    instala(versao("2"));
    files::writeAll(sistema / "share/tramador-validador/XSD/tipos.xsd", "outro");
    Caixas caixas({q("OK")});
    QString motivo;
    caixas.aoVer = [&](const QMessageBox& caixa) { motivo = caixa.informativeText(); };
    EXPECT_TRUE(prepara());
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas().front().icone, QMessageBox::Warning);
    EXPECT_TRUE(motivo.contains(q("tipos.xsd"))) << motivo.toStdString();
    EXPECT_EQ(conteudo(propria), versao("1"));
}

TEST_F(PreparoTest, WithoutAFolderTheProgramDoesNotStart) {
    instala(versao("1"));
    files::writeAll(raiz / "dados", "a file in its place");
    Caixas caixas({q("OK")});
    QString motivo;
    caixas.aoVer = [&](const QMessageBox& caixa) { motivo = caixa.informativeText(); };
    EXPECT_EQ(biblioteca::executa([this] { return prepara(); }), EXIT_FAILURE);
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas().front().icone, QMessageBox::Critical);
    EXPECT_TRUE(motivo.contains(QString::fromStdString(propria.string()))) << motivo.toStdString();
}

} // namespace
} // namespace tv
