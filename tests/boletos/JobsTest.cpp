#include "boletos/ApplicationFolder.h"

#include <gmock/gmock.h>

// Several files at a time: the same report, in the same order.

namespace boletos::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

class JobsTest : public BoletosTest {
protected:
    /// Documents sound and not, some that cannot be read, with keys of their own.
    std::vector<std::string> mixture() const {
        std::vector<std::string> files;
        for (int i = 0; i < 40; ++i) {
            const std::string name = "d" + std::to_string(i) + ".xml";
            const std::string key = "chave" + std::to_string(i);
            switch (i % 5) {
            case 0:
                files.push_back(valid(name, key));
                break;
            case 1:
                files.push_back(invalid(name, key));
                break;
            case 2:
                files.push_back(write(name, document(key, "Z", "x")));
                break;
            case 3:
                files.push_back(write(name, "<posicao_1><fundo><header><cnpj>" + key + "</cnpj>"));
                break;
            default:
                files.push_back((folder / name).string());
            }
        }
        files.insert(files.begin() + 7, "   ");
        return files;
    }
    Outcome with(const char* jobs, const std::string& layout, const char* format,
                 const std::vector<std::string>& files) const {
        std::vector<std::string> rest{"--jobs", jobs, "--formato", format};
        rest.insert(rest.end(), files.begin(), files.end());
        return validar(layout, rest);
    }
};

/// The seconds that a check took stand in some reports.
std::string withoutTimes(std::string text) {
    for (const std::string mark : {"time=\"", "\"tempo\":", "\"segundos\":"}) {
        for (std::size_t at = text.find(mark); at != std::string::npos;
             at = text.find(mark, at + mark.size())) {
            const std::size_t from = at + mark.size();
            text.erase(from, text.find_first_not_of("0123456789.eE-", from) - from);
        }
    }
    return text;
}

TEST_F(JobsTest, ReportAndStatusAreTheSameForAnyNumberOfJobs) {
    const std::vector<std::string> files = mixture();
    for (const std::string layout : {"posicao_1", "comformula"}) {
        for (const char* format : {"texto", "json", "junit"}) {
            const Outcome one = with("1", layout, format, files);
            ASSERT_EQ(one.status, 2);
            ASSERT_THAT(one.out, HasSubstr("d38.xml"));
            for (const char* jobs : {"2", "3", "64"}) {
                const Outcome several = with(jobs, layout, format, files);
                EXPECT_EQ(withoutTimes(several.out), withoutTimes(one.out)) << layout << format << jobs;
                EXPECT_EQ(several.err, one.err) << layout << format << jobs;
                EXPECT_EQ(several.status, one.status);
            }
        }
    }
}

TEST_F(JobsTest, KeysPileUpOverTheFilesInTheirOrder) {
    const std::vector<std::string> files{valid("a.xml", "111"), invalid("b.xml", "222"),
                                         valid("c.xml", "333"), invalid("d.xml", "444")};
    const Outcome one = with("1", "posicao_1", "json", files);
    ASSERT_THAT(one.out, HasSubstr("111222333444"));
    EXPECT_EQ(withoutTimes(with("4", "posicao_1", "json", files).out), withoutTimes(one.out));
}

TEST_F(JobsTest, WhileALogIsWrittenItTellsTheFilesInTheirOrder) {
    std::string text = catalog(boleto("Posicao_1", "posicao.xsd"));
    text.replace(text.find("level='OFF'"), 11, "level='ALL'");
    write("app/TORVA_TramadorValidador.xml", text);
    std::vector<std::string> files;
    for (int i = 10; i < 40; ++i) {
        files.push_back(invalid("f" + std::to_string(i) + ".xml"));
    }
    EXPECT_EQ(with("4", "posicao_1", "texto", files).status, 1);
    std::string log;
    for (const auto& entry : std::filesystem::directory_iterator(folder / "app")) {
        if (entry.path().filename().string().starts_with("log")) {
            log = tv::files::readAll(entry.path());
        }
    }
    std::size_t at = 0;
    for (const std::string& file : files) {
        at = log.find("clsValidador.isValido(" + file, at);
        ASSERT_NE(at, std::string::npos) << file;
    }
}

TEST_F(JobsTest, AWrongNumberIsWrongUsage) {
    for (const char* jobs : {"0", "-1", "257", "dois", "1.5", ""}) {
        const Outcome outcome = with(jobs, "posicao_1", "texto", {valid("a.xml")});
        EXPECT_EQ(outcome.status, 2) << jobs;
        EXPECT_THAT(outcome.err, HasSubstr("--jobs")) << jobs;
        EXPECT_THAT(outcome.out, IsEmpty()) << jobs;
    }
}

} // namespace
} // namespace boletos::test
