#include "logging/clsLogger.h"
#include "logging/LogFolder.h"
#include "logging/Product.h"
#include "logging/streamTXT.h"
#include "logging/streamXML.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

namespace level = library::level;
using test::occurrences;
using test::startLogger;
using test::TemporaryFolder;

struct LoggerTest : ::testing::Test {
    TemporaryFolder folder;
    clock::Frozen now{clock::at(2024, 3, 5, 14, 7, 9)};
};

struct LevelCase {
    const char* name;
    std::int16_t level;
    bool info;
    bool warn;
    bool fatal;
    bool stackAndBanners;
};

void PrintTo(const LevelCase& c, std::ostream* out) {
    *out << c.name;
}

struct LevelTest : LoggerTest, ::testing::WithParamInterface<LevelCase> {};

TEST_P(LevelTest, WritesTheKindsOfItsRow) {
    const LevelCase& expected = GetParam();
    const auto logger = startLogger(folder, clsLogger::typeTXT, expected.level);
    logger->callStack.push("a.b");
    logger->logINFO("informado");
    logger->logWARN("avisado");
    logger->logFATAL("fatal");
    logger->callStack.pop();
    logger->destroy();
    const std::string log = folder.read("log20240305.txt");
    EXPECT_EQ(occurrences(log, " - INFO   a.b"), expected.info ? 1U : 0U);
    EXPECT_EQ(occurrences(log, "-> [informado]"), expected.info ? 1U : 0U);
    EXPECT_EQ(occurrences(log, " - WARN   a.b"), expected.warn ? 1U : 0U);
    EXPECT_EQ(occurrences(log, "-> [avisado]"), expected.warn ? 1U : 0U);
    EXPECT_EQ(occurrences(log, " - FATAL  a.b"), expected.fatal ? 1U : 0U);
    EXPECT_EQ(occurrences(log, "-> [fatal]"), expected.fatal ? 1U : 0U);
    EXPECT_EQ(occurrences(log, " - STACK  a.b"), expected.stackAndBanners ? 1U : 0U);
    EXPECT_EQ(occurrences(log, " - END    a.b"), expected.stackAndBanners ? 1U : 0U);
    EXPECT_EQ(occurrences(log, "Início de Execução"), expected.stackAndBanners ? 1U : 0U);
    EXPECT_EQ(occurrences(log, "Término de Execução"), expected.stackAndBanners ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(Levels, LevelTest,
                         ::testing::Values(LevelCase{"OFF", level::off, false, false, false, false},
                                           LevelCase{"INFO", level::info, true, false, false, true},
                                           LevelCase{"WARN", level::warn, true, true, false, true},
                                           LevelCase{"FATAL", level::fatal, true, true, true, true},
                                           LevelCase{"four", 4, true, true, true, true},
                                           LevelCase{"ALL", level::all, true, true, true, true}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(LoggerTest, LevelInfoWritesNoFatalEntry) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::info);
    logger->callStack.push("a.b");
    const std::string before = folder.read("log20240305.txt");
    logger->logFATAL("falhou[5]");
    EXPECT_EQ(folder.read("log20240305.txt"), before);
}

TEST_F(LoggerTest, LevelOffWritesNothingAndMakesNoFile) {
    for (const std::int16_t type : {clsLogger::typeTXT, clsLogger::typeXML}) {
        const auto logger = startLogger(folder, type, level::off);
        EXPECT_FALSE(logger->callStack.push("a.b"));
        logger->logINFO("x");
        logger->logWARN("x");
        logger->logFATAL("x");
        EXPECT_FALSE(logger->callStack.pop());
        logger->destroy();
        EXPECT_FALSE(logger->getFilename().empty());
    }
    EXPECT_EQ(folder.countFiles(), 0U);
}

TEST_F(LoggerTest, FactoryMakesTheStreamOfItsType) {
    clsLogger logger;
    logger.setPath(folder.text());
    EXPECT_EQ(logger.getStream(), nullptr);
    EXPECT_TRUE(logger.loggerFactory(clsLogger::typeTXT, level::off));
    EXPECT_NE(dynamic_cast<streamTXT*>(logger.getStream()), nullptr);
    EXPECT_TRUE(logger.loggerFactory(clsLogger::typeXML, level::warn));
    EXPECT_NE(dynamic_cast<streamXML*>(logger.getStream()), nullptr);
    EXPECT_EQ(logger.getLevel(), level::warn);
}

TEST_F(LoggerTest, FactoryRefusesOtherTypesAndDropsTheStream) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::info);
    EXPECT_FALSE(logger->loggerFactory(2, level::all));
    EXPECT_EQ(logger->getStream(), nullptr);
    EXPECT_EQ(logger->getLevel(), level::info);
    logger->logINFO("perdido");
    logger->destroy();
    EXPECT_EQ(occurrences(folder.read("log20240305.txt"), "perdido"), 0U);
}

