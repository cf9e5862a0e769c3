#pragma once

#include "platform/XmlDocument.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace tv {

/// XSLT 1.0. A stylesheet is compiled once for as long as its file stays the same (path, size, time of
/// change). Stylesheets are foreign input: they can neither read other files nor write any nor reach the
/// network; their recursion, the size of what they give and their processor time are bounded.
class XmlTransform {
public:
    /// The compiled stylesheet of that file, from the store if it is unchanged. Empty when it cannot be
    /// loaded; `reason` then tells why (Portuguese, with the processor's own text).
    static std::shared_ptr<const XmlTransform> load(const std::filesystem::path& stylesheet,
                                                    std::string& reason);
    /// Forgets every compiled stylesheet.
    static void clearStore();

    ~XmlTransform();
    XmlTransform(const XmlTransform&) = delete;
    XmlTransform& operator=(const XmlTransform&) = delete;

    /// Applies the stylesheet and gives its output as text in UTF-8, whatever encoding the stylesheet asks
    /// for. Empty elements of XML output are written with both tags, and an XML declaration names no other
    /// encoding than UTF-8. The document stays as it is. Throws Error 5 with the processor's message when the
    /// transform fails, or takes more processor time than `limit`.
    std::string apply(const XmlDocument& document, std::chrono::milliseconds limit = maxTime) const;

    /// Processor time that a transform may take.
    static constexpr std::chrono::minutes maxTime{2};

private:
    XmlTransform();
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace tv
