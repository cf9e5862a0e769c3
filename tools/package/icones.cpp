#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

// Draws the program's icon at the sizes that desktops ask for.
// icones <drawing.svg> <icon theme's folder> <name> <sizes...>

namespace {

bool desenha(QSvgRenderer& desenho, const QString& tema, const QString& nome, int lado) {
    QImage imagem(lado, lado, QImage::Format_ARGB32_Premultiplied);
    imagem.fill(Qt::transparent);
    QPainter pincel(&imagem);
    desenho.render(&pincel, QRectF(0, 0, lado, lado));
    pincel.end();
    const QString pasta = QStringLiteral("%1/%2x%2/apps").arg(tema).arg(lado);
    return QDir().mkpath(pasta) && imagem.save(pasta + QLatin1Char('/') + nome + QStringLiteral(".png"));
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication aplicacao(argc, argv);
    const QStringList argumentos = QCoreApplication::arguments();
    QSvgRenderer desenho(argumentos.value(1));
    bool certo = desenho.isValid() && argumentos.size() > 4;
    for (const QString& lado : argumentos.mid(4)) {
        certo = certo && desenha(desenho, argumentos.at(2), argumentos.at(3), lado.toInt());
    }
    if (!certo) {
        static_cast<void>(std::fputs("icones: the icons could not be drawn\n", stderr));
    }
    return certo ? 0 : 1;
}
