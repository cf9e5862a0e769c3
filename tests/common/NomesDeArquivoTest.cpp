#include "common/NomesDeArquivo.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

using namespace tv;

namespace {

TEST(FileTitle, IsRefusedForEachOfTheNineForbiddenCharacters) {
    for (const char proibido : std::string("|><\"?*:/\\")) {
        EXPECT_FALSE(nomes::tituloValido(std::string("fundo") + proibido + "1.xml")) << proibido;
        EXPECT_FALSE(nomes::tituloValido(std::string(1, proibido))) << proibido;
    }
}

TEST(FileTitle, IsTakenWithAnyOtherCharacter) {
    for (const char* titulo :
         {"", "fundo.xml", "Posição de março (1) [v2] {a}; b, c=d & e + f % g # h @ i ! j ~ k ` l '.xml"}) {
        EXPECT_TRUE(nomes::tituloValido(titulo)) << titulo;
    }
}

TEST(ProposedName, EndsInXmlUnlessItHoldsTheExtensionAnywhere) {
    const std::tuple<const char*, const char*> nomesDados[] = {
        {"FUNDO.XML", "FUNDO.XML"},         {"fundo", "fundo.xml"},
        {"fundo.xml", "fundo.xml"},         {"fundo.XmL", "fundo.XmL"},
        {"fundo.xml.bkp", "fundo.xml.bkp"}, {"fundo.txt", "fundo.txt.xml"},
        {"fundoxml", "fundoxml.xml"},       {"", ".xml"},
        {"Posição", "Posição.xml"},
    };
    for (const auto& [dado, proposto] : nomesDados) {
        EXPECT_EQ(nomes::comExtensaoXml(dado), proposto) << dado;
    }
}

} // namespace
