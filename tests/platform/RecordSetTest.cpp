#include "platform/RecordSet.h"

#include "SampleRows.h"
#include "Throws.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace tv {
namespace {

using test::add;
using test::errorOf;
using test::nameOf;
using test::names;
using test::sectionRows;
using test::sixRows;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(RecordSet, has_the_columns_in_the_order_of_adding) {
    const RecordSet set = sectionRows();
    ASSERT_EQ(set.columns().size(), 6U);
    EXPECT_EQ(set.columns()[0].name, "nome");
    EXPECT_EQ(set.columns()[0].size, 20);
    EXPECT_EQ(set.columns()[5].type, ColumnType::Integer);
    EXPECT_EQ(set.columnIndex("ROWMASTER"), 5U);
    EXPECT_TRUE(set.isOpen());
    EXPECT_EQ(errorOf([&] { set.columnIndex("none"); }), errc::invalidCall);
}

TEST(RecordSet, refuses_a_column_twice_and_columns_behind_the_opening) {
    RecordSet set;
    set.Append("cnpj", ColumnType::FixedChar, 14);
    EXPECT_EQ(errorOf([&] { set.Append("CNPJ", ColumnType::Integer, 0); }), errc::keyTaken);
    EXPECT_EQ(errorOf([&] { set.AddNew(); }), errc::objectNotSet) << "not open yet";
    set.Open();
    EXPECT_EQ(errorOf([&] { set.Append("other", ColumnType::Integer, 0); }), errc::invalidCall);
}

TEST(RecordSet, row_numbers_end_in_front_of_the_limit) {
    RecordSet set = sectionRows();
    EXPECT_EQ(set.rowLimit(), 0U);
    set.AddNew();
    set.AddNew();
    const auto clone = set.Clone();
    clone->MoveTo(1);
    clone->Delete();
    EXPECT_EQ(set.rowLimit(), 2U) << "a removed row keeps its number";
    clone->AddNew();
    EXPECT_EQ(set.rowLimit(), 3U);
    EXPECT_EQ(clone->currentRow(), 2U);
}

TEST(RecordSet, starts_empty_at_both_ends) {
    RecordSet set = sectionRows();
    EXPECT_TRUE(set.EOF_());
    EXPECT_TRUE(set.BOF_());
    EXPECT_EQ(set.RecordCount(), 0U);
    EXPECT_EQ(errorOf([&] { set.get("nome"); }), errc::objectNotSet);
    EXPECT_EQ(errorOf([&] { set.Delete(); }), errc::objectNotSet);
    EXPECT_EQ(errorOf([&] { set.currentRow(); }), errc::objectNotSet);
    set.MoveFirst();
    set.MoveNext();
    set.MovePrevious();
    set.MoveLast();
    EXPECT_TRUE(set.EOF_() && set.BOF_());
}

TEST(RecordSet, new_rows_are_nulls_and_current) {
    RecordSet set = sectionRows();
    set.AddNew();
    EXPECT_FALSE(set.EOF_());
    EXPECT_FALSE(set.BOF_());
    for (const Column& column : set.columns()) {
        EXPECT_TRUE(isNull(set.get(column.name))) << column.name;
    }
    EXPECT_EQ(set.RecordCount(), 1U);
}

TEST(RecordSet, takes_values_of_the_column_s_kind_and_null) {
    RecordSet set = sectionRows();
    set.AddNew();
    set.set("NOME", std::string("ações"));
    set.set("valor", 5);
    set.set("ativo", true);
    set.set("data", clock::at(2024, 1, 31));
    set.set("rowID", 7);
    EXPECT_EQ(set.get("nome"), Value(std::string("ações")));
    EXPECT_EQ(set.get("valor"), Value(5.0)) << "whole numbers are taken by double columns";
    EXPECT_EQ(set.get("ativo"), Value(true));
    EXPECT_EQ(set.get("data"), Value(clock::at(2024, 1, 31)));
    EXPECT_EQ(set.get("rowID"), Value(7));
    set.set("valor", Null{});
    EXPECT_TRUE(isNull(set.get("valor")));
}

TEST(RecordSet, refuses_values_of_another_kind) {
    RecordSet set = sectionRows();
    set.AddNew();
    EXPECT_EQ(errorOf([&] { set.set("nome", 1); }), errc::typeMismatch);
    EXPECT_EQ(errorOf([&] { set.set("valor", std::string("1")); }), errc::typeMismatch);
    EXPECT_EQ(errorOf([&] { set.set("ativo", 1); }), errc::typeMismatch);
    EXPECT_EQ(errorOf([&] { set.set("data", std::string("31/01/2024")); }), errc::typeMismatch);
    EXPECT_EQ(errorOf([&] { set.set("rowID", 1.0); }), errc::typeMismatch);
    EXPECT_EQ(errorOf([&] { set.set("none", 1); }), errc::invalidCall);
    EXPECT_EQ(errorOf([&] { set.get("none"); }), errc::invalidCall);
}

TEST(RecordSet, walks_in_the_order_of_adding) {
    RecordSet set = sixRows();
    EXPECT_THAT(names(set), ElementsAre("a", "b", "c", "d", "e", "f"));
    set.MovePrevious();
    EXPECT_EQ(nameOf(set), "f") << "from behind the last row";
    set.MovePrevious();
    EXPECT_EQ(nameOf(set), "e");
    set.MoveFirst();
    set.MovePrevious();
    EXPECT_TRUE(set.BOF_());
    EXPECT_FALSE(set.EOF_());
    set.MovePrevious();
    EXPECT_TRUE(set.BOF_());
    set.MoveNext();
    EXPECT_EQ(nameOf(set), "a") << "from before the first row";
    set.MoveLast();
    EXPECT_EQ(nameOf(set), "f");
    set.MoveNext();
    set.MoveNext();
    EXPECT_TRUE(set.EOF_());
}

TEST(RecordSet, a_discarded_clone_ends_its_editing) {
    RecordSet set = sixRows();
    {
        const auto clone = set.Clone();
        clone->AddNew();
        clone->set("rowMaster", 3);
    }
    set.Filter("rowMaster = 1");
    EXPECT_EQ(set.RecordCount(), 3U);
    set.Filter("rowMaster = 3");
    EXPECT_EQ(set.RecordCount(), 2U);
}

TEST(RecordSet, a_deleted_row_is_left_by_the_next_move) {
    RecordSet set = sixRows();
    set.MoveFirst();
    set.MoveNext();
    set.Delete();
    EXPECT_EQ(errorOf([&] { set.get("nome"); }), errc::objectNotSet);
    EXPECT_EQ(errorOf([&] { set.set("nome", std::string()); }), errc::objectNotSet);
    EXPECT_EQ(errorOf([&] { set.Delete(); }), errc::objectNotSet);
    set.Update();
    set.MoveNext();
    EXPECT_EQ(nameOf(set), "c");
    set.Delete();
    set.MovePrevious();
    EXPECT_EQ(nameOf(set), "a");
    EXPECT_THAT(names(set), ElementsAre("a", "d", "e", "f"));
}

TEST(RecordSet, deleting_while_walking_takes_every_row_of_the_view) {
    RecordSet set = sixRows();
    set.Filter("rowMaster =  1");
    std::size_t deleted = 0;
    for (; !set.EOF_(); set.MoveNext()) {
        set.Delete();
        set.Update();
        ++deleted;
    }
    EXPECT_EQ(deleted, 3U);
    set.Filter("");
    EXPECT_THAT(names(set), ElementsAre("b", "d", "e"));
}

TEST(RecordSet, is_at_both_ends_when_its_last_row_is_deleted) {
    RecordSet set = sectionRows();
    add(set, "a", 1);
    set.Delete();
    EXPECT_TRUE(set.EOF_() && set.BOF_());
    EXPECT_EQ(set.RecordCount(), 0U);
    add(set, "b", 1);
    EXPECT_THAT(names(set), ElementsAre("b"));
}

TEST(RecordSet, clones_share_rows_and_nothing_else) {
    RecordSet set = sixRows();
    set.Filter("rowMaster = 2");
    set.MoveLast();
    const auto clone = set.Clone();
    EXPECT_EQ(clone->RecordCount(), 6U) << "unfiltered";
    EXPECT_EQ(nameOf(*clone), "a") << "on the first row";
    EXPECT_EQ(nameOf(set), "e");
    clone->MoveNext();
    clone->set("nome", std::string("B"));
    clone->Update();
    set.MoveFirst();
    EXPECT_EQ(nameOf(set), "B");
    clone->Delete();
    EXPECT_EQ(errorOf([&] { set.get("nome"); }), errc::objectNotSet) << "deleted under the cursor";
    set.MoveNext();
    EXPECT_EQ(nameOf(set), "e");
}

TEST(RecordSet, a_clone_outlives_its_origin) {
    std::unique_ptr<RecordSet> clone;
    {
        RecordSet set = sixRows();
        set.Filter("rowMaster = 1");
        clone = set.Clone();
    }
    clone->Filter("rowMaster = 2");
    EXPECT_THAT(names(*clone), ElementsAre("b", "e"));
}

TEST(RecordSet, row_numbers_are_stable_and_never_used_again) {
    RecordSet set = sixRows();
    set.Filter("rowMaster = 2");
    const std::vector<std::size_t> rows = set.rows();
    ASSERT_EQ(rows.size(), 2U);
    set.Filter("");
    set.MoveTo(rows[1]);
    EXPECT_EQ(nameOf(set), "e");
    EXPECT_EQ(set.currentRow(), rows[1]);
    set.Delete();
    EXPECT_EQ(errorOf([&] { set.MoveTo(rows[1]); }), errc::subscriptOutOfRange);
    set.AddNew();
    EXPECT_NE(set.currentRow(), rows[1]);
    EXPECT_GT(set.currentRow(), rows[1]);
    set.Filter("rowMaster = 1");
    EXPECT_EQ(errorOf([&] { set.MoveTo(rows[0]); }), errc::subscriptOutOfRange) << "not shown";
    EXPECT_EQ(errorOf([&] { set.MoveTo(999); }), errc::subscriptOutOfRange);
}

TEST(RecordSet, a_removed_row_comes_back_in_its_place) {
    RecordSet set = sixRows();
    const std::vector<Value> values = set.values(1);
    ASSERT_EQ(values.size(), 6U);
    set.Filter("rowMaster = 2"); // so that there is an index to keep up
    set.Delete();
    EXPECT_EQ(set.values(1), std::vector<Value>());
    std::vector<RecordSet::Change::Kind> told;
    set.subscribe([&](const RecordSet::Change& change) { told.push_back(change.kind); });
    set.Restore(1, values);
    EXPECT_THAT(told, ElementsAre(RecordSet::Change::Kind::Added));
    EXPECT_FALSE(set.isNew(1));
    EXPECT_THAT(names(set), ElementsAre("b", "e")) << "under the filter";
    set.Filter("");
    EXPECT_THAT(names(set), ElementsAre("a", "b", "c", "d", "e", "f"));
    EXPECT_EQ(set.values(1), values);
}

TEST(RecordSet, only_a_removed_row_comes_back_with_what_its_columns_hold) {
    RecordSet set = sixRows();
    std::vector<Value> values = set.values(1);
    EXPECT_EQ(errorOf([&] { set.Restore(1, values); }), errc::invalidCall) << "it is there";
    EXPECT_EQ(errorOf([&] { set.Restore(6, values); }), errc::invalidCall) << "it never was";
    set.MoveTo(1);
    set.Delete();
    values.pop_back();
    EXPECT_EQ(errorOf([&] { set.Restore(1, values); }), errc::invalidCall);
    values.emplace_back(std::string("one"));
    EXPECT_EQ(errorOf([&] { set.Restore(1, values); }), errc::typeMismatch);
    EXPECT_EQ(set.RecordCount(), 5U);
    EXPECT_EQ(set.cell(1, 0), nullptr);
    values.back() = 2;
    set.Restore(1, values);
    EXPECT_EQ(set.RecordCount(), 6U);
}

TEST(RecordSet, lists_new_rows_among_the_others_in_order) {
    RecordSet set = sixRows();
    set.Filter("rowMaster = 1");
    const auto clone = set.Clone();
    clone->AddNew();
    const std::vector<std::size_t> rows = set.rows();
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end()));
    EXPECT_EQ(rows.back(), clone->currentRow());
}

