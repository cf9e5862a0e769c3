#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The statements that a workbook takes, read from their text.
namespace tv::workbook {

/// A name as written, without the brackets that it may stand in.
using Name = std::string_view;

/// "CREATE TABLE t( a varchar(255), b varchar(255) )".
struct CreateTable {
    Name table;
    std::vector<Name> columns;
};

/// "INSERT INTO t( a, b )VALUES ('x', 'y' )". As many values as columns.
struct InsertInto {
    Name table;
    std::vector<Name> columns;
    std::vector<std::string> values;
};

/// "SELECT * FROM [t$]".
struct SelectAll {
    Name table;
};

using Statement = std::variant<CreateTable, InsertInto, SelectAll>;

/// Reads a statement; names point into the text. Throws Error `badStatement` on any other form: words out of
/// place, an empty list, an apostrophe too many, more or fewer values than columns.
Statement parse(std::string_view text);

} // namespace tv::workbook
