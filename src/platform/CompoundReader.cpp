#include "platform/Bytes.h"
#include "platform/CompoundFile.h"
#include "platform/Error.h"
#include "platform/Workbook.h"
#include "platform/text.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tv::compound {
namespace {

using bytes::get16;
using bytes::get32;
using Sector = std::uint32_t;

constexpr std::size_t headerSize = 512;
constexpr std::size_t headerSectors = 109; // of the table of sectors that the header itself names
constexpr Sector endOfChain = 0xFFFFFFFE;
constexpr std::size_t smallSectorSize = 64;
constexpr std::size_t smallLimit = 4096; // shorter streams lie in small sectors

[[noreturn]] void fail(const char* reason) {
    throw Error(errc::workbookFailure, "Workbook", reason);
}
[[noreturn]] void corrupt() {
    fail("o arquivo está corrompido");
}

/// A file inside of the file, or a folder: 128 bytes of the directory.
class Entry {
public:
    static constexpr std::size_t size = 128;
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    explicit Entry(std::string_view bytes) noexcept
        : bytes_(bytes) {}

    bool isStream() const noexcept { return bytes::get8(bytes_, 66) == 2; }
    std::uint32_t before() const noexcept { return get32(bytes_, 68); }
    std::uint32_t behind() const noexcept { return get32(bytes_, 72); }
    std::uint32_t child() const noexcept { return get32(bytes_, 76); }
    Sector first() const noexcept { return get32(bytes_, 116); }
    std::size_t length() const noexcept { return get32(bytes_, 120); }

    std::string name() const {
        std::string name;
        for (std::size_t at = 0; at < 64 && get16(bytes_, at) != 0; at += 2) {
            const auto unit = static_cast<char16_t>(get16(bytes_, at));
            text::appendUtf8(name, &unit, 1);
        }
        return name;
    }

private:
    std::string_view bytes_;
};

/// The tables of a compound file. Nothing of the file is believed before it is looked at: every sector lies
/// inside of it, and no chain is longer than its table.
class Reader {
public:
    explicit Reader(std::string_view file)
        : file_(file) {
        static constexpr std::string_view signature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
        if (!file.starts_with(signature)) {
            fail("o arquivo não é uma planilha do Excel 97-2003");
        }
        if (file.size() < headerSize) {
            corrupt();
        }
        shift_ = get16(file, 30);
        if (shift_ != 9 && shift_ != 12) {
            corrupt();
        }
        sectors_ = (file.size() - 1) >> shift_; // the header fills one, too
        readSectorTable();
        directory_ = contentOf(get32(file, 48));
        if (directory_.size() < Entry::size) {
            corrupt();
        }
    }

    bool has(std::string_view name) const { return find(name).has_value(); }
    /// The bytes of a stream that lies directly in the file, not in one of its folders.
    std::string stream(std::string_view name) const {
        const std::optional<Entry> found = find(name);
        if (!found) {
            fail("o arquivo não contém uma planilha do Excel 97-2003");
        }
        std::string content =
            found->length() < smallLimit ? smallContentOf(found->first()) : contentOf(found->first());
        if (content.size() < found->length()) {
            corrupt();
        }
        content.resize(found->length());
        return content;
    }

private:
    std::size_t sectorSize() const noexcept { return std::size_t{1} << shift_; }

    /// The sector's bytes; the last one of a file may be cut short.
    std::string_view sector(Sector number) const {
        if (number >= sectors_) {
            corrupt();
        }
        return file_.substr((std::size_t{number} + 1) << shift_, sectorSize());
    }
    std::string_view wholeSector(Sector number) const {
        const std::string_view found = sector(number);
        if (found.size() < sectorSize()) {
            corrupt();
        }
        return found;
    }

    /// The table that tells the next sector of each; the header names its first 109 sectors, a chain the
    /// rest.
    void readSectorTable() {
        const std::size_t count = get32(file_, 44);
        if (count == 0 || count > sectors_) {
            corrupt();
        }
        std::vector<Sector> parts;
        for (std::size_t i = 0; i < headerSectors && parts.size() < count; ++i) {
            parts.push_back(get32(file_, 76 + 4 * i));
        }
        const std::size_t perSector = sectorSize() / 4 - 1;
        Sector more = get32(file_, 68);
        while (parts.size() < count) {
            const std::string_view names = wholeSector(more);
            for (std::size_t i = 0; i < perSector && parts.size() < count; ++i) {
                parts.push_back(get32(names, 4 * i));
            }
            more = get32(names, 4 * perSector);
        }
        for (const Sector part : parts) {
            append(next_, wholeSector(part));
        }
    }

    static void append(std::vector<Sector>& table, std::string_view bytes) {
        for (std::size_t at = 0; at + 4 <= bytes.size(); at += 4) {
            table.push_back(get32(bytes, at));
        }
    }

    /// Follows a chain to its end. A chain longer than its table goes in a circle.
    template<typename Visit>
    static void follow(const std::vector<Sector>& table, Sector first, Visit visit) {
        std::size_t length = 0;
        for (Sector at = first; at != endOfChain; at = table[at]) {
            if (at >= table.size() || ++length > table.size()) {
                corrupt();
            }
            visit(at);
        }
    }

    std::string contentOf(Sector first) const {
        std::string content;
        follow(next_, first, [&](Sector at) {
            content += sector(at);
            if (content.size() > file_.size()) {
                corrupt();
            }
        });
        return content;
    }

    /// Small sectors lie one behind the other in the stream of the first entry, and have a table of their
    /// own.
    std::string smallContentOf(Sector first) const {
        const Entry root = *entry(0);
        const std::string room = contentOf(root.first());
        std::vector<Sector> next;
        append(next, contentOf(get32(file_, 60)));
        std::string content;
        follow(next, first, [&](Sector at) {
            const std::size_t start = at * smallSectorSize;
            if (start >= room.size() || content.size() > smallLimit) {
                corrupt();
            }
            content += std::string_view(room).substr(start, smallSectorSize);
        });
        return content;
    }

    std::optional<Entry> entry(std::uint32_t number) const {
        const std::size_t at = number * Entry::size;
        if (number == Entry::none || at + Entry::size > directory_.size()) {
            return std::nullopt;
        }
        return Entry(std::string_view(directory_).substr(at, Entry::size));
    }

    /// The entries of a folder make a tree, which is walked without recursion, each entry once.
    std::optional<Entry> find(std::string_view name) const {
        std::vector<bool> seen(directory_.size() / Entry::size);
        std::vector<std::uint32_t> open{entry(0)->child()};
        while (!open.empty()) {
            const std::uint32_t number = open.back();
            open.pop_back();
            const std::optional<Entry> found = entry(number);
            if (!found || seen[number]) {
                continue;
            }
            seen[number] = true;
            if (found->isStream() && text::equalsNoCase(found->name(), name)) {
                return found;
            }
            open.push_back(found->before());
            open.push_back(found->behind());
        }
        return std::nullopt;
    }

    std::string_view file_;
    unsigned shift_ = 9;
    std::size_t sectors_ = 0;
    std::vector<Sector> next_;
    std::string directory_;
};

} // namespace

std::string unpack(std::string_view file) {
    const Reader reader(file);
    const bool usual = reader.has("Workbook");
    return reader.stream(usual ? "Workbook" : "Book"); // the older name, under which a few programs write
}

} // namespace tv::compound
