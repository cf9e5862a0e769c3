#pragma once

#include <string>
#include <string_view>

/// The compound file that the workbook's stream of records lies in.
namespace tv::compound {

/// A compound file whose one stream, "Workbook", holds these bytes.
std::string pack(std::string stream);

/// The bytes of the stream "Workbook" of a compound file, or of "Book" where there is none. Foreign bytes are
/// checked before anything follows their chains. Throws Error `workbookFailure`; its description tells what
/// is wrong and names no file.
std::string unpack(std::string_view file);

} // namespace tv::compound
