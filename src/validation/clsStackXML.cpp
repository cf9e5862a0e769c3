#include "validation/clsStackXML.h"

#include "platform/Error.h"

#include <utility>

namespace tv {

bool clsStackXML::push(const LayoutNode*& node) {
    itens_.push_back({std::exchange(node, nullptr)});
    return true;
}

bool clsStackXML::pop() {
    if (itens_.empty()) {
        return false;
    }
    itens_.pop_back();
    return true;
}

void clsStackXML::popAll() {
    while (pop()) {
    }
}

const LayoutNode& clsStackXML::getElement(std::int32_t i) const {
    if (i < 1 || i > lenght()) {
        throw Error(-1, "clsStackXML", "Array out of Bounds");
    }
    return *itens_[static_cast<std::size_t>(i) - 1].node;
}

const LayoutNode& clsStackXML::getLastElement() const {
    if (itens_.empty()) {
        throw Error(-1, "clsStackXML", "Array is Empty");
    }
    return *itens_.back().node;
}

std::string clsStackXML::getPath() const {
    std::string path;
    for (const Item& item : itens_) {
        if (!path.empty()) {
            path += '.';
        }
        path += item.node->getTag();
    }
    return path;
}

} // namespace tv
