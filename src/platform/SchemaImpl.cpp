#include "platform/SchemaImpl.h"

#include "platform/Error.h"
#include "platform/XercesSupport.h"

#include <xercesc/framework/XMLContentModel.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

namespace tv {

using namespace xercesc; // NOLINT(google-build-using-namespace)

/// Turns a type's schema particles into a content expression over numbered names.
class TypeModelBuilder {
public:
    explicit TypeModelBuilder(TypeModel& model)
        : model_(model) {}

    /// False when the particles hold what a list of names cannot say (wildcards).
    bool build(const ContentSpecNode* root);

private:
    std::optional<ContentExpression> expression(const ContentSpecNode& node);
    std::optional<ContentExpression> leaf(const ContentSpecNode& node);
    std::optional<ContentExpression> group(const ContentSpecNode& node, ContentExpression::Kind kind);
    std::optional<ContentExpression> repeated(const ContentSpecNode& node, std::uint32_t min,
                                              std::uint32_t max);
    bool collectAll(const ContentSpecNode* node, bool optionalHere, std::vector<bool>& required);
    ChildName number(const QName& name);

    TypeModel& model_;
    std::vector<std::string> texts_;
};

ChildName TypeModelBuilder::number(const QName& name) {
    const std::u16string local(name.getLocalPart());
    for (ChildName i = 0; i < model_.names_.size(); ++i) {
        if (model_.names_[i].uri == name.getURI() && model_.names_[i].local == local) {
            return i;
        }
    }
    model_.names_.push_back({local, name.getURI()});
    texts_.push_back(xerces::toUtf8(name.getLocalPart()));
    return static_cast<ChildName>(model_.names_.size() - 1);
}

std::optional<ContentExpression> TypeModelBuilder::leaf(const ContentSpecNode& node) {
    ContentExpression result;
    const QName* name = node.getElement();
    if (name == nullptr || name->getURI() == XMLContentModel::gEpsilonFakeId) {
        return result;
    }
    result.kind = ContentExpression::Kind::Name;
    result.name = number(*name);
    return result;
}

std::optional<ContentExpression> TypeModelBuilder::group(const ContentSpecNode& node,
                                                         ContentExpression::Kind kind) {
    ContentExpression result;
    result.kind = kind;
    for (const ContentSpecNode* part : {node.getFirst(), node.getSecond()}) {
        if (part != nullptr) {
            std::optional<ContentExpression> one = expression(*part);
            if (!one) {
                return std::nullopt;
            }
            result.parts.push_back(std::move(*one));
        }
    }
    return result;
}

std::optional<ContentExpression> TypeModelBuilder::repeated(const ContentSpecNode& node, std::uint32_t min,
                                                            std::uint32_t max) {
    std::optional<ContentExpression> result = group(node, ContentExpression::Kind::Sequence);
    if (result) {
        result->minOccurs = min;
        result->maxOccurs = max;
    }
    return result;
}

std::optional<ContentExpression> TypeModelBuilder::expression(const ContentSpecNode& node) {
    std::optional<ContentExpression> result;
    switch (node.getType()) {
    case ContentSpecNode::Leaf:
        result = leaf(node);
        break;
    case ContentSpecNode::ZeroOrOne:
        result = repeated(node, 0, 1);
        break;
    case ContentSpecNode::ZeroOrMore:
        result = repeated(node, 0, ContentExpression::unbounded);
        break;
    case ContentSpecNode::OneOrMore:
        result = repeated(node, 1, ContentExpression::unbounded);
        break;
    case ContentSpecNode::Choice:
    case ContentSpecNode::ModelGroupChoice:
        result = group(node, ContentExpression::Kind::Choice);
        break;
    case ContentSpecNode::Sequence:
    case ContentSpecNode::ModelGroupSequence:
        result = group(node, ContentExpression::Kind::Sequence);
        break;
    default:
        return std::nullopt;
    }
    if (result && (node.getMinOccurs() != 1 || node.getMaxOccurs() != 1)) {
        ContentExpression outer;
        outer.kind = ContentExpression::Kind::Sequence;
        outer.parts.push_back(std::move(*result));
        outer.minOccurs = static_cast<std::uint32_t>(node.getMinOccurs());
        outer.maxOccurs = node.getMaxOccurs() < 0 ? ContentExpression::unbounded
                                                  : static_cast<std::uint32_t>(node.getMaxOccurs());
        return outer;
    }
    return result;
}

bool TypeModelBuilder::collectAll(const ContentSpecNode* node, bool optionalHere,
                                  std::vector<bool>& required) {
    if (node == nullptr) {
        return true;
    }
    const bool isOptional =
        optionalHere || node->getType() == ContentSpecNode::ZeroOrOne || node->getMinOccurs() == 0;
    if (node->getType() == ContentSpecNode::Leaf) {
        if (node->getElement() == nullptr ||
            node->getElement()->getURI() == XMLContentModel::gEpsilonFakeId) {
            return true;
        }
        number(*node->getElement());
        required.push_back(!isOptional);
        return required.size() == model_.names_.size();
    }
    if (node->getType() != ContentSpecNode::All && node->getType() != ContentSpecNode::ZeroOrOne) {
        return false;
    }
    return collectAll(node->getFirst(), isOptional, required) &&
           collectAll(node->getSecond(), isOptional, required);
}

bool TypeModelBuilder::build(const ContentSpecNode* root) {
    const ContentSpecNode* all = root;
    if (all->getType() == ContentSpecNode::ZeroOrOne) {
        all = all->getFirst();
    }
    if (all->getType() == ContentSpecNode::All) {
        std::vector<bool> required;
        if (!collectAll(root, false, required)) {
            return false;
        }
        model_.children_ =
            std::make_unique<ContentModel>(ContentModel::inAnyOrder(texts_, std::move(required)));
        return true;
    }
    const std::optional<ContentExpression> whole = expression(*root);
    if (!whole) {
        return false;
    }
    model_.children_ = std::make_unique<ContentModel>(texts_, *whole);
    return true;
}

TypeModel TypeModel::noChildren() {
    return TypeModel(Kind::NoChildren);
}

TypeModel TypeModel::unchecked() {
    return TypeModel(Kind::Unchecked);
}

TypeModel TypeModel::ofType(const ComplexTypeInfo& type) {
    switch (type.getContentType()) {
    case SchemaElementDecl::Any:
        return unchecked();
    case SchemaElementDecl::Mixed_Simple:
    case SchemaElementDecl::Mixed_Complex:
    case SchemaElementDecl::Children:
        break;
    default:
        return noChildren();
    }
    if (type.getContentSpec() == nullptr) {
        return noChildren();
    }
    TypeModel model(Kind::Children);
    try {
        TypeModelBuilder builder(model);
        if (builder.build(type.getContentSpec())) {
            return model;
        }
    } catch (const Error&) {
        // Too large for an automaton of ours: the parser's own check serves.
    }
    return unchecked();
}

ChildName TypeModel::findByName(const XMLElementDecl& child) const {
    const QName* name = child.getElementName();
    for (ChildName i = 0; i < names_.size(); ++i) {
        if (names_[i].uri == name->getURI() &&
            XMLString::equals(names_[i].local.c_str(), name->getLocalPart())) {
            return i;
        }
    }
    return unknownChild;
}

ChildName TypeModel::numberOf(const XMLElementDecl& child) const {
    // Elements that the parser made up for undeclared names live no longer than their document.
    if (!child.isDeclared()) {
        return unknownChild;
    }
    const auto known = numbers_.find(&child);
    if (known != numbers_.end()) {
        return known->second;
    }
    ChildName number = findByName(child);
    const auto* element = dynamic_cast<const SchemaElementDecl*>(&child);
    while (number == unknownChild && element != nullptr) {
        element = element->getSubstitutionGroupElem();
        number = element == nullptr ? unknownChild : findByName(*element);
    }
    numbers_.emplace(&child, number);
    return number;
}

const TypeModel& Schema::Impl::modelOf(const ComplexTypeInfo* type, const SchemaElementDecl& element) const {
    static const TypeModel simple = TypeModel::noChildren();
    static const TypeModel anything = TypeModel::unchecked();
    if (type == nullptr) {
        const bool isSimple = element.isDeclared() && element.getModelType() == SchemaElementDecl::Simple;
        return isSimple ? simple : anything;
    }
    const auto known = models.find(type);
    if (known != models.end()) {
        return known->second;
    }
    return models.emplace(type, TypeModel::ofType(*type)).first->second;
}

const std::string& Schema::Impl::nameOf(const XMLElementDecl& element) const {
    const auto known = names.find(&element);
    if (known != names.end()) {
        return known->second;
    }
    return names.emplace(&element, xerces::toUtf8(element.getBaseName())).first->second;
}

} // namespace tv
