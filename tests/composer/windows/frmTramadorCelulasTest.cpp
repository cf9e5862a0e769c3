// Cells: how values are typed, chosen, copied, pasted, cleared, and how edits are taken back.
#include "composer/windows/BancadaTramador.h"

#include <QAbstractItemView>
#include <QClipboard>

using namespace tv;
using namespace tv::test;

namespace {

class frmTramadorCelulas : public BancadaTramador {
protected:
    /// One fund with its cash section and this many ended rows.
    void abreNaCaixa(int linhas) {
        abre("ArquivoPosicao_2_01");
        incluiFundo(cnpj);
        clicaNo({"Boleto", "94.000.001/0001-80", "Caixa"});
        for (int i = 0; i < linhas; ++i) {
            clica("btnAdicionar");
            completa(i);
            QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
        }
        vaiPara(0, secao().secao->getCampos().Item(1)->getTag());
    }
    /// Tag of the section's first field of a kind.
    std::string primeiro(int tipo, bool comTabela = false) const {
        for (const auto& campo : secao().secao->getCampos()) {
            if (campo->getDado().getTipo() == tipo && campo->hasTabela() == comTabela) {
                return campo->getTag();
            }
        }
        ADD_FAILURE() << "no such field: " << tipo;
        return {};
    }
    void seleciona(int linha, int coluna, int ateLinha, int ateColuna) const {
        grade().selectionModel()->select(
            QItemSelection(modelo().index(linha, coluna), modelo().index(ateLinha, ateColuna)),
            QItemSelectionModel::ClearAndSelect);
    }
};

} // namespace

TEST_F(frmTramadorCelulas, DateIsTypedThroughItsMask) {
    abre("arquivoposicao_4_01");
    clica("btnAdicionar");
    vaiPara(0, "dtposicao");
    digita("15012024", Qt::Key_Return);
    EXPECT_EQ(visivel(0, "dtposicao"), "15/01/2024");
    vaiPara(0, "dtposicao");
    Caixas caixas{q("OK")};
    digita("31022024", Qt::Key_Return);
    EXPECT_TRUE(espera([&] { return !caixas.vistas().empty(); }));
    EXPECT_EQ(caixas.vistas().at(0).texto, q("Data inválida!"));
    EXPECT_EQ(visivel(0, "dtposicao"), "15/01/2024");
}

TEST_F(frmTramadorCelulas, MaskTakesDigitsUpToItsLength) {
    abre("arquivoposicao_4_01");
    clica("btnAdicionar");
    vaiPara(0, "cnpj");
    digita("94a000.0010001809", Qt::Key_Tab);
    EXPECT_EQ(texto(0, "cnpj"), cnpj);
    EXPECT_EQ(visivel(0, "cnpj"), "94.000.001/0001-80");
    EXPECT_EQ(grade().currentIndex().column(), modelo().indice("cnpj") + 1) << "Tab leads on";
}

TEST_F(frmTramadorCelulas, NumberHasADecimalPoint) {
    abreNaCaixa(1);
    const std::string valor = primeiro(5);
    for (const auto& [digitado, guardado] : std::vector<std::pair<const char*, const char*>>{
             {"1234.5", "1234.5"}, {"-0.25", "-0.25"}, {"12,75", "12.75"}, {"7x8", "78"}}) {
        vaiPara(0, valor);
        digita(digitado, Qt::Key_Return);
        EXPECT_EQ(texto(0, valor), guardado) << digitado;
    }
}

TEST_F(frmTramadorCelulas, TextTakesNoMoreThanItsSize) {
    abre("arquivoposicao_4_01");
    clica("btnAdicionar");
    const auto& campo = *secao().secao->getCampos().Item("nome");
    const int tamanho = std::stoi(campo.getDado().getTamanho());
    vaiPara(0, "nome");
    digita(std::string(static_cast<std::size_t>(tamanho) + 3, 'a').c_str(), Qt::Key_Return);
    EXPECT_EQ(texto(0, "nome").size(), static_cast<std::size_t>(tamanho));
}

TEST_F(frmTramadorCelulas, ListShowsTheTablesTextsAndStoresTheCode) {
    abreNaCaixa(1);
    const std::string coluna = primeiro(129, true);
    const auto& tabela = *secao().secao->getCampos().Item(coluna)->getTabela();
    estado().salvo = true;
    vaiPara(0, coluna);
    QTest::keyClick(&grade(), Qt::Key_F2);
    ASSERT_TRUE(espera([this] { return lista() != nullptr && lista()->view()->isVisible(); }));
    ASSERT_EQ(static_cast<std::size_t>(lista()->count()), tabela.Count());
    EXPECT_EQ(lista()->itemText(1), paraQt(tabela.Item(2).valor));
    QTest::keyClick(lista()->view(), Qt::Key_Down);
    QTest::keyClick(lista()->view(), Qt::Key_Return);
    ASSERT_TRUE(espera([this] { return lista() == nullptr; }));
    EXPECT_EQ(texto(0, coluna), tabela.Item(2).key);
    EXPECT_EQ(visivel(0, coluna), tabela.Item(2).valor);
    EXPECT_FALSE(estado().salvo) << "the choice has ended the row";
}

