// Workbooks back to documents.

#include "ImportacaoDeTeste.h"

#include "platform/text.h"

#include <gmock/gmock.h>

#include <optional>

namespace tv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

// --- the form of the document

TEST_F(Importa, WritesAGroupedLayoutLineByLine) {
    NovaPlanilha(pasta / "x_fundo.xls")
        .folha("header", {"cnpj"}, {{"1"}})
        .folha("t", {"A", "b"}, {{" 2 ", "3"}, {std::nullopt, "4"}})
        .fecha();
    EXPECT_EQ(importa(grupo, pasta / "x_fundo.xls"),
              comGrupo(grupo, "<header>\r\n<cnpj>1</cnpj>\r\n</header>\r\n"
                              "<t>\r\n<A>2</A>\r\n<b>3</b>\r\n</t>\r\n"
                              "<t>\r\n<A></A>\r\n<b>4</b>\r\n</t>\r\n"));
    EXPECT_THAT(falhas(), IsEmpty()); // no line on the normal way
    EXPECT_EQ(ultima->relato().tabelas, 2U);
}

TEST_F(Importa, WritesAFlatLayoutWithoutAWrapper) {
    planilhaCom("fundo", {"a"}, {{"1"}, {"2"}});
    EXPECT_EQ(importa("plano", pasta / "x_fundo.xls"),
              declaracao + "<plano>\r\n<fundo>\r\n<a>1</a>\r\n</fundo>\r\n<fundo>\r\n<a>2</a>\r\n</fundo>\r\n"
                           "</plano>\r\n");
}

TEST_F(Importa, SectionsComeInTheCatalogsOrder) {
    NovaPlanilha(pasta / "x_fundo.xls")
        .folha("u", {"a"}, {{"1"}})
        .folha("zzz", {"a"}, {{"9"}})
        .folha("T", {"a"}, {{"2"}})
        .fecha();
    EXPECT_EQ(importa(grupo, pasta / "x_fundo.xls"),
              comGrupo(grupo, "<t>\r\n<a>2</a>\r\n</t>\r\n<u>\r\n<a>1</a>\r\n</u>\r\n"));
}

TEST_F(Importa, ASheetThatIsAbsentGivesNoErrorAndNoElement) {
    planilhaCom("u", {"a"}, {{"1"}});
    const auto xml = importa(grupo, pasta / "x_fundo.xls");
    EXPECT_EQ(xml, comGrupo(grupo, "<u>\r\n<a>1</a>\r\n</u>\r\n"));
    EXPECT_THAT(falhas(), IsEmpty());
    EXPECT_FALSE(ultima->relato().falha);
}

TEST_F(Importa, ASheetWithoutRowsGivesNoElement) {
    planilhaCom("t", {"a"}, {});
    EXPECT_EQ(importa(grupo, pasta / "x_fundo.xls"), comGrupo(grupo, ""));
    EXPECT_EQ(ultima->relato().tabelas, 1U);
    EXPECT_THAT(tela.chamadas, ElementsAre("abre", "fecha"));
}

TEST_F(Importa, MarkupOfACellGoesIntoTheFileAsItStands) {
    planilhaCom("t", {"a"}, {{"1 & 2 <b>"}});
    const auto xml = importa(grupo, pasta / "x_fundo.xls");
    EXPECT_EQ(xml, comGrupo(grupo, "<t>\r\n<a>1 & 2 <b></a>\r\n</t>\r\n"));
    XmlDocument documento;
    EXPECT_FALSE(documento.load(pasta / "x_fundo.xml"));
}

TEST_F(Importa, WritesOneByteACharacterAndAQuestionMarkForOthers) {
    planilhaCom("t", {"a"}, {{"ação – 5 €"}});
    EXPECT_EQ(importa(grupo, pasta / "x_fundo.xls"),
              comGrupo(grupo, "<t>\r\n<a>a\xE7\xE3o ? 5 ?</a>\r\n</t>\r\n"));
}

// --- the root word

struct Raiz {
    std::string pasta;
    std::string nome;
    std::string palavra;
};

void PrintTo(const Raiz& caso, std::ostream* saida) {
    *saida << caso.pasta << '/' << caso.nome;
}

