#include "platform/ScratchFolder.h"
#include "platform/Throws.h"
#include "platform/Workbook.h"
#include "platform/WorkbookBytes.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <ctime>
#include <random>
#include <sys/resource.h>

namespace tv {
namespace {

using namespace std::string_literals;
using test::cell;
using test::label;
using test::number32;
using test::record;
using test::words;

/// What becomes of a file: its description when it cannot be read, nothing when it can. Any other end of the
/// attempt fails the test by itself.
std::optional<std::string> refusal(const std::filesystem::path& path) {
    try {
        const Workbook book(path);
        for (const char* sheet : {"s", "header", "títulos"}) {
            static_cast<void>(test::errorOf([&] { book.select("SELECT * FROM ["s + sheet + "$]"); }));
        }
        return std::nullopt;
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), errc::workbookFailure);
        return error.description();
    }
}

class Hostile : public testing::Test {
protected:
    std::optional<std::string> refusalOf(std::string_view bytes) {
        return refusal(folder_.file("ruim.xls", bytes));
    }

    /// The file is refused with this reason, in a sentence that names it.
    void expectRefused(std::string_view bytes, const std::string& reason = "corrompido") {
        const auto text = refusalOf(bytes);
        ASSERT_TRUE(text) << reason;
        EXPECT_TRUE(text::startsWith(*text, "Não foi possível ler a planilha ")) << *text;
        EXPECT_TRUE(text::contains(*text, "ruim.xls")) << *text;
        EXPECT_TRUE(text::contains(*text, reason)) << *text;
    }

    /// A workbook as this system writes it.
    std::string good(int rows = 40) {
        const std::filesystem::path path = folder_ / "bom.xls";
        Workbook book(path);
        book.execute("CREATE TABLE header( isin varchar(255), nome varchar(255)) ");
        book.execute("CREATE TABLE títulos( a varchar(255), b varchar(255), c varchar(255)) ");
        for (int i = 0; i < rows; ++i) {
            book.execute("INSERT INTO títulos( a, b, c) VALUES ('" + std::to_string(i) + "', 'ação €', 'x" +
                         std::to_string(i * i) + "') ");
        }
        book.close();
        std::string bytes = files::readAll(path);
        files::remove(path);
        return bytes;
    }

    test::ScratchFolder folder_;
};

TEST_F(Hostile, OtherFormatsAreTold) {
    for (const std::string& bytes :
         {""s, "x"s, "PK\3\4"s + std::string(600, 'z'), "<html><table></table></html>"s, "a;b\r\n1;2\r\n"s,
          "\xEF\xBB\xBF<?xml version='1.0'?><Workbook/>"s,
          "\x09\x08\x10\x00\x00\x06\x05\x00"s + std::string(600, '\0'), std::string(5000, '\0'),
          std::string(5000, '\xFF')}) {
        expectRefused(bytes, "não é uma planilha do Excel 97-2003");
    }
}

TEST_F(Hostile, OtherDocumentsInTheSameContainerAreTold) {
    std::string bytes = good();
    const std::size_t name = bytes.find("W\0o\0r\0k\0b\0o\0o\0k\0"s);
    ASSERT_NE(name, std::string::npos);
    bytes[name] = 'X';
    expectRefused(bytes, "não contém uma planilha");
}

TEST_F(Hostile, TheStreamsNameMayBeOlderOrInCapitals) {
    const std::string usual = "W\0o\0r\0k\0b\0o\0o\0k\0"s;
    for (const std::string& other : {"W\0O\0R\0K\0B\0O\0O\0K\0"s, "B\0o\0o\0k\0\0\0\0\0\0\0\0\0"s}) {
        std::string bytes = good();
        bytes.replace(bytes.find(usual), usual.size(), other);
        EXPECT_FALSE(refusalOf(bytes));
    }
}

TEST_F(Hostile, AFileCutShortIsRefused) {
    const std::string bytes = good();
    for (std::size_t size = 512; size < bytes.size(); size += 512) {
        EXPECT_TRUE(refusalOf(bytes.substr(0, size))) << size;
    }
    for (std::size_t size = 0; size < 600; size += 7) {
        EXPECT_TRUE(refusalOf(bytes.substr(0, size))) << size;
    }
}

TEST_F(Hostile, AStreamCutShortIsRefused) {
    const std::string stream = test::streamOf({}, label(0, 0, "a") + label(1, 0, "b"));
    for (std::size_t size = 1; size < stream.size(); ++size) {
        expectRefused(compound::pack(stream.substr(0, size)));
    }
}

