#include "app/clsTramadorValidador.h"
#include "platform/Files.h"
#include "platform/text.h"
#include "validation/FindingLine.h"
#include "validation/clsValidador.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// The golden documents: tests/fixtures/golden holds a folder a case, with a document of the shipped position
/// layout and what a validation must say of it. Adding a case means adding a folder.
///
/// esperado.txt has one line a finding, as FindingLine.h writes it, and none for a valid document.
namespace tv {
namespace {

namespace fs = std::filesystem;

const fs::path& casesFolder() {
    static const fs::path folder = fs::path(TV_SOURCE_DIR) / "tests" / "fixtures" / "golden";
    return folder;
}

std::vector<std::string> caseNames() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(casesFolder())) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// The layout of the catalog that the application ships.
std::shared_ptr<const clsBoleto> shippedLayout() {
    static const std::shared_ptr<const clsBoleto> layout = [] {
        clsTramadorValidador catalog;
        EXPECT_TRUE(catalog.load(TV_SOURCE_DIR "/data", "TORVA_TramadorValidador.xml"))
            << catalog.lastReason();
        return catalog.getBoletos().Item("arquivoposicao_4_01");
    }();
    return layout;
}

class GoldenTest : public testing::TestWithParam<std::string> {};

TEST_P(GoldenTest, DocumentGivesTheExpectedFindings) {
    const fs::path folder = casesFolder() / GetParam();
    clsValidador validador;
    const bool valid = validador.isValido(folder / "documento.xml", shippedLayout());
    std::string found;
    for (const clsResultado& resultado : *validador.getResultado()) {
        found += test::lineOf(resultado);
    }
    EXPECT_EQ(found, files::readAll(folder / "esperado.txt"));
    EXPECT_EQ(valid, found.empty());
    EXPECT_EQ(validador.getAvisos(), std::vector<std::string>()) << "a check could not be made";
}

INSTANTIATE_TEST_SUITE_P(Documents, GoldenTest, testing::ValuesIn(caseNames()),
                         [](const auto& row) { return row.param; });

TEST(GoldenFolderTest, HasCasesOfEveryKind) {
    const std::vector<std::string> names = caseNames();
    for (const char* kind :
         {"valido_", "regra_", "esquema_", "estrutura_", "formula_", "totais_", "patrimonio_", "classe_"}) {
        EXPECT_TRUE(std::any_of(names.begin(), names.end(), [&](const auto& n) {
            return text::startsWith(n, kind);
        })) << kind;
    }
}

} // namespace
} // namespace tv
