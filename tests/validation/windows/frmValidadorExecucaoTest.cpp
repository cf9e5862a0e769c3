#include "validation/windows/Bancada.h"

#include "windows/TempoDeProcessador.h"

#include <QTimer>

#include <gmock/gmock.h>

#include <algorithm>

using namespace tv;
using namespace tv::test;
using ::testing::Each;
using ::testing::ElementsAre;

namespace {

const QString perguntaDeParada = QStringLiteral("Parada solicitada pelo usuário.\n\nDeseja continuar?");

/// The run of a batch. Time makes each file's first text a turn.
class frmValidadorExecucao : public Bancada {
protected:
    frmValidadorExecucao() { abre(); }

    /// The tool bar as "key=caption", disabled buttons in brackets.
    std::string botoes() const {
        std::string todos;
        for (const QAction* uma : barra().actions()) {
            if (!uma->isSeparator()) {
                const std::string este = uma->objectName().toStdString() + "=" + uma->text().toStdString();
                todos += (todos.empty() ? "" : " ") + (uma->isEnabled() ? este : "(" + este + ")");
            }
        }
        return todos;
    }
    /// Presses stop in the turn in which this row is the active one.
    void paraNaLinha(int linha) {
        aoTurno = [this, linha] {
            if (janela && grade().linhaAtiva() == linha && acao("btnParar") != nullptr && !parou_) {
                parou_ = true;
                clica("btnParar");
            }
        };
    }

    RelogioDeTurnos relogio{[this] { turno(); }};

private:
    bool parou_ = false;
};

constexpr const char* parado = "btnAdicionar=Adicionar btnRemover=Remover btnEditar=Editar "
                               "btnValidar=Validar btnResultado=Resultado btnFechar=Fechar";
constexpr const char* correndo = "(btnAdicionar=Adicionar) (btnRemover=Remover) (btnEditar=Editar) "
                                 "btnParar=Parar (btnResultado=Resultado) (btnFechar=Fechar)";

} // namespace

TEST_F(frmValidadorExecucao, EachFileGetsItsState) {
    adiciona({valido("a.xml"), errado("b.xml"), valido("c.xml")});
    clica("btnValidar");
    EXPECT_THAT(estados(), ElementsAre(passou, reprovado, passou));
    EXPECT_EQ(painel(), QStringLiteral("3 Arquivos"));
    EXPECT_FALSE(janela->executando());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_FALSE(grade().testAttribute(Qt::WA_SetCursor));
}

TEST_F(frmValidadorExecucao, LastRowIsActiveAndSelectedInTheEnd) {
    adiciona({valido("a.xml"), errado("b.xml")});
    grade().selecionaLinha(0);
    clica("btnValidar");
    EXPECT_EQ(grade().linhaAtiva(), 1);
    EXPECT_THAT(grade().linhasSelecionadas(), ElementsAre(1));
}

TEST_F(frmValidadorExecucao, NextBatchOverwritesEveryState) {
    const std::string a = valido("a.xml");
    const std::string b = errado("b.xml");
    adiciona({a, b});
    clica("btnValidar");
    static_cast<void>(errado("a.xml"));
    static_cast<void>(valido("b.xml"));
    clica("btnValidar");
    EXPECT_THAT(estados(), ElementsAre(reprovado, passou));
}

TEST_F(frmValidadorExecucao, BadFilesOnlyGiveFindings) {
    const auto some = pasta.write("some.xml", "x");
    adiciona({pasta.write("vazio.xml", "").string(), pasta.write("texto.xml", "nada de XML").string(),
              pasta.write("cortado.xml", "<posicao><fundo>").string(),
              pasta.write("outro.xml", "<outro/>").string(), some.string(), valido("bom.xml")});
    std::filesystem::remove(some);
    clica("btnValidar");
    const auto todos = estados();
    ASSERT_EQ(todos.size(), 6U);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_TRUE(todos[i].starts_with("Não válido|imgError|False|True|00:00|")) << todos[i];
        EXPECT_FALSE(todos[i].ends_with("|-")) << todos[i];
    }
    EXPECT_EQ(todos[5], passou);
}

