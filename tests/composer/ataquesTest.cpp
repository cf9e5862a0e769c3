// Documents that mean harm, opened in the composer: what is no row is passed over, what is text stays text.

#include "../platform/Attacks.h"
#include "../platform/Watchers.h"
#include "Amostras.h"
#include "composer/EscritorBoleto.h"
#include "composer/LeitorBoleto.h"
#include "platform/Error.h"

#include <gtest/gtest.h>

namespace tv::test {
namespace {

const std::string tag = "arquivoposicao_4_01";

class AtaquesAoTramador : public testing::Test {
protected:
    void abre(const std::string& xml) {
        documento.abrir(shippedCatalog().getBoletos().Item(tag));
        XmlDocument dom;
        ASSERT_TRUE(dom.loadXML(xml)) << dom.parseError();
        LeitorBoleto(documento).abre(dom);
    }
    std::size_t linhas() const {
        std::size_t todas = 0;
        for (const auto& grade : documento.grids()) {
            todas += grade->dados->Clone()->RecordCount();
        }
        return todas;
    }

    Documento documento;
};

std::string comNome(const std::string& nome) {
    return "<" + tag + "><fundo><header><cnpj>1</cnpj><nome>" + nome + "</nome></header></fundo></" + tag +
           ">";
}

TEST_F(AtaquesAoTramador, SectionsInSectionsAreNoRows) {
    const Cost cost;
    EXPECT_THROW(abre("<" + tag + ">" + attack::nested("fundo", 990) + "</" + tag + ">"), Error);
    abre("<" + tag + "><fundo>" + attack::nested("header", 990) + "</fundo></" + tag + ">");
    cost.expectBelow(6, 300);
}

TEST_F(AtaquesAoTramador, AHugeValueIsAValue) {
    const Cost cost;
    abre(comNome(std::string(50'000'000, 'x')));
    EXPECT_EQ(linhas(), 1U);
    cost.expectBelow(6, 1000);
}

TEST_F(AtaquesAoTramador, MarkupInAValueIsWrittenAsText) {
    const std::string markup = "&lt;/nome&gt;&lt;script&gt;]]&gt;&amp;e;&quot;";
    abre(comNome(markup));
    const XmlDocument escrito = montaDocumento(documento);
    const XmlNode nome = escrito.selectSingleNode("//header/nome");
    ASSERT_TRUE(nome);
    EXPECT_EQ(nome.text(), "</nome><script>]]>&e;\"");
    EXPECT_TRUE(escrito.selectNodes("//script").empty());
}

TEST_F(AtaquesAoTramador, ManyFundsAreReadInTime) {
    const Cost cost;
    abre("<" + tag + ">" + attack::repeated("<fundo><header><cnpj>1</cnpj></header></fundo>", 20'000) + "</" +
         tag + ">");
    EXPECT_EQ(linhas(), 20'000U);
    cost.expectBelow(10, 500);
}

} // namespace
} // namespace tv::test
