#include "platform/RecordSet.h"

#include "platform/Error.h"
#include "platform/RecordRows.h"
#include "platform/format.h"
#include "platform/text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace tv {
namespace {

[[noreturn]] void failFilter(std::string_view condition) {
    throw Error(errc::invalidCall, "RecordSet.Filter", "Filtro inválido: " + std::string(condition));
}

/// The text between quotation marks of the kind given, or the whole text where there are none.
std::string_view unquoted(std::string_view s, char mark) {
    const bool quoted = s.size() >= 2 && s.front() == mark && s.back() == mark;
    return quoted ? s.substr(1, s.size() - 2) : s;
}

std::optional<Value> logicalOf(std::string_view literal) {
    const std::string folded = text::foldKey(literal);
    if (folded == "true" || folded == "-1" || folded == "1") {
        return true;
    }
    if (folded == "false" || folded == "0") {
        return false;
    }
    return std::nullopt;
}

/// A number that is no whole one, or too large, equals no value of the column, but is a number none the less.
std::optional<Value> wholeOf(std::string_view literal) {
    const std::optional<double> number = text::documentNumber(literal);
    if (!number) {
        return std::nullopt;
    }
    const bool fits =
        *number == std::trunc(*number) && std::abs(*number) <= std::numeric_limits<std::int32_t>::max();
    if (fits) {
        return text::toInt32(*number);
    }
    return *number;
}

/// The value that a filter's text means for a column.
std::optional<Value> literalFor(ColumnType type, std::string_view literal) {
    switch (type) {
    case ColumnType::Integer:
        return wholeOf(literal);
    case ColumnType::Double:
        return text::documentNumber(literal);
    case ColumnType::Boolean:
        return logicalOf(literal);
    case ColumnType::Date:
        return format::readDate(unquoted(literal, '#'));
    case ColumnType::FixedChar:
        return text::replaceAll(unquoted(literal, '\''), "''", "'");
    }
    return std::nullopt;
}

} // namespace

/// The cursor and the filter of one record set or clone.
struct RecordSet::View {
    enum class Place { Before, On, Behind };

    const RowSet* filtered =
        nullptr; ///< Rows that the filter shows beside the fresh ones; null for no filter.
    Place place = Place::Behind;
    std::size_t row = 0; ///< Where the cursor stands when it is on a row, even one removed since.

    /// Calls `visit` with the one or two row sets that make up the view.
    template<typename Visit>
    void eachSet(const Rows& rows, Visit visit) const {
        visit(filtered == nullptr ? rows.live : *filtered);
        if (filtered != nullptr) {
            visit(rows.fresh);
        }
    }
    std::size_t count(const Rows& rows) const {
        std::size_t sum = 0;
        eachSet(rows, [&](const RowSet& set) { sum += set.size(); });
        return sum;
    }
    bool shows(const Rows& rows, std::size_t wanted) const {
        bool found = false;
        eachSet(rows, [&](const RowSet& set) { found = found || set.contains(wanted); });
        return found;
    }
    void goTo(std::optional<std::size_t> target, Place otherwise) {
        place = target ? Place::On : otherwise;
        row = target.value_or(0);
    }
    /// The first row shown from `least` on.
    std::optional<std::size_t> firstFrom(const Rows& rows, std::size_t least) const {
        std::optional<std::size_t> best;
        eachSet(rows, [&](const RowSet& set) {
            const auto found = set.lower_bound(least);
            if (found != set.end() && (!best || *found < *best)) {
                best = *found;
            }
        });
        return best;
    }
    /// The last row shown in front of `limit`, or of all without one.
    std::optional<std::size_t> lastBefore(const Rows& rows, std::optional<std::size_t> limit) const {
        std::optional<std::size_t> best;
        eachSet(rows, [&](const RowSet& set) {
            const auto end = limit ? set.lower_bound(*limit) : set.end();
            if (end != set.begin() && (!best || *std::prev(end) > *best)) {
                best = *std::prev(end);
            }
        });
        return best;
    }
};

RecordSet::RecordSet()
    : rows_(std::make_shared<Rows>())
    , view_(std::make_unique<View>()) {}

RecordSet::~RecordSet() {
    // What was not ended by Update ends with its editor, so that the clones' filters find it.
    if (view_ && view_->place == View::Place::On) {
        rows_->commit(view_->row);
    }
}

RecordSet::RecordSet(RecordSet&&) noexcept = default;
RecordSet& RecordSet::operator=(RecordSet&&) noexcept = default;

void RecordSet::Append(std::string name, ColumnType type, int size) {
    rows_->append(std::move(name), type, size);
}

void RecordSet::Open() {
    rows_->open = true;
}

bool RecordSet::isOpen() const noexcept {
    return rows_->open;
}

const std::vector<Column>& RecordSet::columns() const noexcept {
    return rows_->columns;
}

std::size_t RecordSet::columnIndex(std::string_view name) const {
    if (const auto column = rows_->findColumn(name)) {
        return *column;
    }
    throw Error(errc::invalidCall, "RecordSet", "A coluna não existe: " + std::string(name));
}

