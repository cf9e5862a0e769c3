#include "validation/windows/Bancada.h"
#include "windows/Andamento.h"
#include "windows/DialogosDeArquivo.h"
#include "windows/TempoDeProcessador.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include <gmock/gmock.h>

using namespace tv;
using namespace tv::test;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

namespace {

/// Adding and removing.
class frmValidadorLista : public Bancada {
protected:
    frmValidadorLista() { abre(); }

    std::vector<std::string> arquivos() const {
        std::vector<std::string> todos;
        for (int linha = 0; linha < modelo().rowCount(); ++linha) {
            todos.push_back(paraUtf8(modelo().texto(linha, "arquivo")));
        }
        return todos;
    }

    bool solta(const std::vector<std::filesystem::path>& caminhos) const {
        QMimeData dados;
        QList<QUrl> enderecos;
        for (const auto& caminho : caminhos) {
            enderecos << QUrl::fromLocalFile(caminhoQt(caminho));
        }
        dados.setUrls(enderecos);
        QDragEnterEvent entrada({20, 120}, Qt::CopyAction, &dados, Qt::LeftButton, Qt::NoModifier);
        entrada.ignore();
        QApplication::sendEvent(janela, &entrada);
        if (!entrada.isAccepted()) {
            return false;
        }
        QDropEvent solta({20, 120}, Qt::CopyAction, &dados, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(janela, &solta);
        return true;
    }
};

} // namespace

TEST_F(frmValidadorLista, AddedFileIsUnchecked) {
    const std::string arquivo = pasta.write("a.xml", std::string(2048, 'x')).string();
    adiciona({arquivo});
    ASSERT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(estado(0), adicionado);
    EXPECT_EQ(modelo().texto(0, "boleto").toStdString(), arquivo);
    EXPECT_EQ(modelo().imagem(0, "boleto"), QStringLiteral("imgBoleto"));
    EXPECT_EQ(modelo().texto(0, "isNew"), QStringLiteral("True"));
    EXPECT_EQ(modelo().texto(0, "isModified"), QStringLiteral("False"));
    EXPECT_EQ(painel(), QStringLiteral("1 Arquivos"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(frmValidadorLista, SizeShowsTwoDecimalsAndItsUnit) {
    struct Linha {
        std::size_t bytes;
        const char* texto;
    };
    const std::vector<Linha> tabela{
        {2048, "2.00 KB"}, {1536, "1.50 KB"}, {0, "0.00 KB"}, {5, "0.00 KB"}, {2'000'000, "1,953.13 KB"}};
    for (const Linha& linha : tabela) {
        adiciona({pasta.write(std::to_string(linha.bytes) + ".xml", std::string(linha.bytes, 'x')).string()});
        EXPECT_EQ(modelo().textoVisivel(modelo().rowCount() - 1, modelo().indice("tamanho")).toStdString(),
                  linha.texto);
    }
}

TEST_F(frmValidadorLista, StatusTellsThatFilesAreAddedAndRemoved) {
    const Andamento andamento;
    adiciona({valido("a.xml"), valido("b.xml")});
    grade().selecionaLinha(0);
    const Caixas caixas{QStringLiteral("Sim")};
    janela->removeBoleto();
    EXPECT_THAT(andamento.textos,
                ::testing::IsSupersetOf({"Adicionando boletos ...", "Removendo boletos ..."}));
    EXPECT_EQ(painel(), QStringLiteral("1 Arquivos"));
}

TEST_F(frmValidadorLista, FileThatIsThereIsNotAddedAgain) {
    const std::string arquivo = valido("a.xml");
    adiciona({arquivo});
    adiciona({arquivo});
    EXPECT_THAT(arquivos(), ElementsAre(arquivo));
    EXPECT_EQ(painel(), QStringLiteral("1 Arquivos"));
}

TEST_F(frmValidadorLista, OtherCaseIsAnotherFile) {
    const std::string menor = valido("a.xml");
    const std::string maior = valido("A.xml");
    adiciona({menor});
    adiciona({maior});
    EXPECT_THAT(arquivos(), ElementsAre(menor, maior));
}

TEST_F(frmValidadorLista, MissingFileIsToldAndKeepsWhatWasAdded) {
    Caixas caixas{QStringLiteral("OK")};
    const std::string primeiro = valido("a.xml");
    adiciona({primeiro, pasta.path().string() + "/nada.xml", valido("b.xml")});
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Falha ao tentar adicionar boleto(s)!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_THAT(arquivos(), ElementsAre(primeiro));
    EXPECT_TRUE(registrou("[53]"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(frmValidadorLista, DialogAddsManyFiles) {
    const std::string a = valido("a.xml");
    const std::string b = errado("b.xml");
    DialogosDeArquivo dialogos{{paraQt(a), paraQt(b)}};
    clica("btnAdicionar");
    EXPECT_THAT(arquivos(), UnorderedElementsAre(a, b));
    ASSERT_EQ(dialogos.vistos().size(), 1U);
    EXPECT_EQ(dialogos.vistos()[0].titulo, QStringLiteral("Selecionar Boleto"));
    EXPECT_EQ(dialogos.vistos()[0].modo, QFileDialog::ExistingFiles);
    EXPECT_EQ(painel(), QStringLiteral("2 Arquivos"));
}

TEST_F(frmValidadorLista, CancelledDialogAddsNothing) {
    adiciona({valido("a.xml")});
    const DialogosDeArquivo dialogos{DialogosDeArquivo::cancela()};
    clica("btnAdicionar");
    EXPECT_EQ(modelo().rowCount(), 1);
    EXPECT_EQ(painel(), QStringLiteral("1 Arquivos"));
    EXPECT_TRUE(registrou("[32755]"));
}

TEST_F(frmValidadorLista, InsertOpensTheDialog) {
    const std::string a = valido("a.xml");
    const DialogosDeArquivo dialogos{{paraQt(a)}};
    QTest::keyClick(&grade(), Qt::Key_Insert);
    EXPECT_THAT(arquivos(), ElementsAre(a));
}

TEST_F(frmValidadorLista, ControlOOpensTheDialog) {
    const std::string a = valido("a.xml");
    const DialogosDeArquivo dialogos{{paraQt(a)}};
    QTest::keyClick(&grade(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_THAT(arquivos(), ElementsAre(a));
}

TEST_F(frmValidadorLista, DroppedFilesAndFoldersAreAdded) {
    const std::string a = valido("a.xml");
    const std::string b = valido("pasta/b.xml");
    pasta.write("pasta/leia.txt", "x");
    EXPECT_TRUE(solta({a, pasta.path() / "pasta"}));
    EXPECT_THAT(arquivos(), ElementsAre(a, b));
    EXPECT_TRUE(solta({pasta.path() / "pasta", a}));
    EXPECT_THAT(arquivos(), ElementsAre(a, b));
    EXPECT_EQ(painel(), QStringLiteral("2 Arquivos"));
}

TEST_F(frmValidadorLista, TextIsNotTaken) {
    QMimeData dados;
    dados.setText(QStringLiteral("a.xml"));
    QDragEnterEvent entrada({20, 120}, Qt::CopyAction, &dados, Qt::LeftButton, Qt::NoModifier);
    entrada.ignore();
    QApplication::sendEvent(janela, &entrada);
    EXPECT_FALSE(entrada.isAccepted());
}

TEST_F(frmValidadorLista, LongPathIsKeptWholeAndChecked) {
    const std::string arquivo = valido(std::string(180, 'p') + "/" + std::string(180, 'q') + "/ação.xml");
    ASSERT_GT(arquivo.size(), 252U);
    adiciona({arquivo});
    clica("btnValidar");
    EXPECT_THAT(arquivos(), ElementsAre(arquivo));
    EXPECT_EQ(estado(0), passou);
}

TEST_F(frmValidadorLista, TenThousandFilesAreAddedQuickly) {
    constexpr int quantos = 10'000;
    QStringList caminhos;
    for (int i = 0; i < quantos; ++i) {
        caminhos << paraQt(pasta.write(std::to_string(i) + ".xml", "x").string());
    }
    TempoDeProcessador tempo;
    janela->adicionaArquivos(caminhos);
    const double primeira = tempo.reinicia();
    janela->adicionaArquivos(caminhos);
    const double segunda = tempo.decorrido();
    RecordProperty("first_ms", std::to_string(primeira));
    RecordProperty("second_ms", std::to_string(segunda));
    EXPECT_EQ(modelo().rowCount(), quantos);
    EXPECT_EQ(painel(), QStringLiteral("10,000 Arquivos"));
    EXPECT_LT(primeira, 5000);
    EXPECT_LT(segunda, 2000);
}

TEST_F(frmValidadorLista, RemoveButtonAsksAndLeavesTheCountAsItWas) {
    adiciona({valido("a.xml"), valido("b.xml"), valido("c.xml")});
    grade().selecionaLinha(1);
    Caixas caixas{QStringLiteral("Sim")};
    clica("btnRemover");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto,
              QStringLiteral("Existe uma linha selecionada para remoção.\nDeseja continuar?"));
    EXPECT_EQ(modelo().rowCount(), 2);
    EXPECT_EQ(painel(), QStringLiteral("3 Arquivos"));
}

TEST_F(frmValidadorLista, DeleteKeyRemovesOnce) {
    adiciona({valido("a.xml"), valido("b.xml")});
    grade().selecionaLinha(0);
    Caixas caixas{QStringLiteral("Sim")};
    QTest::keyClick(&grade(), Qt::Key_Delete);
    EXPECT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(modelo().rowCount(), 1);
}

TEST_F(frmValidadorLista, RemoveBoletoWithoutSelectionTellsAndLogs) {
    adiciona({valido("a.xml")});
    grade().clearSelection();
    Caixas caixas{QStringLiteral("OK")};
    janela->removeBoleto();
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Nenhum boleto selecionado!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_TRUE(registrou("Nenhum boleto selecionado!"));
    EXPECT_EQ(modelo().rowCount(), 1);
}

TEST_F(frmValidadorLista, RemoveBoletoAsksForOneAndForSeveral) {
    adiciona({valido("a.xml"), valido("b.xml"), valido("c.xml"), valido("d.xml")});
    Caixas caixas{QStringLiteral("Sim"), QStringLiteral("Não"), QStringLiteral("Sim")};
    grade().selecionaLinha(0);
    janela->removeBoleto();
    EXPECT_EQ(modelo().rowCount(), 3);
    EXPECT_EQ(painel(), QStringLiteral("3 Arquivos"));
    grade().selectAll();
    janela->removeBoleto();
    EXPECT_EQ(modelo().rowCount(), 3);
    EXPECT_EQ(painel(), QStringLiteral("3 Arquivos"));
    janela->removeBoleto();
    EXPECT_EQ(modelo().rowCount(), 0);
    EXPECT_EQ(painel(), QStringLiteral("0 Arquivos"));
    ASSERT_EQ(caixas.vistas().size(), 3U);
    EXPECT_EQ(caixas.vistas()[0].texto,
              QStringLiteral("O boleto selecionado será removido da lista. Deseja continuar?"));
    EXPECT_EQ(caixas.vistas()[1].texto,
              QStringLiteral("Os boletos selecionados serão removidos da lista. Deseja continuar?"));
    for (const Caixa& caixa : caixas.vistas()) {
        EXPECT_EQ(caixa.botoes, (QStringList{QStringLiteral("Sim"), QStringLiteral("Não")}));
        EXPECT_EQ(caixa.icone, QMessageBox::Question);
        EXPECT_EQ(caixa.titulo, paraQt(aplicacao::titulo()));
    }
}

TEST_F(frmValidadorLista, FailingRemovalIsToldAndKeepsTheRows) {
    adiciona({valido("a.xml")});
    grade().clearSelection();
    const auto logger = std::exchange(oLogger, nullptr); // the warning has nowhere to go
    Caixas caixas{QStringLiteral("OK"), QStringLiteral("OK")};
    janela->removeBoleto();
    oLogger = logger;
    ASSERT_EQ(caixas.vistas().size(), 2U);
    EXPECT_EQ(caixas.vistas()[1].texto, QStringLiteral("Falha ao tentar remover boleto(s)!"));
    EXPECT_EQ(caixas.vistas()[1].icone, QMessageBox::Warning);
    EXPECT_EQ(modelo().rowCount(), 1);
}
