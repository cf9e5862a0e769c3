// What goes wrong with documents: files that cannot be read or written, and saves that do not come about.
#include "composer/Amostras.h"
#include "composer/windows/BancadaTramador.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "platform/format.h"
#include "windows/DialogosDeArquivo.h"

#include <csignal>
#include <optional>
#include <sys/resource.h>
#include <unistd.h>

using namespace tv;
using namespace tv::test;

namespace {

/// No file may grow beyond this size while the object lives, as on a disk without room.
class DiscoCheio {
public:
    explicit DiscoCheio(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &antes_);
        const rlimit agora{bytes, antes_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &agora);
    }
    ~DiscoCheio() { setrlimit(RLIMIT_FSIZE, &antes_); }
    DiscoCheio(const DiscoCheio&) = delete;
    DiscoCheio& operator=(const DiscoCheio&) = delete;

private:
    rlimit antes_{};
};

class frmTramadorFalhas : public BancadaTramador {
protected:
    frmTramadorFalhas() {
        if (::geteuid() == 0) {
            qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1"); // there is none for root
        }
    }
    void abreAmostra() {
        abre("arquivoposicao_4_01");
        janela->abrirBoleto(caminhoQt(pastaDasAmostras() / "arquivoposicao_4_01/valido_pequeno.xml"));
        estado().salvo = false;
    }
    QString destino(const char* nome) const { return caminhoQt(programa.caminho() / nome); }
    std::size_t arquivosCom(const char* final) const {
        std::size_t achados = 0;
        for (const auto& arquivo : std::filesystem::directory_iterator(programa.caminho())) {
            achados += arquivo.path().extension() == final ? 1U : 0U;
        }
        return achados;
    }
    /// What the next box says below its text.
    void guardaExplicacao(Caixas& caixas) {
        caixas.aoVer = [this](const QMessageBox& caixa) { explicacao = caixa.informativeText(); };
    }
    QString explicacao;
};

constexpr const char* falhaAoSalvar = "Falha ao tentar salvar o boleto!";

} // namespace

TEST_F(frmTramadorFalhas, FullDiskLeavesTheOldFileWholeAndIsTold) {
    abreAmostra();
    programa.escreve("velho.xml", "antes");
    const DialogosDeArquivo dialogos; // the save does not come that far
    Caixas caixas{q("OK")};
    guardaExplicacao(caixas);
    {
        const DiscoCheio cheio(2000);
        clica("btnSalvar");
    }
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q(falhaAoSalvar));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(caixas.vistas()[0].titulo, paraQt(aplicacao::titulo()));
    EXPECT_FALSE(explicacao.isEmpty());
    EXPECT_EQ(programa.le("velho.xml"), "antes");
    EXPECT_EQ(arquivosCom(".TMP"), 0U);
    EXPECT_FALSE(estado().salvo);
    EXPECT_EQ(painel(2), q("Pronto"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(frmTramadorFalhas, DiskThatFillsUpAtTheEndLeavesTheOldFileWhole) {
    abreAmostra();
    programa.escreve("velho.xml", "antes");
    DialogosDeArquivo dialogos{{destino("velho.xml")}};
    std::optional<DiscoCheio> cheio;
    dialogos.aoVer = [&](QFileDialog&) { cheio.emplace(2000); }; // the temporary file stands already
    Caixas caixas{q("OK")};
    clica("btnSalvar");
    cheio.reset();
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q(falhaAoSalvar));
    EXPECT_EQ(programa.le("velho.xml"), "antes");
    EXPECT_EQ(arquivosCom(".TMP"), 0U);
    EXPECT_FALSE(estado().salvo);
    EXPECT_NE(estado().arquivo, paraUtf8(destino("velho.xml")));
}

TEST_F(frmTramadorFalhas, WithoutACopyTheOldFileStays) {
    abreAmostra();
    programa.escreve("velho.xml", "antes");
    const std::string copia = "velho_xml_" + format::format(clock::now(), "YYYYMMDD") + ".bkp";
    std::filesystem::create_directory(programa.caminho() / copia);
    DialogosDeArquivo dialogos{{destino("velho.xml")}};
    Caixas caixas{q("OK")};
    guardaExplicacao(caixas);
    clica("btnSalvar");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q(falhaAoSalvar));
    EXPECT_TRUE(explicacao.contains(paraQt(copia))) << explicacao.toStdString();
    EXPECT_EQ(programa.le("velho.xml"), "antes");
    EXPECT_FALSE(estado().salvo);
}

