#include "platform/CompoundCheck.h"

#include "platform/Bytes.h"
#include "platform/Error.h"
#include "platform/Workbook.h"
#include "platform/text.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tv::compound {
namespace {

using bytes::get16;
using bytes::get32;
using Sector = std::uint32_t;

constexpr std::size_t headerSize = 512;
constexpr std::size_t headerSectors = 109; // of the table of sectors that the header itself names
constexpr Sector endOfChain = 0xFFFFFFFE;
constexpr Sector lastSector = 0xFFFFFFF9; // higher numbers have meanings of their own
constexpr std::size_t entrySize = 128;
constexpr std::size_t maxEntries = 10'000; // they make a tree, whose depth is bounded so

[[noreturn]] void fail(const char* reason) {
    throw Error(errc::workbookFailure, "Workbook", reason);
}
[[noreturn]] void corrupt() {
    fail("o arquivo está corrompido");
}

/// The tables of a compound file, each taken over only when it is sound.
class Checker {
public:
    explicit Checker(std::string_view file)
        : file_(file) {
        static constexpr std::string_view signature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
        if (!file.starts_with(signature)) {
            fail("o arquivo não é uma planilha do Excel 97-2003");
        }
        if (file.size() < headerSize) {
            corrupt();
        }
        shift_ = get16(file, 30);
        const bool usual = (shift_ == 9 || shift_ == 12) && get16(file, 32) == 6 && get32(file, 56) == 4096;
        if (!usual) {
            corrupt();
        }
        sectors_ = (file.size() - 1) >> shift_; // the header fills one, too
    }

    void run() {
        readSectorTable();
        const std::string directory = contentOf(get32(file_, 48));
        if (directory.size() > maxEntries * entrySize) {
            corrupt();
        }
        readSmallTable(directory);
        for (std::size_t at = 0; at + entrySize <= directory.size(); at += entrySize) {
            const std::string_view entry = std::string_view(directory).substr(at, entrySize);
            if (isWorkbook(entry)) {
                checkStream(get32(entry, 116), get32(entry, 120));
            }
        }
    }

private:
    /// Only the stream that is read has to be whole.
    static bool isWorkbook(std::string_view entry) {
        constexpr std::uint8_t stream = 2;
        std::string name;
        for (std::size_t at = 0; at < 64 && get16(entry, at) != 0; at += 2) {
            text::appendUtf8(name, std::array{static_cast<char16_t>(get16(entry, at))}.data(), 1);
        }
        return bytes::get8(entry, 66) == stream && text::equalsNoCase(name, "Workbook");
    }

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

    /// Follows a chain to its end and counts its members. A chain longer than its table goes in a circle.
    template<typename Visit>
    static std::size_t follow(const std::vector<Sector>& table, Sector first, Visit visit) {
        std::size_t length = 0;
        for (Sector at = first; at != endOfChain; at = table[at]) {
            if (at > lastSector || at >= table.size() || ++length > table.size()) {
                corrupt();
            }
            visit(at);
        }
        return length;
    }

    std::string contentOf(Sector first) const {
        std::string content;
        follow(next_, first, [&](Sector at) { content += wholeSector(at); });
        return content;
    }

    /// Streams below 4,096 bytes lie in pieces of 64 bytes inside of the root's stream, with a table of their
    /// own.
    void readSmallTable(std::string_view directory) {
        if (directory.size() < entrySize) {
            corrupt();
        }
        if (get32(file_, 64) != 0) {
            append(nextSmall_, contentOf(get32(file_, 60)));
        }
        const std::size_t rootSize = get32(directory, 120);
        if (rootSize != 0) {
            const std::size_t length = follow(next_, get32(directory, 116), [&](Sector at) { sector(at); });
            if (length << shift_ < rootSize) {
                corrupt();
            }
        }
        smallSectors_ = (rootSize + 63) / 64;
    }

    void checkStream(Sector first, std::size_t size) {
        constexpr std::size_t smallLimit = 4096;
        if (size == 0) {
            return;
        }
        const bool small = size < smallLimit;
        const std::size_t length = follow(small ? nextSmall_ : next_, first, [&](Sector at) {
            if (small && at >= smallSectors_) {
                corrupt();
            }
            if (!small) {
                sector(at);
            }
        });
        followed_ += length;
        if (followed_ > next_.size() + nextSmall_.size() || length * (small ? 64 : sectorSize()) < size) {
            corrupt();
        }
    }

    std::string_view file_;
    unsigned shift_ = 9;
    std::size_t sectors_ = 0;
    std::size_t smallSectors_ = 0;
    std::size_t followed_ = 0; // over all streams; no two share a sector
    std::vector<Sector> next_;
    std::vector<Sector> nextSmall_;
};

} // namespace

void check(std::string_view file) {
    Checker(file).run();
}

} // namespace tv::compound
