#pragma once

#include "common/windows/ImpressaoGrade.h"

#include <QDialog>
#include <QPrinter>

class QAction;
class QLabel;
class QPrintPreviewWidget;
class QToolBar;

namespace tv {

/// The print preview of a grid: its pages as they come out of the printer, with buttons to print them, to set
/// up the page and to leave.
class PrevisaoGrade : public QDialog {
    Q_OBJECT
public:
    /// The grid must live as long as the window.
    PrevisaoGrade(const Grade& grade, QWidget* dono);
    ~PrevisaoGrade() override;

    int paginas() const;
    int paginaAtual() const;

private:
    void criaBarra(const Grade& grade);
    QAction* acao(const QString& nome, const QString& texto, const QKeySequence& tecla,
                  void (PrevisaoGrade::*faz)());
    void vaiPara(int pagina);
    void mostraPagina();
    void primeira() { vaiPara(1); }
    void anterior() { vaiPara(paginaAtual() - 1); }
    void proxima() { vaiPara(paginaAtual() + 1); }
    void ultima() { vaiPara(paginas()); }
    void ajustaLargura();
    void ajustaPagina();
    void amplia();
    void reduz();
    void imprime();
    void configura();

    ImpressaoGrade impressao_;
    QPrinter impressora_;
    QPrintPreviewWidget* folhas_ = nullptr;
    QToolBar* barra_;
    QLabel* pagina_;
    QAction* primeira_ = nullptr;
    QAction* anterior_ = nullptr;
    QAction* proxima_ = nullptr;
    QAction* ultima_ = nullptr;
};

} // namespace tv