TEST_F(frmTramadorFalhas, FolderWithoutRoomForTheTemporaryFileIsTold) {
    abreAmostra();
    const std::filesystem::path pasta = aplicacao::pasta();
    aplicacao::setPasta(programa.caminho() / "nenhuma");
    Caixas caixas{q("OK")};
    clica("btnSalvar");
    aplicacao::setPasta(pasta);
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q(falhaAoSalvar));
}

TEST_F(frmTramadorFalhas, ValueThatNoXmlHoldsIsTold) {
    abreAmostra();
    preenche(0, "nome", std::string("a\x01z"));
    Caixas caixas{q("OK")};
    clica("btnSalvar");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q(falhaAoSalvar));
    EXPECT_FALSE(estado().salvo);
    EXPECT_EQ(arquivosCom(".TMP"), 0U);
}

TEST_F(frmTramadorFalhas, LoadThatFailsKeepsWhatWasRead) {
    abre("ArquivoPosicao_2_01");
    std::string xml = files::readAll(pastaDasAmostras() / "ArquivoPosicao_2_01/errado_data_inexistente.xml");
    programa.escreve("ruim.xml", xml);
    Caixas caixas{q("Sim"), q("OK")};
    janela->abrirBoleto(destino("ruim.xml"));
    ASSERT_EQ(caixas.vistas().size(), 2U);
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList({q("Sim"), q("Não")}));
    EXPECT_EQ(caixas.vistas()[1].texto, q("Falha ao tentar abrir o boleto!"));
    EXPECT_EQ(caixas.vistas()[1].icone, QMessageBox::Warning);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(arvore().updatesEnabled());
}

TEST_F(frmTramadorFalhas, FileThatIsNotThereIsNotOpened) {
    abre("ArquivoPosicao_2_01");
    Caixas caixas{q("Não")};
    janela->abrirBoleto(destino("nenhum.xml"));
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, q("Boleto inválido!\n\nDeseja abrir o editor?"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Critical);
    EXPECT_TRUE(linhasDoDocumento(documento()).empty());
}

TEST_F(frmTramadorFalhas, DocumentThatWasNotSavedStaysWhenAnotherIsOpened) {
    abreAmostra();
    const auto linhas = linhasDoDocumento(documento());
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    Caixas caixas{q("Sim")};
    clica("btnAbrir");
    ASSERT_EQ(dialogos.vistos().size(), 1U);
    EXPECT_EQ(dialogos.vistos()[0].titulo, q("Salvar Boleto como ..."));
    EXPECT_EQ(linhasDoDocumento(documento()), linhas);
    EXPECT_EQ(arvore().topLevelItemCount(), 1);
    EXPECT_FALSE(estado().salvo);
}

TEST_F(frmTramadorFalhas, DocumentThatWasNotSavedStaysWhenANewOneIsAskedFor) {
    abreAmostra();
    const auto linhas = linhasDoDocumento(documento());
    DialogosDeArquivo dialogos{DialogosDeArquivo::cancela(), {destino("salvo.xml")}};
    Caixas caixas{q("Sim")};
    clica("btnNovo");
    EXPECT_EQ(linhasDoDocumento(documento()), linhas);
    caixas.responde(q("Sim"));
    caixas.responde(q("OK"));
    clica("btnNovo");
    EXPECT_EQ(caixas.vistas().back().texto, q("Salvo com sucesso"));
    EXPECT_TRUE(linhasDoDocumento(documento()).empty());
    EXPECT_TRUE(programa.tem("salvo.xml"));
}

TEST_F(frmTramadorFalhas, UnsavedDocumentIsSavedWhenItIsToBeValidated) {
    abreAmostra();
    DialogosDeArquivo dialogos{{destino("salvo.xml")}};
    Caixas caixas{q("OK")};
    clica("btnValidar");
    EXPECT_EQ(caixas.vistas().at(0).texto, q("Salvo com sucesso"));
    EXPECT_TRUE(programa.tem("salvo.xml"));
}
