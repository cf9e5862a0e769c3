#pragma once

#include "logging/ILoggerStream.h"

namespace tv {

/// The log as text: one line an entry, a tab for each level of nesting, and a box at the beginning and end of
/// each run. UTF-8, lines end in CR LF, columns are counted in characters.
class streamTXT final : public ILoggerStream {
public:
    void startLogging() override;
    void finishLogging() override;
    void logPUSH() override;
    void logPOP() override;
    /// An entry that would reach beyond column 70 before its message is lost, as is one with nothing on the
    /// stack.
    void log(std::string_view level, std::string_view description) override;
    void openFile(const std::string& filename, std::string_view title, std::string_view version) override;
    void closeFile(const std::string& filename) override;
    std::string getFileExtension() const override;
    void setLogger(clsLogger* logger) override { oLogger_ = logger; }

private:
    std::string indentedTop() const;
    void write(const std::string& text);

    clsLogger* oLogger_ = nullptr;
};

} // namespace tv
