#include "editor/windows/EditorXML.h"

#include "editor/windows/JanelaComTexto.h"
#include "logging/LogFolder.h"
#include "platform/Clock.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace tv {
namespace {

using test::ativa;
using test::JanelaComTexto;
using test::OutraJanela;

const QColor fundo(Qt::white);
const QColor sombra(Qt::blue);
const QColor destaque(Qt::red);

/// What stands in the band of one line.
enum class Faixa { Vazia, Sombra, Destaque };

/// A text box beside a strip whose colours are told apart at sight.
struct DrawLinesTest : ::testing::Test {
    static constexpr int largura = 60;

    DrawLinesTest() {
        QPalette paleta;
        paleta.setColor(QPalette::Dark, sombra);
        paleta.setColor(QPalette::WindowText, destaque);
        picLines.setPalette(paleta);
        picLines.setBackColor(fundo);
        comAltura(10);
        caixa.resize(300, 200);
        caixa.setLineWrapMode(QPlainTextEdit::NoWrap);
        caixa.show();
    }

    int altura() const { return QFontMetrics(picLines.font()).height(); }
    void comAltura(int linhas, int maisPontos = 0) {
        picLines.resize(largura, linhas * altura() + maisPontos);
    }
    void comTexto(int linhas) {
        QStringList texto;
        for (int linha = 1; linha <= linhas; ++linha) {
            texto << QStringLiteral("linha %1").arg(linha);
        }
        caixa.setPlainText(texto.join(QLatin1Char('\n')));
    }
    int inicioDaLinha(int linha) const { return caixa.document()->findBlockByNumber(linha).position(); }
    void seleciona(int de, int ate) {
        QTextCursor cursor = caixa.textCursor();
        cursor.setPosition(de);
        cursor.setPosition(ate, QTextCursor::KeepAnchor);
        caixa.setTextCursor(cursor);
    }
    QImage desenho() {
        EditorXML::DrawLines(picLines, caixa);
        return picLines.superficie().toImage().convertToFormat(QImage::Format_RGB32);
    }
    /// The bands of the strip from its top, without the line at its right.
    std::vector<Faixa> faixas(const QImage& imagem) const {
        std::vector<Faixa> achadas;
        for (int topo = 0; topo + altura() <= imagem.height(); topo += altura()) {
            achadas.push_back(faixa(imagem.copy(0, topo, largura - 1, altura())));
        }
        return achadas;
    }
    static Faixa faixa(const QImage& imagem) {
        int vermelhos = 0;
        int azuis = 0;
        for (int y = 0; y < imagem.height(); ++y) {
            for (int x = 0; x < imagem.width(); ++x) {
                const QColor cor = imagem.pixelColor(x, y);
                vermelhos += cor.red() > cor.blue() ? 1 : 0;
                azuis += cor.blue() > cor.red() ? 1 : 0;
            }
        }
        EXPECT_TRUE(vermelhos == 0 || azuis == 0) << "a number in two colours";
        return vermelhos > 0 ? Faixa::Destaque : azuis > 0 ? Faixa::Sombra : Faixa::Vazia;
    }
    /// A strip with just this number in one band, to compare with.
    QImage numero(const QString& texto, const QColor& cor) const {
        QImage imagem(largura, altura(), QImage::Format_RGB32);
        imagem.fill(fundo);
        QPainter pincel(&imagem);
        pincel.setFont(picLines.font());
        pincel.setPen(cor);
        pincel.drawText(QRect(2, 0, largura - 4, altura()), Qt::AlignRight, texto);
        return imagem.copy(0, 0, largura - 1, altura());
    }
    QImage banda(const QImage& imagem, int qual) const {
        return imagem.copy(0, qual * altura(), largura - 1, altura());
    }

