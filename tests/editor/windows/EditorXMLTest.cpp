#include "editor/windows/EditorXML.h"

#include "editor/windows/JanelaComTexto.h"

#include <QScrollBar>
#include <QTextBlock>

#include <gtest/gtest.h>

#include <tuple>

namespace tv {
namespace {

using test::ativa;
using test::JanelaComTexto;
using test::OutraJanela;

QString comLinhas(int quantas) {
    QStringList linhas;
    for (int linha = 1; linha <= quantas; ++linha) {
        linhas << QStringLiteral("<linha>%1</linha>").arg(linha);
    }
    return linhas.join(QLatin1Char('\n'));
}

struct LinesCase {
    const char* name;
    const char16_t* text;
    std::int32_t lines;
};

class TotalLinesTest : public ::testing::TestWithParam<LinesCase> {};

TEST_P(TotalLinesTest, CountsTheParagraphs) {
    const QPlainTextEdit caixa(QString::fromUtf16(GetParam().text));
    EXPECT_EQ(EditorXML::GetTotalLines(caixa), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(EditorXML, TotalLinesTest,
                         ::testing::Values(LinesCase{"empty", u"", 1}, LinesCase{"one", u"a", 1},
                                           LinesCase{"two", u"a\nb", 2},
                                           LinesCase{"line_end_at_the_end", u"a\nb\n", 3},
                                           LinesCase{"empty_lines", u"\n\n\n", 4}),
                         [](const auto& given) { return std::string(given.param.name); });

TEST(LinesTest, AWrappedLineCountsOnce) {
    QPlainTextEdit caixa(QString(2000, QLatin1Char('x')) + QStringLiteral("\nfim"));
    caixa.resize(200, 400);
    caixa.show();
    EditorXML::quebraLinhas(caixa, EditorXML::Quebra::NaJanela);
    EXPECT_EQ(EditorXML::GetTotalLines(caixa), 2);
    EXPECT_EQ(EditorXML::GetCurrentLine(caixa, 1999), 0);
}

class CurrentLineTest : public ::testing::TestWithParam<std::tuple<std::int32_t, std::int32_t>> {};

TEST_P(CurrentLineTest, TellsTheLineOfACharacter) {
    QPlainTextEdit caixa(QStringLiteral("ab\ncd\n\nfim"));
    QTextCursor cursor = caixa.textCursor();
    cursor.setPosition(4);
    cursor.setPosition(9, QTextCursor::KeepAnchor);
    caixa.setTextCursor(cursor);
    EXPECT_EQ(EditorXML::GetCurrentLine(caixa, std::get<0>(GetParam())), std::get<1>(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(EditorXML, CurrentLineTest,
                         ::testing::Values(std::tuple{0, 0}, std::tuple{2, 0}, std::tuple{3, 1},
                                           std::tuple{5, 1}, std::tuple{6, 2}, std::tuple{7, 3},
                                           std::tuple{10, 3}, std::tuple{500, 3}, std::tuple{-1, 1}));

TEST(LinesTest, TheFirstVisibleLineFollowsTheScrolling) {
    QPlainTextEdit caixa(comLinhas(500));
    caixa.resize(300, 200);
    caixa.show();
    EditorXML::quebraLinhas(caixa, EditorXML::Quebra::Nenhuma);
    EXPECT_EQ(EditorXML::GetFirstVisibleLine(caixa), 0);
    caixa.verticalScrollBar()->setValue(123);
    EXPECT_EQ(EditorXML::GetFirstVisibleLine(caixa), 123);
}

TEST(ActiveChildTest, WithoutAChildEverythingGivesNothing) {
    std::int32_t indice = 3;
    EXPECT_EQ(EditorXML::GetTotalLines(), 0);
    EXPECT_EQ(EditorXML::GetFirstVisibleLine(), 0);
    EXPECT_EQ(EditorXML::GetCurrentLine(indice), 0);
    EditorXML::quebraLinhas(EditorXML::Quebra::NaJanela);
    EXPECT_FALSE(mdiMain::existe()) << "a question makes no main window";
}

TEST(ActiveChildTest, AnotherKindOfChildGivesNothing) {
    auto& editor = ativa<JanelaComTexto>(comLinhas(10));
    editor.txtXML->setLineWrapMode(QPlainTextEdit::NoWrap);
    ativa<OutraJanela>();
    std::int32_t indice = 30;
    EXPECT_EQ(EditorXML::GetTotalLines(), 0);
    EXPECT_EQ(EditorXML::GetFirstVisibleLine(), 0);
    EXPECT_EQ(EditorXML::GetCurrentLine(indice), 0);
    EditorXML::quebraLinhas(EditorXML::Quebra::NaJanela);
    EXPECT_EQ(editor.txtXML->lineWrapMode(), QPlainTextEdit::NoWrap);
    mdiMain::destroi();
}

TEST(ActiveChildTest, TheEditorInFrontIsAsked) {
    ativa<JanelaComTexto>(comLinhas(3));
    auto& editor = ativa<JanelaComTexto>(comLinhas(300));
    editor.txtXML->setLineWrapMode(QPlainTextEdit::NoWrap);
    editor.txtXML->verticalScrollBar()->setValue(42);
    std::int32_t indice = editor.txtXML->document()->findBlockByNumber(17).position();
    EXPECT_EQ(EditorXML::GetTotalLines(), 300);
    EXPECT_EQ(EditorXML::GetFirstVisibleLine(), 42);
    EXPECT_EQ(EditorXML::GetCurrentLine(indice), 17);
    EditorXML::quebraLinhas(EditorXML::Quebra::NaJanela);
    EXPECT_EQ(editor.txtXML->lineWrapMode(), QPlainTextEdit::WidgetWidth);
    EditorXML::quebraLinhas(EditorXML::Quebra::Nenhuma);
    EXPECT_EQ(editor.txtXML->lineWrapMode(), QPlainTextEdit::NoWrap);
    mdiMain::destroi();
}

/// A box with one long line, shown.
struct WordWrapTest : ::testing::Test {
    WordWrapTest() {
        caixa.setPlainText(QStringLiteral("palavra ").repeated(300));
        caixa.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        caixa.resize(400, 300);
        caixa.show();
    }
    int linhasNaTela() { return caixa.document()->firstBlock().lineCount(); }

    QPlainTextEdit caixa;
};

TEST_F(WordWrapTest, Mode0DoesNotWrap) {
    EditorXML::quebraLinhas(caixa, EditorXML::Quebra{0});
    EXPECT_EQ(linhasNaTela(), 1);
    EXPECT_GT(caixa.horizontalScrollBar()->maximum(), 0);
}

TEST_F(WordWrapTest, Mode1WrapsAtTheWindow) {
    EditorXML::quebraLinhas(caixa, EditorXML::Quebra{1});
    EXPECT_EQ(caixa.horizontalScrollBar()->maximum(), 0);
    const int estreita = linhasNaTela();
    EXPECT_GT(estreita, 1);
    caixa.resize(800, 300);
    EXPECT_LT(linhasNaTela(), estreita);
}

TEST_F(WordWrapTest, Mode2WrapsAtThePrintersPage) {
    EditorXML::quebraLinhas(caixa, EditorXML::Quebra{2});
    const int largura = caixa.viewport()->width();
    caixa.resize(3000, 300);
    const int pagina = caixa.viewport()->width();
    EXPECT_GT(pagina, largura) << "a narrow box wraps at the window";
    EXPECT_LT(pagina, 1500) << "a wide one at the page, some eight inches";
    EXPECT_GT(linhasNaTela(), 1);
    caixa.resize(3600, 300);
    EXPECT_EQ(caixa.viewport()->width(), pagina);
}

TEST_F(WordWrapTest, LeavingMode2GivesTheWholeBoxBack) {
    caixa.resize(3000, 300);
    const int inteira = caixa.viewport()->width();
    EditorXML::quebraLinhas(caixa, EditorXML::Quebra{2});
    EXPECT_LT(caixa.viewport()->width(), inteira);
    EditorXML::quebraLinhas(caixa, EditorXML::Quebra{1});
    EXPECT_EQ(caixa.viewport()->width(), inteira);
    EditorXML::quebraLinhas(caixa, EditorXML::Quebra{2});
    EXPECT_LT(caixa.viewport()->width(), inteira);
    EditorXML::quebraLinhas(caixa, EditorXML::Quebra{0});
    EXPECT_EQ(caixa.viewport()->width(), inteira);
}

} // namespace
} // namespace tv
