#pragma once

#include "validation/windows/VistaRelatorio.h"

#include <QWebEngineFindTextResult>
#include <QWebEnginePage>
#include <QWebEngineUrlRequestInterceptor>

#include <memory>

class QWebEngineProfile;
class QWebEngineView;

namespace tv {

/// Lets requests for one page of the disk through, and for blank pages; blocks everything else.
class GuardaDePedidos : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT
public:
    void setPagina(const QUrl& pagina) { pagina_ = pagina; }
    bool permite(const QUrl& url) const;
    void interceptRequest(QWebEngineUrlRequestInfo& pedido) override;

private:
    QUrl pagina_;
};

/// The report's page: no programs run in it, nothing is fetched, and no link leads out of it.
class PaginaWeb : public QWebEnginePage {
    Q_OBJECT
public:
    explicit PaginaWeb(QWebEngineProfile& perfil);

    void abre(const QUrl& pagina);
    const GuardaDePedidos& guarda() const noexcept { return guarda_; }

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType tipo, bool principal) override;
    QWebEnginePage* createWindow(WebWindowType tipo) override;

private:
    GuardaDePedidos guarda_;
};

/// The report in the web engine.
class VistaWeb : public VistaRelatorio {
    Q_OBJECT
public:
    VistaWeb();
    ~VistaWeb() override;

    void abre(const std::filesystem::path& pagina) override;
    void imprime(std::unique_ptr<QPrinter> impressora, AoImprimir aoTerminar) override;
    bool imprimindo() const noexcept override { return static_cast<bool>(aoTerminar_); }
    void copia() override;
    void selecionaTudo() override;
    bool temSelecao() const override;
    double zoom() const override;
    void setZoom(double fator) override;

protected:
    void procura(const QString& texto, bool paraTras) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;

private:
    void terminaImpressao(bool certo);
    void esperaImpressao();
    void roda(int angulo);

    std::shared_ptr<QWebEngineProfile> perfil_; ///< Shared by all reports; outlives the page.
    std::unique_ptr<PaginaWeb> pagina_;
    QWebEngineView* brwReport_;
    std::unique_ptr<QPrinter> impressora_;
    AoImprimir aoTerminar_; ///< Set while a print is under way.
    int rodado_ = 0;        ///< Eighths of a degree that the wheel turned beyond the last step.
};

} // namespace tv
