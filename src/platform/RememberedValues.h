#pragma once

#include <xercesc/framework/XMLGrammarPool.hpp>
#include <xercesc/validators/datatype/DatatypeValidator.hpp>

#include <memory>
#include <vector>

namespace tv {

/// Data types of a schema that remember the values that they took lately.
///
/// Dates, codes, company numbers and zeros come again and again in a document, and matching a pattern costs
/// far more than finding a value among those that passed. Only types whose judgement depends on nothing but
/// the text take part; a value that is not remembered goes to the type's own check, faults included, unless
/// the type consists of patterns that it matches (`PatternCheck`).
class RememberedValues {
public:
    RememberedValues();
    ~RememberedValues();
    RememberedValues(const RememberedValues&) = delete;
    RememberedValues& operator=(const RememberedValues&) = delete;

    /// Puts remembering types in the place of the types of all elements of a compiled schema, which must not
    /// outlive this object in use.
    void attach(xercesc::XMLGrammarPool& pool);

private:
    class Type;
    Type* remembering(xercesc::DatatypeValidator& own);

    std::vector<std::unique_ptr<Type>> types_;
};

} // namespace tv
