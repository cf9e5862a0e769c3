#include "HeapFaults.h"
#include "Operations.h"

#include "app/Aplicacao.h"
#include "composer/Amostras.h"
#include "composer/EscritorBoleto.h"
#include "composer/LeitorBoleto.h"
#include "composer/gravacao.h"
#include "editor/ArquivoEditado.h"
#include "logging/Routine.h"
#include "platform/Clock.h"
#include "platform/XmlTransform.h"
#include "spreadsheet/ImportacaoDeTeste.h"
#include "validation/ValidationFolder.h"
#include "validation/biblioteca.h"
#include "validation/documentoResultado.h"

#include <iostream>

/// Memory runs out at one request after the other of what users do.
namespace tv::test {
namespace {

namespace fs = std::filesystem;

/// Every one of the first `dense` requests, then ever fewer: some operations make tens of thousands.
int nextRequest(int which, int dense) {
    return which + 1 + which / dense;
}

Ending endingOf(const Operation& operation, const fs::path& folder) {
    try {
        return operation.run(folder);
    } catch (const std::exception&) {
        return Ending::Told;
    }
}

template<typename Fault>
void tryHeap(const Operation& operation, int dense) {
    int tried = 0;
    int told = 0;
    for (int which = 1;; which = nextRequest(which, dense)) {
        SCOPED_TRACE("request " + std::to_string(which));
        const TemporaryFolder folder;
        operation.prepare(folder.path());
        const int filesBefore = openFiles();
        Ending ending{};
        bool failed = false;
        {
            const Fault fault(which);
            ending = endingOf(operation, folder.path());
            failed = Fault::end();
        }
        EXPECT_EQ(openFiles(), filesBefore);
        EXPECT_NE(ending, Ending::Silent);
        EXPECT_EQ(operation.faultsLeft(folder.path(), ending), "");
        operation.prepare(folder.path());
        EXPECT_EQ(endingOf(operation, folder.path()), Ending::Done) << "behind the fault";
        EXPECT_EQ(operation.faultsLeft(folder.path(), Ending::Done), "") << "behind the fault";
        if (!failed || testing::Test::HasFailure()) {
            break;
        }
        ++tried;
        told += ending == Ending::Told ? 1 : 0;
    }
    EXPECT_GT(tried, 0);
    std::cout << "faults: " << tried << ", told: " << told << '\n';
}

void tryMemory(const Operation& operation, int dense = 150) {
    tryHeap<HeapFault>(operation, dense);
}

/// Both heaps: the language's and that of the library of documents.
void tryBothHeaps(const Operation& operation) {
    tryHeap<HeapFault>(operation, 150);
    if (!testing::Test::HasFailure()) {
        tryHeap<LibraryHeapFault>(operation, 150);
    }
}

std::string nothingWrong(const fs::path& /*folder*/, Ending /*ending*/) {
    return {};
}

class MemoryFaults : public testing::Test {
protected:
    const clock::Frozen now_{clock::at(2024, 1, 31, 10, 20, 30)};
    WatchedLog log_;
};

const std::string older = "<r>o documento da véspera</r>";
const std::string newer = "<r>o documento de hoje</r>";

TEST_F(MemoryFaults, ASaveLeavesTheOldDocumentOrTheNewOne) {
    tryMemory({[](const fs::path& folder) {
                   files::writeAll(folder / "fundo.xml", older);
                   files::writeAll(folder / "kvo1.TMP", newer);
               },
               [](const fs::path& folder) {
                   gravacao::grava(folder / "kvo1.TMP", folder / "fundo.xml");
                   return Ending::Done;
               },
               [](const fs::path& folder, Ending ending) {
                   return notOneOf(folder / "fundo.xml", {newer, ending == Ending::Done ? newer : older});
               }});
}

TEST_F(MemoryFaults, AnEditedFileIsTheOldOneOrTheNewOne) {
    tryBothHeaps({[](const fs::path& folder) { files::writeAll(folder / "a.xml", older); },
                  [](const fs::path& folder) {
                      ArquivoEditado arquivo;
                      arquivo.le(folder / "a.xml");
                      const auto preparo = arquivo.prepara(u"<r>o documento de hoje</r>");
                      arquivo.grava(preparo);
                      return Ending::Done;
                  },
                  [](const fs::path& folder, Ending ending) {
                      return notOneOf(folder / "a.xml", {newer, ending == Ending::Done ? newer : older});
                  }});
}

TEST_F(MemoryFaults, AComposedDocumentIsOpenedAndWrittenWholeOrNotAtAll) {
    const std::string amostra = "arquivoposicao_4_01/valido_pequeno.xml";
    std::string expected;
    {
        Documento documento;
        documento.abrir(layoutDaAmostra(amostra));
        LeitorBoleto(documento).abre(pastaDasAmostras() / amostra);
        expected = montaDocumento(documento).toLatin1(true);
    }
    tryMemory(
        {[](const fs::path& folder) { files::writeAll(folder / "fundo.xml", older); },
         [&](const fs::path& folder) {
             Documento documento;
             documento.abrir(layoutDaAmostra(amostra));
             if (!LeitorBoleto(documento).abre(pastaDasAmostras() / amostra)) {
                 return Ending::Told;
             }
             montaDocumento(documento).save(folder / "fundo.xml", true);
             return Ending::Done;
         },
         [&](const fs::path& folder, Ending ending) {
             return notOneOf(folder / "fundo.xml", {expected, ending == Ending::Done ? expected : older});
         }},
        30);
}

TEST_F(MemoryFaults, ADocumentThatCouldNotBeCheckedIsNotTakenForAValidOne) {
    std::shared_ptr<const clsBoleto> layout;
    tryMemory(
        {[&](const fs::path& folder) {
             fs::create_directory(folder / "XSD");
             files::writeAll(folder / "XSD" / "posicao.xsd", positionSchema());
             files::writeAll(folder / "XSD" / "formula.xsl",
                             stylesheet("<TORVA><RESULTADO errCode='1' linha='0' coluna='0' strLabel='R' "
                                        "lastElement='v' TAGvalor='0' path='p' keyValor=''>"
                                        "<strDescription>d</strDescription></RESULTADO></TORVA>"));
             files::writeAll(folder / "a.xml",
                             "<posicao><fundo><header><cnpj>1</cnpj><dt>20240628</dt></header><titulo>"
                             "<cod>XXX</cod><valor>1</valor><classe>x</classe></titulo></fundo></posicao>");
             BoletoXml xml = positionLayout();
             xml.formula = "formula.xsl";
             auto boleto = std::make_shared<clsBoleto>();
             boleto->setEstrutura(xml.xml(), tables(), folder.string());
             layout = boleto;
         },
         [&](const fs::path& folder) {
             clsValidador validador;
             validador.isValido(folder / "a.xml", layout);
             if (!validador.getAvisos().empty() || validador.arquivoIlegivel()) {
                 return Ending::Told;
             }
             return validador.getResultado()->size() == 2 ? Ending::Done : Ending::Silent;
         },
         nothingWrong},
        60);
}

TEST_F(MemoryFaults, AReportIsWholeOrTheOldOne) {
    Resultados findings(2);
    tryMemory({[&](const fs::path& folder) {
                   fs::create_directory(folder / "XSD");
                   fs::copy_file(fs::path(TV_SOURCE_DIR) / "data" / "XSD" / "resultado.xsl",
                                 folder / "resultado.xsl", fs::copy_options::overwrite_existing);
                   files::writeAll(folder / "kvo1.HTM", older);
               },
               [&](const fs::path& folder) {
                   const std::string document = montaDocumentoResultado(findings, "Posição", "fundo.xml");
                   const bool made =
                       biblioteca::transformStream(document, folder / "resultado.xsl", folder / "kvo1.HTM");
                   return made ? Ending::Done : Ending::Told;
               },
               [&](const fs::path& folder, Ending ending) -> std::string {
                   const std::string page = bytesOf(folder / "kvo1.HTM");
                   const bool isWhole = page.find("</html>") != std::string::npos;
                   return isWhole || (ending != Ending::Done && page == older) ? "" : page;
               }});
}

/// An export or an import tells what it lost in its report; a failure is in the log, too.
class MemoryFaultsOfWorkbooks : public MemoryFaults {
protected:
    MemoryFaultsOfWorkbooks() {
        application_.write("TORVA_TramadorValidador.xml", catalogo());
        aplicacao::setPasta(application_.path());
    }
    ~MemoryFaultsOfWorkbooks() override { aplicacao::setPasta(files::executableFolder()); }
    MemoryFaultsOfWorkbooks(const MemoryFaultsOfWorkbooks&) = delete;
    MemoryFaultsOfWorkbooks& operator=(const MemoryFaultsOfWorkbooks&) = delete;