    QPlainTextEdit caixa;
    PicLines picLines;
};

using Faixas = std::vector<Faixa>;
constexpr Faixa vazia = Faixa::Vazia;
constexpr Faixa naSombra = Faixa::Sombra;
constexpr Faixa emDestaque = Faixa::Destaque;

TEST_F(DrawLinesTest, ATextOfOneLineDrawsTheNumber1Only) {
    comTexto(1);
    comAltura(4);
    const QImage imagem = desenho();
    EXPECT_EQ(faixas(imagem), (Faixas{emDestaque, vazia, vazia, vazia}));
    EXPECT_EQ(banda(imagem, 0), numero(QStringLiteral("1"), destaque));
}

TEST_F(DrawLinesTest, AnEmptyTextHasOneLine) {
    comAltura(2);
    EXPECT_EQ(faixas(desenho()), (Faixas{emDestaque, vazia}));
}

TEST_F(DrawLinesTest, AShortTextStopsAtItsLastLineAndLeavesTheRestEmpty) {
    comTexto(3);
    comAltura(6);
    const QImage imagem = desenho();
    EXPECT_EQ(faixas(imagem), (Faixas{emDestaque, naSombra, naSombra, vazia, vazia, vazia}));
    EXPECT_EQ(banda(imagem, 2), numero(QStringLiteral("3"), sombra));
}

TEST_F(DrawLinesTest, WithoutASelectionOnlyTheCaretsLineStandsOut) {
    comTexto(4);
    comAltura(4);
    for (int linha = 0; linha < 4; ++linha) {
        seleciona(inicioDaLinha(linha) + 2, inicioDaLinha(linha) + 2);
        Faixas esperadas(4, naSombra);
        esperadas[static_cast<std::size_t>(linha)] = emDestaque;
        EXPECT_EQ(faixas(desenho()), esperadas) << "caret in line " << linha;
    }
}

TEST_F(DrawLinesTest, TheSelectedLinesStandOut) {
    comTexto(6);
    comAltura(6);
    seleciona(inicioDaLinha(1) + 3, inicioDaLinha(3) + 2);
    EXPECT_EQ(faixas(desenho()), (Faixas{naSombra, emDestaque, emDestaque, emDestaque, naSombra, naSombra}));
}

TEST_F(DrawLinesTest, ASelectionUpToALinesStartEndsInTheLineBefore) {
    comTexto(4);
    comAltura(4);
    seleciona(inicioDaLinha(1), inicioDaLinha(2));
    EXPECT_EQ(faixas(desenho()), (Faixas{naSombra, emDestaque, naSombra, naSombra}));
}

TEST_F(DrawLinesTest, OneSelectedLineEndCountsForItsOwnLine) {
    comTexto(3);
    comAltura(3);
    seleciona(inicioDaLinha(1) - 1, inicioDaLinha(1));
    EXPECT_EQ(faixas(desenho()), (Faixas{emDestaque, naSombra, naSombra}));
}

TEST_F(DrawLinesTest, ASelectionMadeUpwardsIsTheSame) {
    comTexto(4);
    comAltura(4);
    seleciona(inicioDaLinha(2) + 2, inicioDaLinha(1));
    EXPECT_EQ(faixas(desenho()), (Faixas{naSombra, emDestaque, emDestaque, naSombra}));
}

TEST_F(DrawLinesTest, ASelectionFromAboveTheFirstVisibleLineStaysInTheShadowColour) {
    comTexto(200);
    comAltura(5);
    seleciona(inicioDaLinha(90), inicioDaLinha(102) + 3);
    caixa.verticalScrollBar()->setValue(100);
    EXPECT_EQ(faixas(desenho()), Faixas(5, naSombra));
}

TEST_F(DrawLinesTest, TheNumbersBeginAtTheFirstVisibleLine) {
    comTexto(200);
    comAltura(3);
    caixa.verticalScrollBar()->setValue(98);
    const QImage imagem = desenho();
    EXPECT_EQ(banda(imagem, 0), numero(QStringLiteral("99"), sombra));
    EXPECT_EQ(banda(imagem, 1), numero(QStringLiteral("100"), sombra));
    EXPECT_EQ(banda(imagem, 2), numero(QStringLiteral("101"), sombra));
}

TEST_F(DrawLinesTest, ALineThatDoesNotFitWhollyIsNotDrawn) {
    comTexto(10);
    comAltura(2, altura() - 1);
    const QImage imagem = desenho();
    EXPECT_EQ(faixas(imagem), (Faixas{emDestaque, naSombra}));
    EXPECT_EQ(faixa(imagem.copy(0, 2 * altura(), largura - 1, altura() - 1)), vazia);
}

TEST_F(DrawLinesTest, AStripLowerThanALineStillDrawsTheFirstNumber) {
    comTexto(3);
    picLines.resize(largura, altura() - 2);
    EXPECT_EQ(faixa(desenho().copy(0, 0, largura - 1, altura() - 2)), emDestaque);
}

TEST_F(DrawLinesTest, AStripWithoutASizeTakesNothing) {
    comTexto(3);
    picLines.resize(0, 0);
    EditorXML::DrawLines(picLines, caixa);
    EXPECT_TRUE(picLines.superficie().isNull());
}

TEST_F(DrawLinesTest, ALineInTheShadowColourClosesTheStripAtItsRight) {
    comTexto(3);
    const QImage imagem = desenho();
    for (int y = 0; y < imagem.height(); ++y) {
        ASSERT_EQ(imagem.pixelColor(largura - 1, y), sombra) << "row " << y;
        ASSERT_EQ(imagem.pixelColor(largura - 2, y), fundo) << "row " << y;
        ASSERT_EQ(imagem.pixelColor(0, y), fundo) << "row " << y;
    }
}

TEST_F(DrawLinesTest, TheStripIsFilledAnewEachTime) {
    comTexto(8);
    desenho();
    comTexto(2);
    EXPECT_EQ(faixas(desenho()),
              (Faixas{emDestaque, naSombra, vazia, vazia, vazia, vazia, vazia, vazia, vazia, vazia}));
}

TEST_F(DrawLinesTest, TheStripShowsWhatWasDrawnAndIsBlankBefore) {
    comTexto(3);
    QImage emBranco(picLines.size(), QImage::Format_RGB32);
    emBranco.fill(fundo);
    EXPECT_EQ(picLines.grab().toImage().convertToFormat(QImage::Format_RGB32), emBranco);
    const QImage imagem = desenho();
    EXPECT_EQ(picLines.grab().toImage().convertToFormat(QImage::Format_RGB32), imagem);
}

/// A strip that counts how often it was painted.
class FaixaContada : public PicLines {
public:
    int pinturas = 0;

protected:
    void paintEvent(QPaintEvent* evento) override {
        ++pinturas;
        PicLines::paintEvent(evento);
    }
};

TEST_F(DrawLinesTest, OnlyWithAutoRedrawTheStripIsRefreshed) {
    FaixaContada faixa;
    faixa.resize(40, 60);
    faixa.show();
    QCoreApplication::processEvents();
    const int antes = faixa.pinturas;
    EditorXML::DrawLines(faixa, caixa);
    QCoreApplication::processEvents();
    EXPECT_EQ(faixa.pinturas, antes);
    faixa.setAutoRedraw(true);
    EditorXML::DrawLines(faixa, caixa);
    QCoreApplication::processEvents();
    EXPECT_EQ(faixa.pinturas, antes + 1);
}

/// The form that reaches the box through the active child, with a log.
struct DrawLinesLogTest : ::testing::Test {
    ~DrawLinesLogTest() override { mdiMain::destroi(); }
    std::size_t registrado(std::string_view texto) const {
        return test::occurrences(pasta.read("log20240305.txt"), texto);
    }

