// The composer's buttons for workbooks, with real windows, dialogs and files.
#include "common/windows/frmMensagem.h"
#include "composer/Amostras.h"
#include "composer/windows/BancadaTramador.h"
#include "platform/Workbook.h"
#include "spreadsheet/clsPlanilhaExcel.h"
#include "windows/DialogosDeArquivo.h"

#include <algorithm>

using namespace tv;
using namespace tv::test;

namespace {

constexpr const char* oLayout = "ArquivoPosicao_2_01";

class frmTramadorPlanilhas : public BancadaTramador {
protected:
    frmTramadorPlanilhas() { std::filesystem::create_directory(pasta()); }

    std::filesystem::path pasta() const { return programa.caminho() / "planilhas"; }
    std::filesystem::path documentoXml() const { return pasta() / "doc.xml"; }
    /// What the clock of these tests makes of the document's only fund.
    std::filesystem::path planilha() const { return pasta() / "doc__fundo_000_20260314_100000.xls"; }
    std::filesystem::path importado() const { return clsPlanilhaExcel::caminhoXml(planilha().string()); }
    /// Opens a composer with a sound document of one fund, which opening has validated.
    void abreDocumento() {
        std::filesystem::copy_file(pastaDasAmostras() / oLayout / "valido_pequeno.xml", documentoXml());
        abre(oLayout);
        janela->abrirBoleto(caminhoQt(documentoXml()));
    }
    /// A workbook of that document, with nobody watching.
    void fazPlanilha() const {
        clsPlanilhaExcel semTela;
        semTela.tag = oLayout;
        semTela.OpenPlan(documentoXml().string(), "");
    }
    std::size_t arquivos() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(pasta()),
                                                      std::filesystem::directory_iterator()));
    }
    static frmMensagem* progresso() {
        for (QWidget* uma : QApplication::topLevelWidgets()) {
            if (auto* achada = qobject_cast<frmMensagem*>(uma); achada != nullptr && achada->isVisible()) {
                return achada;
            }
        }
        return nullptr;
    }
    static std::size_t linhasDe(const std::filesystem::path& planilha, const std::string& secao) {
        return Workbook(planilha).select("SELECT * FROM [" + secao + "$]").rows.size();
    }
    bool registrou(const char* texto) const {
        return log_.read("log20260314.txt").find(texto) != std::string::npos;
    }

private:
    TemporaryFolder log_;
    GlobalLogger registro_{
        startLogger(log_, clsLogger::typeTXT, library::level::all)}; // the catalog's is off
};

} // namespace

TEST_F(frmTramadorPlanilhas, ExportWaitsForASuccessfulValidation) {
    abre(oLayout);
    EXPECT_FALSE(acao("btnExportarExcel")->isEnabled());
    EXPECT_TRUE(acao("btnImportarExcel")->isEnabled());
    abreDocumento();
    EXPECT_TRUE(acao("btnExportarExcel")->isEnabled());
}

