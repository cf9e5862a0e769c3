#include "validation/windows/VistaSimples.h"

#include "common/windows/textoQt.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "validation/BuscaNoRelatorio.h"
#include "validation/paginasRelatorio.h"
#include "validation/windows/BarraLocalizar.h"

#include <QAbstractTextDocumentLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPrinter>
#include <QTextBrowser>
#include <QToolButton>
#include <QWheelEvent>

#include <algorithm>

namespace tv {

namespace {

constexpr double menorZoom = 0.25;
constexpr double maiorZoom = 5.0;
constexpr double margem = 16;      // pixels
constexpr double letraDaTela = 14; // pixels
constexpr double letraDoPapel = 7; // points

/// A text widget that fetches nothing: neither pictures and style sheets nor pages behind links.
class NavegadorFechado : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;
    QVariant loadResource(int /*tipo*/, const QUrl& /*nome*/) override { return {}; }

protected:
    void doSetSource(const QUrl& /*nome*/, QTextDocument::ResourceType /*tipo*/) override {}
};

/// The page with its letters in one size and air in its cells, since the widget knows no relative lengths.
QString comLetra(const std::string& pagina, double tamanho, QLatin1String unidade) {
    const QString estilo = QStringLiteral("<style>body, p, dt, dd, caption, th, td, small, h1, h2 "
                                          "{ font-size: %1%2; } th, td { padding: 2px 5px; }</style></head>")
                               .arg(tamanho)
                               .arg(unidade);
    return paraQt(pagina).replace(QStringLiteral("</head>"), estilo);
}

/// Prints a document on sheets of their own, the first of which has been begun.
void imprimeFolhas(QTextDocument& documento, QPrinter& impressora, QPainter& pintor) {
    const QSizeF folha = impressora.pageRect(QPrinter::DevicePixel).size();
    documento.documentLayout()->setPaintDevice(&impressora);
    documento.setDocumentMargin(0);
    documento.setPageSize(folha);
    for (int i = 0; i < documento.pageCount(); ++i) {
        if (i > 0 && !impressora.newPage()) {
            throw Error(errc::pathError, "VistaSimples", "A impressora não aceitou outra folha.");
        }
        pintor.save();
        pintor.translate(0, -i * folha.height());
        documento.drawContents(&pintor, QRectF(QPointF(0, i * folha.height()), folha));
        pintor.restore();
    }
}

} // namespace

VistaSimples::VistaSimples()
    : brwReport_(new NavegadorFechado(this)) {
    brwReport_->setOpenLinks(false);
    brwReport_->setUndoRedoEnabled(false);
    brwReport_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    brwReport_->setContextMenuPolicy(Qt::CustomContextMenu);
    brwReport_->viewport()->installEventFilter(this);
    brwReport_->document()->setDocumentMargin(margem);
    montaPagina(brwReport_);
    montaRodape(montaNavegacao());
    connect(brwReport_, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& lugar) { abreMenu(brwReport_->viewport()->mapToGlobal(lugar)); });
}

VistaSimples::~VistaSimples() = default;

QWidget* VistaSimples::montaNavegacao() {
    navegacao_ = new QWidget(this);
    navegacao_->setObjectName(QStringLiteral("navegacaoReport"));
    lblBloco_ = new QLabel(navegacao_);
    lblBloco_->setObjectName(QStringLiteral("lblBloco"));
    lblBloco_->setAccessibleName(QStringLiteral("Bloco de ocorrências"));
    anterior_ = criaBotao(QStringLiteral("btnBlocoAnterior"), QStringLiteral("Bloco anterior"), -1);
    proxima_ = criaBotao(QStringLiteral("btnProximoBloco"), QStringLiteral("Próximo bloco"), 1);
    anterior_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageUp));
    proxima_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_PageDown));
    auto* fila = new QHBoxLayout(navegacao_);
    fila->setContentsMargins(6, 3, 6, 3);
    fila->addWidget(anterior_);
    fila->addWidget(lblBloco_);
    fila->addWidget(proxima_);
    fila->addStretch(1);
    navegacao_->hide();
    return navegacao_;
}

