#include "validation/windows/Bancada.h"

#include <QFrame>
#include <QHeaderView>
#include <QMdiSubWindow>
#include <QStatusBar>

using namespace tv;
using namespace tv::test;

namespace {

class frmValidadorAbertura : public Bancada {};

} // namespace

TEST_F(frmValidadorAbertura, TitleNamesTheLayout) {
    abre();
    const QString titulo = QStringLiteral("Validador de Posição - 1.0");
    EXPECT_EQ(janela->windowTitle(), titulo);
    EXPECT_EQ(janela->findChild<QLabel*>(QStringLiteral("lblTitulo"))->text(), titulo);
    EXPECT_EQ(grade().caption(), titulo);
    EXPECT_EQ(grade().property("caption").toString(), titulo);
    EXPECT_FALSE(janela->windowIcon().isNull());
    EXPECT_EQ(painel(), QStringLiteral("Pronto"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(janela->objectName(), QStringLiteral("frmValidador"));
    EXPECT_TRUE(janela->isVisible());
    EXPECT_FALSE(janela->executando());
}

TEST_F(frmValidadorAbertura, WindowIsEnrolledUnderItsTitle) {
    abre();
    EXPECT_EQ(janela->janelaID(), QStringLiteral("janela_00000"));
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 1U);
}

TEST_F(frmValidadorAbertura, SeveralWindowsOfOneLayout) {
    const auto layout = pasta.posicao();
    const frmValidador& primeira = abre(layout);
    EXPECT_NE(&primeira, &abre(layout));
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 2U);
}

