#include "logging/streamTXT.h"
#include "logging/LogFolder.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

namespace level = library::level;
using test::lines;
using test::occurrences;
using test::startLogger;
using test::TemporaryFolder;

constexpr const char* logName = "log20240305.txt";

struct StreamTXTTest : ::testing::Test {
    TemporaryFolder folder;
    clock::Frozen now{clock::at(2024, 3, 5, 14, 7, 9)};
};

std::string goldenHeader() {
    return "XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX\r\n"
           "X KVO Logger:  1.0.0                                                                 "
           "                                                           X\r\n"
           "X------------------------------------------------------------------------------------"
           "----X\r\n"
           "X Application: Boletos de Teste                                                      "
           "    X\r\n"
           "X Version:     2.1                                                                   "
           "    X\r\n"
           "XXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX\r\n";
}

std::string goldenBegin(const std::string& time) {
    return "\r\n"
           "\r\n"
           "/-------------------------------\\\r\n"
           "| Início de Execução: " +
           time +
           "  |\r\n"
           "\\-------------------------------/\r\n";
}

std::string goldenEnd(const std::string& time) {
    return "/--------------------------------\\\r\n"
           "| Término de Execução: " +
           time +
           "  |\r\n"
           "\\--------------------------------/\r\n"
           "\r\n"
           "\r\n";
}

TEST_F(StreamTXTTest, WholeRunByteForByte) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::all);
    logger->callStack.push("mdiMain.load");
    logger->logINFO("começou");
    {
        const clock::Frozen later(clock::at(2024, 3, 5, 14, 7, 10));
        logger->callStack.push("clsBoleto.ler");
        logger->logWARN("não há dados");
        logger->logFATAL("Divisão por zero[11]");
        logger->callStack.pop();
    }
    logger->callStack.push("clsBoleto.gravar");
    logger->destroy();
    EXPECT_EQ(
        folder.read(logName),
        goldenHeader() + goldenBegin("14:07:09") +
            "14:07:09 - STACK  mdiMain.load\r\n"
            "14:07:09 - INFO   mdiMain.load                                         -> [começou]\r\n"
            "14:07:10 - STACK  \tclsBoleto.ler\r\n"
            "14:07:10 - WARN   \tclsBoleto.ler                                       -> [não há dados]\r\n"
            "14:07:10 - FATAL  \tclsBoleto.ler                                       -> [Divisão por "
            "zero[11]]\r\n"
            "14:07:10 - END    \tclsBoleto.ler\r\n"
            "14:07:09 - STACK  \tclsBoleto.gravar\r\n"
            "14:07:09 - END    \tclsBoleto.gravar\r\n"
            "14:07:09 - END    mdiMain.load\r\n" +
            goldenEnd("14:07:09"));
}

TEST_F(StreamTXTTest, TwoRunsOfADayGiveTwoBannersUnderOneHeader) {
    startLogger(folder, clsLogger::typeTXT, level::info)->destroy();
    const clock::Frozen later(clock::at(2024, 3, 5, 18, 0, 0));
    startLogger(folder, clsLogger::typeTXT, level::info)->destroy();
    EXPECT_EQ(folder.read(logName), goldenHeader() + goldenBegin("14:07:09") + goldenEnd("14:07:09") +
                                        goldenBegin("18:00:00") + goldenEnd("18:00:00"));
}

TEST_F(StreamTXTTest, HeadersMisfitIsKept) {
    startLogger(folder, clsLogger::typeTXT, level::info);
    const std::vector<std::string> log = lines(folder.read(logName));
    ASSERT_GE(log.size(), 6U);
    EXPECT_EQ(log[1].size(), 145U);
    for (const std::size_t line : {0U, 2U, 3U, 4U, 5U}) {
        EXPECT_EQ(log[line].size(), 90U) << "line " << line;
    }
}

TEST_F(StreamTXTTest, TitleAndVersionAreTrimmedAndCutAtSeventyCharacters) {
    clsLogger logger;
    std::string title;
    for (int i = 0; i < 80; ++i) {
        title += "é";
    }
    logger.appTitle("  " + title + "  ");
    logger.appVersion("  2.1  ");
    logger.setPath(folder.text());
    logger.loggerFactory(clsLogger::typeTXT, level::info);
    const std::vector<std::string> log = lines(folder.read(logName));
    ASSERT_GE(log.size(), 5U);
    std::string cut;
    for (int i = 0; i < 70; ++i) {
        cut += "é";
    }
    EXPECT_EQ(log[3], "X Application: " + cut + "    X");
    EXPECT_EQ(log[4], "X Version:     2.1" + std::string(67, ' ') + "    X");
}

