#include "logging/streamXML.h"
#include "logging/LogFolder.h"
#include "platform/Clock.h"
#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace tv {
namespace {

namespace level = library::level;
using test::occurrences;
using test::startLogger;
using test::TemporaryFolder;

constexpr const char* logName = "log20240305.xml";

struct StreamXMLTest : ::testing::Test {
    TemporaryFolder folder;
    clock::Frozen now{clock::at(2024, 3, 5, 14, 7, 9)};

    XmlDocument load() const {
        XmlDocument document;
        EXPECT_TRUE(document.load(folder.path() / logName)) << document.parseError();
        return document;
    }
    std::string log() const { return folder.read(logName); }
};

constexpr const char* head = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
                             "<!-- KVOLogger version: 1.0.0 -->\r\n"
                             "<LOG app=\"Boletos de Teste\" version=\"2.1\">";

TEST_F(StreamXMLTest, HeaderByteForByte) {
    clsLogger logger;
    logger.appTitle("  Posição  ");
    logger.appVersion(" 2.1 ");
    logger.setPath(folder.text());
    logger.loggerFactory(clsLogger::typeXML, level::off);
    logger.getStream()->openFile((folder.path() / "novo.xml").string(), logger.appTitle(),
                                 logger.appVersion());
    EXPECT_EQ(folder.read("novo.xml"), "<?xml version='1.0' encoding='ISO-8859-1' ?>\r\n"
                                       "<!-- KVOLogger version: 1.0.0 -->\r\n"
                                       "<LOG app='Posi\xE7\xE3o' version='2.1'>\r\n"
                                       "</LOG>\r\n");
    EXPECT_EQ(logger.getStream()->getFileExtension(), "xml");
}

TEST_F(StreamXMLTest, WholeRunByteForByte) {
    const auto logger = startLogger(folder, clsLogger::typeXML, level::all);
    logger->callStack.push("mdiMain.load");
    logger->logINFO("começou");
    {
        const clock::Frozen later(clock::at(2024, 3, 5, 14, 7, 10));
        logger->callStack.push("clsBoleto.ler");
        logger->logFATAL("Divisão por zero[11]");
        logger->callStack.pop();
    }
    {
        const clock::Frozen end(clock::at(2024, 3, 5, 14, 7, 11));
        logger->destroy();
    }
    EXPECT_EQ(log(), std::string(head) +
                         "<EXEC ini=\"14:07:09\" fim=\"14:07:11\">"
                         "<mdiMain.load ini=\"14:07:09\" fim=\"14:07:09\"></mdiMain.load>"
                         "<mdiMain.load ini=\"14:07:09\" fim=\"14:07:11\" info=\"come\xE7ou\">"
                         "<clsBoleto.ler ini=\"14:07:10\" fim=\"14:07:10\"></clsBoleto.ler>"
                         "<clsBoleto.ler ini=\"14:07:10\" fim=\"14:07:10\" fatal=\"Divis\xE3o por "
                         "zero[11]\"></clsBoleto.ler>"
                         "</mdiMain.load>"
                         "</EXEC></LOG>");
}

TEST_F(StreamXMLTest, ElementsAreNestedAsTheCallsWere) {
    const auto logger = startLogger(folder, clsLogger::typeXML, level::info);
    for (const char* name : {"a.a", "b.b", "c.c"}) {
        logger->callStack.push(name);
    }
    logger->callStack.pop();
    logger->callStack.push("d.d");
    const XmlDocument document = load();
    EXPECT_EQ(document.selectNodes("/LOG/EXEC/a.a/b.b/*").size(), 2U);
    EXPECT_TRUE(document.selectSingleNode("/LOG/EXEC/a.a/b.b/c.c"));
    EXPECT_TRUE(document.selectSingleNode("/LOG/EXEC/a.a/b.b/d.d"));
}

TEST_F(StreamXMLTest, TwoRunsOfADayGiveTwoChildrenInOneFile) {
    startLogger(folder, clsLogger::typeXML, level::info)->destroy();
    const clock::Frozen later(clock::at(2024, 3, 5, 18, 0, 0));
    startLogger(folder, clsLogger::typeXML, level::info)->destroy();
    EXPECT_EQ(log(), std::string(head) + "<EXEC ini=\"14:07:09\" fim=\"14:07:09\"></EXEC>"
                                         "<EXEC ini=\"18:00:00\" fim=\"18:00:00\"></EXEC></LOG>");
}

TEST_F(StreamXMLTest, SecondRunGoesIntoItsOwnChild) {
    startLogger(folder, clsLogger::typeXML, level::info)->callStack.push("a.a");
    const auto logger = startLogger(folder, clsLogger::typeXML, level::info);
    logger->callStack.push("a.a");
    logger->callStack.push("b.b");
    const XmlDocument document = load();
    EXPECT_FALSE(document.selectSingleNode("/LOG/EXEC[1]/a.a/b.b"));
    EXPECT_TRUE(document.selectSingleNode("/LOG/EXEC[2]/a.a/b.b"));
}

TEST_F(StreamXMLTest, BracketsOfAnArgumentBecomeUnderscores) {
    const auto logger = startLogger(folder, clsLogger::typeXML, level::info);
    logger->callStack.push("mdiMain.toolbar_ToolClick(appClose,1)");
    EXPECT_TRUE(load().selectSingleNode("/LOG/EXEC/mdiMain.toolbar_ToolClick_appClose_1"));
}

struct IllegalNameTest : StreamXMLTest, ::testing::WithParamInterface<const char*> {};

TEST_P(IllegalNameTest, EntryIsLostAndTheRunGoesOn) {
    const auto logger = startLogger(folder, clsLogger::typeXML, level::all);
    const std::string before = log();
    EXPECT_TRUE(logger->callStack.push(GetParam()));
    logger->logFATAL("falhou[5]");
    logger->callStack.push("dentro.dela");
    logger->callStack.pop();
    EXPECT_TRUE(logger->callStack.pop());
    EXPECT_EQ(log(), before);
    logger->callStack.push("a.a");
    logger->callStack.pop();
    EXPECT_TRUE(load().selectSingleNode("/LOG/EXEC/a.a"));
}

INSTANTIATE_TEST_SUITE_P(Names, IllegalNameTest,
                         ::testing::Values("clsValidador.isValido(um arquivo.xml)", "a b", "",
                                           "clsValidador.isValido(/dados/x.xml,Fundo)", "1abc", "a/b", "<x>",
                                           "a:b", "C:\\x.xml"));

struct DescriptionTest : StreamXMLTest, ::testing::WithParamInterface<const char*> {};

TEST_P(DescriptionTest, IsSafeInAnAttribute) {
    const auto logger = startLogger(folder, clsLogger::typeXML, level::all);
    logger->callStack.push("a.a");
    logger->logWARN(GetParam());
    EXPECT_EQ(load().documentElement().firstElement().childElements().back().getNamedItem("warn"),
              GetParam());
}

INSTANTIATE_TEST_SUITE_P(Texts, DescriptionTest,
                         ::testing::Values("l'água", "a & b", "\"x\"", "<a>", "duas\r\nlinhas\te tab",
                                           "10 \xE2\x82\xAC", ""));

TEST_F(StreamXMLTest, ApostropheInTheTitleMakesAFileThatTakesNothing) {
    clsLogger logger;
    logger.appTitle("D'Ouro");
    logger.appVersion("1");
    logger.setPath(folder.text());
    EXPECT_TRUE(logger.loggerFactory(clsLogger::typeXML, level::all));
    const std::string header = log();
    EXPECT_EQ(occurrences(header, "<LOG app='D'Ouro' version='1'>"), 1U);
    EXPECT_TRUE(logger.callStack.push("a.a"));
    logger.logFATAL("x");
    EXPECT_TRUE(logger.callStack.pop());
    logger.destroy();
    EXPECT_EQ(log(), header);
}

TEST_F(StreamXMLTest, PopStampsTheLastElementOfItsPath) {
    const auto logger = startLogger(folder, clsLogger::typeXML, level::info);
    logger->callStack.push("a.a");
    logger->logINFO("x");
    const clock::Frozen later(clock::at(2024, 3, 5, 15, 0, 0));
    logger->callStack.pop();
    const XmlDocument document = load();
    EXPECT_EQ(document.selectSingleNode("/LOG/EXEC/a.a[1]").getNamedItem("fim"), "14:07:09");
    EXPECT_EQ(document.selectSingleNode("/LOG/EXEC/a.a[2]").getNamedItem("fim"), "15:00:00");
}

TEST_F(StreamXMLTest, EntryWithAnEmptyStackIsLost) {
    const auto logger = startLogger(folder, clsLogger::typeXML, level::all);
    const std::string before = log();
    logger->logFATAL("ninguém[5]");
    EXPECT_EQ(log(), before);
}

TEST_F(StreamXMLTest, EndOfARunPopsWhatIsOpen) {
    const auto logger = startLogger(folder, clsLogger::typeXML, level::info);
    logger->callStack.push("a.a");
    logger->callStack.push("b.b");
    const clock::Frozen later(clock::at(2024, 3, 5, 15, 0, 0));
    logger->destroy();
    EXPECT_TRUE(logger->callStack.EOF_());
    EXPECT_EQ(load().selectNodes("//*[@fim='15:00:00']").size(), 3U);
}

TEST_F(StreamXMLTest, AFileOfSomethingElseStaysAsItIs) {
    folder.write(logName, "isto não é XML");
    const auto logger = startLogger(folder, clsLogger::typeXML, level::all);
    logger->callStack.push("a.a");
    logger->destroy();
    EXPECT_EQ(log(), "isto não é XML");
}

// ---- the last branch alone against the whole file

/// A logger whose file somebody else seems to have changed before each entry, so that it reads all of it.
void touch(const TemporaryFolder& folder) {
    static int moments = 0;
    std::filesystem::last_write_time(folder.path() / logName, std::filesystem::file_time_type::clock::now() -
                                                                  std::chrono::seconds(++moments));
}

TEST_F(StreamXMLTest, EveryEntryLeavesTheFileThatTheWholeDocumentWouldGive) {
    const TemporaryFolder other;
    auto branch = startLogger(folder, clsLogger::typeXML, level::all);
    auto whole = startLogger(other, clsLogger::typeXML, level::all);
    const std::vector<std::string> legal{"a.a", "b.b", "c(x,1)", "a_b", "ação"};
    const std::vector<std::string> illegal{"d e", "f/g", "a.a/b.b", "clsX(/tmp/a b.xml,Y)",
                                           "1a",  "*",   "a:b",     "."};
    std::mt19937 random(7);
    const auto both = [&](const auto& operation) {
        touch(other);
        operation(*branch);
        operation(*whole);
    };
    for (int i = 0; i < 1500; ++i) {
        const clock::Frozen moment(clock::at(2024, 3, 5, 15, i / 60, i % 60));
        const std::vector<std::string>& names = random() % 8 == 0 ? illegal : legal;
        const std::string& name = names[random() % names.size()];
        switch (random() % 7) {
        case 0:
        case 1:
            both([&](clsLogger& logger) { logger.callStack.push(name); });
            break;
        case 2:
        case 3:
            if (!branch->callStack.EOF_()) {
                both([](clsLogger& logger) { logger.callStack.pop(); });
            }
            break;
        case 4:
            both([](clsLogger& logger) { logger.logINFO("ação & <b> \"x\" \xE2\x82\xAC"); });
            break;
        case 5:
            both([](clsLogger& logger) { logger.logFATAL("falha[5]"); });
            break;
        default:
            if (random() % 40 == 0) {
                branch->destroy();
                whole->destroy();
                branch = startLogger(folder, clsLogger::typeXML, level::all);
                whole = startLogger(other, clsLogger::typeXML, level::all);
            }
        }
        ASSERT_EQ(log(), other.read(logName)) << "after operation " << i;
    }
    EXPECT_GT(log().size(), 15000U);
}

TEST_F(StreamXMLTest, AFileThatSomebodyChangedIsReadAgain) {
    const auto logger = startLogger(folder, clsLogger::typeXML, level::all);
    logger->callStack.push("a.a");
    folder.write(logName, "<LOG><EXEC><x/></EXEC></LOG>");
    logger->logINFO("nova");
    EXPECT_EQ(load().selectNodes("/LOG/EXEC/*").size(), 2U);
    std::filesystem::remove(folder.path() / logName);
    logger->logINFO("sem arquivo");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / logName));
}

