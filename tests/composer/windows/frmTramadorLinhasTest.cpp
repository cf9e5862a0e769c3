// Rows through the window: adding, committing, the rules' messages, removing, and the tree that follows.
#include "composer/windows/BancadaTramador.h"

#include <QAbstractItemView>

using namespace tv;
using namespace tv::test;

namespace {

class frmTramadorLinhas : public BancadaTramador {
protected:
    /// Opens a layout with one fund and goes to one of its sections.
    void abreNaSecao(const char* layout, const std::vector<const char*>& caminho) {
        abre(layout);
        incluiFundo(cnpj);
        clicaNo(caminho);
    }
    QStringList textosAbaixoDe(const QTreeWidgetItem& pai) const {
        QStringList textos;
        for (int i = 0; i < pai.childCount(); ++i) {
            textos << pai.child(i)->text(0);
        }
        return textos;
    }
    std::size_t linhasDe(const char* chave) const {
        return documento().grade(chave).dados->Clone()->RecordCount();
    }
    const QTreeWidgetItem& raiz() const { return *arvore().topLevelItem(0); }
};

constexpr const char* fundoNaTela = "94.000.001/0001-80";
constexpr const char* outroNaTela = "94.000.031/0001-96";

} // namespace

TEST_F(frmTramadorLinhas, AddMakesARowActive) {
    abre("arquivoposicao_4_01");
    clica("btnAdicionar");
    EXPECT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(grade().linhaAtiva(), 0);
    EXPECT_EQ(texto(0, "rowID"), "1");
    EXPECT_EQ(texto(0, "rowMaster"), "0");
    EXPECT_TRUE(estado().salvo);
}

TEST_F(frmTramadorLinhas, AddAfterAnInvalidRowTellsItsFieldsAndAddsNothing) {
    abre("arquivoposicao_4_01");
    clica("btnAdicionar");
    Caixas caixas{q("OK")};
    clica("btnAdicionar");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_TRUE(
        caixas.vistas()[0].texto.startsWith(q("Os valores dos seguintes campos são inválidos: \n\t")));
    EXPECT_TRUE(caixas.vistas()[0].texto.contains(q("\n\tCNPJ do fundo")));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(modelo().rowCount(), 1);
}

TEST_F(frmTramadorLinhas, CommittedFundsStandInTheTreeWithTheirSections) {
    for (const auto& [layout, secoes] : std::vector<std::pair<const char*, int>>{
             {"ArquivoPosicao_2_01", 12}, {"posicao_passivo_analitico_v100", 3}}) {
        abre(layout);
        incluiFundo(cnpj);
        incluiFundo(outroCnpj);
        EXPECT_EQ(textosAbaixoDe(raiz()), QStringList({q(fundoNaTela), q(outroNaTela)})) << layout;
        EXPECT_EQ(raiz().child(0)->childCount(), secoes) << layout;
        EXPECT_FALSE(raiz().child(0)->isExpanded());
        EXPECT_TRUE(raiz().isExpanded());
        EXPECT_FALSE(estado().salvo);
    }
}

TEST_F(frmTramadorLinhas, FundOfALayoutInGroupsStandsBelowItsGroup) {
    abre("arquivoposicao_4_01");
    incluiFundo(cnpj);
    ASSERT_EQ(raiz().child(0)->childCount(), 1);
    EXPECT_EQ(raiz().child(0)->child(0)->text(0), q(fundoNaTela));
    EXPECT_EQ(raiz().child(0)->child(0)->childCount(), 22);
}

TEST_F(frmTramadorLinhas, CommitOfAChangedKeyRenamesTheFund) {
    abre("posicao_passivo_analitico_v100");
    incluiFundo(cnpj);
    vaiPara(0, "cnpj");
    digita(outroCnpj, Qt::Key_Return);
    QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(textosAbaixoDe(raiz()), QStringList{q(outroNaTela)});
}

