#pragma once

#include <QFileDialog>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <functional>
#include <initializer_list>
#include <optional>
#include <vector>

namespace tv::test {

/// A file or folder dialog as the user saw it.
struct DialogoDeArquivo {
    QString nomeObjeto;  ///< "dialogoArquivo" or "dialogoPasta".
    QString titulo;      ///< Of the window.
    QString nome;        ///< In the box for the name.
    QString pasta;       ///< Shown.
    QStringList filtros; ///< As the box of filters shows them.
    QFileDialog::FileMode modo;
    QFileDialog::AcceptMode aceite;
    bool confirmaTroca; ///< Whether it would ask before a file is replaced.
};

/// Answers the file and folder dialogs that come up while it lives, as a user would: each by the next answer
/// of its queue, whose names are typed before the dialog's button is pressed; no names press the other
/// button. A dialog that does not take an answer (its button is disabled) gets the next one. A dialog without
/// an answer fails the test and is left. Answers left over fail it too.
class DialogosDeArquivo : public QObject {
    Q_OBJECT
public:
    explicit DialogosDeArquivo(std::initializer_list<QStringList> respostas = {});
    ~DialogosDeArquivo() override;

    static QStringList cancela() { return {}; }
    void responde(const QStringList& nomes) { respostas_.push_back(nomes); }
    /// Runs while the next dialog stands on the screen, before it is answered.
    std::function<void(QFileDialog&)> aoVer;
    const std::vector<DialogoDeArquivo>& vistos() const { return vistos_; }

private:
    void olha();

    QTimer relogio_;
    std::deque<QStringList> respostas_;
    std::vector<DialogoDeArquivo> vistos_;
};

} // namespace tv::test
