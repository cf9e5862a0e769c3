#include "platform/TextPool.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace tv::workbook {
namespace {

std::uint32_t hashOf(std::string_view text) noexcept {
    const std::uint64_t wide = std::hash<std::string_view>{}(text);
    return static_cast<std::uint32_t>(wide ^ wide >> 32U);
}

} // namespace

TextId TextPool::add(std::string_view text) {
    if (text.empty()) {
        return noText;
    }
    if (2 * texts_.size() >= places_.size()) {
        grow();
    }
    const std::uint32_t hash = hashOf(text);
    const std::size_t mask = places_.size() - 1;
    std::size_t at = hash & mask;
    for (; places_[at] != noText; at = (at + 1) & mask) {
        const TextId id = places_[at];
        if (hashes_[id - 1] == hash && texts_[id - 1] == text) {
            return id;
        }
    }
    texts_.push_back(keep(text));
    hashes_.push_back(hash);
    places_[at] = size();
    return size();
}

void TextPool::grow() {
    constexpr std::size_t smallest = 64;
    places_.assign(std::max(smallest, 2 * places_.size()), noText);
    const std::size_t mask = places_.size() - 1;
    for (TextId id = 1; id <= size(); ++id) {
        std::size_t at = hashes_[id - 1] & mask;
        while (places_[at] != noText) {
            at = (at + 1) & mask;
        }
        places_[at] = id;
    }
}

std::string_view TextPool::keep(std::string_view text) {
    constexpr std::size_t block = 65536;
    if (text.size() > left_) {
        left_ = std::max(block, text.size());
        blocks_.emplace_back(left_);
        free_ = blocks_.back().data();
    }
    std::memcpy(free_, text.data(), text.size());
    const std::string_view kept(free_, text.size());
    free_ += text.size();
    left_ -= text.size();
    return kept;
}

} // namespace tv::workbook
