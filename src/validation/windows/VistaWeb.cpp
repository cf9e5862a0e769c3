#include "validation/windows/VistaWeb.h"

#include "common/windows/textoQt.h"
#include "logging/Routine.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "validation/windows/BarraLocalizar.h"

#include <QChildEvent>
#include <QEventLoop>
#include <QPrinter>
#include <QTimer>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>
#include <QWheelEvent>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tv {

namespace {

constexpr double menorZoom = 0.25;
constexpr double maiorZoom = 5.0;
constexpr int passoDaRoda = 120;
constexpr std::chrono::minutes esperaMaxima{5};
constexpr std::size_t ocorrenciasParaOMotor = 2000; ///< Up to so many findings the engine's search is quick.

QUrl semFragmento(const QUrl& url) {
    return url.adjusted(QUrl::RemoveFragment);
}

void fecha(QWebEngineSettings& ajustes) {
    using A = QWebEngineSettings;
    for (const auto ligado :
         {A::JavascriptEnabled, A::JavascriptCanOpenWindows, A::JavascriptCanAccessClipboard,
          A::JavascriptCanPaste, A::LocalStorageEnabled, A::LocalContentCanAccessRemoteUrls,
          A::LocalContentCanAccessFileUrls, A::PluginsEnabled, A::PdfViewerEnabled, A::AutoLoadIconsForPage,
          A::ErrorPageEnabled, A::FullScreenSupportEnabled, A::HyperlinkAuditingEnabled,
          A::DnsPrefetchEnabled, A::WebGLEnabled, A::Accelerated2dCanvasEnabled,
          A::AllowRunningInsecureContent, A::AllowGeolocationOnInsecureOrigins}) {
        ajustes.setAttribute(ligado, false);
    }
    ajustes.setAttribute(A::PrintElementBackgrounds, true);
    ajustes.setAttribute(A::FocusOnNavigationEnabled, false);
    ajustes.setUnknownUrlSchemePolicy(A::DisallowUnknownUrlSchemes);
}

/// Off the record: no cookie, cache or history reaches the disk. It goes with the last report.
std::shared_ptr<QWebEngineProfile> perfilDosRelatorios() {
    static std::weak_ptr<QWebEngineProfile> ultimo;
    auto perfil = ultimo.lock();
    if (!perfil) {
        perfil = std::make_shared<QWebEngineProfile>();
        fecha(*perfil->settings());
        ultimo = perfil;
    }
    return perfil;
}

} // namespace

bool GuardaDePedidos::permite(const QUrl& url) const {
    return url == QUrl(QStringLiteral("about:blank")) ||
           (pagina_.isValid() && semFragmento(url) == semFragmento(pagina_));
}

void GuardaDePedidos::interceptRequest(QWebEngineUrlRequestInfo& pedido) {
    if (!permite(pedido.requestUrl())) {
        pedido.block(true);
    }
}

PaginaWeb::PaginaWeb(QWebEngineProfile& perfil)
    : QWebEnginePage(&perfil) {
    fecha(*settings());
    setUrlRequestInterceptor(&guarda_);
    setBackgroundColor(Qt::white);
}

void PaginaWeb::abre(const QUrl& pagina) {
    guarda_.setPagina(pagina);
    setUrl(pagina);
}

void PaginaWeb::vaiPara(const QString& ancora) {
    QUrl lugar = url();
    lugar.setFragment(ancora);
    setUrl(lugar);
}

bool PaginaWeb::acceptNavigationRequest(const QUrl& url, NavigationType /*tipo*/, bool /*principal*/) {
    return guarda_.permite(url);
}

QWebEnginePage* PaginaWeb::createWindow(WebWindowType /*tipo*/) {
    return nullptr;
}

VistaWeb::VistaWeb()
    : perfil_(perfilDosRelatorios())
    , pagina_(std::make_unique<PaginaWeb>(*perfil_))
    , brwReport_(new QWebEngineView(this)) {
    brwReport_->installEventFilter(this);
    brwReport_->setPage(pagina_.get());
    brwReport_->setAcceptDrops(false);
    brwReport_->setContextMenuPolicy(Qt::CustomContextMenu);
    montaPagina(brwReport_);
    connect(brwReport_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& lugar) { abreMenu(brwReport_->mapToGlobal(lugar)); });
    connect(brwReport_, &QWebEngineView::printFinished, this, &VistaWeb::terminaImpressao);
    connect(pagina_.get(), &QWebEnginePage::loadFinished, this, &VistaWeb::carregou);
    connect(pagina_.get(), &QWebEnginePage::findTextFinished, this,
            [this](const QWebEngineFindTextResult& achados) {
                barra().mostraAchados(achados.activeMatch(), achados.numberOfMatches());
            });
    connect(pagina_.get(), &QWebEnginePage::renderProcessTerminated, this,
            [this](QWebEnginePage::RenderProcessTerminationStatus estado, int /*codigo*/) {
                if (estado != QWebEnginePage::NormalTerminationStatus) {
                    logFailure(Error(errc::pathError, "VistaWeb", "O navegador embutido parou."));
                    Q_EMIT carregou(false);
                }
            });
}

