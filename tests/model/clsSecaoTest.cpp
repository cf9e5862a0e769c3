#include "model/clsSecao.h"
#include "logging/LogFolder.h"
#include "model/LayoutXml.h"
#include "platform/Clock.h"
#include "platform/RecordSet.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::CampoXml;
using test::GlobalLogger;
using test::occurrences;
using test::SecaoXml;
using test::startLogger;
using test::tables;
using test::TemporaryFolder;
using test::without;

/// A section that stands as the parent of those that `xml` describes.
clsSecao parentOf(const std::string& xml) {
    clsSecao pai;
    pai.setEstrutura(xml, tables(), pai);
    return pai;
}

std::shared_ptr<const clsSecao> only(const std::string& xml) {
    return parentOf(xml).getSecoes().Item(std::size_t{1});
}

std::int32_t errorOf(const std::string& xml) {
    try {
        parentOf(xml);
    } catch (const Error& error) {
        return error.number();
    }
    return 0;
}

TEST(SecaoTest, SectionWithNothingInsideLoadsAndIsEmpty) {
    const auto secao = only(SecaoXml().xml());
    EXPECT_TRUE(secao->getCampos().empty());
    EXPECT_TRUE(secao->getSecoes().empty());
    EXPECT_EQ(secao->getSecaoMestre(), nullptr);
}

TEST(SecaoTest, ReadsItsAttributesTrimmed) {
    const auto secao = only(SecaoXml{.tag = " fundo ",
                                     .nome = " Fundo ",
                                     .ocorrencia = " 1 ",
                                     .secaoMestre = " sim ",
                                     .nomeGrupo = " Grupo ",
                                     .tagGrupo = " grupo "}
                                .xml());
    EXPECT_EQ(secao->getTag(), "fundo");
    EXPECT_EQ(secao->getNome(), "Fundo");
    EXPECT_EQ(secao->getOcorrencia(), "1");
    EXPECT_TRUE(secao->isSecaoMestre());
    EXPECT_EQ(secao->getNomeGrupo(), "Grupo");
    EXPECT_EQ(secao->getTagGrupo(), "grupo");
    EXPECT_TRUE(secao->hasGrupo());
    EXPECT_TRUE(secao->isValido("qualquer"));
    EXPECT_FALSE(secao->isKeyField());
    EXPECT_TRUE(secao->hasParent());
}

TEST(SecaoTest, EachMissingAttributeRaisesError91) {
    for (const char* name : {"nome", "tag", "ocorrencia", "secaoMestre", "nomeGrupo", "tagGrupo"}) {
        EXPECT_EQ(errorOf(without(SecaoXml().xml(), name)), 91) << name;
    }
}

TEST(SecaoTest, KeyFieldIsEmptyWhereNoFieldIsMarked) {
    EXPECT_EQ(only(SecaoXml{.inside = CampoXml().xml()}.xml())->getCampoChave(), nullptr);
}

TEST(SecaoTest, LastMarkedFieldIsTheKey) {
    const auto secao =
        only(SecaoXml{.inside = CampoXml{.tag = "a", .campoChave = "SIM"}.xml() +
                                CampoXml{.tag = "b", .campoChave = "SIM"}.xml() + CampoXml{.tag = "c"}.xml()}
                 .xml());
    ASSERT_NE(secao->getCampoChave(), nullptr);
    EXPECT_EQ(secao->getCampoChave()->getTag(), "b");
    EXPECT_EQ(secao->getCampos().Count(), 3U);
    EXPECT_EQ(secao->getCampos().Item(std::size_t{3})->getTag(), "c");
}

TEST(SecaoTest, OneTagTwiceUnderAParentFails) {
    EXPECT_EQ(errorOf("<X>" + SecaoXml().xml() + SecaoXml().xml() + "</X>"), 457);
    EXPECT_EQ(errorOf("<X>" + SecaoXml{.tag = "a"}.xml() + SecaoXml{.tag = "A"}.xml() + "</X>"), 457);
    EXPECT_EQ(errorOf(SecaoXml{.inside = CampoXml().xml() + CampoXml().xml()}.xml()), 457);
}

TEST(SecaoTest, OneTagUnderTwoParentsLoads) {
    const SecaoXml child{.tag = "titulo"};
    const clsSecao pai = parentOf("<X>" + SecaoXml{.tag = "a", .inside = child.xml()}.xml() +
                                  SecaoXml{.tag = "b", .inside = child.xml()}.xml() + "</X>");
    EXPECT_EQ(pai.getSecoes().Item("a")->getSecoes().Count(), 1U);
    EXPECT_EQ(pai.getSecoes().Item("b")->getSecoes().Count(), 1U);
}

