#include "validation/windows/VistaSimples.h"
#include "validation/windows/frmBrowserBancada.h"

#include <QLineEdit>
#include <QPrinter>
#include <QTcpServer>
#include <QTextBrowser>

#include <gmock/gmock.h>

using namespace tv;
using namespace tv::test;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

/// The report where the web engine cannot run: a window made while nothing switches the sandbox off for root,
/// or the view alone.
class frmBrowserSimplesTest : public BancadaRelatorio {
protected:
    void mostra(int quantos) {
        auto& nova = criaJanela<frmBrowser>();
        const auto pagina = pasta.path() / "pagina.html";
        nova.createResultFile(*muitos(quantos), QStringLiteral("T"), QStringLiteral("/dados/f.xml"), pagina);
        simples.resize(900, 600);
        simples.show();
        simples.abre(pagina);
    }
    template<typename T = QWidget>
    T& parte(const char* nome) {
        return *simples.findChild<T*>(QString::fromLatin1(nome));
    }
    std::string texto() { return paraUtf8(parte<QTextBrowser>("brwReport").toPlainText()); }
    std::string bloco() { return paraUtf8(parte<QLabel>("lblBloco").text()); }
    std::string aviso() { return paraUtf8(parte<QLabel>("lblAchados").text()); }
    std::string selecionado() {
        return paraUtf8(parte<QTextBrowser>("brwReport").textCursor().selectedText());
    }
    void procura(const char* que) {
        simples.localiza();
        parte<QLineEdit>("txtLocalizar").setText(QString::fromUtf8(que));
    }

    VistaSimples simples;
};

TEST_F(frmBrowserSimplesTest, ShowsASmallReportWhole) {
    mostra(3);
    EXPECT_THAT(texto(), HasSubstr("valor 3"));
    EXPECT_THAT(texto(), HasSubstr("/dados/f.xml"));
    EXPECT_FALSE(parte("navegacaoReport").isVisible());
}

TEST_F(frmBrowserSimplesTest, ShowsALargeReportBlockByBlock) {
    mostra(450);
    EXPECT_EQ(bloco(), "Bloco 1 de 3");
    EXPECT_THAT(texto(), HasSubstr("valor 200"));
    EXPECT_THAT(texto(), Not(HasSubstr("valor 201")));
    EXPECT_FALSE(parte("btnBlocoAnterior").isEnabled());
    QTest::mouseClick(&parte("btnProximoBloco"), Qt::LeftButton);
    QTest::mouseClick(&parte("btnProximoBloco"), Qt::LeftButton);
    EXPECT_EQ(bloco(), "Bloco 3 de 3");
    EXPECT_THAT(texto(), HasSubstr("valor 450"));
    EXPECT_FALSE(parte("btnProximoBloco").isEnabled());
    QTest::mouseClick(&parte("btnBlocoAnterior"), Qt::LeftButton);
    EXPECT_EQ(bloco(), "Bloco 2 de 3");
}

TEST_F(frmBrowserSimplesTest, FindsInOtherBlocksAndAroundTheEnd) {
    mostra(450);
    procura("valor 441");
    EXPECT_EQ(bloco(), "Bloco 3 de 3");
    EXPECT_EQ(selecionado(), "valor 441");
    EXPECT_EQ(aviso(), "Encontrado");
    procura("valor 17");
    EXPECT_EQ(bloco(), "Bloco 1 de 3");
    EXPECT_EQ(selecionado(), "valor 17");
    QTest::keyClick(&parte("txtLocalizar"), Qt::Key_Return);
    EXPECT_EQ(selecionado(), "valor 17") << "of valor 170";
    procura("não está");
    EXPECT_EQ(aviso(), "Texto não encontrado");
    EXPECT_EQ(bloco(), "Bloco 1 de 3");
}

TEST_F(frmBrowserSimplesTest, Zooms) {
    mostra(1);
    auto& pagina = parte<QTextBrowser>("brwReport");
    const double altura = pagina.document()->size().height();
    simples.setZoom(2);
    EXPECT_GT(pagina.document()->size().height(), altura * 1.3);
    simples.setZoom(100);
    EXPECT_DOUBLE_EQ(simples.zoom(), 5);
}

TEST_F(frmBrowserSimplesTest, PrintsAllBlocks) {
    mostra(450);
    auto impressora = std::make_unique<QPrinter>(QPrinter::HighResolution);
    impressora->setOutputFormat(QPrinter::PdfFormat);
    impressora->setOutputFileName(caminhoQt(pasta.path() / "papel.pdf"));
    bool impresso = false;
    simples.imprime(std::move(impressora), [&impresso](bool certo) { impresso = certo; });
    EXPECT_TRUE(impresso);
    const std::string papel = pasta.read("papel.pdf");
    EXPECT_THAT(papel, StartsWith("%PDF"));
    EXPECT_GT(occurrences(papel, "/Type /Page\n"), 5U);
}

TEST_F(frmBrowserSimplesTest, PrinterThatCannotBeOpenedIsAFailure) {
    mostra(1);
    auto impressora = std::make_unique<QPrinter>();
    impressora->setOutputFormat(QPrinter::PdfFormat);
    impressora->setOutputFileName(caminhoQt(pasta.path() / "nada" / "papel.pdf"));
    bool impresso = true;
    simples.imprime(std::move(impressora), [&impresso](bool certo) { impresso = certo; });
    EXPECT_FALSE(impresso);
}

TEST_F(frmBrowserSimplesTest, FetchesNothing) {
    QTcpServer rede;
    rede.listen(QHostAddress::LocalHost);
    pasta.write("segredo.css", "p { color: red; }");
    const std::string url = "http://127.0.0.1:" + std::to_string(rede.serverPort()) + "/x.png";
    instalaPagina("<link rel='stylesheet' href='segredo.css'/>", "<p>Texto</p><img src='" + url + "'/>");
    mostra(1);
    QTest::qWait(100);
    EXPECT_THAT(texto(), HasSubstr("Texto"));
    EXPECT_FALSE(rede.hasPendingConnections());
    EXPECT_FALSE(parte<QTextBrowser>("brwReport")
                     .loadResource(QTextDocument::StyleSheetResource, QUrl(QStringLiteral("segredo.css")))
                     .isValid());
}

TEST_F(frmBrowserSimplesTest, PageThatIsNotThereThrows) {
    EXPECT_THROW(simples.abre(pasta.path() / "nada.html"), Error);
}

TEST_F(frmBrowserSimplesTest, CopiesTheSelection) {
    mostra(1);
    EXPECT_FALSE(simples.temSelecao());
    simples.selecionaTudo();
    EXPECT_TRUE(simples.temSelecao());
}

} // namespace
