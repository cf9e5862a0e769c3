#include "common/windows/Grade.h"

#include "common/windows/DesenhoGrade.h"
#include "common/windows/mensagem.h"
#include "common/windows/textoQt.h"
#include "logging/Routine.h"

#include <QApplication>
#include <QClipboard>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace tv {

namespace {

constexpr int folgaDaLinha = 8;
constexpr int ladoDaImagem = 16;

/// A cell among others on a line: between quotation marks where its text would be taken for two cells.
QString celulaParaCopia(QString texto) {
    static const QString especiais = QStringLiteral("\t\n\r\"");
    const bool precisa =
        std::any_of(texto.cbegin(), texto.cend(), [](QChar letra) { return especiais.contains(letra); });
    if (!precisa) {
        return texto;
    }
    texto.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + texto + QLatin1Char('"');
}

} // namespace

Grade::Grade(const QString& nome, QWidget* dono)
    : QTableView(dono)
    , modelo_(new ModeloGrade(this)) {
    setObjectName(nome);
    setAccessibleName(nomeAcessivel_);
    setHorizontalHeader(new CabecalhoGrade(*this));
    setItemDelegate(new DesenhoGrade(*this));
    acompanhaModelo();
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setIconSize({ladoDaImagem, ladoDaImagem});
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setAlturaDasLinhas(font());
}

Grade::~Grade() = default;

void Grade::acompanhaModelo() {
    // What is told before a change of rows must be heard before the selection hears it.
    connect(modelo_, &QAbstractItemModel::rowsAboutToBeInserted, this, &Grade::linhasMudam);
    connect(modelo_, &QAbstractItemModel::modelAboutToBeReset, this, &Grade::linhasMudam);
    connect(modelo_, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            [this](const QModelIndex&, int primeira, int ultima) {
                linhasMudam();
                cedeAtiva(primeira, ultima);
            });
    setModel(modelo_);
    for (const auto sinal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
        connect(modelo_, sinal, this, &Grade::linhasMudaram);
    }
    connect(modelo_, &QAbstractItemModel::modelReset, this, &Grade::linhasVoltaram);
    connect(modelo_, &QAbstractItemModel::headerDataChanged, this,
            [this](Qt::Orientation orientacao, int primeira, int ultima) {
                for (int coluna = primeira; orientacao == Qt::Horizontal && coluna <= ultima; ++coluna) {
                    aplicaColuna(coluna);
                }
            });
    connect(modelo_, &ModeloGrade::dadosTrocados, this, [this] {
        aplicaColunas();
        Q_EMIT layoutIniciado();
    });
}

void Grade::setCaption(const QString& caption) {
    caption_ = caption;
    if (accessibleName() == nomeAcessivel_) { // nobody gave the grid another name
        nomeAcessivel_ = caption.isEmpty() ? QStringLiteral("Grade") : captionVisivel();
        setAccessibleName(nomeAcessivel_);
    }
    Q_EMIT captionMudou(caption_);
}

QString Grade::captionVisivel() const {
    return QString(caption_).replace(QStringLiteral("&&"), QStringLiteral("&"));
}

void Grade::setFonteCaption(const QFont& fonte) {
    fonteCaption_ = fonte;
    Q_EMIT captionMudou(caption_);
}

QString Grade::texto(int numero) const {
    const auto achado = textos_.find(numero);
    return achado == textos_.end() ? QString() : achado->second;
}

void Grade::setTexto(int numero, const QString& texto) {
    textos_[numero] = texto;
}

void Grade::setAparencia(const AparenciaGrade& aparencia) {
    aparencia_ = aparencia;
    QPalette cores = palette();
    cores.setColor(QPalette::Base, aparencia.fundoLinha);
    cores.setColor(QPalette::AlternateBase, aparencia.fundoAlternado);
    cores.setColor(QPalette::Text, Qt::black);
    setPalette(cores);
    setAlternatingRowColors(true);
    setFont(aparencia.celulas);
    setAlturaDasLinhas(aparencia.celulas);
    horizontalHeader()->setFont(aparencia.cabecalho);
    QPalette coresDoCabecalho = horizontalHeader()->palette();
    coresDoCabecalho.setColor(QPalette::Button, aparencia.fundoCabecalho);
    coresDoCabecalho.setColor(QPalette::ButtonText, Qt::black);
    horizontalHeader()->setPalette(coresDoCabecalho);
}

void Grade::setAlturaDasLinhas(const QFont& fonte) {
    const int altura = std::max(QFontMetrics(fonte).height(), ladoDaImagem) + folgaDaLinha;
    verticalHeader()->setMinimumSectionSize(altura);
    verticalHeader()->setDefaultSectionSize(altura);
}

int Grade::linhaAtiva() const {
    return currentIndex().row();
}