TEST(SecaoTest, SectionsKeepTheOrderOfTheDocumentAtEachLevel) {
    const clsSecao pai = parentOf(
        "<X>" +
        SecaoXml{.tag = "z", .inside = SecaoXml{.tag = "c"}.xml() + SecaoXml{.tag = "b"}.xml()}.xml() +
        SecaoXml{.tag = "a"}.xml() + "</X>");
    ASSERT_EQ(pai.getSecoes().Count(), 2U);
    EXPECT_EQ(pai.getSecoes().Item(std::size_t{1})->getTag(), "z");
    EXPECT_EQ(pai.getSecoes().Item(std::size_t{2})->getTag(), "a");
    EXPECT_EQ(pai.getSecoes().Item("z")->getSecoes().Item(std::size_t{1})->getTag(), "c");
    EXPECT_EQ(pai.getSecoes().Item("z")->getSecoes().Item(std::size_t{2})->getTag(), "b");
}

TEST(SecaoTest, OtherElementsAndSectionsInsideThemArePassedOver) {
    const auto secao = only(SecaoXml{.inside = "<AJUDA>texto</AJUDA><BLOCO>" + SecaoXml{.tag = "b"}.xml() +
                                               "</BLOCO>" + CampoXml().xml()}
                                .xml());
    EXPECT_EQ(secao->getCampos().Count(), 1U);
    EXPECT_TRUE(secao->getSecoes().empty());
    EXPECT_TRUE(parentOf("<X><Y>" + SecaoXml().xml() + "</Y></X>").getSecoes().empty());
}

TEST(SecaoTest, LastMarkedSectionIsTheMasterOfItsOwnParent) {
    const SecaoXml deep{.tag = "fundo", .secaoMestre = "SIM"};
    const clsSecao pai = parentOf("<X>" + SecaoXml{.tag = "a", .inside = deep.xml()}.xml() + "</X>");
    EXPECT_EQ(pai.getSecaoMestre(), nullptr);
    EXPECT_EQ(pai.getSecoes().Item("a")->getSecaoMestre()->getTag(), "fundo");

    const clsSecao two = parentOf("<X>" + SecaoXml{.tag = "a", .secaoMestre = "SIM"}.xml() +
                                  SecaoXml{.tag = "b", .secaoMestre = "SIM"}.xml() + "</X>");
    EXPECT_EQ(two.getSecaoMestre()->getTag(), "b");
}

TEST(SecaoTest, OnlyTheSectionThatReadsKeepsTheTables) {
    const clsSecao pai = parentOf("<X>" + SecaoXml().xml() + "</X>");
    EXPECT_NE(pai.getTabelas(), nullptr);
    EXPECT_EQ(pai.getSecoes().Item("fundo")->getTabelas(), nullptr);
}

TEST(SecaoTest, TextThatDoesNotParseAddsNothing) {
    const clsSecao pai = parentOf("<X>" + SecaoXml().xml());
    EXPECT_TRUE(pai.getSecoes().empty());
    EXPECT_NE(pai.getTabelas(), nullptr);
}

TEST(SecaoTest, FieldsAreReadBeforeTheSectionJoinsItsParent) {
    // The second section has a field without attributes and a taken tag: the field's fault comes first.
    EXPECT_EQ(errorOf("<X>" + SecaoXml().xml() + SecaoXml{.inside = "<CAMPO/>"}.xml() + "</X>"), 91);
    // The taken tag comes before faults of the sections inside.
    EXPECT_EQ(errorOf("<X>" + SecaoXml().xml() + SecaoXml{.inside = "<SECAO/>"}.xml() + "</X>"), 457);
}

struct ChildTest : ::testing::Test {
    std::shared_ptr<const clsSecao> secao =
        only(SecaoXml{.inside = CampoXml{.tag = "Valor"}.xml() + CampoXml{.tag = "titulo"}.xml() +
                                SecaoXml{.tag = "titulo"}.xml() + SecaoXml{.tag = "Acoes"}.xml()}
                 .xml());
};

TEST_F(ChildTest, FieldIsFoundInAnyCase) {
    for (const char* name : {"Valor", "valor", "VALOR"}) {
        EXPECT_EQ(&secao->GetChild(name), secao->getCampos().Item("valor").get()) << name;
        EXPECT_EQ(secao->findChild(name), &secao->GetChild(name)) << name;
    }
}

