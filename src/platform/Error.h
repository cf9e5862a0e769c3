#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace tv {

/// Numbers of the library failures that the system meets. Errors that the system raises itself bear the
/// numbers that their places give them.
namespace errc {
inline constexpr std::int32_t invalidCall = 5;         ///< A key or an argument that nothing answers to.
inline constexpr std::int32_t overflow = 6;            ///< A number that its type cannot hold.
inline constexpr std::int32_t subscriptOutOfRange = 9; ///< A position outside of a collection.
inline constexpr std::int32_t divisionByZero = 11;     ///< A division by zero or an undefined operation.
inline constexpr std::int32_t typeMismatch = 13;       ///< A text that is no number, or no date.
inline constexpr std::int32_t fileNotFound = 53;       ///< A file that is not there.
inline constexpr std::int32_t fileExists = 58;         ///< A file that is there and must not be.
inline constexpr std::int32_t diskFull = 61;           ///< No space left.
inline constexpr std::int32_t permissionDenied = 70;   ///< A file or folder that may not be read or written.
inline constexpr std::int32_t pathError = 75;          ///< Any other failure of a file operation.
inline constexpr std::int32_t pathNotFound = 76;       ///< A folder that is not there.
inline constexpr std::int32_t objectNotSet = 91;       ///< A member of an object that does not exist.
inline constexpr std::int32_t memberNotOffered = 438;  ///< A late-bound member that the object does not have.
inline constexpr std::int32_t keyTaken = 457;          ///< A key that the collection already holds.
} // namespace errc

/// The one exception of the core: a number, the place it comes from and a description for people.
class Error : public std::exception {
public:
    Error(std::int32_t number, std::string source, std::string description)
        : number_(number)
        , source_(std::move(source))
        , description_(std::move(description)) {}

    /// Error number; negative for the system's own errors.
    std::int32_t number() const noexcept { return number_; }
    /// Object or routine that raised it; may be empty.
    const std::string& source() const noexcept { return source_; }
    /// Text in UTF-8.
    const std::string& description() const noexcept { return description_; }
    const char* what() const noexcept override { return description_.c_str(); }

private:
    std::int32_t number_;
    std::string source_;
    std::string description_;
};

/// The form in which every failure reaches the log: description + "[" + number + "]". Errors of the
/// language's library count as number 5 with their own text.
std::string logText(const std::exception& failure);

} // namespace tv
