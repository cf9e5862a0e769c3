#include "composer/LeitorBoleto.h"

#include "../platform/ScratchFolder.h"
#include "../platform/Throws.h"
#include "Amostras.h"
#include "Layouts.h"
#include "composer/RegrasLinha.h"
#include "composer/fundos.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv::test {
namespace {

using testing::ElementsAre;

class Leitor : public testing::Test {
protected:
    void abre(const std::shared_ptr<const clsBoleto>& layout, const std::string& xml) {
        documento = Documento();
        documento.abrir(layout);
        reabre(xml);
    }
    void reabre(const std::string& xml) {
        XmlDocument dom;
        ASSERT_TRUE(dom.loadXML(xml)) << xml;
        LeitorBoleto(documento).abre(dom);
    }
    Value celula(const std::string& grade, const std::string& coluna) const {
        const auto dados = documento.grade(grade).dados->Clone();
        return dados->get(coluna);
    }
    std::size_t linhas(const std::string& grade) const {
        return documento.grade(grade).dados->Clone()->RecordCount();
    }

    Documento documento;
};

constexpr const char* cnpj = "94000001000180";

std::string header(const std::string& valor = cnpj) {
    return "<header><cnpj>" + valor + "</cnpj></header>";
}

struct ValorLido {
    std::string tipo;
    std::string texto;
    Value esperado;
};

TEST_F(Leitor, StoresAValueByItsColumnsType) {
    const std::vector<ValorLido> rows = {
        {"INTEIRO", "42", 42},
        {"INTEIRO", " 42 ", 42},
        {"INTEIRO", "2.5", 2},
        {"INTEIRO", "-32768", -32768},
        {"INTEIRO", "x", Null{}},
        {"INTEIRO", "", Null{}},
        {"DECIMAL", "1234.50", 1234.5},
        {"DECIMAL", "-0.5", -0.5},
        {"DECIMAL", "1,5", Null{}},
        {"DECIMAL", "abc", Null{}},
        {"BOOLEAN", "S", true},
        {"BOOLEAN", "N", false},
        {"BOOLEAN", "s", Null{}},
        {"BOOLEAN", "n", Null{}},
        {"BOOLEAN", " S", Null{}},
        {"BOOLEAN", "X", Null{}},
        {"TEXTO", "fora da tabela e maior que o campo", "fora da tabela e maior que o campo"},
        {"TEXTO", "  x ", "  x "},
        {"TEXTO", "A &amp; B", "A & B"},
        {"DATA", "20240628", clock::at(2024, 6, 28)},
        {"DATA", "20240229", clock::at(2024, 2, 29)},
        {"DATA", "", Null{}},
    };
    for (const ValorLido& row : rows) {
        const auto layout = layoutOf(
            {.tag = "l",
             .inside = mestre("header", campoChave() + CampoXml{.tag = "v", .tipo = row.tipo}.xml())});
        abre(layout, "<l><header><v>" + row.texto + "</v></header></l>");
        EXPECT_EQ(celula("l_header", "v"), row.esperado) << row.tipo << ": " << row.texto;
    }
}

TEST_F(Leitor, ADateThatIsNoneEndsTheLoad) {
    const auto layout = layoutOf(
        {.tag = "l", .inside = mestre("header", campoChave() + CampoXml{.tag = "v", .tipo = "DATA"}.xml())});
    for (const std::string valor : {"20240230", "20241301", "00000000", "abc", "2024"}) {
        EXPECT_EQ(
            errorOf([&] { abre(layout, "<l><header/><header><v>" + valor + "</v></header><header/></l>"); }),
            errc::typeMismatch)
            << valor;
        EXPECT_EQ(linhas("l_header"), 2U); // what was read stays
        EXPECT_FALSE(documento.estado.carregando);
    }
}

TEST_F(Leitor, AWholeNumberBeyondSixteenBitsEndsTheLoad) {
    const auto layout =
        layoutOf({.tag = "l",
                  .inside = mestre("header", campoChave() + CampoXml{.tag = "v", .tipo = "INTEIRO"}.xml())});
    EXPECT_EQ(errorOf([&] { abre(layout, "<l><header><v>32768</v></header></l>"); }), errc::overflow);
}

TEST_F(Leitor, ZerosInTheDueDateOfADebentureReadAsEmpty) {
    const std::string data = CampoXml{.tag = "dtvencimento", .tipo = "DATA"}.xml();
    const auto layout = layoutOf({.tag = "l",
                                  .inside = mestre() + SecaoXml{.tag = "debenture", .inside = data}.xml(),
                                  .nomeGrupo = "Fundo",
                                  .tagGrupo = "fundo"});
    abre(layout, "<l><fundo>" + header() +
                     "<debenture><dtvencimento>00000000</dtvencimento></debenture></fundo></l>");
    EXPECT_EQ(celula("l_debenture", "dtvencimento"), Value());
}

TEST_F(Leitor, DetailsHangOnTheMasterReadLast) {
    abre(layoutDireto(), "<passivo><fundo>" + header() + "<cotista/><cotista/></fundo><fundo>" +
                             header("94000031000196") + "<cotista/></fundo></passivo>");
    EXPECT_EQ(linhas("passivo_header"), 2U);
    RecordSet& cotista = *documento.grade("passivo_cotista").dados;
    for (const auto& [rowMaster, quantos] :
         std::vector<std::pair<std::string, std::size_t>>{{"1", 2}, {"2", 1}}) {
        cotista.Filter("rowMaster = " + rowMaster);
        EXPECT_EQ(cotista.RecordCount(), quantos);
        EXPECT_TRUE(isNull(cotista.get("rowID")));
    }
    EXPECT_EQ(celula("passivo_header", "rowMaster"), Value());
    EXPECT_EQ(documento.estado.ultimoRowID, 2);
}

TEST_F(Leitor, DetailsInFrontOfAllMastersHangOnNone) {
    abre(layoutDireto(), "<passivo><fundo><cotista/>" + header() + "</fundo></passivo>");
    EXPECT_EQ(celula("passivo_cotista", "rowMaster"), Value(0));
}

TEST_F(Leitor, EachTopSectionCountsItsMastersAnewAndTheHighestNumberStays) {
    const std::string carteira = "<carteira><header><codcart>00000000000000</codcart></header></carteira>";
    abre(layoutEmGrupos(),
         "<posicao><fundo>" + header() + "</fundo><fundo>" + header() + "</fundo>" + carteira + "</posicao>");
    EXPECT_EQ(celula("posicao_fundo_header", "rowID"), Value(1));
    EXPECT_EQ(celula("posicao_carteira_header", "rowID"), Value(1));
    EXPECT_EQ(documento.estado.ultimoRowID, 2);
    EXPECT_EQ(documento.arvore.find("kCONST_fundo")->filhos.size(), 2U);
    EXPECT_EQ(documento.arvore.find("kCONST_carteira")->filhos.size(), 1U);
    EXPECT_EQ(documento.getGrid().chave, "posicao_fundo_header");
    EXPECT_EQ(documento.estado.noAtual->getTag(), "fundo");
}

TEST_F(Leitor, AFundAddedAfterwardsTakesNoDetailsOfAnother) {
    abre(layoutEmGrupos(), "<posicao><fundo>" + header() + "</fundo><fundo>" + header() +
                               "<titulo/></fundo><carteira><header><codcart>00000000000000</codcart></"
                               "header></carteira></posicao>");
    RegrasLinha regras(documento);
    GradeSecao& grade = documento.grade("posicao_fundo_header");
    const auto nova = regras.addRow(grade, std::nullopt);
    ASSERT_TRUE(nova.linha);
    EXPECT_EQ(grade.dados->get("rowID"), Value(3));
}

TEST_F(Leitor, AFundAddedByWayOfTheRootIsShownLikeTheOthers) {
    abre(layoutDireto(), "<passivo><fundo>" + header() + "</fundo></passivo>");
    documento.arvore.seleciona("kCONST_RAIZ");
    GradeSecao& grade = *fundos::treeFundos_Click(documento).grade;
    RegrasLinha regras(documento);
    const auto nova = regras.addRow(grade, std::nullopt);
    ASSERT_TRUE(nova.linha);
    grade.dados->set("cnpj", std::string("94000031000196"));
    grade.dados->Update();
    regras.grid_AfterRowUpdate(grade, *nova.linha);
    EXPECT_FALSE(documento.estado.salvo);
    EXPECT_THAT(textosAbaixo(*documento.arvore.raiz()),
                ElementsAre("94.000.001/0001-80", "94.000.031/0001-96"));
    documento.arvore.seleciona("gkCONST_RAIZ_0002,passivo_header");
    EXPECT_EQ(fundos::treeFundos_Click(documento).grade->dados->RecordCount(), 1U);
}

TEST_F(Leitor, AMasterWithAFieldAtFaultHasNoNode) {
    abre(layoutDireto(),
         "<passivo><fundo>" + header("1") + "<cotista/></fundo><fundo>" + header() + "</fundo></passivo>");
    EXPECT_EQ(linhas("passivo_header"), 2U);
    EXPECT_EQ(documento.arvore.fundo("passivo_header", 1), nullptr);
    ASSERT_NE(documento.arvore.fundo("passivo_header", 2), nullptr);
    EXPECT_EQ(documento.arvore.fundo("passivo_header", 2)->texto, "94.000.001/0001-80");
}

TEST_F(Leitor, AnElementWithoutASectionEndsTheLoad) {
    EXPECT_EQ(
        errorOf([&] { abre(layoutDireto(), "<passivo><fundo>" + header() + "<outra/></fundo></passivo>"); }),
        errc::invalidCall);
    EXPECT_EQ(linhas("passivo_header"), 1U);
    EXPECT_EQ(documento.estado.ultimoRowID, 1);
}

TEST_F(Leitor, CommentsAndInstructionsAreNoRows) {
    abre(layoutDireto(), "<passivo><!-- a --><fundo><!-- b --><?c d?>" + header() +
                             "<cotista><!-- e --><codigo>x</codigo></cotista></fundo></passivo>");
    EXPECT_EQ(linhas("passivo_header"), 1U);
    EXPECT_EQ(celula("passivo_cotista", "codigo"), Value("x"));
}

TEST_F(Leitor, OfARepeatedFieldTheFirstCounts) {
    abre(layoutDireto(),
         "<passivo><fundo>" + header() +
             "<cotista><outro>1</outro><codigo>a</codigo><codigo>b</codigo></cotista></fundo></passivo>");
    EXPECT_EQ(celula("passivo_cotista", "codigo"), Value("a"));
}

struct Caminho {
    std::string nome;
    BoletoXml layout;
    std::string xml;
    std::string grade;
    std::size_t linhas;
};

class CaminhoDaLeitura : public testing::TestWithParam<Caminho> {};

TEST_P(CaminhoDaLeitura, FollowsTheShapeOfTheLayout) {
    const Caminho& caso = GetParam();
    Documento documento;
    documento.abrir(layoutOf(caso.layout));
    XmlDocument dom;
    ASSERT_TRUE(dom.loadXML(caso.xml));
    LeitorBoleto(documento).abre(dom);
    EXPECT_EQ(documento.grade(caso.grade).dados->Clone()->RecordCount(), caso.linhas);
}

INSTANTIATE_TEST_SUITE_P(
    Todos, CaminhoDaLeitura,
    testing::Values(
        Caminho{
            "UmaSecaoPlana", {.tag = "l", .inside = mestre()}, "<l><header/><header/></l>", "l_header", 2},
        // Without a name to look for, every element below the root is a row of the one section.
        Caminho{"UmaSecaoPlanaQualquerNome", {.tag = "l", .inside = mestre()}, "<l><x/></l>", "l_header", 1},
        Caminho{"UmGrupo",
                {.tag = "l", .inside = grupo("f", "F", mestre())},
                "<l><f><header/></f><f><header/></f></l>",
                "l_f_header",
                2},
        Caminho{"Direto",
                {.tag = "l", .inside = mestre(), .nomeGrupo = "G", .tagGrupo = "g"},
                "<l><g><header/></g><h><header/></h></l>",
                "l_header",
                1},
        Caminho{"Grupos",
                {.tag = "l",
                 .inside = grupo("f", "F", mestre()) + grupo("c", "C", mestre()),
                 .nomeGrupo = "G",
                 .tagGrupo = "f"},
                "<l><f><header/></f><c><header/><header/></c></l>",
                "l_c_header",
                2}),
    [](const auto& um) { return um.param.nome; });

TEST_F(Leitor, ASecondFileGivesEachSectionANewRecordSetAfterAnyClick) {
    const std::string um = "<posicao><fundo>" + header() + "<titulo/></fundo></posicao>";
    abre(layoutEmGrupos(), um);
    const GradeSecao* grade = &documento.grade("posicao_fundo_titulo");
    const auto antes = grade->dados;
    for (const std::string chave :
         {"kCONST_RAIZ", "kCONST_carteira", "gkCONST_fundo_0001,posicao_fundo_header",
          "skCONST_fundo,0001,titulo,posicao_fundo_titulo"}) {
        documento.arvore.seleciona(chave);
        fundos::treeFundos_Click(documento);
        reabre(um);
        EXPECT_EQ(&documento.grade("posicao_fundo_titulo"), grade);
        EXPECT_NE(grade->dados, antes);
        EXPECT_EQ(linhas("posicao_fundo_titulo"), 1U) << chave;
        EXPECT_EQ(documento.arvore.find("kCONST_fundo")->filhos.size(), 1U);
        EXPECT_EQ(documento.getGrid().chave, "posicao_fundo_header");
    }
}

TEST_F(Leitor, TellsItsProgress) {
    documento.abrir(layoutEmGrupos());
    std::vector<std::size_t> maximos;
    int passos = 0;
    XmlDocument dom;
    ASSERT_TRUE(dom.loadXML("<posicao><fundo>" + header() +
                            "<titulo/></fundo><carteira><header/></carteira></posicao>"));
    LeitorBoleto(documento, {[&](std::size_t maximo) { maximos.push_back(maximo); }, [&] { ++passos; }})
        .abre(dom);
    EXPECT_THAT(maximos, ElementsAre(2U, 1U));
    EXPECT_EQ(passos, 3);
}

TEST_F(Leitor, AFileThatIsNoXmlLeavesTheDocumentAsItWas) {
    const ScratchFolder pasta;
    abre(layoutDireto(), "<passivo><fundo>" + header() + "</fundo></passivo>");
    documento.estado.salvo = false;
    LeitorBoleto leitor(documento);
    EXPECT_FALSE(leitor.abre(pasta.file("a.xml", "<passivo>")));
    EXPECT_FALSE(leitor.abre(pasta / "nenhum.xml"));
    EXPECT_EQ(linhas("passivo_header"), 1U);
    EXPECT_FALSE(documento.estado.salvo);
    EXPECT_EQ(documento.estado.arquivo, "");
}

TEST_F(Leitor, AFileIsTheDocumentsFileFromThenOn) {
    const ScratchFolder pasta;
    documento.abrir(layoutDireto());
    documento.estado.salvo = false;
    const auto arquivo = pasta.file("a.xml", "<passivo><fundo>" + header() + "</fundo></passivo>");
    EXPECT_TRUE(LeitorBoleto(documento).abre(arquivo));
    EXPECT_EQ(documento.estado.arquivo, arquivo.string());
    EXPECT_TRUE(documento.estado.salvo);
    EXPECT_TRUE(documento.estado.abrindo);
}

// The only fault is a code outside of its table: the text is kept.
TEST_F(Leitor, KeepsACodeOutsideOfItsTable) {
    const auto amostra = pastaDasAmostras() / "arquivoposicao_4_01" / "errado_tabela.xml";
    documento.abrir(layoutDaAmostra(amostra));
    ASSERT_TRUE(LeitorBoleto(documento).abre(amostra));
    EXPECT_GT(linhas("arquivoposicao_4_01_fundo_header"), 0U);
    std::vector<std::string> foraDaTabela;
    for (const auto& grade : documento.grids()) {
        const auto dados = grade->dados->Clone();
        for (; !dados->EOF_(); dados->MoveNext()) {
            for (const auto& campo : grade->secao->getCampos()) {
                const Value& valor = dados->get(campo->getTag());
                if (campo->hasTabela() && !isNull(valor) && !campo->isValido(defaultText(valor))) {
                    foraDaTabela.push_back(campo->getTag());
                }
            }
        }
    }
    EXPECT_FALSE(foraDaTabela.empty());
}

} // namespace
} // namespace tv::test
