#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

class clsLogger;

/// The names of the routines that are running, the outermost first. The program keeps it by hand: a routine
/// pushes its name on entry and pops on the way out (see Routine.h), and the log shows the nesting.
class clsStack {
public:
    /// Puts a name on top and logs it. False, with nothing stored, when the logger's level is OFF; false as
    /// well when the logger has no stream, but the name is held then.
    bool push(std::string_view element) noexcept;
    /// Logs the end of the top name and takes it off. False when the level is OFF or nothing is held.
    bool pop() noexcept;
    /// Pops until nothing is held. Does nothing at level OFF.
    void popAll() noexcept;

    /// Name at a position from 1, the outermost routine. Throws Error -1 outside of 1 to lenght.
    const std::string& getElement(std::int32_t index) const;
    /// The top name. Throws Error -1 when nothing is held.
    const std::string& getLastElement() const;
    /// The logger that owns the stack; without one nothing is ever held.
    void setLogger(clsLogger* logger) noexcept { oLogger_ = logger; }

    /// True when nothing is held.
    bool EOF_() const noexcept { return element_.empty(); }
    /// Number of names held.
    std::int32_t lenght() const noexcept { return static_cast<std::int32_t>(element_.size()); }

private:
    std::vector<std::string> element_;
    clsLogger* oLogger_ = nullptr;
};

} // namespace tv
