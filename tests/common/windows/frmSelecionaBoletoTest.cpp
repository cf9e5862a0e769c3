#include "common/windows/frmSelecionaBoleto.h"

#include "app/Aplicacao.h"
#include "app/clsTramadorValidador.h"
#include "common/windows/Grade.h"
#include "logging/LogFolder.h"
#include "model/LayoutXml.h"
#include "windows/Caixas.h"
#include "windows/Janelas.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>

namespace tv {
namespace {

using test::Caixas;

/// A layout with one section and one field.
std::string layout(const std::string& tag, const std::string& nome, bool comTramador, bool comValidador) {
    return test::BoletoXml{.tag = tag,
                           .inside = test::SecaoXml{.inside = test::CampoXml{}.xml()}.xml(),
                           .nome = nome,
                           .versao = "3.0",
                           .validador = comValidador ? "teste.xsd" : "",
                           .tramador = comTramador ? "SIM" : "NAO"}
        .xml();
}

/// What a user does with the window once it stands on the screen.
class Usuario : public QObject {
public:
    explicit Usuario(std::function<void(frmSelecionaBoleto&)> age)
        : age_(std::move(age)) {
        connect(&relogio_, &QTimer::timeout, this, [this] { olha(); });
        relogio_.start(5);
    }
    ~Usuario() override { EXPECT_TRUE(agiu_) << "the window did not come up"; }

private:
    void olha() {
        auto* janela = qobject_cast<frmSelecionaBoleto*>(QApplication::activeModalWidget());
        if (!agiu_ && janela != nullptr && janela->isVisible() && janela->isActiveWindow()) {
            agiu_ = true;
            age_(*janela);
            janela->close(); // a user who did nothing would wait for ever
        }
    }

    std::function<void(frmSelecionaBoleto&)> age_;
    QTimer relogio_;
    bool agiu_ = false;
};

Grade& gradeDe(const QWidget& janela) {
    return *janela.findChild<Grade*>(QStringLiteral("grid"));
}

QPushButton* botao(const QWidget& janela, const char* nome) {
    return janela.findChild<QPushButton*>(QLatin1String(nome));
}

void duploClique(const frmSelecionaBoleto& janela, int linha) {
    Grade& grade = gradeDe(janela);
    const QPoint lugar = grade.visualRect(grade.modelo().index(linha, 0)).center();
    QTest::mouseClick(grade.viewport(), Qt::LeftButton, {}, lugar);
    QTest::mouseDClick(grade.viewport(), Qt::LeftButton, {}, lugar);
}

class SelecionaBoleto : public testing::Test {
protected:
    SelecionaBoleto() {
        aplicacao::setTitulo("Boletos de Teste");
        carrega(layout("um", "Um &amp; outro", true, true) + layout("dois", "Só validador", false, true) +
                layout("tres", "Só tramador", true, false) +
                layout("quatro", "Nenhum dos dois", false, false) + layout("cinco", "Ambos", true, true));
    }
    ~SelecionaBoleto() override {
        objTramadorValidador.reset();
        oLogger.reset();
        aplicacao::setTitulo({});
    }
    void carrega(const std::string& boletos) {
        pasta_.write("catalogo.xml",
                     "<?xml version='1.0' encoding='UTF-8'?>\n<TORVA><app><titulo>Boletos de "
                     "Teste</titulo><versao>2.1</versao><site><caption/><link/></site>"
                     "<email><caption/><link/></email><descricao/></app>"
                     "<logger type='TXT' level='ALL'/><configuracao><TABELAS/></configuracao>" +
                         boletos + "</TORVA>");
        objTramadorValidador = std::make_shared<clsTramadorValidador>();
        ASSERT_TRUE(objTramadorValidador->load(pasta_.text(), "catalogo.xml"))
            << objTramadorValidador->lastReason();
    }
    std::string registro() const {
        return oLogger
                   ? files::readAll(pasta_.path() / std::filesystem::path(oLogger->getFilename()).filename())
                   : std::string();
    }
    /// Whether a line of the log holds both texts.
    bool registrou(const char* nivel, const char* texto) const {
        const auto linhas = test::lines(registro());
        return std::any_of(linhas.begin(), linhas.end(), [&](const std::string& linha) {
            return linha.find(nivel) != std::string::npos && linha.find(texto) != std::string::npos;
        });
    }
    QString lista(const frmSelecionaBoleto& janela) {
        QStringList nomes;
        const ModeloGrade& modelo = gradeDe(janela).modelo();
        for (int linha = 0; linha < modelo.rowCount(); ++linha) {
            nomes << modelo.texto(linha, "tag");
        }
        return nomes.join(QLatin1Char(' '));
    }
    std::string escolhido(frmSelecionaBoleto& janela) {
        const auto boleto = janela.getBoleto();
        return boleto ? boleto->getTag() : "";
    }

