#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QTest>
#include <QTimer>

#include <functional>

namespace tv::test {

/// Answers the next dialog of the system that comes up: sets it, then presses its button.
class RespostaDeDialogo : public QObject {
public:
    RespostaDeDialogo(QDialogButtonBox::ButtonRole papel, std::function<void(QDialog&)> prepara)
        : papel_(papel)
        , prepara_(std::move(prepara)) {
        connect(&relogio_, &QTimer::timeout, this, [this] { olha(); });
        relogio_.start(5);
    }
    bool respondida() const { return respondida_; }

private:
    void olha() {
        auto* dialogo = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (respondida_ || dialogo == nullptr || !dialogo->isVisible()) {
            return;
        }
        respondida_ = true;
        prepara_(*dialogo);
        const auto* caixa = dialogo->findChild<QDialogButtonBox*>();
        for (QAbstractButton* botao : caixa->buttons()) {
            if (caixa->buttonRole(botao) == papel_) {
                QTest::mouseClick(botao, Qt::LeftButton);
                return;
            }
        }
    }

    QDialogButtonBox::ButtonRole papel_;
    std::function<void(QDialog&)> prepara_;
    QTimer relogio_;
    bool respondida_ = false;
};

} // namespace tv::test
