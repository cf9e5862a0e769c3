#include "logging/clsStack.h"

#include "logging/ILoggerStream.h"
#include "logging/clsLogger.h"
#include "platform/Error.h"

namespace tv {

bool clsStack::push(std::string_view element) noexcept {
    try {
        if (oLogger_ == nullptr || oLogger_->getLevel() == library::level::off) {
            return false;
        }
        element_.emplace_back(element);
        if (oLogger_->getStream() == nullptr) {
            return false;
        }
        oLogger_->getStream()->logPUSH();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool clsStack::pop() noexcept {
    try {
        if (oLogger_ == nullptr || oLogger_->getLevel() <= library::level::off || element_.empty()) {
            return false;
        }
        if (oLogger_->getStream() == nullptr) {
            return false;
        }
        oLogger_->getStream()->logPOP();
        element_.pop_back();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void clsStack::popAll() noexcept {
    if (oLogger_ == nullptr || oLogger_->getLevel() <= library::level::off) {
        return;
    }
    while (!element_.empty()) {
        if (!pop()) {
            element_.pop_back(); // a name whose end cannot be logged must not hold up the end of the run
        }
    }
}

const std::string& clsStack::getElement(std::int32_t index) const {
    if (index < 1 || index > lenght()) {
        throw Error(-1, "clsStack", "Array out of Bounds");
    }
    return element_[static_cast<std::size_t>(index) - 1];
}

const std::string& clsStack::getLastElement() const {
    if (element_.empty()) {
        throw Error(-1, "clsStack", "Array is Empty");
    }
    return element_.back();
}

} // namespace tv