TEST_F(LoggerTest, FileBearsTheDayAndTheStreamsExtension) {
    EXPECT_EQ(startLogger(folder, clsLogger::typeTXT, level::info)->getFilename(),
              (folder.path() / "log20240305.txt").string());
    EXPECT_EQ(startLogger(folder, clsLogger::typeXML, level::info)->getFilename(),
              (folder.path() / "log20240305.xml").string());
    EXPECT_TRUE(folder.holds("log20240305.txt"));
    EXPECT_TRUE(folder.holds("log20240305.xml"));
}

TEST_F(LoggerTest, WithoutAStreamThereIsNoFileName) {
    clsLogger logger;
    logger.setPath(folder.text());
    EXPECT_EQ(logger.getFilename(), "");
}

TEST_F(LoggerTest, DayChangeDuringARunKeepsTheFile) {
    const auto logger = startLogger(folder, clsLogger::typeTXT, level::all);
    const clock::Frozen tomorrow(clock::at(2024, 3, 6, 0, 0, 1));
    logger->callStack.push("a.b");
    logger->callStack.pop();
    logger->destroy();
    EXPECT_FALSE(folder.holds("log20240306.txt"));
    EXPECT_EQ(occurrences(folder.read("log20240305.txt"), "00:00:01 - END    a.b"), 1U);
}

TEST_F(LoggerTest, HeaderIsWrittenOncePerDay) {
    for (int run = 0; run < 2; ++run) {
        const auto logger = startLogger(folder, clsLogger::typeTXT, level::all);
        logger->callStack.push("a.b");
        logger->destroy();
    }
    const std::string log = folder.read("log20240305.txt");
    EXPECT_EQ(occurrences(log, "KVO Logger"), 1U);
    EXPECT_EQ(occurrences(log, "Início de Execução"), 2U);
    EXPECT_EQ(occurrences(log, "Término de Execução"), 2U);
}

TEST_F(LoggerTest, AppTitleAndVersionFallBackToTheProgramsOwn) {
    clsLogger logger;
    EXPECT_EQ(logger.appTitle(), product::title);
    EXPECT_EQ(logger.appVersion(), "1.0.0");
    logger.appTitle("  ");
    logger.appVersion("7");
    EXPECT_EQ(logger.appTitle(), product::title);
    EXPECT_EQ(logger.appVersion(), "7");
}

TEST_F(LoggerTest, ProgramVersionIsTheBuildsProjectVersion) {
    const std::string build = files::readAll(std::string(TV_SOURCE_DIR) + "/CMakeLists.txt");
    clsLogger logger;
    EXPECT_EQ(occurrences(build, "project(TramadorValidador VERSION " + logger.appVersion() + " "), 1U);
}

TEST_F(LoggerTest, BlankVersionIsKeptWhereABlankTitleIsNot) {
    clsLogger logger;
    logger.appVersion(" ");
    EXPECT_EQ(logger.appVersion(), " ");
}

TEST_F(LoggerTest, AFolderThatIsNotThereStopsNothing) {
    for (const std::int16_t type : {clsLogger::typeTXT, clsLogger::typeXML}) {
        clsLogger logger;
        logger.setPath((folder.path() / "ausente").string());
        EXPECT_TRUE(logger.loggerFactory(type, level::all));
        EXPECT_TRUE(logger.callStack.push("a.b"));
        logger.logFATAL("falhou[5]");
        EXPECT_TRUE(logger.callStack.pop());
        logger.destroy();
    }
    EXPECT_EQ(folder.countFiles(), 0U);
}

} // namespace
} // namespace tv
