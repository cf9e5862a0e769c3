#include "common/windows/ctlCmDlg.h"

#include "common/windows/RespostaDeDialogo.h"
#include "common/windows/textoQt.h"
#include "logging/LogFolder.h"
#include "platform/Throws.h"
#include "windows/DialogosDeArquivo.h"

#include <QColorDialog>
#include <QFontDialog>
#include <QFontInfo>
#include <QMetaProperty>
#include <QPrinter>
#include <QTest>
#include <QVariant>

#include <gtest/gtest.h>

using namespace tv;
using namespace tv::test;

namespace {

struct Propriedade {
    const char* nome;
    QVariant inicial;
    QVariant outro;
};

const Propriedade propriedades[] = {
    {"CancelError", false, true},
    {"MultiSelect", false, true},
    {"DefaultFilename", QString(), QStringLiteral("fundo.xml")},
    {"DialogTitle", QString(), QStringLiteral("Abrir")},
    {"InitialDir", QString(), QStringLiteral("/tmp")},
    {"Filter", QString(), QStringLiteral("Tudo | *")},
    {"FilterIndex", QVariant::fromValue<qint16>(1), QVariant::fromValue<qint16>(2)},
    {"FontName", QStringLiteral("Arial"), QStringLiteral("Verdana")},
    {"FontSize", 10.0, 12.5},
    {"FontColor", 0, 0x0000FF},
    {"FontBold", false, true},
    {"FontItalic", false, true},
    {"FontUnderline", false, true},
    {"FontStrikeThru", false, true},
};

TEST(DialogControl, HasItsPropertiesUnderTheirNamesWithTheirDefaults) {
    ctlCmDlg dialogo;
    for (const auto& [nome, inicial, outro] : propriedades) {
        EXPECT_EQ(dialogo.property(nome), inicial) << nome;
        EXPECT_TRUE(dialogo.setProperty(nome, outro)) << nome;
        EXPECT_EQ(dialogo.property(nome), outro) << nome;
    }
}

TEST(DialogControl, LetsItsResultsBeReadOnly) {
    ctlCmDlg dialogo;
    for (const char* nome : {"FileName", "FileNames"}) {
        EXPECT_TRUE(dialogo.property(nome).isValid()) << nome;
        EXPECT_FALSE(dialogo.setProperty(nome, QVariant())) << nome;
    }
    EXPECT_EQ(dialogo.FileName(), QString());
    EXPECT_EQ(dialogo.FileTitle(), QString());
}

TEST(DialogControl, TurnsPairsIntoFiltersThatTakeCapitalsToo) {
    const std::pair<const char*, QStringList> filtros[] = {
        {"Arquivos XML (*.xml) | *.xml", {QStringLiteral("Arquivos XML (*.xml) (*.xml *.XML)")}},
        {"XML|*.xml|Esquemas|*.xsd;*.xsl",
         {QStringLiteral("XML (*.xml *.XML)"), QStringLiteral("Esquemas (*.xsd *.XSD *.xsl *.XSL)")}},
        {"Todos | *", {QStringLiteral("Todos (*)")}},
        {"Todos | *.*", {QStringLiteral("Todos (*.*)")}},
        {"", {}},
        {"Sem padrão", {}},
    };
    for (const auto& [pares, esperados] : filtros) {
        EXPECT_EQ(ctlCmDlg::filtros(paraQt(pares)), esperados) << pares;
    }
}

class FileDialogs : public testing::Test {
protected:
    TemporaryFolder pasta;
    ctlCmDlg controle;

