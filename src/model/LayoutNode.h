#pragma once

#include "platform/Error.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tv {

/// What layouts, sections and fields have in common for whoever walks a document: a node of the layout tree.
/// A kind that does not offer a member throws Error 438; callers expect that.
class LayoutNode {
public:
    virtual ~LayoutNode() = default;

    /// Element name in a document.
    virtual const std::string& getTag() const = 0;
    /// Display name.
    virtual const std::string& getNome() const = 0;
    /// Judges a value by the node's rules. Layouts and sections accept every value.
    virtual bool isValido(std::string_view valor) const = 0;
    /// True for the field that identifies a fund.
    virtual bool isKeyField() const = 0;
    /// False for the layout itself, which stands at the bottom of the walk and is never popped.
    virtual bool hasParent() const = 0;
    /// The node that an element of that name stands for below this one. Throws Error 5 when the node knows
    /// none, Error 438 on a field.
    virtual const LayoutNode& GetChild(std::string_view name) const = 0;
    /// GetChild without the cost of an exception: null where GetChild throws.
    virtual const LayoutNode* findChild(std::string_view name) const = 0;
    /// findChild for a walk in which children mostly come in the layout's order: `place`, 0 at the node's
    /// start, keeps where the walk stands below this node.
    virtual const LayoutNode* nextChild(std::string_view name, std::size_t& /*place*/) const {
        return findChild(name);
    }
};

} // namespace tv
