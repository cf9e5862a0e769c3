#include "Registros.h"
#include "app/Aplicacao.h"
#include "common/windows/Grade.h"
#include "common/windows/PrevisaoGrade.h"
#include "common/windows/RespostaDeDialogo.h"
#include "common/windows/controleLib.h"
#include "common/windows/textoQt.h"
#include "logging/LogFolder.h"
#include "windows/Janelas.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QStandardPaths>
#include <QToolBar>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace tv {
namespace {

using test::registros;

class ImpressaoGradeTest : public testing::Test {
protected:
    ImpressaoGradeTest() {
        aplicacao::setTitulo("Título do programa");
        impressora_.setOutputFormat(QPrinter::PdfFormat);
        impressora_.setOutputFileName(arquivo());
        impressora_.setPageSize(QPageSize(QPageSize::A4));
    }
    ~ImpressaoGradeTest() override { aplicacao::setTitulo(""); }
    QString arquivo() const { return caminhoQt(pasta_.path() / "saida.pdf"); }
    void abre(int linhas) {
        grade_.modelo().setDados(registros(linhas));
        controleLib::gridInitializeLayout(grade_);
        grade_.setCaption(QStringLiteral("Ações && Opções"));
        coluna("nome", {.titulo = QStringLiteral("Nome"), .largura = 200});
        coluna("ativo", {.titulo = QStringLiteral("Oculta"), .oculta = true});
        coluna("data", {.titulo = QStringLiteral("Data"), .oculta = true});
    }
    void coluna(std::string_view nome, const ColunaGrade& aparencia) {
        grade_.modelo().setColuna(nome, aparencia);
    }
    int imprime() {
        const ImpressaoGrade impressao(grade_);
        impressao.prepara(impressora_);
        const int paginas = impressao.paginas(impressora_);
        impressao.imprime(impressora_);
        return paginas;
    }
    std::string bytes() const { return pasta_.read("saida.pdf"); }
    /// Pages that the file itself names.
    int paginasDoArquivo() const {
        const std::string pdf = bytes();
        int paginas = 0;
        for (std::size_t lugar = pdf.find("/Type /Page\n"); lugar != std::string::npos;
             lugar = pdf.find("/Type /Page\n", lugar + 1)) {
            ++paginas;
        }
        return paginas;
    }
    /// Text of the file's pages, parted by form feeds.
    QStringList texto() const {
        QProcess leitor;
        leitor.start(QStringLiteral("pdftotext"),
                     {QStringLiteral("-layout"), arquivo(), QStringLiteral("-")});
        EXPECT_TRUE(leitor.waitForFinished()) << "pdftotext is needed to read what was printed";
        QStringList paginas = QString::fromUtf8(leitor.readAllStandardOutput()).split(QLatin1Char('\f'));
        if (!paginas.isEmpty() && paginas.constLast().isEmpty()) {
            paginas.removeLast();
        }
        return paginas;
    }

