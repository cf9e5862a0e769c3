// A pattern in the first line and a value behind it, for the general formatter.
#include "Target.h"

#include "platform/Error.h"
#include "platform/Value.h"
#include "platform/format.h"
#include "platform/text.h"

#include <string>

namespace {

void formatAs(const tv::Value& value, std::string_view pattern, bool isText) {
    const std::string formatted = tv::format::format(value, pattern);
    require(!isText || tv::text::isUtf8(formatted), "a formatted text is UTF-8");
}

} // namespace

void readForeign(std::string_view bytes) {
    const std::string_view pattern = bytes.substr(0, bytes.find('\n'));
    const std::string_view value = bytes.substr(std::min(pattern.size() + 1, bytes.size()));
    const bool isText = tv::text::isUtf8(bytes);
    static_cast<void>(tv::format::kindOf(pattern));
    formatAs(tv::Null{}, pattern, isText);
    formatAs(std::string(value), pattern, isText);
    formatAs(true, pattern, isText);
    if (const auto moment = tv::format::readDate(value)) {
        formatAs(*moment, pattern, isText);
    }
    try {
        const double number = tv::text::lenientNumber(value);
        formatAs(number, pattern, isText);
        formatAs(tv::text::toInt32(number), pattern, isText);
    } catch (const tv::Error&) { // NOLINT(bugprone-empty-catch): refused, as it should be
    }
}