TEST_F(Hostile, BytesTurnedAreReadOrRefused) {
    const std::string bytes = good();
    std::mt19937 random(20240131);
    std::size_t refused = 0;
    constexpr std::size_t tries = 1500; // fuzz/ makes more
    for (std::size_t i = 0; i < tries; ++i) {
        std::string turned = bytes;
        const std::size_t changes = 1 + random() % 6;
        for (std::size_t k = 0; k < changes; ++k) {
            // Half of the changes go where the file tells how it is built.
            const std::size_t reach = random() % 2 == 0 ? 600 : turned.size();
            char& byte = turned[random() % reach];
            const auto bit = static_cast<char>(1U << random() % 8);
            byte = random() % 2 == 0 ? static_cast<char>(byte ^ bit) : static_cast<char>(random() % 256);
        }
        refused += refusalOf(turned) ? 1U : 0U;
    }
    EXPECT_GT(refused, tries / 20);
    EXPECT_LT(refused, tries);
}

TEST_F(Hostile, RandomBytesBehindAGoodHeadAreRefused) {
    std::mt19937 random(7);
    const std::string head = good().substr(0, 512);
    for (int i = 0; i < 200; ++i) {
        std::string bytes = head;
        for (int k = 0; k < 4096; ++k) {
            bytes += static_cast<char>(random() % 256);
        }
        EXPECT_TRUE(refusalOf(bytes));
    }
}

/// Replaces the number that stands at a place of a file.
std::string with32(std::string bytes, std::size_t at, std::size_t value) {
    return bytes.replace(at, 4, number32(value));
}

TEST_F(Hostile, ChainsThatGoInACircleAreRefused) {
    const std::string bytes = good(2000);
    const auto table = bytes::get32(bytes, 76); // the first sector of the table of sectors
    const std::size_t entries = 512 + std::size_t{table} * 512;
    const auto directory = bytes::get32(bytes, 48);
    expectRefused(with32(bytes, entries + 4 * 3, 3)); // to itself
    expectRefused(with32(bytes, entries + 4 * 3, 1)); // back
    expectRefused(with32(bytes, entries + 4 * std::size_t{directory}, directory));
    expectRefused(with32(bytes, entries + 4 * 3, 0x00FFFFFF)); // outside of the file
    expectRefused(with32(bytes, entries + 4 * 3, 0xFFFFFFFE)); // too short
    expectRefused(with32(bytes, 48, 0x00FFFFFF));
    expectRefused(with32(bytes, 44, 0));
    expectRefused(with32(bytes, 44, 0x7FFFFFFF));
    expectRefused(
        with32(with32(bytes, 44, 120), 68, 0)); // more tables than the header names, at a wrong place
}

TEST_F(Hostile, FoldersAndSmallSectorsThatGoInACircleAreRefused) {
    const std::string bytes = good(2000);
    const std::size_t root = 512 * (std::size_t{bytes::get32(bytes, 48)} + 1);
    const std::size_t stream = root + 128;
    std::string renamed = bytes;
    renamed[stream] = 'X'; // so that the whole folder is looked through
    expectRefused(renamed, "");
    expectRefused(with32(renamed, stream + 68, 1), "");        // the one to the left is itself
    expectRefused(with32(renamed, stream + 72, 0), "");        // the one to the right is the folder
    expectRefused(with32(renamed, stream + 76, 1), "");        // it holds itself
    expectRefused(with32(renamed, root + 76, 0x00FFFFFF), ""); // what the folder holds is not there
    expectRefused(with32(bytes, root + 76, 0), "");            // the folder holds itself

    // The stream made short lies in small sectors, whose table is a sector of data here.
    const std::string small = with32(with32(bytes, stream + 120, 1000), stream + 116, 1);
    for (const std::size_t table : {0U, 3U, 0x00FFFFFFU}) {
        std::string circle = with32(with32(small, 60, table), 64, 1);
        for (std::size_t i = 0; table < 10 && i < 128; ++i) {
            circle.replace(512 * (table + 1) + 4 * i, 4, number32(1));
        }
        expectRefused(circle, "");
    }
}

