#include "platform/KeyedCollection.h"

#include "Throws.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace tv {
namespace {

using test::errorOf;
using testing::ElementsAre;

KeyedCollection<std::string> threeItems() {
    KeyedCollection<std::string> items;
    items.Add("first", "Um");
    items.Add("second", "DOIS");
    items.Add("third", "três");
    return items;
}

TEST(KeyedCollection, keeps_the_order_of_adding) {
    const auto items = threeItems();
    EXPECT_THAT(std::vector<std::string>(items.begin(), items.end()),
                ElementsAre("first", "second", "third"));
    EXPECT_EQ(items.Item(1), "first");
    EXPECT_EQ(items.Item(3), "third");
    EXPECT_EQ(items.Count(), 3U);
}

TEST(KeyedCollection, finds_keys_in_any_case_with_accents_too) {
    const auto items = threeItems();
    EXPECT_EQ(items.Item("um"), "first");
    EXPECT_EQ(items.Item("dois"), "second");
    EXPECT_EQ(items.Item("TRÊS"), "third");
    EXPECT_EQ(items.find("quatro"), nullptr);
}

TEST(KeyedCollection, fails_on_a_taken_key_and_stays_as_it_was) {
    auto items = threeItems();
    EXPECT_EQ(errorOf([&] { items.Add("other", "TRÊS"); }), errc::keyTaken);
    EXPECT_EQ(items.Count(), 3U);
    EXPECT_EQ(items.Item("três"), "third");
}

TEST(KeyedCollection, fails_on_a_missing_key_or_position) {
    auto items = threeItems();
    EXPECT_EQ(errorOf([&] { items.Item("quatro"); }), errc::invalidCall);
    EXPECT_EQ(errorOf([&] { items.Item(std::size_t{0}); }), errc::subscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { items.Item(4); }), errc::subscriptOutOfRange);
    EXPECT_EQ(errorOf([&] { items.Remove("quatro"); }), errc::invalidCall);
}

TEST(KeyedCollection, closes_the_gap_of_a_removed_item) {
    auto items = threeItems();
    items.Remove("UM");
    EXPECT_EQ(items.Item(1), "second");
    EXPECT_EQ(items.Item("três"), "third");
    items.Add("again", "um");
    EXPECT_EQ(items.Item(3), "again");
    items.clear();
    EXPECT_TRUE(items.empty());
    EXPECT_EQ(items.find("um"), nullptr);
}

TEST(Error, reaches_the_log_with_its_number_in_brackets) {
    EXPECT_EQ(logText(Error(457, "x", "A chave já existe")), "A chave já existe[457]");
    EXPECT_EQ(logText(Error(-2147221503, "x", "Erro")), "Erro[-2147221503]");
    EXPECT_EQ(logText(std::runtime_error("out of luck")), "out of luck[5]");
}

} // namespace
} // namespace tv
