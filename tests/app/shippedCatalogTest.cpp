// Walks the catalog as it ships: what its layouts must look like so that the composer, the validator and the
// workbook exchange can work with them.

#include "ShippedCatalog.h"

#include "platform/XmlDocument.h"
#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace tv::test {
namespace {

TEST(ShippedCatalog, HoldsTheSevenLayouts) {
    std::vector<std::string> tags;
    for (const auto& layout : shippedCatalog().getBoletos()) {
        tags.push_back(layout->getTag());
    }
    EXPECT_EQ(tags,
              (std::vector<std::string>{"arquivoposicao_4_01", "arquivoposicao_4_00", "arquivoposicao_3_00",
                                        "ArquivoPosicao_2_01", "posicao_passivo_analitico_v100",
                                        "movimento_1_00", "movimento_2_00"}));
}

TEST(ShippedCatalog, NamesTheVersionsThatFileNamesGoBy) {
    const Boletos& layouts = shippedCatalog().getBoletos();
    EXPECT_EQ(layouts.Item("arquivoposicao_4_00")->getVersao(), "4.00.00");
    EXPECT_EQ(layouts.Item("arquivoposicao_4_01")->getVersao(), "4.01.00");
}

TEST(ShippedCatalog, IsSilentInTheLog) {
    EXPECT_EQ(shippedCatalog().getLogger()->getLevel(), 0);
}

TEST(ShippedCatalog, EveryLayoutHasComposerSchemaAndFormula) {
    for (const auto& layout : shippedCatalog().getBoletos()) {
        EXPECT_TRUE(layout->hasTramador()) << layout->getTag();
        EXPECT_TRUE(std::filesystem::exists(layout->getValidador())) << layout->getValidador();
        EXPECT_TRUE(std::filesystem::exists(layout->getFormula())) << layout->getFormula();
    }
}

TEST(ShippedCatalog, EveryFieldIsExplained) {
    walkFields([](const clsCampo& field, const std::string& path) {
        EXPECT_GT(text::length(field.getDescricao()), 10U) << path;
        EXPECT_FALSE(field.getNome().empty()) << path;
        EXPECT_GE(field.getColuna().getLargura(), 500) << path;
        EXPECT_NE(field.getColuna().getAlinhamento(), 0) << path;
    });
}

TEST(ShippedCatalog, NamesHaveNoPointsThatTheReportWouldDrop) {
    walkCatalog([](const SectionOwner&, const clsSecao& section, const std::string& path) {
        EXPECT_FALSE(text::contains(section.getNome(), ".")) << path;
    });
    walkFields([](const clsCampo& field, const std::string& path) {
        EXPECT_FALSE(text::contains(field.getNome(), ".")) << path;
    });
}

TEST(ShippedCatalog, MasksAreKnownToTheFormatter) {
    using format::PatternKind;
    walkFields([](const clsCampo& field, const std::string& path) {
        const auto display = format::kindOf(field.getColuna().getMaskDisplay());
        const auto output = format::kindOf(field.getColuna().getMaskOutput());
        EXPECT_NE(display, PatternKind::Literal) << path << ": " << field.getColuna().getMaskDisplay();
        EXPECT_NE(output, PatternKind::Literal) << path << ": " << field.getColuna().getMaskOutput();
        const std::string& input = field.getColuna().getMaskInput();
        EXPECT_TRUE(input == "dd/mm/yyyy" || input.find_first_not_of('#') == std::string::npos)
            << path << ": " << input;
    });
}

TEST(ShippedCatalog, TypesAndMasksAgree) {
    walkFields([](const clsCampo& field, const std::string& path) {
        const clsColuna& column = field.getColuna();
        switch (field.getDado().getTipo()) {
        case 133:
            EXPECT_EQ(column.getMaskOutput(), "YYYYMMDD") << path;
            EXPECT_EQ(column.getMaskInput(), "dd/mm/yyyy") << path;
            break;
        case 5:
            EXPECT_EQ(format::kindOf(column.getMaskOutput()), format::PatternKind::Number) << path;
            EXPECT_FALSE(text::contains(column.getMaskOutput(), ",")) << path;
            break;
        case 11:
            EXPECT_FALSE(column.hasTabela()) << path;
            break;
        case 3:
            EXPECT_LE(std::stoi(field.getDado().getTamanho()), 4) << path << ": larger numbers are DECIMAL";
            break;
        default:
            EXPECT_GT(std::stoi(field.getDado().getTamanho()), 0) << path;
        }
    });
}

TEST(ShippedCatalog, EveryTableServesAField) {
    std::set<std::string> used;
    walkFields(
        [&](const clsCampo& field, const std::string&) { used.insert(field.getColuna().getTabela()); });
    for (const auto& table : *shippedCatalog().getTabelas()) {
        EXPECT_TRUE(used.contains(table->key)) << table->key;
        EXPECT_GT(table->linha.Count(), 1U) << table->key;
    }
}

TEST(ShippedCatalog, TheMasterIsTheFirstSectionOfItsParentAndHasAKey) {
    walkCatalog([](const SectionOwner& owner, const clsSecao& section, const std::string& path) {
        if (section.isSecaoMestre()) {
            EXPECT_EQ(&section, owner.getSecoes().Item(1).get()) << path;
            EXPECT_NE(section.getCampoChave(), nullptr) << path;
        }
    });
}

TEST(ShippedCatalog, GroupsSortByNameInTheirOrder) {
    for (const auto& layout : shippedCatalog().getBoletos()) {
        std::vector<std::string> names;
        for (const auto& section : layout->getSecoes()) {
            if (!section->getTagGrupo().empty()) {
                names.push_back(section->getNome());
            }
        }
        EXPECT_TRUE(std::is_sorted(names.begin(), names.end())) << layout->getTag();
    }
}

TEST(ShippedCatalog, NoTagIsAPieceOfATagAboveIt) {
    for (const auto& layout : shippedCatalog().getBoletos()) {
        walkSections(*layout, layout->getTag(),
                     [](const SectionOwner&, const clsSecao& section, const std::string& path) {
                         const std::string above = path.substr(0, path.size() - section.getTag().size() - 1);
                         EXPECT_FALSE(text::contains(above, section.getTag())) << path;
                     });
    }
}

TEST(ShippedCatalog, SectionsHoldEitherFieldsOrSections) {
    for (const auto& layout : shippedCatalog().getBoletos()) {
        walkSections(*layout, layout->getTag(),
                     [&](const SectionOwner& owner, const clsSecao& section, const std::string& path) {
                         const bool hasFields = !section.getCampos().empty();
                         EXPECT_NE(hasFields, !section.getSecoes().empty()) << path;
                         EXPECT_TRUE(hasFields || &owner == layout.get())
                             << path << ": a wrapper inside a section";
                     });
    }
}

TEST(ShippedCatalog, ALayoutWithoutAGroupHasOneSection) {
    for (const auto& layout : shippedCatalog().getBoletos()) {
        EXPECT_TRUE(layout->hasGrupo() || layout->getSecoes().Count() == 1) << layout->getTag();
    }
}

TEST(ShippedCatalog, OccurrencesAreOneOrMany) {
    walkCatalog([](const SectionOwner&, const clsSecao& section, const std::string& path) {
        EXPECT_TRUE(section.getOcorrencia() == "1" || section.getOcorrencia() == "*") << path;
    });
}

// The workbook import takes the sections from the catalog's text: the first attribute of a SECAO is its tag,
// and the layouts stand in BOLETOS/BOLETO.
TEST(ShippedCatalog, KeepsTheShapeThatTheWorkbookImportAsksFor) {
    XmlDocument catalog;
    ASSERT_TRUE(catalog.load(TV_SOURCE_DIR "/data/TORVA_TramadorValidador.xml"));
    EXPECT_EQ(catalog.selectNodes("//BOLETO").size(), catalog.selectNodes("//BOLETOS/BOLETO").size());
    for (const XmlNode& section : catalog.selectNodes("//SECAO")) {
        EXPECT_EQ(section.attributes().front().first, "tag") << section.outerXml().substr(0, 80);
    }
    for (const std::string tag : {"ArquivoPosicao_2_01", "posicao_passivo_analitico_v100"}) {
        EXPECT_GT(catalog.selectNodes("//BOLETOS/BOLETO[@tag='" + tag + "']/SECAO[CAMPO]").size(), 2U) << tag;
    }
    for (const std::string tag : {"arquivoposicao_3_00", "arquivoposicao_4_00", "arquivoposicao_4_01",
                                  "movimento_1_00", "movimento_2_00"}) {
        for (const std::string root : {"fundo", "carteira"}) {
            const std::string query = "//BOLETOS/BOLETO[@tag='" + tag + "']/SECAO[@tag='" + root + "']/*";
            EXPECT_GT(catalog.selectNodes(query).size(), 2U) << query;
        }
    }
}

} // namespace
} // namespace tv::test