TEST_F(ChildTest, SectionIsFoundByItsExactTagOnly) {
    EXPECT_EQ(&secao->GetChild("Acoes"), secao->getSecoes().Item("acoes").get());
    EXPECT_THROW(secao->GetChild("acoes"), Error);
    EXPECT_EQ(secao->findChild("ACOES"), nullptr);
}

TEST_F(ChildTest, SectionHidesAFieldOfItsTag) {
    EXPECT_EQ(secao->findChild("titulo"), secao->getSecoes().Item("titulo").get());
    EXPECT_EQ(secao->findChild("TITULO"), secao->getCampos().Item("titulo").get());
}

TEST_F(ChildTest, AWalkFindsTheSameFromEveryPlace) {
    for (std::size_t start = 0; start < 6; ++start) {
        for (const char* name : {"Valor", "VALOR", "titulo", "TITULO", "Acoes", "acoes", "ausente"}) {
            std::size_t place = start;
            EXPECT_EQ(secao->nextChild(name, place), secao->findChild(name)) << name << " from " << start;
            EXPECT_EQ(secao->nextChild(name, place), secao->findChild(name))
                << name << " again from " << place;
        }
    }
}

TEST_F(ChildTest, UnknownNameRaisesError5) {
    try {
        secao->GetChild("ausente");
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), 5);
    }
    EXPECT_EQ(secao->findChild("ausente"), nullptr);
}

TEST(RecordSetOfSectionTest, SectionWithoutFieldsGivesTheTwoRowColumns) {
    const auto recordSet = only(SecaoXml().xml())->createRecordSet();
    ASSERT_NE(recordSet, nullptr);
    EXPECT_TRUE(recordSet->isOpen());
    ASSERT_EQ(recordSet->columns().size(), 2U);
    EXPECT_EQ(recordSet->columns()[0].name, "rowID");
    EXPECT_EQ(recordSet->columns()[0].type, ColumnType::Integer);
    EXPECT_EQ(recordSet->columns()[1].name, "rowMaster");
    EXPECT_EQ(recordSet->columns()[1].type, ColumnType::Integer);
}

TEST(RecordSetOfSectionTest, ColumnsFollowTheFields) {
    struct {
        const char* tipo;
        ColumnType type;
        int size;
    } const table[] = {{"DECIMAL", ColumnType::Double, 8},   {"TEXTO", ColumnType::FixedChar, 12},
                       {"OUTRO", ColumnType::FixedChar, 12}, {"INTEIRO", ColumnType::Integer, 0},
                       {"BOOLEAN", ColumnType::Boolean, 0},  {"DATA", ColumnType::Date, 0}};
    std::string fields;
    for (const auto& row : table) {
        fields += CampoXml{.tag = row.tipo, .tipo = row.tipo, .tamanho = "12"}.xml();
    }
    const auto recordSet = only(SecaoXml{.inside = fields}.xml())->createRecordSet();
    ASSERT_NE(recordSet, nullptr);
    ASSERT_EQ(recordSet->columns().size(), std::size(table) + 2);
    for (std::size_t i = 0; i < std::size(table); ++i) {
        EXPECT_EQ(recordSet->columns()[i].name, table[i].tipo);
        EXPECT_EQ(recordSet->columns()[i].type, table[i].type) << table[i].tipo;
        EXPECT_EQ(recordSet->columns()[i].size, table[i].size) << table[i].tipo;
    }
}

TEST(RecordSetOfSectionTest, SizeThatIsNoNumberGivesNothingAndIsLogged) {
    const TemporaryFolder folder;
    const clock::Frozen now(clock::at(2024, 3, 5, 14, 7, 9));
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, library::level::all));
    EXPECT_EQ(only(SecaoXml{.inside = CampoXml{.tamanho = "dez"}.xml()}.xml())->createRecordSet(), nullptr);
    const std::string log = folder.read("log20240305.txt");
    EXPECT_EQ(occurrences(log, "14:07:09 - STACK  clsgetRecordSet\r\n"), 1U);
    EXPECT_EQ(occurrences(log, "14:07:09 - FATAL  clsgetRecordSet"), 1U);
    EXPECT_EQ(occurrences(log, "[13]]\r\n"), 1U);
    EXPECT_EQ(occurrences(log, "14:07:09 - END    clsgetRecordSet\r\n"), 1U);
}

TEST(RecordSetOfSectionTest, SizeMattersOnlyForTexts) {
    const CampoXml decimal{.tipo = "DECIMAL", .tamanho = "18,2"};
    EXPECT_NE(only(SecaoXml{.inside = decimal.xml()}.xml())->createRecordSet(), nullptr);
}

} // namespace
} // namespace tv
