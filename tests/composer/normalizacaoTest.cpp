#include "composer/normalizacao.h"

#include "../platform/Throws.h"
#include "platform/Error.h"
#include "platform/XmlDocument.h"

#include <gtest/gtest.h>

namespace tv::test {
namespace {

using normalizacao::normalizaParaArquivo;
using normalizacao::normalizaParaGrid;

constexpr const char* camposDoCompromisso =
    "<dtretorno>1</dtretorno><puretorno>2</puretorno><indexadorcomp>3</indexadorcomp>"
    "<perindexcomp>4</perindexcomp><txoperacao>5</txoperacao><classecomp>6</classecomp>";
constexpr const char* camposDoAluguel = "<dtvencalug>1</dtvencalug><txalug>2</txalug>"
                                        "<indexadoralug>3</indexadoralug><percalug>4</percalug>";
constexpr const char* camposDoAluguelMovimento =
    "<cnpjaluguel>1</cnpjaluguel><txaluguel>2</txaluguel><dtvencaluguel>3</dtvencaluguel>";

/// One conversion of one row: how it stands in the grid and in the file, with the group and without.
struct Caso {
    std::string nome;
    std::string tag;
    std::string linha;
    std::string flag;
    std::string grupo;
    std::string campos;
    bool antesDaClasse;
};

std::string documento(const Caso& caso, const std::string& dentro) {
    return "<" + caso.tag + "><fundo><" + caso.linha + ">" + dentro + "</" + caso.linha + "></fundo></" +
           caso.tag + ">";
}

/// The fields of a row's other conversion, with a flag that says no: a layout runs all of its conversions.
std::string outroGrupo(const Caso& caso) {
    if (caso.grupo == "aluguel" && caso.linha != "ativosrv") {
        return "<poscompromissada>N</poscompromissada>" + std::string(camposDoCompromisso);
    }
    if (caso.grupo == "compromisso" && caso.tag == "movimento_2_00") {
        return "<tipoaluguel>N</tipoaluguel>" + std::string(camposDoAluguelMovimento);
    }
    if (caso.grupo == "compromisso" && caso.tag != "arquivoposicao_3_00") {
        return "<tipoaluguel>N</tipoaluguel>" + std::string(camposDoAluguel);
    }
    return "";
}

class Conversao : public testing::TestWithParam<Caso> {
protected:
    std::string naGrade(const std::string& flag) const {
        const Caso& caso = GetParam();
        return documento(caso, "<codigo>x</codigo><classeoperacao>C</classeoperacao>" + caso.campos +
                                   outroGrupo(caso) + "<" + caso.flag + ">" + flag + "</" + caso.flag + ">");
    }
    std::string noArquivo(bool comGrupo) const {
        const Caso& caso = GetParam();
        const std::string grupo =
            comGrupo ? "<" + caso.grupo + ">" + caso.campos + "</" + caso.grupo + ">" : "";
        return documento(caso, "<codigo>x</codigo>" + (caso.antesDaClasse ? grupo : "") +
                                   "<classeoperacao>C</classeoperacao>" + (caso.antesDaClasse ? "" : grupo));
    }
};

TEST_P(Conversao, PutsTheGroupIntoTheFileWhereTheFlagIsS) {
    for (const std::string flag : {"S", "N"}) {
        XmlDocument dom;
        ASSERT_TRUE(dom.loadXML(naGrade(flag)));
        normalizaParaArquivo(dom, GetParam().tag);
        EXPECT_EQ(dom.documentElement().outerXml(), noArquivo(flag == "S"));
    }
}

TEST_P(Conversao, ReadsTheGroupBackAsFieldsAndAFlag) {
    const Caso& caso = GetParam();
    XmlDocument dom;
    ASSERT_TRUE(dom.loadXML(noArquivo(true)));
    normalizaParaGrid(dom, caso.tag);
    const XmlNode linha = dom.selectSingleNode("//" + caso.linha);
    EXPECT_EQ(linha.child(caso.flag).text(), "S");
    XmlDocument campos;
    ASSERT_TRUE(campos.loadXML("<r>" + caso.campos + "</r>"));
    for (const XmlNode& campo : campos.documentElement().childElements()) {
        ASSERT_TRUE(linha.child(campo.baseName())) << campo.baseName();
        EXPECT_EQ(linha.child(campo.baseName()).text(), campo.text());
    }
    if (caso.flag != caso.grupo) {
        EXPECT_FALSE(linha.child(caso.grupo));
    }
}

TEST_P(Conversao, ReadsARowWithoutTheGroupAsNo) {
    const Caso& caso = GetParam();
    XmlDocument dom;
    ASSERT_TRUE(dom.loadXML(noArquivo(false)));
    normalizaParaGrid(dom, caso.tag);
    const XmlNode linha = dom.selectSingleNode("//" + caso.linha);
    EXPECT_EQ(linha.child(caso.flag).text(), "N");
    EXPECT_EQ(linha.selectNodes(caso.flag).size(), 1U);
    EXPECT_FALSE(linha.child(caso.campos.substr(1, caso.campos.find('>') - 1)));
}

TEST_P(Conversao, FailsForAGroupThatLacksAField) {
    const Caso& caso = GetParam();
    std::string xml = noArquivo(true);
    const std::string primeiro = caso.campos.substr(0, caso.campos.find("</"));
    const std::size_t onde = xml.find(primeiro);
    xml.erase(onde, caso.campos.find('>', caso.campos.find("</")) + 1);
    XmlDocument dom;
    ASSERT_TRUE(dom.loadXML(xml)) << xml;
    EXPECT_EQ(errorOf([&] { normalizaParaGrid(dom, caso.tag); }), errc::objectNotSet) << xml;
}

std::vector<Caso> casos() {
    std::vector<Caso> todos;
    for (const std::string tag : {"arquivoposicao_3_00", "arquivoposicao_4_00", "arquivoposicao_4_01"}) {
        for (const std::string linha : {"titpublico", "titprivado", "debenture"}) {
            todos.push_back({"", tag, linha, "poscompromissada", "compromisso", camposDoCompromisso, true});
            if (tag != "arquivoposicao_3_00") {
                todos.push_back({"", tag, linha, "tipoaluguel", "aluguel", camposDoAluguel, false});
            }
        }
    }
    const std::string movimento = "movimento_2_00";
    for (const std::string linha : {"ativosrf", "ativosrv"}) {
        todos.push_back({"", movimento, linha, "tipoaluguel", "aluguel", camposDoAluguelMovimento, false});
    }
    todos.push_back(
        {"", movimento, "ativosrf", "poscompromissada", "compromisso", camposDoCompromisso, true});
    todos.push_back({"", movimento, "opcoesflx", "barreira", "barreira",
                     "<tpbarreira>1</tpbarreira><limitebarreira>2</limitebarreira>", false});
    todos.push_back({"", movimento, "swap", "premio", "premio",
                     "<lpremio>1</lpremio><arrependimento>2</arrependimento>", false});
    for (Caso& caso : todos) {
        caso.nome = caso.tag + "_" + caso.linha + "_" + caso.grupo;
    }
    return todos;
}

INSTANTIATE_TEST_SUITE_P(Todas, Conversao, testing::ValuesIn(casos()),
                         [](const auto& um) { return um.param.nome; });

std::string umTitulo(const std::string& flag) {
    return "<r><titpublico><classeoperacao>C</classeoperacao><poscompromissada>" + flag +
           "</poscompromissada>" + camposDoCompromisso + "</titpublico></r>";
}

TEST(Normalizacao, OnlyTheExactSPutsTheGroupIntoTheFile) {
    for (const std::string flag : {"N", "", "s", "SIM", " S"}) {
        XmlDocument dom;
        ASSERT_TRUE(dom.loadXML(umTitulo(flag)));
        normalizaParaArquivo(dom, "arquivoposicao_3_00");
        EXPECT_EQ(dom.documentElement().outerXml(),
                  "<r><titpublico><classeoperacao>C</classeoperacao></titpublico></r>")
            << flag;
    }
}

TEST(Normalizacao, VersionThreeKeepsTheLoanAsAPlainField) {
    const std::string aluguel = "<tipoaluguel>F</tipoaluguel><dtvencalug>20240101</dtvencalug>";
    XmlDocument dom;
    ASSERT_TRUE(
        dom.loadXML("<r><titpublico><classeoperacao>C</classeoperacao>" + aluguel + "</titpublico></r>"));
    normalizaParaGrid(dom, "arquivoposicao_3_00");
    EXPECT_EQ(dom.documentElement().outerXml(),
              "<r><titpublico><classeoperacao>C</classeoperacao>" + aluguel +
                  "<poscompromissada>N</poscompromissada></titpublico></r>");
}

TEST(Normalizacao, LeavesEveryOtherLayoutAsItIs) {
    const std::string xml = "<r><titpublico><compromisso><dtretorno>1</dtretorno></compromisso></titpublico>"
                            "<swap><premio></premio></swap><ativosrf></ativosrf></r>";
    for (const char* tag : {"posicao_passivo_analitico_v100", "ArquivoPosicao_2_01", "movimento_1_00",
                            "ARQUIVOPOSICAO_3_00", ""}) {
        XmlDocument dom;
        ASSERT_TRUE(dom.loadXML(xml));
        normalizaParaArquivo(dom, tag);
        normalizaParaGrid(dom, tag);
        EXPECT_EQ(dom.documentElement().outerXml(), xml) << tag;
    }
}

TEST(Normalizacao, ReachesRowsAtEveryDepth) {
    XmlDocument dom;
    ASSERT_TRUE(dom.loadXML("<r><swap/><a><b><swap/></b></a></r>"));
    normalizaParaGrid(dom, "movimento_2_00");
    EXPECT_EQ(dom.documentElement().outerXml(),
              "<r><swap><premio>N</premio></swap><a><b><swap><premio>N</premio></swap></b></a></r>");
}

struct Faltando {
    std::string nome;
    std::string dentro;
};

TEST(Normalizacao, FailsToWriteARowThatLacksWhatItNeeds) {
    const std::vector<Faltando> rows = {
        {"flag", "<classeoperacao/>" + std::string(camposDoCompromisso)},
        {"campo", "<poscompromissada>N</poscompromissada><dtretorno/>"},
        {"lugar", "<poscompromissada>S</poscompromissada>" + std::string(camposDoCompromisso)},
    };
    for (const Faltando& row : rows) {
        XmlDocument dom;
        ASSERT_TRUE(dom.loadXML("<r><titpublico>" + row.dentro + "</titpublico></r>"));
        EXPECT_EQ(errorOf([&] { normalizaParaArquivo(dom, "arquivoposicao_3_00"); }), errc::objectNotSet)
            << row.nome;
    }
}

} // namespace
} // namespace tv::test
