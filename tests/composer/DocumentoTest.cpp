#include "composer/Documento.h"

#include "../app/ShippedCatalog.h"
#include "../platform/Throws.h"
#include "Layouts.h"
#include "composer/chavesArvore.h"
#include "platform/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv::test {
namespace {

using testing::ElementsAre;
using Layout = std::shared_ptr<const clsBoleto>;

Documento documentoDe(const Layout& layout) {
    Documento documento;
    documento.abrir(layout);
    return documento;
}

struct Formato {
    const char* nome;
    Layout layout;
    std::vector<std::string> chaves;
    std::string primeira;
    std::string noAtual;
    std::string chaveNo;
};

class FormatoDeLayout : public testing::TestWithParam<Formato> {};

TEST_P(FormatoDeLayout, GivesEachSectionWithFieldsAGridUnderItsPath) {
    const Documento documento = documentoDe(GetParam().layout);
    EXPECT_EQ(chavesDasGrades(documento), GetParam().chaves);
    for (const auto& grade : documento.grids()) {
        EXPECT_EQ(grade->nome, grade->dono->getTag() + "_" + grade->tag);
        EXPECT_EQ(&documento.secaoPorChave(grade->chave), grade->secao);
        ASSERT_NE(grade->dados, nullptr);
        EXPECT_TRUE(grade->dados->isOpen());
        EXPECT_EQ(grade->dados->RecordCount(), 0U);
    }
    EXPECT_EQ(&documento.secaoPorChave(chaves::raiz), GetParam().layout.get());
}

TEST_P(FormatoDeLayout, ShowsItsFirstMasterAtTheStart) {
    const Documento documento = documentoDe(GetParam().layout);
    EXPECT_EQ(documento.getGrid().chave, GetParam().primeira);
    EXPECT_EQ(documento.estado.chaveGrid, GetParam().primeira);
    EXPECT_TRUE(documento.getGrid().secao->isSecaoMestre());
    EXPECT_EQ(documento.estado.noAtual->getTag(), GetParam().noAtual);
    EXPECT_EQ(documento.estado.chaveNo, GetParam().chaveNo);
    EXPECT_EQ(documento.arvore.chaveSelecionada(), GetParam().chaveNo);
    EXPECT_TRUE(documento.estado.salvo);
    EXPECT_FALSE(documento.estado.abrindo);
    EXPECT_EQ(documento.estado.arquivo, "");
}

INSTANTIATE_TEST_SUITE_P(
    Todos, FormatoDeLayout,
    testing::Values(
        Formato{"EmGrupos",
                layoutEmGrupos(),
                {"posicao_fundo_header", "posicao_fundo_titulo", "posicao_fundo_despesas",
                 "posicao_carteira_header", "posicao_carteira_titulo"},
                "posicao_fundo_header",
                "fundo",
                "kCONST_fundo"},
        Formato{"Direto",
                layoutDireto(),
                {"passivo_header", "passivo_cotista", "passivo_despesas"},
                "passivo_header",
                "passivo",
                ""},
        Formato{"SemGrupo", layoutSemGrupo(), {"lista_registro"}, "lista_registro", "lista", ""},
        Formato{"UmGrupoSo", // no group name: the tree is hidden and has no node to select
                layoutOf({.tag = "unico", .inside = grupo("fundo", "Fundos", mestre())}),
                {"unico_fundo_header"},
                "unico_fundo_header",
                "fundo",
                ""},
        Formato{
            "SecaoComFilha",
            layoutOf({.tag = "ordens",
                      .inside = mestre() +
                                SecaoXml{.tag = "ordem", .inside = campo("codigo") + detalhe("item")}.xml(),
                      .nomeGrupo = "Fundo",
                      .tagGrupo = "fundo"}),
            {"ordens_header", "ordens_ordem", "ordens_ordem_item"},
            "ordens_header",
            "ordens",
            ""},
        // A section without fields behind a sibling with fields hangs below that sibling's key.
        Formato{"GrupoDepoisDeIrma",
                layoutOf({.tag = "l", .inside = mestre("m") + grupo("fora", "Fora", detalhe("dentro"))}),
                {"l_m", "l_m_fora_dentro"},
                "l_m",
                "l",
                ""},
        // One that is the first below its owner starts at the owner's tag, without the layout's.
        Formato{"GrupoDentroDeGrupo",
                layoutOf({.tag = "l", .inside = grupo("a", "A", grupo("b", "B", detalhe("c")) + mestre())}),
                {"a_b_c", "l_a_header"},
                "l_a_header",
                "a",
                ""}),
    [](const auto& um) { return um.param.nome; });

// The owner's tag counts as present in a path that holds it as a piece of another tag.
TEST(Documento, FailsToStartWhereTheFirstGridHasAnotherKey) {
    Documento documento;
    EXPECT_EQ(errorOf([&] {
                  documento.abrir(layoutOf({.tag = "fundos", .inside = grupo("fundo", "Fundos", mestre())}));
              }),
              errc::invalidCall);
    EXPECT_THAT(chavesDasGrades(documento), ElementsAre("fundos_header"));
}

TEST(Documento, FailsToStartWithoutAnyMaster) {
    Documento documento;
    EXPECT_EQ(errorOf([&] { documento.abrir(layoutOf({.tag = "l", .inside = detalhe("s")})); }),
              errc::objectNotSet);
    EXPECT_EQ(errorOf([&] { documento.abrir(layoutOf({.tag = "l"})); }), errc::subscriptOutOfRange);
}

TEST(Documento, TwoSectionsOfOnePathFail) {
    const std::string gemeas =
        mestre("a") + SecaoXml{.tag = "s", .inside = campo("x") + detalhe("t")}.xml() + detalhe("s_t");
    EXPECT_EQ(errorOf([&] {
                  Documento outro;
                  outro.abrir(layoutOf({.tag = "l", .inside = gemeas}));
              }),
              errc::keyTaken);
}

TEST(Documento, EveryShippedLayoutStartsOnItsFirstHeader) {
    for (const auto& layout : shippedCatalog().getBoletos()) {
        const Documento documento = documentoDe(layout);
        const std::string& tag = layout->getTag();
        const bool emGrupos = layout->getSecaoMestre() == nullptr;
        EXPECT_EQ(documento.getGrid().chave, emGrupos ? tag + "_fundo_header" : tag + "_header");
        EXPECT_TRUE(documento.arvoreVisivel()) << tag;
        std::size_t comCampos = 0;
        walkSections(*layout, tag, [&](const SectionOwner&, const clsSecao& secao, const std::string& path) {
            comCampos += secao.getCampos().empty() ? 0U : 1U;
            if (!secao.getCampos().empty()) {
                EXPECT_EQ(documento.grade(text::replaceAll(path, ".", "_")).secao, &secao) << path;
            }
        });
        EXPECT_EQ(documento.grids().Count(), comCampos) << tag;
        EXPECT_EQ(documento.addRSCollection().Count(), comCampos) << tag;
    }
}

TEST(Documento, GroupsStandInTheTreeInTheOrderOfTheLayout) {
    const Documento documento = documentoDe(layoutEmGrupos());
    ASSERT_TRUE(documento.arvoreVisivel());
    const NoArvore& raiz = *documento.arvore.raiz();
    EXPECT_EQ(raiz.chave, "kCONST_RAIZ");
    EXPECT_EQ(raiz.texto, "Boleto");
    EXPECT_EQ(raiz.imagem, "imgBoleto");
    EXPECT_THAT(textosAbaixo(raiz), ElementsAre("Fundos", "Outras carteiras"));
    EXPECT_EQ(documento.arvore.find("kCONST_fundo")->Index, 2U);
    EXPECT_EQ(documento.arvore.find("kCONST_carteira")->Index, 3U);
    EXPECT_EQ(documento.arvore.find("kCONST_carteira")->imagem, "imgBoleto");
}

TEST(Documento, WithoutAGroupThereIsNoTree) {
    const Documento documento = documentoDe(layoutSemGrupo());
    EXPECT_FALSE(documento.arvoreVisivel());
    EXPECT_TRUE(documento.arvore.empty());
}

TEST(Documento, SectionsStraightBelowTheLayoutMakeNoGroups) {
    const Documento documento = documentoDe(layoutDireto());
    EXPECT_TRUE(documento.arvoreVisivel());
    EXPECT_EQ(documento.arvore.Count(), 1U);
}

TEST(Documento, RecordSetsHaveAColumnForEachFieldAndTheTwoThatTieRows) {
    const Documento documento = documentoDe(layoutEmGrupos());
    std::vector<std::string> nomes;
    for (const Column& coluna : documento.grade("posicao_fundo_titulo").dados->columns()) {
        nomes.push_back(coluna.name);
    }
    EXPECT_THAT(nomes, ElementsAre("codigo", "rowID", "rowMaster"));
}

TEST(Documento, CaptionsDoubleTheirAmpersands) {
    const auto layout =
        layoutOf({.tag = "l",
                  .inside = mestre() + SecaoXml{.tag = "pd", .inside = campo("x"), .nome = "P&amp;D"}.xml(),
                  .nome = "Fundos &amp; Cia",
                  .versao = "1.0"});
    const Documento documento = documentoDe(layout);
    EXPECT_EQ(documento.grade("l_header").caption, "Fundos && Cia (1.0)");
    EXPECT_EQ(documento.grade("l_pd").caption, "P&&D");
}

TEST(Documento, CreatingTheGridsAgainKeepsThemAndGivesThemNewRecordSets) {
    Documento documento = documentoDe(layoutDireto());
    GradeSecao& grade = documento.grade("passivo_cotista");
    const auto antes = grade.dados;
    antes->AddNew();
    grade.caption = "outro";
    documento.createGrid();
    EXPECT_EQ(&documento.grade("passivo_cotista"), &grade);
    EXPECT_NE(grade.dados, antes);
    EXPECT_EQ(grade.dados->RecordCount(), 0U);
    EXPECT_EQ(grade.caption, "Seção cotista");
}

TEST(Documento, CreatingTheGridsAgainEmptiesTheTreeAndTheNodesKey) {
    Documento documento = documentoDe(layoutDireto());
    documento.arvore.add(chaves::raiz, "g_0001,passivo_header", "1", "imgFundo");
    documento.selecionaNo("g_0001,passivo_header");
    EXPECT_EQ(documento.estado.chaveNo, "g_0001,passivo_header");
    documento.createGrid();
    EXPECT_EQ(documento.estado.chaveNo, "");
    EXPECT_EQ(documento.arvore.Count(), 1U);
}

TEST(Documento, TheFirstGridFollowsTheSectionWorkedOn) {
    Documento documento = documentoDe(layoutEmGrupos());
    documento.estado.noAtual = &documento.secaoPorChave(chaves::raiz);
    EXPECT_EQ(documento.chavePrimeiraGrade(), "posicao_fundo_header");
    documento.estado.noAtual = documento.layout().getSecoes().Item("carteira").get();
    EXPECT_EQ(documento.chavePrimeiraGrade(), "posicao_carteira_header");
    documento.createGrid();
    EXPECT_EQ(documento.getGrid().chave, "posicao_carteira_header");
}

TEST(Documento, StartingOverForgetsTheRowsAndKeepsTheFirstLayout) {
    Documento documento = documentoDe(layoutDireto());
    documento.getGrid().dados->AddNew();
    documento.estado.linhasApagadas = {"1"};
    documento.estado.salvo = false;
    const clsBoleto* primeiro = &documento.layout();
    documento.abrir(documento.boleto());
    EXPECT_EQ(documento.getGrid().dados->RecordCount(), 0U);
    EXPECT_TRUE(documento.estado.salvo);
    EXPECT_TRUE(documento.estado.linhasApagadas.empty());
    EXPECT_EQ(&documento.layout(), primeiro);
}

TEST(Documento, CollectsTheRecordSetsOfItsGrids) {
    const Documento documento = documentoDe(layoutEmGrupos());
    const RecordSets recordSets = documento.addRSCollection();
    EXPECT_EQ(recordSets.Count(), 5U);
    EXPECT_EQ(recordSets.Item("posicao_carteira_titulo"), documento.grade("posicao_carteira_titulo").dados);
}

// Grids and collected record sets differ in their keys where a wrapper stands behind a section with fields.
TEST(Documento, CannotCollectWhatHangsBelowASiblingsKey) {
    const Documento documento =
        documentoDe(layoutOf({.tag = "l", .inside = mestre("m") + grupo("fora", "Fora", detalhe("dentro"))}));
    EXPECT_EQ(errorOf([&] { documento.addRSCollection(); }), errc::invalidCall);
}

TEST(Documento, AGridStandsForTheSectionOfTheSelectedNode) {
    Documento documento = documentoDe(layoutEmGrupos());
    const GradeSecao& header = documento.grade("posicao_fundo_header");
    EXPECT_EQ(&documento.secaoDaGrade(header), header.secao);
    documento.estado.noAtual = header.secao;
    EXPECT_EQ(&documento.secaoDaGrade(header), header.secao);
    documento.estado.chaveNo = "skCONST_fundo,0001,titulo,posicao_fundo_titulo";
    EXPECT_EQ(&documento.secaoDaGrade(header), documento.grade("posicao_fundo_titulo").secao);
}

TEST(Documento, AGridStandsForNoSectionWhileAFundIsSelected) {
    Documento documento = documentoDe(layoutEmGrupos());
    documento.estado.chaveNo = "gkCONST_fundo_0001,posicao_fundo_header";
    EXPECT_EQ(errorOf([&] { documento.secaoDaGrade(documento.getGrid()); }), errc::subscriptOutOfRange);
    documento.estado.chaveNo = "kCONST_fundo";
    documento.estado.noAtual = documento.grade("posicao_fundo_titulo").secao;
    EXPECT_EQ(errorOf([&] { documento.secaoDaGrade(documento.getGrid()); }), errc::invalidCall);
}

TEST(Documento, HasNoCurrentGridBeforeItStarts) {
    const Documento documento;
    EXPECT_EQ(errorOf([&] { documento.getGrid(); }), errc::objectNotSet);
}

} // namespace
} // namespace tv::test
