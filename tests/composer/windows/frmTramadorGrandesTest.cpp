// Large documents through the window: nothing stalls. The bounds leave room for a machine in use.
#include "composer/windows/BancadaTramador.h"
#include "windows/TempoDeProcessador.h"

#include <QScrollBar>

#include <algorithm>
#include <numeric>
#include <vector>

using namespace tv;
using namespace tv::test;

namespace {

constexpr const char* fundoNaTela = "94.000.001/0001-80";
constexpr const char* outroNaTela = "94.000.031/0001-96";

class frmTramadorGrandes : public BancadaTramador {
protected:
    /// Rows of a section, shared out among the funds by turns, put in behind the grid's back.
    void enche(const char* chave, int linhas, int fundos) const {
        RecordSet& dados = *documento().grade(chave).dados;
        for (int i = 0; i < linhas; ++i) {
            dados.AddNew();
            dados.set("codbanco", std::string("001"));
            dados.set("tpconta", std::string("CC"));
            dados.set("saldo", i);
            dados.set("rowMaster", i % fundos + 1);
        }
        dados.Update();
    }
    std::size_t linhasDe(const char* chave) const {
        return documento().grade(chave).dados->Clone()->RecordCount();
    }
    /// What an action and all that it draws take.
    template<typename Acao>
    static qint64 milissegundosDe(Acao acao) {
        const TempoDeProcessador tempo;
        acao();
        QCoreApplication::processEvents();
        return static_cast<qint64>(tempo.decorrido() / folgaDaMedida);
    }
};

} // namespace

TEST_F(frmTramadorGrandes, SectionOfAHundredThousandRowsScrollsAndEdits) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    enche("ArquivoPosicao_2_01_caixa", 100000, 1);
    clicaNo({"Boleto", fundoNaTela, "Caixa"});
    ASSERT_EQ(modelo().rowCount(), 100000);
    vaiPara(0, "saldo");
    std::vector<qint64> tempos;
    for (int i = 0; i < 20; ++i) {
        tempos.push_back(milissegundosDe([&] { QTest::keyClick(&grade(), Qt::Key_PageDown); }));
    }
    QScrollBar& barraVertical = *grade().verticalScrollBar();
    for (const int quinto : {1, 2, 3, 4, 5, 0}) {
        tempos.push_back(
            milissegundosDe([&] { barraVertical.setValue(barraVertical.maximum() / 5 * quinto); }));
    }
    for (const int linha : {0, 50000, 99999}) {
        vaiPara(linha, "saldo");
        tempos.push_back(milissegundosDe([&] { digita("12.5", Qt::Key_Return); }));
        EXPECT_EQ(texto(linha, "saldo"), "12.5");
    }
    tempos.push_back(milissegundosDe([&] { clica("btnAdicionar"); }));
    EXPECT_EQ(grade().linhaAtiva(), 100000);
    completa(100000);
    tempos.push_back(
        milissegundosDe([&] { QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier); }));
    tempos.push_back(milissegundosDe([&] { QTest::keyClick(&grade(), Qt::Key_Z, Qt::ControlModifier); }));
    const qint64 pior = *std::max_element(tempos.begin(), tempos.end());
    RecordProperty("slowest", static_cast<int>(pior));
    EXPECT_LT(pior, 500) << "what a hand feels begins at a tenth of a second";
    EXPECT_LT(std::accumulate(tempos.begin(), tempos.end(), qint64{0}), 3000);
}

TEST_F(frmTramadorGrandes, CascadeTakesManyDetailsAndBringsThemBack) {
    abre("ArquivoPosicao_2_01");
    incluiFundo(cnpj);
    clicaNo({"Boleto"});
    incluiFundo(outroCnpj);
    enche("ArquivoPosicao_2_01_caixa", 20000, 2);
    clicaNo({"Boleto", outroNaTela, "Caixa"}); // its grid shows the rows that stay
    ASSERT_EQ(modelo().rowCount(), 10000);
    clicaNo({"Boleto"});
    grade().setLinhaAtiva(0);
    grade().selecionaLinha(0);
    Caixas caixas{q("Sim")};
    const qint64 apaga = milissegundosDe([&] { clica("btnRemover"); });
    RecordProperty("cascade", static_cast<int>(apaga));
    EXPECT_EQ(linhasDe("ArquivoPosicao_2_01_header"), 1U);
    EXPECT_EQ(linhasDe("ArquivoPosicao_2_01_caixa"), 10000U);
    EXPECT_LT(apaga, 5000);
    clicaNo({"Boleto", outroNaTela, "Caixa"});
    EXPECT_EQ(modelo().rowCount(), 10000);
    EXPECT_EQ(grade().captionVisivel(), q("Caixa - Fundo CNPJ:") + q(outroNaTela));
    EXPECT_EQ(modelo().coluna(modelo().indice("saldo")).titulo,
              paraQt(secao().secao->getCampos().Item("saldo")->getNome()))
        << "bound again, with its looks";
    QApplication::setActiveWindow(&mdiMain::instancia()); // as it was before the message box
    const qint64 volta = milissegundosDe([&] { QTest::keyClick(&grade(), Qt::Key_Z, Qt::ControlModifier); });
    RecordProperty("undo", static_cast<int>(volta));
    EXPECT_EQ(linhasDe("ArquivoPosicao_2_01_header"), 2U);
    EXPECT_EQ(linhasDe("ArquivoPosicao_2_01_caixa"), 20000U);
    EXPECT_LT(volta, 5000);
    clicaNo({"Boleto", fundoNaTela, "Caixa"});
    EXPECT_EQ(modelo().rowCount(), 10000);
    EXPECT_EQ(texto(1, "saldo"), "2") << "in their places";
}
