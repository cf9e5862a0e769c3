#pragma once

#include "platform/Value.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tv {

/// Column types of a record set, by their data type code.
enum class ColumnType : int { Integer = 3, Double = 5, Boolean = 11, FixedChar = 129, Date = 133 };

/// A column of a record set. All columns may be null.
struct Column {
    std::string name; ///< Compared without regard to case.
    ColumnType type;  ///< Kind of its values.
    int size = 0;     ///< Characters of a text column, 8 for a double, otherwise 0.
};

/// Rows with typed, nullable columns in memory, with a cursor and a filter of the form "column = value".
///
/// Columns are appended first, then `Open` is called, then rows come in. Clones share rows, but have a cursor
/// and a filter of their own. A filter is an index lookup, not a scan. The cursor stands on a row, before the
/// first (BOF) or behind the last (EOF); on an empty view it is both.
class RecordSet {
public:
    /// What happened to the rows, for views. `row` is a stable row number that is never used again. A row is
    /// told as added by AddNew, and as changed when its editing ends.
    struct Change {
        enum class Kind { Added, Changed, Removed } kind;
        std::size_t row;
    };
    using Listener = std::function<void(const Change&)>;

    RecordSet();
    ~RecordSet();
    RecordSet(RecordSet&&) noexcept;
    RecordSet& operator=(RecordSet&&) noexcept;
    RecordSet(const RecordSet&) = delete;
    RecordSet& operator=(const RecordSet&) = delete;

    /// Before Open. Throws Error 457 when the name is taken.
    void Append(std::string name, ColumnType type, int size);
    void Open();
    bool isOpen() const noexcept;

    const std::vector<Column>& columns() const noexcept;
    /// Position from 0 of a column. Throws Error 5 when there is none.
    std::size_t columnIndex(std::string_view name) const;

    /// A new row of nulls behind the last; the cursor stands on it. It joins every view without regard to a
    /// filter until Update.
    void AddNew();
    /// Ends the editing of the current row: filters and indexes take its values into account. Leaving a row
    /// ends its editing too.
    void Update();
    /// Removes the current row. The cursor stays in its place, where Update does nothing and a move leads on,
    /// so that "Delete, Update, MoveNext" until EOF takes every row of a view. Throws Error 91 with no
    /// current row.
    void Delete();
    /// Brings a removed row back under its number with these values, one for each column, as a row whose
    /// editing has ended. The cursor stays. Throws Error 5 for a row that was not removed and for another
    /// count of values, Error 13 for a value of another kind than its column.
    void Restore(std::size_t row, const std::vector<Value>& values);

    /// Value of the current row. Throw Error 5 for an unknown column, Error 91 with no current row, Error 13
    /// when the value is of another kind than the column (whole numbers are taken by double columns).
    const Value& get(std::string_view column) const;
    void set(std::string_view column, Value value);

    /// "" shows every row; "column = value" and "column=value" show the rows whose column equals the value.
    /// Throws Error 5 for another form. The cursor goes to the first row shown.
    void Filter(std::string_view condition);
    std::size_t RecordCount() const;
    bool EOF_() const noexcept;
    bool BOF_() const noexcept;
    void MoveFirst();
    void MoveNext();
    void MovePrevious();
    void MoveLast();
    /// Stands on the row of that number. Throws Error 9 when the view does not show it.
    void MoveTo(std::size_t row);
    /// Number of the current row. Throws Error 91 when there is none.
    std::size_t currentRow() const;
    /// Row numbers of the view, in order.
    std::vector<std::size_t> rows() const;

    /// The value of any row by its number and the column's position from 0, wherever the cursor stands and
    /// whatever the filter shows. Null where there is no such row any more, or no such column.
    const Value* cell(std::size_t row, std::size_t column) const noexcept;
    /// All values of any row by its number, in the order of the columns. Empty where there is no such row.
    std::vector<Value> values(std::size_t row) const;
    /// True when the view shows the row of that number.
    bool shows(std::size_t row) const noexcept;
    /// One more than the highest row number given so far, by whichever clone; removed rows keep theirs.
    std::size_t rowLimit() const noexcept;
    /// True for a row that AddNew made and no Update has ended yet.
    bool isNew(std::size_t row) const noexcept;

    /// Another view on the same rows, unfiltered, standing on the first.
    std::unique_ptr<RecordSet> Clone() const;

    /// `listener` hears of every change to the shared rows, through whichever clone. Gives a handle for
    /// unsubscribe.
    std::size_t subscribe(Listener listener);
    void unsubscribe(std::size_t handle);

private:
    struct Rows;
    struct View;
    std::shared_ptr<Rows> rows_;
    std::unique_ptr<View> view_;
};

} // namespace tv
