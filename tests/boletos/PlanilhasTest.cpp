// `boletos exportar` and `boletos importar`: documents out to workbooks and back, and how both end.

#include "boletos/ApplicationFolder.h"

#include "platform/Files.h"
#include "platform/Workbook.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <unistd.h>

namespace boletos::test {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::SizeIs;
using ::testing::StartsWith;

/// The shipped catalog, in which the layouts have groups.
class PlanilhasTest : public ::testing::Test {
protected:
    std::string write(const std::string& name, std::string_view bytes) const {
        std::filesystem::create_directories((folder / name).parent_path());
        return folder.file(name, bytes).string();
    }
    std::string sample(const std::string& layout, const std::string& name = "valido_pequeno.xml") const {
        return write(layout + ".xml",
                     tv::files::readAll(TV_SOURCE_DIR "/data/amostras/" + layout + "/" + name));
    }
    static Outcome call(const std::string& command, const std::string& layout, const std::string& file,
                        const Surroundings& surroundings = {}) {
        return run({command, "--pasta", TV_SOURCE_DIR "/data", "--layout", layout, file}, surroundings);
    }
    /// A workbook with a sheet `header`, named after a fund.
    std::string workbook(const std::string& name, const std::string& value = "1") const {
        tv::Workbook made(folder / name);
        made.execute("CREATE TABLE header( cnpj varchar(255))");
        made.execute("INSERT INTO header( cnpj) VALUES ('" + value + "')");
        made.close();
        return (folder / name).string();
    }
    static std::string position(const std::string& inside) {
        return "<arquivoposicao_4_01><fundo>" + inside + "</fundo></arquivoposicao_4_01>";
    }

    tv::test::ScratchFolder folder;
};

TEST_F(PlanilhasTest, ExportPrintsTheWorkbooksBesideTheDocument) {
    const std::string file = sample("movimento_1_00");
    const Outcome outcome = call("exportar", "movimento_1_00", file);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, IsEmpty());
    const std::string base = file.substr(0, file.size() - 4) + "__";
    const std::string rest = "_[0-9]{8}_[0-9]{6}\\.xls";
    EXPECT_THAT(linesOf(outcome.out), ElementsAre(MatchesRegex(base + "fundo_000" + rest),
                                                  MatchesRegex(base + "carteira_001" + rest)));
    for (const std::string& path : linesOf(outcome.out)) {
        EXPECT_TRUE(tv::files::exists(path)) << path;
    }
}

TEST_F(PlanilhasTest, PathsArePrintedAsTheyWereGiven) {
    write("doc.xml", position("<header><cnpj>1</cnpj></header>"));
    Surroundings surroundings;
    surroundings.folder = folder.path();
    const Outcome outcome = call("exportar", "ARQUIVOPOSICAO_4_01", "doc.xml", surroundings);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    ASSERT_THAT(linesOf(outcome.out), SizeIs(1));
    EXPECT_THAT(outcome.out, StartsWith("doc__fundo_000_"));
    const Outcome back = call("importar", "ARQUIVOPOSICAO_4_01", linesOf(outcome.out)[0], surroundings);
    EXPECT_EQ(back.status, 0) << back.err;
    EXPECT_THAT(back.out, AllOf(StartsWith("doc__fundo_000_"), HasSubstr(".xml\n")));
}

TEST_F(PlanilhasTest, LostRecordsAreToldWithSectionAndReason) {
    const std::string file =
        write("doc.xml", position("<caixa><a>1</a></caixa><caixa><b>2</b></caixa><caixa><b>3</b></caixa>"
                                  "<cotas><c>1</c></cotas><cotas><d>2</d></cotas>"));
    const Outcome outcome = call("exportar", "arquivoposicao_4_01", file);
    EXPECT_EQ(outcome.status, 1);
    ASSERT_THAT(linesOf(outcome.out), SizeIs(1));
    const std::vector<std::string> told = linesOf(outcome.err);
    ASSERT_THAT(told, SizeIs(3));
    EXPECT_THAT(told[0],
                StartsWith("boletos: " + linesOf(outcome.out)[0] + ": caixa: 2 registros perdidos: "));
    EXPECT_THAT(told[1], StartsWith("boletos: " + linesOf(outcome.out)[0] + ": cotas: 1 registro perdido: "));
    EXPECT_EQ(told[2], "boletos: " + file + ": 3 registros perdidos ao todo");
}

