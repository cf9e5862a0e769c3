// Workbooks back to documents.

#include "PlanilhasDeTeste.h"

#include "app/Aplicacao.h"
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

const std::string grupo = "movimento_1_00";               // funds below the root
const std::string comCompromisso = "arquivoposicao_3_00"; // the same, and its compromisso is made anew
const std::string declaracao = "<?xml version='1.0' encoding='ISO-8859-1' ?>\r\n";

std::string secao(const std::string& tag, const std::string& filhos = "") {
    return "<SECAO tag='" + tag + "'>" + filhos + "</SECAO>";
}

/// A catalog whose layouts have the sections header, t and u: below fundo and carteira, and below the layout.
std::string catalogo() {
    std::string boletos;
    for (const char* tag : {"arquivoposicao_3_00", "arquivoposicao_4_00", "arquivoposicao_4_01",
                            "movimento_1_00", "movimento_2_00", "plano"}) {
        const std::string secoes = secao("header") + secao("t") + secao(" u ");
        boletos += "<BOLETO tag='" + std::string(tag) + "'>" + secao("fundo", secoes) +
                   secao("carteira", secoes) + "</BOLETO>";
    }
    for (const char* tag : {"ArquivoPosicao_2_01", "arquivoposicao_2_01", "posicao_passivo_analitico_v100"}) {
        boletos += "<BOLETO tag='" + std::string(tag) + "'>" + secao("header") + secao("t") + secao(" u ") +
                   "</BOLETO>";
    }
    return "<TORVA><BOLETOS>" + boletos + "</BOLETOS></TORVA>";
}

using Linha = std::vector<std::optional<std::string>>;

/// A workbook is filled sheet by sheet; a cell without a value stays empty.
class NovaPlanilha {
public:
    explicit NovaPlanilha(const std::filesystem::path& caminho)
        : workbook_(caminho) {}
    NovaPlanilha& folha(const std::string& nome, const std::vector<std::string>& colunas,
                        const std::vector<Linha>& linhas) {
        std::string comando;
        for (const std::string& coluna : colunas) {
            comando += (comando.empty() ? "" : ", ") + coluna + " varchar(255)";
        }
        workbook_.execute("CREATE TABLE " + nome + "( " + comando + ")");
        for (const Linha& linha : linhas) {
            insere(nome, colunas, linha);
        }
        return *this;
    }
    void fecha() { workbook_.close(); }

private:
    void insere(const std::string& nome, const std::vector<std::string>& colunas, const Linha& linha) {
        std::string nomes;
        std::string valores;
        for (std::size_t i = 0; i < colunas.size(); ++i) {
            if (linha.at(i)) {
                nomes += (nomes.empty() ? "" : ", ") + colunas[i];
                valores += (valores.empty() ? "'" : ", '") + *linha[i] + "'";
            }
        }
        workbook_.execute("INSERT INTO " + nome + "( " + nomes + ") VALUES (" + valores + ") ");
    }

    Workbook workbook_;
};

class Importa : public PlanilhaTest {
protected:
    Importa() {
        aplicacao_.write("TORVA_TramadorValidador.xml", catalogo());
        aplicacao::setPasta(aplicacao_.path());
    }
    ~Importa() override { aplicacao::setPasta(files::executableFolder()); }
    Importa(const Importa&) = delete;
    Importa& operator=(const Importa&) = delete;

    /// A workbook "x_fundo.xls" with these rows of one sheet.
    std::filesystem::path planilhaCom(const std::string& folha, const std::vector<std::string>& colunas,
                                      const std::vector<Linha>& linhas,
                                      const std::string& nome = "x_fundo.xls") {
        NovaPlanilha(pasta / nome).folha(folha, colunas, linhas).fecha();
        return pasta / nome;
    }
    /// Imports and gives the document's bytes; nothing when there is none.
    std::optional<std::string> importa(const std::string& tag, const std::filesystem::path& planilha) {
        ultima = std::make_unique<clsPlanilhaExcel>(&tela);
        ultima->tag = tag;
        ultima->ImportarPlanilha(planilha.string());
        const std::filesystem::path xml = clsPlanilhaExcel::caminhoXml(planilha.string());
        return files::exists(xml) ? std::optional(files::readAll(xml)) : std::nullopt;
    }
    static std::string comGrupo(const std::string& tag, const std::string& registros,
                                const std::string& raiz = "fundo") {
        return declaracao + "<" + tag + ">\r\n<" + raiz + ">\r\n" + registros + "\r\n</" + raiz + ">\r\n</" +
               tag + ">\r\n";
    }

    TemporaryFolder aplicacao_;
};

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

// --- header and compromisso

TEST_F(Importa, AHeaderWithTwoRowsGivesTheFirst) {
    planilhaCom("header", {"a", "dtretorno", "classecomp"}, {{"1", "2", std::nullopt}, {"3", "4", "5"}});
    // Every field of it is written, those of a compromisso too.
    EXPECT_EQ(importa(grupo, pasta / "x_fundo.xls"),
              comGrupo(grupo,
                       "<header>\r\n<a>1</a>\r\n<dtretorno>2</dtretorno>\r\n<classecomp></classecomp>\r\n"
                       "</header>\r\n"));
}

