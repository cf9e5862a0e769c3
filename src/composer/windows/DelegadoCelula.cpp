#include "common/windows/Grade.h"
#include "common/windows/textoQt.h"
#include "composer/entrada.h"
#include "composer/windows/EdicaoGrade.h"
#include "logging/Routine.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QValidator>

/// How one cell of a composer's grid is edited.
namespace tv {

namespace {

/// Lets the typed text be what the field may hold. The comma of the numeric keypad is the decimal point.
class Conferente : public QValidator {
public:
    Conferente(const clsCampo& campo, QObject* dono)
        : QValidator(dono)
        , campo_(campo) {}

    State validate(QString& texto, int& /*lugar*/) const override {
        if (entrada::controle(campo_) == entrada::Controle::Decimal && !texto.contains(QLatin1Char('.')) &&
            texto.count(QLatin1Char(',')) == 1) {
            texto.replace(QLatin1Char(','), QLatin1Char('.'));
        }
        return entrada::digitavel(campo_, paraUtf8(texto)) ? Acceptable : Invalid;
    }

private:
    const clsCampo& campo_;
};

QString mascaraDaData() {
    return QStringLiteral("99/99/9999; "); // places of digits, shown as blanks
}

} // namespace

DelegadoCelula::DelegadoCelula(Grade& grade, const clsSecao& secao)
    : DesenhoGrade(grade)
    , secao_(secao) {}

const clsCampo& DelegadoCelula::campo(const QModelIndex& indice) const {
    return *secao_.getCampos().Item(static_cast<std::size_t>(indice.column()) + 1);
}

QWidget* DelegadoCelula::createEditor(QWidget* dono, const QStyleOptionViewItem& /*opcao*/,
                                      const QModelIndex& indice) const {
    QWidget* novo = nullptr;
    proceed([&] {
        const clsCampo& este = campo(indice);
        const entrada::Controle controle = entrada::controle(este);
        const bool isLista = controle == entrada::Controle::Lista || controle == entrada::Controle::SimNao;
        novo = isLista ? criaLista(dono, este) : criaTexto(dono, este);
        novo->setObjectName(paraQt(este.getTag()));
        novo->setAccessibleName(paraQt(este.getNome()));
    });
    editor_ = novo;
    return novo;
}

QWidget* DelegadoCelula::criaLista(QWidget* dono, const clsCampo& campo) const {
    auto* lista = new QComboBox(dono);
    lista->setFrame(false);
    if (campo.hasTabela()) {
        for (const clsEntradaTabela& entrada : *campo.getTabela()) {
            lista->addItem(paraQt(entrada.valor), paraQt(entrada.key));
        }
    } else {
        for (const char16_t letra : {u'S', u'N'}) {
            lista->addItem(QString(QChar(letra)), QString(QChar(letra)));
        }
    }
    auto* eu = const_cast<DelegadoCelula*>(this);
    connect(lista, &QComboBox::activated, eu, [eu, lista] {
        Q_EMIT eu->commitData(lista);
        Q_EMIT eu->closeEditor(lista, NoHint);
        Q_EMIT eu->itemEscolhido();
    });
    QMetaObject::invokeMethod(lista, &QComboBox::showPopup, Qt::QueuedConnection);
    return lista;
}

QWidget* DelegadoCelula::criaTexto(QWidget* dono, const clsCampo& campo) const {
    auto* linha = new QLineEdit(dono);
    linha->setFrame(false);
    if (entrada::controle(campo) == entrada::Controle::Data) {
        linha->setInputMask(mascaraDaData());
    } else {
        linha->setValidator(new Conferente(campo, linha));
        if (const auto maximo = entrada::tamanhoMaximo(campo)) {
            linha->setMaxLength(static_cast<int>(*maximo));
        }
    }
    linha->setAlignment(campo.getColuna().getAlinhamento() == 3 ? Qt::AlignRight : Qt::AlignLeft);
    return linha;
}

void DelegadoCelula::setEditorData(QWidget* editor, const QModelIndex& indice) const {
    proceed([&] {
        const clsCampo& este = campo(indice);
        const auto* grade = qobject_cast<const Grade*>(parent());
        const Value valor = grade->modelo().valor(indice.row(), este.getTag());
        const QString texto = paraQt(entrada::textoDeEdicao(este, valor));
        if (auto* lista = qobject_cast<QComboBox*>(editor)) {
            lista->setCurrentIndex(lista->findData(texto));
        } else if (auto* linha = qobject_cast<QLineEdit*>(editor)) {
            linha->setText(texto);
            linha->selectAll();
        }
    });
}

void DelegadoCelula::setModelData(QWidget* editor, QAbstractItemModel* /*modelo*/,
                                  const QModelIndex& indice) const {
    if (const auto* lista = qobject_cast<const QComboBox*>(editor)) {
        if (lista->currentIndex() >= 0) {
            Q_EMIT digitado(indice, lista->currentData().toString());
        }
    } else if (const auto* linha = qobject_cast<const QLineEdit*>(editor)) {
        Q_EMIT digitado(indice, linha->text());
    }
}

/// The editor shows whole texts: it may reach beyond a narrow cell.
void DelegadoCelula::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& opcao,
                                          const QModelIndex& indice) const {
    DesenhoGrade::updateEditorGeometry(editor, opcao, indice);
    QRect lugar = opcao.rect;
    if (qobject_cast<const QComboBox*>(editor) != nullptr) {
        lugar.setWidth(std::max(lugar.width(), editor->sizeHint().width()));
    }
    editor->setGeometry(lugar);
}

bool DelegadoCelula::eventFilter(QObject* alvo, QEvent* evento) {
    const bool isTecla = evento->type() == QEvent::KeyPress && qobject_cast<QWidget*>(alvo) != nullptr;
    return (isTecla && teclaDoEditor(*static_cast<const QKeyEvent*>(evento))) ||
           DesenhoGrade::eventFilter(alvo, evento);
}

bool DelegadoCelula::teclaDoEditor(const QKeyEvent& tecla) {
    const Qt::KeyboardModifiers modificadores = tecla.modifiers() & ~Qt::KeypadModifier;
    const bool isAcorde = tecla.modifiers() == (Qt::ControlModifier | Qt::KeypadModifier);
    if (tecla.key() == Qt::Key_Return || tecla.key() == Qt::Key_Enter) {
        encerra();
        Q_EMIT entrou(modificadores);
    } else if (isAcorde && tecla.key() == Qt::Key_Plus) {
        encerra();
        Q_EMIT pediuInclusao();
    } else if (isAcorde && tecla.key() == Qt::Key_Minus) {
        encerra();
        Q_EMIT pediuRemocao();
    } else {
        return false;
    }
    return true;
}

void DelegadoCelula::encerra() {
    if (editor_ != nullptr && editor_->isVisible()) {
        QWidget* const este = editor_;
        editor_ = nullptr;
        Q_EMIT commitData(este);
        Q_EMIT closeEditor(este, NoHint);
    }
}

} // namespace tv