VistaWeb::~VistaWeb() {
    if (imprimindo()) {
        esperaImpressao();
    }
}

/// The engine ends the process when a page goes during its print. One that takes longer than the program may
/// wait for is left to the end of the process.
void VistaWeb::esperaImpressao() {
    disconnect(this, &VistaRelatorio::impressaoTerminou, nullptr, nullptr);
    QEventLoop laco;
    connect(this, &VistaRelatorio::impressaoTerminou, &laco, &QEventLoop::quit);
    QTimer::singleShot(esperaMaxima, &laco, &QEventLoop::quit);
    laco.exec(QEventLoop::ExcludeUserInputEvents);
    if (imprimindo()) {
        brwReport_->setParent(nullptr);
        static_cast<void>(impressora_.release());
        static_cast<void>(pagina_.release());
        static_cast<void>(std::make_unique<std::shared_ptr<QWebEngineProfile>>(perfil_).release());
    }
}

void VistaWeb::abre(const std::filesystem::path& pagina) {
    arquivo_ = pagina;
    busca_.reset();
    pagina_->abre(QUrl::fromLocalFile(caminhoQt(pagina)));
}

void VistaWeb::imprime(std::unique_ptr<QPrinter> impressora, AoImprimir aoTerminar) {
    if (imprimindo()) {
        throw Error(errc::pathError, "VistaWeb", "Há outra impressão em andamento.");
    }
    impressora_ = std::move(impressora);
    aoTerminar_ = std::move(aoTerminar);
    brwReport_->print(impressora_.get());
}

void VistaWeb::terminaImpressao(bool certo) {
    // The printer stays until the next print: where a print failed, the engine's thread lets go of it only
    // now.
    const AoImprimir aoTerminar = std::exchange(aoTerminar_, nullptr);
    if (aoTerminar) {
        aoTerminar(certo);
        Q_EMIT impressaoTerminou();
    }
}

void VistaWeb::copia() {
    pagina_->triggerAction(QWebEnginePage::Copy);
}

void VistaWeb::selecionaTudo() {
    pagina_->triggerAction(QWebEnginePage::SelectAll);
}

bool VistaWeb::temSelecao() const {
    return pagina_->hasSelection();
}

double VistaWeb::zoom() const {
    return pagina_->zoomFactor();
}

void VistaWeb::setZoom(double fator) {
    pagina_->setZoomFactor(std::clamp(fator, menorZoom, maiorZoom));
}

void VistaWeb::procura(const QString& texto, bool paraTras) {
    if (guarded("VistaWeb.procura", false, [this] { return muitasOcorrencias(); })) {
        procuraOcorrencia(texto, paraTras);
    } else {
        pagina_->findText(texto, paraTras ? QWebEnginePage::FindBackward : QWebEnginePage::FindFlags());
    }
}

bool VistaWeb::muitasOcorrencias() {
    if (!busca_) {
        const bool temPagina = !arquivo_.empty() && files::exists(arquivo_);
        busca_ = std::make_unique<BuscaNoRelatorio>(temPagina ? files::readAll(arquivo_) : std::string());
    }
    return busca_->ocorrencias() > ocorrenciasParaOMotor;
}

void VistaWeb::procuraOcorrencia(const QString& texto, bool paraTras) {
    const auto passo = busca_->vai(paraUtf8(texto), paraTras);
    // A place that the page does not have takes its mark away and leaves it where it is.
    pagina_->vaiPara(passo ? paraQt(BuscaNoRelatorio::ancora(passo->lugar)) : QStringLiteral("nenhuma"));
    barra().mostraAchados(passo ? passo->numero : 0, passo ? passo->total : 0);
}

/// The engine takes the wheel in a widget of its own, which comes and goes below the view.
bool VistaWeb::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::ChildAdded) {
        static_cast<QChildEvent*>(evento)->child()->installEventFilter(this);
    } else if (evento->type() == QEvent::Wheel) {
        const auto& roda = static_cast<QWheelEvent&>(*evento);
        if (roda.modifiers().testFlag(Qt::ControlModifier)) {
            this->roda(roda.angleDelta().y());
            return true;
        }
    }
    return VistaRelatorio::eventFilter(objeto, evento);
}

void VistaWeb::roda(int angulo) {
    for (rodado_ += angulo; rodado_ >= passoDaRoda; rodado_ -= passoDaRoda) {
        amplia();
    }
    for (; rodado_ <= -passoDaRoda; rodado_ += passoDaRoda) {
        reduz();
    }
}

} // namespace tv
