#include "common/windows/FileOperations.h"

#include "common/windows/textoQt.h"
#include "logging/LogFolder.h"
#include "windows/DialogosDeArquivo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

using namespace tv;
using namespace tv::test;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

/// A folder with files, and a log that holds failures only.
class Files : public testing::Test {
protected:
    TemporaryFolder pasta;
    TemporaryFolder diario;
    GlobalLogger global{startLogger(diario, clsLogger::typeTXT, library::level::fatal)};
    std::function<void(QFileDialog&)> vaiParaPasta = [this](QFileDialog& dialogo) {
        dialogo.setDirectory(caminhoQt(pasta.path()));
    };

    QString arquivo(const char* nome) const { return caminhoQt(pasta.write(nome, "<a/>")); }
    QString caminho(const char* nome) const { return caminhoQt(pasta.path() / nome); }
    std::string log() const { return files::readAll(oLogger->getFilename()); }
};

using OpenDocument = Files;

TEST_F(OpenDocument, GivesTheFileChosen) {
    const QString escolhido = arquivo("fundo.xml");
    DialogosDeArquivo dialogos{{escolhido}};
    QString nome = QStringLiteral("proposta");
    EXPECT_EQ(FileOperations::abreDocumento(nullptr, nome), escolhido);
    const DialogoDeArquivo& visto = dialogos.vistos().at(0);
    EXPECT_EQ(visto.nomeObjeto, QStringLiteral("dialogoArquivo"));
    EXPECT_EQ(visto.titulo, QStringLiteral("Abrir Boleto"));
    EXPECT_EQ(visto.filtros, QStringList{QStringLiteral("Arquivos XML (*.xml)")});
    EXPECT_EQ(visto.modo, QFileDialog::ExistingFile);
    EXPECT_EQ(visto.aceite, QFileDialog::AcceptOpen);
    EXPECT_THAT(log(), testing::Not(HasSubstr("FATAL")));
}

TEST_F(OpenDocument, PutsTheExtensionBehindATypedName) {
    const QString escolhido = arquivo("fundo.xml");
    DialogosDeArquivo dialogos{{QStringLiteral("fundo")}};
    QString nome = caminho("proposta");
    EXPECT_EQ(FileOperations::abreDocumento(nullptr, nome), escolhido);
}

TEST_F(OpenDocument, ComesBackForAFileWithAForbiddenCharacterInItsTitle) {
    const QString proibido = arquivo("a*b.xml");
    const QString bom = arquivo("ab.xml");
    DialogosDeArquivo dialogos{{proibido}, {proibido}, {bom}};
    QString nome;
    EXPECT_EQ(FileOperations::abreDocumento(nullptr, nome), bom);
    EXPECT_EQ(dialogos.vistos().size(), 3U);
    EXPECT_EQ(dialogos.vistos().at(1).nome, QStringLiteral("a*b.xml")) << "the user changes what was typed";
}

TEST_F(OpenDocument, LogsItsCancellationAsAFailureAndGivesNothing) {
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    QString nome = QStringLiteral("fundo");
    EXPECT_EQ(FileOperations::abreDocumento(nullptr, nome), QString());
    EXPECT_THAT(log(), HasSubstr("Cancel was selected.[32755]"));
    EXPECT_THAT(log(), HasSubstr("FileOperations.abreDocumento"));
    EXPECT_TRUE(oLogger->callStack.EOF_());
    EXPECT_EQ(nome, QStringLiteral("fundo"));
}

TEST_F(OpenDocument, LeavesOnlyThroughCancelWhileTheNameIsForbidden) {
    const QString proibido = arquivo("a:b.xml");
    DialogosDeArquivo dialogos{{proibido}, DialogosDeArquivo::cancela()};
    QString nome;
    EXPECT_EQ(FileOperations::abreDocumento(nullptr, nome), QString());
    EXPECT_THAT(log(), HasSubstr("[32755]"));
}

TEST_F(OpenDocument, DoesNotTakeAFileThatIsNotThere) {
    DialogosDeArquivo dialogos{{caminho("longe.xml")}, DialogosDeArquivo::cancela()};
    QString nome;
    EXPECT_EQ(FileOperations::abreDocumento(nullptr, nome), QString());
}

TEST_F(OpenDocument, BeginsInTheFolderOfTheProposedName) {
    arquivo("sub/fundo.xml");
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    QString nome = caminho("sub/FUNDO.XML");
    FileOperations::abreDocumento(nullptr, nome);
    EXPECT_EQ(dialogos.vistos().at(0).pasta, caminho("sub"));
    EXPECT_EQ(dialogos.vistos().at(0).nome, QStringLiteral("FUNDO.XML"));
}

using SaveDocument = Files;

