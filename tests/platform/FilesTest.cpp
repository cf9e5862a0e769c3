#include "platform/Files.h"

#include "ScratchFolder.h"
#include "Throws.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <set>
#include <sys/stat.h>

namespace tv::files {
namespace {

namespace fs = std::filesystem;
using test::errorOf;

class Files : public testing::Test {
protected:
    test::ScratchFolder folder;
};

TEST_F(Files, reads_back_what_was_written) {
    const std::string bytes("a\0b\r\n\xE7", 6);
    const fs::path path = folder.file("a.bin", bytes);
    EXPECT_EQ(readAll(path), bytes);
    writeAll(path, "");
    EXPECT_EQ(readAll(path), "");
    append(path, "1");
    append(path, "2");
    EXPECT_EQ(readAll(path), "12");
    append(folder / "new.txt", "x");
    EXPECT_EQ(readAll(folder / "new.txt"), "x");
}

TEST_F(Files, writes_over_a_place_and_beyond_the_end) {
    const fs::path path = folder.file("a.bin", "0123456789");
    writeAt(path, 2, "ab");
    EXPECT_EQ(readAll(path), "01ab456789");
    writeAt(path, 8, "cdef");
    EXPECT_EQ(readAll(path), "01ab4567cdef");
    EXPECT_EQ(errorOf([&] { writeAt(folder / "none", 0, "x"); }), errc::fileNotFound);
    EXPECT_FALSE(fs::exists(folder / "none"));
    EXPECT_EQ(errorOf([&] { writeAt("/dev/full", 0, "x"); }), errc::diskFull);
}

TEST_F(Files, reads_large_files_whole) {
    const std::string bytes(3'000'000, 'x');
    EXPECT_EQ(readAll(folder.file("large", bytes)).size(), bytes.size());
}

TEST_F(Files, tells_apart_why_a_file_cannot_be_read) {
    EXPECT_EQ(errorOf([&] { readAll(folder / "none.xml"); }), errc::fileNotFound);
    EXPECT_EQ(errorOf([&] { readAll(folder / "none/none.xml"); }), errc::fileNotFound);
    EXPECT_EQ(errorOf([&] { readAll(folder.path()); }), errc::permissionDenied);
    EXPECT_EQ(errorOf([&] { readAll(""); }), errc::fileNotFound);
    folder.file("plain", "x");
    EXPECT_EQ(errorOf([&] { readAll(folder / "plain/below"); }), errc::fileNotFound);
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(errorOf([&] { readAll(folder / "pipe"); }), errc::pathError) << "a pipe would be waited for";
}

TEST_F(Files, tells_apart_why_a_file_cannot_be_written) {
    EXPECT_EQ(errorOf([&] { writeAll(folder / "none/x", "x"); }), errc::pathNotFound);
    EXPECT_EQ(errorOf([&] { append(folder / "none/x", "x"); }), errc::pathNotFound);
    EXPECT_EQ(errorOf([&] { writeAll(folder.path(), "x"); }), errc::permissionDenied);
    EXPECT_EQ(errorOf([&] { writeAll("/dev/full", "x"); }), errc::diskFull);
    EXPECT_EQ(errorOf([&] { writeAll("/dev/full", std::string(1 << 20, 'x')); }), errc::diskFull);
    EXPECT_EQ(errorOf([&] { writeAll(folder / std::string(300, 'x'), "x"); }), errc::pathError);
}

TEST_F(Files, names_the_file_in_its_errors) {
    try {
        readAll(folder / "posição.xml");
        FAIL();
    } catch (const Error& error) {
        EXPECT_TRUE(text::contains(error.description(), "posição.xml")) << error.description();
    }
}

TEST_F(Files, removes_files_and_no_folders) {
    const fs::path path = folder.file("a", "x");
    files::remove(path);
    EXPECT_FALSE(files::exists(path));
    EXPECT_EQ(errorOf([&] { files::remove(path); }), errc::fileNotFound);
    fs::create_directory(folder / "sub");
    EXPECT_EQ(errorOf([&] { files::remove(folder / "sub"); }), errc::permissionDenied);
    EXPECT_TRUE(files::exists(folder / "sub"));
}

TEST_F(Files, moves_only_where_nothing_stands) {
    const fs::path from = folder.file("from", "new");
    const fs::path taken = folder.file("taken", "old");
    EXPECT_EQ(errorOf([&] { move(from, taken); }), errc::fileExists);
    EXPECT_EQ(readAll(taken), "old");
    EXPECT_EQ(errorOf([&] { move(from, folder / "none/to"); }), errc::pathNotFound);
    EXPECT_EQ(readAll(from), "new");
    move(from, folder / "to");
    EXPECT_EQ(readAll(folder / "to"), "new");
    EXPECT_EQ(errorOf([&] { move(from, folder / "other"); }), errc::fileNotFound);
}

TEST_F(Files, moves_across_file_systems) {
    const fs::path memory = "/dev/shm";
    ASSERT_TRUE(files::exists(memory));
    const fs::path from = createTemporary(memory, "kvo");
    writeAll(from, "content");
    move(from, folder / "to");
    EXPECT_EQ(readAll(folder / "to"), "content");
    EXPECT_FALSE(files::exists(from));
    EXPECT_EQ(folder.count(), 1U) << "nothing is left on the way";
}

TEST_F(Files, replaces_a_file_whole) {
    const fs::path path = folder.file("a.xml", "old content");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    replaceWhole(path, "new");
    EXPECT_EQ(readAll(path), "new");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    replaceWhole(folder / "fresh.xml", "made");
    EXPECT_EQ(readAll(folder / "fresh.xml"), "made");
    EXPECT_EQ(folder.count(), 2U);
}

TEST_F(Files, replaces_what_a_link_leads_to) {
    const fs::path target = folder.file("target", "old");
    fs::create_symlink(target, folder / "link");
    replaceWhole(folder / "link", "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(readAll(target), "new");
}

TEST_F(Files, leaves_nothing_behind_when_a_replacement_fails) {
    EXPECT_EQ(errorOf([&] { replaceWhole(folder.path(), "x"); }), errc::permissionDenied);
    EXPECT_EQ(errorOf([&] { replaceWhole(folder / "none/x", "x"); }), errc::pathNotFound);
    EXPECT_EQ(folder.count(), 0U);
}

TEST_F(Files, makes_temporary_files_with_names_of_their_own) {
    std::set<fs::path> names;
    for (int i = 0; i < 200; ++i) {
        const fs::path path = createTemporary(folder.path(), "kvo");
        EXPECT_TRUE(names.insert(path).second);
        EXPECT_EQ(readAll(path), "");
        const std::string name = path.filename().string();
        EXPECT_EQ(name.size(), 11U) << name;
        EXPECT_TRUE(text::startsWith(name, "kvo") && text::endsWith(name, ".TMP")) << name;
    }
    EXPECT_TRUE(text::startsWith(createTemporary(folder.path(), "prefix").filename().string(), "pre"));
    EXPECT_EQ(errorOf([&] { createTemporary(folder / "none", "kvo"); }), errc::pathNotFound);
}

TEST_F(Files, finds_names_in_any_case) {
    fs::create_directory(folder / "Xsd");
    const fs::path path = folder.file("Xsd/Posição_4_01.XSD", "x");
    EXPECT_EQ(findNoCase(folder.path(), "\\XSD\\posição_4_01.xsd"), path);
    EXPECT_EQ(findNoCase(folder.path(), "xsd/POSIÇÃO_4_01.xsd"), path);
    EXPECT_EQ(findNoCase(folder.path(), "Xsd\\Posição_4_01.XSD"), path);
    EXPECT_EQ(findNoCase(folder.path(), "\\XSD\\none.xsd"), folder / "XSD/none.xsd") << "as written";
    EXPECT_EQ(findNoCase(folder.path(), "\\none\\x.xsd"), folder / "none/x.xsd");
    EXPECT_EQ(findNoCase(folder.path(), ""), folder.path());
}

TEST_F(Files, prefers_the_exact_name) {
    folder.file("A.xml", "1");
    const fs::path exact = folder.file("a.xml", "2");
    EXPECT_EQ(findNoCase(folder.path(), "a.xml"), exact);
}

TEST_F(Files, turns_portable_paths) {
    EXPECT_EQ(fromPortable("XSD\\help.xsl"), fs::path("XSD") / "help.xsl");
    EXPECT_EQ(toText(fromPortable("posição\\ações.xml")), "posição/ações.xml");
}

TEST_F(Files, stamps_tell_a_change) {
    const fs::path path = folder.file("a", "1");
    const Stamp before = stamp(path);
    EXPECT_EQ(stamp(path), before);
    writeAll(path, "22");
    EXPECT_NE(stamp(path), before);
    fs::last_write_time(path, before.time + std::chrono::seconds(5));
    writeAll(path, "3");
    fs::last_write_time(path, before.time + std::chrono::seconds(5));
    EXPECT_NE(stamp(path), before) << "of the same size, but later";
    EXPECT_EQ(errorOf([&] { stamp(folder / "none"); }), errc::fileNotFound);
}

TEST_F(Files, writes_pieces_one_behind_the_other) {
    const fs::path path = folder.file("a", "longer than what comes");
    EXPECT_TRUE(writeThrough(path, {"one", "", " two"}, [] { return true; }));
    EXPECT_EQ(readAll(path), "one two");
    EXPECT_TRUE(writeThrough(path, {}, [] { return true; }));
    EXPECT_EQ(readAll(path), "");
}

TEST_F(Files, gives_a_write_up_between_two_pieces) {
    int asked = 0;
    EXPECT_FALSE(writeThrough(folder / "a", {"one", "two", "three"}, [&] { return ++asked < 3; }));
    EXPECT_EQ(readAll(folder / "a"), "onetwo");
    asked = 0;
    EXPECT_FALSE(writeThrough(folder / "b", {"one"}, [&] { return ++asked < 2; })) << "before the flush";
    EXPECT_EQ(errorOf([&] { writeThrough(folder / "none" / "a", {}, [] { return true; }); }),
              errc::pathNotFound);
}

TEST_F(Files, knows_the_folder_of_the_program) {
    EXPECT_TRUE(files::exists(executableFolder() / fs::read_symlink("/proc/self/exe").filename()));
}

} // namespace
} // namespace tv::files
