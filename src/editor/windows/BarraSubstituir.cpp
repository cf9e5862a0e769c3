#include "editor/windows/BarraSubstituir.h"

#include "editor/windows/CaixaXML.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTextCursor>
#include <QTextDocument>
#include <QToolButton>

namespace tv {

namespace {

std::u16string_view vista(const QString& texto) {
    return {reinterpret_cast<const char16_t*>(texto.utf16()), static_cast<std::size_t>(texto.size())};
}

/// The stretch of a text from its first match to the end of its last one, with all matches replaced.
struct Troca {
    qsizetype inicio = 0;
    qsizetype fim = 0;
    qsizetype quantas = 0;
    QString novo;
};

Troca trocaTodos(const QString& texto, const QString& procurado, const QString& por, Qt::CaseSensitivity cs) {
    Troca troca;
    for (qsizetype achado = texto.indexOf(procurado, 0, cs); achado >= 0;
         achado = texto.indexOf(procurado, troca.fim, cs)) {
        if (troca.quantas++ == 0) {
            troca.inicio = troca.fim = achado;
        }
        troca.novo += QStringView(texto).mid(troca.fim, achado - troca.fim);
        troca.novo += por;
        troca.fim = achado + procurado.size();
    }
    return troca;
}

} // namespace

BarraSubstituir::BarraSubstituir(CaixaXML& caixa, QWidget* dono)
    : QWidget(dono)
    , caixa_(caixa) {
    setObjectName(QStringLiteral("barraSubstituir"));
    setAccessibleName(QStringLiteral("Localizar e substituir"));
    monta();
    hide();
}

QToolButton* BarraSubstituir::criaBotao(const QString& nome, const QString& texto, const QString& dica) {
    auto* botao = new QToolButton(this);
    botao->setObjectName(nome);
    botao->setAccessibleName(dica);
    botao->setToolTip(dica);
    botao->setText(texto);
    botao->setAutoRaise(true);
    return botao;
}

void BarraSubstituir::monta() {
    const auto criaCampo = [this](const char16_t* nome, const char16_t* nomeAcessivel) {
        auto* campo = new QLineEdit(this);
        campo->setObjectName(QString::fromUtf16(nome));
        campo->setAccessibleName(QString::fromUtf16(nomeAcessivel));
        campo->setClearButtonEnabled(true);
        campo->setMinimumWidth(120);
        return campo;
    };
    txtLocalizar_ = criaCampo(u"txtLocalizar", u"Texto a localizar");
    txtSubstituir_ = criaCampo(u"txtSubstituir", u"Texto que substitui");
    auto* rotulo = new QLabel(QStringLiteral("&Localizar:"), this);
    rotulo->setBuddy(txtLocalizar_);
    rotuloSubstituir_ = new QLabel(QStringLiteral("S&ubstituir por:"), this);
    rotuloSubstituir_->setBuddy(txtSubstituir_);
    chkMaiusculas_ = new QCheckBox(QStringLiteral("&Maiúsculas e minúsculas"), this);
    chkMaiusculas_->setObjectName(QStringLiteral("chkMaiusculas"));
    chkMaiusculas_->setAccessibleName(QStringLiteral("Distinguir maiúsculas de minúsculas"));
    auto* anterior = criaBotao(QStringLiteral("btnLocalizarAnterior"), QStringLiteral("Anterior"),
                               QStringLiteral("Ocorrência anterior (Shift+F3)"));
    auto* proximo = criaBotao(QStringLiteral("btnLocalizarProximo"), QStringLiteral("Próxima"),
                              QStringLiteral("Próxima ocorrência (F3)"));
    btnSubstituir_ = criaBotao(QStringLiteral("btnSubstituir"), QStringLiteral("Substituir"),
                               QStringLiteral("Substitui esta ocorrência e vai à próxima"));
    btnSubstituirTudo_ = criaBotao(QStringLiteral("btnSubstituirTudo"), QStringLiteral("Substituir todas"),
                                   QStringLiteral("Substitui todas as ocorrências"));
    auto* fechar = criaBotao(QStringLiteral("btnFecharBarra"), QStringLiteral("✕"),
                             QStringLiteral("Fecha a busca (Esc)"));
    lblAviso_ = new QLabel(this);
    lblAviso_->setObjectName(QStringLiteral("lblAviso"));
    lblAviso_->setAccessibleName(QStringLiteral("Resultado da busca"));
    lblAviso_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* quadro = new QGridLayout(this);
    quadro->setContentsMargins(4, 2, 4, 2);
    int coluna = 0;
    for (QWidget* parte : {static_cast<QWidget*>(rotulo), static_cast<QWidget*>(txtLocalizar_),
                           static_cast<QWidget*>(anterior), static_cast<QWidget*>(proximo),
                           static_cast<QWidget*>(chkMaiusculas_), static_cast<QWidget*>(fechar)}) {
        quadro->addWidget(parte, 0, coluna++);
    }
    quadro->addWidget(rotuloSubstituir_, 1, 0);
    quadro->addWidget(txtSubstituir_, 1, 1);
    quadro->addWidget(btnSubstituir_, 1, 2);
    quadro->addWidget(btnSubstituirTudo_, 1, 3);
    quadro->addWidget(lblAviso_, 1, 4, 1, 2);
    quadro->setColumnStretch(1, 1);
    connect(anterior, &QToolButton::clicked, this, [this] { localiza(true); });
    connect(proximo, &QToolButton::clicked, this, [this] { localiza(false); });
    connect(btnSubstituir_, &QToolButton::clicked, this, &BarraSubstituir::substitui);
    connect(btnSubstituirTudo_, &QToolButton::clicked, this, &BarraSubstituir::substituiTudo);
    connect(fechar, &QToolButton::clicked, this, &BarraSubstituir::fecha);
}

void BarraSubstituir::abre(bool comSubstituicao) {
    for (QWidget* parte : findChildren<QWidget*>()) {
        const bool comTexto = qobject_cast<QLabel*>(parte) != nullptr;
        parte->setFocusPolicy(comTexto ? Qt::NoFocus : Qt::StrongFocus);
    }
    for (QWidget* parte :
         {static_cast<QWidget*>(rotuloSubstituir_), static_cast<QWidget*>(txtSubstituir_),
          static_cast<QWidget*>(btnSubstituir_), static_cast<QWidget*>(btnSubstituirTudo_)}) {
        parte->setVisible(comSubstituicao);
    }
    const QString selecao = caixa_.textCursor().selectedText();
    if (!selecao.isEmpty() && !selecao.contains(QChar::ParagraphSeparator)) {
        txtLocalizar_->setText(selecao);
    }
    lblAviso_->clear();
    show();
    txtLocalizar_->setFocus();
    txtLocalizar_->selectAll();
}

void BarraSubstituir::fecha() {
    hide();
    caixa_.setFocus();
}

Qt::CaseSensitivity BarraSubstituir::caixaDasLetras() const {
    return chkMaiusculas_->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
}

bool BarraSubstituir::selecaoCombina() const {
    const QString selecao = caixa_.textCursor().selectedText();
    return !selecao.isEmpty() && selecao.compare(txtLocalizar_->text(), caixaDasLetras()) == 0;
}

bool BarraSubstituir::procuraDe(int posicao, bool paraTras) {
    QTextDocument::FindFlags modo;
    modo.setFlag(QTextDocument::FindBackward, paraTras);
    modo.setFlag(QTextDocument::FindCaseSensitively, chkMaiusculas_->isChecked());
    const QTextCursor achado = caixa_.document()->find(txtLocalizar_->text(), posicao, modo);
    if (achado.isNull()) {
        return false;
    }
    caixa_.setTextCursor(achado);
    return true;
}

void BarraSubstituir::localiza(bool paraTras) {
    if (txtLocalizar_->text().isEmpty()) {
        if (!isVisible()) {
            abre(false);
        }
        return;
    }
    lblAviso_->clear();
    const QTextCursor cursor = caixa_.textCursor();
    if (procuraDe(paraTras ? cursor.selectionStart() : cursor.selectionEnd(), paraTras)) {
        return;
    }
    const bool achou = procuraDe(paraTras ? caixa_.tamanho() : 0, paraTras);
    lblAviso_->setText(!achou     ? QStringLiteral("Nenhuma ocorrência")
                       : paraTras ? QStringLiteral("Continuou do fim do texto")
                                  : QStringLiteral("Continuou do início do texto"));
}

void BarraSubstituir::substitui() {
    if (selecaoCombina()) {
        caixa_.setSelText(vista(txtSubstituir_->text()));
    }
    localiza(false);
}

void BarraSubstituir::substituiTudo() {
    if (txtLocalizar_->text().isEmpty()) {
        return;
    }
    const Troca troca = trocaTodos(caixa_.document()->toRawText(), txtLocalizar_->text(),
                                   txtSubstituir_->text(), caixaDasLetras());
    if (troca.quantas > 0) {
        caixa_.troca(static_cast<std::int32_t>(troca.inicio),
                     static_cast<std::int32_t>(troca.fim - troca.inicio), vista(troca.novo));
    }
    lblAviso_->setText(troca.quantas == 0 ? QStringLiteral("Nenhuma ocorrência")
                       : troca.quantas == 1
                           ? QStringLiteral("1 ocorrência substituída")
                           : QStringLiteral("%1 ocorrências substituídas").arg(troca.quantas));
}

void BarraSubstituir::keyPressEvent(QKeyEvent* evento) {
    switch (evento->key()) {
    case Qt::Key_Escape:
        fecha();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        localiza(evento->modifiers().testFlag(Qt::ShiftModifier));
        break;
    default:
        QWidget::keyPressEvent(evento);
    }
}

} // namespace tv
