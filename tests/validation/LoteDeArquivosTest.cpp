#include "validation/LoteDeArquivos.h"

#include "logging/LogFolder.h"
#include "platform/Error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tv;
using namespace tv::test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using Paths = std::vector<std::string>;

void addRow(RecordSet& rows, const std::string& arquivo) {
    rows.AddNew();
    rows.set("arquivo", arquivo);
    rows.Update();
}

DateTime at(int hour, int minute, int second) {
    return clock::at(2026, 3, 14, hour, minute, second);
}

} // namespace

TEST(LoteDeArquivos, RecordSetHasTheColumnsOfTheTable) {
    const auto rows = lote::criaRegistros();
    ASSERT_TRUE(rows->isOpen());
    struct Row {
        std::string name;
        ColumnType type;
        int size;
    };
    const std::vector<Row> table{
        {"status", ColumnType::FixedChar, 0},    {"boleto", ColumnType::FixedChar, 252},
        {"arquivo", ColumnType::FixedChar, 252}, {"tamanho", ColumnType::Double, 8},
        {"tempo", ColumnType::FixedChar, 5},     {"isValid", ColumnType::Boolean, 0},
        {"validou", ColumnType::Boolean, 0},     {"isNew", ColumnType::Boolean, 0},
        {"isModified", ColumnType::Boolean, 0},
    };
    ASSERT_EQ(rows->columns().size(), table.size());
    for (std::size_t i = 0; i < table.size(); ++i) {
        EXPECT_EQ(rows->columns()[i].name, table[i].name);
        EXPECT_EQ(rows->columns()[i].type, table[i].type) << table[i].name;
        EXPECT_EQ(rows->columns()[i].size, table[i].size) << table[i].name;
    }
}

TEST(LoteDeArquivos, NewPathsAreThoseThatNoRowHolds) {
    struct Row {
        const char* about;
        Paths held;
        Paths chosen;
        Paths left;
    };
    const std::vector<Row> table{
        {"empty batch", {}, {"/a.xml", "/b.xml"}, {"/a.xml", "/b.xml"}},
        {"one is held", {"/a.xml"}, {"/a.xml", "/b.xml"}, {"/b.xml"}},
        {"all are held", {"/a.xml", "/b.xml"}, {"/b.xml", "/a.xml"}, {}},
        {"case tells files apart", {"/a.xml"}, {"/A.xml"}, {"/A.xml"}},
        {"accents too", {"/ação.xml"}, {"/Ação.xml", "/ação.xml"}, {"/Ação.xml"}},
        {"blanks around do not", {" /a.xml "}, {"/a.xml  "}, {}},
        {"blanks inside do", {"/a b.xml"}, {"/ab.xml"}, {"/ab.xml"}},
        {"the same file chosen twice", {}, {"/a.xml", "/a.xml"}, {"/a.xml"}},
        {"other spelling of the same file", {"/a.xml"}, {"/./a.xml"}, {"/./a.xml"}},
        {"nothing chosen", {"/a.xml"}, {}, {}},
    };
    for (const Row& row : table) {
        const auto rows = lote::criaRegistros();
        for (const std::string& arquivo : row.held) {
            addRow(*rows, arquivo);
        }
        EXPECT_EQ(lote::novos(*rows, row.chosen), row.left) << row.about;
    }
}

TEST(LoteDeArquivos, AddedFileIsUnchecked) {
    const TemporaryFolder folder;
    const std::string path = folder.write("a.xml", std::string(2048, 'x')).string();
    const auto rows = lote::criaRegistros();
    lote::adiciona(*rows, path);
    ASSERT_EQ(rows->RecordCount(), 1U);
    EXPECT_TRUE(isNull(rows->get("status")));
    EXPECT_EQ(rows->get("boleto"), Value(path));
    EXPECT_EQ(rows->get("arquivo"), Value(path));
    EXPECT_EQ(rows->get("tamanho"), Value(2.0));
    EXPECT_EQ(rows->get("tempo"), Value(std::string("00:00")));
    EXPECT_EQ(rows->get("isValid"), Value(false));
    EXPECT_EQ(rows->get("validou"), Value(false));
    EXPECT_EQ(rows->get("isNew"), Value(true));
    EXPECT_EQ(rows->get("isModified"), Value(false));
}

TEST(LoteDeArquivos, SizeKeepsItsFraction) {
    const TemporaryFolder folder;
    const auto rows = lote::criaRegistros();
    lote::adiciona(*rows, folder.write("a.xml", std::string(1536, 'x')).string());
    EXPECT_EQ(rows->get("tamanho"), Value(1.5));
    lote::adiciona(*rows, folder.write("b.xml", "").string());
    EXPECT_EQ(rows->get("tamanho"), Value(0.0));
}

TEST(LoteDeArquivos, LongPathStaysWhole) {
    const TemporaryFolder folder;
    const std::string path =
        folder.write(std::string(200, 'p') + "/" + std::string(200, 'n') + ".xml", "x").string();
    ASSERT_GT(path.size(), 400U);
    const auto rows = lote::criaRegistros();
    lote::adiciona(*rows, path);
    EXPECT_EQ(rows->get("boleto"), Value(path));
    EXPECT_EQ(rows->get("arquivo"), Value(path));
}

TEST(LoteDeArquivos, FileThatIsNotThereAddsNothing) {
    const auto rows = lote::criaRegistros();
    try {
        lote::adiciona(*rows, "/no/such/file.xml");
        FAIL() << "expected Error 53";
    } catch (const Error& failure) {
        EXPECT_EQ(failure.number(), errc::fileNotFound);
    }
    EXPECT_EQ(rows->RecordCount(), 0U);
}