TEST_F(PlanilhasTest, OneLossNeedsNoSum) {
    const std::string file =
        write("doc.xml", position("<caixa><a>1</a></caixa><caixa><a>d'agua</a></caixa>"));
    const Outcome outcome = call("exportar", "arquivoposicao_4_01", file);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(linesOf(outcome.err), ElementsAre(HasSubstr(": caixa: 1 registro perdido: ")));
}

TEST_F(PlanilhasTest, ASectionWithoutASheetLosesAllItsRecords) {
    const std::string file =
        write("doc.xml", position("<caixa><a>1</a><a>2</a></caixa><caixa><a>1</a></caixa>"));
    const Outcome outcome = call("exportar", "arquivoposicao_4_01", file);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(linesOf(outcome.err), ElementsAre(HasSubstr(": caixa: 2 registros perdidos: ")));
}

TEST_F(PlanilhasTest, ADocumentThatCannotBeReadIsToldWithItsReason) {
    const Outcome outcome =
        call("exportar", "arquivoposicao_4_01", write("doc.xml", "<arquivoposicao_4_01>"));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err,
                AllOf(StartsWith("boletos: "), HasSubstr("doc.xml: Erro na abertura do arquivo! ")));
    EXPECT_THAT(linesOf(outcome.err), SizeIs(1));
}

TEST_F(PlanilhasTest, ADocumentOfAnotherLayoutGivesNothing) {
    const std::string file = sample("movimento_1_00");
    const Outcome outcome = call("exportar", "arquivoposicao_4_01", file);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_EQ(outcome.err,
              "boletos: " + file + ": O documento n\u00E3o tem nada do layout 'arquivoposicao_4_01'.\n");
}

TEST_F(PlanilhasTest, AFolderThatTakesNoFilesEndsTheExport) {
    if (::geteuid() == 0) {
        // Nothing is forbidden to root; a folder that is none fails for everybody.
        const Outcome outcome = call("exportar", "arquivoposicao_4_01", "/dev/null/doc.xml");
        EXPECT_EQ(outcome.status, 2);
        return;
    }
    const std::string file = write("fechada/doc.xml", position("<caixa><a>1</a></caixa>"));
    std::filesystem::permissions(folder / "fechada",
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    const Outcome outcome = call("exportar", "arquivoposicao_4_01", file);
    std::filesystem::permissions(folder / "fechada", std::filesystem::perms::owner_all);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, StartsWith("boletos: "));
}

struct Absence {
    const char* command;
    std::string layout;
    std::string file;
    std::string message;
};

TEST_F(PlanilhasTest, WhatIsNotThereIsToldInPortuguese) {
    const std::vector<Absence> table = {
        {"exportar", "arquivoposicao_4_01", "nada.xml", "boletos: O arquivo 'nada.xml' n\u00E3o existe.\n"},
        {"importar", "arquivoposicao_4_01", "nada.xls", "boletos: O arquivo 'nada.xls' n\u00E3o existe.\n"},
        {"exportar", "xpto", "nada.xml",
         "boletos: O layout 'xpto' n\u00E3o existe no cat\u00E1logo. Layouts: "},
        {"importar", "xpto", "nada.xls",
         "boletos: O layout 'xpto' n\u00E3o existe no cat\u00E1logo. Layouts: "},
    };
    for (const Absence& row : table) {
        const Outcome outcome = call(row.command, row.layout, row.file);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.out, IsEmpty());
        EXPECT_THAT(outcome.err, StartsWith(row.message));
    }
}

TEST_F(PlanilhasTest, ImportPrintsTheDocumentBesideTheWorkbook) {
    const std::string file = workbook("x_fundo.xls");
    const Outcome outcome = call("importar", "arquivoposicao_4_01", file);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, (folder / "x_fundo.xml").string() + "\n");
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_EQ(
        tv::files::readAll(folder / "x_fundo.xml"),
        "<?xml version='1.0' encoding='ISO-8859-1' ?>\r\n<arquivoposicao_4_01>\r\n<fundo>\r\n<header>\r\n"
        "<cnpj>1</cnpj>\r\n</header>\r\n\r\n</fundo>\r\n</arquivoposicao_4_01>\r\n");
}