    test::TemporaryFolder pasta;
    clock::Frozen agora{clock::at(2024, 3, 5, 14, 7, 9)};
    test::GlobalLogger global{test::startLogger(pasta, clsLogger::typeTXT, library::level::all)};
};

TEST_F(DrawLinesLogTest, DrawsForTheActiveChildAndStandsOnTheCallStack) {
    auto& editor = ativa<JanelaComTexto>(QStringLiteral("a\nb"));
    const QImage antes = editor.picLines->grab().toImage();
    EditorXML::DrawLines(*editor.picLines);
    EXPECT_NE(editor.picLines->grab().toImage(), antes);
    EXPECT_EQ(registrado("STACK  EditorXML.DrawLines"), 1U);
    EXPECT_EQ(registrado("END    EditorXML.DrawLines"), 1U);
    EXPECT_EQ(registrado("FATAL"), 0U);
}

TEST_F(DrawLinesLogTest, WithoutAnActiveChildTheFailureIsLogged) {
    PicLines picLines;
    EditorXML::DrawLines(picLines);
    EXPECT_EQ(registrado("[91]]"), 1U) << pasta.read("log20240305.txt");
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(DrawLinesLogTest, WithAnotherKindOfChildTheFailureIsLogged) {
    ativa<OutraJanela>();
    PicLines picLines;
    EditorXML::DrawLines(picLines);
    EXPECT_EQ(registrado("[438]]"), 1U) << pasta.read("log20240305.txt");
    EXPECT_EQ(registrado("END    EditorXML.DrawLines"), 1U);
}

} // namespace
} // namespace tv