TEST_F(Hostile, RecordsThatLieAreRefused) {
    const std::string a = label(0, 0, "a");
    expectRefused(test::fileOf({}, a + cell(0x00FD, 1, 0, number32(0))));            // no such string
    expectRefused(test::fileOf({}, a + cell(0x00FD, 1, 256, number32(0))));          // no such column
    expectRefused(test::fileOf({}, a + cell(0x00FD, 1, 0, "")));                     // a body cut short
    expectRefused(test::fileOf({}, a + cell(0x0204, 1, 0, words({50}) + "\0abc"s))); // a text cut short
    expectRefused(test::fileOf({}, a + cell(0x0203, 1, 0, "1234567")));
    expectRefused(test::fileOf({}, a + cell(0x0205, 1, 0, "")));
    expectRefused(test::fileOf({}, a + record(0x00BD, words({1}))));
    expectRefused(test::fileOf(record(0x00FC, number32(1) + number32(0xFFFFFFFF)), a)); // so many strings
    expectRefused(test::fileOf(record(0x00FC, number32(1) + number32(1) + words({0xFFFF}) + "\0x"s), a));
    expectRefused(test::fileOf(
        record(0x00FC, number32(1) + number32(1) + words({1}) + "\4"s + number32(0xFFFFFFFF) + "x"), a));
    expectRefused(test::fileOf(
        record(0x00FC, number32(1) + number32(1) + words({2}) + "\1x"s) + record(0x003C, "\1x"s), a));
    expectRefused(test::fileOf(record(0x0085, number32(0x7FFFFFFF) + "\0\0\1\0x"s), a)); // a sheet outside
    expectRefused(test::fileOf(record(0x0085, number32(4) + "\0\0\1\0x"s), a)); // a sheet that is none
    expectRefused(test::fileOf({}, a + record(0x0809, words({0x0600, 0x20})))); // never ends
}

TEST_F(Hostile, OtherVersionsAndPasswordsAreTold) {
    std::string older = test::streamOf({}, label(0, 0, "a"));
    older.replace(4, 2, words({0x0500}));
    expectRefused(compound::pack(older), "não é o do Excel 97-2003");
    expectRefused(test::fileOf(record(0x002F, std::string(54, 'x')), label(0, 0, "a")),
                  "protegida por senha");
}

/// The processor's time and the room that an attempt takes.
TEST_F(Hostile, SmallFilesDoNotGrowLarge) {
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    const std::clock_t start = std::clock();

    // Two cells at the corners of a sheet.
    expectRefused(test::fileOf({}, label(0, 0, "a") + label(65535, 255, "z")), "grande demais");

    // A long text that very many cells bear.
    std::string cells = label(0, 0, "a");
    for (std::size_t row = 1; row < 50000; ++row) {
        cells += cell(0x00FD, row, 0, number32(0));
    }
    const std::string text =
        record(0x00FC, number32(1) + number32(1) + words({8000}) + '\0' + std::string(8000, 'x'));
    expectRefused(test::fileOf(text, cells), "grande demais");

    // Very many sheets that are one and the same.
    std::string sheets;
    for (std::size_t i = 0; i < 20000; ++i) {
        sheets +=
            record(0x0085, number32(20000 * 21 + 16 + 12 + 17) + "\0\0\5\0"s + std::to_string(10000 + i));
    }
    EXPECT_TRUE(refusalOf(test::fileOf(sheets, cells)));

    // A directory of entries that hang on one another.
    std::string deep = good();
    const std::size_t first = deep.size() / 512 - 1;
    constexpr std::size_t entries = 40000;
    const std::size_t sectors = entries / 4;
    std::string table;
    for (std::size_t i = 0; i < entries; ++i) {
        std::string entry(128, '\0');
        entry[64] = 4;
        entry[66] = i == 0 ? 5 : 2;
        entry.replace(68, 4, number32(i + 1 < entries && i > 0 ? i + 1 : 0xFFFFFFFF));
        entry.replace(72, 8, number32(0xFFFFFFFF) + number32(i == 0 ? 1 : 0xFFFFFFFF));
        deep += entry;
    }
    for (std::size_t i = 0; i < first; ++i) {
        table += number32(0xFFFFFFFE);
    }
    for (std::size_t i = 0; i < sectors; ++i) {
        table += number32(i + 1 < sectors ? first + i + 1 : 0xFFFFFFFE);
    }
    table.resize((table.size() + 511) / 512 * 512, '\xFF');
    for (std::size_t i = 0; i < table.size() / 512; ++i) {
        deep.replace(76 + 4 * i, 4, number32(first + sectors + i));
    }
    deep = with32(with32(deep + table, 44, table.size() / 512), 48, first);
    expectRefused(deep, "não contém uma planilha");

    rusage after{};
    getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, 20);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 200 * 1024); // kilobytes
}

} // namespace
} // namespace tv
