#include "editor/windows/WindowsAPI.h"

#include "editor/windows/ImpressoraDeTeste.h"
#include "logging/LogFolder.h"
#include "platform/Clock.h"
#include "windows/TempoDeProcessador.h"

#include <QFile>
#include <QPlainTextEdit>

#include <gtest/gtest.h>

#include <set>

namespace tv {
namespace {

using test::ImpressoraDeTeste;
using test::TextoImpresso;

/// A4 in twips.
constexpr double larguraA4 = 11905;
constexpr double alturaA4 = 16838;
constexpr double umPonto = 20; ///< In twips.

struct PrintRTFTest : ::testing::Test {
    PrintRTFTest() {
        caixa.setFont(QFont(QStringLiteral("DejaVu Sans Mono"), 10));
        caixa.setLineWrapMode(QPlainTextEdit::NoWrap);
    }
    static QString linhas(int quantas) {
        QStringList texto;
        for (int linha = 1; linha <= quantas; ++linha) {
            texto << QStringLiteral("linha%1").arg(linha);
        }
        return texto.join(QLatin1Char('\n'));
    }
    void imprime(ImpressoraDeTeste& impressora, const QString& texto, int margem = 720) {
        caixa.setPlainText(texto);
        WindowsAPI::PrintRTF(caixa, impressora, margem, margem, margem, margem);
    }
    /// The lines of a page from its top: pieces of one height joined.
    static QStringList linhasDaPagina(const std::vector<TextoImpresso>& pagina) {
        QStringList achadas;
        qreal y = -1;
        for (const TextoImpresso& pedaco : pagina) {
            if (pedaco.lugar.y() == y) {
                achadas.back() += pedaco.texto;
            } else {
                achadas << pedaco.texto;
                y = pedaco.lugar.y();
            }
        }
        return achadas;
    }
    std::size_t registrado(std::string_view texto) const {
        return test::occurrences(pasta.read("log20240305.txt"), texto);
    }

