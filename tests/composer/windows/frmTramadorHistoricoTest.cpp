// Edits taken back and made again through the window, rows that come and go included.
#include "composer/Amostras.h"
#include "composer/windows/BancadaTramador.h"

using namespace tv;
using namespace tv::test;

namespace {

constexpr const char* fundoNaTela = "94.000.001/0001-80";
constexpr const char* outroNaTela = "94.000.031/0001-96";

class frmTramadorHistorico : public BancadaTramador {
protected:
    void desfaz() const { tecla(Qt::Key_Z); }
    void refaz() const { tecla(Qt::Key_Y); }
    /// A shortcut acts in the active window, which a message box was before.
    void tecla(Qt::Key qual) const {
        QApplication::setActiveWindow(&mdiMain::instancia());
        QTest::keyClick(&grade(), qual, Qt::ControlModifier);
    }
    void incluiNaCaixa(int linhas) const {
        for (int i = 0; i < linhas; ++i) {
            clica("btnAdicionar");
            completa(i);
            QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
        }
    }
    std::size_t linhasDe(const char* chave) const {
        return documento().grade(chave).dados->Clone()->RecordCount();
    }
    const QTreeWidgetItem& raiz() const { return *arvore().topLevelItem(0); }
};

} // namespace

TEST_F(frmTramadorHistorico, AnUnfinishedRowIsTakenBackWithoutAWord) {
    abre("arquivoposicao_4_01");
    clica("btnAdicionar");
    vaiPara(0, "cnpj");
    digita(cnpj, Qt::Key_Tab);
    const Caixas caixas; // none is shown
    desfaz();
    EXPECT_EQ(texto(0, "cnpj"), "");
    EXPECT_EQ(modelo().rowCount(), 1);
    desfaz();
    EXPECT_EQ(modelo().rowCount(), 0);
    refaz();
    ASSERT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(texto(0, "rowID"), "1");
    refaz();
    EXPECT_EQ(texto(0, "cnpj"), cnpj);
    desfaz();
    desfaz();
    desfaz(); // there is nothing more
    EXPECT_EQ(modelo().rowCount(), 0);
}

TEST_F(frmTramadorHistorico, AnAddedFundLeavesTheTreeAndComesBack) {
    abre("ArquivoPosicao_2_01");
    clica("btnAdicionar");
    vaiPara(0, "cnpj");
    digita(cnpj, Qt::Key_Tab);
    completa(0);
    QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
    ASSERT_EQ(raiz().childCount(), 1);
    estado().salvo = true;
    desfaz();
    desfaz();
    EXPECT_EQ(modelo().rowCount(), 0);
    EXPECT_EQ(raiz().childCount(), 0);
    EXPECT_FALSE(estado().salvo);
    refaz();
    refaz();
    QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(modelo().rowCount(), 1);
    ASSERT_EQ(raiz().childCount(), 1);
    EXPECT_EQ(raiz().child(0)->childCount(), 12);
}

TEST_F(frmTramadorHistorico, RemovedRowsComeBackInTheirPlace) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    clicaNo({"Boleto", fundoNaTela, "Caixa"});
    incluiNaCaixa(3);
    const auto antes = linhasDoDocumento(documento());
    estado().salvo = true;
    grade().selecionaLinha(1);
    Caixas caixas{q("Sim")};
    clica("btnRemover");
    ASSERT_EQ(modelo().rowCount(), 2);
    clicaNo({"Boleto"});
    desfaz();
    EXPECT_EQ(grade().objectName(), q("ArquivoPosicao_2_01_caixa")) << "where it was";
    EXPECT_EQ(linhasDoDocumento(documento()), antes);
    EXPECT_EQ(grade().linhaAtiva(), 1);
    refaz();
    EXPECT_EQ(modelo().rowCount(), 2);
}

TEST_F(frmTramadorHistorico, ARemovedFundComesBackWithAllItsDetails) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    clicaNo({"Boleto"});
    incluiFundo(outroCnpj);
    for (const char* fundo : {fundoNaTela, outroNaTela}) {
        for (const char* secaoDoFundo : {"Caixa", "Provisões"}) {
            clicaNo({"Boleto", fundo, secaoDoFundo});
            incluiNaCaixa(1);
        }
    }
    const auto antes = linhasDoDocumento(documento());
    clicaNo({"Boleto"});
    grade().setLinhaAtiva(0);
    grade().selecionaLinha(0);
    Caixas caixas{q("Sim")};
    clica("btnRemover");
    ASSERT_EQ(linhasDe("ArquivoPosicao_2_01_caixa"), 1U);
    desfaz();
    EXPECT_EQ(linhasDoDocumento(documento()), antes);
    EXPECT_EQ(raiz().childCount(), 2);
    clicaNo({"Boleto", fundoNaTela, "Caixa"});
    EXPECT_EQ(modelo().rowCount(), 1);
    refaz();
    EXPECT_EQ(linhasDe("ArquivoPosicao_2_01_caixa"), 1U);
    EXPECT_EQ(linhasDe("ArquivoPosicao_2_01_header"), 1U);
}

// A click on the root may select the first fund, though it shows them all.
TEST_F(frmTramadorHistorico, EditsBelowTheRootComeBackBelowTheRoot) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(outroCnpj);
    incluiFundo(cnpj); // sorts first
    clicaNo({"Boleto"});
    ASSERT_EQ(modelo().rowCount(), 2);
    vaiPara(0, "nome");
    digita("Novo", Qt::Key_Return);
    clicaNo({"Boleto", outroNaTela, "Caixa"});
    desfaz();
    EXPECT_EQ(grade().objectName(), q("ArquivoPosicao_2_01_header"));
    EXPECT_EQ(modelo().rowCount(), 2);
    EXPECT_NE(texto(0, "nome"), "Novo");
    EXPECT_TRUE(acao("btnAdicionar")->isEnabled());
}

// The first rows are typed while no node is selected.
TEST_F(frmTramadorHistorico, EditsWithoutANodeComeBackFromElsewhere) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    vaiPara(0, "nome");
    digita("Novo", Qt::Key_Return);
    clicaNo({"Boleto", fundoNaTela, "Caixa"});
    desfaz();
    EXPECT_EQ(grade().objectName(), q("ArquivoPosicao_2_01_header"));
    EXPECT_NE(texto(0, "nome"), "Novo");
    refaz();
    EXPECT_EQ(texto(0, "nome"), "Novo");
}

TEST_F(frmTramadorHistorico, ANewDocumentHasNothingToTakeBack) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    Caixas caixas{q("Não")};
    clica("btnNovo");
    desfaz();
    refaz();
    EXPECT_EQ(modelo().rowCount(), 0);
}
