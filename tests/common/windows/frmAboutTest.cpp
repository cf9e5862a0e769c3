#include "common/windows/frmAbout.h"

#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "common/windows/SystemInfo.h"
#include "common/windows/textoQt.h"
#include "logging/LogFolder.h"
#include "windows/Caixas.h"
#include "windows/EnderecosAbertos.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QUrlQuery>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

using namespace tv;
using namespace tv::test;

namespace {

class About : public testing::Test {
protected:
    TemporaryFolder diario;
    GlobalLogger global{startLogger(diario, clsLogger::typeTXT, library::level::fatal)};
    EnderecosAbertos enderecos;

    About() {
        objTramadorValidador = std::make_shared<clsTramadorValidador>();
        objTramadorValidador->setTitulo("Boletos & Fundos");
        objTramadorValidador->setVersao("3.2");
        objTramadorValidador->setDescricao("Confere posições & movimentos.");
        objTramadorValidador->setSite("www.fundos.example");
        objTramadorValidador->setSiteLink("https://www.fundos.example/boletos");
        objTramadorValidador->setEmail("Atendimento");
        objTramadorValidador->setEmailLink("atendimento@fundos.example");
    }
    ~About() override { objTramadorValidador.reset(); }
    About(const About&) = delete;
    About& operator=(const About&) = delete;

