// Files that mean harm, opened and saved in the editor: their text comes back as it was, in time.

#include "editor/ArquivoEditado.h"

#include "logging/LogFolder.h"
#include "platform/Attacks.h"
#include "platform/Watchers.h"

#include <gtest/gtest.h>

#include <ostream>

namespace tv::test {
namespace {

using namespace attack; // NOLINT(google-build-using-namespace)

struct Ataque {
    const char* name;
    std::string (*bytes)();
    bool temForma; ///< The parser takes it.
    double seconds;
    double megabytes;
};
void PrintTo(const Ataque& ataque, std::ostream* out) {
    *out << ataque.name;
}

class AtaquesAoEditor : public ::testing::TestWithParam<Ataque> {
protected:
    TemporaryFolder pasta;
    ArquivoEditado arquivo;
};

TEST_P(AtaquesAoEditor, AreOpenedAndSavedInTime) {
    const std::string bytes = GetParam().bytes();
    const Cost cost;
    const std::u16string texto = arquivo.le(pasta.write("a.xml", bytes));
    const ArquivoEditado::Preparo preparo = arquivo.prepara(texto);
    EXPECT_EQ(preparo.forma.has_value(), GetParam().temForma);
    arquivo.grava(preparo);
    if (!GetParam().temForma && arquivo.ilegiveis() == 0) {
        EXPECT_TRUE(pasta.read("a.xml") == bytes) << "the text is not the same";
    }
    cost.expectBelow(GetParam().seconds, GetParam().megabytes);
}

INSTANTIATE_TEST_SUITE_P(
    Todos, AtaquesAoEditor,
    ::testing::Values(
        Ataque{"Nesting", [] { return nested("r", 1'000'000); }, false, 4, 200},
        Ataque{"NestingThatStaysOpen", [] { return repeated("<r>", 1'000'000); }, false, 4, 200},
        Ataque{"Laughs", [] { return doctype("r", laughs(12)) + "<r>&e12;</r>"; }, false, 2, 60},
        Ataque{"Declarations",
               [] { return doctype("r", declarations("<!ENTITY e{} ''>", 300'000)) + "<r/>"; }, false, 4,
               200},
        Ataque{"MillionAttributes", [] { return "<r" + attributes(million) + "/>"; }, false, 4, 200},
        Ataque{"EntityOfAFile",
               [] { return doctype("r", "<!ENTITY e SYSTEM \"file:///etc/passwd\">") + "<r>&e;</r>"; }, false,
               2, 60},
        Ataque{"HugeLine", [] { return "<r>" + std::string(100'000'000, 'x') + "</r>"; }, true, 10, 1800},
        Ataque{"AngleBrackets", [] { return std::string(20'000'000, '<'); }, false, 4, 400},
        Ataque{"NulBytes", [] { return std::string(1'000'000, '\0'); }, false, 2, 60},
        Ataque{"InvalidUtf8", [] { return "<r>" + std::string(1'000'000, '\xFF') + "</r>"; }, true, 2, 60},
        Ataque{"ControlCharacters", [] { return "<r>" + std::string(1'000'000, '\x1B') + "</r>"; }, false, 2,
               60}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace tv::test
