#include "logging/Routine.h"
#include "logging/LogFolder.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

namespace level = library::level;
using test::GlobalLogger;
using test::occurrences;
using test::startLogger;
using test::TemporaryFolder;

constexpr const char* logName = "log20240305.txt";

struct RoutineTest : ::testing::Test {
    TemporaryFolder folder;
    clock::Frozen now{clock::at(2024, 3, 5, 14, 7, 9)};
};

TEST_F(RoutineTest, StandsOnTheStackForItsLife) {
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, level::info));
    {
        const Routine outer("a.b");
        {
            const Routine inner([] { return std::string("c.d(") + "x)"; });
            EXPECT_EQ(oLogger->callStack.getLastElement(), "c.d(x)");
        }
        EXPECT_EQ(oLogger->callStack.getLastElement(), "a.b");
    }
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(RoutineTest, PopsOnTheWayOutOfAnException) {
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, level::info));
    EXPECT_THROW(
        {
            const Routine routine("a.b");
            throw Error(5, "", "x");
        },
        Error);
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(RoutineTest, ToleratesAMissingLogger) {
    const GlobalLogger global(nullptr);
    const Routine routine("a.b");
    EXPECT_EQ(guarded("c.d", 7, []() -> int { throw Error(5, "", "x"); }), 7);
}

TEST_F(RoutineTest, AtLevelOffANameWithArgumentsIsNotMade) {
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, level::off));
    bool made = false;
    {
        const Routine routine([&] {
            made = true;
            return std::string("a.b");
        });
        EXPECT_TRUE(oLogger->callStack.EOF_());
    }
    EXPECT_FALSE(made);
}

TEST_F(RoutineTest, GuardedGivesTheValueOfItsBody) {
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, level::all));
    EXPECT_EQ(guarded("a.b", 0, [] { return 42; }), 42);
    EXPECT_EQ(occurrences(folder.read(logName), "FATAL"), 0U);
}

TEST_F(RoutineTest, GuardedLogsDescriptionAndNumberAndGivesTheFailingValue) {
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, level::all));
    EXPECT_FALSE(guarded("a.b", false, []() -> bool { throw Error(-1, "a", "Não deu"); }));
    const std::string log = folder.read(logName);
    EXPECT_EQ(occurrences(log, " - FATAL  a.b" + std::string(49, ' ') + " -> [Não deu[-1]]\r\n"), 1U);
    EXPECT_LT(log.find("Não deu[-1]"), log.find(" - END    a.b"));
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(RoutineTest, GuardedWithoutAValueTellsWhetherItWentThrough) {
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, level::all));
    EXPECT_TRUE(guarded("a.b", [] {}));
    EXPECT_FALSE(guarded("c.d", [] { throw Error(13, "", "Tipo"); }));
    EXPECT_EQ(occurrences(folder.read(logName), "-> [Tipo[13]]"), 1U);
}

TEST_F(RoutineTest, GuardedTakesFailuresOfTheLibraryToo) {
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, level::all));
    EXPECT_EQ(guarded("a.b", std::string("nada"), []() -> std::string { return std::string().substr(1); }),
              "nada");
    EXPECT_EQ(occurrences(folder.read(logName), "[5]]"), 1U);
}

TEST_F(RoutineTest, ProceedSkipsAFailingStatementInSilence) {
    const GlobalLogger global(startLogger(folder, clsLogger::typeTXT, level::all));
    int done = 0;
    EXPECT_TRUE(proceed([&] { ++done; }));
    EXPECT_FALSE(proceed([] { throw Error(5, "", "x"); }));
    EXPECT_TRUE(proceed([&] { ++done; }));
    EXPECT_EQ(done, 2);
    EXPECT_EQ(occurrences(folder.read(logName), "FATAL"), 0U);
}

TEST_F(RoutineTest, RequireLoggerRaisesError91WithoutOne) {
    const GlobalLogger global(nullptr);
    try {
        requireLogger();
        FAIL() << "no error";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), errc::objectNotSet);
    }
    oLogger = std::make_shared<clsLogger>();
    EXPECT_EQ(&requireLogger(), oLogger.get());
}

} // namespace
} // namespace tv