    TemporaryFolder application_;
};

TEST_F(MemoryFaultsOfWorkbooks, AnExportedWorkbookIsWholeOrNotThere) {
    tryMemory({[](const fs::path& folder) {
                   for (const auto& item : fs::directory_iterator(folder)) {
                       fs::remove(item.path());
                   }
                   files::writeAll(folder / "doc.xml",
                                   "<movimento_1_00><fundo><t><a>x</a></t></fundo></movimento_1_00>");
               },
               [](const fs::path& folder) {
                   clsPlanilhaExcel planilha;
                   planilha.tag = "movimento_1_00";
                   planilha.OpenPlan((folder / "doc.xml").string(), "");
                   const bool told = planilha.relato().falha || !planilha.relato().perdas.empty();
                   return told ? Ending::Told : Ending::Done;
               },
               [](const fs::path& folder, Ending ending) -> std::string {
                   const fs::path file = folder / "doc__fundo_000_20240131_102030.xls";
                   const std::vector<std::string> whole{"a", "x"};
                   const bool isWhole = fs::exists(file) && folha(file, "t") == whole;
                   return isWhole || ending != Ending::Done ? "" : "the workbook";
               }});
}

TEST_F(MemoryFaultsOfWorkbooks, AnImportedDocumentIsWholeOrToldOf) {
    std::string whole;
    const Operation import{[this](const fs::path& folder) {
                               log_.newFailures(); // those of the run before

                               for (const auto& item : fs::directory_iterator(folder)) {
                                   fs::remove(item.path());
                               }
                               NovaPlanilha(folder / "x_fundo.xls").folha("t", {"a"}, {{"x"}, {"y"}}).fecha();
                           },
                           [this](const fs::path& folder) {
                               clsPlanilhaExcel planilha;
                               planilha.tag = "movimento_1_00";
                               planilha.ImportarPlanilha((folder / "x_fundo.xls").string());
                               const bool told = planilha.relato().falha || log_.newFailures() > 0;
                               return told ? Ending::Told : Ending::Done;
                           },
                           [&](const fs::path& folder, Ending ending) -> std::string {
                               const std::string found = bytesOf(folder / "x_fundo.xml");
                               return ending != Ending::Done || found == whole ? "" : found;
                           }};
    {
        const TemporaryFolder folder;
        import.prepare(folder.path());
        import.run(folder.path());
        whole = folder.read("x_fundo.xml");
    }
    tryMemory(import);
}

/// The log itself: an entry may be lost, nothing else.
TEST_F(MemoryFaults, ALogGoesOn) {
    for (const std::int16_t type : {clsLogger::typeTXT, clsLogger::typeXML}) {
        tryMemory({[](const fs::path&) {},
                   [type](const fs::path& folder) {
                       const auto logger = std::make_shared<clsLogger>();
                       const GlobalLogger global(logger);
                       logger->setPath(folder.string());
                       logger->loggerFactory(type, library::level::all);
                       {
                           const Routine routine("a.b");
                           oLogger->logFATAL("falha");
                       }
                       logger->destroy();
                       return Ending::Done;
                   },
                   nothingWrong});
    }
}

} // namespace
} // namespace tv::test