TEST_F(StreamTXTTest, ClosingBoxIsOneHyphenWider) {
    startLogger(folder, clsLogger::typeTXT, level::info)->destroy();
    const std::string log = folder.read(logName);
    EXPECT_EQ(occurrences(log, "/" + std::string(31, '-') + "\\\r\n"), 1U);
    EXPECT_EQ(occurrences(log, "/" + std::string(32, '-') + "\\\r\n"), 1U);
}

struct ColumnCase {
    std::size_t nameLength;
    int below; ///< Names under it on the stack, one tab each.
    bool written;
};

struct ColumnTest : StreamTXTTest, ::testing::WithParamInterface<ColumnCase> {};

// Time, separators and level take 18 columns, each tab one.
TEST_P(ColumnTest, EntryIsLostBeyondColumnSeventy) {
    const ColumnCase& c = GetParam();
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::all);
    for (int i = 0; i < c.below; ++i) {
        logger->callStack.push("a.b");
    }
    const std::string name(c.nameLength, 'n');
    logger->callStack.push(name);
    logger->logFATAL("falhou[5]");
    logger->callStack.pop();
    const std::string log = folder.read(logName);
    const std::string tabs(static_cast<std::size_t>(c.below), '\t');
    EXPECT_EQ(occurrences(log, " - STACK  " + tabs + name + "\r\n"), 1U);
    EXPECT_EQ(occurrences(log, " - END    " + tabs + name + "\r\n"), 1U);
    EXPECT_EQ(occurrences(log, " - FATAL  "), c.written ? 1U : 0U);
    if (c.written) {
        const std::size_t width = 18 + static_cast<std::size_t>(c.below) + c.nameLength;
        EXPECT_EQ(occurrences(log, name + std::string(70 - width, ' ') + " -> [falhou[5]]\r\n"), 1U);
    }
}

INSTANTIATE_TEST_SUITE_P(Widths, ColumnTest,
                         ::testing::Values(ColumnCase{51, 0, true}, ColumnCase{52, 0, true},
                                           ColumnCase{53, 0, false}, ColumnCase{60, 0, false},
                                           ColumnCase{50, 2, true}, ColumnCase{51, 2, false}));

TEST_F(StreamTXTTest, ColumnsAreCountedInCharacters) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::all);
    logger->callStack.push("ação.não");
    logger->logINFO("x");
    EXPECT_EQ(occurrences(folder.read(logName), "ação.não" + std::string(44, ' ') + " -> [x]\r\n"), 1U);
}

TEST_F(StreamTXTTest, EntryWithAnEmptyStackIsLost) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::all);
    const std::string before = folder.read(logName);
    logger->logFATAL("ninguém[5]");
    EXPECT_EQ(folder.read(logName), before);
}

TEST_F(StreamTXTTest, LevelsAreWrittenInUpperCase) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::all);
    logger->callStack.push("a.b");
    logger->getStream()->log("info", "x");
    logger->getStream()->log("stack", "y");
    const std::string log = folder.read(logName);
    EXPECT_EQ(occurrences(log, " - INFO   a.b" + std::string(49, ' ') + " -> [x]\r\n"), 1U);
    EXPECT_EQ(occurrences(log, " - STACK  a.b\r\n"), 2U);
}

TEST_F(StreamTXTTest, AnExistingFileGetsNoHeader) {
    folder.write(logName, "antes\r\n");
    startLogger(folder, clsLogger::typeTXT, level::info);
    EXPECT_EQ(folder.read(logName), "antes\r\n" + goldenBegin("14:07:09"));
}

TEST_F(StreamTXTTest, OpenFileLeavesAnExistingFileAsItIs) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::info);
    folder.write("outro.txt", "antes");
    logger->getStream()->openFile((folder.path() / "outro.txt").string(), "t", "v");
    logger->getStream()->closeFile((folder.path() / "outro.txt").string());
    EXPECT_EQ(folder.read("outro.txt"), "antes");
    EXPECT_EQ(logger->getStream()->getFileExtension(), "txt");
}

} // namespace
} // namespace tv
