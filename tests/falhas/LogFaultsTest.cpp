#include "Operations.h"

#include "logging/Routine.h"
#include "platform/Clock.h"
#include "platform/XmlDocument.h"

namespace tv::test {
namespace {

namespace fs = std::filesystem;

std::shared_ptr<clsLogger> begin(const fs::path& folder, std::int16_t type) {
    auto logger = std::make_shared<clsLogger>();
    logger->appTitle("Boletos de Teste");
    logger->appVersion("2.1");
    logger->setPath(folder.string());
    logger->loggerFactory(type, library::level::all);
    return logger;
}

/// A routine with a routine inside and an entry in each.
void runRoutines(const std::string& name) {
    const Routine outer(name + ".a");
    oLogger->logFATAL("em a");
    {
        const Routine inner(name + ".b");
        oLogger->logFATAL("em b");
    }
    oLogger->logFATAL("fim de a");
}

/// A run of the program, which goes on when its disk has space again. A log never stops the system, so the
/// run always goes through.
Ending runAndGoOn(const fs::path& folder, std::int16_t type) {
    const GlobalLogger logger(begin(folder, type));
    runRoutines("primeira");
    return Ending::Done;
}

class LogFaults : public testing::Test {
protected:
    const clock::Frozen now_{clock::at(2024, 1, 31, 10, 20, 30)};
};

std::string faultOfLine(const std::string& line) {
    static const std::vector<std::string> beginnings = {"10:20:30 - STACK  ",
                                                        "10:20:30 - FATAL  ",
                                                        "10:20:30 - END    ",
                                                        "/-----",
                                                        "| Início",
                                                        "\\-----",
                                                        "X",
                                                        "| Término"};
    const bool known =
        line.empty() || std::any_of(beginnings.begin(), beginnings.end(),
                                    [&](const std::string& one) { return line.starts_with(one); });
    const bool whole = !line.starts_with("10:20:30 - FATAL") || line.ends_with("]");
    return known && whole ? std::string() : "a line that is none: " + line;
}

/// A second run in the same file, without a fault: what it wrote last is there, and no line is torn.
std::string faultsOfTextLog(const fs::path& folder, Ending) {
    const fs::path file = folder / "log20240131.txt";
    {
        const GlobalLogger logger(begin(folder, clsLogger::typeTXT));
        runRoutines("segunda");
        oLogger->destroy();
    }
    const std::string bytes = files::readAll(file);
    for (const std::string& line : lines(bytes)) {
        if (const std::string fault = faultOfLine(line); !fault.empty()) {
            return fault;
        }
    }
    if (!bytes.starts_with("XXXX") || occurrences(bytes, "X KVO Logger:") != 1) {
        return "the header";
    }
    return occurrences(bytes, "segunda.b") == 3 && occurrences(bytes, "segunda.a") == 4
               ? ""
               : "the second run: " + bytes;
}

TEST_F(LogFaults, TheTextLogHasWholeLinesAndGoesOn) {
    tryAllFaults({[](const fs::path&) {},
                  [](const fs::path& folder) { return runAndGoOn(folder, clsLogger::typeTXT); },
                  faultsOfTextLog});
}

std::string faultsOfXmlLog(const fs::path& folder, Ending) {
    const fs::path file = folder / "log20240131.xml";
    {
        const GlobalLogger logger(begin(folder, clsLogger::typeXML));
        runRoutines("segunda");
        oLogger->destroy();
    }
    XmlDocument log;
    if (!log.load(file)) {
        return "the log cannot be read: " + log.parseError();
    }
    const bool isWhole = log.selectNodes("/LOG/EXEC[last()]/segunda.a").size() == 3 &&
                         log.selectNodes("/LOG/EXEC[last()]/segunda.a/segunda.b[@fatal='em b']").size() == 1;
    return isWhole ? std::string() : "the second run: " + bytesOf(file);
}

TEST_F(LogFaults, TheXmlLogCanBeReadAndGoesOn) {
    tryAllFaults({[](const fs::path&) {},
                  [](const fs::path& folder) { return runAndGoOn(folder, clsLogger::typeXML); },
                  faultsOfXmlLog});
}

/// Where the beginning of a run met the fault, the run's later routines are in the log all the same.
TEST_F(LogFaults, ARunThatCouldNotBeginIsLoggedFromItsNextRoutineOn) {
    for (const std::int16_t type : {clsLogger::typeTXT, clsLogger::typeXML}) {
        for (int which = 1, failed = 1; failed > 0; ++which) {
            SCOPED_TRACE(which);
            const TemporaryFolder folder;
            std::shared_ptr<clsLogger> logger;
            {
                SystemFault fault(folder.path(), Cause::NoSpace, which, SystemFault::Reach::AllFromThere);
                logger = begin(folder.path(), type);
                failed = fault.end();
            }
            const GlobalLogger global(logger);
            runRoutines("depois");
            oLogger->destroy();
            const std::string bytes = files::readAll(oLogger->getFilename());
            EXPECT_GE(occurrences(bytes, "depois.b"), 3U) << bytes;
            EXPECT_EQ(occurrences(bytes, type == clsLogger::typeTXT ? "X KVO Logger:" : "<LOG "), 1U)
                << bytes;
        }
    }
}

/// The log is full in the midst of a run, for as long as some routines take.
TEST_F(LogFaults, AFullDiskInTheMidstOfARunCostsItsOwnEntriesAlone) {
    for (const std::int16_t type : {clsLogger::typeTXT, clsLogger::typeXML}) {
        const TemporaryFolder folder;
        const GlobalLogger global(begin(folder.path(), type));
        runRoutines("antes");
        {
            const SystemFault fault(folder.path(), Cause::NoSpace, 1, SystemFault::Reach::AllFromThere);
            runRoutines("durante");
        }
        runRoutines("depois");
        oLogger->destroy();
        const std::string bytes = files::readAll(oLogger->getFilename());
        EXPECT_EQ(occurrences(bytes, "antes.b"), occurrences(bytes, "depois.b")) << bytes;
        EXPECT_EQ(occurrences(bytes, "durante"), 0U) << bytes;
        EXPECT_GT(occurrences(bytes, "depois.b"), 0U) << bytes;
    }
}

} // namespace
} // namespace tv::test