TEST(LoteDeArquivos, DroppedFoldersGiveTheirXmlFiles) {
    const TemporaryFolder folder;
    folder.write("pasta/b.xml", "x");
    folder.write("pasta/a.XML", "x");
    folder.write("pasta/leia.txt", "x");
    folder.write("pasta/sub/c.xml", "x");
    std::filesystem::create_directory(folder.path() / "pasta/d.xml");
    const auto loose = folder.write("solto.Xml", "x");
    const auto text = folder.write("solto.txt", "x");
    const auto inFolder = folder.path() / "pasta";
    EXPECT_THAT(lote::arquivosXml({loose, inFolder, text}),
                ElementsAre(loose, inFolder / "a.XML", inFolder / "b.xml"));
    EXPECT_THAT(lote::arquivosXml({text, folder.path() / "nada"}), IsEmpty());
}

TEST(LoteDeArquivos, CountIsGrouped) {
    EXPECT_EQ(lote::contagem(0), "0 Arquivos");
    EXPECT_EQ(lote::contagem(1), "1 Arquivos");
    EXPECT_EQ(lote::contagem(999), "999 Arquivos");
    EXPECT_EQ(lote::contagem(1234), "1,234 Arquivos");
    EXPECT_EQ(lote::contagem(1234567), "1,234,567 Arquivos");
}

TEST(LoteDeArquivos, TimeIsMinutesAndSecondsOnly) {
    struct Row {
        const char* about;
        DateTime start;
        DateTime end;
        const char* text;
    };
    const std::vector<Row> table{
        {"at once", at(10, 0, 0), at(10, 0, 0), "00:00"},
        {"seconds", at(10, 0, 57), at(10, 1, 4), "00:07"},
        {"minutes", at(10, 0, 0), at(10, 59, 59), "59:59"},
        {"hours are dropped", at(10, 0, 0), at(11, 2, 0), "02:00"},
        {"a whole hour", at(10, 0, 0), at(11, 0, 0), "00:00"},
        {"over midnight", at(23, 59, 50), at(23, 59, 50) + std::chrono::seconds(25), "00:25"},
        {"more than a day", at(1, 0, 0), at(1, 0, 0) + std::chrono::hours(25) + std::chrono::seconds(3),
         "00:03"},
        {"the clock is set back an hour", at(10, 0, 0), at(9, 0, 5), "00:05"},
    };
    for (const Row& row : table) {
        EXPECT_EQ(lote::tempoEntre(row.start, row.end), row.text) << row.about;
    }
}

TEST(LoteDeArquivos, QuestionBeforeRemovalCounts) {
    EXPECT_EQ(lote::perguntaRemocao(1), "O boleto selecionado será removido da lista. Deseja continuar?");
    for (const std::size_t several : {2U, 3U, 1000U}) {
        EXPECT_EQ(lote::perguntaRemocao(several),
                  "Os boletos selecionados serão removidos da lista. Deseja continuar?");
    }
}

TEST(LoteDeArquivos, OnlyFilesThatDidNotPassOpen) {
    using lote::Reacao;
    struct Row {
        bool validou;
        bool isValid;
        const char* status;
        Reacao expected;
    };
    const std::vector<Row> table{
        {false, false, "", Reacao::Nenhuma},           // added
        {true, true, "", Reacao::DizValido},           // valid
        {true, false, "Não válido", Reacao::Abre},     // not valid
        {true, false, "  Não válido ", Reacao::Abre},  // blanks around do not count
        {true, false, "", Reacao::Nenhuma},            // opened in the editor
        {true, false, "não válido", Reacao::Nenhuma},  // case counts
        {false, true, "", Reacao::Nenhuma},            // not checked, whatever else
        {false, false, "Não válido", Reacao::Nenhuma}, // the same
    };
    for (const Row& row : table) {
        EXPECT_EQ(lote::reacao(row.validou, row.isValid, row.status), row.expected)
            << row.validou << row.isValid << " '" << row.status << "'";
    }
}

TEST(LoteDeArquivos, AFileTakesThePlaceOfTheRowsThatHoldItsPath) {
    const TemporaryFolder folder;
    const auto rows = lote::criaRegistros();
    const std::string path = folder.write("a.xml", std::string(512, 'x')).string();
    const std::string other = folder.write("A.XML", "x").string();
    lote::adiciona(*rows, path);
    lote::adiciona(*rows, other);
    rows->MoveFirst();
    rows->set(lote::coluna::validou, true);
    rows->Update();
    lote::substitui(*rows, path);
    ASSERT_EQ(rows->RecordCount(), 2U);
    EXPECT_EQ(rows->get(lote::coluna::arquivo), Value(path));
    EXPECT_EQ(rows->get(lote::coluna::validou), Value(false));
    EXPECT_EQ(rows->get(lote::coluna::isNew), Value(true));
    EXPECT_EQ(rows->get(lote::coluna::tamanho), Value(0.5));
    rows->MoveFirst();
    EXPECT_EQ(rows->get(lote::coluna::arquivo), Value(other));
}

TEST(LoteDeArquivos, AFileThatIsNotThereTakesAPlaceWithoutASize) {
    const auto rows = lote::criaRegistros();
    lote::substitui(*rows, "/no/such/file.xml");
    lote::substitui(*rows, "/no/such/file.xml");
    ASSERT_EQ(rows->RecordCount(), 1U);
    EXPECT_EQ(rows->get(lote::coluna::tamanho), Value(0.0));
    EXPECT_EQ(rows->get(lote::coluna::tempo), Value(std::string("00:00")));
}
