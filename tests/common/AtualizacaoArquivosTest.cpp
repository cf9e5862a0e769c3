#include "common/AtualizacaoArquivos.h"

#include "common/PastasDeAtualizacao.h"
#include "logging/LogFolder.h"
#include "platform/Throws.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace tv;
using namespace tv::test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

using Nomes = std::vector<std::pair<std::string, std::string>>;

Nomes registros(const AtualizacaoArquivos& atualizacao) {
    Nomes nomes;
    for (const clsArquivo& arquivo : atualizacao.arquivos()) {
        nomes.emplace_back(arquivo.nomeInstalado, arquivo.nomeBackup);
    }
    return nomes;
}

class Update : public testing::Test {
protected:
    clock::Frozen agora{clock::at(2024, 3, 7, 9, 5, 2)};
    PastasDeAtualizacao pastas;
};

TEST_F(Update, SetsTheCatalogAsideUnderADatedNameAndMovesTheNewOneIn) {
    pastas.instalado("TORVA_TramadorValidador.xml", "velho");
    pastas.novo("TORVA_TramadorValidador.xml", "novo");
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    atualizacao.instala(pastas.origem());
    EXPECT_EQ(pastas.conteudo(), (Arquivos{{"TORVA_TramadorValidador.xml", "novo"},
                                           {"TORVA_TramadorValidador_20240307_090502.xml", "velho"}}));
    EXPECT_THAT(pastas.sobras(), IsEmpty());
    EXPECT_THAT(registros(atualizacao), ElementsAre(Pair("\\TORVA_TramadorValidador.xml",
                                                         "\\TORVA_TramadorValidador_20240307_090502.xml")));
}

TEST_F(Update, KeepsAnOldSchemaUnderANameWithoutAPointBeforeItsExtension) {
    pastas.instalado("XSD/movimento_1_00.xsd", "velho");
    pastas.novo("movimento_1_00.xsd", "novo");
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    atualizacao.instala(pastas.origem());
    EXPECT_EQ(pastas.conteudo(), (Arquivos{{"XSD/movimento_1_00.xsd", "novo"},
                                           {"XSD/movimento_1_00_20240307_090502XSD", "velho"}}));
    EXPECT_THAT(registros(atualizacao),
                ElementsAre(Pair("\\XSD\\movimento_1_00.xsd", "\\XSD\\movimento_1_00_20240307_090502XSD")));
}

TEST_F(Update, MovesASchemaWithoutACounterpartInWithoutBackupAndRecord) {
    pastas.novo("posicao_5_00.xsd", "novo");
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    atualizacao.instala(pastas.origem());
    EXPECT_EQ(pastas.conteudo(), (Arquivos{{"XSD/posicao_5_00.xsd", "novo"}}));
    EXPECT_THAT(registros(atualizacao), IsEmpty());
}

TEST_F(Update, TakesSchemasAndStylesheetsWhateverTheCaseOfTheirExtension) {
    for (const char* nome : {"a.xsd", "b.XSD", "c.xsl", "d.Xsl"}) {
        pastas.novo(nome, nome);
    }
    AtualizacaoArquivos(pastas.aplicacao()).instala(pastas.origem());
    EXPECT_EQ(
        pastas.conteudo(),
        (Arquivos{
            {"XSD/a.xsd", "a.xsd"}, {"XSD/b.XSD", "b.XSD"}, {"XSD/c.xsl", "c.xsl"}, {"XSD/d.Xsl", "d.Xsl"}}));
}

TEST_F(Update, LeavesAllOtherFilesAlone) {
    for (const char* nome : {"LEIA-ME.txt", "outro.xml", "xsd", "movimento.xsd.bkp", "formulaxsl", "x."}) {
        pastas.novo(nome, "");
    }
    std::filesystem::create_directory(pastas.origem() / "pasta.xsd");
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    atualizacao.instala(pastas.origem());
    EXPECT_THAT(pastas.conteudo(), IsEmpty());
    EXPECT_THAT(registros(atualizacao), IsEmpty());
    EXPECT_EQ(pastas.sobras(), (Arquivos{{"LEIA-ME.txt", ""},
                                         {"formulaxsl", ""},
                                         {"movimento.xsd.bkp", ""},
                                         {"outro.xml", ""},
                                         {"x.", ""},
                                         {"xsd", ""}}));
}

TEST_F(Update, LeavesNamesThatWouldLeadElsewhereAlone) {
    pastas.instalado("fora.xsl", "da aplicação");
    pastas.instalado("XSD/a.xsd", "velho");
    for (const char* nome : {"..\\fora.xsl", "\\fora.xsl", "..\\..\\fora.xsl", "XSD\\a.xsd"}) {
        pastas.novo(nome, "mau");
    }
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    atualizacao.instala(pastas.origem());
    EXPECT_EQ(pastas.conteudo(), (Arquivos{{"XSD/a.xsd", "velho"}, {"fora.xsl", "da aplicação"}}));
    EXPECT_EQ(pastas.sobras().size(), 4U);
    EXPECT_THAT(registros(atualizacao), IsEmpty());
}

