#pragma once

#include "model/clsBoleto.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <string_view>

class QPushButton;

namespace tv {

class Grade;
class PainelGrade;

/// Asks which layout to work on.
class frmSelecionaBoleto : public QDialog {
    Q_OBJECT
public:
    explicit frmSelecionaBoleto(QWidget* dono);
    ~frmSelecionaBoleto() override;

    /// Let the user choose among the layouts that have a composer, or a validator. When there is none, a
    /// message tells so.
    void tramador();
    void validador();
    /// Closes the window and gives the layout chosen, null when cancelled.
    std::shared_ptr<const clsBoleto> getBoleto();

    void reject() override;

private:
    using Serve = std::function<bool(const clsBoleto&)>;
    void criaRegistros();
    void criaBotoes();
    void escolhe(std::string_view rotina, const QString& imagem, const Serve& serve);
    void preenche(const QString& imagem, const Serve& serve);
    void ajustaTamanho();
    void cmdOk_Click();

    PainelGrade* painel_;
    Grade& grid_;
    QPushButton* cmdOk_;
    QPushButton* cmdCancel_;
    std::shared_ptr<const clsBoleto> boleto_;
};

} // namespace tv
