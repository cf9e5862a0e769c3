#include "platform/Workbook.h"

#include "platform/ScratchFolder.h"
#include "platform/Throws.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

TEST(Workbook, GivesBackWhatItTook) {
    const test::ScratchFolder folder;
    {
        Workbook book(folder / "a.xls");
        book.execute("CREATE TABLE header( isin varchar(255), cota varchar(255) ) ");
        book.execute("INSERT INTO header( isin, cota ) VALUES ('BR01', '000123') ");
        book.execute("INSERT INTO header( cota ) VALUES ('Ação ''x''') ");
        book.close();
    }
    const WorkbookTable table = Workbook(folder / "a.xls").select("SELECT * FROM [header$]");
    EXPECT_EQ(table.columns, (std::vector<std::string>{"isin", "cota"}));
    using Row = std::vector<std::optional<std::string>>;
    EXPECT_EQ(table.rows, (std::vector<Row>{{"BR01", "000123"}, {std::nullopt, "Ação 'x'"}}));
}

} // namespace
} // namespace tv