TEST_F(Update, RecordsTheCatalogFirstAndTheSchemasByName) {
    for (const char* nome : {"formula.XSL", "Base.xsd", "arquivo.xsl"}) {
        pastas.instalado(std::string("XSD/") + nome, "velho");
        pastas.novo(nome, "novo");
    }
    pastas.instalado("TORVA_TramadorValidador.xml", "velho");
    pastas.novo("TORVA_TramadorValidador.xml", "novo");
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    atualizacao.instala(pastas.origem());
    EXPECT_THAT(
        registros(atualizacao),
        ElementsAre(Pair("\\TORVA_TramadorValidador.xml", "\\TORVA_TramadorValidador_20240307_090502.xml"),
                    Pair("\\XSD\\arquivo.xsl", "\\XSD\\arquivo_20240307_090502XSL"),
                    Pair("\\XSD\\Base.xsd", "\\XSD\\Base_20240307_090502XSD"),
                    Pair("\\XSD\\formula.XSL", "\\XSD\\formula_20240307_090502XSL")));
}

TEST_F(Update, FindsItsFilesWithoutRegardToCase) {
    std::filesystem::rename(pastas.aplicacao() / "XSD", pastas.aplicacao() / "xsd");
    pastas.instalado("torva_tramadorvalidador.XML", "velho");
    pastas.instalado("xsd/Movimento.XSD", "velho");
    pastas.novo("Torva_TramadorValidador.xml", "novo");
    pastas.novo("movimento.xsd", "novo");
    AtualizacaoArquivos(pastas.aplicacao()).instala(pastas.origem());
    EXPECT_EQ(pastas.conteudo(), (Arquivos{{"TORVA_TramadorValidador.xml", "novo"},
                                           {"TORVA_TramadorValidador_20240307_090502.xml", "velho"},
                                           {"xsd/movimento.xsd", "novo"},
                                           {"xsd/movimento_20240307_090502XSD", "velho"}}));
}

TEST_F(Update, LetsTheLastOfTwoNewSchemasThatDifferInCaseOnlyStand) {
    pastas.novo("BASE.xsd", "primeiro");
    pastas.novo("base.xsd", "segundo");
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    atualizacao.instala(pastas.origem());
    EXPECT_EQ(pastas.conteudo(),
              (Arquivos{{"XSD/base.xsd", "segundo"}, {"XSD/base_20240307_090502XSD", "primeiro"}}));
}

TEST_F(Update, ANameWithMorePointsIsCutAtTheLastOne) {
    pastas.instalado("XSD/posicao.4.01.xsd", "velho");
    pastas.novo("posicao.4.01.xsd", "novo");
    AtualizacaoArquivos(pastas.aplicacao()).instala(pastas.origem());
    EXPECT_EQ(pastas.conteudo(),
              (Arquivos{{"XSD/posicao.4.01.xsd", "novo"}, {"XSD/posicao.4.01_20240307_090502XSD", "velho"}}));
}

TEST_F(Update, TakesItsSuffixOnceBeforeAnyFileMoves) {
    pastas.instalado("XSD/a.xsd", "velho");
    pastas.novo("a.xsd", "novo");
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    const clock::Frozen depois(clock::at(2024, 3, 7, 9, 5, 59));
    atualizacao.instala(pastas.origem());
    EXPECT_THAT(registros(atualizacao), ElementsAre(Pair("\\XSD\\a.xsd", "\\XSD\\a_20240307_090502XSD")));
}

TEST_F(Update, MovesAcrossFileSystems) {
    const ForaDoDisco fora;
    files::writeAll(fora.path() / "a.xsd", "novo");
    pastas.instalado("XSD/a.xsd", "velho");
    AtualizacaoArquivos(pastas.aplicacao()).instala(fora.path());
    EXPECT_EQ(pastas.conteudo(), (Arquivos{{"XSD/a.xsd", "novo"}, {"XSD/a_20240307_090502XSD", "velho"}}));
    EXPECT_FALSE(files::exists(fora.path() / "a.xsd"));
}

TEST_F(Update, OfAnEmptyFolderMovesNothing) {
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    atualizacao.instala(pastas.origem());
    EXPECT_THAT(pastas.conteudo(), IsEmpty());
    EXPECT_THAT(registros(atualizacao), IsEmpty());
}

TEST_F(Update, FailsForAFolderThatIsNotThere) {
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    EXPECT_EQ(errorOf([&] { atualizacao.instala(pastas.origem() / "longe"); }), errc::pathNotFound);
}