TEST_F(Importa, AHeaderCanHaveACompromisso) {
    planilhaCom("header", {"dtretorno", "classecomp"}, {{"1", "2"}});
    EXPECT_EQ(importa(comCompromisso, pasta / "x_fundo.xls"),
              comGrupo(comCompromisso, "<header>\r\n<compromisso>\r\n<dtretorno>1</dtretorno>\r\n"
                                       "<classecomp>2</classecomp>\r\n</compromisso>\r\n</header>\r\n"));
}

const std::vector<std::string> colunasDoCompromisso{"a", "dtretorno", "taxa", "classecomp", "classeoperacao"};

TEST_F(Importa, CompromissoIsMadeAnewRoundItsColumns) {
    planilhaCom("t", colunasDoCompromisso,
                {{"1", "2", std::nullopt, "3", "4"},
                 {"5", "6", "7", std::nullopt, "8"},
                 {"9", std::nullopt, "10", "11", "12"}});
    EXPECT_EQ(
        importa(comCompromisso, pasta / "x_fundo.xls"),
        comGrupo(
            comCompromisso,
            "<t>\r\n<a>1</a>\r\n<compromisso>\r\n<dtretorno>2</dtretorno>\r\n<taxa></taxa>\r\n"
            "<classecomp>3</classecomp>\r\n</compromisso>\r\n<classeoperacao>4</classeoperacao>\r\n</t>\r\n"
            "<t>\r\n<a>5</a>\r\n<classeoperacao>8</classeoperacao>\r\n</t>\r\n"
            "<t>\r\n<a>9</a>\r\n<compromisso>\r\n<dtretorno></dtretorno>\r\n<taxa>10</taxa>\r\n"
            "<classecomp>11</classecomp>\r\n</compromisso>\r\n<classeoperacao>12</classeoperacao>\r\n</"
            "t>\r\n"));
}

TEST_F(Importa, OnOtherLayoutsTheCompromissoStandsFlatOrIsLeftOut) {
    planilhaCom("t", colunasDoCompromisso, {{"1", "2", "x", "3", "4"}, {"5", "6", "7", std::nullopt, "8"}});
    EXPECT_EQ(
        importa("arquivoposicao_4_01", pasta / "x_fundo.xls"),
        comGrupo(
            "arquivoposicao_4_01",
            "<t>\r\n<a>1</a>\r\n<dtretorno>2</dtretorno>\r\n<taxa>x</taxa>\r\n<classecomp>3</classecomp>\r\n"
            "<classeoperacao>4</classeoperacao>\r\n</t>\r\n"
            "<t>\r\n<a>5</a>\r\n<classeoperacao>8</classeoperacao>\r\n</t>\r\n"));
}

TEST_F(Importa, ARowWithoutClassecompLosesItsRangeOnAFlatLayoutToo) {
    planilhaCom("fundo", colunasDoCompromisso, {{"5", "6", "7", std::nullopt, "8"}});
    EXPECT_EQ(importa("plano", pasta / "x_fundo.xls"),
              declaracao +
                  "<plano>\r\n<fundo>\r\n<a>5</a>\r\n<classeoperacao>8</classeoperacao>\r\n</fundo>\r\n"
                  "</plano>\r\n");
}

TEST_F(Importa, WithoutClasseoperacaoTheRangeGoesToTheLastColumn) {
    planilhaCom("t", {"dtretorno", "classecomp", "z"}, {{"1", "2", std::nullopt}, {"1", std::nullopt, "3"}});
    EXPECT_EQ(importa(comCompromisso, pasta / "x_fundo.xls"),
              comGrupo(comCompromisso,
                       "<t>\r\n</t>\r\n"
                       "<t>\r\n<compromisso>\r\n<dtretorno>1</dtretorno>\r\n<classecomp></classecomp>\r\n"
                       "</compromisso>\r\n<z>3</z>\r\n</t>\r\n"));
}

TEST_F(Importa, WithoutDtretornoThereIsNoRange) {
    planilhaCom("t", {"a", "classecomp", "classeoperacao"}, {{"1", std::nullopt, "2"}});
    EXPECT_EQ(importa(comCompromisso, pasta / "x_fundo.xls"),
              comGrupo(comCompromisso, "<t>\r\n<a>1</a>\r\n<classecomp></classecomp>\r\n"
                                       "<classeoperacao>2</classeoperacao>\r\n</t>\r\n"));
}

TEST_F(Importa, TheRangeIsFoundInAnyCaseAndTheGroupInSmallLettersOnly) {
    planilhaCom("t", {"DtRetorno", "ClasseComp", "ClasseOperacao"},
                {{"1", "2", "3"}, {"1", std::nullopt, "3"}});
    EXPECT_EQ(importa(comCompromisso, pasta / "x_fundo.xls"),
              comGrupo(comCompromisso, "<t>\r\n<DtRetorno>1</DtRetorno>\r\n<ClasseComp>2</ClasseComp>\r\n"
                                       "<ClasseOperacao>3</ClasseOperacao>\r\n</"
                                       "t>\r\n<t>\r\n<ClasseOperacao>3</ClasseOperacao>\r\n</t>\r\n"));
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
