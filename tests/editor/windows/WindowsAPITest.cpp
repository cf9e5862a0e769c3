#include "editor/windows/WindowsAPI.h"

#include "logging/LogFolder.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QObject>
#include <QProcess>
#include <QUrl>

#include <gtest/gtest.h>

namespace tv {
namespace {

/// A desktop that takes addresses of a scheme and keeps them.
class Area : public QObject {
    Q_OBJECT
public:
    explicit Area(const QString& esquema)
        : esquema_(esquema) {
        QDesktopServices::setUrlHandler(esquema, this, "abre");
    }
    ~Area() override { QDesktopServices::unsetUrlHandler(esquema_); }

    Q_INVOKABLE void abre(const QUrl& endereco) { abertos << endereco; }
    QList<QUrl> abertos;

private:
    QString esquema_;
};

TEST(AbreDocumentoTest, GivesAFileToTheDesktopByItsFullPath) {
    const test::TemporaryFolder pasta;
    const auto arquivo = pasta.write("ajuda é 100%.html", "<html/>");
    const Area area(QStringLiteral("file"));
    EXPECT_TRUE(WindowsAPI::abreDocumento(QString::fromStdString(arquivo.string())));
    ASSERT_EQ(area.abertos.size(), 1);
    EXPECT_EQ(area.abertos[0].toLocalFile().toStdString(), arquivo.string());
}

TEST(AbreDocumentoTest, GivesAnAddressToTheDesktop) {
    const Area area(QStringLiteral("http"));
    EXPECT_TRUE(WindowsAPI::abreDocumento(QStringLiteral("http://exemplo.com.br/a?b=c")));
    EXPECT_TRUE(WindowsAPI::abreDocumento(QStringLiteral("www.exemplo.com.br")));
    EXPECT_EQ(area.abertos, (QList<QUrl>{QUrl(QStringLiteral("http://exemplo.com.br/a?b=c")),
                                         QUrl(QStringLiteral("http://www.exemplo.com.br"))}));
}

TEST(AbreDocumentoTest, WhatIsNotThereIsNotOpened) {
    const Area area(QStringLiteral("file"));
    EXPECT_FALSE(WindowsAPI::abreDocumento(QStringLiteral("/nao/existe/help.html")));
    EXPECT_FALSE(WindowsAPI::abreDocumento(QString()));
    EXPECT_TRUE(area.abertos.isEmpty());
}

TEST(AbreDocumentoTest, ADesktopThatRefusesGivesFalse) {
    EXPECT_FALSE(WindowsAPI::abreDocumento(QStringLiteral("esquema-sem-programa:abc")));
}

TEST(AbreEmailTest, GivesTheLinkToTheMailProgram) {
    const Area area(QStringLiteral("mailto"));
    QString assunto = QStringLiteral("[Tramador - 1.0] Dúvida & sugestão");
    QString corpo = QStringLiteral("Olá,\n100%");
    EXPECT_TRUE(WindowsAPI::abreEmail(QStringLiteral("suporte@exemplo.com.br"), assunto, corpo));
    ASSERT_EQ(area.abertos.size(), 1);
    EXPECT_EQ(area.abertos[0].toEncoded().toStdString(),
              "mailto:suporte@exemplo.com.br?subject=%5BTramador%20-%201.0%5D%20D%C3%BAvida%20%26%20"
              "sugest%C3%A3o&body=Ol%C3%A1%2C%0D%0A100%25");
    EXPECT_EQ(assunto, QStringLiteral("[Tramador - 1.0] Dúvida & sugestão"));
    EXPECT_EQ(corpo, QStringLiteral("Olá,\n100%"));
}

TEST(AbreEmailTest, TheAddressMayBearItsPrefix) {
    const Area area(QStringLiteral("mailto"));
    QString vazio;
    EXPECT_TRUE(WindowsAPI::abreEmail(QStringLiteral("MAILTO:a@b.com"), vazio, vazio));
    EXPECT_EQ(area.abertos.at(0), QUrl(QStringLiteral("mailto:a@b.com")));
}

TEST(AbreEmailTest, WithoutAMailProgramItGivesFalse) {
    QString vazio;
    EXPECT_FALSE(WindowsAPI::abreEmail(QStringLiteral("a@b.com"), vazio, vazio));
}

/// The expected separator comes from outside where the test below runs this one in another locale.
TEST(TextoDoLocalTest, GivesTheDecimalSeparatorOfTheEnvironment) {
    EXPECT_EQ(WindowsAPI::textoDoLocal(14), qEnvironmentVariable("TV_SEPARADOR", QStringLiteral(".")));
}

TEST(TextoDoLocalTest, KnowsNoOtherItem) {
    EXPECT_EQ(WindowsAPI::textoDoLocal(0), QString());
    EXPECT_EQ(WindowsAPI::textoDoLocal(15), QString());
}

struct LocalCase {
    const char* name;
    const char* variable;
    const char* locale;
    const char* separator;
};

class OutroLocalTest : public ::testing::TestWithParam<LocalCase> {};

TEST_P(OutroLocalTest, TheSeparatorFollowsTheEnvironment) {
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    for (const char* variavel : {"LC_ALL", "LC_NUMERIC", "LANG"}) {
        ambiente.remove(QLatin1String(variavel));
    }
    ambiente.insert(QLatin1String(GetParam().variable), QLatin1String(GetParam().locale));
    ambiente.insert(QStringLiteral("TV_SEPARADOR"), QLatin1String(GetParam().separator));
    ambiente.insert(QStringLiteral("TV_LOCAL_DO_TESTE"), QStringLiteral("1"));
    QProcess filho;
    filho.setProcessEnvironment(ambiente);
    filho.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--gtest_filter=TextoDoLocalTest.GivesTheDecimalSeparatorOfTheEnvironment")});
    ASSERT_TRUE(filho.waitForFinished(60'000));
    EXPECT_EQ(filho.exitCode(), 0) << filho.readAll().toStdString();
}

INSTANTIATE_TEST_SUITE_P(WindowsAPI, OutroLocalTest,
                         ::testing::Values(LocalCase{"portuguese", "LC_ALL", "pt_BR.UTF-8", ","},
                                           LocalCase{"english", "LC_ALL", "en_US.UTF-8", "."},
                                           LocalCase{"portuguese_by_language", "LANG", "pt_BR.UTF-8", ","},
                                           LocalCase{"portuguese_by_numbers", "LC_NUMERIC", "pt_BR.UTF-8",
                                                     ","},
                                           LocalCase{"plain", "LC_ALL", "C.UTF-8", "."}),
                         [](const auto& given) { return std::string(given.param.name); });

} // namespace
} // namespace tv

#include "WindowsAPITest.moc"
