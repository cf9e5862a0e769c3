#pragma once

#include <xercesc/framework/XMLElementDecl.hpp>

#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tv {

/// What is known of declared elements, by their declarations, which outlive the table. A grammar numbers its
/// declarations, so that nearly all of them are found by their number.
template<class T>
class ElementTable {
public:
    /// Null where nothing has been added for the element.
    const T* find(const xercesc::XMLElementDecl& element) const {
        const std::size_t number = element.getId();
        if (number < byNumber_.size() && byNumber_[number].first == &element) {
            return byNumber_[number].second;
        }
        const auto known = all_.find(&element);
        return known == all_.end() ? nullptr : &known->second;
    }

    /// The value keeps its place for as long as the table lives.
    const T& add(const xercesc::XMLElementDecl& element, T value) {
        const T& added = all_.insert_or_assign(&element, std::move(value)).first->second;
        const std::size_t number = element.getId();
        if (number < numbers) {
            if (number >= byNumber_.size()) {
                byNumber_.resize(number + 1);
            }
            byNumber_[number] = {&element, &added}; // declarations of two grammars may share a number
        }
        return added;
    }

private:
    static constexpr std::size_t numbers = 8192;
    std::unordered_map<const xercesc::XMLElementDecl*, T> all_;
    std::vector<std::pair<const xercesc::XMLElementDecl*, const T*>> byNumber_;
};

} // namespace tv
