#include "platform/RecordRows.h"

#include "platform/Error.h"

namespace tv {
namespace {

struct HashOf {
    std::size_t operator()(Null) const { return 0; }
    std::size_t operator()(DateTime moment) const {
        return std::hash<long>{}(moment.time_since_epoch().count());
    }
    template<typename Plain>
    std::size_t operator()(const Plain& plain) const {
        return std::hash<Plain>{}(plain);
    }
};

bool isOfKind(const Value& value, ColumnType type) {
    switch (type) {
    case ColumnType::Integer:
        return std::holds_alternative<std::int32_t>(value);
    case ColumnType::Double:
        return std::holds_alternative<double>(value);
    case ColumnType::Boolean:
        return std::holds_alternative<bool>(value);
    case ColumnType::FixedChar:
        return std::holds_alternative<std::string>(value);
    case ColumnType::Date:
        return std::holds_alternative<DateTime>(value);
    }
    return false;
}

} // namespace

std::size_t ColumnIndex::HashValue::operator()(const Value& value) const {
    return std::visit(HashOf{}, value);
}

void ColumnIndex::put(std::size_t row, const Value& value) {
    remove(row);
    if (row >= bucketOfRow_.size()) {
        bucketOfRow_.resize(row + 1, nullptr);
    }
    RowSet& bucket = buckets_[value];
    bucket.insert(bucket.end(), row);
    bucketOfRow_[row] = &bucket;
}

void ColumnIndex::remove(std::size_t row) {
    if (holds(row)) {
        bucketOfRow_[row]->erase(row);
        bucketOfRow_[row] = nullptr;
    }
}

void RecordSet::Rows::append(std::string name, ColumnType type, int size) {
    if (open) {
        throw Error(errc::invalidCall, "RecordSet.Append", "As colunas são fixas depois da abertura");
    }
    if (!columnByName_.emplace(text::foldKey(name), columns.size()).second) {
        throw Error(errc::keyTaken, "RecordSet.Append", "A coluna já existe: " + name);
    }
    columns.push_back({std::move(name), type, size});
}

std::optional<std::size_t> RecordSet::Rows::findColumn(std::string_view name) const {
    const auto found =
        text::isFolded(name) ? columnByName_.find(name) : columnByName_.find(text::foldKey(name));
    return found == columnByName_.end() ? std::nullopt : std::optional(found->second);
}

std::size_t RecordSet::Rows::addNew() {
    const std::size_t row = cells_.size();
    cells_.emplace_back(std::vector<Value>(columns.size()));
    live.insert(live.end(), row);
    fresh.insert(fresh.end(), row);
    return row;
}

bool RecordSet::Rows::commit(std::size_t row) {
    const bool wasFresh = fresh.erase(row) > 0;
    const bool wasEdited = edited_.erase(row) > 0;
    if (!isLive(row) || (!wasFresh && !wasEdited)) {
        return false;
    }
    for (auto& [column, index] : indexes_) {
        index.put(row, get(row, column));
    }
    return true;
}

void RecordSet::Rows::remove(std::size_t row) {
    live.erase(row);
    fresh.erase(row);
    edited_.erase(row);
    for (auto& [column, index] : indexes_) {
        index.remove(row);
    }
    cells_[row].reset();
}

void RecordSet::Rows::restore(std::size_t row, const std::vector<Value>& values) {
    if (row >= cells_.size() || isLive(row) || values.size() != columns.size()) {
        throw Error(errc::invalidCall, "RecordSet.Restore",
                    "A linha não pode voltar: " + std::to_string(row));
    }
    cells_[row] = std::vector<Value>(columns.size());
    try {
        for (std::size_t column = 0; column < values.size(); ++column) {
            set(row, column, values[column]);
        }
    } catch (const Error&) {
        edited_.erase(row);
        cells_[row].reset();
        throw;
    }
    live.insert(row);
    commit(row);
}

void RecordSet::Rows::set(std::size_t row, std::size_t column, Value value) {
    const Column& described = columns[column];
    if (const auto* whole = std::get_if<std::int32_t>(&value);
        whole != nullptr && described.type == ColumnType::Double) {
        value = static_cast<double>(*whole);
    }
    if (!isNull(value) && !isOfKind(value, described.type)) {
        throw Error(errc::typeMismatch, "RecordSet", "O valor não é do tipo da coluna " + described.name);
    }
    (*cells_[row])[column] = std::move(value);
    edited_.insert(row);
}

const RowSet& RecordSet::Rows::rowsWhere(std::size_t column, const Value& value) {
    const auto [place, isNew] = indexes_.try_emplace(column);
    ColumnIndex& index = place->second;
    if (isNew) {
        for (const std::size_t row : live) {
            if (!fresh.contains(row)) {
                index.put(row, get(row, column));
            }
        }
    }
    return index.rowsOf(value);
}

std::size_t RecordSet::Rows::subscribe(Listener listener) {
    listeners_.emplace(++lastHandle_, std::move(listener));
    return lastHandle_;
}

void RecordSet::Rows::notify(Change::Kind kind, std::size_t row) {
    // A copy, because a listener may unsubscribe itself or others.
    const std::map<std::size_t, Listener> hearing = listeners_;
    for (const auto& [handle, listener] : hearing) {
        if (listeners_.contains(handle)) {
            listener({kind, row});
        }
    }
}

} // namespace tv
