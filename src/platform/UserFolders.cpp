#include "platform/UserFolders.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace tv::userfolders {

namespace {

/// A folder that the environment names from the root; others count as unset.
fs::path fromEnvironment(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nobody changes the environment
    const fs::path folder = value == nullptr ? "" : value;
    return folder.is_absolute() ? folder : fs::path();
}

fs::path homeKnownToTheSystem() {
    constexpr std::size_t enough = 1U << 14U;
    std::vector<char> texts(enough);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::geteuid(), &entry, texts.data(), texts.size(), &found) != 0 || found == nullptr) {
        return {};
    }
    const fs::path home = entry.pw_dir == nullptr ? "" : entry.pw_dir;
    return home.is_absolute() ? home : fs::path();
}

} // namespace

fs::path data() {
    fs::path folder = fromEnvironment("XDG_DATA_HOME");
    if (!folder.empty()) {
        return folder;
    }
    fs::path home = fromEnvironment("HOME");
    if (home.empty()) {
        home = homeKnownToTheSystem();
    }
    return home.empty() ? home : home / ".local" / "share";
}

} // namespace tv::userfolders
