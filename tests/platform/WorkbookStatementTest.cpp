#include "platform/WorkbookStatement.h"

#include "platform/Throws.h"
#include "platform/Workbook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv::workbook {
namespace {

using testing::ElementsAre;

TEST(WorkbookStatement, ReadsATable) {
    const auto made =
        std::get<CreateTable>(parse("CREATE TABLE header( isin varchar(255), Nome varchar(255)) "));
    EXPECT_EQ(made.table, "header");
    EXPECT_THAT(made.columns, ElementsAre("isin", "Nome"));
}

TEST(WorkbookStatement, ReadsARow) {
    const auto made = std::get<InsertInto>(parse("INSERT INTO header( isin, nome) VALUES ('BR 01', '') "));
    EXPECT_EQ(made.table, "header");
    EXPECT_THAT(made.columns, ElementsAre("isin", "nome"));
    EXPECT_THAT(made.values, ElementsAre("BR 01", ""));
}

TEST(WorkbookStatement, ReadsAQuestion) {
    EXPECT_EQ(std::get<SelectAll>(parse("SELECT * FROM [header$]")).table, "header$");
    EXPECT_EQ(std::get<SelectAll>(parse("select * from header")).table, "header");
}

TEST(WorkbookStatement, WhiteSpaceAndCapitalsDoNotCount) {
    const auto made = std::get<InsertInto>(parse("\tinsert\r\nINTO\nx(a,b)values('1','2');  "));
    EXPECT_EQ(made.table, "x");
    EXPECT_THAT(made.values, ElementsAre("1", "2"));
}

TEST(WorkbookStatement, NamesMayBeAlmostAnything) {
    for (const char* name : {"select", "table", "values", "varchar", "títulos", "2via", "_a", "a.b", "a-b",
                             "a$", "É", "x'[", "日本"}) {
        const std::string text = std::string("CREATE TABLE ") + name + "( " + name + " varchar(255)) ";
        if (std::string_view(name) == "x'[") {
            EXPECT_EQ(test::errorOf([&] { parse(text); }), errc::badStatement);
            continue;
        }
        const auto made = std::get<CreateTable>(parse(text));
        EXPECT_EQ(made.table, name);
        EXPECT_THAT(made.columns, ElementsAre(name));
    }
}

TEST(WorkbookStatement, BracketsHoldNamesWithSigns) {
    const auto made = std::get<InsertInto>(parse("INSERT INTO [a (b)$]( [x, y], z) VALUES ('1', '2')"));
    EXPECT_EQ(made.table, "a (b)$");
    EXPECT_THAT(made.columns, ElementsAre("x, y", "z"));
}

struct LiteralCase {
    const char* written;
    const char* meant;
};

TEST(WorkbookStatement, TwoApostrophesAreOne) {
    for (const LiteralCase& each : {LiteralCase{"''''", "'"},
                                    {"'d''água'", "d'água"},
                                    {"'a'''", "a'"},
                                    {"'''a'", "'a"},
                                    {"''", ""},
                                    {"''''''", "''"},
                                    {"'a, b) VALUES ('", "a, b) VALUES ("},
                                    {"' x\r\n\ty '", " x\r\n\ty "}}) {
        const std::string text = std::string("INSERT INTO t( a, b) VALUES (") + each.written + ", 'z') ";
        EXPECT_THAT(std::get<InsertInto>(parse(text)).values, ElementsAre(each.meant, "z")) << text;
    }
}

class BadStatement : public testing::TestWithParam<const char*> {};

TEST_P(BadStatement, Fails) {
    EXPECT_EQ(test::errorOf([] { parse(GetParam()); }), errc::badStatement) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(
    WorkbookStatement, BadStatement,
    testing::Values("", " ", "DROP TABLE t", "CREATE t( a varchar(255))", "CREATE TABLE", "CREATE TABLE t",
                    "CREATE TABLE t) ", // a record without children
                    "CREATE TABLE t()", "CREATE TABLE t( )", "CREATE TABLE ( a varchar(255))",
                    "CREATE TABLE t( a varchar(255),)", "CREATE TABLE t( a varchar(255)",
                    "CREATE TABLE t( a)", "CREATE TABLE t( a varchar)", "CREATE TABLE t( a varchar(50))",
                    "CREATE TABLE t( a integer)", "CREATE TABLE t( a b varchar(255))",
                    "CREATE TABLE t( a varchar(255)) x", "CREATE TABLE []( a varchar(255))",
                    "CREATE TABLE [t( a varchar(255))",
                    "INSERT INTO t) VALUES) ", // a record without children
                    "INSERT INTO t() VALUES ()", "INSERT INTO t( a) VALUES ()",
                    "INSERT INTO t( ) VALUES ('1')",
                    "INSERT INTO t( a) VALUES ('d'água') ",   // an apostrophe in a value
                    "INSERT INTO t( a) VALUES ('água') d') ", // behind the end of the statement
                    "INSERT INTO t( a) VALUES ('água', 'd') '", "INSERT INTO t( a) VALUES ('a) ",
                    "INSERT INTO t( a) VALUES ('a''') ') ", "INSERT INTO t( a) VALUES (1) ",
                    "INSERT INTO t( a, b) VALUES ('1') ", "INSERT INTO t( a) VALUES ('1', '2') ",
                    "INSERT INTO t( a) ('1') ", "INSERT t( a) VALUES ('1') ", "INSERT INTO t VALUES ('1') ",
                    "INSERT INTO t( a,, b) VALUES ('1', '2') ", "SELECT a FROM t", "SELECT * FROM",
                    "SELECT * FROM t WHERE a = 'x'", "SELECT * FROM t t", "SELECT * t"));

} // namespace
} // namespace tv::workbook