TEST_F(frmValidadorAbertura, FailureIsToldAndClosesTheWindow) {
    Caixas caixas{QStringLiteral("OK")};
    auto& nova = criaJanela<frmValidador>();
    const QPointer<frmValidador> viva(&nova);
    nova.abrir(nullptr);
    ASSERT_EQ(caixas.vistas().size(), 1U);
    EXPECT_EQ(caixas.vistas()[0].texto, QStringLiteral("Não é possível abrir o Validador!"));
    EXPECT_EQ(caixas.vistas()[0].icone, QMessageBox::Warning);
    EXPECT_TRUE(espera([&] { return !viva; }));
    EXPECT_TRUE(registrou("[91]"));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(frmValidadorAbertura, ToolBarHasTheKeysOfTheTable) {
    abre();
    QStringList botoes;
    for (const QAction* uma : barra().actions()) {
        botoes << (uma->isSeparator() ? QStringLiteral("-")
                                      : uma->objectName() + QLatin1Char('=') + uma->text());
        EXPECT_TRUE(uma->isSeparator() || !uma->icon().isNull()) << uma->text().toStdString();
        EXPECT_TRUE(uma->isSeparator() || !uma->toolTip().isEmpty());
        EXPECT_TRUE(uma->isEnabled());
    }
    EXPECT_EQ(botoes.join(QLatin1Char(' ')),
              QStringLiteral("btnAdicionar=Adicionar btnRemover=Remover - btnEditar=Editar - "
                             "btnValidar=Validar - btnResultado=Resultado - btnFechar=Fechar"));
}

TEST_F(frmValidadorAbertura, ColumnsLookAsTheTableSays) {
    abre();
    struct Linha {
        const char* nome;
        const char* titulo;
        bool oculta;
        const char* formato;
        bool courier;
    };
    const std::vector<Linha> tabela{
        {"status", "Status", false, "", false}, {"boleto", "Boleto", false, "", true},
        {"arquivo", "", true, "", false},       {"tamanho", "Tamanho", false, "###,##0.00\\ \\K\\B", true},
        {"tempo", "Tempo", false, "", true},    {"isValid", "", true, "", false},
        {"validou", "", true, "", false},       {"isNew", "", true, "", false},
        {"isModified", "", true, "", false},
    };
    ASSERT_EQ(modelo().columnCount(), static_cast<int>(tabela.size()));
    for (int i = 0; i < modelo().columnCount(); ++i) {
        const Linha& linha = tabela[static_cast<std::size_t>(i)];
        const ColunaGrade& coluna = modelo().coluna(i);
        EXPECT_EQ(modelo().indice(linha.nome), i);
        EXPECT_EQ(coluna.titulo.toStdString(), linha.titulo) << linha.nome;
        EXPECT_EQ(coluna.oculta, linha.oculta) << linha.nome;
        EXPECT_EQ(grade().isColumnHidden(i), linha.oculta) << linha.nome;
        EXPECT_EQ(coluna.formato, linha.formato) << linha.nome;
        EXPECT_FALSE(coluna.editavel) << linha.nome;
        EXPECT_EQ(coluna.fonte.has_value(), linha.courier) << linha.nome;
        if (coluna.fonte) {
            EXPECT_EQ(coluna.fonte->family(), QStringLiteral("Courier New"));
        }
    }
}

TEST_F(frmValidadorAbertura, ControlsFollowTheWindowsSize) {
    abre();
    auto* moldura = qobject_cast<QMdiSubWindow*>(janela->parentWidget());
    moldura->showNormal();
    for (const QSize tamanho : {QSize(900, 500), QSize(1200, 640), QSize(720, 420)}) {
        moldura->resize(tamanho);
        QCoreApplication::processEvents();
        const auto* titulo = janela->findChild<QFrame*>(QStringLiteral("frmTitulo"));
        const auto* logo = janela->findChild<QLabel*>(QStringLiteral("imgTORVA"));
        const auto* situacao = janela->findChild<QStatusBar*>(QStringLiteral("statusBar"));
        const auto* painelGrade = dynamic_cast<const PainelGrade*>(grade().parentWidget());
        ASSERT_NE(painelGrade, nullptr);
        EXPECT_EQ(titulo->width(), janela->width() - 10);
        EXPECT_GE(logo->x() + logo->width(), titulo->width() - 10);
        EXPECT_LE(logo->x() + logo->width(), titulo->width());
        EXPECT_EQ(painelGrade->width(), titulo->width());
        EXPECT_EQ(painelGrade->y() + painelGrade->height(), situacao->y());
        EXPECT_EQ(situacao->y() + situacao->height(), janela->height());
        EXPECT_EQ(grade().columnWidth(modelo().indice("boleto")), grade().width() - 338);
        for (const char* fixa : {"status", "tamanho", "tempo"}) {
            EXPECT_EQ(grade().columnWidth(modelo().indice(fixa)), 100) << fixa;
        }
    }
}

TEST_F(frmValidadorAbertura, EveryControlHasAnAccessibleName) {
    abre();
    for (const char* nome : {"toolbar", "grid", "statusBar", "lblTitulo", "frmTitulo", "imgTORVA"}) {
        const auto* controle = janela->findChild<QWidget*>(QString::fromLatin1(nome));
        ASSERT_NE(controle, nullptr) << nome;
        EXPECT_FALSE(controle->accessibleName().isEmpty()) << nome;
    }
}

TEST_F(frmValidadorAbertura, CloseButtonTakesTheWindowOutOfTheList) {
    abre();
    clica("btnFechar");
    EXPECT_TRUE(espera([&] { return !janela; }));
    EXPECT_EQ(mdiMain::instancia().janelas().Count(), 0U);
}

TEST_F(frmValidadorAbertura, ClosingDropsTheLayout) {
    auto layout = pasta.posicao();
    const std::weak_ptr<const clsBoleto> observado = layout;
    abre(layout);
    layout.reset();
    EXPECT_FALSE(observado.expired());
    janela->closeWindow();
    EXPECT_TRUE(observado.expired());
    EXPECT_TRUE(espera([&] { return !janela; }));
}

TEST_F(frmValidadorAbertura, KeysOfButtonsThatAreNotThereDoNothing) {
    abre();
    acrescentaBotao("btnOutro");
    clica("btnOutro");
    EXPECT_EQ(painel(), QStringLiteral("Pronto"));
}
