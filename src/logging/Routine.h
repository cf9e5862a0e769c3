#pragma once

#include "logging/clsLogger.h"
#include "platform/Error.h"

#include <concepts>
#include <exception>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

/// The ways in which routines meet failures, written once:
///   - `Routine` keeps the call stack;
///   - `guarded` runs a whole routine, logs its failure and gives the routine's failing value;
///   - `proceed` runs one statement of a routine that goes on after errors.
namespace tv {

/// Stands on the call stack for the life of the object. With no logger, or at level OFF, it does nothing and
/// costs next to nothing.
class Routine {
public:
    /// `name` is the object's name, a point and the routine's name.
    explicit Routine(std::string_view name) noexcept {
        if (isLogged()) {
            oLogger->callStack.push(name);
        }
    }
    /// For names that carry arguments: `makeName` gives the name and is asked only when the log wants it.
    template<std::invocable MakeName>
    explicit Routine(MakeName makeName) noexcept {
        if (isLogged()) {
            try {
                oLogger->callStack.push(makeName());
            } catch (const std::exception&) {
                return;
            }
        }
    }
    ~Routine() {
        if (isLogged()) {
            oLogger->callStack.pop();
        }
    }
    Routine(const Routine&) = delete;
    Routine& operator=(const Routine&) = delete;

    /// True when there is a logger with a level other than OFF.
    static bool isLogged() noexcept {
        return oLogger != nullptr && oLogger->getLevel() != library::level::off;
    }
};

/// The logger, for routines whose first statement fails without one. Throws Error 91 when there is none.
clsLogger& requireLogger();

/// Logs a failure of the running routine as FATAL: description + "[" + number + "]".
void logFailure(const std::exception& failure) noexcept;

/// Runs `body` as the routine `name` (a text, or a callable that makes one). A failure is logged and
/// `failingValue` given in its place.
template<typename Name, typename T, std::invocable Body>
T guarded(Name&& name, T failingValue, Body&& body) {
    const Routine routine(std::forward<Name>(name));
    try {
        return std::forward<Body>(body)();
    } catch (const std::exception& failure) {
        logFailure(failure);
        return failingValue;
    }
}

/// The same for a routine that gives nothing. Tells whether `body` went through.
template<typename Name, std::invocable Body>
requires std::is_void_v<std::invoke_result_t<Body>>
bool guarded(Name&& name, Body&& body) {
    const Routine routine(std::forward<Name>(name));
    try {
        std::forward<Body>(body)();
        return true;
    } catch (const std::exception& failure) {
        logFailure(failure);
        return false;
    }
}

/// Runs one statement of a routine that goes on after errors. Tells whether it went through.
template<std::invocable Statement>
bool proceed(Statement&& statement) noexcept {
    try {
        std::forward<Statement>(statement)();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace tv
