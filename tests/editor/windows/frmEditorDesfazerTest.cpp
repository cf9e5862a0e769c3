#include "BancadaEditor.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>
#include <QTimer>

#include <gmock/gmock.h>

#include <functional>
#include <random>

// Undoing, finding and replacing, going to a line.

namespace tv::test {
namespace {

using ::testing::ElementsAre;

class frmEditorDesfazer : public BancadaEditor {
protected:
    void empilha(const char16_t* texto, std::int32_t selStart) const {
        EstadoTexto estado;
        estado.Text = Texto(texto);
        estado.SelStart = selStart;
        estado.TextLen = static_cast<std::int32_t>(estado.Text.tamanho());
        janela->undoStack().push_back(estado);
    }
    /// Puts states on the stack in place of the recorded ones; the text shows the last of them.
    void prepara(std::initializer_list<std::pair<const char16_t*, int>> estados) const {
        janela->trapUndo = false;
        caixa().setPlainText(QString::fromUtf16((estados.end() - 1)->first));
        janela->trapUndo = true;
        janela->undoStack().clear();
        for (const auto& [texto, selStart] : estados) {
            empilha(texto, selStart);
        }
    }
    template<typename Controle>
    Controle& controle(const char* nome) const {
        return *janela->findChild<Controle*>(QString::fromLatin1(nome));
    }
};

// --- Undo on the stacks as given

TEST_F(frmEditorDesfazer, WithOneStateOnlyTheFocusComesBack) {
    abre("abc");
    grade().setFocus();
    janela->trapUndo = true;
    janela->Undo();
    EXPECT_EQ(texto(), "abc");
    EXPECT_EQ(janela->undoStack().size(), 1U);
    EXPECT_TRUE(janela->redoStack().empty());
    EXPECT_TRUE(caixa().hasFocus());
}

TEST_F(frmEditorDesfazer, WhileTrapUndoIsFalseNothingIsUndone) {
    abre("");
    prepara({{u"ab", 0}, {u"abc", 3}});
    janela->trapUndo = false;
    janela->Undo();
    EXPECT_EQ(texto(), "abc");
    EXPECT_EQ(janela->undoStack().size(), 2U);
    EXPECT_TRUE(janela->trapUndo); // as at the end of every Undo
    EXPECT_TRUE(caixa().hasFocus());
}

TEST_F(frmEditorDesfazer, TakesAwayWhatWasAdded) {
    abre("");
    prepara({{u"<a></a>", 0}, {u"<a>123</a>", 6}});
    janela->Undo();
    EXPECT_EQ(texto(), "<a></a>");
    EXPECT_EQ(caixa().SelStart(), 3);
    EXPECT_EQ(caixa().SelLength(), 0);
    ASSERT_EQ(janela->undoStack().size(), 1U);
    ASSERT_EQ(janela->redoStack().size(), 1U);
    EXPECT_EQ(janela->redoStack().back().Text, Texto(u"<a>123</a>"));
    EXPECT_TRUE(janela->trapUndo);
    EXPECT_FALSE(janela->salvo());
    EXPECT_TRUE(caixa().viewport()->updatesEnabled());
}

TEST_F(frmEditorDesfazer, BringsBackAndSelectsWhatWasTakenAway) {
    abre("");
    prepara({{u"<a>123</a>", 0}, {u"<a></a>", 3}});
    janela->Undo();
    EXPECT_EQ(texto(), "<a>123</a>");
    EXPECT_EQ(selecionado(), "123");
}

TEST_F(frmEditorDesfazer, StandsBehindASingleCharacterThatComesBack) {
    abre("");
    prepara({{u"a\nb", 0}, {u"ab", 1}});
    janela->Undo();
    EXPECT_EQ(texto(), "a\nb");
    EXPECT_EQ(caixa().SelStart(), 2);
    EXPECT_EQ(caixa().SelLength(), 0);
}

TEST_F(frmEditorDesfazer, StatesThatDoNotGoTogetherDoNoHarm) {
    abre("");
    prepara({{u"abcdef", 0}, {u"abc", 900}});
    janela->Undo();
    prepara({{u"", 0}, {u"abc", -7}});
    janela->Undo();
    prepara({{u"xyz", 0}, {u"abc", 2}});
    janela->Undo();
    EXPECT_EQ(texto(), "abc");
    EXPECT_TRUE(janela->trapUndo);
}

// --- what the keys do

TEST_F(frmEditorDesfazer, CtrlZTakesBackWordByWordAndCtrlYBringsThemBack) {
    abre("<a></a>");
    janela->PlaceCursor(1, 3);
    digita("um dois");
    EXPECT_EQ(texto(), "<a>um dois</a>");
    tecla(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texto(), "<a>um </a>");
    tecla(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texto(), "<a></a>");
    tecla(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texto(), "<a></a>");
    tecla(Qt::Key_Y, Qt::ControlModifier);
    tecla(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(texto(), "<a>um dois</a>");
    tecla(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(texto(), "<a>um dois</a>");
}

TEST_F(frmEditorDesfazer, AReplacementIsOneStepForTheUser) {
    abre("<a>123</a>");
    caixa().seleciona(3, 3);
    digita("9");
    EXPECT_EQ(texto(), "<a>9</a>");
    tecla(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texto(), "<a>123</a>");
    tecla(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(texto(), "<a>9</a>");
}

TEST_F(frmEditorDesfazer, TheWholeTextComesBack) {
    abre(documento());
    caixa().selectAll();
    tecla(Qt::Key_Delete);
    EXPECT_EQ(texto(), "");
    tecla(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texto(), documento());
    tecla(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(texto(), "");
}

TEST_F(frmEditorDesfazer, ASaveInAnotherFormCanBeUndone) {
    abre("<a  b='1'/>");
    caixa().moveCursor(QTextCursor::End);
    digita("\n");
    Caixas caixas{QStringLiteral("OK")};
    janela->saveBoleto();
    EXPECT_EQ(texto(), "<a b=\"1\"></a>\n");
    tecla(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texto(), "<a  b='1'/>\n");
    EXPECT_FALSE(janela->salvo());
}

TEST_F(frmEditorDesfazer, EveryStateComesBackAfterRandomKeys) {
    abre("<a>\n\t<b>1</b>\n</a>\n");
    caixa().setFocus();
    std::mt19937 sorte(5);
    const auto ate = [&](int limite) { return std::uniform_int_distribution<int>(0, limite)(sorte); };
    for (int passo = 0; passo < 400; ++passo) {
        switch (ate(7)) {
        case 0:
            caixa().seleciona(ate(caixa().tamanho()), ate(5));
            break;
        case 1:
            tecla(Qt::Key_Backspace);
            break;
        case 2:
            tecla(Qt::Key_Delete);
            break;
        case 3:
            tecla(Qt::Key_Return);
            break;
        case 4:
            caixa().insertPlainText(QStringLiteral("colado\nem duas \U0001F600 linhas"));
            break;
        default:
            QTest::keyClick(&caixa(), static_cast<char>('a' + ate(25)));
        }
        ASSERT_EQ(janela->undoStack().back().Text.inteiro(), caixa().textoInterno()) << passo;
    }
    const std::u16string fim = caixa().textoInterno();
    while (janela->undoStack().size() > 1) {
        tecla(Qt::Key_Z, Qt::ControlModifier);
        ASSERT_EQ(janela->undoStack().back().Text.inteiro(), caixa().textoInterno());
    }
    EXPECT_EQ(texto(), "<a>\n\t<b>1</b>\n</a>\n");
    while (!janela->redoStack().empty()) {
        tecla(Qt::Key_Y, Qt::ControlModifier);
        ASSERT_EQ(janela->undoStack().back().Text.inteiro(), caixa().textoInterno());
    }
    EXPECT_EQ(caixa().textoInterno(), fim);
}

TEST_F(frmEditorDesfazer, ShiftEnterIsALineEndLikeAnyOther) {
    abre("ab");
    janela->PlaceCursor(1, 1);
    tecla(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(caixa().document()->blockCount(), 2);
    EXPECT_EQ(texto(), "a\nb");
}

TEST_F(frmEditorDesfazer, ACopyKeepsBlanksThatDoNotBreak) {
    abre("<a>\u00A0</a>\n<b/>");
    caixa().selectAll();
    caixa().copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "<a>\u00A0</a>\n<b/>");
}

TEST_F(frmEditorDesfazer, TheContextMenuOffersWhatCanBeDone) {
    abre("abc");
    std::vector<std::string> ligadas;
    const auto olha = [&] {
        ligadas.clear();
        QTimer::singleShot(20, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (const QAction* acao : menu->actions()) {
                if (!acao->isSeparator() && acao->isEnabled() &&
                    acao->objectName().startsWith(QStringLiteral("menu"))) {
                    ligadas.push_back(acao->objectName().toStdString());
                }
            }
            menu->close();
        });
        QContextMenuEvent evento(QContextMenuEvent::Keyboard, QPoint(5, 5),
                                 caixa().mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(&caixa(), &evento);
    };
    QGuiApplication::clipboard()->clear();
    olha();
    EXPECT_THAT(ligadas, ElementsAre("menuSelecionarTudo"));
    digita("x");
    caixa().selectAll();
    caixa().copy();
    olha();
    EXPECT_THAT(ligadas, ElementsAre("menuDesfazer", "menuRecortar", "menuCopiar", "menuColar", "menuExcluir",
                                     "menuSelecionarTudo"));
}

// --- find and replace

TEST_F(frmEditorDesfazer, FindsForwardsAndBackwardsRoundTheText) {
    abre("um dois Um tres um");
    caixa().setFocus();
    tecla(Qt::Key_F, Qt::ControlModifier);
    auto& campo = controle<QLineEdit>("txtLocalizar");
    EXPECT_TRUE(campo.isVisible());
    EXPECT_FALSE(controle<QLineEdit>("txtSubstituir").isVisible());
    QTest::keyClicks(&campo, QStringLiteral("um"));
    std::vector<int> lugares;
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(&campo, Qt::Key_Return);
        lugares.push_back(caixa().SelStart());
    }
    QTest::keyClick(&campo, Qt::Key_Return, Qt::ShiftModifier);
    lugares.push_back(caixa().SelStart());
    EXPECT_THAT(lugares, ElementsAre(0, 8, 16, 0, 16));
    controle<QCheckBox>("chkMaiusculas").setChecked(true);
    QTest::keyClick(&campo, Qt::Key_Escape);
    EXPECT_FALSE(campo.isVisible());
    EXPECT_TRUE(caixa().hasFocus());
    tecla(Qt::Key_F3);
    EXPECT_EQ(caixa().SelStart(), 0);
    tecla(Qt::Key_F3);
    EXPECT_EQ(caixa().SelStart(), 16); // "Um" is another word now
    tecla(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(caixa().SelStart(), 0);
}

TEST_F(frmEditorDesfazer, TellsWhenThereIsNothingToFind) {
    abre("um dois");
    caixa().setFocus();
    tecla(Qt::Key_F3); // nothing to look for yet: the bar opens
    auto& campo = controle<QLineEdit>("txtLocalizar");
    ASSERT_TRUE(campo.isVisible());
    QTest::keyClicks(&campo, QStringLiteral("tres"));
    QTest::keyClick(&campo, Qt::Key_Return);
    EXPECT_EQ(controle<QLabel>("lblAviso").text(), QStringLiteral("Nenhuma ocorrência"));
    EXPECT_TRUE(controle<QLabel>("lblAviso").isVisible());
}

TEST_F(frmEditorDesfazer, ReplacesOneByOne) {
    abre("<v>1</v><v>1</v>");
    caixa().setFocus();
    tecla(Qt::Key_H, Qt::ControlModifier);
    QTest::keyClicks(&controle<QLineEdit>("txtLocalizar"), QStringLiteral("1"));
    QTest::keyClicks(&controle<QLineEdit>("txtSubstituir"), QStringLiteral("22"));
    auto& botao = controle<QToolButton>("btnSubstituir");
    QTest::mouseClick(&botao, Qt::LeftButton); // finds the first
    EXPECT_EQ(texto(), "<v>1</v><v>1</v>");
    QTest::mouseClick(&botao, Qt::LeftButton);
    EXPECT_EQ(texto(), "<v>22</v><v>1</v>");
    EXPECT_EQ(caixa().SelStart(), 12);
    EXPECT_FALSE(janela->salvo());
}

TEST_F(frmEditorDesfazer, ReplacesAllInOneStep) {
    abre("<v>a</v>\n<v>A</v>\n<v>b</v>\n");
    caixa().seleciona(3, 1);
    caixa().setFocus();
    tecla(Qt::Key_H, Qt::ControlModifier);
    EXPECT_EQ(controle<QLineEdit>("txtLocalizar").text(), QStringLiteral("a")); // the selection
    controle<QLineEdit>("txtSubstituir").setText(QStringLiteral("aa"));
    QTest::mouseClick(&controle<QToolButton>("btnSubstituirTudo"), Qt::LeftButton);
    EXPECT_EQ(texto(), "<v>aa</v>\n<v>aa</v>\n<v>b</v>\n");
    EXPECT_EQ(controle<QLabel>("lblAviso").text(), QStringLiteral("2 ocorrências substituídas"));
    tecla(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texto(), "<v>a</v>\n<v>A</v>\n<v>b</v>\n");
    tecla(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(texto(), "<v>aa</v>\n<v>aa</v>\n<v>b</v>\n");
}

TEST_F(frmEditorDesfazer, TheBarsFieldsAreReachedByTabAgainWhenItOpens) {
    abre("um");
    caixa().setFocus();
    tecla(Qt::Key_H, Qt::ControlModifier);
    EXPECT_NE(controle<QLineEdit>("txtSubstituir").focusPolicy() & Qt::TabFocus, 0);
}

TEST_F(frmEditorDesfazer, GoesToALine) {
    abre("um\ndois\ntres");
    caixa().setFocus();
    QTimer::singleShot(20, [] {
        auto* dialogo = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialogo, nullptr);
        EXPECT_EQ(dialogo->windowTitle(), QStringLiteral("Ir para a linha"));
        EXPECT_EQ(dialogo->intMaximum(), 3);
        dialogo->setIntValue(3);
        dialogo->accept();
    });
    tecla(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(painel(), "Linha: 3, Coluna: 0");
}

} // namespace
} // namespace tv::test
