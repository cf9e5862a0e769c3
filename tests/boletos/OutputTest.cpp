#include "boletos/ApplicationFolder.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

// Where reports go: files, folders, devices, readers that go away, terminals.

namespace boletos::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

std::string contentOf(const std::filesystem::path& file) {
    return tv::files::readAll(file);
}

std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(BoletosTest, ReportGoesToTheFileThatIsNamed) {
    const std::string right = valid("certo.xml");
    const std::string wrong = invalid("errado.xml");
    const std::string report = (folder / "relatorio").string();
    for (const char* format : {"texto", "json", "junit"}) {
        const std::string expected = validar("posicao_1", {"--formato", format, right, wrong}).out;
        const Outcome outcome = validar("posicao_1", {"--formato", format, "--saida", report, right, wrong});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.out, IsEmpty());
        EXPECT_EQ(contentOf(report).substr(0, 60), expected.substr(0, 60));
        EXPECT_FALSE(std::filesystem::exists(report + ".parcial"));
    }
}

TEST_F(BoletosTest, ReportOfOneFileGoesToTheFileThatIsNamed) {
    const std::string report = (folder / "relatorio.html").string();
    EXPECT_EQ(validar("posicao_1", {"--formato", "html", "--saida", report, invalid("a.xml")}).status, 1);
    EXPECT_THAT(contentOf(report), HasSubstr("<b>1</b>"));
    EXPECT_EQ(validar("posicao_1", {"--formato", "xml", "--saida", report, valid("a.xml")}).status, 0);
    EXPECT_THAT(contentOf(report), AllOf(StartsWith("<?xml"), Not(HasSubstr("<b>1</b>"))));
}

TEST_F(BoletosTest, ReportsOfSeveralFilesGoToTheFolderThatIsNamed) {
    const std::filesystem::path reports = folder / "um/dois/relatorios";
    for (const char* format : {"html", "xml"}) {
        const Outcome outcome = validar("posicao_1", {"--formato", format, "--saida", reports.string(),
                                                      valid("a.xml"), invalid("b.xml"), valid("c.d.xml")});
        EXPECT_EQ(outcome.status, 1) << outcome.err;
        EXPECT_THAT(outcome.out, IsEmpty());
    }
    EXPECT_EQ(namesIn(reports),
              (std::vector<std::string>{"a.html", "a.xml", "b.html", "b.xml", "c.d.html", "c.d.xml"}));
    EXPECT_THAT(contentOf(reports / "a.html"), HasSubstr("<b>0</b>"));
    EXPECT_THAT(contentOf(reports / "b.html"), HasSubstr("<b>1</b>"));
}

TEST_F(BoletosTest, ReportOfOneFileGoesToAFolderThatIsThere) {
    std::filesystem::create_directories(folder / "relatorios");
    EXPECT_EQ(validar("posicao_1",
                      {"--formato", "html", "--saida", (folder / "relatorios").string(), valid("a.xml")})
                  .status,
              0);
    EXPECT_EQ(validar("posicao_1",
                      {"--formato", "html", "--saida", (folder / "novos").string() + "/", valid("a.xml")})
                  .status,
              0);
    EXPECT_EQ(namesIn(folder / "relatorios"), std::vector<std::string>{"a.html"});
    EXPECT_EQ(namesIn(folder / "novos"), std::vector<std::string>{"a.html"});
}

