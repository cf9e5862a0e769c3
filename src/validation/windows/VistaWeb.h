#pragma once

#include "validation/BuscaNoRelatorio.h"
#include "validation/windows/VistaRelatorio.h"

#include <QWebEngineFindTextResult>
#include <QWebEnginePage>
#include <QWebEngineUrlRequestInterceptor>

#include <filesystem>
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
    /// Scrolls to a named place of the page and makes it its target.
    void vaiPara(const QString& ancora);
    const GuardaDePedidos& guarda() const noexcept { return guarda_; }

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType tipo, bool principal) override;
    QWebEnginePage* createWindow(WebWindowType tipo) override;

private:
    GuardaDePedidos guarda_;
};

/// The report in the web engine. The engine's own search lays out the whole page, which takes many seconds
/// for tens of thousands of findings; in such a report a search goes from finding to finding instead.
class VistaWeb final : public VistaRelatorio {
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
    bool muitasOcorrencias();
    void procuraOcorrencia(const QString& texto, bool paraTras);
    void terminaImpressao(bool certo);
    void esperaImpressao();
    void roda(int angulo);

    std::shared_ptr<QWebEngineProfile> perfil_; ///< Shared by all reports; outlives the page.
    std::unique_ptr<PaginaWeb> pagina_;
    QWebEngineView* brwReport_;
    std::unique_ptr<QPrinter> impressora_;
    AoImprimir aoTerminar_;                   ///< Set while a print is under way.
    std::filesystem::path arquivo_;           ///< Of the page.
    std::unique_ptr<BuscaNoRelatorio> busca_; ///< Made at the first search.
    int rodado_ = 0; ///< Eighths of a degree that the wheel turned beyond the last step.
};

} // namespace tv
