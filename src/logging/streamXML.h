#pragma once

#include "logging/ILoggerStream.h"

#include <cstdint>

namespace tv {

class XmlDocument;

/// The log as XML in ISO-8859-1: a root LOG, one EXEC a run, and below it one element for each routine that
/// ran, nested as the calls were, with its time of beginning (`ini`) and end (`fim`). An entry is one more
/// element of the routine's name beside the routine's own, with the description in an attribute named after
/// the level.
///
/// A routine whose name makes no legal element name is not shown, nor is what runs inside it.
class streamXML final : public ILoggerStream {
public:
    void startLogging() override;
    void finishLogging() override;
    void logPUSH() override;
    void logPOP() override;
    void log(std::string_view level, std::string_view description) override;
    /// The title stands between apostrophes as it is: one with an apostrophe makes a file that takes no
    /// entries.
    void openFile(const std::string& filename, std::string_view title, std::string_view version) override;
    void closeFile(const std::string& filename) override;
    std::string getFileExtension() const override;
    void setLogger(clsLogger* logger) override { oLogger_ = logger; }

private:
    std::string pathOfStack(std::int32_t depth) const;
    template<typename Change>
    void change(Change&& apply) const;

    clsLogger* oLogger_ = nullptr;
};

} // namespace tv
