#include "logging/clsLogger.h"

#include "logging/Product.h"
#include "logging/Routine.h"
#include "logging/streamTXT.h"
#include "logging/streamXML.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/format.h"
#include "platform/text.h"

#include <filesystem>

namespace tv {

clsLogger::clsLogger() {
    callStack.setLogger(this);
}

clsLogger::~clsLogger() = default;

bool clsLogger::loggerFactory(std::int16_t type, std::int16_t level) {
    stream_.reset();
    if (type == typeTXT) {
        stream_ = std::make_unique<streamTXT>();
    } else if (type == typeXML) {
        stream_ = std::make_unique<streamXML>();
    } else {
        return false;
    }
    stream_->setLogger(this);
    setLevel(level);
    stream_->startLogging();
    return true;
}

void clsLogger::destroy() noexcept {
    if (stream_ == nullptr) {
        return;
    }
    proceed([this] { stream_->finishLogging(); });
    proceed([this] { stream_->closeFile(getFilename()); });
}

void clsLogger::logAt(std::int16_t grade, std::string_view description) noexcept {
    if (level_ < grade || stream_ == nullptr) {
        return;
    }
    proceed([&] { stream_->log(library::levelNames.at(static_cast<std::size_t>(grade)), description); });
}

std::string clsLogger::todaysFile() const {
    std::string name = path_;
    name += static_cast<char>(std::filesystem::path::preferred_separator);
    name += "log" + format::format(clock::now(), "YYYYMMDD") + "." + stream_->getFileExtension();
    return name;
}

const std::string& clsLogger::getFilename() noexcept {
    if (stream_ == nullptr || (hasFile_ && !text::trim(filename_).empty())) {
        return filename_;
    }
    proceed([this] {
        if (text::trim(filename_).empty()) {
            filename_ = todaysFile();
        }
        if (level_ > library::level::off && !files::exists(filename_)) {
            proceed([&] { stream_->openFile(filename_, appTitle(), appVersion()); });
        }
        // A header that could not be written is tried again before the next entry.
        hasFile_ = files::exists(filename_);
    });
    return filename_;
}

const std::string& clsLogger::appTitle() {
    if (text::trim(appTitle_).empty()) {
        appTitle_ = product::title;
    }
    return appTitle_;
}

const std::string& clsLogger::appVersion() {
    if (appVersion_.empty()) {
        appVersion_ = std::to_string(product::versionMajor) + "." + std::to_string(product::versionMinor) +
                      "." + std::to_string(product::versionRevision);
    }
    return appVersion_;
}

} // namespace tv
