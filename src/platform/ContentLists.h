#pragma once

#include <algorithm>
#include <vector>

/// Small lists that are used as sets by content models.
namespace tv::content {

template<typename T>
bool holds(const std::vector<T>& items, const T& item) {
    return std::find(items.begin(), items.end(), item) != items.end();
}

template<typename T>
void addOnce(std::vector<T>& items, const T& item) {
    if (!holds(items, item)) {
        items.push_back(item);
    }
}

} // namespace tv::content
