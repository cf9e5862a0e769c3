#pragma once

#include "platform/Error.h"
#include "platform/text.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tv {

/// Items in the order in which they were added, reached by position from 1 or by key.
/// Keys compare without regard to case, accented Latin letters included. Lookup by key is one hash lookup.
template<typename T>
class KeyedCollection {
public:
    using const_iterator = typename std::vector<T>::const_iterator;

    /// Adds `item` at the end. Throws Error 457 when the key is taken.
    void Add(T item, std::string_view key);
    /// The item at a position from 1. Throws Error 9 outside of 1 to Count.
    const T& Item(std::size_t position) const;
    /// The item under a key. Throws Error 5 when there is none.
    const T& Item(std::string_view key) const;
    /// The item under a key, or null: the lookup for callers that expect a miss.
    const T* find(std::string_view key) const;
    /// Takes the item under a key out. Throws Error 5 when there is none.
    void Remove(std::string_view key);
    void clear();

    std::size_t Count() const noexcept { return items_.size(); }
    bool empty() const noexcept { return items_.empty(); }
    const_iterator begin() const noexcept { return items_.begin(); }
    const_iterator end() const noexcept { return items_.end(); }

private:
    std::vector<T> items_;
    std::vector<std::string> keys_; // folded, in step with items_
    std::unordered_map<std::string, std::size_t, text::Hash, std::equal_to<>> index_;
};

template<typename T>
void KeyedCollection<T>::Add(T item, std::string_view key) {
    std::string folded = text::foldKey(key);
    if (!index_.emplace(folded, items_.size()).second) {
        throw Error(errc::keyTaken, "KeyedCollection.Add",
                    "A chave já existe na coleção: " + std::string(key));
    }
    items_.push_back(std::move(item));
    keys_.push_back(std::move(folded));
}

template<typename T>
const T& KeyedCollection<T>::Item(std::size_t position) const {
    if (position < 1 || position > items_.size()) {
        throw Error(errc::subscriptOutOfRange, "KeyedCollection.Item",
                    "Posição fora da coleção: " + std::to_string(position));
    }
    return items_[position - 1];
}

template<typename T>
const T& KeyedCollection<T>::Item(std::string_view key) const {
    if (const T* found = find(key)) {
        return *found;
    }
    throw Error(errc::invalidCall, "KeyedCollection.Item",
                "A chave não existe na coleção: " + std::string(key));
}

template<typename T>
const T* KeyedCollection<T>::find(std::string_view key) const {
    // Most keys come in lower case already, so the folding copy is made only when it changes something.
    const auto found = text::isFolded(key) ? index_.find(key) : index_.find(text::foldKey(key));
    return found == index_.end() ? nullptr : &items_[found->second];
}

template<typename T>
void KeyedCollection<T>::Remove(std::string_view key) {
    const auto found = index_.find(text::foldKey(key));
    if (found == index_.end()) {
        throw Error(errc::invalidCall, "KeyedCollection.Remove",
                    "A chave não existe na coleção: " + std::string(key));
    }
    const std::size_t position = found->second;
    index_.erase(found);
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(position));
    keys_.erase(keys_.begin() + static_cast<std::ptrdiff_t>(position));
    for (std::size_t i = position; i < keys_.size(); ++i) {
        index_.find(keys_[i])->second = i;
    }
}

template<typename T>
void KeyedCollection<T>::clear() {
    items_.clear();
    keys_.clear();
    index_.clear();
}

} // namespace tv