class PalavraRaiz : public Importa, public testing::WithParamInterface<Raiz> {};

TEST_P(PalavraRaiz, IsTakenFromTheWholePath) {
    const Raiz& caso = GetParam();
    std::filesystem::create_directory(pasta / caso.pasta);
    const auto planilha = planilhaCom("t", {"a"}, {{"1"}}, caso.pasta + "/" + caso.nome);
    const auto xml = importa(grupo, planilha);
    ASSERT_TRUE(xml);
    EXPECT_THAT(*xml, StartsWith(declaracao + "<" + grupo + ">\r\n" + caso.palavra + "\r\n"));
}

INSTANTIATE_TEST_SUITE_P(Todas, PalavraRaiz,
                         testing::Values(Raiz{"p", "doc__fundo_000.xls", "<fundo>"},
                                         Raiz{"p", "doc__carteira_000.xls", "<carteira>"},
                                         Raiz{"p", "carteira_fundo.xls", "<fundo>"},
                                         Raiz{"fundos", "doc__carteira_000.xls", "<fundo>"},
                                         Raiz{"carteiras", "doc.xls", "<carteira>"}, Raiz{"p", "doc.xls", ""},
                                         Raiz{"p", "FUNDO.xls", ""}));

TEST_F(Importa, ANameWithNeitherWordSelectsNothingOnAGroupedLayout) {
    planilhaCom("t", {"a"}, {{"1"}}, "x.xls");
    EXPECT_EQ(importa(grupo, pasta / "x.xls"),
              declaracao + "<" + grupo + ">\r\n\r\n\r\n\r\n</" + grupo + ">\r\n");
    EXPECT_EQ(ultima->relato().tabelas, 0U);
    EXPECT_THAT(falhas(), IsEmpty());
}

// --- which sheets

struct Escolha {
    std::string tag;
    std::string nome; ///< Of the workbook.
    std::vector<std::string> folhas;
};

void PrintTo(const Escolha& caso, std::ostream* saida) {
    *saida << caso.tag << ' ' << caso.nome;
}

class Folhas : public Importa, public testing::WithParamInterface<Escolha> {};

TEST_P(Folhas, AreThoseThatTheCatalogNames) {
    const Escolha& caso = GetParam();
    NovaPlanilha planilha(pasta / caso.nome);
    for (const char* nome : {"header", "t", "u", "fundo", "carteira"}) {
        planilha.folha(nome, {"a"}, {{"1"}});
    }
    planilha.fecha();
    const auto xml = importa(caso.tag, pasta / caso.nome);
    ASSERT_TRUE(xml);
    std::string registros;
    for (const std::string& folha : caso.folhas) {
        registros += "<" + folha + ">\r\n<a>1</a>\r\n</" + folha + ">\r\n";
    }
    const std::string raiz = text::contains(caso.nome, "fundo")      ? "<fundo>"
                             : text::contains(caso.nome, "carteira") ? "<carteira>"
                                                                     : "";
    const bool agrupado = clsPlanilhaExcel::isAgrupado(caso.tag);
    EXPECT_EQ(*xml, declaracao + "<" + caso.tag + ">\r\n" + (agrupado ? raiz + "\r\n" : "") + registros +
                        (agrupado ? "\r\n" + text::replaceAll(raiz, "<", "</") + "\r\n" : "") + "</" +
                        caso.tag + ">\r\n");
}

const std::vector<std::string> todas{"header", "t", "u"};

INSTANTIATE_TEST_SUITE_P(
    Todas, Folhas,
    testing::Values(
        Escolha{"ArquivoPosicao_2_01", "x_fundo.xls", todas}, Escolha{"ArquivoPosicao_2_01", "x.xls", todas},
        Escolha{"arquivoposicao_2_01", "x_fundo.xls", todas},
        Escolha{"posicao_passivo_analitico_v100", "x_fundo.xls", todas},
        Escolha{"arquivoposicao_3_00", "x_fundo.xls", todas},
        Escolha{"arquivoposicao_3_00", "x_carteira.xls", todas},
        Escolha{"movimento_1_00", "x_fundo.xls", todas}, Escolha{"movimento_2_00", "x_fundo.xls", todas},
        Escolha{"arquivoposicao_4_01", "x_carteira.xls", todas}, Escolha{"movimento_1_00", "x.xls", {}},
        Escolha{"arquivoposicao_4_00", "x_fundo.xls", {"fundo"}},
        Escolha{"arquivoposicao_4_00", "x_carteira.xls", {"carteira"}},
        Escolha{"plano", "x_fundo.xls", {"fundo"}}, Escolha{"plano", "x.xls", {}}, // no root, no sections
        Escolha{"MOVIMENTO_1_00", "x_fundo.xls", {}})); // not in the catalog as written

