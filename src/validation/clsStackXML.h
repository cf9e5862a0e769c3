#pragma once

#include "model/LayoutNode.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// The layout nodes in which a document's walk stands, from the root (element 1) up to the innermost.
/// The nodes belong to the layout, which outlives the walk.
class clsStackXML {
public:
    /// Takes the node over and empties the caller's reference. Always true.
    bool push(const LayoutNode*& node);
    /// Drops the top. False on an empty stack.
    bool pop();
    void popAll();
    void destroy() { popAll(); }

    /// Element `i` from 1. Throws Error -1 "Array out of Bounds" outside of 1 to the count.
    const LayoutNode& getElement(std::int32_t i) const;
    /// The top. Throws Error -1 "Array is Empty" when there is none.
    const LayoutNode& getLastElement() const;
    const LayoutNode& peek() const { return getLastElement(); }
    /// The top, or null.
    const LayoutNode* top() const noexcept { return itens_.empty() ? nullptr : itens_.back().node; }
    /// The node that the next element of the document stands for below the top; null where the layout knows
    /// none, and on an empty stack.
    const LayoutNode* nextChild(std::string_view name) {
        return itens_.empty() ? nullptr : itens_.back().node->nextChild(name, itens_.back().place);
    }

    /// Tags from the root to the top, joined by "."; empty on an empty stack.
    std::string getPath() const;
    bool isEmpty() const noexcept { return itens_.empty(); }
    std::int32_t lenght() const noexcept { return static_cast<std::int32_t>(itens_.size()); }

private:
    struct Item {
        const LayoutNode* node;
        std::size_t place = 0; ///< Where the walk stands below the node (LayoutNode::nextChild).
    };
    std::vector<Item> itens_;
};

} // namespace tv
