#pragma once

#include "logging/ILoggerStream.h"
#include "logging/RamoFinal.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// The log as XML in ISO-8859-1: a root LOG, one EXEC a run, and below it one element for each routine that
/// ran, nested as the calls were, with its time of beginning (`ini`) and end (`fim`). An entry is one more
/// element of the routine's name beside the routine's own, with the description in an attribute named after
/// the level.
///
/// The file is whole after every entry, also after one that could not be written. A run whose beginning could
/// not be written begins with its next entry. Each loads, changes and saves it only where the tree's last
/// branch is not enough: at the first one, and when somebody else has changed the file. So an entry costs the
/// same however long the day's log is.
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
    /// Names of the elements that stand for the first `depth` names of the call stack.
    std::vector<std::string> tagsOfStack(std::int32_t depth) const;
    template<typename Change>
    bool change(Change&& apply);
    void append(const std::vector<std::string>& parents, const std::string& tag, std::string_view level,
                std::string_view description);
    /// True when no element of the file can be at this path.
    bool leadsNowhere(const std::vector<std::string>& tags) const;

    clsLogger* oLogger_ = nullptr;
    RamoFinal branch_;
    bool lacksRun_ = false; ///< The run's element could not be written.
};

} // namespace tv
