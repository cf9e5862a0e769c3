#include "platform/Files.h"

#include "platform/Descriptor.h"
#include "platform/Error.h"
#include "platform/Folders.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace tv::files {
namespace {

constexpr const char* source = "files";

struct Failure {
    std::int32_t number;
    const char* text;
};

/// The number and the Portuguese text of what the operating system reports.
Failure describe(std::error_code reason) {
    if (reason == std::errc::no_such_file_or_directory) {
        return {errc::fileNotFound, "Arquivo não encontrado: "};
    }
    if (reason == std::errc::file_exists) {
        return {errc::fileExists, "O arquivo já existe: "};
    }
    if (reason == std::errc::no_space_on_device || reason.value() == EDQUOT) {
        return {errc::diskFull, "Disco cheio: "};
    }
    if (reason == std::errc::permission_denied || reason == std::errc::operation_not_permitted ||
        reason == std::errc::read_only_file_system || reason == std::errc::is_a_directory) {
        return {errc::permissionDenied, "Permissão negada: "};
    }
    if (reason == std::errc::not_a_directory) {
        return {errc::pathNotFound, "Pasta não encontrada: "};
    }
    return {errc::pathError, "Erro de acesso ao arquivo: "};
}

[[noreturn]] void fail(std::error_code reason, const fs::path& path) {
    const Failure failure = describe(reason);
    throw Error(failure.number, source, failure.text + toText(path));
}

[[noreturn]] void fail(std::errc reason, const fs::path& path) {
    fail(std::make_error_code(reason), path);
}

std::error_code lastError() {
    return {errno, std::generic_category()};
}

/// A file that is to be written needs its folder, so a folder that is not there has a number of its own.
[[noreturn]] void failWriting(std::error_code reason, const fs::path& path) {
    if (reason == std::errc::no_such_file_or_directory) {
        throw Error(errc::pathNotFound, source, "Pasta não encontrada: " + toText(path.parent_path()));
    }
    fail(reason, path);
}

/// Closes a file that was written, since a full disk may show only then.
void finishWriting(Descriptor file, bool written, const fs::path& path) {
    if (!written || !file.close()) {
        failWriting(lastError(), path);
    }
}

Descriptor openToWrite(const fs::path& path, int flags) {
    Descriptor file(path, O_WRONLY | O_CREAT | flags);
    if (!file) {
        failWriting(lastError(), path);
    }
    return file;
}

/// Takes a file away on the way out unless it was kept.
class Scratch {
public:
    explicit Scratch(fs::path path)
        : path_(std::move(path)) {}
    ~Scratch() {
        std::error_code ignored;
        if (!path_.empty()) {
            fs::remove(path_, ignored);
        }
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    const fs::path& path() const { return path_; }
    void keep() { path_.clear(); }

private:
    fs::path path_;
};

/// Where a file's content really stands, so that replacing it leaves a link a link.
fs::path behindLinks(const fs::path& path) {
    std::error_code failed;
    fs::path target = fs::canonical(path, failed);
    if (failed && failed != std::errc::no_such_file_or_directory) {
        failWriting(failed, path);
    }
    return failed ? path : target;
}

/// Kind and permissions of a file. Only what is certainly not there counts as not there.
fs::file_status statusOf(const fs::path& path) {
    std::error_code failed;
    const fs::file_status status = fs::status(path, failed);
    if (status.type() == fs::file_type::none) {
        fail(failed, path);
    }
    return status;
}

/// The bytes from `place` on that a write of `size` bytes is about to overwrite.
std::string bytesAt(const Descriptor& file, std::size_t place, std::size_t size, const fs::path& path) {
    std::string bytes(size, '\0');
    std::size_t read = 0;
    while (read < size) {
        const std::ptrdiff_t got =
            file.readAt(static_cast<off_t>(place + read), bytes.data() + read, size - read);
        if (got < 0) {
            fail(lastError(), path);
        }
        if (got == 0) {
            break;
        }
        read += static_cast<std::size_t>(got);
    }
    bytes.resize(read);
    return bytes;
}

std::vector<std::string_view> steps(std::string_view name) {
    std::vector<std::string_view> result;
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of("\\/"), name.size());
        if (end > 0) {
            result.push_back(name.substr(0, end));
        }
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return result;
}

/// `folder`/`name`, or the entry of that folder that differs in case only. Of several, the first by name.
fs::path entryNoCase(const fs::path& folder, std::string_view name) {
    fs::path exact = folder / fromPortable(name);
    if (files::exists(exact)) {
        return exact;
    }
    fs::path found;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        const fs::path& candidate = entry->path();
        if (text::equalsNoCase(toText(candidate.filename()), name) && (found.empty() || candidate < found)) {
            found = candidate;
        }
    }
    return found;
}

} // namespace

