#include "logging/LogFolder.h"
#include "platform/XmlDocument.h"
#include "platform/text.h"
#include "validation/biblioteca.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// The two help pages: help.html, made from the catalog that ships, and help2.html, which ships as it is.
namespace tv {
namespace {

using test::GlobalLogger;
using test::occurrences;
using test::startLogger;
using test::TemporaryFolder;

const std::filesystem::path dataFolder = std::filesystem::path(TV_SOURCE_DIR) / "data";
const std::filesystem::path catalogFile = dataFolder / "TORVA_TramadorValidador.xml";
const std::filesystem::path stylesheetFile = dataFolder / "XSD" / "help.xsl";

// --- reading a page

std::string replaceAll(std::string text, std::string_view what, std::string_view by) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
    return text;
}

/// A text as it stands between two tags.
std::string escaped(std::string text) {
    text = replaceAll(std::move(text), "&", "&amp;");
    text = replaceAll(std::move(text), "<", "&lt;");
    return replaceAll(std::move(text), ">", "&gt;");
}

/// The value of an attribute as the browser reads it.
std::string unescaped(std::string text) {
    text = replaceAll(std::move(text), "&lt;", "<");
    text = replaceAll(std::move(text), "&gt;", ">");
    text = replaceAll(std::move(text), "&quot;", "\"");
    return replaceAll(std::move(text), "&amp;", "&");
}

/// Where a link inside of the page goes: without its "#", with its escapes resolved.
std::string target(const std::string& href) {
    std::string result;
    for (std::size_t i = 1; i < href.size(); ++i) {
        if (href[i] == '%') {
            result += static_cast<char>(std::stoi(href.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            result += href[i];
        }
    }
    return result;
}

struct Tag {
    std::string name;
    std::map<std::string, std::string> attributes;

    std::string value(const std::string& attribute) const {
        const auto found = attributes.find(attribute);
        return found == attributes.end() ? std::string() : found->second;
    }
};

/// Reads the attributes of the tag whose name ends at `at`; moves `at` to its ">".
std::map<std::string, std::string> readAttributes(const std::string& html, std::size_t& at) {
    std::map<std::string, std::string> attributes;
    while (at < html.size() && html[at] != '>') {
        at = html.find_first_not_of(" \t\r\n/", at);
        const std::size_t end = html.find_first_of("= \t\r\n>", at);
        const std::string name = html.substr(at, end - at);
        at = end;
        if (at < html.size() && html[at] == '=') {
            const std::size_t close = html.find(html[at + 1], at + 2);
            attributes[name] = unescaped(html.substr(at + 2, close - at - 2));
            at = close + 1;
        } else if (!name.empty()) {
            attributes[name] = "";
        }
    }
    return attributes;
}

/// The start tags of a page in their order. Values of attributes must be quoted, as they are in both pages.
std::vector<Tag> startTags(const std::string& html) {
    std::vector<Tag> tags;
    for (std::size_t at = html.find('<'); at != std::string::npos; at = html.find('<', at + 1)) {
        if (std::isalpha(static_cast<unsigned char>(html[at + 1])) != 0) {
            const std::size_t end = html.find_first_of(" \t\r\n/>", at);
            Tag tag{html.substr(at + 1, end - at - 1), {}};
            at = end;
            tag.attributes = readAttributes(html, at);
            tags.push_back(std::move(tag));
        }
    }
    return tags;
}

/// What stands from the element with this anchor to the next `end`; empty when there is no such element.
std::string partOf(const std::string& html, const std::string& anchor, std::string_view end) {
    const std::size_t start = html.find(" id=\"" + anchor + "\"");
    return start == std::string::npos ? std::string() : html.substr(start, html.find(end, start) - start);
}

// --- what both pages keep

void expectLinksHaveTargets(const std::vector<Tag>& tags) {
    std::set<std::string> ids;
    for (const Tag& tag : tags) {
        if (tag.attributes.contains("id")) {
            EXPECT_TRUE(ids.insert(tag.value("id")).second)
                << "a second element has the id " << tag.value("id");
        }
    }
    std::size_t links = 0;
    for (const Tag& tag : tags) {
        if (tag.value("href").starts_with("#")) {
            ++links;
            EXPECT_TRUE(ids.contains(target(tag.value("href")))) << tag.value("href");
        }
    }
    EXPECT_GT(links, 0U);
}

void expectNothingIsLoadedOrRun(const std::string& html, const std::vector<Tag>& tags) {
    static const std::set<std::string> loading{"script", "link",  "img",   "iframe", "frame",
                                               "object", "embed", "video", "audio",  "input",
                                               "form",   "base",  "svg",   "image"};
    for (const Tag& tag : tags) {
        EXPECT_FALSE(loading.contains(tag.name)) << tag.name;
        for (const auto& [name, value] : tag.attributes) {
            EXPECT_FALSE(name.starts_with("on")) << name << "=" << value;
            EXPECT_FALSE(name == "src" || name == "srcset" || name == "background") << name << "=" << value;
            EXPECT_TRUE(name != "href" || tag.name == "a") << tag.name << " " << value;
        }
    }
    EXPECT_EQ(html.find("<script"), std::string::npos);
    EXPECT_EQ(html.find("url("), std::string::npos);
    EXPECT_EQ(html.find("@import"), std::string::npos);
    const bool forbids = std::any_of(tags.begin(), tags.end(), [](const Tag& tag) {
        return tag.value("http-equiv") == "Content-Security-Policy" &&
               tag.value("content").starts_with("default-src 'none';");
    });
    EXPECT_TRUE(forbids) << "no policy that forbids loading";
}

void expectReadableWithoutEyes(const std::vector<Tag>& tags) {
    ASSERT_FALSE(tags.empty());
    std::map<std::string, std::size_t> count;
    char level = '0';
    for (const Tag& tag : tags) {
        ++count[tag.name];
        if (tag.name.size() == 2 && tag.name[0] == 'h' && tag.name[1] >= '1' && tag.name[1] <= '6') {
            EXPECT_LE(tag.name[1], level + 1) << "a heading leaves out a level";
            level = tag.name[1];
        }
        EXPECT_TRUE(tag.name != "th" || tag.attributes.contains("scope")) << "a header cell of nothing";
    }
    EXPECT_EQ(count["h1"], 1U);
    EXPECT_EQ(count["caption"], count["table"]);
    EXPECT_EQ(tags.front().name, "html");
    EXPECT_EQ(tags.front().value("lang"), "pt-BR");
}

void expectUtf8(const std::string& html) {
    EXPECT_TRUE(text::isUtf8(html));
    EXPECT_NE(html.find("ção"), std::string::npos);
}

// --- help.html

/// The page of the shipped catalog, rendered as the Help menu does.
class HelpPage : public testing::Test {
protected:
    HelpPage()
        : rendered(biblioteca::transformFile(catalogFile, stylesheetFile, folder.path() / "help.html"))
        , html(folder.read("help.html"))
        , tags(startTags(html)) {
        catalog.load(catalogFile);
    }

    /// The page of another catalog.
    std::string pageOf(std::string_view xml) const {
        const auto file = folder.write("outro.xml", xml);
        EXPECT_TRUE(biblioteca::transformFile(file, stylesheetFile, folder.path() / "outro.html"));
        return folder.read("outro.html");
    }

    /// Calls `onSection` with each section and its anchor, `onField` with each field and its own.
    template<class OnSection, class OnField>
    void walk(const XmlNode& parent, const std::string& anchor, OnSection onSection, OnField onField) const {
        for (const XmlNode& child : parent.childElements()) {
            if (child.name() == "SECAO") {
                const std::string section = anchor + "/" + child.getNamedItem("tag");
                onSection(child, section);
                walk(child, section, onSection, onField);
            } else if (child.name() == "CAMPO") {
                onField(child, anchor + "@" + child.getNamedItem("tag"));
            }
        }
    }

    TemporaryFolder folder;
    GlobalLogger global{startLogger(folder, clsLogger::typeTXT, library::level::all)};
    XmlDocument catalog;
    bool rendered;
    std::string html;
    std::vector<Tag> tags;
};

TEST_F(HelpPage, IsMadeFromTheCatalogAsUtf8Text) {
    EXPECT_TRUE(rendered);
    EXPECT_TRUE(html.starts_with("<!DOCTYPE html")) << html.substr(0, 80);
    EXPECT_NE(html.find("charset=UTF-8"), std::string::npos);
    expectUtf8(html);
}

TEST_F(HelpPage, EveryLayoutSectionAndFieldHasItsAnchor) {
    std::set<std::string> ids;
    for (const Tag& tag : tags) {
        ids.insert(tag.value("id"));
    }
    std::size_t fields = 0;
    const auto hasAnchor = [&](const XmlNode&, const std::string& anchor) {
        EXPECT_TRUE(ids.contains(anchor)) << anchor;
    };
    const auto layouts = catalog.selectNodes("//BOLETO");
    ASSERT_FALSE(layouts.empty());
    for (const XmlNode& layout : layouts) {
        const std::string anchor = "layout/" + layout.getNamedItem("tag");
        hasAnchor(layout, anchor);
        walk(layout, anchor, hasAnchor, [&](const XmlNode& field, const std::string& own) {
            hasAnchor(field, own);
            ++fields;
        });
    }
    EXPECT_EQ(fields, catalog.selectNodes("//CAMPO").size());
}

TEST_F(HelpPage, IndexTellsEveryLayoutWithItsVersion) {
    const std::string index = partOf(html, "indice", "</section>");
    for (const XmlNode& layout : catalog.selectNodes("//BOLETO")) {
        const std::string row = "<a href=\"#layout/" + layout.getNamedItem("tag") + "\">" +
                                escaped(layout.getNamedItem("nome")) + "</a></th><td>" +
                                layout.getNamedItem("versao") + "</td>";
        EXPECT_NE(index.find(row), std::string::npos) << row;
    }
}

TEST_F(HelpPage, EveryFieldTellsWhatTheCatalogSaysOfIt) {
    const auto nothing = [](const XmlNode&, const std::string&) {};
    for (const XmlNode& layout : catalog.selectNodes("//BOLETO")) {
        std::size_t from = 0; // rows stand in the order of the catalog
        walk(layout, "layout/" + layout.getNamedItem("tag"), nothing,
             [&](const XmlNode& field, const std::string& anchor) {
                 const std::size_t start = html.find("<tr id=\"" + anchor + "\"", from);
                 ASSERT_NE(start, std::string::npos) << anchor;
                 from = start;
                 const std::string row = html.substr(start, html.find("</tr>", start) - start);
                 const XmlNode dado = field.child("DADO");
                 const XmlNode coluna = field.child("COLUNA");
                 const auto tells = [&](const std::string& what) {
                     EXPECT_NE(row.find(what), std::string::npos) << anchor << ": " << what << "\n" << row;
                 };
                 tells(">" + escaped(coluna.getNamedItem("titulo")) + "<");
                 tells(">" + escaped(field.child("OBSERVACAO").text()) + "<");
                 tells("<td class=\"n\">" + dado.getNamedItem("tamanho") + "</td>");
                 tells(dado.getNamedItem("mandatorio") == "S" ? ">Sim<" : ">Não<");
                 tells(escaped(dado.getNamedItem("default")));
                 if (!coluna.getNamedItem("tabela").empty()) {
                     tells("href=\"#tabela/" + coluna.getNamedItem("tabela") + "\"");
                 }
             });
    }
}

TEST_F(HelpPage, EveryCodeOfEveryTableStandsInTheAppendix) {
    const auto tables = catalog.selectNodes("//configuracao/TABELAS/TABELA");
    ASSERT_FALSE(tables.empty());
    for (const XmlNode& table : tables) {
        const std::string part = partOf(html, "tabela/" + table.getNamedItem("id"), "</section>");
        for (const XmlNode& entry : table.childElements()) {
            const std::string row = "<code>" + escaped(entry.getNamedItem("valor")) + "</code></th><td>" +
                                    escaped(entry.getNamedItem("descricao")) + "</td>";
            EXPECT_NE(part.find(row), std::string::npos) << table.getNamedItem("id") << ": " << row;
        }
    }
}

TEST_F(HelpPage, EveryLinkInsideHasItsTarget) {
    expectLinksHaveTargets(tags);
}

TEST_F(HelpPage, LoadsNothingAndRunsNothing) {
    expectNothingIsLoadedOrRun(html, tags);
}

TEST_F(HelpPage, OnlySiteAndMailLeadOut) {
    const std::string site = catalog.selectSingleNode("/*/app/site/link").text();
    const std::string mail = "mailto:" + catalog.selectSingleNode("/*/app/email/link").text();
    std::set<std::string> outside;
    for (const Tag& tag : tags) {
        if (tag.attributes.contains("href") && !tag.value("href").starts_with("#")) {
            outside.insert(tag.value("href"));
        }
    }
    EXPECT_EQ(outside, (std::set<std::string>{site, mail}));
}

TEST_F(HelpPage, HeadingsTablesAndLanguageAreMarked) {
    expectReadableWithoutEyes(tags);
}

TEST_F(HelpPage, LongPartsAreDrawnWhenTheyComeIntoView) {
    EXPECT_NE(html.find(".campos { content-visibility: auto; }"), std::string::npos);
    EXPECT_EQ(occurrences(html, "<div class=\"campos\" style=\"contain-intrinsic-size: auto "),
              catalog.selectNodes("//SECAO[CAMPO]").size());
}

TEST_F(HelpPage, TextsOfACatalogAreNeverMarkup) {
    const std::string page =
        pageOf("<r><app><titulo>&lt;script&gt;alert(1)&lt;/script&gt;</titulo><versao>1</versao>"
               "<site><caption>s</caption><link>javascript:alert(2)</link></site>"
               "<email><caption>e</caption><link>x</link></email><descricao>&lt;/style&gt;</descricao></app>"
               "<configuracao><TABELAS><TABELA id='T'><ENTRADA valor='&lt;b&gt;' "
               "descricao='\"&amp;\"'/></TABELA></TABELAS>"
               "</configuracao><BOLETO tag='l' nome='&lt;img src=x&gt;' versao='' validador='' formula='' "
               "tramador=' sim '"
               " nomeGrupo='' tagGrupo=''><SECAO tag='s' nome='S' ocorrencia='*' secaoMestre='NAO' "
               "nomeGrupo='' tagGrupo=''>"
               "<CAMPO tag='c' campoChave='NAO'><OBSERVACAO>&lt;a href='http://x'&gt;</OBSERVACAO><DADO "
               "tipo='TEXTO' tamanho='1'"
               " mandatorio='SIM' validacao='' default=''/><COLUNA titulo='\"&gt;' largura='1' "
               "alinhamento='' maskInput=''"
               " maskDisplay='' maskOutput='' tabela='t'/></CAMPO></SECAO></BOLETO></r>");
    const std::vector<Tag> all = startTags(page);
    expectNothingIsLoadedOrRun(page, all);
    expectLinksHaveTargets(all);
    for (const Tag& tag : all) {
        EXPECT_TRUE(tag.value("href").empty() || tag.value("href").starts_with("#")) << tag.value("href");
    }
    const std::string row = partOf(page, "layout/l/s@c", "</tr>");
    EXPECT_NE(row.find("&lt;a href='http://x'&gt;"), std::string::npos) << row;
    EXPECT_NE(row.find("<a href=\"#tabela/T\">T</a>"), std::string::npos)
        << "names of tables disregard case: " << row;
    EXPECT_NE(row.find(">Não<"), std::string::npos) << "only S makes a field mandatory: " << row;
}

TEST_F(HelpPage, CatalogWithNothingInItGivesAPage) {
    const std::string page = pageOf("<vazio/>");
    EXPECT_NE(page.find("O catálogo não tem layouts."), std::string::npos);
    EXPECT_NE(page.find("O catálogo não tem tabelas."), std::string::npos);
}

TEST_F(HelpPage, ValueIsShownAsItIsWritten) {
    struct Row {
        const char* tipo;
        const char* tamanho;
        const char* mascara;
        const char* forma;
    };
    for (const Row& row : {Row{"DATA", "8", "YYYYMMDD", "<code>20240628</code>"},
                           {"DECIMAL", "17", "0.00", "<code>1234.56</code>"},
                           {"DECIMAL", "18", "0.00000000", "<code>1234.56789012</code>"},
                           {"DECIMAL", "5", "0.0000", "<code>1.5678</code>"},
                           {"INTEIRO", "2", "0", "<code>12</code>"},
                           {"BOOLEAN", "1", "", "<code>S</code> ou <code>N</code>"},
                           {"TEXTO", "9", "@@-@", "<code>@@-@</code>"},
                           {"TEXTO", "9", "", "Como digitado"}}) {
        const std::string page =
            pageOf("<r><BOLETO tag='l'><SECAO tag='s'><CAMPO tag='c'><OBSERVACAO>o</OBSERVACAO><DADO tipo='" +
                   std::string(row.tipo) + "' tamanho='" + row.tamanho + "'/><COLUNA maskOutput='" +
                   row.mascara + "'/></CAMPO></SECAO></BOLETO></r>");
        const std::string line = partOf(page, "layout/l/s@c", "</tr>");
        EXPECT_NE(line.find(row.forma), std::string::npos) << row.forma << "\n" << line;
    }
}

// --- help2.html

class DecimalPointPage : public testing::Test {
protected:
    std::string html = files::readAll(dataFolder / "XSD" / "help2.html");
    std::vector<Tag> tags = startTags(html);
};

TEST_F(DecimalPointPage, IsUtf8AndSaysSo) {
    EXPECT_TRUE(html.starts_with("<!DOCTYPE html"));
    EXPECT_NE(html.find("<meta charset=\"UTF-8\">"), std::string::npos);
    expectUtf8(html);
}

TEST_F(DecimalPointPage, LoadsNothingAndLeadsNowhereElse) {
    expectNothingIsLoadedOrRun(html, tags);
    expectLinksHaveTargets(tags);
    for (const Tag& tag : tags) {
        EXPECT_TRUE(tag.value("href").empty() || tag.value("href").starts_with("#")) << tag.value("href");
    }
}

TEST_F(DecimalPointPage, HeadingsTablesAndLanguageAreMarked) {
    expectReadableWithoutEyes(tags);
}

TEST_F(DecimalPointPage, TellsEveryDesktopAndTheWayWithoutTheSystem) {
    for (const char* anchor : {"gnome", "plasma", "xfce", "terminal", "regionais", "programa"}) {
        EXPECT_NE(html.find("id=\"" + std::string(anchor) + "\""), std::string::npos) << anchor;
    }
    for (const char* text : {"LC_NUMERIC=C.UTF-8 ./tramador-validador", "LC_NUMERIC=en_US.UTF-8",
                             "Erro na configuração das Opções Regionais"}) {
        EXPECT_NE(html.find(text), std::string::npos) << text;
    }
}

} // namespace
} // namespace tv
