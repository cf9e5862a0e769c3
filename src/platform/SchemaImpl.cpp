#include "platform/SchemaImpl.h"

#include "platform/Error.h"
#include "platform/XercesSupport.h"

#include <xercesc/framework/XMLContentModel.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/validators/common/ContentSpecNode.hpp>

#include <algorithm>

namespace tv {

using namespace xercesc; // NOLINT(google-build-using-namespace)

namespace {

/// The empty namespace's number in every string pool of the library.
constexpr unsigned int noNamespace = 1;

/// What a wildcard stands as in a message.
constexpr const char* wildcardText = "(qualquer)";

// The smallest expression that takes all that `e` takes, without large counts.
ContentExpression withoutCounts(ContentExpression e) {
    if (e.maxOccurs > 1) {
        e.maxOccurs = ContentExpression::unbounded;
    }
    e.minOccurs = std::min(e.minOccurs, 1U);
    std::transform(e.parts.begin(), e.parts.end(), e.parts.begin(), withoutCounts);
    return e;
}

std::uint32_t maxOccursOf(const ContentSpecNode& node) {
    return node.getMaxOccurs() < 0 ? ContentExpression::unbounded
                                   : static_cast<std::uint32_t>(node.getMaxOccurs());
}

} // namespace

/// Turns a type's schema particles into a content expression over numbered names.
class TypeModelBuilder {
public:
    explicit TypeModelBuilder(TypeModel& model)
        : model_(model) {}

