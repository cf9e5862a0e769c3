#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tv::workbook {

/// The number under which a pool knows a text; 0 is no text.
using TextId = std::uint32_t;
inline constexpr TextId noText = 0;

/// Keeps every text once, however many cells bear it. Numbers run from 1 in the order of arrival. Moving the
/// pool keeps the texts where they are.
class TextPool {
public:
    /// The number of a text, added if it is new. The empty text is `noText`.
    TextId add(std::string_view text);
    /// The text of a number that `add` gave; empty for `noText`.
    std::string_view operator[](TextId id) const noexcept {
        return id == noText ? std::string_view{} : texts_[id - 1];
    }
    /// The highest number.
    TextId size() const noexcept { return static_cast<TextId>(texts_.size()); }

private:
    std::string_view keep(std::string_view text);
    void grow();

    std::vector<std::vector<char>> blocks_;
    char* free_ = nullptr; // in the last block
    std::size_t left_ = 0;
    std::vector<std::string_view> texts_;
    std::vector<std::uint32_t> hashes_; // in step with texts_
    std::vector<TextId> places_;        // open addressing; as long as a power of two, at most half full
};

} // namespace tv::workbook
