#include "BancadaEditor.h"

#include "app/Aplicacao.h"
#include "windows/Andamento.h"
#include "windows/Janelas.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>

// The way of the text to its file, and the validation of the file.

namespace tv::test {
namespace {

using ::testing::HasSubstr;
namespace fs = std::filesystem;

const QString ok = QStringLiteral("OK");
const QString sim = QStringLiteral("Sim");
const QString nao = QStringLiteral("Não");

class frmEditorSalvar : public BancadaEditor {
protected:
    /// Types at the text's end.
    void acrescenta(std::string_view letras) const {
        caixa().moveCursor(QTextCursor::End);
        digita(letras);
    }
};

TEST_F(frmEditorSalvar, WritesTheParsersFormOfAWellFormedText) {
    abre("<?xml version=\"1.0\"?>\r\n<r>\r\n\t<a  x = '1'/>\r\n</r>");
    acrescenta("\n");
    EXPECT_FALSE(janela->salvo());
    Caixas caixas{ok};
    clica("btnSalvar");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Arquivo salvo com sucesso"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Information);
    EXPECT_EQ(caixas.vistas()[0].titulo, paraQt(aplicacao::titulo()));
    EXPECT_EQ(noDisco(), "<?xml version=\"1.0\"?>\r\n<r>\r\n\t<a x=\"1\"></a>\r\n</r>\r\n");
    EXPECT_TRUE(janela->salvo());
    EXPECT_EQ(painel(), "Pronto");
    EXPECT_EQ(texto(), "<?xml version=\"1.0\"?>\n<r>\n\t<a x=\"1\"></a>\n</r>\n"); // what is in the file
}

TEST_F(frmEditorSalvar, WritesATextThatIsNotWellFormedAsItStands) {
    abre("<r>\r\n  <a  x = '1'>\r\n</r>");
    acrescenta("\n");
    Caixas caixas{ok};
    janela->saveBoleto();
    EXPECT_EQ(noDisco(), "<r>\r\n  <a  x = '1'>\r\n</r>\r\n");
    EXPECT_TRUE(janela->salvo());
}

TEST_F(frmEditorSalvar, KeepsTheCaretWhereTheTextTakesAnotherForm) {
    abre("<r>\n<a   x='1'/>\n<b>2</b></r>");
    caixa().setFocus();
    janela->PlaceCursor(3, 4);
    digita("3");
    Caixas caixas{ok};
    janela->saveBoleto();
    EXPECT_EQ(painel(), "Pronto");
    janela->GetEditStatus();
    EXPECT_EQ(painel(), "Linha: 3, Coluna: 5");
    EXPECT_EQ(noDisco(), "<r>\n<a x=\"1\"></a>\n<b>23</b></r>");
}

TEST_F(frmEditorSalvar, WithoutAPathNothingIsSaved) {
    janela = &criaJanela<frmEditor>();
    janela->abrir(nullptr, pasta.posicao(), QStringLiteral("  "));
    mdiMain::instancia().addJanela(*janela);
    digita("x");
    janela->saveBoleto(); // no box comes up
    EXPECT_FALSE(janela->salvo());
    EXPECT_EQ(painel(), "Pronto");
    Caixas caixas{sim};
    janela->closeWindow(); // and the window can go
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
    janela = nullptr;
}

TEST_F(frmEditorSalvar, KeepsTheEncodingThatTheDeclarationNames) {
    const std::string latin1 =
        text::toLatin1("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<r>São</r>\r\n");
    abre(latin1);
    EXPECT_THAT(texto(), HasSubstr("São"));
    acrescenta(" ");
    tecla(Qt::Key_Backspace);
    Caixas caixas{ok};
    janela->saveBoleto();
    EXPECT_EQ(noDisco(), latin1);
}

TEST_F(frmEditorSalvar, KeepsAByteOrderMark) {
    abre("\xEF\xBB\xBF<r>é</r>");
    acrescenta("\n");
    Caixas caixas{ok};
    janela->saveBoleto();
    EXPECT_EQ(noDisco(), "\xEF\xBB\xBF<r>é</r>\n");
}

TEST_F(frmEditorSalvar, KeepsCharactersThatTheTextLayoutUsesItself) {
    const std::string bytes = "<r>a\u2029b\u2028c\u00A0d\uFDD0e\uFDD1f</r>";
    abre(bytes);
    EXPECT_EQ(caixa().document()->blockCount(), 1);
    acrescenta("\n");
    Caixas caixas{ok};
    janela->saveBoleto();
    EXPECT_EQ(noDisco(), bytes + "\n");
}

TEST_F(frmEditorSalvar, AsksAboutCharactersThatTheEncodingLacks) {
    const std::string antes = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>1</r>";
    abre(antes);
    janela->PlaceCursor(2, 4);
    caixa().insertPlainText(QStringLiteral("\u2013"));
    {
        Caixas caixas{nao};
        janela->saveBoleto();
        EXPECT_THAT(caixas.vistas()[0].texto.toStdString(), HasSubstr("ISO-8859-1"));
        EXPECT_THAT(caixas.vistas()[0].texto.toStdString(), HasSubstr("\"\u2013\", na linha 2, coluna 5"));
        EXPECT_THAT(caixas.vistas()[0].texto.toStdString(), HasSubstr("&#8211;"));
    }
    EXPECT_EQ(noDisco(), antes);
    EXPECT_FALSE(janela->salvo());
    Caixas caixas{sim, ok};
    janela->saveBoleto();
    EXPECT_EQ(noDisco(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>1&#8211;</r>");
    EXPECT_TRUE(janela->salvo());
}

TEST_F(frmEditorSalvar, AsksBeforeBytesThatCouldNotBeReadAreLost) {
    const std::string antes = "<r>S\xE3o</r>";
    abre(antes);
    EXPECT_EQ(texto(), "<r>S\uFFFDo</r>");
    acrescenta("\n");
    {
        Caixas caixas{nao};
        janela->saveBoleto();
        EXPECT_THAT(caixas.vistas()[0].texto.toStdString(), HasSubstr("1 lugar que não se pode ler"));
    }
    EXPECT_EQ(noDisco(), antes);
    EXPECT_FALSE(janela->salvo());
    Caixas caixas{sim, ok};
    janela->saveBoleto();
    EXPECT_EQ(noDisco(), "<r>S\uFFFDo</r>\n");
}

TEST_F(frmEditorSalvar, MendedBytesNeedNoQuestion) {
    abre("<r>S\xE3o</r>");
    caixa().seleciona(4, 1);
    caixa().setSelText(u"\u00E3");
    Caixas caixas{ok};
    janela->saveBoleto();
    EXPECT_EQ(noDisco(), "<r>São</r>");
}

TEST_F(frmEditorSalvar, AsksBeforeItOverwritesAChangeByOthers) {
    abre(documento());
    acrescenta("\n");
    pasta.write("a.xml", "<outro/>");
    {
        Caixas caixas{nao};
        janela->saveBoleto();
        EXPECT_THAT(caixas.vistas()[0].texto.toStdString(), HasSubstr("alterado por outro programa"));
    }
    EXPECT_EQ(noDisco(), "<outro/>");
    EXPECT_FALSE(janela->salvo());
    {
        Caixas caixas{sim, ok};
        janela->saveBoleto();
    }
    EXPECT_EQ(noDisco(), documento() + "\n");
    acrescenta("\n");
    Caixas caixas{ok}; // its own save is no change by others
    janela->saveBoleto();
}

TEST_F(frmEditorSalvar, AsksBeforeItReplacesAFileThatItCouldNotRead) {
    fs::create_directory(pasta.path() / "a.xml");
    abreCaminho(pasta.path() / "a.xml");
    EXPECT_EQ(texto(), "");
    Caixas caixas{nao};
    janela->saveBoleto();
    EXPECT_THAT(caixas.vistas()[0].texto.toStdString(), HasSubstr("não pôde ser lido"));
}

TEST_F(frmEditorSalvar, AFailureIsToldAndTheTextStaysUnsaved) {
    abre(documento());
    acrescenta("\n");
    fs::remove_all(pasta.path());
    {
        Caixas caixas{ok};
        janela->saveBoleto();
        EXPECT_THAT(caixas.vistas()[0].texto.toStdString(), HasSubstr("O arquivo não foi salvo!"));
        EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Critical);
    }
    EXPECT_FALSE(janela->salvo());
    EXPECT_EQ(painel(), "Pronto");
    EXPECT_THAT(registro(), HasSubstr("[76]"));
}

TEST_F(frmEditorSalvar, AWindowWhoseTextCouldNotBeSavedStaysOpen) {
    abre(documento());
    acrescenta("\n");
    pasta.write("a.xml", "<outro/>");
    Caixas caixas{sim, nao};
    janela->closeWindow();
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 1U);
    EXPECT_EQ(texto(), documento() + "\n");
}

TEST_F(frmEditorSalvar, WritesBreaksOfEndlessLinesOnlyAfterAQuestion) {
    const std::string antes(50'000, 'x');
    abre(antes);
    acrescenta("y");
    {
        Caixas caixas{nao};
        janela->saveBoleto();
        EXPECT_THAT(caixas.vistas()[0].texto.toStdString(), HasSubstr("linhas longas demais"));
    }
    EXPECT_EQ(noDisco(), antes);
    Caixas caixas{sim, ok};
    janela->saveBoleto();
    EXPECT_EQ(noDisco().size(), antes.size() + 3);
}

// --- validation

TEST_F(frmEditorSalvar, AValidFileIsTold) {
    abre(documento(), achados(achado(1, 1, "x")));
    Caixas caixas{ok};
    clica("btnValidar");
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Arquivo válido!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Information);
    EXPECT_EQ(grade().modelo().rowCount(), 0);
    EXPECT_EQ(painel(), "Pronto");
    EXPECT_TRUE(janela->resultados()->empty());
}

TEST_F(frmEditorSalvar, AnInvalidFileListsItsFindings) {
    abre(documento("20241399"));
    janela->validarBoleto(); // no box comes up
    ASSERT_EQ(grade().modelo().rowCount(), 1);
    clicaAchado(0);
    EXPECT_EQ(selecionado(), "20241399");
}

TEST_F(frmEditorSalvar, AChangedTextIsSavedFirstAndValidatedAsSaved) {
    abre(documento("20241399"));
    caixa().seleciona(static_cast<int>(caixa().toPlainText().indexOf(QStringLiteral("1399"))), 4);
    caixa().setSelText(u"0131");
    Caixas caixas{ok, ok};
    janela->validarBoleto();
    ASSERT_EQ(caixas.vistas().size(), 2U);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Arquivo salvo com sucesso"));
    EXPECT_EQ(caixas.vistas()[1].texto, QStringLiteral("Arquivo válido!"));
    EXPECT_EQ(noDisco(), documento("20240131"));
}

TEST_F(frmEditorSalvar, ProgressTellsOfEachOperation) {
    const Andamento andamento;
    abre(documento());
    acrescenta("\n");
    Caixas caixas{ok, ok};
    janela->validarBoleto();
    const std::string arquivo = "|Arquivo: " + (pasta.path() / "a.xml").string();
    EXPECT_THAT(
        andamento.textos,
        ::testing::IsSupersetOf({"Abrindo Arquivo XML" + arquivo, "Salvando Arquivo XML" + arquivo,
                                 std::string("Salvando Arquivo XML ..."), "Validando Arquivo XML" + arquivo,
                                 std::string("Validando arquivo ...")}));
    EXPECT_EQ(painel(), "Pronto");
}

TEST_F(frmEditorSalvar, AFileWhoseNameEndsInATabIsOpenedAndSaved) {
    const auto caminho = pasta.write("a.xml\t", "<r/>");
    abreCaminho(caminho);
    EXPECT_EQ(texto(), "<r/>");
    acrescenta("\n");
    Caixas caixas{ok};
    janela->saveBoleto();
    EXPECT_EQ(pasta.folder().read("a.xml\t"), "<r></r>\n");
}

TEST_F(frmEditorSalvar, WithoutASaveThereIsNoValidation) {
    abre(documento("20241399"));
    acrescenta("\n");
    pasta.write("a.xml", "<outro/>");
    Caixas caixas{nao, ok};
    janela->validarBoleto();
    ASSERT_EQ(caixas.vistas().size(), 2U);
    EXPECT_EQ(caixas.vistas()[1].texto, QStringLiteral("O arquivo deve ser salvo antes de ser validado!"));
    EXPECT_EQ(caixas.vistas()[1].icone, QMessageBox::Warning);
    EXPECT_EQ(grade().modelo().rowCount(), 0);
    EXPECT_EQ(painel(), "Pronto");
}

TEST_F(frmEditorSalvar, FindingsLeadToTheirPlacesAfterASaveInAnotherForm) {
    abre("<posicao><fundo><header><cnpj   a = '1'>1</cnpj  ><dt>20241399</dt></header></fundo></posicao>");
    acrescenta("\n");
    Caixas caixas{ok};
    janela->validarBoleto();
    const int ultimo = grade().modelo().rowCount() - 1;
    ASSERT_GE(ultimo, 0);
    clicaAchado(ultimo);
    EXPECT_EQ(selecionado(), "20241399");
}

TEST_F(frmEditorSalvar, ClosedDuringAValidationItGoesAtItsEnd) {
    std::string bytes = "<posicao><fundo><header><cnpj>1</cnpj><dt>20241399</dt></header>\n";
    for (int i = 0; i < 20'000; ++i) {
        bytes += "<titulo><cod>A</cod><valor>1</valor><classe>1</classe></titulo>\n";
    }
    abre(bytes + "</fundo></posicao>");
    int turnos = 0;
    turns::setHandler([&] {
        ++turnos;
        janela->closeWindow();
        janela->validarBoleto(); // a second run does not start
        QCoreApplication::processEvents();
    });
    janela->validarBoleto();
    turns::setHandler({});
    EXPECT_GT(turnos, 0);
    EXPECT_TRUE(espera([this] { return janela.isNull(); }));
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
}

TEST_F(frmEditorSalvar, DestroyedDuringAValidationNothingBreaks) {
    std::string bytes = "<posicao><fundo><header><cnpj>1</cnpj><dt>20241399</dt></header>\n";
    for (int i = 0; i < 20'000; ++i) {
        bytes += "<titulo><cod>A</cod><valor>1</valor><classe>1</classe></titulo>\n";
    }
    abre(bytes + "</fundo></posicao>");
    turns::setHandler([&] {
        if (janela != nullptr) {
            delete janela.data();
        }
    });
    janela->validarBoleto();
    turns::setHandler({});
    EXPECT_TRUE(janela.isNull());
}

} // namespace
} // namespace tv::test
