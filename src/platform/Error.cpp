#include "platform/Error.h"

namespace tv {

std::string logText(const std::exception& failure) {
    const auto* error = dynamic_cast<const Error*>(&failure);
    const std::int32_t number = error != nullptr ? error->number() : errc::invalidCall;
    const std::string description = error != nullptr ? error->description() : failure.what();
    return description + "[" + std::to_string(number) + "]";
}

} // namespace tv
