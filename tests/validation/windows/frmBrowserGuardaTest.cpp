#include "validation/windows/SandboxWeb.h"
#include "validation/windows/VistaWeb.h"
#include "validation/windows/frmBrowserBancada.h"

#include <QTcpServer>
#include <QWebEngineProfile>
#include <QWebEngineSettings>

#include <gmock/gmock.h>

using namespace tv;
using namespace tv::test;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

/// What a page may not do, tried by pages that a foreign stylesheet writes.
class frmBrowserGuardaTest : public BancadaRelatorio {
protected:
    frmBrowserGuardaTest() {
        rede.listen(QHostAddress::LocalHost);
        QObject::connect(&rede, &QTcpServer::newConnection, &rede, [this] { ++ligacoes; });
    }
    std::string enderecoDeRede() const {
        return "http://127.0.0.1:" + std::to_string(rede.serverPort()) + "/x";
    }
    QWidget& areaDaPagina() const { return *brwReport().focusProxy(); }
    void clicaNaPagina() const {
        QTest::mouseClick(&areaDaPagina(), Qt::LeftButton, {}, areaDaPagina().rect().center());
        QTest::qWait(300); // a load that must not begin
    }

    QTcpServer rede;
    int ligacoes = 0;
};

TEST_F(frmBrowserGuardaTest, ProgramsDoNotRun) {
    instalaPagina(
        "", "<p id='p'>Parado</p><script>document.getElementById('p').textContent = 'Mudado';</script>");
    abre(muitos(1));
    EXPECT_TRUE(naPagina("Parado"));
    EXPECT_FALSE(naPagina("Mudado"));
}

TEST_F(frmBrowserGuardaTest, NothingIsFetchedFromTheNetwork) {
    const std::string url = enderecoDeRede();
    instalaPagina("<link rel='stylesheet' href='" + url + "'/>",
                  "<p>Texto</p><img src='" + url + "'/><iframe src='" + url + "'></iframe>");
    abre(muitos(1));
    QTest::qWait(300);
    EXPECT_TRUE(naPagina("Texto"));
    EXPECT_EQ(ligacoes, 0);
}

TEST_F(frmBrowserGuardaTest, OtherFilesOfTheDiskAreNotRead) {
    pasta.write("estilo.css", "p { display: none; }");
    pasta.write("quadro.html", "<p>Alheio</p>");
    instalaPagina("<link rel='stylesheet' href='estilo.css'/>",
                  "<p>Texto</p><iframe src='quadro.html'></iframe>");
    abre(muitos(1));
    EXPECT_TRUE(naPagina("Texto"));
    const GuardaDePedidos& guarda = dynamic_cast<PaginaWeb*>(brwReport().page())->guarda();
    EXPECT_FALSE(guarda.permite(QUrl::fromLocalFile(caminhoQt(pasta.path() / "quadro.html"))));
}

TEST_F(frmBrowserGuardaTest, LinksLeadNowhere) {
    const std::string inteira = "' style='position:fixed;top:0;left:0;width:100%;height:100%'>sair</a>";
    pasta.write("outra.html", "<p>Outra</p>");
    for (const std::string& destino :
         {enderecoDeRede(), std::string("outra.html"), std::string("mailto:a@b.c")}) {
        instalaPagina("", "<p>Texto</p><a href='" + destino + inteira);
        abre(muitos(1));
        const QUrl antes = brwReport().url();
        clicaNaPagina();
        EXPECT_EQ(brwReport().url(), antes) << destino;
        EXPECT_TRUE(naPagina("Texto")) << destino;
    }
    EXPECT_EQ(ligacoes, 0);
}

TEST_F(frmBrowserGuardaTest, LinkToANewWindowOpensNone) {
    instalaPagina("", "<a target='_blank' href='" + enderecoDeRede() +
                          "' style='position:fixed;top:0;left:0;width:100%;height:100%'>sair</a>");
    abre(muitos(1));
    const auto antes = QApplication::topLevelWidgets().size();
    clicaNaPagina();
    EXPECT_EQ(QApplication::topLevelWidgets().size(), antes);
    EXPECT_EQ(ligacoes, 0);
}

TEST_F(frmBrowserGuardaTest, PageDoesNotSendItselfElsewhere) {
    instalaPagina("<meta http-equiv='refresh' content='0;url=" + enderecoDeRede() + "'/>", "<p>Texto</p>");
    abre(muitos(1));
    QTest::qWait(300);
    EXPECT_TRUE(naPagina("Texto"));
    EXPECT_EQ(ligacoes, 0);
}

