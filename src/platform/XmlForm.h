#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tv {

/// A document's text (UTF-8, whatever its declaration names) as the parser writes it: one blank between
/// attributes, values in double quotes, entities resolved, both tags of an empty element. White space between
/// elements stays, and so does all that stands in front of the root element, so that lines keep their
/// numbers. Nothing when the text is not well-formed, or names an entity
/// whose text is not in it.
std::optional<std::string> inParsersForm(std::string_view utf8);

} // namespace tv