QToolButton* VistaSimples::criaBotao(const QString& nome, const QString& texto, int passo) {
    auto* botao = new QToolButton(navegacao_);
    botao->setObjectName(nome);
    botao->setText(texto);
    botao->setAccessibleName(texto);
    connect(botao, &QToolButton::clicked, this, [this, passo] { mostraPagina(atual_ + passo); });
    return botao;
}

void VistaSimples::abre(const std::filesystem::path& pagina) {
    paginas_ = paginasRelatorio(files::readAll(pagina));
    navegacao_->setVisible(paginas_.size() > 1);
    mostraPagina(0);
    Q_EMIT carregou(true);
}

void VistaSimples::mostraPagina(int numero) {
    if (numero < 0 || static_cast<std::size_t>(numero) >= paginas_.size()) {
        return;
    }
    atual_ = numero;
    brwReport_->setHtml(
        comLetra(paginas_[static_cast<std::size_t>(numero)], letraDaTela * zoom_, QLatin1String("px")));
    lblBloco_->setText(QStringLiteral("Bloco %1 de %2").arg(numero + 1).arg(paginas_.size()));
    anterior_->setEnabled(numero > 0);
    proxima_->setEnabled(static_cast<std::size_t>(numero) + 1 < paginas_.size());
}

void VistaSimples::imprime(std::unique_ptr<QPrinter> impressora, AoImprimir aoTerminar) {
    QPainter pintor;
    bool certo = pintor.begin(impressora.get());
    for (std::size_t i = 0; certo && i < paginas_.size(); ++i) {
        certo = i == 0 || impressora->newPage();
        QTextDocument documento;
        documento.setHtml(comLetra(paginas_[i], letraDoPapel, QLatin1String("pt")));
        if (certo) {
            imprimeFolhas(documento, *impressora, pintor);
        }
    }
    certo = certo && pintor.end();
    aoTerminar(certo);
    Q_EMIT impressaoTerminou();
}

void VistaSimples::copia() {
    brwReport_->copy();
}

void VistaSimples::selecionaTudo() {
    brwReport_->selectAll();
}

bool VistaSimples::temSelecao() const {
    return brwReport_->textCursor().hasSelection();
}

void VistaSimples::setZoom(double fator) {
    zoom_ = std::clamp(fator, menorZoom, maiorZoom);
    mostraPagina(atual_);
}

/// Looks on in the blocks behind (or before) the one shown, once around.
void VistaSimples::procura(const QString& texto, bool paraTras) {
    if (texto.isEmpty()) {
        procurado_.clear();
        return;
    }
    if (texto != procurado_) { // typed on: the match that stands may go on matching
        QTextCursor cursor = brwReport_->textCursor();
        cursor.setPosition(cursor.selectionStart());
        brwReport_->setTextCursor(cursor);
        procurado_ = texto;
    }
    const auto direcao = paraTras ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    const bool achou = brwReport_->find(texto, direcao) || procuraAdiante(texto, paraTras);
    barra().mostraAviso(achou ? QStringLiteral("Encontrado") : QStringLiteral("Texto não encontrado"));
}

bool VistaSimples::procuraAdiante(const QString& texto, bool paraTras) {
    const int antes = atual_;
    const auto quantas = static_cast<int>(paginas_.size());
    const std::string procurado = textoParaBusca(paraUtf8(texto));
    for (int passo = 1; passo <= quantas; ++passo) {
        const int numero = ((antes + (paraTras ? -passo : passo)) % quantas + quantas) % quantas;
        // Laying a block out costs far more than a look at its text.
        if (paraBusca(paginas_[static_cast<std::size_t>(numero)]).find(procurado) == std::string::npos) {
            continue;
        }
        mostraPagina(numero);
        brwReport_->moveCursor(paraTras ? QTextCursor::End : QTextCursor::Start);
        if (brwReport_->find(texto, paraTras ? QTextDocument::FindBackward : QTextDocument::FindFlags())) {
            return true;
        }
    }
    if (atual_ != antes) {
        mostraPagina(antes);
    }
    return false;
}

bool VistaSimples::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::Wheel) {
        const auto& roda = static_cast<QWheelEvent&>(*evento);
        if (roda.modifiers().testFlag(Qt::ControlModifier)) {
            roda.angleDelta().y() > 0 ? amplia() : reduz();
            return true;
        }
    }
    return VistaRelatorio::eventFilter(objeto, evento);
}

} // namespace tv