int Grade::colunaVisivel() const {
    int coluna = 0;
    while (coluna < modelo_->columnCount() && isColumnHidden(coluna)) {
        ++coluna;
    }
    return coluna;
}

void Grade::setLinhaAtiva(int linha) {
    const int coluna = currentIndex().isValid() ? currentIndex().column() : colunaVisivel();
    const QModelIndex alvo = modelo_->index(linha, coluna);
    selectionModel()->setCurrentIndex(alvo, QItemSelectionModel::NoUpdate);
    if (alvo.isValid()) {
        scrollTo(alvo);
    }
}

std::vector<int> Grade::linhasSelecionadas() const {
    std::vector<int> linhas;
    for (const QItemSelectionRange& trecho : selectionModel()->selection()) {
        for (int linha = trecho.top(); linha <= trecho.bottom(); ++linha) {
            linhas.push_back(linha);
        }
    }
    std::sort(linhas.begin(), linhas.end());
    linhas.erase(std::unique(linhas.begin(), linhas.end()), linhas.end());
    return linhas;
}

void Grade::selecionaLinha(int linha) {
    const QModelIndex alvo = modelo_->index(linha, 0);
    const auto linhas = QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
    if (alvo.isValid()) {
        selectionModel()->select(alvo, linhas);
    } else {
        selectionModel()->clearSelection();
    }
}

std::optional<std::size_t> Grade::vizinhaDe(const std::vector<int>& removidas) const {
    const auto comeca = std::lower_bound(removidas.begin(), removidas.end(), linhaAtiva());
    const bool ativaFica = linhaAtiva() >= 0 && (comeca == removidas.end() || *comeca != linhaAtiva());
    if (ativaFica) {
        return modelo_->numeroDaLinha(linhaAtiva());
    }
    const int partida = linhaAtiva() >= 0 ? linhaAtiva() : removidas.front();
    const auto fica = [&](int linha) {
        return !std::binary_search(removidas.begin(), removidas.end(), linha);
    };
    for (int linha = partida; linha < modelo_->rowCount(); ++linha) {
        if (fica(linha)) {
            return modelo_->numeroDaLinha(linha);
        }
    }
    for (int linha = partida; linha >= 0; --linha) {
        if (fica(linha)) {
            return modelo_->numeroDaLinha(linha);
        }
    }
    return std::nullopt;
}

bool Grade::removeSelecionadas(const QString& pergunta) {
    if (linhasSelecionadas().empty() ||
        !mensagem::pergunta(pergunta, mensagem::Icone::Pergunta, texto(tituloRemocao))) {
        return false;
    }
    const std::vector<int> linhas = linhasSelecionadas(); // the question gave others a turn
    if (linhas.empty() || (antesDeRemover && !antesDeRemover(linhas))) {
        return false;
    }
    const std::optional<std::size_t> vizinha = vizinhaDe(linhas);
    ++mudancas_;
    modelo_->remove(linhas);
    --mudancas_;
    if (vizinha) {
        setLinhaAtiva(modelo_->linhaDoNumero(*vizinha));
    }
    anunciaAtiva();
    Q_EMIT linhasRemovidas();
    return true;
}

void Grade::aplicaColuna(int coluna) {
    const ColunaGrade& aparencia = modelo_->coluna(coluna);
    setColumnHidden(coluna, aparencia.oculta);
    if (!aparencia.oculta) {
        setColumnWidth(coluna, aparencia.largura);
    }
    if (aparencia.fonte) {
        const int altura = QFontMetrics(*aparencia.fonte).height() + folgaDaLinha;
        verticalHeader()->setDefaultSectionSize(std::max(verticalHeader()->defaultSectionSize(), altura));
    }
}

void Grade::aplicaColunas() {
    for (int coluna = 0; coluna < modelo_->columnCount(); ++coluna) {
        aplicaColuna(coluna);
    }
}

void Grade::linhasMudam() {
    ++mudancas_;
}

/// Before the active row goes, the one behind it becomes active; the selection would choose the one before.
void Grade::cedeAtiva(int primeira, int ultima) {
    const int linha = linhaAtiva();
    if (linha >= primeira && linha <= ultima && ultima + 1 < modelo_->rowCount()) {
        selectionModel()->setCurrentIndex(modelo_->index(ultima + 1, currentIndex().column()),
                                          QItemSelectionModel::NoUpdate);
    }
}

void Grade::linhasMudaram() {
    --mudancas_;
    anunciaAtiva();
}

void Grade::linhasVoltaram() {
    --mudancas_;
    const bool mesmosDados = modelo_->dados().get() == dadosVistos_;
    dadosVistos_ = modelo_->dados().get();
    const int linha = mesmosDados && ativa_ ? modelo_->linhaDoNumero(*ativa_) : -1;
    if (linha < 0) {
        ativa_.reset();
        return;
    }
    setLinhaAtiva(linha);
}