TEST_F(SaveDocument, GivesTheNameTypedWithItsFolder) {
    DialogosDeArquivo dialogos{{caminho("novo.xml")}};
    QString nome = QStringLiteral("proposta");
    EXPECT_EQ(FileOperations::salvaDocumento(nullptr, nome), caminho("novo.xml"));
    const DialogoDeArquivo& visto = dialogos.vistos().at(0);
    EXPECT_EQ(visto.titulo, QStringLiteral("Salvar Boleto como ..."));
    EXPECT_EQ(visto.filtros, QStringList{QStringLiteral("Arquivos XML (*.xml)")});
    EXPECT_EQ(visto.modo, QFileDialog::AnyFile);
    EXPECT_EQ(visto.aceite, QFileDialog::AcceptSave);
    EXPECT_FALSE(visto.confirmaTroca);
}

TEST_F(SaveDocument, ProposesItsNameWithTheExtension) {
    const std::pair<const char*, const char*> nomesDados[] = {
        {"FUNDO.XML", "FUNDO.XML"},
        {"fundo", "fundo.xml"},
        {"fundo.xml", "fundo.xml"},
        {"Posição de março", "Posição de março.xml"},
    };
    for (const auto& [dado, proposto] : nomesDados) {
        DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
        QString nome = paraQt(dado);
        EXPECT_EQ(FileOperations::salvaDocumento(nullptr, nome), QString()) << dado;
        EXPECT_EQ(dialogos.vistos().at(0).nome, paraQt(proposto)) << dado;
    }
}

TEST_F(SaveDocument, PutsTheExtensionBehindATypedNameWithoutOne) {
    DialogosDeArquivo dialogos{{caminho("novo")}, {caminho("novo.txt")}};
    QString nome;
    EXPECT_EQ(FileOperations::salvaDocumento(nullptr, nome), caminho("novo.xml"));
    EXPECT_EQ(FileOperations::salvaDocumento(nullptr, nome), caminho("novo.txt"));
}

TEST_F(SaveDocument, ComesBackForATypedNameWithAForbiddenCharacter) {
    for (const char proibido : std::string("|><\"?*:\\")) {
        const QString digitado = caminho("a") + QLatin1Char(proibido) + QStringLiteral("b.xml");
        DialogosDeArquivo dialogos{{digitado}, {caminho("ab.xml")}};
        QString nome;
        EXPECT_EQ(FileOperations::salvaDocumento(nullptr, nome), caminho("ab.xml")) << proibido;
        EXPECT_EQ(dialogos.vistos().size(), 2U) << proibido;
    }
}

TEST_F(SaveDocument, DoesNotCheckTheRestOfThePath) {
    arquivo("a:b/x.xml");
    DialogosDeArquivo dialogos{{caminho("a:b/fundo.xml")}};
    QString nome;
    EXPECT_EQ(FileOperations::salvaDocumento(nullptr, nome), caminho("a:b/fundo.xml"));
}

TEST_F(SaveDocument, TakesTheNameOfAFileThatIsThereWithoutAQuestion) {
    const QString velho = arquivo("fundo.xml");
    DialogosDeArquivo dialogos{{velho}};
    QString nome;
    EXPECT_EQ(FileOperations::salvaDocumento(nullptr, nome), velho);
}

TEST_F(SaveDocument, LogsItsCancellation) {
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    QString nome;
    EXPECT_EQ(FileOperations::salvaDocumento(nullptr, nome), QString());
    EXPECT_THAT(log(), HasSubstr("Cancel was selected.[32755]"));
}

using OpenWorkbook = Files;

TEST_F(OpenWorkbook, HasItsOwnTitleAndFilterAndProposesNothing) {
    const QString escolhida = arquivo("fundo.xls");
    DialogosDeArquivo dialogos{{escolhida}};
    EXPECT_EQ(FileOperations::abrePlanilha(nullptr), escolhida);
    const DialogoDeArquivo& visto = dialogos.vistos().at(0);
    EXPECT_EQ(visto.titulo, QStringLiteral("Abrir Planilha ... "));
    EXPECT_EQ(visto.filtros, QStringList{QStringLiteral("Arquivos XLS (*.xls)")});
    EXPECT_EQ(visto.nome, QString());
}

TEST_F(OpenWorkbook, PutsNoExtensionBehindATypedName) {
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    dialogos.aoVer = [](const QFileDialog& dialogo) { EXPECT_EQ(dialogo.defaultSuffix(), QString()); };
    FileOperations::abrePlanilha(nullptr);
}

TEST_F(OpenWorkbook, LogsItsCancellation) {
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    EXPECT_EQ(FileOperations::abrePlanilha(nullptr), QString());
    EXPECT_THAT(log(), HasSubstr("[32755]"));
}

using SelectMany = Files;