TEST_F(frmTramadorLinhas, LeavingARowCommitsIt) {
    abre("posicao_passivo_analitico_v100");
    incluiFundo(cnpj);
    incluiFundo(outroCnpj);
    estado().salvo = true;
    vaiPara(0, "cnpj");
    digita("94000001000180", Qt::Key_Tab); // what is there already changes nothing
    QTest::keyClick(&grade(), Qt::Key_Down);
    EXPECT_TRUE(estado().salvo);
    vaiPara(0, "cnpj");
    digita("1", Qt::Key_Tab);
    EXPECT_TRUE(estado().salvo);
    Caixas caixas{q("OK")};
    QTest::keyClick(&grade(), Qt::Key_Down);
    EXPECT_TRUE(espera([&] { return caixas.vistas().size() == 1; }));
    EXPECT_EQ(caixas.vistas()[0].texto, q("Os valores dos seguintes campos são inválidos: \n\t") +
                                            paraQt(secao().secao->getCampoChave()->getNome()));
    EXPECT_TRUE(estado().salvo) << "an invalid row leaves the document as it is";
    EXPECT_EQ(texto(0, "cnpj"), "1") << "and stays";
}

TEST_F(frmTramadorLinhas, ChosenListItemCommitsTheRow) {
    abreNaSecao("ArquivoPosicao_2_01", {"Boleto", fundoNaTela, "Caixa"});
    clica("btnAdicionar");
    completa(0);
    const std::string antes = texto(0, "tpconta");
    estado().salvo = true;
    vaiPara(0, "tpconta");
    QTest::keyClick(&grade(), Qt::Key_F2);
    ASSERT_TRUE(espera([this] { return lista() != nullptr && lista()->view()->isVisible(); }));
    QTest::keyClick(lista()->view(), Qt::Key_End);
    QTest::keyClick(lista()->view(), Qt::Key_Return);
    ASSERT_TRUE(espera([this] { return lista() == nullptr; }));
    EXPECT_NE(texto(0, "tpconta"), antes);
    EXPECT_EQ(texto(0, "rowMaster"), "1");
    EXPECT_FALSE(estado().salvo);
}

TEST_F(frmTramadorLinhas, CtrlEnterCommitsTheRow) {
    abreNaSecao("ArquivoPosicao_2_01", {"Boleto", fundoNaTela, "Despesas do mês"});
    clica("btnAdicionar");
    completa(0);
    estado().salvo = true;
    QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(texto(0, "rowMaster"), "1");
    EXPECT_FALSE(estado().salvo);
}