TEST(RecordSet, tells_listeners_of_changes_through_every_clone) {
    using Kind = RecordSet::Change::Kind;
    RecordSet set = sixRows();
    const auto clone = set.Clone();
    std::vector<std::pair<Kind, std::size_t>> heard;
    const std::size_t handle =
        set.subscribe([&](const auto& change) { heard.emplace_back(change.kind, change.row); });
    clone->AddNew();
    const std::size_t fresh = clone->currentRow();
    clone->set("nome", std::string("g"));
    clone->Update();
    clone->Update();
    set.MoveFirst();
    const std::size_t first = set.currentRow();
    set.set("nome", std::string("A"));
    set.MoveNext();
    set.MovePrevious();
    set.Delete();
    EXPECT_THAT(heard, ElementsAre(std::pair(Kind::Added, fresh), std::pair(Kind::Changed, fresh),
                                   std::pair(Kind::Changed, first), std::pair(Kind::Removed, first)));
    heard.clear();
    clone->unsubscribe(handle);
    clone->AddNew();
    EXPECT_THAT(heard, IsEmpty());
}

TEST(RecordSet, listeners_may_unsubscribe_while_they_are_told) {
    RecordSet set = sectionRows();
    int first = 0;
    int second = 0;
    std::size_t secondHandle = 0;
    const std::size_t firstHandle = set.subscribe([&](const auto&) {
        ++first;
        set.unsubscribe(secondHandle);
    });
    secondHandle = set.subscribe([&](const auto&) { ++second; });
    EXPECT_NE(firstHandle, secondHandle);
    set.AddNew();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);
}

