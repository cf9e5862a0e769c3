#include "platform/RecordSet.h"

#include "SampleRows.h"
#include "Throws.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tv {
namespace {

using test::errorOf;
using test::nameOf;
using test::names;
using test::sixRows;
using testing::ElementsAre;

struct Condition {
    const char* text;
    std::vector<std::string> shown;
};

class Filter : public testing::TestWithParam<Condition> {};

TEST_P(Filter, shows_the_rows_whose_column_equals_the_value) {
    RecordSet set = sixRows();
    set.MoveLast();
    set.set("valor", 1.5);
    set.set("ativo", true);
    set.set("data", clock::at(2024, 1, 31));
    set.set("nome", std::string("d'Or = x"));
    set.Filter(GetParam().text);
    EXPECT_EQ(set.RecordCount(), GetParam().shown.size());
    EXPECT_EQ(names(set), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    conditions, Filter,
    testing::Values(Condition{"rowMaster = 1", {"a", "c", "d'Or = x"}}, Condition{"rowMaster=2", {"b", "e"}},
                    Condition{"  ROWMASTER =  3 ", {"d"}}, Condition{"rowMaster = 4", {}},
                    Condition{"rowMaster = 1.5", {}}, Condition{"rowMaster = 99999999999", {}},
                    Condition{"rowMaster = -1", {}}, Condition{"nome = b", {"b"}},
                    Condition{"nome = 'b'", {"b"}}, Condition{"nome = 'd''Or = x'", {"d'Or = x"}},
                    Condition{"nome = B", {}}, Condition{"valor = 1.50", {"d'Or = x"}},
                    Condition{"ativo = True", {"d'Or = x"}}, Condition{"ativo = 0", {}},
                    Condition{"data = 31/01/2024", {"d'Or = x"}},
                    Condition{"data = #2024-01-31#", {"d'Or = x"}},
                    Condition{"", {"a", "b", "c", "d", "e", "d'Or = x"}},
                    Condition{"  ", {"a", "b", "c", "d", "e", "d'Or = x"}}));

TEST(RecordSet, refuses_filters_of_another_form) {
    RecordSet set = sixRows();
    set.Filter("rowMaster = 2");
    for (const char* condition :
         {"rowMaster", "= 1", "none = 1", "rowMaster > 1", "rowMaster <> 1", "rowMaster = x",
          "rowMaster = 1 AND rowID = 2", "rowMaster =", "valor = abc", "ativo = talvez", "data = ontem"}) {
        EXPECT_EQ(errorOf([&] { set.Filter(condition); }), errc::invalidCall) << condition;
    }
    EXPECT_EQ(set.RecordCount(), 2U) << "the filter before stays";
}

TEST(RecordSet, stands_on_the_first_row_shown_after_filtering) {
    RecordSet set = sixRows();
    set.MoveLast();
    set.Filter("rowMaster = 2");
    EXPECT_EQ(nameOf(set), "b");
    set.Filter("");
    EXPECT_EQ(nameOf(set), "a");
    set.Filter("rowMaster = 9");
    EXPECT_TRUE(set.EOF_() && set.BOF_());
}

TEST(RecordSet, a_new_row_is_seen_through_every_filter_until_update) {
    RecordSet set = sixRows();
    const auto clone = set.Clone();
    clone->Filter("rowMaster = 3");
    set.Filter("rowMaster = 2");
    set.AddNew();
    set.set("nome", std::string("new"));
    set.set("rowMaster", 1);
    EXPECT_EQ(set.RecordCount(), 3U);
    EXPECT_EQ(clone->RecordCount(), 2U);
    EXPECT_THAT(names(*clone), ElementsAre("d", "new"));
    set.Update();
    EXPECT_EQ(set.RecordCount(), 2U);
    EXPECT_EQ(clone->RecordCount(), 1U);
    EXPECT_EQ(nameOf(set), "new") << "the cursor stays where it is";
    set.MoveNext();
    EXPECT_TRUE(set.EOF_());
    set.Filter("rowMaster = 1");
    EXPECT_THAT(names(set), ElementsAre("a", "c", "f", "new"));
}

TEST(RecordSet, filters_follow_changed_values_at_update) {
    RecordSet set = sixRows();
    set.Filter("rowMaster = 2");
    set.set("rowMaster", 3);
    EXPECT_EQ(set.RecordCount(), 2U) << "not yet";
    set.Update();
    EXPECT_EQ(set.RecordCount(), 1U);
    set.Filter("rowMaster = 3");
    EXPECT_THAT(names(set), ElementsAre("b", "d"));
}

TEST(RecordSet, leaving_a_row_ends_its_editing) {
    RecordSet set = sixRows();
    set.Filter("rowMaster = 3");
    set.AddNew();
    set.set("nome", std::string("g"));
    set.set("rowMaster", 2);
    set.MoveFirst();
    EXPECT_EQ(set.RecordCount(), 1U);
    set.set("rowMaster", 2);
    set.AddNew();
    set.Update();
    EXPECT_EQ(set.RecordCount(), 0U);
    set.Filter("rowMaster = 2");
    EXPECT_THAT(names(set), ElementsAre("b", "d", "e", "g"));
}

} // namespace
} // namespace tv
