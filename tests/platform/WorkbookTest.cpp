#include "platform/Workbook.h"

#include "platform/ScratchFolder.h"
#include "platform/Throws.h"
#include "platform/WorkbookBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <sys/resource.h>

namespace tv {
namespace {

using test::CellRows;
using testing::ElementsAre;

/// What a sheet of a file holds, read anew.
WorkbookTable sheetOf(const std::filesystem::path& file, const std::string& name) {
    return Workbook(file).select("SELECT * FROM [" + name + "$]");
}

class Store : public testing::Test {
protected:
    std::optional<std::int32_t> failure(std::string_view statement) {
        return test::errorOf([&] { book_.execute(statement); });
    }
    std::optional<std::int32_t> questionFailure(std::string_view statement) {
        return test::errorOf([&] { book_.select(statement); });
    }
    CellRows rows(const std::string& table) { return book_.select("SELECT * FROM [" + table + "$]").rows; }

    test::ScratchFolder folder_;
    std::filesystem::path path_ = folder_ / "fundo.xls";
    Workbook book_{path_};
};

TEST_F(Store, GivesBackWhatItTook) {
    book_.execute("CREATE TABLE header( isin varchar(255), cota varchar(255) ) ");
    book_.execute("INSERT INTO header( isin, cota ) VALUES ('BR01', '000123') ");
    book_.execute("INSERT INTO header( cota ) VALUES ('Ação ''x''') ");
    const CellRows expected{{"BR01", "000123"}, {std::nullopt, "Ação 'x'"}};
    EXPECT_EQ(rows("header"), expected);
    book_.close();
    const WorkbookTable table = sheetOf(path_, "header");
    EXPECT_THAT(table.columns, ElementsAre("isin", "cota"));
    EXPECT_EQ(table.rows, expected);
}

TEST_F(Store, NamesCompareWithoutRegardToCase) {
    book_.execute("CREATE TABLE Títulos( Cotação varchar(255) ) ");
    book_.execute("INSERT INTO TÍTULOS( COTAÇÃO ) VALUES ('1') ");
    book_.execute("insert into [títulos$]( cotação ) values ('2') ");
    EXPECT_EQ(rows("tÍTULOS"), (CellRows{{"1"}, {"2"}}));
    EXPECT_EQ(failure("CREATE TABLE TÍTULOS( a varchar(255) ) "), errc::tableExists);
}

TEST_F(Store, AnEmptyTextIsAnEmptyCell) {
    book_.execute("CREATE TABLE t( a varchar(255), b varchar(255) ) ");
    book_.execute("INSERT INTO t( a, b ) VALUES ('', ' ') ");
    EXPECT_EQ(rows("t"), (CellRows{{std::nullopt, " "}}));
}

TEST_F(Store, FailedStatementsChangeNothing) {
    book_.execute("CREATE TABLE t( a varchar(255), b varchar(255) ) ");
    book_.execute("INSERT INTO t( b, a ) VALUES ('2', '1') ");
    const std::string tooLong(256, 'x');
    EXPECT_EQ(failure("CREATE TABLE t( a varchar(255)) "), errc::tableExists);
    EXPECT_EQ(failure("CREATE TABLE u( a varchar(255), A varchar(255)) "), errc::badStatement);
    EXPECT_EQ(failure("INSERT INTO u( a) VALUES ('1') "), errc::unknownTable);
    EXPECT_EQ(failure("INSERT INTO t( c) VALUES ('1') "), errc::unknownColumn);
    EXPECT_EQ(failure("INSERT INTO t( a, c) VALUES ('1', '2') "), errc::unknownColumn);
    EXPECT_EQ(failure("INSERT INTO t( a, A) VALUES ('1', '2') "), errc::badStatement);
    EXPECT_EQ(failure("INSERT INTO t( a, b) VALUES ('1') "), errc::badStatement);
    EXPECT_EQ(failure("INSERT INTO t( a) VALUES ('d'água') "), errc::badStatement);
    EXPECT_EQ(failure("INSERT INTO t( a, b) VALUES ('1', '" + tooLong + "') "), errc::textTooLong);
    EXPECT_EQ(failure("SELECT * FROM t"), errc::badStatement);
    EXPECT_EQ(questionFailure("SELECT * FROM [u$]"), errc::unknownTable);
    EXPECT_EQ(questionFailure("INSERT INTO t( a) VALUES ('1') "), errc::badStatement);
    EXPECT_EQ(rows("t"), (CellRows{{"1", "2"}}));
}

TEST_F(Store, LengthsAreCountedInCharacters) {
    book_.execute("CREATE TABLE t( a varchar(255)) ");
    std::string fits;
    for (int i = 0; i < 255; ++i) {
        fits += "ç";
    }
    EXPECT_EQ(failure("INSERT INTO t( a) VALUES ('" + fits + "') "), std::nullopt);
    EXPECT_EQ(failure("INSERT INTO t( a) VALUES ('" + fits + "ç') "), errc::textTooLong);
    EXPECT_EQ(rows("t"), (CellRows{{fits}}));
}

TEST_F(Store, NamesOfSheetsHaveTheFormatsLimits) {
    const auto made = [&](const std::string& name) {
        return failure("CREATE TABLE " + name + "( a varchar(255)) ");
    };
    EXPECT_EQ(made(std::string(31, 'a')), std::nullopt);
    EXPECT_EQ(made(std::string(32, 'a')), errc::workbookFailure);
    EXPECT_EQ(made("ççççççççççççççççççççççççççççççç"), std::nullopt);
    EXPECT_EQ(made("a.b-c_d"), std::nullopt);
    for (const char* name : {"a:b", "a*b", "a?b", "a/b", "a\\b", "[a:b]", "['a]", "[a']"}) {
        EXPECT_EQ(made(name), errc::workbookFailure) << name;
    }
}

TEST_F(Store, ASheetHas256Columns) {
    EXPECT_EQ(failure(test::creation("larga", test::numberedColumns(256))), std::nullopt);
    EXPECT_EQ(failure(test::creation("demais", test::numberedColumns(257))), errc::workbookFailure);
}

TEST_F(Store, ASheetHas65536RowsWithItsNames) {
    book_.execute("CREATE TABLE t( a varchar(255)) ");
    for (int i = 0; i < 65535; ++i) {
        book_.execute("INSERT INTO t( a) VALUES ('x') ");
    }
    EXPECT_EQ(failure("INSERT INTO t( a) VALUES ('x') "), errc::workbookFailure);
    book_.close();
    EXPECT_EQ(sheetOf(path_, "t").rows.size(), 65535U);
}

TEST_F(Store, AFileIsOpenedWithItsSheets) {
    book_.execute("CREATE TABLE header( a varchar(255), b varchar(255)) ");
    book_.execute("INSERT INTO header( a, b) VALUES ('1', '2') ");
    book_.execute("CREATE TABLE outra( x varchar(255)) ");
    book_.close();
    Workbook again(path_);
    EXPECT_EQ(test::errorOf([&] { again.execute("CREATE TABLE HEADER( a varchar(255)) "); }),
              errc::tableExists);
    again.execute("INSERT INTO header( b) VALUES ('4') ");
    again.execute("CREATE TABLE nova( y varchar(255)) ");
    again.close();
    EXPECT_EQ(sheetOf(path_, "header").rows, (CellRows{{"1", "2"}, {std::nullopt, "4"}}));
    EXPECT_THAT(sheetOf(path_, "outra").columns, ElementsAre("x"));
    EXPECT_THAT(sheetOf(path_, "nova").columns, ElementsAre("y"));
}

TEST_F(Store, AFileThatIsOnlyReadStaysAsItIs) {
    book_.execute("CREATE TABLE t( a varchar(255)) ");
    book_.close();
    const std::string before = files::readAll(path_);
    const auto time = std::filesystem::last_write_time(path_);
    {
        Workbook again(path_);
        static_cast<void>(again.select("SELECT * FROM [t$]"));
        EXPECT_EQ(test::errorOf([&] { again.execute("CREATE TABLE T( a varchar(255)) "); }),
                  errc::tableExists);
        again.close();
    }
    EXPECT_EQ(files::readAll(path_), before);
    EXPECT_EQ(std::filesystem::last_write_time(path_), time);
}

TEST_F(Store, ANewFileIsThereWhenItIsClosedAndNotBefore) {
    book_.execute("CREATE TABLE t( a varchar(255)) ");
    EXPECT_EQ(folder_.count(), 0U);
    book_.close();
    EXPECT_EQ(folder_.count(), 1U);
    EXPECT_TRUE(files::exists(path_));
}

TEST_F(Store, AClosedStoreTakesNothing) {
    book_.close();
    EXPECT_EQ(failure("CREATE TABLE t( a varchar(255)) "), errc::workbookFailure);
    EXPECT_EQ(questionFailure("SELECT * FROM [t$]"), errc::workbookFailure);
    EXPECT_NO_THROW(book_.close());
}

TEST_F(Store, AWorkbookWithoutTablesHasAnEmptySheet) {
    book_.close();
    const WorkbookTable table = sheetOf(path_, "Planilha1");
    EXPECT_TRUE(table.columns.empty());
    EXPECT_TRUE(table.rows.empty());
}

TEST_F(Store, TellsItsAddress) {
    const std::string address = book_.connectionString();
    EXPECT_NE((";" + address + ";").find(";Data Source=" + files::toText(path_) + ";"), std::string::npos);
}

TEST(Workbook, IsWrittenWhenItGoes) {
    const test::ScratchFolder folder;
    {
        Workbook first(folder / "a.xls");
        first.execute("CREATE TABLE t( a varchar(255)) ");
        Workbook second(folder / "b.xls");
        second = std::move(first);
        EXPECT_TRUE(files::exists(folder / "b.xls"));
    }
    EXPECT_THAT(sheetOf(folder / "a.xls", "t").columns, ElementsAre("a"));
}

TEST(Workbook, AFolderThatTakesNoFileFailsAtOnce) {
    const test::ScratchFolder folder;
    EXPECT_EQ(test::errorOf([&] { Workbook(folder / "ausente/a.xls"); }), errc::pathNotFound);
    EXPECT_NE(test::errorOf([&] { Workbook(folder / (std::string(300, 'a') + ".xls")); }), std::nullopt);
    const auto file = folder.file("arquivo", "x");
    EXPECT_NE(test::errorOf([&] { Workbook(file / "a.xls"); }), std::nullopt);
    EXPECT_NE(test::errorOf([&] { Workbook(folder.path()); }), std::nullopt);
    EXPECT_EQ(folder.count(), 1U);
}

TEST(Workbook, AFileThatCannotBeWrittenAtTheEndLeavesNothing) {
    const test::ScratchFolder folder;
    std::filesystem::create_directory(folder / "pasta");
    Workbook book(folder / "pasta/a.xls");
    book.execute("CREATE TABLE t( a varchar(255)) ");
    std::filesystem::remove(folder / "pasta");
    EXPECT_NE(test::errorOf([&] { book.close(); }), std::nullopt);
    EXPECT_EQ(folder.count(), 0U);
}

/// Memory that the process has held at most, in megabytes.
long peakMemory() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return used.ru_maxrss / 1024;
}

TEST(Workbook, SixtyThousandRowsTakeSeconds) {
    const test::ScratchFolder folder;
    [[maybe_unused]] const long before = peakMemory();
    const std::clock_t start = std::clock();
    const std::vector<std::string> columns = test::numberedColumns(40);
    const auto value = [](std::size_t row, std::size_t column) { return std::to_string(row * 40 + column); };
    {
        Workbook book(folder / "grande.xls");
        book.execute(test::creation("grande", columns));
        std::vector<test::Cell> row(40);
        for (std::size_t i = 0; i < 60000; ++i) {
            for (std::size_t column = 0; column < 40; ++column) {
                row[column] = value(i, column);
            }
            book.execute(test::insertion("grande", columns, row));
        }
        book.close();
    }
    const WorkbookTable table = sheetOf(folder / "grande.xls", "grande");
    ASSERT_EQ(table.rows.size(), 60000U);
    for (std::size_t i = 0; i < 60000; i += 77) {
        EXPECT_EQ(table.rows[i][i % 40], value(i, i % 40));
    }
    const auto seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    EXPECT_LT(seconds, 40);  // three; a square of the rows would take hours
#ifndef __SANITIZE_ADDRESS__ // which keeps what is given back
    EXPECT_LT(peakMemory() - before, 500);
#endif
}

} // namespace
} // namespace tv
