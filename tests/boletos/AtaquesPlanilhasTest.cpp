// Workbooks that mean harm, and names of workbooks that would.

#include "boletos/ApplicationFolder.h"
#include "platform/Watchers.h"
#include "platform/Workbook.h"

#include <gmock/gmock.h>

namespace boletos::test {
namespace {

using ::testing::HasSubstr;

TEST_F(BoletosTest, WorkbooksOfHarmAreRefused) {
    const std::string good = [&] {
        tv::Workbook book(folder / "bom.xls");
        book.execute("CREATE TABLE header( cnpj varchar(255)) ");
        for (int i = 0; i < 2000; ++i) {
            book.execute("INSERT INTO header( cnpj) VALUES ('" + std::to_string(i) + "') ");
        }
        book.close();
        return tv::files::readAll(folder / "bom.xls");
    }();
    const auto circle =
        [&](std::size_t at) { // each entry of a table of 128 names the next one, the last the first
            std::string bytes = good;
            for (std::size_t i = 0; i < 128 && at + 4 * i + 4 <= bytes.size(); ++i) {
                bytes[at + 4 * i] = static_cast<char>((i + 1) % 128);
                bytes[at + 4 * i + 1] = bytes[at + 4 * i + 2] = bytes[at + 4 * i + 3] = '\0';
            }
            return bytes;
        };
    const std::size_t table = 512 * (std::size_t{static_cast<unsigned char>(good[76])} + 1);
    const std::vector<std::string> files{
        circle(table), circle(76), // the table of sectors, and the list of its own sectors
        circle(512),   good.substr(0, 700), std::string(100'000, '\0'), document("1", "A", "1"),
    };
    for (std::size_t i = 0; i < files.size(); ++i) {
        const std::string file = write("fundo" + std::to_string(i) + ".xls", files[i]);
        const Outcome outcome = run({"importar", "--pasta", app(), "--layout", "Posicao_1", file});
        EXPECT_EQ(outcome.status, 2) << i << outcome.out;
        EXPECT_THAT(outcome.err, HasSubstr("Não foi possível ler a planilha")) << i;
        EXPECT_EQ(outcome.signal, 0);
        EXPECT_LT(outcome.seconds, 2 * tv::test::slack);
        EXPECT_LT(outcome.megabytes, 200 * tv::test::slack);
    }
}

TEST_F(BoletosTest, NamesOfElementsStayInTheFolderOfTheDocument) {
    const std::string file = write("doc/a.xml", "<Posicao_1><..-..x><cod>1</cod></..-..x></Posicao_1>");
    const Outcome outcome = run({"exportar", "--pasta", app(), "--layout", "Posicao_1", file});
    EXPECT_EQ(outcome.status, 2) << "such a name is none";
    const std::string sound = write("doc/b.xml", "<Posicao_1><a.-..x><cod>1</cod></a.-..x></Posicao_1>");
    const Outcome written = run({"exportar", "--pasta", app(), "--layout", "Posicao_1", sound});
    for (const std::string& path : linesOf(written.out)) {
        EXPECT_EQ(std::filesystem::path(path).lexically_normal().parent_path(), folder / "doc");
    }
    EXPECT_FALSE(written.out.empty());
}

} // namespace
} // namespace boletos::test
