#include "Operations.h"

#include "app/clsTramadorValidador.h"
#include "platform/SchemaCache.h"
#include "platform/XmlTransform.h"
#include "validation/ValidationFolder.h"
#include "validation/biblioteca.h"
#include "validation/clsValidador.h"
#include "validation/documentoResultado.h"

namespace tv::test {
namespace {

namespace fs = std::filesystem;

const fs::path shipped = TV_SOURCE_DIR "/data";

/// The layout `posicao` in a folder, with a formula that has a finding for each title without a value.
std::shared_ptr<const clsBoleto> layoutIn(const fs::path& folder) {
    BoletoXml xml = positionLayout();
    xml.formula = "formula.xsl";
    auto layout = std::make_shared<clsBoleto>();
    layout->setEstrutura(xml.xml(), tables(), folder.string());
    return layout;
}

void positionFolder(const fs::path& folder) {
    fs::create_directory(folder / "XSD");
    files::writeAll(folder / "XSD" / "posicao.xsd", positionSchema());
    files::writeAll(
        folder / "XSD" / "formula.xsl",
        stylesheet("<TORVA><xsl:for-each select='//titulo[valor=0]'><RESULTADO errCode='1' linha='0' "
                   "coluna='0' strLabel='Regra' lastElement='valor' TAGvalor='0' path='p' keyValor=''>"
                   "<strDescription>Valor zero</strDescription></RESULTADO></xsl:for-each></TORVA>"));
    const std::string fund =
        "<posicao><fundo><header><cnpj>1</cnpj><dt>20240628</dt></header><titulo><cod>LFT</cod>";
    const std::string end = "<classe>x</classe></titulo></fundo></posicao>";
    files::writeAll(folder / "valido.xml", fund + "<valor>1</valor>" + end);
    files::writeAll(folder / "errado.xml", fund + "<valor>0</valor>" + end);
}

const std::string catalogBytes =
    "<TORVA><app><titulo>T</titulo><versao>1</versao><site><caption>s</caption><link>l</link></site>"
    "<email><caption>e</caption><link>m</link></email><descricao>d</descricao></app>"
    "<logger type='TXT' level='OFF'/><configuracao><TABELAS><TABELA id='titulos'>"
    "<ENTRADA valor='LFT' descricao='um'/></TABELA></TABELAS></configuracao><BOLETOS>" +
    positionLayout().xml() + "</BOLETOS></TORVA>";

class ValidationFaults : public testing::Test {
protected:
    WatchedLog log_;
};

/// A document that could not be checked to its end is no valid one: there is a finding about the file, or the
/// run says what it could not do.
TEST_F(ValidationFaults, ADocumentThatCouldNotBeReadIsNotTakenForAValidOne) {
    std::shared_ptr<const clsBoleto> layout;
    for (const char* name : {"valido.xml", "errado.xml"}) {
        const std::size_t expected = std::string(name) == "valido.xml" ? 0U : 1U;
        tryAllFaults({[&](const fs::path& folder) {
                          positionFolder(folder);
                          layout = layoutIn(folder);
                      },
                      [&](const fs::path& folder) {
                          clsValidador validador;
                          const bool valid = validador.isValido(folder / name, layout);
                          if (!validador.getAvisos().empty() || validador.arquivoIlegivel()) {
                              return Ending::Told;
                          }
                          const auto findings = validador.getResultado();
                          return valid == (expected == 0) && findings->size() == expected ? Ending::Done
                                                                                          : Ending::Silent;
                      },
                      [](const fs::path&, Ending) { return std::string(); }});
    }
}

TEST_F(ValidationFaults, ACatalogThatCouldNotBeReadIsRefused) {
    tryAllFaults({[](const fs::path& folder) {
                      files::writeAll(folder / "TORVA_TramadorValidador.xml", catalogBytes);
                  },
                  [](const fs::path& folder) {
                      clsTramadorValidador catalog;
                      if (!catalog.load(folder.string(), "TORVA_TramadorValidador.xml")) {
                          return catalog.lastReason().empty() ? Ending::Silent : Ending::Told;
                      }
                      return catalog.getBoletos().Count() == 1 ? Ending::Done : Ending::Silent;
                  },
                  [](const fs::path&, Ending) { return std::string(); }});
}

TEST_F(ValidationFaults, AReportIsWholeOrTheOldOne) {
    Resultados findings(3);
    for (clsResultado& one : findings) {
        one.setError(5, "Erro", "descrição");
    }
    const std::string document = montaDocumentoResultado(findings, "Posição", "fundo.xml");
    const std::string before = "<html>o anterior</html>";
    tryAllFaults({[&](const fs::path& folder) {
                      fs::create_directory(folder / "XSD");
                      fs::copy_file(shipped / "XSD" / "resultado.xsl", folder / "XSD" / "resultado.xsl");
                      files::writeAll(folder / "kvo1.HTM", before);
                      XmlTransform::clearStore();
                  },
                  [&](const fs::path& folder) {
                      // The reason of a stylesheet that cannot be loaded is the caller's to log, by the
                      // answer.
                      return biblioteca::transformStream(document, folder / "XSD" / "resultado.xsl",
                                                         folder / "kvo1.HTM")
                                 ? Ending::Done
                                 : Ending::Told;
                  },
                  [&](const fs::path& folder, Ending ending) -> std::string {
                      const std::string page = bytesOf(folder / "kvo1.HTM");
                      const bool isNew = page.find("<html") == 0 || page.find("<!DOCTYPE") == 0;
                      const bool isWhole =
                          isNew && page.find("</html>") != std::string::npos && page != before;
                      return isWhole || (ending != Ending::Done && page == before) ? "" : page;
                  }});
}

} // namespace
} // namespace tv::test
