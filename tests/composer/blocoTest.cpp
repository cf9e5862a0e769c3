#include "composer/bloco.h"

#include <gtest/gtest.h>

namespace tv::test {
namespace {

using bloco::Bloco;

struct Caso {
    std::string texto;
    Bloco bloco;
};

TEST(BlocoDeCelulas, ReadsWhatSpreadsheetsWrite) {
    const std::vector<Caso> casos{
        {"", {}},
        {"a", {{"a"}}},
        {"a\tb\nc\td", {{"a", "b"}, {"c", "d"}}},
        {"a\tb\r\nc\td\r\n", {{"a", "b"}, {"c", "d"}}},
        {"a\t\t\n", {{"a", "", ""}}},
        {"\n\nb", {{""}, {""}, {"b"}}},
        {"\"a\tb\"\tc", {{"a\tb", "c"}}},
        {"\"linha 1\nlinha 2\"\nx", {{"linha 1\nlinha 2"}, {"x"}}},
        {"\"diz \"\"sim\"\"\"", {{"diz \"sim\""}}},
        {"15\" de largura", {{"15\" de largura"}}},
        {"\"sem fim", {{"sem fim"}}},
    };
    for (const Caso& caso : casos) {
        EXPECT_EQ(bloco::le(caso.texto), caso.bloco) << caso.texto;
    }
}

TEST(BlocoDeCelulas, WhatIsWrittenReadsTheSame) {
    const Bloco original{{"a", "", "b\tc"}, {"d\ne", "\"", "f"}};
    EXPECT_EQ(bloco::le(bloco::escreve(original)), original);
    EXPECT_EQ(bloco::escreve({{"1", "2"}, {"3", "4"}}), "1\t2\n3\t4");
}

} // namespace
} // namespace tv::test
