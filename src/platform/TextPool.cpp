#include "platform/TextPool.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace tv::workbook {

TextId TextPool::add(std::string_view text) {
    if (text.empty()) {
        return noText;
    }
    if (2 * texts_.size() >= places_.size()) {
        grow();
    }
    TextId& place = places_[placeOf(text)];
    if (place == noText) {
        texts_.push_back(keep(text));
        place = size();
    }
    return place;
}

/// Where the text stands, or the free place that it is to have.
std::size_t TextPool::placeOf(std::string_view text) const noexcept {
    const std::size_t mask = places_.size() - 1;
    std::size_t at = std::hash<std::string_view>{}(text)&mask;
    while (places_[at] != noText && texts_[places_[at] - 1] != text) {
        at = (at + 1) & mask;
    }
    return at;
}

void TextPool::grow() {
    constexpr std::size_t smallest = 64;
    places_.assign(std::max(smallest, 2 * places_.size()), noText);
    for (TextId id = 1; id <= size(); ++id) {
        places_[placeOf(texts_[id - 1])] = id;
    }
}

std::string_view TextPool::keep(std::string_view text) {
    constexpr std::size_t block = 65536;
    if (text.size() > left_) {
        left_ = std::max(block, text.size());
        blocks_.push_back(std::make_unique<char[]>(left_));
        free_ = blocks_.back().get();
    }
    std::memcpy(free_, text.data(), text.size());
    const std::string_view kept(free_, text.size());
    free_ += text.size();
    left_ -= text.size();
    return kept;
}

} // namespace tv::workbook