void RecordSet::AddNew() {
    if (!isOpen()) {
        throw Error(errc::objectNotSet, "RecordSet.AddNew", "O conjunto de registros não está aberto");
    }
    Update();
    const std::size_t row = rows_->addNew();
    view_->goTo(row, View::Place::On);
    rows_->notify(Change::Kind::Added, row);
}

void RecordSet::Update() {
    if (view_->place == View::Place::On && rows_->commit(view_->row)) {
        rows_->notify(Change::Kind::Changed, view_->row);
    }
}

void RecordSet::Delete() {
    const std::size_t row = currentRow();
    rows_->remove(row);
    rows_->notify(Change::Kind::Removed, row);
}

void RecordSet::Restore(std::size_t row, const std::vector<Value>& values) {
    rows_->restore(row, values);
    rows_->notify(Change::Kind::Added, row);
}

const Value& RecordSet::get(std::string_view column) const {
    return rows_->get(currentRow(), columnIndex(column));
}

void RecordSet::set(std::string_view column, Value value) {
    rows_->set(currentRow(), columnIndex(column), std::move(value));
}

void RecordSet::Filter(std::string_view condition) {
    const RowSet* filtered = nullptr;
    if (!text::trim(condition).empty()) {
        const std::size_t equals = std::min(condition.find('='), condition.size());
        const auto column = rows_->findColumn(text::trim(condition.substr(0, equals)));
        const std::string_view literal = text::trim(condition.substr(std::min(equals + 1, condition.size())));
        if (!column || literal.empty()) {
            failFilter(condition);
        }
        const std::optional<Value> value = literalFor(rows_->columns[*column].type, literal);
        if (!value) {
            failFilter(condition);
        }
        filtered = &rows_->rowsWhere(*column, *value);
    }
    Update();
    view_->filtered = filtered;
    MoveFirst();
}

std::size_t RecordSet::RecordCount() const {
    return view_->count(*rows_);
}

bool RecordSet::EOF_() const noexcept {
    return view_->place == View::Place::Behind || RecordCount() == 0;
}

bool RecordSet::BOF_() const noexcept {
    return view_->place == View::Place::Before || RecordCount() == 0;
}

void RecordSet::MoveFirst() {
    Update();
    view_->goTo(view_->firstFrom(*rows_, 0), View::Place::Behind);
}

void RecordSet::MoveNext() {
    Update();
    if (view_->place != View::Place::Behind) {
        const std::size_t least = view_->place == View::Place::On ? view_->row + 1 : 0;
        view_->goTo(view_->firstFrom(*rows_, least), View::Place::Behind);
    }
}

void RecordSet::MovePrevious() {
    Update();
    if (view_->place != View::Place::Before) {
        const bool onRow = view_->place == View::Place::On;
        view_->goTo(view_->lastBefore(*rows_, onRow ? std::optional(view_->row) : std::nullopt),
                    View::Place::Before);
    }
}

void RecordSet::MoveLast() {
    Update();
    view_->goTo(view_->lastBefore(*rows_, std::nullopt), View::Place::Behind);
}

void RecordSet::MoveTo(std::size_t row) {
    if (!view_->shows(*rows_, row)) {
        throw Error(errc::subscriptOutOfRange, "RecordSet.MoveTo",
                    "A linha não está à vista: " + std::to_string(row));
    }
    if (view_->place != View::Place::On || view_->row != row) {
        Update();
    }
    view_->goTo(row, View::Place::On);
}

std::size_t RecordSet::currentRow() const {
    if (view_->place != View::Place::On || !rows_->isLive(view_->row)) {
        throw Error(errc::objectNotSet, "RecordSet", "Não há registro corrente");
    }
    return view_->row;
}

std::vector<std::size_t> RecordSet::rows() const {
    std::vector<std::size_t> result;
    view_->eachSet(*rows_, [&](const RowSet& set) {
        const auto middle = static_cast<std::ptrdiff_t>(result.size());
        result.insert(result.end(), set.begin(), set.end());
        std::inplace_merge(result.begin(), result.begin() + middle, result.end());
    });
    return result;
}

const Value* RecordSet::cell(std::size_t row, std::size_t column) const noexcept {
    return rows_->isLive(row) && column < rows_->columns.size() ? &rows_->get(row, column) : nullptr;
}

std::vector<Value> RecordSet::values(std::size_t row) const {
    std::vector<Value> result;
    for (std::size_t column = 0; const Value* value = cell(row, column); ++column) {
        result.push_back(*value);
    }
    return result;
}

bool RecordSet::shows(std::size_t row) const noexcept {
    return view_->shows(*rows_, row);
}

std::size_t RecordSet::rowLimit() const noexcept {
    return rows_->limit();
}

bool RecordSet::isNew(std::size_t row) const noexcept {
    return rows_->fresh.contains(row);
}

std::unique_ptr<RecordSet> RecordSet::Clone() const {
    auto clone = std::make_unique<RecordSet>();
    clone->rows_ = rows_;
    clone->MoveFirst();
    return clone;
}

std::size_t RecordSet::subscribe(Listener listener) {
    return rows_->subscribe(std::move(listener));
}

void RecordSet::unsubscribe(std::size_t handle) {
    rows_->unsubscribe(handle);
}

} // namespace tv
