#pragma once

#include <xercesc/framework/XMLEntityHandler.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/validators/DTD/DocTypeHandler.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

namespace tv {

/// Bounds what a document's own DOCTYPE can grow into: 1,000 declarations, 1,000 references to entities, and
/// declared texts of 20,000 characters together. What lies outside of the document is empty: nothing is read.
class EntityGuard : public xercesc::DocTypeHandler, public xercesc::XMLEntityHandler {
public:
    EntityGuard() { limits_.setEntityExpansionLimit(maxReferences); }

    xercesc::SecurityManager& limits() noexcept { return limits_; }
    void reset() noexcept {
        declared_ = 0;
        declarations_ = 0;
    }
    /// What is called at the end of a DOCTYPE; with true when its closing ">" is still to be read.
    void onDocTypeEnd(std::function<void(bool)> action) { docTypeEnd_ = std::move(action); }
    /// What is called with the name of each outside file whose text a document asks for.
    void onOutside(std::function<void(const std::string&)> action) { outside_ = std::move(action); }
    /// What a declaration throws that goes beyond a bound, with a sentence about it (Portuguese).
    struct TooLarge {
        const char* why;
    };

    void entityDecl(const xercesc::DTDEntityDecl& entity, bool isParameterEntity, bool isIgnored) override;

    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* resource) override;
    void endInputSource(const xercesc::InputSource& /*source*/) override {}
    void startInputSource(const xercesc::InputSource& /*source*/) override {}
    bool expandSystemId(const XMLCh* /*systemId*/, xercesc::XMLBuffer& /*toFill*/) override { return false; }
    void resetEntities() override {}

    void attDef(const xercesc::DTDElementDecl& /*e*/, const xercesc::DTDAttDef& /*a*/,
                bool /*ignoring*/) override {
        countDeclaration();
    }
    void doctypeComment(const XMLCh* /*comment*/) override {}
    void doctypeDecl(const xercesc::DTDElementDecl& /*e*/, const XMLCh* /*publicId*/,
                     const XMLCh* /*systemId*/, bool hasIntSubset, bool hasExtSubset) override {
        if (!hasIntSubset && docTypeEnd_) {
            docTypeEnd_(hasExtSubset);
        }
    }
    void doctypePI(const XMLCh* /*target*/, const XMLCh* /*data*/) override {}
    void doctypeWhitespace(const XMLCh* /*chars*/, XMLSize_t /*length*/) override {}
    void elementDecl(const xercesc::DTDElementDecl& /*e*/, bool /*isIgnored*/) override {
        countDeclaration();
    }
    void endAttList(const xercesc::DTDElementDecl& /*e*/) override {}
    void endIntSubset() override {
        if (docTypeEnd_) {
            docTypeEnd_(true);
        }
    }
    void endExtSubset() override {}
    void notationDecl(const xercesc::XMLNotationDecl& /*n*/, bool /*isIgnored*/) override {
        countDeclaration();
    }
    void resetDocType() override {}
    void startAttList(const xercesc::DTDElementDecl& /*e*/) override {}
    void startIntSubset() override {}
    void startExtSubset() override {}
    void TextDecl(const XMLCh* /*version*/, const XMLCh* /*encoding*/) override {}

private:
    static constexpr XMLSize_t maxReferences = 1000;
    static constexpr std::size_t maxDeclared = 20000;
    static constexpr std::size_t maxDeclarations = 1000;

    void countDeclaration();

    xercesc::SecurityManager limits_;
    std::size_t declared_ = 0; ///< Characters.
    std::size_t declarations_ = 0;
    std::function<void(bool)> docTypeEnd_;
    std::function<void(const std::string&)> outside_;
};

} // namespace tv
