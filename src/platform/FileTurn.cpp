#include "platform/FileTurn.h"

#include "platform/Files.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tv {

FileTurn::FileTurn(const std::filesystem::path& file) {
    files::append(file, ""); // makes it, or tells in the words of files why it cannot be made
    descriptor_ = ::open(file.c_str(), O_RDWR | O_CLOEXEC);
    while (descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX) != 0 && errno == EINTR) {
    }
}

FileTurn::~FileTurn() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

} // namespace tv
