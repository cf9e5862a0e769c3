#include "boletos/ApplicationFolder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <sys/stat.h>
#include <thread>

// Which files a call takes, in which order, and with which exit status it ends.

namespace boletos::test {
namespace {

using nlohmann::json;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

// --- exit status

TEST_F(BoletosTest, StatusIsZeroWhenAllFilesAreValid) {
    const Outcome outcome = validar("posicao_1", {valid("a.xml"), valid("b.xml")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_EQ(validar("comformula", {valid("a.xml")}).status, 0);
}

TEST_F(BoletosTest, StatusIsOneWhenAFileIsNotValid) {
    EXPECT_EQ(validar("posicao_1", {valid("a.xml"), invalid("b.xml"), valid("c.xml")}).status, 1);
    EXPECT_EQ(validar("posicao_1", {write("lixo.xml", "lixo")}).status, 1);
    EXPECT_EQ(validar("posicao_1", {write("vazio.xml", "")}).status, 1);
    EXPECT_EQ(validar("comformula", {write("z.xml", document("1", "Z", "1"))}).status, 1);
}

TEST_F(BoletosTest, StatusIsTwoWhenAFileCannotBeRead) {
    const std::string missing = (folder / "nada.xml").string();
    const Outcome outcome = validar("posicao_1", {invalid("a.xml"), missing, valid("b.xml")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "boletos: " + missing + ": N\u00E3o foi poss\u00EDvel ler o arquivo '" + missing +
                               "': o arquivo n\u00E3o existe.\n");
    EXPECT_THAT(validar("posicao_1", {folder.path().string()}).err, HasSubstr("\u00E9 uma pasta"));
    EXPECT_EQ(validar("posicao_1", {folder.path().string()}).status, 2);
    ASSERT_EQ(::mkfifo((folder / "cano").c_str(), 0600), 0);
    EXPECT_EQ(validar("posicao_1", {(folder / "cano").string()}).status, 2);
    EXPECT_EQ(validar("comformula", {missing}).status, 2);
    EXPECT_EQ(validar("comformula", {(folder / "cano").string()}).status, 2);
}

TEST_F(BoletosTest, StatusIsTwoForABlankName) {
    for (const char* name : {"", "   "}) {
        const Outcome outcome =
            validar("posicao_1", {"--formato", "json", valid("a.xml"), name, valid("b.xml")});
        EXPECT_EQ(outcome.status, 2);
        const std::vector<json> objects = jsonOf(outcome.out);
        ASSERT_THAT(objects, SizeIs(3));
        EXPECT_EQ(objects[1]["valido"], false);
        EXPECT_EQ(objects[1]["avisos"], json::array({"O nome do arquivo est\u00E1 em branco"}));
        EXPECT_EQ(objects[2]["valido"], true);
    }
}

TEST_F(BoletosTest, StatusIsTwoWhenTheSchemaDoesNotLoad) {
    const std::string file = valid("a.xml");
    const Outcome missing = validar("SemEsquema", {file, file});
    EXPECT_EQ(missing.status, 2);
    EXPECT_THAT(linesOf(missing.err),
                ElementsAre(AllOf(StartsWith("boletos: " + file), HasSubstr("nada.xsd")),
                            AllOf(StartsWith("boletos: " + file), HasSubstr("nada.xsd"))));
    EXPECT_THAT(missing.out, AllOf(HasSubstr("N\u00C3O VERIFICADO"), HasSubstr("2 n\u00E3o verificados"),
                                   Not(HasSubstr("INV\u00C1LIDO"))));
    const Outcome broken = validar("EsquemaQuebrado", {file});
    EXPECT_EQ(broken.status, 2);
    EXPECT_THAT(broken.err, AllOf(HasSubstr("quebrado.xsd"), HasSubstr("linha 1")));
}

TEST_F(BoletosTest, StatusIsTwoWhenTheFormulaDoesNotLoad) {
    const Outcome outcome = validar("SemFormula", {valid("a.xml")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, AllOf(HasSubstr("A folha de f\u00F3rmulas"), HasSubstr("nada.xsl")));
    write("app/XSD/formula.xsl",
          "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
          "<xsl:template match='/'>sem raiz</xsl:template></xsl:stylesheet>");
    EXPECT_EQ(validar("comformula", {valid("a.xml")}).status, 2);
}

TEST_F(BoletosTest, ValidFileOfALayoutThatCannotCheckIsNeverCalledValid) {
    for (const char* format : {"texto", "json", "xml", "html", "junit"}) {
        const Outcome outcome = validar("SemEsquema", {"--formato", format, valid("a.xml")});
        EXPECT_EQ(outcome.status, 2) << format;
        EXPECT_THAT(outcome.out, AllOf(Not(HasSubstr("V\u00C1LIDO  ")), Not(HasSubstr("\"valido\":true"))))
            << format;
        EXPECT_THAT(outcome.err, HasSubstr("nada.xsd")) << format;
    }
}

// --- several files

TEST_F(BoletosTest, GarbageStopsNoOtherFileInAnyForm) {
    const std::vector<std::string> files{
        valid("a.xml"),
        write("vazio.xml", ""),
        write("foto.jpg", "\xFF\xD8\xFF\xE0\x10JFIF"),
        write("cortado.xml", document("1", "A", "1").substr(0, 40)),
        write("utf16.xml", std::string("\xFF\xFE<\0r\0", 6)),
        folder.path().string(),
        (folder / "nada.xml").string(),
        write("outro.xml", "<outra_posicao><a/></outra_posicao>"),
        write("longo.xml", document("1", "A", std::string(10'000'000, 'A'))),
        write("bomba.xml",
              "<!DOCTYPE x [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\">"
              "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\"><!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\">"
              "<!ENTITY e \"&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;\"><!ENTITY f \"&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;\">"
              "]><posicao_1>&f;</posicao_1>"),
        write("fundo.xml", std::string(200'000, '<') + "a>"),
        write("aninhado.xml",
              [] {
                  std::string text;
                  for (int i = 0; i < 100'000; ++i) {
                      text += "<fundo>";
                  }
                  return text;
              }()),
        valid("z.xml"),
    };
    for (const char* layout : {"posicao_1", "comformula"}) {
        std::vector<std::string> arguments{"--formato", "json"};
        arguments.insert(arguments.end(), files.begin(), files.end());
        const Outcome outcome = validar(layout, arguments);
        EXPECT_EQ(outcome.signal, 0);
        EXPECT_EQ(outcome.status, 2);
        const std::vector<json> objects = jsonOf(outcome.out);
        ASSERT_THAT(objects, SizeIs(files.size())) << outcome.err;
        for (std::size_t i = 0; i < files.size(); ++i) {
            const bool isSound = i == 0 || i + 1 == files.size();
            EXPECT_EQ(objects[i]["arquivo"], files[i]);
            EXPECT_EQ(objects[i]["valido"], isSound) << files[i];
            EXPECT_EQ(objects[i]["resultados"].empty(), isSound) << files[i];
        }
    }
    for (const char* format : {"texto", "xml", "html", "junit"}) {
        std::vector<std::string> arguments{"--formato", format};
        arguments.insert(arguments.end(), files.begin(), files.end());
        const Outcome outcome = validar("posicao_1", arguments);
        EXPECT_EQ(outcome.signal, 0) << format;
        EXPECT_EQ(outcome.status, 2) << format;
        EXPECT_THAT(outcome.out, HasSubstr("z.xml")) << format;
    }
}

TEST_F(BoletosTest, KeysPileUpOverTheFilesInTheirOrder) {
    const std::vector<std::string> files{invalid("c.xml", "11"), valid("a.xml", "22"),
                                         invalid("b.xml", "33")};
    const auto keys = [](const std::vector<json>& objects) {
        std::vector<std::string> all;
        for (const json& object : objects) {
            for (const json& finding : object["resultados"]) {
                all.push_back(finding["valorCampoChave"]);
            }
        }
        return all;
    };
    EXPECT_THAT(keys(jsonOf(validar("posicao_1", {"--formato", "json", files[0], files[1], files[2]}).out)),
                ElementsAre("11", "112233"));
    EXPECT_THAT(keys(jsonOf(validar("posicao_1", {"--formato", "json", files[2], files[0]}).out)),
                ElementsAre("33", "3311"));
}

TEST_F(BoletosTest, FileIsCheckedAsOftenAsItIsNamed) {
    const std::string file = invalid("a.xml");
    EXPECT_THAT(jsonOf(validar("posicao_1", {"--formato", "json", file, file, file}).out), SizeIs(3));
}

TEST_F(BoletosTest, OneThousandFilesAreCheckedInTheirOrder) {
    std::vector<std::string> arguments{"--formato", "json"};
    std::vector<std::string> files;
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "lote/" + std::to_string(i * 7919 % 1000) + ".xml";
        files.push_back(i % 10 == 3 ? invalid(name) : valid(name));
    }
    arguments.insert(arguments.end(), files.begin(), files.end());
    const Outcome outcome = validar("posicao_1", arguments);
    EXPECT_EQ(outcome.status, 1);
    const std::vector<json> objects = jsonOf(outcome.out);
    ASSERT_THAT(objects, SizeIs(1000));
    for (std::size_t i = 0; i < files.size(); ++i) {
        EXPECT_EQ(objects[i]["arquivo"], files[i]);
        EXPECT_EQ(objects[i]["valido"], i % 10 != 3);
    }
}

// --- names

TEST_F(BoletosTest, NamesOfAnyKindAreTaken) {
    const std::vector<std::string> names{"com espa\u00E7o.xml",
                                         "a\u00E7\u00E3o.xml",
                                         "a'b\"c.xml",
                                         "100%.xml",
                                         "a=b.xml",
                                         "validar",
                                         "layouts",
                                         "[1,2]",
                                         "{a}.xml",
                                         "a,b.xml",
                                         "\u20AC.xml",
                                         "a\tb.xml",
                                         "#a.xml",
                                         "http:x.xml",
                                         "@a.xml",
                                         "sem_extensao"};
    std::vector<std::string> arguments{"--formato", "json"};
    for (const std::string& name : names) {
        valid(name);
        arguments.push_back(name);
    }
    const Outcome outcome = validar("posicao_1", arguments, {{}, folder.path(), -1, -1});
    EXPECT_EQ(outcome.status, 0) << outcome.err << outcome.out;
    std::vector<std::string> told;
    for (const json& object : jsonOf(outcome.out)) {
        told.push_back(object["arquivo"]);
    }
    EXPECT_THAT(told, ElementsAreArray(names));
}

TEST_F(BoletosTest, NamesWithLeadingDashesFollowTwoDashes) {
    valid("-a.xml");
    valid("--layout");
    valid("--");
    const Outcome outcome = validar("posicao_1", {"--formato", "json", "--", "-a.xml", "--layout", "./--"},
                                    {{}, folder.path(), -1, -1});
    EXPECT_EQ(outcome.status, 0) << outcome.err << outcome.out;
    EXPECT_THAT(jsonOf(outcome.out), SizeIs(3));
}

TEST_F(BoletosTest, NamesThatAreNoTextAreStillTaken) {
    const std::string name = "latin1-\xE9.xml";
    valid(name);
    for (const char* format : {"texto", "json", "xml", "html", "junit"}) {
        const Outcome outcome =
            validar("posicao_1", {"--formato", format, name}, {{}, folder.path(), -1, -1});
        EXPECT_EQ(outcome.status, 0) << format << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr("latin1-")) << format;
        EXPECT_THAT(outcome.out, Not(HasSubstr("\xE9.xml"))) << format;
    }
}

TEST_F(BoletosTest, OptionsStandAnywhere) {
    const std::string first = valid("a.xml");
    const std::string second = invalid("b.xml");
    const Outcome outcome =
        run({"validar", first, "--formato=json", "--pasta", app(), second, "--layout=posicao_1"});
    EXPECT_EQ(outcome.status, 1) << outcome.err;
    EXPECT_THAT(jsonOf(outcome.out), SizeIs(2));
}

// --- interruption

class Interruption : public BoletosTest {
protected:
    /// A call that takes long, interrupted as soon as it has told of its first file.
    Outcome interrupted(const std::vector<std::string>& options,
                        const std::function<bool(const Program&)>& isUnderWay) {
        std::string text = "<posicao_1>";
        for (int i = 0; i < 20'000; ++i) {
            text +=
                "<fundo><header><cnpj>1</cnpj></header><titulo><cod>A</cod><valor>1</valor></titulo></fundo>";
        }
        const std::string file = write("grande.xml", text + "</posicao_1>");
        std::vector<std::string> arguments = options;
        arguments.insert(arguments.end(), count, file);
        Program program(command("posicao_1", arguments));
        for (int tries = 0; tries < 3000 && !isUnderWay(program); ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        program.send(SIGINT);
        return program.wait();
    }
    static constexpr std::size_t count = 500;
};

TEST_F(Interruption, EndsBehindTheFileUnderWayWithAWholeReport) {
    const Outcome outcome = interrupted({"--formato", "json"}, [](const Program& program) {
        return program.outSoFar().find('\n') != std::string::npos;
    });
    EXPECT_EQ(outcome.signal, 0);
    EXPECT_EQ(outcome.status, 2);
    const std::vector<json> objects = jsonOf(outcome.out);
    EXPECT_GE(objects.size(), 1U);
    EXPECT_LT(objects.size(), count);
    for (const json& object : objects) {
        EXPECT_EQ(object["valido"], true);
    }
    EXPECT_EQ(outcome.err, "boletos: interrompido depois de " + std::to_string(objects.size()) + " de " +
                               std::to_string(count) + " arquivos\n");
}

TEST_F(Interruption, LeavesAWholeReportInItsFile) {
    const std::filesystem::path report = folder / "relatorio.xml";
    const Outcome outcome =
        interrupted({"--formato", "junit", "--saida", report.string()}, [&](const Program& /*program*/) {
            return std::filesystem::exists(report.string() + ".parcial");
        });
    EXPECT_EQ(outcome.status, 2);
    const std::string text = tv::files::readAll(report);
    EXPECT_THAT(text, AllOf(StartsWith("<?xml"), HasSubstr("</testsuites>")));
    EXPECT_THAT(outcome.err, HasSubstr(" de " + std::to_string(count) + " arquivos"));
}

TEST_F(Interruption, LeavesTheReportsThatAreFinished) {
    const std::filesystem::path reports = folder / "relatorios";
    const Outcome outcome =
        interrupted({"--formato", "html", "--saida", reports.string()}, [&](const Program& /*program*/) {
            return std::filesystem::exists(reports / "grande.html");
        });
    EXPECT_EQ(outcome.status, 2);
    std::size_t pages = 0;
    for (const auto& entry : std::filesystem::directory_iterator(reports)) {
        EXPECT_EQ(entry.path().extension(), ".html");
        EXPECT_THAT(tv::files::readAll(entry.path()), HasSubstr("</html>"));
        ++pages;
    }
    EXPECT_EQ(outcome.err, "boletos: interrompido depois de " + std::to_string(pages) + " de " +
                               std::to_string(count) + " arquivos\n");
}

} // namespace
} // namespace boletos::test