TEST_F(Update, FailsBeforeItTakesTheNewCatalogWhenThereIsNoOldOne) {
    pastas.novo("TORVA_TramadorValidador.xml", "novo");
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    EXPECT_EQ(errorOf([&] { atualizacao.instala(pastas.origem()); }), errc::fileNotFound);
    EXPECT_THAT(registros(atualizacao), IsEmpty());
    EXPECT_EQ(pastas.sobras(), (Arquivos{{"TORVA_TramadorValidador.xml", "novo"}}));
}

TEST_F(Update, FailsWhenADatedNameIsTaken) {
    pastas.instalado("XSD/a.xsd", "velho");
    pastas.instalado("XSD/a_20240307_090502XSD", "outro");
    pastas.novo("a.xsd", "novo");
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    EXPECT_EQ(errorOf([&] { atualizacao.instala(pastas.origem()); }), errc::fileExists);
    EXPECT_THAT(registros(atualizacao), IsEmpty());
    EXPECT_EQ(pastas.conteudo(), (Arquivos{{"XSD/a.xsd", "velho"}, {"XSD/a_20240307_090502XSD", "outro"}}));
}

TEST_F(Update, KeepsWhatWasMovedBeforeItFailed) {
    pastas.instalado("TORVA_TramadorValidador.xml", "velho");
    pastas.novo("TORVA_TramadorValidador.xml", "novo");
    pastas.novo("a.xsd", "novo");
    pastas.trancaEsquemas();
    AtualizacaoArquivos atualizacao(pastas.aplicacao());
    EXPECT_NE(errorOf([&] { atualizacao.instala(pastas.origem()); }), std::nullopt);
    EXPECT_EQ(pastas.conteudo(), (Arquivos{{"TORVA_TramadorValidador.xml", "novo"},
                                           {"TORVA_TramadorValidador_20240307_090502.xml", "velho"}}));
    EXPECT_EQ(pastas.sobras(), (Arquivos{{"a.xsd", "novo"}}));
    EXPECT_THAT(registros(atualizacao), ElementsAre(Pair("\\TORVA_TramadorValidador.xml",
                                                         "\\TORVA_TramadorValidador_20240307_090502.xml")));
}

/// The root of a drive of its own, with what it holds.
class Undo : public Update {
protected:
    TemporaryFolder raiz;

    /// An update of the catalog and of one schema.
    AtualizacaoArquivos feita() {
        pastas.instalado("TORVA_TramadorValidador.xml", "velho");
        pastas.instalado("XSD/a.xsd", "velho");
        pastas.novo("TORVA_TramadorValidador.xml", "novo");
        pastas.novo("a.xsd", "novo");
        AtualizacaoArquivos atualizacao(pastas.aplicacao(), raiz.path());
        atualizacao.instala(pastas.origem());
        return atualizacao;
    }
};

TEST_F(Undo, FailsAtTheFirstFileAndLeavesTheApplicationFolderAsItIs) {
    const AtualizacaoArquivos atualizacao = feita();
    const Arquivos antes = pastas.conteudo();
    EXPECT_EQ(errorOf([&] { atualizacao.desfaz(); }), errc::fileNotFound);
    EXPECT_EQ(pastas.conteudo(), antes);
}

TEST_F(Undo, WorksOnTheRootOfTheDriveInTheOrderOfTheRecords) {
    const AtualizacaoArquivos atualizacao = feita();
    raiz.write("TORVA_TramadorValidador.xml", "novo");
    raiz.write("TORVA_TramadorValidador_20240307_090502.xml", "velho");
    EXPECT_EQ(errorOf([&] { atualizacao.desfaz(); }), errc::fileNotFound) << "the schema is not there";
    EXPECT_EQ(raiz.read("TORVA_TramadorValidador.xml"), "velho");
    EXPECT_FALSE(raiz.holds("TORVA_TramadorValidador_20240307_090502.xml"));
}

TEST_F(Undo, PutsAllBackWhereTheApplicationStandsAtTheRoot) {
    const AtualizacaoArquivos atualizacao = feita();
    raiz.write("TORVA_TramadorValidador.xml", "novo");
    raiz.write("TORVA_TramadorValidador_20240307_090502.xml", "velho");
    raiz.write("XSD/a.xsd", "novo");
    raiz.write("XSD/a_20240307_090502XSD", "velho");
    atualizacao.desfaz();
    EXPECT_EQ(arquivosDe(raiz.path()),
              (Arquivos{{"TORVA_TramadorValidador.xml", "velho"}, {"XSD/a.xsd", "velho"}}));
}

TEST_F(Undo, OfAnUpdateWithoutRecordsDoesNothing) {
    pastas.novo("a.xsd", "novo");
    AtualizacaoArquivos atualizacao(pastas.aplicacao(), raiz.path());
    atualizacao.instala(pastas.origem());
    atualizacao.desfaz();
    EXPECT_EQ(pastas.conteudo(), (Arquivos{{"XSD/a.xsd", "novo"}}));
}

} // namespace
