#include "app/windows/frmObjetos.h"

#include "common/windows/textoQt.h"
#include "platform/Error.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <algorithm>
#include <utility>

/// The pictures are linked in with the library; a macro that must stand outside of all namespaces.
static void registraImagens() {
    Q_INIT_RESOURCE(imagens);
}

namespace tv {

namespace {

constexpr int imagemInexistente = 35601;

/// Files of the pictures by their keys in lower case.
const QHash<QString, QString>& arquivos() {
    static const QHash<QString, QString> unico = [] {
        registraImagens();
        QHash<QString, QString> achados;
        const auto pasta = QDir(QStringLiteral(":/imagens")).entryInfoList(QDir::Files);
        for (const QFileInfo& arquivo : pasta) {
            achados.insert(arquivo.completeBaseName().toLower(), arquivo.filePath());
        }
        return achados;
    }();
    return unico;
}

QString arquivoDe(const QString& chave) {
    const auto achado = arquivos().constFind(chave.toLower());
    if (achado == arquivos().cend()) {
        throw Error(imagemInexistente, "frmObjetos", "Não há imagem com a chave \"" + paraUtf8(chave) + "\"");
    }
    return *achado;
}

/// Colour in which strokes are drawn: that of the text beside them, or the one that was asked for.
QColor corDoTraco(QIcon::Mode modo, const QColor& pedida = {}) {
    const QPalette paleta = QApplication::palette();
    if (pedida.isValid() && modo != QIcon::Selected) {
        return pedida;
    }
    switch (modo) {
    case QIcon::Disabled:
        return paleta.color(QPalette::Disabled, QPalette::WindowText);
    case QIcon::Selected:
        return paleta.color(QPalette::Active, QPalette::HighlightedText);
    case QIcon::Normal:
    case QIcon::Active:
        break;
    }
    return paleta.color(QPalette::Active, QPalette::WindowText);
}

/// Accents of colour would lie about a button that is off and drown in the colour of a selection.
bool emUmaCor(QIcon::Mode modo) {
    return modo == QIcon::Disabled || modo == QIcon::Selected;
}

void carrega(QSvgRenderer& desenho, const QString& arquivo, const QColor& cor) {
    QFile fonte(arquivo);
    if (!fonte.open(QIODevice::ReadOnly)) {
        return;
    }
    desenho.load(fonte.readAll().replace("currentColor", cor.name().toLatin1()));
    desenho.setAspectRatioMode(Qt::KeepAspectRatio);
}

/// The drawing in the middle of a transparent picture of `tamanho` pixels of the screen.
QPixmap desenha(const QString& arquivo, QSize tamanho, QIcon::Mode modo, const QColor& traco = {}) {
    const QColor cor = corDoTraco(modo, traco);
    const QString chave = QStringLiteral("%1|%2x%3|%4|%5")
                              .arg(arquivo)
                              .arg(tamanho.width())
                              .arg(tamanho.height())
                              .arg(cor.name())
                              .arg(emUmaCor(modo));
    QPixmap imagem;
    if (tamanho.isEmpty() || QPixmapCache::find(chave, &imagem)) {
        return imagem;
    }
    imagem = QPixmap(tamanho);
    imagem.fill(Qt::transparent);
    QSvgRenderer desenho;
    carrega(desenho, arquivo, cor);
    QPainter pincel(&imagem);
    desenho.render(&pincel, QRectF(QPointF(0, 0), tamanho));
    if (emUmaCor(modo)) {
        pincel.setCompositionMode(QPainter::CompositionMode_SourceIn);
        pincel.fillRect(imagem.rect(), cor);
    }
    pincel.end();
    QPixmapCache::insert(chave, imagem);
    return imagem;
}

/// Draws a picture anew at each size and scale that is asked for, so that it is sharp on every screen and
/// follows the palette when the theme changes.
class MotorDeDesenho : public QIconEngine {
public:
    explicit MotorDeDesenho(QString arquivo, const QColor& traco = {})
        : arquivo_(std::move(arquivo))
        , traco_(traco) {}

    void paint(QPainter* pincel, const QRect& area, QIcon::Mode modo, QIcon::State) override {
        const qreal escala = pincel->device()->devicePixelRatio();
        pincel->drawPixmap(area, desenha(arquivo_, (QSizeF(area.size()) * escala).toSize(), modo, traco_));
    }
    QPixmap pixmap(const QSize& tamanho, QIcon::Mode modo, QIcon::State) override {
        return desenha(arquivo_, tamanho, modo, traco_);
    }
    QPixmap scaledPixmap(const QSize& tamanho, QIcon::Mode modo, QIcon::State, qreal) override {
        return desenha(arquivo_, tamanho, modo, traco_);
    }
    QSize actualSize(const QSize& tamanho, QIcon::Mode, QIcon::State) override { return tamanho; }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        return {{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}};
    }
    bool isNull() override { return false; }
    QString key() const override { return QStringLiteral("tvDesenho"); }
    QIconEngine* clone() const override { return new MotorDeDesenho(arquivo_, traco_); }

private:
    QString arquivo_;
    QColor traco_; // invalid for the palette's
};

} // namespace

frmObjetos::frmObjetos() {
    setObjectName(QStringLiteral("frmObjetos"));
    setAccessibleName(QStringLiteral("Imagens"));
    auto* rotulo = new QLabel(QStringLiteral("Imagens"), this);
    rotulo->setObjectName(QStringLiteral("lblObjetos"));
    rotulo->setAccessibleName(rotulo->text());
}

frmObjetos::~frmObjetos() = default;

QIcon frmObjetos::imagem(const QString& chave) {
    return QIcon(new MotorDeDesenho(arquivoDe(chave))); // the icon owns its engine
}

QIcon frmObjetos::imagemSobreClaro(const QString& chave) {
    return QIcon(new MotorDeDesenho(arquivoDe(chave), Qt::black));
}

QPixmap frmObjetos::logotipo(int altura) {
    const QString arquivo = arquivoDe(QStringLiteral("imgTORVA"));
    QSvgRenderer medida;
    carrega(medida, arquivo, Qt::black);
    const QSizeF natural = medida.defaultSize();
    const qreal escala = qApp->devicePixelRatio();
    const qreal pontos = std::max(altura, 1) * escala;
    QPixmap logo =
        desenha(arquivo, QSizeF(pontos * natural.width() / natural.height(), pontos).toSize(), QIcon::Normal);
    logo.setDevicePixelRatio(escala);
    return logo;
}

} // namespace tv