    static QLabel& rotulo(const frmAbout& janela, const char* nome) {
        return *janela.findChild<QLabel*>(QString::fromUtf8(nome));
    }
    void confereSite() const {
        ASSERT_EQ(enderecos.abertos.size(), 1U);
        EXPECT_EQ(enderecos.abertos[0], QUrl(QStringLiteral("https://www.fundos.example/boletos")));
    }
    void confereEmail() const {
        ASSERT_EQ(enderecos.abertos.size(), 1U);
        const QUrl& link = enderecos.abertos[0];
        EXPECT_EQ(link.scheme(), QStringLiteral("mailto"));
        EXPECT_EQ(link.path(), QStringLiteral("atendimento@fundos.example"));
        const auto partes = QUrlQuery(link).queryItems(QUrl::FullyDecoded);
        ASSERT_EQ(partes.size(), 1) << "a subject and no body";
        EXPECT_EQ(partes[0].first, QStringLiteral("subject"));
        EXPECT_EQ(partes[0].second, QStringLiteral("[Boletos & Fundos - 3.2] "));
    }
};

TEST_F(About, ShowsTheCatalogsApplicationRecord) {
    const frmAbout janela(nullptr);
    EXPECT_EQ(janela.objectName(), QStringLiteral("frmAbout"));
    EXPECT_EQ(janela.windowTitle(), QStringLiteral("Sobre Boletos & Fundos"));
    EXPECT_EQ(rotulo(janela, "lblVersion").text(), QStringLiteral("Versão 3.2"));
    EXPECT_EQ(rotulo(janela, "lblTitle").text(), QStringLiteral("Boletos & Fundos"));
    EXPECT_EQ(rotulo(janela, "lblDescription").text(), QStringLiteral("Confere posições & movimentos."));
    EXPECT_EQ(rotulo(janela, "lblSite").text(), QStringLiteral("www.fundos.example"));
    EXPECT_EQ(rotulo(janela, "lblEmail").text(), QStringLiteral("Atendimento"));
    EXPECT_FALSE(rotulo(janela, "picIcon").pixmap().isNull());
}

TEST_F(About, OpensTheSiteByAClick) {
    frmAbout janela(nullptr);
    janela.show();
    QTest::mouseClick(&rotulo(janela, "lblSite"), Qt::LeftButton);
    confereSite();
}

TEST_F(About, OpensAMailByAClick) {
    frmAbout janela(nullptr);
    janela.show();
    QTest::mouseClick(&rotulo(janela, "lblEmail"), Qt::LeftButton);
    confereEmail();
}

TEST_F(About, OpensSiteAndMailByTheKeyboard) {
    frmAbout janela(nullptr);
    janela.show();
    QTest::keyClick(&rotulo(janela, "lblSite"), Qt::Key_Return);
    confereSite();
    enderecos.abertos.clear();
    QTest::keyClick(&rotulo(janela, "lblEmail"), Qt::Key_Space);
    confereEmail();
    EXPECT_TRUE(janela.isVisible()) << "Enter on a link must not press OK";
}

TEST_F(About, ReachesItsLinksByTab) {
    frmAbout janela(nullptr);
    janela.show();
    QApplication::setActiveWindow(&janela);
    QStringList ordem;
    for (int i = 0; i < 3; ++i) {
        ordem << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(ordem,
              (QStringList{QStringLiteral("cmdOk"), QStringLiteral("lblSite"), QStringLiteral("lblEmail")}));
}

TEST_F(About, DoesNothingForTheOtherButtonsOfTheMouse) {
    frmAbout janela(nullptr);
    janela.show();
    QTest::mouseClick(&rotulo(janela, "lblSite"), Qt::RightButton);
    EXPECT_TRUE(enderecos.abertos.empty());
}

TEST_F(About, GivesNoMessageForWhatTheDesktopDoesNotOpen) {
    objTramadorValidador->setSiteLink("");
    frmAbout janela(nullptr);
    janela.show();
    const Caixas caixas;
    QTest::mouseClick(&rotulo(janela, "lblSite"), Qt::LeftButton);
    EXPECT_TRUE(caixas.vistas().empty());
    EXPECT_TRUE(enderecos.abertos.empty());
    EXPECT_THAT(files::readAll(oLogger->getFilename()), testing::Not(testing::HasSubstr("FATAL")));
}

TEST_F(About, ClosesByItsButton) {
    frmAbout janela(nullptr);
    janela.show();
    QTest::mouseClick(janela.findChild<QPushButton*>(QStringLiteral("cmdOk")), Qt::LeftButton);
    EXPECT_FALSE(janela.isVisible());
}

TEST_F(About, LogsThatThereIsNoCatalog) {
    objTramadorValidador.reset();
    const frmAbout janela(nullptr);
    EXPECT_EQ(rotulo(janela, "lblTitle").text(), QString());
    EXPECT_THAT(files::readAll(oLogger->getFilename()), testing::HasSubstr("[91]"));
}

/// A machine with these programs only.
class SystemInformation : public testing::Test {
protected:
    TemporaryFolder programas;
    QByteArray antes = qgetenv("PATH");

    SystemInformation() { qputenv("PATH", QByteArray::fromStdString(programas.text())); }
    ~SystemInformation() override { qputenv("PATH", antes); }
    SystemInformation(const SystemInformation&) = delete;
    SystemInformation& operator=(const SystemInformation&) = delete;

    void instala(const char* nome, const std::string& texto) const {
        const auto arquivo = programas.write(nome, texto);
        std::filesystem::permissions(arquivo, std::filesystem::perms::owner_all);
    }
};

TEST_F(SystemInformation, RunsTheProgramOfTheDesktop) {
    instala("hardinfo", "#!/bin/sh\n: > \"" + programas.text() + "/correu\"\n");
    SystemInfo::mostra();
    EXPECT_TRUE(QTest::qWaitFor([this] { return programas.holds("correu"); }, 30000));
}

TEST_F(SystemInformation, PrefersTheProgramThatTellsMost) {
    instala("gnome-system-monitor", "");
    EXPECT_EQ(SystemInfo::programa(), paraQt(programas.text() + "/gnome-system-monitor"));
    instala("kinfocenter", "");
    EXPECT_EQ(SystemInfo::programa(), paraQt(programas.text() + "/kinfocenter"));
}

TEST_F(SystemInformation, TellsThatThereIsNoProgram) {
    Caixas caixas{QStringLiteral("OK")};
    frmAbout(nullptr).informacoesDoSistema();
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("System Information Is Unavailable At This Time"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::NoIcon);
    EXPECT_EQ(caixas.vistas()[0].titulo, paraQt(aplicacao::titulo()));
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList{QStringLiteral("OK")});
}

} // namespace