TEST(RecordSet, can_be_moved) {
    RecordSet set = sixRows();
    RecordSet other = std::move(set);
    EXPECT_EQ(other.RecordCount(), 6U);
    other = sectionRows();
    EXPECT_EQ(other.RecordCount(), 0U);
}

TEST(RecordSet, stays_quick_with_a_hundred_thousand_rows) {
    constexpr int masters = 1000;
    constexpr int details = 100;
    const auto start = std::chrono::steady_clock::now();
    RecordSet set = sectionRows();
    for (int i = 0; i < masters * details; ++i) {
        add(set, "x", i % masters);
    }
    std::size_t seen = 0;
    for (int master = 0; master < masters; ++master) {
        const auto clone = set.Clone();
        clone->Filter("rowMaster=" + std::to_string(master));
        for (; !clone->EOF_(); clone->MoveNext()) {
            ++seen;
        }
    }
    EXPECT_EQ(seen, static_cast<std::size_t>(masters * details));
    for (int master = 0; master < masters; master += 2) {
        set.Filter("rowMaster = " + std::to_string(master));
        for (; !set.EOF_(); set.MoveNext()) {
            set.Delete();
            set.Update();
        }
    }
    set.Filter("");
    EXPECT_EQ(set.RecordCount(), static_cast<std::size_t>(masters * details / 2));
    // A scan for each filter would take 200 million steps; this much time is far too long for lookups.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

} // namespace
} // namespace tv