TEST_F(frmTramadorLinhas, SectionThatOccursOnceTakesOneRowAFund) {
    abreNaSecao("ArquivoPosicao_2_01", {"Boleto", fundoNaTela, "Despesas do mês"});
    clica("btnAdicionar");
    completa(0);
    QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
    const Caixas caixas; // refused without a word
    clica("btnAdicionar");
    EXPECT_EQ(modelo().rowCount(), 1);
    QTest::keyClick(&grade(), Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(modelo().rowCount(), 1);
    EXPECT_FALSE(janela->canAddRow());
}

TEST_F(frmTramadorLinhas, FundsNodeShowsItsRowWithAddAndRemoveOff) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    clicaNo({"Boleto"});
    incluiFundo(outroCnpj);
    clicaNo({"Boleto", outroNaTela});
    EXPECT_FALSE(acao("btnAdicionar")->isEnabled());
    EXPECT_FALSE(acao("btnRemover")->isEnabled());
    EXPECT_EQ(grade().captionVisivel(), q("Fundo CNPJ:") + q(outroNaTela));
    ASSERT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(visivel(0, secao().secao->getCampoChave()->getTag()), outroNaTela);
    QTest::keyClick(&grade(), Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(modelo().rowCount(), 1);
    clicaNo({"Boleto"});
    EXPECT_TRUE(acao("btnAdicionar")->isEnabled());
    EXPECT_EQ(modelo().rowCount(), 2);
}

TEST_F(frmTramadorLinhas, FundBelowAGroupShowsNoRows) {
    abre("arquivoposicao_4_01");
    incluiFundo(cnpj);
    clicaNo({"Boleto", "Fundos", fundoNaTela});
    EXPECT_EQ(modelo().rowCount(), 0);
    EXPECT_FALSE(acao("btnAdicionar")->isEnabled());
}

TEST_F(frmTramadorLinhas, SectionsNodeShowsTheFundsRows) {
    abreNaSecao("arquivoposicao_4_01", {"Boleto", "Fundos", fundoNaTela, "Caixa"});
    EXPECT_EQ(grade().objectName(), q("fundo_caixa"));
    EXPECT_EQ(grade().captionVisivel(), q("Caixa - Fundo CNPJ:") + q(fundoNaTela));
    EXPECT_TRUE(acao("btnAdicionar")->isEnabled());
    clica("btnAdicionar");
    completa(0);
    QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(modelo().rowCount(), 1);
    clicaNo({"Boleto", "Fundos"});
    EXPECT_EQ(grade().objectName(), q("fundo_header"));
    EXPECT_EQ(grade().captionVisivel(), q("Fundos - Cabeçalho"));
}

TEST_F(frmTramadorLinhas, TreeWorksWithTheKeyboard) {
    abre("arquivoposicao_4_01");
    arvore().setFocus();
    QTest::keyClick(&arvore(), Qt::Key_Down);
    EXPECT_EQ(estado().chaveNo, "kCONST_carteira");
    EXPECT_EQ(grade().objectName(), q("carteira_header"));
    QTest::keyClick(&arvore(), Qt::Key_F6);
    EXPECT_TRUE(grade().hasFocus());
    QTest::keyClick(&grade(), Qt::Key_F6);
    EXPECT_TRUE(arvore().hasFocus());
}

TEST_F(frmTramadorLinhas, ClickOnANodeEndsTheRowUnderWay) {
    abre("posicao_passivo_analitico_v100");
    incluiFundo(cnpj);
    estado().salvo = true;
    vaiPara(0, "cnpj");
    digita(outroCnpj, Qt::Key_Tab);
    clicaNo({"Boleto"});
    EXPECT_FALSE(estado().salvo);
    EXPECT_EQ(textosAbaixoDe(raiz()), QStringList{q(outroNaTela)});
}

TEST_F(frmTramadorLinhas, RemovedMasterTakesItsDetailsAndLeavesItsNode) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    clicaNo({"Boleto"});
    incluiFundo(outroCnpj);
    for (const char* fundo : {fundoNaTela, outroNaTela}) {
        for (const char* secaoDoFundo : {"Caixa", "Provisões"}) {
            clicaNo({"Boleto", fundo, secaoDoFundo});
            clica("btnAdicionar");
            completa(0);
            QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
        }
    }
    ASSERT_EQ(linhasDe("ArquivoPosicao_2_01_caixa"), 2U);
    clicaNo({"Boleto"});
    grade().setLinhaAtiva(0);
    grade().selecionaLinha(0);
    Caixas caixas{q("Sim")};
    clica("btnRemover");
    EXPECT_EQ(caixas.vistas().at(0).texto,
              q("Existe uma linha selecionada para remoção.\nDeseja continuar?"));
    EXPECT_EQ(linhasDe("ArquivoPosicao_2_01_header"), 1U);
    EXPECT_EQ(linhasDe("ArquivoPosicao_2_01_caixa"), 1U);
    EXPECT_EQ(linhasDe("ArquivoPosicao_2_01_provisao"), 1U);
    EXPECT_EQ(raiz().childCount(), 2);
    EXPECT_FALSE(estado().apagando);
    EXPECT_FALSE(estado().salvo);
}

TEST_F(frmTramadorLinhas, RemovedDetailTouchesNoOtherSection) {
    abreNaSecao("ArquivoPosicao_2_01", {"Boleto", fundoNaTela, "Caixa"});
    for (int i = 0; i < 2; ++i) {
        clica("btnAdicionar");
        completa(i);
        QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
    }
    estado().salvo = true;
    grade().selecionaLinha(1);
    Caixas caixas{q("Sim")};
    QTest::keyClick(&grade(), Qt::Key_Minus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(linhasDe("ArquivoPosicao_2_01_header"), 1U);
    EXPECT_FALSE(estado().salvo);
}

TEST_F(frmTramadorLinhas, RefusedRemovalKeepsTheRow) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    estado().salvo = true;
    Caixas caixas{q("Não")};
    clica("btnRemover");
    EXPECT_EQ(modelo().rowCount(), 1);
    EXPECT_TRUE(estado().salvo);
    EXPECT_FALSE(estado().apagando);
}

TEST_F(frmTramadorLinhas, AmpersandInATitleIsOneOnTheScreen) {
    abre(layoutOf({.tag = "lista",
                   .inside = mestre("registro"),
                   .nome = "Fundos &amp; cia",
                   .nomeGrupo = "",
                   .tagGrupo = ""}));
    EXPECT_TRUE(grade().captionVisivel().contains(q("Fundos & cia"))) << grade().caption().toStdString();
    EXPECT_FALSE(grade().captionVisivel().contains(q("&&")));
    EXPECT_TRUE(grade().caption().contains(q("&&")));
}