    FileDialogs() { controle.InitialDir = caminhoQt(pasta.path()); }
    QString arquivo(const char* nome) const { return caminhoQt(pasta.write(nome, "<a/>")); }
    QString caminho(const char* nome) const { return caminhoQt(pasta.path() / nome); }
};

TEST_F(FileDialogs, RaiseTheCancelErrorWhenItIsWanted) {
    controle.CancelError = true;
    for (bool (ctlCmDlg::*mostra)() : {&ctlCmDlg::ShowOpen, &ctlCmDlg::ShowSave}) {
        DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
        try {
            (controle.*mostra)();
            ADD_FAILURE() << "no error";
        } catch (const Error& erro) {
            EXPECT_EQ(erro.number(), 32755);
            EXPECT_EQ(erro.source(), "cmdlg98.chm");
            EXPECT_EQ(erro.description(), "Cancel was selected.");
        }
    }
}

TEST_F(FileDialogs, TellACancellationByTheirResultOtherwise) {
    DialogosDeArquivo dialogos{{arquivo("a.xml")}, DialogosDeArquivo::cancela()};
    EXPECT_TRUE(controle.ShowOpen());
    EXPECT_EQ(controle.FileTitle(), QStringLiteral("a.xml"));
    EXPECT_FALSE(controle.ShowOpen());
    EXPECT_EQ(controle.FileNames(), QStringList()) << "nothing is left of the choice before";
}

TEST_F(FileDialogs, BeginInTheInitialFolderWithTheProposedName) {
    controle.DefaultFilename = QStringLiteral("fundo.xml");
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    controle.ShowSave();
    EXPECT_EQ(dialogos.vistos().at(0).pasta, caminhoQt(pasta.path()));
    EXPECT_EQ(dialogos.vistos().at(0).nome, QStringLiteral("fundo.xml"));
}

TEST_F(FileDialogs, LeaveTheChoiceOfAFolderThatIsNotThereToTheSystem) {
    controle.InitialDir = caminho("longe");
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    EXPECT_FALSE(controle.ShowOpen());
    EXPECT_TRUE(QFileInfo(dialogos.vistos().at(0).pasta).isDir());
}

TEST_F(FileDialogs, PreferTheProposedNamesOwnFolder) {
    arquivo("sub/a.xml");
    controle.DefaultFilename = caminho("sub/novo.xml");
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela(), DialogosDeArquivo::cancela()};
    controle.ShowSave();
    EXPECT_EQ(dialogos.vistos().at(0).pasta, caminho("sub"));
    controle.DefaultFilename = caminho("longe/novo.xml");
    controle.ShowSave();
    EXPECT_EQ(dialogos.vistos().at(1).pasta, caminhoQt(pasta.path()));
    EXPECT_EQ(dialogos.vistos().at(1).nome, QStringLiteral("novo.xml"));
}

TEST_F(FileDialogs, ShowTheFilterOfTheirIndex) {
    controle.Filter = QStringLiteral("XML (*.xml) | *.xml | XLS (*.xls) | *.xls");
    QStringList escolhidos;
    for (const std::int16_t indice : {std::int16_t{1}, std::int16_t{2}, std::int16_t{9}, std::int16_t{0}}) {
        controle.FilterIndex = indice;
        DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
        dialogos.aoVer = [&](const QFileDialog& dialogo) { escolhidos << dialogo.selectedNameFilter(); };
        controle.ShowOpen();
        EXPECT_EQ(dialogos.vistos().at(0).filtros,
                  (QStringList{QStringLiteral("XML (*.xml)"), QStringLiteral("XLS (*.xls)")}));
    }
    const QString xml = QStringLiteral("XML (*.xml)");
    EXPECT_EQ(escolhidos, (QStringList{xml, QStringLiteral("XLS (*.xls)"), xml, xml}));
}

TEST_F(FileDialogs, OfferFilesWhateverTheCaseOfTheirExtension) {
    controle.Filter = QStringLiteral("Arquivos XML (*.xml) | *.xml");
    for (const char* nome : {"FUNDO.XML", "fundo.xml", "Fundo.Xml"}) {
        const QString escolhido = arquivo(nome);
        DialogosDeArquivo dialogos{{escolhido}};
        EXPECT_TRUE(controle.ShowOpen()) << nome;
        EXPECT_EQ(controle.FileName(), escolhido);
    }
}

TEST_F(FileDialogs, GiveTheFirstOfSeveralFilesAsTheOneChosen) {
    const QStringList escolhidos{arquivo("a.xml"), arquivo("b.xml")};
    controle.MultiSelect = true;
    DialogosDeArquivo dialogos{{QStringLiteral("a.xml"), QStringLiteral("b.xml")}};
    EXPECT_TRUE(controle.ShowOpen());
    EXPECT_EQ(controle.FileNames(), escolhidos);
    EXPECT_EQ(controle.FileName(), escolhidos.at(0));
}

