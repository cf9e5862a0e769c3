#include "editor/windows/frmEditor.h"
#include "validation/windows/Bancada.h"
#include "validation/windows/frmBrowser.h"

#include <gmock/gmock.h>

using namespace tv;
using namespace tv::test;
using ::testing::ElementsAre;

namespace {

/// What is opened from a row.
class frmValidadorResultado : public Bancada {
protected:
    frmValidadorResultado() { abre(); }

    template<typename T>
    std::vector<T*> abertas() const {
        std::vector<T*> achadas;
        for (Janela* uma : mdiMain::instancia().janelas()) {
            if (auto* esta = dynamic_cast<T*>(uma)) {
                achadas.push_back(esta);
            }
        }
        return achadas;
    }
    std::size_t quantasJanelas() const { return mdiMain::instancia().janelas().Count(); }
    /// The list in the row's tag.
    std::shared_ptr<const Resultados> marca(int linha) const {
        return modelo().marca(linha).value<std::shared_ptr<const Resultados>>();
    }
    void dizValido(const char* chave) const {
        const Caixas caixas{QStringLiteral("OK")};
        clica(chave);
        ASSERT_EQ(caixas.vistas().size(), 1U);
        EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("O Boleto selecionado é válido."));
        EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Information);
        EXPECT_EQ(caixas.vistas()[0].titulo, paraQt(aplicacao::titulo()));
    }
};

} // namespace

TEST_F(frmValidadorResultado, NothingHappensWithoutRows) {
    for (const char* chave : {"btnResultado", "btnEditar"}) {
        clica(chave);
        EXPECT_EQ(grade().linhaAtiva(), -1);
        EXPECT_EQ(quantasJanelas(), 1U);
    }
}

TEST_F(frmValidadorResultado, NothingHappensOnAnUncheckedRow) {
    adiciona({errado("a.xml"), errado("b.xml")});
    grade().setLinhaAtiva(1);
    for (const char* chave : {"btnResultado", "btnEditar"}) {
        clica(chave);
        EXPECT_EQ(quantasJanelas(), 1U);
        EXPECT_EQ(grade().linhaAtiva(), 1);
    }
    EXPECT_THAT(estados(), ElementsAre(adicionado, adicionado));
}

TEST_F(frmValidadorResultado, FirstRowBecomesActiveWhereNoneIs) {
    adiciona({errado("a.xml"), errado("b.xml")});
    for (const char* chave : {"btnResultado", "btnEditar"}) {
        grade().setLinhaAtiva(-1);
        ASSERT_EQ(grade().linhaAtiva(), -1);
        clica(chave);
        EXPECT_EQ(grade().linhaAtiva(), 0) << chave;
    }
}

TEST_F(frmValidadorResultado, ValidFileIsToldByBothButtons) {
    adiciona({valido("a.xml")});
    clica("btnValidar");
    dizValido("btnResultado");
    dizValido("btnEditar");
    EXPECT_EQ(estado(0), passou);
    EXPECT_EQ(quantasJanelas(), 1U);
}

TEST_F(frmValidadorResultado, ReportOpensForAFileThatDidNotPass) {
    const std::string arquivo = errado("a.xml");
    adiciona({arquivo});
    clica("btnValidar");
    clica("btnResultado");
    const auto relatorios = abertas<frmBrowser>();
    ASSERT_EQ(relatorios.size(), 1U);
    EXPECT_TRUE(relatorios[0]->windowTitle().contains(QStringLiteral("a.xml")));
    EXPECT_TRUE(relatorios[0]->isVisible());
    EXPECT_EQ(estado(0), reprovado);
    clica("btnResultado");
    EXPECT_EQ(abertas<frmBrowser>().size(), 2U);
}

TEST_F(frmValidadorResultado, EditorOpensWithFindingsAndLayoutAndClearsTheStatus) {
    const auto layout = pasta.posicao();
    abre(layout);
    adiciona({errado("a.xml")});
    clica("btnValidar");
    const auto achados = marca(0);
    clica("btnEditar");
    const auto editores = abertas<frmEditor>();
    ASSERT_EQ(editores.size(), 1U);
    EXPECT_EQ(editores[0]->resultados(), achados);
    EXPECT_EQ(editores[0]->boleto(), layout);
    EXPECT_TRUE(editores[0]->windowTitle().contains(QStringLiteral("a.xml")));
    EXPECT_EQ(estado(0), noEditor);
    EXPECT_EQ(marca(0), achados);
}

TEST_F(frmValidadorResultado, NothingMoreOpensBehindTheEditorUntilTheNextBatch) {
    adiciona({errado("a.xml")});
    clica("btnValidar");
    clica("btnEditar");
    clica("btnResultado");
    clica("btnEditar");
    EXPECT_EQ(abertas<frmEditor>().size(), 1U);
    EXPECT_EQ(abertas<frmBrowser>().size(), 0U);
    janela->ZOrder();
    clica("btnValidar");
    EXPECT_EQ(estado(0), reprovado);
    clica("btnResultado");
    EXPECT_EQ(abertas<frmBrowser>().size(), 1U);
}

TEST_F(frmValidadorResultado, EnterAndDoubleClickOpenTheReport) {
    adiciona({valido("a.xml"), errado("b.xml")});
    clica("btnValidar");
    grade().setLinhaAtiva(1);
    QTest::keyClick(&grade(), Qt::Key_Return);
    EXPECT_EQ(abertas<frmBrowser>().size(), 1U);
    janela->ZOrder();
    const QPoint linha = grade().visualRect(modelo().index(1, 1)).center();
    QTest::mouseClick(grade().viewport(), Qt::LeftButton, {}, linha);
    QTest::mouseDClick(grade().viewport(), Qt::LeftButton, {}, linha);
    EXPECT_EQ(abertas<frmBrowser>().size(), 2U);
}

TEST_F(frmValidadorResultado, ResultsOutliveTheWindowAndTheNextBatch) {
    adiciona({errado("a.xml")});
    clica("btnValidar");
    const auto achados = marca(0);
    clica("btnValidar");
    EXPECT_NE(marca(0), achados);
    janela->closeWindow();
    EXPECT_TRUE(espera([&] { return !janela; }));
    ASSERT_EQ(achados->size(), 1U);
    EXPECT_EQ(achados->front().getValor(), "20241399");
}

// --- keys that the tool bar does not offer ----------------------------------------------------------------

TEST_F(frmValidadorResultado, ExportMakesTheFirstRowActive) {
    acrescentaBotao("btnPlanilha");
    adiciona({valido("a.xml"), valido("b.xml")});
    grade().setLinhaAtiva(-1);
    clica("btnPlanilha");
    EXPECT_EQ(grade().linhaAtiva(), 0);
}

TEST_F(frmValidadorResultado, ExportWithoutRowsDoesNothing) {
    acrescentaBotao("btnPlanilha");
    clica("btnPlanilha");
    EXPECT_TRUE(acao("btnPlanilha")->isEnabled());
}

TEST_F(frmValidadorResultado, ExportOfAFileThatDidNotPassIsRefused) {
    acrescentaBotao("btnPlanilha");
    adiciona({errado("a.xml")});
    clica("btnValidar");
    const Caixas caixas{QStringLiteral("OK")};
    clica("btnPlanilha");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Este arquivo não é válido para exportação!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_FALSE(acao("btnPlanilha")->isEnabled());
}
