#include "composer/fundos.h"

#include "../app/ShippedCatalog.h"
#include "../platform/Throws.h"
#include "Layouts.h"
#include "composer/chavesArvore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv::test {
namespace {

using fundos::addFundo2TreeView;
using fundos::Clique;
using fundos::treeFundos_Click;
using testing::ElementsAre;

class Fundos : public testing::Test {
protected:
    void abre(std::shared_ptr<const clsBoleto> layout) { documento.abrir(std::move(layout)); }
    const SectionOwner& layout() const { return documento.layout(); }
    const clsSecao& secao(std::string_view tag) const { return *documento.layout().getSecoes().Item(tag); }
    Clique clica(std::string_view chave) {
        documento.arvore.seleciona(chave);
        return treeFundos_Click(documento);
    }
    /// A master row that is committed already.
    void linha(std::string_view grade, std::int32_t rowID, std::int32_t rowMaster) {
        RecordSet& dados = *documento.grade(grade).dados;
        dados.AddNew();
        dados.set("rowID", rowID);
        dados.set("rowMaster", rowMaster);
        dados.Update();
    }
    std::vector<std::string> chavesAbaixo(std::string_view chave) const {
        std::vector<std::string> chaves;
        for (const NoArvore* filho : documento.arvore.find(chave)->filhos) {
            chaves.push_back(filho->chave);
        }
        return chaves;
    }

