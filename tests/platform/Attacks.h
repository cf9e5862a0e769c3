#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Documents that mean harm. Texts of any size are made only when they are asked for.
namespace tv::test::attack {

/// As many parts as an attack has: a million, a tenth of it under the sanitizers, which make each part
/// several times as dear.
#ifdef __SANITIZE_ADDRESS__
inline constexpr std::size_t million = 100'000;
#else
inline constexpr std::size_t million = 1'000'000;
#endif

inline std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

/// A DOCTYPE with these declarations.
inline std::string doctype(const std::string& root, const std::string& declarations) {
    return "<!DOCTYPE " + root + " [" + declarations + "]>";
}

/// Entities e0 to e<levels> that each hold the one before ten times.
inline std::string laughs(int levels) {
    std::string declarations = "<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i <= levels; ++i) {
        declarations += "<!ENTITY e" + std::to_string(i) + " \"" +
                        repeated("&e" + std::to_string(i - 1) + ";", 10) + "\">";
    }
    return declarations;
}

/// The same as parameter entities, and the use of the last one.
inline std::string parameterLaughs(int levels) {
    std::string declarations = "<!ENTITY % p0 \"<!ENTITY x 'y'>\">";
    for (int i = 1; i <= levels; ++i) {
        declarations += "<!ENTITY % p" + std::to_string(i) + " \"" +
                        repeated("&#37;p" + std::to_string(i - 1) + ";", 10) + "\">";
    }
    return declarations + "%p" + std::to_string(levels) + ";";
}

/// `count` declarations, one for each number that `{}` stands for.
inline std::string declarations(const std::string& pattern, int count) {
    const std::size_t at = pattern.find("{}");
    std::string result;
    for (int i = 0; i < count; ++i) {
        result += pattern.substr(0, at) + std::to_string(i) + pattern.substr(at + 2);
    }
    return result;
}

/// `levels` elements, one in the other.
inline std::string nested(const std::string& name, std::size_t levels) {
    return repeated("<" + name + ">", levels) + repeated("</" + name + ">", levels);
}

/// ` a0='' a1='' ...`
inline std::string attributes(int count) {
    return declarations(" a{}=''", count);
}

/// The bytes of plain text in UTF-16, little end first, without a byte order mark.
inline std::string utf16(const std::string& ascii) {
    std::string result;
    for (const char c : ascii) {
        result += c;
        result += '\0';
    }
    return result;
}

} // namespace tv::test::attack