TEST_F(SelectMany, GivesOneFullPathForOneFile) {
    arquivo("um.xml");
    DialogosDeArquivo dialogos{{QStringLiteral("um.xml")}};
    dialogos.aoVer = vaiParaPasta;
    EXPECT_EQ(FileOperations::selecionaVarios(nullptr, true), QStringList{caminho("um.xml")});
    EXPECT_EQ(dialogos.vistos().at(0).titulo, QStringLiteral("Selecionar Boleto"));
    EXPECT_EQ(dialogos.vistos().at(0).filtros, QStringList{QStringLiteral("Arquivos XML (*.xml)")});
    EXPECT_EQ(dialogos.vistos().at(0).modo, QFileDialog::ExistingFiles);
}

TEST_F(SelectMany, JoinsTheFolderToEachOfThreeFiles) {
    const QStringList titulos{QStringLiteral("a.xml"), QStringLiteral("b c.xml"), QStringLiteral("ç.xml")};
    QStringList esperados;
    for (const QString& titulo : titulos) {
        esperados << arquivo(titulo.toUtf8().constData());
    }
    DialogosDeArquivo dialogos{titulos};
    dialogos.aoVer = vaiParaPasta;
    EXPECT_EQ(FileOperations::selecionaVarios(nullptr, true), esperados);
}

TEST_F(SelectMany, TakesOneFileOnlyWhenAskedSo) {
    const QString escolhido = arquivo("um.xml");
    DialogosDeArquivo dialogos{{escolhido}};
    EXPECT_EQ(FileOperations::selecionaVarios(nullptr, false), QStringList{escolhido});
    EXPECT_EQ(dialogos.vistos().at(0).modo, QFileDialog::ExistingFile);
}

TEST_F(SelectMany, LogsItsCancellationAndGivesNothing) {
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    EXPECT_THAT(FileOperations::selecionaVarios(nullptr, true), IsEmpty());
    EXPECT_THAT(log(), HasSubstr("Cancel was selected.[32755]"));
}

using FolderBrowser = Files;

TEST_F(FolderBrowser, GivesTheFolderChosenUnderTheCaption) {
    arquivo("sub/a.xml");
    DialogosDeArquivo dialogos{{caminho("sub")}};
    EXPECT_EQ(FileOperations::BrowseFolder(nullptr, QStringLiteral("Localize")), caminho("sub"));
    const DialogoDeArquivo& visto = dialogos.vistos().at(0);
    EXPECT_EQ(visto.nomeObjeto, QStringLiteral("dialogoPasta"));
    EXPECT_EQ(visto.titulo, QStringLiteral("Localize"));
    EXPECT_EQ(visto.modo, QFileDialog::Directory);
}

TEST_F(FolderBrowser, GivesNothingWithoutAChoiceAndLogsNothing) {
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    EXPECT_EQ(FileOperations::BrowseFolder(nullptr, QStringLiteral("Localize")), QString());
    EXPECT_THAT(log(), testing::Not(HasSubstr("FATAL")));
}

using TemporaryName = Files;

TEST_F(TemporaryName, IsANewEmptyFileInTheFolderGiven) {
    std::filesystem::path onde = pasta.path();
    const std::filesystem::path primeiro = FileOperations::nomeTemporario(onde);
    const std::filesystem::path segundo = FileOperations::nomeTemporario(onde);
    EXPECT_NE(primeiro, segundo);
    for (const auto& nome : {primeiro, segundo}) {
        EXPECT_EQ(nome.parent_path(), pasta.path());
        EXPECT_THAT(nome.filename().string(), StartsWith("kvo"));
        EXPECT_EQ(files::readAll(nome), "");
    }
    EXPECT_EQ(onde, pasta.path());
}

TEST_F(TemporaryName, TakesTheSystemsFolderWhenNoneIsGiven) {
    std::filesystem::path onde;
    const std::filesystem::path nome = FileOperations::nomeTemporario(onde);
    EXPECT_EQ(onde, std::filesystem::temp_directory_path());
    EXPECT_TRUE(files::exists(nome));
    files::remove(nome);
}

TEST_F(TemporaryName, IsEmptyInAFolderThatIsNotThereAndTheFailureIsLogged) {
    std::filesystem::path onde = pasta.path() / "longe";
    EXPECT_EQ(FileOperations::nomeTemporario(onde), std::filesystem::path());
    EXPECT_THAT(log(), HasSubstr("FileOperations.nomeTemporario"));
    EXPECT_THAT(log(), HasSubstr("[76]"));
}

TEST(FileTitleOfAPath, IsItsLastPart) {
    EXPECT_EQ(FileOperations::GetFTitle(QStringLiteral("/tmp/pasta/fundo.xml")), QStringLiteral("fundo.xml"));
    EXPECT_EQ(FileOperations::GetFTitle(QStringLiteral("Posição.xml")), QStringLiteral("Posição.xml"));
    EXPECT_EQ(FileOperations::GetFTitle(QString()), QString());
}

} // namespace
