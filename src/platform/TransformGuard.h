#pragma once

#include "platform/Deadline.h"
#include "platform/XmlLibrary.h"

#include <libxslt/security.h>
#include <libxslt/xsltInternals.h>

#include <cstddef>
#include <memory>
#include <string>

/// What keeps a stylesheet, which is foreign input, within bounds.
namespace tv::xml {

/// Bytes of text that a transform may give, and that it may make on the way.
inline constexpr std::size_t maxOutputBytes = 256U << 20U;
/// Bytes of a text that is joined inside of an expression.
inline constexpr std::size_t maxJoinedBytes = 64U << 20U;
/// Nodes that a transform may make.
inline constexpr std::size_t maxResultNodes = 5'000'000;
/// Instructions that a transform may carry out, and steps of its XPath expressions.
inline constexpr unsigned long maxInstructions = 200'000'000;
inline constexpr unsigned long maxXPathSteps = 20'000'000'000;
/// Templates that may be open at the same time.
inline constexpr int maxTemplateDepth = 3000;

/// While it lives, messages of the processor are kept instead of printed, and no file is read for a
/// stylesheet.
class MessageScope {
public:
    MessageScope();
    ~MessageScope();
    MessageScope(const MessageScope&) = delete;
    MessageScope& operator=(const MessageScope&) = delete;

    /// The messages so far, one a line.
    std::string text() const;
    /// True when the stylesheet asked for another file.
    bool triedToReachOut() const noexcept;

    struct State;
    State& state() const noexcept { return *state_; }

private:
    std::unique_ptr<State> state_;
};

/// While it lives, the transform can neither read nor write anything outside, and ends when it makes too
/// much.
class TransformGuard {
public:
    /// `limit` is the processor time that the transform may take.
    TransformGuard(xsltTransformContext& context, const MessageScope& messages,
                   std::chrono::milliseconds limit);
    ~TransformGuard();
    TransformGuard(const TransformGuard&) = delete;
    TransformGuard& operator=(const TransformGuard&) = delete;

    /// True when the transform was ended for its size or its length.
    bool exceeded() const noexcept;

    struct Made;

private:
    struct FreePreferences {
        void operator()(xsltSecurityPrefs* preferences) const noexcept { xsltFreeSecurityPrefs(preferences); }
    };
    xsltTransformContext& context_;
    std::unique_ptr<Made> made_;
    std::unique_ptr<xsltSecurityPrefs, FreePreferences> preferences_;
    std::unique_ptr<Deadline> deadline_;
};

} // namespace tv::xml