struct ForeignLogTest : StreamXMLTest, ::testing::WithParamInterface<const char*> {};

TEST_P(ForeignLogTest, TagsThatAreNoneLeaveTheEntriesInTheirPlaces) {
    folder.write(logName, std::string("<?xml version='1.0'?>") + GetParam());
    const auto logger = startLogger(folder, clsLogger::typeXML, level::all);
    logger->callStack.push("a.a");
    logger->logINFO("nova");
    logger->callStack.pop();
    logger->destroy();
    const XmlDocument document = load();
    EXPECT_EQ(document.selectNodes("/LOG/EXEC[last()]/a.a").size(), 2U);
    EXPECT_EQ(document.selectNodes("/LOG/EXEC[last()]/a.a[@info='nova']").size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Files, ForeignLogTest,
                         ::testing::Values("<LOG><?x </EXEC></LOG></a> ?></LOG>",
                                           "<LOG><![CDATA[</EXEC></LOG></a>]]></LOG>",
                                           "<LOG><!-- </EXEC></LOG></a> --></LOG>",
                                           "<!DOCTYPE LOG [<!-- </LOG></LOG> -->]><LOG></LOG>",
                                           "<LOG><EXEC><a b='>'><![CDATA[<a></b>]]></a></EXEC></LOG>"));

} // namespace
} // namespace tv
