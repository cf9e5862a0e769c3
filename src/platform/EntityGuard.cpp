#include "platform/EntityGuard.h"

#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

namespace tv {

void EntityGuard::entityDecl(const xercesc::DTDEntityDecl& entity, bool /*isParameterEntity*/,
                             bool /*isIgnored*/) {
    declared_ += entity.getValueLen();
    if (declared_ > maxDeclared) {
        throw TooLarge{};
    }
}

} // namespace tv