TEST_F(Importa, AFlatLayoutWithARootOpensItsSheetEvenIfTheCatalogLacksTheLayout) {
    planilhaCom("fundo", {"a"}, {{"1"}});
    EXPECT_EQ(importa("desconhecido", pasta / "x_fundo.xls"),
              declaracao + "<desconhecido>\r\n<fundo>\r\n<a>1</a>\r\n</fundo>\r\n</desconhecido>\r\n");
}

// --- where the document goes, and what goes wrong

TEST_F(Importa, ADocumentThatIsThereGetsTheTextAppended) {
    planilhaCom("t", {"a"}, {{"1"}});
    pasta.file("x_fundo.xml", "antes\r\n");
    EXPECT_EQ(importa(grupo, pasta / "x_fundo.xls"), "antes\r\n" + declaracao + "<" + grupo +
                                                         ">\r\n<fundo>\r\n\r\n" +
                                                         comGrupo(grupo, "<t>\r\n<a>1</a>\r\n</t>\r\n"));
}

TEST_F(Importa, ASecondCallOnTheSameObjectAppends) {
    planilhaCom("t", {"a"}, {{"1"}});
    const auto primeira = importa(grupo, pasta / "x_fundo.xls");
    ASSERT_TRUE(primeira);
    files::remove(pasta / "x_fundo.xml");
    ultima->ImportarPlanilha((pasta / "x_fundo.xls").string());
    const std::string semFim = primeira->substr(0, primeira->size() - 2);
    EXPECT_EQ(files::readAll(pasta / "x_fundo.xml"),
              semFim + "<t>\r\n<a>1</a>\r\n</t>\r\n\r\n</fundo>\r\n</" + grupo + ">\r\n");
}

TEST_F(Importa, AWorkbookInCapitalsIsItsOwnDocument) {
    const auto planilha = planilhaCom("t", {"a"}, {{"1"}}, "x_fundo.XLS");
    EXPECT_EQ(clsPlanilhaExcel::caminhoXml(planilha.string()), planilha.string());
}

class NaoAbre : public Importa, public testing::WithParamInterface<std::string> {};

TEST_P(NaoAbre, LeavesNoDocumentAndALineInTheLog) {
    if (GetParam() != "nada") {
        pasta.file("x_fundo.xls", GetParam());
    }
    EXPECT_EQ(importa(grupo, pasta / "x_fundo.xls"), std::nullopt);
    ASSERT_THAT(falhas(), SizeIs(1));
    EXPECT_THAT(falhas()[0], StartsWith("clsPlanilhaExcel.ImportarPlanilha -> ["));
    ASSERT_TRUE(ultima->relato().falha);
    EXPECT_THAT(tela.chamadas, IsEmpty());
    EXPECT_EQ(pasta.count(), GetParam() == "nada" ? 0U : 1U); // and no new workbook
}

INSTANTIATE_TEST_SUITE_P(Todas, NaoAbre,
                         testing::Values("nada", "", "texto", "<xml/>",
                                         std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8),
                                         std::string(4096, '\0')));

TEST_F(Importa, AnEmptyPathFailsLikeAnyOther) {
    EXPECT_EQ(importa(grupo, ""), std::nullopt);
    EXPECT_THAT(falhas(), SizeIs(1));
}