TEST_F(frmValidadorExecucao, EmptyBatchIsToldAndLogged) {
    Caixas caixas{QStringLiteral("OK")};
    std::string durante;
    caixas.aoVer = [&](QMessageBox&) { durante = botoes(); };
    clica("btnValidar");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Nenhum boleto selecionado!"));
    EXPECT_EQ(caixas.vistas()[0].titulo, paraQt(aplicacao::titulo()));
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList{QStringLiteral("OK")});
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_TRUE(registrou("Nenhum boleto selecionado!"));
    EXPECT_EQ(durante, correndo);
    EXPECT_EQ(botoes(), parado);
    EXPECT_EQ(painel(), QStringLiteral("0 Arquivos"));
}

TEST_F(frmValidadorExecucao, OnlyTheStopButtonIsEnabledMeanwhile) {
    adiciona({valido("a.xml"), valido("b.xml")});
    std::vector<std::string> vistos;
    aoTurno = [&] { vistos.push_back(botoes()); };
    EXPECT_EQ(botoes(), parado);
    clica("btnValidar");
    EXPECT_GE(vistos.size(), 2U);
    EXPECT_THAT(vistos, Each(correndo));
    EXPECT_EQ(botoes(), parado);
}

TEST_F(frmValidadorExecucao, PointersTellThatTheRunIsOn) {
    adiciona({valido("a.xml")});
    Qt::CursorShape janelas = Qt::ArrowCursor;
    Qt::CursorShape daGrade = Qt::ArrowCursor;
    aoTurno = [&] {
        if (const QCursor* cursor = QApplication::overrideCursor()) {
            janelas = cursor->shape();
        }
        daGrade = grade().cursor().shape();
    };
    clica("btnValidar");
    EXPECT_EQ(janelas, Qt::BusyCursor);
    EXPECT_EQ(daGrade, Qt::WaitCursor);
}

TEST_F(frmValidadorExecucao, ActiveRowFollowsAndComesIntoView) {
    QStringList caminhos;
    for (int i = 0; i < 100; ++i) {
        caminhos << paraQt(valido(std::to_string(i) + ".xml"));
    }
    janela->adicionaArquivos(caminhos);
    bool aVista = true;
    aoTurno = [&] {
        if (grade().linhaAtiva() >= 0) {
            const QRect linha = grade().visualRect(modelo().index(grade().linhaAtiva(), 0));
            aVista = aVista && grade().viewport()->rect().contains(linha);
        }
    };
    clica("btnValidar");
    EXPECT_TRUE(aVista);
    EXPECT_THAT(estados(), Each(passou));
}

TEST_F(frmValidadorExecucao, TimeIsMinutesAndSecondsOfEachFile) {
    const std::vector<std::pair<std::chrono::seconds, const char*>> tabela{
        {std::chrono::seconds(0), "00:00"},
        {std::chrono::seconds(67), "01:07"},
        {std::chrono::hours(1) + std::chrono::minutes(2), "02:00"},
        {std::chrono::hours(1) - std::chrono::seconds(1), "59:59"},
    };
    adiciona({valido("a.xml"), errado("b.xml"), valido("c.xml"), valido("d.xml")});
    int feitos = -1;
    aoTurno = [&] { // the clock moves on at the first text of each file
        if (janela->executando() && grade().linhaAtiva() > feitos) {
            feitos = grade().linhaAtiva();
            relogio.avanca(tabela[static_cast<std::size_t>(feitos)].first);
        }
    };
    clica("btnValidar");
    for (int linha = 0; linha < 4; ++linha) {
        EXPECT_EQ(modelo().texto(linha, "tempo").toStdString(),
                  tabela[static_cast<std::size_t>(linha)].second);
    }
}

TEST_F(frmValidadorExecucao, StopAnsweredWithNoLeavesTheRestAsItWas) {
    adiciona({valido("a.xml"), errado("b.xml"), valido("c.xml"), valido("d.xml")});
    paraNaLinha(1);
    const Caixas caixas{QStringLiteral("Não")};
    clica("btnValidar");
    // The file under way is finished first.
    EXPECT_THAT(estados(), ElementsAre(passou, reprovado, adicionado, adicionado));
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, perguntaDeParada);
    EXPECT_EQ(caixas.vistas()[0].titulo, paraQt(aplicacao::titulo()));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Question);
    EXPECT_EQ(caixas.vistas()[0].botoes, (QStringList{QStringLiteral("Sim"), QStringLiteral("Não")}));
    EXPECT_EQ(botoes(), parado);
    EXPECT_EQ(grade().linhaAtiva(), 1);
}

