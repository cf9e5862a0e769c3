#include "validation/paginasRelatorio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tv {
namespace {

using testing::ElementsAre;

TEST(PaginasRelatorioTest, EveryBlockIsAPageWithTheHead) {
    EXPECT_THAT(
        paginasRelatorio("<html><head><style>x</style></head><body><h1>T</h1>"
                         "<section class=\"bloco\">1</section><section class=\"bloco\">2</section>"
                         "<section class=\"bloco\" style=\"x\">3</section></body></html>"),
        ElementsAre(
            "<html><head><style>x</style></head><body><h1>T</h1><section class=\"bloco\">1</section>",
            "<html><head><style>x</style></head><body><section class=\"bloco\">2</section>",
            "<html><head><style>x</style></head><body><section class=\"bloco\" style=\"x\">3</section>"
            "</body></html>"));
}

TEST(PaginasRelatorioTest, OneBlockStaysWhole) {
    const std::string pagina = "<html><body><section class=\"bloco\">1</section></body></html>";
    EXPECT_THAT(paginasRelatorio(pagina), ElementsAre(pagina));
}

TEST(PaginasRelatorioTest, PageOfAnotherStylesheetStaysWhole) {
    EXPECT_THAT(paginasRelatorio("<html><p>Outra</p></html>"), ElementsAre("<html><p>Outra</p></html>"));
    EXPECT_THAT(paginasRelatorio("<section class=\"bloco\">1<section class=\"bloco\">2"),
                ElementsAre("<section class=\"bloco\">1<section class=\"bloco\">2"));
}

TEST(PaginasRelatorioTest, EmptyPageIsOnePage) {
    EXPECT_THAT(paginasRelatorio(""), ElementsAre(""));
}

} // namespace
} // namespace tv