TEST_F(Importa, WithoutACatalogNoSheetIsRead) {
    files::remove(aplicacao_.path() / "TORVA_TramadorValidador.xml");
    planilhaCom("t", {"a"}, {{"1"}});
    EXPECT_EQ(importa(grupo, pasta / "x_fundo.xls"), comGrupo(grupo, ""));
    EXPECT_THAT(falhas(),
                ElementsAre("clsPlanilhaExcel.abrirXML -> [Erro na abertura do arquivo![-2147221048]]"));
    EXPECT_TRUE(ultima->relato().falha);
}

TEST_F(Importa, AFailureBehindTheFirstWritingLeavesAnEmptyDocument) {
    planilhaCom("t", {"a"}, {{"1"}});
    EXPECT_EQ(importa("d'agua", pasta / "x_fundo.xls"), ""); // a query that is none
    EXPECT_THAT(falhas(), SizeIs(1));
    EXPECT_THAT(falhas()[0], StartsWith("clsPlanilhaExcel.ImportarPlanilha -> ["));
}

TEST_F(Importa, AFolderThatEndsInTheExtensionMovesTheDocumentAway) {
    std::filesystem::create_directory(pasta / "a.xls");
    const auto planilha = planilhaCom("t", {"a"}, {{"1"}}, "a.xls/x_fundo.xls");
    EXPECT_EQ(importa(grupo, planilha), std::nullopt); // there is no folder "a.xml"
    EXPECT_THAT(falhas(), SizeIs(1));
    std::filesystem::create_directory(pasta / "a.xml");
    EXPECT_TRUE(importa(grupo, planilha));
    EXPECT_TRUE(files::exists(pasta / "a.xml/x_fundo.xml"));
}

TEST_F(Importa, TheWorkbookItselfIsNotTouched) {
    const auto planilha = planilhaCom("t", {"a"}, {{"1"}});
    const std::string antes = files::readAll(planilha);
    importa(grupo, planilha);
    EXPECT_EQ(files::readAll(planilha), antes);
}

// --- progress

TEST_F(Importa, ShowsItsStagesInOrder) {
    NovaPlanilha(pasta / "x_fundo.xls")
        .folha("header", {"a"}, {{"1"}, {"2"}})
        .folha("t", {"a"}, {{"1"}, {"2"}})
        .fecha();
    importa(grupo, pasta / "x_fundo.xls");
    const std::string etapa = "Exportação de planilha | processando informações da tabela:";
    EXPECT_THAT(tela.chamadas,
                ElementsAre("abre", "max 2", etapa + "header | 0 | 0", "+1", "+1", "fecha", //
                            "abre", "max 2", etapa + "t | 0 | 0", "+1", etapa + "t | 0 | 0", "+1", "fecha"));
    EXPECT_FALSE(tela.aberta());
}

/// A screen whose progress window fails at its first stage.
class TelaQueFalha final : public TelaPlanilha {
public:
    int fechadas = 0;
    std::unique_ptr<ProgressoPlanilha> criaProgresso() override { return std::make_unique<Progresso>(*this); }
    void informa(const std::string& /*texto*/, const std::string& /*titulo*/) override {}

private:
    class Progresso final : public ProgressoPlanilha {
    public:
        explicit Progresso(TelaQueFalha& tela)
            : tela_(tela) {}
        void setMsg(std::string_view /*titulo*/, std::string_view /*descricao*/, int /*valor*/,
                    int /*operacao*/) override {
            throw Error(errc::invalidCall, "tela", "sem tela");
        }
        void setMax(std::size_t /*maximo*/) override {}
        void incProgress() override {}
        void destroy() override { ++tela_.fechadas; }

    private:
        TelaQueFalha& tela_;
    };
};

TEST_F(Importa, ASheetThatFailsIsLoggedAndItsProgressWindowStaysOpen) {
    planilhaCom("t", {"a"}, {{"1"}});
    TelaQueFalha falha;
    clsPlanilhaExcel planilha(&falha);
    planilha.tag = grupo;
    planilha.ImportarPlanilha((pasta / "x_fundo.xls").string());
    EXPECT_THAT(falhas(), ElementsAre("clsPlanilhaExcel.importarTabela -> [sem tela[5]]"));
    EXPECT_EQ(falha.fechadas, 0);
    EXPECT_THAT(files::readAll(pasta / "x_fundo.xml"), HasSubstr("</fundo>"));
}

} // namespace
} // namespace tv::test
