#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// File operations of the core. Failures throw Error with the numbers of `errc` (53, 58, 61, 70, 75, 76) and
/// a Portuguese description that names the file.
namespace tv::files {

/// The folder of the running executable.
std::filesystem::path executableFolder();
/// Text of a path part that uses "\" between folders, with this platform's separator.
std::filesystem::path fromPortable(std::string_view path);
/// Path as UTF-8 text.
std::string toText(const std::filesystem::path& path);

/// `folder`/`name`, or the one file of that folder whose name equals `name` without regard to case when the
/// exact name is not there. `name` may hold folders ("\XSD\x.xsd"); each step is looked up so. A name that
/// nothing answers to comes back as written. Of several that differ in case only, the first by name is taken.
std::filesystem::path findNoCase(const std::filesystem::path& folder, std::string_view name);

/// False only where the system says that nothing is there. What cannot be told counts as there, so that
/// nobody overwrites it as a new file.
bool exists(const std::filesystem::path& path) noexcept;
/// The whole file. Throws Error 53, 70 or 75; a folder counts as 70, a pipe or a device as 75.
std::string readAll(const std::filesystem::path& path);
/// Replaces the file's content in place. A failure on the way loses the old content.
void writeAll(const std::filesystem::path& path, std::string_view bytes);
/// Makes a new file. Throws Error 58 when one is there; a failure on the way takes the new file away.
void create(const std::filesystem::path& path, std::string_view bytes);
/// Appends, creating the file if it is not there. What a failed write has put there is taken away again.
void append(const std::filesystem::path& path, std::string_view bytes);
/// Writes over the bytes of a file from `offset` on, and beyond its end. Throws Error 53 when it is not
/// there. A failed write is taken back.
void writeAt(const std::filesystem::path& path, std::size_t offset, std::string_view bytes);
void remove(const std::filesystem::path& path);
/// Moves a file; the target must not exist. Works across file systems.
void move(const std::filesystem::path& from, const std::filesystem::path& to);
/// Whether a file is to be on the disk before it takes the place of another one. Without that, a power
/// failure soon after may leave an empty file.
enum class Flush : bool { no, toDisk };
/// Writes a temporary file beside `path`, flushes it to disk and moves it over `path` in one step. The file
/// keeps its permissions; where `path` is a link, what it leads to is replaced.
void replaceWhole(const std::filesystem::path& path, std::string_view bytes, Flush flush = Flush::toDisk);
/// Writes the pieces one behind the other and flushes them to disk. `goesOn` is asked before every piece and
/// before the flush; when it says no, the answer is false and the file stays as far as it came.
bool writeThrough(const std::filesystem::path& path, const std::vector<std::string_view>& pieces,
                  const std::function<bool()>& goesOn);
/// A new empty file in `folder` with a name that starts with `prefix` (three letters count) and ends in
/// ".TMP".
std::filesystem::path createTemporary(const std::filesystem::path& folder, std::string_view prefix);

/// What tells whether a file is still the one that was read: size and time of change.
struct Stamp {
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;
    bool operator==(const Stamp&) const = default;
};
/// Throws Error 53 when the file is not there.
Stamp stamp(const std::filesystem::path& path);

} // namespace tv::files
