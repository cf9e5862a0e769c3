#include "app/windows/frmObjetos.h"

#include "platform/Error.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QToolButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>

namespace tv {
namespace {

constexpr const char* chaves[] = {
    "imgAdd",       "imgBoleto",   "imgCloseButton", "imgCloseWindow", "imgDocuments",
    "imgEdit",      "imgError",    "imgExcel",       "imgFundo",       "imgNew",
    "imgOK",        "imgPreview",  "imgPrint",       "imgProcessando", "imgRemove",
    "imgResult",    "imgRun",      "imgSave",        "imgStop",        "imgTORVA",
    "imgValidador", "imgTramador", "imgAjuda",       "imgSair",        "imgAtualizacao",
    "imgSobre",     "imgCascata",  "imgHorizontal",  "imgVertical",    "imgFecharJanelas",
    "imgAnterior",  "imgProximo",  "imgLocalizar"};

/// A theme for the life of the object.
class Tema {
public:
    Tema(const QColor& janela, const QColor& texto)
        : antes_(QApplication::palette()) {
        QPalette paleta = antes_;
        paleta.setColor(QPalette::Window, janela);
        paleta.setColor(QPalette::WindowText, texto);
        paleta.setColor(QPalette::Disabled, QPalette::WindowText, Qt::gray);
        paleta.setColor(QPalette::HighlightedText, QColor(0xFE, 0xFE, 0xFE));
        QApplication::setPalette(paleta);
    }
    ~Tema() { QApplication::setPalette(antes_); }
    Tema(const Tema&) = delete;
    Tema& operator=(const Tema&) = delete;

private:
    QPalette antes_;
};

struct TemaDado {
    const char* nome;
    QRgb janela;
    QRgb texto;
};

constexpr TemaDado temas[] = {
    {"light", 0xFFFFFFFF, 0xFF000000}, {"grey", 0xFFEFEFEF, 0xFF202020}, {"dark", 0xFF2B2B2B, 0xFFEEEEEE}};

double canal(int valor) {
    const double parte = valor / 255.0;
    return parte <= 0.03928 ? parte / 12.92 : std::pow((parte + 0.055) / 1.055, 2.4);
}

/// Relative luminance, from 0 for black to 1 for white.
double luminancia(const QColor& cor) {
    return 0.2126 * canal(cor.red()) + 0.7152 * canal(cor.green()) + 0.0722 * canal(cor.blue());
}

/// From 1 for the same brightness to 21 for black on white.
double contraste(const QColor& a, const QColor& b) {
    const double deA = luminancia(a) + 0.05;
    const double deB = luminancia(b) + 0.05;
    return std::max(deA, deB) / std::min(deA, deB);
}

QImage pintada(const QIcon& icone, int lado, qreal escala, QIcon::Mode modo = QIcon::Normal) {
    return icone.pixmap(QSize(lado, lado), escala, modo).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// Colours of the dots that are wholly covered.
std::vector<QColor> coresCheias(const QImage& imagem) {
    std::vector<QColor> cores;
    for (int y = 0; y < imagem.height(); ++y) {
        for (int x = 0; x < imagem.width(); ++x) {
            if (imagem.pixelColor(x, y).alpha() == 255) {
                cores.push_back(imagem.pixelColor(x, y));
            }
        }
    }
    return cores;
}

/// How much of the picture is covered, from 0 to 1.
double coberta(const QImage& imagem) {
    double soma = 0;
    for (int y = 0; y < imagem.height(); ++y) {
        for (int x = 0; x < imagem.width(); ++x) {
            soma += qAlpha(imagem.pixel(x, y)) / 255.0;
        }
    }
    return soma / (imagem.width() * imagem.height());
}

class ImagemTest : public ::testing::TestWithParam<const char*> {
protected:
    QIcon icone() const { return frmObjetos::imagem(QString::fromLatin1(GetParam())); }
};

TEST_P(ImagemTest, IsDrawnAtEverySizeAndScale) {
    for (const int lado : {16, 24, 32, 48, 64}) {
        for (const qreal escala : {1.0, 2.0, 3.0}) {
            const QImage imagem = pintada(icone(), lado, escala);
            const int pontos = static_cast<int>(lado * escala);
            ASSERT_EQ(imagem.size(), QSize(pontos, pontos));
            ASSERT_DOUBLE_EQ(icone().pixmap(QSize(lado, lado), escala).devicePixelRatio(), escala);
            EXPECT_GT(coberta(imagem), 0.05) << lado << " at " << escala;
            EXPECT_LT(coberta(imagem), 0.75) << lado << " at " << escala;
        }
    }
}

TEST_P(ImagemTest, StandsOutOnLightAndDarkThemes) {
    for (const TemaDado& dado : temas) {
        const Tema tema{QColor(dado.janela), QColor(dado.texto)};
        const auto cores = coresCheias(pintada(icone(), 48, 1));
        ASSERT_FALSE(cores.empty());
        for (const QColor& cor : cores) {
            ASSERT_GE(contraste(cor, QColor(dado.janela)), 3.0)
                << dado.nome << ": " << cor.name().toStdString();
        }
    }
}

TEST_P(ImagemTest, FollowsAChangeOfThePalette) {
    const QIcon mesmo = icone();
    QImage clara;
    {
        const Tema tema{Qt::white, Qt::black};
        clara = pintada(mesmo, 24, 1);
    }
    const Tema tema{Qt::black, Qt::white};
    const QImage escura = pintada(mesmo, 24, 1);
    const std::set<std::string> soAcentos = {"imgError", "imgOK", "imgRun", "imgStop"};
    EXPECT_EQ(clara == escura, soAcentos.contains(GetParam()));
}

TEST_P(ImagemTest, IsDrawnInOneColourWhenDisabledOrSelected) {
    const Tema tema{Qt::white, Qt::black};
    for (const auto& [modo, esperada] : {std::tuple{QIcon::Disabled, QColor(Qt::gray)},
                                         std::tuple{QIcon::Selected, QColor(0xFE, 0xFE, 0xFE)}}) {
        const auto cores = coresCheias(pintada(icone(), 48, 1, modo));
        ASSERT_FALSE(cores.empty());
        EXPECT_TRUE(
            std::all_of(cores.begin(), cores.end(), [&](const QColor& cor) { return cor == esperada; }));
    }
}

TEST_P(ImagemTest, KeysCompareWithoutRegardToCase) {
    const QString chave = QString::fromLatin1(GetParam());
    const QImage imagem = pintada(icone(), 24, 1);
    EXPECT_EQ(pintada(frmObjetos::imagem(chave.toUpper()), 24, 1), imagem);
    EXPECT_EQ(pintada(frmObjetos::imagem(chave.toLower()), 24, 1), imagem);
}

TEST_P(ImagemTest, IsNoOtherPicture) {
    const QImage imagem = pintada(icone(), 48, 1);
    for (const char* outra : chaves) {
        if (std::string_view(outra) != GetParam()) {
            EXPECT_NE(pintada(frmObjetos::imagem(QString::fromLatin1(outra)), 48, 1), imagem) << outra;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(frmObjetos, ImagemTest, ::testing::ValuesIn(chaves),
                         [](const auto& given) { return std::string(given.param); });

TEST(FrmObjetosTest, EveryPictureHasItsKeyInTheTable) {
    frmObjetos::imagem(QStringLiteral("imgOK")); // makes the pictures known
    const QStringList arquivos = QDir(QStringLiteral(":/imagens")).entryList();
    EXPECT_EQ(arquivos.size(), static_cast<qsizetype>(std::size(chaves)));
}

TEST(FrmObjetosTest, AnUnknownKeyRaisesError35601) {
    for (const char* chave : {"imgNada", "", "imgOK.svg", "OK"}) {
        try {
            frmObjetos::imagem(QString::fromLatin1(chave));
            ADD_FAILURE() << "no error for " << chave;
        } catch (const Error& erro) {
            EXPECT_EQ(erro.number(), 35601) << chave;
        }
    }
}

TEST(FrmObjetosTest, IsAHiddenWindowWithALabel) {
    const frmObjetos objetos;
    EXPECT_EQ(objetos.objectName(), QStringLiteral("frmObjetos"));
    EXPECT_FALSE(objetos.isVisible());
    EXPECT_EQ(objetos.findChildren<QLabel*>().size(), 1);
}

TEST(FrmObjetosTest, AnIconPaintsItselfInTheMiddleOfItsPlace) {
    QImage tela(60, 40, QImage::Format_ARGB32);
    tela.fill(Qt::white);
    QPainter pincel(&tela);
    frmObjetos::imagem(QStringLiteral("imgStop")).paint(&pincel, QRect(10, 10, 40, 20));
    pincel.end();
    EXPECT_EQ(tela.pixelColor(12, 20), QColor(Qt::white));
    EXPECT_NE(tela.pixelColor(30, 20), QColor(Qt::white));
    EXPECT_EQ(tela.pixelColor(48, 20), QColor(Qt::white));
}

TEST(FrmObjetosTest, AToolButtonShowsIt) {
    QToolButton botao;
    botao.setIconSize(QSize(24, 24));
    const QImage vazio = botao.grab().toImage();
    botao.setIcon(frmObjetos::imagem(QStringLiteral("imgSave")));
    EXPECT_NE(botao.grab().toImage(), vazio);
}

TEST(LogotipoTest, IsWideAndAsHighAsAskedFor) {
    for (const int altura : {24, 32, 48, 60}) {
        const QPixmap logo = frmObjetos::logotipo(altura);
        EXPECT_DOUBLE_EQ(logo.deviceIndependentSize().height(), altura);
        EXPECT_GT(logo.width(), 3 * logo.height());
        EXPECT_GT(coberta(logo.toImage()), 0.1);
    }
}

TEST(LogotipoTest, FollowsThePalette) {
    QImage clara;
    {
        const Tema tema{Qt::white, Qt::black};
        clara = frmObjetos::logotipo(40).toImage();
    }
    const Tema tema{Qt::black, Qt::white};
    EXPECT_NE(frmObjetos::logotipo(40).toImage(), clara);
}

TEST(LogotipoTest, AHeightOfNothingStillGivesAPicture) {
    EXPECT_FALSE(frmObjetos::logotipo(0).isNull());
}

} // namespace
} // namespace tv
