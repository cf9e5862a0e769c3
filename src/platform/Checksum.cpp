#include "platform/Checksum.h"

#include <glib.h>

#include <memory>

namespace tv::checksum {

std::string sha256(std::string_view bytes) {
    struct Free {
        void operator()(char* text) const noexcept { g_free(text); }
    };
    const std::string whole(bytes);
    const std::unique_ptr<char, Free> digits(
        g_compute_checksum_for_string(G_CHECKSUM_SHA256, whole.data(), static_cast<gssize>(whole.size())));
    return digits.get();
}

} // namespace tv::checksum