TEST_F(frmTramadorPlanilhas, ExportWritesWorkbooksBesideTheDocumentAndSaysSo) {
    abreDocumento();
    Caixas caixas{q("OK")};
    bool aberto = true;
    bool ampulheta = true;
    caixas.aoVer = [&](QMessageBox&) {
        aberto = progresso() != nullptr;
        const QCursor* ponteiro = QApplication::overrideCursor();
        ampulheta = ponteiro != nullptr && ponteiro->shape() == Qt::WaitCursor;
    };
    clica("btnExportarExcel");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Exportação concluída com sucesso!"));
    EXPECT_EQ(caixas.vistas()[0].titulo, q("Tramador Veldor"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Information);
    EXPECT_FALSE(aberto) << "the progress window goes before the message";
    EXPECT_FALSE(ampulheta);
    EXPECT_EQ(arquivos(), 2U);
    EXPECT_EQ(linhasDe(planilha(), "header"), 1U);
    EXPECT_TRUE(registrou("clsPlanilhaExcel.OpenPlan"));
    EXPECT_TRUE(registrou("[[0]]")) << "told in the log on the normal way, too";
}

TEST_F(frmTramadorPlanilhas, AWorkbookOfTheDocumentsOwnNameBringsAQuestion) {
    abreDocumento();
    files::writeAll(pasta() / "doc.xls", "de outros");
    {
        Caixas caixas{q("Não")};
        clica("btnExportarExcel");
        ASSERT_EQ(caixas.vistas().size(), 1U);
        EXPECT_EQ(caixas.vistas()[0].texto, q("Este arquivo já foi exportado, deseja exportar novamente?"));
        EXPECT_EQ(caixas.vistas()[0].titulo, q("Tramador Veldor"));
        EXPECT_EQ(caixas.vistas()[0].botoes, (QStringList{q("Sim"), q("Não")}));
        EXPECT_EQ(arquivos(), 2U);
    }
    const Caixas caixas{q("Sim"), q("OK")};
    clica("btnExportarExcel");
    EXPECT_TRUE(files::exists(planilha()));
    EXPECT_EQ(files::readAll(pasta() / "doc.xls"), "de outros");
}

TEST_F(frmTramadorPlanilhas, AWorkbookThatCannotBeMadeShowsNothingAndLeavesTheProgressWindow) {
    abreDocumento();
    std::filesystem::create_directory(planilha());
    const Caixas caixas;
    clica("btnExportarExcel");
    QPointer<frmMensagem> aberta = progresso();
    ASSERT_NE(aberta, nullptr);
    EXPECT_EQ(aberta->findChild<QLabel*>(q("lblTitulo"))->text(),
              q("Exportando Arquivo XML: ") + caminhoQt(importado()));
    EXPECT_EQ(aberta->findChild<QLabel*>(q("txtDescricao"))->text(),
              q("Nome do Arq. XLS: ") + caminhoQt(planilha()));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    aberta->close(); // its user's part
    EXPECT_TRUE(espera([&] { return aberta.isNull(); }));
}

TEST_F(frmTramadorPlanilhas, AProgressWindowThatWasLeftGoesWithTheMainWindow) {
    abreDocumento();
    std::filesystem::create_directory(planilha());
    clica("btnExportarExcel");
    const QPointer<frmMensagem> aberta = progresso();
    ASSERT_NE(aberta, nullptr);
    mdiMain::destroi();
    EXPECT_TRUE(aberta.isNull());
}

TEST_F(frmTramadorPlanilhas, ImportMakesTheDocumentAndOpensIt) {
    abreDocumento();
    fazPlanilha();
    const auto linhas = linhasDoDocumento(documento());
    janela->closeWindow();
    abre(oLayout);
    DialogosDeArquivo dialogos{{caminhoQt(planilha())}};
    const Caixas caixas;
    clica("btnImportarExcel");
    ASSERT_EQ(dialogos.vistos().size(), 1U);
    EXPECT_EQ(dialogos.vistos()[0].titulo, q("Abrir Planilha ... "));
    EXPECT_TRUE(files::exists(importado()));
    EXPECT_EQ(estado().arquivo, importado().string());
    EXPECT_EQ(painel(1), caminhoQt(importado()));
    EXPECT_EQ(linhasDoDocumento(documento()), linhas);
    EXPECT_TRUE(acao("btnExportarExcel")->isEnabled());
    EXPECT_EQ(progresso(), nullptr);
}

TEST_F(frmTramadorPlanilhas, ADocumentThatIsThereIsNotTouched) {
    abreDocumento();
    fazPlanilha();
    files::writeAll(importado(), "antes");
    DialogosDeArquivo dialogos{{caminhoQt(planilha())}};
    Caixas caixas{q("OK")};
    clica("btnImportarExcel");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto,
              q("O arquivo: ") + caminhoQt(planilha()) + q(" já fo importado para planilha!"));
    EXPECT_EQ(caixas.vistas()[0].titulo, q("Tramador"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Critical);
    EXPECT_EQ(files::readAll(importado()), "antes");
    EXPECT_EQ(estado().arquivo, documentoXml().string());
}

TEST_F(frmTramadorPlanilhas, AWorkbookInCapitalsIsTakenForItsOwnDocument) {
    abreDocumento();
    fazPlanilha();
    const std::filesystem::path alta = pasta() / "FUNDO.XLS";
    std::filesystem::rename(planilha(), alta);
    const std::string bytes = files::readAll(alta);
    DialogosDeArquivo dialogos{{caminhoQt(alta)}};
    Caixas caixas{q("OK")};
    clica("btnImportarExcel");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto,
              q("O arquivo: ") + caminhoQt(alta) + q(" já fo importado para planilha!"));
    EXPECT_EQ(files::readAll(alta), bytes);
}

TEST_F(frmTramadorPlanilhas, ACancelledChoiceGoesOnAndEndsInTheLog) {
    abreDocumento();
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    const Caixas caixas;
    clica("btnImportarExcel");
    EXPECT_EQ(arquivos(), 1U);
    EXPECT_EQ(estado().arquivo, documentoXml().string());
    EXPECT_TRUE(registrou("Cancel was selected.[32755]"));
    EXPECT_TRUE(registrou("clsPlanilhaExcel.ImportarPlanilha"));
}

TEST_F(frmTramadorPlanilhas, AFileThatIsNoWorkbookLeavesNothingAndSaysNothing) {
    abreDocumento();
    files::writeAll(pasta() / "x_fundo.xls", "texto");
    DialogosDeArquivo dialogos{{caminhoQt(pasta() / "x_fundo.xls")}};
    const Caixas caixas;
    clica("btnImportarExcel");
    EXPECT_EQ(arquivos(), 2U);
    EXPECT_EQ(estado().arquivo, documentoXml().string());
}
