#include "platform/SchemaChecker.h"

#include <xercesc/framework/XMLValidityCodes.hpp>

namespace tv {

using namespace xercesc; // NOLINT(google-build-using-namespace)

namespace {

std::string quotedList(const ContentModel& model, const std::vector<ChildName>& names) {
    std::string list;
    for (const ChildName name : names) {
        list += (list.empty() ? "'" : ", '") + model.nameOf(name) + "'";
    }
    return list;
}

const ContentModel& emptyModel() {
    static const ContentModel model({}, ContentExpression{});
    return model;
}

} // namespace

SchemaChecker::SchemaChecker(const Schema::Impl& schema, SchemaFaults& faults)
    : schema_(schema)
    , faults_(faults) {}

void SchemaChecker::reset() {
    SchemaValidator::reset();
    open_.clear();
}

void SchemaChecker::setGrammar(Grammar* grammar) {
    if (grammar->getGrammarType() == Grammar::SchemaGrammarType) {
        SchemaValidator::setGrammar(grammar);
    }
}

bool SchemaChecker::isSilent(unsigned int number) const noexcept {
    if (number == XMLValid::ElementNotDefined || number == XMLValid::GrammarNotFound) {
        // Told by checkChild at this very tag.
        return !open_.empty() || number == XMLValid::GrammarNotFound;
    }
    return !open_.empty() && !open_.back().isKnown;
}

void SchemaChecker::checkChild(const XMLElementDecl& element) {
    Frame& parent = open_.back();
    switch (parent.model->kind()) {
    case TypeModel::Kind::Children:
        if (!parent.walk.child(parent.model->numberOf(element))) {
            faults_.unexpectedElement(element);
        }
        break;
    case TypeModel::Kind::NoChildren:
        faults_.unexpectedElement(element);
        break;
    case TypeModel::Kind::Unchecked:
        break;
    }
}

void SchemaChecker::elementStarts(const XMLElementDecl& element, std::size_t openElements) {
    const bool wasPassedOver = openElements > 0 && open_.size() == openElements;
    if (wasPassedOver && open_.back().model->kind() == TypeModel::Kind::NoChildren) {
        faults_.unexpectedElement(element);
    }
}

void SchemaChecker::validateElement(const XMLElementDecl* element) {
    if (!open_.empty()) {
        checkChild(*element);
    }
    if (element->getObjectType() != XMLElementDecl::Schema) {
        static const TypeModel anything = TypeModel::unchecked();
        open_.push_back({&anything, ContentWalk(emptyModel()), false, false});
        return;
    }
    SchemaValidator::validateElement(element);
    const TypeModel& model =
        schema_.modelOf(getCurrentTypeInfo(), static_cast<const SchemaElementDecl&>(*element));
    const bool hasWalk = model.kind() == TypeModel::Kind::Children;
    open_.push_back(
        {&model, ContentWalk(hasWalk ? model.children() : emptyModel()), element->isDeclared(), true});
}

void SchemaChecker::tellMissing(const Frame& frame) {
    const ContentModel& model = frame.model->children();
    const std::vector<ChildName> missing = frame.walk.missing();
    if (!missing.empty()) {
        const bool one = missing.size() == 1;
        faults_.missingChildren(
            (one ? "Falta o elemento obrigatório " : "Faltam os elementos obrigatórios ") +
            quotedList(model, missing) + ".");
        return;
    }
    const std::vector<ChildName> expected = frame.walk.expectedNow();
    if (!expected.empty()) {
        faults_.missingChildren("Falta um destes elementos: " + quotedList(model, expected) + ".");
    }
}

bool SchemaChecker::checkContent(XMLElementDecl* element, QName** children, XMLSize_t childCount,
                                 XMLSize_t* indexFailingChild) {
    faults_.elementEnds();
    bool result = true;
    if (!open_.empty()) {
        const Frame frame = std::move(open_.back());
        open_.pop_back();
        if (frame.model->kind() == TypeModel::Kind::Unchecked) {
            result = !frame.ofSchema ||
                     SchemaValidator::checkContent(element, children, childCount, indexFailingChild);
        } else {
            if (frame.model->kind() == TypeModel::Kind::Children) {
                tellMissing(frame);
            }
            // The children have been checked; what is left are values and xsi:nil.
            XMLSize_t ignored = 0;
            SchemaValidator::checkContent(element, nullptr, 0, &ignored);
        }
    }
    faults_.elementEnded();
    return result;
}

} // namespace tv
