#pragma once

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QObject>

#include <string>
#include <vector>

namespace tv::test {

/// Writes down what progress windows ("title|description") and status panels say while it lives, each time
/// that they are drawn with another text.
class Andamento : public QObject {
public:
    Andamento() { qApp->installEventFilter(this); }

    std::vector<std::string> textos;

    bool eventFilter(QObject* objeto, QEvent* evento) override {
        if (evento->type() == QEvent::Paint) {
            if (objeto->objectName() == QLatin1String("frmMensagem")) {
                anota(textoDe(*objeto, "lblTitulo") + "|" + textoDe(*objeto, "txtDescricao"));
            } else if (objeto->objectName() == QLatin1String("panel1")) {
                anota(static_cast<QLabel*>(objeto)->text().toStdString());
            }
        }
        return false;
    }

private:
    static std::string textoDe(const QObject& janela, const char* nome) {
        return janela.findChild<QLabel*>(QString::fromLatin1(nome))->text().toStdString();
    }
    void anota(const std::string& texto) {
        if (textos.empty() || textos.back() != texto) {
            textos.push_back(texto);
        }
    }
};

} // namespace tv::test
