#pragma once

#include "validation/PositionXml.h"

#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

/// The asset sections as the tests of their totals know them.
namespace tv::test {

inline constexpr std::size_t sections = 18;
inline constexpr std::size_t statement = 20; ///< Findings of one failed check.

/// A section of the table: what makes the value of one element, and whether its class counts.
struct Section {
    const char* tag;
    Fields fields;
    double valor;
    bool comClasse;
    const char* rotulo;
    const char* descricao;
};

inline const std::array<Section, sections>& table() {
    static const std::array<Section, sections> rows{{
        {"titpublico",
         {{"valorfindisp", "1000.50"}, {"valorfinemgar", "200.25"}, {"tributos", "0.75"}},
         1200.00,
         true,
         "Total Tit.Publico",
         "Somatória total de Títulos Públicos"},
        {"titprivado",
         {{"valorfindisp", "2000"}, {"valorfinemgar", "300"}, {"tributos", "20"}},
         2280,
         true,
         "Total Tit.Privado",
         "Somatória total de Títulos Privados"},
        {"debenture",
         {{"valorfindisp", "3000"}, {"valorfinemgar", "400"}, {"tributos", "30"}},
         3370,
         true,
         "Total Debenture",
         "Somatória total de Debentures"},
        {"acoes",
         {{"valorfindisp", "4000"}, {"valorfinemgar", "500"}, {"tributos", "40"}},
         4460,
         true,
         "Total Ações",
         "Somatória total de Ações"},
        {"opcoesacoes",
         {{"valorfinanceiro", "5000"}, {"tributos", "50"}},
         4950,
         true,
         "Total Opções Ações",
         "Somatória total de Opções Ações"},
        {"opcoesderiv",
         {{"valorfinanceiro", "6000"}, {"tributos", "60"}},
         5940,
         true,
         "Total Opções Derivativos",
         "Somatória total de Opções Derivativos"},
        {"opcoesflx",
         {{"valorfinanceiro", "7000"}, {"tributos", "70"}},
         6930,
         true,
         "Total Opções Flexiveis",
         "Somatória total de Opções Flexiveis"},
        {"termorv",
         {{"valorfinanceiro", "8000"}, {"tributos", "80"}},
         7920,
         false,
         "Total Renda Variavel",
         "Somatória total de Termo de Renda Variavel"},
        {"termorf",
         {{"valorfin", "9000"}, {"tributos", "90"}},
         8910,
         false,
         "Total Renda Fixa",
         "Somatória total de Termo de Renda Fixa"},
        {"futuros",
         {{"vlajuste", "10000"}, {"tributos", "100"}},
         9900,
         false,
         "Total Futuros",
         "Somatória total de Futuros"},
        {"swap",
         {{"vlmercadoativo", "11000"}, {"vlmercadopassivo", "1000"}, {"tributos", "110"}},
         9890,
         false,
         "Total Swap",
         "Somatória total de Swap"},
        {"caixa", {{"saldo", "12000"}}, 12000, false, "Total Caixa", "Somatória total de Caixa"},
        {"cotas",
         {{"qtgarantia", "10"}, {"puposicao", "1.5"}, {"qtdisponivel", "8000"}, {"tributos", "5"}},
         12010,
         false,
         "Total Cotas",
         "Somatória total de Cotas"},
        {"imoveis",
         {{"valorcontabil", "14000"}},
         14000,
         false,
         "Total Imoveis",
         "Somatória total de Imoveis"},
        {"opcoesmoedasotc",
         {{"valorfinanceiro", "15000"}, {"tributos", "150"}},
         14850,
         true,
         "Total Opções Moedas OTC",
         "Somatória total de Opções Moedas OTC"},
        {"forwardsmoedas",
         {{"valorfinanceiro", "16000"}, {"tributos", "160"}},
         15840,
         false,
         "Total Forwards Moedas",
         "Somatória total de Forwards Moedas"},
        {"participacoes",
         {{"valorfinanceiro", "17000"}},
         17000,
         false,
         "Total Participações",
         "Somatória total de Participações"},
        {"fidc", {{"valorfinanceiro", "18000"}}, 18000, false, "Total FIDC", "Somatória total de FIDC"},
    }};
    return rows;
}

inline std::string money(double value) {
    std::array<char, 64> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.2f", value));
    return text.data();
}

/// The class rule of the operations wants a class in these three sections; it is no matter of the sums.
inline bool needsClass(std::string_view tag) {
    return tag == "titpublico" || tag == "titprivado" || tag == "debenture";
}

/// An element of a section, of class "C" where one is needed.
inline std::string neutral(const Section& section, const std::string& inside = "") {
    return element(section.tag, section.fields,
                   inside + (needsClass(section.tag) ? "<classeoperacao>C</classeoperacao>" : ""));
}

inline std::size_t indexOf(const Section& section) {
    return static_cast<std::size_t>(&section - table().data());
}

/// A declared value that is off by far, so that the statement of sums comes and can be read.
inline const std::string farOff = "900000000";

inline std::vector<Fragment> statementOf(const std::string& sectionsXml,
                                         const std::string& declared = farOff) {
    return findingsOf(posicao(fundo(headerWith(declared) + sectionsXml)));
}

} // namespace tv::test
