#include "windows/DialogosDeArquivo.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace tv::test {

namespace {

QLineEdit& caixaDoNome(const QFileDialog& dialogo) {
    return *dialogo.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
}

DialogoDeArquivo retrato(const QFileDialog& dialogo) {
    DialogoDeArquivo visto{dialogo.objectName(),
                           dialogo.windowTitle(),
                           caixaDoNome(dialogo).text(),
                           dialogo.directory().absolutePath(),
                           {},
                           dialogo.fileMode(),
                           dialogo.acceptMode(),
                           !dialogo.testOption(QFileDialog::DontConfirmOverwrite)};
    const auto* filtros = dialogo.findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
    for (int i = 0; i < filtros->count(); ++i) {
        visto.filtros << filtros->itemText(i);
    }
    return visto;
}

/// One name as it is, several each in quotation marks.
QString digitados(const QStringList& nomes) {
    return nomes.size() == 1 ? nomes.front()
                             : QLatin1Char('"') + nomes.join(QStringLiteral("\" \"")) + QLatin1Char('"');
}

void aperta(const QFileDialog& dialogo, QDialogButtonBox::ButtonRole papel) {
    const auto* caixa = dialogo.findChild<QDialogButtonBox*>();
    for (QAbstractButton* botao : caixa->buttons()) {
        if (caixa->buttonRole(botao) == papel) {
            QTest::mouseClick(botao, Qt::LeftButton);
            return;
        }
    }
}

} // namespace

DialogosDeArquivo::DialogosDeArquivo(std::initializer_list<QStringList> respostas)
    : respostas_(respostas) {
    connect(&relogio_, &QTimer::timeout, this, &DialogosDeArquivo::olha);
    relogio_.start(5);
}

DialogosDeArquivo::~DialogosDeArquivo() {
    for (const QStringList& sobra : respostas_) {
        ADD_FAILURE() << "no file dialog came up for the answer "
                      << sobra.join(QLatin1Char(' ')).toStdString();
    }
}

void DialogosDeArquivo::olha() {
    auto* dialogo = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialogo == nullptr || !dialogo->isVisible()) {
        return;
    }
    vistos_.push_back(retrato(*dialogo));
    if (aoVer) {
        aoVer(*dialogo);
    }
    if (respostas_.empty()) {
        ADD_FAILURE() << "unexpected file dialog: " << dialogo->windowTitle().toStdString();
        dialogo->reject();
        return;
    }
    const QStringList nomes = respostas_.front();
    respostas_.pop_front();
    if (nomes.isEmpty()) {
        aperta(*dialogo, QDialogButtonBox::RejectRole);
        return;
    }
    QApplication::setActiveWindow(dialogo);
    caixaDoNome(*dialogo).setFocus(); // with the keyboard in it, what is typed replaces what was selected
    caixaDoNome(*dialogo).setText(digitados(nomes));
    aperta(*dialogo, QDialogButtonBox::AcceptRole);
}

} // namespace tv::test