TEST_F(frmTramadorCelulas, YesAndNoComeFromAList) {
    abre("arquivoposicao_4_01");
    incluiFundo(cnpj);
    for (const auto& outra : documento().grids()) {
        for (const auto& campo : outra->secao->getCampos()) {
            if (campo->getDado().getTipo() != 11 || outra->secaoTopo->getTag() != "fundo" ||
                outra->secao->isSecaoMestre()) {
                continue;
            }
            clicaNo({"Boleto", "Fundos", "94.000.001/0001-80", outra->secao->getNome().c_str()});
            clica("btnAdicionar");
            completa(0);
            vaiPara(0, campo->getTag());
            QTest::keyClick(&grade(), Qt::Key_F2);
            ASSERT_TRUE(espera([this] { return lista() != nullptr && lista()->view()->isVisible(); }));
            EXPECT_EQ(lista()->itemText(0), q("S"));
            EXPECT_EQ(lista()->itemText(1), q("N"));
            lista()->setCurrentIndex(0);
            QTest::keyClick(lista()->view(), Qt::Key_End);
            QTest::keyClick(lista()->view(), Qt::Key_Return);
            ASSERT_TRUE(espera([this] { return lista() == nullptr; }));
            EXPECT_EQ(modelo().valor(0, campo->getTag()), Value(false));
            EXPECT_EQ(visivel(0, campo->getTag()), "N");
            return;
        }
    }
    FAIL() << "the layout has no logical field";
}

TEST_F(frmTramadorCelulas, EscapeLeavesTheCellAsItWas) {
    abreNaCaixa(1);
    const std::string valor = primeiro(5);
    const std::string antes = texto(0, valor);
    vaiPara(0, valor);
    digita("99", Qt::Key_Escape);
    EXPECT_EQ(texto(0, valor), antes);
}

TEST_F(frmTramadorCelulas, EnterLeadsDownAndShiftEnterUp) {
    abreNaCaixa(2);
    const std::string valor = primeiro(5);
    vaiPara(0, valor);
    digita("5", Qt::Key_Return);
    EXPECT_EQ(grade().linhaAtiva(), 1);
    QTest::keyClick(&grade(), Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(grade().linhaAtiva(), 0);
    EXPECT_EQ(grade().currentIndex().column(), modelo().indice(valor));
}

TEST_F(frmTramadorCelulas, CtrlEnterInACellEndsItsRow) {
    abreNaCaixa(1);
    estado().salvo = true;
    vaiPara(0, primeiro(5));
    QTest::keyClick(&grade(), Qt::Key_4);
    QTest::keyClick(focoDaGrade(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(texto(0, primeiro(5)), "4");
    EXPECT_FALSE(estado().salvo);
    EXPECT_EQ(grade().linhaAtiva(), 0);
}

TEST_F(frmTramadorCelulas, DeleteEmptiesTheSelectedCells) {
    abreNaCaixa(2);
    const int coluna = modelo().indice(primeiro(5));
    vaiPara(0, primeiro(5));
    seleciona(0, coluna, 1, coluna);
    Caixas caixas{q("OK")}; // the row that was left lacks a field now
    QTest::keyClick(&grade(), Qt::Key_Delete);
    EXPECT_TRUE(espera([&] { return !caixas.vistas().empty(); }));
    EXPECT_EQ(texto(0, primeiro(5)), "");
    EXPECT_EQ(texto(1, primeiro(5)), "");
    EXPECT_EQ(modelo().rowCount(), 2);
}

TEST_F(frmTramadorCelulas, BlockGoesOutAndInAsText) {
    abreNaCaixa(3);
    const int coluna = modelo().indice(primeiro(5));
    preenche(0, primeiro(5), 1234.5);
    preenche(1, primeiro(5), 2.0);
    vaiPara(0, primeiro(5));
    seleciona(0, coluna, 1, coluna);
    QTest::keyClick(&grade(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), q("1,234.50\n2.00"));
    vaiPara(1, primeiro(5));
    QTest::keyClick(&grade(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(texto(1, primeiro(5)), "1234.5");
    EXPECT_EQ(texto(2, primeiro(5)), "2");
    EXPECT_EQ(modelo().rowCount(), 3);
}

TEST_F(frmTramadorCelulas, RowsThatCannotBePastedAreTold) {
    abreNaCaixa(2);
    const std::string valor = primeiro(5);
    const std::string nome = secao().secao->getCampos().Item(valor)->getNome();
    preenche(1, valor, 3.0);
    vaiPara(0, valor);
    QApplication::clipboard()->setText(q("8.5\nmuito"));
    Caixas caixas{q("OK")};
    QTest::keyClick(&grade(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(espera([&] { return !caixas.vistas().empty(); }));
    EXPECT_EQ(caixas.vistas().at(0).texto, q("Valor inválido!\n\tLinha 2: ") + paraQt(nome));
    EXPECT_EQ(texto(0, valor), "8.5");
    EXPECT_EQ(texto(1, valor), "3");
}

TEST_F(frmTramadorCelulas, PastedRowsGoThroughTheRules) {
    abreNaCaixa(2);
    vaiPara(0, primeiro(5));
    QApplication::clipboard()->setText(q("8.5\n\n"));
    estado().salvo = true;
    Caixas caixas{q("OK")};
    QTest::keyClick(&grade(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(espera([&] { return !caixas.vistas().empty(); }));
    EXPECT_TRUE(caixas.vistas().at(0).texto.startsWith(q("Os valores dos seguintes campos são inválidos: ")));
}

TEST_F(frmTramadorCelulas, EditsAreTakenBackAndMadeAgain) {
    abreNaCaixa(1);
    const std::string valor = primeiro(5);
    const std::string antes = texto(0, valor);
    vaiPara(0, valor);
    digita("20", Qt::Key_Return);
    vaiPara(0, valor);
    digita("30", Qt::Key_Return);
    QTest::keyClick(&grade(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texto(0, valor), "20");
    QTest::keyClick(&grade(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texto(0, valor), antes);
    QTest::keyClick(&grade(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(texto(0, valor), "20");
    clicaNo({"Boleto"});
    janela->refaz();
    EXPECT_EQ(grade().objectName(), q("ArquivoPosicao_2_01_caixa")) << "the edit's place comes back";
    EXPECT_EQ(texto(0, valor), "30");
}
