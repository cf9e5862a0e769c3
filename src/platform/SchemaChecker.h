#pragma once

#include "platform/SchemaImpl.h"

#include <xercesc/validators/schema/SchemaValidator.hpp>

#include <optional>
#include <string>
#include <vector>

namespace tv {

/// Who hears of what SchemaChecker finds.
class SchemaFaults {
public:
    virtual ~SchemaFaults() = default;
    /// A child that may not stand where its start tag stands.
    virtual void unexpectedElement(const xercesc::XMLElementDecl& element) = 0;
    /// Required children are missing at an element's end.
    virtual void missingChildren(const std::string& message) = 0;
    /// The check of an element at its start tag begins; it is over with the library's own event.
    virtual void elementBegins() = 0;
    /// The check of an element at its end begins, and is over.
    virtual void elementEnds() = 0;
    virtual void elementEnded() = 0;
};

/// The schema's check of a document, with one difference to the library's own: the order of an element's
/// children is checked at each child's start tag instead of at the element's end, so that each misplaced
/// child is told at its place and the check goes on behind it.
class SchemaChecker : public xercesc::SchemaValidator {
public:
    SchemaChecker(const Schema::Impl& schema, SchemaFaults& faults);

    /// True for a fault of the library that is told otherwise, or that only follows from one told already.
    bool isSilent(unsigned int number) noexcept;

    /// Told of each start tag with the number of elements open before it: the library passes over children of
    /// simple values, and over what a wildcard takes unchecked, without asking.
    void elementStarts(const xercesc::XMLElementDecl& element, std::size_t openElements);
    /// The element whose start tag was told last bears xsi:nil: nothing may stand in it. False where the
    /// schema does not allow that.
    bool elementIsNil();
    /// True when text in the innermost of that many open elements can only be white space.
    bool refusesText(std::size_t openElements) const noexcept;

    void validateElement(const xercesc::XMLElementDecl* element) override;
    bool checkContent(xercesc::XMLElementDecl* element, xercesc::QName** children, XMLSize_t childCount,
                      XMLSize_t* indexFailingChild) override;
    void reset() override;
    /// While a document is read the library also hands over elements of namespaces that no schema describes,
    /// under the name of a DTD; without this it would give the document up there.
    bool handlesDTD() const override { return isReading_; }
    void setGrammar(xercesc::Grammar* grammar) override;
    void setReading(bool isReading) noexcept { isReading_ = isReading; }

private:
    /// An open element.
    struct Frame {
        const TypeModel* model;
        std::optional<ContentWalk> walk; ///< Of types with children.
        bool isKnown;                    ///< Declared in the schema.
        bool isNillable;                 ///< May bear xsi:nil.
        bool isNil = false;
        bool heldChild = false; ///< A simple value that a child has stood in: no more a value to be judged.
    };
    void checkChild(const xercesc::XMLElementDecl& element);
    bool tellMissing(const Frame& frame);
    bool checkEnd(const Frame& frame, xercesc::XMLElementDecl* element, xercesc::QName** children,
                  XMLSize_t childCount, XMLSize_t* indexFailingChild);

    const Schema::Impl& schema_;
    SchemaFaults& faults_;
    std::vector<Frame> open_;
    bool isReading_ = false;
    bool isMute_ = false;
    bool isUndeclared_ = false; ///< The library found no declaration for the element that is starting.
};

} // namespace tv
