// Blocks of cells that add rows, and chords while a cell is being typed.
#include "composer/windows/BancadaTramador.h"
#include "platform/format.h"
#include "windows/TempoDeProcessador.h"

#include <QClipboard>
#include <QRegularExpression>

#include <algorithm>

using namespace tv;
using namespace tv::test;

namespace {

class frmTramadorBlocos : public BancadaTramador {
protected:
    /// One fund, and one of its sections with this many ended rows.
    void abreNaSecao(const char* secaoDoFundo, int linhas) {
        abre("ArquivoPosicao_2_01");
        incluiFundo(cnpj);
        clicaNo({"Boleto", "94.000.001/0001-80", secaoDoFundo});
        for (int i = 0; i < linhas; ++i) {
            clica("btnAdicionar");
            completa(i);
            QTest::keyClick(&grade(), Qt::Key_Return, Qt::ControlModifier);
        }
        estado().salvo = true;
    }
    /// A line with a good value for each field of the section.
    QString linhaBoa() const {
        QStringList celulas;
        for (const auto& campo : secao().secao->getCampos()) {
            celulas << paraQt(format::format(valorBom(*campo), campo->getColuna().getMaskOutput()));
        }
        return celulas.join(QLatin1Char('\t'));
    }
    void cola(const QString& texto) const {
        QApplication::clipboard()->setText(texto);
        grade().setFocus();
        QTest::keyClick(&grade(), Qt::Key_V, Qt::ControlModifier);
    }
    std::string primeiraColuna() const { return secao().secao->getCampos().Item(1)->getTag(); }
};

} // namespace

TEST_F(frmTramadorBlocos, BlockBelowTheLastRowAddsRows) {
    abreNaSecao("Caixa", 1);
    vaiPara(0, primeiraColuna());
    cola(linhaBoa() + q("\n") + linhaBoa() + q("\r\n") + linhaBoa() + q("\n"));
    ASSERT_EQ(modelo().rowCount(), 3);
    for (int linha = 1; linha < 3; ++linha) {
        EXPECT_EQ(texto(linha, "rowMaster"), "1");
        EXPECT_EQ(texto(linha, primeiraColuna()), texto(0, primeiraColuna()));
    }
    EXPECT_EQ(grade().linhaAtiva(), 0) << "the block's first cell stays current";
    EXPECT_FALSE(estado().salvo);
    EXPECT_EQ(documento().grade("ArquivoPosicao_2_01_caixa").dados->Clone()->RecordCount(), 3U);
}

TEST_F(frmTramadorBlocos, BlockFillsAnEmptyGrid) {
    abreNaSecao("Caixa", 0);
    ASSERT_EQ(modelo().rowCount(), 0);
    cola(linhaBoa() + q("\n") + linhaBoa());
    EXPECT_EQ(modelo().rowCount(), 2);
    EXPECT_EQ(grade().linhaAtiva(), 0);
    janela->desfaz();
    EXPECT_EQ(modelo().rowCount(), 0) << "one step for the block";
    janela->refaz();
    EXPECT_EQ(modelo().rowCount(), 2);
}

TEST_F(frmTramadorBlocos, FundsAreAddedWithTheirNodes) {
    abre("arquivoposicao_4_01");
    incluiFundo(cnpj);
    QApplication::clipboard()->setText(QString());
    grade().selectRow(0);
    QTest::keyClick(&grade(), Qt::Key_C, Qt::ControlModifier);
    const QString fundo = QApplication::clipboard()->text();
    vaiPara(0, primeiraColuna());
    cola(fundo + q("\n") + QString(fundo).replace(q("94.000.001/0001-80"), q("94.000.031/0001-96")));
    ASSERT_EQ(modelo().rowCount(), 2);
    EXPECT_EQ(texto(1, "rowID"), "2");
    const QTreeWidgetItem& grupo = *arvore().topLevelItem(0)->child(0);
    ASSERT_EQ(grupo.childCount(), 2);
    EXPECT_EQ(grupo.child(1)->text(0), q("94.000.031/0001-96"));
    janela->desfaz();
    EXPECT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(grupo.childCount(), 1) << "the fund goes with its row";
    janela->refaz();
    EXPECT_EQ(modelo().rowCount(), 2);
    EXPECT_EQ(grupo.childCount(), 2);
}