    test::TemporaryFolder pasta_;
    frmSelecionaBoleto janela_{nullptr};
};

TEST_F(SelecionaBoleto, has_the_record_set_s_columns_with_their_captions) {
    const ModeloGrade& modelo = gradeDe(janela_).modelo();
    const auto& colunas = modelo.dados()->columns();
    ASSERT_EQ(colunas.size(), 3u);
    const struct {
        const char* nome;
        int tamanho;
        QString titulo;
        bool oculta;
    } esperadas[] = {{"boleto", 80, QStringLiteral("Boleto"), false},
                     {"versao", 10, QStringLiteral("Versão"), false},
                     {"tag", 80, QStringLiteral("tag"), true}};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(colunas[i].name, esperadas[i].nome);
        EXPECT_EQ(colunas[i].size, esperadas[i].tamanho);
        EXPECT_EQ(colunas[i].type, ColumnType::FixedChar);
        EXPECT_EQ(modelo.coluna(static_cast<int>(i)).titulo, esperadas[i].titulo);
        EXPECT_EQ(gradeDe(janela_).isColumnHidden(static_cast<int>(i)), esperadas[i].oculta);
    }
    EXPECT_EQ(gradeDe(janela_).caption(), QStringLiteral("Selecione o tipo do Boleto"));
    EXPECT_EQ(gradeDe(janela_).fonteCaption().family(), QStringLiteral("Times New Roman"));
    EXPECT_EQ(gradeDe(janela_).horizontalHeader()->font().family(), QStringLiteral("Verdana"));
    EXPECT_EQ(gradeDe(janela_).font().family(), QStringLiteral("Arial"));
}

TEST_F(SelecionaBoleto, offers_the_layouts_that_have_a_composer) {
    const Usuario usuario([this](frmSelecionaBoleto& janela) {
        EXPECT_EQ(lista(janela), QStringLiteral("um tres cinco"));
        const Grade& grade = gradeDe(janela);
        EXPECT_EQ(grade.modelo().texto(0, "boleto"), QStringLiteral("Um & outro"));
        EXPECT_EQ(grade.modelo().texto(0, "versao"), QStringLiteral("3.0"));
        EXPECT_EQ(grade.modelo().imagem(2, "boleto"), QStringLiteral("imgBoleto"));
        EXPECT_EQ(grade.linhaAtiva(), 0);
        EXPECT_TRUE(janela.isModal());
        EXPECT_TRUE(grade.hasFocus());
    });
    janela_.tramador();
    EXPECT_EQ(escolhido(janela_), "") << "closing without a choice is a cancel";
}

TEST_F(SelecionaBoleto, offers_the_layouts_that_have_a_validator) {
    const Usuario usuario([this](frmSelecionaBoleto& janela) {
        EXPECT_EQ(lista(janela), QStringLiteral("um dois cinco"));
        EXPECT_EQ(gradeDe(janela).modelo().imagem(1, "boleto"), QStringLiteral("imgValidador"));
    });
    janela_.validador();
}

struct Gesto {
    const char* nome;
    std::function<void(frmSelecionaBoleto&)> faz;
    const char* resultado;
};

class Escolha : public SelecionaBoleto, public testing::WithParamInterface<Gesto> {};

TEST_P(Escolha, gives_the_active_row_s_layout_or_nothing) {
    const Usuario usuario(GetParam().faz);
    janela_.tramador();
    EXPECT_FALSE(janela_.isVisible());
    EXPECT_EQ(escolhido(janela_), GetParam().resultado);
}

void clica(const QWidget& janela, const char* nome) {
    QTest::mouseClick(botao(janela, nome), Qt::LeftButton);
}

/// A button pressed by its mnemonic stays down for a moment before it acts.
void mnemonico(frmSelecionaBoleto& janela, Qt::Key tecla) {
    QTest::keyClick(&janela, tecla, Qt::AltModifier);
    EXPECT_TRUE(test::espera([&] { return !janela.isVisible(); }));
}

INSTANTIATE_TEST_SUITE_P(
    frmSelecionaBoleto, Escolha,
    testing::Values(
        Gesto{"ok", [](frmSelecionaBoleto& janela) { clica(janela, "cmdOk"); }, "um"},
        Gesto{"cancelar", [](frmSelecionaBoleto& janela) { clica(janela, "cmdCancel"); }, ""},
        Gesto{"duplo_clique", [](frmSelecionaBoleto& janela) { duploClique(janela, 1); }, "tres"},
        Gesto{"enter_na_grade",
              [](frmSelecionaBoleto& janela) {
                  QTest::keyClick(&gradeDe(janela), Qt::Key_Down);
                  QTest::keyClick(&gradeDe(janela), Qt::Key_Down);
                  QTest::keyClick(&gradeDe(janela), Qt::Key_Return);
              },
              "cinco"},
        Gesto{"esc", [](frmSelecionaBoleto& janela) { QTest::keyClick(&gradeDe(janela), Qt::Key_Escape); },
              ""},
        Gesto{"mnemonico_ok", [](frmSelecionaBoleto& janela) { mnemonico(janela, Qt::Key_O); }, "um"},
        Gesto{"mnemonico_cancelar", [](frmSelecionaBoleto& janela) { mnemonico(janela, Qt::Key_C); }, ""},
        Gesto{"selecao_desfeita",
              [](frmSelecionaBoleto& janela) {
                  gradeDe(janela).setLinhaAtiva(1);
                  gradeDe(janela).selecionaLinha(-1);
                  clica(janela, "cmdOk");
              },
              "tres"}),
    [](const auto& caso) { return std::string(caso.param.nome); });

TEST_F(SelecionaBoleto, a_cancel_forgets_an_earlier_choice) {
    {
        const Usuario usuario([](frmSelecionaBoleto& janela) { clica(janela, "cmdOk"); });
        janela_.tramador();
    }
    EXPECT_EQ(escolhido(janela_), "um");
    const Usuario usuario([this](frmSelecionaBoleto& janela) {
        EXPECT_EQ(lista(janela), QStringLiteral("um tres cinco")) << "the list starts anew";
        clica(janela, "cmdCancel");
    });
    janela_.tramador();
    EXPECT_EQ(escolhido(janela_), "");
}

TEST_F(SelecionaBoleto, the_delete_key_takes_no_layout_away) {
    const Usuario usuario([this](frmSelecionaBoleto& janela) {
        const Caixas caixas;
        QTest::keyClick(&gradeDe(janela), Qt::Key_Delete);
        EXPECT_EQ(gradeDe(janela).modelo().rowCount(), 3);
    });
    janela_.tramador();
}

TEST_F(SelecionaBoleto, tells_when_no_layout_has_a_composer) {
    carrega(layout("dois", "Só validador", false, true));
    Caixas caixas{QStringLiteral("OK")};
    janela_.tramador();
    ASSERT_EQ(caixas.vistas().size(), 1u);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Não há tramadores!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(caixas.vistas()[0].titulo, QStringLiteral("Boletos de Teste"));
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList{QStringLiteral("OK")});
    EXPECT_TRUE(registrou("WARN", "Não há tramadores!")) << registro();
    EXPECT_FALSE(janela_.isVisible());
    EXPECT_EQ(escolhido(janela_), "");
}