void Grade::currentChanged(const QModelIndex& atual, const QModelIndex& anterior) {
    QTableView::currentChanged(atual, anterior);
    if (atual.row() != anterior.row()) {
        viewport()->update(); // both rows change their look over the whole width
    }
    anunciaAtiva();
}

void Grade::anunciaAtiva() {
    if (mudancas_ > 0) {
        return;
    }
    const int linha = linhaAtiva();
    const auto numero = linha < 0 ? std::nullopt : std::optional(modelo_->numeroDaLinha(linha));
    if (numero == ativa_) {
        return;
    }
    ativa_ = numero;
    if (numero) {
        Q_EMIT linhaAtivada(linha);
    }
}

QString Grade::textoParaCopia() const {
    std::vector<int> linhas = linhasSelecionadas();
    if (linhas.empty() && linhaAtiva() >= 0) {
        linhas.push_back(linhaAtiva());
    }
    QStringList texto;
    for (const int linha : linhas) {
        QStringList celulas;
        for (int visual = 0; visual < modelo_->columnCount(); ++visual) {
            const int coluna = horizontalHeader()->logicalIndex(visual);
            if (!isColumnHidden(coluna)) {
                celulas << celulaParaCopia(modelo_->textoVisivel(linha, coluna));
            }
        }
        texto << celulas.join(QLatin1Char('\t'));
    }
    return texto.join(QLatin1Char('\n'));
}

QString Grade::perguntaComum(Texto numero) {
    return (numero == removeUma ? QStringLiteral("A linha selecionada será removida.")
                                : QStringLiteral("As linhas selecionadas serão removidas.")) +
           QStringLiteral("\n\nDeseja continuar?");
}

void Grade::removePelaTecla() {
    if (linhasSelecionadas().empty()) {
        selecionaLinha(linhaAtiva());
    }
    const Texto numero = linhasSelecionadas().size() == 1 ? removeUma : removeVarias;
    setTexto(numero, perguntaComum(numero)); // an earlier removal may have left its count there
    removeSelecionadas(texto(numero));
}

void Grade::keyPressEvent(QKeyEvent* evento) {
    if (evento->matches(QKeySequence::Copy)) {
        const QString texto = textoParaCopia();
        if (!texto.isEmpty()) {
            QApplication::clipboard()->setText(texto);
        }
        evento->accept();
    } else if (evento->matches(QKeySequence::Delete) && teclaRemove_ && state() != EditingState) {
        guarded("Grade.removePelaTecla", [this] { removePelaTecla(); });
        evento->accept();
    } else {
        QTableView::keyPressEvent(evento);
    }
}

void Grade::focusInEvent(QFocusEvent* evento) {
    if (currentIndex().isValid()) {
        QTableView::focusInEvent(evento);
    } else {
        viewport()->update(); // coming by alone makes no row active
    }
}

QModelIndex Grade::moveCursor(CursorAction acao, Qt::KeyboardModifiers modificadores) {
    const bool aoExtremo = acao == MoveHome || acao == MoveEnd;
    if (!aoExtremo || modelo_->temEditavel() || modelo_->rowCount() == 0) {
        return QTableView::moveCursor(acao, modificadores);
    }
    const int coluna = currentIndex().isValid() ? currentIndex().column() : colunaVisivel();
    return modelo_->index(acao == MoveHome ? 0 : modelo_->rowCount() - 1, coluna);
}

PainelGrade::PainelGrade(const QString& nome, QWidget* dono)
    : QWidget(dono)
    , grade_(new Grade(nome, this))
    , rotulo_(new QLabel(this)) {
    rotulo_->setObjectName(nome + QStringLiteral("Caption"));
    rotulo_->setAccessibleName(QStringLiteral("Título da grade"));
    rotulo_->setTextFormat(Qt::PlainText);
    rotulo_->setAlignment(Qt::AlignCenter);
    rotulo_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* pilha = new QVBoxLayout(this);
    pilha->setContentsMargins(0, 0, 0, 0);
    pilha->setSpacing(2);
    pilha->addWidget(rotulo_);
    pilha->addWidget(grade_, 1);
    setFocusProxy(grade_);
    connect(grade_, &Grade::captionMudou, this, &PainelGrade::mostraCaption);
    mostraCaption();
}

void PainelGrade::mostraCaption() {
    rotulo_->setFont(grade_->fonteCaption());
    rotulo_->setText(grade_->captionVisivel());
    rotulo_->setToolTip(grade_->captionVisivel().toHtmlEscaped());
    rotulo_->setVisible(!grade_->caption().isEmpty());
}

} // namespace tv
