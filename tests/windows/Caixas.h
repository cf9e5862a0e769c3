#pragma once

#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <functional>
#include <vector>

namespace tv::test {

/// A message box as the user saw it.
struct Caixa {
    QString titulo;
    QString texto;
    QMessageBox::Icon icone;
    QStringList botoes; ///< Without mnemonics, left to right.
};

/// Answers the message boxes that come up while it lives: each by the next answer of its queue (a button's
/// text without its mnemonic). A box without an answer fails the test and is closed. Answers left over fail
/// it too.
class Caixas : public QObject {
    Q_OBJECT
public:
    explicit Caixas(std::initializer_list<QString> respostas = {});
    ~Caixas() override;

    void responde(const QString& resposta) { respostas_.push_back(resposta); }
    /// Runs while the next box stands on the screen, before it is answered.
    std::function<void(QMessageBox&)> aoVer;
    const std::vector<Caixa>& vistas() const { return vistas_; }

private:
    void olha();

    QTimer relogio_;
    std::deque<QString> respostas_;
    std::vector<Caixa> vistas_;
};

} // namespace tv::test
