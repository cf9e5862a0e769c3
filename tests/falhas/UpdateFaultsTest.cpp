#include "Operations.h"

#include "common/AtualizacaoArquivos.h"

#include <algorithm>

namespace tv::test {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> contents = {"velho catálogo", "novo catálogo", "velho esquema", "novo esquema",
                                           "nova folha"};

/// Every file of the two folders is still somewhere, once, with all its bytes.
std::string faultsOfUpdate(const fs::path& folder, Ending ending) {
    const auto found = filesBelow(folder);
    std::vector<std::string> bytes;
    for (const auto& [name, content] : found) {
        bytes.push_back(content);
    }
    std::vector<std::string> expected = contents;
    std::sort(expected.begin(), expected.end());
    std::sort(bytes.begin(), bytes.end());
    if (bytes != expected) {
        return "a file is lost or cut";
    }
    const fs::path application = folder / "aplicacao";
    const bool installed = bytesOf(application / "TORVA_TramadorValidador.xml") == "novo catálogo" &&
                           bytesOf(application / "XSD" / "a.xsd") == "novo esquema" &&
                           bytesOf(application / "XSD" / "b.xsl") == "nova folha";
    // A catalog that is not there any more when it is its turn is none of the update's.
    const bool passedOver = bytesOf(folder / "origem" / "TORVA_TramadorValidador.xml") == "novo catálogo" &&
                            bytesOf(application / "TORVA_TramadorValidador.xml") == "velho catálogo";
    return installed || passedOver || ending == Ending::Told ? "" : "the update is not there";
}

TEST(UpdateFaults, EveryFileIsInOneOfTheTwoFoldersAndWhole) {
    const clock::Frozen now(clock::at(2024, 3, 7, 9, 5, 2));
    tryAllFaults({[](const fs::path& folder) {
                      fs::create_directories(folder / "aplicacao" / "XSD");
                      fs::create_directory(folder / "origem");
                      files::writeAll(folder / "aplicacao" / "TORVA_TramadorValidador.xml", contents[0]);
                      files::writeAll(folder / "origem" / "TORVA_TramadorValidador.xml", contents[1]);
                      files::writeAll(folder / "aplicacao" / "XSD" / "a.xsd", contents[2]);
                      files::writeAll(folder / "origem" / "a.xsd", contents[3]);
                      files::writeAll(folder / "origem" / "b.xsl", contents[4]);
                  },
                  [](const fs::path& folder) {
                      AtualizacaoArquivos(folder / "aplicacao").instala(folder / "origem");
                      return Ending::Done;
                  },
                  faultsOfUpdate});
}

} // namespace
} // namespace tv::test
