#pragma once

#include "platform/RecordSet.h"

#include <string>
#include <utility>
#include <vector>

namespace tv::test {

/// A set of rows as a section has them: a text, a number, and the two whole numbers that tie rows.
inline RecordSet sectionRows() {
    RecordSet set;
    set.Append("nome", ColumnType::FixedChar, 20);
    set.Append("valor", ColumnType::Double, 8);
    set.Append("ativo", ColumnType::Boolean, 0);
    set.Append("data", ColumnType::Date, 0);
    set.Append("rowID", ColumnType::Integer, 0);
    set.Append("rowMaster", ColumnType::Integer, 0);
    set.Open();
    return set;
}

inline void add(RecordSet& set, const std::string& name, int master) {
    set.AddNew();
    set.set("nome", name);
    set.set("rowMaster", master);
    set.Update();
}

inline std::string nameOf(const RecordSet& set) {
    return std::get<std::string>(set.get("nome"));
}

inline std::vector<std::string> names(RecordSet& set) {
    std::vector<std::string> result;
    for (set.MoveFirst(); !set.EOF_(); set.MoveNext()) {
        result.push_back(nameOf(set));
    }
    return result;
}

/// Rows a to f under the masters 1, 2, 1, 3, 2, 1.
inline RecordSet sixRows() {
    RecordSet set = sectionRows();
    const std::vector<std::pair<const char*, int>> rows{{"a", 1}, {"b", 2}, {"c", 1},
                                                        {"d", 3}, {"e", 2}, {"f", 1}};
    for (const auto& [name, master] : rows) {
        add(set, name, master);
    }
    return set;
}

} // namespace tv::test
