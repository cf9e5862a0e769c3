#include "composer/datasVazias.h"

#include "../platform/Throws.h"

#include <gtest/gtest.h>

namespace tv::test {
namespace {

using datasVazias::ajustaDatasVazias;
using datasVazias::normalizaValorLido;

struct Linha {
    std::string tag;
    std::string texto;
    std::string esperado;
};

TEST(DatasVazias, BecomeZerosInTwoSectionsOnly) {
    const std::vector<Linha> rows = {
        {"debenture", "<d><dtvencimento></dtvencimento></d>", "<d><dtvencimento>00000000</dtvencimento></d>"},
        {" Debenture ", "<dtvencimento/>", "<dtvencimento>00000000</dtvencimento>"},
        {"debenture", "<dtvencimento>20240101</dtvencimento>", "<dtvencimento>20240101</dtvencimento>"},
        {"debenture", "<dt></dt>", "<dt></dt>"},
        {"provisao", "<p><dt></dt></p>\r\n<p><dt>20240101</dt></p>",
         "<p><dt>00000000</dt></p><p><dt>20240101</dt></p>"},
        {"PROVISAO", "<dt/>", "<dt>00000000</dt>"},
        {"provisao", "<dtvencimento></dtvencimento>", "<dtvencimento></dtvencimento>"},
        {"titprivado", "<dtvencimento></dtvencimento><dt></dt>", "<dtvencimento></dtvencimento><dt></dt>"},
        {"debenture", "", ""},
    };
    for (const Linha& row : rows) {
        EXPECT_EQ(ajustaDatasVazias(row.texto, row.tag, 1), row.esperado) << row.tag << ": " << row.texto;
    }
}

TEST(DatasVazias, WithoutACountTheTextStays) {
    EXPECT_EQ(ajustaDatasVazias("<dt/>", "provisao", std::nullopt), "<dt/>");
    EXPECT_EQ(ajustaDatasVazias("<dt", "provisao", std::nullopt), "<dt");
}

TEST(DatasVazias, KeepMarkupInValues) {
    EXPECT_EQ(ajustaDatasVazias("<p><d>A &amp; B &lt;C</d><dt></dt></p>", "provisao", 1),
              "<p><d>A &amp; B &lt;C</d><dt>00000000</dt></p>");
}

TEST(DatasVazias, ATextThatDoesNotParseFails) {
    for (const char* texto : {"<a>", "<a>\x01</a>", "<a>&</a>"}) {
        try {
            ajustaDatasVazias(texto, "caixa", 1);
            ADD_FAILURE() << texto;
        } catch (const Error& erro) {
            EXPECT_EQ(erro.number(), static_cast<std::int32_t>(0x8004124F));
            EXPECT_EQ(erro.source(), "Erro na abertura do LoadXML");
            EXPECT_EQ(erro.description(),
                      std::string("Erro LoadXML - não foi possível abrir o conteúdo de: ") + texto);
        }
    }
}

TEST(DatasVazias, ZerosReadAsEmptyInTheSameFields) {
    const std::vector<std::array<std::string, 4>> rows = {
        {"debenture", "dtvencimento", "00000000", ""},
        {" DEBENTURE", "DtVencimento ", "00000000", ""},
        {"provisao", "dt", "00000000", ""},
        {"provisao", "dtvencimento", "00000000", "00000000"},
        {"debenture", "dt", "00000000", "00000000"},
        {"titprivado", "dtvencimento", "00000000", "00000000"},
        {"debenture", "dtvencimento", "20240101", "20240101"},
        {"debenture", "dtvencimento", " 00000000", " 00000000"},
        {"", "", "00000000", "00000000"},
    };
    for (const auto& [secao, campo, valor, esperado] : rows) {
        EXPECT_EQ(normalizaValorLido(secao, campo, valor), esperado) << secao << "." << campo;
    }
}

} // namespace
} // namespace tv::test
