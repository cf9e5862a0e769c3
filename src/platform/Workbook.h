#pragma once

#include "platform/Error.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// Numbers of the failures of a workbook.
namespace errc {
inline constexpr std::int32_t badStatement =
    -2147217900; ///< 80040E14: a statement that is none, or a wrong count.
inline constexpr std::int32_t unknownTable = -2147217865;  ///< 80040E37: no sheet of that name.
inline constexpr std::int32_t tableExists = -2147217857;   ///< 80040E3F: there is a sheet of that name.
inline constexpr std::int32_t unknownColumn = -2147217904; ///< 80040E10: no column of that name.
inline constexpr std::int32_t textTooLong = -2147217833;   ///< 80040E57: a text of more than 255 characters.
inline constexpr std::int32_t workbookFailure =
    -2147467259; ///< 80004005: a file that is no workbook, or a limit of the format.
} // namespace errc

/// The rows of a sheet as read: column names from its first row, then text cells. An empty cell is no value.
struct WorkbookTable {
    std::vector<std::string> columns;
    std::vector<std::vector<std::optional<std::string>>> rows; ///< Each as long as `columns`.
};

/// A spreadsheet file of the 97-2003 format (.xls) as a store of tables: a sheet is a table, its first row
/// names the columns, every column holds text of at most 255 characters. Names compare without regard to
/// case. Failures are thrown as Error with a Portuguese description; the file is written by `close` only, in
/// one step.
class Workbook {
public:
    /// Opens the file, or a new workbook of that name when there is none. Throws when the file is no
    /// workbook that can be read, or when its folder cannot take a new file.
    explicit Workbook(std::filesystem::path path);
    Workbook(Workbook&&) noexcept;
    Workbook& operator=(Workbook&&) noexcept;
    /// Writes what `close` has not written yet, and keeps silent when it fails.
    ~Workbook();

    /// Carries out "CREATE TABLE t( a varchar(255), ... )" or "INSERT INTO t( a, ... )VALUES ('x', ... )".
    /// Throws on a statement of another form, a table that exists already, an unknown table or column, a
    /// column or a count of values that does not fit, a text that is too long, or more than the format can
    /// hold.
    void execute(std::string_view statement);

    /// Answers "SELECT * FROM [sheet$]". Throws when there is no such sheet.
    WorkbookTable select(std::string_view statement) const;

    /// The store's address, parts between ";", one of them "Data Source=" + path.
    std::string connectionString() const;

    /// Writes the file if statements have changed it (or it is new) and lets go of it.
    void close();

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace tv