TEST_F(frmValidadorExecucao, StopAnsweredWithYesGoesOnWithTheNextFile) {
    adiciona({valido("a.xml"), errado("b.xml"), valido("c.xml")});
    paraNaLinha(1);
    const Caixas caixas{QStringLiteral("Sim")};
    clica("btnValidar");
    EXPECT_THAT(estados(), ElementsAre(passou, reprovado, passou));
    EXPECT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(botoes(), parado);
}

TEST_F(frmValidadorExecucao, StopDuringTheLastFileAsksAndEndsEitherWay) {
    for (const auto& resposta : {QStringLiteral("Sim"), QStringLiteral("Não")}) {
        abre();
        adiciona({valido("a.xml"), valido("b.xml")});
        bool parou = false;
        aoTurno = [&] {
            if (grade().linhaAtiva() == 1 && acao("btnParar") != nullptr && !parou) {
                parou = true;
                clica("btnParar");
            }
        };
        const Caixas caixas{resposta};
        clica("btnValidar");
        EXPECT_THAT(estados(), ElementsAre(passou, passou));
        EXPECT_EQ(caixas.vistas().size(), 1U);
        EXPECT_FALSE(janela->executando());
    }
}

TEST_F(frmValidadorExecucao, BoxStandsBehindTheFilesResult) {
    adiciona({errado("a.xml"), valido("b.xml")});
    paraNaLinha(0);
    Caixas caixas{QStringLiteral("Sim")};
    std::vector<std::string> durante;
    caixas.aoVer = [&](QMessageBox&) { durante = estados(); };
    clica("btnValidar");
    EXPECT_THAT(durante, ElementsAre(reprovado, adicionado));
}

TEST_F(frmValidadorExecucao, KeysStartAndStop) {
    adiciona({valido("a.xml"), valido("b.xml"), valido("c.xml")});
    bool parou = false;
    aoTurno = [&] {
        if (grade().linhaAtiva() == 1 && !parou) {
            parou = true;
            QTest::keyClick(&grade(), Qt::Key_F5); // has another meaning now, and does nothing
            EXPECT_TRUE(janela->executando());
            QTest::keyClick(&grade(), Qt::Key_Escape);
        }
    };
    const Caixas caixas{QStringLiteral("Não")};
    QTest::keyClick(&grade(), Qt::Key_F5);
    EXPECT_THAT(estados(), ElementsAre(passou, passou, adicionado));
}

TEST_F(frmValidadorExecucao, RowsStayDuringTheRun) {
    adiciona({valido("a.xml"), valido("b.xml"), valido("c.xml")});
    grade().selectAll();
    bool tentou = false;
    aoTurno = [&] {
        if (!tentou && grade().linhaAtiva() == 1) {
            tentou = true;
            grade().selectAll();
            QTest::keyClick(&grade(), Qt::Key_Delete);
            QTest::keyClick(&grade(), Qt::Key_Insert);
            QTest::keyClick(&grade(), Qt::Key_Return);
        }
    };
    clica("btnValidar");
    EXPECT_TRUE(tentou);
    EXPECT_THAT(estados(), ElementsAre(passou, passou, passou));
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 1U);
}