TEST_F(PlanilhasTest, ADocumentThatIsThereIsLeftAlone) {
    const std::string file = workbook("x_fundo.xls");
    write("x_fundo.xml", "antes");
    const Outcome outcome = call("importar", "arquivoposicao_4_01", file);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, AllOf(StartsWith("boletos: O documento '"), HasSubstr("j\u00E1 existe")));
    EXPECT_EQ(tv::files::readAll(folder / "x_fundo.xml"), "antes");
}

TEST_F(PlanilhasTest, NamesThatLeadElsewhereAreRefused) {
    for (const char* name : {"FUNDO.XLS", "fundo;1.xls"}) {
        const Outcome outcome = call("importar", "arquivoposicao_4_01", workbook(name));
        EXPECT_EQ(outcome.status, 2) << name;
        EXPECT_THAT(outcome.err, HasSubstr("deve terminar em .xls e n\u00E3o conter ';'"));
    }
    EXPECT_EQ(folder.count(), 2U);
}

TEST_F(PlanilhasTest, AFileThatIsNoWorkbookIsToldAndLeavesNoDocument) {
    for (const std::string& bytes : {std::string("texto"), std::string(), std::string(5000, '\xD0')}) {
        const Outcome outcome = call("importar", "arquivoposicao_4_01", write("x_fundo.xls", bytes));
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.out, IsEmpty());
        EXPECT_THAT(outcome.err, AllOf(StartsWith("boletos: "), HasSubstr("x_fundo.xls: ")));
        EXPECT_FALSE(tv::files::exists(folder / "x_fundo.xml"));
    }
}

TEST_F(PlanilhasTest, ADocumentThatNobodyCanReadIsTold) {
    const Outcome outcome = call("importar", "arquivoposicao_4_01", workbook("x_fundo.xls", "A & B"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, (folder / "x_fundo.xml").string() + "\n");
    EXPECT_THAT(outcome.err, HasSubstr("x_fundo.xml: O documento n\u00E3o \u00E9 XML bem formado: "));
}

TEST_F(PlanilhasTest, AWorkbookThatSaysNeitherFundNorWalletIsTold) {
    const Outcome outcome = call("importar", "arquivoposicao_4_01", workbook("x.xls"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(linesOf(outcome.err), ElementsAre(HasSubstr("n\u00E3o cont\u00E9m 'fundo' nem 'carteira'"),
                                                  HasSubstr("n\u00E3o tem nenhuma folha")));
}

TEST_F(PlanilhasTest, AWorkbookWithoutASectionOfTheLayoutIsTold) {
    tv::Workbook made(folder / "x_fundo.xls");
    made.execute("CREATE TABLE outra( a varchar(255))");
    made.close();
    const Outcome outcome = call("importar", "arquivoposicao_4_01", (folder / "x_fundo.xls").string());
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(linesOf(outcome.err), ElementsAre(HasSubstr("n\u00E3o tem nenhuma folha")));
}

TEST_F(PlanilhasTest, NamesInBracketsAreNames) {
    const std::string file = write("[a,b].xml", position("<caixa><a>1</a></caixa>"));
    Surroundings surroundings;
    surroundings.folder = folder.path();
    const Outcome outcome = call("exportar", "arquivoposicao_4_01", "[a,b].xml", surroundings);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, StartsWith("[a,b]__fundo_000_"));
}

TEST_F(PlanilhasTest, PathsThatNobodyReadsAreAFailure) {
    const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    Surroundings surroundings;
    surroundings.out = full;
    const Outcome outcome =
        call("exportar", "arquivoposicao_4_01", sample("arquivoposicao_4_01"), surroundings);
    ::close(full);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("n\u00E3o h\u00E1 mais espa\u00E7o no disco"));
}

} // namespace
} // namespace boletos::test