fs::path executableFolder() {
    std::error_code failed;
    const fs::path executable = fs::read_symlink("/proc/self/exe", failed);
    if (failed) {
        fail(failed, "/proc/self/exe");
    }
    return executable.parent_path();
}

fs::path fromPortable(std::string_view path) {
    std::u8string portable(path.begin(), path.end());
    for (char8_t& c : portable) {
        c = c == u8'\\' ? u8'/' : c;
    }
    return fs::path(portable).make_preferred();
}

std::string toText(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

fs::path findNoCase(const fs::path& folder, std::string_view name) {
    fs::path found = folder;
    fs::path asWritten = folder;
    for (const std::string_view step : steps(name)) {
        asWritten /= fromPortable(step);
        if (!found.empty()) {
            found = entryNoCase(found, step);
        }
    }
    return found.empty() ? asWritten : found;
}

bool exists(const fs::path& path) noexcept {
    std::error_code failed;
    return fs::status(path, failed).type() != fs::file_type::not_found;
}

bool isWritableFolder(const fs::path& folder) noexcept {
    std::error_code failed;
    return fs::is_directory(folder, failed) &&
           ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

void createFolder(const fs::path& folder) {
    constexpr ::mode_t userAlone = 0700;
    if (folder.has_relative_path() && !files::exists(folder.parent_path())) {
        createFolder(folder.parent_path());
    }
    std::error_code failed;
    if (::mkdir(folder.c_str(), userAlone) != 0) {
        const std::error_code reason = lastError();
        if (!fs::is_directory(folder, failed)) {
            fail(reason, folder);
        }
    }
}

std::string readAll(const fs::path& path) {
    const fs::file_status status = statusOf(path);
    if (!fs::exists(status)) {
        fail(std::errc::no_such_file_or_directory, path);
    }
    if (!fs::is_regular_file(status)) {
        fail(fs::is_directory(status) ? std::errc::is_a_directory : std::errc::invalid_argument, path);
    }
    const Descriptor file(path, O_RDONLY);
    if (!file) {
        fail(lastError(), path);
    }
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(std::max<std::intmax_t>(file.size(), 0)));
    std::array<char, 1U << 16U> block; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read
    std::ptrdiff_t count = 0;
    while ((count = file.read(block.data(), block.size())) > 0) {
        bytes.append(block.data(), static_cast<std::size_t>(count));
    }
    if (count < 0) {
        fail(lastError(), path);
    }
    return bytes;
}

void writeAll(const fs::path& path, std::string_view bytes) {
    Descriptor file = openToWrite(path, O_TRUNC);
    const bool written = file.write(bytes);
    finishWriting(std::move(file), written, path);
}

void create(const fs::path& path, std::string_view bytes) {
    Descriptor file = openToWrite(path, O_EXCL);
    Scratch fresh(path);
    const bool written = file.write(bytes);
    finishWriting(std::move(file), written, path);
    fresh.keep();
}

void append(const fs::path& path, std::string_view bytes) {
    Descriptor file = openToWrite(path, O_APPEND);
    const std::intmax_t before = file.size();
    const bool written = before >= 0 && file.write(bytes);
    if (!written && before >= 0) {
        const int reason = errno;
        if (file.size() > before) {
            static_cast<void>(file.resize(before)); // half an entry would spoil the one that comes next
        }
        errno = reason;
    }
    finishWriting(std::move(file), written, path);
}

void writeAt(const fs::path& path, std::size_t offset, std::string_view bytes) {
    Descriptor file(path, O_RDWR);
    if (!file) {
        fail(lastError(), path);
    }
    const std::intmax_t size = file.size();
    const std::string before = bytesAt(file, offset, bytes.size(), path);
    const bool written = size >= 0 && file.writeAt(static_cast<off_t>(offset), bytes);
    if (!written && size >= 0) {
        const int reason = errno;
        static_cast<void>(file.writeAt(static_cast<off_t>(offset), before));
        static_cast<void>(file.size() <= size || file.resize(size));
        errno = reason;
    }
    finishWriting(std::move(file), written, path);
}

void remove(const fs::path& path) {
    std::error_code failed;
    if (fs::is_directory(fs::symlink_status(path, failed))) {
        fail(std::errc::is_a_directory, path);
    }
    if (!fs::remove(path, failed)) {
        fail(failed ? failed : std::make_error_code(std::errc::no_such_file_or_directory), path);
    }
}

void move(const fs::path& from, const fs::path& to) {
    if (!files::exists(from)) {
        fail(std::errc::no_such_file_or_directory, from);
    }
    if (files::exists(to)) {
        fail(std::errc::file_exists, to);
    }
    std::error_code failed;
    fs::rename(from, to, failed);
    if (failed == std::errc::cross_device_link) {
        // Between file systems: the target appears complete or not at all.
        Scratch copy(createTemporary(to.parent_path(), "mov"));
        failed.clear();
        if (fs::copy_file(from, copy.path(), fs::copy_options::overwrite_existing, failed)) {
            fs::rename(copy.path(), to, failed);
        }
        if (!failed) {
            copy.keep();
            files::remove(from);
        }
    }
    if (failed) {
        failWriting(failed, to);
    }
}

void moveOver(const fs::path& from, const fs::path& to) {
    std::error_code failed;
    fs::rename(from, to, failed);
    if (failed == std::errc::cross_device_link) {
        files::replaceWhole(to, files::readAll(from));
        files::remove(from);
    } else if (failed) {
        failWriting(failed, to);
    }
}

void replaceWhole(const fs::path& path, std::string_view bytes, Flush flush) {
    const fs::path target = behindLinks(path);
    const fs::file_status before = statusOf(target);
    if (fs::is_directory(before)) {
        fail(std::errc::is_a_directory, path);
    }
    Scratch fresh(createTemporary(target.parent_path(), "new"));
    Descriptor file = openToWrite(fresh.path(), O_TRUNC);
    const bool written = file.write(bytes) && (flush == Flush::no || file.flush());
    finishWriting(std::move(file), written, path);
    std::error_code failed;
    if (fs::exists(before)) {
        fs::permissions(fresh.path(), before.permissions(), failed); // the new file serves the same people
    }
    fs::rename(fresh.path(), target, failed);
    if (failed) {
        failWriting(failed, path);
    }
    fresh.keep();
}

bool writeThrough(const fs::path& path, const std::vector<std::string_view>& pieces,
                  const std::function<bool()>& goesOn) {
    Descriptor file = openToWrite(path, O_TRUNC);
    for (const std::string_view piece : pieces) {
        if (!goesOn()) {
            return false;
        }
        if (!file.write(piece)) {
            failWriting(lastError(), path);
        }
    }
    if (!goesOn()) {
        return false;
    }
    const bool written = file.flush();
    finishWriting(std::move(file), written, path);
    return true;
}

fs::path createTemporary(const fs::path& folder, std::string_view prefix) {
    constexpr unsigned names = 0x10000;
    static std::atomic<unsigned> next =
        static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count());
    for (unsigned tries = 0; tries < names; ++tries) {
        std::array<char, 5> number{};
        static_cast<void>(std::snprintf(number.data(), number.size(), "%04X", next++ % names));
        fs::path path = folder / fromPortable(std::string(text::left(prefix, 3)) + number.data() + ".TMP");
        if (const Descriptor file(path, O_WRONLY | O_CREAT | O_EXCL); file) {
            return path;
        }
        if (const std::error_code reason = lastError(); reason != std::errc::file_exists) {
            failWriting(reason, path);
        }
    }
    fail(std::errc::file_exists, folder);
}

Stamp stamp(const fs::path& path) {
    std::error_code failed;
    Stamp result;
    result.size = fs::file_size(path, failed);
    if (!failed) {
        result.time = fs::last_write_time(path, failed);
    }
    if (failed) {
        fail(failed, path);
    }
    return result;
}

} // namespace tv::files