TEST_F(frmValidadorExecucao, FailureEndsTheBatchAndBringsTheToolBarBack) {
    adiciona({valido("a.xml"), valido("b.xml")});
    aoTurno = [&] {
        if (estado(0) == passou) {
            throw Error(errc::overflow, "", "Estouro de teste");
        }
    };
    Caixas caixas{QStringLiteral("OK")};
    clica("btnValidar");
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Falha ao tentar validar boleto(s)!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(botoes(), parado);
    EXPECT_EQ(painel(), QStringLiteral("2 Arquivos"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_THAT(estados(), ElementsAre(passou, adicionado));
    EXPECT_TRUE(registrou("Estouro de teste[6]"));
}

TEST_F(frmValidadorExecucao, TraceNamesTheRun) {
    adiciona({valido("a.xml")});
    clica("btnValidar");
    EXPECT_TRUE(registrou("frmValidador.validaBoleto"));
}

TEST_F(frmValidadorExecucao, MissingSpreadsheetButtonIsPassedOver) {
    QAction* planilha = acrescentaBotao("btnPlanilha");
    adiciona({valido("a.xml")});
    bool ligado = true;
    aoTurno = [&] { ligado = planilha->isEnabled(); };
    clica("btnValidar");
    EXPECT_FALSE(ligado); // where there is such a button, it goes along with the others
    EXPECT_TRUE(planilha->isEnabled());
}

TEST_F(frmValidadorExecucao, TwoWindowsRunOneInsideTheOther) {
    adiciona({valido("a.xml"), valido("b.xml")});
    frmValidador* primeira = janela;
    abre();
    frmValidador* segunda = janela;
    adiciona({errado("c.xml")});
    const auto valida = [](frmValidador* qual) {
        for (QAction* uma : qual->findChild<QToolBar*>(QStringLiteral("toolbar"))->actions()) {
            if (uma->objectName() == QLatin1String("btnValidar")) {
                uma->trigger();
            }
        }
    };
    bool comecou = false;
    aoTurno = [&] {
        if (primeira->executando() && !comecou) {
            comecou = true;
            valida(segunda);
        }
    };
    valida(primeira);
    EXPECT_THAT(estados(), ElementsAre(reprovado));
    janela = primeira;
    EXPECT_THAT(estados(), ElementsAre(passou, passou));
    EXPECT_FALSE(segunda->executando());
}

namespace {

/// A batch of documents of 50 kB, in real time.
class frmValidadorRitmo : public Bancada {
protected:
    std::string grande(int numero) const {
        std::string xml = "<posicao><fundo><header><cnpj>1</cnpj><dt>20240115</dt></header>";
        while (xml.size() < 50'000) {
            xml += "<titulo><cod>LFT</cod><valor>1.5</valor><classe>C</classe></titulo>";
        }
        return pasta.write(std::to_string(numero) + ".xml", xml + "</fundo></posicao>").string();
    }
};

} // namespace

TEST_F(frmValidadorRitmo, ClicksAreServedAllTheWhile) {
    abre();
    QStringList caminhos;
    for (int i = 0; i < 150; ++i) {
        caminhos << paraQt(grande(i));
    }
    janela->adicionaArquivos(caminhos);
    TempoDeProcessador tempo;
    double maiorEspera = 0;
    int servidos = 0;
    QTimer relogio;
    QObject::connect(&relogio, &QTimer::timeout, [&] {
        maiorEspera = std::max(maiorEspera, tempo.reinicia());
        ++servidos;
    });
    relogio.start(1);
    tempo.reinicia();
    clica("btnValidar");
    maiorEspera = std::max(maiorEspera, tempo.decorrido());
    RecordProperty("longest_wait_ms", std::to_string(maiorEspera));
    EXPECT_THAT(estados(), Each(::testing::StartsWith("|imgOK|True|True|")));
    EXPECT_GT(servidos, 5);
    EXPECT_LT(maiorEspera, 100);
}

TEST_F(frmValidadorRitmo, RowsTurnGreenAndRed) {
    abre();
    adiciona({grande(1), grande(2), grande(3)});
    // Each row's status cell as "g"reen, "r"ed or neither.
    const auto cores = [this] {
        const QImage imagem = grade().viewport()->grab().toImage();
        std::string todas;
        for (int linha = 0; linha < modelo().rowCount(); ++linha) {
            const QRect celula = grade().visualRect(modelo().index(linha, 0));
            const QColor cor = imagem.pixelColor(celula.right() - 4, celula.center().y());
            const int sobra = cor.green() - cor.red();
            todas += sobra > 20 ? 'g' : (sobra < -20 ? 'r' : '-');
        }
        return todas;
    };
    EXPECT_EQ(cores(), "---");
    pasta.write("2.xml", "<posicao/>");
    clica("btnValidar");
    EXPECT_EQ(cores(), "grg");
    EXPECT_TRUE(grade().updatesEnabled());
    EXPECT_TRUE(grade().viewport()->updatesEnabled());
}
