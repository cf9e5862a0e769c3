#include "platform/EntityGuard.h"

#include "platform/XercesSupport.h"

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

namespace tv {

void EntityGuard::entityDecl(const xercesc::DTDEntityDecl& entity, bool /*isParameterEntity*/,
                             bool /*isIgnored*/) {
    countDeclaration();
    declared_ += entity.getValueLen();
    if (declared_ > maxDeclared) {
        throw TooLarge{"As entidades declaradas no arquivo são grandes demais."};
    }
}

void EntityGuard::countDeclaration() {
    if (++declarations_ > maxDeclarations) {
        throw TooLarge{"O arquivo declara coisas demais em DOCTYPE."};
    }
}

xercesc::InputSource* EntityGuard::resolveEntity(xercesc::XMLResourceIdentifier* resource) {
    if (outside_) {
        outside_(xerces::toUtf8(resource->getSystemId()));
    }
    static const XMLByte nothing = 0;
    return new xercesc::MemBufInputSource(&nothing, 0, "");
}

} // namespace tv