TEST_F(frmTramadorBlocos, SectionThatIsFullTakesNoMoreLines) {
    abreNaSecao("Despesas do mês", 0);
    Caixas caixas{q("OK")};
    cola(linhaBoa() + q("\n") + linhaBoa() + q("\n") + linhaBoa());
    ASSERT_TRUE(espera([&] { return !caixas.vistas().empty(); }));
    EXPECT_EQ(caixas.vistas()[0].texto, q("Número de ítens excedido!\n\nLinhas que não foram coladas: 2"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(modelo().rowCount(), 1);
}

TEST_F(frmTramadorBlocos, NoRowIsAddedBehindOneAtFault) {
    abreNaSecao("Caixa", 1);
    vaiPara(0, primeiraColuna());
    const QString ruim = QString(linhaBoa()).replace(QRegularExpression(q("[^\t]+")), QString());
    Caixas caixas{q("OK")};
    cola(linhaBoa() + q("\n") + ruim + q("\n") + linhaBoa() + q("\n") + linhaBoa());
    ASSERT_TRUE(espera([&] { return !caixas.vistas().empty(); }));
    EXPECT_TRUE(caixas.vistas()[0].texto.startsWith(q("Os valores dos seguintes campos são inválidos: \n\t")))
        << caixas.vistas()[0].texto.toStdString();
    EXPECT_TRUE(caixas.vistas()[0].texto.endsWith(q("\n\nLinhas que não foram coladas: 2")));
    EXPECT_EQ(modelo().rowCount(), 2);
    EXPECT_EQ(grade().linhaAtiva(), 1) << "where the fault is";
}

TEST_F(frmTramadorBlocos, FundsNodeTakesNoRows) {
    abreNaSecao("Caixa", 0);
    clicaNo({"Boleto", "94.000.001/0001-80"});
    vaiPara(0, primeiraColuna());
    Caixas caixas{q("OK")};
    const QString igual = paraQt(visivel(0, primeiraColuna()));
    cola(igual + q("\n") + igual);
    ASSERT_TRUE(espera([&] { return !caixas.vistas().empty(); }));
    EXPECT_EQ(caixas.vistas()[0].texto, q("Número de ítens excedido!\n\nLinhas que não foram coladas: 1"));
    EXPECT_EQ(modelo().rowCount(), 1);
}

TEST_F(frmTramadorBlocos, CutCopiesAndEmpties) {
    abreNaSecao("Caixa", 1);
    const std::string coluna = primeiraColuna();
    const std::string antes = visivel(0, coluna);
    vaiPara(0, coluna);
    QTest::keyClick(&grade(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), paraQt(antes));
    EXPECT_EQ(texto(0, coluna), "");
    QTest::keyClick(&grade(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(visivel(0, coluna), antes);
}

TEST_F(frmTramadorBlocos, ThousandLinesArePastedAtOnce) {
    abreNaSecao("Caixa", 0);
    QStringList linhas;
    for (int i = 0; i < 1000; ++i) {
        linhas << linhaBoa();
    }
    TempoDeProcessador tempo;
    cola(linhas.join(QLatin1Char('\n')));
    RecordProperty("milliseconds", static_cast<int>(tempo.decorrido()));
    EXPECT_EQ(modelo().rowCount(), 1000);
    EXPECT_LT(tempo.reinicia(), 1000 * folgaDaMedida);
    janela->desfaz();
    EXPECT_EQ(modelo().rowCount(), 0);
    janela->refaz();
    EXPECT_EQ(modelo().rowCount(), 1000);
    EXPECT_LT(tempo.decorrido(), 1000 * folgaDaMedida);
}

TEST_F(frmTramadorBlocos, ChordsActWhileACellIsTyped) {
    abreNaSecao("Caixa", 1);
    const auto& campos = secao().secao->getCampos();
    const auto decimal = std::find_if(campos.begin(), campos.end(), [](const auto& campo) {
        return campo->getDado().getTipo() == 5 && !campo->hasTabela();
    });
    ASSERT_NE(decimal, campos.end());
    vaiPara(0, (*decimal)->getTag());
    QTest::keyClick(&grade(), Qt::Key_4);
    ASSERT_NE(focoDaGrade(), &grade());
    QTest::keyClick(focoDaGrade(), Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(texto(0, (*decimal)->getTag()), "4");
    ASSERT_EQ(modelo().rowCount(), 2);
    EXPECT_EQ(grade().linhaAtiva(), 1);
    vaiPara(1, (*decimal)->getTag());
    QTest::keyClick(&grade(), Qt::Key_5);
    Caixas caixas{q("Sim")};
    QTest::keyClick(focoDaGrade(), Qt::Key_Minus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(modelo().rowCount(), 1);
}
