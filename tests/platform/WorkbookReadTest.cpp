#include "platform/ScratchFolder.h"
#include "platform/Throws.h"
#include "platform/Workbook.h"
#include "platform/WorkbookBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv {
namespace {

using namespace std::string_literals;
using test::cell;
using test::CellRows;
using test::label;
using test::number32;
using test::number64;
using test::record;
using test::words;
using testing::ElementsAre;

/// A workbook that another program has saved.
class SavedBy : public testing::TestWithParam<const char*> {
protected:
    WorkbookTable sheet(const std::string& name) const {
        return Workbook(std::filesystem::path(TV_SOURCE_DIR) / "tests/fixtures/workbooks" / GetParam())
            .select("SELECT * FROM [" + name + "$]");
    }
};

TEST_P(SavedBy, CellsAreTheTextOfADocument) {
    const WorkbookTable table = sheet("tipos");
    std::string longText;
    for (int i = 0; i < 300; ++i) {
        longText += "ç";
    }
    EXPECT_THAT(table.columns, ElementsAre("caso", "valor"));
    EXPECT_EQ(table.rows, (CellRows{{"texto com zeros", "000123"},
                                    {"acentos", "Ação São João €"},
                                    {"quebra de linha", "linha 1\nlinha 2"},
                                    {"apóstrofo", "d'água"},
                                    {"texto longo", longText},
                                    {"inteiro", "20240131"},
                                    {"decimal", "1000.5"},
                                    {"negativo", "-42.25"},
                                    {"zero", "0"},
                                    {"quinze algarismos", "123456789012345"},
                                    {"grande", "100000000000000000000"},
                                    {"pequeno", "0.000001"},
                                    {"centavos", "0.07"},
                                    {"percentual", "0.125"},
                                    {"data", "20240131"},
                                    {"data e hora", "20240229"},
                                    {"hora", "183005"},
                                    {"verdadeiro", "S"},
                                    {"falso", "N"},
                                    {"fórmula número", "0.3"},
                                    {"fórmula texto", "TEXTO COM ZEROS"},
                                    {"fórmula data", "20240131"},
                                    {"fórmula verdade", "S"},
                                    {"fórmula erro", std::nullopt},
                                    {"fórmula vazia", std::nullopt},
                                    {"vazio", std::nullopt}}));
}

TEST_P(SavedBy, ATableBeginsWhereTheSheetDoes) {
    const WorkbookTable table = sheet("COTAÇÕES");
    EXPECT_THAT(table.columns, ElementsAre("Código", "F2", "código1", "F4"));
    EXPECT_EQ(table.rows,
              (CellRows{{"000123", {}, {}, {}}, {{}, {}, {}, {}}, {{}, "2", "último", "sem nome"}}));
}

TEST_P(SavedBy, AnEmptySheetIsAnEmptyTable) {
    const WorkbookTable table = sheet("vazia");
    EXPECT_TRUE(table.columns.empty());
    EXPECT_TRUE(table.rows.empty());
}

TEST_P(SavedBy, AnotherTableCanBeAdded) {
    const test::ScratchFolder folder;
    const std::filesystem::path copy = folder / "copia.xls";
    std::filesystem::copy_file(std::filesystem::path(TV_SOURCE_DIR) / "tests/fixtures/workbooks" / GetParam(),
                               copy);
    Workbook book(copy);
    book.execute("CREATE TABLE nova( a varchar(255)) ");
    book.execute("INSERT INTO tipos( caso, valor) VALUES ('novo', '007') ");
    book.close();
    const Workbook again(copy);
    WorkbookTable expected = sheet("tipos");
    expected.rows.push_back({"novo", "007"});
    EXPECT_EQ(again.select("SELECT * FROM [tipos$]").rows, expected.rows);
    EXPECT_EQ(again.select("SELECT * FROM [Cotações$]").rows, sheet("Cotações").rows);
    EXPECT_THAT(again.select("SELECT * FROM [nova$]").columns, ElementsAre("a"));
}

INSTANTIATE_TEST_SUITE_P(Workbook, SavedBy, testing::Values("libreoffice.xls", "gnumeric.xls"),
                         [](const auto& file) { return std::string(file.param).substr(0, 5); });

/// The table of a workbook that is put together here.
WorkbookTable tableOf(std::string_view globals, std::string_view cells) {
    const test::ScratchFolder folder;
    return Workbook(folder.file("a.xls", test::fileOf(globals, cells))).select("SELECT * FROM [s$]");
}

/// A table of one column, "a", of the cells that each record puts below it.
CellRows columnOf(std::string_view globals, std::string_view cells) {
    return tableOf(globals, label(0, 0, "a") + std::string(cells)).rows;
}

std::string format(std::size_t number, std::string_view code) {
    return record(0x041E, words({number, code.size()}) + '\0' + std::string(code));
}
std::string cellFormat(std::size_t number) {
    return record(0x00E0, words({0, number}) + std::string(16, '\0'));
}

TEST(WorkbookRecords, NumbersOfAllKinds) {
    EXPECT_EQ(columnOf({}, cell(0x0203, 1, 0, number64(1000.5)) +
                               cell(0x027E, 2, 0, number32(5U << 2U | 2U)) +
                               cell(0x027E, 3, 0, number32(12345U << 2U | 3U))),
              (CellRows{{"1000.5"}, {"5"}, {"123.45"}}));
    // Numbers of cells side by side share a record.
    const std::string two =
        words({1, 0, 0}) + number32(7U << 2U | 2U) + words({0}) + number32(8U << 2U | 2U) + words({1});
    EXPECT_EQ(tableOf({}, label(0, 0, "a") + label(0, 1, "b") + record(0x00BD, two)).rows,
              (CellRows{{"7", "8"}}));
}

TEST(WorkbookRecords, TruthValuesErrorsAndBlanks) {
    EXPECT_EQ(columnOf({}, cell(0x0205, 1, 0, "\1\0"s) + cell(0x0205, 2, 0, "\0\0"s) +
                               cell(0x0205, 3, 0, "\7\1"s) + cell(0x0201, 4, 0, "") + label(5, 0, "") +
                               label(6, 0, "z")),
              (CellRows{{"S"}, {"N"}, {{}}, {{}}, {{}}, {"z"}}));
}

TEST(WorkbookRecords, DatesFollowTheCellsFormat) {
    const std::string globals = cellFormat(0) + cellFormat(14) + cellFormat(164) + cellFormat(165) +
                                format(164, "yyyy\\-mm\\-dd") + format(165, "#,##0.00");
    const auto number = [](std::size_t row, std::size_t use) {
        return cell(0x0203, row, 0, number64(45322), use);
    };
    const std::string cells = number(1, 0) + number(2, 1) + number(3, 2) + number(4, 3) + number(5, 99);
    EXPECT_EQ(columnOf(globals, cells),
              (CellRows{{"45322"}, {"20240131"}, {"20240131"}, {"45322"}, {"45322"}}));
    EXPECT_EQ(columnOf(record(0x0022, words({1})) + globals, number(1, 1)), (CellRows{{"20280201"}}));
}

TEST(WorkbookRecords, FormulasCountByTheirValue) {
    const auto formula = [](std::size_t row, const std::string& result) {
        return cell(0x0006, row, 0, result + std::string(6, '\0'));
    };
    const std::string shared = record(0x04BC, std::string(10, '\0'));
    const std::string cells = formula(1, number64(0.5)) + formula(2, "\0\0\0\0\0\0\xFF\xFF"s) + shared +
                              record(0x0207, words({3}) + "\0abc"s) + formula(3, "\1\0\1\0\0\0\xFF\xFF"s) +
                              formula(4, "\2\0\7\0\0\0\xFF\xFF"s) + formula(5, "\3\0\0\0\0\0\xFF\xFF"s) +
                              record(0x0207, words({1}) + "\0x"s) + formula(6, number64(6));
    EXPECT_EQ(columnOf({}, cells), (CellRows{{"0.5"}, {"abc"}, {"S"}, {{}}, {{}}, {"6"}}));
}

/// A table of shared strings and the cells that show them, one below the other.
CellRows shared(std::string_view strings, std::size_t count) {
    std::string cells;
    for (std::size_t i = 0; i < count; ++i) {
        cells += cell(0x00FD, i + 1, 0, number32(i));
    }
    return columnOf(strings, cells);
}

TEST(WorkbookRecords, SharedStringsMayBeCutAnywhere) {
    const std::string head = number32(2) + number32(2);
    const std::string wide = words({'l', 0x00E1, 0x20AC});
    // Cut inside of a string, where the width of its characters changes.
    EXPECT_EQ(shared(record(0x00FC, head + words({6}) + "\0abc"s) +
                         record(0x003C, "\1"s + wide + words({1}) + "\0x"s),
                     2),
              (CellRows{{"abclá€"}, {"x"}}));
    // Cut between two strings, and inside of a string's head.
    EXPECT_EQ(shared(record(0x00FC, head + words({1}) + "\0a"s) + record(0x003C, words({1}) + "\0b"s), 2),
              (CellRows{{"a"}, {"b"}}));
    EXPECT_EQ(shared(record(0x00FC, head + "\1"s) + record(0x003C, "\0\0a"s + words({1}) + "\0b"s), 2),
              (CellRows{{"a"}, {"b"}}));
    // An empty record in between.
    EXPECT_EQ(shared(record(0x00FC, head + words({1}) + "\0a"s) + record(0x003C, "") +
                         record(0x003C, words({1}) + "\0b"s),
                     2),
              (CellRows{{"a"}, {"b"}}));
}

TEST(WorkbookRecords, LooksAndSoundsOfStringsArePassedOver) {
    const std::string rich = words({2}) + "\x08"s + words({1}) + "ab" + std::string(4, '!');
    const std::string phonetic =
        words({2}) + "\x0C"s + words({1}) + number32(5) + "cd" + std::string(4, '!') + std::string(5, '?');
    EXPECT_EQ(shared(record(0x00FC, number32(3) + number32(3) + rich + phonetic + words({1}) + "\0x"s), 3),
              (CellRows{{"ab"}, {"cd"}, {"x"}}));
}

TEST(WorkbookRecords, PairsOfUnitsAreOneCharacter) {
    const std::string pair = words({2}) + '\1' + words({0xD83D, 0xDE00});
    const std::string lone = words({1}) + '\1' + words({0xD83D});
    EXPECT_EQ(shared(record(0x00FC, number32(2) + number32(2) + pair + lone), 2),
              (CellRows{{"😀"}, {"\xEF\xBF\xBD"}}));
}

TEST(WorkbookRecords, DrawingsInsideOfASheetArePassedOver) {
    const std::string drawing =
        record(0x0809, words({0x0600, 0x20, 0, 0})) + label(1, 0, "não") + record(0x000A, "");
    EXPECT_EQ(columnOf({}, drawing + label(1, 0, "sim")), (CellRows{{"sim"}}));
}

TEST(WorkbookRecords, NamesOfColumnsAreMadeUnique) {
    const WorkbookTable table = tableOf({}, label(0, 0, "a") + label(0, 1, "A") + label(0, 2, "a1") +
                                                label(0, 3, "a") + label(1, 4, "x") + label(0, 5, "F5"));
    EXPECT_THAT(table.columns, ElementsAre("a", "A1", "a11", "a2", "F5", "F51"));
}

TEST(WorkbookRecords, RowsMayStandInAnyOrder) {
    EXPECT_EQ(columnOf({}, label(3, 0, "3") + label(1, 0, "1")), (CellRows{{"1"}, {{}}, {"3"}}));
}

} // namespace
} // namespace tv
