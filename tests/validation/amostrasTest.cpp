// The shipped samples: every sound one is valid in all stages, and every faulty one gives exactly the
// findings that stand beside it in a file of its name with the ending .esperado.txt.

#include "FindingLine.h"

#include "app/clsTramadorValidador.h"
#include "platform/Files.h"
#include "platform/text.h"
#include "validation/clsValidador.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace tv {
namespace {

namespace fs = std::filesystem;

const fs::path& samplesFolder() {
    static const fs::path folder = fs::path(TV_SOURCE_DIR) / "data" / "amostras";
    return folder;
}

const Boletos& shippedLayouts() {
    static const auto catalog = [] {
        auto loaded = std::make_unique<clsTramadorValidador>();
        EXPECT_TRUE(loaded->load(TV_SOURCE_DIR "/data", "TORVA_TramadorValidador.xml"))
            << loaded->lastReason();
        return loaded;
    }();
    return catalog->getBoletos();
}

/// Samples as "layout/name", sorted.
std::vector<std::string> samples() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(samplesFolder())) {
        if (entry.path().extension() == ".xml") {
            names.push_back(fs::relative(entry.path(), samplesFolder()).generic_string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Amostra : public testing::TestWithParam<std::string> {
protected:
    fs::path file() const { return samplesFolder() / GetParam(); }
    bool isSound() const { return text::startsWith(file().filename().string(), "valido"); }
    const std::shared_ptr<const clsBoleto>& layout() const {
        return shippedLayouts().Item(file().parent_path().filename().string());
    }
};

TEST_P(Amostra, GivesTheFindingsWrittenBesideIt) {
    clsValidador validador;
    validador.isValido(file(), layout());
    EXPECT_EQ(validador.getAvisos(), std::vector<std::string>());
    std::string found;
    for (const clsResultado& resultado : *validador.getResultado()) {
        found += test::lineOf(resultado);
    }
    if (isSound()) {
        EXPECT_EQ(found, "");
        return;
    }
    fs::path expected = file();
    expected.replace_extension(".esperado.txt");
    EXPECT_NE(found, "");
    EXPECT_EQ(found, files::readAll(expected));
}

TEST_P(Amostra, PassesTheStreamingValidatorWhenItIsSound) {
    const std::string command = "xmllint --noout --schema '" + layout()->getValidador() + "' '" +
                                file().string() + "' >/dev/null 2>&1";
    const int status = std::system(command.c_str()); // NOLINT(cert-env33-c): a fixed command on our own files
    // A faulty sample may keep to the schema all the same: its fault is then one of the rules.
    EXPECT_TRUE(status == 0 || !isSound()) << command;
}

INSTANTIATE_TEST_SUITE_P(Todas, Amostra, testing::ValuesIn(samples()), [](const auto& one) {
    std::string name = one.param.substr(0, one.param.size() - 4);
    std::replace(name.begin(), name.end(), '/', '_');
    return name;
});

TEST(Amostras, HoldASmallARealisticAndFaultySamplesOfEveryLayout) {
    const std::vector<std::string> all = samples();
    for (const auto& layout : shippedLayouts()) {
        const std::string folder = layout->getTag() + "/";
        EXPECT_EQ(std::count(all.begin(), all.end(), folder + "valido_pequeno.xml"), 1) << folder;
        EXPECT_EQ(std::count(all.begin(), all.end(), folder + "valido_realista.xml"), 1) << folder;
        EXPECT_GE(
            std::count_if(all.begin(), all.end(),
                          [&](const std::string& n) { return text::startsWith(n, folder + "errado_"); }),
            8)
            << folder;
    }
}

} // namespace
} // namespace tv
