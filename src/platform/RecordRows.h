#pragma once

#include "platform/RecordSet.h"
#include "platform/text.h"

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tv {

/// Row numbers in order.
using RowSet = std::set<std::size_t>;

/// Equal values of one column and the rows that hold them.
class ColumnIndex {
public:
    /// The rows of a value; the set stays in its place for the life of the index.
    const RowSet& rowsOf(const Value& value) { return buckets_[value]; }
    /// Enters a row under a value, or moves it there.
    void put(std::size_t row, const Value& value);
    void remove(std::size_t row);
    bool holds(std::size_t row) const { return row < bucketOfRow_.size() && bucketOfRow_[row] != nullptr; }

private:
    struct HashValue {
        std::size_t operator()(const Value& value) const;
    };
    std::unordered_map<Value, RowSet, HashValue> buckets_;
    std::vector<RowSet*> bucketOfRow_;
};

/// The rows that a record set shares with its clones.
struct RecordSet::Rows {
    std::vector<Column> columns;
    bool open = false;
    RowSet live;  ///< Every row that is not removed.
    RowSet fresh; ///< Rows that were added and not ended yet; no index holds them.

    void append(std::string name, ColumnType type, int size);
    std::optional<std::size_t> findColumn(std::string_view name) const;

    std::size_t addNew();
    /// Takes the row's values into the indexes. True when there was something to take.
    bool commit(std::size_t row);
    void remove(std::size_t row);
    /// Throws Error 5 for a row that was not removed or another count of values, Error 13 as `set`.
    void restore(std::size_t row, const std::vector<Value>& values);
    bool isLive(std::size_t row) const { return row < cells_.size() && cells_[row].has_value(); }

    /// One more than the highest row number given so far.
    std::size_t limit() const noexcept { return cells_.size(); }

    const Value& get(std::size_t row, std::size_t column) const { return (*cells_[row])[column]; }
    /// Throws Error 13 when the value is of another kind than the column.
    void set(std::size_t row, std::size_t column, Value value);

    /// The rows, ended ones, whose column equals the value; stays in its place. The index is built at the
    /// first call.
    const RowSet& rowsWhere(std::size_t column, const Value& value);

    std::size_t subscribe(Listener listener);
    void unsubscribe(std::size_t handle) { listeners_.erase(handle); }
    void notify(Change::Kind kind, std::size_t row);

private:
    std::unordered_map<std::string, std::size_t, text::Hash, std::equal_to<>> columnByName_;
    std::deque<std::optional<std::vector<Value>>> cells_; // by row number; nothing for a removed row
    RowSet edited_;                                       // rows with values that no index knows yet
    std::unordered_map<std::size_t, ColumnIndex> indexes_;
    std::map<std::size_t, Listener> listeners_;
    std::size_t lastHandle_ = 0;
};

} // namespace tv
