#include "Operations.h"

#include "app/Aplicacao.h"
#include "platform/Clock.h"
#include "platform/Workbook.h"
#include "spreadsheet/ImportacaoDeTeste.h"

namespace tv::test {
namespace {

namespace fs = std::filesystem;

const std::string document = "<movimento_1_00><fundo><header><cnpj>1</cnpj></header>"
                             "<t><a>x</a><b>2</b></t><t><a>y</a><b>3</b></t></fundo>"
                             "<carteira><header><cnpj>2</cnpj></header></carteira></movimento_1_00>";

/// A workbook's sheets as text; a file that is no whole workbook gives its error.
std::string content(const fs::path& workbook) {
    std::string all;
    for (const std::string& line : folha(workbook, "header")) {
        all += line + "\n";
    }
    for (const std::string& line : folha(workbook, "t")) {
        all += line + "\n";
    }
    return all;
}

class WorkbookFaults : public testing::Test {
protected:
    WorkbookFaults() {
        application_.write("TORVA_TramadorValidador.xml", catalogo());
        aplicacao::setPasta(application_.path());
    }
    ~WorkbookFaults() override { aplicacao::setPasta(files::executableFolder()); }
    WorkbookFaults(const WorkbookFaults&) = delete;
    WorkbookFaults& operator=(const WorkbookFaults&) = delete;

    /// How an export or an import ended by its report, which must agree with the log.
    Ending endingOf(const clsPlanilhaExcel& planilha) {
        const bool logged = log_.newFailures() > 0;
        if (planilha.relato().falha) {
            return logged ? Ending::Told : Ending::Silent;
        }
        return planilha.relato().perdas.empty() ? Ending::Done : Ending::Told;
    }

    static void workbookOfAFund(const fs::path& folder) {
        NovaPlanilha(folder / "x_fundo.xls").folha("t", {"a", "b"}, {{"x", "2"}, {"y", "3"}}).fecha();
    }
    Ending import(const fs::path& folder) {
        clsPlanilhaExcel planilha;
        planilha.tag = "movimento_1_00";
        planilha.ImportarPlanilha((folder / "x_fundo.xls").string());
        return endingOf(planilha);
    }
    /// The document that an import makes of the workbook.
    std::string importedDocument() {
        const TemporaryFolder folder;
        workbookOfAFund(folder.path());
        EXPECT_EQ(import(folder.path()), Ending::Done);
        return folder.read("x_fundo.xml");
    }

    const clock::Frozen now_{clock::at(2024, 1, 31, 10, 20, 30)};
    WatchedLog log_;
    TemporaryFolder application_;
};

TEST_F(WorkbookFaults, AnExportedWorkbookIsWholeOrNotThere) {
    const std::string fund = "cnpj\n1\na|b\nx|2\ny|3\n";
    const std::string wallet = "cnpj\n2\nnão há\n";
    tryAllFaults({[](const fs::path& folder) { files::writeAll(folder / "doc.xml", document); },
                  [this](const fs::path& folder) {
                      clsPlanilhaExcel planilha;
                      planilha.tag = "movimento_1_00";
                      planilha.OpenPlan((folder / "doc.xml").string(), "");
                      return endingOf(planilha);
                  },
                  [&](const fs::path& folder, Ending ending) -> std::string {
                      const fs::path first = folder / "doc__fundo_000_20240131_102030.xls";
                      const fs::path second = folder / "doc__carteira_001_20240131_102030.xls";
                      const bool done = ending == Ending::Done;
                      if (bytesOf(folder / "doc.xml") != document) {
                          return "the document has changed";
                      }
                      // An attempt to make the file may leave its empty name behind where nothing can be
                      // removed.
                      const auto isFaulty = [&](const fs::path& file, const std::string& expected) {
                          const bool isThere = fs::exists(file) && (done || fs::file_size(file) > 0);
                          return isThere ? content(file) != expected : done;
                      };
                      return isFaulty(first, fund)      ? "the first workbook"
                             : isFaulty(second, wallet) ? "the second"
                                                        : "";
                  }});
}

TEST_F(WorkbookFaults, AChangedWorkbookIsTheOldOneOrTheNewOne) {
    const std::string before = "a\nx\nnão há\n";
    const std::string after = "a\nx\ny\nnão há\n";
    tryAllFaults({[](const fs::path& folder) {
                      NovaPlanilha(folder / "a.xls").folha("header", {"a"}, {{"x"}}).fecha();
                  },
                  [](const fs::path& folder) {
                      Workbook workbook(folder / "a.xls");
                      workbook.execute("INSERT INTO header( a) VALUES ('y') ");
                      workbook.close();
                      return Ending::Done;
                  },
                  [&](const fs::path& folder, Ending ending) -> std::string {
                      const std::string found = content(folder / "a.xls");
                      return found == after || (ending != Ending::Done && found == before) ? "" : found;
                  }});
}

TEST_F(WorkbookFaults, AnImportedDocumentIsWholeOrEmptyOrNotThere) {
    const std::string imported = importedDocument();
    tryAllFaults({workbookOfAFund, [this](const fs::path& folder) { return import(folder); },
                  [&](const fs::path& folder, Ending ending) {
                      const fs::path file = folder / "x_fundo.xml";
                      return ending == Ending::Done ? notOneOf(file, {imported})
                                                    : notOneOf(file, {nothing, "", imported});
                  }});
}

TEST_F(WorkbookFaults, ADocumentThatIsThereKeepsWhatItHas) {
    const std::string before = "<antes/>\r\n";
    const std::string imported = importedDocument();
    tryAllFaults({[&](const fs::path& folder) {
                      workbookOfAFund(folder);
                      files::writeAll(folder / "x_fundo.xml", before);
                  },
                  [this](const fs::path& folder) { return import(folder); },
                  [&](const fs::path& folder, Ending ending) -> std::string {
                      const std::string found = bytesOf(folder / "x_fundo.xml");
                      if (!found.starts_with(before)) {
                          return "what was there is gone: " + found;
                      }
                      // The import appends twice, first what it begins with, then the whole.
                      const std::string added = found.substr(before.size());
                      const std::string begun = imported.substr(0, imported.find("<t>")) + "\r\n";
                      const bool done = added == begun + imported;
                      return done || (ending != Ending::Done && (added.empty() || added == begun)) ? ""
                                                                                                   : found;
                  }});
}

} // namespace
} // namespace tv::test
