#include "platform/SchemaChecker.h"

#include <xercesc/framework/XMLValidityCodes.hpp>
#include <xercesc/validators/schema/SchemaSymbols.hpp>

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

} // namespace

SchemaChecker::SchemaChecker(const Schema::Impl& schema, SchemaFaults& faults)
    : schema_(schema)
    , faults_(faults) {}

void SchemaChecker::reset() {
    SchemaValidator::reset();
    open_.clear();
    isUndeclared_ = false;
}

void SchemaChecker::setGrammar(Grammar* grammar) {
    if (grammar->getGrammarType() == Grammar::SchemaGrammarType) {
        SchemaValidator::setGrammar(grammar);
    }
}

bool SchemaChecker::isSilent(unsigned int number) noexcept {
    if (number == XMLValid::ElementNotDefined || number == XMLValid::GrammarNotFound) {
        // Told by checkChild at this very tag.
        isUndeclared_ = true;
        return !open_.empty() || number == XMLValid::GrammarNotFound;
    }
    return isMute_ || (!open_.empty() && !open_.back().isKnown);
}

void SchemaChecker::checkChild(const XMLElementDecl& element) {
    Frame& parent = open_.back();
    bool isAllowed = true;
    switch (parent.model->kind()) {
    case TypeModel::Kind::Children: {
        const TypeModel::ChildNumbers& numbers = parent.model->numbersOf(element);
        // What a strict wildcard takes must be declared.
        isAllowed = parent.walk->child(numbers.own, numbers.wildcards) && !isUndeclared_;
        break;
    }
    case TypeModel::Kind::NoChildren:
        isAllowed = false;
        parent.heldChild = true;
        break;
    case TypeModel::Kind::Unchecked:
        isAllowed = !isUndeclared_ || !parent.isKnown;
        break;
    }
    if (!isAllowed) {
        faults_.unexpectedElement(element);
    }
}

void SchemaChecker::elementStarts(const XMLElementDecl& element, std::size_t openElements) {
    const bool wasPassedOver = openElements > 0 && open_.size() == openElements;
    if (wasPassedOver) {
        isUndeclared_ = false;
        checkChild(element);
    }
}

bool SchemaChecker::elementIsNil() {
    if (open_.empty() || !open_.back().isKnown) {
        return true;
    }
    if (!open_.back().isNillable) {
        return false;
    }
    static const TypeModel nothing = TypeModel::noChildren();
    open_.back().model = &nothing;
    open_.back().isNil = true;
    setNillable(true);
    return true;
}

bool SchemaChecker::refusesText(std::size_t openElements) const noexcept {
    return open_.size() == openElements && !open_.empty() && open_.back().model->refusesText();
}

void SchemaChecker::validateElement(const XMLElementDecl* element) {
    faults_.elementBegins();
    if (!open_.empty()) {
        checkChild(*element);
        if (open_.back().isNil) {
            resetNillable(); // the library would put the parent's xsi:nil to the child
        }
    }
    isUndeclared_ = false;
    if (element->getObjectType() != XMLElementDecl::Schema) {
        static const TypeModel anything = TypeModel::unchecked();
        open_.push_back({&anything, std::nullopt, false, false});
        return;
    }
    SchemaValidator::validateElement(element);
    const auto& declared = static_cast<const SchemaElementDecl&>(*element);
    const TypeModel& model = schema_.modelOf(getCurrentTypeInfo(), declared);
    open_.push_back({&model, std::nullopt, element->isDeclared(),
                     (declared.getMiscFlags() & SchemaSymbols::XSD_NILLABLE) != 0});
    if (model.kind() == TypeModel::Kind::Children) {
        open_.back().walk.emplace(model.children());
    }
}

// True when something was told.
bool SchemaChecker::tellMissing(const Frame& frame) {
    const ContentModel& model = frame.model->children();
    const std::vector<ChildName> missing = frame.walk->missing();
    if (!missing.empty()) {
        const bool one = missing.size() == 1;
        faults_.missingChildren(
            (one ? "Falta o elemento obrigatório " : "Faltam os elementos obrigatórios ") +
            quotedList(model, missing) + ".");
        return true;
    }
    const std::vector<ChildName> expected = frame.walk->expectedNow();
    if (!expected.empty()) {
        faults_.missingChildren("Falta um destes elementos: " + quotedList(model, expected) + ".");
    }
    return !expected.empty();
}

bool SchemaChecker::checkEnd(const Frame& frame, XMLElementDecl* element, QName** children,
                             XMLSize_t childCount, XMLSize_t* indexFailingChild) {
    if (frame.model->kind() == TypeModel::Kind::Children) {
        const bool wasTold = tellMissing(frame) || frame.walk->hasFault();
        if (!frame.model->isExact() && !wasTold) {
            return SchemaValidator::checkContent(element, children, childCount, indexFailingChild);
        }
    }
    if (element->getObjectType() == XMLElementDecl::Schema) {
        // The children have been checked; what is left are values and xsi:nil. The library's check also
        // clears the value's text, so it takes place even where nothing is to be told.
        XMLSize_t ignored = 0;
        isMute_ = frame.heldChild && !frame.isNil;
        SchemaValidator::checkContent(element, nullptr, 0, &ignored);
        isMute_ = false;
    }
    return true;
}

bool SchemaChecker::checkContent(XMLElementDecl* element, QName** children, XMLSize_t childCount,
                                 XMLSize_t* indexFailingChild) {
    faults_.elementEnds();
    bool result = true;
    if (!open_.empty()) {
        const Frame frame = std::move(open_.back());
        open_.pop_back();
        result = checkEnd(frame, element, children, childCount, indexFailingChild);
    }
    faults_.elementEnded();
    return result;
}

} // namespace tv
