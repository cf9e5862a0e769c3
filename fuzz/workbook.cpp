// Workbooks: the whole file, and the records alone, where most changes get further.
#include "Target.h"

#include "platform/BiffReader.h"
#include "platform/CompoundFile.h"
#include "platform/Error.h"

#include <string>

void readForeign(std::string_view bytes) {
    constexpr std::string_view container = "\xD0\xCF\x11\xE0";
    try {
        if (bytes.starts_with(container)) {
            static_cast<void>(tv::biff::read(tv::compound::unpack(bytes)));
        } else {
            static_cast<void>(tv::biff::read(bytes));
        }
    } catch (const tv::Error&) { // NOLINT(bugprone-empty-catch): refused, as it should be
    }
}
