#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QString>
#include <QUrl>

#include <vector>

namespace tv::test {

/// Takes the addresses that the program opens while it lives, in the desktop's place.
class EnderecosAbertos : public QObject {
    Q_OBJECT
public:
    EnderecosAbertos() {
        for (const QString& esquema : esquemas()) {
            QDesktopServices::setUrlHandler(esquema, this, "recebe");
        }
    }
    ~EnderecosAbertos() override {
        for (const QString& esquema : esquemas()) {
            QDesktopServices::unsetUrlHandler(esquema);
        }
    }
    EnderecosAbertos(const EnderecosAbertos&) = delete;
    EnderecosAbertos& operator=(const EnderecosAbertos&) = delete;

    std::vector<QUrl> abertos;

public Q_SLOTS:
    void recebe(const QUrl& endereco) {
        abertos.push_back(endereco);
        Q_EMIT abriu(endereco);
    }

Q_SIGNALS:
    void abriu(const QUrl& endereco);

private:
    static QStringList esquemas() {
        return {QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("mailto"),
                QStringLiteral("file")};
    }
};

} // namespace tv::test