TEST_F(frmBrowserGuardaTest, NothingOfTheReportReachesTheDisk) {
    abre(muitos(1));
    const QWebEngineProfile& perfil = *brwReport().page()->profile();
    EXPECT_TRUE(perfil.isOffTheRecord());
    EXPECT_FALSE(brwReport().settings()->testAttribute(QWebEngineSettings::JavascriptEnabled));
    EXPECT_FALSE(brwReport().settings()->testAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls));
    EXPECT_FALSE(brwReport().settings()->testAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls));
}

// --- what the guard lets through

struct Pedido {
    const char* caso;
    const char* url;
    bool permitido;
};

void PrintTo(const Pedido& pedido, std::ostream* saida) {
    *saida << pedido.url;
}

class GuardaDePedidosTest : public testing::TestWithParam<Pedido> {};

TEST_P(GuardaDePedidosTest, Decides) {
    GuardaDePedidos guarda;
    guarda.setPagina(QUrl(QStringLiteral("file:///dados/KVO1.HTM")));
    EXPECT_EQ(guarda.permite(QUrl(QString::fromUtf8(GetParam().url))), GetParam().permitido);
}

INSTANTIATE_TEST_SUITE_P(Urls, GuardaDePedidosTest,
                         testing::Values(Pedido{"Page", "file:///dados/KVO1.HTM", true},
                                         Pedido{"PlaceInThePage", "file:///dados/KVO1.HTM#fim", true},
                                         Pedido{"Blank", "about:blank", true},
                                         Pedido{"NeighbourOfThePage", "file:///dados/KVO2.HTM", false},
                                         Pedido{"Folder", "file:///dados/", false},
                                         Pedido{"SystemFile", "file:///etc/passwd", false},
                                         Pedido{"Http", "http://exemplo.com/", false},
                                         Pedido{"Https", "https://exemplo.com/dados/KVO1.HTM", false},
                                         Pedido{"Data", "data:text/html,x", false},
                                         Pedido{"Script", "javascript:alert(1)", false},
                                         Pedido{"Share", "file://servidor/dados/KVO1.HTM", false}),
                         [](const auto& qual) { return std::string(qual.param.caso); });

TEST(GuardaDePedidosVazioTest, BeforeAPageOnlyTheBlankOne) {
    const GuardaDePedidos guarda;
    EXPECT_TRUE(guarda.permite(QUrl(QStringLiteral("about:blank"))));
    EXPECT_FALSE(guarda.permite(QUrl()));
    EXPECT_FALSE(guarda.permite(QUrl(QStringLiteral("file:///dados/KVO1.HTM"))));
}

// --- whether the engine may start

class SandboxWebTest : public testing::Test {
protected:
    SandboxWebTest() {
        qunsetenv("QTWEBENGINE_DISABLE_SANDBOX");
        qunsetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    }
    ~SandboxWebTest() override {
        qunsetenv("QTWEBENGINE_DISABLE_SANDBOX");
        qunsetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    }
    std::string motivo;
};

TEST_F(SandboxWebTest, RootAndSystemsWithoutNamespacesGetAReason) {
    const bool pode = sandboxWeb::verifica(motivo);
    EXPECT_EQ(pode, motivo.empty());
    EXPECT_FALSE(pode && ::geteuid() == 0);
}

TEST_F(SandboxWebTest, SwitchedOffByTheUserItMayStart) {
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    EXPECT_TRUE(sandboxWeb::verifica(motivo));
    EXPECT_EQ(motivo, "");
    EXPECT_TRUE(sandboxWeb::podeAbrir());
}

TEST_F(SandboxWebTest, SwitchedOffByFlagItMayStart) {
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--disable-gpu --no-sandbox");
    EXPECT_TRUE(sandboxWeb::verifica(motivo));
}

TEST_F(SandboxWebTest, ZeroDoesNotSwitchItOff) {
    qputenv("QTWEBENGINE_DISABLE_SANDBOX", "0");
    const bool pode = sandboxWeb::verifica(motivo);
    EXPECT_EQ(pode, motivo.empty());
    EXPECT_FALSE(pode && ::geteuid() == 0);
}

} // namespace
