// Unsaved texts, kept from time to time and brought back.
#include "BancadaEditor.h"

#include "common/windows/GuardaDaJanela.h"
#include "windows/GuardaDeTeste.h"
#include "windows/Janelas.h"

#include <string>

namespace tv::test {
namespace {

const QString ok = QStringLiteral("OK");
const QString sim = QStringLiteral("Sim");
const QString nao = QStringLiteral("Não");

class frmEditorGuarda : public BancadaEditor {
protected:
    TrabalhoGuardado guardado(std::string_view com) const {
        return guardadoCom(
            [com](const TrabalhoGuardado& lido) { return lido.conteudo.find(com) != std::string::npos; });
    }
    void fecha(const QString& resposta) {
        const Caixas caixas{resposta};
        janela->closeWindow();
        EXPECT_TRUE(espera([this] { return janela == nullptr; }));
    }
    void retoma(const TrabalhoGuardado& trabalho) {
        janela = &criaJanela<frmEditor>();
        ASSERT_TRUE(janela->retoma(pasta.posicao(), paraQt(trabalho.arquivo), trabalho.conteudo));
        mdiMain::instancia().addJanela(*janela);
        ativa();
    }

    GuardaApressada apressada;
};

TEST_F(frmEditorGuarda, ATextThatNobodyChangedIsNotKept) {
    abre(documento());
    deixaPassar();
    EXPECT_FALSE(std::filesystem::exists(PastaDeGuarda::doPrograma()->pasta()));
}

TEST_F(frmEditorGuarda, AnUnsavedTextIsKeptUntilItIsSaved) {
    abre(documento());
    digita("x");
    const TrabalhoGuardado lido = guardado("x<?xml");
    EXPECT_EQ(lido.janela, "frmEditor");
    EXPECT_EQ(lido.layout, "posicao");
    EXPECT_EQ(lido.arquivo, paraUtf8(janela->arquivo()));
    const Caixas caixas{ok};
    janela->saveBoleto();
    EXPECT_TRUE(guardados().empty());
    deixaPassar();
    EXPECT_FALSE(std::filesystem::exists(PastaDeGuarda::doPrograma()->pasta()));
}

TEST_F(frmEditorGuarda, ATextThatIsNotWantedIsNotKept) {
    abre(documento());
    digita("x");
    ASSERT_NE(guardado("x<?xml").conteudo, "");
    fecha(nao);
    EXPECT_FALSE(std::filesystem::exists(PastaDeGuarda::doPrograma()->pasta()));
}

TEST_F(frmEditorGuarda, EveryChangeIsKeptUndoingToo) {
    abre(documento());
    digita("xyz");
    ASSERT_NE(guardado("xyz<?xml").conteudo, "");
    tecla(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(guardado("xyz<?xml").conteudo.size(), guardado("").conteudo.size());
    EXPECT_TRUE(espera([] {
        const auto lugares = guardados();
        return lugares.size() == 1 && files::readAll(lugares[0]).find("xyz") == std::string::npos;
    }));
}

TEST_F(frmEditorGuarda, TheTextComesBackUnsavedWithItsCaretAndItsFilesForm) {
    const std::string bytes = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<r>\xE7\xE3o</r>\r\n";
    abre(bytes);
    caixa().seleciona(45, 3);
    tecla(Qt::Key_Delete);
    digita("<a>novo</a>");
    const std::string antes = texto();
    const TrabalhoGuardado lido = guardado("<a>novo</a>");
    ASSERT_NE(lido.conteudo, "");
    const std::int32_t caret = caixa().SelStart();
    fecha(nao);
    EXPECT_EQ(noDisco(), bytes);
    retoma(lido);
    EXPECT_EQ(texto(), antes);
    EXPECT_EQ(caixa().SelStart(), caret);
    EXPECT_FALSE(janela->salvo());
    EXPECT_EQ(janela->windowTitle(),
              QStringLiteral("Editor de XML [") + janela->arquivo() + QLatin1Char(']'));
    digita("1");
    tecla(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(texto(), antes) << "what came back is the first state";
    const Caixas caixas{ok};
    janela->saveBoleto();
    EXPECT_EQ(noDisco().substr(0, 45), bytes.substr(0, 45)) << "encoding and line ends stay";
    EXPECT_NE(noDisco().find("<a>novo</a>"), std::string::npos);
}

TEST_F(frmEditorGuarda, AFileThatChangedMeanwhileIsAskedAbout) {
    abre(documento());
    digita("x");
    const TrabalhoGuardado lido = guardado("x<?xml");
    fecha(nao);
    pasta.write("a.xml", "<outro/>");
    retoma(lido);
    Caixas caixas{nao};
    janela->saveBoleto();
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_TRUE(
        caixas.vistas()[0].texto.startsWith(QStringLiteral("O arquivo foi alterado por outro programa")));
    EXPECT_EQ(noDisco(), "<outro/>");
}

TEST_F(frmEditorGuarda, OtherBytesOpenNoWindow) {
    QPointer<frmEditor> outra = &criaJanela<frmEditor>();
    EXPECT_FALSE(outra->retoma(pasta.posicao(), QStringLiteral("a.xml"), "qualquer coisa"));
    EXPECT_TRUE(espera([&] { return outra == nullptr; }));
    EXPECT_NE(registro().find("FATAL"), std::string::npos);
}

} // namespace
} // namespace tv::test