    test::TemporaryFolder pasta;
    clock::Frozen agora{clock::at(2024, 3, 5, 14, 7, 9)};
    test::GlobalLogger global{test::startLogger(pasta, clsLogger::typeTXT, library::level::all)};
    QPlainTextEdit caixa;
};

TEST_F(PrintRTFTest, PrintsEveryLineOnceAndInOrder) {
    ImpressoraDeTeste impressora;
    imprime(impressora, linhas(500));
    QStringList impressas;
    for (const auto& pagina : impressora.papel.paginas) {
        EXPECT_FALSE(pagina.empty());
        impressas += linhasDaPagina(pagina);
    }
    EXPECT_GT(impressora.papel.paginas.size(), 5U);
    EXPECT_EQ(impressas.join(QLatin1Char('\n')), linhas(500));
}

TEST_F(PrintRTFTest, StandsOnTheCallStackUnderItsName) {
    ImpressoraDeTeste impressora;
    imprime(impressora, linhas(3));
    EXPECT_EQ(registrado("STACK  WindowsAPI.PrintRTF"), 1U);
    EXPECT_EQ(registrado("END    WindowsAPI.PrintRTF"), 1U);
    EXPECT_EQ(registrado("FATAL"), 0U);
}

TEST_F(PrintRTFTest, KeepsTheMarginsFromThePapersEdges) {
    ImpressoraDeTeste impressora;
    imprime(impressora, linhas(500));
    for (const auto& pagina : impressora.papel.paginas) {
        for (const TextoImpresso& pedaco : pagina) {
            ASSERT_NEAR(pedaco.lugar.x(), 720, 1);
            ASSERT_GT(pedaco.lugar.y(), 720);
            ASSERT_LT(pedaco.lugar.y(), alturaA4 - 720);
        }
    }
    const double linha = impressora.papel.paginas[0][1].lugar.y() - impressora.papel.paginas[0][0].lugar.y();
    EXPECT_LT(impressora.papel.paginas[0].front().lugar.y(), 720 + linha);
    EXPECT_GT(impressora.papel.paginas[0].back().lugar.y(), alturaA4 - 720 - 2 * linha);
}

TEST_F(PrintRTFTest, TheMarginsAreMeasuredFromThePaperWhateverThePrinterCannotReach) {
    ImpressoraDeTeste impressora({10, 20, 10, 10});
    imprime(impressora, linhas(500));
    ImpressoraDeTeste inteira;
    imprime(inteira, linhas(500));
    ASSERT_EQ(impressora.papel.paginas.size(), inteira.papel.paginas.size());
    for (std::size_t pagina = 0; pagina < inteira.papel.paginas.size(); ++pagina) {
        const TextoImpresso& aqui = impressora.papel.paginas[pagina].back();
        const TextoImpresso& la = inteira.papel.paginas[pagina].back();
        EXPECT_EQ(aqui.texto, la.texto);
        EXPECT_NEAR(aqui.lugar.x() + 10 * umPonto, la.lugar.x(), 1);
        EXPECT_NEAR(aqui.lugar.y() + 20 * umPonto, la.lugar.y(), 1);
    }
}

TEST_F(PrintRTFTest, WrapsLongLinesAtThePagesWidthWithoutLosingText) {
    QString texto;
    for (int palavra = 0; palavra < 3000; ++palavra) {
        texto += QStringLiteral("<p n=\"%1\"/> ").arg(palavra);
    }
    ImpressoraDeTeste impressora;
    imprime(impressora, texto);
    QString impresso;
    const QFontMetricsF medida(caixa.font(), &impressora);
    for (const auto& pagina : impressora.papel.paginas) {
        for (const QString& linha : linhasDaPagina(pagina)) {
            impresso += linha;
            ASSERT_LE(medida.horizontalAdvance(linha.trimmed()), larguraA4 - 2 * 720 + 1);
        }
    }
    EXPECT_EQ(impresso.remove(QLatin1Char(' ')), texto.remove(QLatin1Char(' ')));
}

TEST_F(PrintRTFTest, ALineLongerThanAPieceIsFilledToItsEndAcrossPieces) {
    const QString texto(20'000, QLatin1Char('x'));
    ImpressoraDeTeste impressora;
    imprime(impressora, texto);
    std::set<qsizetype> tamanhos;
    qsizetype total = 0;
    QStringList todas;
    for (const auto& pagina : impressora.papel.paginas) {
        todas += linhasDaPagina(pagina);
    }
    for (qsizetype linha = 0; linha + 1 < todas.size(); ++linha) {
        tamanhos.insert(todas[linha].size());
        total += todas[linha].size();
    }
    EXPECT_EQ(tamanhos.size(), 1U) << "all lines but the last are of one length";
    EXPECT_EQ(total + todas.last().size(), 20'000);
}

TEST_F(PrintRTFTest, PrintsInTheBoxsFontAndInBlack) {
    QPalette clara = caixa.palette();
    clara.setColor(QPalette::Text, Qt::white);
    caixa.setPalette(clara);
    ImpressoraDeTeste impressora;
    imprime(impressora, QStringLiteral("a"));
    const TextoImpresso& pedaco = impressora.papel.paginas.at(0).at(0);
    EXPECT_EQ(pedaco.cor, QColor(Qt::black));
    EXPECT_NEAR(pedaco.pontos, 10, 0.01);
}

TEST_F(PrintRTFTest, AFontGivenInPixelsHasTheSameSizeOnPaper) {
    QFont fonte = caixa.font();
    fonte.setPixelSize(16);
    caixa.setFont(fonte);
    ImpressoraDeTeste impressora;
    imprime(impressora, QStringLiteral("a"));
    EXPECT_NEAR(impressora.papel.paginas.at(0).at(0).pontos, 16 * 72.0 / caixa.logicalDpiY(), 0.3);
}

TEST_F(PrintRTFTest, TabsReachAsFarAsOnTheScreen) {
    ImpressoraDeTeste impressora;
    imprime(impressora, QStringLiteral("a\n\ta\n\t\ta"));
    std::vector<TextoImpresso> letras;
    for (const TextoImpresso& pedaco : impressora.papel.paginas.at(0)) {
        if (pedaco.texto == QStringLiteral("a")) {
            letras.push_back(pedaco);
        }
    }
    ASSERT_EQ(letras.size(), 3U);
    const double passo = caixa.tabStopDistance() * 1440 / caixa.logicalDpiX();
    EXPECT_NEAR(letras[1].lugar.x() - letras[0].lugar.x(), passo, 2);
    EXPECT_NEAR(letras[2].lugar.x() - letras[0].lugar.x(), 2 * passo, 2);
    EXPECT_NEAR(letras[2].lugar.y() - letras[1].lugar.y(), letras[1].lugar.y() - letras[0].lugar.y(), 1);
}

TEST_F(PrintRTFTest, EmptyLinesTakeTheirRoom) {
    ImpressoraDeTeste impressora;
    imprime(impressora, QStringLiteral("a\n\n\nb\nc"));
    const auto& pagina = impressora.papel.paginas.at(0);
    ASSERT_EQ(pagina.size(), 3U);
    const double linha = pagina[2].lugar.y() - pagina[1].lugar.y();
    EXPECT_NEAR(pagina[1].lugar.y() - pagina[0].lugar.y(), 3 * linha, 1);
}

TEST_F(PrintRTFTest, AnEmptyTextPrintsOneEmptyPage) {
    ImpressoraDeTeste impressora;
    imprime(impressora, QString());
    ASSERT_EQ(impressora.papel.paginas.size(), 1U);
    EXPECT_TRUE(impressora.papel.paginas[0].empty());
}

TEST_F(PrintRTFTest, ALineEndAtTheEndOfAFullPageMakesNoPageMore) {
    ImpressoraDeTeste impressora;
    imprime(impressora, linhas(500));
    const auto cabem = static_cast<int>(impressora.papel.paginas[0].size());
    for (const char* fim : {"", "\n"}) {
        ImpressoraDeTeste outra;
        imprime(outra, linhas(cabem) + QLatin1String(fim));
        EXPECT_EQ(outra.papel.paginas.size(), 1U);
    }
    ImpressoraDeTeste mais;
    imprime(mais, linhas(cabem + 1));
    EXPECT_EQ(mais.papel.paginas.size(), 2U);
}

TEST_F(PrintRTFTest, APageLowerThanALineTakesOneLine) {
    caixa.setPlainText(linhas(4));
    ImpressoraDeTeste impressora;
    WindowsAPI::PrintRTF(caixa, impressora, 720, 720, 720, static_cast<int>(alturaA4) - 720 - 30);
    EXPECT_EQ(impressora.papel.paginas.size(), 4U);
}

TEST_F(PrintRTFTest, MarginsThatLeaveNoRoomAreLogged) {
    ImpressoraDeTeste impressora;
    imprime(impressora, linhas(4), 9000);
    EXPECT_TRUE(impressora.papel.paginas.empty());
    EXPECT_EQ(registrado("[5]]"), 1U) << pasta.read("log20240305.txt");
}

TEST_F(PrintRTFTest, APrinterThatDoesNotStartIsLogged) {
    ImpressoraDeTeste impressora;
    impressora.papel.recusa = true;
    imprime(impressora, linhas(4));
    EXPECT_EQ(registrado("[482]]"), 1U) << pasta.read("log20240305.txt");
}

TEST_F(PrintRTFTest, APrinterThatFailsHalfWayIsLoggedAndTheJobEnds) {
    ImpressoraDeTeste impressora;
    impressora.trabalho.paginasPossiveis = 1;
    imprime(impressora, linhas(500));
    EXPECT_EQ(impressora.papel.paginas.size(), 2U);
    EXPECT_EQ(registrado("[482]]"), 1U) << pasta.read("log20240305.txt");
    EXPECT_TRUE(oLogger->callStack.EOF_());
}

TEST_F(PrintRTFTest, TheTimeGoesWithTheLengthOfOneLine) {
    const auto gasto = [&](int caracteres) {
        ImpressoraDeTeste impressora;
        const test::TempoDeProcessador tempo;
        imprime(impressora, QString(caracteres, QLatin1Char('x')));
        return tempo.decorrido();
    };
    gasto(1000);
    const double um = gasto(200'000);
    EXPECT_LT(gasto(1'600'000), 30 * um) << "eight times the text";
}

TEST_F(PrintRTFTest, PrintsToAPdfFile) {
    const QString arquivo = QString::fromStdString((pasta.path() / "texto.pdf").string());
    {
        QPrinter impressora(QPrinter::HighResolution);
        impressora.setOutputFormat(QPrinter::PdfFormat);
        impressora.setOutputFileName(arquivo);
        impressora.setPageSize(QPageSize(QPageSize::A4));
        caixa.setPlainText(linhas(150));
        WindowsAPI::PrintRTF(caixa, impressora, 720, 720, 720, 720);
    }
    const std::string pdf = pasta.read("texto.pdf");
    EXPECT_TRUE(pdf.starts_with("%PDF-"));
    EXPECT_EQ(test::occurrences(pdf, "/Type /Page\n"), 3U);
    EXPECT_EQ(registrado("FATAL"), 0U);
}

TEST_F(PrintRTFTest, WithoutAPrinterTheFailureIsLoggedAndNoFileAppears) {
    qputenv("CUPS_SERVER", "127.0.0.1:1"); // nothing answers there
    caixa.setPlainText(linhas(3));
    WindowsAPI::PrintRTF(caixa, 720, 720, 720, 720);
    EXPECT_EQ(registrado("[482]]"), 1U) << pasta.read("log20240305.txt");
}

} // namespace
} // namespace tv
