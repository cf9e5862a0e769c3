#pragma once

#include "platform/Error.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace tv::test {

/// Number of the Error that `action` throws, or nothing when it ends well.
template<typename Action>
std::optional<std::int32_t> errorOf(Action&& action) {
    try {
        std::forward<Action>(action)();
    } catch (const Error& error) {
        return error.number();
    }
    return std::nullopt;
}

} // namespace tv::test