TEST_F(SelecionaBoleto, tells_the_same_when_no_layout_has_a_validator) {
    carrega(layout("tres", "Só tramador", true, false));
    Caixas caixas{QStringLiteral("OK")};
    janela_.validador();
    ASSERT_EQ(caixas.vistas().size(), 1u);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Não há tramadores!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_EQ(caixas.vistas()[0].titulo, QStringLiteral("Boletos de Teste"));
    EXPECT_EQ(caixas.vistas()[0].botoes, QStringList{QStringLiteral("OK")});
    EXPECT_TRUE(registrou("WARN", "Não há tramadores!")) << registro();
}

TEST_F(SelecionaBoleto, logs_a_missing_catalog_and_shows_nothing) {
    objTramadorValidador.reset();
    const Caixas caixas;
    janela_.tramador();
    EXPECT_FALSE(janela_.isVisible());
    EXPECT_EQ(escolhido(janela_), "");
}

TEST_F(SelecionaBoleto, shows_every_name_in_full) {
    carrega(layout("um", "Um nome de boleto que é bem mais comprido do que os outros da lista", true, true));
    const Usuario usuario([](frmSelecionaBoleto& janela) {
        const Grade& grade = gradeDe(janela);
        const QFontMetrics letra(grade.font());
        EXPECT_GT(grade.columnWidth(0), letra.horizontalAdvance(grade.modelo().texto(0, "boleto")) + 20);
        EXPECT_EQ(grade.horizontalScrollBar()->maximum(), 0) << "nothing to scroll sideways";
        EXPECT_GE(botao(janela, "cmdOk")->height(), botao(janela, "cmdOk")->sizeHint().height());
    });
    janela_.tramador();
}

TEST_F(SelecionaBoleto, names_its_controls_for_screen_readers) {
    for (const char* nome : {"grid", "cmdOk", "cmdCancel"}) {
        const auto* controle = janela_.findChild<QWidget*>(QLatin1String(nome));
        ASSERT_NE(controle, nullptr) << nome;
        EXPECT_FALSE(controle->accessibleName().isEmpty()) << nome;
    }
    EXPECT_EQ(janela_.objectName(), QStringLiteral("frmSelecionaBoleto"));
    EXPECT_TRUE(botao(janela_, "cmdOk")->isDefault());
}

} // namespace
} // namespace tv