    /// False when the particles are of a kind that no schema of today has.
    bool build(const ContentSpecNode* root);

private:
    std::optional<ContentExpression> expression(const ContentSpecNode& node);
    std::optional<ContentExpression> once(const ContentSpecNode& node);
    ContentExpression leaf(const ContentSpecNode& node);
    std::optional<ContentExpression> wildcard(const ContentSpecNode& node);
    std::optional<ContentExpression> group(const ContentSpecNode& node, ContentExpression::Kind kind);
    std::optional<ContentExpression> repeated(const ContentSpecNode& node, std::uint32_t min,
                                              std::uint32_t max);
    bool buildAnyOrder(const ContentSpecNode& all, bool mayBeEmpty);
    bool collectAll(const ContentSpecNode* node, bool optionalHere, std::vector<bool>& required);
    ChildName number(const QName& name);
    ChildName number(TypeModel::Wildcard wildcard);

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

ChildName TypeModelBuilder::number(TypeModel::Wildcard wildcard) {
    for (const TypeModel::Wildcard& known : model_.wildcards_) {
        if (known.takes == wildcard.takes && known.uri == wildcard.uri) {
            return known.number;
        }
    }
    wildcard.number = static_cast<ChildName>(model_.names_.size());
    model_.wildcards_.push_back(wildcard);
    model_.names_.push_back({std::u16string(), wildcard.uri});
    texts_.emplace_back(wildcardText);
    return wildcard.number;
}

ContentExpression TypeModelBuilder::leaf(const ContentSpecNode& node) {
    ContentExpression result;
    const QName* name = node.getElement();
    if (name == nullptr || name->getURI() == XMLContentModel::gEpsilonFakeId) {
        return result;
    }
    result.kind = ContentExpression::Kind::Name;
    result.name = number(*name);
    return result;
}

std::optional<ContentExpression> TypeModelBuilder::wildcard(const ContentSpecNode& node) {
    // Whether what a wildcard takes is checked further (strict, lax, skip) is not a matter of order.
    constexpr int processingBits = 0x30;
    TypeModel::Wildcard one{TypeModel::Wildcard::Takes::Any, 0, 0};
    switch (node.getType() & ~processingBits) {
    case ContentSpecNode::Any:
        break;
    case ContentSpecNode::Any_Other:
        one.takes = TypeModel::Wildcard::Takes::OtherNamespaces;
        one.uri = node.getElement()->getURI();
        break;
    case ContentSpecNode::Any_NS:
        one.takes = TypeModel::Wildcard::Takes::Namespace;
        one.uri = node.getElement()->getURI();
        break;
    default:
        return std::nullopt;
    }
    ContentExpression result;
    result.kind = ContentExpression::Kind::Name;
    result.name = number(one);
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

std::optional<ContentExpression> TypeModelBuilder::once(const ContentSpecNode& node) {
    switch (node.getType()) {
    case ContentSpecNode::Leaf:
        return leaf(node);
    case ContentSpecNode::ZeroOrOne:
        return repeated(node, 0, 1);
    case ContentSpecNode::ZeroOrMore:
        return repeated(node, 0, ContentExpression::unbounded);
    case ContentSpecNode::OneOrMore:
        return repeated(node, 1, ContentExpression::unbounded);
    case ContentSpecNode::Choice:
    case ContentSpecNode::ModelGroupChoice:
    case ContentSpecNode::Any_NS_Choice:
        return group(node, ContentExpression::Kind::Choice);
    case ContentSpecNode::Sequence:
    case ContentSpecNode::ModelGroupSequence:
        return group(node, ContentExpression::Kind::Sequence);
    default:
        return wildcard(node);
    }
}

std::optional<ContentExpression> TypeModelBuilder::expression(const ContentSpecNode& node) {
    if (node.getType() == ContentSpecNode::Loop) {
        return repeated(node, static_cast<std::uint32_t>(node.getMinOccurs()), maxOccursOf(node));
    }
    std::optional<ContentExpression> result = once(node);
    if (result && (node.getMinOccurs() != 1 || node.getMaxOccurs() != 1)) {
        ContentExpression outer;
        outer.kind = ContentExpression::Kind::Sequence;
        outer.parts.push_back(std::move(*result));
        outer.minOccurs = static_cast<std::uint32_t>(node.getMinOccurs());
        outer.maxOccurs = maxOccursOf(node);
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

bool TypeModelBuilder::buildAnyOrder(const ContentSpecNode& all, bool mayBeEmpty) {
    std::vector<bool> required;
    if (!collectAll(all.getFirst(), false, required) || !collectAll(all.getSecond(), false, required)) {
        return false;
    }
    model_.children_ =
        std::make_unique<ContentModel>(ContentModel::inAnyOrder(texts_, std::move(required), mayBeEmpty));
    return true;
}

bool TypeModelBuilder::build(const ContentSpecNode* root) {
    const bool isOptional = root->getType() == ContentSpecNode::ZeroOrOne;
    const ContentSpecNode* inner = isOptional ? root->getFirst() : root;
    if (inner->getType() == ContentSpecNode::All) {
        return buildAnyOrder(*inner, isOptional || inner->getMinOccurs() == 0);
    }
    const std::optional<ContentExpression> whole = expression(*root);
    if (!whole) {
        return false;
    }
    try {
        model_.children_ = std::make_unique<ContentModel>(texts_, *whole);
    } catch (const Error&) {
        model_.children_ = std::make_unique<ContentModel>(texts_, withoutCounts(*whole));
        model_.isExact_ = false;
    }
    return true;
}

TypeModel TypeModel::noChildren() {
    return TypeModel(Kind::NoChildren);
}

TypeModel TypeModel::unchecked() {
    return TypeModel(Kind::Unchecked);
}

TypeModel TypeModel::ofType(ComplexTypeInfo& type) {
    const int content = type.getContentType();
    const bool elementsOnly = content == SchemaElementDecl::Children;
    const bool isMixed =
        content == SchemaElementDecl::Mixed_Simple || content == SchemaElementDecl::Mixed_Complex;
    if (content == SchemaElementDecl::Any) {
        return unchecked();
    }
    if ((!elementsOnly && !isMixed) || type.getContentSpec() == nullptr) {
        return noChildren();
    }
    TypeModel model(Kind::Children);
    try {
        TypeModelBuilder builder(model);
        if (!builder.build(type.getContentSpec())) {
            return unchecked();
        }
    } catch (const Error&) {
        return unchecked(); // too many different particles for any automaton of ours
    }
    if (elementsOnly) {
        model.refusesText_ = true;
        type.setContentType(SchemaElementDecl::Mixed_Complex);
    }
    return model;
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

bool TypeModel::takes(const Wildcard& wildcard, unsigned int uri) {
    switch (wildcard.takes) {
    case Wildcard::Takes::Namespace:
        return uri == wildcard.uri;
    case Wildcard::Takes::OtherNamespaces:
        return uri != wildcard.uri && uri != noNamespace;
    default:
        return true;
    }
}

TypeModel::ChildNumbers TypeModel::findNumbers(const XMLElementDecl& child) const {
    ChildNumbers numbers;
    for (const Wildcard& wildcard : wildcards_) {
        if (takes(wildcard, child.getURI())) {
            numbers.wildcards.push_back(wildcard.number);
        }
    }
    if (!child.isDeclared()) {
        return numbers;
    }
    numbers.own = findByName(child);
    const auto* element = dynamic_cast<const SchemaElementDecl*>(&child);
    while (numbers.own == unknownChild && element != nullptr) {
        element = element->getSubstitutionGroupElem();
        numbers.own = element == nullptr ? unknownChild : findByName(*element);
    }
    return numbers;
}

const TypeModel::ChildNumbers& TypeModel::numbersOf(const XMLElementDecl& child) const {
    // Elements that the parser made up for undeclared names live no longer than their document.
    if (!child.isDeclared()) {
        undeclared_ = findNumbers(child);
        return undeclared_;
    }
    const ChildNumbers* known = numbers_.find(child);
    return known != nullptr ? *known : numbers_.add(child, findNumbers(child));
}

const TypeModel& Schema::Impl::modelOf(ComplexTypeInfo* type, const SchemaElementDecl& element) const {
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
    const std::string* known = names.find(element);
    return known != nullptr ? *known : names.add(element, xerces::toUtf8(element.getBaseName()));
}

} // namespace tv
