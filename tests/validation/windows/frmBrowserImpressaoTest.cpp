#include "validation/windows/frmBrowserBancada.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTimer>

#include <gmock/gmock.h>

using namespace tv;
using namespace tv::test;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

/// Answers the next print dialog: prints into a file, or leaves it.
class DialogoDeImpressao : public QObject {
public:
    explicit DialogoDeImpressao(QString arquivo)
        : arquivo_(std::move(arquivo)) {
        connect(&relogio_, &QTimer::timeout, this, [this] { olha(); });
        relogio_.start(5);
    }
    int vistos() const { return vistos_; }
    QString avisoAberto; ///< Text of the progress window while the dialog stood on the screen.
    QPageLayout::Orientation orientacao = QPageLayout::Portrait;

private:
    void olha() {
        auto* dialogo = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
        if (dialogo == nullptr || !dialogo->isVisible()) {
            return;
        }
        relogio_.stop();
        ++vistos_;
        orientacao = dialogo->printer()->pageLayout().orientation();
        for (const QWidget* janela : QApplication::topLevelWidgets()) {
            if (janela->objectName() == QStringLiteral("frmMensagem") && janela->isVisible()) {
                avisoAberto = janela->findChild<QLabel*>(QStringLiteral("lblTitulo"))->text() +
                              QLatin1Char('|') +
                              janela->findChild<QLabel*>(QStringLiteral("txtDescricao"))->text();
            }
        }
        auto* nome = dialogo->findChild<QLineEdit*>(QStringLiteral("filename"));
        auto* botoes = dialogo->findChild<QDialogButtonBox*>();
        if (nome == nullptr || botoes == nullptr) {
            ADD_FAILURE() << "the print dialog offers no file";
            dialogo->reject();
            return;
        }
        if (arquivo_.isEmpty()) {
            QTest::keyClick(dialogo, Qt::Key_Escape);
            return;
        }
        nome->setText(arquivo_);
        QTest::mouseClick(botoes->button(QDialogButtonBox::Ok), Qt::LeftButton);
    }

    QString arquivo_;
    QTimer relogio_;
    int vistos_ = 0;
};

class frmBrowserImpressaoTest : public BancadaRelatorio {
protected:
    std::filesystem::path papel() const { return pasta.path() / "papel.pdf"; }
    static bool avisoVisivel() {
        for (const QWidget* uma : QApplication::topLevelWidgets()) {
            if (uma->objectName() == QStringLiteral("frmMensagem") && uma->isVisible()) {
                return true;
            }
        }
        return false;
    }
    std::unique_ptr<QPrinter> impressora() const {
        auto nova = std::make_unique<QPrinter>(QPrinter::HighResolution);
        nova->setResolution(72);
        nova->setOutputFormat(QPrinter::PdfFormat);
        nova->setOutputFileName(caminhoQt(papel()));
        return nova;
    }
    bool temPapel() const {
        return files::exists(papel()) && files::readAll(papel()).find("%%EOF") != std::string::npos;
    }
};

TEST_F(frmBrowserImpressaoTest, ButtonPrintsThePageAfterTheDialog) {
    abre(muitos(30));
    const QString documento = caminhoQt(janela->arquivoReport());
    DialogoDeImpressao dialogo(caminhoQt(papel()));
    QTest::mouseClick(&botao("btnImprimir"), Qt::LeftButton);
    EXPECT_EQ(dialogo.vistos(), 1);
    EXPECT_EQ(dialogo.avisoAberto, QStringLiteral("Imprimindo relatório de validação|Boleto:  ") + documento);
    EXPECT_EQ(dialogo.orientacao, QPageLayout::Landscape);
    EXPECT_TRUE(espera([this] { return !vista().imprimindo(); }));
    EXPECT_TRUE(temPapel());
    EXPECT_THAT(files::readAll(papel()), StartsWith("%PDF"));
    EXPECT_FALSE(avisoVisivel());
    EXPECT_THAT(registro(), Not(HasSubstr("FATAL")));
}

TEST_F(frmBrowserImpressaoTest, KeyPrints) {
    abre(muitos(1));
    DialogoDeImpressao dialogo{QString()};
    QTest::keyClick(brwReport().focusProxy(), Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(dialogo.vistos(), 1);
}

TEST_F(frmBrowserImpressaoTest, CancelledDialogPrintsNothingAndIsNoFailure) {
    abre(muitos(1));
    DialogoDeImpressao dialogo{QString()};
    janela->imprimirReport();
    EXPECT_EQ(dialogo.vistos(), 1);
    EXPECT_FALSE(vista().imprimindo());
    EXPECT_FALSE(avisoVisivel());
    EXPECT_THAT(registro(), Not(HasSubstr("FATAL")));
}

TEST_F(frmBrowserImpressaoTest, SecondPrintDuringTheFirstIsAFailureInTheLog) {
    abre(muitos(30));
    bool impresso = false;
    vista().imprime(impressora(), [&impresso](bool certo) { impresso = certo; });
    EXPECT_THROW(vista().imprime(impressora(), [](bool) {}), Error);
    DialogoDeImpressao dialogo(caminhoQt(pasta.path() / "outro.pdf"));
    janela->imprimirReport();
    EXPECT_THAT(registro(), HasSubstr("Há outra impressão em andamento.[75]"));
    EXPECT_FALSE(avisoVisivel());
    EXPECT_TRUE(espera([&impresso] { return impresso; })) << "the first print goes on";
}

TEST_F(frmBrowserImpressaoTest, PrinterThatCannotBeOpenedIsAFailure) {
    abre(muitos(1));
    auto ruim = impressora();
    ruim->setOutputFileName(caminhoQt(pasta.path() / "nada" / "papel.pdf"));
    int vezes = 0;
    bool impresso = true;
    vista().imprime(std::move(ruim), [&](bool certo) {
        impresso = certo;
        ++vezes;
    });
    EXPECT_TRUE(espera([&vezes] { return vezes > 0; }));
    EXPECT_FALSE(impresso);
    EXPECT_EQ(vezes, 1);
}

TEST_F(frmBrowserImpressaoTest, WindowThatClosesMeanwhileLeavesThePrintToEnd) {
    const QPointer<frmBrowser> aberta = &abre(muitos(200));
    bool impresso = false;
    const QPointer<VistaRelatorio> solta = &vista();
    vista().imprime(impressora(), [&impresso](bool certo) { impresso = certo; });
    janela->closeWindow();
    EXPECT_TRUE(espera([&aberta] { return aberta.isNull(); })) << "the window goes at once";
    EXPECT_TRUE(espera([&impresso] { return impresso; }));
    EXPECT_TRUE(temPapel());
    EXPECT_TRUE(espera([&solta] { return solta.isNull(); })) << "nothing stays behind";
}

TEST_F(frmBrowserImpressaoTest, EndOfTheProgramDuringAPrintDoesNotCrash) {
    abre(muitos(200));
    vista().imprime(impressora(), [](bool) {});
    mdiMain::destroi();
    QTest::qWait(50);
    EXPECT_FALSE(mdiMain::existe());
}

} // namespace