TEST_F(BoletosTest, FilesOfOneNameGetReportsOfTheirOwn) {
    const std::filesystem::path reports = folder / "relatorios";
    const Outcome outcome =
        validar("posicao_1", {"--formato", "html", "--saida", reports.string(), valid("1/a.xml"),
                              invalid("2/a.xml"), valid("3/a_2.xml"), invalid("4/a.txt"), valid("5/a.xml")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(namesIn(reports),
              (std::vector<std::string>{"a.html", "a_2.html", "a_2_2.html", "a_3.html", "a_4.html"}));
    EXPECT_THAT(contentOf(reports / "a.html"), HasSubstr("/1/a.xml"));
    EXPECT_THAT(contentOf(reports / "a_2.html"), HasSubstr("/2/a.xml"));
    EXPECT_THAT(contentOf(reports / "a_2_2.html"), HasSubstr("/3/a_2.xml"));
    EXPECT_THAT(contentOf(reports / "a_3.html"), HasSubstr("/4/a.txt"));
    EXPECT_THAT(contentOf(reports / "a_4.html"), HasSubstr("/5/a.xml"));
}

TEST_F(BoletosTest, FileThatStandsInTheWayOfTheFolderIsTold) {
    const std::string inTheWay = write("relatorios", "texto");
    const Outcome outcome =
        validar("posicao_1", {"--formato", "html", "--saida", inTheWay, valid("a.xml"), valid("b.xml")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "boletos: N\u00E3o foi poss\u00EDvel criar a pasta '" + inTheWay + "'.\n");
    EXPECT_EQ(contentOf(inTheWay), "texto");
}

// --- nothing takes the place of what is checked

TEST_F(BoletosTest, FileToCheckIsNotReplacedByItsReport) {
    const std::string file = valid("a.xml");
    const std::string before = contentOf(file);
    std::filesystem::create_symlink(file, folder / "ligacao.xml");
    for (const char* format : {"texto", "json", "xml", "html", "junit"}) {
        for (const std::string& place :
             {file, (folder / "app/../a.xml").string(), (folder / "ligacao.xml").string()}) {
            const Outcome outcome = validar("posicao_1", {"--formato", format, "--saida", place, file});
            EXPECT_EQ(outcome.status, 2);
            EXPECT_THAT(outcome.err, HasSubstr("ficaria no lugar de um arquivo a verificar"));
        }
    }
    EXPECT_EQ(contentOf(file), before);
}

TEST_F(BoletosTest, FilesToCheckAreNotReplacedByReportsInTheirFolder) {
    const std::string first = valid("entrada/a.xml");
    const std::string second = invalid("entrada/b.xml");
    const std::string before = contentOf(second);
    const std::string place = (folder / "entrada").string();
    const Outcome outcome = validar("posicao_1", {"--formato", "xml", "--saida", place, first, second});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("ficaria no lugar de um arquivo a verificar"));
    EXPECT_EQ(contentOf(second), before);
    EXPECT_EQ(namesIn(place), (std::vector<std::string>{"a.xml", "b.xml"}));
    // Pages bear other names.
    EXPECT_EQ(validar("posicao_1", {"--formato", "html", "--saida", place, first, second}).status, 1);
    EXPECT_EQ(namesIn(place), (std::vector<std::string>{"a.html", "a.xml", "b.html", "b.xml"}));
}

TEST_F(BoletosTest, OldReportStaysWhenTheCallFails) {
    const std::string report = write("relatorio.txt", "antigo");
    EXPECT_EQ(validar("nada", {"--saida", report, valid("a.xml")}).status, 2);
    std::filesystem::remove(folder / "app/XSD/resultado.xsl");
    EXPECT_EQ(validar("posicao_1", {"--formato", "html", "--saida", report, valid("a.xml")}).status, 2);
    EXPECT_EQ(contentOf(report), "antigo");
    EXPECT_FALSE(std::filesystem::exists(report + ".parcial"));
}

TEST_F(BoletosTest, LinkToAReportStaysALink) {
    const std::string report = write("relatorio.txt", "antigo");
    std::filesystem::create_symlink(report, folder / "ligacao.txt");
    EXPECT_EQ(validar("posicao_1", {"--saida", (folder / "ligacao.txt").string(), valid("a.xml")}).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "ligacao.txt"));
    EXPECT_THAT(contentOf(report), HasSubstr("1 arquivo: 1 v\u00E1lido"));
}

// --- places that cannot be written

TEST_F(BoletosTest, PlaceThatCannotBeWrittenIsToldBeforeAnyCheck) {
    const std::string file = valid("a.xml");
    const std::string missing = (folder / "nada/relatorio.txt").string();
    Outcome outcome = validar("posicao_1", {"--saida", missing, file});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "boletos: N\u00E3o foi poss\u00EDvel escrever em '" + missing +
                               "': a pasta n\u00E3o existe.\n");
    outcome = validar("posicao_1", {"--saida", app(), file});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err,
              "boletos: N\u00E3o foi poss\u00EDvel escrever em '" + app() + "': \u00E9 uma pasta.\n");
    outcome = validar("posicao_1", {"--saida", file + "/relatorio.txt", file});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("uma parte do caminho n\u00E3o \u00E9 uma pasta."));
}

