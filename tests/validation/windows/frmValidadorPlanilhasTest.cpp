// The validator's keys for workbooks, which its tool bar does not offer: the tests add the buttons.
#include "platform/Workbook.h"
#include "spreadsheet/clsPlanilhaExcel.h"
#include "validation/windows/Bancada.h"
#include "windows/DialogosDeArquivo.h"

using namespace tv;
using namespace tv::test;

namespace {

class frmValidadorPlanilhas : public Bancada {
protected:
    frmValidadorPlanilhas() {
        pasta.write("TORVA_TramadorValidador.xml",
                    "<TORVA><BOLETOS><BOLETO tag='posicao'><SECAO tag='fundo'/></BOLETO></BOLETOS></TORVA>");
        abre();
        acrescentaBotao("btnPlanilha");
        acrescentaBotao("btnImportarPlanilha");
        janela->resize(1000, 600); // the buttons added must not hide behind the tool bar's end
    }

    /// Presses a button that the tool bar was given, by its action where it does not show.
    void pressiona(const char* chave) const { acao(chave)->trigger(); }
    std::filesystem::path planilha() const { return pasta.path() / "x_fundo.xls"; }
    std::filesystem::path documento() const { return pasta.path() / "x_fundo.xml"; }
    void fazPlanilha() const {
        Workbook nova(planilha());
        nova.execute("CREATE TABLE fundo( cnpj varchar(255))");
        nova.execute("INSERT INTO fundo( cnpj) VALUES ('1')");
        nova.close();
    }
    static std::vector<QString> textos(const Caixas& caixas) {
        std::vector<QString> todos;
        for (const Caixa& caixa : caixas.vistas()) {
            todos.push_back(caixa.texto);
        }
        return todos;
    }
    static const QString concluida() { return QStringLiteral("Exportação concluída com sucesso!"); }
    static const QString gerado() { return QStringLiteral("Arquivo gerado com sucesso!"); }
    static QString ok() { return QStringLiteral("OK"); }
    static QStringList nomes(const std::filesystem::path& um) { return {caminhoQt(um)}; }
};

// --- out

TEST_F(frmValidadorPlanilhas, WithoutRowsNothingHappens) {
    const DialogosDeArquivo dialogos;
    const Caixas caixas;
    pressiona("btnPlanilha");
    EXPECT_EQ(grade().linhaAtiva(), -1);
}

TEST_F(frmValidadorPlanilhas, AFileThatWasNotValidatedGetsNoReaction) {
    adiciona({valido("a.xml")});
    const DialogosDeArquivo dialogos;
    const Caixas caixas;
    pressiona("btnPlanilha");
    EXPECT_TRUE(acao("btnPlanilha")->isEnabled());
}

TEST_F(frmValidadorPlanilhas, AFileThatDidNotPassDisablesTheButton) {
    adiciona({errado("a.xml")});
    clica("btnValidar");
    Caixas caixas{ok()};
    pressiona("btnPlanilha");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Este arquivo não é válido para exportação!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_FALSE(acao("btnPlanilha")->isEnabled());
}

TEST_F(frmValidadorPlanilhas, ARunSwitchesTheButtonToo) {
    adiciona({valido("a.xml")});
    acao("btnPlanilha")->setEnabled(false);
    bool durante = true;
    aoTurno = [&] { durante = acao("btnPlanilha")->isEnabled(); };
    clica("btnValidar");
    EXPECT_TRUE(acao("btnPlanilha")->isEnabled());
    EXPECT_FALSE(durante);
}

TEST_F(frmValidadorPlanilhas, ExportDeletesTheChosenWorkbookAndReportsSuccessForEachFile) {
    adiciona({valido("a.xml"), valido("b.xml")});
    clica("btnValidar");
    grade().setLinhaAtiva(-1); // no active row: the first one becomes it
    files::writeAll(planilha(), "antes");
    DialogosDeArquivo dialogos{nomes(planilha())};
    Caixas caixas{ok(), ok(), ok()};
    pressiona("btnPlanilha");
    EXPECT_EQ(grade().linhaAtiva(), 0);
    ASSERT_EQ(dialogos.vistos().size(), 1U);
    EXPECT_EQ(dialogos.vistos()[0].titulo, QStringLiteral("Abrir Planilha ... "));
    EXPECT_EQ(textos(caixas), (std::vector<QString>{concluida(), concluida(), gerado()}));
    EXPECT_EQ(caixas.vistas()[0].titulo, QStringLiteral("Tramador Veldor"));
    EXPECT_EQ(caixas.vistas()[2].titulo, paraQt(aplicacao::titulo()));
    EXPECT_EQ(caixas.vistas()[2].icone, QMessageBox::Information);
    EXPECT_FALSE(files::exists(planilha())) << "the path that is exported is the workbook's, deleted before";
    EXPECT_TRUE(registrou("Erro na abertura do arquivo![-2147221048]"));
    EXPECT_TRUE(acao("btnPlanilha")->isEnabled());
}

TEST_F(frmValidadorPlanilhas, ACancelledChoiceGoesOn) {
    adiciona({valido("a.xml")});
    clica("btnValidar");
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    Caixas caixas{ok(), ok()};
    pressiona("btnPlanilha");
    EXPECT_EQ(textos(caixas), (std::vector<QString>{concluida(), gerado()}));
}

TEST_F(frmValidadorPlanilhas, AFileOfAnotherVersionEndsTheExportWithItsOwnMessage) {
    adiciona({valido("a.xml"), valido("b.xml"), valido("c.xml")});
    clica("btnValidar");
    pasta.write("b.xml", "<outro/>");
    DialogosDeArquivo dialogos{nomes(planilha().parent_path() / "y.xls")};
    dialogos.aoVer = [&](QFileDialog&) { files::writeAll(planilha().parent_path() / "y.xls", ""); };
    Caixas caixas{ok(), ok()};
    pressiona("btnPlanilha");
    EXPECT_EQ(
        textos(caixas),
        (std::vector<QString>{concluida(), QStringLiteral("Verifique a versão do arquivo selecionado!")}));
    EXPECT_EQ(caixas.vistas()[1].icone, QMessageBox::Warning);
    EXPECT_FALSE(registrou("Erro na leitura do XML"));
}

TEST_F(frmValidadorPlanilhas, AFileThatCannotBeReadEndsTheExportLikewise) {
    adiciona({valido("a.xml")});
    clica("btnValidar");
    pasta.write("a.xml", "<posicao>");
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    Caixas caixas{ok()};
    pressiona("btnPlanilha");
    EXPECT_EQ(textos(caixas),
              (std::vector<QString>{QStringLiteral("Verifique a versão do arquivo selecionado!")}));
    EXPECT_TRUE(registrou("Erro na leitura do XML["));
}

TEST_F(frmValidadorPlanilhas, AWorkbookThatCannotBeDeletedEndsInAFailure) {
    adiciona({valido("a.xml"), valido("b.xml")});
    clica("btnValidar");
    files::writeAll(planilha(), "antes");
    DialogosDeArquivo dialogos{nomes(planilha())};
    Caixas caixas{ok(), ok()};
    // Behind the first file's message a folder with something in it stands where the workbook stood.
    caixas.aoVer = [&](QMessageBox&) { std::filesystem::create_directories(planilha() / "dentro"); };
    pressiona("btnPlanilha");
    EXPECT_EQ(textos(caixas),
              (std::vector<QString>{concluida(), QStringLiteral("Falha na exportação dos dados!")}));
    EXPECT_EQ(caixas.vistas()[1].icone, QMessageBox::Critical);
    EXPECT_TRUE(registrou("frmValidador.exportarPlanilha"));
}

// --- back

TEST_F(frmValidadorPlanilhas, ImportMakesTheDocumentAndAddsItsRow) {
    fazPlanilha();
    DialogosDeArquivo dialogos{nomes(planilha())};
    const Caixas caixas;
    pressiona("btnImportarPlanilha");
    EXPECT_EQ(files::readAll(documento()), "<?xml version='1.0' encoding='ISO-8859-1' "
                                           "?>\r\n<posicao>\r\n<fundo>\r\n<cnpj>1</cnpj>\r\n</fundo>\r\n"
                                           "</posicao>\r\n");
    ASSERT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(modelo().texto(0, "boleto"), caminhoQt(documento()));
    EXPECT_EQ(modelo().texto(0, "arquivo"), caminhoQt(documento()));
    EXPECT_EQ(modelo().imagem(0, "boleto"), QStringLiteral("imgBoleto"));
    EXPECT_EQ(modelo().valor(0, "tamanho"),
              Value(static_cast<double>(std::filesystem::file_size(documento())) / 1024));
    EXPECT_EQ(modelo().valor(0, "isNew"), Value(true));
    EXPECT_EQ(estado(0), adicionado);
    EXPECT_EQ(painel(), QStringLiteral("1 Arquivos"));
}

TEST_F(frmValidadorPlanilhas, ImportReplacesTheDocumentWithoutAskingAndItsRow) {
    fazPlanilha();
    files::writeAll(documento(), "antes");
    adiciona({documento().string(), valido("b.xml")});
    clica("btnValidar");
    DialogosDeArquivo dialogos{nomes(planilha())};
    const Caixas caixas;
    pressiona("btnImportarPlanilha");
    EXPECT_EQ(files::readAll(documento()).find("antes"), std::string::npos);
    ASSERT_EQ(modelo().rowCount(), 2);
    EXPECT_EQ(estado(0), passou) << "the other file's row";
    EXPECT_EQ(modelo().texto(1, "arquivo"), caminhoQt(documento()));
    EXPECT_EQ(estado(1), adicionado);
    EXPECT_EQ(painel(), QStringLiteral("2 Arquivos"));
}

TEST_F(frmValidadorPlanilhas, TheRowIsReplacedEvenIfTheImportFailed) {
    files::writeAll(planilha(), "texto");
    files::writeAll(documento(), "antes");
    adiciona({documento().string()});
    DialogosDeArquivo dialogos{nomes(planilha())};
    const Caixas caixas;
    pressiona("btnImportarPlanilha");
    EXPECT_FALSE(files::exists(documento()));
    ASSERT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(modelo().texto(0, "arquivo"), caminhoQt(documento()));
    EXPECT_EQ(modelo().valor(0, "tamanho"), Value(0.0));
    EXPECT_TRUE(registrou("clsPlanilhaExcel.ImportarPlanilha"));
}

TEST_F(frmValidadorPlanilhas, AWorkbookInCapitalsIsDeletedBeforeItsImport) {
    fazPlanilha();
    const std::filesystem::path alta = pasta.path() / "FUNDO.XLS";
    std::filesystem::rename(planilha(), alta);
    DialogosDeArquivo dialogos{nomes(alta)};
    const Caixas caixas;
    pressiona("btnImportarPlanilha");
    EXPECT_FALSE(files::exists(alta));
    ASSERT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(modelo().texto(0, "arquivo"), caminhoQt(alta));
}

} // namespace