    Documento documento;
};

TEST_F(Fundos, AFundOfAGroupStandsBelowItWithItsSections) {
    abre(layoutEmGrupos());
    addFundo2TreeView(documento, secao("fundo"), 1, "94.000.001/0001-80");
    EXPECT_THAT(chavesAbaixo("kCONST_fundo"), ElementsAre("gkCONST_fundo_0001,posicao_fundo_header"));
    const NoArvore& fundo = *documento.arvore.find("gkCONST_fundo_0001,posicao_fundo_header");
    EXPECT_EQ(fundo.texto, "94.000.001/0001-80");
    EXPECT_EQ(fundo.imagem, "imgFundo");
    EXPECT_FALSE(fundo.expandido);
    EXPECT_TRUE(documento.arvore.raiz()->expandido);
    EXPECT_THAT(chavesAbaixo(fundo.chave), ElementsAre("skCONST_fundo,0001,despesas,posicao_fundo_despesas",
                                                       "skCONST_fundo,0001,titulo,posicao_fundo_titulo"));
    EXPECT_THAT(textosAbaixo(fundo), ElementsAre("Seção despesas", "Seção titulo"));
    EXPECT_EQ(fundo.filhos.front()->imagem, "imgNew");
}

TEST_F(Fundos, TheFirstFundStraightBelowTheLayoutHasAKeyWithoutANode) {
    abre(layoutDireto());
    addFundo2TreeView(documento, layout(), 1, "um");
    EXPECT_EQ(documento.estado.chaveNo, "kCONST_RAIZ");
    addFundo2TreeView(documento, layout(), 2, "dois");
    EXPECT_THAT(chavesAbaixo("kCONST_RAIZ"),
                ElementsAre("gkCONST_RAIZ_0002,passivo_header", "g_0001,passivo_header"));
    EXPECT_THAT(chavesAbaixo("g_0001,passivo_header"),
                ElementsAre("skCONST_RAIZ,0001,cotista,passivo_cotista",
                            "skCONST_RAIZ,0001,despesas,passivo_despesas"));
    EXPECT_THAT(chavesAbaixo("gkCONST_RAIZ_0002,passivo_header"),
                ElementsAre("skCONST_RAIZ,0002,cotista,passivo_cotista",
                            "skCONST_RAIZ,0002,despesas,passivo_despesas"));
}

TEST_F(Fundos, TheSelectedNodeTakesTheFirstFund) {
    abre(layoutDireto());
    documento.arvore.add(chaves::raiz, "kCONST_outro", "Outro", "imgBoleto");
    documento.arvore.seleciona("kCONST_outro");
    documento.estado.chaveNo.clear();
    addFundo2TreeView(documento, layout(), 1, "um");
    EXPECT_EQ(documento.estado.chaveNo, "kCONST_outro");
    EXPECT_THAT(chavesAbaixo("kCONST_outro"), ElementsAre("g_0001,passivo_header"));
}

TEST_F(Fundos, AFundStandsOnceAndIsRenamed) {
    abre(layoutDireto());
    addFundo2TreeView(documento, layout(), 1, "um");
    addFundo2TreeView(documento, layout(), 1, "outro nome");
    EXPECT_THAT(textosAbaixo(*documento.arvore.raiz()), ElementsAre("outro nome"));
    EXPECT_EQ(chavesAbaixo("g_0001,passivo_header").size(), 2U);
}

TEST_F(Fundos, TwoFundsOfOneTitleAreTwoNodes) {
    abre(layoutEmGrupos());
    addFundo2TreeView(documento, secao("fundo"), 1, "igual");
    addFundo2TreeView(documento, secao("fundo"), 2, "igual");
    EXPECT_THAT(textosAbaixo(*documento.arvore.find("kCONST_fundo")), ElementsAre("igual", "igual"));
}

TEST_F(Fundos, FundsAndWalletsOfOneNumberAreDifferentFunds) {
    abre(layoutEmGrupos());
    documento.estado.abrindo = true; // as while a file is loaded
    addFundo2TreeView(documento, secao("fundo"), 1, "fundo");
    addFundo2TreeView(documento, secao("carteira"), 1, "carteira");
    EXPECT_THAT(textosAbaixo(*documento.arvore.find("kCONST_fundo")), ElementsAre("fundo"));
    EXPECT_THAT(textosAbaixo(*documento.arvore.find("kCONST_carteira")), ElementsAre("carteira"));
    EXPECT_EQ(documento.estado.chaveNo, "kCONST_carteira");
}

TEST_F(Fundos, BeforeAnyFileAFundGoesBelowTheSelectedGroup) {
    abre(layoutEmGrupos());
    documento.selecionaNo("kCONST_carteira");
    addFundo2TreeView(documento, secao("fundo"), 1, "um");
    EXPECT_THAT(chavesAbaixo("kCONST_carteira"), ElementsAre("gkCONST_carteira_0001,posicao_fundo_header"));
}

TEST_F(Fundos, AfterAFileTheOwnersGroupIsTaken) {
    abre(layoutEmGrupos());
    documento.estado.abrindo = true;
    documento.selecionaNo("kCONST_carteira");
    addFundo2TreeView(documento, secao("fundo"), 1, "um");
    EXPECT_THAT(chavesAbaixo("kCONST_fundo"), ElementsAre("gkCONST_fundo_0001,posicao_fundo_header"));
}

TEST_F(Fundos, TheTenThousandthFundHasAllItsDigits) {
    abre(layoutDireto());
    addFundo2TreeView(documento, layout(), 9999, "a");
    addFundo2TreeView(documento, layout(), 10000, "b");
    linha("passivo_header", 10000, 0);
    linha("passivo_cotista", 0, 10000);
    EXPECT_EQ(clica("gkCONST_RAIZ_10000,passivo_header").grade->dados->RecordCount(), 1U);
    EXPECT_EQ(clica("skCONST_RAIZ,10000,cotista,passivo_cotista").grade->dados->RecordCount(), 1U);
}

TEST_F(Fundos, ASectionWithSubsectionsShowsTheFundsPicture) {
    abre(layoutOf(
        {.tag = "l",
         .inside =
             mestre() +
             SecaoXml{.tag = "ordem", .inside = campo("codigo") + detalhe("item"), .nome = "Ordens"}.xml(),
         .nomeGrupo = "Fundo",
         .tagGrupo = "fundo"}));
    addFundo2TreeView(documento, layout(), 1, "um");
    EXPECT_EQ(documento.arvore.find("skCONST_RAIZ,0001,ordem,l_ordem")->imagem, "imgFundo");
}

// A row of a section that holds others stands below that section's node like a fund, with the layout's
// sections under it again.
TEST_F(Fundos, ARowOfASectionWithSubsectionsHangsBelowItsNode) {
    abre(layoutOf(
        {.tag = "l",
         .inside =
             mestre() +
             SecaoXml{.tag = "ordem", .inside = campo("codigo") + detalhe("item"), .nome = "Ordens"}.xml(),
         .nomeGrupo = "Fundo",
         .tagGrupo = "fundo"}));
    addFundo2TreeView(documento, layout(), 3, "um");
    documento.selecionaNo("skCONST_RAIZ,0003,ordem,l_ordem");
    addFundo2TreeView(documento, secao("ordem"), 3, "ordem 1");
    EXPECT_THAT(chavesAbaixo("skCONST_RAIZ,0003,ordem,l_ordem"),
                ElementsAre("gskCONST_RAIZ,0003,ordem,l_ordem_0003,l_Fundo_ordem"));
}

// After a load the owner's group is asked for, and a master straight below the layout names none.
TEST_F(Fundos, WithoutTheNodeAboveItAFundStandsBelowTheRoot) {
    abre(layoutDireto());
    documento.estado.abrindo = true;
    addFundo2TreeView(documento, secao("header"), 3, "um");
    EXPECT_THAT(chavesAbaixo("kCONST_RAIZ"), ElementsAre("gkCONST_RAIZ_0003,passivo_header"));
    EXPECT_THAT(chavesAbaixo("gkCONST_RAIZ_0003,passivo_header"),
                ElementsAre("skCONST_RAIZ,0003,cotista,passivo_cotista",
                            "skCONST_RAIZ,0003,despesas,passivo_despesas"));
}

TEST_F(Fundos, AGroupWithoutANodePutsItsFundsBelowTheRoot) {
    const std::string semTag =
        SecaoXml{.tag = "aa", .inside = mestre() + detalhe("titulo"), .nome = "Abelha"}.xml();
    abre(layoutOf({.tag = "l", .inside = semTag, .nomeGrupo = "G", .tagGrupo = "g"}));
    addFundo2TreeView(documento, secao("aa"), 1, "um");
    EXPECT_THAT(chavesAbaixo("gkCONST_RAIZ_0001,l_aa_header"),
                ElementsAre("skCONST_RAIZ,0001,titulo,l_aa_titulo"));
}

TEST_F(Fundos, WithoutATreeAFundFailsQuietly) {
    abre(layoutSemGrupo());
    addFundo2TreeView(documento, layout(), 1, "um");
    EXPECT_TRUE(documento.arvore.empty());
}

struct ChaveDeFundo {
    const char* nome;
    BoletoXml layout;
    std::string obj; // tag of the section, or empty for the layout
    std::string grade;
};

class ChavesDeFundo : public testing::TestWithParam<ChaveDeFundo> {};

TEST_P(ChavesDeFundo, NameAGridByTheKindOfTheirOwner) {
    Documento documento;
    documento.abrir(layoutOf(GetParam().layout));
    if (!documento.arvoreVisivel()) { // the window asks only when the tree is shown
        documento.arvore.add({}, chaves::raiz, "Boleto", "imgBoleto");
    }
    documento.selecionaNo(chaves::raiz);
    const SectionOwner& layout = documento.layout();
    const SectionOwner& obj = GetParam().obj.empty() ? layout : *layout.getSecoes().Item(GetParam().obj);
    addFundo2TreeView(documento, obj, 5, "um");
    EXPECT_NE(documento.arvore.find("gkCONST_RAIZ_0005," + GetParam().grade), nullptr) << GetParam().grade;
}

const std::string semCampos = SecaoXml{.tag = "ordem", .inside = detalhe("item")}.xml();

INSTANTIATE_TEST_SUITE_P(
    Todas, ChavesDeFundo,
    testing::Values(
        ChaveDeFundo{
            "Layout", {.tag = "l", .inside = mestre(), .nomeGrupo = "G", .tagGrupo = "g"}, "", "l_header"},
        ChaveDeFundo{"SemMestreComFilhas",
                     {.tag = "l", .inside = mestre() + semCampos, .nomeGrupo = "G", .tagGrupo = "g"},
                     "ordem",
                     "l_G_ordem"},
        ChaveDeFundo{"SemMestreSemFilhas",
                     {.tag = "l", .inside = mestre(), .nomeGrupo = "G", .tagGrupo = "g"},
                     "header",
                     "l_header"},
        ChaveDeFundo{"ComMestre",
                     {.tag = "l", .inside = grupo("fundo", "F", mestre()), .nomeGrupo = "G", .tagGrupo = "g"},
                     "fundo",
                     "l_fundo_header"},
        ChaveDeFundo{
            "SemGrupo", {.tag = "l", .inside = grupo("fundo", "F", mestre())}, "fundo", "l_fundo_header"}),
    [](const auto& um) { return um.param.nome; });

TEST_F(Fundos, AClickOnTheRootShowsAllMastersOfTheFirstSection) {
    abre(layoutDireto());
    addFundo2TreeView(documento, layout(), 1, "um");
    linha("passivo_header", 1, 0);
    linha("passivo_header", 2, 0);
    clica("g_0001,passivo_header");
    const Clique clique = clica("kCONST_RAIZ");
    EXPECT_EQ(clique.grade->chave, "passivo_header");
    EXPECT_TRUE(clique.formata);
    EXPECT_EQ(clique.grade->dados->RecordCount(), 2U);
    EXPECT_EQ(clique.grade->caption, "Posição (1.0)");
    EXPECT_TRUE(documento.estado.btnAdicionar && documento.estado.btnRemover);
    EXPECT_EQ(documento.estado.secaoAtual, &secao("header"));
    EXPECT_EQ(documento.estado.noAtual, &secao("header"));
    // The first child's key begins "g_", so the root stays selected.
    EXPECT_EQ(documento.arvore.chaveSelecionada(), "kCONST_RAIZ");
    EXPECT_EQ(documento.estado.chaveNo, "kCONST_RAIZ");
    EXPECT_EQ(&documento.getGrid(), clique.grade);
}

TEST_F(Fundos, AClickOnTheRootSelectsTheFirstFundWhenThatWasMadeBelowIt) {
    abre(layoutDireto());
    addFundo2TreeView(documento, layout(), 1, "z");
    addFundo2TreeView(documento, layout(), 2, "a");
    clica("kCONST_RAIZ");
    EXPECT_EQ(documento.arvore.chaveSelecionada(), "gkCONST_RAIZ_0002,passivo_header");
    EXPECT_EQ(documento.estado.noAtual, &secao("header"));
    EXPECT_EQ(documento.estado.chaveNo, "kCONST_RAIZ"); // rows can be added as before
}

TEST_F(Fundos, AClickOnTheRootEntersTheFirstGroup) {
    abre(layoutEmGrupos());
    clica("kCONST_carteira");
    const Clique clique = clica("kCONST_RAIZ");
    EXPECT_EQ(clique.grade->chave, "posicao_fundo_header");
    EXPECT_EQ(documento.estado.noAtual, &secao("fundo"));
    EXPECT_EQ(documento.estado.secaoAtual, &secao("fundo"));
    EXPECT_EQ(documento.estado.chaveNo, "kCONST_fundo");
    EXPECT_EQ(documento.arvore.chaveSelecionada(), "kCONST_fundo");
}

TEST_F(Fundos, AClickOnTheRootWithoutFundsKeepsTheLayout) {
    abre(layoutDireto());
    EXPECT_EQ(clica("kCONST_RAIZ").grade->chave, "passivo_header");
    EXPECT_EQ(documento.estado.noAtual, &layout());
}

TEST_F(Fundos, AClickOnAGroupShowsAllItsMasters) {
    abre(layoutEmGrupos());
    linha("posicao_carteira_header", 1, 0);
    documento.estado.btnAdicionar = false;
    documento.estado.btnRemover = false;
    const Clique clique = clica("kCONST_carteira");
    EXPECT_EQ(clique.grade->chave, "posicao_carteira_header");
    EXPECT_EQ(clique.grade->caption, "Outras carteiras - Cabeçalho");
    EXPECT_EQ(clique.grade->dados->RecordCount(), 1U);
    EXPECT_TRUE(documento.estado.btnAdicionar && documento.estado.btnRemover);
    EXPECT_EQ(documento.estado.noAtual, &secao("carteira"));
    EXPECT_EQ(documento.estado.secaoAtual, secao("carteira").getSecaoMestre().get());
    EXPECT_EQ(documento.estado.chaveNo, "kCONST_carteira");
}

// Groups are found by the order of their creation, whatever their names.
TEST_F(Fundos, AClickOnAGroupGoesByTheOrderOfCreation) {
    abre(layoutOf({.tag = "l",
                   .inside = grupo("zz", "Zebra", mestre()) + grupo("aa", "Abelha", mestre()),
                   .nomeGrupo = "G",
                   .tagGrupo = "g"}));
    EXPECT_THAT(textosAbaixo(*documento.arvore.raiz()), ElementsAre("Abelha", "Zebra"));
    EXPECT_EQ(clica("kCONST_aa").grade->chave, "l_aa_header");
    EXPECT_EQ(clica("kCONST_zz").grade->chave, "l_zz_header");
}

// A section without a group element has no node but counts all the same: the next group leads to it.
TEST_F(Fundos, ASectionWithoutAGroupElementShiftsTheGroups) {
    const std::string semTag = SecaoXml{.tag = "aa", .inside = mestre(), .nome = "Abelha"}.xml();
    abre(layoutOf(
        {.tag = "l", .inside = semTag + grupo("zz", "Zebra", mestre()), .nomeGrupo = "G", .tagGrupo = "g"}));
    EXPECT_EQ(clica("kCONST_zz").grade->chave, "l_aa_header");
}

TEST_F(Fundos, AClickOnAFundShowsItsRowAndSwitchesTheButtonsOff) {
    abre(layoutDireto());
    addFundo2TreeView(documento, layout(), 1, "94.000.001/0001-80");
    addFundo2TreeView(documento, layout(), 2, "94.000.002/0001-80");
    linha("passivo_header", 1, 0);
    linha("passivo_header", 2, 0);
    for (const std::string chave : {"g_0001,passivo_header", "gkCONST_RAIZ_0002,passivo_header"}) {
        const Clique clique = clica(chave);
        EXPECT_EQ(clique.grade->chave, "passivo_header");
        EXPECT_EQ(clique.grade->dados->RecordCount(), 1U);
        EXPECT_EQ(clique.grade->caption, "Fundo CNPJ:" + documento.arvore.find(chave)->texto);
        EXPECT_FALSE(documento.estado.btnAdicionar || documento.estado.btnRemover);
        EXPECT_EQ(documento.estado.chaveNo, chave);
        EXPECT_EQ(documento.estado.secaoAtual, &secao("header"));
    }
    EXPECT_EQ(documento.getGrid().dados->get("rowID"), Value(std::int32_t{2}));
}

TEST_F(Fundos, AFundBelowAGroupShowsNoRows) {
    abre(layoutEmGrupos());
    addFundo2TreeView(documento, secao("fundo"), 1, "um");
    linha("posicao_fundo_header", 1, 0);
    const Clique clique = clica("gkCONST_fundo_0001,posicao_fundo_header");
    EXPECT_EQ(clique.grade->chave, "posicao_fundo_header");
    EXPECT_EQ(clique.grade->dados->RecordCount(), 0U);
    EXPECT_FALSE(documento.estado.btnAdicionar || documento.estado.btnRemover);
}

TEST_F(Fundos, WithoutASectionWorkedOnAFundsGridTellsIt) {
    abre(layoutDireto());
    addFundo2TreeView(documento, layout(), 1, "um");
    documento.estado.noAtual = nullptr;
    const Clique clique = clica("g_0001,passivo_header");
    EXPECT_EQ(documento.estado.noAtual, &secao("header"));
    EXPECT_EQ(documento.estado.secaoAtual, nullptr);
    EXPECT_FALSE(clique.formata);
}

TEST_F(Fundos, AClickOnASectionShowsTheDetailsOfItsFund) {
    abre(layoutEmGrupos());
    addFundo2TreeView(documento, secao("fundo"), 1, "94.000.001/0001-80");
    addFundo2TreeView(documento, secao("fundo"), 2, "94.000.002/0001-80");
    linha("posicao_fundo_titulo", 0, 1);
    linha("posicao_fundo_titulo", 0, 1);
    linha("posicao_fundo_titulo", 0, 2);
    clica("gkCONST_fundo_0001,posicao_fundo_header");
    const Clique clique = clica("skCONST_fundo,0001,titulo,posicao_fundo_titulo");
    EXPECT_EQ(clique.grade->chave, "posicao_fundo_titulo");
    EXPECT_EQ(clique.grade->dados->RecordCount(), 2U);
    EXPECT_EQ(clique.grade->caption, "Seção titulo - Fundo CNPJ:94.000.001/0001-80");
    EXPECT_TRUE(documento.estado.btnAdicionar && documento.estado.btnRemover);
    EXPECT_EQ(documento.estado.noAtual, clique.grade->secao);
    EXPECT_EQ(documento.estado.secaoAtual, clique.grade->secao);
    EXPECT_EQ(documento.estado.chaveGrid, "posicao_fundo_titulo");
}

TEST_F(Fundos, AFailedClickLeavesTheGridBeforeOnTop) {
    abre(layoutDireto());
    documento.arvore.add(chaves::raiz, "s,0001,nenhuma,passivo_nenhuma", "Nenhuma", "imgNew");
    EXPECT_EQ(errorOf([&] { clica("s,0001,nenhuma,passivo_nenhuma"); }), errc::invalidCall);
    EXPECT_EQ(documento.getGrid().chave, "passivo_header");
    EXPECT_EQ(documento.estado.chaveNo, "s,0001,nenhuma,passivo_nenhuma");
}

TEST_F(Fundos, WithoutASelectedNodeAClickDoesNothing) {
    abre(layoutDireto());
    documento.estado.btnAdicionar = false;
    EXPECT_EQ(treeFundos_Click(documento).grade, nullptr);
    EXPECT_FALSE(documento.estado.btnAdicionar);
}

// Every section node of every shipped layout leads to its own grid.
TEST(FundosDoCatalogo, EachNodeLeadsToItsGrid) {
    for (const auto& layout : shippedCatalog().getBoletos()) {
        Documento documento;
        documento.abrir(layout);
        documento.estado.abrindo = true;
        const bool emGrupos = layout->getSecaoMestre() == nullptr;
        std::size_t secoes = 0;
        for (const auto& secao : layout->getSecoes()) {
            if (!emGrupos && secao != layout->getSecoes().Item(1)) {
                continue;
            }
            const SectionOwner& obj = emGrupos ? static_cast<const SectionOwner&>(*secao) : *layout;
            addFundo2TreeView(documento, obj, 1, secao->getTag());
            secoes += obj.getSecoes().Count() - 1;
        }
        std::vector<std::string> nos;
        const std::function<void(const NoArvore&)> coleta = [&](const NoArvore& no) {
            if (chaves::tipo(no.chave) == chaves::TipoNo::Secao) {
                nos.push_back(no.chave);
            }
            std::for_each(no.filhos.begin(), no.filhos.end(), [&](const NoArvore* filho) { coleta(*filho); });
        };
        coleta(*documento.arvore.raiz());
        EXPECT_EQ(nos.size(), secoes) << layout->getTag();
        for (const std::string& chave : nos) {
            documento.arvore.seleciona(chave);
            const Clique clique = treeFundos_Click(documento);
            EXPECT_EQ(clique.grade->tag, chaves::parte(chave, 2));
            EXPECT_EQ(clique.grade->secao->getNome(), documento.arvore.find(chave)->texto);
        }
    }
}

} // namespace
} // namespace tv::test