TEST_F(BoletosTest, FullDeviceIsToldAndStays) {
    const std::string file = valid("a.xml");
    for (const char* format : {"texto", "json", "xml", "html", "junit"}) {
        const Outcome outcome = validar("posicao_1", {"--formato", format, "--saida", "/dev/full", file});
        EXPECT_EQ(outcome.status, 2) << format;
        EXPECT_EQ(outcome.err, "boletos: N\u00E3o foi poss\u00EDvel escrever em '/dev/full': n\u00E3o "
                               "h\u00E1 mais espa\u00E7o no disco.\n");
    }
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    EXPECT_FALSE(std::filesystem::exists("/dev/full.parcial"));
}

TEST_F(BoletosTest, DeviceIsWrittenAsItIs) {
    EXPECT_EQ(validar("posicao_1", {"--saida", "/dev/null", valid("a.xml")}).status, 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_THAT(validar("posicao_1", {"--saida", "/dev/stdout", valid("a.xml")}).out,
                HasSubstr("1 arquivo: 1 v\u00E1lido"));
}

TEST_F(BoletosTest, FullStandardOutputIsTold) {
    const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    const Surroundings toFull{{}, {}, full, -1};
    for (const char* format : {"texto", "json", "xml", "html", "junit"}) {
        const Outcome outcome = validar("posicao_1", {"--formato", format, valid("a.xml")}, toFull);
        EXPECT_EQ(outcome.status, 2) << format;
        EXPECT_EQ(outcome.err, "boletos: N\u00E3o foi poss\u00EDvel escrever na sa\u00EDda padr\u00E3o: "
                               "n\u00E3o h\u00E1 mais espa\u00E7o no disco.\n");
    }
    EXPECT_EQ(run({"layouts", "--pasta", app()}, toFull).status, 2);
    EXPECT_EQ(run({"--help"}, toFull).status, 2);
    EXPECT_EQ(run({"--version"}, toFull).status, 2);
    ::close(full);
}

TEST_F(BoletosTest, ReaderThatGoesAwayIsTold) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe2(pipe.data(), O_CLOEXEC), 0);
    ::close(pipe[0]);
    const Surroundings toNobody{{}, {}, pipe[1], -1};
    Outcome outcome = validar("posicao_1", {valid("a.xml"), valid("b.xml")}, toNobody);
    EXPECT_EQ(outcome.signal, 0);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "boletos: N\u00E3o foi poss\u00EDvel escrever na sa\u00EDda padr\u00E3o: quem lia "
                           "a sa\u00EDda j\u00E1 terminou.\n");
    outcome = run({"layouts", "--pasta", app()}, toNobody);
    EXPECT_EQ(outcome.signal, 0);
    EXPECT_EQ(outcome.status, 2);
    ::close(pipe[1]);
}

// --- progress

/// A terminal of which the test holds the other end.
class Terminal {
public:
    Terminal()
        : own_(::posix_openpt(O_RDWR | O_NOCTTY)) {
        ::grantpt(own_);
        ::unlockpt(own_);
        other_ = ::open(::ptsname(own_), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }
    ~Terminal() {
        ::close(own_);
        ::close(other_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    int programsEnd() const noexcept { return other_; }
    /// What has been written to it so far.
    std::string text() const {
        ::fcntl(own_, F_SETFL, O_NONBLOCK);
        std::string all;
        std::array<char, 4096> block{};
        for (ssize_t count = 0; (count = ::read(own_, block.data(), block.size())) > 0;) {
            all.append(block.data(), static_cast<std::size_t>(count));
        }
        return all;
    }

private:
    int own_;
    int other_ = -1;
};

TEST_F(BoletosTest, ProgressIsShownOnATerminal) {
    const Terminal terminal;
    ASSERT_GE(terminal.programsEnd(), 0);
    const Outcome outcome =
        validar("posicao_1", {valid("a.xml"), invalid("pasta/b.xml")}, {{}, {}, -1, terminal.programsEnd()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(terminal.text(), "\r\033[K[1/2] a.xml\r\033[K\r\033[K[2/2] b.xml\r\033[K\r\033[K");
    EXPECT_THAT(outcome.out, Not(HasSubstr("[1/2]")));
}

TEST_F(BoletosTest, ProgressIsNotWrittenToFiles) {
    EXPECT_THAT(validar("posicao_1", {valid("a.xml")}).err, IsEmpty());
}

} // namespace
} // namespace boletos::test