using OtherDialogs = FileDialogs;

TEST_F(OtherDialogs, ChooseAFontThroughTheFontProperties) {
    controle.DialogTitle = QStringLiteral("Fonte do texto");
    controle.FontName = QFontInfo(QFont(QStringLiteral("Sans Serif"))).family(); // one that is installed
    controle.FontBold = true;
    QFont antes;
    QString titulo;
    const RespostaDeDialogo resposta(QDialogButtonBox::AcceptRole, [&](QDialog& dialogo) {
        auto& fontes = dynamic_cast<QFontDialog&>(dialogo);
        antes = fontes.currentFont();
        titulo = fontes.windowTitle();
        QFont outra(antes.family(), 14);
        outra.setUnderline(true);
        outra.setStrikeOut(true);
        fontes.setCurrentFont(outra);
    });
    EXPECT_TRUE(controle.ShowFont());
    EXPECT_EQ(titulo, QStringLiteral("Fonte do texto"));
    EXPECT_EQ(antes.family(), controle.FontName);
    EXPECT_EQ(antes.pointSizeF(), 10);
    EXPECT_TRUE(antes.bold());
    EXPECT_EQ(controle.FontSize, 14);
    EXPECT_FALSE(controle.FontBold);
    EXPECT_TRUE(controle.FontUnderline);
    EXPECT_TRUE(controle.FontStrikeThru);
}

TEST_F(OtherDialogs, KeepTheFontWhenTheyAreCancelled) {
    const RespostaDeDialogo resposta(QDialogButtonBox::RejectRole, [](QDialog& dialogo) {
        dynamic_cast<QFontDialog&>(dialogo).setCurrentFont(QFont(QStringLiteral("Verdana"), 20));
    });
    EXPECT_FALSE(controle.ShowFont());
    EXPECT_EQ(controle.FontName, QStringLiteral("Arial"));
    EXPECT_EQ(controle.FontSize, 10);
}

TEST_F(OtherDialogs, ChooseAColourWithRedInItsLowestByte) {
    controle.FontColor = 0x0000FF;
    QColor antes;
    const RespostaDeDialogo resposta(QDialogButtonBox::AcceptRole, [&](QDialog& dialogo) {
        auto& cores = dynamic_cast<QColorDialog&>(dialogo);
        antes = cores.currentColor();
        cores.setCurrentColor(QColor(0x12, 0x34, 0x56));
    });
    EXPECT_TRUE(controle.ShowColor());
    EXPECT_EQ(antes, QColor(Qt::red));
    EXPECT_EQ(controle.FontColor, 0x563412);
}

TEST_F(OtherDialogs, ChooseThePageAndThePrinter) {
    controle.impressora().setOutputFileName(caminho("saida.pdf"));
    for (bool (ctlCmDlg::*mostra)() : {&ctlCmDlg::ShowPageSetup, &ctlCmDlg::ShowPrinter}) {
        const RespostaDeDialogo resposta(QDialogButtonBox::AcceptRole, [](QDialog&) {});
        EXPECT_TRUE((controle.*mostra)());
        EXPECT_TRUE(resposta.respondida());
    }
}

TEST_F(OtherDialogs, RaiseTheCancelErrorToo) {
    controle.CancelError = true;
    controle.impressora().setOutputFileName(caminho("saida.pdf"));
    for (bool (ctlCmDlg::*mostra)() :
         {&ctlCmDlg::ShowFont, &ctlCmDlg::ShowColor, &ctlCmDlg::ShowPageSetup, &ctlCmDlg::ShowPrinter}) {
        const RespostaDeDialogo resposta(QDialogButtonBox::RejectRole, [](QDialog&) {});
        EXPECT_EQ(errorOf([&] { (controle.*mostra)(); }), ctlCmDlg::cancelado);
    }
}

} // namespace