    test::TemporaryFolder pasta_;
    clock::Frozen relogio_{clock::at(2006, 3, 9, 14, 5, 0)};
    Grade grade_{QStringLiteral("grid")};
    QPrinter impressora_{QPrinter::HighResolution};
};

TEST_F(ImpressaoGradeTest, prints_header_titles_rows_and_footer) {
    abre(3);
    EXPECT_EQ(imprime(), 1);
    EXPECT_EQ(paginasDoArquivo(), 1);
    const QStringList paginas = texto();
    ASSERT_EQ(paginas.size(), 1);
    for (const QString& parte :
         {QStringLiteral("Ações & Opções"), QStringLiteral("Título do programa"), QStringLiteral("Nome"),
          QStringLiteral("linha 0"), QStringLiteral("linha 2"), QStringLiteral("2.5"),
          QStringLiteral("09/03/2006 14:05"), QStringLiteral("Página 1 de 1")}) {
        EXPECT_TRUE(paginas[0].contains(parte)) << parte.toStdString() << "\n" << paginas[0].toStdString();
    }
    EXPECT_FALSE(paginas[0].contains(QStringLiteral("Oculta"))) << "hidden columns stay out";
}

TEST_F(ImpressaoGradeTest, repeats_the_titles_and_numbers_the_pages) {
    abre(200);
    const int paginas = imprime();
    EXPECT_GT(paginas, 2);
    EXPECT_EQ(paginasDoArquivo(), paginas);
    const QStringList textos = texto();
    ASSERT_EQ(textos.size(), paginas);
    for (int pagina = 0; pagina < paginas; ++pagina) {
        EXPECT_TRUE(textos[pagina].contains(QStringLiteral("Nome")));
        EXPECT_TRUE(textos[pagina].contains(QStringLiteral("Página %1 de %2").arg(pagina + 1).arg(paginas)));
    }
    EXPECT_TRUE(textos.constLast().contains(QStringLiteral("linha 199")));
}

TEST_F(ImpressaoGradeTest, prints_one_page_of_titles_without_rows) {
    abre(0);
    EXPECT_EQ(imprime(), 1);
    EXPECT_EQ(paginasDoArquivo(), 1);
    EXPECT_TRUE(texto()[0].contains(QStringLiteral("Nome")));
    EXPECT_TRUE(texto()[0].contains(QStringLiteral("Página 1 de 1")));
}

TEST_F(ImpressaoGradeTest, prints_a_page_for_a_grid_without_data) {
    controleLib::gridInitializeLayout(grade_);
    EXPECT_EQ(imprime(), 1);
    EXPECT_TRUE(texto()[0].contains(QStringLiteral("Título do programa")))
        << "which stands in for the caption";
}

TEST_F(ImpressaoGradeTest, lays_the_paper_on_its_side_for_a_wide_grid) {
    abre(1);
    imprime();
    EXPECT_EQ(impressora_.pageLayout().orientation(), QPageLayout::Portrait);
    coluna("nome", {.titulo = QStringLiteral("Nome"), .largura = 900});
    imprime();
    EXPECT_EQ(impressora_.pageLayout().orientation(), QPageLayout::Landscape);
    EXPECT_EQ(paginasDoArquivo(), 1) << "made a little smaller it fits";
}

TEST_F(ImpressaoGradeTest, cuts_a_very_wide_grid_into_bands_of_columns) {
    abre(3);
    coluna("nome", {.titulo = QStringLiteral("Nome"), .largura = 700});
    coluna("valor", {.titulo = QStringLiteral("Valor"), .largura = 700});
    coluna("grupo", {.titulo = QStringLiteral("Grupo"), .largura = 700});
    EXPECT_EQ(imprime(), 3);
    const QStringList paginas = texto();
    ASSERT_EQ(paginas.size(), 3);
    EXPECT_TRUE(paginas[0].contains(QStringLiteral("Nome")));
    EXPECT_FALSE(paginas[0].contains(QStringLiteral("Valor")));
    EXPECT_TRUE(paginas[1].contains(QStringLiteral("Valor")));
    EXPECT_TRUE(paginas[2].contains(QStringLiteral("Grupo")));
    EXPECT_TRUE(paginas[2].contains(QStringLiteral("Página 3 de 3")));
}

TEST_F(ImpressaoGradeTest, draws_pictures) {
    abre(1);
    imprime();
    EXPECT_EQ(bytes().find("/Subtype /Image"), std::string::npos);
    grade_.modelo().setImagem(0, "nome", QStringLiteral("imgOK"));
    imprime();
    EXPECT_NE(bytes().find("/Subtype /Image"), std::string::npos);
}

TEST_F(ImpressaoGradeTest, shows_the_table_of_the_screen_not_the_selection) {
    abre(2);
    grade_.horizontalHeader()->moveSection(1, 0);
    grade_.selecionaLinha(1);
    imprime();
    const QString pagina = texto()[0];
    EXPECT_LT(pagina.indexOf(QStringLiteral("valor")), pagina.indexOf(QStringLiteral("Nome")))
        << "columns stand as the user moved them";
    EXPECT_TRUE(pagina.contains(QStringLiteral("linha 0")));
}

TEST_F(ImpressaoGradeTest, the_window_has_the_last_word_on_header_and_footer) {
    abre(1);
    grade_.aoImprimir = [](TrabalhoImpressao& trabalho) {
        trabalho.cabecalho = QStringLiteral("Cabeçalho da janela");
        trabalho.subtitulo.clear();
        trabalho.rodape = QStringLiteral("Arquivo: a.xml\t\tPágina: <#>");
    };
    imprime();
    const QString pagina = texto()[0];
    EXPECT_TRUE(pagina.contains(QStringLiteral("Cabeçalho da janela")));
    EXPECT_FALSE(pagina.contains(QStringLiteral("Título do programa")));
    EXPECT_LT(pagina.indexOf(QStringLiteral("Arquivo: a.xml")), pagina.indexOf(QStringLiteral("Página: 1")));
}

TEST_F(ImpressaoGradeTest, keeps_a_long_path_of_the_footer_off_the_page_number) {
    abre(1);
    grade_.aoImprimir = [](TrabalhoImpressao& trabalho) {
        trabalho.rodape = QString(400, QLatin1Char('x')) + QStringLiteral("\t\tPágina: <#>");
    };
    imprime();
    EXPECT_TRUE(texto()[0].contains(QStringLiteral("Página: 1")));
}

TEST_F(ImpressaoGradeTest, prints_the_chosen_range_of_pages) {
    abre(200);
    impressora_.setFromTo(2, 3);
    const int paginas = imprime();
    EXPECT_EQ(paginasDoArquivo(), 2);
    EXPECT_TRUE(texto()[0].contains(QStringLiteral("Página 2 de %1").arg(paginas)));
    impressora_.setFromTo(2, 99);
    imprime();
    EXPECT_EQ(paginasDoArquivo(), paginas - 1);
}

TEST_F(ImpressaoGradeTest, refuses_a_printer_that_takes_nothing) {
    abre(1);
    impressora_.setOutputFileName(caminhoQt(pasta_.path() / "nenhuma" / "pasta" / "saida.pdf"));
    EXPECT_THROW(ImpressaoGrade(grade_).imprime(impressora_), Error);
}

TEST_F(ImpressaoGradeTest, the_cost_grows_with_the_rows_only) {
    const auto melhorTempo = [this](int linhas) { // a neighbour on the processor makes one run longer
        abre(linhas);
        double melhor = std::numeric_limits<double>::max();
        for (int vez = 0; vez < 3; ++vez) {
            const test::TempoDeProcessador tempo;
            imprime();
            melhor = std::min(melhor, tempo.decorrido());
        }
        return melhor;
    };
    const double poucas = melhorTempo(2000);
    EXPECT_LT(melhorTempo(8000), 8 * poucas) << "four times the rows, not sixteen times the time";
}

/// The preview on the screen.
class Previsao : public ImpressaoGradeTest {
protected:
    static QAction* acao(const PrevisaoGrade& janela, const char* nome) {
        return janela.findChild<QAction*>(QLatin1String(nome));
    }
    static QString rotulo(const PrevisaoGrade& janela) {
        return janela.findChild<QLabel*>(QStringLiteral("lblPagina"))->text();
    }
    static void mostra(PrevisaoGrade& janela) {
        janela.show();
        ASSERT_TRUE(test::espera([&] { return janela.paginas() > 0; }));
    }
};

TEST_F(Previsao, walks_through_the_pages) {
    abre(200);
    PrevisaoGrade janela(grade_, nullptr);
    mostra(janela);
    const int paginas = janela.paginas();
    EXPECT_GT(paginas, 2);
    EXPECT_EQ(rotulo(janela), QStringLiteral("Página 1 de %1").arg(paginas));
    EXPECT_FALSE(acao(janela, "btnAnterior")->isEnabled());
    acao(janela, "btnProxima")->trigger();
    EXPECT_EQ(janela.paginaAtual(), 2);
    acao(janela, "btnUltima")->trigger();
    EXPECT_EQ(rotulo(janela), QStringLiteral("Página %1 de %1").arg(paginas));
    EXPECT_FALSE(acao(janela, "btnProxima")->isEnabled());
    acao(janela, "btnPrimeira")->trigger();
    EXPECT_EQ(janela.paginaAtual(), 1);
}

TEST_F(Previsao, has_the_grid_s_words_on_its_buttons_and_its_caption_as_title) {
    abre(1);
    PrevisaoGrade janela(grade_, nullptr);
    mostra(janela);
    EXPECT_EQ(acao(janela, "btnImprimir")->text(), QStringLiteral("Imprimir"));
    EXPECT_EQ(acao(janela, "btnConfigurar")->text(), QStringLiteral("Configurar"));
    EXPECT_EQ(acao(janela, "btnFechar")->text(), QStringLiteral("Fechar"));
    EXPECT_EQ(janela.windowTitle(), QStringLiteral("Ações & Opções"));
    EXPECT_FALSE(janela.windowIcon().isNull());
    acao(janela, "btnFechar")->trigger();
    EXPECT_FALSE(janela.isVisible());
}

TEST_F(Previsao, lets_the_window_choose_title_and_picture) {
    abre(1);
    grade_.aoVisualizar = [](PrevisaoImpressao& previsao) {
        previsao.titulo = QStringLiteral("Outro título");
    };
    const PrevisaoGrade janela(grade_, nullptr);
    EXPECT_EQ(janela.windowTitle(), QStringLiteral("Outro título"));
}

/// What stands on the screen while the print dialog is open.
struct Vista {
    QString titulo;
    QString descricao;
};

Vista progressoVisivel() {
    for (const QWidget* janela : QApplication::topLevelWidgets()) {
        if (janela->isVisible() && janela->objectName() == QStringLiteral("frmMensagem")) {
            return {janela->findChild<QLabel*>(QStringLiteral("lblTitulo"))->text(),
                    janela->findChild<QLabel*>(QStringLiteral("txtDescricao"))->text()};
        }
    }
    return {};
}

TEST_F(Previsao, imprimiGrid_shows_the_preview_and_no_progress) {
    abre(1);
    bool previsao = false;
    Vista progresso;
    QTimer relogio;
    QObject::connect(&relogio, &QTimer::timeout, &grade_, [&] {
        QWidget* janela = QApplication::activeModalWidget();
        if (janela != nullptr && janela->isVisible()) {
            previsao = qobject_cast<PrevisaoGrade*>(janela) != nullptr;
            progresso = progressoVisivel();
            QTest::keyClick(janela, Qt::Key_Escape);
        }
    });
    relogio.start(5);
    controleLib::imprimiGrid(grade_, true);
    EXPECT_TRUE(previsao);
    EXPECT_EQ(progresso.titulo, QString());
}

TEST_F(ImpressaoGradeTest, imprimiGrid_shows_its_progress_and_asks_for_the_printer) {
    abre(3);
    const auto logger = test::startLogger(pasta_, clsLogger::typeTXT, library::level::all);
    const test::GlobalLogger global(logger);
    Vista vista;
    const test::RespostaDeDialogo resposta(QDialogButtonBox::RejectRole, [&](QDialog& dialogo) {
        EXPECT_NE(qobject_cast<QPrintDialog*>(&dialogo), nullptr);
        vista = progressoVisivel();
    });
    controleLib::imprimiGrid(grade_, false);
    EXPECT_TRUE(resposta.respondida());
    EXPECT_EQ(vista.titulo, QStringLiteral("Imprimindo Tabela"));
    EXPECT_EQ(vista.descricao, QStringLiteral("Ações & Opções"));
    EXPECT_EQ(progressoVisivel().titulo, QString()) << "it is closed in the end";
    EXPECT_EQ(pasta_.read(std::filesystem::path(logger->getFilename()).filename().string()).find("FATAL"),
              std::string::npos)
        << "a cancel is no failure";
}

TEST_F(ImpressaoGradeTest, imprimiGrid_prints_to_the_printer_chosen) {
    abre(3);
    const test::RespostaDeDialogo resposta(QDialogButtonBox::AcceptRole, [&](QDialog& dialogo) {
        auto* nome = dialogo.findChild<QLineEdit*>(QStringLiteral("filename"));
        ASSERT_NE(nome, nullptr);
        nome->setText(arquivo());
    });
    controleLib::imprimiGrid(grade_, false);
    EXPECT_TRUE(resposta.respondida());
    ASSERT_EQ(paginasDoArquivo(), 1);
    EXPECT_TRUE(texto()[0].contains(QStringLiteral("linha 2")));
}

TEST_F(ImpressaoGradeTest, imprimiGrid_logs_a_failure) {
    abre(3);
    const auto logger = test::startLogger(pasta_, clsLogger::typeTXT, library::level::all);
    const test::GlobalLogger global(logger);
    grade_.aoImprimir = [](TrabalhoImpressao&) { throw Error(errc::invalidCall, "teste", "Sem cabeçalho"); };
    controleLib::imprimiGrid(grade_, false);
    const std::string log = pasta_.read(std::filesystem::path(logger->getFilename()).filename().string());
    EXPECT_NE(log.find("controleLib.imprimiGrid"), std::string::npos);
    EXPECT_NE(log.find("Sem cabeçalho[5]"), std::string::npos);
    EXPECT_EQ(progressoVisivel().titulo, QString());
}

} // namespace
} // namespace tv
