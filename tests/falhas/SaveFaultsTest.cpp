#include "Operations.h"

#include "composer/Amostras.h"
#include "composer/EscritorBoleto.h"
#include "composer/LeitorBoleto.h"
#include "composer/gravacao.h"
#include "composer/nomeDoArquivo.h"
#include "editor/ArquivoEditado.h"
#include "platform/Clock.h"

namespace tv::test {
namespace {

namespace fs = std::filesystem;

const std::string older = "<r>o documento da v\xE9spera</r>";
const std::string amostra = "arquivoposicao_4_01/valido_pequeno.xml";

/// A document of the composer, read from a sample.
class Composto {
public:
    Composto() {
        documento_.abrir(layoutDaAmostra(amostra));
        EXPECT_TRUE(LeitorBoleto(documento_).abre(pastaDasAmostras() / amostra));
        bytes_ = montaDocumento(documento_).toLatin1(true);
    }
    const Documento& documento() const { return documento_; }
    const std::string& bytes() const { return bytes_; }

private:
    Documento documento_;
    std::string bytes_;
};

TEST(SaveFaults, AComposedDocumentIsTheOldOneOrTheNewOneAndTheOldOneIsKept) {
    const clock::Frozen agora(clock::at(2024, 7, 5));
    const Composto composto;
    const auto destino = [](const fs::path& folder) { return folder / "fundo.xml"; };
    tryAllFaults({[&](const fs::path& folder) { files::writeAll(destino(folder), older); },
                  [&](const fs::path& folder) {
                      const fs::path temporario = files::createTemporary(folder, "kvo");
                      montaDocumento(composto.documento()).save(temporario, true);
                      gravacao::grava(temporario, destino(folder));
                      return Ending::Done;
                  },
                  [&](const fs::path& folder, Ending ending) {
                      const bool done = ending == Ending::Done;
                      const std::string copia = bytesOf(nomeDoArquivo::copia(destino(folder)));
                      return notOneOf(destino(folder), {composto.bytes(), done ? composto.bytes() : older}) +
                             (copia == older || copia == nothing ? "" : "the copy is cut");
                  }});
}

/// What the editor has in its hands, from the reading of the file to its writing.
TEST(SaveFaults, AnEditedFileIsTheOldOneOrTheNewOne) {
    const std::string bytes = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>S\xE3o</r>";
    const std::string edited = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<r>S\xE3o Jo\xE3o</r>";
    tryAllFaults({[&](const fs::path& folder) { files::writeAll(folder / "a.xml", bytes); },
                  [](const fs::path& folder) {
                      ArquivoEditado arquivo;
                      std::u16string texto = arquivo.le(folder / "a.xml");
                      texto.replace(texto.find(u"</r>"), 0, u" Jo\u00E3o");
                      arquivo.grava(arquivo.prepara(texto));
                      return Ending::Done;
                  },
                  [&](const fs::path& folder, Ending ending) {
                      return notOneOf(folder / "a.xml", {edited, ending == Ending::Done ? edited : bytes});
                  }});
}

/// A save whose first try failed is tried again by the user, on the same disk.
TEST(SaveFaults, TheSecondTryGoesThroughWhereTheFirstOneFailed) {
    const clock::Frozen agora(clock::at(2024, 7, 5));
    for (const Cause cause : causes) {
        for (int which = 1, failed = 1; failed > 0; ++which) {
            SCOPED_TRACE(std::string(nameOf(cause)) + ", call " + std::to_string(which));
            const TemporaryFolder folder;
            const fs::path destino = folder.write("fundo.xml", older);
            const fs::path temporario = folder.write("kvo1.TMP", "novo");
            bool told = false;
            {
                SystemFault fault(folder.path(), cause, which, SystemFault::Reach::One);
                try {
                    gravacao::grava(temporario, destino);
                } catch (const Error&) {
                    told = true;
                }
                failed = fault.end();
            }
            if (told) {
                gravacao::grava(temporario, destino);
                EXPECT_EQ(bytesOf(nomeDoArquivo::copia(destino)), older);
            }
            EXPECT_EQ(bytesOf(destino), "novo");
        }
    }
}

} // namespace
} // namespace tv::test
