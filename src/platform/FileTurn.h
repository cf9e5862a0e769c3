#pragma once

#include <filesystem>

namespace tv {

/// Keeps other processes, and other objects of this one, waiting for the same file while it lives. A process
/// that ends in any way gives its turn back. Where the file system knows no locks nobody waits.
class FileTurn {
public:
    /// Makes the file when it is not there and waits for its turn. Throws Error 61, 70, 75 or 76 when the
    /// file cannot be made.
    explicit FileTurn(const std::filesystem::path& file);
    ~FileTurn();
    FileTurn(const FileTurn&) = delete;
    FileTurn& operator=(const FileTurn&) = delete;

private:
    int descriptor_;
};

} // namespace tv
